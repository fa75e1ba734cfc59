// How files come into the list.
#include "AudiotoolTest.h"
#include "platform/Paths.h"

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class Adding : public AudiotoolTest {
protected:
    Adding() { Open(); }
    QString Duration(int row) { return Cell(row, AudiotoolRows::DurationColumn); }
};

TEST_F(Adding, ADropAddsItsAudioFilesInTheirOrder) {
    MakeWav("Music/b.wav", 2000);
    Make("Music/a.MP3", 61000);
    EXPECT_TRUE(Drop({"Music/b.wav", "Music/a.MP3"}));
    EXPECT_EQ(Names(), (QStringList{u"b.wav"_s, u"a.MP3"_s}));
    EXPECT_EQ(Positions(), (QStringList{u"001."_s, u"002."_s}));
    EXPECT_EQ(Duration(1), u"00:02:00"_s);
    EXPECT_EQ(Duration(2), u"01:01:00"_s);
    EXPECT_EQ(Cell(1, AudiotoolRows::ProgressColumn), QString()) << "the bar stands there";
    EXPECT_EQ(Rows().Path(2), Folder.Path("Music/a.MP3"));
    EXPECT_TRUE(Said.empty());
}

TEST_F(Adding, ADropTakesEveryKindOfFileByItsLastLetters) {
    const QList<QByteArray> kinds = {"wav", "wma",  "mp3",  "ogg", "aac", "ape",
                                     "apl", "flac", "alac", "mpc", "mp+"};
    QList<QByteArray> names;
    QStringList expected;
    for (const QByteArray& kind : kinds) {
        for (const QByteArray& ending : {kind, kind.toUpper()}) {
            // What is in it is the same for all; the streaming reader looks at the content, the decoders of
            // their own give no length.
            const QByteArray name = "kinds/x." + ending;
            MakeWav(name);
            names.append(name);
        }
    }
    names.append("kinds/note.txt");
    names.append("kinds/x.m4a");
    names.append("kinds/x.avi");
    for (const char* other : {"kinds/note.txt", "kinds/x.m4a", "kinds/x.avi"}) MakeWav(other);
    Drop(names);
    EXPECT_EQ(Rows().Count(), 2 * kinds.size());
    EXPECT_FALSE(Names().contains(u"note.txt"_s));
    EXPECT_TRUE(Said.empty());
}

TEST_F(Adding, ADroppedFolderAddsNothingEvenWithTheNameOfAFile) {
    MakeWav("Music/a.wav");
    MakeWav("folder.wav/inside.wav");
    EXPECT_TRUE(Drop({"Music", "folder.wav"}));
    EXPECT_EQ(Rows().Count(), 0);
    EXPECT_TRUE(Said.empty());
    EXPECT_TRUE(Bar(0).isHidden());
}

TEST_F(Adding, ADropOfTextIsRefused) {
    QMimeData data;
    data.setText(u"no file"_s);
    EXPECT_FALSE(Drop(data));
}

TEST_F(Adding, AnAddressOnTheNetIsPassedOver) {
    QMimeData data;
    data.setUrls({QUrl(u"https://example.org/z.wav"_s)});
    EXPECT_TRUE(Drop(data));
    Settle();
    EXPECT_EQ(Rows().Count(), 0);
    EXPECT_TRUE(Form().addfile->isEnabled());
}

TEST_F(Adding, ANameThatIsNoTextIsAddedAndKept) {
    MakeWav("raw\xE9.wav", 1000);
    Drop({"raw\xE9.wav"});
    ASSERT_EQ(Rows().Count(), 1);
    EXPECT_EQ(Rows().Path(1), Folder.Path("raw\xE9.wav"));
    EXPECT_EQ(Duration(1), u"00:01:00"_s);
}

TEST_F(Adding, TheAddCommandsAreOffForTheTimeOfADropAndOnAgainAfterIt) {
    MakeTracks(3);
    std::vector<bool> seen;
    QObject::connect(&Rows(), &QAbstractItemModel::rowsInserted, Window.get(), [&] {
        seen.push_back(Form().addfile->isEnabled() || Form().Image1->isEnabled() || List().acceptDrops());
    });
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromUtf8(Folder.Native(TrackName(1)))),
                  QUrl::fromLocalFile(QString::fromUtf8(Folder.Native(TrackName(2))))});
    Drop(data);
    EXPECT_FALSE(Form().addfile->isEnabled()) << "from the drop on";
    EXPECT_FALSE(Form().Image1->isEnabled());
    Settle();
    EXPECT_EQ(seen, std::vector<bool>({false, false}));
    EXPECT_TRUE(Form().addfile->isEnabled());
    EXPECT_TRUE(Form().Image1->isEnabled());
    EXPECT_TRUE(List().acceptDrops());
}

TEST_F(Adding, ADropThatFailsLeavesTheAddCommandsOn) {
    Folder.MakeFile("broken.mp3", "no music");
    Drop({"broken.mp3"});
    EXPECT_EQ(Said.size(), 1U);
    EXPECT_TRUE(Form().addfile->isEnabled());
    EXPECT_TRUE(Form().Image1->isEnabled());
}

TEST_F(Adding, TheSameFileTwiceGivesTheMessageAndOneRow) {
    MakeWav("Music/a.wav");
    Drop({"Music/a.wav", "Music/a.wav"});
    EXPECT_EQ(Rows().Count(), 1);
    ASSERT_EQ(Said.size(), 1U);
    EXPECT_EQ(Said[0].Text, LanguageLines[45] + u"\n\n"_s + ShownPath(Folder.Path("Music/a.wav")));
    EXPECT_EQ(Said[0].Icon, MessageIcon::Warning);
    EXPECT_EQ(Said[0].Title, u"Sonmira"_s);
    EXPECT_EQ(Window->Bars().HighestElement(), 0);
}

TEST_F(Adding, AFileThatWasRemovedMayComeBack) {
    MakeWav("Music/a.wav");
    AddFiles({"Music/a.wav"});
    Select(1);
    PressDelete();
    AddFiles({"Music/a.wav"});
    EXPECT_EQ(Names(), QStringList{u"a.wav"_s});
    EXPECT_TRUE(Said.empty());
}

TEST_F(Adding, AFileThatCannotBeReadIsToldAndNotAdded) {
    Folder.MakeFile("broken.mp3", "no music");
    AddFiles({"broken.mp3", "missing.wav"});
    ASSERT_EQ(Said.size(), 2U);
    EXPECT_EQ(Said[0].Text, u"Can't add : \nbroken.mp3"_s);
    EXPECT_EQ(Said[0].Icon, MessageIcon::Warning);
    EXPECT_EQ(Said[0].Title, u"Sonmira"_s);
    EXPECT_EQ(Said[1].Text, u"Can't add : \nmissing.wav"_s);
    EXPECT_EQ(Rows().Count(), 0);
    EXPECT_EQ(FilesText(), LanguageLines[10]) << "the count was never written";
}

TEST_F(Adding, AProtectedWmaFileIsToldWithItsQuestion) {
    WriteIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s, u"True"_s);
    Open();
    Make("open.wma", 2000);
    Make("locked.WMA", 2000, {"-f", "asf", "-metadata", "ASF_Protection_Type=DRM"});
    AddFiles({"open.wma", "locked.WMA"});
    EXPECT_EQ(Names(), QStringList{u"open.wma"_s});
    ASSERT_EQ(Said.size(), 1U);
    EXPECT_EQ(Said[0].Text, u"Can't add : \nlocked.WMA\n\nYou wma file is it DRM protected ?"_s);
}

TEST_F(Adding, AWmaFileWithoutItsSupportIsToldAlike) {
    Make("open.wma", 2000);
    AddFiles({"open.wma"});
    ASSERT_EQ(Said.size(), 1U);
    EXPECT_TRUE(Said[0].Text.endsWith(u"\n\nYou wma file is it DRM protected ?"));
    EXPECT_EQ(Rows().Count(), 0);
}

TEST_F(Adding, AnAacFileThatCannotBeReadIsToldWithAReason) {
    Folder.MakeFile("broken.Aac", "no music at all, but long enough to be looked at");
    AddFiles({"broken.Aac"});
    ASSERT_EQ(Said.size(), 1U);
    EXPECT_EQ(Said[0].Text,
              u"Can't add : \nbroken.Aac\n\nThe file is not in a known AAC format for Sonmira. Maybe Invalid "
              "Channel number or protected file."_s);
    EXPECT_EQ(Rows().Count(), 0);
}

TEST_F(Adding, LengthsComeByTheRouteOfTheFormat) {
    Make("a.ogg", 125000);
    Make("b.flac", 63500);
    Make("c.alac", 62000, {"-c:a", "alac", "-f", "mp4"});
    Make("d.aac", 3000);
    RunTool({"mpcenc", "--silent", "--overwrite", MakeWav("made/in.wav", 4000), Folder.Native("e.mpc")});
    RunTool({"jmac", "c2", MakeWav("made/in.wav", 5000), Folder.Native("f.ape")});
    Folder.MakeFile("g.flac", "no music");
    MakeWav("h.wav", 0);
    MakeWav("i.wav", 400);
    AddFiles({"a.ogg", "b.flac", "c.alac", "d.aac", "e.mpc", "f.ape", "g.flac", "h.wav", "i.wav"});
    EXPECT_TRUE(Said.empty());
    EXPECT_EQ(Column(AudiotoolRows::DurationColumn),
              (QStringList{u"02:05:00"_s, u"01:03:00"_s, u"01:02:00"_s, u"-"_s, u"00:04:00"_s, u"00:05:00"_s,
                           u"-"_s, u"-"_s, u"00:00:00"_s}));
}

TEST_F(Adding, AFileThatIsGoneIsToldWhateverItsFormat) {
    for (const char* name : {"gone.wav", "gone.flac", "gone.ape", "gone.mpc", ".gone.flac"}) {
        Window->AddFileToList(Folder.Path(name));
        ASSERT_EQ(Said.size(), 1U) << name;
        Said.clear();
    }
    EXPECT_EQ(Rows().Count(), 0);
}

TEST_F(Adding, AFileWithAHiddenNameIsAddedLikeAnyOther) {
    MakeWav("Music/.song.wav", 2000);
    Make("Music/.tune.flac", 3000);
    AddFiles({"Music/.song.wav"});
    Drop({"Music/.tune.flac"});
    EXPECT_TRUE(Said.empty());
    EXPECT_EQ(Names(), (QStringList{u".song.wav"_s, u".tune.flac"_s}));
    EXPECT_EQ(Column(AudiotoolRows::DurationColumn), (QStringList{u"00:02:00"_s, u"00:03:00"_s}));
}

TEST_F(Adding, AFolderIsNoFileWhateverItsName) {
    for (const char* name : {"folder.flac", ".folder.mpc"}) {
        Window->AddFileToList(Folder.MakeFolder(name));
        ASSERT_EQ(Said.size(), 1U) << name;
        Said.clear();
    }
    EXPECT_EQ(Rows().Count(), 0);
}

TEST_F(Adding, MinutesGoBeyondAnHour) {
    MakeLongWav("long.wav", 125);
    AddFiles({"long.wav"});
    EXPECT_EQ(Duration(1), u"125:00:00"_s);
}

TEST_F(Adding, TheCountStandsBehindItsLine) {
    AddTracks(2);
    EXPECT_EQ(FilesText(), LanguageLines[10] + u": 2"_s);
}

TEST_F(Adding, ARowHasItsNumberWithThreeDigitsAtLeast) {
    AddTracks(12);
    EXPECT_EQ(Positions().first(), u"001."_s);
    EXPECT_EQ(Positions().last(), u"012."_s);
}

TEST_F(Adding, TheDialogAddsItsFilesAndRemembersTheirFolder) {
    MakeWav("Music/a.wav");
    MakeWav("Music/b.anything");
    OpenDialogRequest seen;
    Dialogs().OpenFiles = [&](const OpenDialogRequest& request) {
        seen = request;
        EXPECT_FALSE(Form().addfile->isEnabled());
        return std::optional(QStringList{Folder.Path("Music/a.wav"), Folder.Path("Music/b.anything")});
    };
    Click(Form().Image1);
    EXPECT_EQ(seen.Title, LanguageLines[1]);
    EXPECT_EQ(Names(), (QStringList{u"a.wav"_s, u"b.anything"_s})) << "the dialog may choose any file";
    EXPECT_EQ(ReadIniValue(SettingsFile, u"OpenFile"_s, u"INITDIR"_s), Folder.Path("Music"));
    EXPECT_TRUE(Form().addfile->isEnabled());
    Form().addfile->trigger();
    EXPECT_EQ(Said.size(), 2U) << "both are there already";
}

TEST_F(Adding, ACancelledDialogAddsNothing) {
    Dialogs().OpenFiles = [](const OpenDialogRequest&) { return std::optional<QStringList>(); };
    Form().addfile->trigger();
    EXPECT_EQ(Rows().Count(), 0);
    EXPECT_TRUE(Form().Image1->isEnabled());
}

}  // namespace
}  // namespace Sonmira
