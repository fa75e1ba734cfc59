#pragma once

#include <QString>

// How text becomes numbers and flags and back. Settings, rows and tags all pass through here, because the
// exact forms (a leading blank, halves to even) are part of the files and rows that users keep.
namespace Sonmira {

// The text less the blanks at both ends.
QStringView WithoutBlanks(QStringView text);

// The text before its first NUL, which is all of it where there is none. Fields of a fixed size are filled up
// with NULs.
QStringView UpToNul(QStringView text);

// The number at the start of the text: blanks are skipped, reading stops at the first character that does
// not belong to a decimal number (sign, digits, one point, an exponent). No number gives 0. Never fails.
double LeadingNumber(QStringView text);

// The whole text, up to a NUL, as a number, with blanks around it allowed. Fails with TypeMismatch when the
// text is empty or no number.
double ToNumber(QStringView text);
// The same, rounded with halves to even; fails with Overflow where it does not fit.
qint16 ToInteger16(QStringView text);
qint32 ToInteger32(QStringView text);
qint16 ToInteger16(double number);
qint32 ToInteger32(double number);

// "True" and "False" in any case, or a number (0 is false). Fails with TypeMismatch for other text.
bool ToFlag(QStringView text);
// "True" or "False".
QString FlagText(bool flag);

// The nearest whole number, halves to the even one.
double RoundHalfEven(double number);

// The system's number-to-text conversion: positive numbers and 0 carry a leading blank.
QString NumberText(qint64 number);
// Plain decimal digits, with a minus sign where needed.
QString PlainNumber(qint64 number);

// A whole number in one of the pictures "#00", "#00 - " and "###000": each "0" is a digit that is always
// there, "#" one that is shown when needed, the rest of the picture stands behind as it is. More digits
// than the picture has are all shown; a negative number has its sign in front.
QString FormatNumber(qint64 number, QStringView picture);

}  // namespace Sonmira
