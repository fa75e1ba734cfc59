// What the window looks like, and its use without a mouse or without eyes.
#include "AudiotoolTest.h"
#include "ui/Theme.h"

#include <QAccessible>
#include <QLineEdit>
#include <QMenuBar>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class AudiotoolLook : public AudiotoolTest {
protected:
    AudiotoolLook() { ApplyTheme(*qApp); }

    // A picture of the window goes into the folder that the environment names, for the eyes of people.
    void Picture(const QString& name) {
        Settle();
        const QString folder = qEnvironmentVariable("SONMIRA_PICTURES");
        const QString scale = QString::number(qRound(Window->devicePixelRatioF() * 100));
        if (!folder.isEmpty()) Window->grab().save(folder + u"/compact-"_s + name + u'-' + scale + u".png"_s);
    }
    // Buttons, boxes and labels whose text has not the room it needs.
    QStringList Clipped() {
        QStringList clipped;
        for (QWidget* control : Window->findChildren<QWidget*>()) {
            const bool hasText = qobject_cast<QAbstractButton*>(control) != nullptr ||
                                 qobject_cast<QLabel*>(control) != nullptr;
            if (!hasText || !control->isVisible() || qobject_cast<ElidedLabel*>(control) != nullptr) continue;
            if (control->width() < control->sizeHint().width() ||
                control->height() < control->sizeHint().height()) {
                clipped.append(control->objectName());
            }
        }
        return clipped;
    }
};

TEST_F(AudiotoolLook, NoTextIsCutInAnyLanguageAtTheLeastSize) {
    Open();
    for (int language = 0; language <= Window->LanguageItems().HighestIndex(); ++language) {
        Window->LanguageItems().Item(language)->trigger();
        Settle();
        Window->resize(Window->minimumSizeHint());
        Settle();
        EXPECT_EQ(Clipped(), QStringList()) << language;
        EXPECT_LE(Window->minimumSizeHint().width(), 640) << language;
        EXPECT_LE(Window->minimumSizeHint().height(), 560) << language;
    }
}

TEST_F(AudiotoolLook, EveryControlHasANameForThoseWhoHearIt) {
    Open();
    AddTracks(2);
    for (QWidget* control : Window->findChildren<QWidget*>()) {
        if (!control->isVisible() || control->focusPolicy() == Qt::NoFocus ||
            control->objectName().startsWith(u"qt_"))
            continue;
        const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(control);
        ASSERT_NE(spoken, nullptr);
        EXPECT_FALSE(spoken->text(QAccessible::Name).isEmpty())
            << qPrintable(control->objectName()) << ' ' << control->metaObject()->className();
    }
}

TEST_F(AudiotoolLook, BarsSayWhatTheyAreAndHowFar) {
    OpenFor(u"Wav");
    AddTracks(1);
    Click(Form().CmdConvert);
    QAccessibleInterface* const bar = QAccessible::queryAccessibleInterface(&Window->Bars().Element(0));
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(bar->role(), QAccessible::ProgressBar);
    EXPECT_EQ(bar->valueInterface()->currentValue().toInt(), 100);
    EXPECT_EQ(bar->text(QAccessible::Name), u"track 1.wav"_s);
    EXPECT_EQ(bar->text(QAccessible::Description), u"100 %"_s);
}

TEST_F(AudiotoolLook, TheTabKeyWalksFromTopToBottom) {
    Open();
    AddTracks(1);
    QStringList names;
    Form().Image1->setFocus();
    for (int n = 0; n < 30; ++n) {
        names.append(Window->focusWidget()->objectName());
        QTest::keyClick(Window->focusWidget(), Qt::Key_Tab);
        if (Window->focusWidget() == Form().Image1) break;
    }
    EXPECT_EQ(names,
              (QStringList{u"Image1"_s, u"ClearList"_s, u"ListViewFiles"_s, u"CheckOutPath"_s,
                           u"TextOutPath"_s, u"CmdSelectPath"_s, u"ComboOutFormat"_s, u"TextOutFormat"_s,
                           u"CmdFormatParameter"_s, u"CmdConvert"_s, u"CmdQuit"_s}));
}

TEST_F(AudiotoolLook, ALongNameIsCutInTheMiddleAndSaidWholeByItsTip) {
    OpenFor(u"Wav");
    const QByteArray name = QByteArray(200, 'x') + ".wav";
    MakeWav(name);
    AddFiles({name});
    Click(Form().CmdConvert);
    Settle();
    EXPECT_EQ(Form().LabelCurrentFile->toolTip(), Form().LabelCurrentFile->text());
    EXPECT_LT(Window->minimumSizeHint().width(), 700);
}

TEST_F(AudiotoolLook, PicturesForPeople) {
    Open();
    Picture(u"empty"_s);
    OpenFor(u"Mp3");
    MakeTracks(9);
    const char* titles[] = {"01 - Soundcheck.wav",     "02 - First tide.wav", "03 - Paper boats.wav",
                            "04 - Harbour lights.wav", "05 - Encore.wav",     "06 - Forêt, matin.wav",
                            "07 - Дождь.wav"};
    QList<QByteArray> names;
    int seconds = 20;
    for (const char* title : titles) {
        MakeWav(title, 1000 * (seconds += 17));
        names.append(title);
    }
    AddFiles(names);
    std::filesystem::remove(Folder.Native(names[1]).toStdString());
    When(
        [this] {
            return Window->State().Busy() && Form().LabelCounterFiles->text() == u"4 / 7" &&
                   Bar(3).value() > 40;
        },
        [this] {
            Select(4);
            Picture(u"running"_s);
            Form().cmdCancel->click();
        },
        1);
    Click(Form().CmdConvert);
    Select(3);
    Picture(u"stopped"_s);
    Window->LanguageItems().Item(2)->trigger();
    Window->resize(Window->minimumSizeHint());
    Picture(u"least-german"_s);
    AddTracks(40);
    Window->resize(900, 700);
    Picture(u"many"_s);
    EXPECT_EQ(IconOf(2), u"error"_s);
}

}  // namespace
}  // namespace Sonmira
