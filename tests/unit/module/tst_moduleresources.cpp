// SPDX-License-Identifier: MIT
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QResource>
#include <QtTest/QTest>

using namespace Qt::StringLiterals;

int qInitResources_ChartsLibrary_shaders();
int qCleanupResources_ChartsLibrary_shaders();
int qInitResources_qmake_zel_charts();
int qCleanupResources_qmake_zel_charts();
int qInitResources_chart_resources();
int qCleanupResources_chart_resources();

namespace {

using ResourceFunction = int (*)();

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList entries(const QString &folder)
{
    return QDir(folder).entryList(QDir::NoFilter, QDir::Name);
}

const QString qmldirPath = u":/qt/qml/zel/charts/qmldir"_s;

} // namespace

Q_DECLARE_METATYPE(ResourceFunction)

class tst_ModuleResources : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void qmldirText();
    void qmldirInModuleFolder();
    void storage_data();
    void storage();
    void listing_data();
    void listing();
    void shaderSources_data();
    void shaderSources();
    void shaderPacks_data();
    void shaderPacks();
    void cleanupAndInit_data();
    void cleanupAndInit();
};

void tst_ModuleResources::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_ModuleResources::qmldirText()
{
    const QByteArray text = contents(qmldirPath);
    QCOMPARE(text.size(), 189);
    const QList<QByteArray> lines{
            "module zel.charts",
            "linktarget ChartsLibraryplugin",
            "optional plugin ChartsLibraryplugin",
            "classname zel_chartsPlugin",
            "typeinfo ChartsLibrary.qmltypes",
            "prefer :/qt/qml/zel/charts/",
            "depends QtQuick",
            "", // the empty line at the end
            "",
    };
    QCOMPARE(text.split('\n'), lines);
}

void tst_ModuleResources::qmldirInModuleFolder()
{
    const QByteArray text = contents(QStringLiteral(MODULE_FOLDER "/qmldir"));
    QVERIFY(!text.isEmpty());
    QCOMPARE(text, contents(qmldirPath));
}

void tst_ModuleResources::storage_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QResource::Compression>("compression");

    const auto row = [](const char *path, QResource::Compression compression) {
        QTest::newRow(path) << QString::fromLatin1(path) << compression;
    };
    row(":/qt/qml/zel/charts/qmldir", QResource::NoCompression);
    row(":/Charts/resources/shaders/qt6_smoothcolor.frag.qsb", QResource::NoCompression);
    row(":/Charts/resources/shaders/qt6_smoothcolor.vert.qsb", QResource::NoCompression);
    row(":/shaders/qt6_smoothcolor.vert", QResource::NoCompression);
    row(":/shaders/qt6_smoothcolor.frag", QResource::NoCompression);
    row(":/shaders/smoothcolor.vert", QResource::ZlibCompression);
    row(":/shaders/smoothcolor.frag", QResource::NoCompression);
}

void tst_ModuleResources::storage()
{
    QFETCH(QString, path);
    QFETCH(QResource::Compression, compression);

    const QResource resource(path);
    QVERIFY(resource.isValid());
    QCOMPARE(resource.compressionAlgorithm(), compression);
    QVERIFY(resource.uncompressedSize() > 0);
    if (compression == QResource::NoCompression)
        QCOMPARE(resource.size(), resource.uncompressedSize());
    else
        QVERIFY(resource.size() < resource.uncompressedSize());
}

void tst_ModuleResources::listing_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QStringList>("files");

    QTest::newRow("module") << u":/qt/qml/zel/charts"_s << QStringList{u"qmldir"_s};
    QTest::newRow("packs") << u":/Charts/resources/shaders"_s
                           << QStringList{
                                      u"qt6_smoothcolor.frag.qsb"_s, u"qt6_smoothcolor.vert.qsb"_s};
    QTest::newRow("sources") << u":/shaders"_s
                             << QStringList{u"qt6_smoothcolor.frag"_s, u"qt6_smoothcolor.vert"_s,
                                        u"smoothcolor.frag"_s, u"smoothcolor.vert"_s};
}

void tst_ModuleResources::listing()
{
    QFETCH(QString, folder);
    QFETCH(QStringList, files);

    QCOMPARE(entries(folder), files);
}

void tst_ModuleResources::shaderSources_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"qt6_smoothcolor.vert", "qt6_smoothcolor.frag", "smoothcolor.vert",
                 "smoothcolor.frag"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void tst_ModuleResources::shaderSources()
{
    QFETCH(QString, name);

    const QByteArray onDisk = contents(QStringLiteral(SHADER_FOLDER "/") + name);
    QVERIFY(onDisk.contains("void main()"));
    QCOMPARE(contents(u":/shaders/"_s + name), onDisk);
}

void tst_ModuleResources::shaderPacks_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("vertex") << u":/Charts/resources/shaders/qt6_smoothcolor.vert.qsb"_s;
    QTest::newRow("fragment") << u":/Charts/resources/shaders/qt6_smoothcolor.frag.qsb"_s;
}

// What is in the packs shows when the scene graph draws with them; here only that they are packs,
// which are compressed as a whole and begin with the length of what they unpack to.
void tst_ModuleResources::shaderPacks()
{
    QFETCH(QString, path);

    const QByteArray pack = contents(path);
    QVERIFY(pack.size() > 4);
    const QByteArray unpacked = qUncompress(pack);
    QVERIFY(unpacked.size() > pack.size());
    QVERIFY(unpacked.contains("main"));
}

void tst_ModuleResources::cleanupAndInit_data()
{
    QTest::addColumn<ResourceFunction>("initialise");
    QTest::addColumn<ResourceFunction>("cleanUp");
    QTest::addColumn<QString>("folder");

    QTest::newRow("module") << &qInitResources_qmake_zel_charts
                            << &qCleanupResources_qmake_zel_charts << u":/qt/qml/zel/charts"_s;
    QTest::newRow("packs") << &qInitResources_ChartsLibrary_shaders
                           << &qCleanupResources_ChartsLibrary_shaders
                           << u":/Charts/resources/shaders"_s;
    QTest::newRow("sources") << &qInitResources_chart_resources
                             << &qCleanupResources_chart_resources << u":/shaders"_s;
}

void tst_ModuleResources::cleanupAndInit()
{
    QFETCH(ResourceFunction, initialise);
    QFETCH(ResourceFunction, cleanUp);
    QFETCH(QString, folder);

    const QStringList folders{
            u":/qt/qml/zel/charts"_s, u":/Charts/resources/shaders"_s, u":/shaders"_s};
    const auto others = [&] {
        QStringList all;
        for (const QString &other : folders) {
            if (other != folder)
                all += entries(other);
        }
        return all;
    };
    const QStringList own = entries(folder);
    const QStringList before = others();
    QVERIFY(!own.isEmpty());

    QCOMPARE(cleanUp(), 1);
    QVERIFY2(entries(folder).isEmpty(), "the set is still there");
    QCOMPARE(others(), before);

    QCOMPARE(initialise(), 1);
    QCOMPARE(entries(folder), own);
    QCOMPARE(others(), before);
}

QTEST_GUILESS_MAIN(tst_ModuleResources)

#include "tst_moduleresources.moc"
