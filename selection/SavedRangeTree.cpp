#include "selection/SavedRangeTree.h"

#include "Range/Tree.h"
#include "selection/HandSelectionTree.h"
#include "selection/HandSelectionTreeModel.h"
#include "selection/SavedRangeTreeSettings.h"

#include "ui_HandSelectionDialog.h"

#include <QDir>
#include <QFileInfo>
#include <QItemSelectionModel>

#include <utility>

namespace {

const QString treeExtension = QStringLiteral("qvt");

QString fileFilter() {
    return QStringLiteral("%1 Files (*.%2);;All Files (*)")
        .arg(QStringLiteral("Quorvane Range Tree"), treeExtension);
}

// The folder of the last tree file opened or written in this run.
QString& lastDirectory() {
    static QString directory = QDir::homePath();
    return directory;
}

const HandSelectionPrompts::NameQuestion categoryQuestion = {
    QStringLiteral("Name New Category"), QStringLiteral("What is the name of the new category?"),
    QString(), QString()};
const HandSelectionPrompts::NameQuestion rangeQuestion = {
    QStringLiteral("Name of Range"), QStringLiteral("What is the name of the new range?"),
    QStringLiteral("Create"), QStringLiteral(":/quorvane-Logo-small.png")};

} // namespace

SavedRangeTree::SavedRangeTree(Ui::HandSelectionDialog* form, QWidget* dialog)
    : QObject(dialog), ui(form), dialog(dialog), prompts(HandSelectionPrompts::standard()),
      treeModel(new HandSelectionTreeModel(this)) {
    HandSelectionTree* treeView = view();
    treeView->setModel(treeModel);

    connect(ui->editTreeNameButton, &QPushButton::clicked, this, &SavedRangeTree::editName);
    connect(ui->addFolderButton, &QPushButton::clicked, this, &SavedRangeTree::addCategory);
    connect(ui->deleteTreeNodeButton, &QPushButton::clicked, this, &SavedRangeTree::deleteNode);
    connect(ui->treeMoveUpButton, &QPushButton::clicked, this, &SavedRangeTree::moveUp);
    connect(ui->treeMoveDownButton, &QPushButton::clicked, this, &SavedRangeTree::moveDown);
    connect(ui->treeUndoButton, &QPushButton::clicked, this, &SavedRangeTree::undo);
    connect(ui->treeRedoButton, &QPushButton::clicked, this, &SavedRangeTree::redo);
    connect(ui->importTreeButton, &QPushButton::clicked, this, &SavedRangeTree::importFile);
    connect(ui->exportTreeButton, &QPushButton::clicked, this, &SavedRangeTree::exportFile);
    connect(treeView, &QAbstractItemView::doubleClicked, this, &SavedRangeTree::choose);
    connect(treeView->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &SavedRangeTree::updateButtons);
    connect(treeModel, &QAbstractItemModel::modelReset, this, &SavedRangeTree::updateButtons);
    connect(treeModel, &QAbstractItemModel::rowsRemoved, this, &SavedRangeTree::updateButtons);

    // A drag within the view is a drop and a removal: one step once the drag is over.
    connect(treeModel, &HandSelectionTreeModel::changeOccured, this,
            &SavedRangeTree::onModelChanged);
    connect(treeView, &HandSelectionTree::treeDropped, this, &SavedRangeTree::onModelChanged);
    connect(treeView, &HandSelectionTree::dragFinished, this, &SavedRangeTree::recordChange);
    updateButtons();
}

void SavedRangeTree::setPrompts(const HandSelectionPrompts& given) {
    const HandSelectionPrompts standard = HandSelectionPrompts::standard();
    prompts = given;
    const auto keep = [](auto& prompt, const auto& fallback) {
        if (!prompt)
            prompt = fallback;
    };
    keep(prompts.warn, standard.warn);
    keep(prompts.askTreeName, standard.askTreeName);
    keep(prompts.askOverwriteOrNew, standard.askOverwriteOrNew);
    keep(prompts.confirmTreeDelete, standard.confirmTreeDelete);
    keep(prompts.chooseOpenFile, standard.chooseOpenFile);
    keep(prompts.chooseSaveFile, standard.chooseSaveFile);
}

Range::Tree& SavedRangeTree::tree() {
    return treeModel->tree();
}

HandSelectionTree* SavedRangeTree::view() const {
    return ui->rangeTree;
}

// --- Settings ------------------------------------------------------------------------------------

void SavedRangeTree::load() {
    const SavedRangeTreeSettings::Loaded loaded = SavedRangeTreeSettings::load(*treeModel);
    problem = loaded.problem;
    problemReported = false;
    view()->setOpenNodes(loaded.openNodes);
    resetHistory();
}

void SavedRangeTree::reportLoadProblem() {
    if (problem.isEmpty() || problemReported)
        return;
    problemReported = true;
    prompts.warn(dialog, QStringLiteral("Range Tree"), problem);
}

void SavedRangeTree::saveToSettings() {
    SavedRangeTreeSettings::save(*treeModel, view()->openNodes());
}

void SavedRangeTree::saveOpenness() {
    SavedRangeTreeSettings::saveOpenness(view()->openNodes());
}

// --- Undo ----------------------------------------------------------------------------------------

SavedRangeTree::Memento SavedRangeTree::takeMemento() const {
    return Memento{treeModel->memento(), view()->openNodes()};
}

void SavedRangeTree::resetHistory() {
    history.reset(takeMemento());
    updateButtons();
}

void SavedRangeTree::recordChange() {
    if (history.record(takeMemento()))
        updateButtons();
}

void SavedRangeTree::onModelChanged() {
    if (!view()->isDragging())
        recordChange();
}

void SavedRangeTree::undo() {
    if (const Memento* memento = history.undo())
        restore(*memento);
}

void SavedRangeTree::redo() {
    if (const Memento* memento = history.redo())
        restore(*memento);
}

void SavedRangeTree::restore(const Memento& memento) {
    treeModel->restore(memento.nodes);
    view()->setOpenNodes(memento.openNodes);
    emit restored();
    updateButtons();
}

void SavedRangeTree::updateButtons() {
    ui->treeUndoButton->setEnabled(history.canUndo());
    ui->treeRedoButton->setEnabled(history.canRedo());
    const bool hasNode = current().isValid();
    for (QPushButton* button :
         {ui->editTreeNameButton, ui->saveTreeRangeButton, ui->deleteTreeNodeButton,
          ui->treeMoveUpButton, ui->treeMoveDownButton})
        button->setEnabled(hasNode);
}

// --- Actions -------------------------------------------------------------------------------------

QModelIndex SavedRangeTree::current() const {
    return view()->currentIndex();
}

void SavedRangeTree::makeCurrent(const QModelIndex& index) {
    if (!index.isValid())
        return;
    if (index.parent().isValid())
        view()->expand(index.parent());
    view()->setCurrentIndex(index);
    view()->scrollTo(index);
}

bool SavedRangeTree::askName(const HandSelectionPrompts::NameQuestion& question,
                             const QString& emptyTitle, const QString& emptyText, QString& name) {
    for (;;) {
        if (!prompts.askTreeName(dialog, question, name))
            return false;
        name = name.trimmed();
        if (!name.isEmpty())
            return true;
        prompts.warn(dialog, emptyTitle, emptyText);
    }
}

void SavedRangeTree::addCategory() {
    QString name;
    if (!askName(categoryQuestion, QStringLiteral("No name given"),
                 QStringLiteral("Please enter a name for the category."), name))
        return;
    makeCurrent(treeModel->addCategory(name.toStdString()));
}

void SavedRangeTree::addRange(const Range::Tree& source, unsigned int sourceNode) {
    const QModelIndex category = treeModel->categoryOf(current());
    if (!category.isValid())
        return;
    QString name;
    if (!askName(rangeQuestion, QStringLiteral("Enter Name"),
                 QStringLiteral("Please enter a name for the range."), name))
        return;
    makeCurrent(treeModel->addRange(category, name.toStdString(), source, sourceNode));
}

void SavedRangeTree::saveRange(const Range::Tree& source, unsigned int sourceNode) {
    const QModelIndex index = current();
    if (!treeModel->isRange(index)) {
        addRange(source, sourceNode);
        return;
    }
    switch (prompts.askOverwriteOrNew(dialog)) {
    case HandSelectionPrompts::OverwriteAnswer::Overwrite:
        treeModel->updateRange(index, source, sourceNode);
        break;
    case HandSelectionPrompts::OverwriteAnswer::New:
        addRange(source, sourceNode);
        break;
    case HandSelectionPrompts::OverwriteAnswer::Cancel:
        break;
    }
}

void SavedRangeTree::editName() {
    const QModelIndex index = current();
    if (!index.isValid())
        return;
    const bool folder = treeModel->isFolder(index);
    const HandSelectionPrompts::NameQuestion question = {
        QStringLiteral("Edit Name"),
        folder ? QStringLiteral("What is the new name of the category?")
               : QStringLiteral("What is the new name of the range?"),
        QString(), QString()};
    QString name = index.data(Qt::EditRole).toString();
    if (!askName(question, folder ? QStringLiteral("No name given") : QStringLiteral("Enter Name"),
                 folder ? QStringLiteral("Please enter a name for the category.")
                        : QStringLiteral("Please enter a name for the range."),
                 name))
        return;
    treeModel->rename(index, name.toStdString());
}

void SavedRangeTree::deleteNode() {
    const QModelIndex index = current();
    if (!index.isValid() || !prompts.confirmTreeDelete(dialog))
        return;
    treeModel->removeNode(index);
}

void SavedRangeTree::moveUp() {
    makeCurrent(treeModel->moveUp(current()));
}

void SavedRangeTree::moveDown() {
    makeCurrent(treeModel->moveDown(current()));
}

void SavedRangeTree::importFile() {
    const QString fileName =
        prompts.chooseOpenFile(dialog, QStringLiteral("Open"), lastDirectory(), fileFilter());
    if (fileName.isEmpty())
        return;
    lastDirectory() = QFileInfo(fileName).absolutePath();
    const HandSelectionTreeModel::ImportOutcome outcome = treeModel->importFromFile(fileName);
    if (!outcome.error.isEmpty()) {
        prompts.warn(dialog, QStringLiteral("Import Tree From File"),
                     QStringLiteral("The file \"%1\" cannot be imported. %2 The range tree is "
                                    "unchanged.")
                         .arg(QDir::toNativeSeparators(fileName), outcome.error));
        return;
    }
    for (unsigned int node : outcome.openNodes)
        view()->expand(treeModel->indexOf(node));
    if (outcome.trimmed)
        prompts.warn(dialog, QStringLiteral("More than two top levels."),
                     QStringLiteral("Warning: Your tree has more than two top levels. If you have "
                                    "changed this file via a text editor, please undo this "
                                    "operation there. The other levels will be ignored."));
}

void SavedRangeTree::exportFile() {
    QString fileName = prompts.chooseSaveFile(
        dialog, QStringLiteral("Save As"),
        lastDirectory() + QStringLiteral("/untitled.") + treeExtension, fileFilter());
    if (fileName.isEmpty())
        return;
    if (QFileInfo(fileName).suffix().isEmpty())
        fileName += QStringLiteral(".") + treeExtension;
    lastDirectory() = QFileInfo(fileName).absolutePath();
    const QString error = treeModel->exportToFile(fileName);
    if (!error.isEmpty())
        prompts.warn(dialog, QStringLiteral("Export Tree To File"),
                     QStringLiteral("The file \"%1\" cannot be written: %2.")
                         .arg(QDir::toNativeSeparators(fileName), error));
}

void SavedRangeTree::chooseCurrent() {
    choose(current());
}

void SavedRangeTree::choose(const QModelIndex& index) {
    if (treeModel->isRange(index))
        emit rangeChosen(treeModel->tree(), treeModel->nodeOf(index));
}
