#include "formats/LevelLists.h"

#include "codecs/AudioFile.h"
#include "engine/Components.h"
#include "engine/OutputFormats.h"
#include "formats/OutputPanel.h"
#include "platform/Failure.h"
#include "platform/Values.h"
#include "shell/Settings.h"
#include "shell/widgets/Events.h"
#include "shell/widgets/InputBoxes.h"

#include <QLineEdit>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

struct ApeLevel {
    QStringView Item;
    QStringView Saved;
    qint32 Level;
};
constexpr ApeLevel ApeLevels[] = {{u"Compression Fast", u"COMPRESSION_LEVEL_FAST", 1000},
                                  {u"Compression Normal", u"COMPRESSION_LEVEL_NORMAL", 2000},
                                  {u"Compression High", u"COMPRESSION_LEVEL_HIGH", 3000},
                                  {u"Compression Very High (Insane)", u"COMPRESSION_LEVEL_EXTRA_HIGH", 4000}};
constexpr const ApeLevel& DefaultApeLevel = ApeLevels[1];

// The place is the level. The texts are saved as they stand, misspelling and all.
constexpr QStringView FlacItems[] = {
    u"Compression level 0 (Fast)", u"Compression level 1", u"Compression level 2",
    u"Compression level 3",        u"Compression level 4", u"Compression level 5 (Recommanded)",
    u"Compression level 6",        u"Compression level 7", u"Compression level 8 (Best)"};
constexpr int DefaultFlacLevel = 5;

// The place is the quality.
constexpr QStringView MpcItems[] = {u"Quality 0 - Very poor ",
                                    u"Quality 1 - Poor ",
                                    u"Quality 2 - Low ",
                                    u"Quality 3 - Low/Medium (90 kbps)",
                                    u"Quality 4 - Medium (130 kbps)",
                                    u"Quality 5 - High (180 kbps)",
                                    u"Quality 6 - Excellent (210 kbps)",
                                    u"Quality 7 - Excellent (240 kbps)",
                                    u"Quality 8 - Extreme",
                                    u"Quality 9 - braindead"};
constexpr int DefaultMpcQuality = 5;

const QString Key = u"Quality"_s;
const QString ApeSection = u"APE"_s;
const QString FlacSection = u"FLAC"_s;
const QString MpcSection = u"MPC"_s;

QString Saved(const QString& section) {
    return ReadIniValue(SettingsFile, section, Key);
}
void Save(const QString& section, const QString& value) {
    WriteIniValue(SettingsFile, section, Key, value);
}

int FlacLevelOf(const QString& item) {
    const auto found = std::find(std::begin(FlacItems), std::end(FlacItems), item);
    return found == std::end(FlacItems) ? -1 : static_cast<int>(found - std::begin(FlacItems));
}

}  // namespace

LevelLists::LevelLists(OutputPanel& controls, OutputSettings& settings)
    : Panel(controls), Settings(settings) {
    for (const ApeLevel& level : ApeLevels) Panel.ComboAPEFormat->addItem(level.Item.toString());
    for (const QStringView item : FlacItems) Panel.ComboFLACFormat->addItem(item.toString());
    for (const QStringView item : MpcItems) Panel.ComboMPCFormat->addItem(item.toString());
    // Adding the first item selects it in silence; a list shows an item only where its level is one of them.
    for (ChoiceList* list : {Panel.ComboAPEFormat, Panel.ComboFLACFormat, Panel.ComboMPCFormat}) {
        list->setCurrentIndex(-1);
    }
    OnEvent(Panel.ComboAPEFormat, &ChoiceList::Click, this, [this] { ComboAPEFormat_Click(); });
    OnEvent(Panel.ComboFLACFormat, &ChoiceList::Click, this, [this] { ComboFLACFormat_Click(); });
    OnEvent(Panel.ComboMPCFormat, &ChoiceList::Click, this, [this] { ComboMPCFormat_Click(); });
}

const QWidget* LevelLists::ApplySaved(const QString& format) {
    struct Row {
        QStringView Format;
        void (LevelLists::*Apply)();
        ChoiceList* List;
    };
    const Row rows[] = {{FormatName::Ape, &LevelLists::ApplySavedApeFormat, Panel.ComboAPEFormat},
                        {FormatName::Flac, &LevelLists::ApplySavedFlacFormat, Panel.ComboFLACFormat},
                        {FormatName::Mpc, &LevelLists::ApplySavedMpcFormat, Panel.ComboMPCFormat}};
    for (const Row& row : rows) {
        if (format != row.Format) continue;
        (this->*row.Apply)();
        return row.List;
    }
    return nullptr;
}

void LevelLists::ComboAPEFormat_Click() {
    const QString item = Panel.ComboAPEFormat->currentText();
    for (const ApeLevel& level : ApeLevels) {
        if (item != level.Item) continue;
        Settings.ApeCompressionLevel = level.Level;
        Save(ApeSection, level.Saved.toString());
    }
}

void LevelLists::ComboFLACFormat_Click() {
    const QString item = Panel.ComboFLACFormat->currentText();
    const int level = FlacLevelOf(item);
    if (level < 0) return;
    Settings.FlacCompressionLevel = level;
    Save(FlacSection, item);
}

void LevelLists::ComboMPCFormat_Click() {
    Settings.MpcQuality = Panel.ComboMPCFormat->currentIndex();
    Save(MpcSection, PlainNumber(Settings.MpcQuality));
}

void LevelLists::ApplySavedApeFormat() {
    const QString saved = Saved(ApeSection);
    const auto found = std::find_if(std::begin(ApeLevels), std::end(ApeLevels),
                                    [&](const ApeLevel& level) { return saved == level.Saved; });
    const ApeLevel& level = found == std::end(ApeLevels) ? DefaultApeLevel : *found;
    Settings.ApeCompressionLevel = level.Level;
    Save(ApeSection, level.Saved.toString());
    PassOver([&] { Panel.ComboAPEFormat->SelectText(level.Item.toString()); });
}

void LevelLists::ApplySavedFlacFormat() {
    const QString saved = Saved(FlacSection);
    int level = FlacLevelOf(saved);
    if (level < 0) {
        // The repair writes the bare number, which is no item; the selection below writes the item over it.
        level = DefaultFlacLevel;
        Save(FlacSection, PlainNumber(level));
    } else {
        Save(FlacSection, saved);
    }
    Settings.FlacCompressionLevel = level;
    PassOver([&] { Panel.ComboFLACFormat->SelectText(FlacItems[level].toString()); });
}

void LevelLists::ApplySavedMpcFormat() {
    PassOver([this] {
        const QString saved = WithoutBlanks(Saved(MpcSection)).toString();
        if (saved.isEmpty()) {
            Settings.MpcQuality = DefaultMpcQuality;
            Save(MpcSection, PlainNumber(DefaultMpcQuality));
            Panel.ComboMPCFormat->SelectPlace(DefaultMpcQuality);
            return;
        }
        Settings.MpcQuality = ToInteger32(LeadingNumber(saved));
        // A quality that the list does not have fails here, with the value taken and the key as it was.
        if (Settings.MpcQuality < 0) throw Failure(FailureNumber::InvalidPropertyValue);
        Panel.ComboMPCFormat->SelectPlace(Settings.MpcQuality);
        Save(MpcSection, saved);
    });
}

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
