#pragma once

#include "codecs/sound/Id3v2Head.h"

#include <QByteArray>

namespace Sonmira {

// ID3v2 before anybody writes it, since a tag is believed what it says of its own size.
// Source of the facts: ID3v2.2.0, ID3v2.3.0 and ID3v2.4.0, id3.org.

// Whether a tag nests its frames so often that reading it would take all of the stack.
bool IsBottomless(const QByteArray& tag);

// Where the tag lies: in WAV files other programs drop more of its frames, so that those are left alone.
enum class FrameKeeping { OfOurFactory, OfTheLibraryAlone };

// Fails where a save would lose a part of the tag: frames behind a damaged one, or of a kind that `keeping`
// cannot write again.
void CheckFramesAreKept(const QByteArray& tag, FrameKeeping keeping = FrameKeeping::OfOurFactory);

// Fails where what follows the tag in a file of MPEG audio is neither sound nor another kind of tag: its size
// takes in sound then, or a second tag would be taken for padding. `behind` are the first bytes there.
void CheckSoundFollows(const QByteArray& behind);

}  // namespace Sonmira
