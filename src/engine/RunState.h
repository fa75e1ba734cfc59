#pragma once

#include <QString>

#include <atomic>

namespace Sonmira {

// The tags of the file in hand.
struct TagRecord {
    QString Title;
    QString Artist;
    QString Album;
    QString Comment;
    QString Year;
    qint16 GenreIndex = 0;
    QString GenreText;
    qint16 Track = 1;
};

// The flags and values of a run, owned by the window that starts it. Click handlers set the flags in the
// middle of a conversion; the driver reads them between its steps.
struct RunState {
    bool Busy = false;             // a file has passed its check; the window does not close
    bool CancelAll = false;        // the user stopped the whole run
    bool SkipCurrentFile = false;  // the user abandoned the file in hand
    bool FileError = false;        // the file in hand failed

    QString CurrentInput;              // what is read now: the source, or a temporary WAV made from it
    QString RealFileName;              // the source, kept while CurrentInput is a temporary WAV
    bool EncodageParticulier = false;  // the file went through a decoder of its own
    QString OutputStem;                // the destination without extension
    int CurrentItem = 0;               // the row of the file in hand, counted from 1; 0 before the first
    TagRecord Tag;

    bool WmaSupported = false;
    std::atomic<int> KillFlag{0};  // shared with the components: 1 tells them to stop
};

}  // namespace Sonmira
