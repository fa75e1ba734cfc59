#include "FakeComponents.h"
#include "HeadlessHost.h"
#include "engine/Destination.h"
#include "engine/JobDriver.h"
#include "engine/OutputFormats.h"
#include "engine/Run.h"
#include "engine/StopCommands.h"
#include "library/AddFiles.h"
#include "library/Collection.h"
#include "platform/Paths.h"
#include "platform/TemporaryFolder.h"
#include "support/TestFolder.h"
#include "support/Unprivileged.h"

#include <QScopeGuard>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// Runs over fake decoders and encoders: what is tested is which of them works, on what, and what is left.
class InputStages : public ::testing::Test {
protected:
    InputStages() {
        NumberLanguageLines();
        Host.Format = u"Wav"_s;
        Host.OutputFolder = Folder.MakeFolder("out");
    }
    // Converts one file of that name and returns who worked.
    QStringList Convert(const QByteArray& name) {
        const QString path = Folder.MakeFile("Music/" + name);
        AddDropped(Items, Host, {path});
        JobDriver(Run, Host, Codecs.Parts(), Items).RunAllConversions();
        return Codecs.Calls;
    }
    // Converts one file whose decoder says no, and looks for what every such file comes to.
    void ConvertInVain(const QByteArray& name) {
        SCOPED_TRACE(name.constData());
        Items = {};
        Codecs.Calls.clear();
        Host.RemoveOriginal = true;
        bool failed = false;
        Host.AtYield = [&] { failed = failed || Run.FileError(); };
        Convert(name);
        Host.AtYield = nullptr;
        EXPECT_EQ(Row().Icon, u"converted"_s);
        EXPECT_FALSE(failed);
        EXPECT_EQ(Codecs.Sink.Path, QString());
        EXPECT_FALSE(FileExists(Folder.Path("Music/" + name))) << "the source goes where that is asked for";
    }
    static QString Temp(const QString& name) { return WithBackslash(TemporaryFolder()) + name; }
    const HeadlessHost::Row& Row() const { return Host.Rows.back(); }

    TestFolder Folder;
    Sonmira::Run Run;
    HeadlessHost Host;
    FakeCodecs Codecs;
    Collection Items;
};

TEST_F(InputStages, EachFormatHasItsDecoderWhateverTheLetters) {
    const std::pair<const char*, QStringList> decoders[] = {{"a.aac", {u"AACDecoder1"_s}},
                                                            {"b.AAC", {u"AACDecoder1"_s}},
                                                            {"c.flac", {u"FlacCodec1"_s}},
                                                            {"d.ape", {u"Ape"_s}},
                                                            {"e.APL", {u"Ape"_s}},
                                                            {"f.mpc", {u"mpcdecoder1"_s}},
                                                            {"g.mp+", {u"mpcdecoder1"_s}},
                                                            {"h.mp3", {}},
                                                            {"i.wav", {}},
                                                            {"j.ogg", {}},
                                                            {"k.wma", {}}};
    for (const auto& [name, decoder] : decoders) {
        Items = {};
        Codecs.Calls.clear();
        EXPECT_EQ(Convert(name), decoder) << name;
        EXPECT_EQ(Row().Icon, u"converted"_s) << name;
    }
}

TEST_F(InputStages, AlacGoesToItsOwnDecoderWhereTheFileIsOne) {
    EXPECT_EQ(Convert("a.alac"), QStringList{u"AACDecoder1"_s});
    Items = {};
    Codecs.Calls.clear();
    Codecs.IsAlac = true;
    EXPECT_EQ(Convert("b.alac"), QStringList{u"alacdec1"_s});
}

TEST_F(InputStages, TheTemporaryWavIsNamedAfterTheFile) {
    EXPECT_EQ(TempWavPathFor(u"\\music\\song.ape"_s, 3), Temp(u"song.wav"_s));
    EXPECT_EQ(TempWavPathFor(u"\\music\\song.flac"_s, 4), Temp(u"song.wav"_s));
    EXPECT_EQ(TempWavPathFor(u"\\music\\song.alac"_s, 3), Temp(u"song.awav"_s));
}

TEST_F(InputStages, ATemporaryFolderThatIsTooLongIsTheRoot) {
    const auto restore = qScopeGuard([] { OverrideTemporaryFolder({}); });
    OverrideTemporaryFolder(u'\\' + QString(98, u'x'));
    EXPECT_EQ(TempWavPathFor(u"\\a.ape"_s, 3), u'\\' + QString(98, u'x') + u"\\a.wav"_s);
    OverrideTemporaryFolder(u'\\' + QString(99, u'x'));
    EXPECT_EQ(TempWavPathFor(u"\\a.ape"_s, 3), u"\\a.wav"_s);
    OverrideTemporaryFolder(u'\\' + QString(50, u'\u00E9'));
    EXPECT_EQ(TempWavPathFor(u"\\a.ape"_s, 3), u"\\a.wav"_s) << "bytes are what is counted";
}

TEST_F(InputStages, TheTemporaryWavIsReadAndGoesWithTheFile) {
    QString seen;
    Codecs.Sink.OpenFails = false;
    Host.AtYield = [&] { seen = Run.CurrentInput(); };
    Convert("song.flac");
    EXPECT_EQ(seen, Temp(u"song.wav"_s));
    EXPECT_FALSE(FileExists(Temp(u"song.wav"_s)));
    EXPECT_EQ(Codecs.Sink.Path, Folder.Path("out") + u"\\\\song.wav"_s)
        << "the folder is that of the source's record";
}

TEST_F(InputStages, BesideTheOriginalMeansBesideTheSourceNotTheTemporaryWav) {
    Host.SaveBesideOriginal = true;
    Convert("song.ape");
    EXPECT_EQ(Codecs.Sink.Path, Folder.Path("Music/song.wav"));
}

TEST_F(InputStages, DecodersMoveTheBarAndNotTheRow) {
    int bar = 0;
    Codecs.Report = [&](Components parts) {
        parts.FlacCodec1.Progress(40);
        bar = Host.Progress;
        EXPECT_EQ(Row().Progress, u"0 %"_s);
    };
    Convert("song.flac");
    EXPECT_EQ(bar, 40);
}

TEST_F(InputStages, EachProgressEventHasItsOwnArguments) {
    QStringList bars;
    Codecs.Report = [&](Components parts) {
        const auto bar = [&] { bars.append(QString::number(Host.Progress)); };
        parts.AACDecoder1.Progress(11);
        bar();
        parts.alacdec1.Progress(25, 200);  // done, total: 12.5 goes to the even number
        bar();
        parts.mpcdecoder1.Progress(200, 27);  // total, done: 13.5
        bar();
        parts.alacdec1.Progress(0, 200);
        parts.mpcdecoder1.Progress(0, 5);
        bar();
    };
    Convert("song.aac");
    EXPECT_EQ(bars, (QStringList{u"11"_s, u"12"_s, u"14"_s, u"14"_s}));
}

TEST_F(InputStages, TheApeCallbackCountsThousandthsAndMovesTheBarOnly) {
    Codecs.ApeStep = 25500;
    int bar = 0;
    Codecs.Report = [&](Components) { bar = Host.Progress; };
    Convert("song.ape");
    EXPECT_EQ(bar, 26);
    Items = {};
    Codecs.ApeStep = 140000;
    Convert("song2.ape");
    EXPECT_EQ(bar, 100);
}

TEST_F(InputStages, ADecoderThatLeavesNoWavEndsTheRunInSilence) {
    Codecs.MakesFile = false;
    Convert("song.mpc");
    EXPECT_EQ(Row().Icon, u"conversion"_s);
    EXPECT_EQ(Row().Progress, u"0 %"_s);
    EXPECT_FALSE(Host.ControlsEnabled);
    EXPECT_TRUE(Run.Busy());
}

TEST_F(InputStages, AnAacDecoderThatSaysNoLeavesAConvertedRowAndNoOutput) {
    Codecs.Result = 0;
    ConvertInVain("song.aac");
}

TEST_F(InputStages, AnAacDecoderThatFailsIsOneThatSaysNo) {
    Codecs.Meanwhile = [] { throw Failure(FailureNumber::Component); };
    ConvertInVain("song.aac");
    EXPECT_EQ(Codecs.Calls, QStringList{u"AACDecoder1"_s});
}

TEST_F(InputStages, AnAlacDecoderSaysYesByOneOnly) {
    Codecs.IsAlac = true;
    for (const qint16 answer : {qint16{0}, qint16{2}}) {
        Codecs.Result = answer;
        ConvertInVain("song.alac");
        EXPECT_EQ(Codecs.Calls, QStringList{u"alacdec1"_s});
    }
}

TEST_F(InputStages, AnAlacDecoderThatFailsIsOneThatSaysNo) {
    Codecs.IsAlac = true;
    Codecs.Meanwhile = [] { throw Failure(FailureNumber::Component); };
    ConvertInVain("song.alac");
    EXPECT_EQ(Codecs.Calls, QStringList{u"alacdec1"_s});
}

TEST_F(InputStages, TheResultsOfTheOtherDecodersAreNotRead) {
    Codecs.Fails = true;
    Convert("song.ape");
    EXPECT_EQ(Row().Icon, u"converted"_s);
    EXPECT_FALSE(Codecs.Sink.Path.isEmpty());
}

TEST_F(InputStages, AStopWhileDecodingSkipsTheEncodingAndTheRowIsConverted) {
    Codecs.Meanwhile = [this] { CancelByMenu(Run, Items, Codecs.Parts()); };
    Convert("song.flac");
    EXPECT_EQ(Row().Icon, u"converted"_s);
    EXPECT_EQ(Codecs.Sink.Path, QString());
    EXPECT_TRUE(Host.ControlsEnabled);
}

TEST_F(InputStages, ADecoderForApeStartsWithTheStopFlagDown) {
    Run.RaiseKillFlag();
    Convert("song.ape");
    EXPECT_EQ(Codecs.KillFlagAtStart, 0);
}

// Two of them have no use for it.
TEST_F(InputStages, TheStopFlagStaysUpUntilOneOfFourWorksTakesItDown) {
    struct Work {
        const char* Source;
        QStringView Format;
        qint32 FlagBehindIt;
    };
    const Work works[] = {{"a.flac", FormatName::Wav, 1}, {"b.aac", FormatName::Wav, 1},
                          {"c.wav", FormatName::Mpc, 1},  {"d.mpc", FormatName::Wav, 0},
                          {"e.wav", FormatName::Flac, 0}, {"f.ape", FormatName::Wav, 0},
                          {"g.wav", FormatName::Ape, 0}};
    for (const Work& work : works) {
        Items = {};
        Run.RaiseKillFlag();
        Host.Format = work.Format.toString();
        Convert(work.Source);
        EXPECT_EQ(Row().Icon, u"converted"_s) << work.Source;
        EXPECT_EQ(Run.KillFlag(), work.FlagBehindIt) << work.Source;
    }
}

TEST_F(InputStages, AShortFileOfADecodersOwnIsRejected) {
    Codecs.Duration = 1;
    for (const char* name : {"a.ape", "b.flac", "c.mpc"}) {
        Items = {};
        Convert(name);
        EXPECT_EQ(Row().Icon, u"error"_s) << name;
        EXPECT_EQ(Row().Progress, u"line 99"_s) << name;
    }
    Codecs.IsAlac = true;
    Items = {};
    Convert("d.alac");
    EXPECT_EQ(Row().Progress, u"line 99"_s);
    Codecs.Duration = 1.5;
    Items = {};
    Convert("e.alac");
    EXPECT_EQ(Row().Icon, u"converted"_s);
}

TEST_F(InputStages, AnAacThatCannotBeOpenedIsRejectedWithItsOwnText) {
    Codecs.Fails = true;
    Convert("a.aac");
    EXPECT_EQ(Row().Progress, u"line 98"_s);
    EXPECT_EQ(Row().Icon, u"error"_s);
}

// The routes of the encoders that take a WAV.

TEST_F(InputStages, AWavGoesStraightToTheEncoder) {
    Host.Format = u"APE (MonKey's audio)"_s;
    Codecs.Settings.ApeCompressionLevel = 3000;
    EXPECT_EQ(Convert("song.wav"), QStringList{u"Ape"_s});
    EXPECT_EQ(Codecs.Encoded, QStringList{Folder.Path("Music/song.wav")});
    EXPECT_EQ(Codecs.ApeLevels, std::vector<qint32>{3000});
    EXPECT_EQ(Row().Progress, u"0 %"_s) << "only the copy writes 100";
    EXPECT_TRUE(FileExists(Folder.Path("Music/song.wav")));
}

TEST_F(InputStages, AnotherStreamIsCopiedToATemporaryWavThatStays) {
    Host.Format = u"FLAC (Free Lossless Audio Codec)"_s;
    Codecs.Settings.FlacCompressionLevel = 8;
    EXPECT_EQ(Convert("song.mp3"), QStringList{u"FlacCodec_Encoder1"_s});
    EXPECT_EQ(Codecs.Sink.Path, Temp(u"song.wav"_s));
    EXPECT_EQ(Codecs.Sink.Format, (std::vector<int>{44100, 2, 16}));
    EXPECT_EQ(Codecs.Encoded, QStringList{Temp(u"song.wav"_s)});
    EXPECT_EQ(Codecs.FlacLevels, std::vector<qint16>{8});
    EXPECT_EQ(Row().Progress, u"100 %"_s);
}

TEST_F(InputStages, ADecodersWavGoesToTheEncoderAndThenAway) {
    Host.Format = u"Mpc (Musepack)"_s;
    Codecs.Settings.MpcQuality = 9;
    EXPECT_EQ(Convert("song.flac"), (QStringList{u"FlacCodec1"_s, u"mpcencoder1"_s}))
        << "no quality is passed on";
    EXPECT_EQ(Codecs.Encoded, QStringList{Temp(u"song.wav"_s)});
    EXPECT_FALSE(FileExists(Temp(u"song.wav"_s)));
    EXPECT_EQ(Host.Progress, 0);
}

TEST_F(InputStages, AFailedCopyLetsTheEncoderRunOnWhatIsThereAndStaysAnError) {
    Host.Format = u"APE (MonKey's audio)"_s;
    Host.RemoveOriginal = true;
    Codecs.Sink.WriteFails = true;
    EXPECT_EQ(Convert("song.mp3"), QStringList{u"Ape"_s});
    EXPECT_EQ(Row().Icon, u"error"_s);
    EXPECT_EQ(Row().Progress, u"line 96"_s);
    EXPECT_TRUE(FileExists(Folder.Path("Music/song.mp3")));
}

TEST_F(InputStages, AFailedCopyLeavesItsTemporaryWav) {
    Codecs.Sink.MakesFile = true;
    Codecs.Sink.WriteFails = true;
    for (const QStringView format : {FormatName::Ape, FormatName::Flac, FormatName::Mpc}) {
        Items = {};
        Host.Format = format.toString();
        Convert("song.mp3");
        EXPECT_EQ(Row().Icon, u"error"_s);
        EXPECT_EQ(Codecs.Sink.Path, Temp(u"song.wav"_s));
        EXPECT_TRUE(FileExists(Temp(u"song.wav"_s))) << format.toString().toStdString();
        std::filesystem::remove(ToNative(Temp(u"song.wav"_s)).toStdString());
    }
}

// Of another user, say: what lies there is not the song.
TEST_F(InputStages, WhatCannotBeRemovedFromTheTemporaryPlaceIsNeverConverted) {
    std::filesystem::create_directories(ToNative(Temp(u"song.wav"_s)).toStdString() + "/x");
    EXPECT_EQ(FreeTempWavPathFor(u"\\music\\song.ape"_s, 3), Temp(u"song.wav"_s)) << "a folder is no file";
    std::filesystem::remove_all(ToNative(Temp(u"song.wav"_s)).toStdString());
    const auto restore = qScopeGuard([] { OverrideTemporaryFolder({}); });
    Folder.MakeFile("locked/song.wav", "another song");
    OverrideTemporaryFolder(Folder.Path("locked"));
    {
        const Unprivileged user;
        chmod(Folder.Native("locked").constData(), 0555);
        EXPECT_EQ(FreeTempWavPathFor(u"\\music\\song.ape"_s, 3), QString());
        Convert("song.ape");
        chmod(Folder.Native("locked").constData(), 0755);
    }
    EXPECT_EQ(Codecs.Sink.Path, QString()) << "nothing was copied";
    EXPECT_EQ(ContentOf(Folder.Native("locked/song.wav")), "another song");
}

TEST_F(InputStages, EncodersMoveTheRowWhereItsTextChanges) {
    Host.Format = u"Mpc (Musepack)"_s;
    Codecs.Report = [](Components parts) {
        parts.mpcencoder1.Progress(200, 50);
        parts.mpcencoder1.Progress(200, 50);
        parts.mpcencoder1.Progress(0, 50);
        parts.FlacCodec_Encoder1.Progress(70);
    };
    Convert("song.wav");
    EXPECT_EQ(Row().ProgressSeen, (std::vector<QString>{u"0 %"_s, u"25 %"_s, u"70 %"_s}));
}

TEST_F(InputStages, AStopInTheCopyKeepsTheEncoderFromStarting) {
    Host.Format = u"APE (MonKey's audio)"_s;
    Host.AtYield = [this] {
        if (Codecs.Sink.Written > 0) CancelByMenu(Run, Items, Codecs.Parts());
    };
    EXPECT_FALSE(Convert("song.mp3").contains(u"Ape"_s));
    EXPECT_EQ(Row().Icon, u"error"_s);
}

TEST_F(InputStages, ASkipInTheCopyLetsTheEncoderRunOnWhatIsThere) {
    Host.Format = u"APE (MonKey's audio)"_s;
    Host.AtYield = [this] {
        if (Codecs.Sink.Written > 0) CancelOneFile(Run);
    };
    EXPECT_TRUE(Convert("song.mp3").contains(u"Ape"_s));
    EXPECT_EQ(Row().Icon, u"error"_s);
}

TEST_F(InputStages, AnEncoderThatFailsIsNotNoticed) {
    Host.Format = u"FLAC (Free Lossless Audio Codec)"_s;
    Codecs.Fails = true;
    Convert("song.wav");
    EXPECT_EQ(Row().Icon, u"converted"_s);
}

TEST_F(InputStages, WmaOutputWithoutAFormatOfTheSourceFinishesAsConverted) {
    Host.Format = u"Wma"_s;
    Codecs.Source.Code = -1;
    Convert("song.wav");
    EXPECT_EQ(Row().Icon, u"converted"_s);
    EXPECT_EQ(Codecs.Sink.Path, QString());
    EXPECT_EQ(Codecs.Source.Opened, 2) << "by the check and for the format";
    EXPECT_EQ(Codecs.Source.Closed, 1) << "by the check only";
}

TEST_F(InputStages, WmaOutputThatCannotBeReadIsAnErrorThatKeepsItsPercentage) {
    Host.Format = u"Wma"_s;
    const QString path = Folder.MakeFile("Music/song.wav");
    AddDropped(Items, Host, {path});
    int opened = 0;
    Codecs.Source.AtOpen = [&] {
        if (++opened == 2) throw Failure(FailureNumber::Component);
    };
    JobDriver(Run, Host, Codecs.Parts(), Items).RunAllConversions();
    EXPECT_EQ(Row().Icon, u"error"_s);
    EXPECT_EQ(Row().Progress, u"0 %"_s);
}

TEST_F(InputStages, AFormatThatNoRouteHasConvertsNothing) {
    Host.Format = u"FLAC"_s;
    Convert("song.wav");
    EXPECT_EQ(Row().Icon, u"converted"_s);
    EXPECT_TRUE(Codecs.Calls.isEmpty());
    EXPECT_EQ(Codecs.Sink.Path, QString());
}

}  // namespace
}  // namespace Sonmira
