#pragma once

#include <QString>

#include <functional>

namespace Sonmira {

// Decodes Apple Lossless into a WAV file, bit for bit: MP4 and its relatives, and Core Audio files.
// Everything blocks on the calling thread; paths are inner ones.
class AlacDecoder {
public:
    virtual ~AlacDecoder() = default;

    // 1 when the file's sound is Apple Lossless, else 0, also for a file that cannot be read.
    virtual qint16 IsAlac(const QString& path);

    // Decodes the whole file; there is no way to stop it. Returns 1, also where not all of it
    // could be decoded or written: the WAV then counts more sound than it has, and whoever takes a failure
    // for an answer of 0 would make no output of it. Fails when either file is not usable.
    virtual qint16 DecodeToWav(const QString& path, const QString& outputPath);
    // The decoding runs to its end.
    virtual void StopCodec() {}

    // Of any file that can be read: whole seconds (cut), frames a second, channels, bits a sample. Returns 1;
    // 0, with all of them 0, for a file that cannot be read.
    virtual qint16 TrackInfo(const QString& path, double& duration, qint32& rate, qint32& channels,
                             qint32& bits);

    // Called many times a second while decoding.
    std::function<void(qint32 done, qint32 total)> Progress;
};

}  // namespace Sonmira
