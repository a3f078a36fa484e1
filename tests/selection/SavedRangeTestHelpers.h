#pragma once

#include "Range/HandRangeStringReader.h"
#include "Range/Tree.h"
#include "Range/TreeFolderNode.h"
#include "Range/TreeRangeNode.h"
#include "selection/HandSelectionPrompts.h"

#include <QString>
#include <QStringList>

#include <deque>
#include <string>
#include <utility>
#include <vector>

// Scripted answers for the question windows of the tree of saved ranges, and small readers
// of a tree.
namespace SavedRangeTest {

struct TreePrompts {
    // Answers to name questions, in order: false cancels; with none left the question is
    // cancelled.
    std::deque<std::pair<bool, QString>> names;
    std::vector<HandSelectionPrompts::NameQuestion> questions;
    std::vector<QString> presentNames;
    std::deque<HandSelectionPrompts::OverwriteAnswer> overwriteAnswers;
    int overwriteQuestions = 0;
    bool confirmDelete = true;
    int deleteQuestions = 0;
    QString openFile;
    QString saveFile;
    QStringList fileQuestions;
    QStringList warnings;

    // The next scripted answer to a name question.
    bool nextName(QString& name) {
        if (names.empty())
            return false;
        const auto answer = names.front();
        names.pop_front();
        name = answer.second;
        return answer.first;
    }

    HandSelectionPrompts prompts() {
        HandSelectionPrompts result;
        result.askGroupName = [this](QWidget*, QString& name) { return nextName(name); };
        result.confirmGroupDelete = [](QWidget*) { return true; };
        result.warn = [this](QWidget*, const QString& title, const QString& text) {
            warnings << title + ": " + text;
        };
        result.askTreeName = [this](QWidget*, const HandSelectionPrompts::NameQuestion& question,
                                    QString& name) {
            questions.push_back(question);
            presentNames.push_back(name);
            return nextName(name);
        };
        result.askOverwriteOrNew = [this](QWidget*) {
            ++overwriteQuestions;
            if (overwriteAnswers.empty())
                return HandSelectionPrompts::OverwriteAnswer::Cancel;
            const auto answer = overwriteAnswers.front();
            overwriteAnswers.pop_front();
            return answer;
        };
        result.confirmTreeDelete = [this](QWidget*) {
            ++deleteQuestions;
            return confirmDelete;
        };
        result.chooseOpenFile = [this](QWidget*, const QString& title, const QString& path,
                                       const QString& filter) {
            fileQuestions << title + " | " + path + " | " + filter;
            return openFile;
        };
        result.chooseSaveFile = [this](QWidget*, const QString& title, const QString& path,
                                       const QString& filter) {
            fileQuestions << title + " | " + path + " | " + filter;
            return saveFile;
        };
        return result;
    }
};

inline std::string nameOf(const Range::Tree& tree, unsigned int node) {
    const Range::TreeNode* own = tree.node(node);
    return own->IsFolder() ? static_cast<const Range::TreeFolderNode*>(own)->name
                           : static_cast<const Range::TreeRangeNode*>(own)->name;
}

inline std::string textOf(const Range::Tree& tree, unsigned int node) {
    return Range::HandRangeStringReader(tree.handRange(node)).compactText();
}

// Names of the children of a node, in order.
inline std::vector<std::string> childNames(const Range::Tree& tree, unsigned int node) {
    std::vector<std::string> names;
    for (unsigned int child : tree.node(node)->children)
        names.push_back(nameOf(tree, child));
    return names;
}

} // namespace SavedRangeTest
