#pragma once

#include "codecs/tagging/TagStream.h"
#include "codecs/tagging/TagValues.h"

#include <tpropertymap.h>

namespace Sonmira {

// Of an atom: its size and its name, four bytes each.
inline constexpr qint64 Mp4HeadSize = 8;

// The item list of an MP4 file, of which only those items change that are named; others stay with their
// bytes.
// Source of the facts: QuickTime File Format, metadata, and the names of the items as iTunes has them.
class Mp4Items {
public:
    struct Item {
        QByteArray Name;   // of the atom
        QByteArray Bytes;  // all of it
    };
    void Add(const Item& item) { Items.append(item); }

    TagLib::PropertyMap Properties() const;
    void Change(const TagLib::PropertyMap& changes);
    QByteArray Bytes() const;
    RawFields Fields() const;

private:
    QList<Item> Items;
};

// The name of a free-form item: "----:", who meant it, and what it is called.
QByteArray Mp4FreeName(const QByteArray& item);

// How the atoms of an MP4 file lie in each other. The tag library believes every size and count in them.
enum class Mp4Sizes {
    Fit,
    DoNotFit,  // can be read, but not be written
    TooDeep    // take all of the stack or of the time
};
Mp4Sizes SizesOf(TagStream& file);

}  // namespace Sonmira
