#pragma once

#include "codecs/AudioInformation.h"

#include <QString>

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

// What the encoders that take a WAV are told; the other formats live in FileWenc. The levels hold 0 until
// their format is selected for the first time.
struct EncoderLevels {
    qint32 ApeCompressionLevel = 0;   // 1000, 2000, 3000 or 4000
    qint32 FlacCompressionLevel = 0;  // 0 to 8
    qint32 MpcQuality = 0;            // 0 to 9; only the compact window passes it on
};

// The flags and values of a run, owned by the window that starts it. Click handlers set the flags in the
// middle of a conversion; the driver reads them between its steps.
struct RunState {
    bool Busy = false;             // a file has passed its check; the window does not close
    bool CancelAll = false;        // the user stopped the whole run
    bool SkipCurrentFile = false;  // the user abandoned the file in hand
    bool FileError = false;        // the file in hand failed
    // The file in hand was read and written to its end, and nobody stopped or failed on the way. Only then
    // may its source go for good: a row says converted in some cases in which there is no output.
    bool OutputIsWhole = false;
    bool InputIsWhole = false;  // what a decoder of its own has made of it is
    // The components were told to stop since the file in hand was begun. A decoder forgets what it was told
    // before it started, and hears it from here. Not every stop command is meant for the Musepack decoder.
    bool DecodingStopped = false;
    bool MpcDecodingStopped = false;

    QString CurrentInput;              // what is read now: the source, or a temporary WAV made from it
    QString RealFileName;              // the source, kept while CurrentInput is a temporary WAV
    bool EncodageParticulier = false;  // the file went through a decoder of its own
    QString OutputStem;                // the destination without extension
    int CurrentItem = 0;               // the row of the file in hand, counted from 1; 0 before the first
    TagRecord Tag;
    TagValues Loaded;  // all that the tag object read from the file in hand

    bool WmaSupported = false;
    qint32 KillFlag = 0;  // shared with the functions for APE: 1 tells them to stop

    // Sources that went into the trash since the run began, and their bytes.
    int TrashedFiles = 0;
    qint64 TrashedBytes = 0;

    // Of the run of a selection.
    int SelectionTotal = 0;
    int SelectionDone = 0;

    // What a temporary WAV on the way to an encoder gets; nothing changes them.
    int Frequency = 44100;
    int Channels = 2;

    EncoderLevels Levels;
};

}  // namespace Sonmira
