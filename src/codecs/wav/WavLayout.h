#pragma once

#include "codecs/sound/AudioBlock.h"

#include <QByteArray>

#include <functional>
#include <optional>

namespace Sonmira {

class InputFile;

// One chunk of a RIFF file: a name, a 32-bit size and as many bytes, padded to an even number. The layout is
// the one that Microsoft and IBM published in 1991.
struct RiffChunk {
    QByteArray Name;   // four letters
    qint64 Start = 0;  // of its content
    qint64 Size = 0;   // in bytes, as its head counts them; they may not all be there
    qint64 Next() const { return Start + Size + Size % 2; }
};

// Up to `count` bytes at a position; fewer at the end.
using BytesReader = std::function<QByteArray(qint64 position, qsizetype count)>;
// `file` must outlive it.
BytesReader BytesReaderOf(const InputFile& file);

// Goes through the chunks of a RIFF file in their order, by their heads alone.
class RiffChunks {
public:
    // From the chunk whose head is at that place, the first of all unless told otherwise.
    explicit RiffChunks(BytesReader reader, qint64 start = FirstChunk) : Read(std::move(reader)), At(start) {}

    // Nothing where no whole head is left. A file of very many chunks is made to waste time and ends early.
    std::optional<RiffChunk> Next();
    // Where the head of the next one should be.
    qint64 Place() const { return At; }

    // Behind "RIFF", the size of the whole and the name of the form.
    static constexpr qint64 FirstChunk = 12;
    static constexpr qint64 HeadSize = 8;

private:
    BytesReader Read;
    qint64 At;
    int Count = 0;
};

// Where the sound of a RIFF WAVE file lies, when that is integer PCM of one or two channels and 8, 16 or 24
// bits. The formats are those of 1991, with the extensible one of 2001.
struct WavLayout {
    PcmFormat Sound;
    bool IsPlain = false;    // the format chunk is the classic one of 16 bytes
    qint64 DataStart = 0;    // the first byte of the sound
    qint64 DataClaimed = 0;  // its bytes by the header, which may not be there
};

// Nothing for any other file.
std::optional<WavLayout> WavLayoutOf(const BytesReader& read);

// Bytes of sound that the header of a RIFF WAVE file counts but that lie beyond the end of the file: what a
// cut file has lost. 0 for a whole file, for one whose writer could not know its size (IsUnknownWavSize), and
// for anything that is no such file.
qint64 MissingWavBytes(const InputFile& file);

// Whether it is a RIFF WAVE file that counts no sound and has none: what follows are other chunks, up to the
// end of the file, rather than the sound of a writer that could not know its size.
bool IsWavWithoutSound(const InputFile& file);

}  // namespace Sonmira
