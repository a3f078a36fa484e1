#include "tabs/EquityTableTab.h"

#include "Range/Assertion.h"
#include "Range/CardConversion.h"
#include "Range/CardText.h"
#include "Range/HandRange.h"
#include "Range/HandRangeElementConversion.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/RangeStringOperations.h"
#include "calculation/ThreadPool.h"
#include "tabs/EquityMatrixTable.h"
#include "tabs/EquityTableHandColumn.h"
#include "tabs/EquityTableNumberColumn.h"
#include "ui_EquityTableTab.h"
#include "utils/ui/EquityColor.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QHeaderView>
#include <QMessageBox>
#include <QMovie>
#include <QTextStream>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace {

const char* const settingsGroup = "equityTableTab";
const char* const showDetailHandsKey = "showDetailHands";
const char* const player1Text = "Player1";

enum Column {
    HandColumn = 0,
    WinsColumn,
    SplitsColumn,
    LossesColumn,
    EquityColumn,
    CombinationsColumn,
    RangeShareColumn
};

// Range text of any spelling in technical form; bad tokens are dropped.
std::string technicalRangeText(const std::string& text) {
    std::string normal = text;
    Range::normalize(normal);
    return normal.empty() ? std::string() : Range::expand(normal);
}

// The hand of a record with its higher rank first: concrete hands swap their two cards,
// class texts their ranks. Other text stays as it is.
std::string orderedHand(const std::string& hand) {
    if (hand.size() == 4 && isHigherValueThan(hand[2], hand[0])) {
        return hand.substr(2, 2) + hand.substr(0, 2);
    }
    if ((hand.size() == 2 || hand.size() == 3) && isHigherValueThan(hand[1], hand[0])) {
        std::string swapped = hand;
        std::swap(swapped[0], swapped[1]);
        return swapped;
    }
    return hand;
}

// Class key of an ordered hand ("AAP", "KAS", "AKO"); empty for text of another shape.
std::string classKey(const std::string& hand) {
    if (hand.size() == 4) {
        if (hand[0] == hand[2]) {
            return std::string{hand[0], hand[2], 'P'};
        }
        if (hand[1] == hand[3]) {
            return std::string{hand[2], hand[0], 'S'};
        }
        return std::string{hand[0], hand[2], 'O'};
    }
    if (hand.size() == 2 && hand[0] == hand[1]) {
        return std::string{hand[0], hand[1], 'P'};
    }
    if (hand.size() == 3 && hand[0] != hand[1]) {
        if (hand[2] == 's') {
            return std::string{hand[1], hand[0], 'S'};
        }
        if (hand[2] == 'o') {
            return std::string{hand[0], hand[1], 'O'};
        }
    }
    return std::string();
}

// The table's text of a class key: "AA", "AKs", "AKo".
QString classText(const std::string& key) {
    switch (key[2]) {
    case 'P':
        return QString::fromLatin1(key.c_str(), 2);
    case 'S':
        return QString(QChar::fromLatin1(key[1])) + QChar::fromLatin1(key[0]) + 's';
    default:
        return QString(QChar::fromLatin1(key[0])) + QChar::fromLatin1(key[1]) + 'o';
    }
}

// Weight of a class record in the percentile cut: its number of combinations.
int classWeight(const std::string& hand) {
    if (hand.size() == 2) {
        return 6;
    }
    if (hand.size() == 3 && hand[2] == 'o') {
        return 12;
    }
    if (hand.size() == 3 && hand[2] == 's') {
        return 4;
    }
    return 0;
}

float shareOf(unsigned long long part, unsigned long long total) {
    return static_cast<float>(static_cast<double>(part) / static_cast<double>(total));
}

} // namespace

EquityTableTab::EquityTableTab(QWidget* parent)
    : QWidget(parent), ui(new Ui::EquityTableTab), settings("Velmara", "Quorvane") {
    ui->setupUi(this);
    setWhatsThis("In this tab you get an overview of the equities of all the hands in the given "
                 "range on the given board. The equities are both shown in a matrix with colors "
                 "and in a table.<br/>");

    loadingMovie = new QMovie(QStringLiteral(":loading.gif"), QByteArray(), this);

    settings.beginGroup(settingsGroup);
    ui->showCombinationsFlag->setChecked(settings.value(showDetailHandsKey, false).toBool());
    settings.endGroup();
    // Singular combinations exist only on a board; the first update opens the box.
    ui->showCombinationsFlag->setEnabled(false);

    QTableWidget* table = ui->specificEquityHandsTable;
    // The two columns with long headers keep their header's width, so no header is ever cut;
    // the others share what is left. Sized once here: sizing to the contents would measure
    // all 1326 rows on every fill.
    QHeaderView* header = table->horizontalHeader();
    header->setStretchLastSection(false);
    header->setSectionResizeMode(QHeaderView::Stretch);
    for (int column : {CombinationsColumn, RangeShareColumn}) {
        header->setSectionResizeMode(column, QHeaderView::Fixed);
        table->setColumnWidth(column, header->sectionSizeHint(column));
    }
    table->horizontalHeader()->setSortIndicator(EquityColumn, Qt::DescendingOrder);
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 6);

    connect(ui->selectedPlayer, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &EquityTableTab::Refresh);
    connect(ui->showCombinationsFlag, &QCheckBox::stateChanged, this,
            &EquityTableTab::onSingularCombinationsStateChanged);
    connect(ui->equityLowerBound, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            &EquityTableTab::onEquityLowerBoundChange);
    connect(ui->equityUpperBound, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            &EquityTableTab::onEquityUpperBoundChange);
    connect(ui->percentileLowerBound, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            &EquityTableTab::onPercentileLowerBoundChange);
    connect(ui->percentileUpperBound, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            &EquityTableTab::onPercentileUpperBoundChange);
    connect(ui->copyRangeToClipboardButton, &QPushButton::clicked, this,
            &EquityTableTab::onCopyRangeToClipBoardButton);
    connect(ui->exportToCSVButton, &QPushButton::clicked, this, &EquityTableTab::ExportTableToCSV);

    UpdateDisplay();
}

EquityTableTab::~EquityTableTab() {
    // The window's pool may already be gone (it is a member of the window, the tab a child
    // widget); the guarded pointer tells.
    if (threadPool && handle.getPool() == threadPool.data() && handle.IsRunning()) {
        handle.Stop();
    }
}

void EquityTableTab::setThreadPool(ThreadPool* pool) {
    if (pool == threadPool.data()) {
        return;
    }
    if (threadPool) {
        disconnect(threadPool.data(), &ThreadPool::WinEvaluationByHandFinished, this,
                   &EquityTableTab::reactToFinishedCalculation);
        if (handle.getPool() == threadPool.data() && handle.IsRunning()) {
            handle.Stop();
        }
    }
    threadPool = pool;
    if (pool != nullptr) {
        connect(pool, &ThreadPool::WinEvaluationByHandFinished, this,
                &EquityTableTab::reactToFinishedCalculation);
    }
}

float EquityTableTab::equityOfRecord(const WinEvaluationByHand& record) {
    if (record.total == 0) {
        return std::numeric_limits<float>::quiet_NaN();
    }
    return (static_cast<float>(record.ties) * 0.5f + static_cast<float>(record.wins)) /
           static_cast<float>(record.total);
}

const std::string& EquityTableTab::selectedRangeText() const {
    return ui->selectedPlayer->currentText() == QLatin1String(player1Text) ? range1 : range2;
}

void EquityTableTab::updateInputs(const std::string& player1, const std::string& player2,
                                  const std::string& boardText, const std::string& deadText) {
    const bool withBoard = !boardText.empty();
    if (!withBoard) {
        // Disabled first: the unchecking is no choice of the user and leaves the setting.
        ui->showCombinationsFlag->setEnabled(false);
        ui->showCombinationsFlag->setChecked(false);
    } else {
        ui->showCombinationsFlag->setEnabled(true);
    }

    range1 = technicalRangeText(player1);
    range2 = technicalRangeText(player2);
    board = boardText;
    deadCards = deadText;

    if (threadPool && handle.getPool() == threadPool.data() && handle.IsRunning()) {
        handle.Stop();
    }
    QV_ASSERT(threadPool, "No thread pool.");
    if (!threadPool) {
        return;
    }

    const QString reason = QString::fromStdString(Range::CardText::problemOf(board, deadCards));
    if (!reason.isEmpty()) {
        showInputError(reason);
        return;
    }
    if (range1.empty() || range2.empty()) {
        // Nothing to list, or nobody to play against: an empty display, no calculation.
        handle = WinEvaluationByHandHandle();
        allEvaluations.clear();
        calculating = false;
        showLoading(false);
        UpdateDisplay();
        return;
    }

    handle = threadPool->createWinEvaluationByHandHandle();
    if (ui->selectedPlayer->currentText() == QLatin1String(player1Text)) {
        handle.Start(range1, range2, board, deadCards);
    } else {
        handle.Start(range2, range1, board, deadCards);
    }
    showLoading(true);
    calculating = true;
}

void EquityTableTab::Refresh() {
    updateInputs(range1, range2, board, deadCards);
}

void EquityTableTab::showLoading(bool loading) {
    ui->loadingLeftLabel->setStyleSheet(QString());
    if (loading) {
        ui->loadingLeftLabel->setText(QStringLiteral("Calculating...&nbsp;"));
        ui->loadingRightLabel->setMovie(loadingMovie);
        loadingMovie->start();
    } else {
        ui->loadingLeftLabel->clear();
        loadingMovie->stop();
        ui->loadingRightLabel->clear();
    }
}

void EquityTableTab::showInputError(const QString& message) {
    handle = WinEvaluationByHandHandle();
    allEvaluations.clear();
    calculating = false;
    showLoading(false);
    ui->loadingLeftLabel->setStyleSheet(QStringLiteral("color: #c8423b;"));
    // Rich text label: escape the markup characters, keep the quotes readable.
    ui->loadingLeftLabel->setText(message.toHtmlEscaped().replace(QLatin1String("&quot;"), "\""));
    UpdateDisplay();
}

void EquityTableTab::reactToFinishedCalculation(const ThreadHandle& finished,
                                                const WinEvaluationsByHand& winEvaluationsByHand) {
    if (!(finished == handle)) {
        return;
    }
    allEvaluations = winEvaluationsByHand;
    calculating = false;
    UpdateDisplay();
    showLoading(false);
}

void EquityTableTab::UpdateDisplay() {
    filter();
    ui->equityMatrixTable->SetRange(displayedHands);
    RefreshDetailTable();
}

void EquityTableTab::onEquityLowerBoundChange(double) {
    UpdateDisplay();
}
void EquityTableTab::onEquityUpperBoundChange(double) {
    UpdateDisplay();
}
void EquityTableTab::onPercentileLowerBoundChange(double) {
    UpdateDisplay();
}
void EquityTableTab::onPercentileUpperBoundChange(double) {
    UpdateDisplay();
}

void EquityTableTab::onSingularCombinationsStateChanged() {
    if (ui->showCombinationsFlag->isEnabled()) {
        settings.beginGroup(settingsGroup);
        settings.setValue(showDetailHandsKey, ui->showCombinationsFlag->isChecked());
        settings.endGroup();
    }
    if (!calculating) {
        RefreshDetailTable();
    }
}

void EquityTableTab::filter() {
    displayedEvaluations.clear();
    displayedEvaluations.reserve(allEvaluations.size());
    aggregatedHands.clear();
    displayedHands.clear();
    resultingCombinationCount = 0;

    float lower = static_cast<float>(ui->equityLowerBound->value() / 100.0);
    float upper = static_cast<float>(ui->equityUpperBound->value() / 100.0);
    if (upper < lower) {
        upper = lower;
    }

    // Equity bounds, bounds included. A blocked hand (NaN) fails both comparisons.
    std::vector<std::pair<float, std::size_t>> kept;
    kept.reserve(allEvaluations.size());
    for (std::size_t i = 0; i < allEvaluations.size(); ++i) {
        const float equity = equityOfRecord(allEvaluations[i]);
        if (lower <= equity && equity <= upper) {
            kept.emplace_back(equity, i);
        }
    }
    std::stable_sort(kept.begin(), kept.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    for (const auto& entry : kept) {
        displayedEvaluations.push_back(allEvaluations[entry.second]);
    }

    // Percentile bounds: the best share of the listed hands.
    const std::size_t count = displayedEvaluations.size();
    const double low = ui->percentileLowerBound->value() / 100.0;
    const double high = ui->percentileUpperBound->value() / 100.0;
    std::size_t lowIndex = static_cast<std::size_t>(low * static_cast<double>(count));
    std::size_t highIndex = static_cast<std::size_t>(high * static_cast<double>(count));
    if (count != 0 && displayedEvaluations.front().hand.size() < 4) {
        // Class records stand for different numbers of combinations: cut by combinations.
        std::vector<int> weights(count);
        for (std::size_t i = 0; i < count; ++i) {
            weights[i] = classWeight(displayedEvaluations[i].hand);
        }
        const double all = std::accumulate(weights.begin(), weights.end(), 0.0);
        lowIndex = count;
        highIndex = count;
        bool lowFound = false;
        bool highFound = false;
        double before = 0.0;
        for (std::size_t i = 0; i < count && all > 0.0; ++i) {
            if (!lowFound && before / all >= low) {
                lowIndex = i;
                lowFound = true;
            }
            if (!highFound && before / all >= high) {
                highIndex = i;
                highFound = true;
            }
            before += weights[i];
        }
    }
    lowIndex = std::min(lowIndex, count);
    highIndex = std::min(highIndex, count);
    if (highIndex < lowIndex) {
        highIndex = lowIndex;
    }
    displayedEvaluations.erase(displayedEvaluations.begin() + static_cast<long>(highIndex),
                               displayedEvaluations.end());
    displayedEvaluations.erase(displayedEvaluations.begin(),
                               displayedEvaluations.begin() + static_cast<long>(lowIndex));

    // Aggregate by class; each record counts one combination.
    for (WinEvaluationByHand& record : displayedEvaluations) {
        record.hand = orderedHand(record.hand);
        const std::string key = classKey(record.hand);
        if (key.empty()) {
            continue;
        }
        AggregatedHand& entry = aggregatedHands[key];
        entry.wins += record.wins;
        entry.ties += record.ties;
        entry.total += record.total;
        entry.hands += 1;
        entry.combinations += 1;
        ++resultingCombinationCount;
    }

    if (board.empty() && !aggregatedHands.empty()) {
        // Count what the shown hands hold of the listed range, without the dead cards:
        // exact also for class records, which stand for every combination of their class.
        Range::HandRange selected;
        Range::HandRangeStringManipulator(selected).set(selectedRangeText());
        const std::vector<Range::CardMask> dead = Range::cardsOfText(deadCards);
        const Range::CardMask deadMask = Range::maskOfText(deadCards);
        for (auto& entry : aggregatedHands) {
            entry.second.combinations = 0;
        }
        for (const WinEvaluationByHand& record : displayedEvaluations) {
            const std::string key = classKey(record.hand);
            if (key.empty()) {
                continue;
            }
            int combinations = 0;
            if (record.hand.size() == 4) {
                const Range::CardMask hand = getIndexByCards(record.hand.substr(0, 2)) |
                                             getIndexByCards(record.hand.substr(2, 2));
                const Range::Element element = Range::elementOfHand(hand);
                const auto inRange = selected.find(element.values, element.suited);
                combinations = inRange != selected.end() && (inRange->suits & element.suits) &&
                                       (hand & deadMask) == 0
                                   ? 1
                                   : 0;
            } else {
                const unsigned int values = Range::valueToBinaryMask(record.hand[0]) |
                                            Range::valueToBinaryMask(record.hand[1]);
                const auto inRange = selected.find(values, key[2] == 'S');
                combinations = inRange != selected.end()
                                   ? static_cast<int>(Range::availableCombinations(*inRange, dead))
                                   : 0;
            }
            aggregatedHands[key].combinations += combinations;
        }
        resultingCombinationCount = 0;
        for (const auto& entry : aggregatedHands) {
            resultingCombinationCount += entry.second.combinations;
        }
    }

    for (const auto& entry : aggregatedHands) {
        const AggregatedHand& hand = entry.second;
        if (hand.total == 0) {
            continue;
        }
        DisplayedHand shown;
        shown.equity = static_cast<float>(
            (static_cast<double>(hand.wins) + static_cast<double>(hand.ties) * 0.5) /
            static_cast<double>(hand.total));
        shown.combinations = hand.combinations;
        displayedHands.emplace(entry.first, shown);
    }

    ui->resultingCombinations->setText(QString::number(resultingCombinationCount));
    ui->resultingRangePercentage->setText(
        equityPercentText(static_cast<float>(resultingCombinationCount / 1326.0)));
}

void EquityTableTab::RefreshDetailTable() {
    QTableWidget* table = ui->specificEquityHandsTable;
    const int sortColumn = table->horizontalHeader()->sortIndicatorSection();
    const Qt::SortOrder sortOrder = table->horizontalHeader()->sortIndicatorOrder();
    // Filling 1326 rows with sorting on would move every row as it arrives, and repaint
    // in between: fill unsorted and unpainted, then sort once.
    table->setUpdatesEnabled(false);
    table->setSortingEnabled(false);
    table->setRowCount(0);
    if (ui->showCombinationsFlag->isChecked()) {
        createTableWithDetailHands();
    } else {
        createTableWithAggregatedHands(aggregatedHands);
    }
    table->setSortingEnabled(true);
    table->sortByColumn(sortColumn, sortOrder);
    table->setUpdatesEnabled(true);
}

void EquityTableTab::fillTableRow(int row, const QString& hand, unsigned long long wins,
                                  unsigned long long ties, unsigned long long total,
                                  int combinations) {
    QTableWidget* table = ui->specificEquityHandsTable;
    const unsigned long long losses = total - std::min(total, wins + ties);
    const double equity =
        (static_cast<double>(wins) + static_cast<double>(ties) * 0.5) / static_cast<double>(total);
    table->setItem(row, HandColumn, new EquityTableHandColumn(hand));
    table->setItem(row, WinsColumn,
                   new EquityTableNumberColumn(equityPercentText(shareOf(wins, total))));
    table->setItem(row, SplitsColumn,
                   new EquityTableNumberColumn(equityPercentText(shareOf(ties, total))));
    table->setItem(row, LossesColumn,
                   new EquityTableNumberColumn(equityPercentText(shareOf(losses, total))));
    table->setItem(row, EquityColumn,
                   new EquityTableNumberColumn(equityPercentText(static_cast<float>(equity))));
    table->setItem(row, CombinationsColumn,
                   new EquityTableNumberColumn(QString::number(combinations)));
    const float share =
        resultingCombinationCount == 0
            ? 0.0f
            : static_cast<float>(combinations) / static_cast<float>(resultingCombinationCount);
    table->setItem(row, RangeShareColumn, new EquityTableNumberColumn(equityPercentText(share)));
}

void EquityTableTab::createTableWithDetailHands() {
    QTableWidget* table = ui->specificEquityHandsTable;
    int rows = 0;
    for (const WinEvaluationByHand& record : displayedEvaluations) {
        rows += record.total != 0 ? 1 : 0;
    }
    table->setRowCount(rows);
    int row = 0;
    for (const WinEvaluationByHand& record : displayedEvaluations) {
        if (record.total == 0) {
            continue;
        }
        fillTableRow(row++, QString::fromStdString(record.hand), record.wins, record.ties,
                     record.total, 1);
    }
}

void EquityTableTab::createTableWithAggregatedHands(AggregatedHands hands) {
    QTableWidget* table = ui->specificEquityHandsTable;
    int rows = 0;
    for (const auto& entry : hands) {
        const AggregatedHand& hand = entry.second;
        rows += hand.wins + hand.ties + hand.total != 0 ? 1 : 0;
    }
    table->setRowCount(rows);
    int row = 0;
    for (const auto& entry : hands) {
        const AggregatedHand& hand = entry.second;
        if (hand.wins + hand.ties + hand.total == 0) {
            continue;
        }
        fillTableRow(row++, classText(entry.first), hand.wins, hand.ties, hand.total,
                     hand.combinations);
    }
}

void EquityTableTab::onCopyRangeToClipBoardButton() {
    if (displayedEvaluations.empty()) {
        return;
    }
    std::string text;
    for (const WinEvaluationByHand& record : displayedEvaluations) {
        if (!text.empty()) {
            text += ',';
        }
        text += record.hand;
    }
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree(text);
    QApplication::clipboard()->setText(
        QString::fromStdString(Range::HandRangeStringReader(range).compactText()));
}

void EquityTableTab::ExportTableToCSV() {
    const QString fileName = QFileDialog::getSaveFileName(
        this, QStringLiteral("Save As"), QDir::currentPath() + "/untitled." + "csv",
        QStringLiteral("%1 Files (*.%2);;All Files (*)").arg("CSV", "csv"));
    if (fileName.isEmpty()) {
        return;
    }
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        QMessageBox::warning(this, QStringLiteral("File could not be opened"),
                             QStringLiteral("The file could not be opened for writing. Please "
                                            "make sure that it is not opened by another "
                                            "program."));
        return;
    }
    QTextStream out(&file);
    out << "Hand;Win%;Split%;Loss%;Equity P1;EquityP2\n";
    out.setRealNumberNotation(QTextStream::FixedNotation);
    out.setRealNumberPrecision(2);
    const QTableWidget* table = ui->specificEquityHandsTable;
    const auto numberAt = [table](int row, int column) {
        const QTableWidgetItem* item = table->item(row, column);
        if (item == nullptr) {
            return 0.0f;
        }
        const QString text = item->text();
        return text.left(text.size() - 2).toFloat();
    };
    for (int row = 0; row < table->rowCount(); ++row) {
        const QTableWidgetItem* handItem = table->item(row, HandColumn);
        const QString hand = handItem != nullptr ? handItem->text() : QString();
        const float win = numberAt(row, WinsColumn);
        const float split = numberAt(row, SplitsColumn);
        const float loss = numberAt(row, LossesColumn);
        out << hand << ';' << win << "%;" << split << "%;" << loss << "%;" << split * 0.5f + win
            << "%;" << split * 0.5f + loss << "%\n";
    }
}
