#include "evfe/LineFile.h"

#include "Range/HandRangeStringReader.h"
#include "Range/TreeRangeNode.h"
#include "evfe/ActionCode.h"
#include "evfe/LineRecord.h"
#include "evfe/NumberText.h"
#include "evfe/Street.h"
#include "evfe/XmlText.h"

#include <rapidxml/rapidxml.hpp>

#include <iostream>

namespace LineFile {
namespace {

using Document = rapidxml::xml_document<char>;
using Node = rapidxml::xml_node<char>;

const char* const problemPrefix = "EV/FE: ";

// --- Writing ----------------------------------------------------------------------------

struct Writer {
    Document& document;

    const char* text(const std::string& value) const {
        return document.allocate_string(value.c_str(), value.size() + 1);
    }

    Node* element(Node& parent, const char* name) const {
        Node* node = document.allocate_node(rapidxml::node_element, name);
        parent.append_node(node);
        return node;
    }

    void value(Node& parent, const char* name, const std::string& value) const {
        Node* node =
            document.allocate_node(rapidxml::node_element, name, text(value), 0, value.size());
        parent.append_node(node);
    }

    void attribute(Node& node, const char* name, const std::string& value) const {
        node.append_attribute(document.allocate_attribute(name, text(value), 0, value.size()));
    }

    void action(Node& parent, const LineAction& action) const {
        Node* node = element(parent, "LineAction");
        attribute(*node, "action", actionCodeToText(action.action));
        value(*node, "equityP1", NumberText::of(action.equityP1));
        value(*node, "equityP2", NumberText::of(action.equityP2));
        value(*node, "EV_P1", NumberText::of(action.EV_P1));
        value(*node, "EV_P2", NumberText::of(action.EV_P2));
        value(*node, "deadmoney", NumberText::of(action.deadmoney));
        value(*node, "rangeCombinations", NumberText::of(action.rangeCombinations));
        value(*node, "rangePercentage", NumberText::of(action.rangePercentage));
        value(*node, "size", NumberText::of(action.size));
        value(*node, "firstToAct", NumberText::of(action.firstToAct));
        value(*node, "needsOwnSize", NumberText::of(action.needsOwnSize));
        value(*node, "parentRangePercentage", NumberText::of(action.parentRangePercentage));
        value(*node, "player1FirstToAct", NumberText::of(action.player1FirstToAct));
        value(*node, "player1sEffectiveStackSizeBeforeAction",
              NumberText::of(action.player1sEffectiveStackSizeBeforeAction));
        value(*node, "player1sLastInvestmentBeforeAction",
              NumberText::of(action.player1sLastInvestmentBeforeAction));
        value(*node, "player2sEffectiveStackSizeBeforeAction",
              NumberText::of(action.player2sEffectiveStackSizeBeforeAction));
        value(*node, "player2sLastInvestmentBeforeAction",
              NumberText::of(action.player2sLastInvestmentBeforeAction));
        value(*node, "previousMoney", NumberText::of(action.previousMoney));
        value(*node, "range",
              action.range != nullptr
                  ? Range::HandRangeStringReader(action.range->handRange).compactText()
                  : std::string());
        value(*node, "addition", action.addition);
        value(*node, "verb", action.verb);
    }

    void variant(Node& parent, const LineVariant& variant) const {
        Node* node = element(parent, "LineVariant");
        attribute(*node, "name", variant.name);
        value(*node, "deadmoney", NumberText::of(variant.deadmoney));
        value(*node, "player1sEffectiveStackSize",
              NumberText::of(variant.player1sEffectiveStackSize));
        value(*node, "player1sLastInvestment", NumberText::of(variant.player1sLastInvestment));
        value(*node, "player2sEffectiveStackSize",
              NumberText::of(variant.player2sEffectiveStackSize));
        value(*node, "player2sLastInvestment", NumberText::of(variant.player2sLastInvestment));
        value(*node, "EV_P1", NumberText::of(variant.EV_P1));
        value(*node, "EV_P2", NumberText::of(variant.EV_P2));
        value(*node, "FE_P1", NumberText::of(variant.FE_P1));
        value(*node, "FE_P2", NumberText::of(variant.FE_P2));
        value(*node, "actionSequence", lineKindToCode(variant.kind));
        value(*node, "forPlayer", variant.forPlayer);
        Node* actions = element(*node, "LineActions");
        for (const LineAction& each : variant.actions)
            action(*actions, each);
    }

    void line(Node& parent, const Line& line) const {
        Node* node = element(parent, "Line");
        attribute(*node, "name", line.name);
        value(*node, "forStreet", streetToText(line.street));
        value(*node, "actionSequence", lineKindToCode(line.actionSequence));
        Node* variants = element(*node, "LineVariants");
        for (const LineVariant& each : line.variants)
            variant(*variants, each);
    }
};

// --- Reading ----------------------------------------------------------------------------

std::string nameOf(const Node& node) {
    return std::string(node.name(), node.name_size());
}

std::string valueOf(const Node& node) {
    return std::string(node.value(), node.value_size());
}

std::optional<std::string> attributeOf(const Node& node, const char* name) {
    const rapidxml::xml_attribute<char>* attribute = node.first_attribute(name);
    if (attribute == nullptr)
        return std::nullopt;
    return std::string(attribute->value(), attribute->value_size());
}

// The text of each element child by name; a repeated name keeps its first value.
LineRecord::Fields fieldsOf(const Node& node) {
    LineRecord::Fields fields;
    for (const Node* child = node.first_node(); child != nullptr; child = child->next_sibling()) {
        if (child->type() == rapidxml::node_element)
            fields.emplace(nameOf(*child), valueOf(*child));
    }
    return fields;
}

LineRecord recordOf(const Node& element) {
    LineRecord record;
    record.name = attributeOf(element, "name");
    record.fields = fieldsOf(element);
    const Node* variants = element.first_node("LineVariants");
    for (const Node* variant = variants != nullptr ? variants->first_node("LineVariant") : nullptr;
         variant != nullptr; variant = variant->next_sibling("LineVariant")) {
        LineRecord::Variant variantRecord;
        variantRecord.name = attributeOf(*variant, "name");
        variantRecord.fields = fieldsOf(*variant);
        const Node* actions = variant->first_node("LineActions");
        for (const Node* action = actions != nullptr ? actions->first_node("LineAction") : nullptr;
             action != nullptr; action = action->next_sibling("LineAction")) {
            LineRecord::Action actionRecord;
            actionRecord.code = attributeOf(*action, "action");
            actionRecord.fields = fieldsOf(*action);
            variantRecord.actions.push_back(std::move(actionRecord));
        }
        record.variants.push_back(std::move(variantRecord));
    }
    return record;
}

// Parses `text` and hands its first element to `use`; text that is no XML is a problem.
template <typename Use>
void withFirstElement(const std::string& text, Problems& problems, Use use) {
    const XmlText xml(text);
    if (xml.firstElement() == nullptr) {
        report(problems, "The text of the lines " + xml.failure() + ".");
        return;
    }
    use(*xml.firstElement());
}

} // namespace

void report(Problems& problems, const std::string& problem) {
    problems.push_back(problem);
    std::cerr << problemPrefix << problem << std::endl;
}

void appendLine(rapidxml::xml_document<char>& document, rapidxml::xml_node<char>& parent,
                const Line& line) {
    Writer{document}.line(parent, line);
}

void appendLines(rapidxml::xml_document<char>& document, rapidxml::xml_node<char>& parent,
                 const LineList& lines) {
    for (const Line& line : lines)
        appendLine(document, parent, line);
}

std::string lineText(const Line& line) {
    Document document;
    appendLine(document, document, line);
    return XmlText::printed(document);
}

std::string linesText(const LineList& lines) {
    Document document;
    Node* element = document.allocate_node(rapidxml::node_element, "EV_FE_Lines");
    document.append_node(element);
    appendLines(document, *element, lines);
    return XmlText::printed(document);
}

std::optional<Line> readLine(const rapidxml::xml_node<char>& element,
                             const Range::HandRange& player1, const Range::HandRange& player2,
                             Problems& problems) {
    return recordOf(element).build(player1, player2, problems);
}

LineList readLines(const rapidxml::xml_node<char>& linesElement, const Range::HandRange& player1,
                   const Range::HandRange& player2, Problems& problems) {
    LineList lines;
    for (const Node* line = linesElement.first_node("Line"); line != nullptr;
         line = line->next_sibling("Line")) {
        if (std::optional<Line> read = readLine(*line, player1, player2, problems))
            lines.push_back(std::move(*read));
    }
    return lines;
}

std::optional<Line> readLineText(const std::string& text, const Range::HandRange& player1,
                                 const Range::HandRange& player2, Problems& problems) {
    std::optional<Line> line;
    withFirstElement(text, problems, [&](const Node& element) {
        line = readLine(element, player1, player2, problems);
    });
    return line;
}

LineList readLinesText(const std::string& text, const Range::HandRange& player1,
                       const Range::HandRange& player2, Problems& problems) {
    LineList lines;
    withFirstElement(text, problems, [&](const Node& element) {
        lines = readLines(element, player1, player2, problems);
    });
    return lines;
}

} // namespace LineFile
