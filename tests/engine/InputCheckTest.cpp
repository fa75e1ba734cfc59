#include "FakeComponents.h"
#include "HeadlessHost.h"
#include "engine/InputCheck.h"
#include "engine/Run.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class InputCheck : public ::testing::Test {
protected:
    InputCheck() {
        NumberLanguageLines();
        Run.TakeRow(Host.AddRow());
    }
    bool Check(const QString& path) { return CheckInputFile(Run, Host, Codecs.Parts(), path); }
    // The reason in the row of a file that exists and cannot be opened.
    QString ReasonFor(const QByteArray& name) {
        Source.OpenFails = Codecs.Fails = true;
        Codecs.Duration = 0;
        EXPECT_FALSE(Check(Folder.MakeFile(name)));
        EXPECT_TRUE(Run.FileError());
        return Host.Rows.front().Progress;
    }

    TestFolder Folder;
    Sonmira::Run Run;
    HeadlessHost Host;
    FakeCodecs Codecs;
    FakeSource& Source = Codecs.Source;
};

TEST_F(InputCheck, AFileThatOpensMayGoOnAndIsClosedAgain) {
    EXPECT_TRUE(Check(Folder.MakeFile("a.mp3")));
    EXPECT_EQ(Source.Opened, 1);
    EXPECT_EQ(Source.Closed, 1);
    EXPECT_FALSE(Run.FileError());
}

TEST_F(InputCheck, AMissingFileGetsItsOwnReason) {
    EXPECT_FALSE(Check(Folder.Path("gone.mp3")));
    EXPECT_TRUE(Run.FileError());
    EXPECT_EQ(Host.Rows.front().Progress, u"line 95"_s);
    EXPECT_EQ(Source.Opened, 0);
}

TEST_F(InputCheck, AnUnreadableFileGetsTheGeneralReason) {
    EXPECT_EQ(ReasonFor("a.mp3"), u"line 99"_s);
    EXPECT_EQ(ReasonFor("a.flac"), u"line 99"_s);
}

TEST_F(InputCheck, AnUnreadableWmaNamesTheMissingSupportWhereThatIsOff) {
    EXPECT_EQ(ReasonFor("a.WMA"), u"line 100"_s);
    Codecs.Settings.WmaSupported = true;
    EXPECT_EQ(ReasonFor("b.wma"), u"line 97"_s);
}

TEST_F(InputCheck, AnUnreadableAacGetsItsOwnReason) {
    EXPECT_EQ(ReasonFor("a.Aac"), u"line 98"_s);
}

TEST_F(InputCheck, AMissingWmaIsReportedAsWmaAllTheSame) {
    EXPECT_FALSE(Check(Folder.Path("gone.wma")));
    EXPECT_EQ(Host.Rows.front().Progress, u"line 100"_s);
}

// Or the name of a WAV of an earlier file would be taken for one of this.
TEST_F(InputCheck, TakesTheOutputNameFromTheAacDecoder) {
    for (const char* name : {"a.aac", "b.alac"}) {
        Codecs.Aac.SetOutputFile(Folder.Path("earlier.wav"));
        EXPECT_TRUE(Check(Folder.MakeFile(name)));
        EXPECT_EQ(Codecs.Aac.GetOutputFile(), QString()) << name;
    }
}

// A translation that ends early: the reason is missing, and what goes by it fails, but only that.
TEST_F(InputCheck, WithoutTheLineOfTheReasonEveryFileIsRefusedAndTheRunGoesOn) {
    NumberLanguageLines(98);
    EXPECT_FALSE(Check(Folder.MakeFile("a.mp3")));
    EXPECT_TRUE(Run.FileError());
    EXPECT_EQ(Host.Rows.front().ProgressSeen, (std::vector<QString>{u"line 96"_s, QString()}));
    EXPECT_EQ(Source.Opened, 0);
    EXPECT_FALSE(Check(Folder.MakeFile("a.aac")));
    EXPECT_EQ(Host.Rows.front().Progress, u"line 98"_s);
}

TEST_F(InputCheck, WithoutTheLineOfTheGeneralFailureItFailsItself) {
    NumberLanguageLines(95);
    try {
        Check(Folder.Path("gone.mp3"));
        ADD_FAILURE();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.Number, FailureNumber::SubscriptOutOfRange);
    }
}

}  // namespace
}  // namespace Sonmira
