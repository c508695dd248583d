// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_SIGNATURES_H
#define CHARTS_TEST_SIGNATURES_H

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

/*! What QML is to see of one class: an entry of signatures.txt, where the words are explained. */
struct Signature
{
    QString kind;
    QString className;           // with its namespace
    QString base;                // likewise; empty for a value
    QString element;             // empty for an anonymous one
    bool isCreatable = true;     // by a declaration in a document
    bool isConstructible = true; // by what the registration was given
    bool isSingleton = false;
    QStringList enums;
    QStringList properties;
    QStringList signalsOf;
    QStringList methods;

    /*! Every member, as "kind text". */
    [[nodiscard]] QStringList members() const;
};

/*! All entries in their order; empty when the file cannot be read or has a line of another form. */
QList<Signature> readSignatures(const QString &path);

/*!
    \a line with the names of the module's types as a class has them of which \a all tells: for
    \a scope, the class that the line belongs to, with namespace and class.
*/
QString qualified(QString line, const Signature &scope, const QList<Signature> &all);

#endif
