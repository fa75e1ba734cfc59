#include "kit/Icons.h"
#include "kit/Palette.h"

#include <QDirIterator>
#include <QPainter>
#include <QPalette>

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class Icons : public ::testing::Test {
protected:
    Icons() { DecidePalette(QPalette(Qt::black, Qt::white)); }
    ~Icons() override { DecidePalette(QPalette(Qt::black, Qt::white)); }

    static QStringList Names() {
        OwnIcon(u"folder");
        QStringList names;
        for (QDirIterator files(u":/icons"_s); files.hasNext();) {
            names += files.nextFileInfo().completeBaseName();
        }
        return names;
    }

    // Whether a colour stands in a picture, unmixed.
    static bool Holds(const QImage& picture, const QColor& color) {
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.pixelColor(x, y) == color) return true;
            }
        }
        return false;
    }

    static QImage Drawn(QStringView name, int size, QIcon::Mode mode = QIcon::Normal) {
        return OwnIcon(name).pixmap(QSize(size, size), 1, mode).toImage();
    }
};

TEST_F(Icons, EveryDrawingOfTheProgramIsThere) {
    const QStringList names = Names();
    EXPECT_GE(names.size(), 40);
    for (const char* name : {"new",
                             "add-file",
                             "add-directory",
                             "convert",
                             "convert-selection",
                             "cancel",
                             "cancel-file",
                             "information",
                             "play",
                             "close",
                             "language",
                             "wma-support",
                             "help",
                             "faq",
                             "homepage",
                             "open-directory",
                             "remove",
                             "folder",
                             "options",
                             "stop",
                             "clear",
                             "save",
                             "tag",
                             "tag-copy",
                             "tag-paste",
                             "tag-show",
                             "tag-cancel",
                             "tag-save",
                             "row-converted",
                             "row-error",
                             "row-conversion",
                             "row-waiting",
                             "collection",
                             "drive",
                             "audio-file",
                             "missing-encoder",
                             "logo",
                             "sonmira",
                             "audiotool"}) {
        EXPECT_TRUE(names.contains(QString::fromLatin1(name))) << name;
    }
}

TEST_F(Icons, EveryDrawingCanBeDrawnAtEverySize) {
    for (const QString& name : Names()) {
        for (const int size : {16, 24, 36, 48, 256}) {
            const QImage picture = Drawn(name, size);
            bool isEmpty = true;
            for (int y = 0; y < picture.height() && isEmpty; ++y) {
                for (int x = 0; x < picture.width() && isEmpty; ++x)
                    isEmpty = qAlpha(picture.pixel(x, y)) == 0;
            }
            EXPECT_FALSE(isEmpty) << name.toStdString() << " at " << size;
        }
    }
}

TEST_F(Icons, ANameWithoutADrawingGivesNoIcon) {
    EXPECT_TRUE(OwnIcon(u"nothing-of-ours").isNull());
    EXPECT_FALSE(OwnIcon(u"folder").isNull());
}

TEST_F(Icons, TheInkIsDarkOnLightDesktopsAndLightOnDarkOnes) {
    const QIcon icon = OwnIcon(u"folder");
    const QImage light = icon.pixmap(QSize(96, 96)).toImage();
    EXPECT_TRUE(Holds(light, LightPalette.Ink));
    EXPECT_TRUE(Holds(light, LightPalette.FolderFill));
    DecidePalette(QPalette(Qt::white, Qt::black));
    const QImage dark = icon.pixmap(QSize(96, 96)).toImage();
    EXPECT_TRUE(Holds(dark, DarkPalette.Ink));
    EXPECT_TRUE(Holds(dark, DarkPalette.FolderFill));
    EXPECT_FALSE(Holds(dark, LightPalette.Ink));
}

TEST_F(Icons, TheProgramsOwnIconsAreTheSameOnEveryDesktop) {
    for (QStringView name : {u"sonmira", u"audiotool"}) {
        const QImage light = Drawn(name, 64);
        DecidePalette(QPalette(Qt::white, Qt::black));
        EXPECT_EQ(Drawn(name, 64), light) << name.toString().toStdString();
        DecidePalette(QPalette(Qt::black, Qt::white));
    }
}

TEST_F(Icons, ADisabledIconHasThirtyEightPercentOfItsStrength) {
    const QImage full = Drawn(u"stop", 48);
    const QImage faint = Drawn(u"stop", 48, QIcon::Disabled);
    ASSERT_EQ(full.pixelColor(24, 24), LightPalette.Danger);
    EXPECT_NEAR(faint.pixelColor(24, 24).alphaF(), 0.38, 0.01);
    EXPECT_NEAR(faint.pixelColor(24, 24).redF(), LightPalette.Danger.redF(), 0.01);
}

TEST_F(Icons, ASelectedRowDoesNotTintAnIcon) {
    EXPECT_EQ(Drawn(u"folder", 16, QIcon::Selected), Drawn(u"folder", 16));
    EXPECT_EQ(Drawn(u"folder", 16, QIcon::Active), Drawn(u"folder", 16));
}

TEST_F(Icons, OnAScaledScreenTheIconIsDrawnLargerAndNotBlownUp) {
    for (const double scale : {1.0, 1.5, 2.0}) {
        const QPixmap picture = OwnIcon(u"folder").pixmap(QSize(24, 24), scale);
        EXPECT_EQ(picture.size(), (QSizeF(24, 24) * scale).toSize());
        EXPECT_EQ(picture.deviceIndependentSize(), QSizeF(24, 24));
        QImage expected = Drawn(u"folder", qRound(24 * scale));
        QImage seen = picture.toImage();
        seen.setDevicePixelRatio(1);
        EXPECT_EQ(seen, expected) << scale;
    }
}

TEST_F(Icons, PaintedDirectlyItIsSharpToo) {
    QImage screen(48, 48, QImage::Format_ARGB32_Premultiplied);
    screen.fill(Qt::transparent);
    screen.setDevicePixelRatio(2);
    {
        QPainter painter(&screen);
        OwnIcon(u"folder").paint(&painter, QRect(0, 0, 24, 24));
    }
    screen.setDevicePixelRatio(1);
    EXPECT_EQ(screen, Drawn(u"folder", 48));
}

TEST_F(Icons, TheLogoKeepsItsShape) {
    EXPECT_EQ(OwnIcon(u"logo").actualSize(QSize(360, 360)), QSize(360, 180));
}

TEST_F(Icons, EachFormatHasADrawingOfItsOwn) {
    QList<QImage> pictures{FormatIcon(u"txt").pixmap(16).toImage()};
    EXPECT_EQ(pictures.front(), Drawn(u"audio-file", 16));
    for (QStringView ending : {u"aac", u"alac", u"ape", u"flac", u"mp3", u"mpc", u"ogg", u"wav", u"wma"}) {
        const QImage picture = FormatIcon(ending).pixmap(16).toImage();
        EXPECT_FALSE(pictures.contains(picture)) << ending.toString().toStdString();
        EXPECT_EQ(FormatIcon(ending.toString().toUpper()).pixmap(16).toImage(), picture);
        pictures += picture;
    }
    EXPECT_EQ(FormatIcon(u"mp+").pixmap(16).toImage(), FormatIcon(u"mpc").pixmap(16).toImage());
}

}  // namespace
}  // namespace Sonmira
