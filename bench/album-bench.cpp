// album-bench [MINUTES]
//
// Makes an album of six WAVs of MINUTES each (default 3) and converts it, several times in turn, through
// the engine without a window and through the command-line programs that a user would pick instead, one
// file after the other, to the same format and bit rate. Prints the median seconds of each, the ratio
// engine/tool (below 1 the engine is faster), and what the engine itself costs over its components.
#include "BenchSupport.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace Sonmira;

constexpr int Tracks = 6;
constexpr int Rounds = 3;

// One shell command that runs `tool` on every track; "@" is the track without ending, "%" its target.
std::string ForEachTrack(const fs::path& root, const std::string& tool) {
    std::string all = "(set -e";
    for (int track = 1; track <= Tracks; ++track) {
        const std::string stem = "track" + std::to_string(track);
        std::string one = tool;
        one.replace(one.find('@'), 1, (root / "in" / stem).string());
        one.replace(one.find('%'), 1, (root / "out" / stem).string());
        all += "; " + one;
    }
    return all + ")";
}

struct Route {
    std::string Format;
    std::map<std::string, std::string> Tools;
};

}  // namespace

int main(int argc, char** argv) {
    const int minutes = argc > 1 ? std::max(1, std::atoi(argv[1])) : 3;
    std::string pattern = (fs::temp_directory_path() / "album-bench-XXXXXX").string();
    const fs::path root = mkdtemp(pattern.data());
    fs::create_directories(root / "in");
    for (int track = 1; track <= Tracks; ++track) {
        WriteTrack(root / "in" / ("track" + std::to_string(track) + ".wav"), minutes * 60, track);
    }
    const std::string engine = (fs::canonical("/proc/self/exe").parent_path() / "convert-folder").string();

    const std::vector<Route> routes = {
        {"Mp3",
         {{"lame", "lame --quiet -b 128 @.wav %.mp3"},
          {"ffmpeg", "ffmpeg -v error -y -i @.wav -c:a libmp3lame -b:a 128k %.mp3"},
          {"sox", "sox @.wav -C 128 %.mp3"}}},
        {"Ogg",
         {{"oggenc", "oggenc -Q -q 4 -o %.ogg @.wav"},
          {"ffmpeg", "ffmpeg -v error -y -i @.wav -c:a libvorbis -q:a 4 %.ogg"},
          {"sox", "sox @.wav -C 4 %.ogg"}}},
        {"Wav", {{"sox", "sox @.wav %.wav"}, {"ffmpeg", "ffmpeg -v error -y -i @.wav -c:a pcm_s16le %.wav"}}},
    };
    std::printf("%d tracks of %d minutes, median of %d rounds, seconds\n", Tracks, minutes, Rounds);
    for (const Route& route : routes) {
        std::map<std::string, std::vector<double>> times;
        for (int round = 0; round < Rounds; ++round) {
            const auto fresh = [&] {
                fs::remove_all(root / "out");
                fs::create_directories(root / "out");
            };
            fresh();
            times["engine"].push_back(Seconds(engine + " " + (root / "in").string() + " " +
                                              (root / "out").string() + " " + route.Format + " >" +
                                              (root / "report").string()));
            for (const auto& [name, tool] : route.Tools) {
                fresh();
                times[name].push_back(Seconds(ForEachTrack(root, tool)));
            }
        }
        const double own = Median(times["engine"]);
        std::printf("%-4s engine %7.2f", route.Format.c_str(), own);
        for (const auto& [name, tool] : route.Tools) {
            const double other = Median(times[name]);
            std::printf("   %s %7.2f (ratio %.2f)", name.c_str(), other, own / other);
        }
        std::string report;
        std::getline(std::ifstream(root / "report"), report);
        std::printf("\n     %s\n", report.c_str());
        std::fflush(stdout);
    }
    fs::remove_all(root);
    return 0;
}
