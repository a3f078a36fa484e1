#include "selection/HandStrengthSelection.h"

#include <boost/function.hpp>

#include <bitset>
#include <set>

namespace HSO = HandStrengthSelectorOptions;

namespace {

// One past the highest value of each enumeration: where an "Or Better" walk ends.
constexpr int handValueTop = 10;
constexpr int highcardTop = 6;
constexpr int pairTop = 10;
constexpr int kickerTop = 5;
constexpr int twopairTop = 5;
constexpr int tripsTripsTop = 5;
constexpr int pocketPairTwopairTop = 4;
constexpr int twoCardTwopairTop = 5;
constexpr int oneCardTwopairTop = 4;
constexpr int tripsTop = 3;
constexpr int flushTop = 7;
constexpr int flushDrawCardNumberTop = 3;
constexpr int straightDrawCardNumberTop = 3;
constexpr int flushDrawTop = 3;
constexpr int flushDrawStrengthTop = 7;
constexpr int straightDrawTop = 7;

using Step = boost::function<int(int)>;

// One value of the walk with its step function.
struct Walked {
    int value = 0;
    int top = 0;
    Step step;

    bool walking() const { return value != 0 && value != top; }
    void advance() { value = step(value); }
};

template <typename Enumeration>
Walked walked(const HandStrengthSelection::Choice<Enumeration>& choice, int top) {
    Walked result;
    result.value = static_cast<int>(choice.value);
    result.top = top;
    const HandStrengthSelection::Comparator comparator = choice.comparator;
    result.step = [comparator, top](int value) {
        return HandStrengthSelection::step(comparator, value, top);
    };
    return result;
}

// The whole request as values under walk; each walk works on a copy of it.
struct Walk {
    Walked handValue, highcard, pair, kicker, twopair, tripsTrips, pocketPairTwopair,
        twoCardTwopair, oneCardTwopair, trips, flush, flushDrawCardNumber, straightDrawCardNumber,
        flushDraw, flushDrawStrength, straightDraw;

    explicit Walk(const HandStrengthSelection& request)
        : handValue(walked(request.handValue, handValueTop)),
          highcard(walked(request.highcardValue, highcardTop)),
          pair(walked(request.pairValue, pairTop)), kicker(walked(request.kickerValue, kickerTop)),
          twopair(walked(request.twopairValue, twopairTop)),
          tripsTrips(walked(request.tripsTripsValue, tripsTripsTop)),
          pocketPairTwopair(walked(request.pocketPairTwopairValue, pocketPairTwopairTop)),
          twoCardTwopair(walked(request.twoCardTwopairValue, twoCardTwopairTop)),
          oneCardTwopair(walked(request.oneCardTwopairValue, oneCardTwopairTop)),
          trips(walked(request.tripsValue, tripsTop)), flush(walked(request.flushValue, flushTop)),
          flushDrawCardNumber(walked(request.flushDrawCardNumberValue, flushDrawCardNumberTop)),
          straightDrawCardNumber(
              walked(request.straightDrawCardNumberValue, straightDrawCardNumberTop)),
          flushDraw(walked(request.flushDrawValue, flushDrawTop)),
          flushDrawStrength(walked(request.flushDrawStrength, flushDrawStrengthTop)),
          straightDraw(walked(request.straightDrawValue, straightDrawTop)) {}
};

template <typename Enumeration>
HandStrengthKey keyOf(const Walked& walked) {
    return HSO::enumKey(static_cast<Enumeration>(walked.value));
}

// The draw key with the hand value and the first-level details as they stand in the walk.
HandStrengthKey firstLevelKey(const Walk& walk, const HandStrengthKey& draws) {
    HandStrengthKey key = draws;
    key |= keyOf<HSO::HandValue>(walk.handValue);
    key |= keyOf<HSO::FlushValue>(walk.flush);
    key |= keyOf<HSO::TripsValue>(walk.trips);
    key |= keyOf<HSO::TwopairValue>(walk.twopair);
    key |= keyOf<HSO::PairValue>(walk.pair);
    return key;
}

// The made hand below the draw key `draws`: appends its keys.
void walkMadeHand(Walk walk, const HandStrengthKey& draws, std::vector<HandStrengthKey>& keys) {
    // Second-level details. The five move in step; the combo boxes set only one of them.
    bool appended = false;
    while (walk.kicker.walking() || walk.twoCardTwopair.walking() ||
           walk.oneCardTwopair.walking() || walk.pocketPairTwopair.walking() ||
           walk.tripsTrips.walking()) {
        HandStrengthKey key = firstLevelKey(walk, draws);
        key |= keyOf<HSO::TwoCardTwopairValue>(walk.twoCardTwopair);
        key |= keyOf<HSO::OneCardTwopairValue>(walk.oneCardTwopair);
        key |= keyOf<HSO::PocketPairTwopairValue>(walk.pocketPairTwopair);
        key |= keyOf<HSO::TripsTripsValue>(walk.tripsTrips);
        key |= keyOf<HSO::KickerValue>(walk.kicker);
        keys.push_back(key);
        appended = true;
        walk.kicker.advance();
        walk.twoCardTwopair.advance();
        walk.oneCardTwopair.advance();
        walk.pocketPairTwopair.advance();
        walk.tripsTrips.advance();
    }

    // First-level details; the first pass only stands when no second-level key did.
    bool firstPass = true;
    while (walk.flush.walking() || walk.trips.walking() || walk.twopair.walking() ||
           walk.pair.walking() || walk.highcard.walking()) {
        if (!firstPass || !appended) {
            HandStrengthKey key = firstLevelKey(walk, draws);
            key |= keyOf<HSO::HighcardValue>(walk.highcard);
            keys.push_back(key);
            appended = true;
        }
        firstPass = false;
        walk.flush.advance();
        walk.trips.advance();
        walk.twopair.advance();
        walk.pair.advance();
        walk.highcard.advance();
    }

    // The hand value alone; the first pass only when no detail key was appended.
    firstPass = true;
    for (;;) {
        if (!firstPass || !appended) {
            HandStrengthKey key = draws;
            key |= keyOf<HSO::HandValue>(walk.handValue);
            keys.push_back(key);
        }
        firstPass = false;
        walk.handValue.advance();
        if (walk.handValue.value == 0 || walk.handValue.value == handValueTop)
            break;
    }
}

// One level of the nested draw walks: every value of the level in turn, each with a fresh
// copy of the request for the levels inside.
template <typename Enumeration, typename Inner>
void walkLevel(const Walk& walk, Walked Walk::*level, const HandStrengthKey& draws, Inner inner) {
    Walk own = walk;
    Walked& walked = own.*level;
    for (;;) {
        HandStrengthKey key = draws;
        key |= keyOf<Enumeration>(walked);
        inner(own, key);
        walked.advance();
        if (!walked.walking())
            break;
    }
}

} // namespace

int HandStrengthSelection::step(Comparator comparator, int value, int top) {
    switch (comparator) {
    case Comparator::OrBetter:
        return value == 0 || value == top ? value : value + 1;
    case Comparator::OrWorse:
        return value == 0 ? 0 : value - 1;
    case Comparator::Exactly:
    default:
        return 0;
    }
}

std::vector<HandStrengthKey> HandStrengthSelection::keys() const {
    std::vector<HandStrengthKey> keys;
    const Walk walk(*this);
    const HandStrengthKey none;
    walkLevel<HSO::FlushDrawValue>(
        walk, &Walk::flushDraw, none, [&](const Walk& w1, const HandStrengthKey& k1) {
            walkLevel<HSO::FlushDrawStrength>(
                w1, &Walk::flushDrawStrength, k1, [&](const Walk& w2, const HandStrengthKey& k2) {
                    walkLevel<HSO::FlushDrawCardNumberValue>(
                        w2, &Walk::flushDrawCardNumber, k2,
                        [&](const Walk& w3, const HandStrengthKey& k3) {
                            walkLevel<HSO::StraightDrawValue>(
                                w3, &Walk::straightDraw, k3,
                                [&](const Walk& w4, const HandStrengthKey& k4) {
                                    walkLevel<HSO::StraightDrawCardNumberValue>(
                                        w4, &Walk::straightDrawCardNumber, k4,
                                        [&](const Walk& w5, const HandStrengthKey& k5) {
                                            walkMadeHand(w5, k5, keys);
                                        });
                                });
                        });
                });
        });
    return keys;
}

std::vector<BoardType> HandStrengthSelection::select() const {
    const std::vector<HandStrengthKey> wanted = keys();
    const unsigned int boardCards = static_cast<unsigned int>(std::bitset<64>(board).count());
    if (wanted.empty() || boardCards < 3 || boardCards > 5)
        return {};
    std::vector<BoardType> possible;
    possible.reserve(hands.size());
    for (BoardType hand : hands)
        if (std::bitset<64>(hand).count() == 2 && !(hand & (board | deadCards)))
            possible.push_back(hand);
    DetailHandEvaluations evaluations;
    evaluations.details.reserve(wanted.size());
    for (const HandStrengthKey& key : wanted) {
        DetailHandEvaluation detail;
        detail.key = key;
        evaluations.details.push_back(std::move(detail));
    }
    getHitEvaluationForOnePlayerUsingOr(possible, board, evaluations, boardCards);
    std::set<BoardType> chosen;
    for (const DetailHandEvaluation& detail : evaluations.details)
        chosen.insert(detail.hands1.begin(), detail.hands1.end());
    return std::vector<BoardType>(chosen.begin(), chosen.end());
}
