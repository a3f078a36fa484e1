#pragma once

#include <QObject>
#include <QString>

class AnalysisDocument;
class QAbstractButton;
class QComboBox;
class QWidget;

// The scenario row of the main window: the combo box that lists the document's scenarios in
// list order (so an index into one is an index into the other) and the buttons that edit,
// add and delete them, with their questions.
//
// It edits the document's list and the combo box; showing the chosen scenario in the window
// is the window's (onScenarioSelectionChange), which it calls after each of these. Adding,
// renaming and deleting change no saved state and make no undo entry.
class ScenarioSelector : public QObject {
    Q_OBJECT

public:
    ScenarioSelector(AnalysisDocument& document, QComboBox* list, QAbstractButton* edit,
                     QAbstractButton* remove, QWidget* window);

    // The names again, index 0 current, without a signal of the combo box; the edit button is
    // enabled with a current entry, the delete button when there is more than one.
    void refresh();
    // Sets the current entry without a signal of the combo box.
    void selectSilently(int index);
    int currentIndex() const;

    // Each asks its question; true when the list changed and the window must show the
    // current entry. An added scenario becomes the current entry; after a delete the first
    // one is.
    bool add();
    bool rename();
    bool remove();

private:
    // Asks for a scenario name with `label`; false when cancelled or left empty.
    bool askName(const QString& label, QString& name);

    AnalysisDocument& document;
    QComboBox* list;
    QAbstractButton* editButton;
    QAbstractButton* deleteButton;
    QWidget* window;
};
