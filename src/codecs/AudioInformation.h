#pragma once

#include "codecs/tagging/TagValues.h"

namespace Sonmira {

// The tags of one file at a time: loaded into the fields, changed there, saved from them. Reads and writes
// ID3v1 and ID3v2 (MP3, AAC), Vorbis comments (Ogg, FLAC), APEv2 (APE, Musepack), ASF attributes (WMA), MP4
// atoms (M4A, ALAC) and, in WAV files, ID3v2 beside the INFO list.
class AudioInformation : public TagValues {
public:
    virtual ~AudioInformation() = default;

    // Empties all fields.
    void Clear() { static_cast<TagValues&>(*this) = TagValues(); }

    // Which kind of tag the next LoadTag or SaveTag concerns: 1 is ID3v1, 2 is ID3v2. For files that have one
    // kind of tag both mean that one. Other numbers fail with InvalidPropertyValue.
    void SetTagKind(qint16 kind);
    qint16 TagKind() const { return Kind; }

    // Fills all fields from the file; a file without a tag gives empty texts, the genre "other" and zeros.
    // Fails only for a folder and for a file that is missing or cannot be opened, and leaves the fields then.
    virtual void LoadTag(const QString& path);

    // How a save treats the file: a user's own is changed in a copy that takes its place at the end, so that
    // a failure leaves it as it was; one that the program has just made is changed where it is, which is
    // faster.
    enum class Saving { ThroughCopy, InPlace };

    // Writes the fields into the file. Only what differs from what stands there is changed, so that nothing
    // that the fields cannot name (pictures, further values, unknown frames) is lost; a field that the format
    // cannot hold is passed over. A text is cut at its first NUL, which is padding. A file that says all of
    // it already is left alone. Fails where there is no such file, no room, or no tag in files of that
    // format.
    virtual void SaveTag(const QString& path, Saving saving = Saving::ThroughCopy);

    // The name of a genre, 0 to 147, in the order of ID3v1 and its first extension; else the empty text.
    static QString GenreName(int index);

private:
    void Save(const QByteArray& file, Saving saving);

    qint16 Kind = 1;
};

}  // namespace Sonmira
