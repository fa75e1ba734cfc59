#include "ui/MainWindowLayout.h"

#include "formats/OutputPanel.h"
#include "kit/CadreDesign.h"
#include "kit/Icons.h"
#include "kit/MyProgressBar.h"
#include "kit/Splitter.h"
#include "kit/Twips.h"
#include "library/widgets/ConversionTree.h"
#include "library/widgets/FileList.h"
#include "platform/Failure.h"
#include "ui/BatchConverterForm.h"
#include "ui/TabStrip.h"

#include <QEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QMainWindow>
#include <QScreen>
#include <QToolButton>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// Measures that more than one place needs. The body of a card begins below its caption strip.
constexpr int CardBody = ToTwips(CadreDesign::BandHeight);
constexpr int CaptionLeft = 450;
constexpr int IconLeft = 120;
constexpr int IconEdge = 240;
constexpr int LineOfText = 225;
// The pages reach as far below the area of the tab strip as their cards keep from the lower edge of the page,
// so that the cards end where the tree ends.
constexpr int PageTop = 570;

// The room that a caption wants, and a little more, since letters reach over their own room at times.
int HintOf(const QLabel* label) {
    return ToTwips(label->sizeHint().width() + 2);
}

}  // namespace

QSizeF LeastSizeOf(const QWidget& window) {
    constexpr double LeastWidth = 9195;
    constexpr double LeastHeight = 8400;
    const QScreen* const screen = QGuiApplication::primaryScreen();
    const QSize room = screen != nullptr ? screen->availableSize() : QSize();
    const double letters = FontScale(window);
    const auto grown = [&](double least, int most) {
        return std::max(least, std::min(least * letters, double(ToTwips(most))));
    };
    return {grown(LeastWidth, room.width()), grown(LeastHeight, room.height())};
}

MainWindowLayout::MainWindowLayout(QMainWindow& window, BatchConverterForm& form)
    : QObject(&window),
      Window(window),
      Form(form),
      InWindow(*window.centralWidget()),
      InSplitter(*form.Splitter1),
      In1(*form.Picture1),
      In5(*form.Picture5),
      In7(*form.Picture7) {
    for (QWidget* area : {window.centralWidget(), form.Picture1, static_cast<QWidget*>(form.Picture5),
                          static_cast<QWidget*>(form.Picture7)}) {
        area->installEventFilter(this);
    }
    connect(form.Splitter1, &Splitter::Resize, this, [this] { SplitterResized(); });
    connect(form.Picture5, &CadreDesign::Resize, this, [this] { Picture5Resized(); });
    connect(form.Picture7, &CadreDesign::Resize, this, [this] { Picture7Resized(); });
    connect(form.Picture9Frame, &CadreDesign::Resize, this, [this] { Picture9Resized(); });
    PlaceAll();
}

bool MainWindowLayout::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::Resize:
            if (watched == Window.centralWidget()) WindowResized();
            if (watched == Form.Picture1) Picture1Resized();
            break;
        case QEvent::LayoutRequest:
        case QEvent::Show:
            // A caption has changed and wants more room, or less; one that is not shown tells nobody.
            if (watched == Form.Picture1) PlacePicture1();
            if (watched == Form.Picture5) PlacePicture5();
            if (watched == Form.Picture7) PlacePicture7();
            break;
        case QEvent::FontChange:
            Window.setMinimumSize((LeastSizeOf(Window) / ToTwips(1)).toSize());
            [[fallthrough]];
        case QEvent::LayoutDirectionChange:
            PlaceAll();
            break;
        default:
            break;
    }
    return QObject::eventFilter(watched, event);
}

void MainWindowLayout::PlaceAll() {
    PlaceWindow();
    PlacePicture1();
    PlacePicture5();
    PlacePicture7();
    WindowResized();
}

void MainWindowLayout::PlaceWindow() {
    const auto scaled = [this](int twips) { return InWindow.Scaled(twips); };
    Splitter& splitter = *Form.Splitter1;
    if (splitter.MinSize2() != scaled(6500)) {
        // The largest and the least size limit each other, and on the way back to small letters the old least
        // one would hold the new largest one up.
        splitter.SetMaxSize(0);
        splitter.SetMinSize1(scaled(2000));
        splitter.SetMaxSize(scaled(6500));
        splitter.SetMinSize2(scaled(6500));
    }
    InWindow.Place(&splitter, 60, 120, InWindow.Width(&splitter), InWindow.Height(&splitter));
    for (QWidget* page : {Form.Picture1, Form.TagPage.Picture2}) {
        InSplitter.Place(page, InSplitter.Left(page), scaled(PageTop), InSplitter.Width(page),
                         InSplitter.Height(page));
    }
}

void MainWindowLayout::PlacePicture1() {
    const auto scaled = [this](int twips) { return In1.Scaled(twips); };
    constexpr int Pitch = 285;
    constexpr int Banner = 690;
    const int line = scaled(LineOfText);
    In1.Place(Form.Image5, 0, 0, In1.Width(Form.Image5), scaled(Banner));
    const int left = scaled(180);
    const int texts = left + qMax(HintOf(Form.Label32), HintOf(Form.Label27)) + scaled(120);
    const struct {
        QLabel* Caption;
        QLabel* Text;
        int Top;
    } rows[] = {{Form.Label32, Form.LabelFileName, 90}, {Form.Label27, Form.LabelDuration, 90 + Pitch}};
    for (const auto& row : rows) {
        In1.Place(row.Caption, left, scaled(row.Top), texts - left - scaled(120), line);
        In1.Place(row.Text, texts, scaled(row.Top), In1.Width(row.Text), line);
    }
    const int output = scaled(Banner) + 120;
    const int height = scaled(OutputPanel::DesignHeight);
    In1.Place(Form.Picture9Frame, 0, output, In1.Width(Form.Picture9Frame), height);
    In1.Place(Form.Picture5, 0, output + height + 120, In1.Width(Form.Picture5), In1.Height(Form.Picture5));
    SplitterResized();
    Picture1Resized();
}

void MainWindowLayout::PlacePicture5() {
    const auto scaled = [this](int twips) { return In5.Scaled(twips); };
    In5.Place(Form.Picture5Icon, IconLeft, 0, IconEdge, CardBody);
    In5.Place(Form.Label26, CaptionLeft, 0, In5.Width(Form.Label26), CardBody);
    for (QToolButton* button : {Form.StopImg, Form.ClearImg}) {
        In5.Place(button, In5.Left(button), 45, 345, 315);
    }
    In5.Place(Form.ListViewFiles, 15, CardBody, In5.Width(Form.ListViewFiles),
              In5.Height(Form.ListViewFiles));
    In5.Place(Form.Line1, 0, In5.Top(Form.Line1), In5.Width(Form.Line1), 15);
    In5.Place(Form.mpb, 90, In5.Top(Form.mpb), In5.Width(Form.mpb), ToTwips(MyProgressBar::DesignHeight));
    const int line = scaled(LineOfText);
    const int folder = 120 + HintOf(Form.Label28) + 75;
    In5.Place(Form.Label28, 120, In5.Top(Form.Label28), HintOf(Form.Label28), line);
    In5.Place(Form.Label30, folder, In5.Top(Form.Label30), In5.Width(Form.Label30), line);
    const int count = ToTwips(Form.Label29->fontMetrics().horizontalAdvance(u"00000 / 00000"_s));
    // As much higher as the rule puts the folder above it, so that both stand on one line.
    In5.Place(Form.Label29, In5.Left(Form.Label29), In5.Top(Form.Label29), count, line + 30);
    Picture5Resized();
}

void MainWindowLayout::PlacePicture7() {
    const auto scaled = [this](int twips) { return In7.Scaled(twips); };
    In7.Place(Form.Picture7Icon, IconLeft, 0, IconEdge, CardBody);
    In7.Place(Form.Label31, CaptionLeft, 0, In7.Width(Form.Label31), CardBody);
    In7.Place(Form.TreeView1, 30, CardBody, In7.Width(Form.TreeView1), In7.Height(Form.TreeView1));
    In7.Place(Form.Line2, 0, In7.Top(Form.Line2), In7.Width(Form.Line2), 15);
    const int captions = 120 + IconEdge + 90;
    const int wanted = qMax(HintOf(Form.Label1), HintOf(Form.Label2));
    const int counts = captions + wanted + 90;
    const int line = scaled(LineOfText);
    for (QLabel* caption : {Form.Label1, Form.Label2}) {
        In7.Place(caption, captions, In7.Top(caption), wanted, line);
    }
    for (QLabel* count : {Form.LabelDirCount, Form.Label4}) {
        In7.Place(count, counts, In7.Top(count), In7.Width(count), line);
    }
    for (IconBox* image : {Form.Image3, Form.Image4}) {
        In7.Place(image, 120, In7.Top(image), IconEdge, line);
    }
    Picture7Resized();
}

void MainWindowLayout::WindowResized() {
    InWindow.Mirror();
    // A size that cannot be ends the rules here, and the sizes reached so far stay.
    PassOver([this] {
        Splitter* const splitter = Form.Splitter1;
        InWindow.SetWidth(splitter, ToTwips(Window.width()) - 3 * InWindow.Left(splitter));
        // The area between the toolbar and the status bar is the inner height less what both take.
        InWindow.SetHeight(splitter, InWindow.Height() - InWindow.Top(splitter) - 70);
        InSplitter.SetHeight(Form.SSTab1, InSplitter.Height());
        FollowSplitter([](const std::function<void()>& rule) { rule(); });
    });
}

void MainWindowLayout::SplitterResized() {
    InSplitter.Mirror();
    FollowSplitter([](const std::function<void()>& rule) { PassOver(rule); });
}

void MainWindowLayout::FollowSplitter(const std::function<void(const std::function<void()>&)>& rule) {
    QWidget* const pages[] = {Form.Picture1, Form.TagPage.Picture2};
    for (QWidget* page : pages) {
        rule([&] { InSplitter.SetLeft(page, InSplitter.Left(Form.SSTab1) + 70); });
    }
    rule([&] { InSplitter.SetWidth(pages[0], InSplitter.Width(Form.SSTab1) - 140); });
    rule([&] { InSplitter.SetWidth(pages[1], InSplitter.Width(pages[0])); });
    rule([&] { In1.SetWidth(Form.Picture5, InSplitter.Width(pages[0]) - 2 * In1.Left(Form.Picture5)); });
    rule([&] { In1.SetWidth(Form.Picture9Frame, In1.Width(Form.Picture5)); });
    rule([&] { InSplitter.SetHeight(pages[0], InSplitter.Height(Form.SSTab1) - InSplitter.Scaled(420)); });
    rule([&] { InSplitter.SetHeight(pages[1], InSplitter.Height(pages[0])); });
}

void MainWindowLayout::Picture1Resized() {
    In1.Mirror();
    PassOver(
        [this] { In1.SetHeight(Form.Picture5, In1.Height() - In1.Top(Form.Picture5) - In1.Scaled(150)); });
    PassOver([this] { In1.SetWidth(Form.LabelFileName, In1.Width() - In1.Left(Form.LabelFileName) - 20); });
    PassOver([this] { In1.SetWidth(Form.LabelDuration, In1.Width(Form.LabelFileName)); });
    PassOver([this] { In1.SetWidth(Form.Image5, In1.Width() + 20); });
}

void MainWindowLayout::Picture7Resized() {
    In7.Mirror();
    const int foot = In7.Height() - In7.Scaled(615);
    PassOver([this] { In7.SetWidth(Form.TreeView1, In7.Width() - 60); });
    PassOver([&] { In7.SetHeight(Form.TreeView1, foot - In7.Top(Form.TreeView1)); });
    PassOver([&] { In7.SetTop(Form.Line2, foot); });
    PassOver([&] { In7.SetTop(Form.Label1, foot + 80); });
    PassOver([&] { In7.SetTop(Form.Label2, In7.Top(Form.Label1) + In7.Height(Form.Label1)); });
    PassOver([&] { In7.SetTop(Form.LabelDirCount, In7.Top(Form.Label1)); });
    PassOver([&] { In7.SetTop(Form.Label4, In7.Top(Form.Label2)); });
    PassOver([&] { In7.SetTop(Form.Image3, In7.Top(Form.Label1) - 20); });
    PassOver([&] { In7.SetTop(Form.Image4, In7.Top(Form.Label2) - 20); });
    // What no rule says: the caption, the line and the counts take what room there is.
    PassOver([&] { In7.SetWidth(Form.Line2, In7.Width()); });
    const auto rest = [&](const QLabel* text) { return In7.Width() - In7.Left(text) - 120; };
    PassOver([&] { In7.SetWidth(Form.Label31, rest(Form.Label31)); });
    for (QLabel* count : {Form.LabelDirCount, Form.Label4}) {
        const int wanted = ToTwips(count->fontMetrics().horizontalAdvance(u"00000000"_s));
        PassOver([&] { In7.SetWidth(count, qMin(rest(count), wanted)); });
    }
}

void MainWindowLayout::Picture5Resized() {
    In5.Mirror();
    FileList& rows = *Form.ListViewFiles;
    PassOver([&] { In5.SetWidth(&rows, In5.Width() - 30); });
    PassOver([&] { In5.SetHeight(&rows, In5.Height() - In5.Top(&rows) - In5.Scaled(680)); });
    PassOver([&] { In5.SetTop(Form.mpb, In5.Height() - 350); });
    PassOver([&] { In5.SetWidth(Form.mpb, In5.Width() - 2 * In5.Left(Form.mpb)); });
    for (QLabel* text : {Form.Label28, Form.Label30}) {
        PassOver([&] { In5.SetTop(text, In5.Top(Form.mpb) - In5.Height(Form.Label28) - 30); });
    }
    PassOver([&] { In5.SetTop(Form.Label29, In5.Top(Form.mpb) - In5.Height(Form.Label29)); });
    // One twip is no pixel: the line lies right below the list.
    PassOver([&] { In5.SetTop(Form.Line1, In5.Top(&rows) + In5.Height(&rows) + 1); });
    PassOver([&] { In5.SetWidth(Form.Line1, In5.Width()); });
    PassOver([&] {
        In5.SetWidth(Form.Label30, In5.Width() - In5.Width(Form.Label29) - In5.Left(Form.Label30) - 100);
    });
    const int others = ToTwips(rows.columnWidth(FileListModel::TrackColumn) +
                               rows.columnWidth(FileListModel::ProgressColumn));
    const int name = In5.Width(&rows) - others - 280;
    if (name >= 0) rows.horizontalHeader()->resizeSection(FileListModel::FilenameColumn, ToPixels(name));
    PassOver([&] { In5.SetLeft(Form.Label29, In5.Width() - 140 - In5.Width(Form.Label29)); });
    PassOver([&] { In5.SetLeft(Form.StopImg, In5.Width() - 80 - In5.Width(Form.StopImg)); });
    PassOver([&] { In5.SetLeft(Form.ClearImg, In5.Left(Form.StopImg) - 80 - In5.Width(Form.ClearImg)); });
    PassOver([&] { In5.SetWidth(Form.Label26, In5.Left(Form.ClearImg) - In5.Left(Form.Label26) - 60); });
}

void MainWindowLayout::Picture9Resized() {
    Form.Picture9->setGeometry(Form.Picture9Frame->rect());
}

}  // namespace Sonmira
