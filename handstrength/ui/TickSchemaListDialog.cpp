#include "handstrength/ui/TickSchemaListDialog.h"
#include "ui_TickSchemaListDialog.h"

#include "handstrength/ui/SchemaNameList.h"

#include <QInputDialog>

TickSchemaListDialog::TickSchemaListDialog(QWidget* parent, HandGroupTickSchemaPool* pool,
                                           const std::vector<HandStrengthKey>& currentTicks)
    : QDialog(parent), ui(new Ui::TickSchemaListDialog), pool(pool), currentTicks(currentTicks) {
    ui->setupUi(this);
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
    if (pool != nullptr)
        working = *pool;

    connect(ui->schemaList, &QListWidget::currentTextChanged, this,
            &TickSchemaListDialog::onCurrentItemChange);
    connect(ui->createButton, &QPushButton::clicked, this, &TickSchemaListDialog::createSchema);
    connect(ui->removeButton, &QPushButton::clicked, this, &TickSchemaListDialog::removeSchema);
    connect(ui->buttonBox, &QDialogButtonBox::accepted, this, &TickSchemaListDialog::accept);
    connect(ui->buttonBox, &QDialogButtonBox::rejected, this, &TickSchemaListDialog::reject);

    fillList();
    onCurrentItemChange(currentName());
}

TickSchemaListDialog::~TickSchemaListDialog() {
    delete ui;
}

bool TickSchemaListDialog::editPool(HandGroupTickSchemaPool& pool,
                                    const std::vector<HandStrengthKey>& currentTicks,
                                    QWidget* parent) {
    TickSchemaListDialog dialog(parent, &pool, currentTicks);
    return dialog.exec() == QDialog::Accepted;
}

QListWidget* TickSchemaListDialog::schemaList() const {
    return ui->schemaList;
}
QPushButton* TickSchemaListDialog::createButton() const {
    return ui->createButton;
}
QPushButton* TickSchemaListDialog::removeButton() const {
    return ui->removeButton;
}
QDialogButtonBox* TickSchemaListDialog::buttonBox() const {
    return ui->buttonBox;
}

QString TickSchemaListDialog::currentName() const {
    return SchemaNameList::currentName(ui->schemaList);
}

QListWidgetItem* TickSchemaListDialog::itemNamed(const QString& name) const {
    return SchemaNameList::itemNamed(ui->schemaList, name);
}

void TickSchemaListDialog::fillList() {
    ui->schemaList->clear();
    for (const HandGroupTickSchemaPool::HandGroupTickSchema& schema : working.schemas())
        ui->schemaList->addItem(QString::fromStdString(schema.name));
}

void TickSchemaListDialog::select(const QString& name) {
    ui->schemaList->setCurrentItem(itemNamed(name));
}

void TickSchemaListDialog::onCurrentItemChange(const QString& name) {
    const bool hasCurrent = ui->schemaList->currentItem() != nullptr && !name.isEmpty();
    ui->removeButton->setEnabled(hasCurrent &&
                                 !HandGroupTickSchemaPool::isDefaultName(name.toStdString()));
}

void TickSchemaListDialog::createSchema() {
    bool ok = false;
    const QString name =
        QInputDialog::getText(this, QStringLiteral("Name of the Schema"),
                              QStringLiteral("How do you want to name this new custom selection "
                                             "schema?"),
                              QLineEdit::Normal, QString(), &ok)
            .trimmed();
    if (!ok || name.isEmpty())
        return;
    working.add({name.toStdString(), currentTicks});
    fillList();
    select(name);
}

void TickSchemaListDialog::removeSchema() {
    const QString name = currentName();
    if (name.isEmpty() || HandGroupTickSchemaPool::isDefaultName(name.toStdString()))
        return;
    if (!SchemaNameList::confirmRemoval(this))
        return;
    if (!working.remove(name.toStdString()))
        return;
    delete ui->schemaList->currentItem();
    onCurrentItemChange(currentName());
}

void TickSchemaListDialog::accept() {
    if (pool != nullptr) {
        *pool = working;
        pool->save();
    }
    QDialog::accept();
}
