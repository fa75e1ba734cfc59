#include "tags/TagPanelForm.h"

#include "kit/Accessible.h"
#include "kit/Icons.h"
#include "tags/TagMemory.h"
#include "tags/TagPage.h"

#include <QAction>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QToolBar>

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
                              {u"Cancel", u"tag-cancel"},
                              {},
                              {u"Save Tag", u"tag-save"}};

}  // namespace

TagPanelForm::TagPanelForm(QWidget& window) {
    auto* page = new TagPage(&window, *this);
    Picture2 = page;
    Picture2->setObjectName(u"Picture2"_s);
    Toolbar2 = new QToolBar(Picture2);
    Toolbar2->setObjectName(u"Toolbar2"_s);
    Toolbar2->setAccessibleName(u"Tag commands"_s);
    NameExtensionOf(*Toolbar2);
    Toolbar2->setIconSize(QSize(20, 20));
    int n = 0;
    for (const Button& button : Buttons) {
        QAction* const action = button.Icon.isEmpty()
                                    ? Toolbar2->addSeparator()
                                    : Toolbar2->addAction(OwnIcon(button.Icon), button.ToolTip.toString());
        action->setObjectName(u"Toolbar2Button%1"_s.arg(++n));
    }
    Frame1 = new QGroupBox(Picture2);
    Frame1->setObjectName(u"Frame1"_s);
    Frame1->setFlat(true);
    Fields.emplace(*Picture2, *Frame1, CaptionNames);
    Command3 = new QPushButton(u"Save"_s, Picture2);
    Command3->setObjectName(u"Command3"_s);
    // Nothing is loaded that could be saved.
    Command3->setEnabled(false);
    Command3->setDefault(true);
    Picture4 = new TagMemory(Picture2);
    QWidget* before = Fields->Option1[1];
    QWidget::setTabOrder(Fields->Option1[0], before);
    for (QWidget* field : Fields->InOrder()) {
        QWidget::setTabOrder(before, field);
        before = field;
    }
    QWidget::setTabOrder(before, Command3);
    page->PlaceControls();
}

void TagPanelForm::ShowMemory() const {
    constexpr int Gap = 8;
    const QRect room = Frame1->geometry();
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
