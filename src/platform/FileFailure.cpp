#include "platform/FileFailure.h"

#include "platform/NativePath.h"

#include <cerrno>
#include <system_error>

namespace Sonmira {

using namespace Qt::StringLiterals;

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
