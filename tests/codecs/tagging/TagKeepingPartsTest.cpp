// What a save keeps in WAV and MP4 files, whose tags lie between other parts.
#include "TagKeepingTest.h"
#include "platform/Failure.h"

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

TEST_F(TagKeeping, TheListOfAWavKeepsWhatNobodyChanged) {
    const QString path = MakeListedWav(
        {{"INAM", "Title"}, {"ICOP", "Their copyright"}, {"ITCH", "Technician"}, {"ISFT", "Some program"}});
    const AudioInformation tag = Load(path);
    EXPECT_EQ(tag.Copyright, u"Their copyright"_s);
    EXPECT_EQ(tag.EncodedBy, u"Technician"_s);
    Edit(path, [](AudioInformation& it) { it.Title = u"New"_s; });
    const QByteArray after = Content("listed.wav");
    for (const char* text : {"Their copyright", "Technician", "Some program"}) {
        EXPECT_TRUE(after.contains(text)) << text;
    }
    EXPECT_TRUE(Probe("listed.wav").contains("tag:title=new"));
}

TEST_F(TagKeeping, TextsOfAWavListThatAreNoUtf8AreReadAsLatin1AndKeepTheirBytes) {
    const QString path = MakeListedWav({{"INAM", "Caf\xE9"}, {"IENG", "J\xFCrgen"}});
    EXPECT_EQ(Load(path).Title, u"Café"_s);
    Edit(path, [](AudioInformation& it) { it.Artist = u"New"_s; });
    EXPECT_EQ(Load(path).Title, u"Café"_s);
    EXPECT_TRUE(Content("listed.wav").contains("Caf\xE9"));
    EXPECT_TRUE(Content("listed.wav").contains("J\xFCrgen")) << "an item that no field names";
}

TEST_F(TagKeeping, AnOldFrameInAWavThatTheLibraryCannotKeepLeavesTheFileAlone) {
    const QByteArray frames =
        Frame("TIT2", QByteArray("\0Old", 4)) + Frame("RVAD", QByteArray("\3\x10\x12\x34\x56\x78", 6));
    const QByteArray tag = QByteArray("ID3\3\0\0\0\0\0", 9) + static_cast<char>(frames.size()) + frames;
    Make("a.wav");
    QByteArray wav = Content("a.wav") + "id3 " + LittleEndian(static_cast<quint32>(tag.size())) + tag;
    qToLittleEndian(static_cast<quint32>(wav.size()) - 8, wav.data() + 4);
    const QString path = Folder.MakeFile("a.wav", wav);
    EXPECT_EQ(Load(path).Title, u"Old"_s);
    EXPECT_THROW(Edit(path, [](AudioInformation& it) { it.Title = u"New"_s; }), Failure);
    EXPECT_EQ(Content("a.wav"), wav);
}

TEST_F(TagKeeping, AnMp4WithAnItemThatWouldBeLostIsLeftAlone) {
    Make("a.m4a", {"-metadata", "title=Old", "-metadata", "synopsis=Text"});
    QByteArray file = Content("a.m4a");
    const qsizetype item = file.indexOf("ldes");
    ASSERT_GT(item, 0);
    file.replace(item, 4, "xyzw");
    file[item + 15] = 0;  // the kind of the content: bytes
    const QString path = Folder.MakeFile("a.m4a", file);
    EXPECT_EQ(Load(path).Title, u"Old"_s);
    EXPECT_THROW(Edit(path, [](AudioInformation& tag) { tag.Title = u"New"_s; }), Failure);
    EXPECT_EQ(Content("a.m4a"), file);
}

TEST_F(TagKeeping, ATrackOfAnMp4KeepsItsTotal) {
    const QString path = Make("a.m4a", {"-metadata", "track=3/12"});
    Edit(path, [](AudioInformation& tag) { tag.Track = 5; });
    EXPECT_TRUE(Probe("a.m4a").contains("track=5/12")) << Probe("a.m4a").constData();
}

TEST_F(TagKeeping, AFieldThatOnlyTheListOfAWavHasCanBeEmptied) {
    const QString path = MakeListedWav({{"INAM", "Title"}, {"ICOP", "Their copyright"}});
    Edit(path, [](AudioInformation& tag) { tag.Artist = u"Artist"_s; });
    Edit(path, [](AudioInformation& tag) { tag.Copyright.clear(); });
    EXPECT_EQ(Load(path).Copyright, QString());
    EXPECT_FALSE(Content("listed.wav").contains("Their copyright"));
}

// The library knows one list and one tag, and one item of a name.
TEST_F(TagKeeping, AWavWithPartsThatWouldBeLostIsLeftAlone) {
    const QByteArray artist = InfoList({{"IART", "Artist"}});
    const QByteArray title = InfoList({{"INAM", "Title"}});
    const QByteArray frames = Frame("TIT2", QByteArray("\0Old", 4));
    const QByteArray tag = QByteArray("ID3\3\0\0\0\0\0", 9) + static_cast<char>(frames.size()) + frames;
    const QByteArray chunk = "id3 " + LittleEndian(static_cast<quint32>(tag.size())) + tag;
    QByteArray marked = chunk;
    marked[8 + 10 + 8] = static_cast<char>(0x80);
    QByteArray unpadded = InfoList({{"IART", "Abcd"}, {"INAM", "Title"}});
    unpadded.replace(QByteArray("Abcd\0\0", 6), QByteArray("Abcd\0", 5));
    unpadded.append('\0');
    const std::pair<const char*, QByteArray> cases[] = {
        {"two lists", title + artist},
        {"two tags", chunk + chunk},
        {"an item twice", InfoList({{"INAM", "One"}, {"INAM", "Two"}})},
        {"an item of odd length without its pad", unpadded},
        {"a frame that others are to drop", marked}};
    Make("a.wav");
    const QByteArray plain = Content("a.wav");
    for (const auto& [what, chunks] : cases) {
        QByteArray wav = plain + chunks;
        qToLittleEndian(static_cast<quint32>(wav.size()) - 8, wav.data() + 4);
        const QString path = Folder.MakeFile("parts.wav", wav);
        EXPECT_FALSE(Load(path).Title.isEmpty() && Load(path).Artist.isEmpty()) << what;
        EXPECT_THROW(Edit(path, [](AudioInformation& it) { it.Title = u"New"_s; }), Failure) << what;
        EXPECT_EQ(Content("parts.wav"), wav) << what;
    }
}

TEST_F(TagKeeping, AnMp4WithTwoItemsOfOneNameIsLeftAlone) {
    const QString path = Make("a.m4a", {"-metadata", "composer=One", "-metadata", "copyright=Two"});
    QByteArray m4a = Content("a.m4a");
    ASSERT_EQ(m4a.count("cprt"), 1);
    m4a.replace("cprt", "\251wrt");
    Folder.MakeFile("a.m4a", m4a);
    EXPECT_THROW(Edit(path, [](AudioInformation& tag) { tag.Title = u"New"_s; }), Failure);
    EXPECT_EQ(Content("a.m4a"), m4a);
}

}  // namespace
}  // namespace Sonmira
