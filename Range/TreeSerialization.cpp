#include "Range/TreeSerialization.h"

#include "Range/HandRangeStringManipulator.h"
#include "Range/RangeSerializeError.h"
#include "Range/Tree.h"
#include "Range/TreeFolderNode.h"
#include "Range/TreeRangeNode.h"
#include "quorvane/Version.h"

#include <rapidxml/rapidxml.hpp>
#include <rapidxml/rapidxml_print.hpp>

#include <algorithm>
#include <cstring>
#include <istream>
#include <iterator>
#include <limits>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

namespace Range {
namespace TreeSerialization {
namespace {

using Document = rapidxml::xml_document<char>;
using XmlNode = rapidxml::xml_node<char>;
using XmlAttribute = rapidxml::xml_attribute<char>;

constexpr unsigned int noNode = Tree::noNode;

// RapidXML parses elements recursively. Range trees are a few levels deep; a file nested far
// deeper than any tree is refused before it can exhaust the stack.
constexpr int maximumNesting = 1000;

const char* copy(Document& document, const std::string& text) {
    return document.allocate_string(text.c_str(), text.size() + 1);
}

void addAttribute(Document& document, XmlNode* element, const char* name,
                  const std::string& value) {
    element->append_attribute(
        document.allocate_attribute(name, copy(document, value), 0, value.size()));
}

std::string rgbText(const GroupColor::Rgb& rgb) {
    return std::to_string(rgb.red) + "," + std::to_string(rgb.green) + "," +
           std::to_string(rgb.blue);
}

XmlNode* elementOf(Document& document, const TreeNode& node) {
    if (node.IsFolder()) {
        XmlNode* element = document.allocate_node(rapidxml::node_element, "folder");
        addAttribute(document, element, "name", static_cast<const TreeFolderNode&>(node).name);
        return element;
    }
    const auto& range = static_cast<const TreeRangeNode&>(node);
    XmlNode* element = document.allocate_node(rapidxml::node_element, "range");
    addAttribute(document, element, "name", range.name);
    addAttribute(document, element, "text", HandRangeStringReader(range.handRange).compactText());
    addAttribute(document, element, "usesColor", range.color.usesColor ? "true" : "false");
    if (range.color.usesColor) {
        addAttribute(document, element, "colorFrom", rgbText(range.color.colorFrom));
        addAttribute(document, element, "colorTo", rgbText(range.color.colorTo));
    }
    addAttribute(document, element, "exclusive", range.exclusive ? "true" : "false");
    if (range.exclusive)
        addAttribute(document, element, "insertMode",
                     range.insertMode() == TreeRangeNode::Block ? "block" : "overwrite");
    return element;
}

// --- Reading ----------------------------------------------------------------------------

// What one element says about a node, its strings copied out of the parser's buffer.
struct NodeDescription {
    bool isFolder = false;
    std::string name;
    std::string text;
    GroupColor color;
    bool exclusive = false;
    bool exclusiveGiven = false;
    unsigned int insertMode = TreeRangeNode::Overwrite;
};

std::string valueOf(const XmlAttribute* attribute) {
    return std::string(attribute->value(), attribute->value_size());
}

bool hasName(const XmlAttribute* attribute, const char* name) {
    return attribute->name_size() == std::strlen(name) &&
           std::memcmp(attribute->name(), name, attribute->name_size()) == 0;
}

// Three numbers with one separator character between them; a channel that is no number
// stops the read, and it and the channels after it stay 0.
GroupColor::Rgb readRgb(const std::string& text) {
    GroupColor::Rgb rgb;
    std::istringstream stream(text);
    int red = 0, green = 0, blue = 0;
    if (stream >> red) {
        rgb.red = red;
        stream.ignore(1);
        if (stream >> green) {
            rgb.green = green;
            stream.ignore(1);
            if (stream >> blue)
                rgb.blue = blue;
        }
    }
    return rgb;
}

NodeDescription describe(const XmlNode* element) {
    NodeDescription description;
    if (element->name_size() == 6 && std::memcmp(element->name(), "folder", 6) == 0) {
        description.isFolder = true;
        if (const XmlAttribute* first = element->first_attribute())
            description.name = valueOf(first);
        return description;
    }
    for (const XmlAttribute* attribute = element->first_attribute(); attribute != nullptr;
         attribute = attribute->next_attribute()) {
        const std::string value = valueOf(attribute);
        if (hasName(attribute, "name")) {
            description.name = value;
        } else if (hasName(attribute, "text")) {
            description.text = value;
        } else if (hasName(attribute, "usesColor")) {
            description.color.usesColor = value == "true";
        } else if (hasName(attribute, "exclusive")) {
            description.exclusive = value == "true";
            description.exclusiveGiven = true;
        } else if (hasName(attribute, "insertMode")) {
            description.insertMode =
                value == "overwrite" ? TreeRangeNode::Overwrite : TreeRangeNode::Block;
        } else if (hasName(attribute, "colorFrom")) {
            description.color.colorFrom = readRgb(value);
        } else if (hasName(attribute, "colorTo")) {
            description.color.colorTo = readRgb(value);
        }
    }
    return description;
}

bool isElement(const XmlNode* node) {
    return node->type() == rapidxml::node_element;
}

void addChildren(Tree& tree, const XmlNode* element, unsigned int parent);

// Adds the element (and its children) below `parent`; `parentIsFolder` is true at top level.
void addElement(Tree& tree, const XmlNode* element, unsigned int parent, bool parentIsFolder,
                unsigned int position) {
    const NodeDescription description = describe(element);
    unsigned int added;
    if (description.isFolder) {
        added = tree.addFolder(parent, description.name, position)->index;
    } else {
        const bool exclusive = description.exclusiveGiven ? description.exclusive : !parentIsFolder;
        TreeRangeNode* range =
            exclusive ? tree.addExclusiveRange(parent, description.name, description.insertMode,
                                               false, description.color, position)
                      : tree.addRange(parent, description.name, false, description.color, position);
        HandRangeStringManipulator(range->handRange).setFree(description.text);
        added = range->index;
    }
    addChildren(tree, element, added);
}

void addChildren(Tree& tree, const XmlNode* element, unsigned int parent) {
    const bool parentIsFolder = tree.node(parent)->IsFolder();
    for (const XmlNode* child = element->first_node(); child != nullptr;
         child = child->next_sibling())
        if (isElement(child))
            addElement(tree, child, parent, parentIsFolder, noNode);
}

// A rough count of open elements, erring on the side of more: every `<` that starts a name
// opens one, `</` and `/>` close one. Text that does not begin like a document (after a byte
// order mark and white space) is left to the parser, which refuses it at once; the parser
// also stops at the first zero byte.
bool nestedTooDeeply(const std::vector<char>& buffer) {
    std::size_t start = 0;
    if (buffer.size() >= 3 && buffer[0] == '\xEF' && buffer[1] == '\xBB' && buffer[2] == '\xBF')
        start = 3;
    while (start < buffer.size() && (buffer[start] == ' ' || buffer[start] == '\t' ||
                                     buffer[start] == '\r' || buffer[start] == '\n'))
        ++start;
    if (start >= buffer.size() || buffer[start] != '<')
        return false;
    int depth = 0;
    for (std::size_t i = start; i + 1 < buffer.size() && buffer[i] != '\0'; ++i) {
        const char current = buffer[i];
        const char next = buffer[i + 1];
        if (current == '<' && next == '/')
            --depth;
        else if (current == '/' && next == '>')
            --depth;
        else if (current == '<' && next != '!' && next != '?' && next != '\0')
            ++depth;
        if (depth > maximumNesting)
            return true;
    }
    return false;
}

// Holds the parsed document of a whole stream; the tree copies all strings out of it.
class ParsedStream {
public:
    explicit ParsedStream(std::istream& stream)
        : buffer(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()) {
        if (buffer.empty())
            throw Exception::RangeSerializeError("File to read is not existing or empty.");
        buffer.push_back('\0');
        if (nestedTooDeeply(buffer))
            throw Exception::RangeSerializeError("File is nested too deeply to be a range tree.");
        document.parse<0>(buffer.data());
    }

    // The elements below the document's first element (whatever its name).
    std::vector<const XmlNode*> topLevelElements() const {
        std::vector<const XmlNode*> elements;
        const XmlNode* root = document.first_node();
        if (root == nullptr)
            return elements;
        for (const XmlNode* child = root->first_node(); child != nullptr;
             child = child->next_sibling())
            if (isElement(child))
                elements.push_back(child);
        return elements;
    }

private:
    std::vector<char> buffer;
    Document document;
};

void requireStream(const std::istream& stream) {
    if (stream.fail())
        throw Exception::RangeSerializeError("Old tree stream ended early.");
}

} // namespace

void write(std::ostream& stream, const Tree& tree, unsigned int index) {
    if (index != noNode) {
        tree.node(index);
        writeNodes(stream, tree, {index});
    } else {
        writeNodes(stream, tree, tree.topLevelNodes());
    }
}

void writeNodes(std::ostream& stream, const Tree& tree, const std::vector<unsigned int>& nodes) {
    Document document;
    XmlNode* root = document.allocate_node(rapidxml::node_element, "QuorvaneTree");
    addAttribute(document, root, "version", Version::fileText());
    document.append_node(root);

    // Breadth first from the starting nodes; each node's element, made when it is reached
    // (only the nodes written cost their range text), goes into the element of the node
    // that listed it. An element is attached once even when parent links are inconsistent.
    struct Entry {
        unsigned int index;
        XmlNode* into;
    };
    std::vector<Entry> work;
    for (unsigned int top : nodes)
        work.push_back({top, root});
    std::vector<bool> attached(tree.count(), false);
    for (std::size_t next = 0; next < work.size(); ++next) {
        const Entry entry = work[next];
        if (entry.index >= tree.count() || attached[entry.index])
            continue;
        attached[entry.index] = true;
        XmlNode* element = elementOf(document, *tree.node(entry.index));
        entry.into->append_node(element);
        for (unsigned int child : tree.node(entry.index)->children)
            work.push_back({child, element});
    }
    rapidxml::print(std::ostream_iterator<char>(stream), document, 0);
}

void readAll(std::istream& stream, Tree& tree) {
    const ParsedStream parsed(stream);
    for (const XmlNode* element : parsed.topLevelElements())
        addElement(tree, element, noNode, true, noNode);
}

void readInto(std::istream& stream, Tree& tree, unsigned int index, unsigned int position) {
    const bool parentIsFolder = tree.node(index)->IsFolder();
    const ParsedStream parsed(stream);
    for (const XmlNode* element : parsed.topLevelElements()) {
        addElement(tree, element, index, parentIsFolder, position);
        if (position != noNode)
            ++position;
    }
}

void readOver(std::istream& stream, Tree& tree, unsigned int index) {
    TreeNode* target = tree.node(index);
    const ParsedStream parsed(stream);
    const std::vector<const XmlNode*> elements = parsed.topLevelElements();
    if (elements.empty())
        return;
    const XmlNode* element = elements.front();
    const NodeDescription description = describe(element);
    if (description.isFolder != target->IsFolder())
        throw Exception::RangeSerializeError(
            "Node to overwrite is of other type (range/folder) than read node.");
    if (description.isFolder) {
        static_cast<TreeFolderNode*>(target)->name = description.name;
    } else {
        auto* range = static_cast<TreeRangeNode*>(target);
        range->color = description.color;
        range->name = description.name;
        HandRangeStringManipulator(range->handRange).setFree(description.text);
    }
    addChildren(tree, element, index);
}

std::vector<std::pair<std::string, std::string>> rangeTexts(std::istream& stream) {
    const ParsedStream parsed(stream);
    std::vector<std::pair<std::string, std::string>> texts;
    std::vector<const XmlNode*> work = parsed.topLevelElements();
    // Depth first in document order: the work list is a stack, children pushed last first.
    std::reverse(work.begin(), work.end());
    while (!work.empty()) {
        const XmlNode* element = work.back();
        work.pop_back();
        const NodeDescription description = describe(element);
        if (!description.isFolder)
            texts.emplace_back(description.name, description.text);
        std::vector<const XmlNode*> children;
        for (const XmlNode* child = element->first_node(); child != nullptr;
             child = child->next_sibling())
            if (isElement(child))
                children.push_back(child);
        work.insert(work.end(), children.rbegin(), children.rend());
    }
    return texts;
}

void readOldStream(std::istream& stream, Tree& tree) {
    tree.clear();
    std::string text;
    std::getline(stream, text, '\0');
    requireStream(stream);
    TreeRangeNode* full = tree.addRange(noNode, "Full Range", false, GroupColor(), noNode);
    HandRangeStringManipulator(full->handRange).set(text);

    unsigned int groups = 0;
    stream >> groups;
    requireStream(stream);
    stream.ignore(1);
    // Each group takes a colour of its own, so an impossible count ends at the 17th with
    // "All colors in use.".
    for (unsigned int i = 0; i < groups; ++i)
        tree.addExclusiveRange(0, "", TreeRangeNode::Block, true, GroupColor(), noNode);

    for (unsigned int i = 0; i < groups; ++i) {
        TreeRangeNode* group = tree.rangeNode(i + 1);
        std::string name;
        std::getline(stream, name, '\0');
        std::getline(stream, text, '\0');
        requireStream(stream);
        group->name = name;
        unsigned int parent = 0;
        stream >> parent;
        requireStream(stream);
        stream.ignore(1);
        // Earlier versions wrote the group's parent but read it back as the group's own
        // index. Such a group is its own parent, so its filter lets nothing in.
        if (parent != 0xFFFFFFFF)
            group->parent = i + 1;
        HandRangeStringManipulator(group->handRange).set(text);
    }
}

} // namespace TreeSerialization
} // namespace Range
