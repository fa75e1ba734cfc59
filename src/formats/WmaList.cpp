#include "formats/WmaList.h"

#include "codecs/AudioFile.h"
#include "formats/OutputPanel.h"
#include "platform/Failure.h"
#include "platform/Values.h"
#include "shell/Settings.h"
#include "shell/widgets/ChoiceList.h"
#include "shell/widgets/Events.h"

#include <QLineEdit>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

constexpr int FormatCount = 51;
constexpr int FirstSelection = 39;
constexpr int DefaultFormat = 43;

QString ItemText(int number, const QString& format) {
    return FormatNumber(number, u"#00 - ") + format;
}

}  // namespace

WmaList::WmaList(OutputPanel& controls, AudioFile& fileWenc) : Panel(controls), FileWenc(fileWenc) {
    OnEvent(Panel.ComboWmaFormat, &ChoiceList::Click, this, [this] { ComboWmaFormat_Click(); });
}

void WmaList::Fill() {
    for (int number = 1; number <= FormatCount; ++number) {
        FileWenc.SelectWmaFormat(number);
        Panel.ComboWmaFormat->addItem(ItemText(number, FileWenc.FormatString()));
    }
    Panel.ComboWmaFormat->setCurrentIndex(-1);
}

void WmaList::ComboWmaFormat_Click() {
    const int number = Panel.ComboWmaFormat->currentIndex() + 1;
    FileWenc.SelectWmaFormat(number);
    WriteIniValue(SettingsFile, u"WMA"_s, u"Num"_s, PlainNumber(number));
}

void WmaList::ApplySavedWmaFormat() {
    // Stands where the saved number is none of the list.
    FileWenc.SelectWmaFormat(FirstSelection);
    const QString saved = ReadIniValue(SettingsFile, u"WMA"_s, u"Num"_s);
    int number = DefaultFormat;  // also of a key that is no number
    if (saved != u"0") PassOver([&] { number = ToInteger32(saved); });
    if (number >= 1 && number <= FormatCount) FileWenc.SelectWmaFormat(number);
    Panel.TextOutFormat->setText(FileWenc.FormatString());
    Panel.ComboWmaFormat->SelectText(ItemText(number, FileWenc.FormatString()));
}

}  // namespace Sonmira
