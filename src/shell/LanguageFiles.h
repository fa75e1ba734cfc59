#pragma once

#include <QString>
#include <QStringList>

#include <vector>

// The interface texts: plain files, one a language, in "\Lang\" beside the program. A file has no keys; the
// line number is the key.
namespace Sonmira {

// The lines in use, by their numbers. A file holds the others, too, so that the numbering stands.
namespace LanguageLine {
enum Number {
    File = 0,
    AddFile = 1,
    Close = 2,
    Options = 3,
    Language = 4,
    TagInformation = 5,
    AcceptWma = 6,
    Information = 7,
    HomePage = 8,
    About = 9,
    FilesToConvert = 10,
    Files = 11,
    New = 12,
    OutputConfiguration = 13,
    BesideOriginal = 14,
    OutputPath = 15,
    OutputFormat = 16,
    FormatParameter = 17,
    ChooseFolder = 18,
    ConversionInformation = 19,
    CurrentFile = 20,
    Quit = 21,
    Cancel = 22,
    ConvertAll = 23,
    ConvertNow = 24,
    RemoveFromList = 25,
    Filename = 26,
    Folders = 27,
    AudioInformation = 28,
    TagVersion = 29,
    Title = 30,
    Artists = 31,
    Album = 32,
    Genre = 33,
    GenreText = 34,
    Copyright = 35,
    Year = 36,
    TrackNumber = 37,
    Comment = 38,
    Composer = 39,
    Url = 40,
    EncodedBy = 41,
    OriginalArtist = 42,
    Save = 43,
    AlreadyInList = 45,
    WmaFailed = 46,
    NameColour = 47,
    AfterRestart = 48,
    Help = 49,
    ClearQuestion = 51,
    AddFolder = 55,
    RemoveOriginal = 56,
    Folder = 57,
    FolderCount = 58,
    Duration = 60,
    TrackColumn = 61,
    SkipFile = 63,
    ConvertSelection = 64,
    PlayFile = 65,
    Action = 67,
    CopyTag = 68,
    PasteTag = 69,
    ShowTag = 70,
    TagInMemory = 71,
    OpenFolder = 72,
    Progress = 74,
    Converted = 77,
    Stopped = 78,
    LanguageName = 93,
    FileNotFound = 95,
    RowFailed = 96,
    WmaUnreadable = 97,
    AacUnreadable = 98,
    OtherUnreadable = 99,
    WmaUnsupported = 100,
    InTheTrash = 101,
};
}  // namespace LanguageLine

// Element n is line n of the loaded language file, counted from 0, as it stands. Reading a line that the
// file does not have fails with SubscriptOutOfRange.
class LanguageTable {
public:
    const QString& operator[](int line) const;
    void Assign(QStringList lines) { Lines = std::move(lines); }
    bool IsEmpty() const { return Lines.isEmpty(); }

private:
    QStringList Lines;
};
extern LanguageTable LanguageLines;

// A line that a language file may end before, or leave empty: `standard` stands in for it then.
QString LanguageLineOr(int line, const QString& standard);

struct LanguageFile {
    QString Caption;  // the file's name less its last four characters
    QString Path;
};

// The language files of the folder, in its order: entries whose last three characters are exactly "lng".
std::vector<LanguageFile> FindLanguageFiles();
// For tests: makes FindLanguageFiles look in `folder`; the empty text goes back to the program's own.
void OverrideLanguageFolder(const QString& folder);

// Fills LanguageLines, with one empty element behind the last line. When the file is missing the user is
// told and the program ends. A file that cannot be read fails with PathFileAccess.
void LoadLanguageFile(const QString& path);

}  // namespace Sonmira
