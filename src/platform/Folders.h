#pragma once

#include <QString>

// The well-known folders. All are inner paths without a trailing backslash unless said otherwise; none
// is made here except by CreateFolder.
namespace Sonmira {

// The folder of the running program.
QString ProgramFolder();

// The per-user application data folder: $XDG_CONFIG_HOME, else ~/.config, which is made when it is
// missing. Empty when neither can be had: a set variable that names no folder counts as missing.
QString ApplicationDataFolder();

// The XDG desktop folder where it exists, else the home folder; empty when there is neither.
QString DesktopFolder();

// The folder of the dynamic loader, in which the MP3 encoder library must lie. Ends without a backslash.
QString EncoderSystemFolder();
// For tests: makes EncoderSystemFolder answer `folder`; the empty text goes back to the real one.
void OverrideEncoderSystemFolder(const QString& folder);

// Makes one folder (one level only, mode 0777 less the umask). Returns whether it was made; an existing
// folder or a missing parent gives false.
bool CreateFolder(QStringView path);

}  // namespace Sonmira
