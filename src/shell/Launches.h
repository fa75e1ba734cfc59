#pragma once

#include <QString>

// The documents and web pages that the program hands to the desktop.
namespace Sonmira {

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
