// A UCI opponent that breaks on purpose, for the referee's own check that a broken opponent
// loses its game and the match goes on: it plays random legal moves, and at its Nth move
// (--at N) it exits (--crash), stops answering (--stall) or answers an illegal move
// (--illegal).
import { Chess } from 'chess.js'
import readline from 'node:readline'

const args = process.argv.slice(2)
const at = Number(args[args.indexOf('--at') + 1] || 5)
const mode = args.find((a) => ['--crash', '--stall', '--illegal'].includes(a)) || '--crash'
let chess = new Chess()
let moves = 0
const say = (line) => process.stdout.write(line + '\n')

readline.createInterface({ input: process.stdin }).on('line', (line) => {
  if (line === 'uci') say('id name Broken ' + mode.slice(2) + '\nuciok')
  else if (line === 'isready') say('readyok')
  else if (line === 'quit') process.exit(0)
  else if (line === 'ucinewgame') moves = 0
  else if (line.startsWith('position startpos')) {
    chess = new Chess()
    for (const m of line.split(' moves ')[1]?.split(' ') ?? [])
      chess.move({ from: m.slice(0, 2), to: m.slice(2, 4), promotion: m[4] })
  } else if (line.startsWith('go')) {
    if (++moves === at) {
      if (mode === '--crash') process.kill(process.pid, 'SIGSEGV')
      if (mode === '--stall') return
      if (mode === '--illegal') return say('bestmove a1a1')
    }
    const legal = chess.moves({ verbose: true })
    say('bestmove ' + legal[Math.floor(Math.random() * legal.length)].lan)
  }
})
