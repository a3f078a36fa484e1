#pragma once

#include <QDialog>

namespace Ui {
class BlockScreen;
}

// The frameless, application-modal notice that stands over the disabled program while
// "PokerStars.exe" runs. Created and deleted only by watchBlockingProcess.
class BlockedWindow : public QDialog {
    Q_OBJECT
public:
    explicit BlockedWindow(QWidget* parent = nullptr);
    ~BlockedWindow() override;

private:
    Ui::BlockScreen* ui;
};
