#include "shell/EncoderGate.h"

#include "platform/Folders.h"
#include "platform/Paths.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

bool IsLameInstalled() {
    return FileExists(WithBackslash(EncoderSystemFolder()) + u"lame_enc.dll"_s);
}

}  // namespace Sonmira
