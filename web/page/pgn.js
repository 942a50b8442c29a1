// The game as PGN text: the seven standard tags, TimeControl, SetUp and FEN when the game
// did not start from the initial position, and the moves in SAN, numbered, in lines of at
// most 80 characters, ending with the result.
import {START_FEN} from "./record.js";

function pgnDate(date) {
    const two = (n) => String(n).padStart(2, "0");
    return `${date.getFullYear()}.${two(date.getMonth() + 1)}.${two(date.getDate())}`;
}

const quoted = (value) => `"${String(value).replace(/\\/g, "\\\\").replace(/"/g, '\\"')}"`;

// game: {startFen, moves: [{san}], white, black, result, timeControl, date, site, event}
export function buildPgn(game) {
    const tags = [
        ["Event", game.event || "Casual game"], ["Site", game.site || "?"],
        ["Date", game.date ? pgnDate(game.date) : "????.??.??"], ["Round", "-"],
        ["White", game.white], ["Black", game.black], ["Result", game.result],
        ["TimeControl", game.timeControl || "-"],
    ];
    if (game.startFen !== START_FEN)
        tags.push(["SetUp", "1"], ["FEN", game.startFen]);
    const header = tags.map(([name, value]) => `[${name} ${quoted(value)}]`).join("\n");

    const [, turn, , , , moveNumber] = game.startFen.split(" ");
    let number = Number(moveNumber) || 1, white = turn !== "b";
    const words = [];
    game.moves.forEach((move, i) => {
        if (white)
            words.push(`${number}. ${move.san}`);
        else
            words.push(i === 0 ? `${number}... ${move.san}` : move.san);
        if (!white)
            number++;
        white = !white;
    });
    words.push(game.result);

    const lines = [];
    let line = "";
    for (const word of words) {
        if (line && line.length + 1 + word.length > 80) {
            lines.push(line);
            line = word;
        } else {
            line = line ? `${line} ${word}` : word;
        }
    }
    lines.push(line);
    return `${header}\n\n${lines.join("\n")}\n`;
}
