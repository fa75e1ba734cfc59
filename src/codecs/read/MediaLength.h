#pragma once

#include <QtGlobal>

#include <functional>
#include <optional>

namespace Sonmira {

class MediaInput;

// In frames. No format pads its last frame with more; a file that goes on further behind its end has a wrong
// end.
inline constexpr qint64 MostPadding = 4096;

// Where a stream ends whose decoder may go on a little: AAC in MP4, by its gapless entry or its edit list,
// and a Vorbis stream of few packets, by its last page. None for other streams. In frames at `rate` a second,
// as are all counts here.
std::optional<qint64> SoundEnd(const MediaInput& input, int rate);

// Frames of the sound stream, as the decoder will give them from an intact file; `end` is its SoundEnd. Reads
// the container's headers, or all packets of the file where those only estimate: raw MPEG streams, AVI and
// Ogg, whose links the headers do not count. 0 when nothing tells. Where `givesUp` answers true the reading
// ends with what was counted so far.
qint64 SoundLength(const MediaInput& input, int rate, std::optional<qint64> end,
                   const std::function<bool()>& givesUp);

// The fewest frames that an intact file gives, by a header that counts them; 0 where none does. A lossless
// stream that gives less has lost sound; a lossy one is given a tenth of a second, because its headers are
// less exact.
qint64 LeastLength(const MediaInput& input, int rate, std::optional<qint64> end);

}  // namespace Sonmira
