#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <cstdint>
#include <optional>

// Where temporary files lie: in a folder of this user alone, "sonmira-" and the user's number, one folder for
// each running process, so that neither another user nor another program of this user meets a file by its
// name. A process holds a lock on its folder until it ends.
namespace Sonmira {

// The folder of this process, an inner path without a trailing backslash; made at the first call, and made
// anew where it has gone since. Then also what processes that have ended left in theirs moves up into the
// user's folder, in the place of equal names; nothing else is deleted. Empty where no place can be used.
QString TemporaryFolder();

// For tests: makes TemporaryFolder answer `folder`, whatever that is; nothing goes back to the real one.
void OverrideTemporaryFolder(std::optional<QString> folder);

// The places, as native paths, in which the user's folder may lie, the best first: $TMPDIR, then /tmp, but
// /var/tmp before it where /tmp lies in memory, since a decoded file may be larger than that.
QList<QByteArray> TemporaryPlaces();

// The folder of a process, locked for as long as the object lives.
class ProcessFolder {
public:
    // Below the first of these places that exists, may be written to and gives a path that the routines can
    // hold; nothing where none does.
    static std::optional<ProcessFolder> Claim(const QList<QByteArray>& places);

    ProcessFolder(ProcessFolder&& other) noexcept;
    ProcessFolder& operator=(ProcessFolder&& other) noexcept;
    ~ProcessFolder();

    const QByteArray& Native() const { return Path; }
    // Whether the folder still has its name.
    bool IsThere() const;

private:
    ProcessFolder(QByteArray path, int lock) : Path(std::move(path)), Lock(lock) {}
    static std::optional<ProcessFolder> ClaimIn(const QByteArray& usersFolder);

    QByteArray Path;
    int Lock = -1;  // the open folder
};

}  // namespace Sonmira
