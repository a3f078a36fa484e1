#include "evfe/ui/EV_FE_CalculationsTab.h"
#include "ui_EV_FE_CalculationsTab.h"

#include "Range/HandRange.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "app/document/Scenario.h"
#include "calculation/ThreadPool.h"
#include "evfe/EV_FE_TabState.h"
#include "evfe/LineFactory.h"
#include "evfe/LineSizeRules.h"
#include "evfe/RakeInformation.h"
#include "evfe/Street.h"
#include "evfe/VariantRanges.h"
#include "evfe/ui/HorizontalLineHeader.h"
#include "evfe/ui/LineActionWidget.h"
#include "utils/ui/EquityColor.h"
#include "utils/ui/HintTooltip.h"

#include <QInputDialog>
#include <QMessageBox>
#include <QMovie>
#include <QSettings>
#include <QTextBrowser>

#include <algorithm>
#include <cmath>

namespace {

const char* const tabText =
    "In this tab you can calculate EV (expectation value)/FE (fold equity) of a specific line "
    "with given ranges and sizes. Each calculation takes place on only one street; for example, "
    "if a flop line is chosen, the EV is only calculated for the flop, assuming that no more "
    "money will get in at turn or river. However, the equities take into account all possible "
    "turn and river cards.";

const char* const supportMail = "support@quorvane.com";

bool readShowSingleEV() {
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    return settings.value(QStringLiteral("optionmenu/EV_FE_ShowEVOfSingleReactions"), false)
        .toBool();
}

EV_FE_ColorCoding readColorCoding() {
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    return EV_FE_ColorCoding::load(settings);
}

// Characters of board text a street needs: two a card.
std::size_t boardLengthOf(Street street) {
    switch (street) {
    case Street::Preflop:
        return 0;
    case Street::Flop:
        return 6;
    case Street::Turn:
        return 8;
    case Street::River:
        return 10;
    }
    return 0;
}

QString otherPlayer(const QString& player) {
    return player == QLatin1String("Player1") ? QStringLiteral("Player2")
                                              : QStringLiteral("Player1");
}

void setWhite(QLabel* label, const QString& text, const QString& toolTip) {
    label->setText(text);
    label->setToolTip(toolTip);
    label->setStyleSheet(QString::fromStdString(EV_FE_ColorCoding::whiteStyleSheet()));
}

} // namespace

EV_FE_CalculationsTab::EV_FE_CalculationsTab(QWidget* parent)
    : QWidget(parent), ui(new Ui::EV_FE_CalculationsTab),
      movie(new QMovie(QStringLiteral(":loading.gif"), QByteArray(), this)),
      colors(readColorCoding()), showSingleEV(readShowSingleEV()) {
    ui->setupUi(this);
    setWhatsThis(QString::fromLatin1(tabText));
    ui->preflopButton->setChecked(true);
    followBoardWithStreets();
    // The plot window is not part of this version: the button stands where it belongs and
    // does nothing until it is.
    ui->plotButton->setEnabled(false);
    wireControls();
    UpdateLines();
}

EV_FE_CalculationsTab::~EV_FE_CalculationsTab() {
    // The window's document, and with it the lines, may be gone already: nothing below may
    // reach them while the children go.
    lines = nullptr;
    for (QObject* box : {static_cast<QObject*>(ui->lineBox), static_cast<QObject*>(ui->variantBox),
                         static_cast<QObject*>(ui->firstActor)})
        box->blockSignals(true);
    delete ui;
}

QString EV_FE_CalculationsTab::supportAddress() {
    return QString::fromLatin1(supportMail);
}

void EV_FE_CalculationsTab::setUp(ThreadPool* threadPool, Range::Tree* player1,
                                  Range::Tree* player2, QTextBrowser* explanation,
                                  QAction* showPlotExplanation) {
    pool = threadPool;
    explanationText = explanation;
    plotExplanationAction = showPlotExplanation;
    setFullRanges(player1, player2);
}

void EV_FE_CalculationsTab::setFullRanges(Range::Tree* player1, Range::Tree* player2) {
    player1Groups = player1;
    player2Groups = player2;
}

void EV_FE_CalculationsTab::setLines(LineList* list) {
    // The widgets may work on lines that are gone by now: they go before anything is read.
    clearActionWidgets();
    const QString line = ui->lineBox->currentText();
    const QString variant = ui->variantBox->currentText();
    lines = list;
    // The line and variant shown stay when the new list has them.
    fillLineBox();
    selectIn(ui->lineBox, -1, line);
    fillVariantBox();
    selectIn(ui->variantBox, -1, variant);
    enableVariantButtons();
    UpdateUI();
}

void EV_FE_CalculationsTab::showScenario(const Scenario& scenario) {
    boardText = scenario.board;
    deadCardText = scenario.deadCards;
    followBoardWithStreets();
    setLines(scenario.lines.get());
}

void EV_FE_CalculationsTab::selectIn(QComboBox* box, int index, const QString& otherwise) {
    if (index < 0 || index >= box->count())
        index = box->findText(otherwise);
    if (index < 0)
        return;
    const QSignalBlocker blocker(box);
    box->setCurrentIndex(index);
}

void EV_FE_CalculationsTab::wireControls() {
    for (QRadioButton* street :
         {ui->preflopButton, ui->flopButton, ui->turnButton, ui->riverButton})
        connect(street, &QRadioButton::toggled, this, [this](bool checked) {
            if (checked)
                UpdateLines();
        });
    connect(ui->firstActor, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &EV_FE_CalculationsTab::UpdateLines);
    connect(ui->lineBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &EV_FE_CalculationsTab::UpdateVariants);
    connect(ui->variantBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &EV_FE_CalculationsTab::UpdateUI);
    connect(ui->addLineButton, &QToolButton::clicked, this, &EV_FE_CalculationsTab::addLine);
    connect(ui->deleteLineButton, &QToolButton::clicked, this, &EV_FE_CalculationsTab::deleteLine);
    connect(ui->createVariantButton, &QToolButton::clicked, this,
            &EV_FE_CalculationsTab::createVariant);
    connect(ui->editVariantButton, &QToolButton::clicked, this,
            &EV_FE_CalculationsTab::editVariant);
    connect(ui->deleteVariantButton, &QToolButton::clicked, this,
            &EV_FE_CalculationsTab::deleteVariant);
    connect(ui->rakeInfoButton, &QToolButton::clicked, this, &EV_FE_CalculationsTab::onRakeInfo);
    for (QDoubleSpinBox* post : {ui->player1Post, ui->player2Post})
        connect(post, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
                &EV_FE_CalculationsTab::showPotToolTip);
}

// ---- What is shown ------------------------------------------------------------------------

Street EV_FE_CalculationsTab::selectedStreet() const {
    if (ui->riverButton->isChecked())
        return Street::River;
    if (ui->turnButton->isChecked())
        return Street::Turn;
    if (ui->flopButton->isChecked())
        return Street::Flop;
    return Street::Preflop;
}

QString EV_FE_CalculationsTab::firstActor() const {
    return ui->firstActor->currentText();
}

std::string EV_FE_CalculationsTab::streetBoard() const {
    return boardText.substr(0, std::min(boardText.size(), boardLengthOf(selectedStreet())));
}

Line* EV_FE_CalculationsTab::selectedLine() const {
    if (lines == nullptr || ui->lineBox->currentIndex() < 0)
        return nullptr;
    return findLine(*lines, ui->lineBox->currentText().toStdString(),
                    static_cast<int>(selectedStreet()));
}

LineVariant* EV_FE_CalculationsTab::selectedVariant() const {
    Line* line = selectedLine();
    if (line == nullptr || ui->variantBox->currentIndex() < 0)
        return nullptr;
    const std::string name = ui->variantBox->currentText().toStdString();
    const std::string actor = firstActor().toStdString();
    for (LineVariant& variant : line->variants) {
        if (variant.name == name && variant.forPlayer == actor)
            return &variant;
    }
    return nullptr;
}

std::vector<std::string> EV_FE_CalculationsTab::getAllLineNamesButCurrentOnes() const {
    std::vector<std::string> shown;
    for (int i = 0; i < ui->lineBox->count(); ++i)
        shown.push_back(ui->lineBox->itemText(i).toStdString());
    return LineFactory::availableLineNames(selectedStreet(), shown);
}

Range::HandRange EV_FE_CalculationsTab::fullRange(int player) const {
    const Range::Tree* tree = player == 1 ? player1Groups : player2Groups;
    if (tree == nullptr || tree->count() == 0 || !tree->node(0)->IsRange())
        return Range::HandRange();
    return tree->handRange(0);
}

void EV_FE_CalculationsTab::assignFullRanges(LineVariant& variant) const {
    VariantRanges::assignFullRanges(variant, fullRange(1), fullRange(2));
}

// ---- Lines and variants ---------------------------------------------------------------------

void EV_FE_CalculationsTab::fillLineBox() {
    {
        const QSignalBlocker blocker(ui->lineBox);
        ui->lineBox->clear();
        if (lines != nullptr) {
            const int street = static_cast<int>(selectedStreet());
            const std::string actor = firstActor().toStdString();
            for (const Line& line : *lines) {
                const bool shown =
                    line.street == street &&
                    std::any_of(line.variants.begin(), line.variants.end(),
                                [&](const LineVariant& v) { return v.forPlayer == actor; });
                if (shown && ui->lineBox->findText(QString::fromStdString(line.name)) < 0)
                    ui->lineBox->addItem(QString::fromStdString(line.name));
            }
        }
        ui->lineBox->setCurrentIndex(ui->lineBox->count() > 0 ? 0 : -1);
    }
    ui->addLineButton->setEnabled(lines != nullptr && !getAllLineNamesButCurrentOnes().empty());
}

void EV_FE_CalculationsTab::fillVariantBox() {
    Line* line = selectedLine();
    {
        const QSignalBlocker blocker(ui->variantBox);
        ui->variantBox->clear();
        if (line != nullptr) {
            const std::string actor = firstActor().toStdString();
            for (const LineVariant& variant : line->variants) {
                if (variant.forPlayer == actor)
                    ui->variantBox->addItem(QString::fromStdString(variant.name));
            }
        }
        ui->variantBox->setCurrentIndex(ui->variantBox->count() > 0 ? 0 : -1);
    }
    enableVariantButtons();
}

void EV_FE_CalculationsTab::enableVariantButtons() {
    const bool line = selectedLine() != nullptr;
    ui->deleteVariantButton->setEnabled(ui->variantBox->count() >= 2);
    ui->editVariantButton->setEnabled(ui->variantBox->currentIndex() >= 0);
    ui->deleteLineButton->setEnabled(ui->lineBox->count() > 0);
    ui->createVariantButton->setVisible(line);
    ui->plotButton->setVisible(line);
}

void EV_FE_CalculationsTab::UpdateLines() {
    fillLineBox();
    UpdateVariants();
}

void EV_FE_CalculationsTab::UpdateVariants() {
    fillVariantBox();
    UpdateUI();
}

void EV_FE_CalculationsTab::selectVariantNamed(const QString& name) {
    {
        const QSignalBlocker blocker(ui->variantBox);
        ui->variantBox->setCurrentIndex(ui->variantBox->findText(name));
    }
    enableVariantButtons();
    UpdateUI();
}

void EV_FE_CalculationsTab::reportStructuralChange(const char* label) {
    emit SomeThingChanged();
    emit SomeThingMementoRelevantChanged(label);
}

void EV_FE_CalculationsTab::addLine() {
    const std::vector<std::string> names = getAllLineNamesButCurrentOnes();
    if (lines == nullptr || names.empty())
        return;
    QStringList items;
    for (const std::string& name : names)
        items << QString::fromStdString(name);
    bool accepted = false;
    const QString name = QInputDialog::getItem(this, QStringLiteral("Add Line"),
                                               QStringLiteral("Which line would you like to add?"),
                                               items, 0, false, &accepted);
    if (!accepted || name.isEmpty())
        return;
    Line& line =
        ::addLine(*lines, name.toStdString(), selectedStreet(), firstActor().toStdString());
    assignFullRanges(line.variants.back());
    fillLineBox();
    {
        const QSignalBlocker blocker(ui->lineBox);
        ui->lineBox->setCurrentIndex(ui->lineBox->findText(name));
    }
    UpdateVariants();
    reportStructuralChange("New Line Created");
}

void EV_FE_CalculationsTab::deleteLine() {
    if (lines == nullptr)
        return;
    if (QMessageBox::question(this, QStringLiteral("Delete Line?"),
                              QStringLiteral("Do you really want to delete this line?"),
                              QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    Line* line = selectedLine();
    if (line == nullptr) {
        QMessageBox::warning(
            this, QStringLiteral("Line could not be found."),
            QStringLiteral("The line could not be found to delete it. Please contact ") +
                supportAddress());
        return;
    }
    clearActionWidgets();
    const std::string actor = firstActor().toStdString();
    const bool othersToo = std::any_of(line->variants.begin(), line->variants.end(),
                                       [&](const LineVariant& v) { return v.forPlayer != actor; });
    if (othersToo) {
        line->variants.remove_if([&](const LineVariant& v) { return v.forPlayer == actor; });
    } else {
        lines->remove_if([line](const Line& each) { return &each == line; });
    }
    UpdateLines();
    reportStructuralChange("Line Deleted");
}

QString EV_FE_CalculationsTab::askVariantName(const QString& proposal, const QString& okText,
                                              const QString& title, const Line& line,
                                              const LineVariant* renamed) {
    QInputDialog dialog(this);
    dialog.setWindowFlags(dialog.windowFlags() & ~Qt::WindowContextHelpButtonHint);
    dialog.setWindowTitle(title);
    dialog.setLabelText(QStringLiteral("Please enter the name of the variant:"));
    dialog.setOkButtonText(okText);
    dialog.setTextValue(proposal);
    if (dialog.exec() != QDialog::Accepted)
        return QString();
    const QString name = dialog.textValue();
    if (renamed != nullptr && name.toStdString() == renamed->name)
        return QString();
    if (name.isEmpty()) {
        QMessageBox::warning(this, QStringLiteral("No name given"),
                             QStringLiteral("Please enter a name for the variant."));
        return QString();
    }
    const std::string actor = firstActor().toStdString();
    for (const LineVariant& variant : line.variants) {
        if (variant.name == name.toStdString() && variant.forPlayer == actor) {
            QMessageBox::warning(this, QStringLiteral("Already existing"),
                                 QStringLiteral("A variant with this name does already exist."));
            return QString();
        }
    }
    return name;
}

void EV_FE_CalculationsTab::createVariant() {
    Line* line = selectedLine();
    LineVariant* shown = selectedVariant();
    if (line == nullptr || shown == nullptr)
        return;
    const QString name = askVariantName(QString(), QStringLiteral("Create"),
                                        QStringLiteral("Create New Variant"), *line, nullptr);
    if (name.isEmpty())
        return;
    LineVariant copy(*shown);
    copy.name = name.toStdString();
    copy.forPlayer = firstActor().toStdString();
    line->variants.push_back(std::move(copy));
    fillVariantBox();
    selectVariantNamed(name);
    reportStructuralChange("New Variant Created");
}

void EV_FE_CalculationsTab::editVariant() {
    Line* line = selectedLine();
    LineVariant* shown = selectedVariant();
    if (line == nullptr || shown == nullptr)
        return;
    const QString name =
        askVariantName(QString::fromStdString(shown->name), QStringLiteral("Apply"),
                       QStringLiteral("Edit Variant Name"), *line, shown);
    if (name.isEmpty())
        return;
    shown->name = name.toStdString();
    const int index = ui->variantBox->currentIndex();
    {
        const QSignalBlocker blocker(ui->variantBox);
        ui->variantBox->setItemText(index, name);
    }
    reportStructuralChange("Variant Name Edited");
}

void EV_FE_CalculationsTab::deleteVariant() {
    Line* line = selectedLine();
    LineVariant* shown = selectedVariant();
    if (line == nullptr || shown == nullptr || ui->variantBox->count() < 2)
        return;
    if (QMessageBox::question(this, QStringLiteral("Do you really want to delete?"),
                              QStringLiteral("Do you really want to delete this variant?"),
                              QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    // The widgets work on the variant: they go first.
    clearActionWidgets();
    line->variants.remove_if([shown](const LineVariant& v) { return &v == shown; });
    UpdateVariants();
    reportStructuralChange("Variant Deleted");
}

void EV_FE_CalculationsTab::onRakeInfo() {
    QMessageBox::information(
        this, QString::fromStdString(RakeInformation::title()),
        QString::fromStdString(RakeInformation::text(supportAddress().toStdString())));
}

// ---- Building the list ------------------------------------------------------------------------

void EV_FE_CalculationsTab::clearActionWidgets() {
    for (const QMetaObject::Connection& connection : pageConnections)
        disconnect(connection);
    pageConnections.clear();
    // Deleted at once: a widget left for later could still be told a result for an action
    // that is gone.
    delete firstWidget;
    firstWidget = nullptr;
    for (LineActionWidget* widget : reactions)
        delete widget;
    reactions.clear();
    for (HorizontalLineHeader* header : listHeaders)
        delete header;
    listHeaders.clear();
    running = 0;
}

void EV_FE_CalculationsTab::showEmptyHint() {
    QString hint;
    if (lines == nullptr) {
        hint = QStringLiteral("No scenario is shown.");
    } else {
        hint = QStringLiteral("No line on the %1 with the first action by %2 yet.<br/>Add one "
                              "with the <b>+</b> button next to \"Line:\".")
                   .arg(QString::fromStdString(streetToText(selectedStreet())), firstActor());
    }
    ui->emptyHint->setText(hint);
    ui->emptyHint->show();
    ui->overallResult->hide();
    // Last investments belong to a line's first action; without a line there are none.
    for (QWidget* post :
         {static_cast<QWidget*>(ui->player1PostLabel), static_cast<QWidget*>(ui->player1Post),
          static_cast<QWidget*>(ui->player2PostLabel), static_cast<QWidget*>(ui->player2Post)})
        post->hide();
    for (QWidget* box :
         {static_cast<QWidget*>(ui->potBox), static_cast<QWidget*>(ui->player1Stack),
          static_cast<QWidget*>(ui->player2Stack), static_cast<QWidget*>(ui->player1Post),
          static_cast<QWidget*>(ui->player2Post)})
        box->setEnabled(false);
}

void EV_FE_CalculationsTab::showSizeLabels(const LineVariant& variant) {
    const std::string firstVerb = variant.actions.empty() ? std::string() : variant.actions[0].verb;
    const LineSizeRules::InvestmentBoxes boxes =
        LineSizeRules::investmentBoxes(selectedStreet(), firstVerb, variant.isPlayer1FirstToAct());
    ui->player1PostLabel->setText(QString::fromStdString(boxes.player1Label));
    ui->player2PostLabel->setText(QString::fromStdString(boxes.player2Label));
    ui->player1PostLabel->setVisible(boxes.player1Visible);
    ui->player1Post->setVisible(boxes.player1Visible);
    ui->player2PostLabel->setVisible(boxes.player2Visible);
    ui->player2Post->setVisible(boxes.player2Visible);
}

void EV_FE_CalculationsTab::UpdateUI() {
    // 1.
    clearActionWidgets();
    LineVariant* variant = selectedVariant();
    if (variant == nullptr) {
        showEmptyHint();
        return;
    }
    ui->emptyHint->hide();
    ui->overallResult->show();
    assignFullRanges(*variant);
    variant->updateActionInputs(ui->rakePercentage->value(), ui->rakeCap->value());
    {
        const QSignalBlocker pot(ui->potBox);
        const QSignalBlocker stack1(ui->player1Stack);
        const QSignalBlocker stack2(ui->player2Stack);
        const QSignalBlocker post1(ui->player1Post);
        const QSignalBlocker post2(ui->player2Post);
        ui->potBox->setMinimum(0.0);
        ui->potBox->setMaximum(9999.0);
        ui->potBox->setValue(static_cast<double>(variant->deadmoney));
        ui->player1Stack->setValue(static_cast<double>(variant->player1sEffectiveStackSize));
        ui->player2Stack->setValue(static_cast<double>(variant->player2sEffectiveStackSize));
        ui->player1Post->setValue(static_cast<double>(variant->player1sLastInvestment));
        ui->player2Post->setValue(static_cast<double>(variant->player2sLastInvestment));
    }
    for (QWidget* box :
         {static_cast<QWidget*>(ui->potBox), static_cast<QWidget*>(ui->player1Stack),
          static_cast<QWidget*>(ui->player2Stack), static_cast<QWidget*>(ui->player1Post),
          static_cast<QWidget*>(ui->player2Post)})
        box->setEnabled(true);
    // 2.
    showSizeLabels(*variant);
    // 3. and 4.
    for (std::size_t index = 0; index < variant->actions.size(); ++index)
        addActionWidget(*variant, index);
    alignActionWidgets();
    // 5.
    if (firstWidget != nullptr) {
        connect(firstWidget, &LineActionWidget::SizeChanged, this,
                &EV_FE_CalculationsTab::reactToChanges);
        connect(firstWidget, &LineActionWidget::SizeChanged, this,
                &EV_FE_CalculationsTab::updateMinimums);
        connect(firstWidget, &LineActionWidget::SizeChanged, this,
                &EV_FE_CalculationsTab::updateActionSizeMaximums);
        connect(firstWidget, &LineActionWidget::SizeChanged, this,
                &EV_FE_CalculationsTab::reactToLineSizeChange);
        // The first action's equity partner: the other player's full range.
        firstWidget->UpdateOtherRange(fullRange(variant->isPlayer1FirstToAct() ? 2 : 1));
    }
    wirePageToBoxes();
    auto* overall = new HorizontalLineHeader(QStringLiteral("Overall Result"), ui->actionList);
    ui->actionLayout->insertWidget(ui->actionLayout->indexOf(ui->overallResult), overall);
    listHeaders.push_back(overall);
    updateMinimums();
    updateActionSizeMaximums();
    countRunningCalculations();
    if (running == 0)
        updateOverallResults();
    else
        SubrangeCalculationStarted();
}

LineActionWidget* EV_FE_CalculationsTab::addActionWidget(LineVariant& variant, std::size_t index) {
    LineAction& action = variant.actions[index];
    const bool first = index == 0;
    if (index <= 1) {
        auto* header = new HorizontalLineHeader(
            first ? QStringLiteral("First Action") : QStringLiteral("Reactions"), ui->actionList);
        ui->actionLayout->insertWidget(ui->actionLayout->indexOf(ui->overallResult), header);
        listHeaders.push_back(header);
    }
    const QString actor = firstActor();
    const QString player = first ? actor : otherPlayer(actor);
    LineActionWidget::Setup setup;
    setup.action = &action;
    setup.player = player;
    setup.playerGroups = player == QLatin1String("Player1") ? player1Groups : player2Groups;
    setup.pool = pool.data();
    setup.loadingMovie = movie;
    setup.colors = &colors;
    setup.showSingleEV = showSingleEV;
    setup.board = streetBoard();
    setup.deadCards = deadCardText;
    setup.deadmoney = ui->potBox->value();
    setup.player1sStack = ui->player1Stack->value();
    setup.player2sStack = ui->player2Stack->value();
    setup.rakePercentage = ui->rakePercentage->value();
    setup.rakeCap = ui->rakeCap->value();
    auto* widget = new LineActionWidget(setup, ui->actionList);
    ui->actionLayout->insertWidget(ui->actionLayout->indexOf(ui->overallResult), widget);
    if (first)
        firstWidget = widget;
    else
        reactions.push_back(widget);
    wireActionWidget(widget);
    return widget;
}

void EV_FE_CalculationsTab::alignActionWidgets() {
    if (firstWidget == nullptr)
        return;
    int width = 80;
    width = std::max(width, firstWidget->playerLabelHint());
    for (LineActionWidget* widget : reactions)
        width = std::max(width, widget->playerLabelHint());
    firstWidget->setPlayerLabelWidth(width);
    for (LineActionWidget* widget : reactions)
        widget->setPlayerLabelWidth(width);
}

void EV_FE_CalculationsTab::wireActionWidget(LineActionWidget* widget) {
    using Box = QDoubleSpinBox;
    const auto changed = QOverload<double>::of(&Box::valueChanged);
    connect(ui->rakePercentage, changed, widget, &LineActionWidget::UpdateRakePercentage);
    connect(ui->rakeCap, changed, widget, &LineActionWidget::UpdateRakeCap);
    connect(ui->potBox, changed, widget, &LineActionWidget::UpdateDeadMoney);
    connect(ui->player1Stack, changed, widget, &LineActionWidget::UpdatePlayer1sEffectiveStackLeft);
    connect(ui->player2Stack, changed, widget, &LineActionWidget::UpdatePlayer2sEffectiveStackLeft);
    connect(ui->player1Post, changed, widget, &LineActionWidget::UpdatePlayer1sLastInvestment);
    connect(ui->player2Post, changed, widget, &LineActionWidget::UpdatePlayer2sLastInvestment);
    connect(widget, &LineActionWidget::EquityCalculationStarted, this,
            &EV_FE_CalculationsTab::SubrangeCalculationStarted);
    connect(widget, &LineActionWidget::EquityCalculationFinished, this,
            &EV_FE_CalculationsTab::SubrangeCalculationFinished);
    connect(widget, QOverload<const Range::HandRange&>::of(&LineActionWidget::RangeChanged), this,
            &EV_FE_CalculationsTab::reactToChanges);
    connect(widget, QOverload<LineActionWidget&>::of(&LineActionWidget::RangeChanged), this,
            [this] { emit SomeThingMementoRelevantChanged("Action Line Changed"); });
    if (widget == firstWidget || firstWidget == nullptr)
        return;
    // A reaction answers the first action: its size and its range.
    connect(firstWidget, &LineActionWidget::SizeChanged, widget,
            &LineActionWidget::UpdatePreviousMoney);
    connect(firstWidget, QOverload<const Range::HandRange&>::of(&LineActionWidget::RangeChanged),
            widget, &LineActionWidget::UpdateOtherRange);
    connect(widget, &LineActionWidget::SizeChanged, this,
            &EV_FE_CalculationsTab::reactToLineSizeChange);
    const LineAction& first = *firstWidget->lineAction();
    widget->UpdatePreviousMoney(static_cast<double>(first.size));
    widget->UpdateOtherRange(first.range != nullptr ? first.range->handRange : Range::HandRange());
}

void EV_FE_CalculationsTab::wirePageToBoxes() {
    // After the widgets' connections, so that the actions hold the new money before the page
    // adds up the overall result; dropped and made anew with every list, so there is one each.
    using Box = QDoubleSpinBox;
    const auto changed = QOverload<double>::of(&Box::valueChanged);
    pageConnections = {
        connect(ui->potBox, changed, this, &EV_FE_CalculationsTab::reactToDeadmoneyChange),
        connect(ui->player1Stack, changed, this,
                &EV_FE_CalculationsTab::reactToPlayer1sEffectiveStackSizeChange),
        connect(ui->player2Stack, changed, this,
                &EV_FE_CalculationsTab::reactToPlayer2sEffectiveStackSizeChange),
        connect(ui->player1Post, changed, this,
                &EV_FE_CalculationsTab::reactToPlayer1sLastInvestmentChange),
        connect(ui->player2Post, changed, this,
                &EV_FE_CalculationsTab::reactToPlayer2sLastInvestmentChange),
        connect(ui->rakePercentage, changed, this, &EV_FE_CalculationsTab::reactToChanges),
        connect(ui->rakeCap, changed, this, &EV_FE_CalculationsTab::reactToChanges)};
}

// ---- Limits ---------------------------------------------------------------------------------

void EV_FE_CalculationsTab::updateMinimums() {
    LineVariant* variant = selectedVariant();
    if (variant == nullptr || firstWidget == nullptr)
        return;
    ui->potBox->setMinimum(static_cast<double>(LineSizeRules::minimumDeadmoney(*variant)));
    if (QDoubleSpinBox* box = firstWidget->sizeBox())
        box->setMinimum(static_cast<double>(LineSizeRules::minimumFirstSize(*variant)));
    for (LineActionWidget* widget : reactions) {
        if (QDoubleSpinBox* box = widget->sizeBox())
            box->setMinimum(static_cast<double>(LineSizeRules::minimumReactionSize(*variant)));
    }
}

void EV_FE_CalculationsTab::updateActionSizeMaximums() {
    LineVariant* variant = selectedVariant();
    if (variant == nullptr || firstWidget == nullptr)
        return;
    std::vector<LineActionWidget*> widgets = {firstWidget};
    widgets.insert(widgets.end(), reactions.begin(), reactions.end());
    for (std::size_t index = 0; index < widgets.size(); ++index) {
        QDoubleSpinBox* box = widgets[index]->sizeBox();
        if (box == nullptr)
            continue;
        const LineSizeRules::Bounds bounds = LineSizeRules::sizeBounds(*variant, index);
        box->setMaximum(static_cast<double>(bounds.maximumApplied ? bounds.maximum
                                                                  : LineSizeRules::boxMaximum));
    }
}

// ---- Changes ----------------------------------------------------------------------------------

void EV_FE_CalculationsTab::reactToChanges() {
    if (running == 0)
        updateOverallResults();
    emit SomeThingChanged();
}

LineVariant* EV_FE_CalculationsTab::storeMoney(float LineVariant::*field, double value,
                                               bool limitsFollow) {
    LineVariant* variant = selectedVariant();
    if (variant == nullptr)
        return nullptr;
    variant->*field = static_cast<float>(value);
    if (limitsFollow) {
        updateMinimums();
        updateActionSizeMaximums();
    }
    if (running == 0)
        updateOverallResults();
    emit SomeThingChanged();
    return variant;
}

void EV_FE_CalculationsTab::reactToDeadmoneyChange(double value) {
    // The pot bounds no size; its own minimum follows the last investments.
    if (LineVariant* variant = storeMoney(&LineVariant::deadmoney, value, false))
        emit DeadmoneyChanged(*variant);
}

void EV_FE_CalculationsTab::reactToPlayer1sEffectiveStackSizeChange(double value) {
    if (LineVariant* variant = storeMoney(&LineVariant::player1sEffectiveStackSize, value, true))
        emit Player1sEffectiveStackSizeChanged(*variant);
}

void EV_FE_CalculationsTab::reactToPlayer2sEffectiveStackSizeChange(double value) {
    if (LineVariant* variant = storeMoney(&LineVariant::player2sEffectiveStackSize, value, true))
        emit Player2sEffectiveStackSizeChanged(*variant);
}

void EV_FE_CalculationsTab::reactToPlayer1sLastInvestmentChange(double value) {
    storeMoney(&LineVariant::player1sLastInvestment, value, true);
}

void EV_FE_CalculationsTab::reactToPlayer2sLastInvestmentChange(double value) {
    storeMoney(&LineVariant::player2sLastInvestment, value, true);
}

void EV_FE_CalculationsTab::reactToLineSizeChange() {
    LineVariant* variant = selectedVariant();
    auto* widget = qobject_cast<LineActionWidget*>(sender());
    if (running == 0)
        updateOverallResults();
    emit SomeThingChanged();
    if (variant != nullptr && widget != nullptr)
        emit LineSizeChanged(*variant, *widget->lineAction());
}

void EV_FE_CalculationsTab::showPotToolTip() {
    if (!HintTooltip::hintsWanted())
        return;
    if (potHintCounter == 0) {
        auto* hint = new HintTooltip(
            QStringLiteral("<b>Please notice</b><p>&quot;Pot Before First Action&quot; should "
                           "also include the investments of earlier actions like ") +
                ui->player1PostLabel->text() + QStringLiteral("</p>"),
            this, 7000);
        hint->resize(180, 100);
        const QPoint centre = mapToGlobal(rect().center());
        hint->move(centre - QPoint(90, 50));
        hint->show();
    }
    potHintCounter = (potHintCounter + 1) % 100;
}

// ---- Results ----------------------------------------------------------------------------------

void EV_FE_CalculationsTab::countRunningCalculations() {
    running = 0;
    if (firstWidget != nullptr && firstWidget->isCalculating())
        ++running;
    for (LineActionWidget* widget : reactions) {
        if (widget->isCalculating())
            ++running;
    }
}

void EV_FE_CalculationsTab::SubrangeCalculationStarted() {
    countRunningCalculations();
    movie->start();
    for (QLabel* label : {ui->fePlayer1, ui->fePlayer2, ui->evPlayer1, ui->evPlayer2}) {
        label->clear();
        label->setToolTip(QString());
        label->setStyleSheet(QString::fromStdString(EV_FE_ColorCoding::whiteStyleSheet()));
        label->setMovie(movie);
    }
}

void EV_FE_CalculationsTab::SubrangeCalculationFinished() {
    countRunningCalculations();
    if (running != 0)
        return;
    updateOverallResults();
    if (LineVariant* variant = selectedVariant())
        emit EquityChanged(*variant);
}

QString EV_FE_CalculationsTab::overallProblem() const {
    if (firstWidget == nullptr)
        return QStringLiteral("No line is shown.");
    const LineAction& first = *firstWidget->lineAction();
    if (first.range != nullptr && !VariantRanges::isInsideParent(first))
        return QStringLiteral("The range of the first action holds hands that are not in %1's "
                              "range.")
            .arg(firstWidget->player());
    for (LineActionWidget* widget : reactions) {
        // A reaction without combinations weighs nothing; any other one must have its EV.
        if (!widget->problem().isEmpty() && widget->lineAction()->rangeCombinations != 0)
            return widget->player() + QStringLiteral(" ") +
                   QString::fromStdString(widget->lineAction()->verb) + QStringLiteral(": ") +
                   widget->problem();
    }
    return QString();
}

void EV_FE_CalculationsTab::showOverallProblem(const QString& reason) {
    for (QLabel* label : {ui->fePlayer1, ui->fePlayer2, ui->evPlayer1, ui->evPlayer2})
        setWhite(label, QStringLiteral("-"), reason);
}

void EV_FE_CalculationsTab::updateOverallResults() {
    LineVariant* variant = selectedVariant();
    if (variant == nullptr) {
        showOverallProblem(QString());
        return;
    }
    variant->calculateOverall();
    const QString problem = overallProblem();
    if (!problem.isEmpty()) {
        showOverallProblem(problem);
        return;
    }
    const QString explanation = QString::fromStdString(variant->explanation);
    // Both labels test EV_P1: the overall values are finite whenever they are computed.
    const bool finite = std::isfinite(variant->EV_P1);
    const float evs[2] = {variant->EV_P1, variant->EV_P2};
    QLabel* evLabels[2] = {ui->evPlayer1, ui->evPlayer2};
    for (int i = 0; i < 2; ++i) {
        if (!finite) {
            setWhite(evLabels[i], QStringLiteral("-"), QString());
            continue;
        }
        const QString printed = QString::number(static_cast<double>(evs[i]), 'f', 2);
        evLabels[i]->setText(printed);
        evLabels[i]->setToolTip(explanation);
        // The colour of the number as printed, not of the unrounded value.
        evLabels[i]->setStyleSheet(QString::fromStdString(colors.styleSheetFor(printed.toFloat())));
    }
    const float fes[2] = {variant->FE_P1, variant->FE_P2};
    QLabel* feLabels[2] = {ui->fePlayer1, ui->fePlayer2};
    for (int i = 0; i < 2; ++i)
        setWhite(feLabels[i],
                 std::isfinite(fes[i]) ? equityPercentText(fes[i]) : QStringLiteral("-"),
                 QString());
}

void EV_FE_CalculationsTab::DoRefresh() {
    showSingleEV = readShowSingleEV();
    colors = readColorCoding();
    for (LineActionWidget* widget : reactions) {
        widget->setSingleEVVisible(showSingleEV);
        if (!widget->isCalculating())
            widget->RecalculateEV();
    }
    if (running == 0)
        updateOverallResults();
}

// ---- Board and ranges -------------------------------------------------------------------------

bool EV_FE_CalculationsTab::followBoardWithStreets() {
    const std::size_t length = boardText.size();
    ui->flopButton->setEnabled(isStreetAvailable(Street::Flop, length));
    ui->turnButton->setEnabled(isStreetAvailable(Street::Turn, length));
    ui->riverButton->setEnabled(isStreetAvailable(Street::River, length));
    const Street selected = selectedStreet();
    const Street kept = streetAfterBoardChange(selected, length);
    if (kept == selected)
        return false;
    setStreet(kept);
    return true;
}

void EV_FE_CalculationsTab::setStreet(Street street) {
    QRadioButton* buttons[] = {ui->preflopButton, ui->flopButton, ui->turnButton, ui->riverButton};
    for (QRadioButton* button : buttons)
        button->blockSignals(true);
    buttons[static_cast<int>(street)]->setChecked(true);
    for (QRadioButton* button : buttons)
        button->blockSignals(false);
}

void EV_FE_CalculationsTab::updateBoardConstraints(const std::string& board,
                                                   const std::string& deadCards) {
    boardText = board;
    deadCardText = deadCards;
    if (followBoardWithStreets()) {
        UpdateLines();
        return;
    }
    refreshInputs();
}

void EV_FE_CalculationsTab::refreshInputs() {
    LineVariant* variant = selectedVariant();
    if (variant == nullptr || firstWidget == nullptr)
        return;
    assignFullRanges(*variant);
    const std::string board = streetBoard();
    firstWidget->UpdateBoardConstraints(board, deadCardText);
    firstWidget->UpdateOtherRange(fullRange(variant->isPlayer1FirstToAct() ? 2 : 1));
    for (LineActionWidget* widget : reactions)
        widget->UpdateBoardConstraints(board, deadCardText);
    countRunningCalculations();
    if (running == 0)
        updateOverallResults();
}

// ---- State ------------------------------------------------------------------------------------

std::string EV_FE_CalculationsTab::stateText() const {
    EV_FE_TabState state;
    state.rakePercentage = ui->rakePercentage->value();
    state.rakeCap = ui->rakeCap->value();
    state.selectedStreet = static_cast<int>(selectedStreet());
    state.selectedPlayer = ui->firstActor->currentIndex();
    state.selectedLine = ui->lineBox->currentIndex();
    state.selectedVariant = ui->variantBox->currentIndex();
    return state.toText();
}

void EV_FE_CalculationsTab::restoreState(const std::string& text) {
    std::vector<std::string> problems;
    const EV_FE_TabState state = EV_FE_TabState::fromText(text, problems);
    {
        const QSignalBlocker rake(ui->rakePercentage);
        const QSignalBlocker cap(ui->rakeCap);
        if (state.rakePercentage)
            ui->rakePercentage->setValue(*state.rakePercentage);
        if (state.rakeCap)
            ui->rakeCap->setValue(*state.rakeCap);
    }
    // The street, then the first actor: both decide which lines the line box lists, so the
    // line and the variant are chosen after them.
    if (state.selectedStreet && *state.selectedStreet >= 0 && *state.selectedStreet <= 3) {
        const Street street = static_cast<Street>(*state.selectedStreet);
        if (isStreetAvailable(street, boardText.size()))
            setStreet(street);
    }
    if (state.selectedPlayer == 0 || state.selectedPlayer == 1) {
        const QSignalBlocker blocker(ui->firstActor);
        ui->firstActor->setCurrentIndex(state.selectedPlayer);
    }
    // A box whose index is not given keeps what it shows, when the lists still have it.
    const QString shownLine = ui->lineBox->currentText();
    const QString shownVariant = ui->variantBox->currentText();
    fillLineBox();
    selectIn(ui->lineBox, state.selectedLine, shownLine);
    fillVariantBox();
    selectIn(ui->variantBox, state.selectedVariant, shownVariant);
    enableVariantButtons();
    UpdateUI();
}
