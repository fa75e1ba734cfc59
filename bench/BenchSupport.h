#pragma once

#include <filesystem>
#include <string>
#include <vector>

// What the benchmarks that compare with other programs share.
namespace Sonmira {

// Writes a WAV file of CD sound like music: moving tones over noise, so that no encoder gets an easy signal.
// Files of different seeds differ.
void WriteTrack(const std::filesystem::path& path, int seconds, int seed);

// Wall time of a shell command; no number when it failed, as a tool that is not installed does.
double Seconds(const std::string& command);

double Median(std::vector<double> values);

}  // namespace Sonmira
