#pragma once

#include "training/EquityTrainingItemResults.h"

#include <vector>

// The numbers of a finished training: how many items and guesses there were, how far the
// guesses were off on average, and how many were off by more (or less) than a threshold.
// Thresholds and differences are in percentage points.
class EquityTrainingSummary {
public:
    explicit EquityTrainingSummary(std::vector<EquityTrainingItemResults> results);

    const std::vector<EquityTrainingItemResults>& results() const { return items; }
    int itemCount() const;
    // 2 when the first item had villain's second range, else 1.
    int guessesPerItem() const;
    // itemCount() * guessesPerItem().
    int guessCount() const;
    // The absolute difference of every guess, item by item, range 1 before range 2.
    std::vector<float> absoluteDifferences() const;
    // (sum of all absolute differences / guessCount()) / 100: the average as a fraction, as
    // percent texts take it. Not a number without guesses.
    double averageAbsoluteDifference() const;
    // Guesses whose absolute difference is greater than `threshold`.
    int countAbove(double threshold) const;
    // Guesses whose absolute difference is smaller than `threshold`.
    int countBelow(double threshold) const;
    // count / guessCount() as a fraction; not a number without guesses.
    double shareOfGuesses(int count) const;

private:
    std::vector<EquityTrainingItemResults> items;
};
