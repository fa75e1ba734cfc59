#pragma once

#include "tags/TagPanelForm.h"
#include "ui/BatchMenus.h"

#include <QMainWindow>

class QLabel;
class QProgressBar;
class QSplitter;
class QStatusBar;
class QTabWidget;
class QToolBar;
class QToolButton;

namespace Sonmira {

class ConversionTree;
class FileList;
class OutputPanel;

// The controls of the main window under their design names, laid out and without behaviour. All belong to
// the window that the form was built on. What the user reads comes from the language file; the design
// captions stand until one is loaded, and where no line covers them.
struct BatchConverterForm : BatchMenus {
    explicit BatchConverterForm(QMainWindow& window);

    // Button n of the toolbar, counted from 1; 4 and 7 are separators.
    QAction* ToolbarButton(int n) const;

    QToolBar* Toolbar1;
    QStatusBar* StatusBar1;
    QLabel* StatusPanel1;
    QSplitter* Splitter1;

    // The collection, on the left.
    QWidget* Picture7;
    QLabel* Label31;
    ConversionTree* TreeView1;
    QLabel* Label1;
    QLabel* LabelDirCount;
    QLabel* Label2;
    QLabel* Label4;

    // The run, on the right.
    QTabWidget* SSTab1;
    QWidget* Picture1;
    QLabel* Label26;
    QLabel* Label32;
    QLabel* LabelFileName;
    QLabel* Label27;
    QLabel* LabelDuration;
    QWidget* Picture5;
    FileList* ListViewFiles;
    QProgressBar* mpb;
    QLabel* Label28;
    QLabel* Label30;
    QLabel* Label29;
    QToolButton* StopImg;
    QToolButton* ClearImg;
    OutputPanel* Picture9;

    // The tag page, beside the page of the run.
    TagPanelForm TagPage;

private:
    void BuildToolbar(QMainWindow& window);
    void BuildCollection();
    void BuildRun();
};

}  // namespace Sonmira
