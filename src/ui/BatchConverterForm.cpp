#include "ui/BatchConverterForm.h"

#include "formats/OutputPanel.h"
#include "kit/Icons.h"
#include "library/widgets/ConversionTree.h"
#include "library/widgets/FileList.h"

#include <QAction>
#include <QBoxLayout>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

template <class Control>
Control* Named(Control* control, const QString& name) {
    control->setObjectName(name);
    return control;
}

QLabel* Caption(const QString& name, const QString& text) {
    return Named(new QLabel(text), name);
}

QLabel* Heading(const QString& name, const QString& text = {}) {
    QLabel* const label = Caption(name, text);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    return label;
}

// A label whose text may be any length: it never asks for more room than it is given.
QLabel* LongText(const QString& name) {
    auto* label = Named(new QLabel, name);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QToolButton* ImageButton(const QString& name, QStringView icon, const QString& accessibleName) {
    auto* button = Named(new QToolButton, name);
    button->setIcon(OwnIcon(icon));
    button->setAccessibleName(accessibleName);
    button->setToolTip(accessibleName);
    return button;
}

}  // namespace

BatchConverterForm::BatchConverterForm(QMainWindow& window) : BatchMenus(window), TagPage(window) {
    BuildToolbar(window);
    BuildCollection();
    BuildRun();

    Splitter1 = Named(new QSplitter(&window), u"Splitter1"_s);
    Splitter1->setChildrenCollapsible(false);
    Splitter1->addWidget(Picture7);
    Splitter1->addWidget(SSTab1);
    Splitter1->setStretchFactor(1, 1);
    Splitter1->setSizes({292, 660});
    window.setCentralWidget(Splitter1);

    StatusBar1 = Named(window.statusBar(), u"StatusBar1"_s);
    StatusPanel1 = LongText(u"StatusPanel1"_s);
    StatusBar1->addWidget(StatusPanel1, 1);
}

QAction* BatchConverterForm::ToolbarButton(int n) const {
    return Toolbar1->actions().at(n - 1);
}

void BatchConverterForm::BuildToolbar(QMainWindow& window) {
    struct Button {
        QStringView Caption;
        QStringView Icon;
    };
    static constexpr Button Buttons[] = {{u"New", u"new"},
                                         {u"Add File", u"add-file"},
                                         {u"Add Directory", u"add-directory"},
                                         {},
                                         {u"Convert", u"convert"},
                                         {u"Cancel", u"cancel"},
                                         {},
                                         {u"Information", u"information"}};
    Toolbar1 = Named(window.addToolBar(u"Toolbar1"_s), u"Toolbar1"_s);
    Toolbar1->setMovable(false);
    Toolbar1->setContextMenuPolicy(Qt::PreventContextMenu);
    Toolbar1->setIconSize(QSize(24, 24));
    Toolbar1->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    int n = 0;
    for (const Button& button : Buttons) {
        QAction* const action = button.Caption.isEmpty()
                                    ? Toolbar1->addSeparator()
                                    : Toolbar1->addAction(OwnIcon(button.Icon), button.Caption.toString());
        action->setObjectName(u"Toolbar1Button%1"_s.arg(++n));
    }
    // There is nothing to cancel before something runs.
    ToolbarButton(6)->setEnabled(false);
}

void BatchConverterForm::BuildCollection() {
    Picture7 = Named(new QWidget, u"Picture7"_s);
    Label31 = Heading(u"Label31"_s, u"Files to convert :"_s);
    TreeView1 = Named(new ConversionTree, u"TreeView1"_s);
    TreeView1->setAccessibleName(u"Files to convert"_s);
    TreeView1->SetEmptyHint(u"Drop audio files and folders here"_s);
    Label1 = Caption(u"Label1"_s, u"Directories:"_s);
    LabelDirCount = Heading(u"LabelDirCount"_s);
    Label2 = Caption(u"Label2"_s, u"Files:"_s);
    Label4 = Heading(u"Label4"_s);

    auto* counts = new QHBoxLayout;
    for (QLabel* label : {Label1, LabelDirCount, Label2, Label4}) counts->addWidget(label);
    counts->addStretch();
    auto* column = new QVBoxLayout(Picture7);
    column->addWidget(Label31);
    column->addWidget(TreeView1, 1);
    column->addLayout(counts);
}

void BatchConverterForm::BuildRun() {
    Label26 = Heading(u"Label26"_s, u"Conversion information :"_s);
    Label32 = Caption(u"Label32"_s, u"File:"_s);
    LabelFileName = LongText(u"LabelFileName"_s);
    Label27 = Caption(u"Label27"_s, u"Duration:"_s);
    LabelDuration = LongText(u"LabelDuration"_s);
    auto* current = new QGridLayout;
    current->addWidget(Label32, 0, 0);
    current->addWidget(LabelFileName, 0, 1);
    current->addWidget(Label27, 1, 0);
    current->addWidget(LabelDuration, 1, 1);
    current->setColumnStretch(1, 1);

    Picture5 = Named(new QWidget, u"Picture5"_s);
    ListViewFiles = Named(new FileList, u"ListViewFiles"_s);
    ListViewFiles->setAccessibleName(u"Conversion progress"_s);
    ListViewFiles->Rows().SetHeader(FileListModel::TrackColumn, u"Track"_s);
    ListViewFiles->Rows().SetHeader(FileListModel::FilenameColumn, u"Filename"_s);
    ListViewFiles->Rows().SetHeader(FileListModel::ProgressColumn, u"Progress"_s);
    mpb = Named(new QProgressBar, u"mpb"_s);
    mpb->setTextVisible(false);
    mpb->setFixedHeight(8);
    mpb->setAccessibleName(u"Progress of the current file"_s);
    Label28 = Caption(u"Label28"_s, u"Directory :"_s);
    Label30 = LongText(u"Label30"_s);
    Label29 = Heading(u"Label29"_s);
    ClearImg = ImageButton(u"ClearImg"_s, u"clear", u"Clear the list"_s);
    StopImg = ImageButton(u"StopImg"_s, u"stop", u"Cancel the conversion of this file"_s);
    auto* foot = new QHBoxLayout;
    foot->addWidget(Label28);
    foot->addWidget(Label30, 1);
    foot->addWidget(Label29);
    foot->addWidget(ClearImg);
    foot->addWidget(StopImg);
    auto* list = new QVBoxLayout(Picture5);
    list->setContentsMargins({});
    list->addWidget(ListViewFiles, 1);
    list->addLayout(foot);
    list->addWidget(mpb);

    Picture9 = new OutputPanel;
    Picture1 = Named(new QWidget, u"Picture1"_s);
    auto* column = new QVBoxLayout(Picture1);
    column->addWidget(Label26);
    column->addLayout(current);
    column->addWidget(Picture5, 1);
    column->addWidget(Picture9);
    SSTab1 = Named(new QTabWidget, u"SSTab1"_s);
    SSTab1->addTab(Picture1, u"Conversion information"_s);
    SSTab1->addTab(TagPage.Picture2, u"Tag information"_s);
}

}  // namespace Sonmira
