#include "evfe/ui/EV_FE_CalculationsColorCodingDialog.h"
#include "ui_EV_FE_CalculationsColorCodingDialog.h"

#include <QColorDialog>
#include <QDoubleSpinBox>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>

#include <algorithm>

EV_FE_CalculationsColorCodingDialog::EV_FE_CalculationsColorCodingDialog(QWidget* parent)
    : QDialog(parent), ui(new Ui::EV_FE_CalculationsColorCodingDialog) {
    ui->setupUi(this);
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    edited = EV_FE_ColorCoding::load(settings);

    buttons = {ui->colorButton1, ui->colorButton2, ui->colorButton3, ui->colorButton4,
               ui->colorButton5, ui->colorButton6, ui->colorButton7};
    borders = {ui->border1, ui->border2, ui->border3, ui->border4, ui->border5, ui->border6};
    for (std::size_t i = 0; i < borders.size(); ++i)
        borders[i]->setValue(static_cast<double>(edited.borders[i]));
    for (int i = 0; i < EV_FE_ColorCoding::colorCount; ++i)
        showColor(i);
    ui->enableColorCoding->setChecked(edited.enabled);
    ui->colorCodings->setEnabled(edited.enabled);

    for (QPushButton* button : buttons)
        connect(button, &QPushButton::clicked, this,
                &EV_FE_CalculationsColorCodingDialog::selectColor);
    for (QDoubleSpinBox* border : borders)
        connect(border, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
                &EV_FE_CalculationsColorCodingDialog::reactToBorderChange);
    connect(ui->enableColorCoding, &QCheckBox::toggled, this,
            &EV_FE_CalculationsColorCodingDialog::reactToEnableChange);
    connect(ui->buttonBox, &QDialogButtonBox::accepted, this,
            &EV_FE_CalculationsColorCodingDialog::accept);
    connect(ui->buttonBox, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

EV_FE_CalculationsColorCodingDialog::~EV_FE_CalculationsColorCodingDialog() {
    delete ui;
}

QPushButton* EV_FE_CalculationsColorCodingDialog::colorButton(int number) const {
    return number >= 1 && number <= EV_FE_ColorCoding::colorCount
               ? buttons[static_cast<std::size_t>(number - 1)]
               : nullptr;
}

QDoubleSpinBox* EV_FE_CalculationsColorCodingDialog::borderBox(int number) const {
    return number >= 1 && number <= EV_FE_ColorCoding::borderCount
               ? borders[static_cast<std::size_t>(number - 1)]
               : nullptr;
}

void EV_FE_CalculationsColorCodingDialog::showColor(int index) {
    const EV_FE_ColorCoding::Rgb& color = edited.colors[static_cast<std::size_t>(index)];
    buttons[static_cast<std::size_t>(index)]->setStyleSheet(
        QStringLiteral("border-style:none;background-color:") +
        QColor(color.red, color.green, color.blue).name() + QStringLiteral(";"));
}

void EV_FE_CalculationsColorCodingDialog::selectColor() {
    const auto found = std::find(buttons.begin(), buttons.end(), sender());
    if (found == buttons.end())
        return;
    const int index = static_cast<int>(found - buttons.begin());
    EV_FE_ColorCoding::Rgb& color = edited.colors[static_cast<std::size_t>(index)];
    const QColor chosen = QColorDialog::getColor(QColor(color.red, color.green, color.blue), this,
                                                 QStringLiteral("Select Color"));
    if (!chosen.isValid())
        return;
    color = {chosen.red(), chosen.green(), chosen.blue()};
    showColor(index);
}

void EV_FE_CalculationsColorCodingDialog::reactToBorderChange() {
    for (std::size_t i = 0; i < borders.size(); ++i)
        edited.borders[i] = static_cast<float>(borders[i]->value());
}

void EV_FE_CalculationsColorCodingDialog::reactToEnableChange(bool checked) {
    edited.enabled = checked;
    ui->colorCodings->setEnabled(checked);
}

void EV_FE_CalculationsColorCodingDialog::accept() {
    reactToBorderChange();
    if (!edited.bordersAscend()) {
        QMessageBox::warning(this, QStringLiteral("Borders Invalid"),
                             QStringLiteral("Your specified borders do not succeed each other. "
                                            "Please make sure that the limits follow an "
                                            "ascending order."));
        return;
    }
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    edited.save(settings);
    QDialog::accept();
}
