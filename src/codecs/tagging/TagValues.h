#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
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

// One part of a tag as its bytes lie in the file, whatever they mean.
struct RawField {
    QByteArray Name;  // as the format calls it
    QByteArray Key;   // the property that it holds (see TagProperties.h); empty where none
    QByteArray Bytes;
};
using RawFields = QList<RawField>;

// The properties that a save changes, and of each whether it goes altogether.
using TagEdits = QMap<QByteArray, bool>;

// Whether every part that was not edited is there with the same bytes. Of several parts of one name an edit
// may change one, unless the property goes.
bool KeepsFields(const RawFields& before, const RawFields& after, const TagEdits& edits);

// Changes the first part that `isWanted` to `fresh`, or adds that at the end; without `fresh` all of them go.
template <class List, class IsWanted>
void ChangeFirst(List& list, const IsWanted& isWanted, const typename List::value_type* fresh) {
    if (fresh == nullptr) {
        list.removeIf(isWanted);
        return;
    }
    const auto found = std::find_if(list.begin(), list.end(), isWanted);
    if (found == list.end()) {
        list.append(*fresh);
    } else {
        *found = *fresh;
    }
}

}  // namespace Sonmira
