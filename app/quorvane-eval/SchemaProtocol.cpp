#include "SchemaProtocol.h"

#include "SchemaRows.h"

#include <cstdio>

namespace SchemaProtocol {

std::string escape(const std::string& field) {
    std::string result;
    result.reserve(field.size());
    for (const char c : field) {
        switch (c) {
        case '\\':
            result += "\\\\";
            break;
        case '\t':
            result += "\\t";
            break;
        case '\n':
            result += "\\n";
            break;
        case '\r':
            result += "\\r";
            break;
        default:
            result += c;
        }
    }
    return result;
}

std::string unescape(const std::string& field) {
    std::string result;
    result.reserve(field.size());
    for (std::size_t i = 0; i < field.size(); ++i) {
        if (field[i] != '\\' || i + 1 == field.size()) {
            result += field[i];
            continue;
        }
        const char next = field[++i];
        result += next == 't' ? '\t' : next == 'n' ? '\n' : next == 'r' ? '\r' : next;
    }
    return result;
}

std::string line(const std::vector<std::string>& fields) {
    std::string result;
    for (std::size_t i = 0; i < fields.size(); ++i)
        result += (i ? "\t" : "") + escape(fields[i]);
    return result;
}

std::vector<std::string> fields(const std::string& line) {
    std::vector<std::string> result;
    std::size_t start = 0;
    while (true) {
        const std::size_t tab = line.find('\t', start);
        result.push_back(
            unescape(line.substr(start, tab == std::string::npos ? tab : tab - start)));
        if (tab == std::string::npos)
            return result;
        start = tab + 1;
    }
}

std::string answer(const SchemaRows& rows) {
    std::string text = line({"schema", rows.schema, rows.hidesEmptyRows ? "1" : "0",
                             std::to_string(rows.combinations)}) +
                       "\n";
    for (const SchemaRows::Group& group : rows.groups) {
        text += line({"group", group.name, group.customSum ? "1" : "0"}) + "\n";
        for (const SchemaRows::Row& row : group.rows) {
            // Nine significant digits give every float back exactly.
            char share[32];
            std::snprintf(share, sizeof share, "%.9g", static_cast<double>(row.share));
            text += line({"row", std::to_string(row.depth), std::to_string(row.combinations), share,
                          row.percentText, row.name}) +
                    "\n";
        }
    }
    return text + "end\n";
}

std::string errorAnswer(int code, const std::string& message) {
    return line({"error", std::to_string(code), message}) + "\nend\n";
}

} // namespace SchemaProtocol
