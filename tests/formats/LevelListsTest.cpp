#include "platform/Paths.h"
#include "ui/MainWindowTest.h"

#include <QLineEdit>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class LevelList : public MainWindowTest {
protected:
    static constexpr QStringView Ape = u"APE (MonKey's audio)";
    static constexpr QStringView Flac = u"FLAC (Free Lossless Audio Codec)";
    static constexpr QStringView Mpc = u"Mpc (Musepack)";

    void Save(const QString& section, const QString& value, const QString& key = u"Quality"_s) {
        WriteIniValue(SettingsFile, section, key, value);
    }
    QString Saved(const QString& section, const QString& key = u"Quality"_s) {
        return ReadIniValue(SettingsFile, section, key);
    }
    // The line of the key as the file holds it: reading drops blanks.
    static QByteArray SavedLine(const QByteArray& section, const QByteArray& key = "Quality") {
        const QByteArray content = ContentOf(ToNative(SettingsFile));
        const qsizetype line = content.indexOf('\n' + key, content.indexOf('[' + section + ']')) + 1;
        return content.sliced(line, content.indexOf('\n', line) - line);
    }
    static QStringList ItemsOf(const ChoiceList* list) {
        QStringList items;
        for (int n = 0; n < list->count(); ++n) items.append(list->itemText(n));
        return items;
    }
    void Select(QStringView format) { Panel().ComboOutFormat->SelectText(format.toString()); }
    const OutputSettings& Levels() { return Window->Settings(); }
    // Which of the detail controls is to be seen.
    QString Detail() {
        QStringList shown;
        for (const QWidget* detail :
             {static_cast<QWidget*>(Panel().TextOutFormat), static_cast<QWidget*>(Panel().ComboWmaFormat),
              static_cast<QWidget*>(Panel().ComboAPEFormat), static_cast<QWidget*>(Panel().ComboFLACFormat),
              static_cast<QWidget*>(Panel().ComboMPCFormat)}) {
            if (detail->isVisible()) shown.append(detail->objectName());
        }
        return shown.join(u'+');
    }
};

TEST_F(LevelList, EachFormatShowsItsOwn) {
    WriteIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s, u"True"_s);
    Open();
    const std::pair<QStringView, QStringView> details[] = {
        {u"Mp3", u"TextOutFormat"}, {Ape, u"ComboAPEFormat"},   {u"Wav", u"TextOutFormat"},
        {Flac, u"ComboFLACFormat"}, {u"Ogg", u"TextOutFormat"}, {Mpc, u"ComboMPCFormat"},
        {u"Wma", u"ComboWmaFormat"}};
    for (const auto& [format, detail] : details) {
        Select(format);
        EXPECT_EQ(Detail(), detail) << format.toString().toStdString();
    }
}

TEST_F(LevelList, ItemsHaveTheirWholeTexts) {
    Open();
    EXPECT_EQ(ItemsOf(Panel().ComboAPEFormat),
              (QStringList{u"Compression Fast"_s, u"Compression Normal"_s, u"Compression High"_s,
                           u"Compression Very High (Insane)"_s}));
    EXPECT_EQ(ItemsOf(Panel().ComboFLACFormat),
              (QStringList{u"Compression level 0 (Fast)"_s, u"Compression level 1"_s,
                           u"Compression level 2"_s, u"Compression level 3"_s, u"Compression level 4"_s,
                           u"Compression level 5 (Recommanded)"_s, u"Compression level 6"_s,
                           u"Compression level 7"_s, u"Compression level 8 (Best)"_s}));
    EXPECT_EQ(ItemsOf(Panel().ComboMPCFormat),
              (QStringList{u"Quality 0 - Very poor "_s, u"Quality 1 - Poor "_s, u"Quality 2 - Low "_s,
                           u"Quality 3 - Low/Medium (90 kbps)"_s, u"Quality 4 - Medium (130 kbps)"_s,
                           u"Quality 5 - High (180 kbps)"_s, u"Quality 6 - Excellent (210 kbps)"_s,
                           u"Quality 7 - Excellent (240 kbps)"_s, u"Quality 8 - Extreme"_s,
                           u"Quality 9 - braindead"_s}));
}

TEST_F(LevelList, NothingIsSelectedBeforeItsFormatIs) {
    Open();
    for (const ChoiceList* list : {Panel().ComboAPEFormat, Panel().ComboFLACFormat, Panel().ComboMPCFormat}) {
        EXPECT_EQ(list->currentIndex(), -1) << list->objectName().toStdString();
        EXPECT_EQ(list->currentText(), QString());
    }
}

TEST_F(LevelList, EveryApeItemIsALevelAndHasItsOwnText) {
    const std::pair<QString, int> levels[] = {{u"COMPRESSION_LEVEL_FAST"_s, 1000},
                                              {u"COMPRESSION_LEVEL_NORMAL"_s, 2000},
                                              {u"COMPRESSION_LEVEL_HIGH"_s, 3000},
                                              {u"COMPRESSION_LEVEL_EXTRA_HIGH"_s, 4000}};
    Open();
    Select(Ape);
    for (int n = 0; n < 4; ++n) {
        Panel().ComboAPEFormat->SelectPlace(n);
        EXPECT_EQ(Levels().ApeCompressionLevel, levels[n].second);
        EXPECT_EQ(Saved(u"APE"_s), levels[n].first);
    }
    for (int n = 0; n < 4; ++n) {
        Save(u"APE"_s, levels[n].first);
        Select(Ape);
        EXPECT_EQ(Levels().ApeCompressionLevel, levels[n].second);
        EXPECT_EQ(Panel().ComboAPEFormat->currentIndex(), n);
        EXPECT_EQ(Saved(u"APE"_s), levels[n].first);
    }
}

TEST_F(LevelList, EveryFlacItemIsALevelAndItsTextIsSaved) {
    Open();
    Select(Flac);
    const QStringList items = ItemsOf(Panel().ComboFLACFormat);
    for (int n = 0; n < 9; ++n) {
        Panel().ComboFLACFormat->SelectPlace(n);
        EXPECT_EQ(Levels().FlacCompressionLevel, n);
        EXPECT_EQ(Saved(u"FLAC"_s), items[n]);
    }
    for (int n = 0; n < 9; ++n) {
        Save(u"FLAC"_s, items[n]);
        Select(Flac);
        EXPECT_EQ(Levels().FlacCompressionLevel, n);
        EXPECT_EQ(Panel().ComboFLACFormat->currentIndex(), n);
        EXPECT_EQ(Saved(u"FLAC"_s), items[n]);
    }
}

TEST_F(LevelList, EveryMusepackItemIsItsQuality) {
    Open();
    Select(Mpc);
    for (int n = 0; n < 10; ++n) {
        Panel().ComboMPCFormat->SelectPlace(n);
        EXPECT_EQ(Levels().MpcQuality, n);
        EXPECT_EQ(SavedLine("MPC"), "Quality=" + QByteArray::number(n));
    }
    for (int n = 0; n < 10; ++n) {
        Save(u"MPC"_s, QString::number(n));
        Select(Mpc);
        EXPECT_EQ(Levels().MpcQuality, n);
        EXPECT_EQ(Panel().ComboMPCFormat->currentIndex(), n);
        EXPECT_EQ(SavedLine("MPC"), "Quality=" + QByteArray::number(n));
    }
}

// The selection of a format writes, and the list that it sets writes again. What the first of the two leaves
// shows where the list keeps silent.
TEST_F(LevelList, AGoodLevelIsWrittenAgainAsItIs) {
    Folder.MakeFile("settings/Sonmira.ini",
                    "[LANGUE]\nVALUE= 0\n[APE]\nQuality = COMPRESSION_LEVEL_HIGH \n"
                    "[FLAC]\nQuality =\tCompression level 3\n");
    Open();
    for (const bool silent : {true, false}) {
        Panel().ComboAPEFormat->blockSignals(silent);
        Panel().ComboFLACFormat->blockSignals(silent);
        Select(Ape);
        Select(Flac);
        EXPECT_EQ(SavedLine("APE"), "Quality =COMPRESSION_LEVEL_HIGH") << "the blanks of a hand go";
        EXPECT_EQ(SavedLine("FLAC"), "Quality =Compression level 3");
        EXPECT_EQ(Levels().ApeCompressionLevel, 3000);
        EXPECT_EQ(Levels().FlacCompressionLevel, 3);
        EXPECT_EQ(Panel().ComboAPEFormat->currentIndex(), 2);
        EXPECT_EQ(Panel().ComboFLACFormat->currentIndex(), 3);
    }
}

TEST_F(LevelList, AFlacLevelThatIsNoItemStandsAsABareNumberUntilTheListWritesItsItem) {
    Save(u"FLAC"_s, u"7"_s);
    Open();
    Panel().ComboFLACFormat->blockSignals(true);
    Select(Flac);
    EXPECT_EQ(SavedLine("FLAC"), "Quality=5");
    Panel().ComboFLACFormat->blockSignals(false);
    Select(Flac);
    EXPECT_EQ(SavedLine("FLAC"), "Quality=Compression level 5 (Recommanded)");
}

TEST_F(LevelList, ApeTakesAndSavesItsLevel) {
    Save(u"APE"_s, u"COMPRESSION_LEVEL_HIGH"_s);
    Open();
    EXPECT_EQ(Levels().ApeCompressionLevel, 0) << "nothing before the format is selected";
    Select(Ape);
    EXPECT_EQ(Levels().ApeCompressionLevel, 3000);
    EXPECT_EQ(Panel().ComboAPEFormat->currentText(), u"Compression High"_s);
    Panel().ComboAPEFormat->SelectText(u"Compression Fast"_s);
    EXPECT_EQ(Levels().ApeCompressionLevel, 1000);
    EXPECT_EQ(Saved(u"APE"_s), u"COMPRESSION_LEVEL_FAST"_s);
}

TEST_F(LevelList, AnUnknownApeLevelIsRepaired) {
    Save(u"APE"_s, u"compression_level_high"_s);
    Open();
    Select(Ape);
    EXPECT_EQ(Levels().ApeCompressionLevel, 2000);
    EXPECT_EQ(Saved(u"APE"_s), u"COMPRESSION_LEVEL_NORMAL"_s);
}

TEST_F(LevelList, FlacSavesTheTextOfItsItem) {
    Save(u"FLAC"_s, u"Compression level 8 (Best)"_s);
    Open();
    Select(Flac);
    EXPECT_EQ(Levels().FlacCompressionLevel, 8);
    Panel().ComboFLACFormat->SelectText(u"Compression level 1"_s);
    EXPECT_EQ(Levels().FlacCompressionLevel, 1);
    EXPECT_EQ(Saved(u"FLAC"_s), u"Compression level 1"_s);
}

TEST_F(LevelList, AFlacLevelThatIsNoItemBecomesTheFifth) {
    for (const QString& saved : {QString(), u"7"_s, u"5"_s}) {
        Save(u"FLAC"_s, saved);
        Open();
        Select(Flac);
        EXPECT_EQ(Levels().FlacCompressionLevel, 5);
        EXPECT_EQ(Panel().ComboFLACFormat->currentText(), u"Compression level 5 (Recommanded)"_s);
        EXPECT_EQ(Saved(u"FLAC"_s), u"Compression level 5 (Recommanded)"_s);
    }
}

TEST_F(LevelList, MusepackTakesANumberWithBlanksAndWritesItBackWithoutThem) {
    Folder.MakeFile("settings/Sonmira.ini", "[LANGUE]\nVALUE= 0\n[MPC]\nQuality= \t7 \n");
    Open();
    Select(Mpc);
    EXPECT_EQ(Levels().MpcQuality, 7);
    EXPECT_EQ(Panel().ComboMPCFormat->currentIndex(), 7);
    EXPECT_EQ(SavedLine("MPC"), "Quality=7");
    Panel().ComboMPCFormat->SelectPlace(3);
    EXPECT_EQ(SavedLine("MPC"), "Quality=3");
    Save(u"MPC"_s, QString());
    Select(Mpc);
    EXPECT_EQ(SavedLine("MPC"), "Quality=5");
}

TEST_F(LevelList, MusepackKeepsTheTextOfANumberThatItTook) {
    Open();
    for (const auto& [text, quality] : {std::pair("07", 7), {"6.4", 6}, {"2 or so", 2}, {"best", 0}}) {
        Save(u"MPC"_s, QString::fromLatin1(text));
        Select(Mpc);
        EXPECT_EQ(Levels().MpcQuality, quality);
        EXPECT_EQ(Panel().ComboMPCFormat->currentIndex(), quality);
        EXPECT_EQ(SavedLine("MPC"), QByteArray("Quality=") + text) << "written over the list's own number";
    }
}

TEST_F(LevelList, AMusepackQualityThatTheListDoesNotHaveSelectsNothingAndStaysAsItIs) {
    for (const int quality : {12, 10, -1}) {
        Save(u"MPC"_s, QString::number(quality));
        Open();
        Select(Mpc);
        EXPECT_EQ(Levels().MpcQuality, quality);
        EXPECT_EQ(SavedLine("MPC"), "Quality=" + QByteArray::number(quality));
        EXPECT_EQ(Panel().ComboMPCFormat->currentIndex(), -1);
        EXPECT_EQ(Panel().ComboMPCFormat->currentText(), QString());
        EXPECT_EQ(Detail(), u"ComboMPCFormat"_s);
    }
}

TEST_F(LevelList, AMusepackQualityThatTheListDoesNotHaveLeavesTheOneThatWasSelected) {
    Open();
    Select(Mpc);
    Panel().ComboMPCFormat->SelectPlace(3);
    for (const int quality : {12, -1}) {
        Save(u"MPC"_s, QString::number(quality));
        Select(Mpc);
        EXPECT_EQ(Levels().MpcQuality, quality);
        EXPECT_EQ(Panel().ComboMPCFormat->currentIndex(), 3);
        EXPECT_EQ(Saved(u"MPC"_s), QString::number(quality));
    }
}

TEST_F(LevelList, AFirstSelectionWritesTheDefaults) {
    Open();
    for (const QStringView format : {Ape, Flac, Mpc}) Select(format);
    EXPECT_EQ(Saved(u"APE"_s), u"COMPRESSION_LEVEL_NORMAL"_s);
    EXPECT_EQ(Saved(u"FLAC"_s), u"Compression level 5 (Recommanded)"_s);
    EXPECT_EQ(Saved(u"MPC"_s), u"5"_s);
    EXPECT_EQ(Levels().MpcQuality, 5);
}

TEST_F(LevelList, WmaOffersFiftyOneFormatsAllDifferent) {
    WriteIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s, u"True"_s);
    Open();
    const ChoiceList& list = *Panel().ComboWmaFormat;
    ASSERT_EQ(list.count(), 51);
    QSet<QString> texts;
    for (int n = 0; n < list.count(); ++n) texts.insert(list.itemText(n).sliced(5));
    EXPECT_EQ(texts.size(), 51);
    EXPECT_TRUE(list.itemText(0).startsWith(u"01 - "));
    EXPECT_EQ(Panel().ComboOutFormat->itemText(Panel().ComboOutFormat->count() - 1), u"Wma"_s);
}

TEST_F(LevelList, WmaTakesFormat43WhereNoneIsSaved) {
    WriteIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s, u"True"_s);
    for (const QString& saved : {QString(), u"0"_s, u"51"_s}) {
        Save(u"WMA"_s, saved, u"Num"_s);
        Open();
        Select(u"Wma");
        const int number = saved == u"51" ? 51 : 43;
        EXPECT_EQ(Panel().ComboWmaFormat->currentIndex(), number - 1);
        EXPECT_EQ(Saved(u"WMA"_s, u"Num"_s), QString::number(number));
        EXPECT_TRUE(Panel().ComboWmaFormat->currentText().endsWith(Panel().TextOutFormat->text()));
    }
}

TEST_F(LevelList, WithoutWmaSupportThereIsNoWma) {
    Open();
    EXPECT_EQ(Panel().ComboWmaFormat->count(), 0);
    EXPECT_EQ(Panel().ComboOutFormat->findText(u"Wma"_s), -1);
}

}  // namespace
}  // namespace Sonmira
