// The rules by which the areas of the main window follow its size, as arithmetic on the real controls.
#include "CollectionTest.h"
#include "kit/CadreDesign.h"
#include "kit/Icons.h"
#include "kit/MyProgressBar.h"
#include "kit/Splitter.h"
#include "kit/Twips.h"
#include "shell/widgets/WindowMeasures.h"
#include "ui/TabStrip.h"

#include <QGroupBox>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class MainWindowLayouts : public CollectionTest {
protected:
    MainWindowLayouts() {
        Open();
        UnhookMinMaxInfo(*Window);  // sizes beyond the screen of the test, too
        Window->setMinimumSize(613, 560);
    }

    // Twips of what a control has on the screen.
    static int Left(const QWidget* control) { return ToTwips(control->x()); }
    static int Top(const QWidget* control) { return ToTwips(control->y()); }
    static int Width(const QWidget* control) { return ToTwips(control->width()); }
    static int Height(const QWidget* control) { return ToTwips(control->height()); }

    // Each check in several sizes, and with the bar moved.
    void InEverySize(const std::function<void()>& check) {
        for (const QSize size : {QSize(613, 560), QSize(731, 617), QSize(1024, 768), QSize(1601, 911),
                                 QSize(3840, 2160), QSize(700, 1000)}) {
            for (const int bar : {0, 2000, 3333, 6500}) {
                Resize(size);
                if (bar > 0) Form().Splitter1->SetSplitterPos(bar);
                QApplication::processEvents();
                SCOPED_TRACE("at " + std::to_string(size.width()) + " x " + std::to_string(size.height()) +
                             ", bar " + std::to_string(bar));
                check();
            }
        }
    }
    void Resize(const QSize& size) {
        Window->resize(size);
        QApplication::processEvents();
    }
    std::vector<bool> LockedStates() {
        std::vector<bool> states;
        for (int button = 1; button <= 8; ++button) {
            states.push_back(Form().ToolbarButton(button)->isEnabled());
        }
        for (const QWidget* control : Panel().findChildren<QWidget*>())
            states.push_back(control->isEnabled());
        states.push_back(Form().TreeView1->acceptDrops());
        return states;
    }
};

TEST_F(MainWindowLayouts, TheControlsHoldEachOtherAsDesigned) {
    EXPECT_EQ(Form().Picture7->parentWidget(), Form().Splitter1);
    EXPECT_EQ(Form().SSTab1->parentWidget(), Form().Splitter1);
    EXPECT_EQ(Form().Picture1->parentWidget(), Form().Splitter1);
    EXPECT_EQ(Form().TagPage.Picture2->parentWidget(), Form().Splitter1);
    EXPECT_EQ(Form().Picture5->parentWidget(), Form().Picture1);
    EXPECT_EQ(Form().Picture9Frame->parentWidget(), Form().Picture1);
    for (const QWidget* control :
         std::initializer_list<QWidget*>{Form().TreeView1, Form().Label1, Form().Label2, Form().LabelDirCount,
                                         Form().Label4, Form().Image3, Form().Image4}) {
        EXPECT_EQ(control->parentWidget(), Form().Picture7) << qPrintable(control->objectName());
    }
    for (const QWidget* control :
         std::initializer_list<QWidget*>{Form().ListViewFiles, Form().mpb, Form().Label28, Form().Label29,
                                         Form().Label30, Form().StopImg, Form().ClearImg}) {
        EXPECT_EQ(control->parentWidget(), Form().Picture5) << qPrintable(control->objectName());
    }
    for (const QWidget* control :
         std::initializer_list<QWidget*>{Form().LabelFileName, Form().LabelDuration, Form().Image5}) {
        EXPECT_EQ(control->parentWidget(), Form().Picture1) << qPrintable(control->objectName());
    }
}

TEST_F(MainWindowLayouts, TheSplitterHasItsDesignValues) {
    const Splitter& splitter = *Form().Splitter1;
    EXPECT_EQ(splitter.SplitterColor(), 0x8000000FU);
    EXPECT_EQ(splitter.Child1(), u"Picture7"_s);
    EXPECT_EQ(splitter.Child2(), u"SSTab1"_s);
    EXPECT_EQ(splitter.MaxSize(), 6500);
    EXPECT_EQ(splitter.MinSize1(), 2000);
    EXPECT_EQ(splitter.MinSize2(), 6500);
    EXPECT_EQ(splitter.Orientation(), 0);
    EXPECT_EQ(splitter.SplitterSize(), 75);
    EXPECT_EQ(splitter.Maintain(), 1);
    EXPECT_EQ(splitter.MaxSizeAppliesTo(), 0);
    EXPECT_FLOAT_EQ(splitter.RatioFromTop(), 0.5F) << "the ratio is stored behind the position";
}

TEST_F(MainWindowLayouts, TheSplitterFollowsTheWindow) {
    InEverySize([this] {
        const QWidget* const splitter = Form().Splitter1;
        EXPECT_EQ(splitter->width(), ToPixels(Width(Window.get()) - 3 * Left(splitter)));
        // The menu bar is no part of the inner height, the toolbar and the status bar are.
        const int inner = Height(Window.get()) - Height(Window->menuBar());
        const int top = ToTwips(splitter->mapTo(Window.get(), QPoint()).y()) - Height(Window->menuBar());
        EXPECT_EQ(splitter->height(), ToPixels(inner - top - Height(Form().StatusBar1) - 70));
        EXPECT_EQ(Form().SSTab1->height(), splitter->height());
        EXPECT_EQ(Form().Picture7->height(), splitter->height());
    });
}

TEST_F(MainWindowLayouts, BothPagesFollowTheTabs) {
    InEverySize([this] {
        const QWidget* const tabs = Form().SSTab1;
        for (const QWidget* page : {Form().Picture1, Form().TagPage.Picture2}) {
            EXPECT_EQ(page->x(), ToPixels(Left(tabs) + 70));
            EXPECT_EQ(page->width(), ToPixels(Width(tabs) - 140));
            EXPECT_EQ(page->height(), ToPixels(Height(tabs) - 420));
        }
        for (const QWidget* card : {Form().Picture5, Form().Picture9Frame}) {
            EXPECT_EQ(card->width(), ToPixels(Width(Form().Picture1) - 2 * Left(Form().Picture5)));
        }
        EXPECT_EQ(Panel().size(), Form().Picture9Frame->size());
    });
}

TEST_F(MainWindowLayouts, TheFirstPageFollowsItsSize) {
    InEverySize([this] {
        const QWidget* const page = Form().Picture1;
        EXPECT_EQ(Form().Picture5->height(), ToPixels(Height(page) - Top(Form().Picture5) - 150));
        EXPECT_EQ(Form().LabelFileName->width(), ToPixels(Width(page) - Left(Form().LabelFileName) - 20));
        EXPECT_EQ(Form().LabelDuration->width(), Form().LabelFileName->width());
        EXPECT_EQ(Form().Image5->width(), ToPixels(Width(page) + 20));
    });
}

TEST_F(MainWindowLayouts, TheCollectionFollowsItsCard) {
    InEverySize([this] {
        const QWidget* const card = Form().Picture7;
        EXPECT_EQ(Form().TreeView1->width(), ToPixels(Width(card) - 60));
        EXPECT_EQ(Form().TreeView1->height(), ToPixels(Height(card) - Top(Form().TreeView1) - 615));
        EXPECT_EQ(Form().Line2->y(), ToPixels(Height(card) - 615));
        EXPECT_EQ(Form().Label1->y(), ToPixels(Height(card) - 615 + 80));
        EXPECT_EQ(Form().Label2->y(), ToPixels(Top(Form().Label1) + Height(Form().Label1)));
        EXPECT_EQ(Form().LabelDirCount->y(), Form().Label1->y());
        EXPECT_EQ(Form().Label4->y(), Form().Label2->y());
        EXPECT_EQ(Form().Image3->y(), ToPixels(Top(Form().Label1) - 20));
        EXPECT_EQ(Form().Image4->y(), ToPixels(Top(Form().Label2) - 20));
    });
}

TEST_F(MainWindowLayouts, TheRunFollowsItsCard) {
    InEverySize([this] {
        const QWidget* const card = Form().Picture5;
        const FileList& list = *Form().ListViewFiles;
        const MyProgressBar* const bar = Form().mpb;
        EXPECT_EQ(list.width(), ToPixels(Width(card) - 30));
        EXPECT_EQ(list.height(), ToPixels(Height(card) - Top(&list) - 680));
        EXPECT_EQ(bar->y(), ToPixels(Height(card) - 350));
        EXPECT_EQ(bar->width(), ToPixels(Width(card) - 2 * Left(bar)));
        EXPECT_EQ(Form().Label28->y(), ToPixels(Top(bar) - Height(Form().Label28) - 30));
        EXPECT_EQ(Form().Label30->y(), Form().Label28->y());
        EXPECT_EQ(Form().Label29->y(), ToPixels(Top(bar) - Height(Form().Label29)));
        EXPECT_EQ(Form().Line1->y(), ToPixels(Top(&list) + Height(&list) + 1));
        EXPECT_EQ(Form().Line1->x() + Form().Line1->width(), card->width());
        EXPECT_EQ(Form().Label30->width(),
                  ToPixels(Width(card) - Width(Form().Label29) - Left(Form().Label30) - 100));
        EXPECT_EQ(list.columnWidth(1),
                  ToPixels(Width(&list) - ToTwips(list.columnWidth(0)) - ToTwips(list.columnWidth(2)) - 280));
        EXPECT_EQ(Form().Label29->x(), ToPixels(Width(card) - 140 - Width(Form().Label29)));
        EXPECT_EQ(Form().StopImg->x(), ToPixels(Width(card) - 80 - Width(Form().StopImg)));
        EXPECT_EQ(Form().ClearImg->x(), ToPixels(Left(Form().StopImg) - 80 - Width(Form().ClearImg)));
    });
}

TEST_F(MainWindowLayouts, TheOutputFollowsItsCard) {
    InEverySize([this] {
        const QWidget* const card = Form().Picture9Frame;
        const OutputPanel& panel = Panel();
        EXPECT_EQ(panel.CmdSelectPath->x(), ToPixels(Width(card) - Width(panel.CmdSelectPath) - 150));
        EXPECT_EQ(panel.CmdFormatParameter->x(), panel.CmdSelectPath->x());
        EXPECT_EQ(panel.TextOutPath->width(),
                  ToPixels(Width(card) - Left(panel.TextOutPath) - Width(panel.CmdSelectPath) - 150 - 150));
        for (const QWidget* control : std::initializer_list<QWidget*>{
                 panel.ComboOutFormat, panel.ComboAPEFormat, panel.ComboFLACFormat, panel.ComboWmaFormat,
                 panel.ComboMPCFormat, panel.TextOutFormat, panel.CheckOutPath, panel.Check2}) {
            EXPECT_EQ(control->width(), panel.TextOutPath->width()) << qPrintable(control->objectName());
        }
    });
}

TEST_F(MainWindowLayouts, TheTagPageFollowsItsSize) {
    Form().SSTab1->setCurrentIndex(1);
    InEverySize([this] {
        const TagPanelForm& form = Form().TagPage;
        const TagFields& fields = *form.Fields;
        const int width = Width(form.Picture2);
        const int margin = Left(form.Frame1);
        EXPECT_EQ(form.Toolbar2->width(), ToPixels(width + 30));
        EXPECT_EQ(form.Frame1->width(), ToPixels(width - 2 * margin));
        for (const QLineEdit* field : {fields.infoTitle, fields.infoGenreS}) {
            EXPECT_EQ(field->width(), ToPixels(width - Left(field) - margin));
        }
        for (const QLineEdit* field :
             {fields.infoArtist, fields.infoAlbum, fields.infoCopyright, fields.infoYear, fields.infoTrack,
              fields.infoComment, fields.infoComposer, fields.infoURL, fields.infoEncodedBy,
              fields.infoOriginalArtist}) {
            EXPECT_EQ(field->width(), fields.infoTitle->width()) << qPrintable(field->objectName());
        }
        EXPECT_EQ(form.Command3->width(), ToPixels(width - Left(form.Command3) - margin - 30));
    });
}

TEST_F(MainWindowLayouts, AtTheLeastSizeBothSidesHaveTheirLeastWidth) {
    Resize({613, 560});
    for (const int bar : {0, 1, 2000, 30000}) {
        Form().Splitter1->SetSplitterPos(bar);
        EXPECT_GE(Form().Picture7->width(), ToPixels(2000)) << bar;
        EXPECT_GE(Form().SSTab1->width(), ToPixels(6500)) << bar;
    }
}

TEST_F(MainWindowLayouts, TheSecondSideSticksOutWhereTheWindowIsTooNarrow) {
    Window->setMinimumSize(0, 0);
    Form().Splitter1->resize(ToPixels(7000), 400);
    EXPECT_GE(Form().Picture7->width(), ToPixels(2000));
    EXPECT_GE(Form().SSTab1->width(), ToPixels(6500));
    EXPECT_GT(Form().SSTab1->geometry().right(), Form().Splitter1->rect().right());
}

TEST_F(MainWindowLayouts, ASizeThatCannotBeEndsTheRulesOfTheWindow) {
    Resize({800, 600});
    const QSize before = Form().Splitter1->size();
    // Three times this is more than the window is wide, so the first rule already fails.
    Form().Splitter1->move(300, Form().Splitter1->y());
    Resize({700, 700});
    EXPECT_EQ(Form().Splitter1->size(), before);
    EXPECT_TRUE(Window->isVisible());
    Form().Splitter1->move(4, Form().Splitter1->y());
    Resize({720, 710});
    EXPECT_EQ(Form().Splitter1->width(), 720 - 3 * 4);
}

TEST_F(MainWindowLayouts, AWindowTooLowForItsAreasStillGivesThemItsWidth) {
    Resize({800, 600});
    const int before = Form().Splitter1->height();
    const int bars = Window->height() - Window->centralWidget()->height();
    Window->setMinimumSize(1, 1);
    // Less than the top of the splitter and what stays free below it: the first rule holds, the second fails.
    Resize({900, bars + 5});
    ASSERT_LT(Height(Window->centralWidget()), Top(Form().Splitter1) + 70);
    EXPECT_EQ(Form().Splitter1->width(), 900 - 3 * 4);
    EXPECT_EQ(Form().Splitter1->height(), before);
    Resize({820, 640});
    EXPECT_EQ(Form().Splitter1->width(), 820 - 3 * 4);
    EXPECT_EQ(Form().Splitter1->height(), before + 40);
}

TEST_F(MainWindowLayouts, AFailedRuleBehindTheSplitterIsSkippedAlone) {
    Resize({800, 600});
    const int before = Form().Picture5->width();
    Form().Picture5->move(400, Form().Picture5->y());
    Form().Picture1->resize(Form().Picture1->width(), 10);
    Form().Splitter1->SetSplitterPos(2100);
    EXPECT_EQ(Form().Picture5->width(), before) << "the rule that failed";
    EXPECT_EQ(Form().Picture1->width(), ToPixels(Width(Form().SSTab1) - 140)) << "the one before it";
    EXPECT_EQ(Form().Picture1->height(), ToPixels(Height(Form().SSTab1) - 420)) << "the one behind it";
}

TEST_F(MainWindowLayouts, DraggingTheBarTakesBothPagesAlong) {
    Resize({1000, 700});
    auto* const bar = Form().Splitter1->findChild<QWidget*>(u"picSplitter"_s);
    ASSERT_NE(bar, nullptr);
    const int before = Form().Picture7->width();
    const QPoint grip(2, bar->height() / 2);
    QTest::mousePress(bar, Qt::LeftButton, Qt::NoModifier, grip);
    for (const int way : {-20, -60, -120}) {
        const QPoint at = bar->mapFromGlobal(Form().Splitter1->mapToGlobal(QPoint(before + 2 + way, 100)));
        QTest::mouseMove(bar, at);
        QApplication::processEvents();
    }
    QTest::mouseRelease(bar, Qt::LeftButton, Qt::NoModifier,
                        bar->mapFromGlobal(Form().Splitter1->mapToGlobal(QPoint(before + 2 - 120, 100))));
    EXPECT_EQ(Form().Picture7->width(), before - 120);
    EXPECT_EQ(Form().Picture1->x(), ToPixels(Left(Form().SSTab1) + 70));
    EXPECT_EQ(Form().TagPage.Picture2->width(), ToPixels(Width(Form().SSTab1) - 140));
    EXPECT_EQ(Form().mpb->width(), ToPixels(Width(Form().Picture5) - 2 * Left(Form().mpb)));
}

TEST_F(MainWindowLayouts, ResizingDuringARunLeavesWhatIsLockedAsItIs) {
    MakeLongWav("Music/a.wav", 20);
    AddFolderByCommand(Folder.Path("Music"));
    Panel().ComboOutFormat->SelectText(u"Mp3"_s);
    bool looked = false;
    WhenReached(1, [&] {
        const std::vector<bool> before = LockedStates();
        for (const QSize size : {QSize(613, 560), QSize(1200, 800), QSize(800, 640)}) {
            Resize(size);
            EXPECT_EQ(LockedStates(), before);
        }
        EXPECT_FALSE(Panel().ComboOutFormat->isEnabled());
        EXPECT_TRUE(Panel().ComboMPCFormat->isEnabled()) << "stays free in a run";
        EXPECT_TRUE(Panel().TextOutPath->isEnabled()) << "stays free in a run";
        looked = true;
        ClickToolbar(6);
    });
    ClickToolbar(5);
    EXPECT_TRUE(looked);
    EXPECT_TRUE(Panel().ComboOutFormat->isEnabled());
}

TEST_F(MainWindowLayouts, TheTabsShowOnePageAtATime) {
    EXPECT_TRUE(Form().Picture1->isVisible());
    EXPECT_FALSE(Form().TagPage.Picture2->isVisible());
    Form().SSTab1->setCurrentIndex(1);
    EXPECT_FALSE(Form().Picture1->isVisible());
    EXPECT_TRUE(Form().TagPage.Picture2->isVisible());
    // What changed while a page was hidden holds when it is shown.
    Resize({1111, 777});
    Form().SSTab1->setCurrentIndex(0);
    EXPECT_EQ(Form().Picture5->height(), ToPixels(Height(Form().Picture1) - Top(Form().Picture5) - 150));
    EXPECT_EQ(Form().mpb->width(), ToPixels(Width(Form().Picture5) - 2 * Left(Form().mpb)));
}

TEST_F(MainWindowLayouts, OpeningTheTagTabWithAFolderSelectedLoadsNoTag) {
    Folder.MakeFile("Music/a.wav");
    AddFolderByCommand(Folder.Path("Music"));
    Tree().expandAll();
    Click(Folder.Path("Music"));
    Form().SSTab1->setCurrentIndex(1);
    EXPECT_EQ(Window->Tags().CurrentFile(), QString());
}

TEST_F(MainWindowLayouts, InARightToLeftLayoutEverythingIsMirrored) {
    Resize({900, 640});
    const auto leftOf = [](const QWidget* control) { return control->x(); };
    const auto rightOf = [](const QWidget* control) {
        return control->parentWidget()->width() - control->x() - control->width();
    };
    const QList<const QWidget*> all = {Form().Picture7,      Form().SSTab1,         Form().Picture1,
                                       Form().Label32,       Form().LabelFileName,  Form().Picture5,
                                       Form().Label28,       Form().Label29,        Form().Label30,
                                       Form().StopImg,       Form().ClearImg,       Form().Label1,
                                       Form().LabelDirCount, Form().Image3,         Panel().Label5,
                                       Panel().TextOutPath,  Panel().CmdSelectPath, Panel().Check2};
    QList<int> before;
    for (const QWidget* control : all) before.append(leftOf(control));
    Window->setLayoutDirection(Qt::RightToLeft);
    for (const int width : {700, 900}) {
        Resize({width, 640});
        Settle();
    }
    for (qsizetype n = 0; n < all.size(); ++n) {
        EXPECT_NEAR(rightOf(all[n]), before[n], 1) << qPrintable(all[n]->objectName());
    }
}

// Letters of twice the size: every caption still has the room that it wants where the window is large, and
// nothing lies over anything else.
TEST_F(MainWindowLayouts, TheLeastSizeGrowsWithTheLettersAsFarAsTheScreenGoes) {
    const QFont usual = QApplication::font();
    const QSize before = Window->minimumSize();
    QFont font = usual;
    font.setPointSizeF(usual.pointSizeF() * 1.25);
    QApplication::setFont(font);
    Settle();
    EXPECT_GT(Window->minimumWidth(), before.width());
    font.setPointSizeF(usual.pointSizeF() * 4);
    QApplication::setFont(font);
    Settle();
    const QSize screen = Window->screen()->availableSize();
    EXPECT_LE(Window->minimumWidth(), qMax(screen.width(), before.width()));
    EXPECT_LE(Window->minimumHeight(), qMax(screen.height(), before.height()));
    QApplication::setFont(usual);
    Settle();
    EXPECT_EQ(Window->minimumSize(), before);
    EXPECT_EQ(Form().Splitter1->MaxSize(), 6500);
    EXPECT_EQ(Form().Splitter1->MinSize1(), 2000);
    EXPECT_EQ(Form().Splitter1->MinSize2(), 6500);
}

TEST_F(MainWindowLayouts, LargerLettersHaveTheirRoom) {
    const QFont usual = QApplication::font();
    for (const double factor : {1.25, 1.6, 2.0}) {
        QFont font = usual;
        font.setPointSizeF(usual.pointSizeF() * factor);
        QApplication::setFont(font);
        Settle();
        Resize({2400, 1400});
        Settle();
        for (const QLabel* label :
             {Form().Label1, Form().Label2, Form().Label28, Form().Label27, Form().Label32, Form().Label31,
              Panel().Label5, Panel().Label6, Panel().Label7, Panel().Label11}) {
            EXPECT_GE(label->width(), label->sizeHint().width()) << factor << qPrintable(label->text());
            EXPECT_GE(label->height(), qMin(label->fontMetrics().height(), 27))
                << factor << qPrintable(label->text());
        }
        EXPECT_GE(Panel().Label6->y(), Panel().Label5->geometry().bottom());
        EXPECT_GE(Panel().ComboOutFormat->height(), Panel().fontMetrics().height() + 4);
        EXPECT_GE(Form().Label2->y(), Form().Label1->geometry().bottom());
        EXPECT_GE(Form().Picture7->height(), Form().Label2->geometry().bottom());
        EXPECT_GE(Form().Picture9Frame->height(), Panel().Check2->geometry().bottom());
        EXPECT_LT(Form().Picture9Frame->geometry().bottom(), Form().Picture5->y());
    }
    QApplication::setFont(usual);
}

}  // namespace
}  // namespace Sonmira
