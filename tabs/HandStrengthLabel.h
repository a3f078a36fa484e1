#pragma once

#include <QLabel>
#include <QMouseEvent>
#include <VelmaraEvaluatorBase.h>

#include <cstddef>

// The caption of one row of a board evaluation table: rich text with the row's pictures and
// the hand strength's name. It knows the row it stands for (group and row index in the
// schema, and the key) and passes its mouse events on as signals; the tab decides what a
// click means by the x position.
class HandStrengthLabel : public QLabel {
    Q_OBJECT

public:
    HandStrengthLabel(const HandStrengthKey& key, std::size_t group, std::size_t row,
                      QWidget* parent = nullptr);

    const HandStrengthKey& key() const { return handStrength; }
    std::size_t groupIndex() const { return group; }
    std::size_t rowIndex() const { return row; }

signals:
    void clicked(HandStrengthLabel* label, QMouseEvent* event);
    void hovered(HandStrengthLabel* label, QMouseEvent* event);
    void hoverLost(HandStrengthLabel* label, QEvent* event);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    HandStrengthKey handStrength;
    std::size_t group;
    std::size_t row;
};
