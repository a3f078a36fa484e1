#pragma once

#include <QMessageBox>
#include <QString>

#include <functional>
#include <memory>

class QTimer;
class QWidget;

// Driving dialogs that run modally (exec) from a test: a step is scheduled before the call
// that opens the dialog and runs once the dialog is up, inside its event loop. Steps nest:
// a step may schedule the next one and then press the button that opens it.
namespace ModalDialogs {

// Runs `body` with the next modal widget that shows on top of the one active now. Fails the
// test when none shows within five seconds.
void whenShown(const std::function<void(QWidget*)>& body);

// What a message box said.
struct Message {
    QString title;
    QString text;
    QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
    bool shown = false;
};

// Answers the next message box with `button`, noting what it said in `seen`.
void answerMessage(Message* seen, QMessageBox::StandardButton button);

// What an input dialog asked.
struct Question {
    QString title;
    QString label;
    QString offered;
    bool shown = false;
};

// Types `text` into the next input dialog and accepts it, or rejects it when `accept` is
// false; notes what it asked in `seen` (may be null).
void answerInput(const QString& text, bool accept = true, Question* seen = nullptr);

// While it lives, a test that leaves a modal dialog open longer than `seconds` fails and the
// dialog is rejected, so that a broken step ends the test instead of hanging it. Steps that
// are still waiting when it ends are dropped.
class Watchdog {
public:
    explicit Watchdog(int seconds = 20);
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

private:
    std::unique_ptr<QTimer> timer;
    std::shared_ptr<bool> reported;
};

} // namespace ModalDialogs
