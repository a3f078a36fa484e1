#include "evfe/EV_FE_TabState.h"

#include "evfe/LineFile.h"
#include "evfe/NumberText.h"
#include "evfe/Street.h"
#include "evfe/XmlText.h"

#include <rapidxml/rapidxml.hpp>

#include <stdexcept>

namespace {

using Document = rapidxml::xml_document<char>;
using Node = rapidxml::xml_node<char>;

void appendValue(Document& document, Node& parent, const char* name, const std::string& value) {
    const char* text = document.allocate_string(value.c_str(), value.size() + 1);
    parent.append_node(document.allocate_node(rapidxml::node_element, name, text, 0, value.size()));
}

const Node* child(const Node& parent, const char* name) {
    return parent.first_node(name);
}

std::string valueOf(const Node& node) {
    return std::string(node.value(), node.value_size());
}

void problem(std::vector<std::string>& problems, const std::string& text) {
    LineFile::report(problems, "EV/FE page state: " + text);
}

template <typename Value, typename Convert>
std::optional<Value> numberOf(const Node& parent, const char* name, Convert convert,
                              std::vector<std::string>& problems) {
    const Node* node = child(parent, name);
    if (node == nullptr)
        return std::nullopt;
    const std::string text = valueOf(*node);
    const std::optional<Value> value = convert(text);
    if (!value)
        problem(problems, std::string(name) + " \"" + text + "\" is not a number; it is left out.");
    return value;
}

} // namespace

std::string EV_FE_TabState::toText() const {
    Document document;
    Node* element = document.allocate_node(rapidxml::node_element, "EV_FE_Tab");
    document.append_node(element);
    if (rakePercentage)
        appendValue(document, *element, "rakePercentage", NumberText::of(*rakePercentage));
    if (rakeCap)
        appendValue(document, *element, "rakeCap", NumberText::of(*rakeCap));
    if (selectedStreet)
        appendValue(document, *element, "selectedStreet", streetToText(*selectedStreet));
    appendValue(document, *element, "selectedPlayer", NumberText::of(selectedPlayer));
    appendValue(document, *element, "selectedLine", NumberText::of(selectedLine));
    appendValue(document, *element, "selectedVariant", NumberText::of(selectedVariant));
    return XmlText::printed(document);
}

EV_FE_TabState EV_FE_TabState::fromText(const std::string& text,
                                        std::vector<std::string>& problems) {
    EV_FE_TabState state;
    const XmlText xml(text);
    const Node* element = xml.firstElement();
    if (element == nullptr) {
        problem(problems, "the text " + xml.failure() + ".");
        return state;
    }
    state.rakePercentage =
        numberOf<double>(*element, "rakePercentage", NumberText::toDouble, problems);
    state.rakeCap = numberOf<double>(*element, "rakeCap", NumberText::toDouble, problems);
    if (const Node* street = child(*element, "selectedStreet")) {
        try {
            state.selectedStreet = static_cast<int>(streetFromText(valueOf(*street)));
        } catch (const std::runtime_error& error) {
            problem(problems, std::string(error.what()) + "; the street is left out.");
        }
    }
    state.selectedPlayer =
        numberOf<int>(*element, "selectedPlayer", NumberText::toInt, problems).value_or(-1);
    state.selectedLine =
        numberOf<int>(*element, "selectedLine", NumberText::toInt, problems).value_or(-1);
    state.selectedVariant =
        numberOf<int>(*element, "selectedVariant", NumberText::toInt, problems).value_or(-1);
    return state;
}

bool EV_FE_TabState::operator==(const EV_FE_TabState& other) const {
    return rakePercentage == other.rakePercentage && rakeCap == other.rakeCap &&
           selectedStreet == other.selectedStreet && selectedPlayer == other.selectedPlayer &&
           selectedLine == other.selectedLine && selectedVariant == other.selectedVariant;
}
