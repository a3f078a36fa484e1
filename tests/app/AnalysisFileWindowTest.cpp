// The analysis file and undo driven through the real main window (offscreen): open, save,
// save as, the question before work could be lost, damaged files, failed writes, undo and
// redo of ranges, board and lines, and the recovery file.

#include "AnalysisFileSamples.h"
#include "MainWindowDriver.h"
#include "ModalDriver.h"

#include "app/AnalysisFileCommands.h"
#include "app/Quorvane.h"
#include "app/RollbackRangeAction.h"
#include "app/document/AnalysisDocument.h"
#include "app/document/RecoveryFile.h"
#include "evfe/ui/EV_FE_CalculationsTab.h"
#include "selection/BoardCardsWidget.h"
#include "selection/HandRangeLine.h"
#include "selection/ManagedHandRangeLine.h"
#include "ui_EV_FE_CalculationsTab.h"
#include "ui_Quorvane.h"

#include <QDir>
#include <QFile>
#include <QInputDialog>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <csignal>
#include <fstream>
#include <random>
#include <sys/resource.h>
#include <unistd.h>

namespace {

struct Warning {
    QString title;
    QString text;
};

// The window's file dialogs and questions, answered by the test.
struct ScriptedDialogs {
    QString saveName;
    QString openName;
    int saveAnswer = 1; // Yes
    bool restoreAnswer = true;
    int saveDialogs = 0;
    int openDialogs = 0;
    int saveQuestions = 0;
    QStringList openTitles;
    std::vector<Warning> warnings;

    AnalysisFileCommands::Dialogs dialogs() {
        AnalysisFileCommands::Dialogs result;
        result.saveFileName = [this](QWidget*, const QString& title, const QString& start,
                                     const QString& filter) {
            ++saveDialogs;
            EXPECT_EQ(title, QStringLiteral("Save As"));
            EXPECT_EQ(start, QDir::currentPath() + QStringLiteral("/untitled.qva"));
            EXPECT_EQ(filter,
                      QStringLiteral("Quorvane Analysis (Scenarios) Files (*.qva);;All Files (*)"));
            return saveName;
        };
        result.openFileName = [this](QWidget*, const QString& title, const QString&,
                                     const QString&) {
            ++openDialogs;
            openTitles << title;
            return openName;
        };
        result.askToSave = [this](QWidget*, const QString&) {
            ++saveQuestions;
            return saveAnswer;
        };
        result.warn = [this](QWidget*, const QString& title, const QString& text) {
            warnings.push_back({title, text});
        };
        result.askToRestore = [this](QWidget*, const QString& text) {
            EXPECT_EQ(text, QStringLiteral(
                                "Quorvane was not closed properly. Restore the unsaved analysis?"));
            return restoreAnswer;
        };
        return result;
    }
};

std::string readFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::string();
    return file.readAll().toStdString();
}

void writeFile(const QString& path, const std::string& text) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(text.data(), static_cast<qint64>(text.size()));
}

class AnalysisFileWindow : public ::testing::Test {
protected:
    void SetUp() override {
        QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
        settings.clear();
        settings.sync();
        RecoveryFile::discard();
        driver = std::make_unique<MainWindowDriver>();
        ui = driver->window().form();
        driver->window().fileCommands().setDialogs(script.dialogs());
        ASSERT_TRUE(folder.isValid());
    }
    void TearDown() override { driver.reset(); }

    Quorvane& window() { return driver->window(); }
    AnalysisDocument& document() { return window().document(); }
    QString path(const QString& name) const { return folder.filePath(name); }
    // The whole analysis as the file would hold it now.
    std::string analysisText() { return document().text(ui->EV_FE_calculationsTab->stateText()); }

    // What must stay the same when a file cannot be opened.
    struct Snapshot {
        std::string text;
        QString title;
        bool saved;
        std::size_t mementos;
        int mementoIndex;
    };
    Snapshot snapshot() {
        return {analysisText(), window().windowTitle(), document().isSaved(),
                document().mementos().size(), document().mementoIndex()};
    }
    void expectUnchanged(const Snapshot& before) {
        EXPECT_EQ(analysisText(), before.text);
        EXPECT_EQ(window().windowTitle(), before.title);
        EXPECT_EQ(document().isSaved(), before.saved);
        EXPECT_EQ(document().mementos().size(), before.mementos);
        EXPECT_EQ(document().mementoIndex(), before.mementoIndex);
    }

    void addLine(const QString& name) {
        ModalDriver modal;
        modal.onOtherModal([name](QWidget* widget) {
            auto* dialog = qobject_cast<QInputDialog*>(widget);
            ASSERT_NE(dialog, nullptr);
            dialog->setTextValue(name);
            QTimer::singleShot(20, dialog, &QDialog::accept);
        });
        ui->EV_FE_calculationsTab->form()->addLineButton->click();
    }

    QTemporaryDir folder;
    ScriptedDialogs script;
    std::unique_ptr<MainWindowDriver> driver;
    Ui::QuorvaneClass* ui = nullptr;
};

} // namespace

// --- Undo and redo ----------------------------------------------------------------------------

TEST_F(AnalysisFileWindow, AtTheStartUndoAndRedoAreDisabledWithTheirBareTexts) {
    EXPECT_FALSE(ui->actionUndo->isEnabled());
    EXPECT_FALSE(ui->actionRedo->isEnabled());
    EXPECT_EQ(ui->actionUndo->text(), QStringLiteral("Undo "));
    EXPECT_EQ(ui->actionRedo->text(), QStringLiteral("Redo "));
    ASSERT_EQ(document().mementos().size(), 1u);
    EXPECT_EQ(document().mementos()[0].label(), "");
    EXPECT_EQ(document().mementoIndex(), 0);
}

TEST_F(AnalysisFileWindow, UndoNamesTheLastChangeAndRedoTheNext) {
    driver->typeRange(1, QStringLiteral("AA"));
    ui->clearPlayer1RangeButton->click();
    EXPECT_EQ(ui->actionUndo->text(), QStringLiteral("Undo Player1's Range Cleared"));
    ui->actionUndo->trigger();
    EXPECT_EQ(ui->actionUndo->text(), QStringLiteral("Undo Player1's Range Changed"));
    EXPECT_EQ(ui->actionRedo->text(), QStringLiteral("Redo Player1's Range Cleared"));
    EXPECT_EQ(ui->player1Range->rangeLine()->text(), QStringLiteral("AA"));
    EXPECT_TRUE(ui->actionRedo->isEnabled());
}

TEST_F(AnalysisFileWindow, ANewChangeAfterUndoCutsTheRedoBranch) {
    driver->typeRange(1, QStringLiteral("AA"));
    driver->typeFlop(QStringLiteral("Ah7d2c"));
    ui->actionUndo->trigger();
    ASSERT_TRUE(ui->actionRedo->isEnabled());
    driver->typeRange(2, QStringLiteral("KK"));
    EXPECT_FALSE(ui->actionRedo->isEnabled());
    EXPECT_EQ(ui->actionRedo->text(), QStringLiteral("Redo "));
    EXPECT_EQ(ui->actionUndo->text(), QStringLiteral("Undo Player2's Range Changed"));
    EXPECT_EQ(document().mementoIndex(),
              static_cast<std::int32_t>(document().mementos().size()) - 1);
}

// Ranges, board and a line, each undone and redone: at every step the whole analysis is
// exactly what it was at that point.
TEST_F(AnalysisFileWindow, UndoAndRedoBringBackTheWholeAnalysisAtEveryStep) {
    std::vector<std::string> states{analysisText()};
    driver->typeRange(1, QStringLiteral("QQ+,AKs"));
    states.push_back(analysisText());
    driver->typeRange(2, QStringLiteral("22+"));
    states.push_back(analysisText());
    driver->typeFlop(QStringLiteral("Kh9s4c"));
    states.push_back(analysisText());
    ui->tabWidget->setCurrentWidget(ui->EV_FE_calculationsTab);
    addLine(QStringLiteral("Bet/Fold"));
    ASSERT_EQ(ui->EV_FE_calculationsTab->lineList()->size(), 1u);
    const std::string lineName = ui->EV_FE_calculationsTab->lineList()->front().name;
    states.push_back(analysisText());
    EXPECT_NE(states.back(), states[states.size() - 2]);

    // Every change left at least one snapshot; the last one is the present state.
    ASSERT_EQ(document().mementos().back().data(), states.back());

    // Undo all the way back to the start, comparing with each recorded state on the way.
    std::vector<std::string> seen{analysisText()};
    while (ui->actionUndo->isEnabled()) {
        ui->actionUndo->trigger();
        seen.push_back(analysisText());
        EXPECT_EQ(
            seen.back(),
            document().mementos()[static_cast<std::size_t>(document().mementoIndex())].data());
    }
    EXPECT_EQ(seen.back(), states.front());
    for (const std::string& state : states)
        EXPECT_NE(std::find(seen.begin(), seen.end(), state), seen.end());
    EXPECT_TRUE(ui->player1Range->rangeLine()->text().isEmpty());
    EXPECT_TRUE(ui->EV_FE_calculationsTab->lineList()->empty());

    // And forward again to the end.
    while (ui->actionRedo->isEnabled())
        ui->actionRedo->trigger();
    EXPECT_EQ(analysisText(), states.back());
    EXPECT_EQ(ui->player1Range->rangeLine()->text(), QStringLiteral("QQ+,AKs"));
    EXPECT_EQ(ui->boardCardsWidget->getBoard(), "Kh9s4c");
    ASSERT_EQ(ui->EV_FE_calculationsTab->lineList()->size(), 1u);
    EXPECT_EQ(ui->EV_FE_calculationsTab->lineList()->front().name, lineName);
}

TEST_F(AnalysisFileWindow, UndoKeepsTheSavedStateAndTheTitle) {
    driver->typeRange(1, QStringLiteral("AA"));
    const QString title = window().windowTitle();
    EXPECT_TRUE(title.startsWith(QLatin1Char('*')));
    ui->actionUndo->trigger();
    EXPECT_EQ(window().windowTitle(), title);
    EXPECT_FALSE(document().isSaved());
}

TEST_F(AnalysisFileWindow, RestoringSelectsTheScenarioAsStored) {
    ModalDriver modal;
    modal.onOtherModal([](QWidget* widget) {
        if (auto* dialog = qobject_cast<QInputDialog*>(widget)) {
            dialog->setTextValue(QStringLiteral("River"));
            QTimer::singleShot(20, dialog, &QDialog::accept);
        }
    });
    ui->addScenario->click();
    ASSERT_EQ(ui->scenarios->currentIndex(), 1);
    driver->typeRange(1, QStringLiteral("JJ"));
    driver->typeRange(2, QStringLiteral("TT"));
    ui->scenarios->setCurrentIndex(0);
    ASSERT_EQ(ui->scenarios->currentIndex(), 0);
    ui->actionUndo->trigger();
    EXPECT_EQ(ui->scenarios->currentIndex(), 1);
    EXPECT_EQ(ui->player1Range->rangeLine()->text(), QStringLiteral("JJ"));
    EXPECT_TRUE(ui->player2Range->rangeLine()->text().isEmpty());
}

TEST_F(AnalysisFileWindow, ScenarioEditsMakeNoSnapshotAndNoStar) {
    ModalDriver modal;
    modal.onOtherModal([](QWidget* widget) {
        if (auto* dialog = qobject_cast<QInputDialog*>(widget)) {
            dialog->setTextValue(QStringLiteral("Turn"));
            QTimer::singleShot(20, dialog, &QDialog::accept);
        }
    });
    modal.press(QMessageBox::Yes);
    ui->addScenario->click();
    ui->editScenario->click();
    ui->deleteScenario->click();
    EXPECT_EQ(document().mementos().size(), 1u);
    EXPECT_TRUE(document().isSaved());
    EXPECT_FALSE(window().windowTitle().startsWith(QLatin1Char('*')));
}

TEST_F(AnalysisFileWindow, NewForgetsEverySnapshot) {
    driver->typeRange(1, QStringLiteral("AA"));
    script.saveAnswer = 0; // No
    ui->action_New->trigger();
    EXPECT_EQ(document().mementos().size(), 1u);
    EXPECT_FALSE(ui->actionUndo->isEnabled());
    EXPECT_EQ(window().windowTitle(), QStringLiteral("untitled.qva - Quorvane "));
}

// --- Save, open -------------------------------------------------------------------------------

TEST_F(AnalysisFileWindow, SaveAsWritesTheAnalysisAndClearsTheStar) {
    driver->typeRange(1, QStringLiteral("AA,KK"));
    driver->typeFlop(QStringLiteral("Ah7d2c"));
    script.saveName = path(QStringLiteral("spot.qva"));
    ui->actionSave_All_Scenarios_As->trigger();
    EXPECT_EQ(script.saveDialogs, 1);
    EXPECT_TRUE(script.warnings.empty());
    EXPECT_EQ(readFile(script.saveName), analysisText());
    EXPECT_TRUE(document().isSaved());
    EXPECT_EQ(window().windowTitle(), script.saveName + QStringLiteral(" - Quorvane "));
    // Save writes under the same name without asking.
    driver->typeRange(2, QStringLiteral("QQ"));
    ui->actionSave_All_Scenarios->trigger();
    EXPECT_EQ(script.saveDialogs, 1);
    EXPECT_EQ(readFile(script.saveName), analysisText());
    // Saving changes nothing in the undo list.
    EXPECT_EQ(document().mementos().back().data(), analysisText());
}

TEST_F(AnalysisFileWindow, ACancelledSaveDialogWritesNothingAndKeepsTheStar) {
    driver->typeRange(1, QStringLiteral("AA"));
    script.saveName.clear();
    ui->actionSave_All_Scenarios_As->trigger();
    EXPECT_FALSE(document().isSaved());
    EXPECT_TRUE(window().windowTitle().startsWith(QLatin1Char('*')));
    EXPECT_TRUE(QDir(folder.path()).entryList(QDir::Files).isEmpty());
}

TEST_F(AnalysisFileWindow, OpeningShowsTheFileWithItsFullPathAndTheStoredSelection) {
    const QString file = path(QStringLiteral("three.qva"));
    writeFile(file, AnalysisFileSamples::readData("analysis-three-scenarios.qva"));
    script.openName = file;
    ui->actionOpen_Analysis->trigger();
    EXPECT_EQ(script.openTitles, QStringList{QStringLiteral("Open")});
    ASSERT_TRUE(script.warnings.empty()) << script.warnings.front().text.toStdString();
    EXPECT_EQ(window().windowTitle(), file + QStringLiteral(" - Quorvane "));
    ASSERT_EQ(ui->scenarios->count(), 3);
    EXPECT_EQ(ui->scenarios->itemText(1), QStringLiteral("Turn <probe> & \"check\""));
    EXPECT_EQ(ui->scenarios->currentIndex(), 1);
    EXPECT_EQ(ui->player1Range->rangeLine()->text(), QStringLiteral("KK+"));
    EXPECT_EQ(ui->boardCardsWidget->getBoard(), "Ah7d2cKs");
    EXPECT_EQ(ui->boardCardsWidget->getDeadCards(), "Qh");
    // The tab got the file's state: rake 4.5 % capped at 3.
    EXPECT_NE(ui->EV_FE_calculationsTab->stateText().find("<rakePercentage>4.5<"),
              std::string::npos);
    // Saved again, the file holds what is on screen: the same scenarios, ranges, cards and
    // lines (whose numbers the page has recalculated for the ranges and board).
    script.saveName = path(QStringLiteral("again.qva"));
    ui->actionSave_All_Scenarios_As->trigger();
    const AnalysisContent again = AnalysisFile::read(readFile(script.saveName));
    const std::vector<Scenario> expected = AnalysisFileSamples::threeScenarios();
    ASSERT_EQ(again.scenarios.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(again.scenarios[i].name, expected[i].name);
        EXPECT_EQ(AnalysisFileSamples::groupsText(again.scenarios[i].player1),
                  AnalysisFileSamples::groupsText(expected[i].player1));
        EXPECT_EQ(AnalysisFileSamples::groupsText(again.scenarios[i].player2),
                  AnalysisFileSamples::groupsText(expected[i].player2));
        EXPECT_EQ(again.scenarios[i].board, expected[i].board);
        EXPECT_EQ(again.scenarios[i].deadCards, expected[i].deadCards);
        EXPECT_EQ(again.scenarios[i].lines->size(), expected[i].lines->size());
    }
}

TEST_F(AnalysisFileWindow, AFileWithoutSelectionShowsTheLastScenarioAndLeavesTheTabAlone) {
    std::string text = AnalysisFileSamples::readData("analysis-three-scenarios.qva");
    text.replace(text.find("<selectedScenario>1<"), 20, "<selectedScenario>-1<");
    const QString file = path(QStringLiteral("last.qva"));
    writeFile(file, text);
    const std::string tabBefore = ui->EV_FE_calculationsTab->stateText();
    ASSERT_TRUE(window().openAnalysisFile(file));
    EXPECT_EQ(ui->scenarios->currentIndex(), 2);
    EXPECT_EQ(ui->scenarios->currentText(), QStringLiteral("Standard"));
    EXPECT_EQ(ui->EV_FE_calculationsTab->stateText(), tabBefore);
}

TEST_F(AnalysisFileWindow, OpeningReplacesTheListEvenWithoutTabState) {
    const QString file = path(QStringLiteral("plain.qva"));
    writeFile(file, "<QuorvaneAnalysis><selectedScenario>0</selectedScenario><Scenarios>"
                    "<Scenario name=\"Only\"><Board>Kc</Board></Scenario></Scenarios>"
                    "</QuorvaneAnalysis>");
    ASSERT_TRUE(window().openAnalysisFile(file));
    ASSERT_EQ(ui->scenarios->count(), 1);
    EXPECT_EQ(ui->scenarios->itemText(0), QStringLiteral("Only"));
}

TEST_F(AnalysisFileWindow, ALegacyFileOpensAtItsLastScenario) {
    const QString file = path(QStringLiteral("old.qva"));
    writeFile(file, AnalysisFileSamples::readData("analysis-three-scenarios.legacy"));
    ASSERT_TRUE(window().openAnalysisFile(file));
    EXPECT_EQ(ui->scenarios->count(), 3);
    EXPECT_EQ(ui->scenarios->currentIndex(), 2);
    EXPECT_TRUE(document().isSaved());
}

TEST_F(AnalysisFileWindow, UndoAfterOpeningLeadsBackIntoWhatWasThereBefore) {
    driver->typeRange(1, QStringLiteral("AA"));
    driver->typeFlop(QStringLiteral("Ah7d2c"));
    const std::size_t count = document().mementos().size();
    ASSERT_GE(count, 3u);
    const QString file = path(QStringLiteral("three.qva"));
    writeFile(file, AnalysisFileSamples::readData("analysis-three-scenarios.qva"));
    script.saveAnswer = 0;
    ASSERT_TRUE(window().openAnalysisFile(file));
    EXPECT_EQ(ui->scenarios->count(), 3);
    // Opening left the list as it was: undo steps from the last change before the file.
    EXPECT_EQ(document().mementos().size(), count);
    EXPECT_EQ(ui->actionUndo->text(), QStringLiteral("Undo Board Cards Changed"));
    ui->actionUndo->trigger();
    EXPECT_EQ(analysisText(), document().mementos()[count - 2].data());
    EXPECT_EQ(ui->scenarios->count(), 1);
    EXPECT_EQ(ui->player1Range->rangeLine()->text(), QStringLiteral("AA"));
    // The title still names the file.
    EXPECT_EQ(window().windowTitle(), file + QStringLiteral(" - Quorvane "));
}

// --- Files that cannot be opened --------------------------------------------------------------

TEST_F(AnalysisFileWindow, DamagedFilesAreNamedWithTheReasonAndChangeNothing) {
    script.saveAnswer = 0;
    driver->typeRange(1, QStringLiteral("AA"));
    driver->typeFlop(QStringLiteral("Ah7d2c"));
    const std::string golden = AnalysisFileSamples::readData("analysis-three-scenarios.qva");
    const std::string legacy = AnalysisFileSamples::readData("analysis-three-scenarios.legacy");
    std::string noNumber = golden;
    noNumber.replace(noNumber.find("<selectedScenario>1<"), 20, "<selectedScenario>x<");
    std::string badRange = golden;
    badRange.insert(badRange.find("text=\"", badRange.find("<Player2>")) + 6, "Zebra,");
    const struct {
        const char* name;
        std::string text;
        const char* reason;
    } cases[] = {
        {"empty.qva", "", "The file is empty."},
        {"letter.qva", "Dear friend,", "it starts with neither an element"},
        {"truncated.qva", golden.substr(0, golden.size() / 3), "The file is no analysis: "},
        {"number.qva", noNumber, "The selected scenario \"x\" is no number."},
        {"folder.qva",
         "<QuorvaneAnalysis><Scenarios><Scenario name=\"S\"><Player1><folder name=\"F\"/>"
         "</Player1></Scenario></Scenarios></QuorvaneAnalysis>",
         "is a folder"},
        {"range.qva", badRange, "\"Zebra\" is no range text."},
        {"cut.qva", legacy.substr(0, legacy.find("Turn <probe>") + 2),
         "The file ends inside scenario 2."},
    };
    for (const auto& damaged : cases) {
        const QString file = path(QString::fromLatin1(damaged.name));
        writeFile(file, damaged.text);
        const Snapshot before = snapshot();
        script.warnings.clear();
        EXPECT_FALSE(window().openAnalysisFile(file)) << damaged.name;
        ASSERT_EQ(script.warnings.size(), 1u) << damaged.name;
        EXPECT_EQ(script.warnings[0].title, QStringLiteral("Open Error"));
        EXPECT_TRUE(script.warnings[0].text.contains(file)) << damaged.name;
        EXPECT_TRUE(script.warnings[0].text.contains(QString::fromLatin1(damaged.reason)))
            << damaged.name << ": " << script.warnings[0].text.toStdString();
        EXPECT_TRUE(script.warnings[0].text.contains(
            QStringLiteral("The analysis on screen is unchanged.")));
        expectUnchanged(before);
    }
}

TEST_F(AnalysisFileWindow, AMissingFileAndAFolderAreNamedToo) {
    script.saveAnswer = 0;
    driver->typeRange(1, QStringLiteral("AA"));
    for (const QString& file : {path(QStringLiteral("gone.qva")), folder.path()}) {
        const Snapshot before = snapshot();
        script.warnings.clear();
        EXPECT_FALSE(window().openAnalysisFile(file));
        ASSERT_EQ(script.warnings.size(), 1u);
        EXPECT_TRUE(script.warnings[0].text.contains(QStringLiteral("\"") + file +
                                                     QStringLiteral("\" cannot be opened")))
            << script.warnings[0].text.toStdString();
        expectUnchanged(before);
    }
}

// --- Saving that fails, and the question before work could be lost ----------------------------

TEST_F(AnalysisFileWindow, SavingIntoAFolderThatCannotBeWrittenKeepsTheStar) {
    driver->typeRange(1, QStringLiteral("AA"));
    // Root writes into any folder it owns; nobody creates files in /proc.
    QString target;
    if (geteuid() == 0) {
        target = QStringLiteral("/proc/quorvane-analysis.qva");
    } else {
        const QString locked = path(QStringLiteral("locked"));
        ASSERT_TRUE(QDir().mkpath(locked));
        QFile::setPermissions(locked, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
        target = locked + QStringLiteral("/spot.qva");
    }
    script.saveName = target;
    ui->actionSave_All_Scenarios_As->trigger();
    ASSERT_EQ(script.warnings.size(), 1u);
    EXPECT_EQ(script.warnings[0].title, QStringLiteral("Save Error"));
    EXPECT_TRUE(script.warnings[0].text.contains(target));
    EXPECT_TRUE(script.warnings[0].text.contains(QStringLiteral("The file on disk is unchanged")));
    EXPECT_FALSE(document().isSaved());
    EXPECT_TRUE(window().windowTitle().startsWith(QStringLiteral("*untitled.qva")));
    EXPECT_FALSE(QFile::exists(target));
}

TEST_F(AnalysisFileWindow, SavingIntoAFolderThatIsGoneKeepsTheStar) {
    driver->typeRange(1, QStringLiteral("AA"));
    script.saveName = path(QStringLiteral("no/such/folder/spot.qva"));
    ui->actionSave_All_Scenarios_As->trigger();
    ASSERT_EQ(script.warnings.size(), 1u);
    EXPECT_FALSE(document().isSaved());
}

// A full disk, played by a limit on the size of files this process writes: the old file stays
// as it was, byte for byte.
TEST_F(AnalysisFileWindow, AFullDiskLeavesTheOldFileUntouched) {
    const QString file = path(QStringLiteral("spot.qva"));
    script.saveName = file;
    driver->typeRange(1, QStringLiteral("AA"));
    ui->actionSave_All_Scenarios_As->trigger();
    ASSERT_TRUE(document().isSaved());
    const std::string old = readFile(file);
    ASSERT_FALSE(old.empty());

    driver->typeRange(1, QStringLiteral(",22+,A2s+,K2s+,Q2s+,J2s+"));
    ASSERT_GT(analysisText().size(), old.size() + 16);
    struct rlimit previous {};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &previous), 0);
    const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
    struct rlimit limited = previous;
    limited.rlim_cur = static_cast<rlim_t>(old.size() + 8);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limited), 0);
    ui->actionSave_All_Scenarios->trigger();
    setrlimit(RLIMIT_FSIZE, &previous);
    std::signal(SIGXFSZ, previousHandler);

    ASSERT_EQ(script.warnings.size(), 1u);
    EXPECT_EQ(script.warnings[0].title, QStringLiteral("Save Error"));
    EXPECT_FALSE(document().isSaved());
    EXPECT_TRUE(window().windowTitle().startsWith(QLatin1Char('*')));
    EXPECT_EQ(readFile(file), old);
    // No temporary file is left behind.
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{QStringLiteral("spot.qva")});
}

TEST_F(AnalysisFileWindow, YesThenACancelledDialogKeepsTheWindowAndTheAnalysis) {
    driver->typeRange(1, QStringLiteral("AA"));
    script.saveAnswer = 1;
    script.saveName.clear();
    window().show();
    EXPECT_FALSE(window().close());
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(script.saveQuestions, 1);
    EXPECT_EQ(script.saveDialogs, 1);

    const Snapshot before = snapshot();
    ui->action_New->trigger();
    expectUnchanged(before);
    ui->actionOpen_Analysis->trigger();
    EXPECT_EQ(script.openDialogs, 0);
    expectUnchanged(before);
}

TEST_F(AnalysisFileWindow, YesThenAFailedWriteKeepsTheWindow) {
    driver->typeRange(1, QStringLiteral("AA"));
    script.saveAnswer = 1;
    script.saveName = path(QStringLiteral("no/such/folder/spot.qva"));
    window().show();
    EXPECT_FALSE(window().close());
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(script.warnings.size(), 1u);
}

TEST_F(AnalysisFileWindow, CancelAsksNothingMoreAndNoClosesWithoutSaving) {
    driver->typeRange(1, QStringLiteral("AA"));
    window().show();
    script.saveAnswer = -1;
    EXPECT_FALSE(window().close());
    EXPECT_EQ(script.saveDialogs, 0);
    script.saveAnswer = 0;
    EXPECT_TRUE(window().close());
    EXPECT_EQ(script.saveDialogs, 0);
}

// --- The recovery file ------------------------------------------------------------------------

TEST_F(AnalysisFileWindow, EveryUnsavedChangeReachesTheRecoveryFile) {
    EXPECT_FALSE(QFile::exists(RecoveryFile::path()));
    driver->typeRange(1, QStringLiteral("AKs"));
    ASSERT_TRUE(MainWindowDriver::waitUntil(
        [this] { return readFile(RecoveryFile::path()) == analysisText(); }, 3000));
    // A saved analysis needs no recovery.
    script.saveName = path(QStringLiteral("saved.qva"));
    ui->actionSave_All_Scenarios_As->trigger();
    EXPECT_FALSE(QFile::exists(RecoveryFile::path()));
    driver->typeRange(2, QStringLiteral("QQ"));
    ASSERT_TRUE(MainWindowDriver::waitUntil(
        [this] { return readFile(RecoveryFile::path()) == analysisText(); }, 3000));
    // A clean close removes it.
    script.saveAnswer = 0;
    window().show();
    EXPECT_TRUE(window().close());
    EXPECT_FALSE(QFile::exists(RecoveryFile::path()));
}

TEST_F(AnalysisFileWindow, TheRecoveryFileIsWrittenAtMostOnceASecond) {
    driver->typeRange(1, QStringLiteral("AA"));
    ASSERT_TRUE(
        MainWindowDriver::waitUntil([] { return QFile::exists(RecoveryFile::path()); }, 3000));
    const QDateTime first = QFileInfo(RecoveryFile::path()).lastModified();
    driver->typeRange(1, QStringLiteral(",KK"));
    // Within the second the file still holds the earlier text...
    EXPECT_NE(readFile(RecoveryFile::path()), analysisText());
    // ...and the newest one after it.
    ASSERT_TRUE(MainWindowDriver::waitUntil(
        [this] { return readFile(RecoveryFile::path()) == analysisText(); }, 3000));
    EXPECT_GE(first.msecsTo(QFileInfo(RecoveryFile::path()).lastModified()), 900);
}

TEST_F(AnalysisFileWindow, ARecoveredAnalysisOpensUnsavedUnderItsFileName) {
    QDir().mkpath(RecoveryFile::folder());
    writeFile(RecoveryFile::path(), AnalysisFileSamples::readData("analysis-three-scenarios.qva"));
    writeFile(RecoveryFile::folder() + QStringLiteral("/recovery.name"), "/home/me/spots.qva");
    script.restoreAnswer = true;
    ASSERT_TRUE(window().offerRecovery());
    EXPECT_EQ(ui->scenarios->count(), 3);
    EXPECT_EQ(ui->scenarios->currentIndex(), 1);
    EXPECT_FALSE(document().isSaved());
    EXPECT_EQ(window().windowTitle(), QStringLiteral("*/home/me/spots.qva - Quorvane "));
    EXPECT_EQ(document().fileName(), QStringLiteral("/home/me/spots.qva"));
}

TEST_F(AnalysisFileWindow, ARecoveryTheUserDoesNotWantIsForgotten) {
    QDir().mkpath(RecoveryFile::folder());
    writeFile(RecoveryFile::path(), AnalysisFileSamples::readData("analysis-three-scenarios.qva"));
    script.restoreAnswer = false;
    EXPECT_FALSE(window().offerRecovery());
    EXPECT_FALSE(QFile::exists(RecoveryFile::path()));
    EXPECT_EQ(ui->scenarios->count(), 1);
    EXPECT_TRUE(document().isSaved());
}

TEST_F(AnalysisFileWindow, ADamagedRecoveryFileIsNamedAndChangesNothing) {
    QDir().mkpath(RecoveryFile::folder());
    writeFile(RecoveryFile::path(), "<QuorvaneAnalysis><Scen");
    const Snapshot before = snapshot();
    EXPECT_FALSE(window().offerRecovery());
    ASSERT_EQ(script.warnings.size(), 1u);
    EXPECT_TRUE(script.warnings[0].text.contains(QStringLiteral("cannot be restored")));
    EXPECT_FALSE(QFile::exists(RecoveryFile::path()));
    expectUnchanged(before);
}

TEST_F(AnalysisFileWindow, WithoutARecoveryFileNothingIsAsked) {
    script.restoreAnswer = true;
    EXPECT_FALSE(window().offerRecovery());
    EXPECT_TRUE(script.warnings.empty());
}

// The window's own first snapshot must not remove what the last run left before it is offered.
TEST(AnalysisFileRecoveryAtStart, TheLastRunsRecoveryOutlivesTheNewWindow) {
    QDir().mkpath(RecoveryFile::folder());
    writeFile(RecoveryFile::path(), AnalysisFileSamples::readData("analysis-three-scenarios.qva"));
    MainWindowDriver driver;
    EXPECT_TRUE(QFile::exists(RecoveryFile::path()));
    ScriptedDialogs script;
    driver.window().fileCommands().setDialogs(script.dialogs());
    ASSERT_TRUE(driver.window().offerRecovery());
    EXPECT_EQ(driver.window().form()->scenarios->count(), 3);
    // Kept: the restored analysis is unsaved.
    EXPECT_TRUE(QFile::exists(RecoveryFile::path()));
    // Saved, it needs no recovery any more.
    QTemporaryDir folder;
    script.saveName = folder.filePath(QStringLiteral("restored.qva"));
    driver.window().form()->actionSave_All_Scenarios_As->trigger();
    EXPECT_FALSE(QFile::exists(RecoveryFile::path()));
}

// --- A thousand damaged files through the file commands ---------------------------------------

TEST(AnalysisFileCommandsMutations, NeverAChangedAnalysisOnFailure) {
    AnalysisDocument document;
    AnalysisFileCommands commands(
        document, [] { return std::string(); }, nullptr);
    ScriptedDialogs script;
    commands.setDialogs(script.dialogs());
    commands.setShow([&document](AnalysisContent content) {
        document.replaceScenarios(std::move(content.scenarios), content.selectedScenario);
    });
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("mutated.qva"));
    const std::vector<std::string> sources = {
        AnalysisFileSamples::readData("analysis-three-scenarios.qva"),
        AnalysisFileSamples::readData("analysis-three-scenarios.legacy")};
    std::mt19937 random(19);
    int failed = 0;
    for (int round = 0; round < 1000; ++round) {
        std::string text = sources[static_cast<std::size_t>(round % 2)];
        std::uniform_int_distribution<std::size_t> place(0, text.size() - 1);
        if (round % 4 < 2) {
            text.resize(place(random));
        } else {
            for (int flips = 1 + static_cast<int>(random() % 4); flips > 0; --flips)
                text[place(random)] = static_cast<char>(random() % 256);
        }
        writeFile(file, text);
        const std::string before = document.text("");
        const QString title = document.title();
        const std::size_t warnings = script.warnings.size();
        if (!commands.openFile(file)) {
            ++failed;
            EXPECT_EQ(document.text(""), before) << "round " << round;
            EXPECT_EQ(document.title(), title);
            EXPECT_EQ(script.warnings.size(), warnings + 1);
        } else {
            EXPECT_FALSE(document.scenarios().empty());
            EXPECT_TRUE(document.isSaved());
        }
    }
    EXPECT_GT(failed, 100);
}

TEST(RollbackRangeAction, CarriesItsTextAndRange) {
    QObject owner;
    auto* action =
        new RollbackRangeAction(&owner, QStringLiteral("Back to QQ+"), QStringLiteral("QQ+,AKs"));
    EXPECT_EQ(action->parent(), &owner);
    EXPECT_EQ(action->text(), QStringLiteral("Back to QQ+"));
    EXPECT_EQ(action->range(), QStringLiteral("QQ+,AKs"));
}
