// XBoard games refereed by xboard itself, as users' matches run: Debian's xboard on an Xvfb
// display plays a one-game match (-matchGames 1), flags on time (-autoCallFlag), saves the
// game as PGN and logs every line to and from both engines. The game is then judged from
// what xboard wrote: a Pellix loss by anything but mate is a fault, and the log gives the
// slowest "pong" of each engine.
import { spawn } from 'node:child_process'
import fs from 'node:fs'
import path from 'node:path'
import { Chess } from 'chess.js'

// A longest game: the controls are a few seconds a side, plus xboard's own start-up.
const GAME_DEADLINE_MS = 240000
const PLY_LIMIT_MOVES = 60 // xboard adjudicates a draw after this many moves

// One Xvfb display for every xboard of the run; answers {display, stop}.
export async function startXvfb(out) {
  const log = fs.openSync(path.join(out, 'logs', 'xvfb.log'), 'a')
  const server = spawn('Xvfb', ['-displayfd', '3', '-screen', '0', '1280x1024x24', '-nolisten', 'tcp'], {
    stdio: ['ignore', log, log, 'pipe'],
  })
  const number = await new Promise((resolve, reject) => {
    let text = ''
    server.stdio[3].on('data', (d) => {
      text += d
      if (text.includes('\n')) resolve(text.trim())
    })
    server.on('exit', (code) => reject(new Error(`Xvfb exited with status ${code}`)))
    setTimeout(() => reject(new Error('Xvfb did not start')), 20000)
  })
  return { display: `:${number}`, stop: () => server.kill() }
}

function engineArguments(slot, label, engines, uci) {
  const flag = slot === 'first' ? 'f' : 's'
  const command = label.startsWith('xboard:') ? label.slice('xboard:'.length) : engines[label].script
  // -fUCI and -sUCI are switches: xboard reads a "false" after one as an engine command.
  return [`-${flag}cp`, command, ...(uci ? [`-${flag}UCI`] : [])]
}

export async function playXboardUnit(unit, engines, record, options, xvfb) {
  const dir = path.join(options.out, 'xboard', unit.name.replaceAll(' ', '-'))
  fs.rmSync(dir, { recursive: true, force: true })
  fs.mkdirSync(dir, { recursive: true })
  const pgnFile = path.join(dir, 'game.pgn')
  const debugFile = path.join(dir, 'xboard.debug')
  // Colours alternate from one run to the next by the round number.
  const pellixWhite = record.round % 2 === 0
  const slots = pellixWhite ? unit.engines : [...unit.engines].reverse()
  const args = [
    ...engineArguments('first', slots[0], engines, unit.uci),
    ...engineArguments('second', slots[1], engines, unit.uci),
    '-matchGames', '1', ...unit.tc.args,
    '-saveGameFile', pgnFile, '-debugMode', 'true', '-nameOfDebugFile', debugFile,
    '-autoCallFlag', 'true', '-xponder', '-xexit', '-xpopup', '-xanimate',
    '-adjudicateDrawMoves', String(PLY_LIMIT_MOVES), '-soundProgram', '',
  ]
  const env = {
    ...process.env,
    DISPLAY: xvfb.display,
    HOME: dir, // xboard keeps its settings file here, not in the user's home
    PATH: `/usr/games:${process.env.PATH}`, // Debian's engines, polyglot and xboard live there
  }
  const log = fs.openSync(path.join(dir, 'xboard.out'), 'w')
  const xboard = spawn('xboard', args, { cwd: dir, env, stdio: ['ignore', log, log] })
  const exit = await new Promise((resolve) => {
    const timer = setTimeout(() => xboard.kill('SIGKILL'), GAME_DEADLINE_MS)
    xboard.on('exit', (code, signal) => {
      clearTimeout(timer)
      resolve({ code, signal })
    })
  })
  if (!fs.existsSync(pgnFile) || !/\[Result /.test(fs.readFileSync(pgnFile, 'utf8')))
    throw new Error(`xboard saved no game (exit ${exit.signal || exit.code}); see ${dir}`)
  judge(unit, slots, fs.readFileSync(pgnFile, 'utf8'), fs.readFileSync(debugFile, 'utf8'), record)
}

// The saved game: replayed with chess.js, its result and xboard's reason read. xboard
// writes the reason as the last comment, e.g. {White wins on time} or {Black mates}.
function judge(unit, slots, pgn, debug, record) {
  const ending = /\{([^{}]*)\}\s*(1-0|0-1|1\/2-1\/2|\*)\s*$/.exec(pgn)
  const reason = ending ? ending[1] : 'no reason given'
  const chess = new Chess()
  // chess.js reads no comment after the last move: the reason is taken off first. A move
  // that is not legal throws: xboard let something through.
  chess.loadPgn(ending ? pgn.slice(0, ending.index) + ' ' + ending[2] : pgn)
  const headers = chess.getHeaders()
  const result = headers.Result
  const outcome = { pgn: pgn.trim() + '\n', result: result === '*' ? null : result, reason, fault: null, stats: {} }
  const lost = { '1-0': 'black', '0-1': 'white' }[result]
  const pellixSides = ['white', 'black'].filter((_, i) => engines(slots)[i])
  const loserIsPellix = lost ? pellixSides.includes(lost) : result === '*'
  if (loserIsPellix && !/mates|checkmate/i.test(reason)) {
    const color = lost || pellixSides[0]
    outcome.fault = {
      color,
      player: headers[color === 'white' ? 'White' : 'Black'],
      kind: 'lost under xboard',
      detail: reason,
      move: Math.floor(chess.history().length / 2) + 1,
    }
  }
  record.add({ ...unit, tc: unit.tc }, slots.map(labelOf), [headers.White, headers.Black], outcome)
  noteSlowestPong(debug, slots, record)
  checkFeatures(unit, debug, slots, record)
}

// What python-chess needs of an XBoard engine: the feature line, with ping=1, setboard=1 and
// done=1, within 2 s of "xboard" (it gives up after that).
function checkFeatures(unit, debug, slots, record) {
  slots.forEach((slot, i) => {
    if (slot.startsWith('xboard:')) return
    const who = i === 0 ? 'first' : 'second'
    const asked = new RegExp(`^(\\d+) >${who}\\s*: xboard$`, 'm').exec(debug)
    const told = new RegExp(`^(\\d+) <${who}\\s*: (feature .*done=1.*)$`, 'm').exec(debug)
    if (unit.uci) return // polyglot answers for a UCI engine
    if (!asked || !told || !/ping=1/.test(told[2]) || !/setboard=1/.test(told[2]))
      record.pellixFaults.push(`${unit.name}: ${slot} sent no feature line with ping=1, setboard=1 and done=1`)
    else if (Number(told[1]) - Number(asked[1]) > 2000)
      record.pellixFaults.push(`${unit.name}: ${slot} took ${Number(told[1]) - Number(asked[1])} ms to send its features`)
  })
}

const labelOf = (slot) => (slot.startsWith('xboard:') ? slot.slice(7) : slot)
const engines = (slots) => slots.map((s) => !s.startsWith('xboard:'))

// The debug log stamps every line in milliseconds: "123 >first : ping 3", "130 <first : pong 3".
function noteSlowestPong(debug, slots, record) {
  const sent = new Map()
  for (const line of debug.split('\n')) {
    const m = /^(\d+) ([<>])(first|second) : (ping|pong) (\d+)/.exec(line)
    if (!m) continue
    const slot = m[3] === 'first' ? 0 : 1
    if (slots[slot].startsWith('xboard:')) continue
    const key = `${m[3]} ${m[5]}`
    if (m[2] === '>') sent.set(key, Number(m[1]))
    else if (sent.has(key)) {
      const ms = Number(m[1]) - sent.get(key)
      if (ms > record.longestWait.ms) record.longestWait = { ms, command: `ping under xboard`, player: slots[slot] }
    }
  }
}
