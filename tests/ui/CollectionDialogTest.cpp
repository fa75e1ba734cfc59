// Files that are added by the open dialog.
#include "CollectionTest.h"
#include "platform/Folders.h"
#include "platform/Paths.h"

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class CollectionDialog : public CollectionTest {
public:
    CollectionDialog() {
        Dialogs().OpenFiles = [this](const OpenDialogRequest& request) {
            Requests.push_back(request);
            return Answer;
        };
        for (const char* name : {"Music/b.wav", "Music/a.mp3", "Music/c.xyz"}) Folder.MakeFile(name);
        Open();
    }
    ~CollectionDialog() override { Dialogs().OpenFiles = RealDialog; }

protected:
    void Choose(const QStringList& files) {
        Answer = files;
        ClickToolbar(2);
    }
    static QString StartFolder() { return ReadIniValue(SettingsFile, u"OpenFile"_s, u"INITDIR"_s); }

    const std::function<std::optional<QStringList>(const OpenDialogRequest&)> RealDialog =
        Dialogs().OpenFiles;
    std::vector<OpenDialogRequest> Requests;
    std::optional<QStringList> Answer;
};

TEST_F(CollectionDialog, StartsInTheFolderOfTheProgramAtFirst) {
    Choose({Folder.Path("Music/a.mp3")});
    ASSERT_EQ(Requests.size(), 1U);
    EXPECT_EQ(Requests[0].StartFolder, ProgramFolder());
    EXPECT_FALSE(Requests[0].StartFolder.isEmpty());
}

TEST_F(CollectionDialog, AsksInTheWordsOfTheLanguageFile) {
    Form().addfile->trigger();
    ASSERT_EQ(Requests.size(), 1U);
    EXPECT_EQ(Requests[0].Title, LanguageLines[1]);
    EXPECT_FALSE(Requests[0].Title.isEmpty());
}

// A file of numbered lines cannot have the right text on a wrong line.
TEST_F(CollectionDialog, EachTitleIsItsLineOfTheLanguageFile) {
    QByteArray lines;
    for (int n = 0; n <= 100; ++n) lines += "line " + QByteArray::number(n) + '\n';
    Shipped.MakeFile("French.lng", lines);
    QStringList titles;
    Dialogs().BrowseForFolder = [&](const QString& title) {
        titles.append(title);
        return QString();
    };
    Window->LanguageItems().Item(1)->trigger();
    Form().adddirectory->trigger();
    ClickToolbar(3);
    QTest::mouseClick(Panel().CmdSelectPath, Qt::LeftButton);
    Form().addfile->trigger();
    ClickToolbar(2);
    EXPECT_EQ(titles, QStringList(3, u"line 18"_s));
    ASSERT_EQ(Requests.size(), 2U);
    for (const OpenDialogRequest& request : Requests) EXPECT_EQ(request.Title, u"line 1"_s);
}

TEST_F(CollectionDialog, OffersTheKindsOfFilesInTheirOrder) {
    Form().addfile->trigger();
    ASSERT_EQ(Requests.size(), 1U);
    EXPECT_EQ(Requests[0].Filter.split(u'|'),
              (QStringList{u"Audio files (*.wav;*.mp3;*.ogg;*.wma;*.aac;*.ape;*.flac;*.mpc)"_s,
                           u"*.wav;*.WAV;*.mp3;*.MP3;*.ogg;*.OGG;*.wma;*.WMA;*.aac;*.AAC;*.ape;*.APE;"
                           u"*.apl;*.APL;*.flac;*.FLAC;*.mpc;*.MPC;*.mp+;*.MP+"_s,
                           u"AAC Files(*.aac)"_s, u"*.aac;*.AAC"_s, u"APE Files(*.ape)"_s,
                           u"*.APL;*.apl;*.ape;*.APE"_s, u"Flac Files(*.flac)"_s, u"*.flac;*.flac"_s,
                           u"MP3 Files(*.mp3)"_s, u"*.mp3;*.MP3"_s, u"MPC Files(*.mpc)"_s, u"*.mpc;*.MPC"_s,
                           u"OGG Files(*.ogg)"_s, u"*.ogg;*.OGG"_s, u"WAV Files(*.wav)"_s, u"*.wav;*.WAV"_s,
                           u"WMA Files(*.wma)"_s, u"*.wma;*.WMA"_s, QString()}));
}

TEST_F(CollectionDialog, OneFileStandsInTheStatusBarAndItsFolderKeepsItsBackslash) {
    Choose({Folder.Path("Music/a.mp3")});
    EXPECT_EQ(Nodes(), (QStringList{u"My Conversion"_s, u"a.mp3"_s}));
    ExpectCounts(u"0"_s, u"1"_s);
    EXPECT_EQ(Form().StatusPanel1->text(), QString::fromUtf8(Folder.Native("Music/a.mp3")));
    EXPECT_EQ(StartFolder(), Folder.Path("Music") + u'\\');
    Choose({Folder.Path("Music/b.wav")});
    EXPECT_EQ(Requests[1].StartFolder, Folder.Path("Music") + u'\\');
}

TEST_F(CollectionDialog, SeveralFilesComeInAsChosenAndTheirFolderHasNoBackslash) {
    Choose({Folder.Path("Music/b.wav"), Folder.Path("Music/a.mp3")});
    EXPECT_EQ(Nodes(), (QStringList{u"My Conversion"_s, u"b.wav"_s, u"a.mp3"_s}));
    ExpectCounts(u"0"_s, u"2"_s);
    EXPECT_EQ(Form().StatusPanel1->text(), QString::fromUtf8(Folder.Native("Music/a.mp3")));
    EXPECT_EQ(StartFolder(), Folder.Path("Music"));
}

TEST_F(CollectionDialog, FoldersOfOneLetterAreNoDrives) {
    Choose({u"\\a\\x.mp3"_s, u"\\a\\y.mp3"_s});
    EXPECT_EQ(StartFolder(), u"\\a"_s);
    Choose({u"\\a\\z.mp3"_s});
    EXPECT_EQ(StartFolder(), u"\\a\\"_s);
}

TEST_F(CollectionDialog, SeveralFilesOfARootKeepItsBackslash) {
    Choose({u"Z:\\x.mp3"_s, u"Z:\\y.mp3"_s});
    EXPECT_EQ(StartFolder(), u"Z:\\"_s);
    Choose({u"\\x.mp3"_s, u"\\y.mp3"_s});
    EXPECT_EQ(StartFolder(), u"\\"_s);
}

TEST_F(CollectionDialog, CancellingItChangesNothing) {
    Choose({Folder.Path("Music/a.mp3")});
    const QByteArray before = ContentOf(ToNative(SettingsFile));
    Answer.reset();
    ClickToolbar(2);
    Form().addfile->trigger();
    EXPECT_EQ(Requests.size(), 3U);
    EXPECT_EQ(ContentOf(ToNative(SettingsFile)), before);
    EXPECT_EQ(Nodes().size(), 2);
    ExpectCounts(u"0"_s, u"1"_s);
}

TEST_F(CollectionDialog, ANameThatWasTypedNeedNotMatchTheFilter) {
    Choose({Folder.Path("Music/c.xyz")});
    EXPECT_EQ(Nodes(), (QStringList{u"My Conversion"_s, u"c.xyz"_s}));
}

TEST_F(CollectionDialog, AFileThatIsThereAlreadyOnlyMovesTheStartFolder) {
    AddFolderByCommand(Folder.Path("Music"));
    Choose({Folder.Path("Music/a.mp3")});
    EXPECT_EQ(Records().UpperBound(), 3);
    EXPECT_EQ(Form().StatusPanel1->text(), QString());
    EXPECT_EQ(StartFolder(), Folder.Path("Music") + u'\\');
}

TEST_F(CollectionDialog, IsNotShownWhileAFolderIsAdded) {
    Folder.MakeFile("Music/Sub/d.wav");
    AddWhile(Folder.Path("Music"), [this] { Form().addfile->trigger(); });
    EXPECT_TRUE(Requests.empty());
    EXPECT_EQ(Records().UpperBound(), 5);
}

}  // namespace
}  // namespace Sonmira
