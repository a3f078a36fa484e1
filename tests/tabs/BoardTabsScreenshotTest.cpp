#include "BoardTabsTestSupport.h"

#include "calculation/ThreadPool.h"
#include "handstrength/HandGroupSchema.h"
#include "handstrength/ui/HandGroupTickSchemaSelection.h"
#include "selection/HandRangeHover.h"
#include "support/TestEnvironment.h"
#include "tabs/BoardHitEvaluationTable.h"
#include "tabs/BoardHitsTab.h"
#include "tabs/HandStrengthLabel.h"
#include "tabs/TwoPlayerBoardHitsTab.h"
#include "tabs/WinEvaluationTab.h"

#include <QApplication>
#include <QFile>
#include <QTabWidget>
#include <gtest/gtest.h>

using namespace BoardTabsTestSupport;

namespace {

// A late-position opening range against a three-bet range, on a two-tone flop.
const std::string opener = "22+,A2s+,K9s+,Q9s+,J9s+,T8s+,97s+,86s+,75s+,65s,54s,ATo+,KTo+,QTo+,JTo";
const std::string threeBet = "TT+,AQs+,AKo,A5s,A4s,KQs,76s";
const std::string flop = "Kh9h4c";

void applyProgramStyle() {
    QFile style(QStringLiteral(":/style.qss"));
    if (style.open(QIODevice::ReadOnly))
        qApp->setStyleSheet(QString::fromUtf8(style.readAll()));
}

QString save(QWidget& widget, const char* name) {
    const QString path = QString::fromStdString(TestEnvironment::outputFolder()) +
                         QStringLiteral("/") + QLatin1String(name);
    const QPixmap picture = widget.grab();
    EXPECT_TRUE(picture.save(path, "PNG")) << path.toStdString();
    return path;
}

void settle() {
    for (int i = 0; i < 20; ++i)
        QApplication::processEvents();
}

} // namespace

TEST(BoardTabsScreenshot, ThreeTabsWithRealRanges) {
    applyProgramStyle();
    ThreadPool pool;
    QTabWidget tabs;
    tabs.resize(1180, 860);
    auto* hits = new BoardHitsTab;
    auto* twoPlayers = new TwoPlayerBoardHitsTab;
    auto* win = new WinEvaluationTab;
    tabs.addTab(hits, QStringLiteral("Board Hits"));
    tabs.addTab(twoPlayers, QStringLiteral("Two Player Board Hits"));
    tabs.addTab(win, QStringLiteral("Win Evaluation"));
    tabs.show();

    hits->setPools(&pool, nullptr, nullptr);
    hits->updateEvaluation(opener, threeBet, flop, "", true);
    expand(*hits, HandStrengthKey(0x80, 0));
    expand(*hits, HandStrengthKey(0x280, 0));
    hits->customSumSelection()->setCurrentIndex(
        hits->customSumSelection()->findText(QStringLiteral("Mediocre and Strong Draws")));
    expand(*hits, HandStrengthKey(0x4000000, 0x433E00));
    settle();
    ASSERT_FALSE(hits->table()->rows().empty());
    save(tabs, "boardtabs_board_hits.png");

    // The hover of the top pair row: the hands of the row in the matrix.
    HandStrengthLabel* caption = captionOf(*hits, HandStrengthKey(0x280, 0));
    ASSERT_NE(caption, nullptr);
    QMouseEvent move(QEvent::MouseMove, QPointF(60, 5),
                     QPointF(caption->mapToGlobal(QPoint(60, 5))), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    hits->handStrengthLabelHovered(caption, &move);
    settle();
    ASSERT_EQ(hits->shownHovers().size(), 1u);
    HandRangeHover* hover = hits->shownHovers()[0];
    EXPECT_TRUE(hoverShows(*hover, hits->rangeOfRow(HandStrengthKey(0x280, 0), 1), flop, ""));
    save(*hover, "boardtabs_hover.png");
    hits->handStrengthLabelHoverLost(caption, &move);

    tabs.setCurrentIndex(1);
    twoPlayers->setPools(&pool, nullptr, nullptr);
    twoPlayers->updateEvaluation(opener, threeBet, flop, "", true);
    expand(*twoPlayers, HandStrengthKey(0x80, 0));
    expand(*twoPlayers, HandStrengthKey(0x20, 0));
    settle();
    save(tabs, "boardtabs_two_player_board_hits.png");

    tabs.setCurrentIndex(2);
    win->setPools(&pool, nullptr, nullptr);
    win->updateEvaluation(opener, threeBet, flop, "", true);
    expand(*win, HandStrengthKey(0x80, 0));
    expand(*win, HandStrengthKey(0x280, 0));
    ASSERT_TRUE(waitFor([win] { return !win->isCalculating(); }));
    settle();
    save(tabs, "boardtabs_win_evaluation.png");
}
