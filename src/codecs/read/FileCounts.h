#pragma once

#include <QtGlobal>

namespace Sonmira {

class MediaInput;

// What a reader got out of a stream.
struct SoundGiven {
    double Seconds = 0;
    double End = 0;      // the time of the stream at which it ended
    qint64 Packets = 0;  // that could be decoded
};

// Seconds of sound that the file itself counts but does not have, as far as the libraries do not look: by
// the packets of a Windows Media file, the counts in the first frame of an MP3 (MissingMp3Seconds), the time
// of an Ogg page that is cut. 0 where nothing is missing or nothing tells.
double MissingByCounts(const MediaInput& input, const SoundGiven& given);

}  // namespace Sonmira
