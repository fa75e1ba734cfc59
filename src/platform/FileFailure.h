#pragma once

#include "platform/Failure.h"

// How a refusal of the operating system becomes a failure that people can read.
namespace Sonmira {

// For opening and reading. `error` is an errno value.
Failure ReadingFailure(int error);
// For creating and writing.
Failure WritingFailure(int error);

}  // namespace Sonmira
