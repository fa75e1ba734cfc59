#include "codecs/MpcDecoder.h"

#include "codecs/WavDecoding.h"
#include "codecs/mpc/MpcReader.h"
#include "platform/Files.h"

namespace Sonmira {

namespace {

std::unique_ptr<SoundReader> OpenByMpcReader(std::shared_ptr<const InputFile> file) {
    return std::make_unique<MpcReader>(std::move(file));
}

}  // namespace

void MpcDecoder::DecodeToWav(const QString& path, const QString& outputPath) {
    Stopped = false;
    DecodeIntoWav(path, outputPath, OpenByMpcReader, [this](qint64 done, qint64 total) {
        const ProgressCount count(done, total);
        if (Progress) Progress(count.Total, count.Done);
        return !Stopped;
    });
}

qint32 MpcDecoder::TrackLength(const QString& path) {
    return WholeSeconds(path, OpenByMpcReader);
}

}  // namespace Sonmira
