#pragma once

#include "codecs/tagging/TagValues.h"

#include <memory>

namespace Sonmira {

// One opened file with room for tags, whatever they are called in its format.
class TaggedFile {
public:
    virtual ~TaggedFile() = default;

    // The fields of the tag of that kind (see AudioInformation).
    virtual TagValues Read(qint16 kind) = 0;
    // Whether a Write of these values would change nothing.
    virtual bool IsUpToDate(qint16 kind, const TagValues& values) = 0;
    // What a Write of these values changes.
    virtual TagEdits Edits(qint16 kind, const TagValues& values) = 0;
    // All parts of all tags of the file.
    virtual RawFields Raw() = 0;
    // Writes what differs and returns whether the file took it.
    virtual bool Write(qint16 kind, const TagValues& values) = 0;
};

// Opens the file (native path) by what it begins with; MPEG audio, which begins with nothing certain, by the
// ending of `name`. Null for a file of which no tag is understood here: its tag reads as empty.
std::unique_ptr<TaggedFile> OpenTagged(const QByteArray& file, const QByteArray& name);

// One kind of file each; null for others.

// Monkey's Audio and Musepack: APEv2, and what only an ID3v1 tag behind it says.
std::unique_ptr<TaggedFile> OpenApeTags(const QByteArray& file);

// WMA: a content description of four texts, and attributes by name. Tracks are counted from 0.
// Source of the facts: Advanced Systems Format, Microsoft, and the attribute names of Windows Media.
std::unique_ptr<TaggedFile> OpenAsfTags(const QByteArray& file);

// FLAC, perhaps with an ID3v2 tag in front, and with an ID3v1 block at its end or in a block of ours. Null
// for what is none.
std::unique_ptr<TaggedFile> OpenFlacFileTags(const QByteArray& file);

// MP4: atoms of the item list; two fields go by free-form atoms. A file whose list holds an item that the
// library cannot keep is not written.
std::unique_ptr<TaggedFile> OpenMp4Tags(const QByteArray& file);

// MPEG audio: both kinds of ID3, apart from each other. Any file may carry them.
std::unique_ptr<TaggedFile> OpenMpegTags(const QByteArray& file);

// Vorbis, FLAC and Opus in Ogg, each with Vorbis comments in a packet of its own. Null for what is none.
std::unique_ptr<TaggedFile> OpenOggTags(const QByteArray& file);

// WAV: ID3v2 holds everything; the INFO list repeats what it can for programs that know only that.
std::unique_ptr<TaggedFile> OpenWavTags(const QByteArray& file);

}  // namespace Sonmira
