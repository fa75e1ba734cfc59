#include "codecs/AacDecoder.h"

#include "codecs/WavDecoding.h"
#include "platform/Failure.h"
#include "platform/Files.h"

namespace Sonmira {

void AacDecoder::SetInputFile(const QString& path) {
    Input.clear();
    // Opening decodes the first frames.
    WithMemoryChecked([&] { OpenByMediaReader(std::make_shared<const InputFile>(path)); });
    Input = path;
}

void AacDecoder::SetOutputFile(const QString& path) {
    Output = path;
}

qint16 AacDecoder::DecodeToWav() {
    Stopped = false;
    DecodeIntoWavOrPart(Input, Output, OpenByMediaReader, [this](qint64 done, qint64 total) {
        if (Progress) Progress(PercentOf(done, total));
        return !Stopped;
    });
    return 1;
}

}  // namespace Sonmira
