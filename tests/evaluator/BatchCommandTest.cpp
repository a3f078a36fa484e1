// quorvane-eval batch as scripts run it: 1,000 generated queries of every command, good and
// bad, answered by one batch process and by one process each; and the same batch with --json,
// parsed and checked against the text answers.

#include "CliRun.h"
#include "JsonValue.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

const std::vector<std::string> rangeTexts = {
    "AA",          "KK",        "AhAs",        "KdKc",      "QQ+,AKs",   "JJ-22,AQs+",
    "TT+,AKs,AKo", "AKs",       "T9s,98s,87s", "KQ",        "77,88,99",  "A5s-A2s",
    "AXs",         "QQ,KQs",    "22+",         "ATs+,KJs+", "AdKd,AcKc", "JTs,QJo",
    "55-22",       "K9s+,Q9s+", "aks, qq",     "AhKh,7c7d", "XxXx",      "88+,AJs+,KQo"};

const char ranks[] = "23456789TJQKA";
const char suits[] = "dhsc";

class QueryMaker {
public:
    explicit QueryMaker(unsigned seed) : random(seed) {}

    std::string next() {
        const int kind = int(random() % 100);
        if (kind < 40)
            return equity();
        if (kind < 62)
            return range();
        if (kind < 82)
            return hits();
        return bad();
    }

private:
    std::string pick(const std::vector<std::string>& from) { return from[random() % from.size()]; }

    std::string quoted(const std::string& text) { return "'" + text + "'"; }

    // `count` distinct cards none of which is in `used` (two-character texts).
    std::string cards(int count, std::string& used) {
        std::string text;
        while (count > 0) {
            const std::string card{ranks[random() % 13], suits[random() % 4]};
            if (used.find(card) != std::string::npos && used.find(card) % 2 == 0)
                continue;
            used += card;
            text += card;
            --count;
        }
        return text;
    }

    std::string boardAndDead(bool needBoard) {
        std::string used;
        const int boardCards[] = {0, 3, 4, 5};
        const int n = needBoard ? boardCards[1 + random() % 3] : boardCards[random() % 4];
        std::string text;
        if (n > 0)
            text += " --board " + cards(n, used);
        if (random() % 4 == 0)
            text += " --dead " + cards(1 + int(random() % 2), used);
        return text;
    }

    std::string equity() {
        std::string q = "equity " + quoted(pick(rangeTexts)) + " " + quoted(pick(rangeTexts));
        // The full range preflop with dead cards would only make the test slow.
        const bool full = q.find("XxXx") != std::string::npos;
        q += boardAndDead(full);
        if (random() % 8 == 0)
            q += " --by-hand";
        return q;
    }

    std::string range() {
        std::string q = "range " + quoted(pick(rangeTexts));
        if (random() % 3 == 0)
            q += " " + quoted(pick(rangeTexts));
        return q;
    }

    std::string hits() {
        std::string q = "hits " + quoted(pick(rangeTexts)) + boardAndDead(true);
        const int option = int(random() % 6);
        if (option == 0)
            q += " --absolute";
        else if (option == 1)
            q += " --all-rows";
        else if (option == 2)
            q += " --features";
        else if (option == 3)
            q += " --schema Standard";
        return q;
    }

    std::string bad() {
        switch (random() % 9) {
        case 0:
            return "equity 'AA,KQx' KK";
        case 1:
            return "equity AA KK --board AhKd2x";
        case 2:
            return "equity AA KK --board AhKd2c --dead Kd";
        case 3:
            return "equity AA";
        case 4:
            return "range 'AKs,xyz'";
        case 5:
            return "hits AA --board Ks7h";
        case 6:
            return "hits AA --board Ks7h2d --schema 'No Such Schema'";
        case 7:
            return "hits AA --board Ks7h2d --flop";
        default:
            return "equities AA KK";
        }
    }

    std::mt19937 random;
};

std::vector<std::string> makeQueries(int count, unsigned seed) {
    QueryMaker maker(seed);
    std::vector<std::string> queries;
    for (int i = 0; i < count; ++i)
        queries.push_back(maker.next());
    return queries;
}

std::string writeQueries(const std::vector<std::string>& queries) {
    std::string path = "/tmp/quorvane-batch-XXXXXX";
    const int fd = mkstemp(path.data());
    if (fd >= 0)
        close(fd);
    std::ofstream file(path);
    file << "# generated queries\n\n";
    for (const std::string& query : queries)
        file << query << "\n";
    return path;
}

// What batch answers for a query that a single call answered with `run`.
std::string expectedLine(const CliRun& run) {
    std::string text = run.exitCode == 0 ? run.out : (run.err.empty() ? run.out : run.err);
    while (!text.empty() && text.back() == '\n')
        text.pop_back();
    for (char& c : text)
        if (c == '\n')
            c = '\t';
    return run.exitCode == 0 ? text : "error\t" + text;
}

// The text answer's "name value" fields (equity) as a map.
std::vector<std::string> fieldsOf(const std::string& line) {
    std::vector<std::string> fields;
    std::istringstream in(line);
    std::string field;
    while (std::getline(in, field, '\t'))
        fields.push_back(field);
    return fields;
}

std::string valueOf(const std::vector<std::string>& fields, const std::string& name) {
    for (const std::string& field : fields)
        if (field.rfind(name + " ", 0) == 0)
            return field.substr(name.size() + 1);
    return "(none)";
}

// "  Pair: 30 (65.22 %)" rows and "name: count" features from a hits text answer, as
// "depth|name|count|percent"; group titles as "group|name".
std::vector<std::string> hitsRowsOfText(const std::vector<std::string>& fields) {
    std::vector<std::string> rows;
    for (std::size_t i = 1; i < fields.size(); ++i) {
        const std::string& f = fields[i];
        const std::size_t colon = f.rfind(": ");
        if (colon == std::string::npos) {
            rows.push_back("group|" + f);
            continue;
        }
        const std::size_t indent = f.find_first_not_of(' ');
        std::string rest = f.substr(colon + 2);
        const std::size_t open = rest.find(" (");
        const std::string count = rest.substr(0, open);
        const std::string percent =
            open == std::string::npos ? "" : rest.substr(open + 2, rest.size() - open - 3);
        rows.push_back(std::to_string(indent) + "|" + f.substr(indent, colon - indent) + "|" +
                       count + "|" + percent);
    }
    return rows;
}

void hitsRowsOfJson(const JsonValue& rows, unsigned depth, std::vector<std::string>& out) {
    for (const JsonValue& row : rows.items) {
        out.push_back(std::to_string(2 + 2 * depth) + "|" + row["name"].text + "|" +
                      row["combinations"].text + "|" + row["percent"].text);
        if (row.has("rows"))
            hitsRowsOfJson(row["rows"], depth + 1, out);
    }
}

} // namespace

TEST(BatchCommand, AnswersEqualTheSingleCallsLineForLine) {
    const std::vector<std::string> queries = makeQueries(1000, 20261125);
    const std::string path = writeQueries(queries);
    const CliRun batch = runCli("batch '" + path + "'");
    const std::vector<std::string> answers = linesOf(batch.out);
    ASSERT_EQ(answers.size(), queries.size()) << batch.err;

    int failed = 0;
    for (std::size_t i = 0; i < queries.size(); ++i) {
        SCOPED_TRACE("query " + std::to_string(i + 1) + ": " + queries[i]);
        const CliRun single = runCli(queries[i]);
        failed += single.exitCode != 0;
        EXPECT_EQ(withoutTimes(answers[i]), withoutTimes(expectedLine(single)));
    }
    // The generator makes about 18 % bad queries; the exit code counts them (at most 125).
    EXPECT_GT(failed, 100);
    EXPECT_EQ(batch.exitCode, std::min(failed, 125));
    EXPECT_NE(batch.err.find(std::to_string(failed) + " of 1000 queries failed"), std::string::npos)
        << batch.err;
    std::remove(path.c_str());
}

TEST(BatchCommand, JsonAnswersParseAndCarryTheTextAnswersCounters) {
    const std::vector<std::string> queries = makeQueries(1000, 20261125);
    const std::string path = writeQueries(queries);
    const CliRun text = runCli("batch '" + path + "'");
    const CliRun json = runCli("batch --json '" + path + "'");
    const std::vector<std::string> textLines = linesOf(text.out);
    const std::vector<std::string> jsonLines = linesOf(json.out);
    ASSERT_EQ(textLines.size(), queries.size());
    ASSERT_EQ(jsonLines.size(), queries.size());
    EXPECT_EQ(json.exitCode, text.exitCode);

    int equities = 0, ranges = 0, hits = 0, errors = 0;
    for (std::size_t i = 0; i < queries.size(); ++i) {
        SCOPED_TRACE("query " + std::to_string(i + 1) + ": " + queries[i]);
        JsonValue answer;
        ASSERT_NO_THROW(answer = JsonValue::parse(jsonLines[i])) << jsonLines[i];
        ASSERT_EQ(answer.kind, JsonValue::Kind::Object);
        const std::vector<std::string> fields = fieldsOf(textLines[i]);
        if (fields.front() == "error") {
            ++errors;
            ASSERT_TRUE(answer.has("error")) << jsonLines[i];
            // The text message ends with the JSON one ("quorvane-eval equity: " before it).
            EXPECT_NE(fields[1].find(answer["error"].text), std::string::npos) << jsonLines[i];
            EXPECT_TRUE(answer["exit_code"].text == "1" || answer["exit_code"].text == "2");
            continue;
        }
        ASSERT_FALSE(answer.has("error")) << jsonLines[i];
        const std::string command = answer["command"].text;
        EXPECT_EQ(command, queries[i].substr(0, queries[i].find(' ')));
        if (command == "equity") {
            ++equities;
            for (const char* name : {"wins1", "wins2", "ties", "total"})
                EXPECT_EQ(answer[name].text, valueOf(fields, name)) << name;
            if (answer["total"].text != "0") {
                char shown[32];
                std::snprintf(shown, sizeof shown, "%.2f %%",
                              answer["equity1"].doubleValue() * 100.0);
                EXPECT_EQ(shown, valueOf(fields, "equity1"));
            } else {
                EXPECT_EQ(answer["equity1"].kind, JsonValue::Kind::Null);
            }
            EXPECT_TRUE(answer["time_ms"].doubleValue() >= 0.0);
            if (answer.has("hands")) {
                // One line per hand after the seven (or eight) lines of the counters.
                std::size_t hands = fields.size() - 7 - (answer["total"].text == "0");
                EXPECT_EQ(answer["hands"].items.size(), hands);
            }
        } else if (command == "range") {
            ++ranges;
            ASSERT_EQ(fields.size(), 4u);
            EXPECT_EQ(answer["normal"].text, fields[0]);
            EXPECT_EQ(answer["technical"].text, fields[1]);
            EXPECT_EQ(answer["compact"].text, fields[2]);
            EXPECT_EQ(answer["combinations"].text, fields[3]);
        } else if (command == "hits") {
            ++hits;
            EXPECT_EQ("combinations: " + answer["combinations"].text, fields[0]);
            std::vector<std::string> fromJson;
            if (answer.has("features")) {
                for (const JsonValue& feature : answer["features"].items)
                    fromJson.push_back("0|" + feature["name"].text + "|" +
                                       feature["combinations"].text + "|");
            } else {
                for (const JsonValue& group : answer["groups"].items) {
                    std::vector<std::string> rows;
                    hitsRowsOfJson(group["rows"], 0, rows);
                    if (!rows.empty() && !group["custom_sum"].flag)
                        fromJson.push_back("group|" + group["name"].text);
                    fromJson.insert(fromJson.end(), rows.begin(), rows.end());
                }
            }
            EXPECT_EQ(fromJson, hitsRowsOfText(fields));
        } else {
            ADD_FAILURE() << "unexpected command " << command;
        }
    }
    EXPECT_GT(equities, 300);
    EXPECT_GT(ranges, 150);
    EXPECT_GT(hits, 150);
    EXPECT_GT(errors, 100);
    std::remove(path.c_str());
}

TEST(BatchCommand, JsonAnswersEqualTheSingleJsonCalls) {
    const std::vector<std::string> queries = makeQueries(120, 7);
    const std::string path = writeQueries(queries);
    const CliRun batch = runCli("batch --json '" + path + "'");
    const std::vector<std::string> answers = linesOf(batch.out);
    ASSERT_EQ(answers.size(), queries.size());
    for (std::size_t i = 0; i < queries.size(); ++i) {
        SCOPED_TRACE(queries[i]);
        const CliRun single = runCli(queries[i] + " --json");
        EXPECT_EQ(withoutTimes(answers[i] + "\n"), withoutTimes(single.out));
        EXPECT_EQ(single.err, "");
    }
    std::remove(path.c_str());
}

TEST(BatchCommand, ReadsStandardInputAndKeepsGoingAfterBadLines) {
    const CliRun run = runCli("batch", "equity AhAs KdKc\n"
                                       "equity AhAs 'KdKc,Zz'\n"
                                       "  # a comment\n"
                                       "\n"
                                       "range 'QQ+, AKs'\n"
                                       "equity 'AA KK\n"
                                       "batch other.txt\n"
                                       "hand -\n"
                                       "range AKs\n");
    const std::vector<std::string> lines = linesOf(run.out);
    ASSERT_EQ(lines.size(), 7u) << run.out;
    EXPECT_EQ(withoutTimes(lines[0]), "equity1 81.26 %\tequity2 18.74 %\twins1 1388072\twins2 "
                                      "317694\tties 6538\ttotal 1712304\ttime 0 ms");
    EXPECT_EQ(lines[1], "error\tquorvane-eval equity: cannot read \"Zz\" as a hand, a hand "
                        "class or a range of them");
    EXPECT_EQ(lines[2], "QQ+,AKs\tQQ,KK,AA,AKs\tQQ+,AKs\t22");
    EXPECT_EQ(lines[3], "error\tquorvane-eval batch: line 6: the quote at column 8 is never "
                        "closed");
    EXPECT_EQ(lines[4], "error\tquorvane-eval batch: line 7: a batch runs no batch");
    EXPECT_EQ(lines[5], "error\tquorvane-eval batch: line 8: hand reads no standard input in a "
                        "batch");
    EXPECT_EQ(lines[6], "AKs\tAKs\tAKs\t4");
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_EQ(run.err, "quorvane-eval batch: 4 of 7 queries failed\n");
}

TEST(BatchCommand, UnreadableInputAndBadUsage) {
    CliRun run = runCli("batch /no/such/file");
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "quorvane-eval batch: cannot open \"/no/such/file\"\n");
    run = runCli("batch a.txt b.txt");
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_NE(run.err.find("usage: quorvane-eval batch [FILE|-]"), std::string::npos);
    run = runCli("batch --fast");
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_NE(run.err.find("unknown option '--fast'"), std::string::npos);
    run = runCli("batch /no/such/file --json");
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.out, "{\"command\":\"batch\",\"error\":\"cannot open "
                       "\\\"/no/such/file\\\"\",\"exit_code\":2}\n");
}

TEST(BatchCommand, TheExitCodeStopsAt125Failures) {
    std::string input;
    for (int i = 0; i < 130; ++i)
        input += "equity AA\n";
    const CliRun run = runCli("batch -", input);
    EXPECT_EQ(linesOf(run.out).size(), 130u);
    EXPECT_EQ(run.exitCode, 125);
    EXPECT_EQ(run.err, "quorvane-eval batch: 130 of 130 queries failed\n");
}
