#pragma once

#include <QDialog>

class QWebView;
namespace Ui {
class ReleaseNoteDialog;
}

// The release notes page of the product's web server in a web view. Shown once per program
// version at start-up (showReleaseNotesIfNew) and from the Help menu.
class ReleaseNoteDialog : public QDialog {
    Q_OBJECT
public:
    explicit ReleaseNoteDialog(QWidget* parent = nullptr);
    ~ReleaseNoteDialog() override;

    QWebView* webView() const;

private:
    Ui::ReleaseNoteDialog* ui;
};
