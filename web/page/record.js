// The game as the page keeps it: the start position, the moves played (in coordinate form
// and SAN), the clocks after each, the move on view when stepping through the list, and the
// end of the game. chess.js keeps the rules; this file only remembers and counts.

export const START_FEN = "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1";

export class GameRecord {
    // Chess: chess.js's class; clocks: both clocks at the start ({w, b} in ms).
    constructor(Chess, startFen = START_FEN, clocks = {w: 0, b: 0}) {
        this.Chess    = Chess;
        this.startFen = startFen;
        this.moves    = [];       // {lan, san, colour}
        this.clocks   = [clocks]; // clocks[n]: the clocks after n moves
        this.view     = 0;        // the number of moves on view
        this.flagged  = null;     // the colour whose clock ran out
    }

    get length() {
        return this.moves.length;
    }

    atEnd() {
        return this.view === this.moves.length;
    }

    // chess.js's game after the first `ply` moves (all of them by default), not to be
    // changed by the caller: the last one asked for is kept, as the page asks often.
    gameAt(ply = this.moves.length) {
        if (this.cached?.ply === ply)
            return this.cached.game;
        const game = new this.Chess(this.startFen);
        for (const move of this.moves.slice(0, ply))
            game.move(move.lan);
        this.cached = {ply, game};
        return game;
    }

    // Plays a move (coordinate text, "e7e8n" for a promotion) after the moves on view; the
    // moves after them are dropped. Answers chess.js's move, or null when it is illegal.
    play(lan, clocksAfter) {
        const game = new this.Chess(this.gameAt(this.view).fen());
        let move;
        try {
            move = game.move({from: lan.slice(0, 2), to: lan.slice(2, 4), promotion: lan[4]});
        } catch {
            return null;
        }
        this.truncate(this.view);
        this.moves.push({lan: move.lan, san: move.san, colour: move.color});
        this.cached = null;
        this.clocks.push(clocksAfter || this.clocks[this.clocks.length - 1]);
        this.view = this.moves.length;
        return move;
    }

    // Keeps the first `ply` moves and the clocks as they were after them.
    truncate(ply) {
        this.cached        = null;
        this.moves.length  = ply;
        this.clocks.length = ply + 1;
        this.view          = Math.min(this.view, ply);
        this.flagged       = null;
    }

    // Takes back `plies` moves (no fewer than the start allows); the clocks return with them.
    takeBack(plies) {
        this.truncate(Math.max(0, this.moves.length - plies));
        this.view = this.moves.length;
    }

    currentClocks() {
        return this.clocks[this.clocks.length - 1];
    }

    // Moves the view to a ply, kept within the game; answers whether it changed.
    goTo(ply) {
        const view = Math.max(0, Math.min(this.moves.length, ply));
        const changed = view !== this.view;
        this.view = view;
        return changed;
    }

    step(delta) {
        return this.goTo(this.view + delta);
    }

    // How the game ended: {result, reason}, or null while it goes on.
    end() {
        const game = this.gameAt(), side = game.turn() === "w" ? "White" : "Black";
        const other = side === "White" ? "Black" : "White";
        if (this.flagged) {
            const loser = this.flagged === "w" ? "White" : "Black";
            return {result: this.flagged === "w" ? "0-1" : "1-0", reason: `${loser} lost on time`};
        }
        if (game.isCheckmate())
            return {result: side === "White" ? "0-1" : "1-0", reason: `Checkmate: ${other} wins`};
        if (game.isStalemate())
            return {result: "1/2-1/2", reason: "Draw by stalemate"};
        if (game.isThreefoldRepetition())
            return {result: "1/2-1/2", reason: "Draw by threefold repetition"};
        if (game.isInsufficientMaterial())
            return {result: "1/2-1/2", reason: "Draw by insufficient material"};
        if (game.isDrawByFiftyMoves())
            return {result: "1/2-1/2", reason: "Draw by the fifty-move rule"};
        return null;
    }

    // What the page stores to bring the game back after a reload.
    toJSON() {
        return {startFen: this.startFen, moves: this.moves.map((m) => m.lan), clocks: this.clocks,
                view: this.view, flagged: this.flagged};
    }

    static fromJSON(Chess, saved) {
        const record = new GameRecord(Chess, saved.startFen, saved.clocks[0]);
        saved.moves.forEach((lan, i) => record.play(lan, saved.clocks[i + 1]));
        record.view    = Math.min(saved.view ?? record.length, record.length);
        record.flagged = saved.flagged || null;
        return record;
    }
}
