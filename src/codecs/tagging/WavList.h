#pragma once

#include "codecs/tagging/TagValues.h"

#include <tpropertymap.h>

namespace Sonmira {

// The INFO list of a WAV file, of which only those items change that are named; others stay with their bytes.
// Source of the facts: Multimedia Programming Interface and Data Specifications 1.0, RIFF.
class WavList {
public:
    WavList() = default;
    // From the content of the chunk, with the mark "INFO" in front, as far as it can be read.
    explicit WavList(const QByteArray& content);

    // Whether it could be read to its end, and no item was in it twice; else it is not to be written.
    bool IsWhole() const { return WasWhole; }
    bool IsEmpty() const { return Items.isEmpty(); }
    TagLib::PropertyMap Properties() const;
    void Change(const TagLib::PropertyMap& changes);
    QByteArray Content() const;
    RawFields Fields() const;

private:
    struct Item {
        QByteArray Name;
        QByteArray Text;
        QByteArray Pad;
    };
    bool WasWhole = true;
    QList<Item> Items;
    QByteArray Rest;  // zeros
};

}  // namespace Sonmira
