#include "engine/OutputFormats.h"
#include "engine/Run.h"
#include "engine/RunView.h"
#include "engine/TagTransfer.h"
#include "platform/Clock.h"
#include "platform/Failure.h"
#include "platform/Paths.h"
#include "platform/Values.h"

#include <algorithm>

namespace Sonmira {

using namespace Qt::StringLiterals;

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
    SimpleTag tag;
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
