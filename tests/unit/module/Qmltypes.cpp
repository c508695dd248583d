// SPDX-License-Identifier: MIT
#include "Qmltypes.h"

#include <QtCore/QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

QStringList tokens(const QString &text)
{
    static const QRegularExpression token(
            u"//[^\\n]*|/\\*.*?\\*/|\"(?:[^\"\\\\]|\\\\.)*\"|[\\w.+-]+|\\S"_s,
            QRegularExpression::DotMatchesEverythingOption);
    QStringList all;
    for (auto match = token.globalMatch(text); match.hasNext();) {
        const QString found = match.next().captured();
        if (!found.startsWith(u"//"_s) && !found.startsWith(u"/*"_s) && found != u";"_s)
            all.append(found);
    }
    return all;
}

/*! Takes its tokens from the front of a list; none are left once something is not understood. */
class Reader
{
public:
    explicit Reader(const QStringList &tokens)
        : m_tokens(tokens)
    {
    }

    [[nodiscard]] bool atEnd() const { return m_tokens.isEmpty(); }
    [[nodiscard]] bool isNext(const QString &token) const
    {
        return !atEnd() && m_tokens.first() == token;
    }
    QString take() { return atEnd() ? QString() : m_tokens.takeFirst(); }

    QmltypesObject object()
    {
        QmltypesObject result{take(), {}, {}};
        if (take() != u"{"_s)
            return fail();
        while (!isNext(u"}"_s)) {
            if (m_tokens.size() < 3)
                return fail();
            if (m_tokens.at(1) == u"{"_s) {
                result.objects.append(object());
                continue;
            }
            const QString binding = take();
            if (take() != u":"_s || result.bindings.contains(binding))
                return fail();
            result.bindings.insert(binding, value());
        }
        take();
        return result;
    }

private:
    QmltypesObject fail()
    {
        m_tokens.clear();
        return {};
    }

    QStringList value()
    {
        if (!isNext(u"["_s))
            return {word()};
        take();
        QStringList words;
        while (!atEnd() && !isNext(u"]"_s)) {
            words.append(word());
            if (isNext(u","_s))
                take();
        }
        take();
        return words;
    }

    QString word()
    {
        const QString token = take();
        return token.startsWith(u'"') ? token.mid(1, token.size() - 2) : token;
    }

    QStringList m_tokens;
};

/*! What \a object says besides the bindings named in \a expected. */
QString remarks(const QmltypesObject &object, const QStringList &expected)
{
    // Where something stands and how C++ reaches it is no matter of the interface.
    static const QStringList ignored{u"name"_s, u"index"_s, u"read"_s, u"write"_s, u"lineNumber"_s,
            u"isPropertyConstant"_s, u"isMethodConstant"_s, u"isTypeConstant"_s};
    QString text;
    for (auto it = object.bindings.cbegin(); it != object.bindings.cend(); ++it) {
        if (!ignored.contains(it.key()) && !expected.contains(it.key()))
            text += u' ' + it.key() + u": "_s + it.value().join(u',');
    }
    return text;
}

QString typeText(const QmltypesObject &object)
{
    const QString type = object.text(u"type"_s);
    // Newer descriptions write it as a list of variants.
    if (object.isSet(u"isList"_s) && type == u"QVariant"_s)
        return u"QVariantList"_s;
    const QString list = object.isSet(u"isList"_s) ? u"[]"_s : QString();
    return type + (object.isSet(u"isPointer"_s) ? u"*"_s : QString()) + list;
}

const QStringList typeBindings{u"type"_s, u"isList"_s, u"isPointer"_s};

QString enumText(const QmltypesObject &object)
{
    return u"enum %1 %2"_s.arg(object.text(u"name"_s))
                   .arg(object.bindings.value(u"values"_s).join(u", "_s))
           + remarks(object, {u"values"_s});
}

QString propertyText(const QmltypesObject &object, qsizetype index)
{
    QStringList words{u"property"_s, typeText(object), object.text(u"name"_s), u"read"_s};
    if (!object.isSet(u"isReadonly"_s))
        words.append(u"write"_s);
    if (object.isSet(u"isConstant"_s))
        words.append(u"constant"_s);
    if (object.bindings.contains(u"notify"_s))
        words.append(object.text(u"notify"_s));
    if (object.text(u"index"_s) != QString::number(index))
        words.append(u"index: "_s + object.text(u"index"_s));
    return words.join(u' ')
           + remarks(object,
                   typeBindings + QStringList{u"isReadonly"_s, u"isConstant"_s, u"notify"_s});
}

QString functionText(const QmltypesObject &object)
{
    QStringList parameters;
    for (const QmltypesObject &parameter : object.objects) {
        const QString name = parameter.text(u"name"_s);
        parameters.append((parameter.name == u"Parameter"_s ? QString() : parameter.name)
                          + typeText(parameter) + (name.isEmpty() ? name : u' ' + name)
                          + remarks(parameter, typeBindings));
    }
    const QString type = typeText(object);
    return u"%1 %2 %3(%4)"_s.arg(object.name.toLower(), type.isEmpty() ? u"void"_s : type,
                   object.text(u"name"_s), parameters.join(u", "_s))
           + remarks(object, typeBindings);
}

} // namespace

QStringList QmltypesObject::members() const
{
    QStringList enums;
    QStringList properties;
    QStringList signalTexts;
    QStringList methods;
    for (const QmltypesObject &member : objects) {
        if (member.name == u"Enum"_s)
            enums.append(enumText(member));
        else if (member.name == u"Property"_s)
            properties.append(propertyText(member, properties.size()));
        else if (member.name == u"Signal"_s)
            signalTexts.append(functionText(member));
        else
            methods.append(functionText(member));
    }
    return enums + properties + signalTexts + methods;
}

QmltypesObject readQmltypes(const QString &text)
{
    Reader reader(tokens(text));
    while (!reader.atEnd() && !reader.isNext(u"Module"_s))
        reader.take();
    const QmltypesObject module = reader.object();
    return reader.atEnd() ? module : QmltypesObject();
}
