#pragma once

#include <unistd.h>

#include <cerrno>
#include <memory>
#include <utility>

namespace Sonmira {

// Owners of what C libraries and the system hand out. Those of C handles are as small as a pointer and free
// by a function known when compiling.

template <auto Free>
struct FreeHandle {
    template <class Handle>
    void operator()(Handle* handle) const {
        Free(handle);
    }
};

template <auto Free>
struct FreeHandleAddress {
    template <class Handle>
    void operator()(Handle* handle) const {
        Free(&handle);
    }
};

// For C libraries that free with `Free(handle)`.
template <class Handle, auto Free>
using CHandle = std::unique_ptr<Handle, FreeHandle<Free>>;

// For C libraries that free with `Free(&handle)` and set it to null.
template <class Handle, auto Free>
using CHandleByAddress = std::unique_ptr<Handle, FreeHandleAddress<Free>>;

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
    ~Descriptor() { Close(); }

    int Number() const { return Value; }
    bool IsOpen() const { return Value >= 0; }
    // Closes and returns the errno value of a late write failure; 0 when all went well or none was open.
    int Close() {
        if (Value < 0) return 0;
        return ::close(std::exchange(Value, -1)) == 0 ? 0 : errno;
    }

private:
    int Value = -1;
};

}  // namespace Sonmira
