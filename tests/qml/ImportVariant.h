// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_IMPORTVARIANT_H
#define CHARTS_TEST_IMPORTVARIANT_H

#include <QtCore/QFile>
#include <QtCore/QStringList>
#include <QtQml/QQmlEngine>

/*!
    Where the engine is to find the module, from CHARTS_TEST_IMPORT: "linked", only in the library
    that this program is linked to; "resources", in the library's resources; "folder", which is the
    default, in the module's folder, named by QML_IMPORT_PATH.
*/
inline QString importVariant()
{
    return qEnvironmentVariable("CHARTS_TEST_IMPORT", QStringLiteral("folder"));
}

inline void applyImportVariant(QQmlEngine &engine)
{
    QStringList paths = engine.importPathList();
    // Newer versions of Qt look into the resources by themselves.
    paths.removeAll(QStringLiteral("qrc:/qt/qml"));
    if (importVariant() != QStringLiteral("folder")) {
        for (const QString &path : qEnvironmentVariable("QML_IMPORT_PATH").split(QLatin1Char(':')))
            paths.removeAll(path);
    }
    if (importVariant() == QStringLiteral("resources"))
        paths.prepend(QStringLiteral(":/qt/qml"));
    engine.setImportPathList(paths);
}

/*! The import paths that lead to the module. */
inline QStringList modulePaths(const QQmlEngine &engine)
{
    QStringList paths = engine.importPathList();
    paths.replaceInStrings(QStringLiteral("qrc:"), QStringLiteral(":"));
    paths.removeIf([](const QString &path) {
        return !QFile::exists(path + QStringLiteral("/zel/charts/qmldir"));
    });
    return paths;
}

#endif
