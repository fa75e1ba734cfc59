#include "tags/TagPage.h"

#include "kit/Palette.h"
#include "kit/Twips.h"
#include "platform/Failure.h"
#include "shell/widgets/InputBoxes.h"
#include "tags/TagPanel.h"

#include <QEvent>
#include <QGraphicsDropShadowEffect>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QToolBar>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

constexpr const char16_t* DesignCaptions[TagFieldCount] = {
    u"Title :", u"Artist :",  u"Album :",    u"Genre :", u"Genre Str :",  u"Copyright :",      u"Year :",
    u"Track :", u"Comment :", u"Composer :", u"Url :",   u"Encoded by :", u"Original Artist :"};

QLabel* Label(QWidget* parent, const QString& name, const QString& text) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

}  // namespace

TagMemory::TagMemory(QWidget* parent)
    : QFrame(parent), Label23(Label(this, u"Label23"_s, u"Tag in memory :"_s)) {
    setObjectName(u"Picture4"_s);
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    auto* shadow = new QGraphicsDropShadowEffect(this);
    shadow->setBlurRadius(24);
    shadow->setOffset(0, 4);
    shadow->setColor(QColor(0, 0, 0, 70));
    setGraphicsEffect(shadow);
    QFont bold = Label23->font();
    bold.setBold(true);
    Label23->setFont(bold);
    auto* grid = new QGridLayout(this);
    grid->addWidget(Label23, 0, 0, 1, 2);
    for (std::size_t n = 0; n < Label24.size(); ++n) {
        Label24[n] = Label(this, u"Label24_%1"_s.arg(n), QString::fromUtf16(DesignCaptions[n]));
        Label25[n] = Label(this, u"Label25_%1"_s.arg(n), u"empty"_s);
        // However long a text is, the panel keeps its size.
        Label25[n]->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        const int row = static_cast<int>(n) + 1;
        grid->addWidget(Label24[n], row, 0);
        grid->addWidget(Label25[n], row, 1);
    }
    grid->setColumnStretch(1, 1);
    grid->setColumnMinimumWidth(1, 160);
    hide();
}

void TagMemory::Remember(const TagTexts& texts) {
    Remembered = texts;
    for (std::size_t n = 0; n < texts.size(); ++n) {
        Label25[n]->setText(texts[n]);
        Label25[n]->setToolTip(texts[n]);
    }
}

void TagMemory::mousePressEvent(QMouseEvent* /*event*/) {
    hide();
}

namespace {

constexpr std::size_t GenrePlace = 3;
constexpr std::size_t GenreTextPlace = 4;
constexpr int Rows = TagFieldCount - 1;  // both genres share one

constexpr int Margin = 180;
constexpr int BarTop = 30;
constexpr int BarHeight = 465;
constexpr int FrameHeight = 330;
constexpr int FirstRow = BarTop + BarHeight + FrameHeight + 60;
constexpr int LeastPitch = 360;
constexpr int MostPitch = 480;
constexpr int ButtonHeight = 390;
constexpr int FootHeight = ButtonHeight + 90;

// The room that a caption wants, and a little more, since letters reach over their own room at times.
int HintOf(const QLabel* label) {
    return ToTwips(label->sizeHint().width() + 2);
}

}  // namespace

bool TagPage::event(QEvent* event) {
    switch (event->type()) {
        case QEvent::LayoutRequest:
        case QEvent::Show:
        case QEvent::FontChange:
        case QEvent::LayoutDirectionChange:
            PlaceControls();
            break;
        default:
            break;
    }
    return QWidget::event(event);
}

void TagPage::paintEvent(QPaintEvent* /*event*/) {
    const Palette& colors = CurrentPalette();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(colors.CardBorder);
    painter.setBrush(colors.Surface);
    const QRectF card = rect().adjusted(0, 0, 0, -ToPixels(Inside.Scaled(HiddenFoot)));
    painter.drawRoundedRect(card.adjusted(0.5, 0.5, -0.5, -0.5), 6, 6);
}

void TagPage::resizeEvent(QResizeEvent* /*event*/) {
    PlaceControls();
    if (Form.Picture4 != nullptr && !Form.Picture4->isHidden()) Form.ShowMemory();
}

int TagPage::RowPitch() const {
    const int taken = FirstRow + FootHeight + HiddenFoot;
    const int room = (Inside.Height() - Inside.Scaled(taken)) / Rows;
    return qBound(Inside.Scaled(LeastPitch), room, Inside.Scaled(MostPitch));
}

void TagPage::PlaceControls() {
    if (!IsComplete && Form.Picture4 == nullptr) return;
    IsComplete = true;
    const auto scaled = [this](int twips) { return Inside.Scaled(twips); };
    const TagFields& fields = *Form.Fields;
    Inside.Place(Form.Toolbar2, 0, scaled(BarTop), Inside.Width(Form.Toolbar2), scaled(BarHeight));
    Inside.Place(Form.Frame1, Margin, scaled(BarTop + BarHeight), Inside.Width(Form.Frame1),
                 scaled(FrameHeight));
    int option = Form.Frame1->fontMetrics().horizontalAdvance(Form.Frame1->title()) + ToPixels(Margin);
    for (QRadioButton* button : fields.Option1) {
        const int width = button->sizeHint().width();
        const bool mirrored = isRightToLeft();
        const int left = mirrored ? ToPixels(Inside.Width() - 2 * Margin) - option - width : option;
        button->setGeometry(left, 0, width, ToPixels(scaled(FrameHeight)));
        option += width + ToPixels(Margin);
    }

    int captions = 0;
    for (std::size_t n = 0; n < fields.Captions.size(); ++n) {
        if (n != GenreTextPlace) captions = qMax(captions, HintOf(fields.Captions[n]));
    }
    const int column = Margin + captions + 120;
    const int pitch = RowPitch();
    const int height = qMin(pitch - 30, scaled(360));
    const auto all = fields.InOrder();
    int top = scaled(FirstRow);
    for (std::size_t n = 0; n < all.size(); ++n) {
        if (n == GenreTextPlace) continue;
        Inside.Place(fields.Captions[n], Margin, top, captions, height);
        Inside.Place(all[n], column, top, Inside.Width(all[n]), height);
        if (n == GenrePlace) {
            // The list has a share of the row that leaves the text behind it the larger part.
            const int list = qMax(scaled(1350), (Inside.Width() - column - Margin) * 3 / 8);
            const int text = column + list + 120;
            const int caption = HintOf(fields.Captions[GenreTextPlace]);
            Inside.SetWidth(all[n], list);
            Inside.Place(fields.Captions[GenreTextPlace], text, top, caption, height);
            Inside.Place(fields.infoGenreS, text + caption + 120, top, Inside.Width(fields.infoGenreS),
                         height);
        }
        top += pitch;
    }
    Inside.Place(Form.Command3, column, top + 30, Inside.Width(Form.Command3), scaled(ButtonHeight));
    FollowWidth();
}

void TagPage::FollowWidth() {
    const TagFields& fields = *Form.Fields;
    const int width = Inside.Width();
    const int margin = Inside.Left(Form.Frame1);
    const auto toEdge = [&](const QWidget* control) { return width - Inside.Left(control) - margin; };
    PassOver([&] { Inside.SetWidth(Form.Toolbar2, width + 30); });
    PassOver([&] { Inside.SetWidth(Form.Frame1, width - 2 * margin); });
    PassOver([&] { Inside.SetWidth(fields.infoTitle, toEdge(fields.infoTitle)); });
    PassOver([&] { Inside.SetWidth(fields.infoGenreS, toEdge(fields.infoGenreS)); });
    for (QLineEdit* field : {fields.infoArtist, fields.infoAlbum, fields.infoCopyright, fields.infoYear,
                             fields.infoTrack, fields.infoComment, fields.infoComposer, fields.infoURL,
                             fields.infoEncodedBy, fields.infoOriginalArtist}) {
        PassOver([&] { Inside.SetWidth(field, Inside.Width(fields.infoTitle)); });
    }
    // As wide as its caption wants and a little more, at the end of the lines.
    const int wanted = ToTwips(Form.Command3->sizeHint().width()) + 450;
    PassOver([&] { Inside.SetLeft(Form.Command3, width - margin - 30 - wanted); });
    PassOver([&] { Inside.SetWidth(Form.Command3, toEdge(Form.Command3) - 30); });
}

}  // namespace Sonmira
