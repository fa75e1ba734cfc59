#include "engine/TempWav.h"

#include "platform/Folders.h"
#include "shell/Paths.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

QString TempWavPathFor(const QString& path, int extensionLength) {
    const QString name = FileNameOf(path);
    return WithBackslash(TemporaryFolder()) + name.left(name.size() - extensionLength) + u"wav"_s;
}

}  // namespace Sonmira
