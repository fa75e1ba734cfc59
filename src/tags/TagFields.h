#pragma once

#include <QWidget>

#include <array>

class QBoxLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace Sonmira {

class AudioInformation;
class ChoiceList;

inline constexpr int TagFieldCount = 13;
// Texts of the 13 fields in their fixed order: title, artist, album, genre, genre text, copyright, year,
// track, comment, composer, URL, encoded by, original artist.
using TagTexts = std::array<QString, TagFieldCount>;

// The names that the field captions have in one window, in the order of the fields.
using TagCaptionNames = std::array<const char16_t*, TagFieldCount>;

// The 13 fields of a tag with their captions and the choice of the tag version. A window decides when they
// are filled and saved.
class TagFields {
public:
    // Makes the fields and their captions on `holder`, and the choice of the version on `frame`, which
    // becomes "Tag Version". They have no places yet.
    TagFields(QWidget& holder, QGroupBox& frame, const TagCaptionNames& captionNames);

    // Gives everything a place in `column`, one below the other: `frame` with the choice, then the fields.
    void Arrange(QGroupBox& frame, QBoxLayout& column);

    // Adds the names of all genres to the list, so that a place in it is the number in the tag.
    void AddGenres();

    // Version 1 cannot hold six of the fields, which cannot be edited then; any other kind frees them.
    void ApplyTagKind(int kind);

    // Fills the fields from the loaded tag, the track plus `trackOffset`. A genre beyond the list fails with
    // InvalidPropertyValue.
    void Show(const AudioInformation& tag, int trackOffset);
    // Empties all fields but the genre.
    void Clear();
    // Gives all fields to the tag object. An empty year or one of "0" becomes the current year, an empty
    // track or one of "0" becomes 1, on the screen too. A year or track that is no number, or does not fit,
    // fails.
    void Give(AudioInformation& tag);

    TagTexts Texts() const;
    // An empty genre leaves the list as it is.
    void SetTexts(const TagTexts& texts);

    std::array<QRadioButton*, 2> Option1;  // "ID3v1", "ID3v2"
    std::array<QLabel*, TagFieldCount> Captions;

    QLineEdit* infoTitle;
    QLineEdit* infoArtist;
    QLineEdit* infoAlbum;
    ChoiceList* infoGenre;  // free text may be typed
    QLineEdit* infoGenreS;
    QLineEdit* infoCopyright;
    QLineEdit* infoYear;
    QLineEdit* infoTrack;
    QLineEdit* infoComment;
    QLineEdit* infoComposer;
    QLineEdit* infoURL;
    QLineEdit* infoEncodedBy;
    QLineEdit* infoOriginalArtist;

    std::array<QWidget*, TagFieldCount> InOrder() const;

private:
    // The place of the genre list that its text names; -1 for free text.
    int SelectedGenre() const;
};

}  // namespace Sonmira
