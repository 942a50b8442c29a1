// Knights, bishops, rooks and queens: mobility, safe mobility, piece-square tables, king
// tropism, knight outposts, the bishop pair and the file and seventh-rank bonuses. Fills the
// attack maps that the king terms read afterwards.
#include "board/side.h"
#include "eval/eval_tables.h"
#include "eval/eval_terms.h"

#include <array>

namespace {

// King distance between any two squares, looked up rather than worked out per piece.
constexpr auto DISTANCE = [] {
    std::array<std::array<std::uint8_t, 64>, 64> table{};
    for (Square a = 0; a < 64; ++a)
        for (Square b = 0; b < 64; ++b) {
            const int df = fileOf(a) > fileOf(b) ? fileOf(a) - fileOf(b) : fileOf(b) - fileOf(a);
            const int dr = rankOf(a) > rankOf(b) ? rankOf(a) - rankOf(b) : rankOf(b) - rankOf(a);
            table[a][b]  = std::uint8_t(df > dr ? df : dr);
        }
    return table;
}();

constexpr Bitboard relativeRankMask(Color c, int rank) {
    return RANK_1 << (8 * relativeRank(c, rank));
}

// The sums of one colour's pieces, kept together while its pieces are walked.
template <Color Us> struct PieceScorer {
    static constexpr Color THEM = opponent(Us);

    const Position& p;
    EvalInfo& info;
    int late;
    // Read once and kept local: a store into `info` could alias any board word, so the
    // attack map is gathered here and written back when the walk is done.
    const Bitboard reachable                          = ~p.bbColorPiece[Us];
    const Bitboard safe                               = ~info.pawnAttackMap[THEM];
    const std::array<std::uint8_t, 64>& fromTheirKing = DISTANCE[p.kingSquare[THEM]];
    Bitboard attacked                                 = 0;
    int material = 0, placement = 0, mobility = 0, safeMobility = 0, tropism = 0;

    // What every piece kind scores the same way, from the squares it attacks.
    void addActivity(Piece kind, Square s, Bitboard attacks) {
        const Bitboard reach = attacks & reachable;
        attacked |= attacks;
        mobility += popCount(reach);
        safeMobility += popCount(reach & safe);
        placement += PIECE_SQUARE[late][kind][Us][s];
        tropism += TROPISM[kind][fromTheirKing[s]];
    }

    // A knight on an outpost square is worth more when one of our pawns guards it and no
    // enemy pawn can ever come to drive it off.
    int outpost(Square s) const {
        const int value = KNIGHT_OUTPOST[Us][s];
        if (!value || !(info.pawnAttackMap[Us] & bit(s)))
            return 0;
        return (p.bbPiece[THEM][PAWN] & OUTPOST_SPAN[Us][s]) ? 0 : value;
    }

    int rookFile(Square s) const {
        const Bitboard file = FILE_A << fileOf(s);
        if (p.bbPiece[Us][PAWN] & file)
            return 0;
        return (p.bbPiece[THEM][PAWN] & file) ? ROOK_HALF_OPEN_FILE : ROOK_OPEN_FILE;
    }

    // The seventh rank is worth taking while it pens the enemy king in or holds pawns.
    bool seventhRankCounts() const {
        return (p.bbPiece[THEM][KING] & relativeRankMask(Us, 7)) ||
               (p.bbPiece[THEM][PAWN] & relativeRankMask(Us, 6));
    }

    void scoreAll() {
        for (Bitboard b = p.bbPiece[Us][KNIGHT]; b;) {
            const Square s = popLowest(b);
            addActivity(KNIGHT, s, knightAttack[s]);
            placement += outpost(s);
        }
        for (Bitboard b = p.bbPiece[Us][BISHOP]; b;) {
            const Square s = popLowest(b);
            addActivity(BISHOP, s, p.bishopAttacks(s));
        }
        if (popCount(p.bbPiece[Us][BISHOP]) >= 2)
            material += BISHOP_PAIR;
        const bool seventh       = seventhRankCounts();
        const Bitboard onSeventh = relativeRankMask(Us, 6);
        for (Bitboard b = p.bbPiece[Us][ROOK]; b;) {
            const Square s = popLowest(b);
            addActivity(ROOK, s, p.rookAttacks(s));
            placement += rookFile(s);
            if (seventh && (onSeventh & bit(s)))
                placement += ROOK_ON_SEVENTH;
        }
        for (Bitboard b = p.bbPiece[Us][QUEEN]; b;) {
            const Square s = popLowest(b);
            addActivity(QUEEN, s, p.queenAttacks(s));
            if (seventh && (onSeventh & bit(s)))
                placement += QUEEN_ON_SEVENTH;
        }
    }
};

template <Color Us> void scoreSide(const Position& p, EvalInfo& info, EvalTerms& terms) {
    PieceScorer<Us> scorer{p, info, tableStage(p.gameStage)};
    scorer.scoreAll();
    info.attackMap[Us] = scorer.attacked;
    terms.add(GROUP_MATERIAL, Us, scorer.material);
    terms.add(GROUP_PLACEMENT, Us, scorer.placement);
    terms.add(GROUP_MOBILITY, Us, scorer.mobility);
    terms.add(GROUP_SAFE_MOBILITY, Us, scorer.safeMobility);
    terms.add(GROUP_TROPISM, Us, scorer.tropism);
}

} // namespace

void scorePieces(const Position& p, EvalInfo& info, EvalTerms& terms) {
    scoreSide<WHITE>(p, info, terms);
    scoreSide<BLACK>(p, info, terms);
}
