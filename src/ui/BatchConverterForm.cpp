#include "ui/BatchConverterForm.h"

#include "formats/OutputPanel.h"
#include "kit/Accessible.h"
#include "kit/CadreDesign.h"
#include "kit/Icons.h"
#include "kit/MyProgressBar.h"
#include "kit/Palette.h"
#include "kit/PropertyStore.h"
#include "kit/Splitter.h"
#include "kit/Twips.h"
#include "library/widgets/ConversionTree.h"
#include "library/widgets/FileList.h"
#include "ui/TabStrip.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QPainter>
#include <QStatusBar>
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

QLabel* Caption(QWidget* parent, const QString& name, const QString& text) {
    auto* label = Named(new QLabel(text, parent), name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QLabel* Heading(QWidget* parent, const QString& name, const QString& text = {}) {
    QLabel* const label = Caption(parent, name, text);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    return label;
}

QToolButton* ImageButton(QWidget* parent, const QString& name, QStringView icon,
                         const QString& accessibleName) {
    auto* button = Named(new QToolButton(parent), name);
    button->setIcon(OwnIcon(icon));
    button->setAccessibleName(accessibleName);
    button->setToolTip(accessibleName);
    return button;
}

// A hairline between two areas of a card.
QFrame* Line(QWidget* parent, const QString& name) {
    class Hairline : public QFrame {
    public:
        using QFrame::QFrame;

    protected:
        void paintEvent(QPaintEvent* /*event*/) override {
            QPainter(this).fillRect(rect(), CurrentPalette().Hairline);
        }
    };
    return Named(new Hairline(parent), name);
}

// The ground of the labels that tell of one file. By its rule it is a little wider than its page, so it draws
// itself only as far as the page goes.
QFrame* Ground(QWidget* parent, const QString& name) {
    class Card : public QFrame {
    public:
        using QFrame::QFrame;

    protected:
        void paintEvent(QPaintEvent* /*event*/) override {
            const Palette& colors = CurrentPalette();
            QPainter painter(this);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(colors.CardBorder);
            painter.setBrush(colors.Surface);
            const QRect page = rect() & parentWidget()->rect().translated(-pos());
            painter.drawRoundedRect(QRectF(page).adjusted(0.5, 0.5, -0.5, -0.5), 6, 6);
        }
    };
    return Named(new Card(parent), name);
}

}  // namespace

BatchConverterForm::BatchConverterForm(QMainWindow& window) : BatchMenus(window), TagPage(window) {
    BuildToolbar(window);
    window.setCentralWidget(new QWidget(&window));
    Splitter1 = Named(new Splitter(window.centralWidget()), u"Splitter1"_s);
    BuildCollection();
    BuildPages();
    BuildRun();
    BuildSplitter(window);

    StatusBar1 = Named(window.statusBar(), u"StatusBar1"_s);
    StatusBar1->setSizeGripEnabled(false);
    StatusPanel1 = Caption(StatusBar1, u"StatusPanel1"_s, {});
    StatusPanel1->setAccessibleName(u"Status"_s);
    StatusPanel1->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    StatusBar1->addWidget(StatusPanel1, 1);
    StatusPanel2 = Caption(StatusBar1, u"StatusPanel2"_s, {});
    StatusBar1->addPermanentWidget(StatusPanel2);
    StatusPanel2->hide();
    OrderTabs();
    CaptionsChanged();
}

QAction* BatchConverterForm::ToolbarButton(int n) const {
    return Toolbar1->actions().at(n - 1);
}

void BatchConverterForm::CaptionsChanged() {
    AssignMnemonics();
    // A button and its command in the menu are two; the keys stand with the command.
    const std::pair<int, QAction*> commands[] = {{1, mynew},      {2, addfile}, {3, adddirectory},
                                                 {5, ConvertAll}, {6, cancel},  {8, about}};
    for (const auto& [button, command] : commands) {
        const QString keys = command->shortcut().toString(QKeySequence::NativeText);
        const QString caption = ToolbarButton(button)->text();
        ToolbarButton(button)->setToolTip(keys.isEmpty() ? caption : u"%1 (%2)"_s.arg(caption, keys));
    }
}

bool BatchConverterForm::ShowsTagPage() const {
    return SSTab1->currentIndex() == 1;
}

void BatchConverterForm::ShowPage() const {
    Picture1->setVisible(!ShowsTagPage());
    TagPage.Picture2->setVisible(ShowsTagPage());
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
    Toolbar1->setAccessibleName(u"Commands"_s);
    NameExtensionOf(*Toolbar1);
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
    Picture7 = Named(new CadreDesign(Splitter1), u"Picture7"_s);
    Picture7Icon = new IconBox(Picture7, OwnIcon(u"collection"));
    Label31 = Heading(Picture7, u"Label31"_s, u"Files to convert :"_s);
    TreeView1 = Named(new ConversionTree(Picture7), u"TreeView1"_s);
    TreeView1->setAccessibleName(u"Files to convert"_s);
    TreeView1->setFrameShape(QFrame::NoFrame);
    TreeView1->SetEmptyHint(u"Drop audio files and folders here"_s);
    Line2 = Line(Picture7, u"Line2"_s);
    Image3 = Named(new IconBox(Picture7, OwnIcon(u"folder"), 15), u"Image3"_s);
    Label1 = Caption(Picture7, u"Label1"_s, u"Directories:"_s);
    LabelDirCount = Heading(Picture7, u"LabelDirCount"_s);
    Image4 = Named(new IconBox(Picture7, OwnIcon(u"audio-file"), 15), u"Image4"_s);
    Label2 = Caption(Picture7, u"Label2"_s, u"Files:"_s);
    Label4 = Heading(Picture7, u"Label4"_s);
}

void BatchConverterForm::BuildPages() {
    SSTab1 = Named(new TabStrip(Splitter1), u"SSTab1"_s);
    SSTab1->setAccessibleName(u"Pages"_s);
    SSTab1->addTab(OwnIcon(u"convert"), u"Conversion information"_s);
    SSTab1->addTab(OwnIcon(u"tag"), u"Tag information"_s);

    Picture1 = Named(new QWidget(Splitter1), u"Picture1"_s);
    Image5 = Ground(Picture1, u"Image5"_s);
    Label32 = Caption(Picture1, u"Label32"_s, u"File:"_s);
    LabelFileName = Heading(Picture1, u"LabelFileName"_s);
    Label27 = Caption(Picture1, u"Label27"_s, u"Duration:"_s);
    LabelDuration = Caption(Picture1, u"LabelDuration"_s, {});
    for (QLabel* text : {LabelFileName, LabelDuration}) text->setContentsMargins(0, 0, 10, 0);
    Picture9Frame = Named(new CadreDesign(Picture1), u"Picture9"_s);
    Picture9 = new OutputPanel(Picture9Frame);
    TagPage.Picture2->setParent(Splitter1);
    ShowPage();
}

void BatchConverterForm::BuildRun() {
    Picture5 = Named(new CadreDesign(Picture1), u"Picture5"_s);
    Picture5Icon = new IconBox(Picture5, OwnIcon(u"convert"));
    Label26 = Heading(Picture5, u"Label26"_s, u"Conversion information :"_s);
    ClearImg = ImageButton(Picture5, u"ClearImg"_s, u"clear", u"Clear the list"_s);
    StopImg = ImageButton(Picture5, u"StopImg"_s, u"stop", u"Cancel the conversion of this file"_s);
    ListViewFiles = Named(new FileList(Picture5), u"ListViewFiles"_s);
    ListViewFiles->setAccessibleName(u"Conversion progress"_s);
    ListViewFiles->setFrameShape(QFrame::NoFrame);
    ListViewFiles->Rows().SetHeader(FileListModel::TrackColumn, u"Track"_s);
    ListViewFiles->Rows().SetHeader(FileListModel::FilenameColumn, u"Filename"_s);
    ListViewFiles->Rows().SetHeader(FileListModel::ProgressColumn, u"Progress"_s);
    Line1 = Line(Picture5, u"Line1"_s);
    Label28 = Caption(Picture5, u"Label28"_s, u"Directory :"_s);
    Label30 = Caption(Picture5, u"Label30"_s, {});
    Label30->setContentsMargins(0, 0, 8, 0);
    Label29 = Heading(Picture5, u"Label29"_s);
    Label29->setAlignment(Qt::AlignTrailing | Qt::AlignTop);
    mpb = Named(new MyProgressBar(Picture5), u"mpb"_s);
    mpb->setAccessibleName(u"Progress of the current file"_s);
}

void BatchConverterForm::BuildSplitter(QMainWindow& /*window*/) {
    // As it was stored with the window; what is not in the store has its default.
    PropertyStore store;
    store.Entries = {{u"SplitterColor"_s, 0x8000000FU},
                     {u"SplitterPos"_s, 5610},
                     {u"Child1"_s, u"Picture7"_s},
                     {u"Child2"_s, u"SSTab1"_s},
                     {u"MaxSize"_s, 6500},
                     {u"MinSize1"_s, 2000},
                     {u"MinSize2"_s, 6500}};
    Splitter1->ReadProperties(store);
}

// In the order in which they are read. The panel and the tag page keep the order of their own.
void BatchConverterForm::OrderTabs() const {
    QWidget* const bar = Splitter1->findChild<QWidget*>(u"picSplitter"_s);
    QWidget::setTabOrder(TreeView1, bar);
    QWidget::setTabOrder(bar, SSTab1);
    QWidget::setTabOrder(SSTab1, Picture9->CheckOutPath);
    QWidget::setTabOrder(Picture9->Check2, ClearImg);
    QWidget::setTabOrder(ClearImg, StopImg);
    QWidget::setTabOrder(StopImg, ListViewFiles);
}

}  // namespace Sonmira
