#pragma once

#include <QByteArray>
#include <QList>

namespace Sonmira {

// Short files of each kind that the system reads. Those that need other programs are there where these are
// installed.
QList<QByteArray> SoundSeeds();
// The same for the kinds that have tags, with tags and pictures.
QList<QByteArray> TaggedSeeds();

}  // namespace Sonmira
