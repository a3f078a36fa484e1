#include "app/document/AnalysisFile.h"

#include "Range/HandRange.h"
#include "Range/RangeSerializeError.h"
#include "Range/RangeStringOperations.h"
#include "Range/Tree.h"
#include "Range/TreeNode.h"
#include "Range/TreeSerialization.h"
#include "evfe/LegacyLineReader.h"
#include "evfe/LineFile.h"
#include "quorvane/Version.h"

// The parser's document node leaves its last-child pointer unset until a first child comes,
// and reads it only then; GCC cannot see that when it inlines append_node.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#include <rapidxml/rapidxml.hpp>
#include <rapidxml/rapidxml_print.hpp>
#pragma GCC diagnostic pop

#include <cctype>
#include <istream>
#include <iterator>
#include <limits>
#include <list>
#include <memory>
#include <ostream>
#include <sstream>

namespace {

using Document = rapidxml::xml_document<char>;
using Node = rapidxml::xml_node<char>;

// RapidXML points into the buffers it parsed: the writer keeps every buffer it cloned from
// until the document is printed.
class Writer {
public:
    Node* element(Node& parent, const char* name, const std::string& value = std::string()) {
        Node* node =
            document.allocate_node(rapidxml::node_element, name, copy(value), 0, value.size());
        parent.append_node(node);
        return node;
    }

    void attribute(Node& node, const char* name, const std::string& value) {
        node.append_attribute(document.allocate_attribute(name, copy(value), 0, value.size()));
    }

    // Parses `text` and appends a deep copy of `pick` of its document below `parent`.
    template <typename Pick>
    void appendParsed(Node& parent, const std::string& text, Pick pick) {
        buffers.emplace_back(text.begin(), text.end());
        buffers.back().push_back('\0');
        documents.emplace_back(std::make_unique<Document>());
        Document& source = *documents.back();
        source.parse<0>(buffers.back().data());
        if (const Node* node = pick(source))
            parent.append_node(document.clone_node(node));
    }

    std::string printed() const {
        std::string text;
        rapidxml::print(std::back_inserter(text), document, 0);
        return text;
    }

    Document document;

private:
    const char* copy(const std::string& text) {
        return document.allocate_string(text.c_str(), text.size() + 1);
    }

    std::list<std::vector<char>> buffers;
    std::list<std::unique_ptr<Document>> documents;
};

// The range leaf of a player: the tree file's element of node 0 with its groups below it.
std::string rangeLeafText(const std::vector<Range::NodeMemento>& memento) {
    Range::Tree tree;
    tree.RestoreMemento(memento);
    std::ostringstream text;
    Range::TreeSerialization::write(text, tree, 0);
    return text.str();
}

void appendScenario(Writer& writer, Node& scenarios, const Scenario& scenario) {
    Node* element = writer.element(scenarios, "Scenario");
    writer.attribute(*element, "name", scenario.name);
    for (const auto& [name, memento] : {std::make_pair("Player1", &scenario.player1),
                                        std::make_pair("Player2", &scenario.player2)}) {
        Node* player = writer.element(*element, name);
        if (!memento->empty())
            writer.appendParsed(*player, rangeLeafText(*memento), [](const Document& source) {
                const Node* root = source.first_node();
                return root != nullptr ? root->first_node() : nullptr;
            });
    }
    writer.element(*element, "Board", scenario.board);
    writer.element(*element, "Deadcards", scenario.deadCards);
    Node* lines = writer.element(*element, "EV_FE_Lines");
    LineFile::appendLines(writer.document, *lines, *scenario.lines);
}

// --- Reading ---------------------------------------------------------------------------

std::string nameOf(const Node& node) {
    return std::string(node.name(), node.name_size());
}

std::string valueOf(const Node& node) {
    return std::string(node.value(), node.value_size());
}

std::string printedNode(const Node& node) {
    std::string text;
    rapidxml::print(std::back_inserter(text), node, 0);
    return text;
}

std::string inQuotes(const std::string& text) {
    return "\"" + text + "\"";
}

// The tokens of a range text that are no range text at all (normalize would drop them).
std::vector<std::string> unreadableTokens(const std::string& text) {
    std::vector<std::string> bad;
    std::string token;
    std::istringstream tokens(text);
    while (std::getline(tokens, token, ',')) {
        std::string normal = token;
        Range::normalize(normal);
        bool blank = true;
        for (const char c : token)
            blank = blank && std::isspace(static_cast<unsigned char>(c));
        if (normal.empty() && !blank)
            bad.push_back(token);
    }
    return bad;
}

// A player's range with its groups from the tree file text of its leaf; `where` names it in
// messages.
std::vector<Range::NodeMemento> readRangeLeaf(const std::string& leafText,
                                              const std::string& where) {
    // The tree reader walks the children of the first element: the leaf goes into a root.
    const std::string text = "<Player>" + leafText + "</Player>";
    {
        std::istringstream texts(text);
        for (const auto& [name, rangeText] : Range::TreeSerialization::rangeTexts(texts)) {
            const std::vector<std::string> bad = unreadableTokens(rangeText);
            if (!bad.empty())
                throw AnalysisFileError("The range " + inQuotes(name) + " of " + where +
                                        " cannot be read: " + inQuotes(bad.front()) +
                                        " is no range text.");
        }
    }
    Range::Tree tree;
    std::istringstream stream(text);
    Range::TreeSerialization::readAll(stream, tree);
    if (tree.count() == 0)
        throw AnalysisFileError("The range of " + where + " is missing.");
    if (!tree.node(0)->IsRange())
        throw AnalysisFileError("The range of " + where +
                                " is a folder: Subtrees cannot be created internally yet.");
    std::vector<Range::NodeMemento> memento;
    tree.CreateMemento(memento);
    return memento;
}

// The full range (node 0) of a player's range with its groups.
class FullRange {
public:
    explicit FullRange(const std::vector<Range::NodeMemento>& memento) {
        tree.RestoreMemento(memento);
    }
    const Range::HandRange& get() const {
        static const Range::HandRange empty;
        return tree.count() > 0 && tree.node(0)->IsRange() ? tree.handRange(0) : empty;
    }

private:
    Range::Tree tree;
};

Scenario readScenario(const Node& element, std::vector<std::string>& problems) {
    Scenario scenario;
    const rapidxml::xml_attribute<char>* name = element.first_attribute("name");
    scenario.name = name != nullptr ? std::string(name->value(), name->value_size()) : "";
    const std::string where = "scenario " + inQuotes(scenario.name);
    scenario.player1 = Scenario::emptyRange();
    scenario.player2 = Scenario::emptyRange();
    for (const auto& [player, memento] : {std::make_pair("Player1", &scenario.player1),
                                          std::make_pair("Player2", &scenario.player2)}) {
        if (const Node* playerElement = element.first_node(player)) {
            const Node* leaf = playerElement->first_node();
            if (leaf == nullptr)
                throw AnalysisFileError("The range of " + std::string(player) + " in " + where +
                                        " is missing.");
            *memento = readRangeLeaf(printedNode(*leaf), std::string(player) + " in " + where);
        }
    }
    if (const Node* board = element.first_node("Board"))
        scenario.board = valueOf(*board);
    if (const Node* dead = element.first_node("Deadcards"))
        scenario.deadCards = valueOf(*dead);
    if (const Node* lines = element.first_node("EV_FE_Lines")) {
        const FullRange player1(scenario.player1);
        const FullRange player2(scenario.player2);
        *scenario.lines = LineFile::readLines(*lines, player1.get(), player2.get(), problems);
    }
    return scenario;
}

int selectedIndexOf(const std::string& text) {
    std::size_t used = 0;
    int index = 0;
    try {
        index = std::stoi(text, &used);
    } catch (const std::exception&) {
        used = 0;
    }
    if (text.empty() || used != text.size())
        throw AnalysisFileError("The selected scenario " + inQuotes(text) + " is no number.");
    return index;
}

std::string readAll(std::istream& stream) {
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

} // namespace

namespace AnalysisFile {

std::string scenarioText(const Scenario& scenario) {
    Writer writer;
    Node* list = writer.element(writer.document, "Scenarios");
    appendScenario(writer, *list, scenario);
    std::string text;
    // Printed where it stands in a file: two levels down.
    rapidxml::internal::print_node(std::back_inserter(text), list->first_node(), 0, 2);
    return text;
}

std::string assemble(const std::vector<std::string>& scenarioTexts, int selectedScenario,
                     const std::string& tabState) {
    // The frame is printed with one stand-in element where the scenarios go, so that the
    // result is byte for byte what printing the whole document gives.
    static const char* const standIn = "QuorvaneScenarioTexts";
    Writer writer;
    Node* root = writer.element(writer.document, "QuorvaneAnalysis");
    writer.attribute(*root, "version", Version::fileText());
    writer.element(*root, "selectedScenario", std::to_string(selectedScenario));
    Node* list = writer.element(*root, "Scenarios");
    if (!scenarioTexts.empty())
        writer.element(*list, standIn);
    Node* wrapper = writer.element(*root, "EV_FE_Wrapper");
    if (!tabState.empty())
        writer.appendParsed(*wrapper, tabState,
                            [](const Document& source) { return source.first_node(); });
    std::string frame = writer.printed();
    if (scenarioTexts.empty())
        return frame;
    const std::string line = std::string("\t\t<") + standIn + "/>\n";
    const std::size_t at = frame.find(line);
    std::size_t size = frame.size() - line.size();
    for (const std::string& text : scenarioTexts)
        size += text.size();
    std::string text;
    text.reserve(size);
    text.append(frame, 0, at);
    for (const std::string& scenario : scenarioTexts)
        text += scenario;
    text.append(frame, at + line.size(), std::string::npos);
    return text;
}

std::string write(const std::vector<Scenario>& scenarios, int selectedScenario,
                  const std::string& tabState) {
    std::vector<std::string> texts;
    texts.reserve(scenarios.size());
    for (const Scenario& scenario : scenarios)
        texts.push_back(scenarioText(scenario));
    return assemble(texts, selectedScenario, tabState);
}

Scenario readScenarioText(const std::string& text, std::vector<std::string>& problems) {
    std::vector<char> buffer(text.begin(), text.end());
    buffer.push_back('\0');
    Document document;
    try {
        document.parse<0>(buffer.data());
        const Node* element = document.first_node();
        if (element == nullptr)
            throw AnalysisFileError("A scenario is missing.");
        return readScenario(*element, problems);
    } catch (const AnalysisFileError&) {
        throw;
    } catch (const std::exception& error) {
        throw AnalysisFileError(std::string("A scenario cannot be read: ") + error.what());
    }
}

void write(std::ostream& stream, const std::vector<Scenario>& scenarios, int selectedScenario,
           const std::string& tabState) {
    stream << write(scenarios, selectedScenario, tabState);
}

AnalysisContent read(std::istream& stream) {
    return read(readAll(stream));
}

AnalysisContent read(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n\f\v");
    if (first == std::string::npos)
        throw AnalysisFileError("The file is empty.");
    return text[first] == '<' ? readXml(text) : readLegacy(text);
}

AnalysisContent readXml(const std::string& text) {
    std::vector<char> buffer(text.begin(), text.end());
    buffer.push_back('\0');
    Document document;
    try {
        document.parse<0>(buffer.data());
    } catch (const rapidxml::parse_error& error) {
        throw AnalysisFileError(std::string("The file is no analysis: ") + error.what() + ".");
    }
    const Node* root = document.first_node();
    if (root == nullptr)
        throw AnalysisFileError("The file is no analysis: it holds no element.");
    AnalysisContent content;
    try {
        for (const Node* child = root->first_node(); child != nullptr;
             child = child->next_sibling()) {
            const std::string name = nameOf(*child);
            if (name == "selectedScenario") {
                content.selectedScenario = selectedIndexOf(valueOf(*child));
            } else if (name == "Scenarios") {
                for (const Node* scenario = child->first_node(); scenario != nullptr;
                     scenario = scenario->next_sibling())
                    if (scenario->type() == rapidxml::node_element)
                        content.scenarios.push_back(readScenario(*scenario, content.problems));
            } else if (name == "EV_FE_Wrapper") {
                if (const Node* state = child->first_node())
                    content.tabState = printedNode(*state);
            }
        }
    } catch (const AnalysisFileError&) {
        throw;
    } catch (const rapidxml::parse_error& error) {
        throw AnalysisFileError(std::string("A range cannot be read: ") + error.what() + ".");
    } catch (const std::exception& error) {
        // The tree reader's own failures (RangeSerializeError among them).
        throw AnalysisFileError(std::string("A range cannot be read: ") + error.what());
    }
    if (content.scenarios.empty())
        throw AnalysisFileError("The file holds no scenario.");
    if (content.selectedScenario >= static_cast<int>(content.scenarios.size()))
        content.selectedScenario = -1;
    return content;
}

AnalysisContent readLegacy(const std::string& text) {
    // Earlier versions wrote text files on Windows: the counts and names of the range trees
    // must not keep a carriage return.
    std::string unix;
    unix.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] != '\r' || i + 1 >= text.size() || text[i + 1] != '\n')
            unix += text[i];
    std::istringstream stream(unix);
    AnalysisContent content;
    int count = 0;
    if (!(stream >> count))
        throw AnalysisFileError("The file is no analysis: it starts with neither an element "
                                "nor a number of scenarios.");
    stream.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    const auto cutShort = [](int scenario) {
        return AnalysisFileError("The file ends inside scenario " + std::to_string(scenario + 1) +
                                 ".");
    };
    for (int index = 0; index < count; ++index) {
        Scenario scenario;
        if (!std::getline(stream, scenario.name))
            throw cutShort(index);
        const std::string where = "scenario " + std::to_string(index + 1);
        try {
            for (std::vector<Range::NodeMemento>* memento :
                 {&scenario.player1, &scenario.player2}) {
                Range::Tree tree;
                Range::TreeSerialization::readOldStream(stream, tree);
                tree.CreateMemento(*memento);
            }
        } catch (const Range::Exception::RangeSerializeError&) {
            throw cutShort(index);
        } catch (const std::exception& error) {
            throw AnalysisFileError("A range of " + where + " cannot be read: " + error.what());
        }
        if (!std::getline(stream, scenario.board) || !std::getline(stream, scenario.deadCards))
            throw cutShort(index);
        unsigned int lines = 0;
        if (!(stream >> lines))
            throw cutShort(index);
        stream.get();
        const FullRange player1(scenario.player1);
        const FullRange player2(scenario.player2);
        for (unsigned int line = 0; line < lines && stream; ++line)
            if (std::optional<Line> read =
                    LegacyLineReader::read(stream, player1.get(), player2.get(), content.problems))
                scenario.lines->push_back(std::move(*read));
        if (!stream && index + 1 < count)
            throw cutShort(index + 1);
        content.scenarios.push_back(std::move(scenario));
    }
    if (content.scenarios.empty())
        throw AnalysisFileError("The file holds no scenario.");
    return content;
}

} // namespace AnalysisFile
