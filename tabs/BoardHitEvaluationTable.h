#pragma once

#include <QColor>
#include <QMouseEvent>
#include <QString>
#include <QWidget>
#include <VelmaraEvaluatorBase.h>

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

class BoardHitsBar;
class HandGroupSchema;
class HandStrengthLabel;
struct HandGroup;
class QGridLayout;
class QLabel;
class QScrollArea;

// The scrollable rows of a board evaluation tab: one row for each shown element of a hand
// group schema, a HandStrengthLabel caption and the numbers and bars of the derived table.
//
// Rows are made by walking the schema's groups in order: a row is shown when its `visible`
// flag is set (its parent is expanded) and, when the option "Hide Empty Lines in Evaluation
// Tabs" is on, when it has hits. The option is read at every rebuild, where the window
// writes it (EvaluationTabOptions).
//
// A row's widgets are made the first time it is shown and kept, hidden when not shown,
// until the schema is replaced: a new evaluation only writes new numbers, which keeps a
// refresh with many open rows cheap. Captions are therefore never deleted from inside their
// own mouse handlers.
//
// The schema is not owned; the tab that owns it hands it over again whenever it replaces it.
class BoardHitEvaluationTable : public QWidget {
    Q_OBJECT

public:
    // One shown row.
    struct Row {
        HandStrengthLabel* caption = nullptr;
        std::vector<BoardHitsBar*> bars;
    };

    // What one bar of a row shows.
    struct BarValues {
        float fraction1 = -1.0f;
        float fraction2 = -1.0f;
        float fraction3 = -1.0f;
        int count = -1;
        QColor color;
    };

    // State of a row's tick box.
    enum class Tick { None, Unchecked, Mixed, Checked };

    // Caption geometry (x in pixels from the caption's left edge). With ticks the tick box
    // is x 0 to 18 and the tree marker x 21 to 37; without, the tree marker is x 5 to 21.
    static constexpr int tickZoneBegin = 0;
    static constexpr int tickZoneEnd = 18;
    static constexpr int treeZoneBeginWithTicks = 21;
    static constexpr int treeZoneBeginWithoutTicks = 5;
    static constexpr int treeZoneWidth = 16;

    explicit BoardHitEvaluationTable(QWidget* parent = nullptr);
    ~BoardHitEvaluationTable() override;

    // A different schema drops the kept rows.
    void setSchema(const HandGroupSchema* schema);
    const HandGroupSchema* schema() const { return handGroupSchema; }
    // Whether captions carry the custom sum's tick boxes.
    void setShowsTicks(bool showsTicks) { ticks = showsTicks; }
    bool showsTicks() const { return ticks; }

    // Shows the rows of the schema's present state with its present numbers.
    void rebuildRows();

    const std::vector<Row>& rows() const { return shownRows; }
    // The first shown row of this key, or null.
    const Row* rowOf(const HandStrengthKey& key) const;

    // The option, as read here.
    static bool hidesEmptyRows();
    // The caption's rich text of the row at `index` of a group.
    QString captionText(const HandGroup& group, std::size_t index) const;
    Tick tickState(const HandGroup& group, std::size_t index) const;

    // The colour of a bar at a depth of the tree: deeper rows are lighter.
    static QColor shade(const QColor& color, unsigned int depth);
    // The players' colours (PlayerColor), as the range lines and the equity show them.
    static const QColor player1Color;
    static const QColor player2Color;

signals:
    void clicked(HandStrengthLabel* label, QMouseEvent* event);
    void hovered(HandStrengthLabel* label, QMouseEvent* event);
    void hoverLost(HandStrengthLabel* label, QEvent* event);

public slots:
    void forwardClick(HandStrengthLabel* label, QMouseEvent* event);
    void forwardHover(HandStrengthLabel* label, QMouseEvent* event);
    void forwardHoverLoss(HandStrengthLabel* label, QEvent* event);

protected:
    // Number of bars right of the caption, and their style.
    virtual int numberColumnCount() const = 0;
    virtual int barStyle() const = 0; // a BoardHitsBar::Style
    // The header cells right of the caption's header, made once as children of `parent`.
    virtual std::vector<QWidget*> makeHeaderCells(QWidget* parent) = 0;
    // The caption header's text.
    virtual QString captionHeader() const;
    // Whether the row has anything to show; rows without are hidden under the option.
    virtual bool rowHasHits(const HandGroup& group, std::size_t groupIndex,
                            std::size_t index) const = 0;
    // What each bar of the row shows, one entry per number column.
    virtual std::vector<BarValues> rowValues(const HandGroup& group, std::size_t groupIndex,
                                             std::size_t index, unsigned int depth) const = 0;
    // A widget between the header and the rows (the win table's running calculation), made
    // once; null for none.
    virtual QWidget* makeStatusWidget(QWidget* parent);
    virtual bool statusShown() const { return false; }

private:
    class RowsArea;
    using RowId = std::pair<std::size_t, std::size_t>; // group, row

    void dropKeptRows();
    Row& keptRow(const HandGroup& group, std::size_t g, std::size_t i);

    QScrollArea* scrollArea = nullptr;
    RowsArea* area = nullptr;
    QLabel* headerCaption = nullptr;
    std::vector<QWidget*> headerCells;
    QWidget* status = nullptr;
    const HandGroupSchema* handGroupSchema = nullptr;
    bool ticks = false;
    std::map<RowId, Row> keptRows;
    std::map<std::size_t, QLabel*> groupTitles;
    std::vector<Row> shownRows;
};
