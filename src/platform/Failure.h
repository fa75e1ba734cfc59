#pragma once

#include <QString>

#include <exception>
#include <new>
#include <stdexcept>
#include <system_error>

namespace Sonmira {

// The one way in which any room reports that it cannot do what it was asked. A failure has a number,
// one of the classic run-time numbers below or one that a component chose, and a text for people.
//
// A routine shows which of four forms it has: no handler; statement by statement (PassOver); a closing
// step that always runs (a scope guard); or the standard failure box of the shell.

namespace FailureNumber {
inline constexpr int InvalidCall = 5;
inline constexpr int Overflow = 6;
inline constexpr int SubscriptOutOfRange = 9;
inline constexpr int DivisionByZero = 11;
inline constexpr int TypeMismatch = 13;
inline constexpr int FileNotFound = 53;
inline constexpr int FileAlreadyExists = 58;
inline constexpr int PermissionDenied = 70;
inline constexpr int PathFileAccess = 75;
inline constexpr int PathNotFound = 76;
inline constexpr int ObjectNotSet = 91;
inline constexpr int InvalidPropertyValue = 380;
inline constexpr int KeyNotFound = 35601;   // a keyed list has no element of that key
inline constexpr int KeyNotUnique = 35602;  // a keyed list has an element of that key already
inline constexpr int Component = 1000;      // an audio component's own failure; its text says the rest
}  // namespace FailureNumber

class Failure : public std::exception {
public:
    // The classic text of `number`; "Application-defined error" for a number without one.
    explicit Failure(int number);
    Failure(int number, const QString& description);

    const char* what() const noexcept override { return Narrow.constData(); }

    int Number;
    QString Description;

private:
    QByteArray Narrow;
};

// Runs one statement and passes a failure over, so that the next statement runs all the same.
// Returns whether the statement ended well.
template <class Statement>
bool PassOver(Statement&& statement) {
    try {
        statement();
        return true;
    } catch (const Failure&) {
        return false;
    }
}

// `value` as a 16-bit number; fails with Overflow where it does not fit.
qint16 Checked16(qint64 value);

// How a refusal of the operating system becomes a failure that people can read.

// For opening and reading. `error` is an errno value.
Failure ReadingFailure(int error);
// For creating and writing.
Failure WritingFailure(int error);

// Runs one call of the libraries. What the C++ library throws there is memory that ran out, of which a
// hostile file may be the cause, or a thread that could not be had: a failure of that file, not of the
// program.
template <class Call>
auto WithMemoryChecked(Call&& call) {
    using namespace Qt::StringLiterals;
    try {
        return call();
    } catch (const std::bad_alloc&) {
    } catch (const std::length_error&) {
    } catch (const std::system_error& error) {
        throw Failure(FailureNumber::Component, QString::fromLocal8Bit(error.what()));
    }
    throw Failure(FailureNumber::Component, u"Not enough memory for this file"_s);
}

}  // namespace Sonmira
