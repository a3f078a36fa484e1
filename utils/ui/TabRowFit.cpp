#include "utils/ui/TabRowFit.h"

#include <QAction>
#include <QEvent>
#include <QLayout>
#include <QScopedValueRollback>
#include <QScrollArea>
#include <QStyle>
#include <QStyleOptionTabWidgetFrame>
#include <QTabBar>
#include <QTabWidget>

#include <algorithm>

TabRowFit::TabRowFit(QScrollArea* area, QWidget* row, QTabWidget* tabs, QWidget* panel,
                     QAction* wanted, QObject* parent)
    : QObject(parent), area(area), row(row), tabs(tabs), panel(panel), wanted(wanted) {
    area->viewport()->installEventFilter(this);
    for (int index = 0; index < tabs->count(); ++index)
        tabs->widget(index)->installEventFilter(this);
    shownPage = tabs->currentWidget();
    connect(tabs, &QTabWidget::currentChanged, this, [this] { fitLater(); });
    // Connected after the window's own slot, which shows or hides the panel as asked.
    connect(wanted, &QAction::toggled, this, &TabRowFit::fit);
    fit();
}

bool TabRowFit::eventFilter(QObject* watched, QEvent* event) {
    // Nothing here may ask the tab widget anything: while the window is torn down its pages
    // still send events (a layout going asks for a new layout) when the tab widget's own
    // parts are gone already. The page shown is known from currentChanged, and the fit of a
    // page's change waits for the event loop, which a window being destroyed never reaches.
    if (event->type() == QEvent::Resize && watched == area->viewport()) {
        fit();
    } else if (event->type() == QEvent::LayoutRequest && shownPage && watched == shownPage) {
        // A page whose content changed may need another width.
        fitLater();
    }
    return QObject::eventFilter(watched, event);
}

void TabRowFit::fitLater() {
    if (fitPending)
        return;
    fitPending = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            fitPending = false;
            fit();
        },
        Qt::QueuedConnection);
}

int TabRowFit::tabsWidthFor(QWidget* page) const {
    QStyleOptionTabWidgetFrame frame;
    frame.initFrom(tabs);
    frame.lineWidth = tabs->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, tabs);
    frame.shape = tabs->tabBar()->shape();
    const QSize pageMinimum = page ? page->minimumSizeHint() : QSize(0, 0);
    const QSize framed =
        tabs->style()->sizeFromContents(QStyle::CT_TabWidget, &frame, pageMinimum, tabs);
    // The tab bar scrolls its tabs and needs little more than its buttons.
    return std::max(framed.width(), tabs->tabBar()->minimumSizeHint().width());
}

void TabRowFit::fit() {
    if (fitting)
        return;
    const QScopedValueRollback<bool> guard(fitting, true);
    shownPage = tabs->currentWidget();
    const int tabsWidth = tabsWidthFor(shownPage);
    // With every tab's title in view; the bar's scroll buttons are the fallback.
    const int wholeBar = std::max(tabsWidth, tabs->tabBar()->sizeHint().width());

    // The room of the row: what the viewport shows, less the margins around the row.
    const QWidget* content = area->widget();
    const QLayout* contentLayout = content ? content->layout() : nullptr;
    const QMargins margins = contentLayout ? contentLayout->contentsMargins() : QMargins();
    const int room = area->viewport()->width() - margins.left() - margins.right();
    const int spacing = row->layout() ? std::max(row->layout()->spacing(), 0) : 0;
    const int panelWidth = std::min(
        std::max(panel->minimumSizeHint().width(), panel->minimumWidth()), panel->maximumWidth());
    const bool panelShown = wanted->isChecked() && tabsWidth + spacing + panelWidth <= room;
    const int besidePanel = panelShown ? spacing + panelWidth : 0;
    tabs->setMinimumWidth(wholeBar + besidePanel <= room ? wholeBar : tabsWidth);

    steppedAside = wanted->isChecked() && !panelShown;
    panel->setVisible(panelShown);
}
