// What a save was not told to change keeps its bytes, also where a tag lies about itself.
#include "TagKeepingTest.h"
#include "codecs/ApeFunctions.h"
#include "platform/Failure.h"

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class TagBytes : public TagKeeping {
protected:
    static constexpr const char* Picture = "\0image/png\0\3\0";

    static void SaveTitle(const QString& path, qint16 kind = 2) {
        Edit(
            path, [](AudioInformation& tag) { tag.Title = u"New"_s; }, kind);
    }
    static QByteArray Bytes(std::initializer_list<int> numbers) {
        QByteArray bytes;
        for (const int number : numbers) bytes += static_cast<char>(number);
        return bytes;
    }
    static QByteArray Sevens(qsizetype number) {
        QByteArray bytes;
        for (int n = 3; n >= 0; --n) bytes += static_cast<char>(number >> (7 * n) & 0x7F);
        return bytes;
    }
    // A frame of ID3v2.4.
    static QByteArray Frame4(const QByteArray& id, const QByteArray& content) {
        return id + Sevens(content.size()) + QByteArray(2, '\0') + content;
    }
    static QByteArray PictureFrame(const QByteArray& picture) {
        return Frame("APIC", QByteArray(Picture, 13) + picture);
    }
    // An MP3 with that tag, whose size is filled in.
    QString MakeTagged(int version, int flags, const QByteArray& body, const QByteArray& behind = {}) {
        Make("plain.mp3", {"-map_metadata", "-1", "-write_id3v2", "0", "-id3v2_version", "0"});
        const QByteArray head = "ID3" + Bytes({version, 0, flags}) + Sevens(body.size());
        return Folder.MakeFile("a.mp3", head + body + behind + Content("plain.mp3"));
    }
    QString MakeFlacWith(const QByteArray& old, const QByteArray& bytes) {
        Make("a.flac");
        RunTool({"metaflac", "--set-tag=" + old, Folder.Native("a.flac")});
        QByteArray flac = Content("a.flac");
        EXPECT_TRUE(flac.contains(old));
        flac.replace(old, bytes);
        return Folder.MakeFile("a.flac", flac);
    }
    bool Holds(const char* name, const QByteArray& bytes) const { return Content(name).contains(bytes); }
};

TEST_F(TagBytes, WideTextWithoutAMarkIsShownAndKeptInId3v2) {
    const QByteArray artist = Bytes({1, 'A', 0, 'r', 0, 't', 0});
    const QByteArray album = Bytes({1, 0, 'A', 0, 'l', 0, 'b'});
    for (const int version : {3, 4}) {
        const QString path =
            MakeTagged(version, 0, Frame4("TPE1", artist) + Frame4("TALB", album) + Frame4("TMOO", artist));
        const AudioInformation tag = Load(path);
        EXPECT_EQ(tag.Artist, u"Art"_s);
        EXPECT_EQ(tag.Album, u"Alb"_s);
        SaveTitle(path);
        EXPECT_EQ(Load(path).Title, u"New"_s);
        for (const QByteArray& frame :
             {Frame4("TPE1", artist), Frame4("TALB", album), Frame4("TMOO", artist)})
            EXPECT_TRUE(Holds("a.mp3", frame)) << version << frame.toHex().constData();
    }
}

TEST_F(TagBytes, LatinTextThatClaimsToBeUtf8IsShownAndKeptInId3v2) {
    const QByteArray artist = "\3J\xFCrgen";
    const QString path = MakeTagged(4, 0, Frame4("TPE1", artist));
    EXPECT_EQ(Load(path).Artist, u"Jürgen"_s);
    SaveTitle(path);
    EXPECT_TRUE(Holds("a.mp3", Frame4("TPE1", artist)));
}

TEST_F(TagBytes, LatinTextInVorbisCommentsIsShownAndKept) {
    const QString path = MakeFlacWith("ARTIST=J!rgen", "ARTIST=J\xFCrgen");
    EXPECT_EQ(Load(path).Artist, u"Jürgen"_s);
    SaveTitle(path);
    EXPECT_TRUE(Holds("a.flac", "ARTIST=J\xFCrgen"));
    EXPECT_EQ(RunTool({"flac", "-s", "-t", Folder.Native("a.flac")}).ExitCode, 0);
}

TEST_F(TagBytes, LatinTextInTheCommentsOfAnOggIsShownAndKept) {
    const QString path = Make("a.ogg", {"-metadata", "artist=J\xC3\xBCrgen"});
    // By a tool that does not ask what it writes.
    QByteArray ogg = Content("a.ogg");
    ASSERT_TRUE(ogg.contains("J\xC3\xBCrgen"));
    ogg.replace("J\xC3\xBCrgen", "J\xFC\xFCrgen");
    Folder.MakeFile("a.ogg", ogg);
    EXPECT_EQ(Load(path).Artist, u"Jüürgen"_s);
    SaveTitle(path);
    EXPECT_TRUE(Holds("a.ogg", "J\xFC\xFCrgen"));
    EXPECT_EQ(Load(path).Title, u"New"_s);
}

TEST_F(TagBytes, LatinTextInAnApeTagIsShownAndKept) {
    for (const char* name : {"a.ape", "a.mpc"}) {
        const QString path = Make(name);
        Append(name, ApeTag("Artist", "J\xFCrgen"));
        EXPECT_EQ(Load(path).Artist, u"Jürgen"_s) << name;
        SaveTitle(path);
        EXPECT_TRUE(Holds(name, QByteArray("Artist\0J\xFCrgen", 13))) << name;
        EXPECT_EQ(Load(path).Title, u"New"_s) << name;
    }
}

TEST_F(TagBytes, LatinTextInAnMp4IsShownAndKept) {
    const QString path = Make("a.m4a", {"-metadata", "artist=Jurgen"});
    QByteArray m4a = Content("a.m4a");
    m4a.replace("Jurgen", "J\xFCrgen");
    Folder.MakeFile("a.m4a", m4a);
    EXPECT_EQ(Load(path).Artist, u"Jürgen"_s);
    SaveTitle(path);
    EXPECT_TRUE(Holds("a.m4a", "J\xFCrgen"));
    EXPECT_TRUE(Probe("a.m4a").contains("tag:title=new"));
}

TEST_F(TagBytes, TheLastFramesBehindAnExtendedHeaderAreKept) {
    const QByteArray last = QByteArray("\0Artist", 7);
    const QByteArray padding(4, '\0');
    QString path =
        MakeTagged(3, 0x40, Bytes({0, 0, 0, 6, 0, 0}) + padding + Frame("TALB", last) + Frame("TPE1", last));
    EXPECT_EQ(Load(path).Artist, u"Artist"_s);
    SaveTitle(path);
    EXPECT_TRUE(Holds("a.mp3", Frame("TPE1", last)) && Holds("a.mp3", Frame("TALB", last)));
    path = MakeTagged(4, 0x40, Bytes({0, 0, 0, 6, 1, 0}) + Frame4("TALB", last) + Frame4("TPE1", last));
    EXPECT_EQ(Load(path).Artist, u"Artist"_s);
    SaveTitle(path);
    EXPECT_TRUE(Holds("a.mp3", Frame4("TPE1", last)) && Holds("a.mp3", Frame4("TALB", last)));
    EXPECT_EQ(Load(path).Title, u"New"_s);
}

TEST_F(TagBytes, TheLastFrameBeforeAFooterIsKept) {
    const QByteArray body = Frame4("TALB", QByteArray("\0Album", 6)) + Frame4("TPE1", QByteArray("\0A", 2));
    const QString path = MakeTagged(4, 0x10, body, "3DI" + Bytes({4, 0, 0x10}) + Sevens(body.size()));
    EXPECT_EQ(Load(path).Artist, u"A"_s);
    SaveTitle(path);
    EXPECT_TRUE(Holds("a.mp3", body));
    EXPECT_EQ(Load(path).Title, u"New"_s);
}

TEST_F(TagBytes, ALastPictureOfASizeInTheOtherCountingIsKept) {
    const QByteArray picture(300, 'p');
    const QByteArray inEights = PictureFrame(picture);
    QString path = MakeTagged(4, 0, Frame4("TALB", QByteArray("\0Album", 6)) + inEights);
    SaveTitle(path);
    EXPECT_TRUE(Holds("a.mp3", inEights));
    EXPECT_EQ(Load(path).Title, u"New"_s);
    const QByteArray inSevens = Frame4("APIC", QByteArray(Picture, 13) + picture);
    path = MakeTagged(3, 0, Frame("TALB", QByteArray("\0Album", 6)) + inSevens);
    SaveTitle(path);
    EXPECT_TRUE(Holds("a.mp3", inSevens));
    EXPECT_EQ(Load(path).Title, u"New"_s);
}

TEST_F(TagBytes, APictureBehindAFlagThatWasNotAppliedIsKept) {
    const QByteArray picture = PictureFrame(Bytes({0xFF, 0, 0xE0, 0xFF, 0, 1, 2, 3}));
    const QByteArray album = Frame("TALB", QByteArray("\0Album", 6));
    for (const int version : {3, 4}) {
        for (const QByteArray& body : {album + picture, picture + album}) {
            const QString path = MakeTagged(version, 0x80, body);
            SaveTitle(path);
            EXPECT_TRUE(Holds("a.mp3", picture)) << version;
            EXPECT_EQ(Load(path).Title, u"New"_s) << version;
            EXPECT_EQ(Load(path).Album, u"Album"_s) << version;
        }
    }
}

TEST_F(TagBytes, APictureBehindAFlagThatWasAppliedIsKept) {
    const QByteArray applied = Bytes({0xFF, 0, 0xE0, 0xFF, 0, 0, 2, 3});
    QByteArray picture = PictureFrame(Bytes({0xFF, 0xE0, 0xFF, 0, 2, 3})).chopped(6) + applied;
    const QString path = MakeTagged(3, 0x80, picture + Frame("TALB", QByteArray("\0Album", 6)));
    EXPECT_EQ(Load(path).Album, u"Album"_s);
    SaveTitle(path);
    EXPECT_TRUE(Holds("a.mp3", picture));
    EXPECT_EQ(Load(path).Title, u"New"_s);
}

TEST_F(TagBytes, TwoAuthorsOfAWmaStayTwo) {
    const QString path = Make("a.wma", {"-metadata", "artist=First", "-metadata", "XYauth=Second"});
    const auto wide = [](const char* text) {
        QByteArray bytes;
        for (const char* at = text; *at != '\0'; ++at) bytes += QByteArray(1, *at) + '\0';
        return bytes;
    };
    QByteArray wma = Content("a.wma");
    ASSERT_TRUE(wma.contains(wide("XYauth")));
    wma.replace(wide("XYauth"), wide("Author"));
    Folder.MakeFile("a.wma", wma);
    EXPECT_EQ(Load(path).Artist, u"First"_s);
    SaveTitle(path);
    EXPECT_EQ(Load(path).Artist, u"First"_s);
    EXPECT_TRUE(Holds("a.wma", wide("Second")));
    Edit(path, [](AudioInformation& tag) { tag.Artist = u"Third"_s; });
    EXPECT_EQ(Load(path).Artist, u"Third"_s);
    EXPECT_TRUE(Holds("a.wma", wide("Second")));
}

TEST_F(TagBytes, TheAttributesOfAWmaKeepTheirOrder) {
    const QString path = Make("a.wma", {"-metadata", "WM/Composer=Aaaa", "-metadata", "WM/Compose2=Bbbb",
                                        "-metadata", "WM/Compose3=Cccc", "-metadata", "WM/Mood=calm"});
    QByteArray wma = Content("a.wma");
    for (const char digit : {'2', '3'}) wma.replace(QByteArray("e\0", 2) + digit, QByteArray("e\0r", 3));
    ASSERT_EQ(wma.count(QByteArray("C\0o\0m\0p\0o\0s\0e\0r", 15)), 3);
    Folder.MakeFile("a.wma", wma);
    const auto order = [&] {
        const QByteArray content = Content("a.wma");
        return QList<bool>{
            content.indexOf(QByteArray("A\0a\0a", 5)) < content.indexOf(QByteArray("B\0b\0b", 5)),
            content.indexOf(QByteArray("B\0b\0b", 5)) < content.indexOf(QByteArray("C\0c\0c", 5)),
            content.indexOf(QByteArray("C\0c\0c", 5)) < content.indexOf(QByteArray("c\0a\0l", 5))};
    };
    const QList<bool> before = order();
    SaveTitle(path);
    EXPECT_EQ(order(), before);
    Edit(path, [](AudioInformation& tag) { tag.Title = u"Newer"_s; });
    EXPECT_EQ(order(), before);
}

TEST_F(TagBytes, AFlacWhoseCommentsLieAboutTheirSizeIsLeftAlone) {
    Make("a.flac", {"-metadata", "artist=Artist"});
    const QByteArray whole = Content("a.flac");
    const qsizetype vendor = whole.indexOf("Lavf") - 4;
    ASSERT_GT(vendor, 0);
    const auto vendorSize = qFromLittleEndian<quint32>(whole.constData() + vendor);
    const qsizetype count = vendor + 4 + vendorSize;
    const std::pair<qsizetype, QByteArray> lies[] = {{vendor, LittleEndian(100'000)},
                                                     {count, LittleEndian(1000)},
                                                     {count + 4, LittleEndian(50'000)},
                                                     {vendor - 3, Bytes({0, 0, 9})},
                                                     {vendor - 3, Bytes({0, 0, 200})}};
    for (const auto& [at, lie] : lies) {
        QByteArray flac = whole;
        flac.replace(at, lie.size(), lie);
        const QString path = Folder.MakeFile("a.flac", flac);
        if (at == count) {
            EXPECT_EQ(Load(path).Artist, u"Artist"_s) << "what can be read is shown";
        }
        EXPECT_THROW(SaveTitle(path), Failure) << at;
        EXPECT_EQ(Content("a.flac"), flac) << at;
        EXPECT_THROW(TagFileSimple(path, u"Simple"_s, {}, {}, {}, {}, {}, {}, 1, 1), Failure) << at;
        EXPECT_EQ(Content("a.flac"), flac) << at;
    }
}

TEST_F(TagBytes, AnMp4WhoseTableCountsMoreThanItHoldsIsLeftAlone) {
    Make("a.m4a", {"-movflags", "+faststart", "-metadata", "title=Old"});
    const QByteArray whole = Content("a.m4a");
    const qsizetype table = whole.indexOf("stco");
    ASSERT_GT(table, 0);
    ASSERT_LT(table, whole.indexOf("mdat")) << "the places are changed by a save";
    for (const quint32 count : {1'000U, 1'000'000U, 0xFFFFFFFFU}) {
        QByteArray lying = whole;
        qToBigEndian(count, lying.data() + table + 8);
        const QString path = Folder.MakeFile("a.m4a", lying);
        EXPECT_EQ(Load(path).Title, u"Old"_s);
        try {
            Edit(path, [](AudioInformation& tag) { tag.Title = QString(20'000, u'x'); });
            FAIL() << "saved";
        } catch (const Failure& failure) {
            EXPECT_TRUE(failure.Description.contains(u"size"_s)) << failure.Description.toStdString();
        }
        EXPECT_EQ(Content("a.m4a"), lying);
    }
}

// A head that counts in 64 bits, as writers put it before sound of any length.
TEST_F(TagBytes, AnMp4IsLookedThroughBehindAHeadOf64Bits) {
    Make("a.m4a", {"-metadata", "title=Old"});
    QByteArray whole = Content("a.m4a");
    const qsizetype sound = whole.indexOf("mdat") - 4;
    ASSERT_GT(sound, 8);
    ASSERT_EQ(whole.mid(sound - 4, 4), "free") << "its place is taken";
    const auto size = qFromBigEndian<quint32>(whole.constData() + sound);
    whole.replace(sound - 8, 16, BigEndian(1) + "mdat" + BigEndian(0) + BigEndian(size + 8));
    const QString path = Folder.MakeFile("a.m4a", whole);
    Edit(path, [](AudioInformation& tag) { tag.Title = u"New"_s; });
    EXPECT_TRUE(Probe("a.m4a").contains("tag:title=new"));
    const qsizetype table = whole.indexOf("stco");
    ASSERT_GT(table, sound);
    qToBigEndian(1'000U, whole.data() + table + 8);
    Folder.MakeFile("a.m4a", whole);
    EXPECT_THROW(Edit(path, [](AudioInformation& tag) { tag.Title = u"New"_s; }), Failure);
    EXPECT_EQ(Content("a.m4a"), whole);
}

TEST_F(TagBytes, AnMp4WhoseTableHasAHeadOf64BitsIsLeftAlone) {
    Make("a.m4a", {"-movflags", "+faststart", "-metadata", "title=Old"});
    QByteArray m4a = Content("a.m4a");
    const qsizetype table = m4a.indexOf("stco") - 4;
    ASSERT_GT(table, 0);
    ASSERT_LT(table, m4a.indexOf("mdat")) << "the places are changed by a save";
    const auto size = qFromBigEndian<quint32>(m4a.constData() + table);
    m4a.replace(table, 8, BigEndian(1) + "stco" + BigEndian(0) + BigEndian(size + 8));
    // All that hold it are longer by as much.
    for (const char* name : {"moov", "trak", "mdia", "minf", "stbl"}) {
        char* place = m4a.data() + m4a.indexOf(name) - 4;
        qToBigEndian(qFromBigEndian<quint32>(place) + 8, place);
    }
    const QString path = Folder.MakeFile("a.m4a", m4a);
    EXPECT_EQ(Load(path).Title, u"Old"_s);
    try {
        Edit(path, [](AudioInformation& tag) { tag.Title = QString(20'000, u'x'); });
        FAIL() << "saved";
    } catch (const Failure& failure) {
        EXPECT_TRUE(failure.Description.contains(u"size"_s)) << failure.Description.toStdString();
    }
    EXPECT_EQ(Content("a.m4a"), m4a);
}

TEST_F(TagBytes, ACommentWithoutANameIsKept) {
    const QString path = MakeFlacWith("MOOD=calm", "MOODxcalm");
    SaveTitle(path);
    EXPECT_TRUE(Holds("a.flac", "MOODxcalm"));
    EXPECT_EQ(Load(path).Title, u"New"_s);
}

TEST_F(TagBytes, NumbersThatDoNotFitAreKept) {
    for (const QByteArray number : {"90000A", "99999", "99999999999999999999"}) {
        Make("a.flac");
        RunTool({"metaflac", "--set-tag=TRACKNUMBER=" + number, "--set-tag=DATE=" + number,
                 Folder.Native("a.flac")});
        SaveTitle(Folder.Path("a.flac"));
        EXPECT_TRUE(Holds("a.flac", "TRACKNUMBER=" + number)) << number.constData();
        EXPECT_TRUE(Holds("a.flac", "DATE=" + number)) << number.constData();
        EXPECT_GT(Load(Folder.Path("a.flac")).Track, 0) << "else a save would fill it in";
    }
    const QString path = Make("a.m4a", {"-metadata", "track=3/12"});
    QByteArray m4a = Content("a.m4a");
    const qsizetype track = m4a.indexOf("trkn") + 4 + 16;
    m4a[track + 2] = '\x9C';
    Folder.MakeFile("a.m4a", m4a);
    const QByteArray item = m4a.sliced(track - 20, 28);
    EXPECT_GT(Load(path).Track, 0);
    SaveTitle(path);
    EXPECT_TRUE(Holds("a.m4a", item));
}

TEST_F(TagBytes, APlainAddressOfAFeedIsKept) {
    const QByteArray feed = Frame("WFED", "http://example.org/feed");
    const QString path = MakeTagged(3, 0, feed + Frame("PRIV", "x"));
    SaveTitle(path);
    EXPECT_TRUE(Holds("a.mp3", feed));
}

// An MP3 with nothing but an old tag of that comment, saved with a new title as the tag page saves it: the
// track that it has none of is filled in.
class OldComment : public TagBytes {
protected:
    QString SaveTitleBeside(const QByteArray& comment) {
        EXPECT_EQ(comment.size(), 30);
        Make("plain.mp3", {"-map_metadata", "-1", "-write_id3v2", "0"});
        QByteArray tag = Id3v1("Title", "Artist", 17);
        tag.replace(97, 30, comment);
        QString path = Folder.MakeFile("a.mp3", Content("plain.mp3") + tag);
        Edit(
            path,
            [](AudioInformation& it) {
                it.Title = u"New"_s;
                it.Year = 2004;
                it.Track = 1;
            },
            1);
        return path;
    }
};

TEST_F(OldComment, OfThirtyLettersKeepsItsLastOneBehindABlank) {
    const QByteArray comment = "a comment that ends in part  B";
    EXPECT_EQ(Load(SaveTitleBeside(comment), 1).Comment, QString::fromLatin1(comment));
}

TEST_F(OldComment, OfThirtyLettersKeepsAllOfThem) {
    const QByteArray comment = "abcdefghijklmnopqrstuvwxyz0123";
    const QString path = SaveTitleBeside(comment);
    EXPECT_EQ(Load(path, 1).Comment, QString::fromLatin1(comment));
    EXPECT_EQ(Load(path, 1).Title, u"New"_s);
    const QByteArray saved = Content("a.mp3");
    EXPECT_THROW(Edit(
                     path, [](AudioInformation& it) { it.Track = 5; }, 1),
                 Failure)
        << "a track that was asked for";
    EXPECT_EQ(Content("a.mp3"), saved);
    Edit(
        path,
        [](AudioInformation& it) {
            it.Comment = u"Short"_s;
            it.Track = 5;
        },
        1);
    EXPECT_EQ(Load(path, 1).Track, 5);
}

TEST_F(TagBytes, ATitleWhoseSizeTakesInOtherFramesLeavesTheFileAlone) {
    const QByteArray artist = Frame("TPE1", QByteArray("\0Artist", 7));
    const QString path = MakeTagged(3, 0, Frame("TIT2", QByteArray("\0Old", 4) + artist));
    const QByteArray before = Content("a.mp3");
    EXPECT_THROW(SaveTitle(path), Failure);
    EXPECT_THROW(Edit(path, [](AudioInformation& tag) { tag.Title.clear(); }), Failure);
    EXPECT_EQ(Content("a.mp3"), before);
}

TEST_F(TagBytes, ATitleOfAWavListWhoseSizeTakesInAnotherItemLeavesTheFileAlone) {
    const QString path = MakeListedWav({{"INAM", "Old"}, {"IART", "Artist!"}});
    QByteArray wav = Content("listed.wav");
    wav.replace(wav.indexOf("INAM") + 4, 4, LittleEndian(4 + 8 + 8));
    Folder.MakeFile("listed.wav", wav);
    EXPECT_THROW(SaveTitle(path), Failure);
    EXPECT_EQ(Content("listed.wav"), wav);
}

TEST_F(TagBytes, ACommentThatIsCutShortStaysBeforeItsRest) {
    Make("a.flac");
    RunTool({"metaflac", "--set-tag=MOOD=calm and quiet", Folder.Native("a.flac")});
    QByteArray flac = Content("a.flac");
    const qsizetype size = flac.indexOf("MOOD=calm and quiet") - 4;
    ASSERT_GT(size, 0);
    flac.replace(size, 4, LittleEndian(9));
    const QString path = Folder.MakeFile("a.flac", flac);
    SaveTitle(path);
    EXPECT_TRUE(Holds("a.flac", "MOOD=calm and quiet"));
    EXPECT_EQ(Load(path).Title, u"New"_s);
}

TEST_F(TagBytes, WhatFollowsANulInAFieldThatNobodyChangedIsKept) {
    const QByteArray artist("\0Artist\0Another", 15);
    const QString path = MakeTagged(3, 0, Frame("TPE1", artist) + Frame("TCON", QByteArray("\0 Jazz ", 7)));
    SaveTitle(path);
    EXPECT_TRUE(Holds("a.mp3", Frame("TPE1", artist)));
    EXPECT_TRUE(Holds("a.mp3", Frame("TCON", QByteArray("\0 Jazz ", 7))));
}

}  // namespace
}  // namespace Sonmira
