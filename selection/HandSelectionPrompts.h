#pragma once

#include "Range/GroupColor.h"

#include <QString>

#include <functional>
#include <vector>

class QWidget;

// The question windows of the group editing in the hand selection dialog, replaceable so
// that tests need no modal loops. Each returns false when the user cancelled.
struct HandSelectionPrompts {
    // Asks for a group name with the title "Group"; `name` holds the present one.
    std::function<bool(QWidget* parent, QString& name)> askGroupName;
    // "Do you really want to delete this group (and all children if existing)?"
    std::function<bool(QWidget* parent)> confirmGroupDelete;
    // The two colours of a group; `unused` are the free standard colours.
    std::function<bool(QWidget* parent, const Range::GroupColor& current,
                       const std::vector<Range::GroupColor>& unused, Range::GroupColor& chosen)>
        chooseGroupColors;
    // A warning that leaves the dialog open.
    std::function<void(QWidget* parent, const QString& title, const QString& text)> warn;

    // The real windows: an input dialog, a Yes/No question, the group colour dialog and a
    // warning box.
    static HandSelectionPrompts standard();
};
