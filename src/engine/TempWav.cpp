#include "engine/TempWav.h"

#include "platform/Failure.h"
#include "platform/FileRemoval.h"
#include "platform/Folders.h"
#include "shell/Paths.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

QString TempWavPathFor(const QString& path, int extensionLength) {
    const QString name = FileNameOf(path);
    return WithBackslash(TemporaryFolder()) + name.left(name.size() - extensionLength) + u"wav"_s;
}

QString FreeTempWavPathFor(const QString& path, int extensionLength) {
    const QString wav = TempWavPathFor(path, extensionLength);
    PassOver([&] { DeleteFileOutright(wav); });
    return FileExists(wav) ? QString() : wav;
}

}  // namespace Sonmira
