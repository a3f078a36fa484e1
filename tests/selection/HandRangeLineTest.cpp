// HandRangeLine and HandRangeMultiLine: validation on Return, live parsing while typing,
// the unbound line, selections.

#include "selection/HandRangeLine.h"
#include "Range/HandRange.h"
#include "Range/HandRangeStringManipulator.h"
#include "selection/HandRangeMultiLine.h"

#include <QSignalSpy>
#include <QTest>
#include <QTextCursor>
#include <gtest/gtest.h>

namespace {

std::string compactOf(const Range::HandRange& range) {
    return Range::HandRangeStringReader(range).compactText();
}

TEST(HandRangeLine, BindingShowsTheCompactTextWithoutSignal) {
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree("QQ,KK,AA,AKs");
    HandRangeLine line;
    QSignalSpy changed(&line, &HandRangeLine::RangeChanged);
    line.setHandRange(&range);
    EXPECT_EQ(line.text(), QStringLiteral("QQ+,AKs"));
    EXPECT_EQ(line.rangeText(), "QQ+,AKs");
    EXPECT_EQ(changed.count(), 0);
}

TEST(HandRangeLine, ReturnPutsTheCanonicalTextBackAndSignalsTheChange) {
    Range::HandRange range;
    HandRangeLine line;
    line.setHandRange(&range);
    QSignalSpy changed(&line, &HandRangeLine::RangeChanged);
    line.setText(QStringLiteral("ak"));
    QTest::keyClick(&line, Qt::Key_Return);
    EXPECT_EQ(line.text(), QStringLiteral("AKs,AKo"));
    EXPECT_EQ(range.combinationCount(), 16u);
    EXPECT_EQ(changed.count(), 1);
}

TEST(HandRangeLine, AReformatOnlyIsNoChange) {
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree("QQ");
    HandRangeLine line;
    line.setHandRange(&range);
    QSignalSpy changed(&line, &HandRangeLine::RangeChanged);
    line.setText(QStringLiteral(" q q ,"));
    QTest::keyClick(&line, Qt::Key_Return);
    EXPECT_EQ(line.text(), QStringLiteral("QQ"));
    EXPECT_EQ(changed.count(), 0);
}

TEST(HandRangeLine, ReturnOnAnEmptyFieldClearsTheRangeAndSignalsOnlyIfItHadText) {
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree("AA");
    HandRangeLine line;
    line.setHandRange(&range);
    QSignalSpy changed(&line, &HandRangeLine::RangeChanged);
    line.setText(QString());
    QTest::keyClick(&line, Qt::Key_Return);
    EXPECT_TRUE(range.isEmpty());
    EXPECT_EQ(changed.count(), 1);

    // Now the range has no text: a second Return on the empty field is no change.
    QTest::keyClick(&line, Qt::Key_Return);
    EXPECT_EQ(changed.count(), 1);
}

TEST(HandRangeLine, ReturnWithoutABoundRangeDoesNothing) {
    HandRangeLine line;
    QSignalSpy changed(&line, &HandRangeLine::RangeChanged);
    line.setText(QStringLiteral("aks, qq"));
    QTest::keyClick(&line, Qt::Key_Return);
    line.validateRange();
    EXPECT_EQ(line.text(), QStringLiteral("aks, qq"));
    EXPECT_EQ(changed.count(), 0);
}

TEST(HandRangeLine, TypingParsesEveryKeystrokeButLeavesTheTextAsTyped) {
    Range::HandRange range;
    HandRangeLine line;
    line.setHandRange(&range);
    QSignalSpy changed(&line, &HandRangeLine::RangeChanged);

    QTest::keyClicks(&line, QStringLiteral("Q"));
    EXPECT_EQ(changed.count(), 0); // "Q" is no hand
    QTest::keyClicks(&line, QStringLiteral("Q"));
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(compactOf(range), "QQ");
    QTest::keyClicks(&line, QStringLiteral("+"));
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(compactOf(range), "QQ+");
    QTest::keyClicks(&line, QStringLiteral(",a"));
    EXPECT_EQ(changed.count(), 2); // "QQ+," and "QQ+,a" read as QQ+
    EXPECT_EQ(line.text(), QStringLiteral("QQ+,a"));
    EXPECT_EQ(line.cursorPosition(), 5);
    QTest::keyClicks(&line, QStringLiteral("ks"));
    EXPECT_EQ(changed.count(), 4); // "ak" (both classes), then "aks"
    EXPECT_EQ(compactOf(range), "QQ+,AKs");
    EXPECT_EQ(line.text(), QStringLiteral("QQ+,aks"));

    // Return then only reformats: the range already is what the text says.
    QTest::keyClick(&line, Qt::Key_Return);
    EXPECT_EQ(line.text(), QStringLiteral("QQ+,AKs"));
    EXPECT_EQ(changed.count(), 4);
}

TEST(HandRangeLine, UnchangedValidationKeepsTheSelection) {
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree("QQ+,AKs");
    HandRangeLine line;
    line.setHandRange(&range);
    line.setSelection(4, 3);
    line.validateRange();
    EXPECT_EQ(line.selectedText(), QStringLiteral("AKs"));
}

TEST(HandRangeLine, ClearUnbindsAndEmpties) {
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree("AA");
    HandRangeLine line;
    line.setHandRange(&range);
    line.clear();
    EXPECT_EQ(line.handRange(), nullptr);
    EXPECT_TRUE(line.text().isEmpty());
    // The range is not touched by the line's clear.
    EXPECT_EQ(range.combinationCount(), 6u);
}

TEST(HandRangeLine, DoubleClickIsSignalled) {
    HandRangeLine line;
    QSignalSpy doubleClicked(&line, &HandRangeLine::doubleClicked);
    QTest::mouseDClick(&line, Qt::LeftButton);
    EXPECT_EQ(doubleClicked.count(), 1);
}

TEST(HandRangeMultiLine, ReturnValidatesInsteadOfBreakingTheLine) {
    Range::HandRange range;
    HandRangeMultiLine field;
    field.setHandRange(&range);
    QSignalSpy changed(&field, &HandRangeMultiLine::RangeChanged);
    QTest::keyClicks(&field, QStringLiteral("55-22"));
    EXPECT_EQ(changed.count(), 0); // the multi-line parses on Return only
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(field.toPlainText(), QStringLiteral("22-55"));
    EXPECT_EQ(range.combinationCount(), 24u);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(field.textCursor().position(), field.toPlainText().size());
    EXPECT_FALSE(field.toPlainText().contains(QLatin1Char('\n')));
}

TEST(HandRangeMultiLine, UnchangedTextKeepsTheSelectionWhereItWas) {
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree("22-55,AKs");
    HandRangeMultiLine field;
    field.setHandRange(&range);
    QTextCursor cursor = field.textCursor();
    cursor.setPosition(1);
    cursor.setPosition(4, QTextCursor::KeepAnchor);
    field.setTextCursor(cursor);
    QSignalSpy changed(&field, &HandRangeMultiLine::RangeChanged);
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(field.textCursor().selectionStart(), 1);
    EXPECT_EQ(field.textCursor().selectionEnd(), 4);
    EXPECT_EQ(field.toPlainText(), QStringLiteral("22-55,AKs"));
}

TEST(HandRangeMultiLine, WithoutARangeReturnDoesNothing) {
    HandRangeMultiLine field;
    field.setPlainText(QStringLiteral("aks"));
    QSignalSpy changed(&field, &HandRangeMultiLine::RangeChanged);
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(field.toPlainText(), QStringLiteral("aks"));
    EXPECT_EQ(changed.count(), 0);
}

} // namespace
