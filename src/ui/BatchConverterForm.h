#pragma once

#include "tags/TagPanel.h"
#include "ui/BatchMenus.h"

#include <QMainWindow>

class QFrame;
class QLabel;
class QStatusBar;
class QToolBar;
class QToolButton;

namespace Sonmira {

class CadreDesign;
class ConversionTree;
class FileList;
class IconBox;
class MyProgressBar;
class OutputPanel;
class Splitter;
class TabStrip;

// The controls of the main window under their design names, without behaviour and without places; see
// MainWindowLayout. All belong to the window that the form was built on. What the user reads comes from the
// language file; the design captions stand until one is loaded, and where no line covers them.
struct BatchConverterForm : BatchMenus {
    explicit BatchConverterForm(QMainWindow& window);

    // Button n of the toolbar, counted from 1; 4 and 7 are separators.
    QAction* ToolbarButton(int n) const;

    // Brings up to date what hangs on the captions: the letters of the menus, the tool tips of the toolbar.
    // To be called after they have changed.
    void CaptionsChanged();

    // Whether the second tab is selected.
    bool ShowsTagPage() const;
    // Shows the page of the tab that is selected and hides the other.
    void ShowPage() const;

    QToolBar* Toolbar1;
    QStatusBar* StatusBar1;
    QLabel* StatusPanel1;
    QLabel* StatusPanel2;  // what a run has to say at its end; away while there is nothing
    Splitter* Splitter1;

    // The collection, on the left.
    CadreDesign* Picture7;
    IconBox* Picture7Icon;
    QLabel* Label31;
    ConversionTree* TreeView1;
    QFrame* Line2;
    IconBox* Image3;
    QLabel* Label1;
    QLabel* LabelDirCount;
    IconBox* Image4;
    QLabel* Label2;
    QLabel* Label4;

    // The tabs. Their pages lie beside each other over them: Picture1 and Picture2 of the tag page.
    TabStrip* SSTab1;
    QWidget* Picture1;
    QFrame* Image5;  // the ground of the four labels
    QLabel* Label32;
    QLabel* LabelFileName;
    QLabel* Label27;
    QLabel* LabelDuration;

    // The output: a card that the panel fills.
    CadreDesign* Picture9Frame;
    OutputPanel* Picture9;

    // The run.
    CadreDesign* Picture5;
    IconBox* Picture5Icon;
    QLabel* Label26;
    QToolButton* ClearImg;
    QToolButton* StopImg;
    FileList* ListViewFiles;
    QFrame* Line1;
    QLabel* Label28;
    QLabel* Label30;
    QLabel* Label29;
    MyProgressBar* mpb;

    TagPanelForm TagPage;

private:
    void BuildToolbar(QMainWindow& window);
    void BuildSplitter(QMainWindow& window);
    void BuildCollection();
    void BuildPages();
    void BuildRun();
    void OrderTabs() const;
};

}  // namespace Sonmira
