#pragma once

#include <QString>

// The only door to the lasting settings: one ini file, read and written value by value, never cached.
namespace Sonmira {

// Full path of "Sonmira.ini" and its folder with a trailing backslash; set once by LocateSettingsFile.
extern QString SettingsFile;
extern QString SettingsFolder;

// Finds the settings file and makes its folder: "SonmiraPack" in the user's application data folder, or,
// where that folder is missing, the program's own folder. A failure on the way is passed over.
void LocateSettingsFile();

// The value, cut at 254 characters; the empty text when it is absent. There is no default: each caller
// applies its own.
QString ReadIniValue(const QString& file, const QString& section, const QString& key);

// Writes the value at once. A failed write is lost without a word.
void WriteIniValue(const QString& file, const QString& section, const QString& key, const QString& value);

}  // namespace Sonmira
