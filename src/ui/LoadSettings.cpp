// How the main window comes up: its texts, the empty collection and what the settings file remembers.

#include "engine/OutputFormats.h"
#include "platform/Processes.h"
#include "platform/Values.h"
#include "shell/widgets/About.h"
#include "shell/widgets/LanguageChoice.h"
#include "shell/widgets/MinMaxInfo.h"
#include "ui/BatchConverter.h"
#include "ui/LanguageTargets.h"
#include "ui/MainWindowLayout.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// The place in the language menu that is taken for one run when the picker was closed without a choice.
constexpr QStringView PlaceWithoutChoice = u"6";

}  // namespace

void BatchConverter::Form_Load() {
    setWindowTitle(ProgramTitle());
    const QSizeF least = LeastSizeOf(*this);
    HookMinMaxInfo(*this, least.width(), least.height());
    Languages.FillLanguageMenu();
    CreateNamedMutex(u"Tolvane_SonmiraPack");
    CreateNamedMutex(u"Global\\Tolvane_SonmiraPack");
    ChooseLanguage();
    TagPage.AddGenres();
    NewConversion();
    // A run without a format would write nothing and remove its sources all the same.
    if (!Output.LoadSettings()) FormatSelector.SelectFormat(FormatName::Wav.toString());
    TagPage.UseVersion1();
}

void BatchConverter::ChooseLanguage() {
    QString place = SavedLanguagePlace(*this);
    if (place.isEmpty()) place = PlaceWithoutChoice.toString();
    const int index = ToInteger16(LeadingNumber(place));
    // Without a file at that place the design captions stay, and nothing is loaded at all.
    if (index > Languages.HighestIndex()) return;
    ApplyLanguagePlace(Languages, index, [this](const QString& path) { ApplyLanguage(path, Controls); });
}

}  // namespace Sonmira
