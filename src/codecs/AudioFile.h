#pragma once

#include "codecs/AudioStreams.h"
#include "codecs/mp3/Mp3Parameters.h"

#include <memory>
#include <optional>

namespace Sonmira {

// The audio file object. The program has two: one reads (FileRenc), one writes (FileWenc); each can do
// both. It reads whatever FFmpeg's libraries read and writes PCM WAV, MP3 (through the encoder library in
// the system folder, loaded at run time), Ogg Vorbis and Windows Media Audio.
//
// The output format is set once and stays for all files until another is set. A refused format leaves
// FormatString empty and OpenForWrite failing; only where the MP3 encoder's library is missing does the
// earlier format stay in force behind an empty FormatString.
//
// Inside, encoding runs on a worker thread beside the caller's decoding; order, results and failures are
// those of a serial run.
class AudioFile final : public AudioSource, public AudioSink {
public:
    AudioFile();
    ~AudioFile() override;
    AudioFile(const AudioFile&) = delete;
    AudioFile& operator=(const AudioFile&) = delete;

    // Reading.
    void OpenForRead(const QString& path) override;
    AudioBlock ReadBlock(qint64 size) override;
    int SampleRate() const override;
    int ChannelCount() const override;
    qint64 ByteRate() const override;
    qint64 StreamLength() const override;
    qint64 Length() const override;
    int FormatCode() const override;

    // Writing.
    void OpenForWrite(const QString& path) override;
    void SetSourceFormat(int sampleRate, int channelCount) override;
    void WriteBlock(const AudioBlock& block) override;

    // Both sides.
    void CloseFile() override;

    // Formats. Rates in Hz, channels 1 or 2.
    // PCM WAV of 8 (unsigned), 16, 24 or 32 bits at 1 to 384000 Hz.
    void SetFormatPCM(int frequency, int channels, int bits) override;
    // Constant bit rate MP3; `kilobits` one of the rates that MPEG audio knows for that frequency. Returns
    // whether the encoder library could be loaded; without it nothing changes and the earlier format stays.
    bool SetFormatMP3(int frequency, int kilobits, int channels);
    // MP3 in all its variety. The object stays the caller's; the one that is there afterwards is the one in
    // force. Returns whether the encoder library could be loaded; without it the earlier format stays. A
    // setting that is none (IsMp3Setting) is refused.
    bool SetFormatMP3Ex(std::shared_ptr<Mp3Parameters>& parameters);
    // Ogg Vorbis in one of three shapes: by `quality` (0 to 1000, a thousandth of the encoder library's
    // base quality 0.0 to 1.0; 400 is what users know as quality 4), by a nominal bit rate alone, or
    // managed between a minimum and a maximum. Bit rates in kbit a second. `quality` wins where given.
    void SetFormatOggVorbis(int frequency, int channels, std::optional<int> nominal = {},
                            std::optional<int> minimum = {}, std::optional<int> maximum = {},
                            std::optional<int> quality = {});

    // Whether Vorbis has such a stream, in kbit a second; a minimum or maximum of 0 is none.
    bool IsFormatOggVorbisAvailable(int frequency, int channels, int nominal, int minimum, int maximum) const;

    // Windows Media Audio in the format of that number, 1 to 51 (wma/WmaWriter.h). Refused while WMA support
    // is off.
    void SelectWmaFormat(int number);

    // Switches WMA support; it is on unless switched off. Without it WMA files are refused by OpenForRead,
    // whatever their names, and a WMA format is none.
    void EnableWma(bool enabled);

    // Takes the format away: nothing can be written until another is set.
    void DropFormat();

    // One line about the current format; empty when the last one set was refused or none was set.
    QString FormatString() const;

private:
    void ForgetFormat();

    class Reading;
    class Writing;
    std::unique_ptr<Reading> Reader;
    std::unique_ptr<Writing> Writer;
    bool WmaEnabled = true;
    bool Mp3Refused = false;  // the format asked for last is not the one in force
};

}  // namespace Sonmira
