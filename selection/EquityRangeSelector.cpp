#include "selection/EquityRangeSelector.h"

#include "calculation/ThreadPool.h"

#include <algorithm>
#include <bitset>
#include <cstddef>
#include <utility>

namespace {

struct Rated {
    const WinEvaluationByHand* record;
    float equity;
};

// Combinations of a hand class: 6 a pair, 4 suited, 12 offsuit, 16 both.
unsigned int combinationsOf(const std::string& hand) {
    if (hand.size() >= 2 && hand[0] == hand[1])
        return 6;
    if (hand.size() == 3)
        return hand[2] == 's' ? 4 : 12;
    return 16;
}

} // namespace

EquityRangeSelector::EquityRangeSelector(ThreadPool* pool, QObject* parent)
    : QObject(parent), pool(pool ? pool : new ThreadPool(this)) {
    // Queued connections and signal spies need the result type by the name the signal has.
    qRegisterMetaType<std::vector<BoardType>>("std::vector<BoardType>");
    connect(this->pool, &ThreadPool::WinEvaluationByHandFinished, this,
            &EquityRangeSelector::reactToFinishedCalculation);
}

void EquityRangeSelector::start(const std::string& rangeText, const std::string& otherText,
                                const std::string& board, const std::string& deadCards,
                                float equityLower, float equityUpper, float percentileLower,
                                float percentileUpper) {
    abort();
    this->rangeText = rangeText;
    this->otherText = otherText;
    this->board = board;
    this->deadCards = deadCards;
    this->equityLower = equityLower;
    this->equityUpper = equityUpper;
    this->percentileLower = percentileLower;
    this->percentileUpper = percentileUpper;
    handle = pool->createWinEvaluationByHandHandle();
    handle.Start(rangeText, otherText, board, deadCards);
}

void EquityRangeSelector::abort() {
    if (handle.IsRunning())
        handle.Stop();
    handle = WinEvaluationByHandHandle();
}

bool EquityRangeSelector::isRunning() const {
    return handle.IsRunning();
}

void EquityRangeSelector::reactToFinishedCalculation(const ThreadHandle& finished,
                                                     const WinEvaluationsByHand& records) {
    if (!(finished == handle))
        return;
    // The pool still knows the handle while it emits; the selector is done with it now.
    handle = WinEvaluationByHandHandle();
    emit WinEvaluationByHandFinished(finished, records);
    BoardType deadMask = 0;
    for (std::size_t i = 0; i + 1 < board.size(); i += 2)
        deadMask |= getIndexByCards(board.substr(i, 2));
    for (std::size_t i = 0; i + 1 < deadCards.size(); i += 2)
        deadMask |= getIndexByCards(deadCards.substr(i, 2));
    emit calculationFinished(
        selectFrom(records, equityLower, equityUpper, percentileLower, percentileUpper, deadMask));
}

std::vector<BoardType> EquityRangeSelector::selectFrom(const WinEvaluationsByHand& records,
                                                       float equityLower, float equityUpper,
                                                       float percentileLower, float percentileUpper,
                                                       BoardType deadMask) {
    std::vector<Rated> rated;
    rated.reserve(records.size());
    for (const WinEvaluationByHand& record : records) {
        if (record.total == 0)
            continue;
        const float equity = static_cast<float>(
            (static_cast<double>(record.wins) + 0.5 * static_cast<double>(record.ties)) /
            static_cast<double>(record.total));
        if (equity < equityLower || equity > equityUpper)
            continue;
        rated.push_back({&record, equity});
    }
    std::stable_sort(rated.begin(), rated.end(),
                     [](const Rated& a, const Rated& b) { return a.equity > b.equity; });

    const std::size_t n = rated.size();
    std::size_t first = static_cast<std::size_t>(percentileLower * static_cast<float>(n));
    std::size_t last = static_cast<std::size_t>(percentileUpper * static_cast<float>(n));
    const bool classes = n > 0 && rated.front().record->hand.size() < 4;
    if (classes) {
        double total = 0.0;
        for (const Rated& entry : rated)
            total += combinationsOf(entry.record->hand);
        first = n;
        last = n;
        double sum = 0.0;
        for (std::size_t i = 0; i < n; ++i) {
            // `sum` holds the combinations of the classes before this one.
            if (first == n && sum / total >= percentileLower)
                first = i;
            if (last == n && sum / total >= percentileUpper)
                last = i;
            sum += combinationsOf(rated[i].record->hand);
        }
    }
    last = std::min(last, n);
    first = std::min(first, last);

    std::vector<BoardType> hands;
    for (std::size_t i = first; i < last; ++i) {
        const std::string& text = rated[i].record->hand;
        if (text.size() < 4) {
            std::vector<std::pair<unsigned long long, unsigned long long>> combinations;
            getCardsFromSingleHand(text, combinations, deadMask);
            for (const auto& combination : combinations)
                hands.push_back(combination.first | combination.second);
        } else {
            const BoardType hand =
                getIndexByCards(text.substr(0, 2)) | getIndexByCards(text.substr(2, 2));
            if (std::bitset<64>(hand & ~deadMask).count() == 2)
                hands.push_back(hand);
        }
    }
    return hands;
}
