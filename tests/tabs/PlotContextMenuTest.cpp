// The right-click menu of the equity plots: PNG and PDF through the save dialog, the numbers
// as CSV into the clipboard, and an unwritable file answered with a warning.

#include "EquityPlotsTestSupport.h"
#include "EquityTableTestHelpers.h"

#include "calculation/ThreadPool.h"
#include "tabs/EquityEvolutionTab.h"
#include "tabs/EquityGraphTab.h"
#include "utils/ui/PlotContextMenu.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <qcustomplot.h>

#include <memory>

using namespace EquityPlotsTestSupport;

namespace {

QAction* entry(QMenu* menu, const QString& text) {
    for (QAction* action : menu->actions())
        if (action->text() == text)
            return action;
    return nullptr;
}

class PlotContextMenuTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { initializeEvaluatorOnce(); }

    void SetUp() override {
        ASSERT_TRUE(folder.isValid());
        previousFolder = QDir::currentPath();
        QDir::setCurrent(folder.path());
        graph = std::make_unique<EquityGraphTab>();
        graph->resize(900, 560);
        graph->show();
        graph->setThreadPool(&pool);
    }
    void TearDown() override {
        graph.reset();
        QDir::setCurrent(previousFolder);
    }

    void calculateGraph() {
        graph->updateInputs(&hero, &villain, "Ah7d2c", "");
        graph->onCalculationButtonClicked();
        ASSERT_TRUE(waitUntil([this] { return !graph->isCalculating(); }));
    }
    QString path(const char* name) const { return folder.filePath(QString::fromLatin1(name)); }

    QTemporaryDir folder;
    QString previousFolder;
    ThreadPool pool;
    Range::HandRange hero = rangeOf("QQ+,AKs");
    Range::HandRange villain = rangeOf("22-JJ,AQs+");
    std::unique_ptr<EquityGraphTab> graph;
};

} // namespace

TEST_F(PlotContextMenuTest, EntriesAndCopyOnlyWithNumbers) {
    std::unique_ptr<QMenu> menu(graph->contextMenu()->createMenu());
    ASSERT_EQ(menu->actions().size(), 4); // three entries and a separator
    ASSERT_NE(entry(menu.get(), "Save as &PNG..."), nullptr);
    ASSERT_NE(entry(menu.get(), "Save as P&DF..."), nullptr);
    ASSERT_NE(entry(menu.get(), "&Copy Data as CSV"), nullptr);
    EXPECT_TRUE(entry(menu.get(), "Save as &PNG...")->isEnabled());
    EXPECT_FALSE(entry(menu.get(), "&Copy Data as CSV")->isEnabled());
    QApplication::clipboard()->setText("before");
    EXPECT_FALSE(graph->contextMenu()->copyCsv());
    EXPECT_EQ(QApplication::clipboard()->text(), "before");

    calculateGraph();
    menu.reset(graph->contextMenu()->createMenu());
    QAction* copy = entry(menu.get(), "&Copy Data as CSV");
    EXPECT_TRUE(copy->isEnabled());
    copy->trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), graph->csvText());
    EXPECT_TRUE(QApplication::clipboard()->text().startsWith("Player;Place;Hand;Equity;Plotted\n"));
}

TEST_F(PlotContextMenuTest, RightClickOpensTheMenu) {
    QCustomPlot* plot = graph->plot();
    QContextMenuEvent click(QContextMenuEvent::Mouse, QPoint(200, 150),
                            plot->mapToGlobal(QPoint(200, 150)));
    QApplication::sendEvent(plot, &click);
    QMenu* menu = graph->contextMenu()->openMenu();
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(menu->isVisible());
    EXPECT_NE(entry(menu, "Save as &PNG..."), nullptr);
    menu->hide();
    QTest::qWait(20);
    EXPECT_EQ(graph->contextMenu()->openMenu(), nullptr);
}

TEST_F(PlotContextMenuTest, PngAndPdfOfThePlotAsShown) {
    calculateGraph();
    QCustomPlot* plot = graph->plot();
    ASSERT_TRUE(graph->contextMenu()->savePng(path("graph.png")));
    const QImage picture(path("graph.png"));
    ASSERT_FALSE(picture.isNull());
    EXPECT_EQ(picture.size(), plot->size());
    // The red curve of player 1 is in the picture.
    bool red = false;
    for (int y = 0; y < picture.height() && !red; ++y)
        for (int x = 0; x < picture.width() && !red; ++x)
            red = picture.pixelColor(x, y) == QColor(255, 0, 0);
    EXPECT_TRUE(red);

    ASSERT_TRUE(graph->contextMenu()->savePdf(path("graph.pdf")));
    QFile pdf(path("graph.pdf"));
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
    EXPECT_TRUE(pdf.read(5) == "%PDF-");
    EXPECT_GT(pdf.size(), 1000);
}

TEST_F(PlotContextMenuTest, TheEntriesAskForTheFileName) {
    std::unique_ptr<QMenu> menu(graph->contextMenu()->createMenu());
    {
        EquityTableTestHelpers::ModalAnswer answer([this](QWidget* modal) {
            return EquityTableTestHelpers::saveAs(modal, path("a.png"));
        });
        entry(menu.get(), "Save as &PNG...")->trigger();
        EXPECT_TRUE(answer.answered());
        EXPECT_FALSE(answer.gaveUp());
    }
    EXPECT_FALSE(QImage(path("a.png")).isNull());
    {
        EquityTableTestHelpers::ModalAnswer answer([this](QWidget* modal) {
            return EquityTableTestHelpers::saveAs(modal, path("a.pdf"));
        });
        entry(menu.get(), "Save as P&DF...")->trigger();
        EXPECT_TRUE(answer.answered());
    }
    QFile pdf(path("a.pdf"));
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
    EXPECT_TRUE(pdf.read(5) == "%PDF-");
    // A cancelled dialog writes nothing.
    {
        EquityTableTestHelpers::ModalAnswer answer([](QWidget* modal) {
            modal->close();
            return true;
        });
        entry(menu.get(), "Save as &PNG...")->trigger();
        EXPECT_TRUE(answer.answered());
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 2);
}

TEST_F(PlotContextMenuTest, AnUnwritableFileIsReported) {
    QString title;
    QString text;
    EquityTableTestHelpers::ModalAnswer answer([&](QWidget* modal) {
        auto* box = qobject_cast<QMessageBox*>(modal);
        if (box == nullptr)
            return false;
        title = box->windowTitle();
        text = box->text();
        box->accept();
        return true;
    });
    EXPECT_FALSE(graph->contextMenu()->savePng(path("missing-folder/graph.png")));
    EXPECT_TRUE(answer.answered());
    EXPECT_EQ(title, "File could not be opened");
    EXPECT_EQ(text, "The file could not be opened for writing. Please make sure that it is not "
                    "opened by another program.");
    EXPECT_FALSE(QFile::exists(path("missing-folder/graph.png")));
}

TEST_F(PlotContextMenuTest, TheEvolutionPlotHasTheSameMenu) {
    EquityEvolutionTab evolution;
    evolution.resize(900, 560);
    evolution.show();
    evolution.setThreadPool(&pool);
    std::unique_ptr<QMenu> menu(evolution.contextMenu()->createMenu());
    EXPECT_FALSE(entry(menu.get(), "&Copy Data as CSV")->isEnabled());
    evolution.updateInputs("QQ+,AKs", "22-JJ,AQs+", "Ah7d2c", "");
    evolution.analyzeTurnCards();
    ASSERT_TRUE(waitUntil([&evolution] { return !evolution.isAnalysing(); }));
    menu.reset(evolution.contextMenu()->createMenu());
    entry(menu.get(), "&Copy Data as CSV")->trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), evolution.csvText());
    EXPECT_TRUE(QApplication::clipboard()->text().startsWith("Card;Equity\nAd;"));
    ASSERT_TRUE(evolution.contextMenu()->savePng(path("evolution.png")));
    EXPECT_EQ(QImage(path("evolution.png")).size(), evolution.plot()->size());
}
