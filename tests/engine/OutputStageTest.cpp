#include "FakeComponents.h"
#include "HeadlessHost.h"
#include "engine/OutputFormats.h"
#include "engine/OutputStage.h"
#include "engine/Run.h"
#include "support/TestAudio.h"
#include "support/TestFolder.h"
#include "support/Tool.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class OutputStages : public ::testing::Test {
protected:
    OutputStages() {
        NumberLanguageLines();
        Run.AcceptFile();
        Run.TakeRow(Host.AddRow());
        Run.SetOutputStem(Folder.Path("song"));
    }
    QString OutputOf(const QString& format) {
        Sink.Path.clear();
        Host.Format = format;
        OutputStage(Run, Host, Codecs.Parts()).Dispatch();
        return Sink.Path;
    }

    TestFolder Folder;
    Sonmira::Run Run;
    HeadlessHost Host;
    FakeCodecs Codecs;
    FakeSource& Source = Codecs.Source;
    FakeSink& Sink = Codecs.Sink;
};

TEST_F(OutputStages, AreChosenByTheExactTextOfTheFormat) {
    EXPECT_EQ(OutputOf(u"Mp3"_s), Folder.Path("song.mp3"));
    EXPECT_EQ(OutputOf(u"Ogg"_s), Folder.Path("song.ogg"));
    EXPECT_EQ(OutputOf(u"Wav"_s), Folder.Path("song.wav"));
    EXPECT_EQ(OutputOf(u"mp3"_s), QString());
    EXPECT_EQ(OutputOf(u"Mp3 "_s), QString());
    EXPECT_EQ(OutputOf(QString()), QString());
    EXPECT_FALSE(Run.FileError());
}

TEST_F(OutputStages, DoNothingUnlessTheRunIsBusy) {
    Run.End(Host);
    Run.BeginFile(Folder.MakeFile("in.wav"));
    const std::pair<QStringView, const char*> formats[] = {
        {FormatName::Wma, "wma"}, {FormatName::Mp3, "mp3"}, {FormatName::Ogg, "ogg"},
        {FormatName::Wav, "wav"}, {FormatName::Ape, "ape"}, {FormatName::Flac, "flac"},
        {FormatName::Mpc, "mpc"}};
    for (const auto& [format, ending] : formats) {
        Folder.MakeFile(QByteArray("song.") + ending);
        EXPECT_EQ(OutputOf(format.toString()), QString()) << ending;
        EXPECT_EQ(Run.OutputStem(), Folder.Path("song")) << ending << " was numbered";
        EXPECT_EQ(Source.Opened, 0) << ending;
        EXPECT_TRUE(Codecs.Calls.isEmpty()) << ending;
    }
}

// An encoder that fails because of it has made no file, and what stands there is none of ours. A hidden name
// is not seen before.
TEST_F(OutputStages, DoNotTagTheFileOfAnotherProgramWhereTheEncoderFailed) {
    Folder.MakeFile("in.wav", WavOf(MakeTone(44100, 2, 4410, 440), WavKind::Signed16));
    ASSERT_EQ(RunTool({"flac", "-s", "-o", Folder.Native(".song.flac"), Folder.Native("in.wav")}).ExitCode,
              0);
    const QByteArray theirs = ContentOf(Folder.Native(".song.flac"));
    Run.BeginFile(Folder.Path("in.wav"));
    Run.SetOutputStem(Folder.Path(".song"));
    Host.Panel.Artist = u"Artist"_s;
    Host.Panel.Genre = u"12"_s;
    Codecs.MakesFile = false;
    Codecs.Fails = true;
    OutputOf(FormatName::Flac.toString());
    EXPECT_EQ(Codecs.Calls, QStringList{u"FlacCodec_Encoder1"_s});
    EXPECT_EQ(ContentOf(Folder.Native(".song.flac")), theirs);
    Codecs.Fails = false;
    OutputOf(FormatName::Flac.toString());
    EXPECT_NE(ContentOf(Folder.Native(".song.flac")), theirs) << "the tag of a whole output is written there";
}

TEST_F(OutputStages, LeaveTheNumberInTheStem) {
    Folder.MakeFile("song.mp3");
    EXPECT_EQ(OutputOf(u"Mp3"_s), Folder.Path("song(1).mp3"));
    EXPECT_EQ(Run.OutputStem(), Folder.Path("song(1)"));
}

}  // namespace
}  // namespace Sonmira
