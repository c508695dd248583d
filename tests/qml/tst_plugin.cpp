// SPDX-License-Identifier: MIT
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtTest/QTest>

#include <memory>

using namespace Qt::StringLiterals;

// A program that knows nothing of the library: a document brings it in.
class tst_Plugin : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void notFoundWithoutTheFolder();
    void loadedFromTheFolder();
    void resourcesAreThere();
};

namespace {

const QByteArray document = "import QtQml\n"
                            "import zel.charts 1.0\n"
                            "QtObject {\n"
                            "    property QtObject chart: Chart {}\n"
                            "    property real step: Domain.niceStep(Domain.span(0, 1.2))\n"
                            "}";

} // namespace

void tst_Plugin::notFoundWithoutTheFolder()
{
    qunsetenv("QML_IMPORT_PATH");
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(document, {});
    QVERIFY(component.isError());
    QVERIFY2(component.errorString().contains(u"module \"zel.charts\" is not installed"_s),
            qPrintable(component.errorString()));
    QVERIFY(!QFile::exists(u":/qt/qml/zel/charts/qmldir"_s));
}

void tst_Plugin::loadedFromTheFolder()
{
    QQmlEngine engine;
    engine.addImportPath(QStringLiteral(MODULE_ROOT));
    QQmlComponent component(&engine);
    component.setData(document, {});
    const std::unique_ptr<QObject> object(component.create());
    QVERIFY2(object, qPrintable(component.errorString()));
    QVERIFY(object->property("chart").value<QObject *>()->inherits("Charts::Chart"));
    QCOMPARE(object->property("step").toDouble(), 0.125);
}

void tst_Plugin::resourcesAreThere()
{
    QVERIFY(QFile::exists(u":/qt/qml/zel/charts/qmldir"_s));
    QVERIFY(QFile::exists(u":/Charts/resources/shaders/qt6_smoothcolor.vert.qsb"_s));
    QVERIFY(QFile::exists(u":/shaders/smoothcolor.frag"_s));
}

QTEST_MAIN(tst_Plugin)

#include "tst_plugin.moc"
