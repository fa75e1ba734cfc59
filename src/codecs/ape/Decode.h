#pragma once

#include "codecs/ape/ApeWork.h"

#include <QString>

namespace Sonmira {

// What DecompressFile does (ApeFunctions.h), with a choice of workers. The file is the same whoever works.
void DecodeApe(const QString& ape, const QString& wav, const ApeProgressCallback& progress,
               const qint32& killFlag, const ApeWorkers& workers = {});

}  // namespace Sonmira
