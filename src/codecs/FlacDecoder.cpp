#include "codecs/FlacDecoder.h"

#include "codecs/WavDecoding.h"
#include "codecs/flac/FlacReader.h"
#include "codecs/read/MediaReader.h"
#include "platform/Failure.h"
#include "platform/Paths.h"

#include <initializer_list>
#include <utility>

extern "C" {
#include <libavformat/avformat.h>
}

namespace Sonmira {

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
    Stopped = false;
    DecodeIntoWav(Input, Output, OpenFlac, [this](qint64 done, qint64 total) {
        if (Progress) Progress(PercentOf(done, total));
        return !Stopped;
    });
}

qint32 FlacDecoder::TrackLength(const QString& path) {
    return WholeSeconds(path, OpenFlac);
}

}  // namespace Sonmira
