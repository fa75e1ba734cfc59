#include "tags/TagEditorial.h"

#include "platform/Failure.h"
#include "shell/LanguageFiles.h"
#include "shell/widgets/Events.h"
#include "shell/widgets/InputBoxes.h"
#include "tags/MusicExplorer.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSplitter>
#include <QVBoxLayout>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

constexpr TagCaptionNames CaptionNames = {u"Label8",  u"Label3",  u"Label5",  u"Label11", u"Label21",
                                          u"Label1",  u"Label18", u"Label20", u"Label17", u"Label15",
                                          u"Label16", u"Label19", u"Label22"};

}  // namespace

TagEditorial::TagEditorial(QWidget* owner)
    : QDialog(owner),
      Explorer1(new MusicExplorer),
      Frame2(new QGroupBox(u"Audio Information"_s)),
      Frame1(new QGroupBox),
      Command1(new QPushButton(u"Save"_s)) {
    setObjectName(u"TagEditorial"_s);
    setWindowTitle(u"Tag Editor"_s);
    Frame2->setObjectName(u"Frame2"_s);
    Frame1->setObjectName(u"Frame1"_s);
    Fields.emplace(*Frame2, *Frame1, CaptionNames);
    Command1->setObjectName(u"Command1"_s);
    // Enter in a field or in the browser saves nothing.
    Command1->setAutoDefault(false);
    Command1->setEnabled(false);

    auto* column = new QVBoxLayout(Frame2);
    Fields->Arrange(*Frame1, *column);
    column->addStretch(1);
    column->addWidget(Command1, 0, Qt::AlignRight);
    auto* halves = new QSplitter;
    halves->addWidget(Explorer1);
    halves->addWidget(Frame2);
    halves->setChildrenCollapsible(false);
    halves->setStretchFactor(1, 1);
    auto* all = new QVBoxLayout(this);
    all->addWidget(halves);
    resize(820, 600);
    Form_Load();
}

void TagEditorial::Form_Load() {
    Explorer1->SetCaptions(LanguageLines[LanguageLine::Filename], LanguageLines[LanguageLine::Folders]);
    Frame2->setTitle(LanguageLines[LanguageLine::AudioInformation]);
    Frame1->setTitle(LanguageLines[LanguageLine::TagVersion]);
    int line = LanguageLine::Title;
    for (QLabel* caption : Fields->Captions) caption->setText(LanguageLines[line++]);
    Command1->setText(LanguageLines[LanguageLine::Save]);
    Fields->AddGenres();
    Information.SetTagKind(1);
    Fields->ApplyTagKind(Information.TagKind());

    OnEvent(Explorer1, &MusicExplorer::FileChosen, this, [this](const QString& path) { Load(path); });
    OnEvent(Command1, &QPushButton::clicked, this, [this] { Save(); });
    OnEvent(Fields->infoGenre, &ChoiceList::Click, this, [this] {
        if (Information.TagKind() == 2) Fields->infoGenreS->setText(Fields->infoGenre->currentText());
    });
    for (int index = 0; index < 2; ++index) {
        OnEvent(Fields->Option1[static_cast<std::size_t>(index)], &QRadioButton::toggled, this,
                [this, index](bool on) {
                    if (on) Option1_Click(index);
                });
    }
}

void TagEditorial::Load(const QString& path) {
    CurrentTagFile = path;
    const bool shown = PassOver([&] {
        Information.LoadTag(path);
        // As the object counts it, also for files whose tracks count from 0.
        Fields->Show(Information, 0);
    });
    if (!shown) Fields->Clear();
    Command1->setEnabled(shown);
}

void TagEditorial::Save() {
    PassOver([this] {
        Fields->Give(Information);
        Information.SaveTag(CurrentTagFile);
    });
}

void TagEditorial::Option1_Click(int index) {
    Information.SetTagKind(static_cast<qint16>(index + 1));
    Fields->ApplyTagKind(Information.TagKind());
    if (!CurrentTagFile.isEmpty()) Load(QString(CurrentTagFile));
}

}  // namespace Sonmira
