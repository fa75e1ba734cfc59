#pragma once

namespace Sonmira {

// Under the sanitizers everything takes several times as long: tests of many alike cases take fewer of them.
#ifdef __SANITIZE_ADDRESS__
inline constexpr bool UnderSanitizers = true;
#else
inline constexpr bool UnderSanitizers = false;
#endif

}  // namespace Sonmira
