#pragma once

#include <utility>

namespace Sonmira {

// Owns a file descriptor; -1 is none.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : Value(number) {}
    Descriptor(Descriptor&& other) noexcept : Value(std::exchange(other.Value, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(Value, other.Value);
        return *this;
    }
    ~Descriptor();

    int Number() const { return Value; }
    bool IsOpen() const { return Value >= 0; }
    // Closes and returns the errno value of a late write failure; 0 when all went well or none was open.
    int Close();

private:
    int Value = -1;
};

}  // namespace Sonmira
