// encoder-bench [MINUTES [ROUTE...]]
//
// Makes a WAV of MINUTES (default 4) and has each component turn it into its format, and each decoder turn
// that back into a WAV, beside the command-line programs that a user would pick instead: several rounds in
// turn, each in a process of its own. Prints the median seconds and the ratio component/tool (below 1 the
// component is faster). ROUTE limits the run to routes of those names.
#include "BenchSupport.h"
#include "codecs/AudioFile.h"
#include "codecs/FlacEncoder.h"
#include "codecs/MpcEncoder.h"
#include "codecs/WavDecoders.h"
#include "platform/Failure.h"
#include "platform/Paths.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>

namespace {

namespace fs = std::filesystem;
using namespace Sonmira;

constexpr int Rounds = 5;

template <class Setting>
void Stream(const QString& from, const QString& to, Setting&& setFormat) {
    AudioFile reader;
    AudioFile writer;
    setFormat(writer);
    reader.OpenForRead(from);
    writer.OpenForWrite(to);
    writer.SetSourceFormat(reader.SampleRate(), reader.ChannelCount());
    const qint64 size = qint64{reader.SampleRate()} * reader.ChannelCount();
    for (AudioBlock block = reader.ReadBlock(size); !block.IsEmpty(); block = reader.ReadBlock(size)) {
        writer.WriteBlock(block);
    }
    writer.CloseFile();
}

using Work = void (*)(const QString& from, const QString& to);

struct Route {
    std::string Name;
    // What the source is named, without folder, and what the target ends in.
    std::string Source;
    std::string Ending;
    Work Component;
    // "@" is the source, "%" the target.
    std::map<std::string, std::string> Tools;
};

const std::vector<Route>& Routes() {
    static const std::vector<Route> routes = {
        {"wav",
         "in.wav",
         ".wav",
         [](const QString& from, const QString& to) {
             Stream(from, to, [](AudioFile& file) { file.SetFormatPCM(44100, 2, 16); });
         },
         {{"sox", "sox @ %"}, {"ffmpeg", "ffmpeg -v error -y -i @ -c:a pcm_s16le %"}}},
        {"mp3",
         "in.wav",
         ".mp3",
         [](const QString& from, const QString& to) {
             Stream(from, to, [](AudioFile& file) { file.SetFormatMP3(44100, 128, 2); });
         },
         {{"lame", "lame --quiet -b 128 @ %"}}},
        {"mp3-v2",
         "in.wav",
         ".mp3",
         [](const QString& from, const QString& to) {
             Stream(from, to, [](AudioFile& file) {
                 auto set = std::make_shared<Mp3Parameters>();
                 set->VbrMethod = Mp3Parameters::New;
                 set->VbrQuality = 2;
                 file.SetFormatMP3Ex(set);
             });
         },
         {{"lame", "lame --quiet -V2 @ %"}}},
        {"ogg",
         "in.wav",
         ".ogg",
         [](const QString& from, const QString& to) {
             Stream(from, to, [](AudioFile& file) { file.SetFormatOggVorbis(44100, 2, {}, {}, {}, 400); });
         },
         {{"oggenc", "oggenc -Q -q 4 -o % @"},
          {"ffmpeg", "ffmpeg -v error -y -i @ -c:a libvorbis -q:a 4 %"}}},
        {"wma",
         "in.wav",
         ".wma",
         [](const QString& from, const QString& to) {
             Stream(from, to, [](AudioFile& file) { file.SelectWmaFormat(43); });
         },
         {{"ffmpeg", "ffmpeg -v error -y -i @ -c:a wmav2 -b:a 128k %"}}},
        {"flac0",
         "in.wav",
         ".flac",
         [](const QString& from, const QString& to) { FlacEncoder().EncodeFromWav(from, to, 0); },
         {{"flac", "flac -s -f -0 -o % @"}, {"ffmpeg", "ffmpeg -v error -y -i @ -compression_level 0 %"}}},
        {"flac5",
         "in.wav",
         ".flac",
         [](const QString& from, const QString& to) { FlacEncoder().EncodeFromWav(from, to, 5); },
         {{"flac", "flac -s -f -5 -o % @"}, {"ffmpeg", "ffmpeg -v error -y -i @ -compression_level 5 %"}}},
        {"flac8",
         "in.wav",
         ".flac",
         [](const QString& from, const QString& to) { FlacEncoder().EncodeFromWav(from, to, 8); },
         {{"flac", "flac -s -f -8 -o % @"}, {"ffmpeg", "ffmpeg -v error -y -i @ -compression_level 8 %"}}},
        {"mpc",
         "in.wav",
         ".mpc",
         [](const QString& from, const QString& to) { MpcEncoder().EncodeFromWav(from, to); },
         {{"mpcenc", "mpcenc --silent --overwrite @ %"}}},
        {"from-flac",
         "in.flac",
         ".wav",
         [](const QString& from, const QString& to) {
             FlacDecoder decoder;
             decoder.SetInputFile(from);
             decoder.SetOutputFile(to);
             decoder.DecodeToWav();
         },
         {{"flac", "flac -s -f -d -o % @"}, {"ffmpeg", "ffmpeg -v error -y -i @ %"}}},
        {"from-mpc",
         "in.mpc",
         ".wav",
         [](const QString& from, const QString& to) { MpcDecoder().DecodeToWav(from, to); },
         {{"mpcdec", "mpcdec @ % >/dev/null"}, {"ffmpeg", "ffmpeg -v error -y -i @ %"}}},
        {"from-aac",
         "in.aac",
         ".wav",
         [](const QString& from, const QString& to) {
             AacDecoder decoder;
             decoder.SetInputFile(from);
             decoder.SetOutputFile(to);
             decoder.DecodeToWav();
         },
         {{"ffmpeg", "ffmpeg -v error -y -i @ %"}}},
        {"from-alac",
         "in.m4a",
         ".wav",
         [](const QString& from, const QString& to) { AlacDecoder().DecodeToWav(from, to); },
         {{"ffmpeg", "ffmpeg -v error -y -i @ %"}}},
    };
    return routes;
}

// One route in this process: encoder-bench --run NAME FROM TO.
int RunRoute(const std::string& name, const char* from, const char* to) {
    for (const Route& route : Routes()) {
        if (route.Name != name) continue;
        route.Component(FromNative(from), FromNative(to));
        return 0;
    }
    return 2;
}

std::string Command(std::string tool, const fs::path& source, const fs::path& target) {
    tool.replace(tool.find('@'), 1, source.string());
    tool.replace(tool.find('%'), 1, target.string());
    return tool;
}

void Compare(const Route& route, const fs::path& root, const std::string& self) {
    std::map<std::string, std::vector<double>> times;
    const fs::path source = root / route.Source;
    const fs::path target = root / ("out" + route.Ending);
    for (int round = 0; round < Rounds; ++round) {
        std::map<std::string, std::string> commands = {{"", self + " --run " + route.Name + " @ %"}};
        commands.insert(route.Tools.begin(), route.Tools.end());
        for (const auto& [name, tool] : commands) {
            fs::remove(target);
            times[name].push_back(Seconds(Command(tool, source, target)));
        }
    }
    const double own = Median(times[""]);
    std::printf("%-10s component %7.3f", route.Name.c_str(), own);
    for (const auto& [name, tool] : route.Tools) {
        const double other = Median(times[name]);
        std::printf("   %s %7.3f (ratio %.2f)", name.c_str(), other, own / other);
    }
    std::printf("\n");
    std::fflush(stdout);
}

void CompareAll(int minutes, const std::vector<std::string>& chosen) {
    std::string pattern = (fs::temp_directory_path() / "encoder-bench-XXXXXX").string();
    const fs::path root = mkdtemp(pattern.data());
    WriteTrack(root / "in.wav", minutes * 60, 1);
    const std::string wav = (root / "in.wav").string();
    Seconds("flac -s -5 -o " + (root / "in.flac").string() + " " + wav);
    Seconds("mpcenc --silent " + wav + " " + (root / "in.mpc").string());
    Seconds("ffmpeg -v error -i " + wav + " -c:a aac -b:a 128k " + (root / "in.aac").string());
    Seconds("ffmpeg -v error -i " + wav + " -c:a alac " + (root / "in.m4a").string());
    std::printf("%d minutes of CD sound, median of %d rounds, seconds\n", minutes, Rounds);
    const std::string self = fs::canonical("/proc/self/exe").string();
    for (const Route& route : Routes()) {
        const bool isChosen = std::find(chosen.begin(), chosen.end(), route.Name) != chosen.end();
        if (chosen.empty() || isChosen) Compare(route, root, self);
    }
    fs::remove_all(root);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const std::vector<std::string> arguments(argv + 1, argv + argc);
        if (arguments.size() == 4 && arguments[0] == "--run") return RunRoute(arguments[1], argv[3], argv[4]);
        const int minutes = arguments.empty() ? 4 : std::max(1, std::atoi(arguments[0].c_str()));
        CompareAll(minutes,
                   {arguments.begin() + std::min<std::ptrdiff_t>(1, std::ssize(arguments)), arguments.end()});
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "encoder-bench: %s\n", failure.what());
        return 1;
    }
}
