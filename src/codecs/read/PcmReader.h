#pragma once

#include "codecs/read/MediaReader.h"
#include "codecs/sound/PcmPacker.h"

namespace Sonmira {

// The sound of a file as the PCM that an encoder takes: little-endian, as WAV files hold it. A file that is
// cut short is no failure until all of it has been given.
class PcmReader {
public:
    // What the encoder takes of a source that has this form and whose samples fit so many bits. It has one or
    // two channels.
    using FormatChoice = PcmFormat (*)(const StreamFormat& source, int bits);

    // Fails with a text for people when the file cannot be read or its rate not be converted.
    PcmReader(std::shared_ptr<const InputFile> file, FormatChoice choose);

    const PcmFormat& Format() const { return Form; }
    // What is asked while the length is counted; true ends that with a guess.
    void GiveUpWhen(std::function<bool()> isStopped) { Reader.GivesUp = std::move(isStopped); }
    // Appends the next bytes of whole frames to `packed`. False at the end.
    bool Append(std::vector<std::byte>& packed);

    // Frames of the file, and how many of them have been taken.
    qint64 Length() { return Reader.Length(); }
    qint64 Taken() const { return FramesTaken; }
    // Frames that came of those.
    qint64 Given() const { return FramesGiven; }
    // Frames that come of the whole file; none where its own length may be wrong.
    std::optional<qint64> ExactLength();
    // At the end: fails if the file held less than it should.
    void ReportFailure() const;

private:
    AudioBlock NextBlock();

    MediaReader Reader;
    PcmFormat Form;
    StreamConverter Converter;
    PcmPacker Packer;
    qint64 FramesTaken = 0;
    qint64 FramesGiven = 0;
    std::exception_ptr Error;
    bool Ended = false;
};

}  // namespace Sonmira
