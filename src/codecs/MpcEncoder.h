#pragma once

#include <QString>

#include <functional>

namespace Sonmira {

// Encodes a WAV file into Musepack of stream version 8, by the program mpcenc of the musepack tools.
// Everything blocks on the calling thread; paths are inner ones.
class MpcEncoder {
public:
    virtual ~MpcEncoder() = default;

    // 0 (small) to 10 (best), 5 unless set; a number outside is brought to the nearer end.
    virtual void SetQuality(qint16 quality);
    virtual qint16 Quality() const { return Chosen; }

    // Any WAV that can be read: more channels than two are mixed to two, a rate that the format does not know
    // becomes the next higher one, or of those above 48000 Hz the one that divides it, and wide samples keep
    // 24 bits. Fails with a text for people when a file is not usable or the program is missing, ends early
    // or cannot write all; what was written by then stays, as after a stop. A WAV that holds less than its
    // header counts gives a good file of what is there, and fails.
    virtual void EncodeFromWav(const QString& wav, const QString& output);
    // From inside Progress: ends the program and the encoding at once. Else without effect.
    virtual void StopCodec() { Stopped = true; }

    // Called many times a second while encoding.
    std::function<void(qint32 total, qint32 done)> Progress;

private:
    qint16 Chosen = 5;
    bool Stopped = false;
};

}  // namespace Sonmira
