#include "platform/Failure.h"

#include "platform/Paths.h"

#include <cerrno>
#include <limits>
#include <system_error>

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

namespace {

Failure GeneralFailure(int error) {
    switch (error) {
        case EACCES:
        case EPERM:
        case EROFS:
            return Failure(FailureNumber::PermissionDenied);
        case EISDIR:
            return {FailureNumber::PathFileAccess, u"This is a folder, not a file"_s};
        case ENXIO:
            return {FailureNumber::PathFileAccess, u"This is not a regular file"_s};
        default:
            return {FailureNumber::Component,
                    FromNarrow(std::error_code(error, std::generic_category()).message().c_str())};
    }
}

}  // namespace

Failure ReadingFailure(int error) {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
            return Failure(FailureNumber::FileNotFound);
        case EIO:
            return {FailureNumber::Component, u"The file cannot be read from its drive"_s};
        default:
            return GeneralFailure(error);
    }
}

Failure WritingFailure(int error) {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
            return Failure(FailureNumber::PathNotFound);
        case EEXIST:
            return Failure(FailureNumber::FileAlreadyExists);
        case ENOSPC:
        case EDQUOT:
            return {FailureNumber::Component, u"The disk is full"_s};
        case EFBIG:
            return {FailureNumber::Component, u"The drive takes no file of this size"_s};
        default:
            return GeneralFailure(error);
    }
}

}  // namespace Sonmira
