#pragma once

#include <QLabel>

namespace Range {
class TreeRangeNode;
}

// One group of a player shown as a small clickable box with its number: "*" for the full
// range (number 0), the number for a group, "New" for the box that creates a group. The
// box of a group is filled with the group's colour gradient; the selected box is bold and
// underlined.
class RangeGroupBox : public QLabel {
    Q_OBJECT

public:
    enum State { Normal = 0, Selected = 1, NewGroup = 2 };

    explicit RangeGroupBox(QWidget* parent = nullptr);

    // `number` 0 is the full range.
    void setNumber(unsigned int number);
    unsigned int number() const { return groupNumber; }
    void setState(int state);
    int state() const { return boxState; }
    Range::TreeRangeNode* rangeNode() const { return group; }

    // The text the box shows for its state and number.
    QString displayText() const;

signals:
    void clicked();

public slots:
    // The group shown (not owned; null for none).
    void SetRangeNode(Range::TreeRangeNode* handRangeNode);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void applyFont();

    Range::TreeRangeNode* group = nullptr;
    unsigned int groupNumber = 0;
    int boxState = Normal;
};
