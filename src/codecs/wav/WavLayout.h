#pragma once

#include "codecs/sound/AudioBlock.h"
#include "codecs/wav/RiffChunks.h"

namespace Sonmira {

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
