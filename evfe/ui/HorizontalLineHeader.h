#pragma once

#include <QWidget>

class QLabel;

// A heading inside the EV/FE page's list of actions ("First Action", "Reactions",
// "Overall Result"): its text in bold, followed by a thin line to the right edge.
class HorizontalLineHeader : public QWidget {
    Q_OBJECT

public:
    explicit HorizontalLineHeader(const QString& text, QWidget* parent = nullptr);

    QString text() const;

private:
    QLabel* label;
};
