// make test-games and make soak: plays the mix of games in plan.mjs, UCI games refereed here
// through node-uci and XBoard games refereed by xboard itself under Xvfb, a few at a time,
// writes every game as PGN under the output folder and a summary of the score per opponent
// and of Pellix's faults. Exits with status 1 when Pellix made any fault, when a broken
// opponent's fault went unnoticed, or when a game could not be played at all.
//
// node referee.mjs --out build/games --pellix build/release [--asan build/sanitize]
//     [--windows build/windows] [--armhf build/armhf] [--jobs 2]
//     [--soak GAMES]      play the soak mix until GAMES games, appending to soak.pgn
//     [--only REGEX]      only the units whose name matches
import fs from 'node:fs'
import path from 'node:path'
import { playGame, describeControl } from './uci-game.mjs'
import { UciPlayer, PlayerFault } from './uci-player.mjs'
import { playXboardUnit, startXvfb } from './xboard-match.mjs'
import { ciPlan, soakPlan, OPENINGS } from './plan.mjs'

const here = path.dirname(new URL(import.meta.url).pathname)

function parseArguments(argv) {
  const options = { jobs: 2 }
  for (let i = 0; i < argv.length; i += 2) options[argv[i].replace(/^--/, '')] = argv[i + 1]
  for (const key of ['out', 'pellix', 'asan', 'windows', 'armhf'])
    if (options[key]) options[key] = path.resolve(options[key])
  options.jobs = Number(options.jobs)
  return options
}

// Each engine runs from a script in out/engines: its own working directory (with the
// pellix.ini it should read), its emulator if any, and its standard error kept in out/logs.
function engineTable(options) {
  const book = options.pellix && path.join(options.pellix, 'pellixopenbook.bin')
  const ini = (extra = '') => `[Engine]\nHash=16\n${extra}`
  const table = {
    pellix: { command: `${options.pellix}/pellix`, ini: ini(`Book=1\nBookFile=${book}\n`), pellix: true },
    stockfish: { command: '/usr/games/stockfish', uci: true },
    // They break at their second move: a random mover can be mated by Pellix before a later one.
    'broken-crash': { command: `node ${here}/broken-engine.mjs --crash --at 2` },
    'broken-stall': { command: `node ${here}/broken-engine.mjs --stall --at 2` },
    'broken-illegal': { command: `node ${here}/broken-engine.mjs --illegal --at 2` },
  }
  if (options.asan)
    // A sanitizer report ends the engine with a status of its own: 1 is Pellix's after quit.
    table['pellix-asan'] = {
      command: `env ASAN_OPTIONS=exitcode=86 UBSAN_OPTIONS=halt_on_error=1:exitcode=86 ${options.asan}/pellix`,
      ini: ini(),
      pellix: true,
    }
  if (options.windows)
    table['pellix-wine'] = {
      command: `env WINEDEBUG=-all wine ${options.windows}/relay.exe ${options.windows}/pellix.exe`,
      ini: ini(),
      pellix: true,
    }
  if (options.armhf)
    table['pellix-armhf'] = {
      command: `qemu-arm -L /usr/arm-linux-gnueabihf ${options.armhf}/pellix`,
      ini: ini(),
      pellix: true,
    }
  for (const [label, engine] of Object.entries(table)) {
    const work = path.join(options.out, 'work', label)
    fs.mkdirSync(work, { recursive: true })
    if (engine.ini) fs.writeFileSync(path.join(work, 'pellix.ini'), engine.ini)
    const script = path.join(options.out, 'engines', label)
    fs.mkdirSync(path.dirname(script), { recursive: true })
    const log = path.join(options.out, 'logs', `${label}.stderr`)
    fs.mkdirSync(path.dirname(log), { recursive: true })
    fs.writeFileSync(script, `#!/bin/sh\ncd '${work}' || exit 127\nexec ${engine.command} 2>>'${log}'\n`, { mode: 0o755 })
    engine.script = script
    engine.work = work
  }
  return table
}

// A UCI unit: a few games between two engines that stay up between games, colours
// alternating; a player that died is started again for the next game.
async function playUciUnit(unit, engines, record) {
  const players = unit.engines.map((label, i) => {
    const player = new UciPlayer(`${label}${unit.engines[0] === unit.engines[1] ? ` #${i + 1}` : ''}`, engines[label].script)
    player.label = label
    player.pellix = Boolean(engines[label].pellix)
    return player
  })
  for (let game = 0; game < unit.games; game++) {
    const order = game % 2 === 0 ? [0, 1] : [1, 0]
    const seated = order.map((i) => players[i])
    let outcome
    try {
      for (const p of seated) if (!p.alive) await startPlayer(p)
      outcome = await playGame({
        players: seated,
        tc: unit.tc,
        opening: OPENINGS[(record.round + game) % OPENINGS.length],
        plyLimit: unit.plyLimit,
        event: `${unit.name}: ${describeControl(unit.tc)}`,
        round: ++record.started,
      })
    } catch (error) {
      if (!(error instanceof PlayerFault)) throw error
      // A fault before the first move (the handshake): that player loses the game unplayed.
      const loser = Math.max(0, seated.findIndex((p) => !p.alive))
      outcome = {
        pgn: '',
        result: loser === 0 ? '0-1' : '1-0',
        reason: `${seated[loser].name} ${error.message}`,
        fault: { color: loser === 0 ? 'white' : 'black', player: seated[loser].name, kind: error.kind, detail: error.detail, move: 0 },
        stats: {},
      }
    }
    record.add(unit, seated.map((p) => p.label), seated.map((p) => p.name), outcome)
  }
  for (const p of players) {
    try {
      await p.quit()
    } catch (error) {
      if (!(error instanceof PlayerFault)) throw error
      record.add(unit, [p.label, p.label], [p.name, p.name], {
        result: null,
        reason: `after the games: ${error.message}`,
        fault: { color: 'white', player: p.name, kind: error.kind, detail: `${error.detail} (after the games)`, move: 0 },
        stats: {},
      })
    }
    record.noteWaits(p)
  }
}

async function startPlayer(player) {
  await player.start()
  if (player.options.length && player.pellix) {
    player.kill()
    throw new PlayerFault('options', `announced UCI options: ${player.options.join(', ')}`)
  }
}

// Everything the summary needs, gathered as the units finish.
class Record {
  constructor(engines, out, pgnFile) {
    this.engines = engines
    this.out = out
    this.pgnFile = pgnFile
    this.rows = new Map() // "opponent | control" -> {games, w, d, l}
    this.pellixFaults = []
    this.opponentFaults = []
    this.failures = []
    this.round = 0 // games finished
    this.started = 0 // games begun, which numbers them
    this.games = 0
    this.longestWait = { ms: 0, command: '', player: '' }
    this.slowestStop = { ms: 0, player: '' }
    this.minClock = Infinity
    this.movestogoOne = 0
  }

  isPellix(label) {
    return Boolean(this.engines[label]?.pellix)
  }

  // One finished game: labels and names of [white, black].
  add(unit, labels, names, outcome) {
    if (outcome.pgn) fs.appendFileSync(this.pgnFile, outcome.pgn + '\n')
    if (outcome.result) {
      this.games++
      this.round++
      this.score(unit, labels, outcome.result)
    }
    const s = outcome.stats || {}
    if (s.minClock !== undefined && s.minClock < this.minClock) this.minClock = s.minClock
    this.movestogoOne += s.movestogoOne || 0
    if (s.slowestStop > this.slowestStop.ms) this.slowestStop = { ms: s.slowestStop, player: unit.name }
    const f = outcome.fault
    if (!f) return
    const label = f.color === 'white' ? labels[0] : labels[1]
    const where = `${unit.name}, game ${outcome.round ?? this.round} (${names[0]} - ${names[1]}), ${f.color} move ${f.move}`
    const line = `${where}: ${f.player} ${f.kind}: ${f.detail}`
    if (this.isPellix(label)) this.pellixFaults.push(line)
    else this.opponentFaults.push({ unit: unit.name, line })
  }

  // The score of the unit's first engine (a Pellix build) against its second; in self-play
  // the score of the side with white.
  score(unit, labels, result) {
    const points = { '1-0': [1, 0], '0-1': [0, 1], '1/2-1/2': [0.5, 0.5] }[result]
    const self = unit.engines[0] === unit.engines[1]
    const side = self || labels[0] === unit.engines[0] ? 0 : 1
    const key = `${unit.engines[0]} vs ${unit.engines[1]}${self ? ' (white\'s score)' : ''} | ${unit.protocol} | ${describeControl(unit.tc)}`
    const row = this.rows.get(key) || { games: 0, w: 0, d: 0, l: 0 }
    row.games++
    if (points[side] === 1) row.w++
    else if (points[side] === 0.5) row.d++
    else row.l++
    this.rows.set(key, row)
  }

  noteWaits(player) {
    if (player.label.startsWith('pellix') && player.longestWait.ms > this.longestWait.ms)
      this.longestWait = { ...player.longestWait, player: player.name }
    if (player.label.startsWith('pellix') && player.slowestStop > this.slowestStop.ms)
      this.slowestStop = { ms: player.slowestStop, player: player.name }
  }

  summary(seconds) {
    const lines = [`${this.games} games in ${seconds.toFixed(0)} s`, '']
    lines.push('Pellix build vs opponent | protocol | time control: games, Pellix +win =draw -loss')
    for (const [key, r] of [...this.rows].sort())
      lines.push(`  ${key}: ${r.games} games, +${r.w} =${r.d} -${r.l}`)
    lines.push('', `Pellix faults: ${this.pellixFaults.length}`)
    for (const f of this.pellixFaults) lines.push(`  ${f}`)
    lines.push(`Opponent faults (the opponent's loss, not Pellix's): ${this.opponentFaults.length}`)
    for (const f of this.opponentFaults) lines.push(`  ${f.line}`)
    lines.push('', `Longest wait for an answer from Pellix (not a search): ${this.longestWait.ms.toFixed(0)} ms (${this.longestWait.command}, ${this.longestWait.player})`)
    lines.push(`Slowest bestmove after stop: ${this.slowestStop.ms.toFixed(0)} ms (${this.slowestStop.player})`)
    if (this.minClock !== Infinity) lines.push(`Lowest clock Pellix had left after a move in a UCI game: ${this.minClock.toFixed(0)} ms; Pellix moves searched at movestogo 1: ${this.movestogoOne}`)
    for (const f of this.failures) lines.push(`NOT PLAYED: ${f}`)
    return lines.join('\n') + '\n'
  }
}

async function runPool(units, jobs, run) {
  const queue = [...units]
  const worker = async () => {
    while (queue.length) await run(queue.shift())
  }
  await Promise.all(Array.from({ length: Math.min(jobs, units.length) }, worker))
}

async function main() {
  const options = parseArguments(process.argv.slice(2))
  const soak = options.soak !== undefined
  if (!soak) fs.rmSync(path.join(options.out, 'logs'), { recursive: true, force: true })
  fs.mkdirSync(options.out, { recursive: true })
  const engines = engineTable(options)
  const available = (label) => Boolean(engines[label]) || label.startsWith('xboard:')
  let units = (soak ? soakPlan(Number(options.soak)) : ciPlan()).filter((u) => u.engines.every(available))
  if (options.only) units = units.filter((u) => new RegExp(options.only).test(u.name))
  if (!units.length) throw new Error('no games to play')
  const pgnFile = path.join(options.out, soak ? 'soak.pgn' : 'games.pgn')
  if (!soak) fs.rmSync(pgnFile, { force: true })
  const record = new Record(engines, options.out, pgnFile)
  const started = performance.now()
  const display = units.some((u) => u.protocol === 'xboard') ? await startXvfb(options.out) : null

  const play = async (unit) => {
    const t0 = performance.now()
    try {
      if (unit.protocol === 'xboard') await playXboardUnit(unit, engines, record, options, display)
      else await playUciUnit(unit, engines, record)
    } catch (error) {
      record.failures.push(`${unit.name}: ${error.stack || error}`)
    }
    console.log(`${unit.name}: done in ${((performance.now() - t0) / 1000).toFixed(1)} s`)
  }
  // The slow and emulated games first, then the fastest controls one at a time: a game at
  // 1 s + 10 ms has no room for a scheduler that makes its engine wait.
  await runPool(units.filter((u) => !u.fast), options.jobs, play)
  display?.stop()
  await runPool(units.filter((u) => u.fast), 1, play)

  // A sanitizer report on a Pellix build's standard error is a fault even when the game went
  // on (Wine's own remarks there are not).
  for (const [label, engine] of Object.entries(engines)) {
    const log = path.join(options.out, 'logs', `${label}.stderr`)
    const text = engine.pellix && fs.existsSync(log) ? fs.readFileSync(log, 'utf8') : ''
    const report = /^.*(Sanitizer|runtime error|terminate called).*$/m.exec(text)
    if (report) record.pellixFaults.push(`${label} reported on standard error (${log}): ${report[0]}`)
  }
  // Each broken opponent must have been caught in every game it played.
  for (const unit of units.filter((u) => u.brokenOpponent)) {
    const caught = record.opponentFaults.filter((f) => f.unit === unit.name).length
    if (caught < unit.games) record.failures.push(`${unit.name}: ${caught} of ${unit.games} broken games noticed`)
  }
  const text = record.summary((performance.now() - started) / 1000)
  const summaryFile = path.join(options.out, soak ? 'soak-summary.txt' : 'summary.txt')
  if (soak) fs.appendFileSync(summaryFile, `== ${new Date().toISOString()}\n${text}\n`)
  else fs.writeFileSync(summaryFile, text)
  process.stdout.write(`\n${text}PGN: ${pgnFile}\n`)
  process.exit(record.pellixFaults.length || record.failures.length ? 1 : 0)
}

await main()
