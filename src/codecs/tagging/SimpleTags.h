#pragma once

#include <QString>

namespace Sonmira {

// The fields that every kind of tag has; each is cut at its first NUL.
struct SimpleTagFields {
    QString Artist;
    QString Album;
    QString Title;
    QString Comment;
    QString Genre;
    QString Year;
    QString Track;
};

// Writes them as TagFileSimple says (ApeFunctions.h).
void WriteSimpleTags(const QString& path, SimpleTagFields fields, bool clears, bool writesId3);

}  // namespace Sonmira
