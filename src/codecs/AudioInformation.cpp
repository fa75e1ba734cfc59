#include "codecs/AudioInformation.h"

#include "codecs/FileFailure.h"
#include "codecs/GenreNames.h"
#include "codecs/MemoryChecked.h"
#include "codecs/SafeRewrite.h"
#include "codecs/TaggedFile.h"
#include "platform/NativePath.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// Whether the file can be opened at all; never waits on a pipe.
void CheckReadable(const QByteArray& file) {
    struct stat status {};
    if (stat(file.constData(), &status) != 0) throw ReadingFailure(errno);
    if (S_ISDIR(status.st_mode)) throw ReadingFailure(EISDIR);
    if (!S_ISREG(status.st_mode)) throw ReadingFailure(EINVAL);
    if (access(file.constData(), R_OK) != 0) throw ReadingFailure(errno);
}

}  // namespace

void AudioInformation::SetTagKind(qint16 kind) {
    if (kind != 1 && kind != 2) throw Failure(FailureNumber::InvalidPropertyValue);
    Kind = kind;
}

void AudioInformation::LoadTag(const QString& path) {
    const QByteArray file = ToNative(path);
    CheckReadable(file);
    static_cast<TagValues&>(*this) = WithMemoryChecked([&] {
        const std::unique_ptr<TaggedFile> tagged = OpenTagged(file, file);
        return tagged ? tagged->Read(Kind) : TagValues();
    });
}

void AudioInformation::SaveTag(const QString& path, Saving saving) {
    const QByteArray file = ToNative(path);
    CheckReadable(file);
    WithMemoryChecked([&] { Save(file, saving); });
}

void AudioInformation::Save(const QByteArray& file, Saving saving) {
    {
        const std::unique_ptr<TaggedFile> tagged = OpenTagged(file, file);
        if (!tagged) throw Failure(FailureNumber::Component, u"Files of this kind hold no tag"_s);
        if (tagged->Says(Kind, *this)) return;
    }
    const auto write = [&](const QByteArray& where) {
        const std::unique_ptr<TaggedFile> tagged = OpenTagged(where, file);
        if (!tagged || !tagged->Write(Kind, *this)) {
            throw Failure(FailureNumber::Component, u"The tag could not be written"_s);
        }
    };
    if (saving == Saving::InPlace) {
        write(file);
    } else {
        RewriteThroughCopy(file, write);
    }
}

QString AudioInformation::GenreName(int index) {
    return Sonmira::GenreName(index);
}

}  // namespace Sonmira
