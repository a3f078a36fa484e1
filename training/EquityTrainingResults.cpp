#include "training/EquityTrainingResults.h"

#include "training/EquityTrainingGuessPlot.h"
#include "training/EquityTrainingItemTable.h"
#include "ui_EquityTrainingResults.h"
#include "utils/ui/EquityColor.h"

#include <algorithm>
#include <utility>

EquityTrainingResults::EquityTrainingResults(const std::vector<EquityTrainingItemResults>& results,
                                             QWidget* parent)
    : QWidget(parent), ui(new Ui::EquityTrainingResults), numbers(results) {
    ui->setupUi(this);
    ui->itemsValue->setText(QString::number(numbers.itemCount()));
    ui->guessesValue->setText(QString::number(numbers.guessCount()));
    ui->averageValue->setText(
        equityPercentText(static_cast<float>(numbers.averageAbsoluteDifference())));
    for (QDoubleSpinBox* threshold : {ui->threshold1, ui->threshold2, ui->threshold3})
        connect(threshold, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
                &EquityTrainingResults::updateGuessDistribution);
    connect(ui->startNewTrainingButton, &QPushButton::clicked, this,
            &EquityTrainingResults::onStartNewTraining);
    updateGuessDistribution();
    ui->guessPlot->showGuesses(results);
    ui->itemTable->showItems(results, numbers.guessesPerItem() == 2);
}

EquityTrainingResults::~EquityTrainingResults() {
    delete ui;
}

EquityTrainingGuessPlot* EquityTrainingResults::guessPlot() const {
    return ui->guessPlot;
}

void EquityTrainingResults::onStartNewTraining() {
    emit startNewTraining();
}

QString EquityTrainingResults::countText(int count) const {
    return QStringLiteral("%1 (%2 of all guesses)")
        .arg(count)
        .arg(equityPercentText(static_cast<float>(numbers.shareOfGuesses(count))));
}

void EquityTrainingResults::updateGuessDistribution() {
    const std::pair<QDoubleSpinBox*, QLabel*> thresholds[] = {
        {ui->threshold1, ui->threshold1Count},
        {ui->threshold2, ui->threshold2Count},
        {ui->threshold3, ui->threshold3Count}};
    double smallest = ui->threshold1->value();
    for (const auto& [box, count] : thresholds) {
        count->setText(countText(numbers.countAbove(box->value())));
        smallest = std::min(smallest, box->value());
    }
    ui->belowCaption->setText(QStringLiteral("Guesses with <= %1 absolute difference:")
                                  .arg(equityPercentText(static_cast<float>(smallest / 100.0))));
    ui->belowCount->setText(countText(numbers.countBelow(smallest)));
}
