#pragma once

#include "codecs/mp3/Mp3Writer.h"
#include "codecs/vorbis/VorbisWriter.h"
#include "codecs/wav/WavWriter.h"
#include "codecs/wma/WmaWriter.h"

#include <QString>

#include <variant>

// The formats that the audio file object writes.
namespace Sonmira {

using OutputFormat = std::variant<PcmFormat, Mp3Format, VorbisFormat, WmaFormat>;

// The rate and the channels that its sound has.
StreamFormat StreamOf(const OutputFormat& format);

// One line for people, such as "PCM 44100 Hz, Stereo, 16 bits".
QString TextOf(const OutputFormat& format);

// Fails when the encoder of that format cannot be had.
std::unique_ptr<SoundWriter> MakeSoundWriter(const OutputFormat& format);

}  // namespace Sonmira
