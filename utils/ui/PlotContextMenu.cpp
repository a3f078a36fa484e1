#include "utils/ui/PlotContextMenu.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>
#include <qcustomplot.h>

PlotContextMenu::PlotContextMenu(QCustomPlot* plot, CsvText csvText)
    : QObject(plot), plot(plot), csvText(std::move(csvText)) {
    plot->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(plot, &QWidget::customContextMenuRequested, this, &PlotContextMenu::showMenu);
}

QMenu* PlotContextMenu::createMenu() {
    auto* menu = new QMenu(plot);
    connect(menu->addAction(QStringLiteral("Save as &PNG...")), &QAction::triggered, this,
            [this] { askAndSave(QStringLiteral("PNG")); });
    connect(menu->addAction(QStringLiteral("Save as P&DF...")), &QAction::triggered, this,
            [this] { askAndSave(QStringLiteral("PDF")); });
    menu->addSeparator();
    QAction* copy = menu->addAction(QStringLiteral("&Copy Data as CSV"));
    copy->setEnabled(!csvText().isEmpty());
    connect(copy, &QAction::triggered, this, [this] { copyCsv(); });
    return menu;
}

void PlotContextMenu::showMenu(const QPoint& position) {
    QMenu* menu = createMenu();
    // Deleted once the event loop that opened it is reached again, so an entry's own dialog
    // (a nested loop) still finds its menu alive.
    connect(menu, &QMenu::aboutToHide, menu, &QObject::deleteLater);
    shownMenu = menu;
    menu->popup(plot->mapToGlobal(position));
}

bool PlotContextMenu::savePng(const QString& fileName) {
    return reportUnwritable(plot->savePng(fileName));
}

bool PlotContextMenu::savePdf(const QString& fileName) {
    return reportUnwritable(plot->savePdf(fileName));
}

bool PlotContextMenu::copyCsv() {
    const QString text = csvText();
    if (text.isEmpty())
        return false;
    QApplication::clipboard()->setText(text);
    return true;
}

void PlotContextMenu::askAndSave(const QString& format) {
    const QString suffix = format.toLower();
    const QString name = QFileDialog::getSaveFileName(
        plot, QStringLiteral("Save As"),
        QDir::currentPath() + QStringLiteral("/untitled.") + suffix,
        QStringLiteral("%1 Files (*.%2);;All Files (*)").arg(format, suffix));
    if (name.isEmpty())
        return;
    if (format == QStringLiteral("PDF"))
        savePdf(name);
    else
        savePng(name);
}

bool PlotContextMenu::reportUnwritable(bool written) {
    if (!written)
        QMessageBox::warning(plot, QStringLiteral("File could not be opened"),
                             QStringLiteral("The file could not be opened for writing. Please "
                                            "make sure that it is not opened by another program."));
    return written;
}
