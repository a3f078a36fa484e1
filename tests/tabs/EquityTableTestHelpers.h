#pragma once

// Shared by the equity table tests: the reference calculation straight from the evaluator,
// an independent aggregation by hand class, reading the tab's widgets, and answering the
// modal dialogs the tab opens.

#include "tabs/EquityTableTab.h"

#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLineEdit>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <VelmaraEvaluatorBase.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace EquityTableTestHelpers {

inline WinEvaluationsByHand referenceRecords(const std::string& listed, const std::string& other,
                                             const std::string& board, const std::string& dead) {
    volatile bool stop = false;
    return board.empty() ? getWinEvaluationByHand(listed, other, dead, stop)
                         : getWinEvaluationByHand(listed, other, board, dead, stop);
}

// Strength of a rank character, 12 for the ace ... 0 for the deuce.
inline int rankStrength(char c) {
    return static_cast<int>(std::string("23456789TJQKA").find(c));
}

// A concrete hand with its higher card first.
inline std::string higherFirst(const std::string& hand) {
    if (rankStrength(hand[2]) > rankStrength(hand[0])) {
        return hand.substr(2, 2) + hand.substr(0, 2);
    }
    return hand;
}

// "AA", "AKs", "AKo" of a concrete hand.
inline std::string classOf(const std::string& concrete) {
    const std::string hand = higherFirst(concrete);
    if (hand[0] == hand[2]) {
        return std::string{hand[0], hand[2]};
    }
    return std::string{hand[0], hand[2], hand[1] == hand[3] ? 's' : 'o'};
}

struct Counters {
    unsigned long long wins = 0;
    unsigned long long ties = 0;
    unsigned long long total = 0;
    int combinations = 0;
};

// Per-class sums of the records that can occur.
inline std::map<std::string, Counters> classSums(const WinEvaluationsByHand& records) {
    std::map<std::string, Counters> sums;
    for (const WinEvaluationByHand& record : records) {
        if (record.total == 0) {
            continue;
        }
        Counters& c = sums[classOf(record.hand)];
        c.wins += record.wins;
        c.ties += record.ties;
        c.total += record.total;
        c.combinations += 1;
    }
    return sums;
}

// Equity in double precision, for tolerance checks.
inline double exactEquity(unsigned long long wins, unsigned long long ties,
                          unsigned long long total) {
    return (static_cast<double>(wins) + 0.5 * static_cast<double>(ties)) /
           static_cast<double>(total);
}

// The filter's view of a record's equity, written out independently.
inline float filterEquity(const WinEvaluationByHand& r) {
    return (static_cast<float>(r.ties) * 0.5f + static_cast<float>(r.wins)) /
           static_cast<float>(r.total);
}

// Two fixed decimals and " %" of a share computed in double precision.
inline QString percentText(double share) {
    return QString::number(static_cast<double>(static_cast<float>(share) * 100.0f), 'f', 2) + " %";
}

template <typename T>
T* child(EquityTableTab& tab, const char* name) {
    return tab.findChild<T*>(QString::fromLatin1(name));
}

inline QTableWidget* table(EquityTableTab& tab) {
    return child<QTableWidget>(tab, "specificEquityHandsTable");
}

// Rows as text, in table order.
inline std::vector<QStringList> tableRows(EquityTableTab& tab) {
    std::vector<QStringList> rows;
    QTableWidget* t = table(tab);
    for (int row = 0; row < t->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < t->columnCount(); ++column) {
            cells << (t->item(row, column) ? t->item(row, column)->text() : QString());
        }
        rows.push_back(cells);
    }
    return rows;
}

inline bool waitForResult(EquityTableTab& tab, int timeoutMs = 30000) {
    return QTest::qWaitFor([&tab] { return !tab.isCalculating(); }, timeoutMs);
}

// Answers the modal widget the tab opens, from the event loop while the tab's own modal call
// runs. `handler` gets the active modal widget once it has been up for `settleMs` (a file
// dialog fills its view asynchronously and may reset its selection meanwhile) and answers
// whether it is done with it; false means "ask again at the next poll". A modal still open
// after `limitMs` is closed, so that no test hangs on a dialog nobody expected.
class ModalAnswer : public QObject {
public:
    explicit ModalAnswer(std::function<bool(QWidget*)> handler, int limitMs = 10000,
                         int settleMs = 300)
        : handler(std::move(handler)), limitMs(limitMs), settleMs(settleMs) {
        connect(&timer, &QTimer::timeout, this, &ModalAnswer::poll);
        timer.start(20);
        clock.start();
    }
    bool answered() const { return done; }
    bool gaveUp() const { return closedByForce; }

private:
    void poll() {
        QWidget* modal = QApplication::activeModalWidget();
        if (clock.elapsed() > limitMs) {
            if (modal != nullptr) {
                closedByForce = true;
                modal->close();
            } else {
                timer.stop();
            }
            return;
        }
        if (done || modal == nullptr) {
            seen = nullptr;
            return;
        }
        if (modal != seen) {
            seen = modal;
            seenSince.start();
            return;
        }
        if (seenSince.elapsed() >= settleMs && handler(modal)) {
            done = true;
        }
    }

    std::function<bool(QWidget*)> handler;
    int limitMs;
    int settleMs;
    QTimer timer;
    QElapsedTimer clock;
    QElapsedTimer seenSince;
    QWidget* seen = nullptr;
    bool done = false;
    bool closedByForce = false;
};

// A ModalAnswer handler for the save dialog: types `path` into its name field, as a user
// would (selectFile() leaves a focused name field alone), and accepts from the event loop
// once the dialog really holds the name.
inline bool saveAs(QWidget* modal, const QString& path) {
    auto* dialog = qobject_cast<QFileDialog*>(modal);
    if (dialog == nullptr) {
        return false;
    }
    auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (name == nullptr) {
        return false;
    }
    name->setText(path);
    if (dialog->selectedFiles().value(0) != path) {
        return false;
    }
    QTimer::singleShot(0, dialog, [dialog] { static_cast<QDialog*>(dialog)->accept(); });
    return true;
}

} // namespace EquityTableTestHelpers
