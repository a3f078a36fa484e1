#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>

class QCustomPlot;
class QMenu;
class QPoint;

// The right-click menu of a plot: save the picture as PNG or PDF (the plot's own export,
// at the size it has on screen) and copy its numbers to the clipboard as CSV text.
//
// The numbers come from the owner of the plot, which alone knows what the points mean;
// while it has none, "Copy Data as CSV" is disabled rather than copying nothing. The menu
// belongs to the plot: it is a child of it and goes with it.
//
// Main thread only.
class PlotContextMenu : public QObject {
    Q_OBJECT

public:
    // CSV text of the plotted numbers (lines separated by '\n'), or empty when there are none.
    using CsvText = std::function<QString()>;

    PlotContextMenu(QCustomPlot* plot, CsvText csvText);

    // A fresh menu with the three entries as the user sees them at this moment; the caller
    // owns it.
    QMenu* createMenu();

    // What the entries do once the user has chosen a file. False, after a warning to the
    // user, when the file cannot be written.
    bool savePng(const QString& fileName);
    bool savePdf(const QString& fileName);
    // Puts the numbers into the clipboard; false (and nothing copied) when there are none.
    bool copyCsv();

    // The menu last opened by a right click, while it is open; for tests.
    QMenu* openMenu() const { return shownMenu; }

public slots:
    // Opens the menu at `position` of the plot and returns at once.
    void showMenu(const QPoint& position);

private:
    // Asks for a file name in the program's "Save As" dialog for `format` ("PNG", "PDF")
    // and saves; a cancelled dialog saves nothing.
    void askAndSave(const QString& format);
    bool reportUnwritable(bool written);

    QCustomPlot* plot;
    CsvText csvText;
    QPointer<QMenu> shownMenu;
};
