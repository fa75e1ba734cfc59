#pragma once

#include "platform/Failure.h"

#include <new>
#include <stdexcept>
#include <system_error>

namespace Sonmira {

// How a refusal of the operating system becomes a failure that people can read.

// For opening and reading. `error` is an errno value.
Failure ReadingFailure(int error);
// For creating and writing.
Failure WritingFailure(int error);

// Runs one call of the libraries. What the C++ library throws there is memory that ran out, of which a
// hostile file may be the cause, or a thread that could not be had: a failure of that file, not of the
// program.
template <class Call>
auto WithMemoryChecked(Call&& call) {
    using namespace Qt::StringLiterals;
    try {
        return call();
    } catch (const std::bad_alloc&) {
    } catch (const std::length_error&) {
    } catch (const std::system_error& error) {
        throw Failure(FailureNumber::Component, QString::fromLocal8Bit(error.what()));
    }
    throw Failure(FailureNumber::Component, u"Not enough memory for this file"_s);
}

}  // namespace Sonmira
