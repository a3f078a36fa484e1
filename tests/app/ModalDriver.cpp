#include "ModalDriver.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QPointer>

ModalDriver::ModalDriver(int limitMs) : limitMs(limitMs) {
    connect(&timer, &QTimer::timeout, this, &ModalDriver::poll);
    timer.start(20);
    clock.start();
}

void ModalDriver::poll() {
    QWidget* modal = QApplication::activeModalWidget();
    if (clock.elapsed() > limitMs) {
        gaveUp = true;
        if (auto* dialog = qobject_cast<QDialog*>(modal))
            dialog->reject();
        else if (modal)
            modal->close();
        return;
    }
    // A property, not a pointer set: the next box often lives at the same address.
    if (!modal || modal->property("modalDriverHandled").toBool() ||
        ignoredClasses.contains(QString::fromLatin1(modal->metaObject()->className())))
        return;
    modal->setProperty("modalDriverHandled", true);

    auto* box = qobject_cast<QMessageBox*>(modal);
    if (!box) {
        if (otherHandler)
            otherHandler(modal);
        return;
    }
    SeenBox record;
    record.title = box->windowTitle();
    record.text = box->text();
    record.buttons = box->standardButtons();
    record.icon = box->icon();
    record.flags = box->windowFlags();
    record.hasWindowIcon = !box->windowIcon().isNull();
    record.parentless = box->parentWidget() == nullptr;
    seen.append(record);

    QAbstractButton* button = nullptr;
    if (!script.isEmpty())
        button = box->button(script.takeFirst());
    if (!button) {
        ++unexpected;
        button = box->buttons().value(0);
    }
    // Click from the event loop, not from inside this poll.
    QPointer<QAbstractButton> target(button);
    QTimer::singleShot(30, box, [target] {
        if (target)
            target->click();
    });
}
