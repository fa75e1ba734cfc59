#include "MainWindowTest.h"
#include "platform/Folders.h"
#include "shell/widgets/FailureReport.h"
#include "shell/widgets/Form1.h"
#include "shell/widgets/Main.h"
#include "ui/TabStrip.h"

#include <QListWidget>
#include <QMenu>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// The start of the program from its entry routine on, with no settings yet.
class FirstStart : public MainWindowTest {
public:
    FirstStart() {
        qputenv("XDG_CONFIG_HOME", Folder.Native("config"));
        Folder.MakeFolder("config");
    }
    ~FirstStart() override {
        OverrideEncoderSystemFolder({});
        ProgramEnd() = RealEnd;
    }

protected:
    // Runs the entry routine; `pick` acts on the language picker.
    void Start(const std::function<void(Form1&)>& pick = {}) {
        const ModalAnswer picker(u"Form1"_s, [&](QWidget& window) {
            PickersSeen += 1;
            LogoBesidePicker = LogoIsThere();
            if (pick) {
                pick(static_cast<Form1&>(window));
            } else {
                window.close();
            }
        });
        const ModalAnswer notice(u"LameEncoder"_s, [&](QWidget& window) {
            NoticesSeen += 1;
            LogoBesideNotice = LogoIsThere();
            window.close();
        });
        Sonmira::Main([this] {
            Window = std::make_unique<BatchConverter>();
            Window->show();
            return std::make_unique<QWidget>();
        });
    }
    static bool LogoIsThere() {
        for (const QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == u"Deb" && widget->isVisible()) return true;
        }
        return false;
    }
    static void Choose(Form1& picker, int place) {
        QListWidget& list = *picker.ListView1;
        QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier,
                          list.visualItemRect(list.item(place)).center());
    }
    QByteArray Ini() { return ContentOf(Folder.Native("config/SonmiraPack/Sonmira.ini")); }

    std::function<void()> RealEnd = ProgramEnd();
    int PickersSeen = 0;
    int NoticesSeen = 0;
    bool LogoBesidePicker = false;
    bool LogoBesideNotice = false;
};

TEST_F(FirstStart, AsksForTheLanguageAfterTheLogoIsGone) {
    Start([](Form1& picker) {
        EXPECT_EQ(picker.ListView1->currentItem()->text(), u"English"_s);
        Choose(picker, 0);
    });
    EXPECT_EQ(PickersSeen, 1);
    EXPECT_FALSE(LogoBesidePicker);
    EXPECT_EQ(Window->windowTitle(), u"Sonmira V2.1"_s);
    EXPECT_TRUE(Window->LanguageItems().Item(0)->isChecked());
    EXPECT_EQ(Panel().ComboOutFormat->currentText(), u"Mp3"_s);
    EXPECT_EQ(Panel().TextOutPath->Text(), DesktopFolder());
}

TEST_F(FirstStart, WritesJustThreeKeysBeforeTheCloseAndThreeMoreAtIt) {
    Start([](Form1& picker) { Choose(picker, 0); });
    EXPECT_EQ(Ini().replace("\r\n", "\n"),
              "[LANGUE]\nVALUE= 0\n[LAUNCH]\nVALUE=True\n[WMA]\nWMASUPPORT=False\n");
    EXPECT_TRUE(CloseWindow());
    const QByteArray closed = Ini();
    EXPECT_TRUE(closed.contains("[AudioConverter]"));
    for (const char* key : {"OutputPath=", "Modepath=FALSE", "Format=Mp3"}) {
        EXPECT_TRUE(closed.contains(key)) << key;
    }
    EXPECT_EQ(closed.count('='), 6);
}

TEST_F(FirstStart, APickerClosedWithoutAChoiceTakesTheSeventhFileForThisRunOnly) {
    Start();
    EXPECT_TRUE(Window->LanguageItems().Item(6)->isChecked());
    EXPECT_EQ(LanguageLines[93], u"US English"_s);
    EXPECT_FALSE(Ini().contains("LANGUE"));
    EXPECT_EQ(WithoutLetter(Form().file->title()), u"File"_s);
    Window.reset();
    Start();
    EXPECT_EQ(PickersSeen, 2) << "the next start asks again";
}

TEST_F(FirstStart, WithSixFilesAndNoChoiceTheDesignCaptionsStay) {
    std::filesystem::remove(Shipped.Native("US English.lng").toStdString());
    LanguageLines.Assign({});
    Start();
    EXPECT_TRUE(LanguageLines.IsEmpty());
    EXPECT_FALSE(Ini().contains("LANGUE"));
    EXPECT_EQ(WithoutLetter(Form().mynew->text()), u"new"_s);
    EXPECT_EQ(WithoutLetter(Form().acceptWma->text()), u"acceptWma"_s);
    EXPECT_EQ(WithoutLetter(Form().convertnoww->text()), u"Convert !"_s);
    EXPECT_EQ(Form().Label32->text(), u"File:"_s);
    EXPECT_EQ(Form().ToolbarButton(2)->text(), u"Add File"_s);
    EXPECT_EQ(Form().SSTab1->tabText(0), u"Conversion information"_s);
    EXPECT_EQ(Panel().CheckOutPath->text(), u"Save in the original's directory"_s);

    QString said;
    bool ended = false;
    Dialogs().ShowMessage = [&](const QString& text, MessageIcon /*icon*/, const QString& /*title*/) {
        said = text;
    };
    ProgramEnd() = [&] { ended = true; };
    Form().Homepage->trigger();
    EXPECT_TRUE(said.contains(u"9 : Subscript out of range")) << said.toStdString();
    EXPECT_TRUE(ended);
    ended = false;
    Form().FAQ->trigger();
    EXPECT_TRUE(said.contains(u"13 : Type mismatch")) << said.toStdString();
    EXPECT_TRUE(ended);
}

TEST_F(FirstStart, WithoutTheEncoderTheNoticeStandsBesideTheLogoAtEveryStart) {
    OverrideEncoderSystemFolder(Folder.MakeFolder("no-encoder"));
    for (int start = 1; start <= 2; ++start) {
        Start([](Form1& picker) { Choose(picker, 1); });
        EXPECT_EQ(NoticesSeen, start);
        EXPECT_EQ(Panel().ComboOutFormat->currentText(), u"Wav"_s);
        Window.reset();
    }
    EXPECT_TRUE(LogoBesideNotice);
}

TEST_F(FirstStart, ASavedPlaceBeyondTheMenuLoadsNoFile) {
    Folder.MakeFile("config/SonmiraPack/Sonmira.ini", "[LANGUE]\nVALUE= 7\n");
    LanguageLines.Assign({});
    Start();
    EXPECT_EQ(PickersSeen, 0);
    EXPECT_TRUE(LanguageLines.IsEmpty());
    EXPECT_EQ(WithoutLetter(Form().Quit->text()), u"Close"_s);
}

TEST_F(FirstStart, ASavedPlaceIsReadByItsLeadingNumber) {
    Folder.MakeFile("config/SonmiraPack/Sonmira.ini", "[langue]\nvalue=  1 and more\n");
    Start();
    EXPECT_EQ(LanguageLines[93], u"Français"_s);
}

TEST_F(FirstStart, WithoutAnyLanguageFileTheUserIsToldAndTheProgramEnds) {
    for (const auto& file : std::filesystem::directory_iterator(Shipped.Native().toStdString())) {
        std::filesystem::remove(file);
    }
    Folder.MakeFile("config/SonmiraPack/Sonmira.ini", "[LANGUE]\nVALUE= 0\n");
    Dialogs().ShowMessage = [](const QString& text, MessageIcon /*icon*/, const QString& /*title*/) {
        std::fprintf(stderr, "%s", text.toUtf8().constData());
    };
    EXPECT_EXIT(Start(), ::testing::ExitedWithCode(0), "Can't find the Language file");
}

TEST_F(FirstStart, TheNamesThatOthersLookForAreHeldAndHinderNoSecondInstance) {
    Start([](Form1& picker) { Choose(picker, 0); });
    const QByteArray held = ContentOf("/proc/net/unix");
    EXPECT_TRUE(held.contains(" @Tolvane_SonmiraPack\n"));
    EXPECT_TRUE(held.contains(" @Global\\Tolvane_SonmiraPack\n"));
    const std::unique_ptr<BatchConverter> first = std::move(Window);
    Start();
    EXPECT_TRUE(Window->isVisible());
}

}  // namespace
}  // namespace Sonmira
