#pragma once

#include <QStringView>

// The output formats as the format list names them. These texts are keywords: they are compared exactly,
// stored in the settings and never translated.
namespace Sonmira::FormatName {

inline constexpr QStringView Mp3 = u"Mp3";
inline constexpr QStringView Ogg = u"Ogg";
inline constexpr QStringView Wav = u"Wav";
inline constexpr QStringView Wma = u"Wma";
inline constexpr QStringView Ape = u"APE (MonKey's audio)";
inline constexpr QStringView Flac = u"FLAC (Free Lossless Audio Codec)";
inline constexpr QStringView Mpc = u"Mpc (Musepack)";

}  // namespace Sonmira::FormatName
