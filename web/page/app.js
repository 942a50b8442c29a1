// The page: a board to play against the engine or to analyse with it. chess.js keeps the
// rules, record.js the game and its clocks, cm-chessboard draws the board, and the engine
// (started by start.js) is spoken to in UCI. Every change of the game stops a running search
// first; the next one starts from the engine's bestmove, so no two searches ever overlap.
// Games use the opening book, fetched once the engine has answered; analysis runs without
// it, since a book move comes with no search report. Changing between the two repeats the
// handshake with the other pellix.ini. The game is kept in localStorage across reloads.
import {Chess} from "./lib/chess.js/esm/chess.js";
import {Chessboard, COLOR, INPUT_EVENT_TYPE} from "./lib/cm-chessboard/src/Chessboard.js";
import {PromotionDialog, PROMOTION_DIALOG_RESULT_TYPE} from
    "./lib/cm-chessboard/src/extensions/promotion-dialog/PromotionDialog.js";

import {afterMove, formatClock, showing, timeControlTag} from "./clock.js";
import {buildPgn} from "./pgn.js";
import {GameRecord, START_FEN} from "./record.js";
import {FIRST_SETTINGS, attach, engine, engineSettings, timing} from "./start.js";

const $ = (id) => document.getElementById(id);
const STORE = "pellix-game";

const settings = () => ({
    mode: document.querySelector("input[name=mode]:checked").value,
    colour: $("colour").value,
    timeMode: $("time-mode").value,
    moveMs: Math.max(50, Math.round(1000 * Number($("move-seconds").value || 1))),
    clockMs: Math.max(1000, Math.round(60000 * Number($("clock-minutes").value || 5))),
    incrementMs: Math.max(0, Math.round(1000 * Number($("clock-increment").value || 0))),
});
const CONTROLS = ["colour", "time-mode", "move-seconds", "clock-minutes", "clock-increment"];

const state = {
    engineName: "Pellix", ready: false, lines: [], bestMoves: [],
    search: null,       // the running search: {purpose, fen, cancelled}
    rethink: false,     // decide again once the running search has answered
    book: null,         // the book's fetch while it runs, then true (in the engine) or false
    engineIni: FIRST_SETTINGS, // the pellix.ini of the engine's last handshake
    clockSince: performance.now(), // when the running clock last started
    flipped: false, date: new Date(), timeControl: "-",
    newGame: false,     // a new game to announce to the engine before its next search
};

let record = new GameRecord(Chess);

const board = new Chessboard($("board"), {
    position: START_FEN,
    assetsUrl: "lib/cm-chessboard/assets/",
    style: {animationDuration: 150},
    extensions: [{class: PromotionDialog}],
});

// Moves come faster than their animations at short time controls: one animates only when
// the board has finished drawing the last, so it never lags behind the game.
let drawing = 0;
function drawBoard(animated) {
    drawing++;
    board.setPosition(record.gameAt(record.view).fen(), animated && drawing === 1)
        .finally(() => drawing--);
    const s = settings(), black = s.mode === "play" && s.colour === "b";
    const orientation = black !== state.flipped ? COLOR.black : COLOR.white;
    if (board.getOrientation() !== orientation)
        board.setOrientation(orientation);
}

// --- the engine ----------------------------------------------------------------------

function onEngineLine(line) {
    state.lines.push(line);
    if (line.startsWith("id name "))
        $("engine-name").textContent = state.engineName = line.slice(8);
    else if (line === "uciok") {
        state.ready = true;
        if (state.book === null)
            fetchBook();
        think();
    } else if (line.startsWith("info "))
        showReport(line);
    else if (line.startsWith("bestmove"))
        onBestMove(line.split(" ")[1]);
}

function fetchBook() {
    state.book = fetch("engine/pellixopenbook.bin")
        .then((r) => (r.ok ? r.arrayBuffer() : Promise.reject(new Error(r.status))))
        .then((bytes) => {
            engine.writeFile("/pellixopenbook.bin", new Uint8Array(bytes));
            state.book = true;
            $("book").classList.add("loaded");
        })
        .catch(() => {
            state.book = false;
            $("book").textContent = "The opening book could not be loaded.";
        })
        .finally(() => state.search || think());
}

// Repeats the handshake when the engine's settings do not suit the mode (the book for games,
// none for analysis) or are still those of the first handshake; true when it did.
function configure() {
    const ini = engineSettings(settings().mode === "play" && state.book === true);
    if (ini === state.engineIni)
        return false;
    engine.writeFile("/pellix.ini", ini);
    engine.send("uci");
    state.engineIni = ini;
    state.ready = false;
    return true;
}

function positionCommand(ply) {
    const moves = record.moves.slice(0, ply).map((m) => m.lan);
    return `position fen ${record.startFen}` + (moves.length ? ` moves ${moves.join(" ")}` : "");
}

function engineToMove() {
    const s = settings();
    return s.mode === "play" && record.gameAt().turn() !== s.colour;
}

// Starts whatever search the game calls for now, if any.
function think() {
    // The book's fetch is short; the engine waits for it rather than play without it.
    if (!state.ready || state.search || state.book instanceof Promise || configure())
        return showStatus();
    if (state.newGame) {
        engine.send("ucinewgame");
        state.newGame = false;
    }
    const s = settings();
    let go = null, ply = record.length;
    if (s.mode === "analyse") {
        ply = record.view;
        if (!record.gameAt(ply).isGameOver())
            go = "go infinite";
    } else if (engineToMove() && !record.end()) {
        const c = record.currentClocks(), inc = s.incrementMs;
        go = s.timeMode === "move" ? `go movetime ${s.moveMs}`
                                   : `go wtime ${Math.max(1, Math.round(c.w))} btime ` +
                                         `${Math.max(1, Math.round(c.b))} winc ${inc} binc ${inc}`;
    }
    showStatus();
    if (!go)
        return;
    clearReport();
    state.search = {purpose: s.mode, fen: record.gameAt(ply).fen(), length: record.length, cancelled: false};
    engine.send(positionCommand(ply));
    engine.send(go);
}

// The game changed under the engine: stop what it does, and decide again after its answer.
function rethink() {
    clearReport();
    if (!state.search)
        return think();
    state.rethink = true;
    if (!state.search.cancelled) {
        state.search.cancelled = true;
        engine.send("stop");
    }
}

function onBestMove(move) {
    const search = state.search;
    state.search = null;
    state.bestMoves.push({move, at: performance.now()});
    const ours = search && !search.cancelled && search.purpose === "play";
    if (ours && search.length === record.length && engineToMove())
        playMove(move);
    if (state.rethink || ours) {
        state.rethink = false;
        think();
    }
}

// --- the game ------------------------------------------------------------------------

function clockRuns() {
    const s = settings();
    return s.mode === "play" && s.timeMode === "clock" && !record.end();
}

// Plays a move after the moves on view, charging the mover's clock.
function playMove(lan) {
    const now = performance.now(), before = record.gameAt(record.view).turn();
    const clocks = clockRuns() && record.atEnd()
        ? afterMove(record.currentClocks(), before, now - state.clockSince, settings().incrementMs)
        : record.currentClocks();
    if (!record.play(lan, clocks))
        return false;
    state.clockSince = now;
    changed(true);
    return true;
}

// The user may move when analysing, or in a game at its last move on the user's turn.
function userMayMove() {
    if (settings().mode === "analyse")
        return !record.gameAt(record.view).isGameOver();
    return record.atEnd() && !record.end() && !engineToMove();
}

// The user's move, from the board or the tests; refused when the user may not move.
function userMove(lan) {
    if (!userMayMove() || !playMove(lan))
        return false;
    rethink();
    return true;
}

function startGame(newRecord) {
    const s = settings();
    record = newRecord;
    state.clockSince = performance.now();
    state.date = new Date();
    state.timeControl = s.mode === "play" && s.timeMode === "clock" ? timeControlTag(s.clockMs, s.incrementMs) : "-";
    // Told once the engine is idle: a new game in the middle of a search would pull the
    // board from under it.
    state.newGame = true;
    changed(false);
    rethink();
}

const startClocks = () => ({w: settings().clockMs, b: settings().clockMs});

function newGame(fen = START_FEN) {
    startGame(new GameRecord(Chess, fen, startClocks()));
}

function takeBack() {
    if (!record.length)
        return;
    const s = settings();
    let plies = 1;
    // In a game, back to the user's own turn.
    if (s.mode === "play" && record.length >= 2 && record.gameAt(record.length - 1).turn() !== s.colour)
        plies = 2;
    record.takeBack(plies);
    state.clockSince = performance.now();
    changed(true);
    rethink();
}

function loadPgn(text) {
    const game = new Chess();
    try {
        game.loadPgn(text);
    } catch (e) {
        return status(`That PGN could not be read: ${e.message}`), false;
    }
    const headers = game.getHeaders();
    const loaded = new GameRecord(Chess, headers.FEN || START_FEN, startClocks());
    for (const move of game.history({verbose: true}))
        loaded.play(move.lan);
    startGame(loaded);
    return true;
}

// --- what the page shows -------------------------------------------------------------

function status(text) {
    $("status").textContent = text;
}

function showStatus() {
    const s = settings(), end = record.end(), game = record.gameAt(record.view);
    const side = game.turn() === "w" ? "White" : "Black";
    if (!state.ready && !state.lines.includes("uciok"))
        return status("Loading the engine…");
    if (end && (s.mode === "play" || record.atEnd()))
        return status(`${end.reason}. ${end.result}`);
    if (s.mode === "analyse")
        return status(game.isGameOver() ? "The game is over in this position." : `Analysing, ${side} to move.`);
    if (!record.atEnd())
        return status(`Viewing move ${record.view} of ${record.length}.`);
    status(engineToMove() ? `${state.engineName} thinks…` : `Your move (${side}).`);
}

// After every change of the game or of the view: board, moves, PGN, clocks, storage.
function changed(animated) {
    drawBoard(animated);
    showMoves();
    showStatus();
    $("fen").value = record.gameAt(record.view).fen();
    if (document.activeElement !== $("pgn"))
        $("pgn").value = pgnText();
    tickClocks();
    save();
}

function showMoves() {
    const list = $("moves"), [, turn, , , , number] = record.startFen.split(" ");
    list.textContent = "";
    record.moves.forEach((move, i) => {
        const white = (i + (turn === "b" ? 1 : 0)) % 2 === 0;
        const n = Number(number) + Math.floor((i + (turn === "b" ? 1 : 0)) / 2);
        if (white || i === 0)
            list.append(`${n}${white ? "." : "…"} `);
        const span = document.createElement("span");
        span.textContent = move.san;
        span.dataset.ply = i + 1;
        span.className = i + 1 === record.view ? "move current" : "move";
        list.append(span, " ");
    });
}

function pgnText() {
    const s = settings(), end = record.end(), name = state.engineName;
    const [white, black] = s.mode === "analyse" ? ["?", "?"]
                         : s.colour === "w" ? ["Player", name] : [name, "Player"];
    return buildPgn({startFen: record.startFen, moves: record.moves, white, black,
                     result: end ? end.result : "*", timeControl: state.timeControl,
                     date: state.date, site: location.host || "?"});
}

function tickClocks() {
    const s = settings(), top = state.flipped !== (s.mode === "play" && s.colour === "b") ? "w" : "b";
    const clock = s.mode === "play" && s.timeMode === "clock";
    const running = record.gameAt().turn();
    let shown = record.currentClocks();
    if (clockRuns()) {
        shown = showing(shown, running, performance.now() - state.clockSince);
        if (shown[running] <= 0) {
            record.flagged = running;
            changed(false);
            rethink();
        }
    }
    for (const [id, c] of [["clock-top", top], ["clock-bottom", top === "w" ? "b" : "w"]]) {
        const name = c === "w" ? "White" : "Black";
        $(id).textContent = clock ? `${name} ${formatClock(shown[c])}` : name;
        $(id).classList.toggle("running", clockRuns() && c === running);
    }
}
setInterval(tickClocks, 100);

function clearReport() {
    for (const id of ["depth", "score", "nodes", "nps"])
        $(id).textContent = "–";
    $("pv").textContent = "";
}

// "info depth 5 score cp 33 time 6 nodes 6797 nps 1018488 pv d1h5 b8c6 ...", the score from
// the mover's view; shown from White's, the PV as SAN.
function showReport(line) {
    const words = line.split(" "), search = state.search;
    if (!search || search.cancelled)
        return;
    const at = (key) => {
        const i = words.indexOf(key);
        return i < 0 ? null : words[i + 1];
    };
    if (at("depth") === null || at("pv") === null)
        return;
    const sign = search.fen.split(" ")[1] === "w" ? 1 : -1;
    const i = words.indexOf("score");
    const score = words[i + 1] === "mate" ? `mate ${sign * Number(words[i + 2])}`
                                          : ((sign * Number(words[i + 2])) / 100).toFixed(2);
    $("depth").textContent = at("depth");
    $("score").textContent = score;
    $("nodes").textContent = Number(at("nodes")).toLocaleString("en");
    $("nps").textContent   = Number(at("nps")).toLocaleString("en");
    $("pv").textContent    = pvText(search.fen, words.slice(words.indexOf("pv") + 1));
}

function pvText(fen, moves) {
    const line = new Chess(fen), text = [];
    for (const uci of moves.filter(Boolean)) {
        try {
            const m = line.move({from: uci.slice(0, 2), to: uci.slice(2, 4), promotion: uci[4]});
            const number = line.turn() === "b" ? `${line.moveNumber()}. `
                         : text.length === 0 ? `${line.moveNumber() - 1}… ` : "";
            text.push(number + m.san);
        } catch {
            break;
        }
    }
    return text.join(" ");
}

// --- keeping the game across reloads ---------------------------------------------------

function save() {
    const controls = Object.fromEntries(CONTROLS.map((id) => [id, $(id).value]));
    localStorage.setItem(STORE, JSON.stringify({
        record, controls, mode: settings().mode, flipped: state.flipped,
        date: state.date.getTime(), timeControl: state.timeControl,
    }));
}

function restore() {
    try {
        const saved = JSON.parse(localStorage.getItem(STORE));
        if (!saved)
            return false;
        for (const [id, value] of Object.entries(saved.controls))
            $(id).value = value;
        document.querySelector(`input[name=mode][value=${saved.mode}]`).checked = true;
        record = GameRecord.fromJSON(Chess, saved.record);
        Object.assign(state, {flipped: saved.flipped, date: new Date(saved.date), timeControl: saved.timeControl});
        return true;
    } catch {
        localStorage.removeItem(STORE);
        return false;
    }
}

// --- controls ------------------------------------------------------------------------

board.enableMoveInput((event) => {
    const game = record.gameAt(record.view);
    if (event.type === INPUT_EVENT_TYPE.moveInputStarted)
        return userMayMove() && game.moves({square: event.squareFrom}).length > 0;
    if (event.type !== INPUT_EVENT_TYPE.validateMoveInput)
        return true;
    const from = event.squareFrom, to = event.squareTo;
    const move = game.moves({square: from, verbose: true}).find((m) => m.to === to);
    if (!move)
        return false;
    if (!move.promotion)
        return userMove(from + to);
    board.showPromotionDialog(to, game.turn() === "w" ? COLOR.white : COLOR.black, (result) => {
        if (result.type !== PROMOTION_DIALOG_RESULT_TYPE.pieceSelected || !userMove(from + to + result.piece.charAt(1)))
            drawBoard(false);
    });
    return true;
});

function showTimeSetting() {
    $("per-move").hidden = $("time-mode").value !== "move";
    $("clock-setting").hidden = $("time-mode").value !== "clock";
}

$("new-game").onclick = () => newGame();
$("take-back").onclick = takeBack;
$("flip").onclick = () => {
    state.flipped = !state.flipped;
    changed(false);
};
const view = (ply) => {
    if (record.goTo(ply)) {
        changed(false);
        if (settings().mode === "analyse")
            rethink();
    }
};
$("first").onclick = () => view(0);
$("back").onclick = () => view(record.view - 1);
$("forward").onclick = () => view(record.view + 1);
$("last").onclick = () => view(record.length);
$("moves").onclick = (event) => event.target.dataset.ply && view(Number(event.target.dataset.ply));
$("time-mode").onchange = () => {
    showTimeSetting();
    newGame();
};
for (const id of ["colour", "clock-minutes", "clock-increment"])
    $(id).onchange = () => newGame();
for (const radio of document.querySelectorAll("input[name=mode]"))
    radio.onchange = () => {
        clearReport();
        changed(false);
        rethink();
    };
$("fen-form").onsubmit = (event) => {
    event.preventDefault();
    const fen = $("fen").value.trim();
    try {
        new Chess(fen);
    } catch (e) {
        return status(`That FEN is not a legal position: ${e.message}`);
    }
    newGame(fen);
};
$("copy-pgn").onclick = async () => {
    const text = pgnText();
    $("pgn").value = text;
    try {
        await navigator.clipboard.writeText(text);
    } catch {
        // No clipboard API outside secure origins: copy the selected text instead.
        $("pgn").select();
        document.execCommand("copy");
    }
    status("The PGN is copied.");
};
$("download-pgn").onclick = () => {
    const link = document.createElement("a");
    link.href = URL.createObjectURL(new Blob([pgnText()], {type: "application/x-chess-pgn"}));
    link.download = `pellix-${state.date.toISOString().slice(0, 10)}.pgn`;
    link.click();
    URL.revokeObjectURL(link.href);
};
$("load-pgn").onclick = () => loadPgn($("pgn").value);
$("pgn").onblur = () => {
    if (!$("pgn").value.trim())
        $("pgn").value = pgnText();
};

if (!restore())
    record = new GameRecord(Chess, START_FEN, startClocks());
showTimeSetting();
changed(false);
attach(onEngineLine);

// For the tests and the console.
window.pellix = {
    get record() {
        return record;
    },
    state, timing, userMove, newGame, takeBack, loadPgn, pgn: pgnText,
    drawn: () => drawing === 0, send: (c) => engine.send(c),
};
