// The EV/FE page driven as a user drives it: lines added through the real dialog, ranges
// typed into the action lines, money typed into the boxes; every number checked against the
// EV arithmetic worked out here from the same inputs.

#include "EVFEPage.h"
#include "ModalDriver.h"
#include "SampleLines.h"

#include "Range/HandRangeStringManipulator.h"
#include "Range/HandRangeStringReader.h"
#include "Range/TreeRangeNode.h"
#include "evfe/EV_FE_ColorCoding.h"
#include "evfe/LineFactory.h"
#include "evfe/LineFile.h"
#include "evfe/Street.h"
#include "evfe/ui/EV_FE_CalculationsColorCodingDialog.h"
#include "evfe/ui/HorizontalLineHeader.h"
#include "evfe/ui/LineActionWidget.h"
#include "selection/HandRangeLine.h"
#include "selection/HandSelectionDialog.h"
#include "ui_EV_FE_CalculationsColorCodingDialog.h"
#include "ui_EV_FE_CalculationsTab.h"
#include "utils/ui/HintTooltip.h"

#include <QApplication>
#include <QColorDialog>
#include <QDoubleSpinBox>
#include <QInputDialog>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <QToolButton>
#include <QVariant>
#include <VelmaraEvaluatorBase.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

const char* const player1Full = "22+,A2s+,K9s+,QTs+,JTs,T9s,98s,ATo+,KJo+";
const char* const player2Full =
    "22+,A2s+,K2s+,Q8s+,J8s+,T8s+,97s+,86s+,75s+,65s,54s,A9o+,KTo+,QTo+,JTo";
const char* const flop = "Kh9h4c";

void clearSettings() {
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    settings.clear();
    settings.sync();
}

void setSetting(const char* key, const QVariant& value) {
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    settings.setValue(QString::fromLatin1(key), value);
    settings.sync();
}

std::string technical(const std::string& freeText) {
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree(freeText);
    return Range::HandRangeStringReader(range).technicalText();
}

// The equity of two technical texts, worked out here, in this thread.
void equitiesOf(const std::string& range1, const std::string& range2, const std::string& board,
                float& equity1, float& equity2) {
    volatile bool stop = false;
    const LongedEvaluation counted = board.empty() ? getEquity(range1, range2, "", stop)
                                                   : getEquity(range1, range2, board, "", stop);
    const float total = static_cast<float>(counted.total);
    const float ties = static_cast<float>(counted.ties) * 0.5f;
    equity1 = (static_cast<float>(counted.wins1) + ties) / total;
    equity2 = (static_cast<float>(counted.wins2) + ties) / total;
}

std::uint32_t combinationsOf(const std::string& own, const std::string& other,
                             const std::string& board) {
    volatile bool stop = false;
    float combinations = getRangeCombinationsForOneRange(own, other, board, "", stop).combinations1;
    if (combinations > 0.0f && combinations < 1.0f)
        combinations = 1.0f;
    return static_cast<std::uint32_t>(combinations);
}

QString percentText(float share) {
    return QString::number(static_cast<double>(share * 100.0f), 'f', 2) + QStringLiteral(" %");
}

QString style(float value) {
    return QString::fromStdString(EV_FE_ColorCoding().styleSheetFor(value));
}

const QString white = QStringLiteral(
    "QLabel {color: #000;\nborder: 1px solid #a0a0a0;background-color:rgba(255,255,255,255);}");

bool showsNoNumberWords(const std::vector<QString>& texts) {
    for (const QString& text : texts) {
        const QString lower = text.toLower();
        if (lower.contains(QStringLiteral("nan")) || lower.contains(QStringLiteral("inf")))
            return false;
    }
    return true;
}

// A page on the flop with the full ranges above and one "Bet/Ship" line for Player1.
class BetShipPage : public ::testing::Test {
protected:
    void SetUp() override {
        clearSettings();
        setSetting("optionmenu/EV_FE_ShowEVOfSingleReactions", true);
        page = std::make_unique<EVFEPage>();
        page->setFullRange(1, player1Full);
        page->setFullRange(2, player2Full);
        page->showCards(flop);
        page->selectStreet("Flop");
        page->addLine(QStringLiteral("Bet/Ship"));
        ASSERT_EQ(page->widgetCount(), 5u);
    }

    void TearDown() override { page.reset(); }

    void typeTheLine() {
        page->typeRange(0, QString::fromLatin1(first));
        for (std::size_t i = 0; i < 4; ++i)
            page->typeRange(i + 1, QString::fromLatin1(reactions[i]));
        Ui::EV_FE_CalculationsTab* ui = page->tab().form();
        ui->potBox->setValue(pot);
        ui->player1Stack->setValue(stack1);
        ui->player2Stack->setValue(stack2);
        ui->rakePercentage->setValue(rake);
        ui->rakeCap->setValue(cap);
        page->widget(0)->sizeBox()->setValue(firstSize);
        page->widget(3)->sizeBox()->setValue(raiseSize);
        ASSERT_TRUE(page->waitForEquities());
    }

    // What the reaction at `index` must show, worked out from the inputs of this test.
    LineAction expectedReaction(std::size_t index) const {
        const LineVariant skeleton = LineFactory::create("Bet/Ship", "", "Player1");
        LineAction action = skeleton.actions[index];
        action.range = nullptr;
        action.size = index == 3 ? static_cast<float>(raiseSize) : 0.0f;
        action.previousMoney = static_cast<float>(firstSize);
        action.deadmoney = static_cast<float>(pot);
        action.player1sEffectiveStackSizeBeforeAction = static_cast<float>(stack1);
        action.player2sEffectiveStackSizeBeforeAction = static_cast<float>(stack2);
        action.rakeFraction = static_cast<float>(rake / 100);
        action.rakeCap = static_cast<float>(cap);
        const std::string own = technical(reactions[index - 1]);
        const std::string bettor = technical(first);
        action.rangeCombinations = combinationsOf(own, bettor, flop);
        if (action.action != ActionCode::Fold)
            equitiesOf(bettor, own, flop, action.equityP1, action.equityP2);
        action.calculateEV();
        return action;
    }

    std::unique_ptr<EVFEPage> page;
    const char* first = "TT+,AQs+,AKo,KQs,K9s,99";
    const char* reactions[4] = {"22-66,A2s-A5s", "77-JJ,ATs-AQs,KJs-KTs", "QQ,AKo", "KK+,AKs"};
    double pot = 10.0;
    double stack1 = 100.0;
    double stack2 = 90.0;
    double rake = 5.0;
    double cap = 3.0;
    double firstSize = 7.5;
    double raiseSize = 25.0;
};

TEST_F(BetShipPage, BuildsOneWidgetPerActionUnderItsHeadings) {
    EV_FE_CalculationsTab& tab = page->tab();
    ASSERT_EQ(tab.headers().size(), 3u);
    EXPECT_EQ(tab.headers()[0]->text(), QStringLiteral("First Action"));
    EXPECT_EQ(tab.headers()[1]->text(), QStringLiteral("Reactions"));
    EXPECT_EQ(tab.headers()[2]->text(), QStringLiteral("Overall Result"));
    const char* labels[] = {" Player1 bets ", " Player2 folds ", " Player2 calls ",
                            " Player2 raise/folds ", " Player2 raise/calls "};
    for (std::size_t i = 0; i < 5; ++i)
        EXPECT_EQ(page->widget(i)->playerLabel()->text(), QString::fromLatin1(labels[i]));
    EXPECT_EQ(page->widget(0)->sizeLabel()->text(), QStringLiteral("&nbsp;&nbsp;Betsize"));
    EXPECT_EQ(page->widget(3)->sizeLabel()->text(), QStringLiteral("&nbsp;&nbsp;Raisesize To"));
    EXPECT_EQ(page->widget(1)->sizeBox(), nullptr);
    EXPECT_EQ(page->widget(2)->sizeBox(), nullptr);
    EXPECT_EQ(page->widget(4)->sizeBox(), nullptr);
    EXPECT_LE(page->widget(0)->height(), 39);
    EXPECT_LE(page->widget(2)->height(), 71);
    EXPECT_FALSE(page->widget(0)->hasResultRow());
    EXPECT_EQ(page->widget(2)->copyFromGroupButton()->toolTip(),
              QStringLiteral("Create Copy from Group"));
    EXPECT_EQ(page->widget(2)->determineRangeButton()->toolTip(),
              QStringLiteral("Determine Range as Difference of Parent Range and other Ranges"));
    EXPECT_EQ(page->widget(2)->copyFromGroupButton()->size(), QSize(21, 21));
    EXPECT_EQ(page->mementoLabels(), std::vector<std::string>{"New Line Created"});
    EXPECT_GE(page->changes(), 1);
    Ui::EV_FE_CalculationsTab* ui = tab.form();
    EXPECT_EQ(ui->lineBox->currentText(), QStringLiteral("Bet/Ship"));
    EXPECT_EQ(ui->variantBox->currentText(), QStringLiteral("Main Variant"));
    // A bet needs no last investments.
    EXPECT_TRUE(ui->player1Post->isHidden());
    EXPECT_TRUE(ui->player2Post->isHidden());
    EXPECT_TRUE(ui->plotButton->isVisible());
    EXPECT_FALSE(ui->plotButton->isEnabled());
    EXPECT_FALSE(ui->deleteVariantButton->isEnabled());
    EXPECT_TRUE(ui->deleteLineButton->isEnabled());
}

TEST_F(BetShipPage, EveryLabelEqualsTheArithmeticOfItsInputs) {
    typeTheLine();
    LineVariant expected = LineFactory::create("Bet/Ship", "", "Player1");
    for (std::size_t index = 1; index <= 4; ++index) {
        SCOPED_TRACE(reactions[index - 1]);
        const LineAction want = expectedReaction(index);
        LineActionWidget* widget = page->widget(index);
        EXPECT_EQ(widget->lineAction()->rangeCombinations, want.rangeCombinations);
        EXPECT_TRUE(widget->problem().isEmpty()) << widget->problem().toStdString();
        const float evs[2] = {want.EV_P1, want.EV_P2};
        for (int player = 1; player <= 2; ++player) {
            QLabel* ev = widget->evLabel(player);
            const float value = evs[player - 1];
            ASSERT_TRUE(std::isfinite(value));
            EXPECT_EQ(ev->text(), QString::number(static_cast<double>(value), 'g', 6));
            EXPECT_EQ(ev->toolTip(), QString::fromStdString(want.explanation));
            EXPECT_EQ(ev->styleSheet(), style(value));
        }
        if (want.action != ActionCode::Fold) {
            EXPECT_EQ(widget->equityLabel(1)->text(), percentText(want.equityP1));
            EXPECT_EQ(widget->equityLabel(2)->text(), percentText(want.equityP2));
        }
        expected.actions[index].rangeCombinations = want.rangeCombinations;
        expected.actions[index].EV_P1 = want.EV_P1;
        expected.actions[index].EV_P2 = want.EV_P2;
    }
    expected.calculateOverall();
    Ui::EV_FE_CalculationsTab* ui = page->tab().form();
    const QString ev1 = QString::number(static_cast<double>(expected.EV_P1), 'f', 2);
    const QString ev2 = QString::number(static_cast<double>(expected.EV_P2), 'f', 2);
    EXPECT_EQ(ui->evPlayer1->text(), ev1);
    EXPECT_EQ(ui->evPlayer2->text(), ev2);
    EXPECT_EQ(ui->evPlayer1->toolTip(), QString::fromStdString(expected.explanation));
    // The colour of the printed number.
    EXPECT_EQ(ui->evPlayer1->styleSheet(), style(ev1.toFloat()));
    EXPECT_EQ(ui->evPlayer2->styleSheet(), style(ev2.toFloat()));
    EXPECT_EQ(ui->fePlayer1->text(), percentText(expected.FE_P1));
    EXPECT_EQ(ui->fePlayer2->text(), percentText(0.0f));
    EXPECT_TRUE(showsNoNumberWords(page->labelTexts()));
    // The model holds what the labels show.
    const LineVariant* shown = page->tab().selectedVariant();
    ASSERT_NE(shown, nullptr);
    EXPECT_EQ(shown->EV_P1, expected.EV_P1);
    EXPECT_EQ(shown->FE_P1, expected.FE_P1);
    EXPECT_EQ(shown->deadmoney, 10.0f);
    EXPECT_EQ(shown->actions[0].size, 7.5f);
}

TEST_F(BetShipPage, ASizeChangeUpdatesEveryEVWithoutNewEquities) {
    typeTheLine();
    std::vector<unsigned int> handles;
    for (std::size_t i = 1; i <= 4; ++i)
        handles.push_back(page->widget(i)->currentHandle().getId());
    firstSize = 12.0;
    page->widget(0)->sizeBox()->setValue(firstSize);
    pot = 14.0;
    page->tab().form()->potBox->setValue(pot);
    // Nothing runs: the labels are right at once.
    EXPECT_EQ(page->tab().runningSubrangeCalculations(), 0);
    for (std::size_t index = 1; index <= 4; ++index) {
        EXPECT_FALSE(page->widget(index)->isCalculating());
        EXPECT_EQ(page->widget(index)->currentHandle().getId(), handles[index - 1]);
        const LineAction want = expectedReaction(index);
        EXPECT_EQ(page->widget(index)->evLabel(1)->text(),
                  QString::number(static_cast<double>(want.EV_P1), 'g', 6));
        EXPECT_EQ(page->widget(index)->evLabel(2)->text(),
                  QString::number(static_cast<double>(want.EV_P2), 'g', 6));
    }
}

TEST_F(BetShipPage, ARangeEmptiedWhileItsEquityRunsShowsDashes) {
    typeTheLine();
    LineActionWidget* call = page->widget(2);
    page->typeRange(2, QStringLiteral("88"));
    ASSERT_TRUE(call->isCalculating());
    const unsigned int running = call->currentHandle().getId();
    std::vector<unsigned int> finished;
    QObject::connect(&page->pool(), &ThreadPool::EquityCalculationFinished, &page->tab(),
                     [&finished](const ThreadHandle& handle, const LongedEvaluation&) {
                         finished.push_back(handle.getId());
                     });
    call->ClearRange();
    EXPECT_FALSE(call->isCalculating());
    ASSERT_TRUE(page->waitForEquities());
    // A stopped calculation never reports, so nothing can come back late.
    QTest::qWait(300);
    EXPECT_EQ(std::count(finished.begin(), finished.end(), running), 0);
    for (int player = 1; player <= 2; ++player) {
        EXPECT_EQ(call->equityLabel(player)->text(), QStringLiteral("-"));
        EXPECT_EQ(call->evLabel(player)->text(), QStringLiteral("-"));
        EXPECT_EQ(call->evLabel(player)->styleSheet(), white);
    }
    EXPECT_TRUE(std::isnan(call->lineAction()->equityP1));
    // An empty reaction weighs nothing: the overall result stands.
    EXPECT_NE(page->tab().form()->evPlayer1->text(), QStringLiteral("-"));
    EXPECT_TRUE(showsNoNumberWords(page->labelTexts()));
}

TEST_F(BetShipPage, FoldsHaveNoEquityButCombinationsAndAShare) {
    typeTheLine();
    LineActionWidget* fold = page->widget(1);
    EXPECT_FALSE(fold->hasEquity());
    EXPECT_TRUE(fold->equityLabel(1)->isHidden());
    EXPECT_TRUE(fold->equityLabel(2)->isHidden());
    EXPECT_FALSE(fold->evLabel(1)->isHidden());
    EXPECT_FALSE(fold->isCalculating());
    const LineAction want = expectedReaction(1);
    ASSERT_GT(want.rangeCombinations, 0u);
    // 22-66 and A2s-A5s (30 and 16 combinations) of the second full range, before the board.
    Range::HandRange full;
    Range::HandRangeStringManipulator(full).setFree(player2Full);
    const float share = 46.0f / static_cast<float>(full.combinationCount());
    EXPECT_EQ(
        fold->combinationsLabel()->text(),
        QStringLiteral("Combos: %1 (%2)").arg(want.rangeCombinations).arg(percentText(share)));
    // Player1 takes the pot less its rake.
    EXPECT_EQ(fold->lineAction()->EV_P1, 10.0f - std::min(10.0f * 0.05f, 3.0f));
}

TEST_F(BetShipPage, ARangeOutsideItsParentShowsDashesNotNumbers) {
    typeTheLine();
    // The second player's full range shrinks below the call range: the call does not fit.
    page->setFullRange(2, "22-66,A2s-A5s,QQ+,AKs,AKo");
    page->showCards(flop);
    ASSERT_TRUE(page->waitForEquities());
    LineActionWidget* call = page->widget(2);
    EXPECT_FALSE(call->problem().isEmpty());
    EXPECT_EQ(call->equityLabel(1)->text(), QStringLiteral("-"));
    EXPECT_EQ(call->evLabel(2)->text(), QStringLiteral("-"));
    EXPECT_FALSE(call->rangeLine()->toolTip().isEmpty());
    Ui::EV_FE_CalculationsTab* ui = page->tab().form();
    EXPECT_EQ(ui->evPlayer1->text(), QStringLiteral("-"));
    EXPECT_EQ(ui->fePlayer1->text(), QStringLiteral("-"));
    EXPECT_TRUE(ui->evPlayer1->toolTip().contains(QStringLiteral("Player2 call")));
    EXPECT_TRUE(showsNoNumberWords(page->labelTexts()));
    // Typed again, the range is read inside its parent: what does not fit is left out.
    page->typeRange(2, QStringLiteral("QQ,77"));
    ASSERT_TRUE(page->waitForEquities());
    EXPECT_TRUE(call->problem().isEmpty());
    EXPECT_EQ(Range::HandRangeStringReader(call->lineAction()->range->handRange).compactText(),
              "QQ");
    EXPECT_NE(ui->evPlayer1->text(), QStringLiteral("-"));
}

TEST_F(BetShipPage, ABoardThatBlocksEveryHandShowsDashes) {
    page->setFullRange(1, "AA");
    page->setFullRange(2, "AA,KK");
    page->showCards("AhAdKs");
    page->typeRange(0, QStringLiteral("AA"));
    page->typeRange(2, QStringLiteral("AA"));
    ASSERT_TRUE(page->waitForEquities());
    LineActionWidget* call = page->widget(2);
    EXPECT_EQ(call->equityLabel(1)->text(), QStringLiteral("-"));
    EXPECT_EQ(call->lineAction()->rangeCombinations, 0u);
    EXPECT_TRUE(showsNoNumberWords(page->labelTexts()));
}

TEST_F(BetShipPage, TypingARangeIsAnActionLineChange) {
    page->typeRange(2, QStringLiteral("JJ"));
    ASSERT_FALSE(page->mementoLabels().empty());
    EXPECT_EQ(page->mementoLabels().back(), "Action Line Changed");
}

TEST_F(BetShipPage, OverallResultsWaitForEveryRunningEquity) {
    page->typeRange(0, QString::fromLatin1(first));
    page->typeRange(2, QStringLiteral("77-JJ"));
    page->typeRange(4, QStringLiteral("KK+"));
    EXPECT_GE(page->tab().runningSubrangeCalculations(), 1);
    EXPECT_NE(page->tab().form()->evPlayer1->movie(), nullptr);
    ASSERT_TRUE(page->waitForEquities());
    EXPECT_EQ(page->tab().form()->evPlayer1->movie(), nullptr);
    EXPECT_NE(page->tab().form()->evPlayer1->text(), QString());
}

TEST_F(BetShipPage, SizesStayInsideTheirLimits) {
    Ui::EV_FE_CalculationsTab* ui = page->tab().form();
    ui->player1Stack->setValue(60.0);
    ui->player2Stack->setValue(80.0);
    page->widget(0)->sizeBox()->setValue(10.0);
    // The raise must be at least twice the bet and at most what the shorter stack holds.
    QDoubleSpinBox* raise = page->widget(3)->sizeBox();
    EXPECT_EQ(raise->minimum(), 20.0);
    EXPECT_EQ(raise->maximum(), 60.0);
    raise->setValue(500.0);
    EXPECT_EQ(raise->value(), 60.0);
    raise->setValue(5.0);
    EXPECT_EQ(raise->value(), 20.0);
    EXPECT_EQ(page->widget(0)->sizeBox()->maximum(), 60.0);
    ui->player1Stack->setValue(20000.0);
    EXPECT_EQ(ui->player1Stack->value(), 9999.0);
    EXPECT_EQ(ui->potBox->maximum(), 9999.0);
}

TEST_F(BetShipPage, DetermineRangeTakesWhatTheOtherGroupsLeave) {
    page->setFullRange(2, "22+,AKs");
    page->showCards(flop);
    page->typeRange(1, QStringLiteral("22-66"));
    page->typeRange(2, QStringLiteral("77-TT"));
    page->typeRange(4, QStringLiteral("AA,AKs"));
    page->widget(3)->determineRangeButton()->click();
    EXPECT_EQ(page->widget(3)->rangeLine()->text(), QStringLiteral("JJ-KK"));
    EXPECT_EQ(page->mementoLabels().back(), "Action Line Changed");
}

TEST_F(BetShipPage, TheGroupMenuOffersThePlayersGroups) {
    Range::Tree& groups = page->groups(1);
    Range::GroupColor color;
    color.usesColor = true;
    color.colorFrom = {200, 10, 10};
    color.colorTo = {250, 120, 120};
    Range::TreeRangeNode* value = groups.addRange(0, "Value", false, color);
    Range::HandRangeStringManipulator(value->handRange).setFree("QQ+,AKs");
    // A saved range beside the full range, wider than any menu entry may be.
    Range::TreeRangeNode* wide =
        groups.addRange(Range::Tree::noNode, "Wide", false, Range::GroupColor());
    const std::string wideText =
        "22+,A2s+,K2s+,Q2s+,J2s+,T2s+,92s+,82s+,72s+,62s+,52s+,42s+,32s,A2o+,K2o+,Q2o+";
    Range::HandRangeStringManipulator(wide->handRange).setFree(wideText);
    std::unique_ptr<QMenu> menu(page->widget(0)->createGroupMenu(nullptr));
    const QList<QAction*> entries = menu->actions();
    ASSERT_EQ(entries.size(), 3);
    EXPECT_EQ(entries[0]->text(),
              QStringLiteral("Full Range: ") + QString::fromLatin1(player1Full));
    EXPECT_EQ(entries[1]->text(), QStringLiteral("1+Value: QQ+,AKs"));
    EXPECT_FALSE(entries[1]->icon().isNull());
    EXPECT_TRUE(entries[2]->icon().isNull());
    const QString wideEntry =
        QStringLiteral("2+Wide: ") +
        QString::fromStdString(Range::HandRangeStringReader(wide->handRange).compactText());
    ASSERT_GT(wideEntry.size(), 70);
    EXPECT_EQ(entries[2]->text(), wideEntry.left(70) + QStringLiteral("..."));
    page->widget(0)->onApplyRangeFromAction(entries[1]);
    EXPECT_EQ(page->widget(0)->rangeLine()->text(), QStringLiteral("QQ+,AKs"));
    // The reactions answer the new range at once.
    EXPECT_EQ(Range::HandRangeStringReader(page->widget(2)->getOtherRange()).compactText(),
              "QQ+,AKs");
}

TEST_F(BetShipPage, TheRangeDialogIsTitledWithVerbAndPlayer) {
    ModalDriver driver;
    QString title;
    driver.onOtherModal([&title](QWidget* modal) {
        title = modal->windowTitle();
        QTimer::singleShot(20, qobject_cast<QDialog*>(modal), &QDialog::reject);
    });
    page->widget(3)->selectRangeButton()->click();
    EXPECT_EQ(title, QStringLiteral("Select Range of \"raise/fold\" for \"Player2\""));
    EXPECT_FALSE(driver.timedOut());
}

TEST_F(BetShipPage, TheSingleEVOptionShowsAndHidesTheEVLabels) {
    EXPECT_FALSE(page->widget(2)->evLabel(1)->isHidden());
    setSetting("optionmenu/EV_FE_ShowEVOfSingleReactions", false);
    page->tab().DoRefresh();
    EXPECT_TRUE(page->widget(2)->evLabel(1)->isHidden());
    EXPECT_FALSE(page->widget(2)->equityLabel(1)->isHidden());
}

// ---- Variants and lines ---------------------------------------------------------------------

// Answers the next name dialog with `name` and records its texts.
void answerName(ModalDriver& driver, const QString& name, QString* okText = nullptr,
                QString* proposal = nullptr) {
    driver.onOtherModal([=](QWidget* modal) {
        auto* dialog = qobject_cast<QInputDialog*>(modal);
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->labelText(), QStringLiteral("Please enter the name of the variant:"));
        if (okText)
            *okText = dialog->okButtonText();
        if (proposal)
            *proposal = dialog->textValue();
        dialog->setTextValue(name);
        QTimer::singleShot(20, dialog, &QDialog::accept);
    });
}

TEST_F(BetShipPage, VariantsAreCreatedRenamedAndDeleted) {
    Ui::EV_FE_CalculationsTab* ui = page->tab().form();
    page->typeRange(0, QStringLiteral("AA"));
    {
        ModalDriver driver;
        QString ok;
        answerName(driver, QStringLiteral("Small Bet"), &ok);
        ui->createVariantButton->click();
        EXPECT_EQ(ok, QStringLiteral("Create"));
    }
    ASSERT_EQ(ui->variantBox->count(), 2);
    EXPECT_EQ(ui->variantBox->currentText(), QStringLiteral("Small Bet"));
    EXPECT_EQ(page->widget(0)->rangeLine()->text(), QStringLiteral("AA")); // a copy, ranges too
    EXPECT_TRUE(ui->deleteVariantButton->isEnabled());
    EXPECT_EQ(page->mementoLabels().back(), "New Variant Created");
    {
        ModalDriver driver;
        answerName(driver, QStringLiteral("Main Variant"));
        driver.press(QMessageBox::Ok);
        ui->createVariantButton->click();
        ASSERT_EQ(driver.boxes().size(), 1);
        EXPECT_EQ(driver.boxes()[0].title, QStringLiteral("Already existing"));
        EXPECT_EQ(driver.boxes()[0].text,
                  QStringLiteral("A variant with this name does already exist."));
    }
    {
        ModalDriver driver;
        answerName(driver, QString());
        driver.press(QMessageBox::Ok);
        ui->createVariantButton->click();
        ASSERT_EQ(driver.boxes().size(), 1);
        EXPECT_EQ(driver.boxes()[0].title, QStringLiteral("No name given"));
        EXPECT_EQ(driver.boxes()[0].text, QStringLiteral("Please enter a name for the variant."));
    }
    EXPECT_EQ(ui->variantBox->count(), 2);
    const std::size_t labelsBefore = page->mementoLabels().size();
    {
        ModalDriver driver;
        QString ok;
        QString proposal;
        answerName(driver, QStringLiteral("Small Bet"), &ok, &proposal);
        ui->editVariantButton->click();
        EXPECT_EQ(ok, QStringLiteral("Apply"));
        EXPECT_EQ(proposal, QStringLiteral("Small Bet"));
    }
    EXPECT_EQ(page->mementoLabels().size(), labelsBefore); // the same name changes nothing
    {
        ModalDriver driver;
        answerName(driver, QStringLiteral("Overbet"));
        ui->editVariantButton->click();
    }
    EXPECT_EQ(ui->variantBox->currentText(), QStringLiteral("Overbet"));
    EXPECT_EQ(page->tab().selectedVariant()->name, "Overbet");
    EXPECT_EQ(page->mementoLabels().back(), "Variant Name Edited");
    {
        ModalDriver driver;
        driver.press(QMessageBox::Yes);
        ui->deleteVariantButton->click();
        ASSERT_EQ(driver.boxes().size(), 1);
        EXPECT_EQ(driver.boxes()[0].title, QStringLiteral("Do you really want to delete?"));
        EXPECT_EQ(driver.boxes()[0].text,
                  QStringLiteral("Do you really want to delete this variant?"));
    }
    EXPECT_EQ(ui->variantBox->count(), 1);
    EXPECT_EQ(page->lines().front().variants.size(), 1u);
    EXPECT_EQ(page->mementoLabels().back(), "Variant Deleted");
    EXPECT_FALSE(ui->deleteVariantButton->isEnabled());
    EXPECT_EQ(page->widgetCount(), 5u);
}

TEST_F(BetShipPage, DeletingALineKeepsTheOtherFirstActorsVariants) {
    Ui::EV_FE_CalculationsTab* ui = page->tab().form();
    ui->firstActor->setCurrentIndex(1);
    page->addLine(QStringLiteral("Bet/Ship"));
    ASSERT_EQ(page->lines().size(), 1u);
    ASSERT_EQ(page->lines().front().variants.size(), 2u);
    EXPECT_EQ(page->widget(0)->playerLabel()->text(), QStringLiteral(" Player2 bets "));
    {
        ModalDriver driver;
        driver.press(QMessageBox::Yes);
        ui->deleteLineButton->click();
        ASSERT_EQ(driver.boxes().size(), 1);
        EXPECT_EQ(driver.boxes()[0].title, QStringLiteral("Delete Line?"));
        EXPECT_EQ(driver.boxes()[0].text,
                  QStringLiteral("Do you really want to delete this line?"));
    }
    ASSERT_EQ(page->lines().size(), 1u);
    EXPECT_EQ(page->lines().front().variants.front().forPlayer, "Player1");
    EXPECT_EQ(ui->lineBox->count(), 0);
    EXPECT_EQ(page->widgetCount(), 0u);
    EXPECT_EQ(page->mementoLabels().back(), "Line Deleted");
    ui->firstActor->setCurrentIndex(0);
    {
        ModalDriver driver;
        driver.press(QMessageBox::No);
        ui->deleteLineButton->click();
    }
    EXPECT_EQ(page->lines().size(), 1u);
    {
        ModalDriver driver;
        driver.press(QMessageBox::Yes);
        ui->deleteLineButton->click();
    }
    EXPECT_TRUE(page->lines().empty());
}

// ---- Streets, state, hints ----------------------------------------------------------------------

TEST(EV_FE_CalculationsTab, AnEmptyLineBoxShowsNoWidgetsAndNoVariant) {
    clearSettings();
    EVFEPage page;
    Ui::EV_FE_CalculationsTab* ui = page.tab().form();
    EXPECT_EQ(ui->lineBox->count(), 0);
    EXPECT_EQ(page.widgetCount(), 0u);
    EXPECT_TRUE(page.tab().headers().empty());
    EXPECT_EQ(page.tab().selectedVariant(), nullptr);
    EXPECT_FALSE(ui->emptyHint->isHidden());
    EXPECT_TRUE(ui->overallResult->isHidden());
    EXPECT_FALSE(ui->deleteLineButton->isEnabled());
    EXPECT_TRUE(ui->createVariantButton->isHidden());
    EXPECT_TRUE(ui->plotButton->isHidden());
    EXPECT_TRUE(ui->addLineButton->isEnabled());
    EXPECT_TRUE(ui->preflopButton->isChecked());
    EXPECT_FALSE(ui->flopButton->isEnabled());
    EXPECT_EQ(page.tab().whatsThis().left(34),
              QStringLiteral("In this tab you can calculate EV ("));
}

TEST(EV_FE_CalculationsTab, PreflopOffersNoCheckAndNoBetLines) {
    clearSettings();
    EVFEPage page;
    const std::vector<std::string> names = page.tab().getAllLineNamesButCurrentOnes();
    ASSERT_EQ(names.size(), 18u);
    EXPECT_EQ(names.front(), "Raise/Fold");
    EXPECT_EQ(names.back(), "7-Bet/Ship");
    page.addLine(QStringLiteral("Raise/Fold"));
    EXPECT_EQ(page.tab().getAllLineNamesButCurrentOnes().size(), 17u);
    // A preflop raise shows both posts.
    Ui::EV_FE_CalculationsTab* ui = page.tab().form();
    EXPECT_FALSE(ui->player1Post->isHidden());
    EXPECT_EQ(ui->player1PostLabel->text(), QStringLiteral("P1's Post Size:"));
    EXPECT_EQ(ui->player2PostLabel->text(), QStringLiteral("P2's Post Size:"));
    ui->player1Post->setValue(0.5);
    ui->player2Post->setValue(1.0);
    // The pot holds both posts; the raise is at least twice the big blind less the post.
    EXPECT_EQ(ui->potBox->minimum(), 1.5);
    EXPECT_EQ(page.widget(0)->sizeBox()->minimum(), 1.5);
    ui->potBox->setValue(0.0);
    EXPECT_EQ(ui->potBox->value(), 1.5);
}

TEST(EV_FE_CalculationsTab, EveryLineNameCanBeAddedOnceThenTheButtonIsOff) {
    clearSettings();
    EVFEPage page;
    page.showCards("Kh9h4c");
    page.selectStreet("Flop");
    for (const std::string& name : LineFactory::allLineNames())
        addLine(page.lines(), name, Street::Flop, "Player1");
    page.tab().setLines(&page.lines());
    EXPECT_EQ(page.tab().form()->lineBox->count(), 24);
    EXPECT_TRUE(page.tab().getAllLineNamesButCurrentOnes().empty());
    EXPECT_FALSE(page.tab().form()->addLineButton->isEnabled());
    // In display order: checks first, then bets, raises and the numbered raises.
    EXPECT_EQ(page.tab().form()->lineBox->itemText(0), QStringLiteral("Check/Fold"));
    EXPECT_EQ(page.tab().form()->lineBox->itemText(3), QStringLiteral("Bet/Fold"));
    EXPECT_EQ(page.tab().form()->lineBox->itemText(6), QStringLiteral("Raise/Fold"));
    EXPECT_EQ(page.tab().form()->lineBox->itemText(9), QStringLiteral("3-Bet/Fold"));
}

TEST(EV_FE_CalculationsTab, ABoardShrinkingBelowTheFlopFallsBackToPreflop) {
    clearSettings();
    EVFEPage page;
    page.showCards("Kh9h4c");
    page.selectStreet("Flop");
    page.addLine(QStringLiteral("Check/Call"));
    Ui::EV_FE_CalculationsTab* ui = page.tab().form();
    ASSERT_EQ(ui->lineBox->count(), 1);
    page.showCards("Kh9h");
    EXPECT_TRUE(ui->preflopButton->isChecked());
    EXPECT_FALSE(ui->flopButton->isEnabled());
    EXPECT_EQ(ui->lineBox->count(), 0);
    EXPECT_EQ(page.widgetCount(), 0u);
    page.showCards("Kh9h4cAs2d");
    EXPECT_TRUE(ui->riverButton->isEnabled());
    EXPECT_TRUE(ui->preflopButton->isChecked());
    page.selectStreet("Flop");
    EXPECT_EQ(ui->lineBox->count(), 1);
    // A flop line sees the flop only: turn and river stay to come.
    EXPECT_EQ(page.tab().streetBoard(), "Kh9h4c");
    EXPECT_EQ(page.widget(1)->board(), "Kh9h4c");
    page.showCards("Kh9h4cAs");
    EXPECT_TRUE(ui->flopButton->isChecked());
    EXPECT_FALSE(ui->riverButton->isEnabled());
}

TEST(EV_FE_CalculationsTab, CheckFoldAndCheckCallDifferInTheBetsSize) {
    clearSettings();
    EVFEPage page;
    page.showCards("Kh9h4c");
    page.selectStreet("Flop");
    page.addLine(QStringLiteral("Check/Fold"));
    EXPECT_EQ(page.widget(2)->sizeBox(), nullptr);
    page.addLine(QStringLiteral("Check/Call"));
    EXPECT_EQ(page.tab().form()->lineBox->currentText(), QStringLiteral("Check/Call"));
    ASSERT_NE(page.widget(2)->sizeBox(), nullptr);
    EXPECT_EQ(page.widget(2)->sizeLabel()->text(), QStringLiteral("&nbsp;&nbsp;Betsize"));
    // The raise of "Bet/Fold" is never answered with money: no size; in "Bet/Call" it is.
    page.addLine(QStringLiteral("Bet/Fold"));
    EXPECT_EQ(page.widget(3)->sizeBox(), nullptr);
    page.addLine(QStringLiteral("Bet/Call"));
    ASSERT_NE(page.widget(3)->sizeBox(), nullptr);
    EXPECT_EQ(page.widget(3)->sizeLabel()->text(), QStringLiteral("&nbsp;&nbsp;Raisesize To"));
    // Every player label is as wide as the widest, at least 80 pixels.
    EXPECT_GE(page.widget(0)->playerLabel()->width(), 80);
    EXPECT_EQ(page.widget(0)->playerLabel()->width(), page.widget(3)->playerLabel()->width());
}

TEST(EV_FE_CalculationsTab, NumberedRaisesNameTheirSizes) {
    clearSettings();
    EVFEPage page;
    page.showCards("Kh9h4c");
    page.selectStreet("Flop");
    page.addLine(QStringLiteral("3-Bet/Ship"));
    EXPECT_EQ(page.widget(0)->playerLabel()->text(), QStringLiteral(" Player1 3-bets "));
    EXPECT_EQ(page.widget(0)->sizeLabel()->text(), QStringLiteral("&nbsp;&nbsp;3-Betsize To"));
    EXPECT_EQ(page.widget(3)->sizeLabel()->text(), QStringLiteral("&nbsp;&nbsp;4-Betsize To"));
    // A 3-bet after the flop: the two earlier sizes are a bet and a raise.
    Ui::EV_FE_CalculationsTab* ui = page.tab().form();
    EXPECT_EQ(ui->player1PostLabel->text(), QStringLiteral("P1's Bet Size:"));
    EXPECT_EQ(ui->player2PostLabel->text(), QStringLiteral("P2's Raise Size:"));
    page.tab().form()->firstActor->setCurrentIndex(1);
    page.addLine(QStringLiteral("Raise/Call"));
    EXPECT_TRUE(ui->player2Post->isHidden());
    EXPECT_EQ(ui->player1PostLabel->text(), QStringLiteral("P1's Bet Size:"));
}

TEST(EV_FE_CalculationsTab, APostHintShowsOnTheFirstAndTheHundredAndFirstChange) {
    clearSettings();
    EVFEPage page;
    page.addLine(QStringLiteral("Raise/Call"));
    QDoubleSpinBox* post = page.tab().form()->player2Post;
    const auto hints = [&page] { return page.tab().findChildren<HintTooltip*>().size(); };
    post->setValue(0.5);
    ASSERT_EQ(hints(), 1);
    const QString text = page.tab().findChildren<HintTooltip*>().front()->label()->text();
    EXPECT_EQ(text, QStringLiteral("<b>Please notice</b><p>&quot;Pot Before First Action&quot; "
                                   "should also include the investments of earlier actions like "
                                   "P1's Post Size:</p>"));
    EXPECT_EQ(page.tab().findChildren<HintTooltip*>().front()->size(), QSize(180, 100));
    for (int change = 2; change <= 100; ++change)
        post->setValue(0.5 + 0.01 * change);
    EXPECT_EQ(hints(), 1);
    post->setValue(3.0);
    EXPECT_EQ(hints(), 2);
}

TEST(EV_FE_CalculationsTab, NoHintWhenHintsAreSwitchedOff) {
    clearSettings();
    setSetting("optionMenu/showHintTooltips", false);
    EVFEPage page;
    page.addLine(QStringLiteral("Raise/Call"));
    page.tab().form()->player1Post->setValue(0.5);
    EXPECT_TRUE(page.tab().findChildren<HintTooltip*>().empty());
}

TEST(EV_FE_CalculationsTab, TheStateTextRestoresTheSelectionWithoutReportingAChange) {
    clearSettings();
    EVFEPage page;
    page.showCards("Kh9h4cAs");
    page.selectStreet("Turn");
    page.addLine(QStringLiteral("Bet/Fold"));
    page.addLine(QStringLiteral("Check/Raise"));
    page.tab().form()->firstActor->setCurrentIndex(1);
    page.addLine(QStringLiteral("Bet/Call"));
    page.addLine(QStringLiteral("Bet/Ship"));
    Ui::EV_FE_CalculationsTab* ui = page.tab().form();
    ui->lineBox->setCurrentIndex(1);
    ui->rakePercentage->setValue(4.5);
    ui->rakeCap->setValue(3.0);
    const std::string state = page.tab().stateText();
    EXPECT_EQ(state,
              "<EV_FE_Tab>\n\t<rakePercentage>4.5</rakePercentage>\n\t<rakeCap>3</rakeCap>"
              "\n\t<selectedStreet>Turn</selectedStreet>\n\t<selectedPlayer>1</selectedPlayer>"
              "\n\t<selectedLine>1</selectedLine>\n\t<selectedVariant>0</selectedVariant>\n"
              "</EV_FE_Tab>\n\n");

    // A second page on the same lines, as after opening the file.
    EV_FE_CalculationsTab other;
    Range::Tree player1;
    Range::Tree player2;
    player1.addRange(Range::Tree::noNode, "Full Range", false, Range::GroupColor());
    player2.addRange(Range::Tree::noNode, "Full Range", false, Range::GroupColor());
    other.setUp(&page.pool(), &player1, &player2, nullptr, nullptr);
    other.setLines(&page.lines());
    other.updateBoardConstraints("Kh9h4cAs", "");
    int changes = 0;
    QObject::connect(&other, &EV_FE_CalculationsTab::SomeThingChanged, &other,
                     [&changes] { ++changes; });
    other.restoreState(state);
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(other.selectedStreet(), Street::Turn);
    EXPECT_EQ(other.firstActor(), QStringLiteral("Player2"));
    EXPECT_EQ(other.form()->lineBox->currentText(), QStringLiteral("Bet/Ship"));
    EXPECT_EQ(other.form()->rakePercentage->value(), 4.5);
    EXPECT_EQ(other.stateText(), state);
    EXPECT_EQ(other.reactionWidgets().size(), 4u);
    // Indices of -1 and missing values leave the boxes alone.
    other.restoreState("<EV_FE_Tab><selectedLine>-1</selectedLine></EV_FE_Tab>");
    EXPECT_EQ(other.stateText(), state);
    other.setLines(nullptr);
}

TEST(EV_FE_CalculationsTab, LinesReadFromAFileShowAndSkipWhatCannotBeRead) {
    clearSettings();
    EVFEPage page;
    // The full ranges the sample lines were cut from.
    page.setFullRange(1, player1Full);
    page.setFullRange(2, player2Full);
    std::string text = LineFile::linesText(SampleLines::golden());
    // A damaged file: an unknown code in the second variant, a word where a number belongs.
    const std::string::size_type second = text.find("Small");
    const std::string::size_type code = text.find("action=\"f\"", second);
    text.replace(code, 10, "action=\"q\"");
    const std::string::size_type pot = text.find("<deadmoney>12.5</deadmoney>");
    text.replace(pot, 27, "<deadmoney>much</deadmoney>");
    LineFile::Problems problems;
    page.lines() = LineFile::readLinesText(text, page.groups(1).handRange(0),
                                           page.groups(2).handRange(0), problems);
    EXPECT_EQ(problems.size(), 2u);
    page.tab().setLines(&page.lines());
    page.showCards("Kh9h4c");
    page.selectStreet("Flop");
    ASSERT_EQ(page.widgetCount(), 5u);
    EXPECT_EQ(page.tab().form()->potBox->value(), 0.0);
    page.tab().form()->firstActor->setCurrentIndex(1);
    EXPECT_EQ(page.tab().form()->lineBox->count(), 0); // the Player2 variant was skipped
    page.tab().form()->firstActor->setCurrentIndex(0);
    ASSERT_TRUE(page.waitForEquities());
    EXPECT_TRUE(showsNoNumberWords(page.labelTexts()));
}

TEST(EV_FE_CalculationsTab, TheRakeInfoSaysHowSimpleTheRakeIs) {
    clearSettings();
    EVFEPage page;
    ModalDriver driver;
    driver.press(QMessageBox::Ok);
    page.tab().form()->rakeInfoButton->click();
    ASSERT_EQ(driver.boxes().size(), 1);
    EXPECT_EQ(driver.boxes()[0].title, QStringLiteral("Info about Rake"));
    EXPECT_TRUE(
        driver.boxes()[0].text.startsWith(QStringLiteral("This rake calculation is simplified.")));
    EXPECT_TRUE(driver.boxes()[0].text.contains(EV_FE_CalculationsTab::supportAddress()));
    EXPECT_EQ(page.tab().form()->rakePercentage->singleStep(), 0.5);
}

// ---- Colour coding
// ---------------------------------------------------------------------------------

TEST(EV_FE_CalculationsColorCodingDialog, ShowsTheStoredCodingAndRefusesBordersOutOfOrder) {
    clearSettings();
    EV_FE_CalculationsColorCodingDialog dialog;
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("EV/FE Calculations: Color Coding"));
    EXPECT_EQ(dialog.form()->enableColorCoding->text(), QStringLiteral("Enable Colorcoding"));
    EXPECT_EQ(dialog.form()->colorCodings->title(), QStringLiteral("Color Codings"));
    EXPECT_EQ(dialog.form()->colorLabel1->text(), QStringLiteral("Color 1 until"));
    EXPECT_EQ(dialog.form()->colorLabel7->text(), QStringLiteral("After that"));
    EXPECT_EQ(dialog.borderBox(1)->value(), -20.0);
    EXPECT_EQ(dialog.colorButton(1)->styleSheet(),
              QStringLiteral("border-style:none;background-color:#800000;"));
    dialog.borderBox(3)->setValue(-30.0);
    {
        ModalDriver driver;
        driver.press(QMessageBox::Ok);
        dialog.show();
        dialog.accept();
        ASSERT_EQ(driver.boxes().size(), 1);
        EXPECT_EQ(driver.boxes()[0].title, QStringLiteral("Borders Invalid"));
        EXPECT_EQ(driver.boxes()[0].text,
                  QStringLiteral("Your specified borders do not succeed each other. Please make "
                                 "sure that the limits follow an ascending order."));
    }
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    EXPECT_FALSE(settings.contains(QStringLiteral("EV_Colors/border3")));

    dialog.borderBox(3)->setValue(-7.0);
    dialog.form()->enableColorCoding->setChecked(false);
    EXPECT_FALSE(dialog.form()->colorCodings->isEnabled());
    dialog.accept();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    settings.sync();
    const EV_FE_ColorCoding stored = EV_FE_ColorCoding::load(settings);
    EXPECT_FALSE(stored.enabled);
    EXPECT_EQ(stored.borders[2], -7.0f);
}

TEST(EV_FE_CalculationsColorCodingDialog, AChosenColourIsShownAndStored) {
    clearSettings();
    EV_FE_CalculationsColorCodingDialog dialog;
    ModalDriver driver;
    driver.onOtherModal([](QWidget* modal) {
        auto* chooser = qobject_cast<QColorDialog*>(modal);
        ASSERT_NE(chooser, nullptr);
        chooser->setCurrentColor(QColor(10, 20, 30));
        QTimer::singleShot(20, chooser, &QDialog::accept);
    });
    dialog.colorButton(5)->click();
    EXPECT_EQ(dialog.colorButton(5)->styleSheet(),
              QStringLiteral("border-style:none;background-color:#0a141e;"));
    dialog.accept();
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    EXPECT_EQ(EV_FE_ColorCoding::load(settings).colors[4], (EV_FE_ColorCoding::Rgb{10, 20, 30}));
}

TEST_F(BetShipPage, ANewColourCodingRecoloursTheLabels) {
    typeTheLine();
    EV_FE_ColorCoding coding;
    coding.enabled = false;
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    coding.save(settings);
    settings.sync();
    page->tab().DoRefresh();
    const QString transparent = QString::fromStdString(coding.styleSheetFor(0.0f));
    EXPECT_EQ(page->tab().form()->evPlayer1->styleSheet(), transparent);
    EXPECT_EQ(page->widget(2)->evLabel(1)->styleSheet(), transparent);
}

} // namespace
