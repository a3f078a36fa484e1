#include "handhistory/ui/HandHistoryImport.h"

#include "handhistory/HandHistoryPaste.h"
#include "handhistory/HandHistoryScenario.h"
#include "handhistory/HandHistoryText.h"
#include "handhistory/ui/ChooseHandDialog.h"

#include <QApplication>
#include <QClipboard>
#include <QInputDialog>
#include <QMessageBox>

const char* const HandHistoryImport::supportAddress = "support@quorvane.com";

HandHistoryImport::HandHistoryImport(QWidget* parent) : parent(parent) {}

QString HandHistoryImport::parseErrorText() {
    const QString address = QString::fromLatin1(supportAddress);
    return QStringLiteral("Hand History could not be parsed.<br/><br/>Please make sure that you "
                          "use the copy without stats.<br/><br/>If the hand history still cannot "
                          "be parsed, please mail it to ") +
           QStringLiteral("<a href=\"mailto:%1?subject=HandHistory%20Import%20Error&body="
                          "Please%20attach%20the%20hand%20history%20that%20could%20not%20be%20"
                          "imported.\">%1</a>")
               .arg(address);
}

std::optional<Scenario> HandHistoryImport::run(Mode mode) const {
    return run(mode, QApplication::clipboard()->text());
}

std::optional<std::size_t> HandHistoryImport::chooseHand(const HandHistoryPaste& paste) const {
    const std::vector<std::size_t> read = paste.readHands();
    if (read.empty())
        return std::nullopt;
    if (read.size() == 1)
        return read.front();
    ChooseHandDialog dialog(paste, parent);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.chosenHand();
}

std::optional<Scenario> HandHistoryImport::run(Mode mode, const QString& text) const {
    const QByteArray utf8 = text.toUtf8();
    const HandHistoryPaste paste(
        std::string(utf8.constData(), static_cast<std::size_t>(utf8.size())));
    if (paste.readHands().empty()) {
        QMessageBox box(QMessageBox::Warning, QStringLiteral("Parse Error"), parseErrorText(),
                        QMessageBox::Ok, parent);
        box.setTextFormat(Qt::RichText);
        box.setTextInteractionFlags(Qt::TextBrowserInteraction);
        box.exec();
        return std::nullopt;
    }
    const std::optional<std::size_t> chosen = chooseHand(paste);
    if (!chosen)
        return std::nullopt;
    const HandHistoryRecord& hand = paste.hands()[*chosen].record;

    QInputDialog ask(parent);
    ask.setWindowFlags(ask.windowFlags() & ~Qt::WindowContextHelpButtonHint);
    ask.setWindowTitle(QStringLiteral("Name of Scenario"));
    ask.setLabelText(QStringLiteral("How should the the new scenario be named?"));
    ask.setTextValue(QStringLiteral("Board: ") + QString::fromStdString(hand.board));
    if (ask.exec() != QDialog::Accepted)
        return std::nullopt;
    const QString name = ask.textValue();
    if (name.isEmpty()) {
        QMessageBox::warning(parent, QStringLiteral("No Label given"),
                             QStringLiteral("A label for the scenario has to be entered. No lines "
                                            "have been imported."));
        return std::nullopt;
    }

    std::optional<Scenario> scenario =
        HandHistoryScenario::build(hand, name.toStdString(), mode != Mode::BoardAndHeroOnly);
    if (!scenario)
        QMessageBox::warning(parent, QStringLiteral("Parse Error"),
                             QStringLiteral("No hero could be found or determined by preflop "
                                            "actions (no raise preflop?)."));
    return scenario;
}
