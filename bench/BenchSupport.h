#pragma once

#include <filesystem>
#include <string>
#include <vector>

// What the benchmarks share.
namespace Sonmira {

// Writes a WAV file of CD sound like music: moving tones over noise, so that no encoder gets an easy signal.
// Files of different seeds differ.
void WriteTrack(const std::filesystem::path& path, int seconds, int seed);

// Makes that many files of one byte, in folders of 15: enough for whatever only looks at names.
void MakeSmallFiles(const std::filesystem::path& root, int count);

// What the process holds of the machine's memory, in bytes, after the heap has given back what it can.
double ResidentBytes();

// Wall time of a shell command; no number when it failed, as a tool that is not installed does.
double Seconds(const std::string& command);

double Median(std::vector<double> values);

}  // namespace Sonmira
