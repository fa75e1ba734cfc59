#include "FakeComponents.h"
#include "HeadlessHost.h"
#include "engine/OutputFormatNames.h"
#include "engine/OutputStage.h"
#include "engine/RunState.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class OutputStages : public ::testing::Test {
protected:
    OutputStages() {
        NumberLanguageLines();
        Run.Busy = true;
        Run.CurrentItem = Host.AddRow();
        Run.OutputStem = Folder.Path("song");
    }
    QString OutputOf(const QString& format) {
        Sink.Path.clear();
        Host.Format = format;
        OutputStage(Run, Host, Codecs.Parts()).Dispatch();
        return Sink.Path;
    }

    TestFolder Folder;
    RunState Run;
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
    EXPECT_FALSE(Run.FileError);
}

TEST_F(OutputStages, DoNothingUnlessTheRunIsBusy) {
    Run.Busy = false;
    Run.CurrentInput = Folder.MakeFile("in.wav");
    const std::pair<QStringView, const char*> formats[] = {
        {FormatName::Wma, "wma"}, {FormatName::Mp3, "mp3"}, {FormatName::Ogg, "ogg"},
        {FormatName::Wav, "wav"}, {FormatName::Ape, "ape"}, {FormatName::Flac, "flac"},
        {FormatName::Mpc, "mpc"}};
    for (const auto& [format, ending] : formats) {
        Folder.MakeFile(QByteArray("song.") + ending);
        EXPECT_EQ(OutputOf(format.toString()), QString()) << ending;
        EXPECT_EQ(Run.OutputStem, Folder.Path("song")) << ending << " was numbered";
        EXPECT_EQ(Source.Opened, 0) << ending;
        EXPECT_TRUE(Codecs.Calls.isEmpty()) << ending;
    }
}

TEST_F(OutputStages, LeaveTheNumberInTheStem) {
    Folder.MakeFile("song.mp3");
    EXPECT_EQ(OutputOf(u"Mp3"_s), Folder.Path("song(1).mp3"));
    EXPECT_EQ(Run.OutputStem, Folder.Path("song(1)"));
}

}  // namespace
}  // namespace Sonmira
