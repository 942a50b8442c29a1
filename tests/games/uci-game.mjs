// One game between two UCI players, refereed here: the referee keeps both clocks, sends
// each move as "position startpos moves ..." with "go", judges every answer with chess.js
// and ends the game on mate, a draw by the rules, the ply limit, or a fault. A fault loses
// the game for the side that made it.
import { Chess } from 'chess.js'
import { PlayerFault, STALL_MS } from './uci-player.mjs'

const COLORS = ['white', 'black']

// Time controls, all in milliseconds:
//   {kind: 'clock', base, inc, moves}  base + inc per move; moves > 0 adds base again every
//                                      `moves` moves (a repeating control, sent as movestogo)
//   {kind: 'movetime', ms}             a fixed time per move; every second move is sent as
//                                      "go infinite" and stopped by the referee after ms
// margin: how far past its clock (or 2 x the fixed time) a move may come before it counts as
// a loss on time; emulated and instrumented builds get more.
export function describeControl(tc) {
  if (tc.kind === 'xboard') return tc.text
  if (tc.kind === 'movetime') return `${tc.ms} ms a move (every second one by stop)`
  const base = `${tc.base / 1000} s`
  if (tc.moves) return `${tc.moves} moves in ${base}, repeating`
  return `${base} + ${tc.inc} ms`
}

function pgnTimeControl(tc) {
  if (tc.kind === 'movetime') return `${tc.ms / 1000}/move`
  if (tc.moves) return `${tc.moves}/${tc.base / 1000}`
  return `${tc.base / 1000}+${tc.inc / 1000}`
}

// Plays one game. players: [white, black], both started. Answers the game's record:
// {pgn, result ('1-0', '0-1', '1/2-1/2'), reason, fault: {color, kind, detail, ply} | null,
//  stats: {minClock, movestogoOne, slowestStop}}
export async function playGame({ players, tc, opening = [], plyLimit, event, round }) {
  const chess = new Chess()
  for (const move of opening) chess.move(move)
  const moves = chess.history({ verbose: true }).map((m) => m.lan)
  const clock = [tc.base, tc.base]
  const movesLeft = [tc.moves || 0, tc.moves || 0]
  const stats = { minClock: Infinity, movestogoOne: 0, slowestStop: 0, overrun: 0 }
  let result = null
  let reason = ''
  let fault = null

  for (const p of players) await p.newGame()
  while (!result) {
    const side = chess.turn() === 'w' ? 0 : 1
    const player = players[side]
    const ply = moves.length
    try {
      await player.setPosition('startpos', moves)
      const answer = await think(player, tc, side, clock, movesLeft, stats)
      if (!answer.move) throw new PlayerFault('no move', 'bestmove without a move')
      const played = playCoordinateMove(chess, answer.move)
      if (!played)
        throw new PlayerFault('illegal move', `"${answer.move}" in ${chess.fen()}`)
      moves.push(played.lan)
      chess.setComment(`${(answer.ms / 1000).toFixed(3)}s`)
      if (tc.kind === 'clock') {
        clock[side] -= answer.ms
        if (player.pellix) stats.minClock = Math.min(stats.minClock, clock[side])
        if (clock[side] < -tc.margin)
          throw new PlayerFault('loss on time', `${answer.move} took ${answer.ms.toFixed(0)} ms, ${(clock[side] + answer.ms).toFixed(0)} ms were left`)
        clock[side] += tc.inc
        if (tc.moves && --movesLeft[side] === 0) {
          movesLeft[side] = tc.moves
          clock[side] += tc.base
        }
      } else if (answer.ms > 2 * tc.ms + tc.margin) {
        throw new PlayerFault('loss on time', `${answer.move} took ${answer.ms.toFixed(0)} ms of a fixed ${tc.ms} ms`)
      }
    } catch (error) {
      if (!(error instanceof PlayerFault)) throw error
      fault = { color: COLORS[side], player: player.name, kind: error.kind, detail: error.detail, move: Math.floor(ply / 2) + 1, ply }
      result = side === 0 ? '0-1' : '1-0'
      reason = `${COLORS[side]} ${error.kind} at move ${fault.move}: ${error.detail}`
      break
    }
    if (chess.isCheckmate()) {
      result = chess.turn() === 'w' ? '0-1' : '1-0'
      reason = `${chess.turn() === 'w' ? 'black' : 'white'} mates`
    } else if (chess.isDraw() || chess.isStalemate()) {
      result = '1/2-1/2'
      reason = chess.isStalemate() ? 'stalemate' : chess.isThreefoldRepetition() ? 'threefold repetition' : chess.isInsufficientMaterial() ? 'insufficient material' : 'fifty-move rule'
    } else if (moves.length >= plyLimit) {
      result = '1/2-1/2'
      reason = `adjudicated a draw at the ply limit (${plyLimit})`
    }
  }

  chess.setHeader('Event', event)
  chess.setHeader('Site', 'make test-games')
  chess.setHeader('Date', new Date().toISOString().slice(0, 10).replaceAll('-', '.'))
  chess.setHeader('Round', String(round))
  chess.setHeader('White', players[0].id)
  chess.setHeader('Black', players[1].id)
  chess.setHeader('Result', result)
  chess.setHeader('TimeControl', pgnTimeControl(tc))
  chess.setHeader('Termination', reason)
  const pgn = chess.pgn().replace(/\s*(1-0|0-1|1\/2-1\/2|\*)\s*$/, '') + ` {${reason}} ${result}\n`
  return { pgn, result, reason, fault, stats, round }
}

// Plays "e2e4" or "e7e8q" on the board; answers the move, or null when it is not legal.
function playCoordinateMove(chess, text) {
  const m = /^([a-h][1-8])([a-h][1-8])([nbrq])?$/.exec(text)
  if (!m) return null
  try {
    const played = chess.move({ from: m[1], to: m[2], promotion: m[3] })
    if (played.lan === text) return played
    chess.undo() // a promotion without its piece
    return null
  } catch {
    return null
  }
}

// One search of the side to move under the control: answers {move, ms}.
async function think(player, tc, side, clock, movesLeft, stats) {
  if (tc.kind === 'movetime') {
    if (clock.moveCount === undefined) clock.moveCount = 0
    if (clock.moveCount++ % 2 === 1) {
      const answer = await player.goInfiniteThenStop(tc.ms)
      stats.slowestStop = Math.max(stats.slowestStop, answer.stopMs)
      return answer
    }
    return player.go({ movetime: tc.ms }, 2 * tc.ms + tc.margin + STALL_MS)
  }
  const options = {
    wtime: Math.max(0, Math.round(clock[0])),
    btime: Math.max(0, Math.round(clock[1])),
    winc: tc.inc,
    binc: tc.inc,
  }
  if (tc.moves) {
    options.movestogo = movesLeft[side]
    if (movesLeft[side] === 1 && player.pellix) stats.movestogoOne++
  }
  return player.go(options, Math.max(0, clock[side]) + tc.margin + STALL_MS)
}
