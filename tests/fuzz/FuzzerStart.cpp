// The start of a program that clang's fuzzer runs. With SONMIRA_FUZZ_SEEDS it puts the seeds into that folder
// first.
#include "FuzzTarget.h"

#include <QCoreApplication>

#include <filesystem>
#include <fstream>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    static const QCoreApplication application(*argc, *argv);
    if (const char* folder = std::getenv("SONMIRA_FUZZ_SEEDS")) {
        int number = 0;
        for (const QByteArray& seed : FuzzSeeds()) {
            const auto name = std::filesystem::path(folder) / ("seed-" + std::to_string(number++));
            std::ofstream(name, std::ios::binary).write(seed.constData(), seed.size());
        }
    }
    Sonmira::LimitFileSizes();
    return 0;
}
