#include "selection/GroupColorSelectionDialog.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLinearGradient>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QColor toQColor(const Range::GroupColor::Rgb& rgb) {
    return QColor(rgb.red, rgb.green, rgb.blue);
}

Range::GroupColor::Rgb toRgb(const QColor& color) {
    Range::GroupColor::Rgb rgb;
    rgb.red = color.red();
    rgb.green = color.green();
    rgb.blue = color.blue();
    return rgb;
}

QIcon gradientIcon(const QColor& from, const QColor& to) {
    QPixmap pixmap(40, 16);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QLinearGradient gradient(0, 0, 0, 16);
    gradient.setColorAt(0, from);
    gradient.setColorAt(1, to);
    painter.setPen(QColor(0xa0, 0xa0, 0xa0));
    painter.setBrush(gradient);
    painter.drawRect(0, 0, 39, 15);
    return QIcon(pixmap);
}

} // namespace

GroupColorSelectionDialog::GroupColorSelectionDialog(
    const Range::GroupColor& current, const std::vector<Range::GroupColor>& unusedStandardColors,
    QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("GroupColorSelectionDialog"));
    setWindowTitle(QStringLiteral("Group Colors"));
    setStyleSheet(QStringLiteral("#GroupColorSelectionDialog { background-color: white; }"));
    colorPicker = [](const QColor& initial, QWidget* owner) {
        return QColorDialog::getColor(initial, owner, QStringLiteral("Select Color"));
    };

    auto* layout = new QVBoxLayout(this);
    auto* grid = new QGridLayout;
    grid->addWidget(new QLabel(QStringLiteral("First Color:"), this), 0, 0);
    firstButton = new QPushButton(this);
    firstButton->setObjectName(QStringLiteral("firstColorButton"));
    firstButton->setFixedSize(60, 24);
    grid->addWidget(firstButton, 0, 1);
    grid->addWidget(new QLabel(QStringLiteral("Second Color:"), this), 1, 0);
    secondButton = new QPushButton(this);
    secondButton->setObjectName(QStringLiteral("secondColorButton"));
    secondButton->setFixedSize(60, 24);
    grid->addWidget(secondButton, 1, 1);
    onlyOne = new QCheckBox(QStringLiteral("Only Use One Color"), this);
    onlyOne->setObjectName(QStringLiteral("onlyUseOneColor"));
    grid->addWidget(onlyOne, 2, 0, 1, 2);
    layout->addLayout(grid);

    layout->addWidget(new QLabel(QStringLiteral("Unused Standard Colors:"), this));
    unusedList = new QListWidget(this);
    unusedList->setObjectName(QStringLiteral("unusedStandardColors"));
    unusedList->setIconSize(QSize(40, 16));
    unusedList->setViewMode(QListView::IconMode);
    unusedList->setFlow(QListView::LeftToRight);
    unusedList->setResizeMode(QListView::Adjust);
    unusedList->setSpacing(4);
    unusedList->setMinimumHeight(80);
    for (const Range::GroupColor& color : unusedStandardColors) {
        const QColor from = toQColor(color.colorFrom);
        const QColor to = toQColor(color.colorTo);
        auto* item = new QListWidgetItem(gradientIcon(from, to), QString(), unusedList);
        item->setData(Qt::UserRole, QVariantList{from, to});
        item->setToolTip(from.name() + QStringLiteral(" - ") + to.name());
    }
    layout->addWidget(unusedList);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(firstButton, &QPushButton::clicked, this,
            &GroupColorSelectionDialog::onFirstColorClicked);
    connect(secondButton, &QPushButton::clicked, this,
            &GroupColorSelectionDialog::onSecondColorClicked);
    connect(onlyOne, &QCheckBox::toggled, this, &GroupColorSelectionDialog::onOnlyOneColorToggled);
    connect(unusedList, &QListWidget::itemClicked, this,
            &GroupColorSelectionDialog::onUnusedColorClicked);

    setColors(toQColor(current.colorFrom), toQColor(current.colorTo));
}

Range::GroupColor GroupColorSelectionDialog::groupColor() const {
    Range::GroupColor color;
    color.colorFrom = toRgb(first);
    color.colorTo = toRgb(second);
    color.usesColor = true;
    return color;
}

void GroupColorSelectionDialog::setColors(const QColor& from, const QColor& to) {
    first = from;
    second = to;
    {
        const QSignalBlocker blocker(onlyOne);
        onlyOne->setChecked(first == second);
    }
    showColors();
}

void GroupColorSelectionDialog::showColors() {
    const QString style = QStringLiteral("border-style:none;background-color:");
    firstButton->setStyleSheet(style + first.name());
    if (onlyOne->isChecked()) {
        secondButton->setEnabled(false);
        secondButton->setStyleSheet(QStringLiteral("border-style:none;"));
    } else {
        secondButton->setEnabled(true);
        secondButton->setStyleSheet(style + second.name());
    }
}

void GroupColorSelectionDialog::onFirstColorClicked() {
    const QColor picked = colorPicker(first, this);
    if (!picked.isValid())
        return;
    first = picked;
    if (onlyOne->isChecked())
        second = first;
    showColors();
}

void GroupColorSelectionDialog::onSecondColorClicked() {
    const QColor picked = colorPicker(second, this);
    if (!picked.isValid())
        return;
    second = picked;
    showColors();
}

void GroupColorSelectionDialog::onOnlyOneColorToggled(bool checked) {
    Q_UNUSED(checked);
    second = first;
    showColors();
}

void GroupColorSelectionDialog::onUnusedColorClicked(QListWidgetItem* item) {
    if (!item)
        return;
    const QVariantList colors = item->data(Qt::UserRole).toList();
    if (colors.size() != 2)
        return;
    setColors(colors[0].value<QColor>(), colors[1].value<QColor>());
}
