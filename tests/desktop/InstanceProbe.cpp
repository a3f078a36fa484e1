// A program that takes part in the single instance like quorvane does, for the tests:
//
//   desktop_instance_probe <socket> <hold ms> [files...]
//
// Prints its role. The first one listens for <hold ms>, printing "received:" and each file
// handed to it, one per line, then ends with 0. The others end with 10 (handed over), 11
// (not taken) or 12 (alone).

#include "app/SingleInstance.h"

#include <QCoreApplication>
#include <QTimer>

#include <cstdio>

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 3) {
        std::fprintf(stderr, "usage: desktop_instance_probe <socket> <hold ms> [files...]\n");
        return 2;
    }
    SingleInstance instance(arguments[1]);
    switch (instance.start(arguments.mid(3))) {
    case SingleInstance::Role::HandedOver:
        std::printf("handed over\n");
        return 10;
    case SingleInstance::Role::NotTaken:
        std::printf("not taken: %s\n", qPrintable(instance.problem()));
        return 11;
    case SingleInstance::Role::Alone:
        std::printf("alone: %s\n", qPrintable(instance.problem()));
        return 12;
    case SingleInstance::Role::First:
        break;
    }
    std::printf("first\n");
    std::fflush(stdout);
    QObject::connect(&instance, &SingleInstance::filesReceived, &instance,
                     [](const QStringList& files) {
                         std::printf("received:%d\n", static_cast<int>(files.size()));
                         for (const QString& file : files)
                             std::printf("%s\n", qPrintable(file));
                         std::fflush(stdout);
                     });
    QTimer::singleShot(arguments[2].toInt(), &application, &QCoreApplication::quit);
    return application.exec();
}
