#include "platform/ProfileText.h"

#include "platform/NarrowText.h"

namespace Sonmira {

namespace {

constexpr QByteArrayView ByteOrderMark = "\xEF\xBB\xBF";

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

QByteArrayView Trimmed(QByteArrayView text) {
    while (!text.isEmpty() && IsBlank(text.front())) text = text.sliced(1);
    while (!text.isEmpty() && IsBlank(text.back())) text.chop(1);
    return text;
}

// The name in "[name]"; nothing for any other line.
std::optional<QByteArrayView> SectionNameOf(QByteArrayView line) {
    line = Trimmed(line);
    if (!line.startsWith('[')) return {};
    const qsizetype close = line.lastIndexOf(']');
    if (close < 0) return {};
    return Trimmed(line.first(close).sliced(1));
}

// The key in "key=value"; nothing for any other line.
std::optional<QByteArrayView> KeyOf(QByteArrayView line) {
    line = Trimmed(line);
    if (line.startsWith(';') || SectionNameOf(line)) return {};
    const qsizetype equals = line.indexOf('=');
    if (equals < 0) return {};
    return Trimmed(line.first(equals));
}

bool IsSameName(QByteArrayView found, QStringView wanted) {
    return FromNarrow(found).trimmed().compare(wanted.trimmed(), Qt::CaseInsensitive) == 0;
}

QByteArray OnOneLine(QByteArray text) {
    return text.replace('\r', ' ').replace('\n', ' ');
}

}  // namespace

ProfileText::ProfileText(QByteArrayView content) {
    if (content.startsWith(ByteOrderMark)) {
        Mark = ByteOrderMark.toByteArray();
        content = content.sliced(ByteOrderMark.size());
    }
    while (!content.isEmpty()) {
        const qsizetype feed = content.indexOf('\n');
        const qsizetype size = feed < 0 ? content.size() : feed + 1;
        qsizetype text = feed < 0 ? size : feed;
        if (feed > 0 && content[feed - 1] == '\r') --text;
        Lines.push_back({content.first(text).toByteArray(), content.first(size).sliced(text).toByteArray()});
        content = content.sliced(size);
    }
    if (!Lines.empty() && !Lines.front().End.isEmpty()) LineEnd = Lines.front().End;
}

std::optional<ProfileText::Place> ProfileText::FindSection(QStringView name) const {
    std::optional<Place> place;
    for (size_t i = 0; i < Lines.size(); ++i) {
        const auto found = SectionNameOf(Lines[i].Text);
        if (!found) continue;
        if (place) return Place{place->First, i};
        if (IsSameName(*found, name)) place = Place{i + 1, Lines.size()};
    }
    return place;
}

std::optional<size_t> ProfileText::FindKey(Place section, QStringView key) const {
    for (size_t i = section.First; i < section.Last; ++i) {
        const auto found = KeyOf(Lines[i].Text);
        if (found && IsSameName(*found, key)) return i;
    }
    return {};
}

std::optional<QByteArray> ProfileText::Value(QStringView section, QStringView key) const {
    const auto place = FindSection(section);
    const auto line = place ? FindKey(*place, key) : std::nullopt;
    if (!line) return {};
    const QByteArrayView text = Lines[*line].Text;
    return Trimmed(text.sliced(text.indexOf('=') + 1)).toByteArray();
}

bool ProfileText::SetValue(QStringView section, QStringView key, QByteArrayView value) {
    const QByteArray header = '[' + ToNarrow(section) + ']';
    const QByteArray name = ToNarrow(key);
    const QByteArray line = name + '=';
    // With its value: behind a key that opens a bracket the value may close it.
    const QByteArray text = line + OnOneLine(value.toByteArray());
    const auto readSection = SectionNameOf(header);
    const auto readKey = KeyOf(text);
    if (header != OnOneLine(header) || name != OnOneLine(name)) return false;
    if (!readSection || !IsSameName(*readSection, section)) return false;
    if (!readKey || readKey->isEmpty() || !IsSameName(*readKey, key)) return false;

    const auto place = FindSection(section);
    if (!place) {
        InsertLine(Lines.size(), header);
        InsertLine(Lines.size(), text);
    } else if (const auto found = FindKey(*place, key)) {
        // No blank is kept behind the "=": values that start with one would grow with each write.
        QByteArray& old = Lines[*found].Text;
        old = old.first(old.indexOf('=') + 1) + text.sliced(line.size());
    } else {
        size_t at = place->Last;
        while (at > place->First && Trimmed(Lines[at - 1].Text).isEmpty()) --at;
        InsertLine(at, text);
    }
    return true;
}

void ProfileText::InsertLine(size_t at, QByteArray text) {
    if (at > 0 && Lines[at - 1].End.isEmpty()) Lines[at - 1].End = LineEnd;
    Lines.insert(Lines.begin() + static_cast<std::ptrdiff_t>(at), {std::move(text), LineEnd});
}

QByteArray ProfileText::Content() const {
    QByteArray content = Mark;
    for (const Line& line : Lines) content += line.Text + line.End;
    return content;
}

}  // namespace Sonmira
