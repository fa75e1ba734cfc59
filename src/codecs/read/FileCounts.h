#pragma once

#include <QtGlobal>

namespace Sonmira {

class InputFile;

// How many seconds an MP3 lacks by its first frame, in which encoders of variable bit rate, and many others,
// count all frames and bytes of the stream behind it: "Xing" or "Info" behind where its side information
// would be, or "VBRI" at a fixed place. `frames` is how many could be decoded. The count of frames decides
// where there is one, since that of bytes may hold a tag that somebody cut off. Editors leave old counts of
// frames behind: one is believed only where the bytes are counted and not there either, or where something
// else than whole frames is among those of the file. 0 without such a frame.
double MissingMp3Seconds(const InputFile& file, qint64 frames);

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
