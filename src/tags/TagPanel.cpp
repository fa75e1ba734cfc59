#include "tags/TagPanel.h"

#include "kit/Accessible.h"
#include "kit/Icons.h"
#include "platform/Failure.h"
#include "platform/Paths.h"
#include "platform/Values.h"
#include "shell/widgets/Events.h"
#include "shell/widgets/InputBoxes.h"
#include "tags/TagPage.h"

#include <QAction>
#include <QGroupBox>
#include <QLineEdit>
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

TagPanel::TagPanel(TagPanelForm& form, AudioInformation& tags) : Form(form), Information(tags) {
    ConnectEvents();
}

void TagPanel::ConnectEvents() {
    const auto button = [this](int n, auto handler) {
        OnEvent(Form.ToolbarButton(n), &QAction::triggered, this, handler);
    };
    button(1, [this] { Copy(); });
    button(2, [this] { Paste(); });
    button(3, [this] { ToggleMemory(); });
    button(5, [this] {
        if (!CurrentTagFile.isEmpty()) LoadTagPanel(QString(CurrentTagFile));
    });
    button(7, [this] {
        if (!CurrentTagFile.isEmpty()) SaveTagPanel();
    });
    OnEvent(Form.Command3, &QPushButton::clicked, this, [this] { SaveTagPanel(); });
    OnEvent(Form.Fields->infoGenre, &ChoiceList::Click, this, [this] { infoGenre_Click(); });
    for (int index = 0; index < 2; ++index) {
        OnEvent(Form.Fields->Option1[static_cast<std::size_t>(index)], &QRadioButton::toggled, this,
                [this, index](bool on) {
                    if (on) Option1_Click(index);
                });
    }
}

void TagPanel::AddGenres() {
    Form.Fields->AddGenres();
}

void TagPanel::UseVersion1() {
    Information.SetTagKind(1);
    Form.Fields->ApplyTagKind(Information.TagKind());
}

void TagPanel::Open() {
    // Selecting the option is a click on it, which shows the current file again; it comes where the option
    // changes only.
    Form.Fields->Option1[1]->setChecked(true);
    Information.SetTagKind(2);
    Form.Fields->ApplyTagKind(Information.TagKind());
}

// A conversion works on the same object and leaves it at another version.
void TagPanel::UseChosenVersion() {
    Information.SetTagKind(Form.Fields->Option1[1]->isChecked() ? 2 : 1);
}

void TagPanel::LoadTagPanel(const QString& path) {
    CurrentTagFile = path;
    UseChosenVersion();
    const bool shown = PassOver([&] {
        Information.LoadTag(path);
        Form.Fields->infoGenreS->clear();
        // The object counts the tracks of these files from 0, the screen from 1.
        Form.Fields->Show(Information, EndsInUpper(path, u"WMA") ? 1 : 0);
    });
    if (!shown) Form.Fields->Clear();
    Form.Command3->setEnabled(shown);
}

void TagPanel::SaveTagPanel() {
    UseChosenVersion();
    PassOver([this] {
        Form.Fields->Give(Information);
        // The number goes back as it went out, also for files whose tracks count from 0: their track moves up
        // by one with each load and save, which is how it has always been.
        Form.Fields->infoTrack->setText(PlainNumber(Information.Track));
        const bool wasEnabled = Form.Command3->isEnabled();
        Form.Command3->setEnabled(false);
        const bool saved = PassOver([this] { Information.SaveTag(CurrentTagFile); });
        // What could not be saved may be tried again, if it could be tried at all.
        if (!saved) Form.Command3->setEnabled(wasEnabled);
    });
}

void TagPanel::Option1_Click(int index) {
    Information.SetTagKind(static_cast<qint16>(index + 1));
    Form.Fields->ApplyTagKind(Information.TagKind());
    if (!CurrentTagFile.isEmpty()) LoadTagPanel(QString(CurrentTagFile));
}

void TagPanel::infoGenre_Click() {
    if (Form.Fields->Option1[1]->isChecked())
        Form.Fields->infoGenreS->setText(Form.Fields->infoGenre->currentText());
}

void TagPanel::Copy() {
    Form.Picture4->Remember(Form.Fields->Texts());
}

void TagPanel::Paste() {
    Form.Fields->SetTexts(Form.Picture4->Texts());
}

void TagPanel::ToggleMemory() {
    if (Form.Picture4->isHidden()) {
        Form.ShowMemory();
    } else {
        HideMemory();
    }
}

void TagPanel::HideMemory() {
    Form.Picture4->hide();
}

}  // namespace Sonmira
