#pragma once

// The evaluator library: every piece of card arithmetic at scale (board enumeration,
// showdowns, hand strength decisions). Plain C++17, no Qt.
//
// Text forms at the boundary:
//   range  technical range text: comma-separated tokens of 2, 3 or 4 characters, no
//          spaces, no '+' or '-' (e.g. "QQ,AKs,AKo,AdKh").
//   board  0, 3, 4 or 5 concatenated two-character cards ("AhKd2c").
//   dead   concatenated cards, possibly empty ("Ts9s").
//   hand   one range token: 2 or 3 characters, or a concrete hand of 4.
//   card   value character and suit character ("Ad").
//
// Card masks: one 64-bit word, four 13-bit lanes d (bits 0-12), h (13-25), s (26-38),
// c (39-51); inside a lane bit 0 is the deuce and bit 12 the ace.
//
// Threads: call initializeAllBoardsBeforeCalculation() once before anything else; after
// that every function is re-entrant. `stop` is polled without a lock, at least once per
// board counted, so a calculation leaves by throwing TerminationOccured within
// microseconds of the flag turning true.
//
// Bad text (an unknown token, a card given twice, a board of more than five cards, a card
// both on the board and dead) throws std::invalid_argument whose message names the bad
// token or card. A concrete hand holding one card twice can never be dealt and counts
// nothing, like a hand blocked by the board.

#include <string>
#include <utility>
#include <vector>

// ---------------------------------------------------------------------------------------
// Hand strength key: a class of hands on a board, as 64 feature bits a hand must have
// (`positive`) and must not have (`exclusive`). The bit meanings live with the taxonomy.
struct HandStrengthKey {
    unsigned long long positive = 0;
    unsigned long long exclusive = 0;
    std::string displayName;

    HandStrengthKey() = default;
    HandStrengthKey(const HandStrengthKey& other) = default;
    HandStrengthKey(const unsigned long long& positive, const unsigned long long& exclusive)
        : positive(positive), exclusive(exclusive) {}
    HandStrengthKey(const unsigned long long& positive, const unsigned long long& exclusive,
                    const std::string& displayName)
        : positive(positive), exclusive(exclusive), displayName(displayName) {}
    ~HandStrengthKey() = default;
    HandStrengthKey& operator=(const HandStrengthKey& other) = default;

    // These compare and combine the two words only; displayName plays no part.
    bool operator==(const HandStrengthKey& other) const;
    bool operator!=(const HandStrengthKey& other) const;
    bool operator<(const HandStrengthKey& other) const;
    HandStrengthKey& operator|=(const HandStrengthKey& other);
    HandStrengthKey operator~() const;
};

HandStrengthKey operator|(const HandStrengthKey& a, const HandStrengthKey& b);
HandStrengthKey operator&(const HandStrengthKey& a, const HandStrengthKey& b);

// ---------------------------------------------------------------------------------------
// Result records.

// Counters of a complete enumeration. The counting unit of `total` is one matchup (one
// combination of range1 against one combination of range2 without a common card) on one
// completion of the board to five cards: so `total` = sum over matchups of the number of
// boards that avoid both hands, the board and the dead cards. Every combination counts
// once however often the range text names it. wins1 + wins2 + ties == total.
// Example: AhAs against KdKc preflop is 1,712,304 boards: 1,388,072 / 317,694 / 6,538.
// An all-zero record means nothing was computed (stopped, or no matchup possible).
template <typename T>
struct EquityEvaluation {
    T total = 0;
    T wins1 = 0;
    T wins2 = 0;
    T ties = 0;
    T reserved[18] = {};
};
using LongedEvaluation = EquityEvaluation<unsigned long long>;
static_assert(sizeof(LongedEvaluation) == 176, "LongedEvaluation is 22 words of 64 bits");

struct RangeCombinations {
    float combinations1 = 0.0f; // combinations of range1 still possible, may be fractional
    float combinations2 = 0.0f; // the same for range2
};
static_assert(sizeof(RangeCombinations) == 8, "RangeCombinations is 8 bytes");

struct DetailHandEvaluation {
    HandStrengthKey key;                    // caller
    std::string name;                       // caller; left alone by the library
    int combinations1 = 0;                  // library
    float percent1 = 0.0f;                  // caller (cleared to quiet NaN before use)
    std::vector<unsigned long long> hands1; // library: two-bit card masks
    int combinations2 = 0;                  // library; 0 with one player
    float percent2 = 0.0f;                  // caller
    std::vector<unsigned long long> hands2; // library
};

struct DetailHandEvaluations {
    unsigned long long total = 0;              // out: combinations evaluated
    std::vector<DetailHandEvaluation> details; // in: keys to count; out: filled
};

struct DetailWinEvaluation {
    HandStrengthKey key;
    std::string name;
    int wins = 0;
    int losses = 0;
    int ties = 0;
    int reserved[3] = {0, 0, 0};

    DetailWinEvaluation() = default;
    DetailWinEvaluation(const HandStrengthKey& key, const std::string& name)
        : key(key), name(name) {}
};
using DetailWinEvaluations = std::vector<DetailWinEvaluation>;

// One record per combination of range1, in ascending order of the hand's card mask,
// including combinations blocked by the board or the dead cards (total 0). The counters
// have the unit of EquityEvaluation; `losses` are the opponent's wins.
struct WinEvaluationByHand {
    std::string hand;             // concrete hand, 4 characters, cards in any order
    unsigned long long total = 0; // 0: the hand cannot occur; consumers skip it
    unsigned long long wins = 0;
    unsigned long long losses = 0;
    unsigned long long ties = 0;
    unsigned long long reserved[2] = {0, 0};
};
using WinEvaluationsByHand = std::vector<WinEvaluationByHand>;

// Thrown when `stop` turned true during a calculation. Carries nothing.
class TerminationOccured {};

// ---------------------------------------------------------------------------------------
// Functions.

void initializeAllBoardsBeforeCalculation();

EquityEvaluation<unsigned long long> getEquity(const std::string& range1, const std::string& range2,
                                               const std::string& board, const std::string& dead,
                                               volatile bool& stop);
EquityEvaluation<unsigned long long> getEquity(const std::string& range1, const std::string& range2,
                                               const std::string& dead, volatile bool& stop);

std::vector<WinEvaluationByHand>
getWinEvaluationByHand(const std::string& range1, const std::string& range2,
                       const std::string& board, const std::string& dead, volatile bool& stop);
std::vector<WinEvaluationByHand> getWinEvaluationByHand(const std::string& range1,
                                                        const std::string& range2,
                                                        const std::string& dead,
                                                        volatile bool& stop);

void getDetailWinEvaluation(const std::string& range1, const std::string& range2,
                            const std::string& board, const std::string& dead,
                            std::vector<DetailWinEvaluation>& evaluations, volatile bool& stop);

void getHitEvaluationClassical(const std::string& range1, const std::string& range2,
                               const std::string& board, const std::string& dead,
                               DetailHandEvaluations& evaluations);
void getHitEvaluationUsingOr(const std::string& range1, const std::string& range2,
                             const std::string& board, const std::string& dead,
                             DetailHandEvaluations& evaluations);
void getHitEvaluationForOnePlayer(const std::string& range, const std::string& board,
                                  const std::string& dead, DetailHandEvaluations& evaluations);
void getHitEvaluationForOnePlayerUsingOr(const std::string& range, const std::string& board,
                                         const std::string& dead,
                                         DetailHandEvaluations& evaluations);
void getHitEvaluationForOnePlayerUsingOr(std::vector<unsigned long long> hands,
                                         unsigned long long board,
                                         DetailHandEvaluations& evaluations,
                                         unsigned int boardCardCount);

// Combinations left after card removal: each combination that avoids board and dead cards
// counts with the share of the other range's remaining combinations it has no card in
// common with. An empty other range discounts nothing; another range with no remaining
// combination leaves 0.
RangeCombinations getRangeCombinations(const std::string& range1, const std::string& range2,
                                       const std::string& board, const std::string& dead,
                                       volatile bool& stop);
RangeCombinations getRangeCombinationsForOneRange(const std::string& range,
                                                  const std::string& otherRange,
                                                  const std::string& board, const std::string& dead,
                                                  volatile bool& stop);

// Lists the combinations of a 2- or 3-character hand that avoid `deadMask`, as pairs of
// one-bit card masks, appended to `combinations`.
void getCardsFromSingleHand(
    const std::string& hand,
    std::vector<std::pair<unsigned long long, unsigned long long>>& combinations,
    const unsigned long long& deadMask);

// The one-bit card mask of a card text such as "Ad".
unsigned long long getIndexByCards(const std::string& card);
