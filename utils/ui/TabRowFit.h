#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

class QAction;
class QScrollArea;
class QTabWidget;

// Fits a row of a tab widget and a side panel (the tab explanations) into the width the
// window's scroll area shows:
// - the tab widget asks only for the room of the page it shows, not for that of its widest
//   page, so that one wide page never makes the window scroll while another one is shown;
// - when the row cannot hold the page and the panel side by side, the panel steps aside,
//   and it comes back as soon as there is room. Whether the panel is wanted at all stays
//   the choice of a checkable action (the menu's "Show Tab Explanations").
// Below the room the shown page needs, the window scrolls.
class TabRowFit : public QObject {
    Q_OBJECT

public:
    // `row` holds `tabs` and `panel` side by side, inside the widget of `area`.
    TabRowFit(QScrollArea* area, QWidget* row, QTabWidget* tabs, QWidget* panel, QAction* wanted,
              QObject* parent);

    // Whether the panel is wanted but has no room.
    bool panelStepsAside() const { return steppedAside; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fit();
    // fit() once the events of now are handled.
    void fitLater();
    // The width the tab widget needs around the page it shows.
    int tabsWidthFor(QWidget* page) const;

    QScrollArea* area;
    QWidget* row;
    QTabWidget* tabs;
    QWidget* panel;
    QAction* wanted;
    // The page the tab widget showed at the last fit.
    QPointer<QWidget> shownPage;
    bool steppedAside = false;
    bool fitting = false;
    bool fitPending = false;
};
