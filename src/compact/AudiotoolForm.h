#pragma once

#include "compact/AudiotoolMenus.h"

#include <QLabel>

class QLabel;
class QPushButton;
class QToolButton;
class QWidget;

namespace Sonmira {

// A label for a text of any length: it never asks for more room than it is given, and leaves out of the
// middle what does not fit, with the whole text as its tool tip.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

class AudiotoolList;
class ElidedLabel;
class OutputPanel;

// The controls of the compact window under their design names, laid out and without behaviour. All belong to
// the window that the form was built on. What the user reads comes from the language file; the design
// captions stand where no line covers them.
struct AudiotoolForm : AudiotoolMenus {
    explicit AudiotoolForm(QMainWindow& window);

    QToolButton* Image1;     // adds files
    QToolButton* ClearList;  // empties the list
    QLabel* LabelFilesToConvert;
    AudiotoolList* ListViewFiles;
    QLabel* Label12;
    ElidedLabel* LabelCurrentFile;
    QLabel* LabelCounterFiles;
    OutputPanel* Output;
    QPushButton* CmdConvert;
    QPushButton* cmdCancel;
    QPushButton* CmdQuit;

private:
    void BuildControls();
    void LayOut(QWidget& page) const;
};

}  // namespace Sonmira
