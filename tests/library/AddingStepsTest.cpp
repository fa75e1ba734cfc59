// What is shown while something is added, step by step.
#include "library/AddFiles.h"
#include "library/Collection.h"
#include "support/TestFolder.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// Writes down all that it is told, paths without the folder of the test.
class Diary : public CollectionView {
public:
    explicit Diary(const TestFolder& folder) : Start(folder.Path() + u'\\') {}

    void GetIcon(const QString& path) override { Note(u"icon"_s, path); }
    void GetIcon4(const QString& path) override { Note(u"folder icon"_s, path); }
    void AddNode(const QString& parentKey, const QString& key, const QString& text,
                 const QString& imageKey) override {
        Note(u"node"_s, key);
        Steps.last() += u" in %1: %2, %3"_s.arg(QString(parentKey).remove(Start), text, imageKey);
    }
    void ShowPath(const QString& path) override { Note(u"path"_s, path); }
    void ShowDirectoryCount(int count) override { Note(u"folders"_s, QString::number(count)); }
    void ShowFileCount(int count) override { Note(u"files"_s, QString::number(count)); }
    void SetControlsEnabled(bool enabled) override { Steps.append(enabled ? u"free"_s : u"locked"_s); }
    void Yield() override { Steps.append(u"yield"_s); }

    QStringList Steps;

private:
    void Note(const QString& step, QString what) { Steps.append(step + u' ' + what.remove(Start)); }

    const QString Start;
};

class AddingSteps : public ::testing::Test {
protected:
    TestFolder Folder;
    Collection Items;
    Diary View{Folder};
};

TEST_F(AddingSteps, OfAFolderShowEachPathThatComesIn) {
    for (const char* name : {"Music/a.wav", "Music/note.txt", "Music/Sub/b.Mp3", "Music/xwav"})
        Folder.MakeFile(name);
    Folder.MakeFolder("Music/Void");
    AddDirectory(Items, View, Folder.Path("Music"));
    EXPECT_EQ(View.Steps, (QStringList{u"locked"_s,
                                       u"folder icon Music"_s,
                                       u"node Music in \\: Music, dossier"_s,
                                       u"path Music"_s,
                                       u"folders 1"_s,
                                       u"icon Music\\a.wav"_s,
                                       u"path Music\\a.wav"_s,
                                       u"files 1"_s,
                                       u"node Music\\a.wav in Music: a.wav, .wav"_s,
                                       u"folder icon Music\\Sub"_s,
                                       u"node Music\\Sub in Music: Sub, dossier"_s,
                                       u"folders 2"_s,
                                       u"path Music\\Sub"_s,
                                       u"icon Music\\Sub\\b.Mp3"_s,
                                       u"path Music\\Sub\\b.Mp3"_s,
                                       u"files 2"_s,
                                       u"node Music\\Sub\\b.Mp3 in Music\\Sub: b.Mp3, .Mp3"_s,
                                       u"yield"_s,
                                       u"folder icon Music\\Void"_s,
                                       u"node Music\\Void in Music: Void, dossier"_s,
                                       u"folders 3"_s,
                                       u"path Music\\Void"_s,
                                       u"yield"_s,
                                       u"icon Music\\xwav"_s,
                                       u"free"_s,
                                       u"path "_s}));
}

TEST_F(AddingSteps, OfAFileOfTheDialogLeaveItsPathShown) {
    AddFileRecord(Items, View, Folder.MakeFile("a.mp3"));
    const QStringList steps = {u"icon a.mp3"_s, u"path a.mp3"_s, u"files 1"_s,
                               u"node a.mp3 in \\: a.mp3, .mp3"_s};
    EXPECT_EQ(View.Steps, steps);
    AddFileRecord(Items, View, Folder.Path("a.mp3"));
    EXPECT_EQ(View.Steps, steps) << "nothing is said of a file that is there";
}

TEST_F(AddingSteps, OfADropShowEachPathAndClearItAtTheEnd) {
    Folder.MakeFile("Music/b.ogg");
    AddDropped(Items, View, {Folder.MakeFile("a.mpc"), Folder.MakeFile("c.txt"), Folder.Path("Music")});
    EXPECT_EQ(View.Steps, (QStringList{u"locked"_s, u"icon a.mpc"_s, u"path a.mpc"_s, u"files 1"_s,
                                       u"node a.mpc in \\: a.mpc, .mpc"_s, u"folder icon Music"_s,
                                       u"node Music in \\: Music, dossier"_s, u"path Music"_s, u"folders 1"_s,
                                       u"icon Music\\b.ogg"_s, u"path Music\\b.ogg"_s, u"files 2"_s,
                                       u"node Music\\b.ogg in Music: b.ogg, .ogg"_s, u"free"_s, u"path "_s}));
}

}  // namespace
}  // namespace Sonmira
