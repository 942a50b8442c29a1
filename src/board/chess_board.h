// ChessBoard: the engine object. It holds the position, the game record, the search tables
// and the limits of the next search, and owns the opening book (made on first use). It calls out
// to its environment through the ten virtual hooks at the end and through inputPoll, the
// front end's test for a waiting command; it reads the time from platform/clock.h. Each
// group of members is defined in the folder that owns its concern (board/, movegen/, eval/,
// search/, book/).
#pragma once

#include "board/position.h"
#include "board/principal_variation.h"
#include "board/types.h"
#include "board/zobrist.h"
#include "eval/eval_info.h"
#include "eval/pawn_cache.h"
#include "search/search_limits.h"

#include <cstdint>
#include <memory>

struct SearchNode; // search/search_node.h
struct HashTable;  // search/transposition_table.h
class OpeningBook; // book/opening_book.h

// The initial position of every game.
constexpr const char* START_FEN = "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1";

// Capacities of the fixed storage. The history stack holds the longest game the engine
// accepts plus the deepest search line on top of it (search plies and null moves).
constexpr int GAME_PLY_LIMIT   = 8192;
constexpr int HISTORY_CAPACITY = GAME_PLY_LIMIT + 2 * MAX_PLY;
// Each search ply owns 256 move entries; one generator call can write more than that in a
// contrived position (nine queens and more), so the stack ends with room for the largest
// list any position accepted by the FEN reader can produce.
constexpr int MOVE_STRIDE     = 256;
constexpr int MAX_GENERATED   = 1024;
constexpr int MOVE_STACK_SIZE = MAX_PLY * MOVE_STRIDE + MAX_GENERATED;

enum GameStatus : std::uint8_t { STATUS_NORMAL = 0, STATUS_CHECK, STATUS_MATE, STATUS_STALEMATE };

constexpr int MAX_PERFT_ROWS = 32; // depths perftReport stores; deeper ones run unstored

// Seven counters of one perft depth, in report order.
struct PerftCounters {
    std::uint64_t nodes, captures, enPassant, checks, mates, promotions, castles;
};

struct DivideRow {
    char text[16];
    std::uint64_t count;
};

// A position on the repetition stack and whether the move that reached it cannot be undone
// (a capture or, inside the search, a pawn move), which ends the look back.
struct RepetitionEntry {
    std::uint64_t key;
    bool irreversible;
};

class ChessBoard : public Position, public ZobristKeys {
public:
    ChessBoard();
    virtual ~ChessBoard();
    ChessBoard(const ChessBoard&)            = delete;
    ChessBoard& operator=(const ChessBoard&) = delete;

    // --- Tables, keys and set-up (board/chess_board.cpp, board/zobrist.cpp) -----------------
    // Allocates the history stack, generates the keys and sizes the transposition table.
    void initTables(int hashMegabytes);
    void releaseTables();
    std::uint64_t computeKey() const { return keyOf(*this); } // from scratch

    // --- New game and FEN (board/new_game.cpp, board/fen.cpp) ------------------------------
    void newGame();
    int setPosition(const char* fen); // 1 accepted, 0 rejected (board untouched)
    void toFen(char* out) const;      // at least 100 bytes
    // The position flipped top to bottom with colours and the side to move swapped (no
    // castling or en passant): the same game seen from the other side, for symmetry checks.
    void toMirroredFen(char* out) const;

    // --- Make and unmake (board/make_move.cpp) ----------------------------------------------
    int makeMove(Move m); // 1 legal, 0 own king attacked; made either way
    int unmakeMove(Move m);
    void makeNullMove();
    void unmakeNullMove();

    // --- The game record (board/game_record.cpp) --------------------------------------------
    // Makes a move of the game itself: history, repetition stack and game move list. Refuses
    // (0, board unchanged) an illegal move or one past the longest game the stacks hold.
    int playGameMove(Move m);
    int takeBackGameMove(); // the XBoard "undo"; 0 when no move is left to take back
    void resetGameRecord();

    RepetitionEntry repetitionStack[HISTORY_CAPACITY + 1];
    int repetitionTop = 0; // number of entries
    Move gameMoves[GAME_PLY_LIMIT];
    int gameMoveCount = 0;
    Move lastMove     = NO_MOVE;
    std::uint8_t takenPieces[2][GAME_PLY_LIMIT]; // by the colour that lost them
    int takenCount[2] = {0, 0};

    // --- Move text (board/move_text.cpp) ----------------------------------------------------
    // "e2e4", "e7e8n": the protocols' move text, with or without the promotion letter.
    static void moveToCoordinates(Move m, char* out, bool withPromotion = true); // 6 bytes
    static void moveToLongText(Move m, char* out); // at least 16 bytes
    static void moveToSan(Move m, char* out, const MoveEntry* list, int count);
    int sanToMove(const char* text, Move& move);
    int playCoordinateMove(const char* text);

    // --- Generation and attacks (movegen/generate.cpp, legal_moves.cpp, attacks.cpp) -------
    int generateCaptures(MoveEntry* list) const;
    int generateQuiets(MoveEntry* list) const;
    int generateEvasions(MoveEntry* list) const;
    int generateMoves(MoveEntry* list, int inCheckNow); // writes the inCheck flag
    // generateMoves' list for the side to move as it stands, without writing the flag.
    int generatePseudoLegalMoves(MoveEntry* list) const;
    // The legal moves only, in generation order; the board is left exactly as it was.
    int generateLegalMoves(MoveEntry* list);
    bool isMoveValid(Move m); // a legal move of this position
    // Whether `by` attacks `square` with the piece on `removed` lifted off (perft's king steps).
    bool isAttackedWithout(Square removed, Square square, Color by) const;

    MoveEntry moveStack[MOVE_STACK_SIZE];
    std::uint8_t gameStatus = STATUS_NORMAL;

    // --- Perft and divide (movegen/perft.cpp, perft_leaves.cpp; printed by tools/) --------
    std::uint64_t perft(int depth, int listStart);
    void perftStats(int depth, int listStart);
    int divide(int depth); // fills divideRows, returns the number of rows

    PerftCounters perftCounters                 = {};
    PerftCounters perftRows[MAX_PERFT_ROWS + 1] = {}; // by depth, 1 to MAX_PERFT_ROWS
    DivideRow divideRows[MAX_GENERATED];
    int divideCount = 0;

    // --- Move ordering (movegen/ordering.cpp, movegen/see.cpp) ------------------------------
    void scoreMoves(MoveEntry* list, int count, Move hashMove, int ply) const;
    void scoreCaptures(MoveEntry* list, int count, Move hashMove) const;
    // The searches' forms, which leave exchanges for pickMove to evaluate when a move's turn
    // may have come (movegen/ordering.h).
    void scoreMovesDeferred(MoveEntry* list, int count, Move hashMove, int ply) const;
    void scoreCapturesDeferred(MoveEntry* list, int count, Move hashMove) const;
    void pickMove(MoveEntry* list, int index, int count) const;
    void settleExchange(MoveEntry& entry) const;
    int see(Move m) const;

    // Forgets the killers and the history counts: a new position, a new search.
    void clearOrderingTables();

    Move killerMove1[MAX_PLY];
    Move killerMove2[MAX_PLY];
    Move mateKiller[MAX_PLY];
    std::int32_t historyTable[2][64][64];

    // --- Evaluation (eval/) -----------------------------------------------------------------
    // Score from the side to move's view; lazy = 1 allows the material-only exit.
    int evaluate(int alpha, int beta, int lazy);
    // The full evaluation with each term group's White and Black sums, for the diagnostic.
    int evaluateTerms(EvalTerms& terms);
    // Too little material to mate with (the endgame draw; eval/evaluate.cpp).
    bool cannotWin(Color colour) const;
    EvalInfo evalInfo; // attack maps and pawn data of the last full evaluation
    PawnCache pawnCache;

    // --- Search (search/) -------------------------------------------------------------------
    int search(int depth, int moveBase, int alpha, int beta, PrincipalVariation& pv,
               bool nullAllowed, int ply);
    int searchRoot(int depth, int alpha, int beta, PrincipalVariation& pv);
    int quiesce(int ply, int moveBase, int alpha, int beta, bool exactEval);
    bool think();
    bool startThinking();

    // The steps of one full-width node and of the iterations (search/alpha_beta.cpp,
    // search/root.cpp, search/think.cpp, search/time_control.cpp).
    bool pollStopsSearch();
    std::uint32_t elapsedMicros() const;
    void computeTimeLimit();
    int searchNode(SearchNode& node, PrincipalVariation& pv, bool nullAllowed);
    int probeTable(SearchNode& node);
    int quiesceLeaf(const SearchNode& node, PrincipalVariation& pv);
    int tryNullMove(SearchNode& node, PrincipalVariation& local);
    void internalDeepening(SearchNode& node, PrincipalVariation& local);
    bool isFutile(const SearchNode& node);
    int searchMoves(SearchNode& node, PrincipalVariation& pv, PrincipalVariation& childPv);
    int searchChild(const SearchNode& node, const MoveEntry& entry, int extension, bool givesCheck,
                    int searched, PrincipalVariation& childPv);
    void rememberCutoff(const SearchNode& node, const MoveEntry& entry, int score);
    int searchRootChild(Move m, int depth, int alpha, int beta, bool first,
                        PrincipalVariation& childPv);
    int searchCaptures(int ply, int moveBase, int alpha, int beta, bool exactEval, Move hashMove);
    void resetSearchTables();
    void seedTable(int depth);
    int validPrefix(const PrincipalVariation& pv);
    void playChosenMove();

    // The transposition table, behind a pointer so that a change to its packing rebuilds the
    // search alone: made empty with the engine, sized by initTables and emptied by
    // releaseTables through these two (search/transposition_table.cpp).
    void resizeHashTable(std::uint32_t megabytes);
    void releaseHashTable();
    std::unique_ptr<HashTable, void (*)(HashTable*)> hashTable;
    int hashMegabytes                     = 0;
    PrincipalVariation principalVariation = {};
    Move bestMove                         = NO_MOVE;

    SearchLimits limits; // how the next search is bounded, as the protocols last set it
    int maxDepth                = MAX_PLY;
    std::uint32_t timeLimit     = 7500; // the budget of the running search, microseconds
    std::uint32_t pollInterval  = 30000;
    std::uint32_t pollCounter   = 0;
    bool clockRunning[2]        = {false, false};
    std::uint32_t clockStart[2] = {0, 0};
    std::int64_t searchStart    = 0; // performance-counter ticks
    std::uint64_t nodeCount     = 0;
    volatile int stopSearch     = 0;
    int thinking                = 0;
    bool singleMove             = false;
    int suiteMode               = 0;
    // The front end's non-blocking test for a waiting command line, asked at poll nodes;
    // tools and tests leave it empty and are never interrupted.
    int (*inputPoll)() = nullptr;

    // --- Opening book (book/) ---------------------------------------------------------------
    // Loads a book file and turns book use on when it loaded.
    bool openBook(const char* path);
    // A legal book move for the position on the board, or 0.
    Move probeBook();
    // The engine's book, made empty on first use.
    OpeningBook& openingBook();
    // Made by openingBook, which hands its deleter over with it: the engine object needs no
    // more of the book than its name.
    std::unique_ptr<OpeningBook, void (*)(OpeningBook*)> book{nullptr, nullptr};
    bool bookEnabled = false;

    // --- Kept API ---------------------------------------------------------------------------
    // The engine's toolkit as it has always offered it, though no path of this engine reaches
    // it: the tests hold each to its rule. Like the reserved hooks below and the profiler
    // (tools/profiler.h), it stays for front ends and tools built on the engine object.
    // Whether the piece of `colour` on `square` is pinned to its king (movegen/attacks.cpp);
    // perft gathers a position's pins at once instead, and make decides legality elsewhere.
    bool isPinned(Square square, Color colour) const;
    // The whole slice in descending score order at once (movegen/ordering.cpp); the searches
    // pick one move at a time instead.
    static void sortMoves(MoveEntry* list, int first, int count);
    // False when the search must stop: the nodes' stop-and-poll step, for a front end that
    // drives the search from its own loop (search/think.cpp).
    bool checkTime();
    // startThinking as a thread routine, seeding the book's random choice first.
    static unsigned long startThinkingThread(void* engine);
    // The perft and divide walks as the engine reports them to its trace, which says nothing
    // (tools/console_modes.cpp): each depth's counters stored in perftRows and the profile
    // printed; divide one ply deeper than asked. Users see printPerftTable and
    // printDivideListing.
    void perftReport(int deepest);
    int divideReport(int depth);

    // --- Hooks, in their fixed slot order ---------------------------------------------------
    virtual void hookReserved2()                    = 0;
    virtual void hookGameMove()                     = 0;
    virtual void hookThinkStarted()                 = 0;
    virtual void sendMove()                         = 0;
    virtual void hookThinkEnded()                   = 0;
    virtual void printSearchInfo(int depth, const PrincipalVariation& pv, std::uint64_t nodes,
                                 double timeMicros) = 0;
    virtual void hookSearchStarted()                = 0;
    virtual void hookBoardEvent()                   = 0;
    virtual void hookReserved10()                   = 0;
    virtual int readCommand()                       = 0;

private:
    // What unmake restores from: the key, the move and the state make is about to change.
    void pushHistory(Move m);

    std::unique_ptr<HistoryRecord[]> historyStore;
};
