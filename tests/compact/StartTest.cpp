// How the window comes up and closes.
#include "AudiotoolTest.h"
#include "platform/Failure.h"
#include "platform/Folders.h"
#include "shell/widgets/Deb.h"
#include "shell/widgets/LanguageChoice.h"
#include "shell/widgets/Main.h"

#include <QListWidget>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class AudiotoolStart : public AudiotoolTest {
public:
    ~AudiotoolStart() override { OverrideEncoderSystemFolder({}); }

protected:
    static void Save(const QString& section, const QString& key, const QString& value) {
        WriteIniValue(SettingsFile, section, key, value);
    }
    QByteArray Ini() { return ContentOf(Folder.Native("settings/Sonmira.ini")); }
    QString Format() { return Panel().ComboOutFormat->currentText(); }
    void StartByTheEntryRoutine(const std::function<void(Form1&)>& pick) {
        qputenv("XDG_CONFIG_HOME", Folder.Native("config"));
        Folder.MakeFolder("config");
        const ModalAnswer picker(u"Form1"_s, [&](QWidget& window) {
            for (const QWidget* other : QApplication::topLevelWidgets()) {
                LogoBesidePicker = LogoBesidePicker || (other->objectName() == u"Deb" && other->isVisible());
            }
            pick(static_cast<Form1&>(window));
        });
        Started = Sonmira::Main([] { return std::make_unique<Audiotool>(); });
    }

    bool LogoBesidePicker = false;
    std::unique_ptr<QWidget> Started;
};

TEST_F(AudiotoolStart, TheTitleCarriesTheVersion) {
    EXPECT_EQ(Open().windowTitle(), u"Sonmira V2.1"_s);
}

TEST_F(AudiotoolStart, ASavedFormatAacBecomesMp3) {
    Save(u"AudioConverter"_s, u"Format"_s, u"AAC"_s);
    Open();
    EXPECT_EQ(Format(), u"Mp3"_s);
    EXPECT_TRUE(CloseWindow());
    EXPECT_EQ(Setting(u"Format"_s), u"Mp3"_s);
}

TEST_F(AudiotoolStart, ASavedFormatAacWithoutTheEncoderBecomesWav) {
    OverrideEncoderSystemFolder(Folder.MakeFolder("no-encoder"));
    Save(u"AudioConverter"_s, u"Format"_s, u"AAC"_s);
    Open();
    EXPECT_EQ(Format(), u"Wav"_s);
}

TEST_F(AudiotoolStart, ASavedWmaWithoutItsSupportBecomesMp3) {
    Save(u"AudioConverter"_s, u"Format"_s, u"Wma"_s);
    Open();
    EXPECT_EQ(Format(), u"Mp3"_s);
    EXPECT_EQ(ReadIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s), u"False"_s);
}

TEST_F(AudiotoolStart, WithWmaSupportItIsOfferedWithItsFormats) {
    Save(u"WMA"_s, u"WMASUPPORT"_s, u"True"_s);
    Save(u"AudioConverter"_s, u"Format"_s, u"Wma"_s);
    Open();
    EXPECT_EQ(Format(), u"Wma"_s);
    EXPECT_TRUE(Panel().ComboWmaFormat->isVisible());
    EXPECT_EQ(Panel().ComboWmaFormat->count(), 51);
    EXPECT_TRUE(Form().acceptWma->isChecked());
}

TEST_F(AudiotoolStart, FolderModeAndFormatComeBack) {
    Open();
    Panel().TextOutPath->SetText(Folder.Path("out"));
    Panel().CheckOutPath->setChecked(true);
    Panel().ComboOutFormat->SelectText(u"Ogg"_s);
    EXPECT_TRUE(CloseWindow());
    EXPECT_EQ(Setting(u"Modepath"_s), u"TRUE"_s);
    Open();
    EXPECT_EQ(Panel().TextOutPath->Text(), Folder.Path("out"));
    EXPECT_TRUE(Panel().CheckOutPath->isChecked());
    EXPECT_EQ(Format(), u"Ogg"_s);
}

TEST_F(AudiotoolStart, AMissingTrackColourIsWrittenAtOnceWithItsBlank) {
    Open();
    EXPECT_TRUE(Ini().contains("[Track]\r\nCOLOR= 16576") || Ini().contains("[Track]\nCOLOR= 16576"));
}

TEST_F(AudiotoolStart, ASavedTrackColourHolds) {
    Save(u"Track"_s, u"COLOR"_s, u" 255"_s);
    Open();
    AddTracks(1);
    EXPECT_EQ(Rows().index(0, 1).data(Qt::ForegroundRole).value<QColor>(), QColor(255, 0, 0));
}

TEST_F(AudiotoolStart, ATrackColourThatIsNoNumberIsTheDefaultAndStaysInTheFile) {
    Save(u"Track"_s, u"COLOR"_s, u"teal"_s);
    Open();
    AddTracks(1);
    EXPECT_EQ(Rows().index(0, 1).data(Qt::ForegroundRole).value<QColor>(), QColor(0xC0, 0x40, 0));
    EXPECT_TRUE(Ini().contains("COLOR=teal"));
}

TEST_F(AudiotoolStart, ThereIsNoLeastSizeBesidesThatOfTheControls) {
    Open();
    EXPECT_NE(Window->minimumSize(), QSize(613, 560));
    EXPECT_EQ(Window->maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
}

TEST_F(AudiotoolStart, AFirstStartAsksForTheLanguage) {
    StartByTheEntryRoutine([](Form1& picker) { QTest::keyClick(&picker, Qt::Key_Return); });
    ASSERT_NE(Started, nullptr);
    EXPECT_EQ(ProgramEnds, 0);
    EXPECT_FALSE(LogoBesidePicker);
    EXPECT_TRUE(static_cast<Audiotool&>(*Started).LanguageItems().Item(0)->isChecked());
    EXPECT_EQ(static_cast<Audiotool&>(*Started).Form().CmdConvert->text(), u"Convert All"_s);
}

TEST_F(AudiotoolStart, AFirstStartWithThePickerClosedEndsInTheFailureReport) {
    StartByTheEntryRoutine([](Form1& picker) { picker.close(); });
    EXPECT_EQ(Started, nullptr);
    EXPECT_EQ(ProgramEnds, 1);
    ASSERT_EQ(Said.size(), 1U);
    EXPECT_EQ(Said[0].Text, u"Run-time error 13 : Type mismatch"_s);
    EXPECT_FALSE(ContentOf(Folder.Native("config/SonmiraPack/Sonmira.ini")).contains("[LANGUE]"));
}

TEST_F(AudiotoolStart, ALanguageThatIsNoNumberEndsInTheFailureReport) {
    Save(u"LANGUE"_s, u"VALUE"_s, u"0 English"_s);
    EXPECT_THROW(Open(), Failure) << "the main window would take the leading number";
}

TEST_F(AudiotoolStart, ALanguageBeyondTheMenuLeavesTheDesignTexts) {
    Save(u"LANGUE"_s, u"VALUE"_s, u" 9"_s);
    Open();
    EXPECT_EQ(Form().CmdConvert->text(), u"Convert !"_s);
    EXPECT_EQ(Form().Fichier->title(), u"File"_s);
}

TEST_F(AudiotoolStart, TheLogoGoesOnceTheSettingsAreRestored) {
    Deb::Instance().show();
    Open();
    for (const QWidget* widget : QApplication::topLevelWidgets()) EXPECT_NE(widget->objectName(), u"Deb"_s);
}

TEST_F(AudiotoolStart, ClosingEndsTheOwnProcessAfterTheSettingsAreKept) {
    Open();
    Panel().TextOutPath->SetText(Folder.Path("out"));
    Processes().End = [this](qint64 id) {
        EXPECT_EQ(Setting(u"OutputPath"_s), Folder.Path("out"));
        Ended.push_back(id);
        return true;
    };
    const ModalAnswer farewell(u"LameEncoder"_s, [](QWidget& notice) { notice.close(); });
    Click(Form().CmdQuit);
    EXPECT_EQ(Ended, std::vector<qint64>{OwnId});
    EXPECT_FALSE(Window->isVisible());
}

TEST_F(AudiotoolStart, DuringARunTheButtonDoesNothingAndTheMenuKeepsTheSettingsButNotTheClose) {
    OpenFor(u"Wav");
    MakeLongWav("a.wav", 20);
    AddFiles({"a.wav"});
    bool looked = false;
    WhenBarReaches(1, [&] {
        looked = true;
        Form().CmdQuit->click();
        EXPECT_EQ(Setting(u"OutputPath"_s), QString());
        Form().Exite->trigger();
        EXPECT_EQ(Setting(u"OutputPath"_s), Folder.Path("out") + u'\\');
        EXPECT_EQ(Setting(u"Format"_s), u"Wav"_s);
        EXPECT_TRUE(Window->isVisible());
        Form().cmdCancel->click();
    });
    Click(Form().CmdConvert);
    EXPECT_TRUE(looked);
    EXPECT_TRUE(Ended.empty());
    EXPECT_TRUE(Window->isVisible());
    const ModalAnswer farewell(u"LameEncoder"_s, [](QWidget& notice) { notice.close(); });
    Form().Exite->trigger();
    EXPECT_EQ(Ended, std::vector<qint64>{OwnId});
}

TEST_F(AudiotoolStart, AWindowThatIsClosedWhileADropIsAddedEndsAtTheNextFile) {
    Open();
    MakeTracks(50);
    QMimeData data;
    QList<QUrl> urls;
    for (int n = 1; n <= 50; ++n) {
        urls.append(QUrl::fromLocalFile(QString::fromUtf8(Folder.Native(TrackName(n)))));
    }
    data.setUrls(urls);
    QObject::connect(&Rows(), &QAbstractItemModel::rowsInserted, Window.get(), [this] {
        if (Rows().Count() == 3) CloseWindow();
    });
    Drop(data);
    Settle();
    EXPECT_EQ(Rows().Count(), 3);
}

TEST_F(AudiotoolStart, ClosingBeforeAnyFileWasAcceptedEndsTheRun) {
    constexpr int Count = 10;
    OpenFor(u"Wav");
    AddTracks(Count);
    for (int n = 1; n <= Count; ++n) std::filesystem::remove(Folder.Native(TrackName(n)).toStdString());
    // The event loop runs between two files only where it has not run for a moment.
    QObject::connect(&Rows(), &AudiotoolRows::StateChanged, Window.get(), [] { QTest::qSleep(10); });
    When([this] { return IconOf(1) == u"error"; }, [this] { EXPECT_TRUE(CloseWindow()); });
    Click(Form().CmdConvert);
    EXPECT_FALSE(Window->isVisible());
    EXPECT_EQ(Ended, std::vector<qint64>{OwnId});
    EXPECT_EQ(IconOf(1), u"error"_s);
    EXPECT_EQ(IconOf(Count), QString()) << "never begun";
    EXPECT_FALSE(Window->State().Busy());
}

TEST_F(AudiotoolStart, AWindowThatIsClosedWhileRowsAreDeletedEndsAtTheNextRow) {
    constexpr int Count = 20;
    Open();
    AddTracks(Count);
    QTest::keyClick(&List(), Qt::Key_A, Qt::ControlModifier);
    QObject::connect(&Rows(), &QAbstractItemModel::rowsRemoved, Window.get(), [] { QTest::qSleep(20); });
    When([this] { return Rows().Count() < Count; }, [this] { EXPECT_TRUE(CloseWindow()); });
    PressDelete();
    Settle();
    EXPECT_FALSE(Window->isVisible());
    EXPECT_GT(Rows().Count(), 0);
    EXPECT_LT(Rows().Count(), Count);
    EXPECT_EQ(Window->Bars().HighestElement(), Rows().Count() - 1);
}

}  // namespace
}  // namespace Sonmira
