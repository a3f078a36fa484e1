#include "evfe/LineRecord.h"

#include "Range/HandRange.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/TreeRangeNode.h"
#include "evfe/ActionCode.h"
#include "evfe/LineFactory.h"
#include "evfe/LineFile.h"
#include "evfe/NumberText.h"
#include "evfe/Street.h"
#include "evfe/VariantRanges.h"

#include <array>
#include <stdexcept>

namespace {

using Fields = LineRecord::Fields;
using Problems = std::vector<std::string>;

const std::string* fieldText(const Fields& fields, const std::string& key) {
    const auto found = fields.find(key);
    return found == fields.end() ? nullptr : &found->second;
}

// Where a fault lies, for the messages.
struct Place {
    std::string text;
    Problems& problems;

    void report(const std::string& problem) const { LineFile::report(problems, text + problem); }
};

template <typename Value, typename Convert>
void take(const Fields& fields, const std::string& key, Value& target, Convert convert,
          const Place& place) {
    const std::string* text = fieldText(fields, key);
    if (text == nullptr)
        return;
    const auto value = convert(*text);
    if (value)
        target = *value;
    else
        place.report(": " + key + " \"" + *text + "\" is not a number; the default is kept.");
}

void takeFloat(const Fields& fields, const std::string& key, float& target, const Place& place) {
    take(fields, key, target, NumberText::toFloat, place);
}

void takeBool(const Fields& fields, const std::string& key, bool& target, const Place& place) {
    take(fields, key, target, NumberText::toBool, place);
}

void takeText(const Fields& fields, const std::string& key, std::string& target) {
    if (const std::string* text = fieldText(fields, key))
        target = *text;
}

LineVariant bareTree(LineKind kind, const std::string& name, const std::string& forPlayer) {
    switch (kind) {
    case LineKind::CheckFold:
        return LineFactory::checkFold(name, forPlayer);
    case LineKind::CheckCall:
        return LineFactory::checkCall(name, forPlayer);
    case LineKind::CheckRaise:
        return LineFactory::checkRaise(name, forPlayer);
    case LineKind::BetFold:
        return LineFactory::betFold(name, forPlayer);
    case LineKind::BetCall:
        return LineFactory::betCall(name, forPlayer);
    case LineKind::BetShip:
        return LineFactory::betShip(name, forPlayer);
    }
    return LineFactory::checkFold(name, forPlayer);
}

const int kindCount = 6;

// The action codes of the six trees, in vector order.
const std::array<std::vector<ActionCode>, kindCount>& treeCodes() {
    static const std::array<std::vector<ActionCode>, kindCount> codes = [] {
        std::array<std::vector<ActionCode>, kindCount> trees;
        for (int kind = 0; kind < kindCount; ++kind) {
            for (const LineAction& action :
                 bareTree(static_cast<LineKind>(kind), std::string(), "Player1").actions)
                trees[static_cast<std::size_t>(kind)].push_back(action.action);
        }
        return trees;
    }();
    return codes;
}

std::optional<LineKind> kindOfTree(const std::vector<ActionCode>& codes) {
    for (std::size_t kind = 0; kind < treeCodes().size(); ++kind) {
        if (treeCodes()[kind] == codes)
            return static_cast<LineKind>(kind);
    }
    return std::nullopt;
}

// The named line's verbs when its tree is this one; the bare tree otherwise.
LineVariant skeletonOf(LineKind kind, const std::string& lineName, const std::string& name,
                       const std::string& forPlayer) {
    LineVariant named = LineFactory::create(lineName, name, forPlayer);
    if (!named.actions.empty() && named.kind == kind)
        return named;
    return bareTree(kind, name, forPlayer);
}

void readAction(const LineRecord::Action& record, LineAction& action, const Place& place) {
    const Fields& fields = record.fields;
    takeFloat(fields, "equityP1", action.equityP1, place);
    takeFloat(fields, "equityP2", action.equityP2, place);
    takeFloat(fields, "EV_P1", action.EV_P1, place);
    takeFloat(fields, "EV_P2", action.EV_P2, place);
    takeFloat(fields, "deadmoney", action.deadmoney, place);
    take(fields, "rangeCombinations", action.rangeCombinations, NumberText::toUnsigned, place);
    takeFloat(fields, "rangePercentage", action.rangePercentage, place);
    takeFloat(fields, "size", action.size, place);
    takeBool(fields, "firstToAct", action.firstToAct, place);
    takeBool(fields, "needsOwnSize", action.needsOwnSize, place);
    takeFloat(fields, "parentRangePercentage", action.parentRangePercentage, place);
    takeBool(fields, "player1FirstToAct", action.player1FirstToAct, place);
    takeFloat(fields, "player1sEffectiveStackSizeBeforeAction",
              action.player1sEffectiveStackSizeBeforeAction, place);
    takeFloat(fields, "player1sLastInvestmentBeforeAction",
              action.player1sLastInvestmentBeforeAction, place);
    takeFloat(fields, "player2sEffectiveStackSizeBeforeAction",
              action.player2sEffectiveStackSizeBeforeAction, place);
    takeFloat(fields, "player2sLastInvestmentBeforeAction",
              action.player2sLastInvestmentBeforeAction, place);
    takeFloat(fields, "previousMoney", action.previousMoney, place);
    takeText(fields, "addition", action.addition);
    takeText(fields, "verb", action.verb);
    if (const std::string* text = fieldText(fields, "range")) {
        // Exactly the range the file names: no parent cuts it on reading.
        Range::HandRange range;
        Range::HandRangeStringManipulator(range).setFree(*text);
        if (action.range != nullptr)
            action.range->handRange = range;
    }
}

std::optional<LineVariant> buildVariant(const LineRecord::Variant& record,
                                        const std::string& lineName, LineKind lineKind,
                                        const Range::HandRange& player1,
                                        const Range::HandRange& player2, const Place& linePlace) {
    const std::string name = record.name.value_or(std::string());
    const Place place{linePlace.text + ", variant \"" + name + "\"", linePlace.problems};
    if (!record.name)
        place.report(" has no name.");

    std::string forPlayer = "Player1";
    if (const std::string* text = fieldText(record.fields, "forPlayer")) {
        if (*text != "Player1" && *text != "Player2") {
            place.report(": unknown first actor \"" + *text + "\"; the variant is skipped.");
            return std::nullopt;
        }
        forPlayer = *text;
    } else {
        place.report(" names no first actor; Player1 is taken.");
    }

    std::vector<ActionCode> codes;
    for (const LineRecord::Action& action : record.actions) {
        if (!action.code) {
            place.report(": an action without code; the variant is skipped.");
            return std::nullopt;
        }
        try {
            codes.push_back(actionCodeFromText(*action.code));
        } catch (const std::runtime_error& error) {
            place.report(": " + std::string(error.what()) + "; the variant is skipped.");
            return std::nullopt;
        }
    }
    LineKind kind = lineKind;
    const std::string* kindText = fieldText(record.fields, "actionSequence");
    if (kindText != nullptr)
        kind = lineKindFromCode(*kindText);
    const std::optional<LineKind> treeKind = kindOfTree(codes);
    if (!treeKind) {
        place.report(": its actions make no line; the variant is skipped.");
        return std::nullopt;
    }
    if (*treeKind != kind) {
        place.report(": its actions are those of \"" + lineKindToCode(*treeKind) + "\", not of \"" +
                     lineKindToCode(kind) + "\"; read as \"" + lineKindToCode(*treeKind) + "\".");
        kind = *treeKind;
    }

    LineVariant variant = skeletonOf(kind, lineName, name, forPlayer);
    const Fields& fields = record.fields;
    takeFloat(fields, "deadmoney", variant.deadmoney, place);
    takeFloat(fields, "player1sEffectiveStackSize", variant.player1sEffectiveStackSize, place);
    takeFloat(fields, "player1sLastInvestment", variant.player1sLastInvestment, place);
    takeFloat(fields, "player2sEffectiveStackSize", variant.player2sEffectiveStackSize, place);
    takeFloat(fields, "player2sLastInvestment", variant.player2sLastInvestment, place);
    takeFloat(fields, "EV_P1", variant.EV_P1, place);
    takeFloat(fields, "EV_P2", variant.EV_P2, place);
    takeFloat(fields, "FE_P1", variant.FE_P1, place);
    takeFloat(fields, "FE_P2", variant.FE_P2, place);
    VariantRanges::assignFullRanges(variant, player1, player2);
    for (std::size_t i = 0; i < record.actions.size(); ++i) {
        const Place actionPlace{place.text + ", action " + std::to_string(i), place.problems};
        readAction(record.actions[i], variant.actions[i], actionPlace);
    }
    return variant;
}

} // namespace

const std::vector<std::string>& LineRecord::variantFields() {
    static const std::vector<std::string> names = {"deadmoney",
                                                   "player1sEffectiveStackSize",
                                                   "player1sLastInvestment",
                                                   "player2sEffectiveStackSize",
                                                   "player2sLastInvestment",
                                                   "EV_P1",
                                                   "EV_P2",
                                                   "FE_P1",
                                                   "FE_P2",
                                                   "actionSequence",
                                                   "forPlayer"};
    return names;
}

const std::vector<std::string>& LineRecord::actionFields() {
    static const std::vector<std::string> names = {"equityP1",
                                                   "equityP2",
                                                   "EV_P1",
                                                   "EV_P2",
                                                   "deadmoney",
                                                   "rangeCombinations",
                                                   "rangePercentage",
                                                   "size",
                                                   "firstToAct",
                                                   "needsOwnSize",
                                                   "parentRangePercentage",
                                                   "player1FirstToAct",
                                                   "player1sEffectiveStackSizeBeforeAction",
                                                   "player1sLastInvestmentBeforeAction",
                                                   "player2sEffectiveStackSizeBeforeAction",
                                                   "player2sLastInvestmentBeforeAction",
                                                   "previousMoney",
                                                   "range",
                                                   "addition",
                                                   "verb"};
    return names;
}

std::optional<Line> LineRecord::build(const Range::HandRange& player1,
                                      const Range::HandRange& player2, Problems& problems) const {
    if (!name) {
        LineFile::report(problems, "A line without a name is skipped.");
        return std::nullopt;
    }
    Place place{"Line \"" + *name + "\"", problems};
    const std::string* streetText = fieldText(fields, "forStreet");
    if (streetText == nullptr) {
        place.report(" names no street; the line is skipped.");
        return std::nullopt;
    }
    Line line;
    line.name = *name;
    try {
        line.street = static_cast<int>(streetFromText(*streetText));
    } catch (const std::runtime_error& error) {
        place.report(": " + std::string(error.what()) + "; the line is skipped.");
        return std::nullopt;
    }
    place.text += " on the " + *streetText;
    const std::string* kindText = fieldText(fields, "actionSequence");
    const std::optional<LineKind> declared =
        kindText != nullptr ? std::optional<LineKind>(lineKindFromCode(*kindText)) : std::nullopt;
    const LineKind variantDefault =
        declared.value_or(lineKindForName(*name).value_or(LineKind::CheckFold));
    for (const Variant& record : variants) {
        if (std::optional<LineVariant> variant =
                buildVariant(record, *name, variantDefault, player1, player2, place))
            line.variants.push_back(std::move(*variant));
    }
    if (line.variants.empty()) {
        place.report(" has no variant that could be read; the line is skipped.");
        return std::nullopt;
    }
    line.actionSequence = declared.value_or(line.variants.front().kind);
    return line;
}
