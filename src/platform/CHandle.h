#pragma once

#include <memory>

// Owners of C handles. Both are as small as a pointer and free by a function known when compiling.
namespace Sonmira {

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

}  // namespace Sonmira
