#include "EquityTableTestHelpers.h"

#include "Range/HandRange.h"
#include "Range/HandRangeElementConversion.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/HandRangeStringReader.h"
#include "calculation/ThreadPool.h"
#include "support/AssertionRecorder.h"
#include "support/TestEnvironment.h"
#include "tabs/EquityMatrixTable.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMovie>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTextStream>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

using namespace EquityTableTestHelpers;

namespace {

const std::string hero = "AA,KK,QQ,AKs,AKo,KQs,JTs,T9s,76s,A5s,KJo";
const std::string villain = "TT,JJ,QQ,KK,AA,AQs,AKs,AQo,AKo,KQs";
const std::string flop = "Kh9h4c";

class EquityTableTabTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { initializeAllBoardsBeforeCalculation(); }

    void SetUp() override {
        // The export dialog starts in the current folder: keep it away from the sources.
        previousFolder = QDir::currentPath();
        ASSERT_TRUE(folder.isValid());
        QDir::setCurrent(folder.path());
        QSettings("Velmara", "Quorvane").remove("equityTableTab");
        tab.reset(new EquityTableTab);
        tab->setThreadPool(&pool);
    }
    void TearDown() override {
        tab.reset();
        QDir::setCurrent(previousFolder);
    }

    // Runs one calculation to its end.
    void calculate(const std::string& p1, const std::string& p2, const std::string& board,
                   const std::string& dead = "") {
        tab->updateInputs(p1, p2, board, dead);
        ASSERT_TRUE(tab->isCalculating());
        ASSERT_TRUE(waitForResult(*tab));
    }
    QDoubleSpinBox* spin(const char* name) { return child<QDoubleSpinBox>(*tab, name); }
    QCheckBox* singular() { return child<QCheckBox>(*tab, "showCombinationsFlag"); }
    QString label(const char* name) { return child<QLabel>(*tab, name)->text(); }

    // The concrete hands the detail table lists.
    std::set<std::string> detailHands() {
        std::set<std::string> hands;
        for (const QStringList& row : tableRows(*tab)) {
            hands.insert(row[0].toStdString());
        }
        return hands;
    }

    QTemporaryDir folder;
    QString previousFolder;
    ThreadPool pool;
    std::unique_ptr<EquityTableTab> tab;
};

// Every class row against the evaluator's own per-hand counters, summed by the test.
void expectClassRowsMatch(EquityTableTab& tab, const WinEvaluationsByHand& reference) {
    const auto sums = classSums(reference);
    const auto rows = tableRows(tab);
    ASSERT_EQ(rows.size(), sums.size());
    int combinations = 0;
    for (const auto& entry : sums) {
        combinations += entry.second.combinations;
    }
    std::set<std::string> seen;
    for (const QStringList& row : rows) {
        const std::string hand = row[0].toStdString();
        ASSERT_TRUE(sums.count(hand)) << hand;
        seen.insert(hand);
        const Counters& c = sums.at(hand);
        const double equity = exactEquity(c.wins, c.ties, c.total);
        const double wins = static_cast<double>(c.wins) / static_cast<double>(c.total);
        const double ties = static_cast<double>(c.ties) / static_cast<double>(c.total);
        const double losses = 1.0 - wins - ties;
        EXPECT_EQ(row[1], percentText(wins)) << hand;
        EXPECT_EQ(row[2], percentText(ties)) << hand;
        EXPECT_NEAR(row[3].chopped(2).toDouble(), losses * 100.0, 0.0051) << hand;
        EXPECT_EQ(row[4], percentText(equity)) << hand;
        EXPECT_NEAR(row[4].chopped(2).toDouble(), equity * 100.0, 0.0051) << hand;
        EXPECT_EQ(row[5], QString::number(c.combinations)) << hand;
        EXPECT_EQ(row[6], percentText(static_cast<double>(c.combinations) / combinations)) << hand;
    }
    EXPECT_EQ(seen.size(), sums.size());
}

} // namespace

TEST_F(EquityTableTabTest, FormHasItsTextsAndLimits) {
    EXPECT_EQ(tab->whatsThis(),
              "In this tab you get an overview of the equities of all the hands in the given "
              "range on the given board. The equities are both shown in a matrix with colors "
              "and in a table.<br/>");
    auto* player = child<QComboBox>(*tab, "selectedPlayer");
    ASSERT_NE(player, nullptr);
    ASSERT_EQ(player->count(), 2);
    EXPECT_EQ(player->itemText(0), "Player1");
    EXPECT_EQ(player->itemText(1), "Player2");
    EXPECT_EQ(singular()->text(), "Show Singular Combinations");
    for (const char* name :
         {"equityLowerBound", "equityUpperBound", "percentileLowerBound", "percentileUpperBound"}) {
        ASSERT_NE(spin(name), nullptr) << name;
        EXPECT_EQ(spin(name)->maximum(), 100.0) << name;
    }
    EXPECT_EQ(spin("equityLowerBound")->value(), 0.0);
    EXPECT_EQ(spin("equityUpperBound")->value(), 100.0);
    EXPECT_EQ(spin("percentileLowerBound")->value(), 0.0);
    EXPECT_EQ(spin("percentileUpperBound")->value(), 100.0);
    QTableWidget* t = table(*tab);
    ASSERT_EQ(t->columnCount(), 7);
    const QStringList headings{"Hand",   "Wins",         "Splits",    "Losses",
                               "Equity", "Combinations", "% of Range"};
    for (int column = 0; column < 7; ++column) {
        EXPECT_EQ(t->horizontalHeaderItem(column)->text(), headings[column]);
    }
    EXPECT_TRUE(t->isSortingEnabled());
    EXPECT_EQ(child<QPushButton>(*tab, "copyRangeToClipboardButton")->text(),
              "Copy Range to Clipboard");
    EXPECT_EQ(child<QPushButton>(*tab, "exportToCSVButton")->text(), "E&xport Table To CSV");
    EXPECT_FALSE(
        child<QPushButton>(*tab, "copyRangeToClipboardButton")->icon().pixmap(16, 16).isNull());
    EXPECT_FALSE(child<QPushButton>(*tab, "exportToCSVButton")->icon().pixmap(16, 16).isNull());
    EXPECT_NE(child<EquityMatrixTable>(*tab, "equityMatrixTable"), nullptr);
    EXPECT_NE(child<QLabel>(*tab, "resultingCombinations"), nullptr);
    EXPECT_NE(child<QLabel>(*tab, "resultingRangePercentage"), nullptr);
}

TEST_F(EquityTableTabTest, PreflopClassEquitiesEqualTheEvaluators) {
    calculate(hero, villain, "");
    const WinEvaluationsByHand reference = referenceRecords(hero, villain, "", "");
    ASSERT_EQ(tab->getAllEvaluations().size(), reference.size());
    expectClassRowsMatch(*tab, reference);
    // All combinations of the hero's range: AA, KK, QQ 6 each, AKo and KJo 12, six suited
    // classes 4 each.
    EXPECT_EQ(tab->getResultingCombinationCount(), 6 + 6 + 6 + 4 + 12 + 4 + 4 + 4 + 4 + 4 + 12);
    EXPECT_EQ(label("resultingCombinations"), "66");
    EXPECT_EQ(label("resultingRangePercentage"), "4.98 %"); // 66 / 1326

    // The matrix shows the same class equities.
    auto* matrix = child<EquityMatrixTable>(*tab, "equityMatrixTable");
    const auto sums = classSums(reference);
    int filled = 0;
    for (int row = 0; row < 13; ++row) {
        for (int column = 0; column < 13; ++column) {
            const std::string hand = EquityMatrixTable::cellHand(row, column).toStdString();
            const float value = matrix->cellValue(row, column);
            if (sums.count(hand)) {
                const Counters& c = sums.at(hand);
                EXPECT_NEAR(value, exactEquity(c.wins, c.ties, c.total), 1e-6) << hand;
                ++filled;
            } else {
                EXPECT_TRUE(std::isnan(value)) << hand;
            }
        }
    }
    EXPECT_EQ(filled, 11);
    // Singular combinations are a board feature.
    EXPECT_FALSE(singular()->isEnabled());
}

TEST_F(EquityTableTabTest, FlopClassAndConcreteEquitiesEqualTheEvaluators) {
    calculate(hero, villain, flop);
    const WinEvaluationsByHand reference = referenceRecords(hero, villain, flop, "");
    expectClassRowsMatch(*tab, reference);

    ASSERT_TRUE(singular()->isEnabled());
    singular()->setChecked(true);
    const auto rows = tableRows(*tab);
    std::map<std::string, WinEvaluationByHand> byHand;
    for (const WinEvaluationByHand& r : reference) {
        if (r.total != 0) {
            byHand[higherFirst(r.hand)] = r;
        }
    }
    ASSERT_EQ(rows.size(), byHand.size());
    // Kh on the board takes KK 3, AKs 1, AKo 3, KQs 1, KJo 3; 9h takes T9s 1.
    EXPECT_EQ(rows.size(), 66u - 3 - 1 - 3 - 1 - 3 - 1);
    for (const QStringList& row : rows) {
        const std::string hand = row[0].toStdString();
        ASSERT_TRUE(byHand.count(hand)) << hand;
        const WinEvaluationByHand& r = byHand.at(hand);
        EXPECT_EQ(row[1], percentText(static_cast<double>(r.wins) / r.total)) << hand;
        EXPECT_EQ(row[2], percentText(static_cast<double>(r.ties) / r.total)) << hand;
        EXPECT_EQ(row[4], percentText(exactEquity(r.wins, r.ties, r.total))) << hand;
        EXPECT_EQ(row[5], "1");
        EXPECT_EQ(row[6], percentText(1.0 / static_cast<double>(rows.size())));
    }
    EXPECT_EQ(tab->getResultingCombinationCount(), static_cast<int>(rows.size()));
    EXPECT_EQ(label("resultingRangePercentage"),
              percentText(static_cast<double>(rows.size()) / 1326.0));
}

TEST_F(EquityTableTabTest, SelectedPlayer2ListsTheOtherRange) {
    calculate(hero, villain, flop);
    auto* player = child<QComboBox>(*tab, "selectedPlayer");
    player->setCurrentIndex(1); // Refresh with the stored texts
    ASSERT_TRUE(tab->isCalculating());
    ASSERT_TRUE(waitForResult(*tab));
    expectClassRowsMatch(*tab, referenceRecords(villain, hero, flop, ""));
}

TEST_F(EquityTableTabTest, EquityBoundsSelectExactlyTheHandsInBounds) {
    calculate(hero, villain, flop);
    singular()->setChecked(true);
    const WinEvaluationsByHand reference = referenceRecords(hero, villain, flop, "");
    const auto expectedIn = [&reference](float low, float high) {
        std::set<std::string> hands;
        for (const WinEvaluationByHand& r : reference) {
            if (r.total != 0 && filterEquity(r) >= low && filterEquity(r) <= high) {
                hands.insert(higherFirst(r.hand));
            }
        }
        return hands;
    };
    spin("equityLowerBound")->setValue(30.0);
    spin("equityUpperBound")->setValue(70.0);
    const std::set<std::string> middle = expectedIn(0.3f, 0.7f);
    ASSERT_FALSE(middle.empty());
    ASSERT_LT(middle.size(), 50u);
    EXPECT_EQ(detailHands(), middle);
    EXPECT_EQ(tab->getResultingCombinationCount(), static_cast<int>(middle.size()));

    spin("equityLowerBound")->setValue(80.0);
    spin("equityUpperBound")->setValue(100.0);
    EXPECT_EQ(detailHands(), expectedIn(0.8f, 1.0f));

    // The class view holds the classes of exactly these hands.
    singular()->setChecked(false);
    std::set<std::string> classes;
    for (const std::string& hand : expectedIn(0.8f, 1.0f)) {
        classes.insert(classOf(hand));
    }
    std::set<std::string> shown;
    for (const QStringList& row : tableRows(*tab)) {
        shown.insert(row[0].toStdString());
    }
    EXPECT_EQ(shown, classes);
}

TEST_F(EquityTableTabTest, FullBoundsKeepEverything) {
    calculate(hero, villain, flop);
    int possible = 0;
    for (const WinEvaluationByHand& r : tab->getAllEvaluations()) {
        possible += r.total != 0 ? 1 : 0;
    }
    EXPECT_EQ(static_cast<int>(tab->getDisplayedEvaluations().size()), possible);
    EXPECT_EQ(tab->getResultingCombinationCount(), possible);
}

// On the river every matchup is decided: against one hand an equity is 0, 1/2 or 1.
TEST_F(EquityTableTabTest, BoundsOnExactEquities) {
    const std::string river = "AhKd7c5s2h";
    calculate("QQ,AKo,33,JJ", "QcQd", river);
    singular()->setChecked(true);
    // QQ: the other two queens tie (QhQs); AKo wins, 33 and JJ lose.
    spin("equityLowerBound")->setValue(50.0);
    spin("equityUpperBound")->setValue(50.0);
    EXPECT_EQ(detailHands(), (std::set<std::string>{"QhQs"})); // a bound's own value stays in

    // Upper below lower acts as equal to lower: only hands of exactly 100 %.
    spin("equityLowerBound")->setValue(100.0);
    spin("equityUpperBound")->setValue(20.0);
    const std::set<std::string> winners = detailHands();
    // AKo with neither Ah nor Kd: aces d, s, c times kings h, s, c without the suited
    // AsKs and AcKc, 9 - 2 = 7 hands, each with two pair.
    EXPECT_EQ(winners.size(), 7u);
    for (const std::string& hand : winners) {
        EXPECT_EQ(classOf(hand), "AKo") << hand;
    }

    spin("equityLowerBound")->setValue(0.0);
    spin("equityUpperBound")->setValue(0.0);
    const std::set<std::string> losers = detailHands();
    EXPECT_EQ(losers.size(), 6u + 6u); // 33 and JJ: all six combinations each
}

TEST_F(EquityTableTabTest, PercentileBoundsCutTheBestShare) {
    calculate(hero, villain, flop);
    singular()->setChecked(true);
    std::vector<float> equities;
    for (const WinEvaluationByHand& r : tab->getAllEvaluations()) {
        if (r.total != 0) {
            equities.push_back(filterEquity(r));
        }
    }
    std::sort(equities.begin(), equities.end(), std::greater<float>());
    const std::size_t n = equities.size();
    ASSERT_EQ(n, 54u);

    spin("percentileUpperBound")->setValue(20.0);
    const std::size_t best = static_cast<std::size_t>(0.2 * n); // 10 of 54
    ASSERT_EQ(tab->getDisplayedEvaluations().size(), best);
    for (std::size_t i = 0; i < best; ++i) {
        EXPECT_FLOAT_EQ(EquityTableTab::equityOfRecord(tab->getDisplayedEvaluations()[i]),
                        equities[i]);
    }
    EXPECT_EQ(table(*tab)->rowCount(), static_cast<int>(best));

    spin("percentileLowerBound")->setValue(20.0);
    spin("percentileUpperBound")->setValue(50.0);
    const std::size_t from = static_cast<std::size_t>(0.2 * n); // 10
    const std::size_t to = static_cast<std::size_t>(0.5 * n);   // 27
    ASSERT_EQ(tab->getDisplayedEvaluations().size(), to - from);
    for (std::size_t i = 0; i < to - from; ++i) {
        EXPECT_FLOAT_EQ(EquityTableTab::equityOfRecord(tab->getDisplayedEvaluations()[i]),
                        equities[from + i]);
    }

    // A high bound below the low one keeps nothing.
    spin("percentileLowerBound")->setValue(60.0);
    spin("percentileUpperBound")->setValue(10.0);
    EXPECT_TRUE(tab->getDisplayedEvaluations().empty());
    EXPECT_EQ(table(*tab)->rowCount(), 0);

    spin("percentileLowerBound")->setValue(0.0);
    spin("percentileUpperBound")->setValue(100.0);
    EXPECT_EQ(tab->getDisplayedEvaluations().size(), n);
}

// Records of whole classes weigh with their combinations: 6 a pair, 4 suited, 12 offsuit.
TEST_F(EquityTableTabTest, PercentileCutOfClassRecordsIsWeighted) {
    const std::string classes = "AA,AKs,AKo,72o";
    calculate(classes, villain, "");
    const auto record = [](const char* hand, unsigned long long wins) {
        WinEvaluationByHand r;
        r.hand = hand;
        r.total = 1000;
        r.wins = wins;
        r.losses = 1000 - wins;
        return r;
    };
    const WinEvaluationsByHand classRecords{record("72o", 300), record("AKs", 670),
                                            record("AA", 850), record("AKo", 650)};
    tab->reactToFinishedCalculation(tab->currentHandle(), classRecords);
    // Weights in order of equity: AA 6, AKs 4, AKo 12, 72o 12, 34 in all. The share before
    // each is 0, 6/34, 10/34, 22/34: the first reaching 0.5 is 72o's.
    spin("percentileUpperBound")->setValue(50.0);
    std::vector<std::string> hands;
    for (const WinEvaluationByHand& r : tab->getDisplayedEvaluations()) {
        hands.push_back(r.hand);
    }
    EXPECT_EQ(hands, (std::vector<std::string>{"AA", "AKs", "AKo"}));
    // Preflop the classes count their combinations in the listed range.
    EXPECT_EQ(tab->getResultingCombinationCount(), 6 + 4 + 12);
    const auto rows = tableRows(*tab);
    ASSERT_EQ(rows.size(), 3u);
    for (const QStringList& row : rows) {
        const int expected = row[0] == "AA" ? 6 : row[0] == "AKs" ? 4 : 12;
        EXPECT_EQ(row[5], QString::number(expected)) << row[0].toStdString();
        EXPECT_EQ(row[6], percentText(expected / 22.0)) << row[0].toStdString();
    }
    // From 10/34 on: AKo (10/34 >= 0.25) and 72o; the low index is the first share >= 0.25.
    spin("percentileLowerBound")->setValue(25.0);
    spin("percentileUpperBound")->setValue(100.0);
    hands.clear();
    for (const WinEvaluationByHand& r : tab->getDisplayedEvaluations()) {
        hands.push_back(r.hand);
    }
    EXPECT_EQ(hands, (std::vector<std::string>{"AKo", "72o"}));
}

TEST_F(EquityTableTabTest, EmptyBoardDisablesAndUnchecksSingularCombinations) {
    calculate(hero, villain, flop);
    ASSERT_TRUE(singular()->isEnabled());
    singular()->setChecked(true); // the user's choice is kept in the settings
    EXPECT_TRUE(QSettings("Velmara", "Quorvane").value("equityTableTab/showDetailHands").toBool());

    calculate(hero, villain, "");
    EXPECT_FALSE(singular()->isEnabled());
    EXPECT_FALSE(singular()->isChecked());
    // The table shows classes, not single combinations.
    for (const QStringList& row : tableRows(*tab)) {
        EXPECT_LE(row[0].size(), 3) << row[0].toStdString();
    }
    // Forced off by the board, not by the user: the setting stands.
    EXPECT_TRUE(QSettings("Velmara", "Quorvane").value("equityTableTab/showDetailHands").toBool());

    // With a board again the box is open, and unchecked until the user checks it.
    calculate(hero, villain, flop);
    EXPECT_TRUE(singular()->isEnabled());
    EXPECT_FALSE(singular()->isChecked());
    singular()->setChecked(true);
    EXPECT_TRUE(QSettings("Velmara", "Quorvane").value("equityTableTab/showDetailHands").toBool());
    singular()->setChecked(false);
    EXPECT_FALSE(
        QSettings("Velmara", "Quorvane").value("equityTableTab/showDetailHands", true).toBool());
}

TEST_F(EquityTableTabTest, SettingIsReadAtConstruction) {
    QSettings("Velmara", "Quorvane").setValue("equityTableTab/showDetailHands", true);
    EquityTableTab other;
    EXPECT_TRUE(other.findChild<QCheckBox*>("showCombinationsFlag")->isChecked());
    QSettings("Velmara", "Quorvane").setValue("equityTableTab/showDetailHands", false);
    EquityTableTab third;
    EXPECT_FALSE(third.findChild<QCheckBox*>("showCombinationsFlag")->isChecked());
}

TEST_F(EquityTableTabTest, RangePercentageIsAgainst1326WhateverTheBoard) {
    calculate("AA", "KK", "");
    EXPECT_EQ(label("resultingCombinations"), "6");
    EXPECT_EQ(label("resultingRangePercentage"), "0.45 %"); // 6 / 1326 = 0.4525 %
    calculate("AA", "KK", "Ah7c2d");
    // Three aces are left with the ace of hearts on the board: 3 / 1326 = 0.2262 %.
    EXPECT_EQ(label("resultingCombinations"), "3");
    EXPECT_EQ(label("resultingRangePercentage"), "0.23 %");
    calculate("AA", "KK", "", "AhAd");
    EXPECT_EQ(label("resultingCombinations"), "1");
    EXPECT_EQ(label("resultingRangePercentage"), "0.08 %");
}

TEST_F(EquityTableTabTest, CsvHoldsEveryShownRowWithTheTablesNumbers) {
    calculate(hero, villain, flop);
    singular()->setChecked(true);
    spin("equityLowerBound")->setValue(20.0);
    const auto rows = tableRows(*tab);
    ASSERT_GT(rows.size(), 10u);

    const QString path =
        QString::fromStdString(TestEnvironment::outputFolder()) + "/equity_table_export.csv";
    QFile::remove(path);
    QString title;
    ModalAnswer answer([&](QWidget* modal) {
        if (qobject_cast<QFileDialog*>(modal) != nullptr) {
            title = modal->windowTitle();
        }
        return saveAs(modal, path);
    });
    child<QPushButton>(*tab, "exportToCSVButton")->click();
    ASSERT_TRUE(answer.answered());
    EXPECT_FALSE(answer.gaveUp());
    EXPECT_EQ(title, "Save As");

    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    ASSERT_TRUE(text.endsWith('\n'));
    const QStringList lines = text.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(static_cast<std::size_t>(lines.size()), rows.size() + 1);
    EXPECT_EQ(lines[0], "Hand;Win%;Split%;Loss%;Equity P1;EquityP2");
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const QStringList fields = lines[static_cast<int>(i) + 1].split(';');
        ASSERT_EQ(fields.size(), 6) << lines[static_cast<int>(i) + 1].toStdString();
        EXPECT_EQ(fields[0], rows[i][0]);
        // The numbers are the table's rounded texts, without the blank before "%".
        EXPECT_EQ(fields[1], rows[i][1].chopped(2) + "%");
        EXPECT_EQ(fields[2], rows[i][2].chopped(2) + "%");
        EXPECT_EQ(fields[3], rows[i][3].chopped(2) + "%");
        const float win = rows[i][1].chopped(2).toFloat();
        const float split = rows[i][2].chopped(2).toFloat();
        const float loss = rows[i][3].chopped(2).toFloat();
        EXPECT_EQ(fields[4],
                  QString::number(static_cast<double>(split * 0.5f + win), 'f', 2) + "%");
        EXPECT_EQ(fields[5],
                  QString::number(static_cast<double>(split * 0.5f + loss), 'f', 2) + "%");
        // Equity P1 is the table's equity of the listed hand, within the rounding of the
        // two columns it is made of.
        EXPECT_NEAR(fields[4].chopped(1).toDouble(), rows[i][4].chopped(2).toDouble(), 0.011);
        for (int f = 1; f < 6; ++f) {
            const QString number = fields[f].chopped(1);
            EXPECT_EQ(number.size() - number.indexOf('.'), 3) << fields[f].toStdString();
        }
    }
}

TEST_F(EquityTableTabTest, CsvExportCancelledWritesNothing) {
    calculate("AA,KK", "QQ", "");
    const QString before = QDir::currentPath();
    int files = QDir(before).entryList(QDir::Files).size();
    QString offered;
    ModalAnswer answer([&offered](QWidget* modal) {
        auto* dialog = qobject_cast<QFileDialog*>(modal);
        if (dialog == nullptr) {
            return false;
        }
        offered = dialog->selectedFiles().value(0);
        QTimer::singleShot(0, dialog, &QFileDialog::reject);
        return true;
    });
    tab->ExportTableToCSV();
    ASSERT_TRUE(answer.answered());
    EXPECT_FALSE(answer.gaveUp());
    // The dialog starts in the current folder with the name "untitled.csv".
    EXPECT_EQ(offered, QDir::current().absoluteFilePath("untitled.csv"));
    EXPECT_EQ(QDir(before).entryList(QDir::Files).size(), files);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(EquityTableTabTest, CsvExportToAnUnwritablePlaceWarns) {
    calculate("AA,KK", "QQ", "");
    // Whatever user runs the test, nobody may create files in /proc.
    const QString path = "/proc/equity_table.csv";
    QString boxTitle;
    QString boxText;
    ModalAnswer answer([&path](QWidget* modal) { return saveAs(modal, path); });
    ModalAnswer boxAnswer([&](QWidget* modal) {
        auto* box = qobject_cast<QMessageBox*>(modal);
        if (box == nullptr) {
            return false;
        }
        boxTitle = box->windowTitle();
        boxText = box->text();
        QTimer::singleShot(0, box, &QMessageBox::accept);
        return true;
    });
    tab->ExportTableToCSV();
    ASSERT_TRUE(answer.answered());
    ASSERT_TRUE(boxAnswer.answered());
    EXPECT_FALSE(answer.gaveUp() || boxAnswer.gaveUp());
    EXPECT_EQ(boxTitle, "File could not be opened");
    EXPECT_EQ(boxText, "The file could not be opened for writing. Please make sure that it is "
                       "not opened by another program.");
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(EquityTableTabTest, ClipboardTextReparsesToTheFilteredRange) {
    calculate(hero, villain, flop);
    spin("equityLowerBound")->setValue(50.0);
    std::set<Range::CardMask> expected;
    for (const WinEvaluationByHand& r : referenceRecords(hero, villain, flop, "")) {
        if (r.total != 0 && filterEquity(r) >= 0.5f) {
            expected.insert(getIndexByCards(r.hand.substr(0, 2)) |
                            getIndexByCards(r.hand.substr(2, 2)));
        }
    }
    ASSERT_FALSE(expected.empty());
    QApplication::clipboard()->setText("before");
    child<QPushButton>(*tab, "copyRangeToClipboardButton")->click();
    const std::string text = QApplication::clipboard()->text().toStdString();
    ASSERT_NE(text, "before");

    Range::HandRange parsed;
    Range::HandRangeStringManipulator(parsed).setFree(text);
    std::set<Range::CardMask> hands;
    for (const Range::Element& element : parsed) {
        std::vector<Range::CardMask> ofElement;
        Range::handsOfElement(element.values, element.suits, ofElement);
        hands.insert(ofElement.begin(), ofElement.end());
    }
    EXPECT_EQ(hands, expected);
    // Compact text: written by the range itself, so parsing it again gives it back.
    EXPECT_EQ(Range::HandRangeStringReader(parsed).compactText(), text);
}

TEST_F(EquityTableTabTest, ClipboardOfAnEmptySelectionIsLeftAlone) {
    calculate("AA,KK", "QQ", "");
    spin("equityLowerBound")->setValue(99.0); // nothing wins that often against QQ
    ASSERT_TRUE(tab->getDisplayedEvaluations().empty());
    QApplication::clipboard()->setText("before");
    tab->onCopyRangeToClipBoardButton();
    EXPECT_EQ(QApplication::clipboard()->text(), "before");
}

TEST_F(EquityTableTabTest, StaleResultNeverReachesTheTable) {
    QSignalSpy results(&pool, &ThreadPool::WinEvaluationByHandFinished);
    calculate("AA,KK", "QQ", "");
    ASSERT_EQ(tableRows(*tab).size(), 2u);
    ASSERT_EQ(results.count(), 1);

    // First inputs, then at once new ones: the first calculation is stopped.
    tab->updateInputs(hero, villain, flop, "");
    const ThreadHandle first = tab->currentHandle();
    tab->updateInputs("JJ,TT,99", "AKo", flop, "");
    const ThreadHandle second = tab->currentHandle();
    EXPECT_FALSE(first == second);
    // While calculating the previous table stays.
    EXPECT_EQ(tableRows(*tab).size(), 2u);
    EXPECT_EQ(tableRows(*tab)[0][0].size(), 2);
    ASSERT_TRUE(waitForResult(*tab));
    QTest::qWait(50);
    // Only the second calculation reported, and only its hands are shown.
    ASSERT_EQ(results.count(), 2);
    EXPECT_TRUE(results.at(1).at(0).value<ThreadHandle>() == second);
    std::set<std::string> shown;
    for (const QStringList& row : tableRows(*tab)) {
        shown.insert(row[0].toStdString());
    }
    EXPECT_EQ(shown, (std::set<std::string>{"JJ", "TT", "99"}));
    expectClassRowsMatch(*tab, referenceRecords("JJ,TT,99", "AKo", flop, ""));

    // A result with a handle that is not the tab's (the first, or another listener's)
    // is dropped, even when it arrives through the pool.
    WinEvaluationByHand bogus;
    bogus.hand = "AsAd";
    bogus.total = 10;
    bogus.wins = 10;
    emit pool.WinEvaluationByHandFinished(first, WinEvaluationsByHand{bogus});
    const WinEvaluationByHandHandle foreign = pool.createWinEvaluationByHandHandle();
    emit pool.WinEvaluationByHandFinished(foreign, WinEvaluationsByHand{bogus});
    emit pool.WinEvaluationByHandFinished(ThreadHandle(), WinEvaluationsByHand{bogus});
    shown.clear();
    for (const QStringList& row : tableRows(*tab)) {
        shown.insert(row[0].toStdString());
    }
    EXPECT_EQ(shown, (std::set<std::string>{"JJ", "TT", "99"}));
    EXPECT_EQ(tab->getAllEvaluations().size(),
              referenceRecords("JJ,TT,99", "AKo", flop, "").size());
}

TEST_F(EquityTableTabTest, LoadingLabelsWhileCalculating) {
    calculate("AA,KK", "QQ", flop);
    const auto before = tableRows(*tab);
    ASSERT_EQ(before.size(), 2u);
    tab->updateInputs(hero, villain, flop, "");
    EXPECT_EQ(label("loadingLeftLabel"), "Calculating...&nbsp;");
    QMovie* movie = child<QLabel>(*tab, "loadingRightLabel")->movie();
    ASSERT_NE(movie, nullptr);
    EXPECT_TRUE(movie->isValid());
    EXPECT_EQ(movie->state(), QMovie::Running);
    // Switching to single combinations waits for the result: the old table stays.
    singular()->setChecked(true);
    EXPECT_EQ(tableRows(*tab), before);
    ASSERT_TRUE(waitForResult(*tab));
    EXPECT_EQ(label("loadingLeftLabel"), "");
    EXPECT_EQ(child<QLabel>(*tab, "loadingRightLabel")->movie(), nullptr);
    EXPECT_EQ(movie->state(), QMovie::NotRunning);
    EXPECT_EQ(tableRows(*tab).size(), 54u); // the hero's combinations one by one
}

TEST_F(EquityTableTabTest, BadBoardTextIsExplainedWithoutCalculating) {
    calculate("AA,KK", "QQ", "");
    tab->updateInputs("AA,KK", "QQ", "AhAh7c", "");
    EXPECT_FALSE(tab->isCalculating());
    EXPECT_EQ(label("loadingLeftLabel"), "The card Ah is given twice.");
    EXPECT_EQ(table(*tab)->rowCount(), 0);

    tab->updateInputs("AA,KK", "QQ", "AhKd", "");
    EXPECT_EQ(label("loadingLeftLabel"), "A board has 0, 3, 4 or 5 cards, not 2.");
    tab->updateInputs("AA,KK", "QQ", "Ah7c2d", "2d");
    EXPECT_EQ(label("loadingLeftLabel"), "The card 2d is given twice.");
    tab->updateInputs("AA,KK", "QQ", "Ah7c2x", "");
    EXPECT_EQ(label("loadingLeftLabel"),
              "Unknown card \"2x\" in the board: a card is a rank and a suit, like Ah.");
    tab->updateInputs("AA,KK", "QQ", "", "Ah7");
    EXPECT_EQ(label("loadingLeftLabel"), "The dead cards \"Ah7\" is not a list of two-character "
                                         "cards: a card is a rank and a suit, like Ah.");
    EXPECT_FALSE(tab->isCalculating());

    // Good text again calculates again.
    calculate("AA,KK", "QQ", "Ah7c2d");
    EXPECT_EQ(label("loadingLeftLabel"), "");
    EXPECT_EQ(table(*tab)->rowCount(), 2);
}

TEST_F(EquityTableTabTest, EmptyRangeShowsNothing) {
    calculate("AA,KK", "QQ", "");
    tab->updateInputs("", "QQ", "", "");
    EXPECT_FALSE(tab->isCalculating());
    EXPECT_EQ(table(*tab)->rowCount(), 0);
    EXPECT_EQ(label("resultingCombinations"), "0");
    tab->updateInputs("AA", "", "", "");
    EXPECT_FALSE(tab->isCalculating());
    EXPECT_EQ(table(*tab)->rowCount(), 0);
}

TEST_F(EquityTableTabTest, RangeTextInAnySpellingIsAccepted) {
    calculate("QQ+, ak", "tt-99", "");
    std::set<std::string> shown;
    for (const QStringList& row : tableRows(*tab)) {
        shown.insert(row[0].toStdString());
    }
    EXPECT_EQ(shown, (std::set<std::string>{"AA", "KK", "QQ", "AKs", "AKo"}));
}

TEST_F(EquityTableTabTest, WithoutAPoolNothingStarts) {
    EquityTableTab lonely;
    AssertionRecorder recorder;
    lonely.updateInputs("AA", "KK", "", "");
    EXPECT_TRUE(recorder.saw("No thread pool."));
    EXPECT_FALSE(lonely.isCalculating());
}

TEST_F(EquityTableTabTest, SortingIsKeptAcrossRefills) {
    calculate(hero, villain, "");
    QTableWidget* t = table(*tab);
    // Best equity first at the start.
    EXPECT_EQ(t->horizontalHeader()->sortIndicatorSection(), 4);
    const auto byEquity = tableRows(*tab);
    for (std::size_t i = 1; i < byEquity.size(); ++i) {
        EXPECT_GE(byEquity[i - 1][4].chopped(2).toFloat(), byEquity[i][4].chopped(2).toFloat());
    }
    t->sortByColumn(0, Qt::DescendingOrder);
    spin("equityLowerBound")->setValue(10.0); // refill
    EXPECT_EQ(t->horizontalHeader()->sortIndicatorSection(), 0);
    std::vector<std::string> hands;
    for (const QStringList& row : tableRows(*tab)) {
        hands.push_back(row[0].toStdString());
    }
    ASSERT_GE(hands.size(), 4u);
    EXPECT_EQ(hands[0], "AA");
    EXPECT_EQ(hands[1], "AKs");
    EXPECT_EQ(hands[2], "AKo");
    // Combinations sort by number, not by text.
    t->sortByColumn(5, Qt::DescendingOrder);
    const auto rows = tableRows(*tab);
    for (std::size_t i = 1; i < rows.size(); ++i) {
        EXPECT_GE(rows[i - 1][5].toInt(), rows[i][5].toInt());
    }
    EXPECT_EQ(rows.front()[5], "12");
}

TEST_F(EquityTableTabTest, DestroyedWhileCalculatingIsSafe) {
    QSignalSpy results(&pool, &ThreadPool::WinEvaluationByHandFinished);
    tab->updateInputs(hero, villain, flop, "");
    tab.reset();
    QTest::qWait(300);
    EXPECT_EQ(results.count(), 0); // stopped, so silent
}
