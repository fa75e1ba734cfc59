#include "codecs/tagging/GenreNames.h"

#include <id3v1genres.h>

namespace Sonmira {

QString GenreName(int index) {
    if (index < 0 || index >= GenreCount) return {};
    return QString::fromStdString(TagLib::ID3v1::genre(index).to8Bit(true));
}

int GenreIndexOf(const QString& name) {
    for (int index = 0; index < GenreCount; ++index) {
        if (GenreName(index).compare(name, Qt::CaseInsensitive) == 0) return index;
    }
    return -1;
}

}  // namespace Sonmira
