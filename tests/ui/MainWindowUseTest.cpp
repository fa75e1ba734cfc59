// What users expect of a window: texts that can be read, keys, names for those who cannot see, and news of a
// run for those who look elsewhere.
#include "MainWindowTest.h"
#include "kit/MyProgressBar.h"
#include "kit/Splitter.h"
#include "platform/widgets/DesktopSignals.h"
#include "tags/TagPage.h"
#include "ui/BatchRunView.h"
#include "ui/CutTexts.h"
#include "ui/LanguageTargets.h"
#include "ui/TabStrip.h"
#include "ui/Theme.h"

#include <QAccessible>
#include <QGroupBox>
#include <QHelpEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QStatusBar>
#include <QToolTip>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class MainWindowUse : public MainWindowTest {
public:
    MainWindowUse() {
        ApplyTheme(*qApp);
        Desktop().ShowProgress = [this](double part) { Shown.append(part); };
        Desktop().HideProgress = [this] { Shown.append(-1); };
        Desktop().Notify = [this](const QString& title, const QString& text) {
            Messages.append(title + u'|' + text);
        };
        Open();
    }
    ~MainWindowUse() override { Desktop() = {}; }

protected:
    static QString ToolTipOf(QWidget& control) {
        QToolTip::hideText();
        QHelpEvent help(QEvent::ToolTip, QPoint(2, 2), control.mapToGlobal(QPoint(2, 2)));
        QApplication::sendEvent(&control, &help);
        return QToolTip::text();
    }

    QList<double> Shown;  // parts in the task bar; -1 where it was hidden
    QStringList Messages;
};

// A text may be cut only where an ellipsis says so and the tool tip has it whole.
TEST_F(MainWindowUse, NoTextIsCutUnsaidAtTheLeastSizeInAnyLanguage) {
    Window->resize(613, 560);
    // What has no room in the toolbar goes behind this button.
    const auto* more = Form().Toolbar1->findChild<QToolButton*>(u"qt_toolbar_ext_button"_s);
    ASSERT_NE(more, nullptr);
    int cut = 0;
    int seen = 0;
    for (int index = 0; index < 7; ++index) {
        Window->LanguageItems().Item(index)->trigger();
        for (const int tab : {0, 1}) {
            Form().SSTab1->setCurrentIndex(tab);
            Settle();
            EXPECT_FALSE(more->isVisible()) << LanguageLines[93].toStdString();
            for (QWidget* control : Window->findChildren<QWidget*>()) {
                if (!control->isVisible()) continue;
                const auto* label = qobject_cast<QLabel*>(control);
                const auto* button = qobject_cast<QAbstractButton*>(control);
                if (label == nullptr && button == nullptr) continue;
                ++seen;
                const std::string place =
                    LanguageLines[93].toStdString() + ": " + control->objectName().toStdString();
                if (qobject_cast<QToolButton*>(control) != nullptr) {
                    EXPECT_GE(control->width(), qMin(control->sizeHint().width(), 23)) << place;
                    if (control->parentWidget() == Form().Toolbar1) {
                        EXPECT_GE(control->width(), control->sizeHint().width()) << place;
                    }
                    continue;
                }
                EXPECT_GE(control->height() + 1, control->fontMetrics().height()) << place;
                const QString hidden = ElidedTextOf(*control);
                if (hidden.isEmpty()) continue;
                ++cut;
                EXPECT_TRUE(ToolTipOf(*control).contains(hidden)) << place;
            }
        }
    }
    EXPECT_GT(seen, 200);
    EXPECT_GT(cut, 0) << "or this test looks at nothing";
}

TEST_F(MainWindowUse, ACutTextEndsInAnEllipsis) {
    const auto picture = [&](const QString& text) {
        Form().Label26->setText(text);
        Form().Label26->resize(90, 20);
        return Form().Label26->grab().toImage();
    };
    const QFontMetrics metrics = Form().Label26->fontMetrics();
    const QString whole = u"Conversion information of everything"_s;
    EXPECT_EQ(picture(whole), picture(metrics.elidedText(whole, Qt::ElideRight, 90)));
}

TEST_F(MainWindowUse, AllTextsAreWholeInTheWindowAsItOpens) {
    for (int index = 0; index < 7; ++index) {
        Window->LanguageItems().Item(index)->trigger();
        for (const int tab : {0, 1}) {
            Form().SSTab1->setCurrentIndex(tab);
            Window->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
            Window->resize(1080, 700);
            Settle();
            for (const QWidget* control : Window->findChildren<QWidget*>()) {
                const bool isCaption = qobject_cast<const QLabel*>(control) != nullptr ||
                                       qobject_cast<const QAbstractButton*>(control) != nullptr;
                if (!control->isVisible() || !isCaption) continue;
                EXPECT_EQ(ElidedTextOf(*control), QString()) << qPrintable(control->objectName());
            }
        }
    }
}

TEST_F(MainWindowUse, EveryCommandHasItsKeys) {
    int files = 0;
    Dialogs().OpenFiles = [&](const OpenDialogRequest& /*request*/) {
        ++files;
        return std::optional<QStringList>();
    };
    int folders = 0;
    Dialogs().BrowseForFolder = [&](const QString& /*title*/) {
        ++folders;
        return QString();
    };
    Window->activateWindow();
    Form().TreeView1->setFocus();
    QTest::keyClick(Window.get(), Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(files, 1);
    QTest::keyClick(Window.get(), Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(folders, 1);
    Rows().AddRow();
    QTest::keyClick(Window.get(), Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(Rows().RowCount(), 0);
    Folder.MakeFile("Music/a.wav", WavOf(MakeTone(44100, 2, 4410, 440), WavKind::Signed16));
    AddFolderByCommand({});
    Window->AddFolder(Folder.Path("Music"));
    Panel().TextOutPath->SetText(Folder.Path("out"));
    QTest::keyClick(Window.get(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(Rows().RowCount(), 1);
}

TEST_F(MainWindowUse, EscapeStopsARunAndNothingElse) {
    MakeLongWav("Music/a.wav", 20);
    MakeLongWav("Music/b.wav", 20);
    AddFolderByCommand(Folder.Path("Music"));
    Panel().ComboOutFormat->SelectText(u"Mp3"_s);
    QTest::keyClick(Form().TreeView1, Qt::Key_Escape);
    EXPECT_TRUE(Window->isVisible());
    WhenReached(1, [&] { QTest::keyClick(Panel().TextOutPath, Qt::Key_Escape); });
    ClickToolbar(5);
    EXPECT_EQ(Rows().RowCount(), 1);
    EXPECT_EQ(IconOf(1), u"error"_s);
}

TEST_F(MainWindowUse, EscapeHidesTheTagInMemoryFirst) {
    MakeLongWav("Music/a.wav", 20);
    AddFolderByCommand(Folder.Path("Music"));
    Panel().ComboOutFormat->SelectText(u"Mp3"_s);
    bool looked = false;
    WhenReached(1, [&] {
        Form().SSTab1->setCurrentIndex(1);
        Form().TagPage.ToolbarButton(3)->trigger();
        QTest::keyClick(Form().TreeView1, Qt::Key_Escape);
        EXPECT_FALSE(Form().TagPage.Picture4->isVisible());
        EXPECT_FALSE(Window->State().CancelAll());
        QTest::keyClick(Form().TreeView1, Qt::Key_Escape);
        EXPECT_TRUE(Window->State().CancelAll());
        looked = true;
    });
    ClickToolbar(5);
    EXPECT_TRUE(looked);
}

TEST_F(MainWindowUse, EscapeOfADraggedBarIsNoStop) {
    MakeLongWav("Music/a.wav", 20);
    AddFolderByCommand(Folder.Path("Music"));
    Panel().ComboOutFormat->SelectText(u"Mp3"_s);
    bool looked = false;
    WhenReached(1, [&] {
        auto* const bar = Form().Splitter1->findChild<QWidget*>(u"picSplitter"_s);
        QTest::mousePress(bar, Qt::LeftButton, Qt::NoModifier, QPoint(2, 40));
        QTest::keyClick(bar, Qt::Key_Escape);
        EXPECT_FALSE(Window->State().CancelAll());
        EXPECT_FALSE(Form().Splitter1->IsDragging());
        QTest::mouseRelease(bar, Qt::LeftButton, Qt::NoModifier, QPoint(2, 40));
        looked = true;
        ClickToolbar(6);
    });
    ClickToolbar(5);
    EXPECT_TRUE(looked);
}

TEST_F(MainWindowUse, TheKeyboardGoesToTheRowsWhereItsControlIsLocked) {
    Window->activateWindow();
    Panel().ComboOutFormat->setFocus();
    Window->SetControlsEnabled(false);
    EXPECT_EQ(Window->focusWidget(), Form().ListViewFiles);
    Window->SetControlsEnabled(true);
    Panel().TextOutPath->setFocus();
    Window->SetControlsEnabled(false);
    EXPECT_EQ(Window->focusWidget(), Panel().TextOutPath) << "stays free, and so does who types in it";
}

TEST_F(MainWindowUse, EveryMenuHasALetterOfItsOwn) {
    for (int index = 0; index < 7; ++index) {
        Window->LanguageItems().Item(index)->trigger();
        QList<const QWidget*> bars = {Window->menuBar(), Form().popupmenux, Form().popupmenuy};
        for (const QAction* menu : Window->menuBar()->actions()) bars.append(menu->menu());
        for (const QWidget* bar : bars) {
            QSet<QString> letters;
            for (const QAction* action : bar->actions()) {
                if (action->isSeparator() || action->text().isEmpty()) continue;
                const QString letter = action->text().section(u'&', 1).left(1).toLower();
                EXPECT_FALSE(letter.isEmpty()) << qPrintable(action->text());
                EXPECT_FALSE(letters.contains(letter)) << qPrintable(action->text());
                letters.insert(letter);
            }
        }
    }
}

TEST_F(MainWindowUse, LettersAreThoseThatAreStillFree) {
    EXPECT_EQ(WithMnemonics({u"Add a file"_s, u"Add a directory"_s, u"a"_s, u"New"_s}),
              (QStringList{u"&Add a file"_s, u"Add a &directory"_s, u"a"_s, u"&New"_s}));
    EXPECT_EQ(WithMnemonics({u"File"_s, u"&Find"_s, u""_s}), (QStringList{u"F&ile"_s, u"&Find"_s, u""_s}));
}

TEST_F(MainWindowUse, TheTabKeyWalksThroughThePageInReadingOrder) {
    Panel().ComboOutFormat->SelectText(u"Mp3"_s);
    Window->activateWindow();
    Form().TreeView1->setFocus();
    QStringList names;
    for (int n = 0; n < 20; ++n) {
        names.append(Window->focusWidget()->objectName());
        QTest::keyClick(Window->focusWidget(), Qt::Key_Tab);
        if (Window->focusWidget() == Form().TreeView1) break;
    }
    EXPECT_EQ(names, (QStringList{u"TreeView1"_s, u"picSplitter"_s, u"SSTab1"_s, u"CheckOutPath"_s,
                                  u"TextOutPath"_s, u"CmdSelectPath"_s, u"ComboOutFormat"_s,
                                  u"TextOutFormat"_s, u"CmdFormatParameter"_s, u"Check2"_s, u"ClearImg"_s,
                                  u"StopImg"_s, u"ListViewFiles"_s}));
}

TEST_F(MainWindowUse, TheTabKeyWalksThroughTheTagPageInReadingOrder) {
    Form().SSTab1->setCurrentIndex(1);
    Form().TagPage.Command3->setEnabled(true);
    Window->activateWindow();
    Form().SSTab1->setFocus();
    QStringList names;
    for (int n = 0; n < 25; ++n) {
        names.append(Window->focusWidget()->objectName());
        QTest::keyClick(Window->focusWidget(), Qt::Key_Tab);
        if (Window->focusWidget() == Form().SSTab1) break;
    }
    EXPECT_EQ(names,
              (QStringList{u"SSTab1"_s, u"Option1_1"_s, u"infoTitle"_s, u"infoArtist"_s, u"infoAlbum"_s,
                           u"infoGenre"_s, u"infoGenreS"_s, u"infoCopyright"_s, u"infoYear"_s, u"infoTrack"_s,
                           u"infoComment"_s, u"infoComposer"_s, u"infoURL"_s, u"infoEncodedBy"_s,
                           u"infoOriginalArtist"_s, u"Command3"_s, u"TreeView1"_s, u"picSplitter"_s}));
}

// What assistive tools see, as they walk through the window.
TEST_F(MainWindowUse, EveryControlTellsItsNameAndItsRole) {
    QSet<QAccessible::Role> roles;
    int seen = 0;
    const std::function<void(QAccessibleInterface*)> walk = [&](QAccessibleInterface* node) {
        ASSERT_NE(node, nullptr);
        const QAccessible::State state = node->state();
        const QString name = node->text(QAccessible::Name);
        const auto* widget = qobject_cast<QWidget*>(node->object());
        const std::string place =
            (widget != nullptr
                 ? widget->objectName() + u' ' + QLatin1StringView(widget->metaObject()->className())
                 : name)
                .toStdString();
        if (state.invisible == 0) {
            ++seen;
            roles.insert(node->role());
            EXPECT_NE(node->role(), QAccessible::NoRole) << place;
            const bool isBuiltIn =
                widget == nullptr || qobject_cast<const QComboBox*>(widget->parentWidget()) != nullptr;
            if (!isBuiltIn && widget->focusPolicy() != Qt::NoFocus && widget->isEnabled()) {
                EXPECT_FALSE(name.isEmpty()) << place;
                EXPECT_NE(node->role(), QAccessible::Client) << place;
            }
        }
        for (int n = 0; n < node->childCount(); ++n) {
            if (node->child(n) != nullptr) walk(node->child(n));
        }
    };
    for (const int tab : {0, 1}) {
        Form().SSTab1->setCurrentIndex(tab);
        Form().TagPage.Command3->setEnabled(true);
        Settle();
        walk(QAccessible::queryAccessibleInterface(Window.get()));
    }
    EXPECT_GT(seen, 80);
    for (const QAccessible::Role role :
         {QAccessible::Tree, QAccessible::Table, QAccessible::ProgressBar, QAccessible::PageTabList,
          QAccessible::CheckBox, QAccessible::ComboBox, QAccessible::EditableText, QAccessible::MenuBar,
          QAccessible::ToolBar, QAccessible::RadioButton, QAccessible::Splitter}) {
        EXPECT_TRUE(roles.contains(role)) << int{role};
    }
}

TEST_F(MainWindowUse, AFieldIsNamedByItsCaption) {
    const auto nameOf = [](QWidget* control) {
        return QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name);
    };
    EXPECT_EQ(nameOf(Panel().TextOutPath), Panel().Label5->text());
    // A list is called by what it shows, and tells by a relation which caption is its own.
    const auto relations = QAccessible::queryAccessibleInterface(Panel().ComboOutFormat)->relations();
    ASSERT_EQ(relations.size(), 1);
    EXPECT_EQ(relations[0].first->object(), Panel().Label6);
    EXPECT_EQ(relations[0].second, QAccessible::Label);
    EXPECT_EQ(nameOf(Form().TagPage.Fields->infoYear), u"Year:"_s);
    EXPECT_EQ(nameOf(Form().mpb), u"Progress of the current file"_s);
}

TEST_F(MainWindowUse, ARunTellsItsProgressInTheTitleAndInTheTaskBar) {
    MakeLongWav("Music/a.wav", 5);
    Folder.MakeFile("Music/b.wav", WavOf(MakeTone(44100, 2, 4410, 440), WavKind::Signed16));
    AddFolderByCommand(Folder.Path("Music"));
    Panel().TextOutPath->SetText(Folder.Path("out"));
    Panel().ComboOutFormat->SelectText(u"Wav"_s);
    const QString title = Window->windowTitle();
    QStringList titles;
    QObject::connect(Window.get(), &QWidget::windowTitleChanged, Window.get(),
                     [&](const QString& now) { titles.append(now); });
    ASSERT_TRUE(BecomesActive(*Window));
    ClickToolbar(5);
    ASSERT_GT(titles.size(), 3);
    EXPECT_EQ(titles.first(), u"0 % - "_s + title);
    EXPECT_TRUE(titles.contains(u"50 % - "_s + title));
    EXPECT_EQ(titles.at(titles.size() - 2), u"100 % - "_s + title);
    EXPECT_EQ(Window->windowTitle(), title);
    ASSERT_GT(Shown.size(), 3);
    EXPECT_TRUE(std::is_sorted(Shown.begin(), Shown.end() - 1));
    EXPECT_EQ(Shown.at(Shown.size() - 2), 1.0);
    EXPECT_EQ(Shown.last(), -1) << "the bar is taken away at the end";
    EXPECT_EQ(Messages, QStringList());
}

TEST_F(MainWindowUse, ALongRunIsAnnouncedWhereItsWindowIsNotInFront) {
    QWidget elsewhere;
    elsewhere.setWindowTitle(u"elsewhere"_s);
    constexpr qint64 AnHour = 3'600'000;
    RunNews brief(elsewhere, AnHour);
    { const RunNews::Session session(brief); }
    EXPECT_EQ(Messages, QStringList()) << "a short run is no news";
    RunNews news(elsewhere, 0);
    const auto run = [&](int done) {
        const RunNews::Session session(news);
        news.Count(0, 3);
        EXPECT_EQ(elsewhere.windowTitle(), u"0 % - elsewhere"_s);
        news.Count(done, 3);
    };
    ASSERT_FALSE(elsewhere.isActiveWindow());
    run(3);
    EXPECT_EQ(Messages, QStringList{u"Sonmira|Converted: 3 / 3"_s});
    Messages.clear();
    Window->LanguageItems().Item(2)->trigger();
    run(2);
    EXPECT_EQ(Messages, QStringList{u"Sonmira|Angehalten: 2 / 3"_s});
    Messages.clear();
    elsewhere.show();
    elsewhere.activateWindow();
    ASSERT_TRUE(BecomesActive(elsewhere));
    run(3);
    EXPECT_EQ(Messages, QStringList()) << "who looks at it sees it";
    EXPECT_EQ(elsewhere.windowTitle(), u"elsewhere"_s);
}

TEST_F(MainWindowUse, TheProgressOfARunGoesOverAllItsFiles) {
    QWidget window;
    window.setWindowTitle(u"w"_s);
    RunNews news(window);
    news.Count(1, 4);
    EXPECT_EQ(window.windowTitle(), u"w"_s) << "outside a run nothing is told";
    const RunNews::Session session(news);
    news.Count(1, 4);
    EXPECT_EQ(window.windowTitle(), u"25 % - w"_s);
    news.Progress(50);
    EXPECT_EQ(window.windowTitle(), u"37 % - w"_s);
    news.Progress(0);
    EXPECT_EQ(window.windowTitle(), u"37 % - w"_s) << "the end of a file is no step back";
    news.Count(2, 4);
    EXPECT_EQ(window.windowTitle(), u"50 % - w"_s);
    news.Progress(250);
    EXPECT_EQ(window.windowTitle(), u"75 % - w"_s);
}

TEST_F(MainWindowUse, TheLookComesInLightAndDark) {
    const auto lightness = [this] {
        return Form().StatusBar1->grab().toImage().pixelColor(2, 10).lightnessF();
    };
    EXPECT_GT(lightness(), 0.8);
    const QPalette light = QApplication::palette();
    QApplication::setPalette(QPalette(Qt::white, Qt::black, Qt::gray, Qt::darkGray, Qt::gray, Qt::white,
                                      Qt::white, Qt::black, Qt::black));
    ApplyTheme(*qApp);
    Settle();
    EXPECT_LT(lightness(), 0.3);
    QApplication::setPalette(light);
    ApplyTheme(*qApp);
}

}  // namespace
}  // namespace Sonmira
