#pragma once

#include "evfe/EV_FE_ColorCoding.h"

#include <QDialog>

#include <array>

class QDoubleSpinBox;
class QPushButton;
namespace Ui {
class EV_FE_CalculationsColorCodingDialog;
}

// "EV/FE Calculations: Color Coding": the colours of the EV labels and the borders between
// them, switched on or off as a whole. Opens with what the settings hold; OK stores it there,
// but only when every border is below the next one.
//
// Modal; made per use on the stack of the slot that opens it.
class EV_FE_CalculationsColorCodingDialog : public QDialog {
    Q_OBJECT

public:
    explicit EV_FE_CalculationsColorCodingDialog(QWidget* parent = nullptr);
    ~EV_FE_CalculationsColorCodingDialog() override;

    // What the dialog shows at the moment.
    const EV_FE_ColorCoding& coding() const { return edited; }
    QPushButton* colorButton(int number) const;
    QDoubleSpinBox* borderBox(int number) const;
    Ui::EV_FE_CalculationsColorCodingDialog* form() const { return ui; }

public slots:
    // Asks for a new colour for the button that was clicked.
    void selectColor();
    void reactToBorderChange();
    void reactToEnableChange(bool checked);
    void accept() override;

private:
    void showColor(int index);

    Ui::EV_FE_CalculationsColorCodingDialog* ui;
    EV_FE_ColorCoding edited;
    std::array<QPushButton*, EV_FE_ColorCoding::colorCount> buttons{};
    std::array<QDoubleSpinBox*, EV_FE_ColorCoding::borderCount> borders{};
};
