#include "BenchSupport.h"

#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <fstream>

namespace Sonmira {

namespace {
constexpr int Rate = 44100;
}

void WriteTrack(const std::filesystem::path& path, int seconds, int seed) {
    const std::uint32_t bytes = static_cast<std::uint32_t>(seconds) * Rate * 4;
    std::ofstream file(path, std::ios::binary);
    const auto put = [&](std::uint32_t value, int size) {
        for (int n = 0; n < size; ++n) file.put(static_cast<char>(value >> (8 * n)));
    };
    file << "RIFF";
    put(36 + bytes, 4);
    file << "WAVEfmt ";
    put(16, 4);
    put(1, 2);
    put(2, 2);
    put(Rate, 4);
    put(Rate * 4, 4);
    put(4, 2);
    put(16, 2);
    file << "data";
    put(bytes, 4);
    std::uint32_t noise = static_cast<std::uint32_t>(seed) * 2654435761U + 1;
    double phase = 0;
    double drone = 0;
    for (int frame = 0; frame < seconds * Rate; ++frame) {
        const double time = static_cast<double>(frame) / Rate;
        phase += 2 * M_PI * (330 + 110 * std::sin(time * 0.7 + seed)) / Rate;
        drone += 2 * M_PI * (82.5 * (1 + seed % 3)) / Rate;
        noise = noise * 1664525U + 1013904223U;
        const double hiss = (static_cast<double>(noise >> 8) / (1 << 23) - 1) * 600;
        const double left = 7000 * std::sin(phase) + 5000 * std::sin(drone) + hiss;
        const double right = 5000 * std::sin(phase * 1.5) + 6000 * std::sin(drone) - hiss;
        put(static_cast<std::uint16_t>(static_cast<std::int16_t>(left)), 2);
        put(static_cast<std::uint16_t>(static_cast<std::int16_t>(right)), 2);
    }
}

void MakeSmallFiles(const std::filesystem::path& root, int count) {
    constexpr int FilesAFolder = 15;
    for (int n = 0; n < count; ++n) {
        const auto folder = root / ("album " + std::to_string(n / FilesAFolder));
        if (n % FilesAFolder == 0) std::filesystem::create_directories(folder);
        std::ofstream(folder / ("track " + std::to_string(n) + ".mp3")) << 'x';
    }
}

double ResidentBytes() {
    malloc_trim(0);
    double pages = 0;
    std::ifstream("/proc/self/statm") >> pages >> pages;
    return pages * static_cast<double>(sysconf(_SC_PAGESIZE));
}

double Seconds(const std::string& command) {
    const auto start = std::chrono::steady_clock::now();
    if (std::system((command + " 2>/dev/null").c_str()) != 0) return std::nan("");
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

}  // namespace Sonmira
