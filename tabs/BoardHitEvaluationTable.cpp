#include "tabs/BoardHitEvaluationTable.h"

#include "handstrength/HandGroup.h"
#include "handstrength/HandGroupSchema.h"
#include "handstrength/HandStrengthNames.h"
#include "tabs/BoardHitsBar.h"
#include "tabs/HandStrengthLabel.h"
#include "utils/ui/EvaluationTabOptions.h"
#include "utils/ui/PlayerColor.h"

#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

const QColor BoardHitEvaluationTable::player1Color = PlayerColor::of(1);
const QColor BoardHitEvaluationTable::player2Color = PlayerColor::of(2);

namespace {

QString picture(const char* resource) {
    return QStringLiteral("<img src=\"%1\" style=\"vertical-align: middle\" />")
        .arg(QLatin1String(resource));
}

// A transparent picture of a fixed width, so that the click zones do not depend on the font.
QString spacer(int width) {
    return QStringLiteral("<img src=\":/boardTabsSpacer.png\" width=\"%1\" height=\"16\" "
                          "style=\"vertical-align: middle\" />")
        .arg(width);
}

} // namespace

// The widget inside the scroll area: paints a stripe behind every other shown row and a
// highlight behind the row under the pointer.
class BoardHitEvaluationTable::RowsArea : public QWidget {
public:
    explicit RowsArea(QWidget* parent) : QWidget(parent) {}

    QGridLayout* grid = nullptr;
    std::vector<int> dataRows; // grid rows of the shown rows, in order
    int hoveredGridRow = -1;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), Qt::white);
        if (grid == nullptr)
            return;
        const int columns = grid->columnCount();
        for (std::size_t i = 0; i < dataRows.size(); ++i) {
            const int gridRow = dataRows[i];
            const QRect first = grid->cellRect(gridRow, 0);
            const QRect last = grid->cellRect(gridRow, columns - 1);
            if (!first.isValid())
                continue;
            const QRect stripe(0, first.top() - 1, width(),
                               std::max(first.height(), last.height()) + 2);
            if (gridRow == hoveredGridRow)
                painter.fillRect(stripe, QColor(0xe3, 0xef, 0xf1));
            else if (i % 2 == 1)
                painter.fillRect(stripe, QColor(0xf6, 0xf8, 0xfa));
        }
    }
};

BoardHitEvaluationTable::BoardHitEvaluationTable(QWidget* parent) : QWidget(parent) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    scrollArea = new QScrollArea(this);
    scrollArea->setObjectName(QStringLiteral("scrollArea"));
    scrollArea->setWidgetResizable(true);
    scrollArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scrollArea->setStyleSheet(
        QStringLiteral("QScrollArea {border-style:solid;border-width:1px;border-color: #a0a0a0;}"));
    layout->addWidget(scrollArea);
    area = new RowsArea(nullptr);
    area->setObjectName(QStringLiteral("rows"));
    area->setMouseTracking(true);
    scrollArea->setWidget(area);
}

BoardHitEvaluationTable::~BoardHitEvaluationTable() = default;

void BoardHitEvaluationTable::setSchema(const HandGroupSchema* schema) {
    if (schema == handGroupSchema)
        return;
    handGroupSchema = schema;
    dropKeptRows();
}

void BoardHitEvaluationTable::dropKeptRows() {
    // deleteLater: a row may be in the middle of its own event handler.
    for (auto& kept : keptRows) {
        kept.second.caption->hide();
        kept.second.caption->deleteLater();
        for (BoardHitsBar* bar : kept.second.bars) {
            bar->hide();
            bar->deleteLater();
        }
    }
    keptRows.clear();
    for (auto& title : groupTitles) {
        title.second->hide();
        title.second->deleteLater();
    }
    groupTitles.clear();
    shownRows.clear();
}

bool BoardHitEvaluationTable::hidesEmptyRows() {
    return EvaluationTabOptions::hidesEmptyLines();
}

QColor BoardHitEvaluationTable::shade(const QColor& color, unsigned int depth) {
    // Each level mixes in more white.
    const float keep = depth == 0 ? 1.0f : (depth == 1 ? 0.62f : 0.40f);
    const auto mix = [keep](int channel) {
        return static_cast<int>(static_cast<float>(channel) * keep + 255.0f * (1.0f - keep));
    };
    return QColor(mix(color.red()), mix(color.green()), mix(color.blue()));
}

QString BoardHitEvaluationTable::captionHeader() const {
    return QStringLiteral("&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;Hand Strength");
}

QWidget* BoardHitEvaluationTable::makeStatusWidget(QWidget*) {
    return nullptr;
}

BoardHitEvaluationTable::Tick BoardHitEvaluationTable::tickState(const HandGroup& group,
                                                                 std::size_t index) const {
    if (!ticks || handGroupSchema == nullptr)
        return Tick::None;
    const HandStrengthKey& key = group.rows[index].key;
    if (key == HandGroupSchema::customSumKey())
        return Tick::None;
    const bool self = handGroupSchema->customSumContains(key);
    const bool all = handGroupSchema->allChildrenTicked(key, index);
    const bool any = handGroupSchema->anyChildTicked(key, index);
    if (self && all)
        return Tick::Checked;
    if (self || any)
        return Tick::Mixed;
    return Tick::Unchecked;
}

QString BoardHitEvaluationTable::captionText(const HandGroup& group, std::size_t index) const {
    const HandGroupRow& row = group.rows[index];
    const unsigned int depth = group.depth(index);
    QString text;
    text.reserve(400);
    if (ticks) {
        switch (tickState(group, index)) {
        case Tick::Checked:
            text += picture(":/handStrengthChecked.PNG");
            break;
        case Tick::Mixed:
            text += picture(":/handStrengthMixedChecked.PNG");
            break;
        case Tick::Unchecked:
            text += picture(":/handStrengthUnchecked.PNG");
            break;
        case Tick::None:
            text += spacer(tickZoneEnd);
            break;
        }
        text += spacer(treeZoneBeginWithTicks - tickZoneEnd);
    } else {
        text += spacer(treeZoneBeginWithoutTicks);
    }
    const bool expandable = handGroupSchema != nullptr && handGroupSchema->isExpandable(row.key);
    if (expandable)
        text +=
            picture(handGroupSchema->isExpanded(row.key) ? ":/treeOpen.PNG" : ":/treeClose.PNG");
    else
        text += spacer(treeZoneWidth);
    text += spacer(4);
    for (unsigned int level = 0; level < depth; ++level)
        text += QStringLiteral("&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;");
    if (depth > 0)
        text += picture(":/roundCorner.PNG") + QStringLiteral("&nbsp;");
    const QString name = QString::fromStdString(handStrengthName(row.key)).toHtmlEscaped();
    if (depth == 0)
        text += QStringLiteral("<b>") + name + QStringLiteral("</b>");
    else
        text += name;
    return text;
}

const BoardHitEvaluationTable::Row*
BoardHitEvaluationTable::rowOf(const HandStrengthKey& key) const {
    for (const Row& row : shownRows) {
        if (row.caption->key() == key)
            return &row;
    }
    return nullptr;
}

BoardHitEvaluationTable::Row& BoardHitEvaluationTable::keptRow(const HandGroup& group,
                                                               std::size_t g, std::size_t i) {
    Row& row = keptRows[RowId(g, i)];
    if (row.caption != nullptr)
        return row;
    row.caption = new HandStrengthLabel(group.rows[i].key, g, i, area);
    row.caption->setObjectName(group.depth(i) > 0 ? QStringLiteral("subelement")
                                                  : QStringLiteral("element"));
    connect(row.caption, &HandStrengthLabel::clicked, this, &BoardHitEvaluationTable::forwardClick);
    connect(row.caption, &HandStrengthLabel::hovered, this, &BoardHitEvaluationTable::forwardHover);
    connect(row.caption, &HandStrengthLabel::hoverLost, this,
            &BoardHitEvaluationTable::forwardHoverLoss);
    const auto style = static_cast<BoardHitsBar::Style>(barStyle());
    for (int c = 0; c < numberColumnCount(); ++c)
        row.bars.push_back(new BoardHitsBar(style, -1.0f, -1.0f, -1.0f, -1, area));
    return row;
}

void BoardHitEvaluationTable::rebuildRows() {
    const int columns = numberColumnCount();
    if (headerCaption == nullptr) {
        headerCaption = new QLabel(captionHeader(), area);
        headerCaption->setObjectName(QStringLiteral("captionHeader"));
        headerCaption->setTextFormat(Qt::RichText);
        QFont bold = headerCaption->font();
        bold.setBold(true);
        headerCaption->setFont(bold);
        headerCaption->setStyleSheet(QStringLiteral("color: #5b6470;"));
        headerCells = makeHeaderCells(area);
        status = makeStatusWidget(area);
    }

    // The layout is made anew each time; the widgets stay.
    delete area->layout();
    auto* grid = new QGridLayout(area);
    grid->setContentsMargins(6, 4, 10, 6);
    grid->setHorizontalSpacing(14);
    grid->setVerticalSpacing(2);
    area->grid = grid;
    area->dataRows.clear();
    area->hoveredGridRow = -1;

    grid->addWidget(headerCaption, 0, 0);
    for (std::size_t c = 0; c < headerCells.size(); ++c)
        grid->addWidget(headerCells[c], 0, static_cast<int>(c) + 1);
    int gridRow = 1;
    if (status != nullptr) {
        status->setVisible(statusShown());
        if (statusShown())
            grid->addWidget(status, gridRow++, 0, 1, columns + 1);
    }

    std::vector<Row> previous;
    previous.swap(shownRows);
    std::map<std::size_t, bool> titleShown;
    std::map<RowId, bool> rowShown;
    const bool hideEmpty = hidesEmptyRows();
    if (handGroupSchema != nullptr) {
        const std::vector<HandGroup>& groups = handGroupSchema->getGroups();
        for (std::size_t g = 0; g < groups.size(); ++g) {
            const HandGroup& group = groups[g];
            bool titled =
                group.rows.empty() || group.rows.front().key == HandGroupSchema::customSumKey();
            for (std::size_t i = 0; i < group.rows.size(); ++i) {
                if (!group.rows[i].visible)
                    continue;
                if (hideEmpty && !rowHasHits(group, g, i))
                    continue;
                if (!titled) {
                    // The group's name above its first shown row.
                    QLabel*& title = groupTitles[g];
                    if (title == nullptr) {
                        title =
                            new QLabel(QString::fromStdString(group.name).toHtmlEscaped(), area);
                        title->setObjectName(QStringLiteral("groupTitle"));
                        title->setStyleSheet(
                            QStringLiteral("color: #17808f; font-weight: bold; padding-top: 8px; "
                                           "border-bottom: 1px solid #d5dde2;"));
                    }
                    grid->addWidget(title, gridRow++, 0, 1, columns + 1);
                    titleShown[g] = true;
                    titled = true;
                }
                const unsigned int depth = group.depth(i);
                Row& row = keptRow(group, g, i);
                row.caption->setText(captionText(group, i));
                grid->addWidget(row.caption, gridRow, 0);
                const std::vector<BarValues> values = rowValues(group, g, i, depth);
                for (std::size_t c = 0; c < row.bars.size(); ++c) {
                    BoardHitsBar* bar = row.bars[c];
                    if (c < values.size()) {
                        bar->setValues(values[c].fraction1, values[c].fraction2,
                                       values[c].fraction3, values[c].count);
                        if (values[c].color.isValid())
                            bar->setBarColor(values[c].color);
                    }
                    grid->addWidget(bar, gridRow, static_cast<int>(c) + 1);
                }
                rowShown[RowId(g, i)] = true;
                area->dataRows.push_back(gridRow);
                shownRows.push_back(row);
                ++gridRow;
            }
        }
    }
    for (int c = 1; c <= columns; ++c)
        grid->setColumnStretch(c, 1);
    grid->setRowStretch(gridRow, 1);

    // Kept widgets that are not in the layout must not show at their old places.
    for (auto& kept : keptRows) {
        const bool shown = rowShown.count(kept.first) != 0;
        kept.second.caption->setVisible(shown);
        for (BoardHitsBar* bar : kept.second.bars)
            bar->setVisible(shown);
    }
    for (auto& title : groupTitles)
        title.second->setVisible(titleShown.count(title.first) != 0);
    area->update();
}

namespace {

int gridRowOf(QWidget* area, QWidget* caption) {
    auto* grid = qobject_cast<QGridLayout*>(area->layout());
    if (grid == nullptr)
        return -1;
    const int index = grid->indexOf(caption);
    if (index < 0)
        return -1;
    int row = 0, column = 0, rowSpan = 0, columnSpan = 0;
    grid->getItemPosition(index, &row, &column, &rowSpan, &columnSpan);
    return row;
}

} // namespace

void BoardHitEvaluationTable::forwardClick(HandStrengthLabel* label, QMouseEvent* event) {
    emit clicked(label, event);
}

void BoardHitEvaluationTable::forwardHover(HandStrengthLabel* label, QMouseEvent* event) {
    const int row = gridRowOf(area, label);
    if (row != area->hoveredGridRow) {
        area->hoveredGridRow = row;
        area->update();
    }
    emit hovered(label, event);
}

void BoardHitEvaluationTable::forwardHoverLoss(HandStrengthLabel* label, QEvent* event) {
    area->hoveredGridRow = -1;
    area->update();
    emit hoverLost(label, event);
}
