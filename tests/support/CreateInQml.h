// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_CREATEINQML_H
#define CHARTS_TEST_CREATEINQML_H

#include <QtCore/QDebug>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>

#include <memory>

/*! Made by QML, so that its properties and handlers are resolved there. */
inline std::unique_ptr<QObject> createInQml(const QByteArray &document)
{
    static QQmlEngine engine;
    engine.addImportPath(QStringLiteral(":/qt/qml"));
    QQmlComponent component(&engine);
    component.setData("import QtQuick\nimport zel.charts 1.0\n" + document, QUrl());
    std::unique_ptr<QObject> object(component.create());
    if (!object)
        qWarning().noquote() << component.errorString();
    return object;
}

#endif
