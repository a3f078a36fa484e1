#include "training/EquityTrainingSummary.h"

#include <utility>

EquityTrainingSummary::EquityTrainingSummary(std::vector<EquityTrainingItemResults> results)
    : items(std::move(results)) {}

int EquityTrainingSummary::itemCount() const {
    return static_cast<int>(items.size());
}

int EquityTrainingSummary::guessesPerItem() const {
    return !items.empty() && items.front().hasSecondVillain() ? 2 : 1;
}

int EquityTrainingSummary::guessCount() const {
    return itemCount() * guessesPerItem();
}

std::vector<float> EquityTrainingSummary::absoluteDifferences() const {
    std::vector<float> differences;
    differences.reserve(items.size() * 2);
    for (const EquityTrainingItemResults& item : items) {
        differences.push_back(item.absoluteDifference1);
        if (item.hasSecondVillain())
            differences.push_back(item.absoluteDifference2);
    }
    return differences;
}

double EquityTrainingSummary::averageAbsoluteDifference() const {
    double sum = 0.0;
    for (float difference : absoluteDifferences())
        sum += static_cast<double>(difference);
    return (sum / guessCount()) / 100.0;
}

int EquityTrainingSummary::countAbove(double threshold) const {
    int count = 0;
    for (float difference : absoluteDifferences())
        count += threshold < static_cast<double>(difference) ? 1 : 0;
    return count;
}

int EquityTrainingSummary::countBelow(double threshold) const {
    int count = 0;
    for (float difference : absoluteDifferences())
        count += static_cast<double>(difference) < threshold ? 1 : 0;
    return count;
}

double EquityTrainingSummary::shareOfGuesses(int count) const {
    return static_cast<double>(count) / guessCount();
}
