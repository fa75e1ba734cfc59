// Where the keyboard goes when a run locks controls and frees them.
#include "AudiotoolTest.h"
#include "engine/OutputFormats.h"

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class KeyboardOfTheRun : public AudiotoolTest {
protected:
    KeyboardOfTheRun() { OpenFor(FormatName::Mp3); }

    void PressSpace() { QTest::keyClick(Window->focusWidget(), Qt::Key_Space); }
    // A run of a short file to its end.
    void RunToTheEnd() {
        MakeWav("a.wav");
        AddFiles({"a.wav"});
        Click(Form().CmdConvert);
        EXPECT_EQ(IconOf(1), u"converted"_s);
    }
    // A run of a long file that is cancelled by the mouse.
    void RunAndCancel() {
        MakeLongWav("a.wav", 20);
        AddFiles({"a.wav"});
        bool cancelled = false;
        WhenBarReaches(1, [&] {
            EXPECT_EQ(Window->focusWidget(), Form().cmdCancel);
            cancelled = true;
            Click(Form().cmdCancel);
        });
        Click(Form().CmdConvert);
        EXPECT_TRUE(cancelled);
        EXPECT_EQ(IconOf(1), u"error"_s);
    }
};

TEST_F(KeyboardOfTheRun, IsOnTheButtonThatStartedItAtItsEnd) {
    RunToTheEnd();
    EXPECT_EQ(Window->focusWidget(), Form().CmdConvert);
    EXPECT_FALSE(Form().cmdCancel->isEnabled());
}

TEST_F(KeyboardOfTheRun, IsOnTheButtonThatStartsTheNextWhereItWasCancelled) {
    RunAndCancel();
    EXPECT_EQ(Window->focusWidget(), Form().CmdConvert);
    EXPECT_FALSE(Form().cmdCancel->isEnabled());
}

TEST_F(KeyboardOfTheRun, ConvertsAgainBySpace) {
    const ModalAnswer farewell(u"LameEncoder"_s, [](QWidget& notice) { notice.close(); });
    RunToTheEnd();
    PressSpace();
    EXPECT_TRUE(NativeExists(Folder.Native("out/a(1).mp3")));
    EXPECT_TRUE(Window->isVisible());
    EXPECT_TRUE(Ended.empty());
    EXPECT_EQ(farewell.Seen(), 0);
}

TEST_F(KeyboardOfTheRun, CancelsBySpaceAndConvertsAgain) {
    const ModalAnswer farewell(u"LameEncoder"_s, [](QWidget& notice) { notice.close(); });
    MakeLongWav("a.wav", 20);
    AddFiles({"a.wav"});
    for (int run = 1; run <= 2; ++run) {
        WhenBarReaches(1, [this] { PressSpace(); });
        Form().CmdConvert->setFocus();
        PressSpace();
        EXPECT_EQ(IconOf(1), u"error"_s) << run;
        EXPECT_EQ(Window->focusWidget(), Form().CmdConvert) << run;
    }
    EXPECT_TRUE(Window->isVisible());
    EXPECT_TRUE(Ended.empty());
    EXPECT_EQ(farewell.Seen(), 0);
}

TEST_F(KeyboardOfTheRun, GoesFromAnyOtherLockedControlToTheListAndStaysThere) {
    for (QWidget* control : std::initializer_list<QWidget*>{Form().Image1, Form().ClearList,
                                                            Panel().ComboOutFormat, Panel().CheckOutPath}) {
        control->setFocus();
        ASSERT_EQ(Window->focusWidget(), control);
        Window->SetControlsEnabled(false);
        EXPECT_EQ(Window->focusWidget(), &List()) << qPrintable(control->objectName());
        Window->SetControlsEnabled(true);
        EXPECT_EQ(Window->focusWidget(), &List()) << qPrintable(control->objectName());
    }
}

TEST_F(KeyboardOfTheRun, StaysWhereItsControlIsFree) {
    Panel().TextOutPath->setFocus();
    Window->SetControlsEnabled(false);
    EXPECT_EQ(Window->focusWidget(), Panel().TextOutPath) << "and so does who types in it";
    Window->SetControlsEnabled(true);
    EXPECT_EQ(Window->focusWidget(), Panel().TextOutPath);
}

}  // namespace
}  // namespace Sonmira
