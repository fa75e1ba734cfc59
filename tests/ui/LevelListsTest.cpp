#include "MainWindowTest.h"

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
    void Select(QStringView format) { Panel().ComboOutFormat->SelectText(format.toString()); }
    const EncoderLevels& Levels() { return Window->State().Levels; }
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

TEST_F(LevelList, MusepackSavesTheNumberWithoutBlanks) {
    Save(u"MPC"_s, u"\" 7 \""_s);
    Open();
    Save(u"MPC"_s, u"7"_s);
    Select(Mpc);
    EXPECT_EQ(Levels().MpcQuality, 7);
    Panel().ComboMPCFormat->SelectPlace(3);
    EXPECT_EQ(Levels().MpcQuality, 3);
    EXPECT_EQ(Saved(u"MPC"_s), u"3"_s);
}

TEST_F(LevelList, AMusepackQualityThatTheListDoesNotHaveStaysAsItIs) {
    Save(u"MPC"_s, u"12"_s);
    Open();
    Select(Mpc);
    EXPECT_EQ(Levels().MpcQuality, 12);
    EXPECT_EQ(Saved(u"MPC"_s), u"12"_s);
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
