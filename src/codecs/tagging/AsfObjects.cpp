#include "codecs/tagging/AsfObjects.h"

#include "codecs/tagging/TagProperties.h"
#include "platform/Failure.h"

#include <QtEndian>

#include <algorithm>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

const QByteArray ContentDescription = QByteArray::fromHex("3326b2758e66cf11a6d900aa0062ce6c");
const QByteArray FirstList = QByteArray::fromHex("40a4d0d207e3d21197f000a0c95ea850");
const QByteArray Extension = QByteArray::fromHex("b503bf5f2ea9cf118ee300c00c205365");
const QByteArray FurtherList = QByteArray::fromHex("eacbf8c5af5b77488467aa8c44fa4cca");
const QByteArray Library = QByteArray::fromHex("941c23449894d149a1411d134e457054");

constexpr qsizetype IdSize = 16;
constexpr qsizetype ObjectHead = 24;
constexpr qsizetype HeaderHead = 30;
constexpr qsizetype ExtensionHead = 22;
constexpr qint64 MostHeader = 256 << 20;

enum Kind : quint16 { WideText, Bytes, Truth, Number32, Number64, Number16 };

template <class Number>
Number At(const QByteArray& bytes, qsizetype at) {
    return qFromLittleEndian<Number>(bytes.constData() + at);
}
template <class Number>
QByteArray Of(Number number) {
    QByteArray bytes(sizeof number, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

QByteArray Sized16(qsizetype size) {
    if (size > 0xFFFF) throw Failure(FailureNumber::Component, u"The text is too long"_s);
    return Of(static_cast<quint16>(size));
}

}  // namespace

AsfObjects::AsfObjects(TagStream& file) {
    const QByteArray head = file.Bytes(0, HeaderHead);
    if (head.size() < HeaderHead) return;
    HeaderSize = At<qint64>(head, IdSize);
    if (HeaderSize < HeaderHead || HeaderSize > std::min<qint64>(file.length(), MostHeader)) return;
    Head = head;
    IsFit = ReadObjects(file.Bytes(HeaderHead, HeaderSize - HeaderHead), Objects) &&
            At<quint32>(head, ObjectHead) == static_cast<quint32>(Objects.size());
}

bool AsfObjects::ReadObjects(const QByteArray& bytes, QList<Object>& objects) {
    const bool isInner = &objects == &Inner;
    for (qsizetype at = 0; at < bytes.size();) {
        if (at + ObjectHead > bytes.size()) return false;
        const auto size = At<quint64>(bytes, at + IdSize);
        if (size < ObjectHead || size > static_cast<quint64>(bytes.size() - at)) return false;
        Object object{bytes.sliced(at, IdSize),
                      bytes.sliced(at + ObjectHead, static_cast<qsizetype>(size) - ObjectHead),
                      {}};
        at += static_cast<qsizetype>(size);
        const QByteArray id = object.Id;
        object.HasAttributes = isInner ? id == FurtherList || id == Library : id == FirstList;
        if (object.HasAttributes && !ReadAttributes(object)) return false;
        objects.append(object);
        if (isInner) continue;
        if (id == ContentDescription && !ReadTexts(object.Content)) return false;
        if (id == Extension) {
            if (object.Content.size() < ExtensionHead || !InnerHead.isEmpty()) return false;
            InnerHead = object.Content.first(ExtensionHead);
            const QByteArray inner = object.Content.sliced(ExtensionHead);
            if (At<quint32>(InnerHead, ExtensionHead - 4) != static_cast<quint32>(inner.size())) return false;
            if (!ReadObjects(inner, Inner)) return false;
        }
    }
    return true;
}

bool AsfObjects::ReadTexts(const QByteArray& content) {
    qsizetype at = 2 * TextCount;
    if (content.size() < at) return false;
    for (std::size_t n = 0; n < TextCount; ++n) {
        const qsizetype size = At<quint16>(content, 2 * static_cast<qsizetype>(n));
        if (size > content.size() - at || !Texts[n].isEmpty()) return false;
        Texts[n] = content.sliced(at, size);
        at += size;
    }
    return at == content.size();
}

bool AsfObjects::IsFurther(const Object& object) {
    return object.Id != FirstList;
}

bool AsfObjects::ReadAttributes(Object& object) {
    const QByteArray& bytes = object.Content;
    if (bytes.size() < 2) return false;
    qint64 at = 2;
    for (int left = At<quint16>(bytes, 0); left > 0; --left) {
        Attribute attribute;
        qint64 nameSize = 0;
        qint64 valueSize = 0;
        if (IsFurther(object)) {
            if (at + 12 > bytes.size()) return false;
            attribute.Head = bytes.sliced(at, 4);
            nameSize = At<quint16>(bytes, at + 4);
            attribute.Kind = At<quint16>(bytes, at + 6);
            valueSize = At<quint32>(bytes, at + 8);
            at += 12;
        } else {
            if (at + 2 > bytes.size()) return false;
            nameSize = At<quint16>(bytes, at);
            at += 2;
        }
        if (nameSize > bytes.size() - at) return false;
        attribute.Name = bytes.sliced(at, nameSize);
        at += nameSize;
        if (!IsFurther(object)) {
            if (at + 4 > bytes.size()) return false;
            attribute.Kind = At<quint16>(bytes, at);
            valueSize = At<quint16>(bytes, at + 2);
            at += 4;
        }
        if (valueSize > bytes.size() - at) return false;
        attribute.Value = bytes.sliced(at, valueSize);
        at += valueSize;
        object.Attributes.append(attribute);
    }
    return at == bytes.size();
}

QString AsfObjects::Decoded(const QByteArray& wide) {
    QString text;
    for (qsizetype at = 0; at + 1 < wide.size(); at += 2) {
        const QChar letter(At<quint16>(wide, at));
        if (letter.isNull()) break;
        text += letter;
    }
    return text;
}

QByteArray AsfObjects::Encoded(const QString& text) {
    QByteArray wide;
    for (const QChar letter : text) wide += Of(letter.unicode());
    return wide + QByteArray(2, '\0');
}

void AsfObjects::SetText(Text which, const QString& text) {
    CheckIsText(Texts[which], 2);
    Texts[which] = text.isEmpty() ? QByteArray() : Encoded(text);
    const auto found = std::find_if(Objects.begin(), Objects.end(),
                                    [](const Object& o) { return o.Id == ContentDescription; });
    if (found != Objects.end()) {
        found->IsChanged = true;
    } else {
        Objects.append({ContentDescription, {}, {}, false, true});
    }
}

// The list that programs look into first comes first.
QList<AsfObjects::Object*> AsfObjects::Lists() {
    QList<Object*> lists;
    for (Object& object : Objects) {
        if (object.HasAttributes) lists.append(&object);
    }
    for (Object& object : Inner) {
        if (object.HasAttributes) lists.append(&object);
    }
    return lists;
}

const AsfObjects::Attribute* AsfObjects::Find(const char* name) const {
    for (const QList<Object>* objects : {&Objects, &Inner}) {
        for (const Object& object : *objects) {
            for (const Attribute& attribute : object.Attributes) {
                if (Decoded(attribute.Name) == QLatin1StringView(name)) return &attribute;
            }
        }
    }
    return nullptr;
}

bool AsfObjects::Has(const char* name) const {
    return Find(name) != nullptr;
}

QString AsfObjects::ValueOf(const char* name) const {
    const Attribute* const found = Find(name);
    if (found == nullptr) return {};
    const QByteArray& value = found->Value;
    switch (found->Kind) {
        case WideText:
            return Decoded(value);
        case Number16:
            return value.size() < 2 ? QString() : QString::number(At<quint16>(value, 0));
        case Truth:
        case Number32:
            return value.size() < 4 ? QString() : QString::number(At<quint32>(value, 0));
        case Number64:
            return value.size() < 8 ? QString() : QString::number(At<quint64>(value, 0));
        default:
            return {};
    }
}

void AsfObjects::SetValue(const char* name, const QString& text) {
    const auto isNamed = [&](const Attribute& one) { return Decoded(one.Name) == QLatin1StringView(name); };
    for (Object* object : Lists()) {
        const auto found = std::find_if(object->Attributes.begin(), object->Attributes.end(), isNamed);
        if (found == object->Attributes.end()) continue;
        if (found->Kind == WideText) CheckIsText(found->Value, 2);
        object->IsChanged = true;
        if (text.isEmpty()) {
            object->Attributes.removeIf(isNamed);
            continue;
        }
        const bool isNumber = found->Kind == Number32;
        found->Kind = isNumber ? Number32 : WideText;
        found->Value = isNumber ? Of(text.toUInt()) : Encoded(text);
        return;
    }
    if (text.isEmpty()) return;
    auto list =
        std::find_if(Objects.begin(), Objects.end(), [](const Object& o) { return o.Id == FirstList; });
    if (list == Objects.end()) {
        Objects.append({FirstList, {}, {}, true, true});
        list = Objects.end() - 1;
    }
    list->Attributes.append({{}, Encoded(QString::fromLatin1(name)), WideText, Encoded(text)});
    list->IsChanged = true;
}

QByteArray AsfObjects::AttributeBytes(const Attribute& attribute, bool isFurther) {
    const QByteArray name = attribute.Name;
    if (!isFurther) {
        return Sized16(name.size()) + name + Of(attribute.Kind) + Sized16(attribute.Value.size()) +
               attribute.Value;
    }
    return attribute.Head + Sized16(name.size()) + Of(attribute.Kind) +
           Of(static_cast<quint32>(attribute.Value.size())) + name + attribute.Value;
}

QByteArray AsfObjects::ObjectBytes(const Object& object) {
    QByteArray content = object.Content;
    if (object.HasAttributes && object.IsChanged) {
        content = Sized16(object.Attributes.size());
        for (const Attribute& attribute : object.Attributes)
            content += AttributeBytes(attribute, IsFurther(object));
    }
    return object.Id + Of(static_cast<quint64>(content.size() + ObjectHead)) + content;
}

QByteArray AsfObjects::TextBytes() const {
    QByteArray sizes;
    QByteArray texts;
    for (const QByteArray& text : Texts) {
        sizes += Sized16(text.size());
        texts += text;
    }
    return sizes + texts;
}

QByteArray AsfObjects::Bytes() const {
    QByteArray objects;
    for (Object object : Objects) {
        if (object.Id == ContentDescription && object.IsChanged) object.Content = TextBytes();
        if (object.Id == Extension) {
            QByteArray inner;
            for (const Object& one : Inner) inner += ObjectBytes(one);
            object.Content =
                InnerHead.first(ExtensionHead - 4) + Of(static_cast<quint32>(inner.size())) + inner;
        }
        objects += ObjectBytes(object);
    }
    return Head.first(IdSize) + Of(static_cast<quint64>(objects.size() + HeaderHead)) +
           Of(static_cast<quint32>(Objects.size())) + Head.sliced(HeaderHead - 2) + objects;
}

RawFields AsfObjects::Fields() const {
    RawFields fields;
    for (std::size_t n = 0; n < TextCount; ++n)
        fields.append({"text " + QByteArray::number(qulonglong{n}), {}, Texts[n]});
    for (const QList<Object>* objects : {&Objects, &Inner}) {
        for (const Object& object : *objects) {
            for (const Attribute& attribute : object.Attributes) {
                fields.append({Decoded(attribute.Name).toUtf8(),
                               {},
                               object.Id + AttributeBytes(attribute, IsFurther(object))});
            }
            const bool isOther =
                !object.HasAttributes && object.Id != ContentDescription && object.Id != Extension;
            if (isOther) fields.append({object.Id, {}, object.Content});
        }
    }
    return fields;
}

}  // namespace Sonmira
