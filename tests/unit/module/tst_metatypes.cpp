// SPDX-License-Identifier: MIT
#include <ChartsLibrary/Span.h>
#include <ChartsLibrary/TraceDomain.h>
#include <ChartsLibrary/ZoomDelegate.h>

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtTest>

#include <memory>

using namespace Charts;
using namespace Qt::StringLiterals;

// What the meta-type system knows once a document has imported the module.
class tst_MetaTypes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void knownByName_data();
    void knownByName();
    void listConversions();
    void listIsReadAsSequence();
    void listIsWrittenAsSequence();
    void equality_data();
    void equality();
    void debugOutput();
};

void tst_MetaTypes::initTestCase()
{
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQml\nimport zel.charts 1.0\nQtObject {}", {});
    const std::unique_ptr<QObject> object(component.create());
    QVERIFY2(object, qPrintable(component.errorString()));
}

void tst_MetaTypes::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_MetaTypes::knownByName_data()
{
    QTest::addColumn<bool>("isEnumeration");
    QTest::newRow("Charts::TraceDomain::TraceFormat") << true;
    QTest::newRow("Charts::XYGrid::GridLayoutMode") << true;
    QTest::newRow("Charts::ZoomDelegate::ZoomType") << true;
    QTest::newRow("Charts::Span") << false;
    QTest::newRow("QList<Charts::Span>") << false;
}

void tst_MetaTypes::knownByName()
{
    QFETCH(bool, isEnumeration);

    const QMetaType type = QMetaType::fromName(QTest::currentDataTag());
    QVERIFY(type.isValid());
    QCOMPARE(type.flags().testFlag(QMetaType::IsEnumeration), isEnumeration);
}

void tst_MetaTypes::listConversions()
{
    const QMetaType list = QMetaType::fromName("QList<Charts::Span>");
    // The base of QSequentialIterable, which is what Qt registers for every container.
    const QMetaType sequence = QMetaType::fromType<QIterable<QMetaSequence>>();
    QVERIFY(QMetaType::hasRegisteredConverterFunction(list, sequence));
    QVERIFY(QMetaType::hasRegisteredMutableViewFunction(list, sequence));
}

void tst_MetaTypes::listIsReadAsSequence()
{
    const QVariant list = QVariant::fromValue(QList<Span>{{1.0, 2.0}, {4.0, 3.0}});
    QVERIFY(list.canConvert<QSequentialIterable>());
    const auto sequence = list.value<QSequentialIterable>();
    QCOMPARE(sequence.size(), 2);
    QCOMPARE(sequence.at(0).value<Span>(), Span(1.0, 2.0));
    QCOMPARE(sequence.at(1).value<Span>(), Span(4.0, 3.0));
}

void tst_MetaTypes::listIsWrittenAsSequence()
{
    QVariant list = QVariant::fromValue(QList<Span>{{1.0, 2.0}});
    QVERIFY(list.canView<QSequentialIterable>());
    auto sequence = list.view<QSequentialIterable>();
    sequence.addValue(QVariant::fromValue(Span(5.0, 6.0)));
    const QList<Span> expected{{1.0, 2.0}, {5.0, 6.0}};
    QCOMPARE(list.value<QList<Span>>(), expected);
}

void tst_MetaTypes::equality_data()
{
    QTest::addColumn<Span>("a");
    QTest::addColumn<Span>("b");
    QTest::addColumn<bool>("equal");

    const double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("same") << Span(1.0, 2.0) << Span(1.0, 2.0) << true;
    QTest::newRow("near zero") << Span(0.0, 1.0) << Span(1e-13, 1.0) << true;
    QTest::newRow("not so near zero") << Span(0.0, 1.0) << Span(1e-11, 1.0) << false;
    QTest::newRow("near one") << Span(1.0, 2.0) << Span(1.0 + 1e-13, 2.0) << true;
    QTest::newRow("other max") << Span(1.0, 2.0) << Span(1.0, 2.1) << false;
    QTest::newRow("small but other") << Span(1e-3, 2.0) << Span(1.1e-3, 2.0) << false;
    QTest::newRow("exchanged") << Span(1.0, 2.0) << Span(2.0, 1.0) << false;
    QTest::newRow("huge") << Span(-1e300, 1e300) << Span(-1e300, 1e300) << true;
    QTest::newRow("infinite") << Span(0.0, infinity) << Span(0.0, 1.0) << false;
    QTest::newRow("NaN") << Span(nan, 1.0) << Span(nan, 1.0) << false;
}

void tst_MetaTypes::equality()
{
    QFETCH(Span, a);
    QFETCH(Span, b);
    QFETCH(bool, equal);

    QVERIFY(QMetaType::fromType<Span>().isEqualityComparable());
    QCOMPARE(QVariant::fromValue(a) == QVariant::fromValue(b), equal);
    QCOMPARE(QVariant::fromValue(QList<Span>{{7.0, 8.0}, a})
                     == QVariant::fromValue(QList<Span>{{7.0, 8.0}, b}),
            equal);
}

void tst_MetaTypes::debugOutput()
{
    QString text;
    QDebug debug(&text);
    debug.noquote();
    QMetaType span = QMetaType::fromType<Span>();
    QVERIFY(span.hasRegisteredDebugStreamOperator());
    const Span value(1.5, 2.0);
    QVERIFY(span.debugStream(debug, &value));
    QCOMPARE(text.trimmed(), u"Span(1.5, 2)"_s);

    QString listText;
    QDebug listDebug(&listText);
    listDebug.noquote();
    const QList<Span> list{{1.5, 2.0}, {0.0, -1.0}};
    QVERIFY(QMetaType::fromType<QList<Span>>().debugStream(listDebug, &list));
    QVERIFY2(listText.contains(u"Span(1.5, 2)"_s), qPrintable(listText));
    QVERIFY2(listText.contains(u"Span(0, -1)"_s), qPrintable(listText));
}

QTEST_GUILESS_MAIN(tst_MetaTypes)

#include "tst_metatypes.moc"
