#include "app/HeadlineEquity.h"

#include "Range/CardText.h"
#include "app/document/AnalysisInputs.h"
#include "calculation/ThreadPool.h"
#include "utils/ui/EquityColor.h"
#include "utils/ui/HintTooltip.h"
#include "utils/ui/PlayerColor.h"

#include <QLabel>
#include <QMovie>
#include <QWidget>

namespace {

const char* const hintText = "<b>Did you know</b><p align=\"justify\">You can calculate the "
                             "equity permanently witout clicking on any buttons.</p>";

const char* const playerProperty = "equityOfPlayer";

QString whose(int player) {
    return QStringLiteral("Player %1's equity").arg(player);
}

} // namespace

HeadlineEquity::HeadlineEquity(ThreadPool& pool, QLabel* player1, QLabel* player2, QWidget* window)
    : QObject(window), threadPool(pool), player1Wins(player1), player2Wins(player2), window(window),
      loadingMovie(new QMovie(QStringLiteral(":/loading.gif"), QByteArray(), this)) {
    player1Wins->setTextFormat(Qt::RichText);
    player2Wins->setTextFormat(Qt::RichText);
    for (int player : {1, 2}) {
        QLabel* label = player == 1 ? player1Wins : player2Wins;
        label->setProperty(playerProperty, player);
        label->setAccessibleName(whose(player));
        setStyle(label, QString());
    }
}

int HeadlineEquity::playerOf(const QLabel* label) {
    return label->property(playerProperty).toInt();
}

void HeadlineEquity::setStyle(QLabel* label, const QString& more) {
    label->setStyleSheet(PlayerColor::markerStyle(playerOf(label)) + more);
}

void HeadlineEquity::calculate(const AnalysisInputs& inputs) {
    // The hint exists and runs out unseen: nothing shows it.
    new HintTooltip(QString::fromLatin1(hintText), window, 5000);
    clear();
    if (inputs.player1.empty() || inputs.player2.empty()) {
        cancel();
        return;
    }
    const std::string problem = Range::CardText::problemOf(inputs.board, inputs.deadCards);
    if (!problem.empty()) {
        // An unfinished flop, above all: no equity is the honest answer until it is complete.
        cancel();
        showUnavailable(QString::fromStdString(problem));
        return;
    }
    loadingMovie->start();
    player1Wins->setMovie(loadingMovie);
    player2Wins->setMovie(loadingMovie);
    cancel();
    equityHandle = threadPool.createEquityCalculationHandle();
    equityHandle.Start(inputs.player1, inputs.player2, inputs.board, inputs.deadCards);
}

bool HeadlineEquity::publish(const ThreadHandle& handle, const LongedEvaluation& result) {
    if (handle != equityHandle)
        return false;
    loadingMovie->stop();
    const double total = static_cast<double>(result.total);
    const double wins1 = static_cast<double>(result.wins1);
    const double wins2 = static_cast<double>(result.wins2);
    const double ties = static_cast<double>(result.ties);
    if (total <= 0.0) {
        // No matchup is possible: every hand of one range collides with the other range or
        // the cards. There is no equity to show.
        showUnavailable(QStringLiteral("No showdown is possible between these ranges on this "
                                       "board: every combination collides with a card."));
        return true;
    }
    show(player1Wins, wins1, wins2, ties, total);
    show(player2Wins, wins2, wins1, ties, total);
    return true;
}

void HeadlineEquity::cancel() {
    if (equityHandle.IsRunning())
        equityHandle.Stop();
}

void HeadlineEquity::clear() {
    for (QLabel* label : {player1Wins, player2Wins}) {
        label->clear();
        setStyle(label, QString());
        label->setToolTip(QString());
    }
}

void HeadlineEquity::show(QLabel* label, double wins, double otherWins, double ties, double total) {
    const double t = ties * 0.5;
    const double equity = (wins + t) / total * 100.0;
    label->setText(QString::number(equity, 'f', 2) + QStringLiteral(" %"));
    label->adjustSize();
    // The losses are halved like the ties: the three figures do not add up to 100, as they
    // never did.
    label->setToolTip(QStringLiteral("<b>") + whose(playerOf(label)) + QStringLiteral("</b>") +
                      QStringLiteral("<table border=\"0\"><tr><td><b>Wins:</b></td><td>") +
                      QString::number(wins / total * 100.0) + QStringLiteral(" %</td></tr>") +
                      QStringLiteral("<tr><td><b>Ties:</b></td><td>") +
                      QString::number(ties * 0.5 / total * 100.0) +
                      QStringLiteral(" %</td></tr><tr><td><b>Losses:</b></td><td>") +
                      QString::number(otherWins * 0.5 / total * 100.0) +
                      QStringLiteral("% </td></tr></table>"));
    const QColor color = colorForEquity(static_cast<float>(equity / 100.0));
    setStyle(label,
             QStringLiteral("background-color:rgb(%1,%2,0);").arg(color.red()).arg(color.green()));
}

void HeadlineEquity::showUnavailable(const QString& reason) {
    for (QLabel* label : {player1Wins, player2Wins}) {
        label->setText(QStringLiteral("&ndash;"));
        setStyle(label, QString());
        label->setToolTip(reason);
    }
}
