// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_QMLTYPES_H
#define CHARTS_TEST_QMLTYPES_H

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

/*!
    An object of a type description (*.qmltypes): what stands between the braces behind a name. A
    binding's value is a list of words: a string without its quotes, a number, true or false.
*/
struct QmltypesObject
{
    QString name;
    QMap<QString, QStringList> bindings;
    QList<QmltypesObject> objects;

    [[nodiscard]] QString text(const QString &binding) const
    {
        return bindings.value(binding).join(u',');
    }
    [[nodiscard]] bool isSet(const QString &binding) const
    {
        return text(binding) == QStringLiteral("true");
    }

    /*!
        What a Component shows, in the form of Signature::members() with full names, but for what a
        description leaves out: the values of enumerations and, in those of Qt 6.4, that a property is
        constant. What is said of a member beyond that stands behind it.
    */
    [[nodiscard]] QStringList members() const;
};

/*! The Module of the description \a text; without a name if it is no description. */
QmltypesObject readQmltypes(const QString &text);

#endif
