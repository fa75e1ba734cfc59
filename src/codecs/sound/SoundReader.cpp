#include "codecs/sound/SoundReader.h"

namespace Sonmira {

namespace {

std::function<void()>& Yield() {
    static std::function<void()> yield;
    return yield;
}

}  // namespace

void WhileFilesAreScanned(std::function<void()> yield) {
    Yield() = std::move(yield);
}

void YieldWhileScanning() {
    if (Yield()) Yield()();
}

}  // namespace Sonmira
