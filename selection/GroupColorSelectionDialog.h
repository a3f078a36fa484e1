#pragma once

#include "Range/GroupColor.h"

#include <QColor>
#include <QDialog>

#include <functional>
#include <vector>

class QCheckBox;
class QListWidget;
class QListWidgetItem;
class QPushButton;

// "Group Colors": picks the two colours of a group's gradient, or one colour for both.
// The list offers the standard colours no other group of the family uses; clicking one
// takes both of its colours.
class GroupColorSelectionDialog : public QDialog {
    Q_OBJECT

public:
    // Asks for a colour; the default runs QColorDialog::getColor titled "Select Color".
    // An invalid answer means cancelled.
    using ColorPicker = std::function<QColor(const QColor& initial, QWidget* parent)>;

    GroupColorSelectionDialog(const Range::GroupColor& current,
                              const std::vector<Range::GroupColor>& unusedStandardColors,
                              QWidget* parent = nullptr);

    QColor firstColor() const { return first; }
    QColor secondColor() const { return second; }
    // The choice as a group colour record (usesColor true).
    Range::GroupColor groupColor() const;

    void setColorPicker(ColorPicker picker) { colorPicker = std::move(picker); }

    QPushButton* firstColorButton() const { return firstButton; }
    QPushButton* secondColorButton() const { return secondButton; }
    QCheckBox* onlyOneColorCheckBox() const { return onlyOne; }
    QListWidget* unusedColorList() const { return unusedList; }

public slots:
    void onFirstColorClicked();
    void onSecondColorClicked();
    void onOnlyOneColorToggled(bool checked);
    void onUnusedColorClicked(QListWidgetItem* item);

private:
    // Takes two colours: a pair of equal colours turns "Only Use One Color" on.
    void setColors(const QColor& from, const QColor& to);
    void showColors();

    QColor first;
    QColor second;
    QPushButton* firstButton;
    QPushButton* secondButton;
    QCheckBox* onlyOne;
    QListWidget* unusedList;
    ColorPicker colorPicker;
};
