#include "engine/TagTransfer.h"

#include "engine/OutputFormats.h"
#include "engine/Run.h"
#include "engine/RunView.h"
#include "platform/Clock.h"
#include "platform/Failure.h"
#include "platform/Paths.h"
#include "platform/Values.h"

#include <algorithm>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// The genre that stands for a text of its own or for none at all in older files.
constexpr qint16 FallbackGenre = 9;

// The ID3v1 block by its places. Fields keep their padding.
class Id3Fields {
public:
    Id3Fields(ApeCodec& ape, const QString& path) {
        Id3Bytes block{};
        ape.GetID3Tag(path, block);
        Bytes = QByteArray(block.data(), static_cast<qsizetype>(block.size()));
    }

    bool IsTag() const { return Bytes.startsWith("TAG"); }
    QString Title() const { return Text(3, 30); }
    QString Artist() const { return Text(33, 30); }
    QString Album() const { return Text(63, 30); }
    QString Year() const { return Text(93, 4); }
    // One character more than the track leaves, so that the byte before it is part of the text.
    QString Comment() const { return Text(97, 29); }
    qint16 Track() const { return static_cast<quint8>(Bytes[126]); }
    qint16 Genre() const { return static_cast<quint8>(Bytes[127]); }

private:
    // The standard says Latin-1, and many programs write UTF-8.
    QString Text(qsizetype place, qsizetype length) const {
        const QByteArray field = Bytes.sliced(place, length);
        QString text = FromNarrow(field);
        if (!HoldsRawBytes(text)) return text;
        // The field may end in the middle of a character. Other characters tell whether it does.
        for (const qsizetype cut : {1, 2, 3}) {
            QString whole = FromNarrow(field.chopped(cut));
            const bool isWide = std::any_of(whole.begin(), whole.end(), [](QChar c) { return c > u'\x7F'; });
            if (isWide && !HoldsRawBytes(whole)) return whole;
        }
        return QString::fromLatin1(field);
    }

    QByteArray Bytes;
};

void TakeTexts(TagRecord& tag, const Id3Fields& block) {
    tag.Title = block.Title();
    tag.Artist = block.Artist();
    tag.Album = block.Album();
    tag.Year = block.Year();
    tag.Comment = block.Comment();
    tag.Track = block.Track();
    tag.GenreIndex = block.Genre();
}

}  // namespace

void ReadTagOfAac(Run& run, RunView& view, Components parts, QString& heldTitle) {
    const Id3Fields block(parts.Ape, run.CurrentInput());
    if (!block.IsTag()) return;
    heldTitle = block.Title();
    const PanelTag panel{block.Artist(), block.Album(), block.Year(), block.Comment(),
                         PlainNumber(block.Genre())};
    view.SetPanelTag(panel);
    if (WithoutBlanks(run.Tag().GenreText).isEmpty()) {
        run.Tag().GenreText =
            AudioInformation::GenreName(ToInteger16(LeadingNumber(view.GetPanelTag().Genre)));
    }
}

void ReadTagOfStream(Run& run, RunView& view, AudioInformation& tags, const DriverRules& rules,
                     const Statements& statement) {
    const auto load = [&](qint16 kind) {
        tags.SetTagKind(kind);
        statement([&] { tags.LoadTag(run.CurrentInput()); });
    };
    load(1);
    if (tags.Title.isEmpty() && tags.Artist.isEmpty()) load(2);
    // Held apart: the tag page works on the same object, and the user may turn to it at any yield.
    run.KeepTag(tags);
    const TagValues& loaded = run.File().Loaded;
    view.Yield();
    run.Tag().Title = loaded.Title;
    run.Tag().Artist = loaded.Artist;
    run.Tag().Album = loaded.Album;
    run.Tag().GenreIndex = loaded.Genre;
    run.Tag().GenreText = loaded.GenreString;
    if (run.Tag().GenreText.isEmpty()) run.Tag().GenreText = AudioInformation::GenreName(loaded.Genre);
    run.Tag().Comment = loaded.Comment;
    run.Tag().Year = PlainNumber(loaded.Year);
    const int offset = EndsInUpper(run.CurrentInput(), u"WMA") ? rules.WmaTrackOffset : 0;
    statement([&] { run.Tag().Track = Checked16(qint64{loaded.Track} + offset); });
}

void ReadTagOfFlac(Run& run, Components parts, const QString& heldTitle) {
    const FlacDecoder& comments = parts.FlacCodec1;
    run.Tag().Title = comments.Title();
    run.Tag().Artist = comments.Artist();
    run.Tag().Album = comments.Album();
    run.Tag().Year = comments.Year();
    run.Tag().Comment = comments.Comment();
    run.Tag().Track = 1;
    run.Tag().GenreIndex = FallbackGenre;
    run.Tag().GenreText = comments.Genre();
    if (!WithoutBlanks(heldTitle).isEmpty()) return;
    // No look at the marker: a file without a block gets fields of zeros.
    TakeTexts(run.Tag(), Id3Fields(parts.Ape, run.CurrentInput()));
    run.Tag().GenreText = AudioInformation::GenreName(run.Tag().GenreIndex);
}

void ReadTagOfBlock(Run& run, Components parts, QStringView untaggedYear) {
    const Id3Fields block(parts.Ape, run.CurrentInput());
    if (block.IsTag()) {
        TakeTexts(run.Tag(), block);
        run.Tag().GenreText = PlainNumber(block.Genre());
        return;
    }
    run.Tag() = TagRecord{};
    run.Tag().Track = 0;
    run.Tag().GenreIndex = FallbackGenre;
    run.Tag().Year = untaggedYear.toString();
}

namespace {

// The genre number that means a text of its own.
constexpr qint16 FreeTextGenre = TagValues::OtherGenre;
constexpr int GenreNames = 148;
// A track of this number counts as none.
constexpr qint16 NoTrack = 103;

void WritePanelTag(const Run& run, RunView& view, ApeCodec& ape, const QString& outputPath) {
    const PanelTag panel = view.GetPanelTag();
    // The genre on the page decides only where the genre comes from; where it is no number, no tag is
    // written.
    const double number = ToNumber(panel.Genre);
    SimpleTagFields tag;
    tag.Artist = panel.Artist;
    tag.Album = panel.Album;
    tag.Comment = panel.Comment;
    tag.Genre = number == FreeTextGenre ? run.File().Tag.GenreText
                                        : AudioInformation::GenreName(run.File().Tag.GenreIndex);
    tag.Year = panel.Year;
    ape.TagFileSimple(outputPath, tag);
}

bool TakesTagOfPage(const QString& path) {
    return std::any_of(std::begin(OutputTable), std::end(OutputTable), [&](const OutputRow& row) {
        return row.Tag == OutputTag::OfPage && EndsInUpper(path, row.Ending);
    });
}

// A free text that is the name of a standard genre gets its number.
qint16 GenreNumber(const TagRecord& tag) {
    if (tag.GenreIndex != FreeTextGenre || WithoutBlanks(tag.GenreText).isEmpty()) return tag.GenreIndex;
    for (qint16 index = 0; index < GenreNames; ++index) {
        if (AudioInformation::GenreName(index) == tag.GenreText) return index;
    }
    return tag.GenreIndex;
}

void WriteRecord(Run& run, AudioInformation& file, qint16 kind, const QString& outputPath) {
    TagRecord& tag = run.Tag();
    static_cast<TagValues&>(file) = run.File().Loaded;
    file.SetTagKind(kind);
    file.Title = tag.Title;
    file.Artist = tag.Artist;
    file.Album = tag.Album;
    file.GenreString = WithoutBlanks(tag.GenreText).toString();
    file.Genre = GenreNumber(tag);
    file.Comment = tag.Comment;
    if (LeadingNumber(tag.Year) == 0) tag.Year = PlainNumber(CurrentYear());
    file.Year = ToInteger32(tag.Year);
    if (tag.Track == 0 || tag.Track == NoTrack) tag.Track = 1;
    file.Track = EndsInUpper(outputPath, u"WMA") ? Checked16(qint64{tag.Track} - 1) : tag.Track;
    file.EncodedBy = u"Sonmira"_s;
    file.SaveTag(outputPath, AudioInformation::Saving::InPlace);
}

}  // namespace

void WriteOutputTag(Run& run, RunView& view, Components parts, const QString& outputPath) {
    PassOver([&] {
        if (TakesTagOfPage(outputPath)) {
            WritePanelTag(run, view, parts.Ape, outputPath);
            return;
        }
        for (const qint16 kind : {qint16{1}, qint16{2}}) WriteRecord(run, parts.Tags, kind, outputPath);
    });
}

}  // namespace Sonmira
