// album-bench [MINUTES [ROUNDS [ROUTE...]]]
//
// Makes an album of six tracks of MINUTES each (default 1) and converts it ROUNDS times (default 5), in turn,
// through the engine without a window and through the programs that a user would pick instead: the encoders'
// own, one file after the other and two at a time, `ffmpeg`, `sox` and `soundconverter`, to the same format
// and bit rate. Prints the median seconds of each and the ratio engine/tool (below 1 the engine is faster),
// and what the engine itself costs over its components. A tool that is not installed is left out. ROUTE is
// such as "wav-Mp3"; without one all are run.
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

// A shell command for one file: "@" is the file without its ending, "%" its target.
struct Tool {
    std::string Name;
    std::string Command;
};

struct Route {
    std::string Source;  // ending
    std::string Format;  // as the engine names it
    std::vector<Tool> Tools;
    std::string Whole = {};  // a program that takes a whole folder: arguments of soundconverter
};

const std::vector<Route> Routes = {
    {"wav",
     "Mp3",
     {{"lame", "lame --quiet -b 128 @.wav %.mp3"},
      {"ffmpeg", "ffmpeg -v error -y -i @.wav -c:a libmp3lame -b:a 128k %.mp3"},
      {"sox", "sox @.wav -C 128 %.mp3"}},
     "-f mp3 -m cbr -q 128"},
    {"wav",
     "Ogg",
     {{"oggenc", "oggenc -Q -q 4 -o %.ogg @.wav"},
      {"ffmpeg", "ffmpeg -v error -y -i @.wav -c:a libvorbis -q:a 4 %.ogg"},
      {"sox", "sox @.wav -C 4 %.ogg"}},
     "-f ogg -q 0.4"},
    {"wav",
     "Wav",
     {{"sox", "sox @.wav %.wav"}, {"ffmpeg", "ffmpeg -v error -y -i @.wav -c:a pcm_s16le %.wav"}},
     "-f wav -q 16"},
    {"wav", "Wma", {{"ffmpeg", "ffmpeg -v error -y -i @.wav -c:a wmav2 -b:a 128k %.wma"}}},
    {"wav", "APE (MonKey's audio)", {{"jmac", "jmac c2 @.wav %.ape"}}},
    {"wav",
     "FLAC (Free Lossless Audio Codec)",
     {{"flac", "flac -s -5 -o %.flac @.wav"},
      {"ffmpeg", "ffmpeg -v error -y -i @.wav -c:a flac -compression_level 5 %.flac"},
      {"sox", "sox @.wav -C 5 %.flac"}},
     "-f flac -q 5"},
    {"wav", "Mpc (Musepack)", {{"mpcenc", "mpcenc --silent --overwrite --quality 5 @.wav %.mpc"}}},
    {"flac",
     "Mp3",
     {{"flac|lame", "flac -s -d -c @.flac | lame --quiet -b 128 - %.mp3"},
      {"ffmpeg", "ffmpeg -v error -y -i @.flac -c:a libmp3lame -b:a 128k %.mp3"}},
     "-f mp3 -m cbr -q 128"},
    {"mp3",
     "Wav",
     {{"lame", "lame --quiet --decode @.mp3 %.wav"},
      {"ffmpeg", "ffmpeg -v error -y -i @.mp3 -c:a pcm_s16le %.wav"}},
     "-f wav -q 16"},
    {"ape",
     "FLAC (Free Lossless Audio Codec)",
     {{"ffmpeg|flac", "ffmpeg -v error -i @.ape -f wav - | flac -s -5 -o %.flac -"},
      {"ffmpeg", "ffmpeg -v error -y -i @.ape -c:a flac -compression_level 5 %.flac"}}},
};

std::string NameOf(const Route& route) {
    return route.Source + '-' + route.Format.substr(0, route.Format.find(' '));
}

std::string Quoted(const std::string& text) {
    std::string quoted = "'";
    for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + '\'';
}

std::string Filled(std::string command, char mark, const std::string& value) {
    for (std::size_t at = 0; (at = command.find(mark, at)) != std::string::npos; at += value.size()) {
        command.replace(at, 1, value);
    }
    return command;
}

// The folders of one album, and how each program is started over it.
class Album {
public:
    explicit Album(int minutes) : Root(MadeFolder()) {
        fs::create_directories(Root / "wav");
        for (int track = 1; track <= Tracks; ++track) {
            WriteTrack(Root / "wav" / ("track" + std::to_string(track) + ".wav"), minutes * 60, track);
        }
    }
    ~Album() { fs::remove_all(Root); }
    Album(const Album&) = delete;
    Album& operator=(const Album&) = delete;

    // Makes the sources of that kind where they are not there yet.
    void MakeSources(const std::string& ending) {
        if (fs::exists(Root / ending)) return;
        fs::create_directories(Root / ending);
        const std::string maker =
            ending == "ape" ? "jmac c2 @.wav %.ape" : "ffmpeg -v error -i @.wav %." + ending;
        Seconds(ForEach({"", maker}, "wav", Root / ending, 1));
    }

    void EmptyOutput() const {
        fs::remove_all(Root / "out");
        fs::create_directories(Root / "out");
    }

    double ByEngine(const Route& route) const {
        EmptyOutput();
        const fs::path engine = fs::canonical("/proc/self/exe").parent_path() / "convert-folder";
        return Seconds(engine.string() + ' ' + (Root / route.Source).string() + ' ' +
                       (Root / "out").string() + ' ' + Quoted(route.Format) + " >" +
                       (Root / "report").string());
    }

    double ByTool(const Route& route, const Tool& tool, int atATime) const {
        EmptyOutput();
        return Seconds(ForEach(tool, route.Source, Root / "out", atATime));
    }

    double BySoundConverter(const Route& route) const {
        EmptyOutput();
        return Seconds("soundconverter -b " + route.Whole + " -e overwrite -o " + (Root / "out").string() +
                       ' ' + (Root / route.Source).string() + "/* >/dev/null 2>&1");
    }

    // What the engine said last of its own cost.
    std::string Report() const {
        std::string report;
        std::getline(std::ifstream(Root / "report"), report);
        return report;
    }

private:
    static fs::path MadeFolder() {
        std::string pattern = (fs::temp_directory_path() / "album-bench-XXXXXX").string();
        return mkdtemp(pattern.data());
    }

    std::string ForEach(const Tool& tool, const std::string& source, const fs::path& target,
                        int atATime) const {
        std::string lines;
        for (int track = 1; track <= Tracks; ++track) {
            const std::string stem = "track" + std::to_string(track);
            const std::string command = Filled(tool.Command, '@', (Root / source / stem).string());
            lines += Quoted("set -e -o pipefail; " + Filled(command, '%', (target / stem).string())) + ' ';
        }
        return "printf '%s\\0' " + lines + "| xargs -0 -n 1 -P " + std::to_string(atATime) +
               " bash -c >/dev/null 2>&1";
    }

    fs::path Root;
};

void Measure(Album& album, const Route& route, int rounds) {
    album.MakeSources(route.Source);
    std::map<std::string, std::vector<double>> times;
    for (int round = 0; round < rounds; ++round) {
        times[""].push_back(album.ByEngine(route));
        for (const Tool& tool : route.Tools) {
            times[tool.Name].push_back(album.ByTool(route, tool, 1));
            times[tool.Name + " x2"].push_back(album.ByTool(route, tool, 2));
        }
        if (!route.Whole.empty()) times["soundconverter"].push_back(album.BySoundConverter(route));
    }
    const double own = Median(times[""]);
    std::printf("%-9s engine %6.2f", NameOf(route).c_str(), own);
    for (const auto& [name, seconds] : times) {
        const double other = Median(seconds);
        if (!name.empty() && !std::isnan(other)) {
            std::printf("   %s %.2f (%.2f)", name.c_str(), other, own / other);
        }
    }
    std::printf("\n          %s\n", album.Report().c_str());
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
    const int minutes = argc > 1 ? std::max(1, std::atoi(argv[1])) : 1;
    const int rounds = argc > 2 ? std::max(1, std::atoi(argv[2])) : 5;
    const std::vector<std::string> chosen(argv + std::min(argc, 3), argv + argc);
    Album album(minutes);
    std::printf("%d tracks of %d minutes, median of %d rounds: seconds (ratio)\n", Tracks, minutes, rounds);
    for (const Route& route : Routes) {
        const bool isChosen =
            chosen.empty() || std::find(chosen.begin(), chosen.end(), NameOf(route)) != chosen.end();
        if (isChosen) Measure(album, route, rounds);
    }
    return 0;
}
