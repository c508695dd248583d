// SPDX-License-Identifier: MIT
#include "CountedItem.h"
#include "CreateInQml.h"

#include <ChartsLibrary/FillRectProvider.h>
#include <ChartsLibrary/GradientCurve.h>
#include <ChartsLibrary/LinearCurveTransform.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <memory>

using namespace Charts;
using namespace Qt::StringLiterals;

namespace {

/*! A window with a curve from its upper left to its lower right corner, and \a handler in it. */
class HandlerWindow : public FrameWindow
{
public:
    explicit HandlerWindow(const QByteArray &handler)
        : m_curve(createInQml(R"(GradientCurve {
            property int count: 0
            width: 200; height: 100
            p2: Qt.point(200, 100)
            geometryTransform: LinearCurveTransform {}
            )" + handler + '}'))
    {
        if (auto *item = qobject_cast<QQuickItem *>(m_curve.get()))
            item->setParentItem(contentItem());
    }

    [[nodiscard]] bool start() { return m_curve && FrameWindow::start(); }
    [[nodiscard]] QVariant property(const char *name) const { return m_curve->property(name); }
    [[nodiscard]] int takeCount()
    {
        const int count = property("count").toInt();
        m_curve->setProperty("count", 0);
        return count;
    }
    void set(const char *name, const QVariant &value) { m_curve->setProperty(name, value); }

    void hover(int x, int y)
    {
        QTest::mouseMove(this, {x, y});
        QCoreApplication::processEvents();
    }
    void click(int x, int y) { QTest::mouseClick(this, Qt::LeftButton, {}, {x, y}); }

private:
    std::unique_ptr<QObject> m_curve;
};

} // namespace

/*! A gradient curve as a document declares it, and pointer handlers in it. */
class tst_GradientCurveQml : public QObject
{
    Q_OBJECT

public:
    static void initMain() { FrameWindow::setUp(); }

private Q_SLOTS:
    void init();

    void defaults();
    void assignments();
    void changes_data();
    void changes();
    void bindings();
    void errors_data();
    void errors();
    void contains();
    void hoverHandler();
    void tapHandler();
    void mouseArea();
    void marginOfHandlers();
};

void tst_GradientCurveQml::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_GradientCurveQml::defaults()
{
    const auto curve = createInQml(R"(GradientCurve {
        property string text: [upDirection, shape, containsMouseMargin, geometryTransform, p1.x,
            p2.y, lineWidth, color].join(" ")
    })");
    QVERIFY(qobject_cast<GradientCurve *>(curve.get()));
    QCOMPARE(curve->property("text"), QVariant(u"false  10  0 0 1 #a0a0a4"_s));
}

void tst_GradientCurveQml::assignments()
{
    const auto object = createInQml(R"(GradientCurve {
        property GradientProvider provider: FillRectProvider {}
        property AbstractCurveTransform transform1: LinearCurveTransform {}
        width: 101; height: 51
        upDirection: true; shape: provider; containsMouseMargin: -2
        geometryTransform: transform1; p1: Qt.point(1, 2); p2: "3,4"
        lineWidth: 2.5; color: "red"
    })");
    const auto *curve = qobject_cast<GradientCurve *>(object.get());
    QVERIFY(curve);
    QVERIFY(curve->upDirection());
    QVERIFY(qobject_cast<FillRectProvider *>(curve->shape()));
    QCOMPARE(curve->property("provider").value<GradientProvider *>(), curve->shape());
    QCOMPARE(curve->containsMouseMargin(), -2);
    QVERIFY(qobject_cast<LinearCurveTransform *>(curve->geometryTransform()));
    QCOMPARE(curve->p1(), QPointF(1.0, 2.0));
    QCOMPARE(curve->p2(), QPointF(3.0, 4.0));
    QCOMPARE(curve->lineWidth(), 2.5);
    QCOMPARE(curve->color(), QColor(Qt::red));
}

void tst_GradientCurveQml::changes_data()
{
    QTest::addColumn<QString>("statement");
    QTest::addColumn<QString>("log");

    QTest::newRow("direction") << u"upDirection = true"_s << u"up true;"_s;
    QTest::newRow("same direction") << u"upDirection = false"_s << QString();
    QTest::newRow("shape") << u"shape = other"_s << u"shape true;"_s;
    QTest::newRow("no shape") << u"shape = null"_s << u"shape false;"_s;
    QTest::newRow("same shape") << u"shape = first"_s << u""_s;
    QTest::newRow("margin") << u"containsMouseMargin = 0"_s << u"margin 0;"_s;
    QTest::newRow("same margin") << u"containsMouseMargin = 10"_s << u""_s;
}

// The handler of the direction has the signal's name, not the property's.
void tst_GradientCurveQml::changes()
{
    QFETCH(QString, statement);

    const auto curve = createInQml(R"(GradientCurve {
        property string log
        property GradientProvider first: FillRectProvider {}
        property GradientProvider other: FillRectProvider {}
        onUpGradientChanged: log += "up " + upDirection + ";"
        onShapeChanged: log += "shape " + (shape === other) + ";"
        onContainsMouseMarginChanged: log += "margin " + containsMouseMargin + ";"
        Component.onCompleted: { shape = first; log = "" }
        function change() { )" + statement.toLatin1()
                                   + R"( }
    })");
    QVERIFY(curve);
    for (int i = 0; i < 2; ++i) {
        QVERIFY(QMetaObject::invokeMethod(curve.get(), "change"));
        QTEST(curve->property("log").toString(), "log");
    }
}

void tst_GradientCurveQml::bindings()
{
    const auto object = createInQml(R"(GradientCurve {
        property string text: [upDirection, shape !== null, containsMouseMargin].join(" ")
    })");
    auto *curve = qobject_cast<GradientCurve *>(object.get());
    QVERIFY(curve);
    QCOMPARE(curve->property("text"), QVariant(u"false false 10"_s));
    curve->setUpDirection(true);
    QCOMPARE(curve->property("text"), QVariant(u"true false 10"_s));
    FillRectProvider provider;
    curve->setShape(&provider);
    QCOMPARE(curve->property("text"), QVariant(u"true true 10"_s));
    curve->setContainsMouseMargin(7);
    QCOMPARE(curve->property("text"), QVariant(u"true true 7"_s));
}

void tst_GradientCurveQml::errors_data()
{
    QTest::addColumn<QString>("document");
    QTest::newRow("abstract provider") << u"GradientProvider {}"_s;
    QTest::newRow("not a provider") << u"GradientCurve { shape: LinearCurveTransform {} }"_s;
    QTest::newRow("not a transform")
            << u"GradientCurve { geometryTransform: FillRectProvider {} }"_s;
    QTest::newRow("not a margin") << u"GradientCurve { containsMouseMargin: 'wide' }"_s;
}

void tst_GradientCurveQml::errors()
{
    QFETCH(QString, document);

    QQmlEngine engine;
    engine.addImportPath(u":/qt/qml"_s);
    QQmlComponent component(&engine);
    component.setData("import QtQuick\nimport zel.charts 1.0\n" + document.toLatin1(), QUrl());
    QVERIFY(component.isError());
    QCOMPARE(component.errors().size(), 1);
}

void tst_GradientCurveQml::contains()
{
    const auto curve = createInQml(R"(GradientCurve {
        property bool isHit: contains(Qt.point(50, 10))
        property bool isMissed: !contains(Qt.point(50, 11))
        p2: Qt.point(100, 0)
        geometryTransform: transform
        LinearCurveTransform { id: transform }
    })");
    QVERIFY(curve);
    bool isHit = false;
    QVERIFY(QMetaObject::invokeMethod(curve.get(), "contains", Q_RETURN_ARG(bool, isHit),
            Q_ARG(QPointF, QPointF(50.0, 10.0))));
    QVERIFY(isHit);
    QVERIFY(QMetaObject::invokeMethod(curve.get(), "contains", Q_RETURN_ARG(bool, isHit),
            Q_ARG(QPointF, QPointF(50.0, 11.0))));
    QVERIFY(!isHit);
}

void tst_GradientCurveQml::hoverHandler()
{
    HandlerWindow window(R"(
        property alias isHovered: handler.hovered
        HoverHandler { id: handler }
    )");
    QVERIFY(window.start());
    window.hover(150, 25);
    QCOMPARE(window.property("isHovered"), QVariant(false));
    window.hover(100, 50);
    QCOMPARE(window.property("isHovered"), QVariant(true));
    window.hover(160, 85);
    QCOMPARE(window.property("isHovered"), QVariant(true));
    window.hover(50, 75);
    QCOMPARE(window.property("isHovered"), QVariant(false));
}

void tst_GradientCurveQml::tapHandler()
{
    HandlerWindow window("TapHandler { onTapped: ++count }");
    QVERIFY(window.start());
    window.click(150, 25);
    window.click(50, 75);
    QCOMPARE(window.takeCount(), 0);
    window.click(100, 50);
    window.click(40, 25);
    QCOMPARE(window.takeCount(), 2);
}

void tst_GradientCurveQml::mouseArea()
{
    HandlerWindow window(R"(
        property alias isHovered: area.containsMouse
        MouseArea {
            id: area
            anchors.fill: parent
            containmentMask: parent
            hoverEnabled: true
            onClicked: ++count
        }
    )");
    QVERIFY(window.start());
    window.hover(150, 25);
    QCOMPARE(window.property("isHovered"), QVariant(false));
    window.hover(100, 50);
    QCOMPARE(window.property("isHovered"), QVariant(true));
    window.hover(50, 75);
    QCOMPARE(window.property("isHovered"), QVariant(false));
    window.click(150, 25);
    window.click(50, 75);
    QCOMPARE(window.takeCount(), 0);
    window.click(100, 50);
    QCOMPARE(window.takeCount(), 1);
}

// At (120, 50) the line is 20 / sqrt(5) = 8.9 pixels away.
void tst_GradientCurveQml::marginOfHandlers()
{
    HandlerWindow window("TapHandler { onTapped: ++count }");
    QVERIFY(window.start());
    window.click(120, 50);
    QCOMPARE(window.takeCount(), 1);
    window.set("containsMouseMargin", 8);
    window.click(120, 50);
    QCOMPARE(window.takeCount(), 0);
    window.set("lineWidth", 2.0);
    window.click(120, 50);
    QCOMPARE(window.takeCount(), 1);
    window.set("containsMouseMargin", -1);
    window.click(100, 50);
    QCOMPARE(window.takeCount(), 0);
}

QTEST_MAIN(tst_GradientCurveQml)

#include "tst_gradientcurve_qml.moc"
