#include "utils/ui/Screenshot.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QPixmap>
#include <QWidget>

void Screenshot::saveActiveWindow(QWidget* fallback) {
    QWidget* active = QApplication::activeWindow();
    const QPixmap shot = active ? active->grab() : fallback->grab();
    const QString format = QStringLiteral("png");
    const QString name = QFileDialog::getSaveFileName(
        fallback, QStringLiteral("Save As"),
        QDir::currentPath() + QStringLiteral("/untitled.") + format,
        QStringLiteral("%1 Files (*.%2);;All Files (*)").arg(format.toUpper(), format));
    if (!name.isEmpty())
        shot.save(name, "png");
}
