#pragma once

#include "codecs/ape/ApeWork.h"

#include <QString>

namespace Sonmira {

// What CompressFile does (ApeFunctions.h), with a choice of workers. The file is the same whoever works.
void EncodeApe(const QString& wav, const QString& ape, qint32 level, const ApeProgressCallback& progress,
               const qint32& killFlag, const ApeWorkers& workers = {});

}  // namespace Sonmira
