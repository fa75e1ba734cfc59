#include "engine/OutputStage.h"

#include "engine/OutputFormatNames.h"
#include "engine/RunState.h"
#include "engine/RunView.h"
#include "engine/Transcoder.h"
#include "shell/Paths.h"
#include "shell/Values.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

QString UniqueStem(const QString& stem, const QString& extension) {
    if (!FileExists(stem + extension)) return stem;
    for (int n = 1;; ++n) {
        QString numbered = stem + u'(' + PlainNumber(n) + u')';
        if (!FileExists(numbered + extension)) return numbered;
    }
}

void OutputStage::Dispatch() {
    const QString format = View.ComboOutFormat();
    if (format == FormatName::Mp3) {
        EncodeToMp3();
    } else if (format == FormatName::Ogg) {
        EncodeToOgg();
    } else if (format == FormatName::Wav) {
        EncodeToWav();
    }
}

void OutputStage::EncodeToMp3() {
    EncodeByStream(u".mp3"_s);
}
void OutputStage::EncodeToOgg() {
    EncodeByStream(u".ogg"_s);
}
void OutputStage::EncodeToWav() {
    EncodeByStream(u".wav"_s);
}

void OutputStage::EncodeByStream(const QString& extension) {
    if (!Run.Busy) return;
    Run.OutputStem = UniqueStem(Run.OutputStem, extension);
    TranscodeStream(Run, View, Parts, Run.CurrentInput, Run.OutputStem + extension);
}

}  // namespace Sonmira
