// ape-bench [WAV] [ROUNDS]: Monkey's Audio by us, on one core and on all, against the Java encoder and
// decoder and against FFmpeg's decoder, with every instruction set that there is. Without a file it makes
// five minutes of sound of its own. Prints times real time and ratios; the least time of the rounds counts,
// since the machine's other work can only add to it.
#include "codecs/ape/Decode.h"
#include "codecs/ape/Encode.h"
#include "platform/Paths.h"

#include <sched.h>
#include <sys/resource.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

namespace {

namespace fs = std::filesystem;
using namespace Sonmira;

constexpr qint32 GoOn = 0;

// By the clock on the wall, and of all processors together, which other work on the machine hardly changes.
struct Cost {
    double Wall = 1e9;
    double Processor = 1e9;
};

double ProcessorSeconds() {
    double seconds = 0;
    for (const int who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
        rusage usage{};
        getrusage(who, &usage);
        for (const timeval& time : {usage.ru_utime, usage.ru_stime}) {
            seconds += static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
        }
    }
    return seconds;
}

template <class Work>
Cost Least(int rounds, Work&& work) {
    Cost least;
    for (int round = 0; round < rounds; ++round) {
        const auto start = std::chrono::steady_clock::now();
        const double before = ProcessorSeconds();
        work();
        least.Processor = std::min(least.Processor, ProcessorSeconds() - before);
        const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;
        least.Wall = std::min(least.Wall, wall.count());
    }
    return least;
}

// Runs a command line of which the words are quoted.
void Shell(std::initializer_list<std::string> words) {
    std::string command;
    for (const std::string& word : words) {
        command += '\'';
        command += word;
        command += "' ";
    }

    command += ">/dev/null 2>&1";
    if (std::system(command.c_str()) != 0) std::printf("failed: %s\n", command.c_str());
}

// Keeps this thread, and those that it starts, on one core as long as it lives.
class OneCore {
public:
    OneCore() {
        sched_getaffinity(0, sizeof Before, &Before);
        cpu_set_t one;
        CPU_ZERO(&one);
        int core = 0;
        while (!CPU_ISSET(core, &Before)) ++core;
        CPU_SET(core, &one);
        sched_setaffinity(0, sizeof one, &one);
    }
    ~OneCore() { sched_setaffinity(0, sizeof Before, &Before); }
    OneCore(const OneCore&) = delete;
    OneCore& operator=(const OneCore&) = delete;

private:
    cpu_set_t Before;
};

// Chords of decaying tones over a little noise: it compresses about as well as music does.
void WriteMusic(const fs::path& path, int seconds) {
    constexpr int rate = 44100;
    std::mt19937 random(1);
    std::normal_distribution<double> noise(0, 0.004);
    std::vector<std::int16_t> samples;
    std::array<double, 5> pitch{};
    for (int i = 0; i < rate * seconds; ++i) {
        const double since = (i % (rate / 2)) / static_cast<double>(rate);
        if (i % (rate / 2) == 0) {
            for (double& one : pitch) one = 55 * std::pow(2, static_cast<double>(random() % 48) / 12);
        }
        for (int channel = 0; channel < 2; ++channel) {
            double value = noise(random);
            for (std::size_t tone = 0; tone < pitch.size(); ++tone) {
                const double side = 0.06 + 0.03 * std::sin(static_cast<double>(tone) + 2 * channel);
                value += side * std::exp(-3 * since) * std::sin(6.283185307 * pitch[tone] * since);
                value += side / 3 * std::exp(-6 * since) * std::sin(6.283185307 * 3.01 * pitch[tone] * since);
            }
            samples.push_back(static_cast<std::int16_t>(std::lround(std::clamp(value, -1.0, 1.0) * 32767)));
        }
    }
    const auto bytes = static_cast<std::uint32_t>(samples.size() * 2);
    const auto put = [](std::ofstream& file, std::uint32_t value, int size) {
        for (int i = 0; i < size; ++i) file.put(static_cast<char>(value >> (8 * i)));
    };
    std::ofstream file(path, std::ios::binary);
    file << "RIFF";
    put(file, bytes + 36, 4);
    file << "WAVEfmt ";
    put(file, 16, 4);
    put(file, 1, 2);
    put(file, 2, 2);
    put(file, rate, 4);
    put(file, rate * 4, 4);
    put(file, 4, 2);
    put(file, 16, 2);
    file << "data";
    put(file, bytes, 4);
    file.write(static_cast<const char*>(static_cast<const void*>(samples.data())), bytes);
}

bool AreEqual(const fs::path& one, const fs::path& other) {
    std::ifstream a(one, std::ios::binary);
    std::ifstream b(other, std::ios::binary);
    return std::equal(std::istreambuf_iterator<char>(a), {}, std::istreambuf_iterator<char>(b), {});
}

QString Inner(const fs::path& path) {
    return FromNative(QByteArray::fromStdString(path.string()));
}

}  // namespace

int main(int argc, char** argv) {
    std::string pattern = (fs::temp_directory_path() / "ape-bench-XXXXXX").string();
    const fs::path root = mkdtemp(pattern.data());
    fs::path wav = root / "music.wav";
    if (argc > 1) {
        wav = argv[1];
    } else {
        WriteMusic(wav, 300);
    }
    const int rounds = argc > 2 ? std::max(1, std::atoi(argv[2])) : 3;
    // The header of 44 bytes tells bytes a second.
    std::uint32_t byteRate = 0;
    std::ifstream(wav, std::ios::binary).seekg(28).read(static_cast<char*>(static_cast<void*>(&byteRate)), 4);
    const auto size = static_cast<double>(fs::file_size(wav));
    const double length = size / std::max(byteRate, 1U);
    std::printf("%.0f s of sound; times real time, least time of %d rounds\n", length, rounds);

    const fs::path ours = root / "ours.ape";
    const fs::path theirs = root / "theirs.ape";
    const fs::path back = root / "back.wav";
    for (int level = 1; level <= 4; ++level) {
        const auto encode = [&](const ApeWorkers& workers) {
            fs::remove(ours);
            EncodeApe(Inner(wav), Inner(ours), level * 1000, {}, GoOn, workers);
        };
        const auto decode = [&](const ApeWorkers& workers) {
            DecodeApe(Inner(ours), Inner(back), {}, GoOn, workers);
        };
        const auto java = [&](const std::string& what, const fs::path& from, const fs::path& to) {
            fs::remove(to);
            Shell({"java", "-cp", "/usr/share/java/jmac.jar", "davaguine.jmac.core.jmacu", what,
                   from.string(), to.string()});
        };
        Cost one;
        Cost oneBack;
        {
            const OneCore core;
            one = Least(rounds, [&] { encode({1}); });
            oneBack = Least(rounds, [&] { decode({1}); });
        }
        const Cost all = Least(rounds, [&] { encode({}); });
        const Cost allBack = Least(rounds, [&] { decode({}); });
        const bool isBack = AreEqual(wav, back);
        const Cost javaEncode = Least(1, [&] { java({'c', static_cast<char>('0' + level)}, wav, theirs); });
        const Cost javaDecode = Least(1, [&] { java("d", theirs, back); });
        const Cost ffmpeg = Least(rounds, [&] {
            Shell({"taskset", "-c", "0", "ffmpeg", "-v", "error", "-y", "-threads", "1", "-i", ours.string(),
                   (root / "f.wav").string()});
        });
        std::printf("%d000  %5.1f %%%s%s\n", level, 100 * static_cast<double>(fs::file_size(ours)) / size,
                    AreEqual(ours, theirs) ? ", the very bytes of jmac" : ", other bytes than jmac",
                    isBack ? "" : ", AND DOES NOT COME BACK");
        const auto print = [&](const char* what, const Cost& cost, const Cost& against) {
            std::printf("  %-20s %5.0fx by the clock (%5.2f), %5.0fx of processor (%5.2f)\n", what,
                        length / cost.Wall, cost.Wall / against.Wall, length / cost.Processor,
                        cost.Processor / against.Processor);
        };
        print("encode, one core", one, one);
        print("encode, all cores", all, one);
        print("encode, jmac", javaEncode, one);
        print("decode, one core", oneBack, oneBack);
        print("decode, all cores", allBack, oneBack);
        print("decode, jmac", javaDecode, oneBack);
        print("decode, ffmpeg", ffmpeg, oneBack);
        for (const ApeKernels* kernels : AvailableApeKernels()) {
            const OneCore core;
            std::printf("  %s %.0fx", kernels->Name, length / Least(1, [&] {
                                                                  encode({1, kernels});
                                                              }).Processor);
        }
        std::printf("\n");
        std::fflush(stdout);
    }
    fs::remove_all(root);
    return 0;
}
