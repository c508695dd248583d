// SPDX-License-Identifier: MIT
#include "CreateInQml.h"
#include "ExactCompare.h"
#include "MetaObjectText.h"
#include "RelativeChanges.h"

#include <ChartsLibrary/LinearCurveTransform.h>
#include <ChartsLibrary/LogarithmicCurveTransform.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <limits>
#include <type_traits>

using namespace Charts;
using namespace Qt::StringLiterals;

static_assert(std::is_abstract_v<AbstractCurveTransform>);
static_assert(std::is_base_of_v<QObject, AbstractCurveTransform>);
static_assert(std::is_base_of_v<AbstractCurveTransform, LinearCurveTransform>);
static_assert(std::is_base_of_v<AbstractCurveTransform, LogarithmicCurveTransform>);

class tst_CurveTransforms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void metaObjects();
    void initialValues();
    void decibel_data() { addRelativeChanges(); }
    void decibel();
    void pointCount_data();
    void pointCount();
    void fromQml();
    void baseInQml();

    void straight_data();
    void straight();
};

void tst_CurveTransforms::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_CurveTransforms::metaObjects()
{
    const QMetaObject &base = AbstractCurveTransform::staticMetaObject;
    QCOMPARE(base.className(), "Charts::AbstractCurveTransform");
    QCOMPARE(base.superClass(), &QObject::staticMetaObject);
    const QMetaObject &linear = LinearCurveTransform::staticMetaObject;
    QCOMPARE(linear.className(), "Charts::LinearCurveTransform");
    QCOMPARE(linear.superClass(), &base);
    for (const QMetaObject *meta : {&base, &linear}) {
        QVERIFY(propertyTexts(*meta).isEmpty());
        QCOMPARE(meta->methodCount(), meta->methodOffset());
    }

    const QMetaObject &logarithmic = LogarithmicCurveTransform::staticMetaObject;
    QCOMPARE(logarithmic.className(), "Charts::LogarithmicCurveTransform");
    QCOMPARE(logarithmic.superClass(), &base);
    QCOMPARE(
            propertyTexts(logarithmic), QStringList({u"double decibel read write decibelChanged"_s,
                                                u"int pointCount read write pointCountChanged"_s}));
    QCOMPARE(methodTexts(logarithmic, true),
            QStringList({u"void decibelChanged()"_s, u"void pointCountChanged()"_s}));
    QVERIFY(methodTexts(logarithmic, false).isEmpty());
}

void tst_CurveTransforms::initialValues()
{
    QObject parent;
    const LogarithmicCurveTransform logarithmic(&parent);
    QCOMPARE(logarithmic.parent(), &parent);
    QVERIFY(isSame(logarithmic.decibel(), 0.0));
    QCOMPARE(logarithmic.pointCount(), 100);
    const LinearCurveTransform linear(&parent);
    QCOMPARE(linear.parent(), &parent);
    QVERIFY(!LinearCurveTransform().parent());
}

void tst_CurveTransforms::decibel()
{
    QFETCH(double, first);
    QFETCH(double, second);
    QFETCH(bool, isChange);

    LogarithmicCurveTransform transform;
    transform.setDecibel(first);
    COMPARE_EXACT(transform.decibel(), first);
    QSignalSpy decibelChanges(&transform, &LogarithmicCurveTransform::decibelChanged);
    QSignalSpy countChanges(&transform, &LogarithmicCurveTransform::pointCountChanged);
    double seenInside = NaN;
    connect(&transform, &LogarithmicCurveTransform::decibelChanged, this,
            [&] { seenInside = transform.decibel(); });
    transform.setDecibel(second);
    QCOMPARE(decibelChanges.size(), isChange ? 1 : 0);
    QCOMPARE(countChanges.size(), 0);
    COMPARE_EXACT(transform.decibel(), isChange ? second : first);
    COMPARE_EXACT(seenInside, isChange ? second : NaN);
}

void tst_CurveTransforms::pointCount_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("isChange");
    QTest::newRow("more") << 101 << true;
    QTest::newRow("fewer") << 3 << true;
    QTest::newRow("fewest") << 2 << true;
    QTest::newRow("most") << std::numeric_limits<int>::max() << true;
    QTest::newRow("the same") << 100 << false;
    QTest::newRow("a single one") << 1 << false;
    QTest::newRow("none") << 0 << false;
    QTest::newRow("negative") << -5 << false;
    QTest::newRow("lowest") << std::numeric_limits<int>::min() << false;
}

void tst_CurveTransforms::pointCount()
{
    QFETCH(int, count);
    QFETCH(bool, isChange);

    LogarithmicCurveTransform transform;
    QSignalSpy decibelChanges(&transform, &LogarithmicCurveTransform::decibelChanged);
    QSignalSpy countChanges(&transform, &LogarithmicCurveTransform::pointCountChanged);
    int seenInside = 0;
    connect(&transform, &LogarithmicCurveTransform::pointCountChanged, this,
            [&] { seenInside = transform.pointCount(); });
    for (int i = 0; i < 2; ++i) {
        transform.setPointCount(count);
        QCOMPARE(transform.pointCount(), isChange ? count : 100);
        QCOMPARE(countChanges.size(), isChange ? 1 : 0);
        QCOMPARE(seenInside, isChange ? count : 0);
    }
    QCOMPARE(decibelChanges.size(), 0);
}

void tst_CurveTransforms::fromQml()
{
    QVERIFY(qobject_cast<LinearCurveTransform *>(createInQml("LinearCurveTransform {}").get()));

    const auto object = createInQml(R"(
LogarithmicCurveTransform {
    property string initial
    property string log
    property string text: decibel + " " + pointCount
    onDecibelChanged: log += "decibel " + decibel + ";"
    onPointCountChanged: log += "pointCount " + pointCount + ";"
    function change() {
        initial = text;
        decibel = -0.25;
        decibel = -0.25;
        decibel = NaN;
        pointCount = 7;
        pointCount = 7;
        pointCount = 1;
        pointCount = 0;
        pointCount = -5;
    }
})");
    const auto *transform = qobject_cast<LogarithmicCurveTransform *>(object.get());
    QVERIFY(transform);
    QVERIFY(QMetaObject::invokeMethod(object.get(), "change"));
    QCOMPARE(object->property("initial"), QVariant(u"0 100"_s));
    QCOMPARE(object->property("text"), QVariant(u"-0.25 7"_s));
    QCOMPARE(object->property("log"), QVariant(u"decibel -0.25;pointCount 7;"_s));
    QVERIFY(isSame(transform->decibel(), -0.25));
    QCOMPARE(transform->pointCount(), 7);

    const auto set = createInQml("LogarithmicCurveTransform { decibel: 0.5; pointCount: 1 }");
    QVERIFY(set);
    QCOMPARE(set->property("decibel"), QVariant(0.5));
    QCOMPARE(set->property("pointCount"), QVariant(100));
}

// Known, as the type of a property, but only its heirs can be made.
void tst_CurveTransforms::baseInQml()
{
    const auto holder = createInQml(R"(
QtObject {
    property AbstractCurveTransform shape: LinearCurveTransform {}
    property bool isBase: shape instanceof AbstractCurveTransform
})");
    QVERIFY(holder);
    QCOMPARE(holder->property("isBase"), QVariant(true));

    QQmlEngine engine;
    engine.addImportPath(u":/qt/qml"_s);
    QQmlComponent component(&engine);
    component.setData("import zel.charts 1.0\nAbstractCurveTransform {}", QUrl());
    QVERIFY(component.isError());
    QCOMPARE(component.errors().size(), 1);
    QCOMPARE(component.errors().first().line(), 2);
}

void tst_CurveTransforms::straight_data()
{
    QTest::addColumn<QPointF>("p1");
    QTest::addColumn<QPointF>("p2");
    QTest::newRow("falling") << QPointF(0.0, 0.0) << QPointF(100.0, 50.0);
    QTest::newRow("to the left") << QPointF(10.1, -5.3) << QPointF(-3.3, 8.7);
    QTest::newRow("one point") << QPointF(1.0, 2.0) << QPointF(1.0, 2.0);
    QTest::newRow("huge") << QPointF(-largest, largest) << QPointF(smallest, -0.0);
    QTest::newRow("not finite") << QPointF(NaN, inf) << QPointF(-inf, NaN);
}

void tst_CurveTransforms::straight()
{
    QFETCH(QPointF, p1);
    QFETCH(QPointF, p2);
    LinearCurveTransform transform;
    const QList<QPointF> points = static_cast<AbstractCurveTransform &>(transform).points(p1, p2);
    QCOMPARE(points.size(), 2);
    COMPARE_EXACT(points.first().x(), p1.x());
    COMPARE_EXACT(points.first().y(), p1.y());
    COMPARE_EXACT(points.last().x(), p2.x());
    COMPARE_EXACT(points.last().y(), p2.y());
}

QTEST_MAIN(tst_CurveTransforms)

#include "tst_curvetransforms.moc"
