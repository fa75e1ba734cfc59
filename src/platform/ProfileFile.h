#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <utility>
#include <vector>

namespace Sonmira {

// The text of an ini file as lines that are kept byte for byte, apart from the one that is set.

class ProfileText {
public:
    explicit ProfileText(QByteArrayView content);

    // The narrow value of the first such key in the first such section.
    std::optional<QByteArray> Value(QStringView section, QStringView key) const;
    // False, with nothing changed, for names that could not be found again, such as a key with "=".
    bool SetValue(QStringView section, QStringView key, QByteArrayView value);

    QByteArray Content() const;

private:
    struct Line {
        QByteArray Text;
        QByteArray End;  // what ends the line: "\n", "\r\n", or nothing behind the last one
    };
    struct Place {
        size_t First;  // the line behind the section's own
        size_t Last;   // the line behind the section's last
    };
    std::optional<Place> FindSection(QStringView name) const;
    std::optional<size_t> FindKey(Place section, QStringView key) const;
    void InsertLine(size_t at, QByteArray text);

    QByteArray Mark;  // the byte order mark, where there is one
    QByteArray LineEnd = "\n";
    std::vector<Line> Lines;
};

// The profile service: ini files of sections and keys. Nothing is cached; each call goes to the file.
//
// A section is a line "[name]", a key a line "name=value". Names are compared without regard to case and
// the first match wins. Blanks around key and value are dropped. Lines that are neither (comments with
// ";", unknown text), their order and the line ends of the file are kept by a write.

// The longest value that a read gives back, in characters of UTF-16, whatever they take in the file. A longer
// one is cut there, or one before where the cut would part a pair.
inline constexpr int LongestProfileValue = 254;

// The value, or the empty text when the file, section or key is missing.
QString ReadProfileValue(QStringView file, QStringView section, QStringView key);

// Sets one value, making file, section and key as needed. The new content goes to a temporary file beside
// it and takes the old one's place by a rename, under a lock that other running instances respect.
// Line breaks in `value` become blanks. Returns whether the value was written.
bool WriteProfileValue(QStringView file, QStringView section, QStringView key, QStringView value);

}  // namespace Sonmira
