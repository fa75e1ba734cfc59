#pragma once

#include <QByteArray>

#include <set>

namespace Sonmira {

// What FFmpeg finds in a file: seen by other eyes than those that write tags.
struct Account {
    QByteArray Format;
    QByteArray Sound;                 // a sum over all packets of sound; empty where there is no telling
    std::multiset<QByteArray> Texts;  // "key=value", the key in small letters; without title, year and track
    std::multiset<QByteArray> Pictures;
};

Account AccountBy(const QByteArray& file);

// What `after` no longer has; empty where nothing is lost.
QByteArray WhatIsLost(const Account& before, const Account& after);

}  // namespace Sonmira
