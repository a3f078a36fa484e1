#include "ModalDialogs.h"

#include "handstrength/ui/HandStrengthSelectionDialog.h"
#include "handstrength/ui/HandStrengthSelectionItem.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QToolButton>
#include <gtest/gtest.h>

#include <vector>

namespace {

QStringList textsOf(const QListWidget* list) {
    QStringList texts;
    for (int i = 0; i < list->count(); ++i)
        texts << list->item(i)->text();
    return texts;
}

std::vector<bool> italicsOf(const QListWidget* list) {
    std::vector<bool> italics;
    for (int i = 0; i < list->count(); ++i)
        italics.push_back(list->item(i)->font().italic());
    return italics;
}

// The bits the list offers, in list order.
std::vector<unsigned long long> bitsOf(const QListWidget* list) {
    std::vector<unsigned long long> bits;
    for (int i = 0; i < list->count(); ++i)
        bits.push_back(static_cast<const HandStrengthSelectionItem*>(list->item(i))->bit());
    return bits;
}

// The single bits of `mask` from the highest to the lowest.
std::vector<unsigned long long> bitsHighToLow(unsigned long long mask) {
    std::vector<unsigned long long> bits;
    for (int bit = 63; bit >= 0; --bit) {
        if (mask & (1ULL << bit))
            bits.push_back(1ULL << bit);
    }
    return bits;
}

// Selects the item of `list` that reads `text`.
void pick(QListWidget* list, const QString& text) {
    const QList<QListWidgetItem*> found = list->findItems(text, Qt::MatchExactly);
    ASSERT_EQ(found.size(), 1) << text.toStdString();
    list->setCurrentItem(found.first());
}

QStringList labelTexts(const QWidget& dialog) {
    QStringList texts;
    for (const QLabel* label : dialog.findChildren<QLabel*>())
        texts << label->text();
    return texts;
}

} // namespace

TEST(HandStrengthSelectionDialog, TextsOfTheDialog) {
    HandStrengthKey key;
    HandStrengthSelectionDialog dialog(nullptr, &key, nullptr, false);
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Choose Hand Strengths"));
    EXPECT_EQ(dialog.objectName(), QStringLiteral("HandStrengthSelectionDialog"));
    EXPECT_TRUE(dialog.styleSheet().contains(QStringLiteral("#HandStrengthSelectionDialog")));
    const QStringList labels = labelTexts(dialog);
    for (const char* text :
         {"Hand Strengths:", "Exclusive Hand Strengths:", "Possible Hand Strengths:",
          "Display Name:",
          "Hand strengths will be combined with AND. If a hand has any exclusive hand strength, "
          "it will not count, though."})
        EXPECT_TRUE(labels.contains(QString::fromLatin1(text))) << text;
}

TEST(HandStrengthSelectionDialog, ANewKeyStartsEmptyWithTheBaseFeaturesOffered) {
    HandStrengthKey key;
    HandStrengthSelectionDialog dialog(nullptr, &key, nullptr, false);
    EXPECT_EQ(dialog.positiveList()->count(), 0);
    EXPECT_EQ(dialog.exclusiveList()->count(), 0);
    EXPECT_EQ(dialog.nameEdit()->text(), QString());
    // Bits 0 to 8, 26 to 30, 46 and 47, highest first.
    EXPECT_EQ(bitsOf(dialog.possibleList()), bitsHighToLow(0x0000C0007C0001FFULL));
    EXPECT_EQ(textsOf(dialog.possibleList()),
              (QStringList{"One Overcard", "Overcards", "Backdoor-Straightdraw",
                           "Backdoor-Flushdraw", "Gutshotdraw", "OESD", "Flushdraw", "Highcard",
                           "Pair", "Twopair", "Three of a Kind", "Straight", "Flush", "Full House",
                           "Four of a Kind", "Straightflush"}));
    // Nothing chosen yet: nothing to add or remove.
    EXPECT_FALSE(dialog.addPositiveButton()->isEnabled());
    EXPECT_FALSE(dialog.addExclusiveButton()->isEnabled());
    EXPECT_FALSE(dialog.removePositiveButton()->isEnabled());
    EXPECT_FALSE(dialog.removeExclusiveButton()->isEnabled());
}

TEST(HandStrengthSelectionDialog, UnderAFlushTheNutRanksAreOfferedAndNoOtherHandValue) {
    HandStrengthKey key;
    const HandStrengthKey flush(0x8, 0);
    HandStrengthSelectionDialog dialog(nullptr, &key, &flush, false);
    EXPECT_EQ(textsOf(dialog.positiveList()), QStringList{"Flush (Inherited)"});
    EXPECT_EQ(italicsOf(dialog.positiveList()), std::vector<bool>{true});
    // The ranks of the flush (bits 9 to 14), the straight draws and the overcards; no hand
    // value, and no flush draw.
    EXPECT_EQ(bitsOf(dialog.possibleList()), bitsHighToLow(0xC00058007E00ULL));
    const QStringList offered = textsOf(dialog.possibleList());
    for (const char* rank : {"Top One", "2nd Top One", "3rd Top One", "4th Top One", "5th Top One",
                             "With Made Hand on Board"})
        EXPECT_TRUE(offered.contains(QString::fromLatin1(rank))) << rank;
    for (const char* value :
         {"Highcard", "Pair", "Twopair", "Three of a Kind", "Straight", "Full House",
          "Four of a Kind", "Straightflush", "Flushdraw", "Backdoor-Flushdraw"})
        EXPECT_FALSE(offered.contains(QString::fromLatin1(value))) << value;
    // The name follows the inherited key.
    EXPECT_EQ(dialog.nameEdit()->text(), QStringLiteral("Flush"));

    // The nut flush: the parent's bits stay in the key.
    pick(dialog.possibleList(), QStringLiteral("Top One"));
    dialog.onAddHandStrength();
    EXPECT_EQ(dialog.workingKey().positive, 0x208ULL);
    EXPECT_EQ(textsOf(dialog.positiveList()), (QStringList{"Flush (Inherited)", "Top One"}));
    EXPECT_EQ(dialog.nameEdit()->text(), QStringLiteral("Nutflush"));
}

TEST(HandStrengthSelectionDialog, AddingThenRemovingAFeatureRestoresTheOfferedList) {
    HandStrengthKey key;
    HandStrengthSelectionDialog dialog(nullptr, &key, nullptr, false);
    const QStringList before = textsOf(dialog.possibleList());

    pick(dialog.possibleList(), QStringLiteral("Pair"));
    EXPECT_TRUE(dialog.addPositiveButton()->isEnabled());
    dialog.addPositiveButton()->click();
    EXPECT_EQ(dialog.workingKey().positive, 0x80ULL);
    EXPECT_NE(textsOf(dialog.possibleList()), before);
    // With a pair the kinds of pairs are offered and no other hand value.
    EXPECT_TRUE(textsOf(dialog.possibleList()).contains(QStringLiteral("Top One")));
    EXPECT_FALSE(textsOf(dialog.possibleList()).contains(QStringLiteral("Twopair")));

    pick(dialog.positiveList(), QStringLiteral("Pair"));
    EXPECT_TRUE(dialog.removePositiveButton()->isEnabled());
    dialog.removePositiveButton()->click();
    EXPECT_EQ(dialog.workingKey(), HandStrengthKey());
    EXPECT_EQ(textsOf(dialog.possibleList()), before);

    // The same through the exclusive list.
    pick(dialog.possibleList(), QStringLiteral("Overcards"));
    dialog.addExclusiveButton()->click();
    EXPECT_EQ(dialog.workingKey().exclusive, 0x400000000000ULL);
    EXPECT_EQ(textsOf(dialog.exclusiveList()), QStringList{"Overcards"});
    // A feature that must be absent is not offered again.
    EXPECT_FALSE(textsOf(dialog.possibleList()).contains(QStringLiteral("Overcards")));
    pick(dialog.exclusiveList(), QStringLiteral("Overcards"));
    dialog.removeExclusiveButton()->click();
    EXPECT_EQ(dialog.workingKey(), HandStrengthKey());
    EXPECT_EQ(textsOf(dialog.possibleList()), before);
}

TEST(HandStrengthSelectionDialog, InheritedFeaturesCannotBeRemoved) {
    HandStrengthKey key(0x40280, 0);
    const HandStrengthKey parent(0x280, 0x4000000);
    HandStrengthSelectionDialog dialog(nullptr, &key, &parent, false);
    // The parent's features first, in italics, then the key's own.
    EXPECT_EQ(textsOf(dialog.positiveList()),
              (QStringList{"Top One (Inherited)", "Pair (Inherited)", "Top Kicker"}));
    EXPECT_EQ(italicsOf(dialog.positiveList()), (std::vector<bool>{true, true, false}));
    EXPECT_EQ(textsOf(dialog.exclusiveList()), QStringList{"Flushdraw (Inherited)"});
    EXPECT_EQ(dialog.workingKey(), HandStrengthKey(0x40280, 0x4000000));

    pick(dialog.positiveList(), QStringLiteral("Pair (Inherited)"));
    EXPECT_FALSE(dialog.removePositiveButton()->isEnabled());
    dialog.onRemoveHandStrength();
    EXPECT_EQ(dialog.workingKey().positive, 0x40280ULL);
    pick(dialog.exclusiveList(), QStringLiteral("Flushdraw (Inherited)"));
    EXPECT_FALSE(dialog.removeExclusiveButton()->isEnabled());
    dialog.onRemoveExclusiveHandStrength();
    EXPECT_EQ(dialog.workingKey().exclusive, 0x4000000ULL);

    pick(dialog.positiveList(), QStringLiteral("Top Kicker"));
    EXPECT_TRUE(dialog.removePositiveButton()->isEnabled());
    dialog.removePositiveButton()->click();
    EXPECT_EQ(dialog.workingKey(), HandStrengthKey(0x280, 0x4000000));
}

TEST(HandStrengthSelectionDialog, TheNameLineShowsTheTableNameUntilANameIsTyped) {
    HandStrengthKey key;
    HandStrengthSelectionDialog dialog(nullptr, &key, nullptr, false);
    pick(dialog.possibleList(), QStringLiteral("Pair"));
    dialog.onAddHandStrength();
    EXPECT_EQ(dialog.nameEdit()->text(), QStringLiteral("Pair"));
    pick(dialog.possibleList(), QStringLiteral("Flushdraw"));
    dialog.onAddHandStrength();
    // No row in the table: the single names joined, made hand first.
    EXPECT_EQ(dialog.nameEdit()->text(), QStringLiteral("Pair + Flushdraw"));
    EXPECT_EQ(dialog.workingKey().displayName, "");

    dialog.nameEdit()->setText(QStringLiteral("Pair with a draw"));
    dialog.nameEdit()->setModified(true);
    dialog.onNameEditingFinished();
    EXPECT_EQ(dialog.workingKey().displayName, "Pair with a draw");
    // A given name stays while features change.
    pick(dialog.possibleList(), QStringLiteral("Top One"));
    dialog.onAddHandStrength();
    EXPECT_EQ(dialog.nameEdit()->text(), QStringLiteral("Pair with a draw"));

    // Cleared, the line shows the table's name again.
    dialog.nameEdit()->setText(QString());
    dialog.nameEdit()->setModified(true);
    dialog.onNameEditingFinished();
    EXPECT_EQ(dialog.workingKey().displayName, "");
    EXPECT_EQ(dialog.nameEdit()->text(), QStringLiteral("Pair + Top One + Flushdraw"));

    // Leaving the line without typing keeps the name automatic.
    emit dialog.nameEdit()->editingFinished();
    EXPECT_EQ(dialog.workingKey().displayName, "");
}

TEST(HandStrengthSelectionDialog, AcceptingNoFeatureWarnsAndStaysOpen) {
    ModalDialogs::Watchdog watchdog;
    HandStrengthKey empty;
    HandStrengthSelectionDialog dialog(nullptr, &empty, nullptr, false);
    dialog.show();
    QSignalSpy accepted(&dialog, &QDialog::accepted);
    ModalDialogs::Message warning;
    ModalDialogs::answerMessage(&warning, QMessageBox::Ok);
    dialog.buttonBox()->button(QDialogButtonBox::Ok)->click();
    EXPECT_TRUE(warning.shown);
    EXPECT_EQ(warning.title, QStringLiteral("No HandStrengths given"));
    EXPECT_EQ(warning.text,
              QStringLiteral("Please specify either positive or negative hand strengths."));
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(accepted.count(), 0);
    EXPECT_EQ(empty, HandStrengthKey());
}

TEST(HandStrengthSelectionDialog, AcceptingOverwritesBothWordsAndTheName) {
    HandStrengthKey key(0x80, 0, "old name");
    HandStrengthSelectionDialog dialog(nullptr, &key, nullptr, false);
    dialog.show();
    pick(dialog.possibleList(), QStringLiteral("Top One"));
    dialog.onAddHandStrength();
    pick(dialog.possibleList(), QStringLiteral("Flushdraw"));
    dialog.onAddExclusiveHandStrength();
    // Typed and confirmed by OK itself.
    dialog.nameEdit()->setText(QStringLiteral("Top pair, no draw"));
    dialog.nameEdit()->setModified(true);
    QSignalSpy accepted(&dialog, &QDialog::accepted);
    dialog.buttonBox()->button(QDialogButtonBox::Ok)->click();
    EXPECT_EQ(accepted.count(), 1);
    EXPECT_EQ(key.positive, 0x280ULL);
    EXPECT_EQ(key.exclusive, 0x4000000ULL);
    EXPECT_EQ(key.displayName, "Top pair, no draw");
}

TEST(HandStrengthSelectionDialog, CancelLeavesTheKeyAlone) {
    HandStrengthKey key(0x80, 0);
    HandStrengthSelectionDialog dialog(nullptr, &key, nullptr, false);
    dialog.show();
    pick(dialog.possibleList(), QStringLiteral("Top One"));
    dialog.onAddHandStrength();
    dialog.buttonBox()->button(QDialogButtonBox::Cancel)->click();
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_EQ(key, HandStrengthKey(0x80, 0));
}

TEST(HandStrengthSelectionDialog, ReadOnlyServesForViewing) {
    HandStrengthKey key(0x280, 0);
    const HandStrengthKey parent(0x80, 0);
    HandStrengthSelectionDialog dialog(nullptr, &key, &parent, true);
    dialog.show();
    EXPECT_EQ(textsOf(dialog.positiveList()), (QStringList{"Pair (Inherited)", "Top One"}));
    EXPECT_FALSE(dialog.nameEdit()->isEnabled());
    pick(dialog.possibleList(), QStringLiteral("Top Kicker"));
    pick(dialog.positiveList(), QStringLiteral("Top One"));
    for (QToolButton* button : {dialog.addPositiveButton(), dialog.addExclusiveButton(),
                                dialog.removePositiveButton(), dialog.removeExclusiveButton()})
        EXPECT_FALSE(button->isEnabled());
    dialog.onRemoveHandStrength();
    dialog.onAddHandStrength();
    EXPECT_EQ(dialog.workingKey(), HandStrengthKey(0x280, 0));
    // Only a way out.
    EXPECT_EQ(dialog.buttonBox()->standardButtons(), QDialogButtonBox::Close);
    dialog.accept();
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_EQ(key, HandStrengthKey(0x280, 0));
}

TEST(HandStrengthSelectionDialog, AStoredBitWithoutANameReadsUnknown) {
    // Bit 25 is never set by the program; only damaged settings can hold it.
    HandStrengthKey key(0x2000080, 0);
    HandStrengthSelectionDialog dialog(nullptr, &key, nullptr, false);
    EXPECT_EQ(textsOf(dialog.positiveList()), (QStringList{"Unknown", "Pair"}));
    EXPECT_EQ(dialog.nameEdit()->text(), QStringLiteral("Pair + Unknown"));
}
