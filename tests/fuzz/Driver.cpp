// Runs a fuzz target on spoilt copies of its seeds: [RUNS] [FIRST]. Run n is the same in each program run, so
// that "1 n" repeats the one that went wrong, which the driver names before it begins. SONMIRA_FUZZ_RUNS in
// the environment has the word on the number of runs; SONMIRA_FUZZ_INPUT names a file to which each input
// goes before its run. Files as arguments are the inputs themselves.
#include "FuzzTarget.h"
#include "support/TestFolder.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

namespace {

using Random = std::mt19937_64;

std::size_t Below(Random& random, qsizetype count) {
    return static_cast<std::size_t>(random() % static_cast<std::uint64_t>(std::max<qsizetype>(count, 1)));
}

void Spoil(QByteArray& input, const QByteArray& other, Random& random) {
    const auto at = static_cast<qsizetype>(Below(random, input.size()));
    const auto count = static_cast<qsizetype>(Below(random, 64));
    switch (random() % 8) {
        case 0:
            input.truncate(at);
            break;
        case 1:
            input.remove(at, count);
            break;
        case 2:
            input.insert(at, other.mid(static_cast<qsizetype>(Below(random, other.size())), count));
            break;
        case 3:
            if (!input.isEmpty())
                input.replace(at, count, QByteArray(count, random() % 2 != 0 ? '\xFF' : '\0'));
            break;
        case 4:  // headers stand at the start
            if (!input.isEmpty()) {
                input[static_cast<qsizetype>(Below(random, std::min<qsizetype>(input.size(), 128)))] =
                    static_cast<char>(random());
            }
            break;
        default:
            if (!input.isEmpty()) input[at] = static_cast<char>(input[at] ^ (1 << random() % 8));
    }
}

void RunOn(const QByteArray& input) {
    // A copy of exactly that size, so that reading beyond it is found.
    const std::vector<std::uint8_t> data(input.begin(), input.end());
    LLVMFuzzerTestOneInput(data.data(), data.size());
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    Sonmira::LimitFileSizes();
    if (argc > 1 && std::filesystem::exists(argv[1])) {
        for (int n = 1; n < argc; ++n) RunOn(Sonmira::ContentOf(argv[n]));
        return 0;
    }
    const char* wanted = std::getenv("SONMIRA_FUZZ_RUNS");
    const char* standard = argc > 1 ? argv[1] : "1000";
    const long runs = std::atol(wanted != nullptr ? wanted : standard);
    const long first = argc > 2 ? std::atol(argv[2]) : 0;
    const QList<QByteArray> seeds = FuzzSeeds();
    for (long run = first; run < first + runs; ++run) {
        Random random(static_cast<std::uint64_t>(run));
        QByteArray input = seeds[static_cast<qsizetype>(Below(random, seeds.size()))];
        const QByteArray& other = seeds[static_cast<qsizetype>(Below(random, seeds.size()))];
        for (std::uint64_t left = random() % 8; left > 0; --left) Spoil(input, other, random);
        std::printf("\rrun %ld", run);
        std::fflush(stdout);
        if (const char* file = std::getenv("SONMIRA_FUZZ_INPUT"))
            std::ofstream(file, std::ios::binary).write(input.constData(), input.size());
        RunOn(input);
    }
    std::printf("\r%ld runs\n", runs);
    return 0;
}
