// SPDX-License-Identifier: MIT
#include "CurveWindow.h"
#include "FixedShapes.h"
#include "Graphics.h"

#include <ChartsLibrary/FillRectProvider.h>
#include <ChartsLibrary/GradientCurve.h>
#include <ChartsLibrary/LinearCurveTransform.h>
#include <ChartsLibrary/LogarithmicCurveTransform.h>

#include <QtCore/QRegularExpression>
#include <QtGui/QImage>
#include <QtTest/QTest>

#include <memory>

using namespace Charts;

namespace {

using Change = void (*)(Curve &);

GradientCurve &withFill(Curve &curve)
{
    return static_cast<GradientCurve &>(curve);
}

void makeRed(Curve &curve)
{
    curve.setColor(Qt::blue);
    curve.setColor(Qt::red);
}

} // namespace

/*! Curves, plain and with a fill, that come, go and change between the frames of a window. */
class tst_CurvesScene : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void withoutTransform_data() { addCurves(); }
    void withoutTransform();
    void withoutShape();
    void transformAtLast_data() { addCurves(); }
    void transformAtLast();
    void shapeAtLast();
    void pointsAtLast_data() { addCurves(); }
    void pointsAtLast();
    void heightsAtLast();

    void repaints_data();
    void repaints();
    void unseenChanges_data() { addCurves(); }
    void unseenChanges();

    void emptied_data();
    void emptied();
    void destroyed_data() { addCurves(); }
    void destroyed();
    void transformDestroyed_data() { addCurves(); }
    void transformDestroyed();
    void shapeDestroyed();
    void windowHidden_data() { addCurves(); }
    void windowHidden();

private:
    static void addCurves();
    /*! A red line, rising to the right, and its fill below, if it has one. */
    std::unique_ptr<Curve> curve(bool hasFill);
    std::unique_ptr<Curve> curve()
    {
        QFETCH(bool, hasFill);
        return curve(hasFill);
    }
    /*! Of a curve on which nothing was changed after its first frame, if at all before. */
    QImage pictureOfOther(bool hasFill, Change change = nullptr);
    [[nodiscard]] QImage picture() { return m_window->picture(); }

    std::unique_ptr<CurveWindow> m_window;
    LinearCurveTransform m_linear;
    FillRectProvider m_toEdge;
};

void tst_CurvesScene::initTestCase()
{
    m_window = std::make_unique<CurveWindow>();
    QVERIFY2(m_window->start(), m_window->error());
}

void tst_CurvesScene::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    QVERIFY(isBlank(picture()));
}

void tst_CurvesScene::cleanup()
{
    QCOMPARE(CurveWindow::glErrors(), QStringList());
}

void tst_CurvesScene::cleanupTestCase()
{
    QVERIFY(CurveWindow::isWatched());
    m_window.reset();
}

void tst_CurvesScene::addCurves()
{
    QTest::addColumn<bool>("hasFill");
    QTest::newRow("plain") << false;
    QTest::newRow("with a fill") << true;
}

std::unique_ptr<Curve> tst_CurvesScene::curve(bool hasFill)
{
    auto curve = hasFill ? std::make_unique<GradientCurve>() : std::make_unique<Curve>();
    if (hasFill)
        withFill(*curve).setShape(&m_toEdge);
    curve->setGeometryTransform(&m_linear);
    curve->setP1({10.0, 40.0});
    curve->setP2({110.0, 20.0});
    curve->setLineWidth(2.0);
    curve->setColor(Qt::red);
    m_window->put(*curve);
    return curve;
}

QImage tst_CurvesScene::pictureOfOther(bool hasFill, Change change)
{
    const auto other = curve(hasFill);
    if (change)
        change(*other);
    return picture();
}

void tst_CurvesScene::withoutTransform()
{
    {
        const auto item = curve();
        item->setGeometryTransform(nullptr);
        QVERIFY(isBlank(picture()));
        makeRed(*item);
        QVERIFY(isBlank(picture()));
    }
    const auto item = curve();
    const QImage before = picture();
    QVERIFY(drawnPixels(before) > 100);
    // What is there stays.
    item->setGeometryTransform(nullptr);
    QCOMPARE(picture(), before);
    item->setColor(Qt::blue);
    QCOMPARE(picture(), before);
    item->setGeometryTransform(&m_linear);
    QVERIFY(picture() != before);
}

// Neither fill nor line.
void tst_CurvesScene::withoutShape()
{
    {
        const auto item = curve(true);
        withFill(*item).setShape(nullptr);
        QVERIFY(isBlank(picture()));
        withFill(*item).setUpDirection(true);
        QVERIFY(isBlank(picture()));
    }
    const auto item = curve(true);
    const QImage before = picture();
    QVERIFY(drawnPixels(before) > 2000);
    withFill(*item).setShape(nullptr);
    QCOMPARE(picture(), before);
    item->setColor(Qt::blue);
    QCOMPARE(picture(), before);
    withFill(*item).setShape(&m_toEdge);
    QVERIFY(picture() != before);
}

void tst_CurvesScene::transformAtLast()
{
    QFETCH(bool, hasFill);
    const QImage expected = pictureOfOther(hasFill);
    const auto item = curve();
    item->setGeometryTransform(nullptr);
    QVERIFY(isBlank(picture()));
    item->setGeometryTransform(&m_linear);
    QCOMPARE(picture(), expected);
}

void tst_CurvesScene::shapeAtLast()
{
    const QImage expected = pictureOfOther(true);
    const auto item = curve(true);
    withFill(*item).setShape(nullptr);
    QVERIFY(isBlank(picture()));
    withFill(*item).setShape(&m_toEdge);
    QCOMPARE(picture(), expected);
}

// One point is no line, at first and after there was one.
void tst_CurvesScene::pointsAtLast()
{
    QFETCH(bool, hasFill);
    const QImage expected = pictureOfOther(hasFill);
    FixedPoints points;
    points.list = {{10.0, 40.0}};
    const auto item = curve();
    for (int i = 0; i < 2; ++i) {
        item->setGeometryTransform(&points);
        QVERIFY(isBlank(picture()));
        item->setGeometryTransform(&m_linear);
        QCOMPARE(picture(), expected);
    }
}

// Nothing is filled with too few, but the line is there.
void tst_CurvesScene::heightsAtLast()
{
    const QImage line = pictureOfOther(false);
    const QImage expected = pictureOfOther(true);
    FixedHeights heights;
    heights.list = {10.0};
    const auto item = curve(true);
    for (int i = 0; i < 2; ++i) {
        withFill(*item).setShape(&heights);
        QCOMPARE(picture(), line);
        withFill(*item).setShape(&m_toEdge);
        QCOMPARE(picture(), expected);
    }
}

void tst_CurvesScene::repaints_data()
{
    QTest::addColumn<bool>("hasFill");
    QTest::addColumn<Change>("change");
    for (const bool hasFill : {false, true}) {
        const auto row = [hasFill](const char *name, Change change) {
            QTest::addRow("%s, %s", hasFill ? "with a fill" : "plain", name) << hasFill << change;
        };
        row("p1", [](Curve &item) { item.setP1({10.0, 20.0}); });
        row("p2", [](Curve &item) { item.setP2({100.0, 10.0}); });
        row("line width", [](Curve &item) { item.setLineWidth(3.0); });
        row("color", [](Curve &item) { item.setColor(Qt::blue); });
        row("alpha", [](Curve &item) { item.setColor({255, 0, 0, 100}); });
        row("transform", [](Curve &item) {
            auto *transform = new LogarithmicCurveTransform(&item);
            transform->setDecibel(0.02);
            item.setGeometryTransform(transform);
        });
    }
    const auto row = [](const char *name, Change change) { QTest::newRow(name) << true << change; };
    row("direction", [](Curve &item) { withFill(item).setUpDirection(true); });
    row("shape", [](Curve &item) {
        auto *shape = new FixedHeights;
        shape->setParent(&item);
        shape->list = {10.0, 20.0};
        withFill(item).setShape(shape);
    });
    row("height", [](Curve &item) { item.setHeight(50.0); });
}

void tst_CurvesScene::repaints()
{
    QFETCH(bool, hasFill);
    QFETCH(Change, change);

    const QImage expected = pictureOfOther(hasFill, change);
    QVERIFY(isBlank(picture()));
    const auto item = curve();
    const QImage before = picture();
    QVERIFY(drawnPixels(before) > 100);
    QVERIFY(before != expected);
    change(*item);
    QCOMPARE(picture(), expected);
}

// What a transform or a shape changes by itself waits for the next change of the curve.
void tst_CurvesScene::unseenChanges()
{
    QFETCH(bool, hasFill);
    LogarithmicCurveTransform transform;
    transform.setDecibel(0.01);
    FixedHeights shape;
    shape.list = QList<double>(100, 10.0);
    const auto item = curve();
    item->setGeometryTransform(&transform);
    if (hasFill)
        withFill(*item).setShape(&shape);
    const QImage before = picture();
    QVERIFY(drawnPixels(before) > 100);

    shape.list = QList<double>(50, 20.0);
    transform.setDecibel(0.03);
    transform.setPointCount(50);
    QCOMPARE(picture(), before);
    // Nor does the margin, or a frame by itself, bring it to light.
    if (hasFill)
        withFill(*item).setContainsMouseMargin(30);
    QCOMPARE(picture(), before);
    item->update();
    QCOMPARE(picture(), before);

    const auto other = curve();
    other->setGeometryTransform(&transform);
    if (hasFill)
        withFill(*other).setShape(&shape);
    item->setVisible(false);
    const QImage expected = picture();
    QVERIFY(expected != before);
    other->setVisible(false);
    item->setVisible(true);
    QCOMPARE(picture(), before);
    makeRed(*item);
    QCOMPARE(picture(), expected);
}

void tst_CurvesScene::emptied_data()
{
    QTest::addColumn<bool>("hasFill");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<bool>("isDrawn");
    const double width = CurveWindow::curveSize.width();
    const double height = CurveWindow::curveSize.height();
    for (const bool hasFill : {false, true}) {
        const auto row = [hasFill](const char *name, const QSizeF &size, bool isDrawn) {
            QTest::addRow("%s, %s", hasFill ? "with a fill" : "plain", name)
                    << hasFill << size << isDrawn;
        };
        row("nothing", {0.0, 0.0}, false);
        row("no width", {0.0, height}, false);
        row("no height", {width, 0.0}, false);
        row("hardly any width", {0.49, height}, false);
        row("hardly any height", {width, 0.49}, false);
        row("half a pixel", {0.5, 0.5}, true);
        row("negative", {width, -10.0}, false);
    }
}

void tst_CurvesScene::emptied()
{
    QFETCH(QSizeF, size);
    QFETCH(bool, isDrawn);

    const auto item = curve();
    const QImage before = picture();
    QVERIFY(drawnPixels(before) > 100);
    for (int i = 0; i < 2; ++i) {
        item->setSize(size);
        QCOMPARE(isBlank(picture()), !isDrawn);
        item->setSize(CurveWindow::curveSize);
        QCOMPARE(picture(), before);
    }
}

void tst_CurvesScene::destroyed()
{
    auto item = curve();
    QVERIFY(!isBlank(picture()));
    item.reset();
    QVERIFY(isBlank(picture()));
    // Before it was ever drawn.
    item = curve();
    item.reset();
    QVERIFY(isBlank(picture()));
}

void tst_CurvesScene::transformDestroyed()
{
    auto transform = std::make_unique<LinearCurveTransform>();
    const auto item = curve();
    item->setGeometryTransform(transform.get());
    const QImage before = picture();
    QVERIFY(drawnPixels(before) > 100);
    transform.reset();
    QCOMPARE(item->geometryTransform(), nullptr);
    QCOMPARE(picture(), before);
    item->setColor(Qt::blue);
    item->setSize(CurveWindow::curveSize / 2.0);
    QCOMPARE(picture(), before);
    item->setGeometryTransform(&m_linear);
    QVERIFY(picture() != before);
}

void tst_CurvesScene::shapeDestroyed()
{
    auto shape = std::make_unique<FillRectProvider>();
    const auto item = curve(true);
    withFill(*item).setShape(shape.get());
    const QImage before = picture();
    QVERIFY(drawnPixels(before) > 2000);
    shape.reset();
    QCOMPARE(withFill(*item).shape(), nullptr);
    QCOMPARE(picture(), before);
    item->setColor(Qt::blue);
    QCOMPARE(picture(), before);
    withFill(*item).setShape(&m_toEdge);
    QVERIFY(picture() != before);
}

// Also where the scene graph throws its nodes away.
void tst_CurvesScene::windowHidden()
{
    const auto item = curve();
    const QImage before = picture();
    QVERIFY(drawnPixels(before) > 100);
    for (const bool forgets : {false, true}) {
        QVERIFY2(m_window->restart(forgets), m_window->error());
        QCOMPARE(picture(), before);
    }
}

QTEST_MAIN(tst_CurvesScene)

#include "tst_curves_scene.moc"
