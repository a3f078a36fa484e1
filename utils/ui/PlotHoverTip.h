#pragma once

#include <QObject>
#include <QString>

#include <functional>

class QCustomPlot;
class QMouseEvent;
class QPoint;

// Tool tips that follow the mouse over a plot: at every move the owner of the plot is asked
// what lies under the pointer (a bar, a step of a curve) and the answer is shown as the tip;
// an empty answer hides it. The owner alone knows what its points mean, so the lookup is
// its function; this class only does the showing and hiding.
//
// Main thread only. Lives as a child of the plot.
class PlotHoverTip : public QObject {
    Q_OBJECT

public:
    // The text for a position in the plot's pixels, or empty for nothing there.
    using TextAt = std::function<QString(const QPoint& position)>;

    PlotHoverTip(QCustomPlot* plot, TextAt textAt);

    // The text shown after the last move, empty when the tip is hidden; for tests.
    const QString& shownText() const { return shown; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void onMouseMove(QMouseEvent* event);
    void hide();

    QCustomPlot* plot;
    TextAt textAt;
    QString shown;
};
