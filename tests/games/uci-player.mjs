// One UCI engine under the referee: the node-uci client drives it, and every command it is
// sent has a deadline, as cutechess gives one. A missed deadline, an exit or an unreadable
// answer becomes a PlayerFault naming the command; the player is then dead and the match
// starts a fresh process for the next game.
import uci from 'node-uci'

const { Engine } = uci

// cutechess calls an engine stalled after 15 s without an answer.
export const STALL_MS = 15000

export class PlayerFault extends Error {
  constructor(kind, detail) {
    super(`${kind}: ${detail}`)
    this.kind = kind // 'stall', 'crash', 'illegal move', 'loss on time', ...
    this.detail = detail
  }
}

const now = () => performance.now()

export class UciPlayer {
  // command: an executable (the match writes a small script per engine, so that working
  // directory, emulator and log live there).
  constructor(name, command) {
    this.name = name
    this.command = command
    this.engine = null
    this.exit = null
    this.longestWait = { ms: 0, command: '' } // the slowest answer of all
    this.slowestStop = 0 // milliseconds from "stop" to "bestmove"
  }

  get alive() {
    return this.engine !== null && this.exit === null
  }

  // Waits for one answer; a silent or dead engine is a fault of this player.
  async answer(command, promise, limit = STALL_MS) {
    promise.catch(() => {}) // a late rejection after a deadline has been dealt with
    const started = now()
    let timer
    const deadline = new Promise((_, reject) => {
      timer = setTimeout(() => reject(new PlayerFault('stall', `no answer to "${command}" in ${limit} ms`)), limit)
    })
    try {
      return await Promise.race([promise, deadline])
    } catch (error) {
      if (error instanceof PlayerFault) {
        this.kill()
        throw error
      }
      throw new PlayerFault('crash', `${this.exitText()} while waiting for the answer to "${command}"`)
    } finally {
      clearTimeout(timer)
      const waited = now() - started
      if (waited > this.longestWait.ms && !command.startsWith('go '))
        this.longestWait = { ms: waited, command }
    }
  }

  exitText() {
    const e = this.exit
    if (!e) return 'lost its output'
    return e.signal ? `killed by ${e.signal}` : `exited with status ${e.code}`
  }

  async start() {
    this.engine = new Engine(this.command)
    this.exit = null
    const init = this.engine.init()
    // node-uci spawns the process inside init: watch it for an exit from then on.
    this.exited = new Promise((resolve) =>
      this.engine.proc.on('exit', (code, signal) => resolve((this.exit = { code, signal }))),
    )
    this.engine.proc.stdin.on('error', () => {}) // writes to a dead engine are found by the deadlines
    await this.answer('uci', init, 10000 + STALL_MS)
    this.id = this.engine.id.name || this.name
    this.options = [...this.engine.options.keys()]
  }

  async newGame() {
    await this.answer('ucinewgame', this.engine.ucinewgame())
  }

  // The position, then "isready" before the move as fastchess sends it (node-uci's position
  // waits for readyok itself).
  async setPosition(fen, moves) {
    await this.answer('position', this.engine.position(fen, moves))
  }

  // A timed search: answers {move, ms}. limitMs is how long the referee waits for the move.
  async go(options, limitMs) {
    const command = 'go ' + Object.entries(options).map(([k, v]) => `${k} ${v}`).join(' ')
    const started = now()
    const result = await this.answer(command, this.engine.go(options), limitMs)
    return { move: result.bestmove, ms: now() - started }
  }

  // "go infinite", then "stop" after thinkMs: answers {move, ms, stopMs}. A move sent
  // before the stop (the search reached its depth limit) is taken as it is.
  async goInfiniteThenStop(thinkMs) {
    const started = now()
    const emitter = this.engine.goInfinite({})
    let early = null
    emitter.on('data', (data) => {
      if (data.bestmove) early = data.bestmove
    })
    await Promise.race([new Promise((resolve) => setTimeout(resolve, thinkMs)), this.exited])
    if (!this.alive) throw new PlayerFault('crash', `${this.exitText()} during "go infinite"`)
    if (early) {
      emitter.emit('stop')
      return { move: early, ms: now() - started, stopMs: 0 }
    }
    const stopped = now()
    const result = await this.answer('stop', this.engine.stop())
    const stopMs = now() - stopped
    this.slowestStop = Math.max(this.slowestStop, stopMs)
    return { move: result.bestmove, ms: now() - started, stopMs }
  }

  // "quit": the engine must end (with any status: Pellix's is 1).
  async quit() {
    if (!this.alive) return this.kill()
    this.engine.write('quit')
    const { code, signal } = await this.answer('quit', this.exited)
    this.engine = null
    // Status 1 is Pellix's own after "quit"; anything else is a crash on the way out.
    if (signal || (code !== 0 && code !== 1)) throw new PlayerFault('crash', `${this.exitText()} after "quit"`)
  }

  kill() {
    if (this.engine && this.engine.proc && this.exit === null) this.engine.proc.kill('SIGKILL')
    this.engine = null
  }
}
