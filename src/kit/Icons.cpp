#include "kit/Icons.h"

#include "kit/Palette.h"

#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

// A static library's resources are only there once somebody asks for them by name. The macro must stand
// outside every namespace.
static void UseDrawings() {
    Q_INIT_RESOURCE(drawings);
}

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

constexpr double DisabledStrength = 0.38;

// The drawings are made in the colours of the light palette; each of these stands for its role. White is not
// among them: it marks discs that are coloured in both palettes.
struct Role {
    QColor Palette::*Color;
    const char* Drawn;
};
constexpr Role Roles[] = {
    {&Palette::Ink, "#3A4853"},        {&Palette::Accent, "#13808C"},   {&Palette::Tint, "#E0F1F2"},
    {&Palette::FolderFill, "#FCEFD2"}, {&Palette::Amber, "#D9861A"},    {&Palette::Danger, "#C84B42"},
    {&Palette::Ok, "#2F9E63"},         {&Palette::Disabled, "#A7B1BA"}, {&Palette::Surface, "#FEFEFE"}};

QByteArray InColors(QByteArray drawing, const Palette& palette) {
    for (const Role& role : Roles) drawing.replace(role.Drawn, (palette.*role.Color).name().toLatin1());
    return drawing;
}

class OwnIconEngine final : public QIconEngine {
public:
    OwnIconEngine(const QString& name, const QByteArray& drawing)
        : Name(name), Drawing(drawing), DesignSize(QSvgRenderer(drawing).defaultSize()) {}

    QIconEngine* clone() const override { return new OwnIconEngine(*this); }
    QString key() const override { return u"Sonmira"_s; }
    QString iconName() override { return Name; }
    bool isNull() override { return false; }

    QSize actualSize(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        return DesignSize.scaled(size, Qt::KeepAspectRatio);
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        const double scale = painter->device()->devicePixelRatioF();
        QPixmap picture = pixmap((QSizeF(rect.size()) * scale).toSize(), mode, state);
        picture.setDevicePixelRatio(scale);
        painter->drawPixmap(rect, picture);
    }

    // The size is in pixels of the device.
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/) override {
        const Palette& palette = CurrentPalette();
        const bool isDisabled = mode == QIcon::Disabled;
        const QString key = u"Sonmira/%1/%2x%3/%4%5"_s.arg(Name)
                                .arg(size.width())
                                .arg(size.height())
                                .arg(int{palette.IsDark})
                                .arg(int{isDisabled});
        QPixmap picture;
        if (QPixmapCache::find(key, &picture)) return picture;
        picture = QPixmap(size);
        picture.fill(Qt::transparent);
        QSvgRenderer renderer(InColors(Drawing, palette));
        renderer.setAspectRatioMode(Qt::KeepAspectRatio);
        QPainter painter(&picture);
        // Each stroke by itself would let what lies below it shine through.
        if (isDisabled) {
            painter.setOpacity(DisabledStrength);
            painter.drawPixmap(0, 0, pixmap(size, QIcon::Normal, QIcon::Off));
        } else {
            renderer.render(&painter, QRectF(QPointF(), size));
        }
        painter.end();
        QPixmapCache::insert(key, picture);
        return picture;
    }

private:
    QString Name;
    QByteArray Drawing;
    QSize DesignSize;
};

}  // namespace

QIcon OwnIcon(QStringView name) {
    UseDrawings();
    QFile file(u":/icons/"_s + name.toString() + u".svg"_s);
    if (!file.open(QIODevice::ReadOnly)) return {};
    return QIcon(new OwnIconEngine(name.toString(), file.readAll()));
}

QIcon FormatIcon(QStringView ending) {
    struct Format {
        QStringView Ending;
        QStringView Drawing;
    };
    static constexpr Format Formats[] = {
        {u"aac", u"format-aac"}, {u"alac", u"format-alac"}, {u"ape", u"format-ape"},
        {u"apl", u"format-ape"}, {u"flac", u"format-flac"}, {u"mp3", u"format-mp3"},
        {u"mpc", u"format-mpc"}, {u"mp+", u"format-mpc"},   {u"ogg", u"format-ogg"},
        {u"wav", u"format-wav"}, {u"wma", u"format-wma"}};
    const QStringView letters = ending.startsWith(u'.') ? ending.sliced(1) : ending;
    for (const Format& format : Formats) {
        if (letters.compare(format.Ending, Qt::CaseInsensitive) == 0) return OwnIcon(format.Drawing);
    }
    return OwnIcon(u"audio-file");
}

IconBox::IconBox(QWidget* parent, const QIcon& icon, int size) : QLabel(parent), Icon(icon), Edge(size) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void IconBox::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    QRect room(0, 0, Edge, Edge);
    room.moveCenter(rect().center());
    Icon.paint(&painter, room, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
}

}  // namespace Sonmira
