#pragma once

#include <QByteArray>
#include <QString>

#include <ostream>

// Makes the test library print text as text.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace Sonmira {

// A new empty folder that goes with the object, contents and all. Names given here are native bytes
// relative to the folder, so that a test can use names that are no text.
class TestFolder {
public:
    TestFolder();
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    // The folder itself, or something in it: as native bytes, and as the inner path of the system.
    QByteArray Native(const QByteArray& name = {}) const;
    QString Path(const QByteArray& name = {}) const;

    // Both make missing folders above. The results are inner paths.
    QString MakeFolder(const QByteArray& name) const;
    QString MakeFile(const QByteArray& name, const QByteArray& content = "x") const;

private:
    QByteArray Root;
};

// The same inner path, with the regular file removed that lay there: for what makes new files only.
QString Anew(const QString& path);

// Whole content of a file by native name; empty when there is none.
QByteArray ContentOf(const QByteArray& nativePath);
bool NativeExists(const QByteArray& nativePath);

}  // namespace Sonmira
