#include "codecs/ape/Decode.h"
#include "codecs/ape/Encode.h"
#include "platform/Failure.h"
#include "platform/NativePath.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
using namespace Sonmira;
int main(int argc, char** argv) {
    ApeWorkers w;
    w.Threads = argc > 4 ? atoi(argv[4]) : 0;
    if (argc > 5) w.Kernels = AvailableApeKernels()[atoi(argv[5])];
    qint32 kill = 0;
    auto t = std::chrono::steady_clock::now();
    try {
        if (atoi(argv[3]) == 0)
            DecodeApe(FromNative(argv[1]), FromNative(argv[2]), {}, kill, w);
        else
            EncodeApe(FromNative(argv[1]), FromNative(argv[2]), atoi(argv[3]), {}, kill, w);
    } catch (const Failure& f) {
        std::puts(f.what());
        return 1;
    }
    std::printf("%.3f\n", std::chrono::duration<double>(std::chrono::steady_clock::now() - t).count());
}
