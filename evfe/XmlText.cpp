#include "evfe/XmlText.h"

#include <rapidxml/rapidxml_print.hpp>

#include <iterator>

XmlText::XmlText(const std::string& text) : buffer(text.begin(), text.end()) {
    buffer.push_back('\0');
    try {
        document.parse<0>(buffer.data());
    } catch (const rapidxml::parse_error& error) {
        reason = std::string("is no XML: ") + error.what();
        return;
    }
    element = document.first_node();
    if (element == nullptr)
        reason = "holds no element";
}

std::string XmlText::printed(const rapidxml::xml_document<char>& document) {
    std::string text;
    rapidxml::print(std::back_inserter(text), document, 0);
    return text;
}
