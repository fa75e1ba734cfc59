#pragma once

#include <QString>

#include <functional>

namespace Sonmira {

// Decodes AAC into a WAV file: ADTS and LATM streams, and MP4 and its relatives, of the low complexity and
// the high efficiency kinds. Everything blocks on the calling thread; paths are inner ones.
class AacDecoder {
public:
    virtual ~AacDecoder() = default;

    // Names the file to decode and makes sure that it can be: fails with a text for people when it is
    // missing, damaged or no sound. No file is named then.
    virtual void SetInputFile(const QString& path);
    // Names the WAV to write; nothing is created yet. The empty text takes the name away.
    virtual void SetOutputFile(const QString& path);
    virtual QString GetOutputFile() const { return Output; }

    // Decodes into 16 bits at the file's own rate, one or two channels. Returns 1, also when it was stopped,
    // which leaves the WAV with what was decoded: who stopped it knows, and whoever reads an answer of 0
    // takes the file for one that needs no output. So a file that is damaged further on, or a disk that takes
    // no more, shows in the WAV alone, which counts more sound than it has. Fails when either file is not
    // named or not usable.
    virtual qint16 DecodeToWav();
    // From inside Progress: ends the decoding after the block at hand. Else without effect.
    virtual void StopCodec() { Stopped = true; }

    // Called many times a second while decoding, with 0 to 100.
    std::function<void(qint16 percent)> Progress;

private:
    QString Input;
    QString Output;
    bool Stopped = false;
};

}  // namespace Sonmira
