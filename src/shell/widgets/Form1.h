#pragma once

#include <QDialog>

class QListWidget;
class QPushButton;

namespace Sonmira {

// The language picker of the first start, in English only: no language is chosen yet. One click on a row
// chooses and closes; closing the window by its button chooses nothing, and
// Escape does nothing at all.
class Form1 : public QDialog {
    Q_OBJECT

public:
    explicit Form1(QWidget* owner);

    QListWidget* ListView1;
    QPushButton* Command1;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void FillLanguageList();
    // Saves the place of the marked row, the first one when none is marked, and closes.
    void Command1_Click();
};

}  // namespace Sonmira
