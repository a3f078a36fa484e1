// On a real X server: the dialog that picks one hand of a paste, photographed for a person
// to look at.

#include "HandHistorySamples.h"
#include "support/TestEnvironment.h"

#include "handhistory/HandHistoryPaste.h"
#include "handhistory/ui/ChooseHandDialog.h"

#include <QHeaderView>
#include <QTableWidget>
#include <QTest>
#include <gtest/gtest.h>

TEST(ChooseHandScreenshot, TenHandsOfAPaste) {
    std::string text;
    for (const SampleHand& hand : sampleHandsOf("888-tournament-many.txt"))
        text += hand.text + "\n";
    const HandHistoryPaste paste(text);
    ChooseHandDialog dialog(paste);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    QTest::qWait(100);
    EXPECT_EQ(dialog.table()->rowCount(), 12);
    EXPECT_EQ(dialog.table()->currentRow(), 11);
    // The hands' numbers, not the tournament's.
    EXPECT_EQ(dialog.table()->item(0, 0)->text(), "775395630");
    // Every column wide enough for its texts.
    for (int column = 0; column < 4; ++column)
        for (int row = 0; row < dialog.table()->rowCount(); ++row) {
            const QString cell = dialog.table()->item(row, column)->text();
            EXPECT_GE(dialog.table()->columnWidth(column),
                      dialog.table()->fontMetrics().horizontalAdvance(cell))
                << cell.toStdString();
        }
    const QString folder = QString::fromStdString(TestEnvironment::outputFolder());
    ASSERT_TRUE(dialog.grab().toImage().save(folder + "/choose-hand-dialog.png", "PNG"));
}
