#pragma once

#include "codecs/AudioFile.h"
#include "support/TestAudio.h"
#include "support/TestFolder.h"

#include <functional>

// What most tests of the audio file object do: convert a whole file and look at the result with programs
// that know nothing of ours.
namespace Sonmira {

using FormatSetting = std::function<void(AudioFile&)>;

// Converts as the engine does: blocks of rate times channels bytes until the end.
void ConvertFile(const QString& from, const QString& to, const FormatSetting& setFormat);

// All of a file by our reader.
struct ReadFile {
    int Rate = 0;
    int Channels = 0;
    SampleType Type = SampleType::Int16;
    qint64 Frames = 0;
    qint64 StreamLength = 0;
    QByteArray Bytes = {};
};
ReadFile ReadWhole(const QString& path);

// What ffmpeg makes of a file, at the file's own rate and channel count.
TestSound DecodedByFfmpeg(const QByteArray& nativePath);
// Its frames alone, and raw samples in a format of ffmpeg's ("s16le", "u8", ...).
std::int64_t FramesByFfmpeg(const QByteArray& nativePath, int channels);
QByteArray RawByFfmpeg(const QByteArray& nativePath, const QByteArray& format);

// The text of the failure that the call ends with; empty when it ends well.
QString FailureTextOf(const std::function<void()>& call);

}  // namespace Sonmira
