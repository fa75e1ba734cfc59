#pragma once

#include "library/ConversionRecords.h"

namespace Sonmira {

// Everything that the user has gathered, with the counts that stand below the tree and the two flags of
// a running scan. Owned by the window.
struct Collection {
    ConversionRecords Records;
    int DirectoryCount = 0;    // folder records
    int FileCount = 0;         // file records that have a node
    bool ScanRunning = false;  // a folder or a drop is being added
    bool StopScan = false;     // set by the cancel commands; heard between two entries
};

}  // namespace Sonmira
