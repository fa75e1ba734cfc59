#include "OptionsTest.h"
#include "ui/Theme.h"

#include <QTabBar>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// How the options windows look and how they are used without a mouse.
class OptionsLook : public OptionsTest {
protected:
    // The controls in the order in which the tab key walks through them, beginning with `first`.
    static QStringList TabOrder(QWidget& window, QWidget* first) {
        QStringList names;
        first->setFocus();
        for (int n = 0; n < 40; ++n) {
            const QWidget* control = window.focusWidget();
            const auto* button = qobject_cast<const QAbstractButton*>(control);
            QString name = control->objectName();
            if (button != nullptr && name.isEmpty()) name = button->text();
            names.append(name);
            QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
            if (window.focusWidget() == first) break;
        }
        return names;
    }
    static const QStringList Mp3Buttons;

    // The controls that are smaller than what stands in them, or reach out of what holds them.
    static QStringList Clipped(const QWidget& window) {
        QStringList clipped;
        for (const QWidget* control : window.findChildren<QWidget*>()) {
            const bool isBuiltIn = control->objectName().startsWith(u"qt_") ||
                                   qobject_cast<const QSpinBox*>(control->parentWidget()) != nullptr ||
                                   qobject_cast<const QTabBar*>(control->parentWidget()) != nullptr;
            if (isBuiltIn || !control->isVisible() || qobject_cast<const QLineEdit*>(control) != nullptr)
                continue;
            const QSize wanted = control->sizeHint().isValid() ? control->sizeHint() : QSize(0, 0);
            const bool fits = control->width() >= wanted.width() && control->height() >= wanted.height() &&
                              control->parentWidget()->rect().contains(control->geometry());
            if (!fits)
                clipped.append(QString::fromLatin1(control->metaObject()->className()) + u' ' +
                               control->objectName());
        }
        return clipped;
    }

    // Looks at a window as it stands; a picture of it goes into the folder that the environment names, for
    // the eyes of people.
    static void LookAt(QWidget& window, const QString& name) {
        QApplication::processEvents();
        EXPECT_EQ(Clipped(window), QStringList()) << name.toStdString();
        const QString folder = qEnvironmentVariable("SONMIRA_PICTURES");
        const QString scale = QString::number(qRound(window.devicePixelRatioF() * 100));
        if (!folder.isEmpty()) window.grab().save(folder + u'/' + name + u'-' + scale + u".png"_s);
    }
};

const QStringList OptionsLook::Mp3Buttons = {u"cmdOK"_s, u"cmdCancel"_s, u"cmdApply"_s};

TEST_F(OptionsLook, TheTabKeyWalksThroughTheMp3WindowInReadingOrder) {
    Save(u"Mp3"_s, u"13"_s, u"16000"_s);
    Save(u"Mp3"_s, u"11"_s, u"50"_s);
    Save(u"Mp3"_s, u"20"_s, u"2"_s);
    Open();
    InMp3([](Mp3Options& window) {
        const QStringList pages[] = {
            {u"sldrBitrate"_s, u"cmbChMode"_s, u"cmbFrequency"_s, u"sldrQuality"_s},
            {u"chHFilt"_s, u"udHFiltF"_s, u"udHFiltW"_s, u"chLFilt"_s, u"udLFiltF"_s, u"udLFiltW"_s},
            {u"cmbVBRCodingMethod"_s, u"udVbrQuality"_s, u"sldrVbrBitrate"_s, u"chWriteVBRHeader"_s,
             u"chStrictlyEnforceMinBitrate"_s},
            {u"chStrictlyISOCompliance"_s, u"chShortBlocks"_s, u"chBitReservoir"_s, u"chBlockType"_s,
             u"chErrorProtection"_s, u"cmbATHControl"_s, u"cmbEmphasis"_s},
            {u"Phone"_s},
            {u"Fast Standard"_s},
            {u"txtCommLine"_s}};
        for (int tab = 0; tab < 7; ++tab) {
            window.tabMP3->setCurrentIndex(tab);
            EXPECT_EQ(TabOrder(window, window.tabMP3->tabBar()),
                      QStringList(u"qt_tabwidget_tabbar"_s) + pages[tab] + Mp3Buttons)
                << tab;
        }
    });
}

TEST_F(OptionsLook, TheTabKeyWalksThroughTheOggWindowInReadingOrder) {
    Save(u"AudioConverter"_s, u"Format"_s, u"Ogg"_s);
    Open();
    InOgg([](OggOptions& window) {
        const QStringList head = {u"cmbFrequency"_s, u"cmbChMode"_s, u"chQuality"_s};
        const QStringList buttons = {u"cmdOk"_s, u"cmdCancel"_s, u"cmdApply"_s};
        Tick(window.chVbr);
        const QStringList bitrates = {u"chVbr"_s, u"sldrBitrate"_s, u"sldrMinBitrate"_s, u"sldrMaxBitrate"_s};
        EXPECT_EQ(TabOrder(window, window.cmbFrequency), head + bitrates + buttons);
        Tick(window.chQuality);
        EXPECT_EQ(TabOrder(window, window.cmbFrequency), head + QStringList(u"sldrQuality"_s) + buttons);
    });
}

// The keyboard may be elsewhere for a moment, and the arrows do nothing there.
bool HasKeyboard(QWidget& window, QWidget* control) {
    return Becomes([&] {
        window.activateWindow();
        control->setFocus();
        return control->hasFocus();
    });
}

TEST_F(OptionsLook, TheTabKeyWalksThroughTheWavWindowAndArrowsThroughItsGroups) {
    Save(u"AudioConverter"_s, u"Format"_s, u"Wav"_s);
    Open();
    InWav([](WavOptions& window) {
        EXPECT_EQ(
            TabOrder(window, window.Option1->button(3)),
            (QStringList{u"44100 Hz"_s, u"Stéréo"_s, u"16 bits per sample"_s, u"Command2"_s, u"Command1"_s}));
        ASSERT_TRUE(HasKeyboard(window, window.Option1->button(3)));
        for (int n = 4; n < 12; ++n) {
            QTest::keyClick(window.focusWidget(), Qt::Key_Down);
            EXPECT_EQ(window.Option1->checkedId(), n);
        }
        EXPECT_EQ(window.Option2->checkedId(), 1);
        EXPECT_EQ(window.Option3->checkedId(), 5);
    });
}

TEST_F(OptionsLook, ThePresetsAreReachedByTheArrowKeys) {
    Open();
    InMp3([](Mp3Options& window) {
        window.tabMP3->setCurrentIndex(4);
        QAbstractButton* const first = window.opPreset->button(1);
        ASSERT_TRUE(HasKeyboard(window, first));
        for (int n = 0; n < 9; ++n) QTest::keyClick(window.focusWidget(), Qt::Key_Down);
        EXPECT_EQ(window.opPreset->checkedId(), 10);
        QTest::keyClick(window.focusWidget(), Qt::Key_Return);
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_EQ(Saved(u"Mp3"_s, u"3"_s), u"256"_s);
}

TEST_F(OptionsLook, EnterIsOkAndEscapeIsCancel) {
    Open();
    InMp3([](Mp3Options& window) {
        MoveTo(window.sldrBitrate, 11);
        QTest::keyClick(window.sldrBitrate, Qt::Key_Escape);
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_EQ(Saved(u"Mp3"_s, u"3"_s), QString());
    InMp3([](Mp3Options& window) {
        MoveTo(window.sldrBitrate, 11);
        QTest::keyClick(window.sldrBitrate, Qt::Key_Return);
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_EQ(Saved(u"Mp3"_s, u"3"_s), u"192"_s);

    Select(u"Ogg"_s);
    InOgg([](OggOptions& window) {
        QTest::keyClick(&window, Qt::Key_Escape);
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_EQ(Saved(u"OGG"_s, u"1"_s), QString());
    InOgg([](OggOptions& window) {
        QTest::keyClick(window.sldrBitrate, Qt::Key_Return);
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_EQ(Saved(u"OGG"_s, u"1"_s), u"0"_s);

    Select(u"Wav"_s);
    InWav([](WavOptions& window) {
        QTest::keyClick(&window, Qt::Key_Escape);
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_EQ(Saved(u"Wav"_s, u"bits"_s), QString());
    InWav([](WavOptions& window) {
        window.Option3->button(4)->click();
        QTest::keyClick(window.Option3->button(4), Qt::Key_Return);
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_EQ(Saved(u"Wav"_s, u"bits"_s), u"4"_s);
}

TEST_F(OptionsLook, ANumberThatIsTypedCountsWhenEnterEndsIt) {
    Save(u"Mp3"_s, u"13"_s, u"16000"_s);
    Open();
    InMp3([](Mp3Options& window) {
        window.tabMP3->setCurrentIndex(1);
        window.udLFiltF->setFocus();
        window.udLFiltF->selectAll();
        QTest::keyClicks(window.udLFiltF, u"12345"_s);
        QTest::keyClick(window.udLFiltF, Qt::Key_Return);
    });
    EXPECT_EQ(Saved(u"Mp3"_s, u"13"_s), u"12345"_s);
}

// All windows, every tab; with larger letters, too, as users of a large font have them.
TEST_F(OptionsLook, NothingIsClipped) {
    ApplyTheme(*qApp);
    const QFont usual = QApplication::font();
    Save(u"Mp3"_s, u"20"_s, u"2"_s);
    // Twice the letters on twice the dots is more than the screen of the test holds.
    const bool fineDots = qApp->devicePixelRatio() > 1;
    for (const double factor : fineDots ? QList<double>{1.0} : QList<double>{1.0, 1.5, 2.0}) {
        QFont font = usual;
        font.setPointSizeF(usual.pointSizeF() * factor);
        QApplication::setFont(font);
        const QString letters = u"-letters"_s + QString::number(qRound(factor * 100));
        Open();
        Select(u"Mp3"_s);
        EXPECT_EQ(InMp3([&](Mp3Options& window) {
                      for (int tab = 0; tab < window.tabMP3->count(); ++tab) {
                          window.tabMP3->setCurrentIndex(tab);
                          LookAt(window, u"mp3-%1%2"_s.arg(tab).arg(letters));
                      }
                  }),
                  1);
        Select(u"Ogg"_s);
        EXPECT_EQ(InOgg([&](OggOptions& window) {
                      LookAt(window, u"ogg"_s + letters);
                      window.chVbr->click();
                      LookAt(window, u"ogg-vbr"_s + letters);
                  }),
                  1);
        Select(u"Wav"_s);
        EXPECT_EQ(InWav([&](WavOptions& window) { LookAt(window, u"wav"_s + letters); }), 1);
    }
    QApplication::setFont(usual);
}

TEST_F(OptionsLook, NothingIsClippedOnAScreenOfFinerDots) {
    for (const char* scale : {"1.5", "2"}) {
        const ToolResult run =
            RunTool({"env", QByteArray("QT_SCALE_FACTOR=") + scale, QByteArray("QT_QPA_PLATFORM=offscreen"),
                     QCoreApplication::applicationFilePath().toLocal8Bit(),
                     "--gtest_filter=OptionsLook.NothingIsClipped"});
        EXPECT_EQ(run.ExitCode, 0) << run.Output.constData() << run.Errors.constData();
        EXPECT_TRUE(run.Output.contains("1 test")) << run.Output.constData();
    }
}

}  // namespace
}  // namespace Sonmira
