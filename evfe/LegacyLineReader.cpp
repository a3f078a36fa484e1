#include "evfe/LegacyLineReader.h"

#include "evfe/LineFile.h"
#include "evfe/LineRecord.h"
#include "evfe/NumberText.h"

#include <algorithm>
#include <istream>

namespace LegacyLineReader {
namespace {

// The most variants and actions a count may claim; anything above is no count of a line.
const std::uint32_t mostVariants = 100000;
const std::uint32_t mostActions = 5;

// Reads the next text line, without its line end; false at the end of the stream.
bool nextLine(std::istream& stream, std::string& line) {
    if (!std::getline(stream, line))
        return false;
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    return true;
}

// Reads the named fields, one line each.
bool readFields(std::istream& stream, const std::vector<std::string>& names,
                LineRecord::Fields& fields) {
    std::string text;
    for (const std::string& name : names) {
        if (!nextLine(stream, text))
            return false;
        fields[name] = text;
    }
    return true;
}

bool readCount(std::istream& stream, std::uint32_t most, std::uint32_t& count,
               const std::string& what, const std::string& place,
               std::vector<std::string>& problems) {
    std::string text;
    if (!nextLine(stream, text))
        return false;
    const std::optional<std::uint32_t> value = NumberText::toUnsigned(text);
    if (!value || *value > most) {
        LineFile::report(problems, place + ": the number of " + what + " \"" + text +
                                       "\" is not a count; the line is lost.");
        stream.setstate(std::ios::failbit);
        return false;
    }
    count = *value;
    return true;
}

bool readVariant(std::istream& stream, LineRecord::Variant& variant, const std::string& place,
                 std::vector<std::string>& problems) {
    std::string text;
    if (!nextLine(stream, text))
        return false;
    variant.name = text;
    if (!nextLine(stream, text))
        return false;
    variant.fields["forPlayer"] = text;
    std::vector<std::string> numbers = LineRecord::variantFields();
    // The first actor comes before the numbers here.
    numbers.erase(std::find(numbers.begin(), numbers.end(), "forPlayer"));
    if (!readFields(stream, numbers, variant.fields))
        return false;
    std::uint32_t actions = 0;
    if (!readCount(stream, mostActions, actions, "actions", place, problems))
        return false;
    for (std::uint32_t i = 0; i < actions; ++i) {
        LineRecord::Action action;
        if (!nextLine(stream, text))
            return false;
        action.code = text;
        if (!readFields(stream, LineRecord::actionFields(), action.fields))
            return false;
        variant.actions.push_back(std::move(action));
    }
    return true;
}

} // namespace

std::optional<Line> read(std::istream& stream, const Range::HandRange& player1,
                         const Range::HandRange& player2, std::vector<std::string>& problems) {
    LineRecord record;
    std::string text;
    const auto cutShort = [&](const std::string& place) {
        LineFile::report(problems, place + " ends before the line does; the line is lost.");
        stream.setstate(std::ios::failbit);
        return std::nullopt;
    };
    if (!nextLine(stream, text))
        return cutShort("The legacy lines");
    record.name = text;
    const std::string place = "Legacy line \"" + text + "\"";
    if (!readFields(stream, {"forStreet", "actionSequence"}, record.fields))
        return cutShort(place);
    std::uint32_t variants = 0;
    if (!readCount(stream, mostVariants, variants, "variants", place, problems))
        return stream.eof() ? cutShort(place) : std::nullopt;
    for (std::uint32_t i = 0; i < variants; ++i) {
        LineRecord::Variant variant;
        if (!readVariant(stream, variant, place, problems))
            return stream.eof() ? cutShort(place) : std::nullopt;
        record.variants.push_back(std::move(variant));
    }
    return record.build(player1, player2, problems);
}

} // namespace LegacyLineReader
