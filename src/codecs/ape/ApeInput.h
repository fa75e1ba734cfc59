#pragma once

#include "codecs/ape/ApeFormat.h"

#include <QStringView>

#include <functional>
#include <memory>
#include <span>

namespace Sonmira {

// The sound that is to be encoded, as packed PCM of one or two channels and 8, 16 or 24 bits.
class ApeInput {
public:
    virtual ~ApeInput() = default;

    const PcmFormat& Sound() const { return Format; }
    // Blocks of the whole sound; where the source does not tell, what is expected of it.
    qint64 Blocks() const { return Count; }
    // Bytes of the source that stand before its sound and behind it, to be kept word for word.
    qint64 HeadBytes() const { return Head; }
    qint64 TailBytes() const { return Tail; }

    // Fills `target` with the next bytes of the sound, as far as there are any; returns how many.
    virtual std::size_t Read(std::span<std::byte> target) = 0;
    // Bytes of the head or the tail, from byte `from` of it on. All must be there.
    virtual void ReadHead(qint64 from, std::span<std::byte> target) = 0;
    virtual void ReadTail(qint64 from, std::span<std::byte> target) = 0;
    // At the end: fails when the source holds less than its header counts, or could be read no further.
    virtual void CheckEnd() = 0;

protected:
    PcmFormat Format;
    qint64 Count = 0;
    qint64 Head = 0;
    qint64 Tail = 0;
};

// Opens a sound file at an inner path. A PCM WAV of up to two channels and 24 bits is taken as it is, header
// and trailing chunks and all; every other sound is decoded, mixed to two channels where it has more, and
// brought to 24 bits unless its decoder gives 16. Counting the blocks of such a sound takes time; `givesUp`
// is asked meanwhile, and true ends it with a guess. Fails with a text.
std::unique_ptr<ApeInput> OpenApeInput(QStringView path, std::function<bool()> givesUp = {});

}  // namespace Sonmira
