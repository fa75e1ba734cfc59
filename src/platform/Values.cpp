#include "platform/Values.h"

#include "platform/Failure.h"

#include <locale.h>
#include <stdlib.h>

#include <cmath>
#include <limits>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

bool IsBlank(QChar c) {
    return c == u' ' || c == u'\t';
}
bool IsDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

QStringView WithoutLeadingBlanks(QStringView text) {
    while (!text.isEmpty() && IsBlank(text.front())) text = text.sliced(1);
    return text;
}

struct ScannedNumber {
    double Value = 0;
    qsizetype Length = 0;  // characters that belong to it; 0 for no number
};

qsizetype SignLength(QStringView text) {
    return text.startsWith(u'-') || text.startsWith(u'+') ? 1 : 0;
}

QByteArray DigitsAt(QStringView text, qsizetype at) {
    QByteArray digits;
    for (; at < text.size() && IsDigit(text[at]); ++at) digits += static_cast<char>(text[at].unicode());
    return digits;
}

// Made once and kept for the life of the program.
locale_t PlainLocale() {
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

// The number at the very start of the text. The point is "." in every locale.
ScannedNumber ScanNumber(QStringView text) {
    qsizetype at = SignLength(text);
    const bool isNegative = text.startsWith(u'-');
    const QByteArray whole = DigitsAt(text, at);
    at += whole.size();
    QByteArray fraction;
    if (at < text.size() && text[at] == u'.') {
        fraction = DigitsAt(text, at + 1);
        if (whole.isEmpty() && fraction.isEmpty()) return {};
        at += 1 + fraction.size();
    }
    if (whole.isEmpty() && fraction.isEmpty()) return {};
    QByteArray exponent = "0";
    if (at < text.size() && (text[at] == u'e' || text[at] == u'E')) {
        const QStringView behind = text.sliced(at + 1);
        const QByteArray digits = DigitsAt(behind, SignLength(behind));
        if (!digits.isEmpty()) {
            exponent = (behind.startsWith(u'-') ? "-" : "") + digits;
            at += 1 + SignLength(behind) + digits.size();
        }
    }
    const QByteArray plain = "0" + whole + "." + fraction + "e" + exponent;
    // Too large a number becomes infinite here and too small a one 0.
    const double value = strtod_l(plain.constData(), nullptr, PlainLocale());
    return {isNegative ? -value : value, at};
}

template <class Integer>
Integer Rounded(double number) {
    const double whole = RoundHalfEven(number);
    // Written so that what is no number at all fails too.
    if (whole >= std::numeric_limits<Integer>::min() && whole <= std::numeric_limits<Integer>::max()) {
        return static_cast<Integer>(whole);
    }
    throw Failure(FailureNumber::Overflow);
}

}  // namespace

QStringView WithoutBlanks(QStringView text) {
    text = WithoutLeadingBlanks(text);
    while (!text.isEmpty() && IsBlank(text.back())) text.chop(1);
    return text;
}

double LeadingNumber(QStringView text) {
    return ScanNumber(WithoutLeadingBlanks(text)).Value;
}

QStringView UpToNul(QStringView text) {
    const qsizetype nul = text.indexOf(QChar(u'\0'));
    return nul < 0 ? text : text.first(nul);
}

double ToNumber(QStringView text) {
    const QStringView number = WithoutBlanks(UpToNul(text));
    const ScannedNumber scanned = ScanNumber(number);
    if (scanned.Length == 0 || scanned.Length != number.size()) throw Failure(FailureNumber::TypeMismatch);
    return scanned.Value;
}

qint16 ToInteger16(QStringView text) {
    return ToInteger16(ToNumber(text));
}
qint32 ToInteger32(QStringView text) {
    return ToInteger32(ToNumber(text));
}
qint16 ToInteger16(double number) {
    return Rounded<qint16>(number);
}
qint32 ToInteger32(double number) {
    return Rounded<qint32>(number);
}

bool ToFlag(QStringView text) {
    const QStringView flag = WithoutBlanks(text);
    if (flag.compare(u"True", Qt::CaseInsensitive) == 0) return true;
    if (flag.compare(u"False", Qt::CaseInsensitive) == 0) return false;
    return ToNumber(flag) != 0;
}

QString FlagText(bool flag) {
    return flag ? u"True"_s : u"False"_s;
}

// std::nearbyint would follow the rounding mode, which an audio library may have changed.
double RoundHalfEven(double number) {
    const double size = std::fabs(number);
    const double below = std::floor(size);
    const double rest = size - below;
    const bool isUp = rest > 0.5 || (rest == 0.5 && std::fmod(below, 2) != 0);
    const double rounded = isUp ? below + 1 : below;
    return number < 0 && rounded != 0 ? -rounded : rounded;
}

QString NumberText(qint64 number) {
    return number < 0 ? PlainNumber(number) : u' ' + PlainNumber(number);
}

QString PlainNumber(qint64 number) {
    return QString::number(number);
}

QString FormatNumber(qint64 number, QStringView picture) {
    while (picture.startsWith(u'#')) picture = picture.sliced(1);
    qsizetype least = 0;
    while (least < picture.size() && picture[least] == u'0') ++least;
    const bool isNegative = number < 0;
    const QString digits = PlainNumber(number).sliced(isNegative ? 1 : 0).rightJustified(least, u'0');
    return (isNegative ? u"-"_s : QString()) + digits + picture.sliced(least).toString();
}

}  // namespace Sonmira
