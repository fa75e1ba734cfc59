#include "tags/TagMemory.h"

#include <QGraphicsDropShadowEffect>
#include <QGridLayout>
#include <QLabel>

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

}  // namespace Sonmira
