#include "app/Quorvane.h"

#include <QApplication>

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    auto* window = new Quorvane;
    window->show();
    const int exitCode = application.exec();
    delete window;
    return exitCode;
}
