#include "shell/widgets/LanguageChoice.h"

#include "platform/Values.h"
#include "shell/Settings.h"
#include "shell/widgets/Deb.h"
#include "shell/widgets/Events.h"
#include "shell/widgets/Form1.h"
#include "shell/widgets/LanguageMenu.h"

#include <QAction>

namespace Sonmira {

using namespace Qt::StringLiterals;

QString SavedLanguagePlace(QWidget& window) {
    const auto saved = [] { return ReadIniValue(SettingsFile, u"LANGUE"_s, u"VALUE"_s); };
    QString place = saved();
    if (!place.isEmpty()) return place;
    Deb::Unload();  // the logo would stand before the picker
    Form1(&window).exec();
    return saved();
}

void ApplyLanguagePlace(const LanguageMenu& languages, int place, const ApplyTexts& apply) {
    languages.Item(place)->setChecked(true);
    apply(languages.PathOf(place));
}

void ConnectLanguageMenu(LanguageMenu& languages, const ApplyTexts& apply) {
    OnEvent(&languages, &LanguageMenu::LangueNameClick, &languages, [&languages, apply](int place) {
        WithFailureBox([&] {
            WriteIniValue(SettingsFile, u"LANGUE"_s, u"VALUE"_s, NumberText(place));
            ApplyLanguagePlace(languages, place, apply);
            languages.UncheckAllBut(place);
        });
    });
}

}  // namespace Sonmira
