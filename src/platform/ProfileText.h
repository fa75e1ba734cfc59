#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <utility>
#include <vector>

// The text of an ini file as lines that are kept byte for byte, apart from the one that is set.
namespace Sonmira {

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

}  // namespace Sonmira
