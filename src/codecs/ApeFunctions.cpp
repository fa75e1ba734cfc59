#include "codecs/ApeFunctions.h"

#include "codecs/ape/ApeFileReader.h"
#include "codecs/ape/ApeLink.h"
#include "codecs/ape/Decode.h"
#include "codecs/ape/Encode.h"
#include "codecs/read/MediaReader.h"
#include "codecs/tagging/Id3v1.h"
#include "codecs/tagging/SimpleTags.h"
#include "platform/Failure.h"
#include "platform/Files.h"

#include <limits>

namespace Sonmira {

namespace {

qint64 SecondsOf(const QString& path) {
    const auto named = std::make_shared<const InputFile>(path);
    const auto link = ReadApeLink(path, *named);
    const auto file = link ? link->Image : named;
    const auto seconds = [&](qint64 blocks, qint64 rate) {
        if (!link) return blocks / rate;
        const ApeLink::Part part = link->PartOf(blocks);
        return (part.Finish - part.Start) / rate;
    };
    if (const auto reader = ApeFileReader::Open(file)) return seconds(reader->Blocks(), reader->Sound().Rate);
    MediaReader reader(file);
    return seconds(reader.Length(), reader.Format().Rate);
}

}  // namespace

void CompressFile(const QString& wav, const QString& ape, qint32 level, const ApeProgressCallback& progress,
                  const qint32& killFlag) {
    WithMemoryChecked([&] { EncodeApe(wav, ape, level, progress, killFlag); });
}

void DecompressFile(const QString& ape, const QString& wav, const ApeProgressCallback& progress,
                    const qint32& killFlag) {
    WithMemoryChecked([&] { DecodeApe(ape, wav, progress, killFlag); });
}

qint32 GetDurationTrack(const QString& path) {
    qint64 seconds = 0;
    PassOver([&] { seconds = WithMemoryChecked([&] { return SecondsOf(path); }); });
    return static_cast<qint32>(std::clamp<qint64>(seconds, 0, std::numeric_limits<qint32>::max()));
}

void GetID3Tag(const QString& path, std::array<char, 128>& block) {
    PassOver([&] {
        WithMemoryChecked([&] {
            if (const auto found = ReadId3Block(path)) block = *found;
        });
    });
}

void TagFileSimple(const QString& path, const QString& artist, const QString& album, const QString& title,
                   const QString& comment, const QString& genre, const QString& year, const QString& track,
                   qint32 clearFirst, qint32 useOldId3) {
    WithMemoryChecked([&] {
        WriteSimpleTags(path, {artist, album, title, comment, genre, year, track}, clearFirst != 0,
                        useOldId3 != 0);
    });
}

}  // namespace Sonmira
