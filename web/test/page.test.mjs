// The page's own logic without a browser: the clocks through a game and its take-backs, the
// move list's stepping, the end of the game, and the PGN read back by chess.js.
import assert from "node:assert/strict";
import {test} from "node:test";

import {Chess} from "chess.js";

import {afterMove, formatClock, showing, timeControlTag} from "../page/clock.js";
import {buildPgn} from "../page/pgn.js";
import {GameRecord, START_FEN} from "../page/record.js";

test("clocks are charged per move with the increment and come back on take-back", () => {
    const record = new GameRecord(Chess, START_FEN, {w: 3000, b: 3000});
    const moves = [["e2e4", 1200], ["e7e5", 500], ["g1f3", 2000], ["b8c6", 100]];
    for (const [lan, spent] of moves) {
        const mover = record.gameAt().turn();
        record.play(lan, afterMove(record.currentClocks(), mover, spent, 100));
    }
    assert.deepEqual(record.currentClocks(), {w: 3000 - 1200 - 2000 + 200, b: 3000 - 500 - 100 + 200});
    record.takeBack(2);
    assert.deepEqual(record.currentClocks(), {w: 1900, b: 2600});
    assert.equal(record.gameAt().fen(), "rnbqkbnr/pppp1ppp/8/4p3/4P3/8/PPPP1PPP/RNBQKBNR w KQkq - 0 2");
    record.takeBack(5);
    assert.deepEqual([record.length, record.currentClocks()], [0, {w: 3000, b: 3000}]);
    assert.deepEqual(showing({w: 500, b: 900}, "w", 800), {w: 0, b: 900});
});

test("clock texts and the TimeControl tag", () => {
    assert.deepEqual([0, 99, 3100, 65000, 599999, 3723400, -5].map(formatClock),
                     ["0:00.0", "0:00.0", "0:03.1", "1:05.0", "9:59.9", "1:02:03", "0:00.0"]);
    assert.deepEqual([timeControlTag(300000, 2000), timeControlTag(3000, 100), timeControlTag(0, 0)],
                     ["300+2", "3+0.1", "-"]);
});

test("stepping through the moves stays within the game, and a move off the end replaces the rest", () => {
    const record = new GameRecord(Chess);
    for (const lan of ["d2d4", "d7d5", "c2c4", "e7e6"])
        assert.ok(record.play(lan));
    assert.equal(record.play("e1e8"), null);
    assert.ok(record.goTo(-3) && record.view === 0 && !record.step(-1));
    assert.ok(record.step(2) && record.gameAt(record.view).fen().startsWith("rnbqkbnr/ppp1pppp/8/3p4/3P4/"));
    record.goTo(99);
    assert.equal(record.view, 4);
    record.goTo(2);
    assert.equal(record.play("g1f3").san, "Nf3");
    assert.deepEqual(record.moves.map((m) => m.san), ["d4", "d5", "Nf3"]);
    assert.ok(record.atEnd());
    const back = GameRecord.fromJSON(Chess, JSON.parse(JSON.stringify(record)));
    assert.deepEqual([back.moves, back.view, back.clocks], [record.moves, record.view, record.clocks]);
});

test("each way a game ends is announced with its result", () => {
    const ended = (fen, moves, flagged = null) => {
        const record = new GameRecord(Chess, fen);
        moves.forEach((lan) => assert.ok(record.play(lan), lan));
        record.flagged = flagged;
        return record.end();
    };
    assert.equal(ended(START_FEN, []), null);
    assert.deepEqual(ended(START_FEN, ["f2f3", "e7e5", "g2g4", "d8h4"]), {result: "0-1", reason: "Checkmate: Black wins"});
    assert.equal(ended("7k/5Q2/6K1/8/8/8/8/8 b - - 0 1", []).reason, "Draw by stalemate");
    assert.equal(ended(START_FEN, ["g1f3", "g8f6", "f3g1", "f6g8", "g1f3", "g8f6", "f3g1", "f6g8"]).reason,
                 "Draw by threefold repetition");
    assert.equal(ended("8/8/4k3/8/8/3NK3/8/8 w - - 0 1", []).reason, "Draw by insufficient material");
    assert.equal(ended("8/8/4k3/8/8/3RK3/8/8 w - - 99 80", ["d3d1"]).reason, "Draw by the fifty-move rule");
    assert.deepEqual(ended(START_FEN, ["e2e4"], "b"), {result: "1-0", reason: "Black lost on time"});
});

test("the PGN carries the tags and reads back as the same game, from any start", () => {
    const fen = "8/1P4k1/8/8/8/8/6K1/8 b - - 3 40";
    const record = new GameRecord(Chess, fen);
    for (const lan of ["g7f6", "b7b8n", "f6e5", "b8c6"])
        record.play(lan);
    const text = buildPgn({startFen: fen, moves: record.moves, white: "Player", black: "Pellix 1.1b", result: "*",
                           timeControl: "3+0.1", date: new Date(2026, 10, 25), site: "example.org"});
    const game = new Chess();
    game.loadPgn(text);
    assert.deepEqual(game.history(), ["Kf6", "b8=N", "Ke5", "Nc6+"]);
    assert.deepEqual(game.getHeaders(), {
        Event: "Casual game", Site: "example.org", Date: "2026.11.25", Round: "-", White: "Player",
        Black: "Pellix 1.1b", Result: "*", TimeControl: "3+0.1", SetUp: "1", FEN: fen,
    });
    assert.match(text, /\n\n40\.\.\. Kf6 41\. b8=N Ke5 42\. Nc6\+ \*\n$/);

    // A long game from the start: no SetUp, lines within 80 characters, the result last.
    const long = new GameRecord(Chess);
    for (let i = 0; i < 40; i++)
        long.play(["g1f3", "g8f6", "f3g1", "f6g8"][i % 4]);
    const longText = buildPgn({startFen: START_FEN, moves: long.moves, white: "a", black: "b", result: "1/2-1/2"});
    assert.ok(!/SetUp|FEN/.test(longText));
    assert.ok(longText.split("\n").every((line) => line.length <= 80));
    const back = new Chess();
    back.loadPgn(longText);
    assert.deepEqual([back.history(), back.getHeaders().Result], [long.moves.map((m) => m.san), "1/2-1/2"]);
});
