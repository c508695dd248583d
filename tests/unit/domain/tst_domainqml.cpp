// SPDX-License-Identifier: MIT
#include "ExactCompare.h"

#include <ChartsLibrary/Span.h>
#include <ChartsLibrary/TraceDomain.h>

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <memory>

using namespace Charts;

namespace {

// The linker drops a library of which the program uses nothing, and with it the registration.
const QMetaObject *const libraryIsLinked = &TraceDomain::staticMetaObject;

} // namespace

// Span and the singleton "Domain" as expressions of QML see them.
class tst_DomainQml : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void expression_data();
    void expression();
    void isDomainRound();
    void bindingToRange();

private:
    std::unique_ptr<QObject> create(const QString &expression);

    QQmlEngine m_engine;
};

void tst_DomainQml::initTestCase()
{
    QVERIFY(libraryIsLinked);
    m_engine.addImportPath(QStringLiteral(":/qt/qml"));
}

void tst_DomainQml::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

std::unique_ptr<QObject> tst_DomainQml::create(const QString &expression)
{
    QQmlComponent component(&m_engine);
    component.setData(QStringLiteral("import QtQml\nimport zel.charts 1.0\n"
                                     "QtObject { property var result: %1 }")
                              .arg(expression)
                              .toUtf8(),
            QUrl());
    std::unique_ptr<QObject> object(component.create());
    if (!object)
        qWarning().noquote() << component.errorString();
    return object;
}

void tst_DomainQml::expression_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QVariant>("value");

    const auto row = [](const char *expression, const QVariant &value) {
        QTest::newRow(expression) << QString::fromLatin1(expression) << value;
    };
    row("Domain.span(1, 2).min", 1.0);
    row("Domain.span(1, 2).max", 2.0);
    row("Domain.span(5, -5).min", 5.0);
    row("Domain.span(0, 1) == Domain.span(1e-13, 1)", true);
    row("Domain.span(0, 1) == Domain.span(1e-3, 1)", false);
    row("{ let s = Domain.span(1, 2); s.min = 7; return s.min }", 7.0);
    row("{ let s = Domain.span(1, 2); s.max = -7; return s.max }", -7.0);
    row("Domain.niceStep(Domain.span(0, 1.2))", 0.125);
    row("Domain.niceStep(Domain.span(0, 100))", 10.0);
    row("Domain.niceStep(Domain.span(10, 0))", 1e-301);
    row("Domain.mapToGeometry(Domain.span(0, 200), Domain.span(-1, 1), 0)", 100.0);
    row("Domain.mapFromGeometry(Domain.span(0, 200), Domain.span(-1, 1), 50)", -0.5);
    row("Domain.mapToGeometry(Domain.span(0, 200), Domain.span(1, 1), 2)", qInf());
    row("typeof Domain.mapRangeValue", QStringLiteral("undefined"));
    row("TraceDomain.XYFormat", 0);
    row("TraceDomain.SmithFormat", 1);
    row("TraceDomain.PolarFormat", 2);
}

void tst_DomainQml::expression()
{
    QFETCH(QString, expression);
    QFETCH(QVariant, value);

    const auto object = create(expression);
    QVERIFY(object);
    const QVariant result = object->property("result");
    if (value.typeId() == QMetaType::Double)
        COMPARE_EXACT(result.toDouble(), value.toDouble());
    else
        QCOMPARE(result, value);
}

void tst_DomainQml::isDomainRound()
{
    TraceDomain domain;
    m_engine.rootContext()->setContextProperty(QStringLiteral("aDomain"), &domain);
    for (const auto format :
            {TraceDomain::XYFormat, TraceDomain::SmithFormat, TraceDomain::PolarFormat}) {
        domain.setFormat(format);
        const auto object = create(QStringLiteral("Domain.isDomainRound(aDomain)"));
        QVERIFY(object);
        QCOMPARE(object->property("result"), QVariant(format != TraceDomain::XYFormat));
    }
}

void tst_DomainQml::bindingToRange()
{
    TraceDomain domain;
    m_engine.rootContext()->setContextProperty(QStringLiteral("aDomain"), &domain);
    const auto object = create(QStringLiteral("aDomain.xRange.max + aDomain.baseYRange.min"));
    QVERIFY(object);
    QCOMPARE(object->property("result").toDouble(), 0.0);
    domain.setRangeXY(0.0, 10.0, 4.0, 5.0);
    QCOMPARE(object->property("result").toDouble(), 14.0);
    domain.zoomIn(Span(2.0, 3.0), Span(4.5, 4.75));
    QCOMPARE(object->property("result").toDouble(), 7.0);
    domain.zoomReset();
    QCOMPARE(object->property("result").toDouble(), 14.0);
}

QTEST_GUILESS_MAIN(tst_DomainQml)
#include "tst_domainqml.moc"
