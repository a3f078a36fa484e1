#pragma once

#include <QDialog>
#include <VelmaraEvaluatorBase.h>

class QDialogButtonBox;
class QLineEdit;
class QListWidget;
class QToolButton;

namespace Ui {
class HandStrengthSelectionDialog;
}

// "Choose Hand Strengths": makes one hand strength key from single features. The key's
// `positive` features are listed under "Hand Strengths:", its `exclusive` ones under
// "Exclusive Hand Strengths:", and "Possible Hand Strengths:" offers what may still be added
// (selectableFeatures of the key being built).
//
// The dialog works on a copy of the key. With a parent key (the row above in a schema tree)
// the parent's bits are ORed into the copy at the start and are listed in italics as
// " (Inherited)": a child always has the features of its parent, so these can't be removed.
//
// The name line shows the key's own displayName, or while it has none the name the key
// gets from the name table; typing a name there sets the displayName, and clearing it gives
// the table's name back. Accepting a key without any feature warns "No HandStrengths given"
// and keeps the dialog open; otherwise the caller's key is overwritten, both words and the
// displayName. Read-only, every button but Close and the name line are disabled.
class HandStrengthSelectionDialog : public QDialog {
    Q_OBJECT

public:
    // `key` must outlive the dialog; `parentKey` may be null and is only read here.
    HandStrengthSelectionDialog(QWidget* parent, HandStrengthKey* key,
                                const HandStrengthKey* parentKey, bool readOnly);
    ~HandStrengthSelectionDialog() override;

    // The key as built so far.
    const HandStrengthKey& workingKey() const { return working; }
    bool isReadOnly() const { return readOnly; }

    QListWidget* positiveList() const;
    QListWidget* exclusiveList() const;
    QListWidget* possibleList() const;
    QLineEdit* nameEdit() const;
    QToolButton* addPositiveButton() const;
    QToolButton* removePositiveButton() const;
    QToolButton* addExclusiveButton() const;
    QToolButton* removeExclusiveButton() const;
    QDialogButtonBox* buttonBox() const;

public slots:
    void accept() override;
    void onAddHandStrength();
    void onAddExclusiveHandStrength();
    void onRemoveHandStrength();
    void onRemoveExclusiveHandStrength();
    void onNameEditingFinished();

private:
    // Refills the three lists and the name line from the working key.
    void refresh();
    void fillKeyLists();
    void fillPossibleFeatures();
    void updateName();
    void updateButtons();
    // Sets or clears `bit` (0 for none) in a word of the working key, and refills.
    void changeFeature(unsigned long long& word, unsigned long long bit, bool add);
    // The bit of the selected possible feature, or 0.
    unsigned long long selectedPossibleBit() const;
    // The bit of the current item of a key list when it may be removed, or 0.
    unsigned long long removableBit(QListWidget* list) const;

    Ui::HandStrengthSelectionDialog* ui;
    HandStrengthKey* key;
    bool hasParent;
    HandStrengthKey parentKey;
    bool readOnly;
    HandStrengthKey working;
};
