#include "engine/Destination.h"
#include "engine/Run.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class OutputNames : public ::testing::Test {
protected:
    // The name that the stem gets, without the folder.
    QString NameOf(const QString& stem, const QString& extension = u".mp3"_s) {
        Run.SetOutputStem(Folder.Path() + u'\\' + stem);
        return OutputName(Run, extension).Path().sliced(Folder.Path().size() + 1);
    }

    // The names that creating is tried under, where `taken` says of each whether something has it by then.
    QStringList Tried(const QString& stem, const std::function<void(const QString& name)>& take) {
        Run.SetOutputStem(Folder.Path() + u'\\' + stem);
        OutputName output(Run, u".mp3"_s);
        QStringList tried;
        output.CreateBy([&](const QString& path) {
            const QString name = path.sliced(Folder.Path().size() + 1);
            tried.append(name);
            take(name);
        });
        return tried;
    }
    [[noreturn]] static void RefuseTheName() { throw Failure(FailureNumber::FileAlreadyExists); }

    TestFolder Folder;
    Sonmira::Run Run;
};

TEST_F(OutputNames, StayWhereTheyAreFree) {
    EXPECT_EQ(NameOf(u"song"_s), u"song.mp3"_s);
}

TEST_F(OutputNames, TakeTheFirstFreeNumber) {
    Folder.MakeFile("song.mp3");
    EXPECT_EQ(NameOf(u"song"_s), u"song(1).mp3"_s);
    Folder.MakeFile("song(1).mp3");
    EXPECT_EQ(NameOf(u"song"_s), u"song(2).mp3"_s);
    EXPECT_EQ(NameOf(u"song"_s, u".ogg"_s), u"song.ogg"_s);
}

TEST_F(OutputNames, NumberANumberedStemOnceMore) {
    Folder.MakeFile("song(1).mp3");
    EXPECT_EQ(NameOf(u"song(1)"_s), u"song(1)(1).mp3"_s);
    EXPECT_TRUE(Run.OutputStem().endsWith(u"\\song(1)(1)")) << "the number stays in the stem";
}

TEST_F(OutputNames, ThatWereTakenSinceTheyWereFoundFreeGiveTheNextNumber) {
    Folder.MakeFile("song(1).mp3");
    const QStringList tried = Tried(u"song"_s, [this](const QString& name) {
        if (name == u"song(3).mp3") return;
        Folder.MakeFile(name.toUtf8());
        RefuseTheName();
    });
    EXPECT_EQ(tried, (QStringList{u"song.mp3"_s, u"song(2).mp3"_s, u"song(3).mp3"_s}));
    EXPECT_TRUE(Run.OutputStem().endsWith(u"\\song(3)"));
}

TEST_F(OutputNames, OfHiddenFilesAreFoundTakenWhenTheyAreCreated) {
    Folder.MakeFile(".song.mp3");
    Folder.MakeFile(".song(1).mp3");
    const QStringList tried = Tried(u".song"_s, [](const QString& name) {
        if (name != u".song(2).mp3") RefuseTheName();
    });
    EXPECT_EQ(tried, (QStringList{u".song.mp3"_s, u".song(1).mp3"_s, u".song(2).mp3"_s}));
}

TEST_F(OutputNames, OfAFolderAndOfALinkThatLeadsNowhereStayAFailure) {
    Folder.MakeFolder("folder.mp3");
    std::filesystem::create_symlink("nowhere", Folder.Native("link.mp3").toStdString());
    for (const QString& stem : {u"folder"_s, u"link"_s}) {
        int tries = 0;
        EXPECT_THROW(Tried(stem,
                           [&](const QString& /*name*/) {
                               ++tries;
                               RefuseTheName();
                           }),
                     Failure);
        EXPECT_EQ(tries, 1) << stem.toStdString();
    }
}

TEST_F(OutputNames, AreTriedOnceWhereSomethingElseFails) {
    Folder.MakeFile("song.mp3");
    int tries = 0;
    const auto fail = [&](const QString& /*name*/) {
        ++tries;
        throw Failure(FailureNumber::PermissionDenied);
    };
    EXPECT_THROW(Tried(u"song"_s, fail), Failure);
    EXPECT_EQ(tries, 1);
}

}  // namespace
}  // namespace Sonmira
