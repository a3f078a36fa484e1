#include "HandHistorySamples.h"

#include "handhistory/HandHistoryParser.h"
#include "handhistory/HandHistoryText.h"
#include "support/TestEnvironment.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <dirent.h>
#include <fstream>
#include <sstream>

namespace {

std::string folder() {
    return TestEnvironment::sharedFolder() + "/handhistories";
}

std::vector<std::string> sampleFiles() {
    std::vector<std::string> files;
    DIR* dir = opendir(folder().c_str());
    if (!dir)
        return files;
    while (const dirent* entry = readdir(dir)) {
        const std::string name = entry->d_name;
        if (name.size() > 4 && name.compare(name.size() - 4, 4, ".txt") == 0)
            files.push_back(name);
    }
    closedir(dir);
    std::sort(files.begin(), files.end());
    return files;
}

// Split written here rather than taken from HandHistoryText, so that the samples do not
// depend on the code under test.
std::vector<SampleHand> split(const std::string& file, const std::string& content) {
    std::vector<SampleHand> hands;
    std::string current;
    std::istringstream lines(content);
    std::string line;
    const auto flush = [&] {
        if (!current.empty())
            hands.push_back(SampleHand{file, static_cast<int>(hands.size()), current});
        current.clear();
    };
    while (std::getline(lines, line)) {
        if (line.find_first_not_of(" \t\r") == std::string::npos)
            flush();
        else
            current += line + "\n";
    }
    flush();
    return hands;
}

} // namespace

std::vector<SampleHand> sampleHandsOf(const std::string& file) {
    std::ifstream in(folder() + "/" + file, std::ios::binary);
    if (!in) {
        ADD_FAILURE() << "cannot read " << folder() << "/" << file;
        return {};
    }
    std::ostringstream content;
    content << in.rdbuf();
    return split(file, content.str());
}

std::vector<SampleHand> loadSampleHands() {
    const std::vector<std::string> files = sampleFiles();
    if (files.empty()) {
        ADD_FAILURE() << "no hand histories in " << folder();
        return {};
    }
    std::vector<SampleHand> all;
    for (const std::string& file : files) {
        std::vector<SampleHand> hands = sampleHandsOf(file);
        all.insert(all.end(), hands.begin(), hands.end());
    }
    return all;
}

HandHistoryParser parseSample(const std::string& utf8Text) {
    return HandHistoryParser(HandHistoryText::toWindows1252(utf8Text));
}

std::string actionsText(const std::vector<HandHistoryAction>& actions) {
    std::string out;
    for (const HandHistoryAction& a : actions) {
        out += a.player + " " + a.verb;
        if (!a.blind.empty())
            out += " " + a.blind;
        if (a.verb != "fold" && a.verb != "check") {
            char amount[32];
            std::snprintf(amount, sizeof amount, " %.2f", static_cast<double>(a.amount));
            out += amount;
        }
        out += "\n";
    }
    return out;
}

std::string replacedAll(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}
