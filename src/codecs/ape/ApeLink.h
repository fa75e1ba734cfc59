#pragma once

#include "platform/Files.h"

#include <memory>
#include <optional>

namespace Sonmira {

// A part of a Monkey's Audio file, the image: what a small text file ending in "apl" stands for. The text
// names the image and the first block of the part and the one behind its last.
struct ApeLink {
    std::shared_ptr<const InputFile> Image;
    qint64 Start = 0;
    std::optional<qint64> Finish;  // nothing: up to the end of the image

    // What a link to a sound of that many blocks takes of it. Fails where that is nothing.
    struct Part {
        qint64 Start;
        qint64 Finish;
        bool IsCutShort;  // the image ends before the part does
    };
    Part PartOf(qint64 blocks) const;
};

// The link that the open file at an inner path holds, with its image opened. Nothing for files that are no
// such text, among them streams under that name. Fails where the text is damaged and where there is no such
// image. An image is looked for beside the text unless its path is absolute, first under the very name that
// the text gives and then with separators of both kinds, in UTF-8 and in Latin-1.
std::optional<ApeLink> ReadApeLink(const QString& path, const InputFile& file);

}  // namespace Sonmira
