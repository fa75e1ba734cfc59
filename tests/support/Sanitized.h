#pragma once

#include <cstddef>
#include <iterator>
#include <vector>

namespace Sonmira {

// Under the sanitizers everything takes several times as long: tests of many alike cases take fewer of them.
#ifdef __SANITIZE_ADDRESS__
inline constexpr bool UnderSanitizers = true;
#else
inline constexpr bool UnderSanitizers = false;
#endif

// All of them, or under the sanitizers every one of `step`.
template <class List>
auto SomeOf(const List& all, std::size_t step) {
    std::vector<typename std::iterator_traits<decltype(std::begin(all))>::value_type> some;
    std::size_t n = 0;
    for (const auto& one : all) {
        if (!UnderSanitizers || n++ % step == 0) some.push_back(one);
    }
    return some;
}

}  // namespace Sonmira
