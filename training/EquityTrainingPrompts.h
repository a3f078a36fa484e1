#pragma once

#include <QString>

#include <functional>

class QWidget;

// The message windows of the training pages, replaceable so that tests need no modal loops.
struct EquityTrainingPrompts {
    // A warning with its title and text; the page stays as it is.
    std::function<void(QWidget* parent, const QString& title, const QString& text)> warn;
    // "Do you really want to cancel this training?"; true for Yes.
    std::function<bool(QWidget* parent)> confirmCancel;

    // The real windows: a warning box and a Yes/No question.
    static EquityTrainingPrompts standard();
};
