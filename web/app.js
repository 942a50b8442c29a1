// The page: a board to play against the engine or to analyse with it. chess.js keeps the
// game (legality, SAN, the end of the game), cm-chessboard draws it, and the engine runs in
// its worker (engine.js), spoken to in UCI. Every change of the game stops a running search
// first; the next one starts from the engine's bestmove, so no two searches ever overlap.
// Games are played with the opening book; analysis runs an engine without it, since a book
// move comes with no search report. Switching mode starts the other engine.
import {Chess} from "./node_modules/chess.js/dist/esm/chess.js";
import {Chessboard, INPUT_EVENT_TYPE} from "./node_modules/cm-chessboard/src/Chessboard.js";
import {Engine} from "./engine.js";

const $ = (id) => document.getElementById(id);

const game  = new Chess();
let startFen = game.fen();
const board = new Chessboard($("board"), {
    position: game.fen(),
    assetsUrl: "node_modules/cm-chessboard/assets/",
    style: {animationDuration: 150},
});

// Moves come faster than their animations at short time controls: one animates only when
// the board has finished drawing the last, so it never lags behind the game.
let drawing = 0;
function drawBoard(animated) {
    drawing++;
    board.setPosition(game.fen(), animated && drawing === 1).finally(() => drawing--);
}

const settings = () => ({
    mode: document.querySelector("input[name=mode]:checked").value,
    colour: $("colour").value,
    timeMode: $("time-mode").value,
    moveMs: Math.max(50, Math.round(1000 * Number($("move-seconds").value || 1))),
    clockMs: Math.max(6000, Math.round(60000 * Number($("clock-minutes").value || 5))),
    incrementMs: Math.max(0, Math.round(1000 * Number($("clock-increment").value || 0))),
});

const state = {
    engineName: null, ready: false, handshakes: 0, lines: [], bestMoves: [],
    search: null,          // the running search: {purpose, fen, cancelled}
    rethink: false,        // decide again once the running search has answered
    clocks: {w: 0, b: 0}, clockSince: 0, flagged: null,
};

let engine = null;
let engineWithBook = null;

// An engine with the book for games, without it for analysis; the running one is replaced
// when the mode calls for the other.
function startEngine() {
    if (typeof SharedArrayBuffer !== "function") {
        status("The engine needs SharedArrayBuffer: serve this page with the headers " +
               "Cross-Origin-Opener-Policy: same-origin and Cross-Origin-Embedder-Policy: " +
               "require-corp.");
        return true;
    }
    const book = settings().mode === "play";
    if (engine && engineWithBook === book)
        return false;
    engine?.terminate();
    Object.assign(state, {ready: false, search: null, rethink: false});
    engineWithBook = book;
    const current = new Engine((line) => current === engine && onEngineLine(line), book);
    engine = current;
    engine.send("uci");
    return true;
}
startEngine();

function onEngineLine(line) {
    if (line === null)
        return status("The engine has stopped.");
    state.lines.push(line);
    if (line.startsWith("id name "))
        state.engineName = line.slice(8);
    else if (line === "uciok") {
        $("engine-name").textContent = state.engineName;
        const first = state.handshakes++ === 0;
        state.ready = true;
        engine.send("ucinewgame");
        if (first)
            newGame();
        else
            think();
    } else if (line.startsWith("info "))
        showReport(line);
    else if (line.startsWith("bestmove"))
        onBestMove(line.split(" ")[1]);
}

// --- searches ------------------------------------------------------------------------

function positionCommand() {
    const moves = game.history({verbose: true}).map((m) => m.lan);
    return `position fen ${startFen}` + (moves.length ? ` moves ${moves.join(" ")}` : "");
}

function engineToMove() {
    const s = settings();
    return s.mode === "play" && game.turn() !== s.colour;
}

// Starts whatever search the game calls for now, if any.
function think() {
    if (!state.ready || game.isGameOver() || state.flagged)
        return showStatus();
    const s = settings();
    let go = null;
    if (s.mode === "analyse")
        go = "go infinite";
    else if (engineToMove())
        go = s.timeMode === "move" ? `go movetime ${s.moveMs}`
                                   : `go wtime ${Math.max(1, Math.round(state.clocks.w))} btime ` +
                                         `${Math.max(1, Math.round(state.clocks.b))} winc ` +
                                         `${s.incrementMs} binc ${s.incrementMs}`;
    showStatus();
    if (!go)
        return;
    state.search = {purpose: s.mode, fen: game.fen(), cancelled: false};
    engine.send(positionCommand());
    engine.send(go);
}

// The game changed under the engine: stop what it does, and decide again after its answer.
function rethink() {
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
    if (search && !search.cancelled && search.purpose === "play" && search.fen === game.fen())
        playMove(move, "engine");
    if (state.rethink || (search && !search.cancelled && search.purpose === "play")) {
        state.rethink = false;
        think();
    }
}

// --- the game ------------------------------------------------------------------------

function playMove(uci, who) {
    let move;
    try {
        move = game.move({from: uci.slice(0, 2), to: uci.slice(2, 4), promotion: uci[4] || "q"});
    } catch {
        return false;
    }
    chargeClock(move.color);
    drawBoard(true);
    showMoves();
    if (who === "user")
        rethink();
    return true;
}

// The user's move, from the board or the tests; refused when it is not the user's turn.
function userMove(uci) {
    if (game.isGameOver() || state.flagged || engineToMove())
        return false;
    return playMove(uci, "user");
}

function newGame() {
    startFen = new Chess().fen();
    resetGame(startFen);
}

function resetGame(fen) {
    game.load(fen);
    const s = settings();
    state.clocks  = {w: s.clockMs, b: s.clockMs};
    state.flagged = null;
    state.clockSince = performance.now();
    drawBoard(false);
    board.setOrientation(s.colour === "b" && s.mode === "play" ? "b" : "w");
    if (state.ready)
        engine.send("ucinewgame");
    showMoves();
    clearReport();
    rethink();
}

function takeBack() {
    if (!game.undo())
        return;
    if (engineToMove())
        game.undo();
    state.flagged = null;
    drawBoard(true);
    showMoves();
    rethink();
}

// --- clocks --------------------------------------------------------------------------

function clockRuns() {
    const s = settings();
    return s.mode === "play" && s.timeMode === "clock" && !game.isGameOver() && !state.flagged;
}

function chargeClock(colour) {
    const now = performance.now();
    if (clockRuns() || game.isGameOver())
        state.clocks[colour] += settings().incrementMs - (now - state.clockSince);
    state.clockSince = now;
}

function tickClocks() {
    const running = game.turn();
    const shown   = {...state.clocks};
    if (clockRuns()) {
        shown[running] -= performance.now() - state.clockSince;
        if (shown[running] <= 0) {
            state.clocks[running] = 0;
            state.flagged = running;
            rethink();
        }
    }
    for (const c of ["w", "b"]) {
        const ms = Math.max(0, shown[c]), el = $(c === "w" ? "clock-white" : "clock-black");
        const minutes = Math.floor(ms / 60000), seconds = ((ms % 60000) / 1000).toFixed(1);
        el.textContent = `${c === "w" ? "White" : "Black"} ${minutes}:${seconds.padStart(4, "0")}`;
        el.classList.toggle("running", clockRuns() && c === running);
    }
}
setInterval(tickClocks, 100);

// --- what the page shows -------------------------------------------------------------

function status(text) {
    $("status").textContent = text;
}

function showStatus() {
    if (!engine)
        return;
    if (!state.ready)
        return status("Loading the engine…");
    const side = game.turn() === "w" ? "White" : "Black";
    if (state.flagged)
        return status(`${state.flagged === "w" ? "White" : "Black"} lost on time.`);
    if (game.isCheckmate())
        return status(`Checkmate: ${side === "White" ? "Black" : "White"} wins.`);
    if (game.isDraw())
        return status("Draw.");
    if (settings().mode === "analyse")
        return status(`Analysing, ${side} to move.`);
    status(engineToMove() ? `${state.engineName} thinks…` : `Your move (${side}).`);
}

function showMoves() {
    const moves = game.history();
    $("moves").textContent = moves
        .map((m, i) => (i % 2 === 0 ? `${i / 2 + 1}. ` : "") + m)
        .join(" ");
    $("fen").value = game.fen();
}

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

// --- controls ------------------------------------------------------------------------

board.enableMoveInput((event) => {
    if (event.type === INPUT_EVENT_TYPE.moveInputStarted)
        return !engineToMove() && game.moves({square: event.squareFrom}).length > 0;
    if (event.type === INPUT_EVENT_TYPE.validateMoveInput)
        return userMove(event.squareFrom + event.squareTo);
    return true;
});

$("new-game").onclick = newGame;
$("take-back").onclick = takeBack;
$("time-mode").onchange = () => {
    $("per-move").hidden = $("time-mode").value !== "move";
    $("clock-setting").hidden = $("time-mode").value !== "clock";
};
$("colour").onchange = newGame;
for (const radio of document.querySelectorAll("input[name=mode]"))
    radio.onchange = () => {
        board.setOrientation(settings().mode === "play" && settings().colour === "b" ? "b" : "w");
        clearReport();
        if (!startEngine())
            rethink();
        showStatus();
    };
$("fen-form").onsubmit = (event) => {
    event.preventDefault();
    const fen = $("fen").value.trim();
    try {
        new Chess(fen);
    } catch (e) {
        return status(`That FEN is not a legal position: ${e.message}`);
    }
    startFen = fen;
    resetGame(fen);
};

// For the tests and the console: the game, the engine's lines and the user's move.
window.pellix = {game, state, drawn: () => drawing === 0, userMove, newGame, takeBack, send: (c) => engine.send(c)};
