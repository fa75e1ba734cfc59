#pragma once

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

}  // namespace Sonmira
