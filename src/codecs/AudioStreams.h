#pragma once

#include "codecs/sound/AudioBlock.h"

#include <QString>

#include <functional>

// What the engine sees of the audio file object: a reading and a writing side. Both block, fail with
// Failure, and belong to the user-interface thread. One file is open on a side at a time.
namespace Sonmira {

// Reads and decodes one file.
class AudioSource {
public:
    virtual ~AudioSource() = default;

    // Opens any format that it can decode; a file that was open is closed first. Fails with a text for
    // the user when the file is missing, unreadable, or holds no sound that can be decoded.
    virtual void OpenForRead(const QString& path) = 0;
    // The next frames, at most `size` bytes of them (at least one frame). Empty at the end of the file; fails
    // there instead when the file holds clearly less than its header counts. Where that takes a second look
    // at the file the event loop runs meanwhile, and an answer of true by StopAsked ends it as a failure.
    virtual AudioBlock ReadBlock(qint64 size) = 0;
    // Closes the file; harmless when none is open.
    virtual void CloseFile() = 0;

    // Of the open file: frames a second (1 or more) and channels (1 or more).
    virtual int SampleRate() const = 0;
    virtual int ChannelCount() const = 0;
    // Bytes of one decoded frame, as ReadBlock gives them.
    virtual qint64 ByteRate() const = 0;
    // Frames of the whole file. Exact where the format tells, else from a scan of the packets; 0 only for
    // a file without any sound. A scan ends early, with a length that means nothing, where StopAsked answers
    // true; a window stays alive meanwhile.
    virtual qint64 StreamLength() const = 0;
    // The same length in milliseconds.
    virtual qint64 Length() const = 0;
    // 0 or more for a file that is open, negative when none is.
    virtual int FormatCode() const = 0;

    std::function<bool()> StopAsked;
};

// Encodes and writes one file in the format that is set on it.
class AudioSink {
public:
    virtual ~AudioSink() = default;

    // Names and creates the output in the current format. Fails when it cannot be created, also with
    // FileAlreadyExists where something has the name, and when no format is set.
    virtual void OpenForWrite(const QString& path) = 0;
    // What the blocks will hold. Must come before the first block; rate and channel count are converted to
    // those of the format. Without an open file it changes nothing.
    virtual void SetSourceFormat(int sampleRate, int channelCount) = 0;
    // Encodes and writes the frames. A failure of an earlier block may be reported here.
    virtual void WriteBlock(const AudioBlock& block) = 0;
    // Writes what is left and finishes the file; reports what could not be written. After a failure, or
    // without a source format, closes what is there. Harmless when no file is open.
    virtual void CloseFile() = 0;
    // The format of the files that are opened from now on: PCM WAV at `frequency` Hz, 1 or 2 channels, `bits`
    // wide.
    virtual void SetFormatPCM(int frequency, int channels, int bits) = 0;
};

}  // namespace Sonmira
