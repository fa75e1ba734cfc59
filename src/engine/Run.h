#pragma once

#include "codecs/AudioInformation.h"
#include "platform/FileIdentity.h"

#include <QString>

#include <optional>

namespace Sonmira {

class RunView;

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

// What a run knows of the file that it has in hand. Run::BeginFile and Run::AcceptFile start it anew; the
// names and the row stay until the next file has its own.
struct FileInHand {
    QString CurrentInput;              // what is read now: the source, or a temporary WAV made from it
    QString RealFileName;              // the source, kept while CurrentInput is a temporary WAV
    bool EncodageParticulier = false;  // the file went through a decoder of its own
    QString OutputStem;                // the destination without extension
    int CurrentItem = 0;               // the row, counted from 1; 0 before the first
    QString TempWavPath;
    bool TempWavUsed = false;        // a decoder has made it; see RecordSteps::DeleteTempWav
    std::optional<FileStamp> Stamp;  // of the source, when it was begun
    TagRecord Tag;
    TagValues Loaded;  // all that the tag object read
    // Read and written to its end, and nobody stopped or failed on the way. Only then may the source go for
    // good: a row says converted in some cases in which there is no output.
    bool OutputIsWhole = false;
    bool InputIsWhole = false;  // what a decoder of its own has made of it is
    // The components were told to stop since the file was begun. Not every command is meant for Musepack.
    bool DecodingStopped = false;
    bool MpcDecodingStopped = false;
};

// The state of a run, owned by the window that starts it. Everybody reads it; what changes it are the steps
// of a run, by the verbs below, and the user's clicks in the middle of a conversion, by StopCommands.
class Run {
public:
    bool Busy() const { return IsBusy; }                   // a file has passed its check; no window closes
    bool CancelAll() const { return IsCancelled; }         // the user stopped the whole run
    bool SkipCurrentFile() const { return IsSkipped; }     // the user abandoned the file in hand
    bool FileError() const { return HasFailed; }           // the file in hand failed
    const qint32& KillFlag() const { return KillNumber; }  // 1 tells the functions for APE to stop
    const FileInHand& File() const { return InHand; }
    const QString& CurrentInput() const { return InHand.CurrentInput; }
    const QString& RealFileName() const { return InHand.RealFileName; }
    bool EncodageParticulier() const { return InHand.EncodageParticulier; }
    const QString& OutputStem() const { return InHand.OutputStem; }
    int CurrentItem() const { return InHand.CurrentItem; }
    TagRecord& Tag() { return InHand.Tag; }

    // The beginning of a run, and of each file of a selection run: locks the inputs and clears the flags. The
    // end frees them. A run that is left early, or by a failure that nobody handles, never gets there.
    void Begin(RunView& view);
    void End(RunView& view);

    // What a stop from before must not spoil: the next run over a selection, and the next stream copy.
    void ForgetCancel() { IsCancelled = false; }

    // The file in hand, in this order.
    void BeginFile(const QString& path);  // its stamp is taken
    void TakeRow(int row) { InHand.CurrentItem = row; }
    void AcceptFile();  // it passed its check: the run is busy, and the tag as nobody has read it
    void KeepTag(const TagValues& loaded) { InHand.Loaded = loaded; }
    void KeepSource();                                   // it goes through a decoder of its own
    const QString& BeginDecoding(int extensionLength);   // of the WAV; see FreeTempWavPathFor
    void EndDecoding(const QString& wav, bool isWhole);  // the WAV is what is read from now on
    void SetOutputStem(const QString& stem) { InHand.OutputStem = stem; }
    void LowerKillFlag() { KillNumber = 0; }  // before work that reads it
    void EndOutput(bool isWhole) { InHand.OutputIsWhole = isWhole; }
    void FailFile() { HasFailed = true; }
    // Whether the sound of the source is known to stand in the output.
    bool IsSoundWhole() const;
    void CountTrashed(qint64 bytes);

    // For StopCommands, where it stands which command does what of this.
    void Cancel() { IsCancelled = true; }
    void SkipFile() { IsSkipped = true; }
    void RaiseKillFlag() { KillNumber = 1; }
    void StopDecoding() { InHand.DecodingStopped = true; }
    void StopMpcDecoding() { InHand.MpcDecodingStopped = true; }

private:
    friend class RunGuard;

    bool IsBusy = false;
    bool IsCancelled = false;
    bool IsSkipped = false;
    bool HasFailed = false;
    qint32 KillNumber = 0;
    FileInHand InHand;
    int TrashedFiles = 0;  // sources that went into the trash since the run began
    qint64 TrashedBytes = 0;
};

// What a run over the collection does around all its files: it begins with empty rows and an empty count of
// what goes into the trash, and tells that count at its end, however it comes.
class RunGuard {
public:
    RunGuard(Run& run, RunView& view);
    ~RunGuard();
    RunGuard(const RunGuard&) = delete;
    RunGuard& operator=(const RunGuard&) = delete;

private:
    Run& Guarded;
    RunView& View;
};

}  // namespace Sonmira
