#include "codecs/WavDecoders.h"

#include "codecs/WavDecoding.h"
#include "codecs/flac/FlacReader.h"
#include "codecs/mpc/MpcReader.h"
#include "codecs/read/MediaReader.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <initializer_list>
#include <utility>

extern "C" {
#include <libavformat/avformat.h>
}

namespace Sonmira {

void AacDecoder::SetInputFile(const QString& path) {
    Input.clear();
    // Opening decodes the first frames.
    WithMemoryChecked([&] { OpenByMediaReader(std::make_shared<const InputFile>(path)); });
    Input = path;
}

void AacDecoder::SetOutputFile(const QString& path) {
    Output = path;
}

qint16 AacDecoder::DecodeToWav() {
    DecodeBy(DecodeIntoWavOrPart, Input, Output, OpenByMediaReader, [this](qint64 done, qint64 total) {
        if (Progress) Progress(PercentOf(done, total));
    });
    return 1;
}

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
    DecodeBy(DecodeIntoWavOrPart, path, outputPath, OpenByMediaReader, [this](qint64 done, qint64 total) {
        const ProgressCount count(done, total);
        if (Progress) Progress(count.Done, count.Total);
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

namespace {

std::unique_ptr<SoundReader> OpenFlac(std::shared_ptr<const InputFile> file) {
    if (IsForFlacLibrary(*file)) return std::make_unique<FlacReader>(std::move(file));
    return OpenByMediaReader(std::move(file));
}

// The first of `names` that the file has. Comments belong to the container, or in Ogg to the stream.
QString CommentOf(const MediaInput& input, std::initializer_list<const char*> names) {
    for (const AVDictionary* comments : {input.Container().metadata, input.Sound().metadata}) {
        for (const char* name : names) {
            const AVDictionaryEntry* entry = av_dict_get(comments, name, nullptr, 0);
            if (entry != nullptr && *entry->value != '\0') return FromNarrow(entry->value);
        }
    }
    return {};
}

}  // namespace

void FlacDecoder::SetInputFile(const QString& path) {
    Input.clear();
    Comments = {};
    WithMemoryChecked([&] {
        const auto file = std::make_shared<const InputFile>(path);
        OpenFlac(file);
        const MediaInput media(file);
        Comments = {CommentOf(media, {"title"}),
                    CommentOf(media, {"artist"}),
                    CommentOf(media, {"album"}),
                    CommentOf(media, {"date", "year"}),
                    CommentOf(media, {"comment", "description"}),
                    CommentOf(media, {"genre"})};
    });
    Input = path;
}

void FlacDecoder::SetOutputFile(const QString& path) {
    Output = path;
}

void FlacDecoder::DecodeToWav() {
    DecodeBy(DecodeIntoWav, Input, Output, OpenFlac, [this](qint64 done, qint64 total) {
        if (Progress) Progress(PercentOf(done, total));
    });
}

qint32 FlacDecoder::TrackLength(const QString& path) {
    return WholeSeconds(path, OpenFlac);
}

namespace {

std::unique_ptr<SoundReader> OpenByMpcReader(std::shared_ptr<const InputFile> file) {
    return std::make_unique<MpcReader>(std::move(file));
}

}  // namespace

void MpcDecoder::DecodeToWav(const QString& path, const QString& outputPath) {
    DecodeBy(DecodeIntoWav, path, outputPath, OpenByMpcReader, [this](qint64 done, qint64 total) {
        const ProgressCount count(done, total);
        if (Progress) Progress(count.Total, count.Done);
    });
}

qint32 MpcDecoder::TrackLength(const QString& path) {
    return WholeSeconds(path, OpenByMpcReader);
}

}  // namespace Sonmira
