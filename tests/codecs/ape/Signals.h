#pragma once

#include "support/TestAudio.h"

#include <string>
#include <vector>

// Sounds that find the corners of a lossless codec.
namespace Sonmira {

struct ApeSignal {
    std::string Name;
    TestSound Sound;
};

// Names of all kinds: sines, noise, silence, impulses, square waves of full scale, a silent channel, equal
// channels, a random walk, and a mixture that gives frames of each kind in turn.
std::vector<std::string> ApeSignalNames();
// One of them; the same in each run.
TestSound MakeApeSignal(const std::string& name, int channels, std::int64_t blocks);

}  // namespace Sonmira
