#include "codecs/tagging/TaggedFile.h"

#include "codecs/tagging/Id3v2Parsing.h"
#include "codecs/tagging/TagStream.h"

#include <algorithm>

namespace Sonmira {

std::unique_ptr<TaggedFile> OpenTagged(const QByteArray& file, const QByteArray& name) {
    TagStream stream(file);
    const QByteArray front = stream.Bytes(0, Id3v2Size(stream.Bytes(0, 10)));
    if (IsNestedTooDeep(front)) return nullptr;
    const QByteArray beginning = stream.Bytes(front.size(), 16);
    const auto holdsAt = [&](qsizetype place, const char* mark) {
        return beginning.sliced(std::min(place, beginning.size())).startsWith(mark);
    };
    if (holdsAt(0, "fLaC")) return OpenFlacFileTags(file);
    if (holdsAt(0, "OggS")) return OpenOggTags(file);
    if (holdsAt(0, "\x30\x26\xB2\x75")) return OpenAsfTags(file);
    if (holdsAt(0, "RIFF") && holdsAt(8, "WAVE")) return OpenWavTags(file);
    if (holdsAt(0, "MAC ") || holdsAt(0, "MP+") || holdsAt(0, "MPCK")) return OpenApeTags(file);
    if (holdsAt(4, "ftyp")) return OpenMp4Tags(file);
    // MPEG audio has no mark of its own that could be trusted: there the ending has the word.
    const QByteArray lower = name.toLower();
    for (const char* ending : {".mp3", ".mp2", ".mp1", ".aac"}) {
        if (lower.endsWith(ending)) return OpenMpegTags(file);
    }
    return nullptr;
}

}  // namespace Sonmira
