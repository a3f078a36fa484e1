#pragma once

#include "app/document/Scenario.h"

#include <QString>

#include <optional>
#include <vector>

class HandHistoryPaste;
class QWidget;

// The import of a played hand from the clipboard: reads every hand of the text, lets the
// player choose one when there are several, asks for the scenario's name and answers the
// new scenario, or nothing when the hand could not be read, the player cancelled or no hero
// could be found; every such end is told to the player in a message box.
class HandHistoryImport {
public:
    enum class Mode {
        // The board and the hero's hand only.
        BoardAndHeroOnly,
        // With the EV/FE lines of every bet and raise.
        Lines,
        // The same for tournament hands, where amounts are chips.
        TourneyLines
    };

    // The address the "could not be parsed" message links to.
    static const char* const supportAddress;

    explicit HandHistoryImport(QWidget* parent);

    std::optional<Scenario> run(Mode mode) const;
    // The same for a given text instead of the clipboard's.
    std::optional<Scenario> run(Mode mode, const QString& text) const;

    // The text of the "Parse Error" box of a hand that could not be read.
    static QString parseErrorText();

private:
    // The hand to import; nothing when none was read or the choice was cancelled.
    std::optional<std::size_t> chooseHand(const HandHistoryPaste& paste) const;

    QWidget* parent;
};
