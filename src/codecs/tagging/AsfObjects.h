#pragma once

#include "codecs/tagging/TagStream.h"
#include "codecs/tagging/TagValues.h"

#include <QString>

#include <array>

namespace Sonmira {

// The header of a WMA file: a content description of five texts, and lists of attributes by name. All other
// objects, and the texts and attributes that nobody changes, keep their bytes and their place.
// Source of the facts: Advanced Systems Format, Microsoft.
class AsfObjects {
public:
    enum Text { Title, Author, Copyright, Description };

    explicit AsfObjects(TagStream& file);

    // Whether all sizes fit, so that it can be written.
    bool Fit() const { return IsFit; }
    qint64 Size() const { return HeaderSize; }

    QString TextOf(Text which) const { return Decoded(Texts[which]); }
    void SetText(Text which, const QString& text);

    bool Has(const char* name) const;
    // The first attribute of that name as text, whatever its kind; empty where there is none.
    QString ValueOf(const char* name) const;
    // Changes the first, which stays a number if it is one; without a text all of that name go.
    void SetValue(const char* name, const QString& text);

    // Fails where a text is too long.
    QByteArray Bytes() const;
    // Their names are those of the attributes, and "text 0" to "text 3".
    RawFields Fields() const;

private:
    static constexpr std::size_t TextCount = 5;
    struct Attribute {
        QByteArray Head;  // language and stream, in the lists of the header extension
        QByteArray Name;
        quint16 Kind = 0;
        QByteArray Value;
    };
    struct Object {
        QByteArray Id;
        QByteArray Content;
        QList<Attribute> Attributes;
        bool HasAttributes = false;
        bool IsChanged = false;
    };

    static QString Decoded(const QByteArray& wide);
    static QByteArray Encoded(const QString& text);
    static bool IsFurther(const Object& object);
    static QByteArray AttributeBytes(const Attribute& attribute, bool isFurther);
    static QByteArray ObjectBytes(const Object& object);

    bool ReadObjects(const QByteArray& bytes, QList<Object>& objects);
    bool ReadTexts(const QByteArray& content);
    static bool ReadAttributes(Object& object);
    QList<Object*> Lists();
    const Attribute* Find(const char* name) const;
    QByteArray TextBytes() const;

    qint64 HeaderSize = 0;
    bool IsFit = false;
    QByteArray Head;       // of the header
    QByteArray InnerHead;  // of the header extension
    QList<Object> Objects;
    QList<Object> Inner;
    std::array<QByteArray, TextCount> Texts;
};

}  // namespace Sonmira
