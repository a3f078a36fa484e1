#pragma once

#include "tabs/BoardHitEvaluationTable.h"

#include <VelmaraEvaluatorBase.h>

#include <optional>
#include <vector>

class QMovie;

// The table of the "Win Evaluation" tab: for each hand strength how often a hand of it wins,
// splits and loses until showdown, "Win", "Split", "Loss" and a bar of the three shares.
//
// The rows are those of the schema's last hit evaluation of the first range (a strength
// without combinations has no row under the option); the shares come from the win
// evaluation results, one record list per group in the order of its rows. Until a group's
// result arrives its rows show no values, and while any is missing the table shows the
// loading movie with "Calculating...".
class WinEvaluationTable : public BoardHitEvaluationTable {
    Q_OBJECT

public:
    static const QColor winColor;
    static const QColor splitColor;
    static const QColor lossColor;

    explicit WinEvaluationTable(QWidget* parent = nullptr);

    // One entry per schema group; an empty entry has no result (yet).
    void setResults(std::vector<std::optional<DetailWinEvaluations>> results);
    void setCalculating(bool calculating);
    bool isCalculating() const { return running; }

    // Win, split and loss of a record as fractions of its showdowns; all -1 when it has none.
    static void shares(const DetailWinEvaluation& record, float& win, float& split, float& loss);

protected:
    int numberColumnCount() const override { return 1; }
    int barStyle() const override;
    QString captionHeader() const override;
    std::vector<QWidget*> makeHeaderCells(QWidget* parent) override;
    QWidget* makeStatusWidget(QWidget* parent) override;
    bool statusShown() const override { return running; }
    bool rowHasHits(const HandGroup& group, std::size_t groupIndex,
                    std::size_t index) const override;
    std::vector<BarValues> rowValues(const HandGroup& group, std::size_t groupIndex,
                                     std::size_t index, unsigned int depth) const override;

private:
    const DetailWinEvaluation* recordOf(std::size_t groupIndex, std::size_t index) const;

    QMovie* movie = nullptr;
    bool running = false;
    std::vector<std::optional<DetailWinEvaluations>> groupResults;
};
