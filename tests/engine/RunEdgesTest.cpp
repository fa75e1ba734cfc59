#include "FakeComponents.h"
#include "HeadlessHost.h"
#include "engine/JobDriver.h"
#include "engine/Run.h"
#include "engine/SelectionDriver.h"
#include "engine/StopCommands.h"
#include "library/AddFiles.h"
#include "library/Collection.h"
#include "library/Removal.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// What happens between the files of a run, over fake components.
class RunEdge : public ::testing::Test {
protected:
    RunEdge() {
        NumberLanguageLines();
        Host.Format = u"Mp3"_s;
        Host.OutputFolder = Folder.MakeFolder("out");
    }
    void AddMusic(std::initializer_list<QByteArray> names) {
        for (const QByteArray& name : names) Folder.MakeFile("Music/" + name);
        AddDirectory(Items, Host, Folder.Path("Music"));
    }
    void Convert() { JobDriver(Run, Host, Codecs.Parts(), Items).RunAllConversions(); }
    // From the file of that row on, reading a tag fails, which is a statement of the driver's own.
    void LetTagsFailFrom(std::size_t row) {
        Codecs.AtTagRead = [this, row] {
            if (Host.Rows.size() >= row) throw Failure(FailureNumber::Overflow);
        };
    }
    // The outputs of a run, in order.
    QStringList OutputsOf(const std::function<void()>& run) {
        QStringList outputs;
        Host.AtYield = [&] {
            if (!Codecs.Sink.Path.isEmpty() && !outputs.contains(Codecs.Sink.Path)) {
                outputs.append(Codecs.Sink.Path);
            }
        };
        run();
        Host.AtYield = nullptr;
        return outputs;
    }

    TestFolder Folder;
    Sonmira::Run Run;
    HeadlessHost Host;
    FakeCodecs Codecs;
    Collection Items;
};

TEST_F(RunEdge, AFailingStatementOfTheFirstFileIsNobodysToHandle) {
    AddMusic({"a.mp3", "b.mp3"});
    LetTagsFailFrom(1);
    EXPECT_THROW(Convert(), Failure);
    EXPECT_FALSE(Host.ControlsEnabled);
}

TEST_F(RunEdge, AFailingStatementBehindTheFirstFileIsPassedOver) {
    AddMusic({"a.mp3", "b.mp3"});
    LetTagsFailFrom(2);
    EXPECT_NO_THROW(Convert());
    ASSERT_EQ(Host.Rows.size(), 2U);
    EXPECT_EQ(Host.Rows[1].Icon, ConvertedIcon);
    EXPECT_EQ(Host.Rows[1].Progress, u"100 %"_s);
    EXPECT_TRUE(Host.ControlsEnabled);
}

TEST_F(RunEdge, AFileThatWasRefusedCountsAsTheFirst) {
    AddMusic({"a.flac", "b.mp3"});
    Codecs.Duration = 0;
    LetTagsFailFrom(2);
    EXPECT_NO_THROW(Convert());
    ASSERT_EQ(Host.Rows.size(), 2U);
    EXPECT_EQ(Host.Rows[0].Icon, ErrorIcon);
    EXPECT_EQ(Host.Rows[1].Icon, ConvertedIcon);
}

TEST_F(RunEdge, EveryFileOfASelectionBeginsWithTheStopFlagDown) {
    AddMusic({"a.wav"});
    Run.Cancel();
    SelectionDriver(Run, Host, Codecs.Parts(), Items).ConvertOneFile(2, {});
    ASSERT_EQ(Host.Rows.size(), 1U);
    EXPECT_EQ(Host.Rows[0].Icon, ConvertedIcon);
    EXPECT_FALSE(Codecs.Sink.Path.isEmpty());
}

TEST_F(RunEdge, ASelectionOfAnAddedFolderWritesWhereTheFullRunDoes) {
    AddMusic({"a.wav", "Sub/b.mp3", "Sub/Deep/c.ogg", "Other/d.wav"});
    QStringList full = OutputsOf([this] { Convert(); });
    QStringList selected = OutputsOf(
        [this] { SelectionDriver(Run, Host, Codecs.Parts(), Items).ConvertNode(Folder.Path("Music")); });
    full.sort();
    selected.sort();
    EXPECT_EQ(full.size(), 4);
    EXPECT_EQ(selected, full);
}

TEST_F(RunEdge, AnM4aIsReadAsAStreamAndByNoDecoderOfItsOwn) {
    AddFileRecord(Items, Host, Folder.MakeFile("song.m4a"));
    Codecs.IsAlac = true;
    Convert();
    EXPECT_TRUE(Codecs.Calls.isEmpty());
    EXPECT_EQ(Codecs.Source.Opened, 2) << "the check and the copy";
    EXPECT_EQ(Host.Rows[0].Progress, u"100 %"_s);
}

TEST_F(RunEdge, AFileOfOneBlockGoesStraightTo100) {
    AddMusic({"a.wav"});
    Codecs.Source.Blocks = 1;
    Codecs.Source.Frames = 100;
    Convert();
    EXPECT_EQ(Host.Rows[0].ProgressSeen.at(1), u"100 %"_s);
}

TEST_F(RunEdge, CancellingOneFileWhileFlacIsEncodedIsForgottenBeforeTheNextFile) {
    AddMusic({"a.wav", "b.mp3"});
    Host.Format = u"FLAC (Free Lossless Audio Codec)"_s;
    Codecs.Meanwhile = [this] {
        if (Host.Rows.size() == 1) CancelOneFile(Run);
    };
    Convert();
    ASSERT_EQ(Host.Rows.size(), 2U);
    EXPECT_EQ(Codecs.Encoded.size(), 2);
    EXPECT_EQ(Host.Rows[0].Icon, ConvertedIcon);
    EXPECT_EQ(Host.Rows[1].Icon, ConvertedIcon) << "its copy would have failed";
}

TEST_F(RunEdge, EveryProgressEventYieldsOnce) {
    int yields = 0;
    Host.AtYield = [&] { ++yields; };
    Run.TakeRow(Host.AddRow());
    const Components parts = Codecs.Parts();
    const ProgressEvents events(Run, Host, parts);
    const std::function<void()> reports[] = {[&] { parts.AACDecoder1.Progress(5); },
                                             [&] { parts.FlacCodec1.Progress(0); },
                                             [&] { parts.FlacCodec_Encoder1.Progress(5); },
                                             [&] { parts.FlacCodec_Encoder1.Progress(5); },
                                             [&] { parts.alacdec1.Progress(1, 5); },
                                             [&] { parts.mpcdecoder1.Progress(5, 1); },
                                             [&] { parts.mpcencoder1.Progress(5, 1); },
                                             [&] { parts.mpcencoder1.Progress(5, 1); },
                                             [&] { MakeApeProgress(Host)(0); }};
    for (const auto& report : reports) {
        yields = 0;
        report();
        EXPECT_EQ(yields, 1) << "report " << &report - reports;
    }
}

TEST_F(RunEdge, AProgressEventWithoutAnArgumentDoesNothing) {
    int yields = 0;
    Host.AtYield = [&] { ++yields; };
    Run.TakeRow(Host.AddRow());
    Host.Progress = 42;
    const Components parts = Codecs.Parts();
    const ProgressEvents events(Run, Host, parts);
    for (const auto& [one, other] : {std::pair{0, 5}, std::pair{5, 0}, std::pair{0, 0}}) {
        parts.alacdec1.Progress(one, other);
        parts.mpcdecoder1.Progress(one, other);
        parts.mpcencoder1.Progress(one, other);
    }
    EXPECT_EQ(yields, 0);
    EXPECT_EQ(Host.Progress, 42);
    EXPECT_EQ(Host.Rows[0].Progress, QString());
}

TEST_F(RunEdge, FoldersAreFoundByTheirNumbersWhereARemovalHasMovedThem) {
    for (const char* name : {"A/a.wav", "B/b.wav", "C/c.wav"}) Folder.MakeFile(name);
    for (const char* name : {"A", "B", "C"}) AddDirectory(Items, Host, Folder.Path(name));
    RemoveFromCollection(Items, Host, Folder.Path("A"));
    ASSERT_NE(Items.Records[1].Index, 1) << "B stands at another place than that of its number";
    const QString b = Folder.Path("out") + u"\\B\\b.mp3"_s;
    const QString c = Folder.Path("out") + u"\\C\\c.mp3"_s;
    EXPECT_EQ(OutputsOf([this] { Convert(); }), (QStringList{b, c}));
    Codecs.Sink.Path.clear();
    EXPECT_EQ(OutputsOf([this] {
                  SelectionDriver(Run, Host, Codecs.Parts(), Items).ConvertNode(Folder.Path("B"));
              }),
              QStringList{b});
    EXPECT_EQ(Host.Count, u"1 / 1"_s);
    RemoveFromCollection(Items, Host, Folder.Path("B"));
    ASSERT_EQ(Items.Records.UpperBound(), 2);
    EXPECT_EQ(Items.Records[2].Name, u"c.wav"_s);
}

}  // namespace
}  // namespace Sonmira
