#pragma once

#include <QString>

class QCPItemText;
class QCustomPlot;

// A short sentence in the middle of a plot's axes, for the states in which the plot has
// nothing to show yet: what to do to fill it, why it cannot be filled, that it is being
// calculated. An empty text hides it.
class PlotMessage {
public:
    explicit PlotMessage(QCustomPlot* plot);

    void setText(const QString& text);
    // The text shown; empty while hidden.
    QString text() const;

private:
    QCPItemText* item;
};
