// SPDX-License-Identifier: MIT
#include "CreateInQml.h"
#include "ExactCompare.h"
#include "MetaObjectText.h"
#include "RelativeChanges.h"

#include <ChartsLibrary/Curve.h>
#include <ChartsLibrary/LinearCurveTransform.h>
#include <ChartsLibrary/LogarithmicCurveTransform.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <array>
#include <type_traits>
#include <utility>

using namespace Charts;
using namespace Qt::StringLiterals;

static_assert(std::is_base_of_v<ChartItem, Curve>);

namespace {

/*! The signals of a curve, in the order in which they come. */
class CurveSignals : public QObject
{
public:
    explicit CurveSignals(Curve &curve)
    {
        const auto log = [&](auto signal, const QString &name) {
            connect(&curve, signal, this, [this, name] { m_names.append(name); });
        };
        log(&Curve::p1Changed, u"p1"_s);
        log(&Curve::p2Changed, u"p2"_s);
        log(&Curve::lineWidthChanged, u"lineWidth"_s);
        log(&Curve::colorChanged, u"color"_s);
        log(&Curve::geometryTransformChanged, u"geometryTransform"_s);
    }

    /*! Since the last call. */
    [[nodiscard]] QStringList take() { return std::exchange(m_names, {}); }

private:
    QStringList m_names;
};

/*! One of the two ends, which behave alike. */
struct End
{
    QPointF (Curve::*read)() const;
    void (Curve::*write)(QPointF);
    void (Curve::*changed)();
    QString name;
};

const std::array<End, 2> ends = {{
        {&Curve::p1, &Curve::setP1, &Curve::p1Changed, u"p1"_s},
        {&Curve::p2, &Curve::setP2, &Curve::p2Changed, u"p2"_s},
}};

bool isSame(const QPointF &a, const QPointF &b)
{
    return ::isSame(a.x(), b.x()) && ::isSame(a.y(), b.y());
}

} // namespace

class tst_Curve : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void metaObject();
    void initialValues();
    void ends_data();
    void ends();
    void lineWidth_data() { addRelativeChanges(); }
    void lineWidth();
    void color_data();
    void color();
    void geometryTransform();
    void destroyedTransform();

    void initialValuesInQml();
    void assignmentsInQml();
    void changesInQml_data();
    void changesInQml();
};

void tst_Curve::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_Curve::metaObject()
{
    const QMetaObject &meta = Curve::staticMetaObject;
    QCOMPARE(meta.className(), "Charts::Curve");
    QCOMPARE(meta.superClass(), &ChartItem::staticMetaObject);
    QCOMPARE(propertyTexts(meta),
            QStringList({
                    u"Charts::AbstractCurveTransform* geometryTransform read write "
                    "geometryTransformChanged"_s,
                    u"QPointF p1 read write p1Changed"_s,
                    u"QPointF p2 read write p2Changed"_s,
                    u"double lineWidth read write lineWidthChanged"_s,
                    u"QColor color read write colorChanged"_s,
            }));
    QCOMPARE(methodTexts(meta, true), QStringList({
                                              u"void p1Changed()"_s,
                                              u"void p2Changed()"_s,
                                              u"void lineWidthChanged()"_s,
                                              u"void colorChanged()"_s,
                                              u"void geometryTransformChanged()"_s,
                                      }));
    QVERIFY(methodTexts(meta, false).isEmpty());
}

void tst_Curve::initialValues()
{
    QQuickItem parent;
    const Curve curve(&parent);
    QCOMPARE(curve.parentItem(), &parent);
    QVERIFY(!curve.geometryTransform());
    QVERIFY(isSame(curve.p1(), {0.0, 0.0}));
    QVERIFY(isSame(curve.p2(), {0.0, 0.0}));
    COMPARE_EXACT(curve.lineWidth(), 1.0);
    QCOMPARE(curve.color(), QColor(Qt::gray));
    QVERIFY(curve.flags() & QQuickItem::ItemHasContents);
    QVERIFY(curve.antialiasing());
    QVERIFY(!Curve().parentItem());
}

void tst_Curve::ends_data()
{
    QTest::addColumn<QPointF>("first");
    QTest::addColumn<QPointF>("second");
    QTest::addColumn<bool>("isChange");
    // Each for x, beside a y that stays, and the other way round.
    const auto row = [](const char *name, double first, double second, bool isChange) {
        QTest::addRow("x, %s", name) << QPointF(first, 5.0) << QPointF(second, 5.0) << isChange;
        QTest::addRow("y, %s", name) << QPointF(5.0, first) << QPointF(5.0, second) << isChange;
    };
    row("another value", 2.0, 3.0, true);
    row("the same value", 2.0, 2.0, false);
    row("other sign", 2.0, -2.0, true);
    row("a 10^-13th more", 2.0, 2.0000000000002, false);
    row("a 10^-13th less", 2.0, 1.9999999999998, false);
    row("three 10^-12ths more", 2.0, 2.000000000006, true);
    row("three 10^-12ths less", 2.0, 1.999999999994, true);
    row("exactly at the tolerance", 1e12, 1000000000001.0, false);
    row("the next double", 1e12, 1000000000001.0001220703125, true);
    row("small", 1e-20, 1.1e-20, true);
    row("small, other sign", 1e-20, -1e-20, true);
    row("large and close", 1e300, 1.0000000000001e300, false);
    // Zero has a tolerance of its own.
    row("zero to zero", 0.0, 0.0, false);
    row("zero to minus zero", 0.0, -0.0, false);
    row("zero to the tolerance", 0.0, 1e-12, false);
    row("zero to minus the tolerance", 0.0, -1e-12, false);
    row("zero to more", 0.0, std::nextafter(1e-12, 1.0), true);
    row("the tolerance to zero", 1e-12, 0.0, false);
    row("more to zero", std::nextafter(1e-12, 1.0), 0.0, true);
    // As the arithmetic has it.
    row("to infinity", 2.0, inf, true);
    row("from infinity", inf, 2.0, true);
    row("infinity to infinity", inf, inf, true);
    row("infinity to minus infinity", inf, -inf, false);
    row("to not a number", 2.0, NaN, true);
    row("from not a number", NaN, 2.0, true);
    row("still not a number", NaN, NaN, true);
    QTest::newRow("both") << QPointF(2.0, 3.0) << QPointF(3.0, 2.0) << true;
    QTest::newRow("both by a 10^-13th")
            << QPointF(2.0, 3.0) << QPointF(2.0000000000002, 3.0000000000003) << false;
}

void tst_Curve::ends()
{
    QFETCH(QPointF, first);
    QFETCH(QPointF, second);
    QFETCH(bool, isChange);

    for (const End &end : ::ends) {
        Curve curve;
        (curve.*end.write)(first);
        QVERIFY(isSame((curve.*end.read)(), first));
        CurveSignals log(curve);
        QPointF seenInside;
        connect(&curve, end.changed, this, [&] { seenInside = (curve.*end.read)(); });
        (curve.*end.write)(second);
        QCOMPARE(log.take(), isChange ? QStringList{end.name} : QStringList());
        QVERIFY(isSame((curve.*end.read)(), isChange ? second : first));
        QVERIFY(isSame(seenInside, isChange ? second : QPointF()));
    }
}

void tst_Curve::lineWidth()
{
    QFETCH(double, first);
    QFETCH(double, second);
    QFETCH(bool, isChange);

    Curve curve;
    curve.setLineWidth(first);
    COMPARE_EXACT(curve.lineWidth(), first);
    CurveSignals log(curve);
    double seenInside = NaN;
    connect(&curve, &Curve::lineWidthChanged, this, [&] { seenInside = curve.lineWidth(); });
    curve.setLineWidth(second);
    QCOMPARE(log.take(), isChange ? QStringList{u"lineWidth"_s} : QStringList());
    COMPARE_EXACT(curve.lineWidth(), isChange ? second : first);
    COMPARE_EXACT(seenInside, isChange ? second : NaN);
}

void tst_Curve::color_data()
{
    QTest::addColumn<QColor>("color");
    QTest::addColumn<bool>("isChange");
    QTest::newRow("another") << QColor(Qt::red) << true;
    QTest::newRow("the same") << QColor(Qt::gray) << false;
    QTest::newRow("the same in numbers") << QColor(160, 160, 164) << false;
    QTest::newRow("hardly another") << QColor(160, 160, 163) << true;
    QTest::newRow("translucent") << QColor(160, 160, 164, 254) << true;
    QTest::newRow("the same in another model") << QColor(Qt::gray).toHsv() << true;
    QTest::newRow("none") << QColor() << true;
}

void tst_Curve::color()
{
    QFETCH(QColor, color);
    QFETCH(bool, isChange);

    Curve curve;
    CurveSignals log(curve);
    QColor seenInside;
    connect(&curve, &Curve::colorChanged, this, [&] { seenInside = curve.color(); });
    curve.setColor(color);
    QCOMPARE(log.take(), isChange ? QStringList{u"color"_s} : QStringList());
    QCOMPARE(curve.color(), isChange ? color : QColor(Qt::gray));
    QCOMPARE(seenInside, isChange ? color : QColor());
    curve.setColor(color);
    QVERIFY(log.take().isEmpty());
}

void tst_Curve::geometryTransform()
{
    const QStringList once = {u"geometryTransform"_s};
    LinearCurveTransform first;
    LinearCurveTransform second;
    Curve curve;
    CurveSignals log(curve);
    const AbstractCurveTransform *seenInside = nullptr;
    connect(&curve, &Curve::geometryTransformChanged, this,
            [&] { seenInside = curve.geometryTransform(); });

    curve.setGeometryTransform(nullptr);
    QVERIFY(log.take().isEmpty());
    // As good as the first one, but not the same.
    for (AbstractCurveTransform *transform :
            std::initializer_list<AbstractCurveTransform *>{&first, &second, nullptr, &second}) {
        curve.setGeometryTransform(transform);
        QCOMPARE(curve.geometryTransform(), transform);
        QCOMPARE(seenInside, transform);
        QCOMPARE(log.take(), once);
        curve.setGeometryTransform(transform);
        QVERIFY(log.take().isEmpty());
    }
    QVERIFY(!second.parent());
}

void tst_Curve::destroyedTransform()
{
    Curve curve;
    CurveSignals log(curve);
    {
        LinearCurveTransform shortLived;
        curve.setGeometryTransform(&shortLived);
    }
    QVERIFY(!curve.geometryTransform());
    QCOMPARE(log.take(), QStringList{u"geometryTransform"_s});
    LinearCurveTransform next;
    curve.setGeometryTransform(&next);
    QCOMPARE(curve.geometryTransform(), &next);
    QCOMPARE(log.take(), QStringList{u"geometryTransform"_s});

    // The other way round nothing happens to the transform.
    {
        Curve shortLived;
        shortLived.setGeometryTransform(&next);
    }
    QCOMPARE(next.points({1.0, 2.0}, {3.0, 4.0}).size(), 2);
}

void tst_Curve::initialValuesInQml()
{
    const auto curve = createInQml(R"(
Curve {
    property string text: [geometryTransform === null, p1.x, p1.y, p2.x, p2.y, lineWidth, color,
        antialiasing].join(" ")
})");
    QVERIFY(qobject_cast<Curve *>(curve.get()));
    QCOMPARE(curve->property("text"), QVariant(u"true 0 0 0 0 1 #a0a0a4 true"_s));
}

void tst_Curve::assignmentsInQml()
{
    const auto object = createInQml(R"(
Curve {
    width: 200; height: 100
    geometryTransform: LogarithmicCurveTransform { decibel: 0.02; pointCount: 3 }
    p1: Qt.point(1, 2); p2: Qt.point(30.5, -4.25)
    lineWidth: 2.5; color: "#80ff0000"
})");
    const auto *curve = qobject_cast<Curve *>(object.get());
    QVERIFY(curve);
    QVERIFY(qobject_cast<LogarithmicCurveTransform *>(curve->geometryTransform()));
    QCOMPARE(curve->geometryTransform()->points(curve->p1(), curve->p2()).size(), 3);
    QVERIFY(isSame(curve->p1(), {1.0, 2.0}));
    QVERIFY(isSame(curve->p2(), {30.5, -4.25}));
    COMPARE_EXACT(curve->lineWidth(), 2.5);
    QCOMPARE(curve->color(), QColor(255, 0, 0, 128));
}

void tst_Curve::changesInQml_data()
{
    QTest::addColumn<QString>("statement");
    QTest::addColumn<QString>("log");
    const auto row = [](const char *name, const char *statement, const char *log) {
        QTest::newRow(name) << QString::fromLatin1(statement) << QString::fromLatin1(log);
    };
    row("transform", "geometryTransform = second", "transform second;");
    row("same transform", "geometryTransform = first", "");
    row("no transform", "geometryTransform = null", "transform none;");
    row("first end", "p1 = Qt.point(1, 2)", "p1 1 2;");
    row("same first end", "p1 = Qt.point(0, 1e-13)", "");
    row("x of the first end", "p1.x = 3", "p1 3 0;");
    row("second end", "p2 = Qt.point(1, 2)", "p2 1 2;");
    row("same second end", "p2 = Qt.point(1e-13, 0)", "");
    row("y of the second end", "p2.y = 3", "p2 0 3;");
    row("line width", "lineWidth = 2", "lineWidth 2;");
    row("same line width", "lineWidth = 1.0000000000001", "");
    row("line width not a number", "lineWidth = NaN", "");
    row("no line width", "lineWidth = 0", "lineWidth 0;");
    row("colour", "color = 'blue'", "color #0000ff;");
    row("same colour", "color = '#a0a0a4'", "");
}

// Handlers see the new value, once.
void tst_Curve::changesInQml()
{
    QFETCH(QString, statement);

    const auto curve = createInQml(R"(
Curve {
    property LinearCurveTransform first: LinearCurveTransform { objectName: "first" }
    property LinearCurveTransform second: LinearCurveTransform { objectName: "second" }
    property string log
    onGeometryTransformChanged:
        log += "transform " + (geometryTransform ? geometryTransform.objectName : "none") + ";"
    onP1Changed: log += "p1 " + p1.x + " " + p1.y + ";"
    onP2Changed: log += "p2 " + p2.x + " " + p2.y + ";"
    onLineWidthChanged: log += "lineWidth " + lineWidth + ";"
    onColorChanged: log += "color " + color + ";"
    function start() { geometryTransform = first; log = "" }
    function change() { )" + statement.toLatin1()
                                   + R"( }
})");
    QVERIFY(curve);
    QVERIFY(QMetaObject::invokeMethod(curve.get(), "start"));
    for (int i = 0; i < 2; ++i) {
        QVERIFY(QMetaObject::invokeMethod(curve.get(), "change"));
        QTEST(curve->property("log").toString(), "log");
    }
}

QTEST_MAIN(tst_Curve)

#include "tst_curve.moc"
