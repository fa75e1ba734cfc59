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

}  // namespace Sonmira
