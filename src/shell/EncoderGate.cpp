#include "shell/EncoderGate.h"

#include "platform/Folders.h"
#include "platform/Paths.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

bool IsLameInstalled() {
    return FileExists(WithBackslash(EncoderSystemFolder()) + u"libmp3lame.so.0"_s);
}

}  // namespace Sonmira
