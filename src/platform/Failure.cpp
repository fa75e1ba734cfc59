#include "platform/Failure.h"

#include "platform/NativePath.h"

#include <limits>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

QString ClassicText(int number) {
    switch (number) {
        case FailureNumber::InvalidCall:
            return u"Invalid procedure call or argument"_s;
        case FailureNumber::Overflow:
            return u"Overflow"_s;
        case FailureNumber::SubscriptOutOfRange:
            return u"Subscript out of range"_s;
        case FailureNumber::DivisionByZero:
            return u"Division by zero"_s;
        case FailureNumber::TypeMismatch:
            return u"Type mismatch"_s;
        case FailureNumber::FileNotFound:
            return u"File not found"_s;
        case FailureNumber::FileAlreadyExists:
            return u"File already exists"_s;
        case FailureNumber::PermissionDenied:
            return u"Permission denied"_s;
        case FailureNumber::PathFileAccess:
            return u"Path/File access error"_s;
        case FailureNumber::PathNotFound:
            return u"Path not found"_s;
        case FailureNumber::ObjectNotSet:
            return u"Object variable not set"_s;
        case FailureNumber::InvalidPropertyValue:
            return u"Invalid property value"_s;
        case FailureNumber::KeyNotFound:
            return u"Element not found"_s;
        case FailureNumber::KeyNotUnique:
            return u"Key is not unique in collection"_s;
        default:
            return u"Application-defined error"_s;
    }
}

}  // namespace

Failure::Failure(int number) : Failure(number, ClassicText(number)) {}

Failure::Failure(int number, const QString& description)
    : Number(number), Description(description), Narrow(ToNarrow(description)) {}

qint16 Checked16(qint64 value) {
    if (value < std::numeric_limits<qint16>::min() || value > std::numeric_limits<qint16>::max()) {
        throw Failure(FailureNumber::Overflow);
    }
    return static_cast<qint16>(value);
}

}  // namespace Sonmira
