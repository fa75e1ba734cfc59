#include "codecs/AlacDecoder.h"

#include "codecs/WavDecoding.h"
#include "codecs/read/MediaReader.h"
#include "platform/Failure.h"

extern "C" {
#include <libavformat/avformat.h>
}

namespace Sonmira {

qint16 AlacDecoder::IsAlac(const QString& path) {
    bool is = false;
    PassOver([&] {
        WithMemoryChecked([&] {
            const MediaInput input(std::make_shared<const InputFile>(path));
            is = input.Sound().codecpar->codec_id == AV_CODEC_ID_ALAC;
        });
    });
    return is ? 1 : 0;
}

qint16 AlacDecoder::DecodeToWav(const QString& path, const QString& outputPath) {
    DecodeIntoWavOrPart(path, outputPath, OpenByMediaReader, [this](qint64 done, qint64 total) {
        const ProgressCount count(done, total);
        if (Progress) Progress(count.Done, count.Total);
        return true;
    });
    return 1;
}

qint16 AlacDecoder::TrackInfo(const QString& path, double& duration, qint32& rate, qint32& channels,
                              qint32& bits) {
    duration = 0;
    rate = 0;
    channels = 0;
    bits = 0;
    const bool read = PassOver([&] {
        WithMemoryChecked([&] {
            MediaReader reader(path);
            const qint64 frames = reader.Length();
            // First, because a caller may give one variable for all that he does not need.
            const qint64 seconds = frames / reader.Format().Rate;
            duration = static_cast<double>(seconds);
            rate = reader.Format().Rate;
            channels = reader.Format().Channels;
            bits = reader.Bits();
        });
    });
    return read ? 1 : 0;
}

}  // namespace Sonmira
