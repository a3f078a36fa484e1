#include "QueryWords.h"

#include <stdexcept>

std::vector<std::string> queryWords(const std::string& line) {
    std::vector<std::string> words;
    std::string word;
    bool inWord = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (c == ' ' || c == '\t' || c == '\r' || c == '\n') {
            if (inWord)
                words.push_back(word);
            word.clear();
            inWord = false;
            continue;
        }
        inWord = true;
        if (c != '\'' && c != '"') {
            word += c;
            continue;
        }
        const std::size_t opened = i;
        for (++i; i < line.size() && line[i] != c; ++i) {
            if (c == '"' && line[i] == '\\' && i + 1 < line.size() &&
                (line[i + 1] == '"' || line[i + 1] == '\\'))
                ++i;
            word += line[i];
        }
        if (i == line.size())
            throw std::invalid_argument("the quote at column " + std::to_string(opened + 1) +
                                        " is never closed");
    }
    if (inWord)
        words.push_back(word);
    return words;
}
