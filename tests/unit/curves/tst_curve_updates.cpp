// SPDX-License-Identifier: MIT
#include "CountedItem.h"
#include "DirtyMarks.h"
#include "PaintedCurve.h"

#include <ChartsLibrary/Curve.h>
#include <ChartsLibrary/LogarithmicCurveTransform.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <functional>
#include <memory>

using namespace Charts;
using namespace Qt::StringLiterals;

namespace {

constexpr ColorBytes gray = {160, 160, 164, 255};
constexpr ColorBytes red = {255, 0, 0, 255};

using Painted = PaintedCurve<Curve>;
using Change = std::function<void(Curve &)>;

} // namespace

// When a curve asks for its points and writes its line anew.
class tst_CurveUpdates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void drawsAnewBeforeItTells();
    void rebuilds_data();
    void rebuilds();
    void unchangedWritesNothing();
    void withoutTransform();
    void transformTakenAway();
    void transformReplaced();
    void transformDestroyed();
    void changedTransformWaits();
    void newNode();
    void changesWhileEmpty();
    void repaints();
};

void tst_CurveUpdates::initTestCase()
{
    FrameWindow::setUp();
}

void tst_CurveUpdates::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

// Whoever hears of a change may ask for the line at once.
void tst_CurveUpdates::drawsAnewBeforeItTells()
{
    RecordingTransform first;
    RecordingTransform second;
    const auto check = [&](auto changed, const Change &change) {
        PaintedCurve<Curve> curve;
        curve.setGeometryTransform(&first);
        curve.paint();
        QCOMPARE(first.takeQuestions().size(), 1);
        qsizetype asked = -1;
        connect(&curve, changed, this, [&] {
            curve.paint();
            asked = first.takeQuestions().size() + second.takeQuestions().size();
        });
        change(curve);
        QCOMPARE(asked, 1);
    };
    check(&Curve::p1Changed, [](Curve &curve) { curve.setP1({1.0, 0.0}); });
    check(&Curve::p2Changed, [](Curve &curve) { curve.setP2({1.0, 0.0}); });
    check(&Curve::lineWidthChanged, [](Curve &curve) { curve.setLineWidth(2.0); });
    check(&Curve::colorChanged, [](Curve &curve) { curve.setColor(Qt::red); });
    check(&Curve::geometryTransformChanged,
            [&](Curve &curve) { curve.setGeometryTransform(&second); });
}

void tst_CurveUpdates::rebuilds_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<bool>("isRebuild");
    const auto row = [](const char *name, const Change &change, bool isRebuild) {
        QTest::newRow(name) << change << isRebuild;
    };
    row(
            "first end",
            [](Curve &curve) {
                curve.setP1({1.0, 1.0});
            },
            true);
    row(
            "second end",
            [](Curve &curve) {
                curve.setP2({1.0, 1.0});
            },
            true);
    row(
            "line width", [](Curve &curve) { curve.setLineWidth(2.0); }, true);
    row(
            "colour", [](Curve &curve) { curve.setColor(Qt::red); }, true);
    row(
            "size",
            [](Curve &curve) {
                curve.setSize({10.0, 10.0});
            },
            true);
    row(
            "width", [](Curve &curve) { curve.setWidth(10.0); }, true);
    row(
            "place", [](Curve &curve) { curve.setY(10.0); }, true);
    row(
            "nothing", [](Curve &) {}, false);
    row(
            "same first end",
            [](Curve &curve) {
                curve.setP1({1e-13, 0.0});
            },
            false);
    row(
            "same second end",
            [](Curve &curve) {
                curve.setP2({0.0, -1e-13});
            },
            false);
    row(
            "same line width", [](Curve &curve) { curve.setLineWidth(1.0000000000001); }, false);
    row(
            "same colour", [](Curve &curve) { curve.setColor(Qt::gray); }, false);
    row(
            "same transform",
            [](Curve &curve) { curve.setGeometryTransform(curve.geometryTransform()); }, false);
    row(
            "same size",
            [](Curve &curve) {
                curve.setSize({200.0, 100.0});
            },
            false);
    row(
            "antialiasing", [](Curve &curve) { curve.setAntialiasing(false); }, false);
    row(
            "a repaint", [](Curve &curve) { curve.update(); }, false);
}

// Even where the transform gives the same points: that is not asked.
void tst_CurveUpdates::rebuilds()
{
    QFETCH(Change, change);
    QFETCH(bool, isRebuild);

    RecordingTransform transform;
    Painted curve;
    curve.setGeometryTransform(&transform);
    QSGNode *node = curve.paint();
    QCOMPARE(transform.takeQuestions().size(), 1);
    const QSGGeometryNode *line = curve.lineNode();

    DirtyMarks marks;
    change(curve);
    QVERIFY(transform.takeQuestions().isEmpty());
    for (const bool isExpected : {isRebuild, false}) { // once
        QCOMPARE(curve.paint(), node);
        QCOMPARE(curve.lineNode(), line);
        QCOMPARE(transform.takeQuestions().size(), isExpected ? 1 : 0);
        QCOMPARE(marks.take(), isExpected
                                       ? QList<DirtyMarks::Mark>({{line, QSGNode::DirtyGeometry}})
                                       : QList<DirtyMarks::Mark>());
    }
}

void tst_CurveUpdates::unchangedWritesNothing()
{
    RecordingTransform transform;
    Painted curve;
    curve.setGeometryTransform(&transform);
    curve.paint();
    const void *memory = curve.lineNode()->geometry()->vertexData();
    // A mark of the test's own, which writing would overwrite.
    static_cast<float *>(curve.lineNode()->geometry()->vertexData())[0] = 12345.0F;
    curve.paint();
    QCOMPARE(curve.lineNode()->geometry()->vertexData(), memory);
    QCOMPARE(curve.lineVertices().at(0).x, 12345.0F);
    curve.setColor(Qt::red);
    curve.paint();
    QVERIFY(curve.lineVertices().at(0).x != 12345.0F);
}

void tst_CurveUpdates::withoutTransform()
{
    Painted curve;
    curve.paint();
    DirtyMarks marks;
    curve.setP1({1.0, 1.0});
    QVERIFY(curve.paint());
    QCOMPARE(curve.lineVertices().size(), 0);
    QVERIFY(marks.take().isEmpty());
}

void tst_CurveUpdates::transformTakenAway()
{
    RecordingTransform transform;
    Painted curve;
    curve.setGeometryTransform(&transform);
    const QSGNode *node = curve.paint();
    const QList<Vertex> before = curve.lineVertices();
    QCOMPARE(before.size(), 8);
    QCOMPARE(transform.takeQuestions().size(), 1);

    DirtyMarks marks;
    curve.setGeometryTransform(nullptr);
    curve.setColor(Qt::red);
    QCOMPARE(curve.paint(), node);
    QCOMPARE(curve.lineVertices(), before);
    QVERIFY(marks.take().isEmpty());
    QVERIFY(transform.takeQuestions().isEmpty());

    curve.setGeometryTransform(&transform);
    curve.paint();
    QCOMPARE(curve.lineVertices(), smoothPolyline({{0, 0}, {30, 40}}, 1.0F, red));
}

void tst_CurveUpdates::transformReplaced()
{
    RecordingTransform first;
    RecordingTransform second({{1.0, 1.0}, {2.0, 2.0}, {3.0, 4.0}});
    Painted curve;
    curve.setGeometryTransform(&first);
    const QSGNode *node = curve.paint();
    QCOMPARE(first.takeQuestions().size(), 1);
    curve.setGeometryTransform(&second);
    QCOMPARE(curve.paint(), node);
    QVERIFY(first.takeQuestions().isEmpty());
    QCOMPARE(second.takeQuestions().size(), 1);
    QCOMPARE(curve.lineVertices(), smoothPolyline({{1, 1}, {2, 2}, {3, 4}}, 1.0F, gray));
}

void tst_CurveUpdates::transformDestroyed()
{
    auto transform = std::make_unique<RecordingTransform>();
    Painted curve;
    curve.setGeometryTransform(transform.get());
    QSGNode *node = curve.paint();
    const QList<Vertex> before = curve.lineVertices();
    QCOMPARE(before.size(), 8);
    transform.reset();
    QVERIFY(!curve.geometryTransform());
    for (const double width : {10.0, 20.0}) {
        curve.setLineWidth(width);
        QCOMPARE(curve.paint(), node);
        QCOMPARE(curve.lineVertices(), before);
    }
    // Destroyed before it was ever drawn.
    Painted late;
    transform = std::make_unique<RecordingTransform>();
    late.setGeometryTransform(transform.get());
    transform.reset();
    QVERIFY(late.paint());
    QCOMPARE(late.lineVertices().size(), 0);
}

// The curve does not listen to it.
void tst_CurveUpdates::changedTransformWaits()
{
    LogarithmicCurveTransform transform;
    transform.setDecibel(1.0);
    transform.setPointCount(4);
    Painted curve;
    curve.setGeometryTransform(&transform);
    curve.setP1({0.0, 20.0});
    curve.setP2({3.0, 1019.0});
    curve.paint();
    const QList<Vertex> before = curve.lineVertices();
    QCOMPARE(before.size(), 3 * 8);
    transform.setPointCount(2);
    transform.setDecibel(0.5);
    curve.paint();
    QCOMPARE(curve.lineVertices(), before);
    curve.setX(1.0);
    curve.paint();
    QCOMPARE(curve.lineVertices(), smoothPolyline({{0, 20}, {3, 1019}}, 1.0F, gray));
}

// The scene graph may have thrown the nodes away, with the window that they were in.
void tst_CurveUpdates::newNode()
{
    RecordingTransform transform;
    Painted curve;
    curve.setGeometryTransform(&transform);
    curve.paint();
    const QList<Vertex> before = curve.lineVertices();
    curve.loseNode();
    QVERIFY(curve.paint());
    QCOMPARE(curve.lineVertices(), before);
    QCOMPARE(transform.takeQuestions().size(), 2);
    // A change in between is drawn once.
    curve.setColor(Qt::red);
    curve.loseNode();
    curve.paint();
    curve.paint();
    QCOMPARE(transform.takeQuestions().size(), 1);
    QCOMPARE(curve.lineVertices(), smoothPolyline({{0, 0}, {30, 40}}, 1.0F, red));
}

// What changes without an area shows as soon as there is one.
void tst_CurveUpdates::changesWhileEmpty()
{
    RecordingTransform transform;
    Painted curve;
    curve.setGeometryTransform(&transform);
    curve.paint();
    curve.setWidth(0.0);
    curve.setColor(Qt::red);
    QCOMPARE(transform.takeQuestions().size(), 1);
    QVERIFY(!curve.paint());
    QVERIFY(!curve.paint());
    QVERIFY(transform.takeQuestions().isEmpty());
    curve.setWidth(1.0);
    QVERIFY(curve.paint());
    QCOMPARE(transform.takeQuestions().size(), 1);
    QCOMPARE(curve.lineVertices(), smoothPolyline({{0, 0}, {30, 40}}, 1.0F, red));
}

// A window asks for new nodes after a change, and not without one.
void tst_CurveUpdates::repaints()
{
    LogarithmicCurveTransform transform;
    FrameWindow window;
    CountedItem<Curve> curve;
    curve.setSize({200.0, 100.0});
    curve.setParentItem(window.contentItem());
    QVERIFY(window.start());
    QVERIFY(curve.takeCount() > 0);
    QVERIFY(window.frame());
    QCOMPARE(curve.takeCount(), 0);

    const QList<Change> changes = {
            [&](Curve &c) { c.setGeometryTransform(&transform); },
            [](Curve &c) {
                c.setP1({5.0, 5.0});
            },
            [](Curve &c) {
                c.setP2({50.0, 50.0});
            },
            [](Curve &c) { c.setLineWidth(2.0); },
            [](Curve &c) { c.setColor(Qt::red); },
            [](Curve &c) {
                c.setSize({100.0, 100.0});
            },
            [](Curve &c) { c.setX(10.0); },
    };
    for (const Change &change : changes) {
        for (const int count : {1, 0}) { // the second time it is none
            change(curve);
            QVERIFY(window.frame());
            QCOMPARE(curve.takeCount(), count);
        }
    }
    // The curve does not listen.
    transform.setDecibel(0.5);
    transform.setPointCount(10);
    QVERIFY(window.frame());
    QCOMPARE(curve.takeCount(), 0);
    curve.setGeometryTransform(nullptr);
    QVERIFY(window.frame());
    QCOMPARE(curve.takeCount(), 1);
}

QTEST_MAIN(tst_CurveUpdates)

#include "tst_curve_updates.moc"
