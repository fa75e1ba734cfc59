#pragma once

#include <QString>

#include <functional>

namespace Sonmira {

// Encodes a WAV file into FLAC, on all cores. The file is the same as one core would make it, at every
// level. Everything blocks on the calling thread; paths are inner ones.
class FlacEncoder {
public:
    virtual ~FlacEncoder() = default;

    // Any WAV that can be read: 8, 16 and 24 bits stay exactly as they are, wider and float samples are
    // brought to 24 with dither, more channels than two are mixed to two. `level` is 0 (fast) to 8 (small).
    // Runs to its end. Fails when either file is not usable or the level is none; a WAV that holds less than
    // its header counts gives a good file of what is there, and fails.
    virtual void EncodeFromWav(const QString& wav, const QString& output, qint16 level);

    // Called many times a second while encoding, with 0 to 100.
    std::function<void(qint16 percent)> Progress;
};

}  // namespace Sonmira
