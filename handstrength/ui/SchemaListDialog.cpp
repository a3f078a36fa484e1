#include "handstrength/ui/SchemaListDialog.h"
#include "ui_SchemaListDialog.h"

#include "handstrength/HandGroupStandardSchema.h"
#include "handstrength/ui/SchemaEditingDialog.h"
#include "handstrength/ui/SchemaNameList.h"

#include <QMessageBox>

namespace {

bool isStandard(const QString& name) {
    return name == QLatin1String(HandGroupStandardSchema::name);
}

} // namespace

SchemaListDialog::SchemaListDialog(QWidget* parent, HandGroupSchemaPool* pool)
    : QDialog(parent), ui(new Ui::SchemaListDialog), pool(pool) {
    ui->setupUi(this);
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
    if (pool != nullptr)
        working = *pool;

    connect(ui->schemaList, &QListWidget::currentTextChanged, this,
            &SchemaListDialog::onCurrentItemChange);
    connect(ui->schemaList, &QListWidget::itemDoubleClicked, this,
            [this](QListWidgetItem*) { editSchema(); });
    connect(ui->newButton, &QPushButton::clicked, this, &SchemaListDialog::createSchema);
    connect(ui->editButton, &QPushButton::clicked, this, &SchemaListDialog::editSchema);
    connect(ui->removeButton, &QPushButton::clicked, this, &SchemaListDialog::removeSchema);
    connect(ui->defaultButton, &QPushButton::clicked, this, &SchemaListDialog::onAsDefault);
    connect(ui->copyButton, &QPushButton::clicked, this, &SchemaListDialog::copySchema);
    connect(ui->buttonBox, &QDialogButtonBox::accepted, this, &SchemaListDialog::accept);
    connect(ui->buttonBox, &QDialogButtonBox::rejected, this, &SchemaListDialog::reject);

    fillList();
    select(QString::fromStdString(working.defaultName()));
    onCurrentItemChange(currentName());
}

SchemaListDialog::~SchemaListDialog() {
    delete ui;
}

bool SchemaListDialog::editPool(HandGroupSchemaPool& pool, QWidget* parent) {
    SchemaListDialog dialog(parent, &pool);
    return dialog.exec() == QDialog::Accepted;
}

QListWidget* SchemaListDialog::schemaList() const {
    return ui->schemaList;
}
QPushButton* SchemaListDialog::newButton() const {
    return ui->newButton;
}
QPushButton* SchemaListDialog::editButton() const {
    return ui->editButton;
}
QPushButton* SchemaListDialog::removeButton() const {
    return ui->removeButton;
}
QPushButton* SchemaListDialog::defaultButton() const {
    return ui->defaultButton;
}
QPushButton* SchemaListDialog::copyButton() const {
    return ui->copyButton;
}
QDialogButtonBox* SchemaListDialog::buttonBox() const {
    return ui->buttonBox;
}

QString SchemaListDialog::currentName() const {
    return SchemaNameList::currentName(ui->schemaList);
}

QListWidgetItem* SchemaListDialog::itemNamed(const QString& name) const {
    return SchemaNameList::itemNamed(ui->schemaList, name);
}

void SchemaListDialog::fillList() {
    // The form's placeholder items give way to the pool's names.
    ui->schemaList->clear();
    for (const HandGroupSchemaData& schema : working.schemas())
        ui->schemaList->addItem(QString::fromStdString(schema.name));
    updateFonts();
}

void SchemaListDialog::updateFonts() {
    const QString defaultName = QString::fromStdString(working.defaultName());
    for (int i = 0; i < ui->schemaList->count(); ++i) {
        QListWidgetItem* item = ui->schemaList->item(i);
        QFont font = item->font();
        font.setItalic(item->text() == defaultName);
        item->setFont(font);
    }
}

void SchemaListDialog::select(const QString& name) {
    QListWidgetItem* item = itemNamed(name);
    if (item == nullptr && ui->schemaList->count() > 0)
        item = ui->schemaList->item(0);
    ui->schemaList->setCurrentItem(item);
}

void SchemaListDialog::onCurrentItemChange(const QString& name) {
    const bool hasCurrent = ui->schemaList->currentItem() != nullptr && !name.isEmpty();
    const bool standard = hasCurrent && isStandard(name);
    ui->editButton->setText(standard ? QStringLiteral("&View Schema")
                                     : QStringLiteral("&Edit Schema"));
    ui->editButton->setEnabled(hasCurrent);
    ui->removeButton->setEnabled(hasCurrent && !standard);
    ui->defaultButton->setEnabled(hasCurrent && name.toStdString() != working.defaultName());
    ui->copyButton->setEnabled(hasCurrent);
}

void SchemaListDialog::createSchema() {
    SchemaEditingDialog dialog(this, working, std::string(), false);
    if (dialog.exec() != QDialog::Accepted)
        return;
    if (!working.add(dialog.schemaData()))
        return;
    const QString name = QString::fromStdString(dialog.schemaData().name);
    ui->schemaList->addItem(name);
    updateFonts();
    select(name);
}

void SchemaListDialog::editSchema() {
    const QString name = currentName();
    if (name.isEmpty())
        return;
    const bool readOnly = isStandard(name);
    SchemaEditingDialog dialog(this, working, name.toStdString(), readOnly);
    if (dialog.exec() != QDialog::Accepted || readOnly)
        return;
    if (!working.replace(name.toStdString(), dialog.schemaData()))
        return;
    ui->schemaList->currentItem()->setText(QString::fromStdString(dialog.schemaData().name));
    updateFonts();
    onCurrentItemChange(currentName());
}

void SchemaListDialog::removeSchema() {
    const QString name = currentName();
    if (name.isEmpty() || isStandard(name))
        return;
    if (!SchemaNameList::confirmRemoval(this))
        return;
    if (!working.remove(name.toStdString()))
        return;
    delete ui->schemaList->currentItem();
    updateFonts();
    onCurrentItemChange(currentName());
}

void SchemaListDialog::onAsDefault() {
    const QString name = currentName();
    if (name.isEmpty())
        return;
    working.setDefaultName(name.toStdString());
    updateFonts();
    onCurrentItemChange(name);
}

void SchemaListDialog::copySchema() {
    const QString name = currentName();
    const HandGroupSchemaData* original = working.find(name.toStdString());
    if (original == nullptr)
        return;
    const QString copyName = name + QStringLiteral(" - Copy");
    if (working.find(copyName.toStdString()) != nullptr) {
        QMessageBox::warning(this, QStringLiteral("Already Existing"),
                             QStringLiteral("A copy with the name does already exist. Please "
                                            "rename it, before you create another copy."));
        return;
    }
    HandGroupSchemaData copy = *original;
    copy.name = copyName.toStdString();
    working.add(copy);
    ui->schemaList->addItem(copyName);
    updateFonts();
    select(copyName);
}

void SchemaListDialog::accept() {
    if (pool != nullptr) {
        *pool = working;
        pool->save();
    }
    QDialog::accept();
}
