#include "platform/Dialogs.h"
#include "platform/Paths.h"
#include "platform/widgets/QtDialogs.h"
#include "support/TestFolder.h"
#include "support/WindowWaiting.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// Calls `answer` with the window of that kind as soon as one is up, from within its own event loop.
template <class Window>
class WhenShown {
public:
    explicit WhenShown(std::function<void(Window&)> answer) : Answer(std::move(answer)) {
        Timer.callOnTimeout([this] {
            auto* window = qobject_cast<Window*>(QApplication::activeModalWidget());
            if (window == nullptr || !window->isVisible()) return;
            Timer.stop();
            Answer(*window);
        });
        Timer.start(10);
    }

private:
    std::function<void(Window&)> Answer;
    QTimer Timer;
};

void TypeName(QFileDialog& dialog, const QString& text) {
    auto* edit = dialog.findChild<QLineEdit*>(u"fileNameEdit"_s);
    edit->setText(text);
    QTest::keyClick(edit, Qt::Key_Return);
}

class QtDialogs : public ::testing::Test {
protected:
    QtDialogs() { InstallQtDialogs(); }

    TestFolder Folder;
};

TEST_F(QtDialogs, AMessageShowsItsTextTitleAndIcon) {
    QString seen;
    const WhenShown<QMessageBox> answer([&](QMessageBox& box) {
        seen = box.objectName() + u'|' + box.windowTitle() + u'|' + box.text();
        EXPECT_EQ(box.icon(), QMessageBox::Critical);
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.windowModality(), Qt::ApplicationModal);
        box.button(QMessageBox::Ok)->click();
    });
    Dialogs().ShowMessage(u"<b>gone</b>"_s, MessageIcon::Critical, u"Sonmira"_s);
    EXPECT_EQ(seen, u"MessageBox|Sonmira|<b>gone</b>"_s);
}

TEST_F(QtDialogs, AMessageHasTheIconThatWasAskedFor) {
    for (const auto& [icon, shown] : {std::pair{MessageIcon::Warning, QMessageBox::Warning},
                                      std::pair{MessageIcon::Information, QMessageBox::Information}}) {
        QMessageBox::Icon seen = QMessageBox::NoIcon;
        const WhenShown<QMessageBox> answer([&](QMessageBox& box) {
            seen = box.icon();
            box.reject();
        });
        Dialogs().ShowMessage(u"text"_s, icon, u"title"_s);
        EXPECT_EQ(seen, shown);
    }
}

TEST_F(QtDialogs, AMessageBelongsToTheActiveWindow) {
    QWidget window;
    window.show();
    window.activateWindow();
    ASSERT_TRUE(BecomesActive(window));
    QWidget* owner = nullptr;
    const WhenShown<QMessageBox> answer([&](QMessageBox& box) {
        owner = box.parentWidget();
        box.reject();
    });
    Dialogs().ShowMessage(u"text"_s, MessageIcon::Critical, u"title"_s);
    EXPECT_EQ(owner, &window);
}

TEST_F(QtDialogs, OpensFilesInTheOrderTyped) {
    Folder.MakeFile("a.mp3");
    Folder.MakeFile("b c.mp3");
    const WhenShown<QFileDialog> answer(
        [](QFileDialog& dialog) { TypeName(dialog, u"\"b c.mp3\" \"a.mp3\""_s); });
    const auto files =
        Dialogs().OpenFiles({u"Add a file"_s, u"MP3 Files(*.mp3)|*.mp3;*.MP3|"_s, Folder.Path()});
    ASSERT_TRUE(files.has_value());
    EXPECT_EQ(*files, QStringList({Folder.Path("b c.mp3"), Folder.Path("a.mp3")}));
}

TEST_F(QtDialogs, TheOpenDialogShowsWhatItWasGiven) {
    QString title;
    QStringList filters;
    QString start;
    const WhenShown<QFileDialog> answer([&](QFileDialog& dialog) {
        title = dialog.windowTitle();
        filters = dialog.nameFilters();
        start = dialog.directory().path();
        EXPECT_TRUE(dialog.testOption(QFileDialog::DontUseNativeDialog));
        dialog.reject();
    });
    Dialogs().OpenFiles({u"Add a file"_s, u"WAV Files(*.wav)|*.wav;*.WAV|"_s, Folder.Path()});
    EXPECT_EQ(title, u"Add a file"_s);
    EXPECT_EQ(filters, QStringList({u"WAV Files (*.wav)"_s}));
    EXPECT_EQ(FromNative(start.toUtf8()), Folder.Path());
}

TEST_F(QtDialogs, AStartFolderThatIsNoneStillOpensTheDialog) {
    const WhenShown<QFileDialog> answer([](QFileDialog& dialog) { dialog.reject(); });
    EXPECT_FALSE(Dialogs().OpenFiles({u"t"_s, QString(), Folder.Path("none")}).has_value());
}

TEST_F(QtDialogs, ACancelledOpenDialogGivesNothing) {
    Folder.MakeFile("a.mp3");
    const WhenShown<QFileDialog> answer([](QFileDialog& dialog) { dialog.reject(); });
    EXPECT_FALSE(Dialogs().OpenFiles({u"t"_s, QString(), Folder.Path()}).has_value());
}

TEST_F(QtDialogs, BrowsesForAFolder) {
    Folder.MakeFolder("a b");
    QString title;
    const WhenShown<QFileDialog> answer([&](QFileDialog& dialog) {
        title = dialog.windowTitle();
        EXPECT_TRUE(dialog.testOption(QFileDialog::ShowDirsOnly));
        TypeName(dialog, ShownPath(Folder.Path("a b")));
    });
    EXPECT_EQ(Dialogs().BrowseForFolder(u"Where to"_s), Folder.Path("a b"));
    EXPECT_EQ(title, u"Where to"_s);
}

TEST_F(QtDialogs, ACancelledFolderDialogGivesTheEmptyText) {
    const WhenShown<QFileDialog> answer([](QFileDialog& dialog) { dialog.reject(); });
    EXPECT_EQ(Dialogs().BrowseForFolder(u"t"_s), QString());
}

TEST(NameFilters, ReplaceThePatternsOfTheDescription) {
    EXPECT_EQ(NameFiltersOf(u"Audio files (*.wav;*.mp3)|*.wav;*.mp3;*.mp+|MP3 Files(*.mp3)|*.mp3|"_s),
              QStringList({u"Audio files (*.wav *.mp3 *.mp+)"_s, u"MP3 Files (*.mp3)"_s}));
}

TEST(NameFilters, TakeADescriptionWithoutPatterns) {
    EXPECT_EQ(NameFiltersOf(u"Sound|*.wav"_s), QStringList({u"Sound (*.wav)"_s}));
}

TEST(NameFilters, NameAPatternOnceWhateverItsCase) {
    EXPECT_EQ(NameFiltersOf(u"APE|*.APL;*.apl;*.ape;*.APE|"_s).constFirst(), u"APE (*.APL *.ape)"_s);
}

TEST(NameFilters, PassWhatIsNoPair) {
    EXPECT_EQ(NameFiltersOf(u"Sound||Other"_s), QStringList());
    EXPECT_EQ(NameFiltersOf(QString()), QStringList());
}

TEST_F(QtDialogs, AQuestionIsAnsweredByYesOrNo) {
    for (const bool yes : {true, false}) {
        QString seen;
        const WhenShown<QMessageBox> answer([&](QMessageBox& box) {
            seen = box.windowTitle() + u'|' + box.text();
            EXPECT_EQ(box.textFormat(), Qt::PlainText);
            box.button(yes ? QMessageBox::Yes : QMessageBox::No)->click();
        });
        EXPECT_EQ(Dialogs().AskYesNo(u"Really <b>?"_s, u"Sonmira"_s), yes);
        EXPECT_EQ(seen, u"Sonmira|Really <b>?"_s);
    }
}

TEST_F(QtDialogs, AQuestionThatIsClosedByEscapeIsANo) {
    const WhenShown<QMessageBox> answer([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_FALSE(Dialogs().AskYesNo(u"Really?"_s, u"Sonmira"_s));
}

TEST_F(QtDialogs, AColourIsChosenOrCancelled) {
    {
        const WhenShown<QColorDialog> answer([](QColorDialog& dialog) {
            EXPECT_EQ(dialog.currentColor(), QColor(0xC0, 0x40, 0x00));
            dialog.setCurrentColor(QColor(0x10, 0x20, 0x30));
            dialog.accept();
        });
        EXPECT_EQ(Dialogs().ChooseColour(0xC04000), 0x102030U);
    }
    const WhenShown<QColorDialog> answer([](QColorDialog& dialog) { dialog.reject(); });
    EXPECT_EQ(Dialogs().ChooseColour(0xC04000), std::nullopt);
}

}  // namespace
}  // namespace Sonmira
