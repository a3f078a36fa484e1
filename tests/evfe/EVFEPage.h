#pragma once

#include "Range/Tree.h"
#include "calculation/ThreadPool.h"
#include "evfe/LineList.h"
#include "evfe/ui/EV_FE_CalculationsTab.h"

#include <QString>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class LineActionWidget;
class QLabel;

// The EV/FE page as the window uses it, without the window: a pool, the players' ranges with
// their groups, the lines of one scenario, and the tab, shown. Records what the tab reports.
class EVFEPage {
public:
    EVFEPage();
    ~EVFEPage();

    EV_FE_CalculationsTab& tab() { return *page; }
    ThreadPool& pool() { return threadPool; }
    LineList& lines() { return lineList; }
    Range::Tree& groups(int player) { return player == 1 ? player1 : player2; }

    // Sets a player's full range (free range text).
    void setFullRange(int player, const std::string& text);
    // The window's update: board and dead cards.
    void showCards(const std::string& board, const std::string& deadCards = std::string());
    void selectStreet(const char* street);
    // "Which line would you like to add?" answered with `name`, through the real dialog.
    void addLine(const QString& name);
    // Types `text` into the range line of action `index` (0 the first action), replacing it.
    void typeRange(std::size_t index, const QString& text);
    LineActionWidget* widget(std::size_t index) const;
    std::size_t widgetCount() const;

    // Until no action widget calculates any more; false after `limitMs`.
    bool waitForEquities(int limitMs = 60000);
    static bool waitUntil(const std::function<bool()>& done, int limitMs);

    // Every label text of the page, to look for what must never show.
    std::vector<QString> labelTexts() const;

    const std::vector<std::string>& mementoLabels() const { return mementos; }
    int changes() const { return changeCount; }

private:
    ThreadPool threadPool;
    Range::Tree player1;
    Range::Tree player2;
    LineList lineList;
    std::unique_ptr<EV_FE_CalculationsTab> page;
    std::vector<std::string> mementos;
    int changeCount = 0;
};
