#pragma once

#include <QByteArray>
#include <QList>

#include <cstddef>
#include <cstdint>

// What each fuzzed program defines. The first has the name and form that fuzzing tools look for; here
// Driver.cpp calls it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// Good inputs, which the driver spoils.
QList<QByteArray> FuzzSeeds();
