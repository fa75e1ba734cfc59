#include "codecs/AudioInformation.h"

#include "codecs/tagging/FileAccount.h"
#include "codecs/tagging/Id3v1.h"
#include "codecs/tagging/TaggedFile.h"
#include "platform/Failure.h"
#include "platform/Paths.h"
#include "platform/SafeRewrite.h"

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

Failure NotWritten() {
    return {FailureNumber::Component, u"The tag could not be written"_s};
}

// A file that lies about its parts, or a text beyond what a format can count, takes a tag that nobody can
// read again. ID3v1 alone may cut a text, or change it to what it has letters for.
bool IsLost(const TagValues& wanted, const TagValues& seen) {
    constexpr qsizetype Id3Field = 30;
    for (const auto field : {&TagValues::Title, &TagValues::Artist, &TagValues::Album, &TagValues::Comment,
                             &TagValues::Composer, &TagValues::Copyright, &TagValues::URL,
                             &TagValues::EncodedBy, &TagValues::OriginalArtist, &TagValues::GenreString}) {
        const QString text = (wanted.*field).trimmed();
        const QString read = (seen.*field).trimmed();
        if (read.isEmpty() != text.isEmpty() || (read.size() > Id3Field && read != text)) return true;
    }
    return false;
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
    TagEdits edits;
    RawFields parts;
    {
        const std::unique_ptr<TaggedFile> tagged = OpenTagged(file, file);
        if (!tagged) throw Failure(FailureNumber::Component, u"Files of this kind hold no tag"_s);
        if (tagged->IsUpToDate(Kind, *this)) return;
        edits = tagged->Edits(Kind, *this);
        if (saving == Saving::ThroughCopy) parts = tagged->Raw();
    }
    const auto write = [&](const QByteArray& where) {
        const std::unique_ptr<TaggedFile> tagged = OpenTagged(where, file);
        if (!tagged || !tagged->Write(Kind, *this)) throw NotWritten();
        return tagged->Read(Kind);
    };
    if (saving == Saving::InPlace) {
        write(file);
    } else {
        const FileAccount before = AccountOf(file, parts);
        RewriteThroughCopy(file, [&](const QByteArray& copy) {
            const TagValues wanted = write(copy);
            const std::unique_ptr<TaggedFile> again = OpenTagged(copy, file);
            if (!again || IsLost(wanted, again->Read(Kind))) throw NotWritten();
            if (!KeepsAll(before, AccountOf(copy, again->Raw()), edits)) {
                throw Failure(FailureNumber::Component,
                              u"A save would lose parts of the tag or of the sound"_s);
            }
        });
    }
}

QString AudioInformation::GenreName(int index) {
    return Sonmira::GenreName(index);
}

}  // namespace Sonmira
