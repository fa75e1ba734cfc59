#pragma once

#include <QString>

namespace Sonmira {

// The only door to the lasting settings: one ini file, read and written value by value, never cached.

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

// The documents and web pages that the program hands to the desktop.

// Opens `target`, a path or a web address, with `folder` as working folder. Nothing is tested before and
// nothing reported after: where nothing takes the target, nothing happens. The last argument has no effect.
bool ShellOpen(const QString& target, const QString& folder, bool ignored = false);

// The help file beside the program.
void OpenHelp();

// The page of frequent questions: the French one when the saved language is the menu's second, else the
// English one. Fails with TypeMismatch when no language is saved.
void OpenQuestions();

// The home page: the French one when the loaded language file is the French one, else the English one.
// Fails with SubscriptOutOfRange when no language is loaded.
void OpenHomePage();

// Where the MP3 encoder can be had: the page that tells, and the download itself.
QString EncoderPage();
QString EncoderDownload();

}  // namespace Sonmira
