#include "codecs/AudioFile.h"

#include "codecs/mp3/LameLibrary.h"
#include "codecs/read/MediaReader.h"
#include "codecs/vorbis/VorbisWriter.h"
#include "codecs/wav/WavWriter.h"
#include "codecs/wma/WmaWriter.h"
#include "codecs/write/FileWriting.h"
#include "platform/Failure.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

class AudioFile::Reading {
public:
    explicit Reading(QStringView path) : Media(path) {}
    MediaReader Media;
};

class AudioFile::Writing {
public:
    // Whatever the closing reports, no file is open afterwards.
    void Close() {
        if (const auto closing = std::exchange(Open, nullptr)) closing->Close();
    }

    std::optional<OutputFormat> Format;
    std::unique_ptr<FileWriting> Open;
};

AudioFile::AudioFile() : Writer(std::make_unique<Writing>()) {}

AudioFile::~AudioFile() = default;

void AudioFile::OpenForRead(const QString& path) {
    Reader.reset();
    auto opened = WithMemoryChecked([&] { return std::make_unique<Reading>(path); });
    if (!WmaEnabled && IsWma(opened->Media.Media())) {
        throw Failure(FailureNumber::Component, u"The reading of WMA files is switched off"_s);
    }
    Reader = std::move(opened);
}

AudioBlock AudioFile::ReadBlock(qint64 size) {
    if (!Reader) throw Failure(FailureNumber::InvalidCall);
    Reader->Media.GivesUp = StopAsked;
    return WithMemoryChecked([&] { return Reader->Media.Read(size); });
}

int AudioFile::SampleRate() const {
    return Reader ? Reader->Media.Format().Rate : 0;
}

int AudioFile::ChannelCount() const {
    return Reader ? Reader->Media.Format().Channels : 0;
}

qint64 AudioFile::ByteRate() const {
    return Reader ? static_cast<qint64>(Reader->Media.FrameSize()) : 0;
}

qint64 AudioFile::StreamLength() const {
    if (!Reader) return 0;
    Reader->Media.GivesUp = StopAsked;
    return WithMemoryChecked([&] { return Reader->Media.Length(); });
}

qint64 AudioFile::Length() const {
    const double frames = static_cast<double>(StreamLength());
    return Reader ? qRound64(frames * 1000 / SampleRate()) : 0;
}

int AudioFile::FormatCode() const {
    return Reader ? 0 : -1;
}

void AudioFile::OpenForWrite(const QString& path) {
    WithMemoryChecked([&] { Writer->Close(); });
    if (!Writer->Format && Mp3Refused) {
        throw Failure(FailureNumber::Component, u"The MP3 encoder library cannot be loaded"_s);
    }
    if (!Writer->Format) throw Failure(FailureNumber::InvalidCall, u"No output format is set"_s);
    Writer->Open = WithMemoryChecked([&] { return std::make_unique<FileWriting>(path, *Writer->Format); });
}

void AudioFile::SetSourceFormat(int sampleRate, int channelCount) {
    if (!Writer->Open) return;
    WithMemoryChecked([&] { Writer->Open->SetSource({sampleRate, channelCount}); });
}

void AudioFile::WriteBlock(const AudioBlock& block) {
    if (!Writer->Open) throw Failure(FailureNumber::InvalidCall);
    WithMemoryChecked([&] { Writer->Open->Write(block); });
}

void AudioFile::CloseFile() {
    Reader.reset();
    WithMemoryChecked([&] { Writer->Close(); });
}

void AudioFile::ForgetFormat() {
    Writer->Format.reset();
    Mp3Refused = false;
}

void AudioFile::DropFormat() {
    Writer->Format.reset();
}

void AudioFile::SetFormatPCM(int frequency, int channels, int bits) {
    const PcmFormat format{frequency, channels, bits};
    ForgetFormat();
    if (IsPcmFormat(format)) Writer->Format = format;
}

bool AudioFile::SetFormatMP3(int frequency, int kilobits, int channels) {
    Mp3Refused = !LameLibrary::Load();
    if (Mp3Refused) return false;
    Writer->Format.reset();
    Mp3Parameters parameters;
    parameters.SampleRate = frequency;
    parameters.Bitrate = kilobits;
    parameters.ChannelCount = channels;
    if (IsMp3Setting(parameters) && IsMp3Bitrate(kilobits, frequency)) Writer->Format = Mp3Format(parameters);
    return true;
}

bool AudioFile::SetFormatMP3Ex(std::shared_ptr<Mp3Parameters>& parameters) {
    if (!parameters) throw Failure(FailureNumber::ObjectNotSet);
    Mp3Refused = !LameLibrary::Load();
    if (Mp3Refused) return false;
    Writer->Format.reset();
    if (IsMp3Setting(*parameters)) Writer->Format = Mp3Format(*parameters);
    return true;
}

void AudioFile::SetFormatOggVorbis(int frequency, int channels, std::optional<int> nominal,
                                   std::optional<int> minimum, std::optional<int> maximum,
                                   std::optional<int> quality) {
    const VorbisFormat format{frequency, channels, nominal, minimum, maximum, quality};
    ForgetFormat();
    if (IsVorbisFormat(format)) Writer->Format = format;
}

bool AudioFile::IsFormatOggVorbisAvailable(int frequency, int channels, int nominal, int minimum,
                                           int maximum) const {
    const auto given = [](int kilobits) { return kilobits > 0 ? std::optional(kilobits) : std::nullopt; };
    // Limits on the wrong side of the middle, or of each other, are no format, whatever the library says.
    const bool isInOrder = (minimum <= 0 || minimum <= nominal) && (maximum <= 0 || nominal <= maximum);
    return nominal > 0 && isInOrder &&
           IsVorbisFormat({frequency, channels, nominal, given(minimum), given(maximum), {}});
}

void AudioFile::SelectWmaFormat(int number) {
    ForgetFormat();
    if (!WmaEnabled) return;
    if (const auto format = WmaFormatOf(number)) Writer->Format = *format;
}

void AudioFile::EnableWma(bool enabled) {
    WmaEnabled = enabled;
    const bool isWma = Writer->Format && std::holds_alternative<WmaFormat>(*Writer->Format);
    if (!enabled && isWma) Writer->Format.reset();
}

QString AudioFile::FormatString() const {
    return Writer->Format && !Mp3Refused ? TextOf(*Writer->Format) : QString();
}

}  // namespace Sonmira
