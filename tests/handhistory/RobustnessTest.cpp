// Whatever is pasted, the parser ends in a record or in ParseError: never a crash, never
// another exception, never a hang. The texts are mutations of the public hand histories.
// This file is also built alone under AddressSanitizer and UndefinedBehaviorSanitizer
// (handhistory_robustness_asan), so it must stay quick: well under a minute there.

#include "HandHistorySamples.h"

#include "handhistory/HandHistoryParser.h"
#include "handhistory/HandHistoryText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

bool isCardText(const std::string& cards) {
    return cards.size() % 2 == 0;
}

// Parses `text` (Windows-1252); true when a record came out. Fails the test on any other
// outcome, and checks what every record must hold whatever the input was.
bool survives(const std::string& text, const std::string& what) {
    try {
        const HandHistoryParser parser(text);
        const HandHistoryRecord& hand = parser.record();
        EXPECT_TRUE(hand.holeCards.empty() || hand.holeCards.size() == 4u) << what;
        EXPECT_TRUE(isCardText(hand.board) && hand.board.size() <= 10u) << what;
        for (const auto* actions :
             {&hand.postActions, &hand.flopActions, &hand.turnActions, &hand.riverActions})
            for (const HandHistoryAction& a : *actions) {
                const bool known = a.verb == "fold" || a.verb == "check" || a.verb == "call" ||
                                   a.verb == "bet" || a.verb == "raise" || a.verb == "post";
                EXPECT_TRUE(known && a.sane) << what << ": verb " << a.verb;
            }
        return true;
    } catch (const HandHistoryParser::ParseError&) {
        return false;
    } catch (...) {
        ADD_FAILURE() << what << ": an exception other than ParseError";
        return false;
    }
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    std::string line;
    while (std::getline(in, line))
        lines.push_back(line + "\n");
    return lines;
}

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += line;
    return text;
}

std::vector<std::string> sampleTexts() {
    std::vector<std::string> texts;
    for (const SampleHand& hand : loadSampleHands())
        texts.push_back(HandHistoryText::toWindows1252(hand.text));
    return texts;
}

} // namespace

TEST(HandHistoryRobustness, EveryTruncationOfOneHandPerDialect) {
    // Hands that read are cut at every byte; the others, which fail early anyway, at every
    // fifth byte, to keep the sanitizer run short.
    int records = 0;
    for (const SampleHand& hand : loadSampleHands()) {
        if (hand.index != 0)
            continue;
        const std::string text = HandHistoryText::toWindows1252(hand.text);
        const bool reads = survives(text, hand.file);
        const std::size_t step = reads ? 1 : 5;
        for (std::size_t length = 0; length <= text.size(); length += step)
            records += survives(text.substr(0, length),
                                hand.file + " truncated at " + std::to_string(length));
    }
    // Truncations of readable hands behind their posts still read.
    EXPECT_GT(records, 1000);
}

TEST(HandHistoryRobustness, EachLineDropped) {
    for (const std::string& text : sampleTexts()) {
        const std::vector<std::string> lines = linesOf(text);
        for (std::size_t i = 0; i < lines.size(); ++i) {
            std::vector<std::string> mutated = lines;
            mutated.erase(mutated.begin() + static_cast<std::ptrdiff_t>(i));
            survives(joined(mutated), "line " + std::to_string(i) + " dropped");
        }
    }
}

TEST(HandHistoryRobustness, NeighbouringLinesSwappedAndRandomLinesShuffled) {
    std::mt19937 random(20261121);
    for (const std::string& text : sampleTexts()) {
        const std::vector<std::string> lines = linesOf(text);
        for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
            std::vector<std::string> mutated = lines;
            std::swap(mutated[i], mutated[i + 1]);
            survives(joined(mutated), "lines " + std::to_string(i) + " swapped");
        }
        for (int round = 0; round < 5; ++round) {
            std::vector<std::string> mutated = lines;
            std::shuffle(mutated.begin(), mutated.end(), random);
            survives(joined(mutated), "shuffled");
        }
    }
}

TEST(HandHistoryRobustness, BytesFlippedAndOverwritten) {
    std::mt19937 random(7);
    // Bytes that the rewriting and the parser react to, and any byte at all.
    const std::string special = "\n\r\t ,:()[]$\x80\xA3"
                                "0123456789.#/*-";
    for (const std::string& text : sampleTexts()) {
        if (text.empty())
            continue;
        std::uniform_int_distribution<std::size_t> position(0, text.size() - 1);
        std::uniform_int_distribution<int> byte(0, 255);
        std::uniform_int_distribution<std::size_t> pick(0, special.size() - 1);
        for (int round = 0; round < 40; ++round) {
            std::string mutated = text;
            const int flips = 1 + round % 8;
            for (int k = 0; k < flips; ++k) {
                const std::size_t at = position(random);
                if (round % 2 == 0)
                    mutated[at] = static_cast<char>(mutated[at] ^ (1 << (k % 8)));
                else if (round % 4 == 1)
                    mutated[at] = static_cast<char>(byte(random));
                else
                    mutated[at] = special[pick(random)];
            }
            survives(mutated, "bytes changed, round " + std::to_string(round));
        }
    }
}

TEST(HandHistoryRobustness, NoiseAndNulBytes) {
    std::mt19937 random(11);
    std::uniform_int_distribution<int> byte(0, 255);
    for (int round = 0; round < 200; ++round) {
        std::string noise(static_cast<std::size_t>(round * 7), '\0');
        for (char& c : noise)
            c = static_cast<char>(byte(random));
        // With a seat line, and with a head for the player list dialect, to get past the
        // seat step into the parser.
        survives(noise, "noise");
        survives("Seat 1: A ($1)\n" + noise, "noise behind a seat");
        survives("Game#1\n" + noise, "noise behind a game number");
    }
    survives(std::string("Seat 1: A (\0$1)\n", 16), "NUL inside a seat line");
}

TEST(HandHistoryRobustness, FiveMegabytePaste) {
    std::vector<std::string> texts = sampleTexts();
    ASSERT_FALSE(texts.empty());
    // A readable hand first: the whole paste is one text to the parser, which reads that
    // hand and stops at its summary, after the rewriting went over all of it.
    const auto stars = std::find_if(texts.begin(), texts.end(), [](const std::string& t) {
        return t.compare(0, 10, "PokerStars") == 0;
    });
    ASSERT_NE(stars, texts.end());
    std::iter_swap(texts.begin(), stars);
    std::string paste;
    for (std::size_t i = 0; paste.size() < 5u * 1024 * 1024; ++i)
        paste += texts[i % texts.size()] + "\n";
    EXPECT_TRUE(survives(paste, "5 MB paste"));
}

TEST(HandHistoryRobustness, LongRunsOfWhatEachStepReactsTo) {
    // Half a megabyte of one repeated piece each, with no hand around it: each step and
    // the street loop must stay linear (a quadratic one would take minutes here).
    const std::string head = "Seat 1: A ($1)\nSeat 2: B ($1)\nA: posts small blind $1\n"
                             "*** HOLE CARDS ***\n";
    for (const std::string& unit :
         {std::string("1,"), std::string("[HA"), std::string("(5 BB "),
          std::string("** Dealing down cards **\n"), std::string("\n3 folds\n"),
          std::string("Seat 1: A ($1)\nfold\n"), std::string("["), std::string("[$1]"),
          std::string("A: raises $1 to $2\n"), std::string("Hero is with"), std::string(" of h"),
          std::string("posts BB 1 BB BB")}) {
        std::string text;
        text.reserve(512u * 1024 + unit.size());
        while (text.size() < 512u * 1024)
            text += unit;
        survives(head + text, "512 kB of " + unit);
        survives("Game#\n" + text, "512 kB of " + unit + " behind a game number");
    }
}

TEST(HandHistoryRobustness, LongRunsOfWhatTheFurtherDialectsReactTo) {
    // The steps that rewrite whole hands of the other sites must stay linear too: endless
    // seat lines, actions of a seated player, street lines, nested or unclosed XML.
    const std::string plainHead = "Seat 1: Ann ( $10 USD )\nSeat 2: Bob ( $10 USD )\n"
                                  "Ann posts small blind [$1 USD].\n";
    const std::string xmlHead = "<game id=\"1\"><players dealer=\"0\">"
                                "<player seat=\"0\" nickname=\"A\" balance=\"$1\"/></players>";
    for (const std::string& unit :
         {std::string("Seat 9: Ann ( $1 USD )\n"), std::string("Ann raises [$1 USD]\n"),
          std::string("Bob calls (2)\n"), std::string("** Dealing Flop ** [ Ah, 3s, 4s ]\n"),
          std::string("Ann is all-In [$1,000,000 USD]\n"), std::string("Dealt to Ann [ Ah"),
          std::string("<game>"), std::string("<round id=\"PREFLOP\">"),
          std::string("<event type=\"RAISE\" player=\"0\" amount=\"1e9\"/>"),
          std::string("9999999999999,")}) {
        std::string text;
        text.reserve(512u * 1024 + unit.size());
        while (text.size() < 512u * 1024)
            text += unit;
        survives(plainHead + text, "512 kB of " + unit + " in a hand without colons");
        survives(xmlHead + text + "</game>", "512 kB of " + unit + " in an XML hand");
        survives(text, "512 kB of " + unit);
    }
}

TEST(HandHistoryRobustness, XmlHandsCutAndTheirTagsBroken) {
    // Every tenth truncation of the XML hands, and each of their '<' and '>' removed in turn.
    for (const SampleHand& hand : loadSampleHands()) {
        if (hand.index != 0 || (hand.text.find("<game") == std::string::npos &&
                                hand.text.find("<Game") == std::string::npos))
            continue;
        const std::string text = HandHistoryText::toWindows1252(hand.text);
        for (std::size_t length = 0; length <= text.size(); length += 10)
            survives(text.substr(0, length), hand.file + " cut at " + std::to_string(length));
        int broken = 0;
        for (std::size_t at = 0; at < text.size() && broken < 200; ++at) {
            if (text[at] != '<' && text[at] != '>' && text[at] != '"')
                continue;
            ++broken;
            std::string mutated = text;
            mutated.erase(at, 1);
            survives(mutated, hand.file + " without byte " + std::to_string(at));
        }
    }
}
