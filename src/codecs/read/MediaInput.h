#pragma once

#include "codecs/sound/SoundReader.h"
#include "platform/Files.h"

#include <memory>

struct AVInputFormat;
struct AVFormatContext;
struct AVPacket;
struct AVStream;

namespace Sonmira {

class InputFile;

// The readers of the library that may open a file, by their names, with commas between. Each reads the sound
// of one file that says by its content what it is. Not among them are lists, indexes and scripts, which name
// other files or addresses; devices; raw samples, which could be anything; and the formats of games, which
// any noise looks like.
extern const char* const MediaFormatNames;

// The reader for a file that the library's own search takes for nothing: behind a tag so long that the search
// ends in it, and AAC of so few frames that they might be those of something else. Null for all other files,
// which the library knows by itself.
const AVInputFormat* HiddenMediaFormat(const InputFile& file);

// A media file open for reading by FFmpeg's demuxers, with its best sound stream chosen.
//
// The demuxers see bytes of that one file and nothing else: names are no addresses here, and a playlist or
// index that names other files or addresses is refused when it asks for them. A single allocation by the
// libraries is bounded for the whole process, so that a lying header cannot take the machine's memory.
class MediaInput {
public:
    // Whether the times of an MP4 file are those of its edit list, as players want them, or of the whole
    // stream.
    enum class Times { Edited, Whole };

    // Fails when no demuxer knows the content or it holds no sound.
    explicit MediaInput(std::shared_ptr<const InputFile> file, Times times = Times::Edited);
    ~MediaInput();
    MediaInput(const MediaInput&) = delete;
    MediaInput& operator=(const MediaInput&) = delete;

    // Reads the next packet of the sound stream. False at the end, which is also where a damaged container
    // cannot be followed any further; fails when the drive does.
    bool Read(AVPacket& packet);

    const AVFormatContext& Container() const;
    const AVStream& Sound() const;
    const std::shared_ptr<const InputFile>& File() const { return Source; }

private:
    class Parts;
    std::shared_ptr<const InputFile> Source;
    std::unique_ptr<Parts> Libraries;
};

// Whether the file is one of Windows Media: in the ASF container, or with a codec of that family in another.
bool IsWma(const MediaInput& input);

// What an error code of FFmpeg's libraries says to people.
Failure MediaFailure(int code);

}  // namespace Sonmira
