#include "training/EquityTrainingPrompts.h"

#include <QMessageBox>

EquityTrainingPrompts EquityTrainingPrompts::standard() {
    EquityTrainingPrompts prompts;
    prompts.warn = [](QWidget* parent, const QString& title, const QString& text) {
        QMessageBox::warning(parent, title, text);
    };
    prompts.confirmCancel = [](QWidget* parent) {
        return QMessageBox::question(parent, QStringLiteral("Do you really want to cancel?"),
                                     QStringLiteral("Do you really want to cancel this training?"),
                                     QMessageBox::Yes | QMessageBox::No,
                                     QMessageBox::No) == QMessageBox::Yes;
    };
    return prompts;
}
