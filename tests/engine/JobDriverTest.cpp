#include "FakeComponents.h"
#include "HeadlessHost.h"
#include "engine/JobDriver.h"
#include "engine/Run.h"
#include "engine/StopCommands.h"
#include "library/AddFiles.h"
#include "library/Collection.h"
#include "support/TestFolder.h"
#include "support/Unprivileged.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// Runs over fake components: what is tested is the order of steps and what a run leaves behind.
class JobDrivers : public ::testing::Test {
protected:
    JobDrivers() {
        NumberLanguageLines();
        Host.Format = u"Mp3"_s;
        Host.OutputFolder = Folder.MakeFolder("out");
    }
    void AddMusic(std::initializer_list<QByteArray> names) {
        for (const QByteArray& name : names) Folder.MakeFile("Music/" + name);
        AddDirectory(Items, Host, Folder.Path("Music"));
    }
    void Convert() { JobDriver(Run, Host, Codecs.Parts(), Items).RunAllConversions(); }

    TestFolder Folder;
    Sonmira::Run Run;
    HeadlessHost Host;
    FakeCodecs Codecs;
    FakeSource& Source = Codecs.Source;
    FakeSink& Sink = Codecs.Sink;
    Collection Items;
};

TEST_F(JobDrivers, AnEmptyCollectionLocksFreesAndCountsNothing) {
    Convert();
    EXPECT_EQ(Host.Count, u"0 / 0"_s);
    EXPECT_TRUE(Host.Rows.empty());
    EXPECT_TRUE(Host.ControlsEnabled);
}

TEST_F(JobDrivers, EveryFileGetsANumberedRow) {
    AddMusic({"a.wav", "b.wav"});
    Host.AddRow();  // of a run before; a new run clears the list
    Convert();
    ASSERT_EQ(Host.Rows.size(), 2U);
    EXPECT_EQ(Host.Rows[0].Text, u"001."_s);
    EXPECT_EQ(Host.Rows[1].Text, u"002."_s);
    EXPECT_EQ(Host.Rows[1].Name, u"b.wav"_s);
    EXPECT_EQ(Host.Rows[1].ProgressSeen.front(), u"0 %"_s);
    EXPECT_EQ(Host.Rows[1].Progress, u"100 %"_s);
    EXPECT_EQ(Host.Rows[1].Icon, u"converted"_s);
    EXPECT_EQ(Host.Count, u"2 / 2"_s);
    EXPECT_EQ(Host.FileName, u"b.wav"_s);
    EXPECT_TRUE(Host.ControlsEnabled);
    EXPECT_FALSE(Run.Busy());
}

TEST_F(JobDrivers, EveryFileBeginsWithNoDurationOnShow) {
    AddMusic({"a.wav", "b.wav"});
    Host.Duration = u"3:25"_s;
    QStringList begun;
    Host.AtYield = [&] {
        if (static_cast<std::size_t>(begun.size()) == Host.Rows.size()) return;
        begun.append(Host.Duration);
        Host.Duration = u"3:25"_s;
    };
    Convert();
    EXPECT_EQ(begun, (QStringList{QString(), QString()}));
}

TEST_F(JobDrivers, TheInputsAreLockedDuringTheRun) {
    AddMusic({"a.wav"});
    bool locked = false;
    Host.AtYield = [&] { locked = locked || (!Host.ControlsEnabled && Run.Busy()); };
    Convert();
    EXPECT_TRUE(locked);
}

TEST_F(JobDrivers, FoldersAreMadeBelowTheOutputFolderEmptyOnesToo) {
    Folder.MakeFolder("Music/Empty");
    AddMusic({"Rock/x.ogg"});
    Convert();
    EXPECT_TRUE(NativeExists(Folder.Native("out/Music/Empty")));
    EXPECT_EQ(Sink.Path, Folder.Path("out") + u"\\Music\\Rock\\x.mp3"_s);
    EXPECT_EQ(Host.Folder, u"Music\\Rock"_s);
}

TEST_F(JobDrivers, NoFolderIsMadeWhereOutputsLieBesideTheirSources) {
    Host.SaveBesideOriginal = true;
    AddMusic({"Rock/x.ogg"});
    Convert();
    EXPECT_FALSE(NativeExists(Folder.Native("out/Music")));
    EXPECT_EQ(Sink.Path, Folder.Path("Music/Rock/x.mp3"));
    EXPECT_EQ(Host.Folder, Folder.Path("Music/Rock"));
}

TEST_F(JobDrivers, AFailedFileDoesNotEndTheRun) {
    AddMusic({"a.wav", "b.wav"});
    std::filesystem::remove(Folder.Native("Music/a.wav").toStdString());
    Convert();
    ASSERT_EQ(Host.Rows.size(), 2U);
    EXPECT_EQ(Host.Rows[0].Icon, u"error"_s);
    EXPECT_EQ(Host.Rows[0].Progress, u"line 95"_s);
    EXPECT_EQ(Host.Rows[1].Icon, u"converted"_s);
    EXPECT_EQ(Host.Count, u"2 / 2"_s);
}

TEST_F(JobDrivers, BusyStaysOffWhereEveryFileFailsItsCheck) {
    AddMusic({"a.wav"});
    Source.OpenFails = true;
    bool everBusy = false;
    Host.AtYield = [&] { everBusy = everBusy || Run.Busy(); };
    Convert();
    EXPECT_FALSE(everBusy);
    EXPECT_EQ(Host.Rows[0].Progress, u"line 99"_s);
}

TEST_F(JobDrivers, ACancelEndsTheRunAfterTheFileInHand) {
    AddMusic({"a.wav", "b.wav"});
    Host.AtYield = [this] { CancelByMenu(Run, Items, Codecs.Parts()); };
    Convert();
    ASSERT_EQ(Host.Rows.size(), 1U);
    EXPECT_EQ(Host.Rows[0].Icon, u"error"_s);
    EXPECT_TRUE(Host.ControlsEnabled);
    EXPECT_FALSE(Run.Busy());
}

TEST_F(JobDrivers, ASkipGoesOnWithTheNextFile) {
    AddMusic({"a.wav", "b.wav"});
    Host.AtYield = [this] {
        if (Host.Rows.size() == 1) SkipFile(Run, Codecs.Parts());
    };
    Convert();
    ASSERT_EQ(Host.Rows.size(), 2U);
    EXPECT_EQ(Host.Rows[0].Icon, u"error"_s);
    EXPECT_EQ(Host.Rows[1].Icon, u"converted"_s);
}

TEST_F(JobDrivers, AFormatThatIsNoneOfTheNamesConvertsNothingAndSucceeds) {
    AddMusic({"a.wav"});
    Host.Format = u"Mp4"_s;
    Convert();
    EXPECT_EQ(Sink.Path, QString());
    EXPECT_EQ(Host.Rows[0].Icon, u"converted"_s);
}

TEST_F(JobDrivers, ANameWithoutADotEndsTheRunSilentlyAndLeavesItBusy) {
    AddFileRecord(Items, Host, Folder.MakeFile("song"));
    AddMusic({"a.wav"});
    Convert();
    ASSERT_EQ(Host.Rows.size(), 1U);
    EXPECT_EQ(Host.Rows[0].Progress, u"0 %"_s);
    EXPECT_EQ(Host.Rows[0].Icon, u"conversion"_s);
    EXPECT_TRUE(Run.Busy());
    EXPECT_FALSE(Host.ControlsEnabled);
}

TEST_F(JobDrivers, SourcesOfConvertedFilesAreRemovedWhereThatIsChecked) {
    AddMusic({"a.wav", "b.wav"});
    Host.RemoveOriginal = true;
    Host.AtYield = [this] {
        if (Host.Rows.size() == 2)
            SkipFile(Run, Codecs.Parts());  // the second file fails and keeps its source
    };
    Convert();
    EXPECT_FALSE(NativeExists(Folder.Native("Music/a.wav")));
    EXPECT_TRUE(NativeExists(Folder.Native("Music/b.wav")));
}

TEST_F(JobDrivers, AFailureThatNobodyHandlesStillTellsWhatLiesInTheTrash) {
    AddMusic({"a.wav", "b.wav"});
    Host.RemoveOriginal = true;
    Sink.MakesFile = true;
    Host.AtYield = [this] {
        if (!Host.Rows.empty() && Host.Rows.front().Icon == u"converted"_s)
            throw Failure(FailureNumber::Component);
    };
    EXPECT_THROW(Convert(), Failure);
    EXPECT_EQ(Host.Rows.size(), 1U);
    EXPECT_EQ(Host.TrashedFiles, 1);
    EXPECT_EQ(Host.TrashedBytes, 1);
}

TEST_F(JobDrivers, ASourceThatCannotBeRemovedStaysAndTheRunGoesOn) {
    AddFileRecord(Items, Host, Folder.MakeFile("locked/a.wav"));
    AddFileRecord(Items, Host, Folder.MakeFile("b.wav"));
    Host.RemoveOriginal = true;
    chmod(Folder.Native("locked").constData(), 0500);
    {
        const Unprivileged user;
        Convert();
    }
    ASSERT_EQ(Host.Rows.size(), 2U);
    EXPECT_EQ(Host.Rows[0].Icon, u"converted"_s);
    EXPECT_EQ(Host.Rows[1].Icon, u"converted"_s);
    EXPECT_TRUE(NativeExists(Folder.Native("locked/a.wav")));
    EXPECT_FALSE(NativeExists(Folder.Native("b.wav")));
    EXPECT_TRUE(Host.ControlsEnabled);
    EXPECT_FALSE(Run.Busy());
}

TEST_F(JobDrivers, ARemovedRecordIsCountedAndPaintsTheRowBeforeIt) {
    AddMusic({"a.wav", "b.wav"});
    Items.Records.MarkRemoved(3);
    Source.OpenFails = true;  // the first file fails; the removed one has no failure of its own to show
    Convert();
    ASSERT_EQ(Host.Rows.size(), 1U);
    EXPECT_EQ(Host.Rows[0].Icon, u"error"_s);
    EXPECT_EQ(Host.Count, u"2 / 2"_s);
}

TEST_F(JobDrivers, ARemovedRecordStillLosesItsSourceWhereThatIsChecked) {
    AddMusic({"a.wav", "b.wav"});
    Items.Records.MarkRemoved(3);
    Host.RemoveOriginal = true;
    Convert();
    EXPECT_FALSE(NativeExists(Folder.Native("Music/b.wav")));
}

TEST_F(JobDrivers, AHiddenFileIsRefusedAsNotFound) {
    AddMusic({".a.wav"});
    Convert();
    ASSERT_EQ(Host.Rows.size(), 1U);
    EXPECT_EQ(Host.Rows[0].Progress, u"line 95"_s);
    EXPECT_FALSE(Run.Busy());
}

TEST_F(JobDrivers, OutputsOfOneStemUnderTheRootAreNumbered) {
    AddFileRecord(Items, Host, Folder.MakeFile("one/a.wav"));
    AddFileRecord(Items, Host, Folder.MakeFile("two/a.wav"));
    std::vector<QString> paths;
    Host.AtYield = [&] {
        if (paths.empty() || paths.back() != Sink.Path) {
            paths.push_back(Sink.Path);
            Folder.MakeFile("out/a.mp3");  // what the real writer would have left
        }
    };
    Convert();
    EXPECT_EQ(paths, (std::vector<QString>{Folder.Path("out") + u"\\\\a.mp3"_s,
                                           Folder.Path("out") + u"\\\\a(1).mp3"_s}));
}

TEST_F(JobDrivers, MoreThan32767RecordsOverflow) {
    Host.Format = u"None"_s;
    for (int n = 0; n < 32768; ++n) {
        ConversionRecord record;
        Items.Records.Append(record);
    }
    try {
        Convert();
        FAIL() << "no overflow";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.Number, FailureNumber::Overflow);
    }
}

TEST_F(JobDrivers, AStopFromBeforeIsForgotten) {
    AddMusic({"a.wav"});
    Run.Cancel();
    Convert();
    ASSERT_EQ(Host.Rows.size(), 1U);
    EXPECT_EQ(Host.Rows[0].Icon, u"converted"_s);
}

TEST_F(JobDrivers, RemovedRecordsBeforeOthersKeepNoneOfThemFromBeingConverted) {
    AddMusic({"Gone/a.wav", "Kept/b.wav"});
    for (const char* name : {"Music/Gone", "Music/Gone/a.wav"}) {
        Items.Records.MarkRemoved(*Items.Records.FirstWithPath(Folder.Path(name)));
    }
    Convert();
    ASSERT_EQ(Host.Rows.size(), 1U);
    EXPECT_EQ(Host.Rows[0].Name, u"b.wav"_s);
    EXPECT_EQ(Host.Rows[0].Icon, u"converted"_s);
    EXPECT_EQ(Sink.Path, Folder.Path("out") + u"\\Music\\Kept\\b.mp3"_s);
    EXPECT_EQ(Host.Count, u"2 / 2"_s);
    EXPECT_FALSE(NativeExists(Folder.Native("out/Music/Gone")))
        << "the folder of a removed record is not made";
    EXPECT_TRUE(Host.ControlsEnabled);
}

TEST_F(JobDrivers, ARemovedRecordBehindAFailedFileKeepsItsSourceAndTheNextFileIsConverted) {
    AddMusic({"a.wav", "b.wav", "c.wav"});
    std::filesystem::remove(Folder.Native("Music/a.wav").toStdString());
    Items.Records.MarkRemoved(*Items.Records.FirstWithPath(Folder.Path("Music/b.wav")));
    Host.RemoveOriginal = true;
    Convert();
    ASSERT_EQ(Host.Rows.size(), 2U);
    EXPECT_EQ(Host.Rows[0].Icon, u"error"_s);
    EXPECT_EQ(Host.Rows[1].Icon, u"converted"_s);
    EXPECT_EQ(Host.Count, u"3 / 3"_s);
    EXPECT_TRUE(NativeExists(Folder.Native("Music/b.wav"))) << "the failure of the file before is its own";
    EXPECT_FALSE(NativeExists(Folder.Native("Music/c.wav")));
}

}  // namespace
}  // namespace Sonmira
