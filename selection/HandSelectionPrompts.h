#pragma once

#include "Range/GroupColor.h"

#include <QString>

#include <functional>
#include <vector>

class QWidget;

// The question windows of the hand selection dialog (its groups and its tree of saved
// ranges), replaceable so that tests need no modal loops. Each returns false (or an empty
// file name) when the user cancelled.
struct HandSelectionPrompts {
    // A name question of the tree of saved ranges.
    struct NameQuestion {
        QString title;
        QString label;
        // Text of the OK button; empty for the standard one.
        QString okText;
        // Resource path of the window icon; empty for none.
        QString icon;
    };
    // Answers of the question whether a saved range is to be overwritten.
    enum class OverwriteAnswer { Overwrite, New, Cancel };

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

    // A name for a folder or a range of the tree; `name` holds the present one.
    std::function<bool(QWidget* parent, const NameQuestion& question, QString& name)> askTreeName;
    // "Do you want to overwrite this range or create a new entry?"
    std::function<OverwriteAnswer(QWidget* parent)> askOverwriteOrNew;
    // "Do you really want to delete this element?"
    std::function<bool(QWidget* parent)> confirmTreeDelete;
    // A file to read or to write, from a file dialog with `title`, starting at `path`.
    std::function<QString(QWidget* parent, const QString& title, const QString& path,
                          const QString& filter)>
        chooseOpenFile;
    std::function<QString(QWidget* parent, const QString& title, const QString& path,
                          const QString& filter)>
        chooseSaveFile;

    // The real windows: input dialogs, Yes/No questions, the group colour dialog, warning
    // boxes, the overwrite question and file dialogs.
    static HandSelectionPrompts standard();
};
