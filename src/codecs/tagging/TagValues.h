#pragma once

#include <QString>

namespace Sonmira {

// The fields of a tag, as people edit them. Texts hold no padding; an absent text is empty.
struct TagValues {
    // The genre number that stands for none and for free text.
    static constexpr qint16 OtherGenre = 12;

    QString Title;
    QString Artist;
    QString Album;
    QString Comment;
    QString Copyright;
    QString URL;
    QString EncodedBy;
    QString Composer;
    QString GenreString;
    QString OriginalArtist;
    qint16 Genre = OtherGenre;  // place in the genre table, 0 to 147
    qint32 Year = 0;            // 0: none
    qint16 Track = 0;           // 0: none; files of the kind WMA count their first track as 0
};

}  // namespace Sonmira
