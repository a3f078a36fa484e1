#include "app/BlockedWindow.h"

#include "ui_BlockScreen.h"

BlockedWindow::BlockedWindow(QWidget* parent)
    : QDialog(parent, Qt::FramelessWindowHint), ui(new Ui::BlockScreen) {
    setWindowModality(Qt::NonModal);
    setWindowModality(Qt::ApplicationModal);
    setAttribute(Qt::WA_TranslucentBackground);
    ui->setupUi(this);
}

BlockedWindow::~BlockedWindow() {
    delete ui;
}
