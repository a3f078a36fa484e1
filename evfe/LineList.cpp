#include "evfe/LineList.h"

#include "evfe/LineFactory.h"
#include "evfe/Street.h"

namespace {

bool isAsciiLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

char firstCharacter(const std::string& name) {
    return name.empty() ? '\0' : name[0];
}

// The first character behind the "/", or '\0'.
char actionAfterSlash(const std::string& name) {
    const std::string::size_type slash = name.find('/');
    if (slash == std::string::npos || slash + 1 >= name.size())
        return '\0';
    return name[slash + 1];
}

} // namespace

bool lineNameSortsBefore(const std::string& a, const std::string& b) {
    const char first = firstCharacter(a);
    const char second = firstCharacter(b);
    const bool firstLettered = isAsciiLetter(first);
    const bool secondLettered = isAsciiLetter(second);
    if (firstLettered != secondLettered)
        return firstLettered;
    if (first != second) {
        if (firstLettered) {
            if (first == 'C')
                return true;
            if (second == 'C')
                return false;
        }
        return static_cast<unsigned char>(first) < static_cast<unsigned char>(second);
    }
    const char firstAction = actionAfterSlash(a);
    const char secondAction = actionAfterSlash(b);
    if (firstAction == 'F' || secondAction == 'F')
        return firstAction == 'F' && secondAction != 'F';
    return firstAction == 'C' && secondAction == 'S';
}

Line& insertLine(LineList& lines, Line line) {
    auto position = lines.begin();
    for (; position != lines.end(); ++position) {
        if (position->street == line.street && lineNameSortsBefore(line.name, position->name))
            break;
    }
    return *lines.insert(position, std::move(line));
}

Line* findLine(LineList& lines, const std::string& name, int street) {
    for (Line& line : lines) {
        if (line.name == name && line.street == street)
            return &line;
    }
    return nullptr;
}

std::optional<LineKind> lineKindForName(const std::string& name) {
    const std::string::size_type slash = name.find('/');
    if (slash == std::string::npos)
        return std::nullopt;
    const std::string prefix = name.substr(0, slash);
    const std::string action = name.substr(slash + 1);
    if (prefix == "Bet") {
        if (action == "Fold")
            return LineKind::BetFold;
        if (action == "Call")
            return LineKind::BetCall;
        if (action == "Ship")
            return LineKind::BetShip;
    } else if (prefix == "Check") {
        if (action == "Fold")
            return LineKind::CheckFold;
        if (action == "Call")
            return LineKind::CheckCall;
        if (action == "Raise")
            return LineKind::CheckRaise;
    }
    return std::nullopt;
}

Line& addLine(LineList& lines, const std::string& name, Street street,
              const std::string& forPlayer) {
    LineVariant variant = LineFactory::create(name, "Main Variant", forPlayer);
    const int streetNumber = static_cast<int>(street);
    if (Line* existing = findLine(lines, name, streetNumber)) {
        existing->variants.push_back(std::move(variant));
        return *existing;
    }
    Line line;
    line.name = name;
    line.street = streetNumber;
    line.actionSequence = lineKindForName(name).value_or(variant.kind);
    line.variants.push_back(std::move(variant));
    return insertLine(lines, std::move(line));
}
