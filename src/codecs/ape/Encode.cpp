#include "codecs/ape/Encode.h"

#include "codecs/ape/ApeFileWriter.h"
#include "codecs/ape/FrameCoding.h"
#include "platform/Failure.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

const ApeLevel& CheckedLevel(qint32 number, const PcmFormat& sound) {
    const ApeLevel* level = ApeLevelOf(number);
    if (level == nullptr) throw Failure(FailureNumber::InvalidCall);
    // Decoders differ in how wide their sums are at this level, and 24 bits make that heard.
    if (level->Number == 5000 && sound.Bits == 24) {
        throw Failure(FailureNumber::Component, u"This compression level is not for sound of 24 bits"_s);
    }
    return *level;
}

std::unique_ptr<ApeFrameGroup> NextGroup(ApeInput& input, std::size_t bytes) {
    auto group = std::make_unique<ApeFrameGroup>();
    group->Pcm.resize(bytes);
    group->Pcm.resize(input.Read(group->Pcm));
    group->Blocks = group->Pcm.size() / static_cast<std::size_t>(input.Sound().FrameSize());
    return group->Blocks > 0 ? std::move(group) : nullptr;
}

}  // namespace

void EncodeApe(const QString& wav, const QString& ape, qint32 level, const ApeProgressCallback& progress,
               const qint32& killFlag, const ApeWorkers& workers) {
    const std::unique_ptr<ApeInput> input = OpenApeInput(wav, [&killFlag] { return killFlag != 0; });
    const PcmFormat& sound = input->Sound();
    const ApeLevel& shape = CheckedLevel(level, sound);
    ApeFileWriter writer(ape, shape, *input);
    const std::size_t groupBytes = MostApeFramesOfAGroup(sound.Channels) *
                                   static_cast<std::size_t>(shape.BlocksPerFrame) *
                                   static_cast<std::size_t>(sound.FrameSize());

    // Sound and code of it stand in memory together.
    ApeWork work(workers, input->Blocks(), 2 * static_cast<qint64>(groupBytes), progress, killFlag);
    const bool isWhole = work.Run(
        [&](ApeWorkState& state) -> ApeWork::Worker {
            const auto encoder = std::make_shared<ApeFrameEncoder>(shape, sound, *workers.Kernels);
            return [encoder, &state](ApeFrameGroup& group) {
                encoder->Encode(group, state);
                group.Pcm = {};
            };
        },
        [&] { return NextGroup(*input, groupBytes); },
        [&](ApeFrameGroup& group) {
            for (std::size_t i = 0; i < group.Frames.size(); ++i) {
                writer.WriteFrame(group.Frames[i], ApeFramePlaceOf(group, shape, i).Blocks);
            }
        });
    if (!isWhole) {
        writer.Close();
        return;
    }
    writer.Finish();
    input->CheckEnd();
}

}  // namespace Sonmira
