#include "ModalDialogs.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QInputDialog>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <gtest/gtest.h>

#include <memory>

namespace ModalDialogs {

namespace {

// Steps still waiting when a watchdog ends belong to a test that is over: they give up.
int generation = 0;

void poll(QPointer<QWidget> below, std::shared_ptr<QElapsedTimer> clock,
          std::function<void(QWidget*)> body, int stepGeneration) {
    if (stepGeneration != generation)
        return;
    QWidget* top = QApplication::activeModalWidget();
    if (top != nullptr && top != below.data() && top->isVisible()) {
        body(top);
        return;
    }
    if (clock->elapsed() > 5000) {
        ADD_FAILURE() << "No modal dialog showed.";
        return;
    }
    QTimer::singleShot(
        10, [below, clock, body, stepGeneration] { poll(below, clock, body, stepGeneration); });
}

} // namespace

void whenShown(const std::function<void(QWidget*)>& body) {
    QPointer<QWidget> below = QApplication::activeModalWidget();
    auto clock = std::make_shared<QElapsedTimer>();
    clock->start();
    const int stepGeneration = generation;
    QTimer::singleShot(
        10, [below, clock, body, stepGeneration] { poll(below, clock, body, stepGeneration); });
}

void answerMessage(Message* seen, QMessageBox::StandardButton button) {
    whenShown([seen, button](QWidget* widget) {
        auto* box = qobject_cast<QMessageBox*>(widget);
        if (box == nullptr) {
            ADD_FAILURE() << "Expected a message box, got " << widget->metaObject()->className();
            qobject_cast<QDialog*>(widget)->reject();
            return;
        }
        if (seen != nullptr) {
            seen->title = box->windowTitle();
            seen->text = box->text();
            seen->defaultButton = box->defaultButton() != nullptr
                                      ? box->standardButton(box->defaultButton())
                                      : QMessageBox::NoButton;
            seen->shown = true;
        }
        QAbstractButton* answer = box->button(button);
        if (answer == nullptr) {
            ADD_FAILURE() << "The message box has no such button.";
            box->reject();
            return;
        }
        answer->click();
    });
}

void answerInput(const QString& text, bool accept, Question* seen) {
    whenShown([text, accept, seen](QWidget* widget) {
        auto* input = qobject_cast<QInputDialog*>(widget);
        if (input == nullptr) {
            ADD_FAILURE() << "Expected an input dialog, got " << widget->metaObject()->className();
            qobject_cast<QDialog*>(widget)->reject();
            return;
        }
        if (seen != nullptr) {
            seen->title = input->windowTitle();
            seen->label = input->labelText();
            seen->offered = input->textValue();
            seen->shown = true;
        }
        input->setTextValue(text);
        if (accept)
            input->accept();
        else
            input->reject();
    });
}

Watchdog::Watchdog(int seconds) : timer(new QTimer), reported(std::make_shared<bool>(false)) {
    auto clock = std::make_shared<QElapsedTimer>();
    clock->start();
    const qint64 grace = static_cast<qint64>(seconds) * 1000;
    auto flag = reported;
    QObject::connect(timer.get(), &QTimer::timeout, timer.get(), [clock, grace, flag] {
        QWidget* top = QApplication::activeModalWidget();
        if (top == nullptr || clock->elapsed() < grace)
            return;
        if (!*flag) {
            ADD_FAILURE() << "A modal dialog was left open: " << top->metaObject()->className();
            *flag = true;
        }
        // Top first; the ones below go on the next rounds, as their loops come back.
        if (auto* dialog = qobject_cast<QDialog*>(top))
            dialog->reject();
        else
            top->close();
    });
    timer->start(100);
}

Watchdog::~Watchdog() {
    ++generation;
}

} // namespace ModalDialogs
