#include "app/document/AnalysisFile.h"

#include "../evfe/FileTestSupport.h"
#include "../evfe/SampleLines.h"
#include "AnalysisFileSamples.h"

#include "Range/HandRangeStringReader.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "evfe/EV_FE_TabState.h"
#include "evfe/LineFile.h"

#include <gtest/gtest.h>

#include <fstream>
#include <random>
#include <sstream>

// The analysis file read and written without any window. The golden files under data/ were
// checked by eye against the format once; from then on every byte counts.

namespace {

std::string goldenXml() {
    return AnalysisFileSamples::readData("analysis-three-scenarios.qva");
}

// What reading throws, or an empty text when it reads.
std::string failureOf(const std::string& text) {
    try {
        AnalysisFile::read(text);
    } catch (const AnalysisFileError& error) {
        return error.what();
    }
    return std::string();
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    if (at != std::string::npos)
        text.replace(at, from.size(), to);
    return text;
}

} // namespace

TEST(AnalysisFile, ThreeScenariosAreWrittenByteForByteAsTheGoldenFile) {
    const std::string text = AnalysisFile::write(AnalysisFileSamples::threeScenarios(), 1,
                                                 AnalysisFileSamples::tabState());
    EXPECT_EQ(text, goldenXml());
}

TEST(AnalysisFile, TheGoldenFileHasTheRootVersionAndOrderOfTheFormat) {
    const std::string text = goldenXml();
    EXPECT_EQ(text.rfind("<QuorvaneAnalysis version=\"1.20204997\">\n\t<selectedScenario>1<", 0),
              0u);
    const std::size_t scenarios = text.find("\t<Scenarios>");
    const std::size_t wrapper = text.find("\t<EV_FE_Wrapper>\n\t\t<EV_FE_Tab>");
    ASSERT_NE(scenarios, std::string::npos);
    ASSERT_NE(wrapper, std::string::npos);
    EXPECT_LT(scenarios, wrapper);
    // Inside a scenario: Player1, Player2, Board, Deadcards, EV_FE_Lines, in this order.
    std::size_t at = text.find("<Scenario name=\"Flop c-bet\">");
    ASSERT_NE(at, std::string::npos);
    for (const char* child : {"<Player1>", "<Player2>", "<Board>Ah7d2c</Board>", "<Deadcards/>",
                              "<EV_FE_Lines>", "<Line "}) {
        const std::size_t next = text.find(child, at);
        ASSERT_NE(next, std::string::npos) << child;
        at = next;
    }
    // The XML escapes of a name (a name with double quotes goes into single ones), and no
    // declaration.
    EXPECT_NE(text.find("<Scenario name='Turn &lt;probe&gt; &amp; \"check\"'>"), std::string::npos);
    EXPECT_EQ(text.find("<?xml"), std::string::npos);
}

TEST(AnalysisFile, ReadingTheGoldenFileGivesTheAnalysisBack) {
    const AnalysisContent content = AnalysisFile::read(goldenXml());
    ASSERT_EQ(content.scenarios.size(), 3u);
    EXPECT_EQ(content.selectedScenario, 1);
    EXPECT_TRUE(content.problems.empty());
    const std::vector<Scenario> expected = AnalysisFileSamples::threeScenarios();
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(content.scenarios[i].name, expected[i].name);
        EXPECT_EQ(content.scenarios[i].board, expected[i].board);
        EXPECT_EQ(content.scenarios[i].deadCards, expected[i].deadCards);
        EXPECT_EQ(AnalysisFileSamples::groupsText(content.scenarios[i].player1),
                  AnalysisFileSamples::groupsText(expected[i].player1));
        EXPECT_EQ(AnalysisFileSamples::groupsText(content.scenarios[i].player2),
                  AnalysisFileSamples::groupsText(expected[i].player2));
        EXPECT_EQ(LineFile::linesText(*content.scenarios[i].lines),
                  LineFile::linesText(*expected[i].lines));
    }
    std::vector<std::string> problems;
    EXPECT_EQ(EV_FE_TabState::fromText(content.tabState, problems),
              EV_FE_TabState::fromText(AnalysisFileSamples::tabState(), problems));
    EXPECT_TRUE(problems.empty());
}

TEST(AnalysisFile, TheLegacyFileReadsIntoTheSameAnalysis) {
    const AnalysisContent content =
        AnalysisFile::read(AnalysisFileSamples::readData("analysis-three-scenarios.legacy"));
    EXPECT_TRUE(content.problems.empty());
    // A legacy file names no selection and holds no state of the EV/FE page.
    EXPECT_EQ(content.selectedScenario, -1);
    EXPECT_TRUE(content.tabState.empty());
    EXPECT_EQ(AnalysisFile::write(content.scenarios, 1, AnalysisFileSamples::tabState()),
              goldenXml());
}

TEST(AnalysisFile, TheLegacyFileReadsWithWindowsLineEnds) {
    std::string text = AnalysisFileSamples::readData("analysis-three-scenarios.legacy");
    std::string crlf;
    for (char c : text) {
        if (c == '\n')
            crlf += '\r';
        crlf += c;
    }
    const AnalysisContent content = AnalysisFile::read(crlf);
    ASSERT_EQ(content.scenarios.size(), 3u);
    EXPECT_EQ(content.scenarios[0].name, "Flop c-bet");
    EXPECT_EQ(content.scenarios[1].board, "Ah7d2cKs");
    EXPECT_EQ(content.scenarios[1].deadCards, "Qh");
}

TEST(AnalysisFile, StreamsWriteAndReadTheSameText) {
    std::ostringstream out;
    AnalysisFile::write(out, AnalysisFileSamples::threeScenarios(), 1,
                        AnalysisFileSamples::tabState());
    EXPECT_EQ(out.str(), goldenXml());
    std::istringstream in(out.str());
    EXPECT_EQ(AnalysisFile::read(in).scenarios.size(), 3u);
}

TEST(AnalysisFile, ThreeHundredRandomAnalysesSurviveARoundTrip) {
    std::mt19937 random(20261125);
    for (int round = 0; round < 300; ++round) {
        const AnalysisFileSamples::Random sample = AnalysisFileSamples::randomAnalysis(random);
        const std::string first =
            AnalysisFile::write(sample.scenarios, sample.selected, sample.tabState);
        AnalysisContent content;
        ASSERT_NO_THROW(content = AnalysisFile::read(first)) << "round " << round << "\n" << first;
        ASSERT_EQ(content.scenarios.size(), sample.scenarios.size()) << "round " << round;
        const int selected = sample.selected;
        EXPECT_EQ(content.selectedScenario, selected);
        const std::string second =
            AnalysisFile::write(content.scenarios, content.selectedScenario, content.tabState);
        ASSERT_EQ(second, first) << "round " << round;
    }
}

TEST(AnalysisFile, ASelectedScenarioOfMinusOneIsKept) {
    const std::string text = replaced(goldenXml(), "<selectedScenario>1<", "<selectedScenario>-1<");
    EXPECT_EQ(AnalysisFile::read(text).selectedScenario, -1);
}

TEST(AnalysisFile, ASelectedScenarioBeyondTheListShowsTheLast) {
    const std::string text = replaced(goldenXml(), "<selectedScenario>1<", "<selectedScenario>9<");
    EXPECT_EQ(AnalysisFile::read(text).selectedScenario, -1);
}

TEST(AnalysisFile, AMissingTabStateReadsAsEmpty) {
    const std::string text = AnalysisFile::write(AnalysisFileSamples::threeScenarios(), 0, "");
    EXPECT_NE(text.find("<EV_FE_Wrapper/>"), std::string::npos);
    const AnalysisContent content = AnalysisFile::read(text);
    EXPECT_EQ(content.scenarios.size(), 3u);
    EXPECT_TRUE(content.tabState.empty());
}

TEST(AnalysisFile, TwoScenariosOfOneNameAreFine) {
    std::vector<Scenario> scenarios = AnalysisFileSamples::threeScenarios();
    scenarios[2].name = scenarios[0].name;
    const AnalysisContent content = AnalysisFile::read(AnalysisFile::write(scenarios, 2, ""));
    ASSERT_EQ(content.scenarios.size(), 3u);
    EXPECT_EQ(content.scenarios[0].name, content.scenarios[2].name);
}

TEST(AnalysisFile, UnknownChildrenAndTheVersionAreIgnored) {
    std::string text = replaced(goldenXml(), "version=\"1.20204997\"", "version=\"99\"");
    text = replaced(text, "\t<Scenarios>", "\t<Future>kept</Future>\n\t<Scenarios>");
    EXPECT_EQ(AnalysisFile::read(text).scenarios.size(), 3u);
}

TEST(AnalysisFile, MissingChildrenOfAScenarioLeaveTheDefaults) {
    const AnalysisContent content =
        AnalysisFile::read("<QuorvaneAnalysis><selectedScenario>0</selectedScenario><Scenarios>"
                           "<Scenario name=\"Bare\"/></Scenarios></QuorvaneAnalysis>");
    ASSERT_EQ(content.scenarios.size(), 1u);
    EXPECT_EQ(content.scenarios[0].name, "Bare");
    EXPECT_EQ(AnalysisFileSamples::groupsText(content.scenarios[0].player1), "Full Range: ");
    EXPECT_TRUE(content.scenarios[0].board.empty());
    EXPECT_TRUE(content.scenarios[0].lines->empty());
}

// --- Files that cannot be read: a reason, never a crash, never half an analysis ----------------

TEST(AnalysisFileDamaged, AnEmptyFileIsNamedEmpty) {
    EXPECT_EQ(failureOf(""), "The file is empty.");
    EXPECT_EQ(failureOf(" \n\t\r\n"), "The file is empty.");
}

TEST(AnalysisFileDamaged, TextThatIsNoXmlNorALegacyFileIsRefused) {
    EXPECT_EQ(failureOf("Hello, this is a letter."),
              "The file is no analysis: it starts with neither an element nor a number of "
              "scenarios.");
    EXPECT_EQ(failureOf("\x89PNG\r\n\x1a\n"),
              "The file is no analysis: it starts with neither an element nor a number of "
              "scenarios.");
}

TEST(AnalysisFileDamaged, TruncatedXmlIsRefusedWithTheParsersReason) {
    const std::string text = goldenXml();
    const std::string failure = failureOf(text.substr(0, text.size() / 2));
    EXPECT_EQ(failure.rfind("The file is no analysis: ", 0), 0u) << failure;
}

TEST(AnalysisFileDamaged, ASelectedScenarioThatIsNoNumberIsRefused) {
    EXPECT_EQ(failureOf(replaced(goldenXml(), "<selectedScenario>1<", "<selectedScenario>one<")),
              "The selected scenario \"one\" is no number.");
    EXPECT_EQ(failureOf(replaced(goldenXml(), "<selectedScenario>1<", "<selectedScenario>1x<")),
              "The selected scenario \"1x\" is no number.");
    EXPECT_EQ(failureOf(replaced(goldenXml(), "<selectedScenario>1<",
                                 "<selectedScenario>99999999999999999999<")),
              "The selected scenario \"99999999999999999999\" is no number.");
}

TEST(AnalysisFileDamaged, AFolderWhereARangeShouldBeIsRefused) {
    const std::string text = "<QuorvaneAnalysis><selectedScenario>0</selectedScenario><Scenarios>"
                             "<Scenario name=\"S\"><Player1><folder name=\"F\"/></Player1>"
                             "</Scenario></Scenarios></QuorvaneAnalysis>";
    EXPECT_EQ(failureOf(text), "The range of Player1 in scenario \"S\" is a folder: Subtrees "
                               "cannot be created internally yet.");
}

TEST(AnalysisFileDamaged, ARangeTextThatCannotBeReadIsRefused) {
    const std::string text = AnalysisFileSamples::readData("analysis-three-scenarios.qva");
    const std::size_t at = text.find("text=\"", text.find("<Player2>"));
    ASSERT_NE(at, std::string::npos);
    std::string damaged = text;
    damaged.insert(at + 6, "Zebra,");
    const std::string failure = failureOf(damaged);
    EXPECT_NE(failure.find("of Player2 in scenario \"Flop c-bet\" cannot be read: \"Zebra\""),
              std::string::npos)
        << failure;
}

TEST(AnalysisFileDamaged, AFileWithoutScenariosIsRefused) {
    EXPECT_EQ(failureOf("<QuorvaneAnalysis><selectedScenario>0</selectedScenario>"
                        "<Scenarios/></QuorvaneAnalysis>"),
              "The file holds no scenario.");
    EXPECT_EQ(failureOf("0\n"), "The file holds no scenario.");
}

TEST(AnalysisFileDamaged, ALegacyFileCutShortNamesTheScenario) {
    const std::string text = AnalysisFileSamples::readData("analysis-three-scenarios.legacy");
    // Cut inside the second scenario's name line.
    const std::size_t second = text.find("Turn <probe>");
    ASSERT_NE(second, std::string::npos);
    EXPECT_EQ(failureOf(text.substr(0, second + 3)), "The file ends inside scenario 2.");
    EXPECT_EQ(failureOf("3\nOnly one name"), "The file ends inside scenario 1.");
}

// Truncations and flipped bytes at 1,000 places of a valid file: every read either gives a
// whole analysis or a reason. A crash or another exception fails the test (or the
// sanitizers).
TEST(AnalysisFileDamaged, AThousandMutationsNeverCrash) {
    const std::vector<std::string> sources = {
        goldenXml(), AnalysisFileSamples::readData("analysis-three-scenarios.legacy")};
    std::mt19937 random(1000);
    int refused = 0;
    int read = 0;
    for (int round = 0; round < 1000; ++round) {
        std::string text = sources[static_cast<std::size_t>(round % 2)];
        std::uniform_int_distribution<std::size_t> place(0, text.size() - 1);
        if (round % 4 < 2) {
            text.resize(place(random));
        } else {
            const int flips = 1 + static_cast<int>(random() % 4);
            for (int i = 0; i < flips; ++i)
                text[place(random)] = static_cast<char>(random() % 256);
        }
        try {
            const AnalysisContent content = AnalysisFile::read(text);
            EXPECT_FALSE(content.scenarios.empty());
            ++read;
        } catch (const AnalysisFileError& error) {
            EXPECT_GT(std::string(error.what()).size(), 10u);
            ++refused;
        }
    }
    // Both outcomes occur: the mutations are neither all harmless nor all fatal.
    EXPECT_GT(refused, 100);
    EXPECT_GT(read, 10);
}

// --- Snapshots kept in pieces ---------------------------------------------------------------

#include "app/document/AnalysisDocument.h"

#include "Range/HandRangeStringManipulator.h"

// A snapshot shares the texts of unchanged scenarios with the one before it; whatever the
// user did in between, its text is the file text of the analysis, and reading it back gives
// an analysis that writes that very text again.
TEST(AnalysisSnapshots, AfterEveryKindOfChangeTheSnapshotIsTheFileText) {
    AnalysisDocument document;
    document.replaceScenarios(AnalysisFileSamples::threeScenarios(), 1);
    document.setCurrentIndex(1);
    const std::string tab = AnalysisFileSamples::tabState();
    std::mt19937 random(7);
    std::vector<Memento> taken;
    const char* const ranges[] = {"AA", "QQ+,AKs", "22+", "", "T9s,98s"};
    const char* const boards[] = {"", "Ah7d2c", "Kh9s4c2d", "AsKsQsJsTs"};
    for (int step = 0; step < 200; ++step) {
        switch (random() % 7) {
        case 0: // typing into the scenario shown
            Range::HandRangeStringManipulator(document.range(1).handRange(0))
                .setFree(ranges[random() % 5]);
            document.takeInputs({std::to_string(step), "", boards[random() % 4], ""});
            document.storeLiveState();
            break;
        case 1: // another scenario shown
            document.setCurrentIndex(static_cast<int>(random() % document.scenarios().size()));
            break;
        case 2:
            document.renameScenario(static_cast<int>(random() % document.scenarios().size()),
                                    "Renamed " + std::to_string(step));
            break;
        case 3:
            if (document.scenarios().size() < 6)
                document.appendScenario("Added " + std::to_string(step));
            break;
        case 4:
            document.deleteScenario(static_cast<int>(random() % document.scenarios().size()));
            break;
        case 5: // an undo: an earlier snapshot put back
            if (!taken.empty()) {
                const Memento& back = taken[random() % taken.size()];
                AnalysisContent content = document.contentOf(back);
                ASSERT_EQ(AnalysisFile::write(content.scenarios, back.selectedScenario(),
                                              back.tabState()),
                          back.data())
                    << "step " << step;
                document.replaceScenarios(std::move(content.scenarios), 0, content.snapshotParts);
                document.setCurrentIndex(back.selectedScenario() < 0 ? 0 : back.selectedScenario());
            }
            break;
        default: // the EV/FE page edits the lines of the scenario shown in place
            if (const Scenario* shown = document.currentScenario())
                shown->lines->clear();
            break;
        }
        const Memento memento = document.createMemento("step", tab);
        ASSERT_EQ(memento.data(), document.text(tab)) << "step " << step;
        taken.push_back(memento);
    }
}

TEST(AnalysisSnapshots, UnchangedScenariosShareTheirTextWithTheSnapshotBefore) {
    AnalysisDocument document;
    document.replaceScenarios(AnalysisFileSamples::threeScenarios(), 0);
    document.setCurrentIndex(0);
    const Memento first = document.createMemento("", "");
    document.storeLiveState();
    const Memento second = document.createMemento("Board Cards Changed", "");
    ASSERT_EQ(first.parts().size(), 3u);
    ASSERT_EQ(second.parts().size(), 3u);
    EXPECT_NE(first.parts()[0], second.parts()[0]); // the scenario shown is written again
    EXPECT_EQ(first.parts()[1], second.parts()[1]);
    EXPECT_EQ(first.parts()[2], second.parts()[2]);
    // Renaming another scenario writes that one again too.
    document.renameScenario(2, "Elsewhere");
    const Memento third = document.createMemento("", "");
    EXPECT_EQ(third.parts()[1], second.parts()[1]);
    EXPECT_NE(third.parts()[2], second.parts()[2]);
    EXPECT_NE(third.data().find("name=\"Elsewhere\""), std::string::npos);
}
