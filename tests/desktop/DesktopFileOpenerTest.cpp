// The files the desktop gives the program: which is which, in what order they open, that
// they wait for a dialog to close, and a range tree imported into the saved ranges.

#include "ModalDriver.h"
#include "WaitUntil.h"

#include "app/DesktopFileOpener.h"
#include "selection/HandSelectionTreeModel.h"
#include "selection/SavedRangeTreeSettings.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QFile>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QWidget>
#include <gtest/gtest.h>

#include <functional>

namespace {

using Kind = DesktopFileOpener::Kind;

TEST(DesktopFileKinds, ByTheExtensionInAnyCase) {
    EXPECT_EQ(DesktopFileOpener::kindOf(QStringLiteral("/a/flop.qva")), Kind::Analysis);
    EXPECT_EQ(DesktopFileOpener::kindOf(QStringLiteral("/a/FLOP.QVA")), Kind::Analysis);
    EXPECT_EQ(DesktopFileOpener::kindOf(QStringLiteral("ranges.qvt")), Kind::RangeTree);
    EXPECT_EQ(DesktopFileOpener::kindOf(QStringLiteral("ranges.Qvt")), Kind::RangeTree);
    EXPECT_EQ(DesktopFileOpener::kindOf(QStringLiteral("flop.qva.bak")), Kind::Unknown);
    EXPECT_EQ(DesktopFileOpener::kindOf(QStringLiteral("/a/folder.qva/notes.txt")), Kind::Unknown);
    EXPECT_EQ(DesktopFileOpener::kindOf(QStringLiteral("qva")), Kind::Unknown);
    EXPECT_EQ(DesktopFileOpener::kindOf(QString()), Kind::Unknown);
}

TEST(DesktopFileArguments, AbsolutePathsInOrderWithoutOptions) {
    const QStringList arguments = {QStringLiteral("/usr/bin/quorvane"),
                                   QStringLiteral("rel/a.qva"),
                                   QStringLiteral("-unknown-option"),
                                   QStringLiteral("/abs/x/../b.qvt"),
                                   QStringLiteral("file:///tmp/c%20d.qva"),
                                   QString(),
                                   QStringLiteral("--"),
                                   QStringLiteral("-dash.qva")};
    EXPECT_EQ(
        DesktopFileOpener::filesOf(arguments, QStringLiteral("/home/player")),
        (QStringList{QStringLiteral("/home/player/rel/a.qva"), QStringLiteral("/abs/b.qvt"),
                     QStringLiteral("/tmp/c d.qva"), QStringLiteral("/home/player/-dash.qva")}));
    EXPECT_TRUE(
        DesktopFileOpener::filesOf({QStringLiteral("quorvane")}, QStringLiteral("/")).isEmpty());
    EXPECT_TRUE(DesktopFileOpener::filesOf({}, QStringLiteral("/")).isEmpty());
}

class DesktopFileOpenerTest : public ::testing::Test {
protected:
    void SetUp() override {
        window.resize(600, 400);
        window.show();
    }

    // An opener whose two ways of opening record what they got and answer `answer`.
    std::unique_ptr<DesktopFileOpener> recordingOpener(bool answer = true) {
        return std::make_unique<DesktopFileOpener>(
            &window,
            [this, answer](const QString& path) {
                calls << QStringLiteral("analysis ") + path;
                return answer;
            },
            [this, answer](const QString& path) {
                calls << QStringLiteral("tree ") + path;
                return answer;
            });
    }

    QWidget window;
    QStringList calls;
};

TEST_F(DesktopFileOpenerTest, EachFileGoesWhereItBelongsInTheGivenOrder) {
    auto opener = recordingOpener();
    QSignalSpy opened(opener.get(), &DesktopFileOpener::opened);
    ModalDriver driver;
    driver.press(QMessageBox::Ok);
    opener->open({QStringLiteral("/p/one.qva"), QStringLiteral("/p/ranges.qvt"),
                  QStringLiteral("/p/notes.txt"), QStringLiteral("/p/two.qva")});
    EXPECT_EQ(calls, (QStringList{QStringLiteral("analysis /p/one.qva"),
                                  QStringLiteral("tree /p/ranges.qvt"),
                                  QStringLiteral("analysis /p/two.qva")}));
    ASSERT_EQ(opened.count(), 4);
    EXPECT_EQ(opened[2][0].toString(), QStringLiteral("/p/notes.txt"));
    EXPECT_FALSE(opened[2][1].toBool());
    EXPECT_TRUE(opened[3][1].toBool());

    ASSERT_EQ(driver.boxes().size(), 1);
    EXPECT_EQ(driver.boxes()[0].title, QStringLiteral("Open File"));
    EXPECT_EQ(driver.boxes()[0].text,
              QStringLiteral("The file \"/p/notes.txt\" cannot be opened: Quorvane opens "
                             "analyses (.qva) and range trees (.qvt)."));
    EXPECT_EQ(driver.boxes()[0].icon, QMessageBox::Warning);
    EXPECT_FALSE(driver.boxes()[0].parentless);
}

TEST_F(DesktopFileOpenerTest, AFileThatDoesNotOpenIsReportedAndTheNextOneStillOpens) {
    auto opener = recordingOpener(false);
    QSignalSpy opened(opener.get(), &DesktopFileOpener::opened);
    opener->open({QStringLiteral("/p/bad.qva"), QStringLiteral("/p/bad.qvt")});
    EXPECT_EQ(calls.size(), 2);
    ASSERT_EQ(opened.count(), 2);
    EXPECT_FALSE(opened[0][1].toBool());
    EXPECT_FALSE(opened[1][1].toBool());
}

TEST_F(DesktopFileOpenerTest, FilesWaitWhileADialogIsOpen) {
    auto opener = recordingOpener();
    QDialog dialog(&window);
    dialog.setModal(true);
    dialog.show();
    ASSERT_EQ(QApplication::activeModalWidget(), &dialog);

    opener->open({QStringLiteral("/p/later.qva")});
    waitUntil([] { return false; }, 600);
    EXPECT_TRUE(calls.isEmpty());
    EXPECT_EQ(opener->waiting(), QStringList{QStringLiteral("/p/later.qva")});

    dialog.close();
    EXPECT_TRUE(waitUntil([this] { return calls.size() == 1; }, 2000));
    EXPECT_EQ(calls, QStringList{QStringLiteral("analysis /p/later.qva")});
    EXPECT_TRUE(opener->waiting().isEmpty());
}

TEST_F(DesktopFileOpenerTest, TheWindowComesBackFromTheTaskBar) {
    auto opener = recordingOpener();
    window.showMinimized();
    QCoreApplication::processEvents();
    opener->open({});
    EXPECT_FALSE(window.isMinimized());
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(calls.isEmpty());
}

// ---- A range tree into the saved ranges -----------------------------------------------------

class RangeTreeImportTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(folder.isValid());
        QSettings(QStringLiteral("Velmara"), QStringLiteral("Quorvane")).clear();
        QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Velmara"),
                  QStringLiteral("Quorvane"))
            .clear();
    }

    static QStringList topNames(const HandSelectionTreeModel& model) {
        QStringList names;
        for (int row = 0; row < model.rowCount(); ++row)
            names << model.data(model.index(row, 0)).toString();
        return names;
    }

    static QStringList storedTopNames() {
        HandSelectionTreeModel stored;
        SavedRangeTreeSettings::load(stored);
        return topNames(stored);
    }

    QString write(const QString& name, const QByteArray& bytes) {
        const QString path = folder.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path;
    }

    QTemporaryDir folder;
    QWidget window;
};

TEST_F(RangeTreeImportTest, AddsTheFilesFoldersToTheSavedRangesAndSaysSo) {
    // A tree file as the dialog exports it: two folders with ranges.
    HandSelectionTreeModel exported;
    exported.setDefaultContent();
    const QModelIndex folderIndex = exported.addCategory("Opponents");
    ASSERT_TRUE(folderIndex.isValid());
    const QString path = folder.filePath(QStringLiteral("shared ranges.qvt"));
    ASSERT_TRUE(exported.exportToFile(path).isEmpty());
    const QStringList fileFolders = topNames(exported);
    ASSERT_EQ(fileFolders.size(), 3);

    const QStringList before = storedTopNames(); // the default content of a first start
    ModalDriver driver;
    driver.press(QMessageBox::Ok);
    EXPECT_TRUE(DesktopFileOpener::importRangeTree(path, &window));
    EXPECT_EQ(storedTopNames(), before + fileFolders);

    ASSERT_EQ(driver.boxes().size(), 1);
    EXPECT_EQ(driver.boxes()[0].title, QStringLiteral("Import Tree From File"));
    EXPECT_EQ(driver.boxes()[0].text,
              QStringLiteral("The range tree \"%1\" was added to the saved ranges of the hand "
                             "selection dialog: 3 folders.")
                  .arg(path));
    EXPECT_EQ(driver.boxes()[0].icon, QMessageBox::Information);

    // A second import adds the folders once more.
    ModalDriver again;
    again.press(QMessageBox::Ok);
    EXPECT_TRUE(DesktopFileOpener::importRangeTree(path, &window));
    EXPECT_EQ(storedTopNames(), before + fileFolders + fileFolders);
}

TEST_F(RangeTreeImportTest, ADamagedFileChangesNothingAndIsNamed) {
    const QStringList before = storedTopNames();
    const QString path = write(QStringLiteral("damaged.qvt"), "<QuorvaneTree><Folder name=\"x\"");
    ModalDriver driver;
    driver.press(QMessageBox::Ok);
    EXPECT_FALSE(DesktopFileOpener::importRangeTree(path, &window));
    EXPECT_EQ(storedTopNames(), before);
    ASSERT_EQ(driver.boxes().size(), 1);
    const QString text = driver.boxes()[0].text;
    EXPECT_EQ(driver.boxes()[0].title, QStringLiteral("Import Tree From File"));
    EXPECT_TRUE(text.startsWith(QStringLiteral("The file \"%1\" cannot be imported. ").arg(path)))
        << text.toStdString();
    EXPECT_TRUE(text.endsWith(QStringLiteral(" The saved ranges are unchanged.")));
    EXPECT_EQ(driver.boxes()[0].icon, QMessageBox::Warning);
}

TEST_F(RangeTreeImportTest, AMissingFileChangesNothingAndIsNamed) {
    const QStringList before = storedTopNames();
    const QString path = folder.filePath(QStringLiteral("gone.qvt"));
    ModalDriver driver;
    driver.press(QMessageBox::Ok);
    EXPECT_FALSE(DesktopFileOpener::importRangeTree(path, &window));
    EXPECT_EQ(storedTopNames(), before);
    ASSERT_EQ(driver.boxes().size(), 1);
    EXPECT_TRUE(driver.boxes()[0].text.contains(QStringLiteral("cannot be opened")))
        << driver.boxes()[0].text.toStdString();
}

TEST_F(RangeTreeImportTest, AnEmptyFileChangesNothing) {
    const QStringList before = storedTopNames();
    const QString path = write(QStringLiteral("empty.qvt"), "");
    ModalDriver driver;
    driver.press(QMessageBox::Ok);
    EXPECT_FALSE(DesktopFileOpener::importRangeTree(path, &window));
    EXPECT_EQ(storedTopNames(), before);
    EXPECT_EQ(driver.boxes().size(), 1);
}

} // namespace
