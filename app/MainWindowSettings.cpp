#include "app/MainWindowSettings.h"

#include "ui_Quorvane.h"
#include "utils/ui/EvaluationTabOptions.h"

#include <QMainWindow>
#include <QSettings>
#include <QSignalBlocker>

namespace {

// The option actions as they are stored in the group `optionmenu`. The first three are
// written at once when toggled (by the window's slots), not at closing.
struct Option {
    const char* key;
    QAction* Ui::QuorvaneClass::*action;
    bool fallback;
    bool writtenAtClosing;
};

const Option options[] = {
    {"removeEmptyLinesFromBoardEvaluationTabs",
     &Ui::QuorvaneClass::action_Hide_Empty_Lines_in_Board_Hits_Tabs, true, false},
    {"showHintTooltips", &Ui::QuorvaneClass::actionShow_Hint_Tooltips, true, false},
    {"EV_FE_ShowEVOfSingleReactions", &Ui::QuorvaneClass::actionShow_EV_of_Single_Reactions, false,
     true},
    {"calculateEquityPermanently", &Ui::QuorvaneClass::actionCalculate_Equity_Permanently, true,
     true},
    {"showTabExplanations", &Ui::QuorvaneClass::actionShow_Tab_Explanations, true, true},
    {"showPlotExplanation", &Ui::QuorvaneClass::actionShow_Plot_Explanation, true, true},
    {"checkForUpdates", &Ui::QuorvaneClass::actionCheck_for_Updates_at_Startup, true, true},
    {"unselectCardWithRightButton", &Ui::QuorvaneClass::actionSelect_Cards_with_Right_Button, true,
     true}};

} // namespace

void MainWindowSettings::load(QSettings& settings, QMainWindow& window, Ui::QuorvaneClass& ui) {
    settings.beginGroup(QStringLiteral("mainwindow"));
    if (settings.contains(QStringLiteral("pos")))
        window.move(settings.value(QStringLiteral("pos")).toPoint());
    if (settings.contains(QStringLiteral("size")))
        window.resize(settings.value(QStringLiteral("size")).toSize());
    if (settings.value(QStringLiteral("maximized"), false).toBool())
        window.setWindowState(window.windowState() | Qt::WindowMaximized);
    settings.endGroup();

    settings.beginGroup(QStringLiteral("optionmenu"));
    {
        // The check box beside the equity follows its action, silently like the actions.
        const QSignalBlocker boxBlocker(ui.calculateEquityPermanently);
        for (const Option& option : options) {
            QAction* action = ui.*option.action;
            const QSignalBlocker blocker(action);
            action->setChecked(
                settings.value(QString::fromLatin1(option.key), option.fallback).toBool());
        }
        ui.calculateEquityPermanently->setChecked(
            ui.actionCalculate_Equity_Permanently->isChecked());
        // The option as the board tabs read it, so that the menu shows what they do.
        const QSignalBlocker blocker(ui.action_Hide_Empty_Lines_in_Board_Hits_Tabs);
        ui.action_Hide_Empty_Lines_in_Board_Hits_Tabs->setChecked(
            EvaluationTabOptions::hidesEmptyLines());
    }
    ui.explanatoryWidget->setVisible(ui.actionShow_Tab_Explanations->isChecked());
    settings.endGroup();

    settings.beginGroup(QStringLiteral("miscellaneous"));
    settings.endGroup();
}

void MainWindowSettings::save(QSettings& settings, const QMainWindow& window,
                              const Ui::QuorvaneClass& ui) {
    settings.beginGroup(QStringLiteral("mainwindow"));
    settings.setValue(QStringLiteral("pos"), window.pos());
    const bool maximized = window.isMaximized();
    if (!maximized)
        settings.setValue(QStringLiteral("size"), window.size());
    settings.setValue(QStringLiteral("maximized"), maximized);
    settings.endGroup();

    settings.beginGroup(QStringLiteral("optionmenu"));
    for (const Option& option : options)
        if (option.writtenAtClosing)
            settings.setValue(QString::fromLatin1(option.key), (ui.*option.action)->isChecked());
    settings.endGroup();

    settings.beginGroup(QStringLiteral("miscellaneous"));
    settings.endGroup();
    settings.sync();
}
