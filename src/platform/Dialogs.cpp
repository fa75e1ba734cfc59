#include "platform/Dialogs.h"

#include "platform/Paths.h"

#include <cstdio>

namespace Sonmira {

DialogFunctions& Dialogs() {
    static DialogFunctions functions{
        [](const QString& text, MessageIcon /*icon*/, const QString& title) {
            std::fprintf(stderr, "%s: %s\n", ToNarrow(title).constData(), ToNarrow(text).constData());
        },
        [](const OpenDialogRequest& /*request*/) { return std::optional<QStringList>(); },
        [](const QString& /*title*/) { return QString(); },
        [](const QString& /*question*/, const QString& /*title*/) { return false; },
        [](quint32 /*start*/) { return std::optional<quint32>(); },
    };
    return functions;
}

}  // namespace Sonmira
