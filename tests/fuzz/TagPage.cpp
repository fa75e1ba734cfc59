// Whatever a tag holds: it is loaded, and a title is saved with all else kept, or the save is refused and the
// file is as it was. Of ID3v1, ID3v2, APE tags, Vorbis comments, MP4 atoms, ASF attributes and WAV chunks.
#include "FuzzTarget.h"
#include "OtherEyes.h"
#include "Seeds.h"
#include "codecs/ApeFunctions.h"
#include "codecs/AudioInformation.h"
#include "platform/Failure.h"
#include "support/TestFolder.h"

#include <array>
#include <filesystem>

using namespace Sonmira;
using namespace Qt::StringLiterals;

namespace {

const TestFolder& Folder() {
    static const TestFolder folder;
    return folder;
}

void SaveTitle(const QByteArray& input, qint16 kind) {
    // By this name MPEG sound is taken for it as well; the other kinds are known by their content.
    const QString path = Folder().MakeFile("in.mp3", input);
    const QByteArray file = Folder().Native("in.mp3");
    Account before = AccountBy(file);
    // A first tag at the front hides those at the end, which are still there, from FFmpeg.
    if (kind == 2 && before.Format == "mp3" && !input.startsWith("ID3")) before.Texts.clear();
    AudioInformation tag;
    tag.SetTagKind(kind);
    const bool isSaved = PassOver([&] {
        tag.LoadTag(path);
        tag.Title = u"another title"_s;
        tag.SaveTag(path);
    });
    if (!isSaved && ContentOf(file) != input) Found("A refused save has changed the file");
    if (std::distance(std::filesystem::directory_iterator(Folder().Native().toStdString()), {}) != 1)
        Found("A save has left a file behind");
    if (!isSaved) return;
    const Account after = AccountBy(file);
    if (const QByteArray lost = WhatIsLost(before, after); !lost.isEmpty()) Found(lost.constData());
    AudioInformation again;
    again.SetTagKind(kind);
    again.LoadTag(path);
    if (again.Title != tag.Title) Found("A title that was saved is another one");
}

// The fields that the encoders' own routines write, where the file lies.
void SaveFields(const QByteArray& input) {
    const QString path = Folder().MakeFile("in.mp3", input);
    const QByteArray file = Folder().Native("in.mp3");
    const QByteArray sound = AccountBy(file).Sound;
    const bool isSaved = PassOver([&] {
        TagFileSimple(path, u"artist"_s, u"album"_s, u"title"_s, u"comment"_s, u"Rock"_s, u"2001"_s, u"1"_s,
                      0, 1);
    });
    if (isSaved && !sound.isEmpty() && AccountBy(file).Sound != sound)
        Found("The fields of a tag have changed the sound");
    std::array<char, 128> block{};
    GetID3Tag(path, block);
}

}  // namespace

QList<QByteArray> FuzzSeeds() {
    return TaggedSeeds();
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray input = InputOf(data, size);
    SaveTitle(input, 2);
    SaveTitle(input, 1);
    SaveFields(input);
    return 0;
}
