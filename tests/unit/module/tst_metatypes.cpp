// SPDX-License-Identifier: MIT
#include <ChartsLibrary/Span.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QSequentialIterable>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtTest/QTest>

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
    void enumerationKeys_data();
    void enumerationKeys();
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
    QTest::addColumn<QMetaType::TypeFlags>("flags");
    const auto row = [](const QByteArray &name, QMetaType::TypeFlags flags) {
        QTest::newRow(name.constData()) << flags;
    };
    row("Charts::TraceDomain::TraceFormat", QMetaType::IsEnumeration);
    row("Charts::XYGrid::GridLayoutMode", QMetaType::IsEnumeration);
    row("Charts::ZoomDelegate::ZoomType", QMetaType::IsEnumeration);
    row("Charts::Span", QMetaType::IsGadget);
    row("QList<Charts::Span>", {});
    for (const char *name : {"Charts::AbstractCurveTransform", "Charts::AbstractGrid",
                 "Charts::AbstractTrace", "Charts::Chart", "Charts::ChartItem",
                 "Charts::ChartMouseEvent", "Charts::Curve", "Charts::DomainUtils",
                 "Charts::FillRectProvider", "Charts::GradientCurve", "Charts::GradientProvider",
                 "Charts::LinearCurveTransform", "Charts::LogarithmicCurveTransform",
                 "Charts::PolarGrid", "Charts::SmithGrid", "Charts::TraceDomain", "Charts::XYGrid",
                 "Charts::ZoomDelegate", "QQuickItem"}) {
        row(QByteArray(name) + '*', QMetaType::PointerToQObject);
        // A document's "property list<Curve>"; there is none of a singleton.
        if (qstrcmp(name, "Charts::DomainUtils") != 0)
            row(QByteArray("QQmlListProperty<") + name + '>', {});
    }
}

void tst_MetaTypes::knownByName()
{
    QFETCH(QMetaType::TypeFlags, flags);

    const QMetaType type = QMetaType::fromName(QTest::currentDataTag());
    QVERIFY(type.isValid());
    const QMetaType::TypeFlags kinds =
            QMetaType::IsEnumeration | QMetaType::PointerToQObject | QMetaType::IsGadget;
    QCOMPARE(type.flags() & kinds, flags);
}

void tst_MetaTypes::enumerationKeys_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<int>("value");

    const auto rows = [](const char *type, std::initializer_list<const char *> keys) {
        int value = 0;
        for (const char *key : keys)
            QTest::newRow(key) << QByteArray(type) << value++;
    };
    rows("Charts::TraceDomain::TraceFormat", {"XYFormat", "SmithFormat", "PolarFormat"});
    rows("Charts::XYGrid::GridLayoutMode",
            {"EquidistantGrid", "CenteredLinGrid", "NiceLabelsLinGrid", "LogGrid"});
    rows("Charts::ZoomDelegate::ZoomType", {"Diagonal", "Vertical", "Horizontal"});
}

// A variant can tell the key of the value that it holds.
void tst_MetaTypes::enumerationKeys()
{
    QFETCH(QByteArray, type);
    QFETCH(int, value);

    const QMetaType enumeration = QMetaType::fromName(type);
    QVERIFY(enumeration.isValid());
    QCOMPARE(enumeration.sizeOf(), qsizetype(sizeof value));
    const QVariant variant(enumeration, &value);
    QCOMPARE(variant.toString(), QString::fromLatin1(QTest::currentDataTag()));
    QCOMPARE(variant.toInt(), value);
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
