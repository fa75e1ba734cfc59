#include "tags/TagFields.h"

#include "codecs/AudioInformation.h"
#include "codecs/tagging/Id3v1.h"
#include "platform/Clock.h"
#include "platform/Failure.h"
#include "platform/Values.h"
#include "shell/widgets/InputBoxes.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

#include <limits>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t GenrePlace = 3;

constexpr const char16_t* DesignCaptions[TagFieldCount] = {
    u"Title:", u"Artists:", u"Album:",    u"Genre:", u"Genre (String):", u"Copyright:",     u"Year:",
    u"Track:", u"Comment:", u"Composer:", u"URL:",   u"Encoded By:",     u"OriginalArtist:"};

template <class Control>
Control* Named(Control* control, QStringView name) {
    control->setObjectName(name.toString());
    return control;
}

QLineEdit* Field(QWidget& holder, QStringView name) {
    auto* field = Named(new QLineEdit(&holder), name);
    // A save writes what the field holds, so that a long comment must not be cut by being shown.
    field->setMaxLength(std::numeric_limits<int>::max());
    return field;
}

}  // namespace

TagFields::TagFields(QWidget& holder, QGroupBox& frame, const TagCaptionNames& captionNames)
    : infoTitle(Field(holder, u"infoTitle")),
      infoArtist(Field(holder, u"infoArtist")),
      infoAlbum(Field(holder, u"infoAlbum")),
      infoGenre(Named(new ChoiceList(&holder), u"infoGenre")),
      infoGenreS(Field(holder, u"infoGenreS")),
      infoCopyright(Field(holder, u"infoCopyright")),
      infoYear(Field(holder, u"infoYear")),
      infoTrack(Field(holder, u"infoTrack")),
      infoComment(Field(holder, u"infoComment")),
      infoComposer(Field(holder, u"infoComposer")),
      infoURL(Field(holder, u"infoURL")),
      infoEncodedBy(Field(holder, u"infoEncodedBy")),
      infoOriginalArtist(Field(holder, u"infoOriginalArtist")) {
    frame.setTitle(u"Tag Version"_s);
    infoGenre->setEditable(true);
    infoGenre->lineEdit()->setAccessibleName(u"Genre"_s);
    infoGenre->setInsertPolicy(QComboBox::NoInsert);
    for (std::size_t index = 0; index < Option1.size(); ++index) {
        Option1[index] = Named(new QRadioButton(index == 0 ? u"ID3v1"_s : u"ID3v2"_s, &frame),
                               QString(u"Option1_%1"_s).arg(index));
        // The one that is chosen is the stop of the tab key; the arrow keys reach the other.
        QObject::connect(Option1[index], &QRadioButton::toggled, Option1[index],
                         [option = Option1[index]](bool on) {
                             option->setFocusPolicy(on ? Qt::StrongFocus : Qt::ClickFocus);
                         });
        Option1[index]->setFocusPolicy(Qt::ClickFocus);
    }
    Option1[0]->setChecked(true);
    const auto fields = InOrder();
    for (std::size_t n = 0; n < fields.size(); ++n) {
        Captions[n] =
            Named(new QLabel(QString::fromUtf16(DesignCaptions[n]), &holder), QStringView(captionNames[n]));
        Captions[n]->setBuddy(fields[n]);
    }
}

void TagFields::Arrange(QGroupBox& frame, QBoxLayout& column) {
    auto* versions = new QHBoxLayout(&frame);
    for (QRadioButton* option : Option1) versions->addWidget(option);
    versions->addStretch();
    auto* grid = new QGridLayout;
    const auto fields = InOrder();
    for (std::size_t n = 0; n < fields.size(); ++n) {
        grid->addWidget(Captions[n], static_cast<int>(n), 0);
        grid->addWidget(fields[n], static_cast<int>(n), 1);
    }
    grid->setColumnStretch(1, 1);
    column.addWidget(&frame);
    column.addLayout(grid);
}

void TagFields::AddGenres() {
    for (int index = 0; index < GenreCount; ++index) infoGenre->addItem(AudioInformation::GenreName(index));
    // Adding the first item selects it in silence; no genre is chosen before a tag is shown.
    infoGenre->setCurrentIndex(-1);
}

void TagFields::ApplyTagKind(int kind) {
    for (QLineEdit* field :
         {infoGenreS, infoCopyright, infoComposer, infoURL, infoEncodedBy, infoOriginalArtist}) {
        field->setEnabled(kind != 1);
    }
}

void TagFields::Show(const AudioInformation& tag, int trackOffset) {
    infoTitle->setText(tag.Title);
    infoArtist->setText(tag.Artist);
    infoAlbum->setText(tag.Album);
    infoGenre->SelectPlace(tag.Genre);
    infoGenreS->setText(tag.GenreString);
    infoCopyright->setText(tag.Copyright);
    infoComment->setText(tag.Comment);
    infoYear->setText(PlainNumber(tag.Year));
    infoTrack->setText(PlainNumber(Checked16(qint64{tag.Track} + trackOffset)));
    infoComposer->setText(tag.Composer);
    infoURL->setText(tag.URL);
    infoEncodedBy->setText(tag.EncodedBy);
    infoOriginalArtist->setText(tag.OriginalArtist);
}

void TagFields::Clear() {
    for (QLineEdit* field : {infoTitle, infoArtist, infoAlbum, infoGenreS, infoCopyright, infoComment,
                             infoYear, infoTrack, infoComposer, infoURL, infoEncodedBy, infoOriginalArtist}) {
        field->clear();
    }
}

void TagFields::Give(AudioInformation& tag) {
    tag.Title = infoTitle->text();
    tag.Artist = infoArtist->text();
    tag.Album = infoAlbum->text();
    tag.Genre = static_cast<qint16>(SelectedGenre());
    tag.Copyright = infoCopyright->text();
    tag.Comment = infoComment->text();
    const auto isUnset = [](const QLineEdit* field) {
        return field->text().isEmpty() || field->text() == u"0";
    };
    if (isUnset(infoYear)) infoYear->setText(PlainNumber(CurrentYear()));
    tag.Year = ToInteger32(infoYear->text());
    if (isUnset(infoTrack)) infoTrack->setText(u"1"_s);
    tag.Track = ToInteger16(infoTrack->text());
    tag.URL = infoURL->text();
    tag.Composer = infoComposer->text();
    tag.EncodedBy = infoEncodedBy->text();
    tag.GenreString = infoGenreS->text();
    tag.OriginalArtist = infoOriginalArtist->text();
}

int TagFields::SelectedGenre() const {
    // A name that was typed is as good as one that was picked; any other text is none.
    const int place = infoGenre->currentIndex();
    if (infoGenre->currentText() == infoGenre->itemText(place)) return place;
    return infoGenre->findText(infoGenre->currentText(), Qt::MatchExactly | Qt::MatchCaseSensitive);
}

TagTexts TagFields::Texts() const {
    TagTexts texts;
    const auto fields = InOrder();
    for (std::size_t n = 0; n < texts.size(); ++n) {
        texts[n] = n == GenrePlace ? infoGenre->currentText() : static_cast<QLineEdit*>(fields[n])->text();
    }
    return texts;
}

void TagFields::SetTexts(const TagTexts& texts) {
    const auto fields = InOrder();
    for (std::size_t n = 0; n < texts.size(); ++n) {
        if (n != GenrePlace) {
            static_cast<QLineEdit*>(fields[n])->setText(texts[n]);
        } else if (!texts[n].isEmpty()) {
            // A free text that was copied comes back as free text.
            if (infoGenre->findText(texts[n], Qt::MatchExactly | Qt::MatchCaseSensitive) < 0) {
                infoGenre->setEditText(texts[n]);
            }
            infoGenre->SelectText(texts[n]);
        }
    }
}

std::array<QWidget*, TagFieldCount> TagFields::InOrder() const {
    return {infoTitle, infoArtist,  infoAlbum,    infoGenre, infoGenreS,    infoCopyright,     infoYear,
            infoTrack, infoComment, infoComposer, infoURL,   infoEncodedBy, infoOriginalArtist};
}

}  // namespace Sonmira
