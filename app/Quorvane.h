#pragma once

#include <QMainWindow>

// The main window: owns the ranges, the scheduler, the scenarios and all tabs.
class Quorvane : public QMainWindow {
    Q_OBJECT
public:
    explicit Quorvane(QWidget* parent = nullptr);
};
