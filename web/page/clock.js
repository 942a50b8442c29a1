// The clocks of a game, as plain numbers: milliseconds left per colour ({w, b}). The page
// keeps one such pair after every move, so a take-back returns both clocks to where they
// stood at that point of the game.

// The clocks after `colour` moved, `elapsed` ms after its clock started, with the increment.
export function afterMove(clocks, colour, elapsed, increment) {
    return {...clocks, [colour]: clocks[colour] - elapsed + increment};
}

// What the running clock shows `elapsed` ms after it started; never below zero.
export function showing(clocks, running, elapsed) {
    return {...clocks, [running]: Math.max(0, clocks[running] - elapsed)};
}

// "4:05.3": minutes, seconds with tenths; hours when there are any ("1:02:05").
export function formatClock(ms) {
    const tenths = Math.floor(Math.max(0, ms) / 100);
    const seconds = Math.floor(tenths / 10) % 60, minutes = Math.floor(tenths / 600) % 60;
    const hours = Math.floor(tenths / 36000);
    const ss = `${String(seconds).padStart(2, "0")}.${tenths % 10}`;
    return hours ? `${hours}:${String(minutes).padStart(2, "0")}:${ss.slice(0, 2)}` : `${minutes}:${ss}`;
}

// The PGN TimeControl tag: "300+2" (seconds, plus increment seconds), fractions kept
// ("3+0.1"); "-" for a game without a clock.
export function timeControlTag(baseMs, incrementMs) {
    if (!baseMs)
        return "-";
    return `${baseMs / 1000}+${incrementMs / 1000}`;
}
