#pragma once

#include "codecs/AudioFile.h"

#include <QLineEdit>

namespace Sonmira {

// What an options window works on: the window that opened it, as far as it concerns a format.
struct FormatCaller {
    AudioFile& FileWenc;                     // takes the format
    QLineEdit& TextOutFormat;                // shows it; empty while a refused one is in force
    static constexpr int Frequency = 44100;  // what a window without a choice shows
    static constexpr int Channels = 2;

    void ShowFormat() const {
        TextOutFormat.setText(FileWenc.FormatString());
        TextOutFormat.setCursorPosition(0);  // where the box is too narrow, the codec is what must be seen
    }
};

}  // namespace Sonmira
