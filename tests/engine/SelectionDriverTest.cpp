#include "FakeComponents.h"
#include "HeadlessHost.h"
#include "engine/OutputFormats.h"
#include "engine/Run.h"
#include "engine/SelectionDriver.h"
#include "engine/StopCommands.h"
#include "library/AddFiles.h"
#include "library/Collection.h"
#include "platform/Paths.h"
#include "platform/TemporaryFolder.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class SelectionRun : public ::testing::Test {
protected:
    SelectionRun() {
        NumberLanguageLines();
        Host.Format = u"Mp3"_s;
        Host.OutputFolder = Folder.MakeFolder("out");
    }
    void AddMusic(std::initializer_list<QByteArray> names) {
        for (const QByteArray& name : names) Folder.MakeFile("Music/" + name);
        AddDirectory(Items, Host, Folder.Path("Music"));
    }
    void Convert(const QByteArray& name) {
        SelectionDriver(Run, Host, Codecs.Parts(), Items).ConvertNode(Folder.Path(name));
    }

    TestFolder Folder;
    Sonmira::Run Run;
    HeadlessHost Host;
    FakeCodecs Codecs;
    Collection Items;
};

TEST_F(SelectionRun, OfAFileConvertsItStraightIntoTheOutputFolder) {
    AddMusic({"a.wav", "b.wav"});
    Convert("Music/b.wav");
    ASSERT_EQ(Host.Rows.size(), 1U);
    EXPECT_EQ(Host.Rows[0].Name, u"b.wav"_s);
    EXPECT_EQ(Host.Count, u"1 / 1"_s);
    EXPECT_EQ(Codecs.Sink.Path, Folder.Path("out") + u"\\b.mp3"_s);
    EXPECT_EQ(Host.FileName, QString()) << "the name's label is a full run's";
    EXPECT_FALSE(Run.Busy());
}

TEST_F(SelectionRun, LeavesTheDurationOnShow) {
    AddMusic({"a.wav"});
    Host.Duration = u"3:25"_s;
    Convert("Music");
    EXPECT_EQ(Host.Duration, u"3:25"_s);
}

TEST_F(SelectionRun, OfAFolderNestsBelowItsName) {
    AddMusic({"a.wav", "Sub/b.wav", "Sub/Deep/c.wav"});
    QStringList outputs;
    Host.AtYield = [&] {
        if (!outputs.contains(Codecs.Sink.Path)) outputs.append(Codecs.Sink.Path);
    };
    Convert("Music/Sub");
    EXPECT_EQ(outputs, (QStringList{Folder.Path("out") + u"\\Sub\\b.mp3"_s,
                                    Folder.Path("out") + u"\\Sub\\Deep\\c.mp3"_s}));
    EXPECT_EQ(Host.Count, u"2 / 2"_s);
    EXPECT_TRUE(NativeExists(Folder.Native("out/Sub/Deep")));
}

TEST_F(SelectionRun, MakesItsFoldersAlsoWhereOutputsGoBesideTheirSources) {
    AddMusic({"Sub/b.wav"});
    Host.SaveBesideOriginal = true;
    Convert("Music");
    EXPECT_EQ(Codecs.Sink.Path, Folder.Path("Music/Sub/b.mp3"));
    EXPECT_TRUE(NativeExists(Folder.Native("out/Music/Sub")));
}

TEST_F(SelectionRun, OfTheRootOrOfNothingConvertsNothingButClearsTheRows) {
    AddMusic({"a.wav"});
    for (const QString& key : {RootKey.toString(), QString()}) {
        Host.AddRow();
        SelectionDriver(Run, Host, Codecs.Parts(), Items).ConvertNode(key);
        EXPECT_TRUE(Host.Rows.empty());
    }
    EXPECT_EQ(Codecs.Sink.Path, QString());
}

TEST_F(SelectionRun, FreesTheControlsAfterEveryFile) {
    AddMusic({"a.wav", "b.wav"});
    QString frees;
    Host.AtControls = [&](bool enabled) { frees += enabled ? u'+' : u'-'; };
    Convert("Music");
    EXPECT_EQ(frees, u"-+-+"_s);
}

TEST_F(SelectionRun, ShowsTheFolderPerFile) {
    AddMusic({"a.wav"});
    Convert("Music");
    EXPECT_EQ(Host.Folder, u"Music"_s);
}

TEST_F(SelectionRun, TheWalkPutsABackslashBehindTheNameOfTheFoldersRecord) {
    AddMusic({"a.wav", "Sub/b.wav"});
    Convert("Music");
    EXPECT_EQ(Items.Records[1].Name, u"Music\\"_s);
    Convert("Music");
    EXPECT_EQ(Host.Count, u"2 / 2"_s);
}

TEST_F(SelectionRun, AStopEndsItBehindTheFileInHand) {
    AddMusic({"a.wav", "b.wav", "Sub/c.wav"});
    Host.AtYield = [this] { CancelByMenu(Run, Items, Codecs.Parts()); };
    Convert("Music");
    EXPECT_EQ(Host.Rows.size(), 1U);
    EXPECT_TRUE(Host.ControlsEnabled);
}

TEST_F(SelectionRun, AFileThatEndsAFullRunEndsOnlyItselfHere) {
    AddMusic({"a.mpc.wav", "b.wav"});
    ConversionRecord undotted;
    undotted.IsFile = true;
    undotted.Path = Folder.MakeFile("Music/nodotwav");
    undotted.Name = u"nodotwav"_s;
    undotted.Parent = 1;
    Items.Records.Append(undotted);
    Convert("Music");
    EXPECT_EQ(Host.Rows.size(), 3U);
    EXPECT_EQ(Host.Rows[2].Icon, u"conversion"_s);
    EXPECT_FALSE(Host.ControlsEnabled);
}

TEST_F(SelectionRun, DeletesADecodersWavByTheNameThatTheAacDecoderLastHeld) {
    AddMusic({"song.flac"});
    const QString temp = WithBackslash(TemporaryFolder()) + u"song.wav"_s;
    Convert("Music/song.flac");
    EXPECT_TRUE(FileExists(temp)) << "the AAC decoder names no file, so nothing is deleted";
    Codecs.Aac.SetOutputFile(Folder.MakeFile("held.wav"));
    Convert("Music/song.flac");
    EXPECT_FALSE(FileExists(temp));
}

TEST_F(SelectionRun, AnEncoderThatTakesAWavLeavesNoneOfADecoder) {
    AddMusic({"song.flac"});
    const QString temp = WithBackslash(TemporaryFolder()) + u"song.wav"_s;
    bool wasThere = false;
    Codecs.Meanwhile = [&] { wasThere = FileExists(temp); };
    for (const QStringView format : {FormatName::Ape, FormatName::Flac, FormatName::Mpc}) {
        Host.Format = format.toString();
        Convert("Music/song.flac");
        EXPECT_TRUE(wasThere) << "while it was encoded";
        EXPECT_FALSE(FileExists(temp)) << format.toString().toStdString();
    }
    EXPECT_EQ(Codecs.Encoded, (QStringList{temp, temp, temp}));
    EXPECT_EQ(Codecs.Aac.GetOutputFile(), QString()) << "or the run itself would have deleted the WAV";
}

TEST_F(SelectionRun, ARemovedRecordIsCountedByNobody) {
    AddMusic({"a.wav", "b.wav"});
    Items.Records.MarkRemoved(*Items.Records.FirstWithPath(Folder.Path("Music/a.wav")));
    Convert("Music");
    EXPECT_EQ(Host.Count, u"1 / 1"_s);
}

TEST_F(SelectionRun, AFolderBeyondTheNumbersHasNoChildren) {
    AddMusic({"a.wav"});
    while (Items.Records.UpperBound() < 32767) Items.Records.Append({});
    ConversionRecord late;
    late.Path = Folder.MakeFolder("late");
    late.Name = u"late"_s;
    Items.Records.Append(late);
    Convert("late");
    EXPECT_TRUE(Host.Rows.empty());
}

TEST_F(SelectionRun, ShowsTheCountAtTheStartOfEveryFile) {
    AddMusic({"a.wav", "b.wav"});
    QStringList begun;
    Host.AtYield = [&] {
        if (static_cast<std::size_t>(begun.size()) < Host.Rows.size()) begun.append(Host.Count);
        Host.Count = u"something else"_s;
    };
    Convert("Music");
    EXPECT_EQ(begun, (QStringList{u"0 / 2"_s, u"1 / 2"_s}));
}

TEST_F(SelectionRun, CountsFromTheStartEachTime) {
    AddMusic({"a.wav", "b.wav"});
    Convert("Music");
    Convert("Music/a.wav");
    EXPECT_EQ(Host.Count, u"1 / 1"_s);
}

TEST_F(SelectionRun, ForgetsAStopFromBefore) {
    AddMusic({"a.wav", "b.wav"});
    for (const auto& [selected, rows] : {std::pair{"Music/a.wav", 1U}, std::pair{"Music", 2U}}) {
        Run.Cancel();
        Convert(selected);
        ASSERT_EQ(Host.Rows.size(), rows) << selected;
        EXPECT_EQ(Host.Rows.back().Icon, ConvertedIcon) << selected;
    }
}

TEST_F(SelectionRun, AStopInAFolderEndsTheFoldersAboveItToo) {
    // Made by hand, so that the file with the stop comes first whatever order the disk has.
    for (const char* name : {"Music", "Music/A", "Music/A/Deep", "Music/A/Deep/a.wav", "Music/A/Deep/b.wav",
                             "Music/B", "Music/B/c.wav", "Music/d.wav"}) {
        ConversionRecord record;
        record.Path = Folder.Path(name);
        record.Name = FileNameOf(record.Path);
        record.IsFile = record.Name.contains(u'.');
        if (record.IsFile) Folder.MakeFile(name);
        const std::optional<int> parent = Items.Records.FirstWithPath(FolderOf(record.Path).chopped(1));
        if (parent) record.Parent = Items.Records[*parent].Index;
        Items.Records.Append(record);
    }
    Host.AtYield = [this] { CancelByMenu(Run, Items, Codecs.Parts()); };
    Convert("Music");
    EXPECT_EQ(Host.Rows.size(), 1U);
    EXPECT_TRUE(NativeExists(Folder.Native("out/Music/A/Deep")));
    EXPECT_FALSE(NativeExists(Folder.Native("out/Music/B")));
}

TEST_F(SelectionRun, GoesOnBehindAFileThatEndsAFullRun) {
    AddMusic({"a.wav"});
    for (const char* name : {"nodotwav", "b.wav"}) {
        ConversionRecord record;
        record.IsFile = true;
        record.Path = Folder.MakeFile(QByteArray("Music/") + name);
        record.Name = QString::fromLatin1(name);
        record.Parent = 1;
        Items.Records.Append(record);
    }
    QString frees;
    Host.AtControls = [&](bool enabled) { frees += enabled ? u'+' : u'-'; };
    Convert("Music");
    ASSERT_EQ(Host.Rows.size(), 3U);
    EXPECT_EQ(Host.Rows[0].Icon, ConvertedIcon);
    EXPECT_EQ(Host.Rows[1].Icon, ConversionIcon);
    EXPECT_EQ(Host.Rows[1].Progress, u"0 %"_s);
    EXPECT_EQ(Host.Rows[2].Icon, ConvertedIcon);
    EXPECT_EQ(Host.Count, u"2 / 3"_s) << "the file without a dot is not counted as done";
    EXPECT_EQ(frees, u"-+--+"_s) << "it leaves the controls locked for the next one to free";
    EXPECT_FALSE(Run.Busy());
}

}  // namespace
}  // namespace Sonmira
