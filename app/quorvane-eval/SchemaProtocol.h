#pragma once

#include <string>
#include <vector>

struct SchemaRows;

// The lines between quorvane-eval and its helper quorvane-eval-schemas, which reads the hand
// group schemas from the user's settings and evaluates them with the program's own schema
// code (it needs Qt; quorvane-eval does not load it, so that every other command starts
// without it). One request line, one answer of several lines:
//
//   request  rows TAB technical range TAB board TAB dead TAB schema name TAB absolute (0/1)
//   answer   error TAB exit code TAB message            (then end)
//            schema TAB name TAB hides empty rows (0/1) TAB combinations
//            group TAB name TAB custom sum (0/1)        (for each group)
//            row TAB depth TAB combinations TAB share TAB percentage text TAB name
//            end
//
// Fields are escaped so that no field holds a tab or a line break.
namespace SchemaProtocol {

std::string escape(const std::string& field);
std::string unescape(const std::string& field);

// One line (without its line break) of escaped fields.
std::string line(const std::vector<std::string>& fields);
// The unescaped fields of a line.
std::vector<std::string> fields(const std::string& line);

// The answer lines of `rows`, each ending in a line break, closed by "end".
std::string answer(const SchemaRows& rows);
std::string errorAnswer(int code, const std::string& message);

} // namespace SchemaProtocol
