#pragma once

#include "codecs/sound/SoundReader.h"

#include <QStringView>

#include <chrono>
#include <functional>
#include <memory>

namespace Sonmira {

class InputFile;

using SoundOpening = std::function<std::unique_ptr<SoundReader>(std::shared_ptr<const InputFile>)>;
// Told after each block how many frames are done and how many the file has (0 when nothing tells). Returns
// whether to go on.
using WavProgress = std::function<bool(qint64 done, qint64 total)>;

// Decodes the file at an inner path into a PCM WAV file of its own rate and width, with more channels than
// two mixed to two. Returns false when the progress ended it; the WAV then holds what was decoded so far.
//
// The WAV is created before anything is decoded, so that whoever waits for it finds it. It stays empty when
// the input cannot be decoded at all, and holds what could be decoded when it fails later, in front of it a
// header that counts the sound of the whole stream: nobody may read the failure, but whoever reads the WAV
// finds that it is not whole. Fails before it is created when there is no input or when the output is the
// input.
bool DecodeIntoWav(QStringView path, QStringView outputPath, const SoundOpening& open,
                   const WavProgress& progress);

// The same for one whose failure would have the WAV thrown away: fails only where no sound got into it.
void DecodeIntoWavOrPart(QStringView path, QStringView outputPath, const SoundOpening& open,
                         const WavProgress& progress);

// By FFmpeg's decoders.
std::unique_ptr<SoundReader> OpenByMediaReader(std::shared_ptr<const InputFile> file);

// What both encoders that take a WAV share: the widest samples that they take, and how long they wait for
// their workers before they listen for a stop again.
inline constexpr int WidestBits = 24;
inline constexpr std::chrono::milliseconds WaitAtOnce{30};

// `done` of `total` in percent, 0 to 100.
qint16 PercentOf(qint64 done, qint64 total);

// A count of frames, and where it lies in the whole, as the 32-bit numbers of a progress event. They are
// scaled down where they do not fit.
struct ProgressCount {
    ProgressCount(qint64 done, qint64 total);
    qint32 Done = 0;
    qint32 Total = 0;
};

// The whole seconds of a file, cut; 0 for a file that cannot be read.
qint32 WholeSeconds(QStringView path, const SoundOpening& open);

}  // namespace Sonmira
