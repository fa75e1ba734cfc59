#pragma once

#include <QString>
#include <QStringList>

#include <vector>

// The interface texts: plain files, one a language, in "\Lang\" beside the program. A file has no keys; the
// line number is the key.
namespace Sonmira {

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
