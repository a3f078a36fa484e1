#pragma once

#include <rapidxml/rapidxml.hpp>

#include <string>
#include <vector>

// A text of XML elements parsed the way the analysis file is read: RapidXML with its default
// flags, in a buffer of its own that lives as long as this object.
class XmlText {
public:
    explicit XmlText(const std::string& text);

    XmlText(const XmlText&) = delete;
    XmlText& operator=(const XmlText&) = delete;

    // The first element of the text; null when the text is no XML or holds no element.
    const rapidxml::xml_node<char>* firstElement() const { return element; }
    // Why there is no element, to follow "the text": "is no XML: " and the parser's reason,
    // or "holds no element"; empty when there is one.
    const std::string& failure() const { return reason; }

    // The document printed with the printer's default flags (indented with tabs).
    static std::string printed(const rapidxml::xml_document<char>& document);

private:
    std::vector<char> buffer;
    rapidxml::xml_document<char> document;
    const rapidxml::xml_node<char>* element = nullptr;
    std::string reason;
};
