#pragma once

#include <QString>

#include <functional>

namespace Sonmira {

// Decodes Musepack of stream versions 7 and 8 into a WAV file. Everything blocks on the calling thread; paths
// are inner ones.
class MpcDecoder {
public:
    virtual ~MpcDecoder() = default;

    // Decodes into 16 bits at the file's own rate and channel count. Fails when either file is not usable,
    // and at the end when the file gave less than its header counts; the WAV then holds what was decoded, as
    // it does after a stop.
    virtual void DecodeToWav(const QString& path, const QString& outputPath);
    // From inside Progress: ends the decoding after the block at hand. Else without effect.
    virtual void StopCodec() { Stopped = true; }

    // Whole seconds, cut; 0 for a file that cannot be read.
    virtual qint32 TrackLength(const QString& path);

    // Called many times a second while decoding.
    std::function<void(qint32 total, qint32 done)> Progress;

private:
    bool Stopped = false;
};

}  // namespace Sonmira
