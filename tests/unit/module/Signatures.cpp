// SPDX-License-Identifier: MIT
#include "Signatures.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

bool readHead(const QString &line, Signature &signature)
{
    static const QRegularExpression head(u"^(object|item|value) ([\\w:]+)(?: : ([\\w:]+))?$"_s);
    const QRegularExpressionMatch match = head.match(line);
    signature.kind = match.captured(1);
    signature.className = match.captured(2);
    signature.base = match.captured(3);
    signature.element = signature.className.section(u"::"_s, -1);
    return match.hasMatch();
}

bool readDetail(const QString &line, Signature &signature)
{
    const QString word = line.section(u' ', 0, 0);
    const QString rest = line.section(u' ', 1);
    if (word == u"element"_s)
        signature.element = rest;
    else if (word == u"anonymous"_s)
        signature.element.clear();
    else if (word == u"uncreatable"_s)
        signature.isCreatable = false;
    else if (word == u"unconstructible"_s)
        signature.isConstructible = false;
    else if (word == u"singleton"_s)
        signature.isSingleton = true;
    else if (word == u"enum"_s)
        signature.enums.append(rest);
    else if (word == u"property"_s)
        signature.properties.append(rest);
    else if (word == u"signal"_s)
        signature.signalsOf.append(rest);
    else if (word == u"method"_s)
        signature.methods.append(rest);
    else
        return false;
    return true;
}

} // namespace

QStringList Signature::members() const
{
    QStringList lines;
    const auto append = [&](const QString &what, const QStringList &texts) {
        for (const QString &text : texts)
            lines.append(what + u' ' + text);
    };
    append(u"enum"_s, enums);
    append(u"property"_s, properties);
    append(u"signal"_s, signalsOf);
    append(u"method"_s, methods);
    return lines;
}

QList<Signature> readSignatures(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QList<Signature> all;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    for (const QString &line : lines) {
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        if (!line.startsWith(u' '))
            all.append(Signature());
        const bool isRead = !all.isEmpty()
                            && (line.startsWith(u' ') ? readDetail(line.trimmed(), all.last())
                                                      : readHead(line, all.last()));
        if (!isRead)
            return {};
    }
    return all;
}

QString qualified(QString line, const Signature &scope, const QList<Signature> &all)
{
    // Types begin with a capital letter, members do not: a name can be told by itself.
    const auto replace = [&line](const QString &name, const QString &full) {
        line.replace(QRegularExpression(u"(?<![\\w:])%1(?![\\w:])"_s.arg(name)), full);
    };
    for (const QString &text : scope.enums) {
        const QString name = text.section(u' ', 0, 0);
        replace(name, scope.className + u"::"_s + name);
    }
    for (const Signature &other : all) {
        const QString name = other.className.section(u"::"_s, 1);
        if (name.isEmpty())
            continue;
        replace(name, other.className);
        for (const QString &text : other.enums) {
            const QString inner = u"::"_s + text.section(u' ', 0, 0);
            replace(name + inner, other.className + inner);
        }
    }
    return line;
}
