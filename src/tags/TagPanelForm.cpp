#include "tags/TagPanelForm.h"

#include "kit/Icons.h"
#include "tags/TagMemory.h"

#include <QAction>
#include <QGroupBox>
#include <QPushButton>
#include <QScrollArea>
#include <QToolBar>
#include <QVBoxLayout>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

constexpr TagCaptionNames CaptionNames = {u"Label14", u"Label12", u"Label10", u"Label9",  u"Label21",
                                          u"Label13", u"Label18", u"Label20", u"Label17", u"Label15",
                                          u"Label16", u"Label19", u"Label22"};

struct Button {
    QStringView ToolTip;
    QStringView Icon;
};
constexpr Button Buttons[] = {{u"Copy Tag Information", u"tag-copy"},
                              {u"Paste Tag Information", u"tag-paste"},
                              {u"Show Tag in memory", u"tag-show"},
                              {},
                              {u"Cancel", u"cancel"},
                              {},
                              {u"Save Tag", u"save"}};

}  // namespace

TagPanelForm::TagPanelForm(QWidget& window)
    : Picture2(new QWidget(&window)),
      Toolbar2(new QToolBar),
      Frame1(new QGroupBox),
      Command3(new QPushButton(u"Save"_s)),
      Picture4(new TagMemory(Picture2)) {
    Picture2->setObjectName(u"Picture2"_s);
    Toolbar2->setObjectName(u"Toolbar2"_s);
    Toolbar2->setIconSize(QSize(24, 24));
    int n = 0;
    for (const Button& button : Buttons) {
        QAction* const action = button.Icon.isEmpty()
                                    ? Toolbar2->addSeparator()
                                    : Toolbar2->addAction(OwnIcon(button.Icon), button.ToolTip.toString());
        action->setObjectName(u"Toolbar2Button%1"_s.arg(++n));
    }
    Frame1->setObjectName(u"Frame1"_s);
    Fields.emplace(*Frame1, CaptionNames);
    Command3->setObjectName(u"Command3"_s);
    // Nothing is loaded that could be saved.
    Command3->setEnabled(false);

    // In a small window the fields scroll instead of pressing the window apart.
    auto* scroller = new QScrollArea;
    scroller->setFrameShape(QFrame::NoFrame);
    scroller->setWidgetResizable(true);
    scroller->setWidget(Frame1);
    auto* column = new QVBoxLayout(Picture2);
    column->addWidget(Toolbar2);
    column->addWidget(scroller, 1);
    column->addWidget(Command3, 0, Qt::AlignRight);
}

void TagPanelForm::ShowMemory() const {
    constexpr int Gap = 8;
    const QRect room = Frame1->rect().translated(Frame1->mapTo(Picture2, QPoint()));
    Picture4->resize(Picture4->sizeHint().boundedTo(Picture2->size()));
    const bool mirrored = Picture2->layoutDirection() == Qt::RightToLeft;
    const int left = mirrored ? room.left() + Gap : room.right() - Gap - Picture4->width();
    Picture4->move(left, Toolbar2->geometry().bottom() + Gap);
    Picture4->show();
    Picture4->raise();
}

QAction* TagPanelForm::ToolbarButton(int n) const {
    return Toolbar2->actions().at(n - 1);
}

}  // namespace Sonmira
