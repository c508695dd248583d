// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_METAOBJECTTEXT_H
#define CHARTS_TEST_METAOBJECTTEXT_H

#include <QtCore/QMap>
#include <QtCore/QMetaMethod>
#include <QtCore/QMetaObject>
#include <QtCore/QMetaProperty>
#include <QtCore/QStringList>

// What a class itself, without its bases, shows to QML, as lines in the order of declaration.

inline QString methodText(const QMetaMethod &method)
{
    QStringList parameters;
    for (int i = 0; i < method.parameterCount(); ++i) {
        const QByteArray name = method.parameterNames().at(i);
        parameters.append(QString::fromLatin1(
                method.parameterTypes().at(i) + (name.isEmpty() ? name : ' ' + name)));
    }
    return QStringLiteral("%1 %2(%3)")
            .arg(QLatin1StringView(method.typeName()), QLatin1StringView(method.name()),
                    parameters.join(QStringLiteral(", ")));
}

inline QStringList methodTexts(const QMetaObject &meta, bool areSignals)
{
    QStringList texts;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        if ((method.methodType() == QMetaMethod::Signal) == areSignals)
            texts.append(methodText(method));
    }
    return texts;
}

/*! "type name read|write|constant notifySignal", the last one only where there is one. */
inline QStringList propertyTexts(const QMetaObject &meta)
{
    QStringList texts;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        QStringList words{
                QString::fromLatin1(property.typeName()), QString::fromLatin1(property.name())};
        if (property.isReadable())
            words.append(QStringLiteral("read"));
        if (property.isWritable())
            words.append(QStringLiteral("write"));
        if (property.isConstant())
            words.append(QStringLiteral("constant"));
        if (property.hasNotifySignal())
            words.append(QString::fromLatin1(property.notifySignal().name()));
        texts.append(words.join(u' '));
    }
    return texts;
}

inline QMap<QString, QString> classInfos(const QMetaObject &meta)
{
    QMap<QString, QString> infos;
    for (int i = meta.classInfoOffset(); i < meta.classInfoCount(); ++i) {
        const QMetaClassInfo info = meta.classInfo(i);
        infos.insert(QString::fromLatin1(info.name()), QString::fromLatin1(info.value()));
    }
    return infos;
}

#endif
