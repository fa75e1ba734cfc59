#include "engine/TempWav.h"

#include "platform/Failure.h"
#include "platform/FileRemoval.h"
#include "platform/NativePath.h"
#include "platform/Paths.h"
#include "platform/TemporaryFolder.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// The folder is asked for in a text of 100 characters, the closing one among them: a longer one stays out,
// and what is left is the root.
QString TempFolder() {
    constexpr qsizetype LengthOfText = 100;
    const QString folder = TemporaryFolder();
    return WithBackslash(ToNative(folder).size() < LengthOfText ? folder : QString());
}

}  // namespace

QString TempWavPathFor(const QString& path, int extensionLength) {
    const QString name = FileNameOf(path);
    return TempFolder() + name.left(name.size() - extensionLength) + u"wav"_s;
}

QString FreeTempWavPathFor(const QString& path, int extensionLength) {
    const QString wav = TempWavPathFor(path, extensionLength);
    PassOver([&] { DeleteFileOutright(wav); });
    return FileExists(wav) ? QString() : wav;
}

}  // namespace Sonmira
