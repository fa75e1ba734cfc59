#include "RealEngine.h"
#include "engine/Destination.h"
#include "engine/SelectionDriver.h"
#include "platform/Clock.h"
#include "platform/Paths.h"
#include "support/Sanitized.h"
#include "support/Tool.h"

#include <QMap>
#include <QtEndian>

#include <filesystem>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

constexpr int ThisYear = 2031;

struct BlockFields {
    QByteArray Title = "Title";
    QByteArray Artist = "Artist";
    QByteArray Album = "Album";
    QByteArray Year = "1999";
    QByteArray Comment = "Comment";
    int Track = 4;
    int Genre = 17;
};

// An ID3v1 block, padded with zeros.
QByteArray BlockOf(const BlockFields& fields) {
    const auto padded = [](const QByteArray& text, qsizetype size) { return text.leftJustified(size, '\0'); };
    return "TAG" + padded(fields.Title, 30) + padded(fields.Artist, 30) + padded(fields.Album, 30) +
           padded(fields.Year, 4) + padded(fields.Comment, 29) +
           QByteArray(1, static_cast<char>(fields.Track)) + QByteArray(1, static_cast<char>(fields.Genre));
}

// What an output is to say, an empty text for nothing at all.
struct Said {
    QByteArray Title;
    QByteArray Artist;
    QByteArray Album;
    QByteArray Comment;
    QByteArray Date;
    QByteArray Track;
    QByteArray Genre;
    QByteArray Composer;
    QByteArray EncodedBy = "Sonmira";

    std::string Text() const {
        const QByteArray text = "title=" + Title + " artist=" + Artist + " album=" + Album +
                                " comment=" + Comment + " date=" + Date + " track=" + Track +
                                " genre=" + Genre + " composer=" + Composer + " by=" + EncodedBy;
        return text.toStdString();
    }
};

// The items of an APEv2 tag that an ID3v1 block follows, where other programs do not look for it.
QMap<QByteArray, QByteArray> ApeItemsOf(const QByteArray& file) {
    QByteArray content = ContentOf(file);
    if (content.right(128).startsWith("TAG")) content.chop(128);
    const QByteArray footer = content.right(32);
    QMap<QByteArray, QByteArray> items;
    if (!footer.startsWith("APETAGEX")) return items;
    const auto number = [](const QByteArray& bytes, qsizetype at) {
        return static_cast<qsizetype>(qFromLittleEndian<quint32>(bytes.constData() + at));
    };
    const QByteArray body = content.right(number(footer, 12));
    qsizetype at = 0;
    for (qsizetype left = number(footer, 16); left > 0; --left) {
        const qsizetype size = number(body, at);
        const QByteArray key(body.constData() + at + 8);
        items[key.toLower()] = body.mid(at + 8 + key.size() + 1, size);
        at += 8 + key.size() + 1 + size;
    }
    return items;
}

// What other programs, or the bytes themselves, say of a file: lower-case keys.
QMap<QByteArray, QByteArray> TagsBy(const QByteArray& file) {
    if (file.endsWith(".ape") || file.endsWith(".mpc")) return ApeItemsOf(file);
    QList<QByteArray> command = {
        "ffprobe", "-v", "error", "-show_entries", "format_tags:stream_tags", "-of", "default=nw=1", file};
    if (file.endsWith(".ogg")) command = {"vorbiscomment", "-l", file};
    if (file.endsWith(".flac")) command = {"metaflac", "--export-tags-to=-", file};
    const ToolResult listed = RunTool(command);
    EXPECT_EQ(listed.ExitCode, 0) << listed.Errors.constData();
    QMap<QByteArray, QByteArray> tags;
    for (QByteArray line : listed.Output.split('\n')) {
        if (line.startsWith("TAG:")) line.remove(0, 4);
        const qsizetype sign = line.indexOf('=');
        if (sign > 0) tags[line.first(sign).toLower()] = line.sliced(sign + 1);
    }
    return tags;
}

// Formats spell the keys in ways of their own.
Said SaidBy(const QByteArray& file) {
    const QMap<QByteArray, QByteArray> tags = TagsBy(file);
    const auto first = [&](std::initializer_list<const char*> keys) {
        for (const char* key : keys) {
            if (tags.contains(key)) return tags[key];
        }
        return QByteArray();
    };
    return {first({"title"}),
            first({"artist"}),
            first({"album"}),
            first({"comment", "description"}),
            first({"date", "year", "wm/year"}),
            first({"track", "tracknumber"}),
            first({"genre"}),
            first({"composer"}),
            first({"encoded_by", "encodedby", "encoded-by", "wm/encodedby"})};
}

// One kind of source and what the record holds of it in a full run and in one of a selection.
struct Source {
    const char* Name;  // of the test
    const char* Ending;
    bool HasBlock;               // an ID3v1 block at its end
    bool HasComments;            // tags of its own format
    Said Record;                 // as a tag with a text for the genre says it
    int Number;                  // the genre as a number
    const char* PanelGenre;      // what outputs with the page's tag get
    const char* AloneDate = {};  // where a selection differs
    const char* AloneTrack = {};
};

const Said Complete = {"Title", "Artist", "Album", "Comment", "1999", "4", "Rock", {}};
const Said WithComposer = {"Title", "Artist", "Album", "Comment", "1999", "4", "Rock", "Composer"};
const Said ByNumber = {"Title", "Artist", "Album", "Comment", "1999", "4", "17", {}};
const Said Nothing = {{}, {}, {}, {}, "2031", "1", "Blues", {}};
const Said GenreOnly = {{}, {}, {}, {}, "2031", "1", "Rock", {}};

const Source Sources[] = {
    {"Mp3OfVersion1", "mp3", true, false, Complete, 17, "Rock"},
    {"Mp3OfVersion2", "mp3", false, true, WithComposer, 17, "Rock"},
    {"Ogg", "ogg", false, true, WithComposer, 17, "Rock"},
    {"Wma", "wma", false, true, WithComposer, 17, "Rock", {}, "3"},
    {"M4a", "m4a", false, true, WithComposer, 17, "Rock"},
    {"Aac", "aac", true, false, GenreOnly, 0, "Blues"},
    {"Alac", "alac", true, false, GenreOnly, 0, "Blues"},
    {"FlacWithoutBlock", "flac", false, true, Nothing, 0, "Blues"},
    {"FlacWithBlock", "flac", true, true, Complete, 17, "Rock"},
    {"ApeWithBlock", "ape", true, false, ByNumber, 17, "Rock"},
    {"ApeWithoutBlock", "ape", false, false, {{}, {}, {}, {}, "2010", "1", "Metal", {}}, 9, "Metal", "2008"},
    {"MpcWithBlock", "mpc", true, false, ByNumber, 17, "Rock"},
    {"MpcWithoutBlock", "mpc", false, false, {{}, {}, {}, {}, "2009", "1", "Metal", {}}, 9, "Metal", "2008"},
    {"Wav", "wav", false, false, Nothing, 0, "Blues"},
    {"Avi", "avi", false, true, Nothing, 0, "Blues"},
};

void PrintTo(const Source& source, std::ostream* stream) {
    *stream << source.Name;
}

class TagTransfer : public RealEngine {
public:
    TagTransfer() { OverrideCurrentYear(ThisYear); }
    ~TagTransfer() override { OverrideCurrentYear(0); }

protected:
    // A short file, tagged by other programs with `tags` ("name=value"), and with the block at its end.
    void Make(const QByteArray& name, const QList<QByteArray>& tags, const QByteArray& block = {}) {
        const QByteArray wav = Folder.Native("in.wav");
        // Shorter ones count as broken in some formats.
        Folder.MakeFile("in.wav", WavOf(MakeTone(44100, 2, 97020, 440), WavKind::Signed16));
        const QByteArray file = Folder.Native(name);
        QList<QByteArray> command = {"ffmpeg", "-v", "error", "-y", "-i", wav};
        Folder.MakeFolder(name.left(std::max<qsizetype>(name.lastIndexOf('/'), 0)));
        for (const QByteArray& tag : tags) command += {"-metadata", tag};
        if (name.endsWith(".alac")) command += {"-c:a", "alac", "-f", "mp4"};
        if (name.endsWith(".mp3") && tags.isEmpty()) command += {"-write_id3v2", "0"};
        command += file;
        if (name.endsWith(".ape")) command = {"jmac", "c2", wav, file};
        if (name.endsWith(".mpc")) command = {"mpcenc", "--silent", "--overwrite", wav, file};
        const ToolResult made = RunTool(command);
        ASSERT_EQ(made.ExitCode, 0) << made.Errors.constData();
        if (!block.isEmpty()) Folder.MakeFile(name, ContentOf(file) + block);
    }
    // Converts "song.…", which the caller has made, and returns the output's native name.
    QByteArray To(const char* ending, bool alone = false) {
        const OutputFormat& format =
            *std::find_if(std::begin(OutputFormats), std::end(OutputFormats),
                          [&](const OutputFormat& one) { return QByteArray(one.Ending) == ending; });
        const QByteArray output = Folder.Native(QByteArray("out/song.") + ending);
        std::filesystem::remove(output.toStdString());
        if (alone) {
            SetFormat(format.Name);
            SelectionDriver(Run, Host, Codecs.Parts(), Items)
                .ConvertNode(Items.Records[Items.Records.UpperBound()].Path);
        } else {
            Convert(format.Name);
        }
        EXPECT_EQ(Row().Icon, ConvertedIcon) << ending << ' ' << qPrintable(Row().Progress);
        return output;
    }
    void Take(const QByteArray& name) { TakeFile(Folder.Path(name)); }

    const PanelTag Shown = {u"Page artist"_s, u"Page album"_s, u"1987"_s, u"Page comment"_s, u"17"_s};
};

class TagOf : public TagTransfer, public ::testing::WithParamInterface<Source> {
protected:
    // What the record says, in the output as a run of that kind writes it.
    Said Expected(bool alone) const {
        Said said = GetParam().Record;
        if (alone && GetParam().AloneDate != nullptr) said.Date = GetParam().AloneDate;
        if (alone && GetParam().AloneTrack != nullptr) said.Track = GetParam().AloneTrack;
        return said;
    }
    // The page as it stands, without title and track; AAC and ALAC have put their block there.
    Said ExpectedOfPage() const {
        const QByteArray ending = GetParam().Ending;
        const QByteArray genre = GetParam().PanelGenre;
        if (ending == "aac" || ending == "alac")
            return {{}, "Artist", "Album", "Comment", "1999", {}, genre, {}, {}};
        return {{}, "Page artist", "Page album", "Page comment", "1987", {}, genre, {}, {}};
    }
    void CheckAll(bool alone) {
        for (const OutputFormat& format : OutputFormats) {
            Host.Panel = Shown;
            const QByteArray output = To(format.Ending, alone);
            Said expected = format.FromWav ? ExpectedOfPage() : Expected(alone);
            // The list that others read from a WAV has no composer.
            if (output.endsWith(".wav")) {
                EXPECT_EQ(ContentOf(output).contains("TCOM"), !expected.Composer.isEmpty());
                expected.Composer.clear();
            }
            // A number here is the number of a genre to other programs.
            if (expected.Genre == "17" && output.endsWith(".mp3")) expected.Genre = "Rock";
            EXPECT_EQ(SaidBy(output).Text(), expected.Text()) << format.Ending << " alone: " << alone;
            const QByteArray block = ContentOf(output).right(128);
            if (output.endsWith(".mp3")) {
                const BlockFields fields = {expected.Title,   expected.Artist,  expected.Album,
                                            expected.Date,    expected.Comment, expected.Track.toInt(),
                                            GetParam().Number};
                EXPECT_EQ(block, BlockOf(fields)) << "alone: " << alone;
            }
            if (output.endsWith(".ape") || output.endsWith(".mpc")) {
                const BlockFields fields = {
                    {}, expected.Artist,  expected.Album, expected.Date, expected.Comment,
                    0,  GetParam().Number};
                EXPECT_EQ(block, BlockOf(fields)) << format.Ending << " alone: " << alone;
            }
        }
    }
};

TEST_P(TagOf, ReachesEveryOutputAsItsRouteSays) {
    const Source& source = GetParam();
    const QByteArray name = QByteArray("song.") + source.Ending;
    QList<QByteArray> tags = {"title=Title", "artist=Artist", "album=Album", "comment=Comment",
                              "date=1999",   "track=4",       "genre=Rock",  "composer=Composer"};
    // The program that makes the sources does not know this name.
    if (name.endsWith(".wma")) tags += "WM/Year=1999";
    Make(name, source.HasComments ? tags : QList<QByteArray>(), source.HasBlock ? BlockOf({}) : QByteArray());
    Take(name);
    CheckAll(false);
    CheckAll(true);
}

INSTANTIATE_TEST_SUITE_P(From, TagOf, ::testing::ValuesIn(SomeOf(Sources, 4)),
                         [](const auto& source) { return std::string(source.param.Name); });

TEST_F(TagTransfer, APageWhoseGenreIsNoNumberLeavesNoTagAtAll) {
    Make("song.ogg", {"title=Title", "artist=Artist", "genre=Rock"});
    Take("song.ogg");
    for (const QString& genre : {u"Rock"_s, QString()}) {
        Host.Panel = Shown;
        Host.Panel.Genre = genre;
        for (const char* ending : {"ape", "flac", "mpc"}) {
            const QByteArray output = To(ending);
            EXPECT_EQ(SaidBy(output).Text(), (Said{{}, {}, {}, {}, {}, {}, {}, {}, {}}).Text()) << ending;
            EXPECT_FALSE(ContentOf(output).contains("APETAGEX")) << ending;
            EXPECT_FALSE(ContentOf(output).right(128).startsWith("TAG")) << ending;
        }
    }
}

TEST_F(TagTransfer, AFreeGenreTravelsAsTextAndAsTheNumberForOther) {
    Make("song.ogg", {"title=Title", "genre=Sea Shanty"});
    Take("song.ogg");
    for (const char* ending : {"mp3", "ogg", "wav", "wma"}) {
        EXPECT_EQ(SaidBy(To(ending)).Genre, "Sea Shanty") << ending;
    }
    EXPECT_EQ(ContentOf(To("mp3")).back(), char{12});
    for (const char* ending : {"ape", "flac", "mpc"}) {
        Host.Panel = Shown;
        Host.Panel.Genre = u"12"_s;
        EXPECT_EQ(SaidBy(To(ending)).Genre, "Sea Shanty") << ending;
        Host.Panel.Genre = u"3"_s;
        EXPECT_EQ(SaidBy(To(ending)).Genre, AudioInformation::GenreName(12).toUtf8()) << ending;
    }
}

TEST_F(TagTransfer, AGenreOfTwelveOnThePageWithoutATextIsNone) {
    Make("song.wav", {});
    Take("song.wav");
    Host.Panel = Shown;
    Host.Panel.Genre = u"12"_s;
    for (const char* ending : {"ape", "flac", "mpc"}) {
        const Said said = SaidBy(To(ending));
        EXPECT_EQ(said.Genre, "") << ending;
        EXPECT_EQ(said.Artist, "Page artist") << ending;
    }
}

TEST_F(TagTransfer, AYearOfLettersBecomesThisYearAndATrackOf103TheFirst) {
    Make("song.ape", {}, BlockOf({"Title", "Artist", "Album", "year", "Comment", 103, 17}));
    Take("song.ape");
    for (const char* ending : {"mp3", "ogg", "wav", "wma"}) {
        const Said said = SaidBy(To(ending));
        EXPECT_EQ(said.Date, "2031") << ending;
        EXPECT_EQ(said.Track, "1") << ending;
        EXPECT_EQ(said.Title, "Title") << ending;
    }
}

TEST_F(TagTransfer, AYearThatOnlyBeginsWithANumberEndsTheTagAndNotTheConversion) {
    Make("song.ape", {}, BlockOf({"Title", "Artist", "Album", "199x", "Comment", 4, 17}));
    Take("song.ape");
    for (const char* ending : {"mp3", "ogg", "wav", "wma"}) {
        EXPECT_EQ(SaidBy(To(ending)).Title, "") << ending;
    }
}

TEST_F(TagTransfer, AYearOfThreeDigitsIsOneAndTheTagArrives) {
    Make("song.ape", {}, BlockOf({"Title", "Artist", "Album", "199", "Comment", 4, 17}));
    Take("song.ape");
    for (const char* ending : {"mp3", "ogg", "wav", "wma"}) {
        const Said said = SaidBy(To(ending));
        EXPECT_EQ(said.Title, "Title") << ending;
        EXPECT_EQ(said.Date.toInt(), 199) << ending;
    }
}

TEST_F(TagTransfer, TheBlockOfAnAacStaysOnThePageForTheFilesAfterIt) {
    Make("Music/a.aac", {}, BlockOf({}));
    Make("Music/b.wav", {});
    AddMusic();
    Convert(FormatName::Flac);
    ASSERT_EQ(Host.Rows.size(), 2U);
    EXPECT_EQ(SaidBy(Folder.Native("out/Music/b.flac")).Text(),
              (Said{{}, "Artist", "Album", "Comment", "1999", {}, "Blues", {}, {}}).Text());
}

TEST_F(TagTransfer, NothingOfAFileReachesTheOneAfterIt) {
    Make("Music/a.ogg", {"title=Title", "artist=Artist", "composer=Composer", "copyright=Copyright"});
    Make("Music/b.wav", {});
    AddMusic();
    Convert(FormatName::Mp3);
    ASSERT_EQ(Host.Rows.size(), 2U);
    EXPECT_EQ(SaidBy(Folder.Native("out/Music/a.mp3")).Composer, "Composer");
    EXPECT_EQ(TagsBy(Folder.Native("out/Music/a.mp3"))["copyright"], "Copyright");
    EXPECT_EQ(SaidBy(Folder.Native("out/Music/b.mp3")).Text(), Nothing.Text());
    EXPECT_FALSE(TagsBy(Folder.Native("out/Music/b.mp3")).contains("copyright"));
}

TEST_F(TagTransfer, TheWavOnTheWayToAnEncoderIsTaggedToo) {
    Make("song.ogg", {"title=Title", "artist=Artist", "album=Album", "comment=Comment", "date=1999",
                      "track=4", "genre=Rock"});
    Take("song.ogg");
    const QByteArray copy = ToNative(TempWavPathFor(Folder.Path("song.ogg"), 3));
    for (const char* ending : {"ape", "flac", "mpc"}) {
        std::filesystem::remove(copy.toStdString());
        To(ending);
        EXPECT_EQ(SaidBy(copy).Text(), Complete.Text()) << ending;
    }
}

TEST_F(TagTransfer, AFlacBehindAnAacWithATitleKeepsItsComments) {
    Make("Music/a.aac", {}, BlockOf({}));
    Make("Music/b.flac", {"title=Own title", "artist=Own artist", "album=Own album", "comment=Own comment",
                          "date=1977", "genre=Jazz"});
    AddMusic();
    Convert(FormatName::Ogg);
    ASSERT_EQ(Host.Rows.size(), 2U);
    EXPECT_EQ(SaidBy(Folder.Native("out/Music/b.ogg")).Text(),
              (Said{"Own title", "Own artist", "Own album", "Own comment", "1977", "1", "Jazz", {}}).Text());
}

}  // namespace
}  // namespace Sonmira
