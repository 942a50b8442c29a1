// The games make test-games plays (in CI, within its time budget) and the mix make soak
// repeats for hours. Each unit is a few games between two engines, colours alternating; the
// first engine of a unit is the Pellix build it tests.
//
// Time controls: the native engine plays every one, down to bullet and to clocks under
// 100 ms at movestogo 1; the sanitizer, Wine and armhf builds, several times slower, play
// the slower ones with a wider margin before a move counts as late.

// Clock margins in milliseconds: how far past zero a clock may run before the move is lost
// on time (cutechess's timemargin). The native margin absorbs the referee's own pipe and
// timer latency and a scheduler tick; the fastest controls are also played on their own,
// one game at a time after the rest, so that nothing competes with them for the cores.
const NATIVE = 25
const SLOWED = 250

const clock = (base, inc, margin = NATIVE) => ({ kind: 'clock', base, inc, moves: 0, margin })
const session = (moves, base, margin = NATIVE) => ({ kind: 'clock', base, inc: 0, moves, margin })
const movetime = (ms, margin = NATIVE) => ({ kind: 'movetime', ms, margin })

export const CONTROLS = {
  suddenDeath: clock(3000, 30),
  bullet: clock(1000, 10),
  movetime: movetime(50),
  repeating: session(40, 20000), // 40 moves in 20 s, again and again
  shortSessions: session(10, 800), // reaches movestogo 1 with well under 100 ms left
}

// xboard's own controls: its command-line arguments and how the summary names them.
const xboardControl = (text, args) => ({ kind: 'xboard', text, args })
// xboard times the engines from its own event loop, which under Xvfb on a busy machine may
// read a move 100 ms late: its controls leave room for that.
const XB_SUDDEN_DEATH = xboardControl('5 s + 0.1 s (xboard)', ['-tc', '0:05', '-inc', '0.1'])
const XB_SESSIONS = xboardControl('20 moves in 10 s, repeating (xboard)', ['-mps', '20', '-tc', '0:10'])

// A few short openings, so that games between the same engines differ.
export const OPENINGS = [
  [],
  ['e4', 'c5'],
  ['d4', 'Nf6', 'c4', 'e6'],
  ['e4', 'e5', 'Nf3', 'Nc6'],
  ['c4', 'e5'],
  ['d4', 'd5', 'c4', 'c6'],
  ['e4', 'e6', 'd4', 'd5'],
  ['Nf3', 'd5', 'g3'],
]

const uci = (name, engines, tc, games, plyLimit = 160, extra = {}) => ({ name, protocol: 'uci', engines, tc, games, plyLimit, ...extra })
const xboard = (name, engines, tc, extra = {}) => ({ name, protocol: 'xboard', engines, tc, games: 1, ...extra })

const FAST = { fast: true } // played in the second phase, alone

export function ciPlan() {
  const c = CONTROLS
  return [
    // The longest first, so that the pool ends together.
    uci('self 40/20s', ['pellix', 'pellix'], c.repeating, 1, 100),
    xboard('xboard self', ['pellix', 'pellix'], XB_SUDDEN_DEATH),
    xboard('xboard fairymax', ['pellix', 'xboard:fairymax'], XB_SUDDEN_DEATH),
    xboard('xboard phalanx', ['pellix', 'xboard:phalanx'], XB_SESSIONS),
    xboard('xboard hoichess', ['pellix', 'xboard:hoichess'], XB_SUDDEN_DEATH),
    xboard('xboard polyglot glaurung', ['pellix', 'xboard:glaurung'], XB_SUDDEN_DEATH, { uci: true }),
    uci('asan vs pellix', ['pellix-asan', 'pellix'], clock(6000, 100, SLOWED), 2, 80),
    uci('asan vs stockfish', ['pellix-asan', 'stockfish'], movetime(150, SLOWED), 2, 80),
    uci('asan self', ['pellix-asan', 'pellix-asan'], session(20, 4000, SLOWED), 2, 80),
    uci('wine vs pellix', ['pellix-wine', 'pellix'], clock(5000, 100, SLOWED), 1, 80),
    uci('wine vs stockfish', ['pellix-wine', 'stockfish'], movetime(150, SLOWED), 1, 80),
    uci('armhf vs pellix', ['pellix-armhf', 'pellix'], movetime(200, SLOWED), 1, 60),
    uci('self sudden death', ['pellix', 'pellix'], c.suddenDeath, 2),
    uci('stockfish sudden death', ['pellix', 'stockfish'], c.suddenDeath, 2),
    // At 1 s + 10 ms Pellix's clock drains: it budgets a fortieth of its clock plus the
    // increment and overruns that by its poll interval, so around move 70 it loses on time.
    // CI stops these games at move 50; the soak plays them out.
    uci('self bullet', ['pellix', 'pellix'], c.bullet, 2, 100, FAST),
    uci('stockfish bullet', ['pellix', 'stockfish'], c.bullet, 2, 100, FAST),
    uci('self movetime', ['pellix', 'pellix'], c.movetime, 2, 160, FAST),
    uci('stockfish movetime', ['pellix', 'stockfish'], c.movetime, 2, 160, FAST),
    uci('self short sessions', ['pellix', 'pellix'], c.shortSessions, 2, 160, FAST),
    uci('stockfish short sessions', ['pellix', 'stockfish'], c.shortSessions, 2, 160, FAST),
    // The referee's own check: each of these opponents breaks in every game it plays.
    uci('broken stall', ['pellix', 'broken-stall'], c.suddenDeath, 1, 160, { brokenOpponent: true }),
    uci('broken crash', ['pellix', 'broken-crash'], c.bullet, 2, 160, { brokenOpponent: true }),
    uci('broken illegal', ['pellix', 'broken-illegal'], c.bullet, 1, 160, { brokenOpponent: true }),
  ]
}

// The soak mix: the CI units over and over (the broken opponents only in the first round),
// with games played out to 300 plies, until `games` games have been played.
export function soakPlan(games) {
  const units = []
  let count = 0
  for (let round = 0; count < games; round++) {
    for (const unit of ciPlan()) {
      if (count >= games) break
      if (round > 0 && unit.brokenOpponent) continue
      units.push({ ...unit, name: `${unit.name} r${round + 1}`, plyLimit: Math.max(unit.plyLimit || 0, 300) })
      count += unit.games
    }
  }
  return units
}
