#pragma once

#include <QByteArray>
#include <QList>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

// What each fuzzed program defines. The first has the name and form that fuzzing tools look for; it is called
// by Driver.cpp or, in a build with clang's fuzzer, by that.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// Good inputs, from which the spoilt ones are made.
QList<QByteArray> FuzzSeeds();

namespace Sonmira {

inline QByteArray InputOf(const std::uint8_t* data, std::size_t size) {
    return {static_cast<const char*>(static_cast<const void*>(data)), static_cast<qsizetype>(size)};
}

// Ends the program as a crash would: something that must never be, is.
[[noreturn]] inline void Found(const char* what) {
    std::printf("\n%s\n", what);
    std::fflush(stdout);
    std::abort();
}

// No output of a fuzzed program may reach that size: whatever writes on and on is found by it.
void LimitFileSizes();

}  // namespace Sonmira
