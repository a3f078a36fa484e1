// quorvane-eval-schemas: the helper that quorvane-eval starts for `hits` (SchemaProtocol.h).
//
// It reads the hand group schemas and the option "Hide Empty Lines in Evaluation Tabs" from
// the user's settings as the program does, evaluates a schema for one range with the
// program's HandGroupSchema, and answers with the rows, their counts, shares and the
// percentage texts that the Board Hits tab would show. It answers requests from standard
// input until that ends; it is not meant to be run by hand.

#include "SchemaProtocol.h"
#include "SchemaRows.h"

#include "handstrength/HandGroupSchema.h"
#include "handstrength/HandGroupSchemaPool.h"
#include "handstrength/HandStrengthNames.h"

#include <QSettings>
#include <QString>

#include <algorithm>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

namespace {

// Read as the board evaluation tables read it: group "optionMenu" with a capital M.
bool hidesEmptyRows() {
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    settings.beginGroup(QStringLiteral("optionMenu"));
    return settings.value(QStringLiteral("removeEmptyLinesFromBoardEvaluationTabs"), true).toBool();
}

// The tab's percentage text of a share.
std::string percentText(float share) {
    return (QString::number(static_cast<double>(share) * 100.0, 'f', 2) + QStringLiteral(" %"))
        .toStdString();
}

std::string knownNames(const HandGroupSchemaPool& pool) {
    std::string names;
    for (const HandGroupSchemaData& schema : pool.schemas())
        names += (names.empty() ? "" : ", ") + ("\"" + schema.name + "\"");
    return names;
}

std::string answer(const HandGroupSchemaPool& pool, bool hides,
                   const std::vector<std::string>& request) {
    if (request.size() != 6 || request[0] != "rows")
        return SchemaProtocol::errorAnswer(2, "quorvane-eval-schemas: not a request");
    const std::string& range = request[1];
    const std::string& board = request[2];
    const std::string& dead = request[3];
    const std::string& name = request[4];
    const bool absolute = request[5] == "1";
    const HandGroupSchemaData* data = pool.find(name);
    if (!data)
        return SchemaProtocol::errorAnswer(1, "no hand group schema is called \"" + name +
                                                  "\"; there are " + knownNames(pool));
    HandGroupSchema schema(nullptr, *data);
    try {
        schema.evaluateOnePlayer(range, board, dead, absolute);
    } catch (const std::exception& error) {
        return SchemaProtocol::errorAnswer(1, error.what());
    }
    SchemaRows rows;
    rows.schema = name;
    rows.hidesEmptyRows = hides;
    for (const HandGroup& group : schema.getGroups()) {
        SchemaRows::Group shown;
        shown.name = group.name;
        shown.customSum =
            !group.rows.empty() && group.rows.front().key == HandGroupSchema::customSumKey();
        for (std::size_t i = 0; i < group.rows.size(); ++i) {
            const HandGroupRow& row = group.rows[i];
            shown.rows.push_back({group.depth(i), handStrengthName(row.key), row.combinations1,
                                  row.percentage1, percentText(row.percentage1)});
        }
        rows.combinations = std::max<std::uint64_t>(rows.combinations, group.evaluations.total);
        rows.groups.push_back(shown);
    }
    return SchemaProtocol::answer(rows);
}

} // namespace

int main() {
    HandGroupSchemaPool pool;
    pool.load();
    const bool hides = hidesEmptyRows();
    std::string line;
    while (std::getline(std::cin, line)) {
        std::cout << answer(pool, hides, SchemaProtocol::fields(line));
        std::cout.flush();
    }
    return 0;
}
