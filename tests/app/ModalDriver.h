#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QSet>
#include <QString>
#include <QTimer>

#include <functional>

class QWidget;

// Plays the user in front of modal dialogs: every 20 ms it looks at
// QApplication::activeModalWidget(); a message box it has not seen yet is recorded and
// answered with the next button of the script (the first button when the script is
// empty, and the box counts as unexpected); any other new modal widget, except the ones
// of the classes passed to ignore(), goes to the handler set by onOtherModal(). After
// `limitMs` it rejects every modal widget so that a failing test cannot hang.
class ModalDriver : public QObject {
    Q_OBJECT
public:
    struct SeenBox {
        QString title;
        QString text;
        QMessageBox::StandardButtons buttons;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        Qt::WindowFlags flags;
        bool hasWindowIcon = false;
        bool parentless = false;
    };

    explicit ModalDriver(int limitMs = 20000);

    void press(QMessageBox::StandardButton button) { script.append(button); }
    void ignore(const char* className) { ignoredClasses.insert(QString::fromLatin1(className)); }
    void onOtherModal(std::function<void(QWidget*)> handler) { otherHandler = std::move(handler); }

    const QList<SeenBox>& boxes() const { return seen; }
    int unexpectedBoxes() const { return unexpected; }
    bool timedOut() const { return gaveUp; }

private:
    void poll();

    QTimer timer;
    QElapsedTimer clock;
    int limitMs;
    QList<QMessageBox::StandardButton> script;
    QSet<QString> ignoredClasses;
    std::function<void(QWidget*)> otherHandler;
    QList<SeenBox> seen;
    int unexpected = 0;
    bool gaveUp = false;
};
