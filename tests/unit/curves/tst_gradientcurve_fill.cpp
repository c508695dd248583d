// SPDX-License-Identifier: MIT
#include "DirtyMarks.h"
#include "FillVertices.h"
#include "PaintedCurve.h"
#include "RecordingProvider.h"

#include <ChartsLibrary/FillRectProvider.h>
#include <ChartsLibrary/GradientCurve.h>
#include <ChartsLibrary/GradientNode.h>
#include <ChartsLibrary/LineNode.h>
#include <ChartsLibrary/LinearCurveTransform.h>
#include <ChartsLibrary/LogarithmicCurveTransform.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <limits>
#include <memory>

using namespace Charts;
using namespace Qt::StringLiterals;

namespace {

using Points = QList<QPointF>;
using Heights = QList<double>;

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr ColorBytes grayBytes = {160, 160, 164, 255};

/*! In an item of 200 times 100 pixels, unless it is given another size. */
class FilledCurve : public PaintedCurve<GradientCurve>
{
public:
    FilledCurve() = default;
    FilledCurve(AbstractCurveTransform *transform, GradientProvider *provider)
    {
        setGeometryTransform(transform);
        setShape(provider);
    }

    [[nodiscard]] QSGGeometryNode *fillNode() const
    {
        return static_cast<QSGGeometryNode *>(childrenOf(node()).at(1));
    }
    [[nodiscard]] QList<FillVertex> fillVertices() const { return fillVerticesOf(*fillNode()); }
};

} // namespace

/*! What a gradient curve draws. */
class tst_GradientCurveFill : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void nodes();
    void upAndDown();
    void exponentialLine();
    void pens_data();
    void pens();
    void questions_data();
    void questions();
    void wrongHeights_data();
    void wrongHeights();
    void tooFewPoints();

    void nothingWithoutShapeOrTransform();
    void keepsWhatIsDrawn();
    void destroyed();
    void replacedBeforeTheNextFrame();
    void sharedProvider();
    void marks();
};

void tst_GradientCurveFill::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_GradientCurveFill::nodes()
{
    RecordingTransform transform;
    RecordingProvider provider;
    FilledCurve curve(&transform, &provider);
    const QSGNode *node = curve.paint();
    QVERIFY(node);
    QCOMPARE(node->type(), QSGNode::BasicNodeType);
    const QList<QSGNode *> children = childrenOf(node);
    QCOMPARE(children.size(), 2);
    // The fill covers the line.
    QVERIFY(dynamic_cast<LineNode *>(children.at(0)));
    QVERIFY(dynamic_cast<GradientNode *>(children.at(1)));

    curve.setUpDirection(true);
    QCOMPARE(curve.paint(), node);
    QCOMPARE(childrenOf(node), children);
}

void tst_GradientCurveFill::upAndDown()
{
    LinearCurveTransform transform;
    FillRectProvider provider;
    FilledCurve curve(&transform, &provider);
    curve.setP1({20.0, 80.0});
    curve.setP2({120.0, 20.0});

    QVERIFY(curve.paint());
    const Points line = {{20.0, 80.0}, {120.0, 20.0}};
    QCOMPARE(curve.lineVertices(), smoothPolyline(line, 1.0F, grayBytes));
    QCOMPARE(curve.fillVertices(),
            fillStrip({{20.0, 80.0}, {20.0, 160.0}, {120.0, 20.0}, {120.0, 100.0}}, grayBytes));

    curve.setUpDirection(true);
    QVERIFY(curve.paint());
    QCOMPARE(curve.lineVertices(), smoothPolyline(line, 1.0F, grayBytes));
    QCOMPARE(curve.fillVertices(),
            fillStrip({{20.0, 80.0}, {20.0, 0.0}, {120.0, 20.0}, {120.0, -60.0}}, grayBytes));

    curve.setUpDirection(false);
    curve.setHeight(50.0);
    QVERIFY(curve.paint());
    QCOMPARE(curve.fillVertices(),
            fillStrip({{20.0, 80.0}, {20.0, 110.0}, {120.0, 20.0}, {120.0, 50.0}}, grayBytes));
}

void tst_GradientCurveFill::exponentialLine()
{
    LogarithmicCurveTransform transform;
    transform.setPointCount(3);
    transform.setDecibel(0.01);
    FillRectProvider provider;
    FilledCurve curve(&transform, &provider);
    curve.setP2({100.0, 10.0});
    QVERIFY(curve.paint());
    // 10 (sqrt(10) - 1) / 9 in the middle; the fill of each segment is as high as its higher end.
    constexpr double middle = 2.4025307335204215;
    const Points strip = {{0.0, 0.0}, {0.0, 100.0}, {50.0, middle}, {50.0, 100.0}, //
            {50.0, middle}, {50.0, 100.0}, {100.0, 10.0}, {100.0, 110.0 - middle}};
    QCOMPARE(curve.fillVertices(), fillStrip(strip, grayBytes));
    QCOMPARE(curve.lineVertices(),
            smoothPolyline({{0.0, 0.0}, {50.0, middle}, {100.0, 10.0}}, 1.0F, grayBytes));

    transform.setPointCount(1000);
    curve.setUpDirection(true);
    QVERIFY(curve.paint());
    QCOMPARE(curve.lineVertices().size(), 8 * 999);
    QCOMPARE(curve.fillVertices().size(), 4 * 999);
}

void tst_GradientCurveFill::pens_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<QColor>("color");
    QTest::addColumn<ColorBytes>("lineBytes");
    QTest::addColumn<ColorBytes>("fillBytes");

    const auto row = [](const char *name, double width, const QColor &color, const ColorBytes &line,
                             const ColorBytes &fill) {
        QTest::newRow(name) << width << color << line << fill;
    };
    row("opaque", 2.0, {10, 20, 30}, {10, 20, 30, 255}, {10, 20, 30, 255});
    // The line takes its colour multiplied by the alpha, the fill as it is.
    row("translucent", 2.0, {200, 100, 50, 204}, {160, 80, 40, 204}, {200, 100, 50, 204});
    row("transparent", 2.0, {200, 100, 50, 0}, {0, 0, 0, 0}, {200, 100, 50, 0});
    row("invalid", 2.0, {}, {0, 0, 0, 255}, {0, 0, 0, 255});
    row("wide", 12.5, Qt::red, {255, 0, 0, 255}, {255, 0, 0, 255});
    row("narrowed width", 1.1, Qt::red, {255, 0, 0, 255}, {255, 0, 0, 255});
    row("no width", 0.0, Qt::red, {255, 0, 0, 255}, {255, 0, 0, 255});
    row("negative width", -3.0, Qt::red, {255, 0, 0, 255}, {255, 0, 0, 255});
}

void tst_GradientCurveFill::pens()
{
    QFETCH(double, width);
    QFETCH(QColor, color);
    QFETCH(ColorBytes, lineBytes);
    QFETCH(ColorBytes, fillBytes);

    const Points points = {{10.0, 20.0}, {40.0, 60.0}, {52.0, 55.0}, {52.0, 0.0}};
    RecordingTransform transform(points);
    RecordingProvider provider({1.0, 2.0, 3.0, 4.0});
    FilledCurve curve(&transform, &provider);
    curve.setLineWidth(width);
    curve.setColor(color);
    QVERIFY(curve.paint());
    QCOMPARE(curve.lineVertices(), smoothPolyline(points, float(width), lineBytes));
    const Points below = {{10.0, 20.0}, {10.0, 21.0}, {40.0, 60.0}, {40.0, 62.0}, //
            {40.0, 60.0}, {40.0, 62.0}, {52.0, 55.0}, {52.0, 58.0},               //
            {52.0, 55.0}, {52.0, 58.0}, {52.0, 0.0}, {52.0, 4.0}};
    QCOMPARE(curve.fillVertices(), fillStrip(below, fillBytes));

    // The line is smooth whatever the item is asked to be.
    curve.setAntialiasing(false);
    curve.setUpDirection(true);
    QVERIFY(curve.paint());
    QCOMPARE(curve.lineVertices(), smoothPolyline(points, float(width), lineBytes));
    const Points above = {{10.0, 20.0}, {10.0, 19.0}, {40.0, 60.0}, {40.0, 58.0}, //
            {40.0, 60.0}, {40.0, 58.0}, {52.0, 55.0}, {52.0, 52.0},               //
            {52.0, 55.0}, {52.0, 52.0}, {52.0, 0.0}, {52.0, -4.0}};
    QCOMPARE(curve.fillVertices(), fillStrip(above, fillBytes));
}

void tst_GradientCurveFill::questions_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QRect>("rect");
    QTest::newRow("whole") << QSizeF(40.0, 30.0) << QRect(0, 0, 40, 30);
    QTest::newRow("down") << QSizeF(40.4, 30.49) << QRect(0, 0, 40, 30);
    QTest::newRow("up") << QSizeF(40.6, 30.51) << QRect(0, 0, 41, 31);
    QTest::newRow("halves up") << QSizeF(40.5, 31.5) << QRect(0, 0, 41, 32);
    QTest::newRow("half a pixel") << QSizeF(0.5, 0.5) << QRect(0, 0, 1, 1);
    QTest::newRow("huge") << QSizeF(1e300, 30.0) << QRect(0, 0, 2147483647, 30);
    QTest::newRow("infinite") << QSizeF(40.0, inf) << QRect(0, 0, 40, 2147483647);
}

// The transform is asked for the line, the provider for the heights along it, once each.
void tst_GradientCurveFill::questions()
{
    QFETCH(QSizeF, size);
    QFETCH(QRect, rect);

    const Points points = {{1.0, 2.0}, {3.0, 4.0}, {5.0, 6.0}};
    RecordingTransform transform(points);
    RecordingProvider provider;
    FilledCurve curve(&transform, &provider);
    curve.setPosition({33.0, 44.0});
    curve.setSize(size);
    curve.setP1({-7.0, 8.0});
    curve.setP2({9.0, 1e6});
    for (const bool isUp : {true, false}) {
        curve.setUpDirection(isUp);
        QVERIFY(curve.paint());
        QCOMPARE(transform.takeQuestions(),
                (QList<RecordingTransform::Ends>{{{-7.0, 8.0}, {9.0, 1e6}}}));
        const auto asked = provider.takeQuestions();
        QCOMPARE(asked.size(), 1);
        QCOMPARE(asked.at(0).points, points);
        QCOMPARE(asked.at(0).rect, rect);
        QCOMPARE(asked.at(0).isUp, isUp);
    }
}

void tst_GradientCurveFill::wrongHeights_data()
{
    QTest::addColumn<int>("count");
    for (const int count : {0, 1, 3, 100})
        QTest::addRow("%d", count) << count;
}

// Costs the fill, not the line.
void tst_GradientCurveFill::wrongHeights()
{
    QFETCH(int, count);

    RecordingTransform transform({{0.0, 0.0}, {30.0, 40.0}});
    RecordingProvider provider;
    FilledCurve curve(&transform, &provider);
    curve.paint();
    QCOMPARE(curve.fillVertices().size(), 4);
    provider.setAnswer(Heights(count, 5.0));
    curve.setP1({1.0, 1.0});
    curve.paint();
    QCOMPARE(curve.fillVertices(), QList<FillVertex>());
    const Points points = {{0.0, 0.0}, {30.0, 40.0}};
    QCOMPARE(curve.lineVertices(), smoothPolyline(points, 1.0F, grayBytes));

    provider.setAnswer({5.0, 5.0});
    curve.setP1({2.0, 2.0});
    curve.paint();
    QCOMPARE(curve.fillVertices().size(), 4);
}

void tst_GradientCurveFill::tooFewPoints()
{
    for (const Points &points : {Points(), Points{{5.0, 5.0}}}) {
        RecordingTransform transform;
        FillRectProvider provider;
        FilledCurve curve(&transform, &provider);
        curve.paint();
        QCOMPARE(curve.lineVertices().size(), 8);
        transform.setAnswer(points);
        curve.setUpDirection(true);
        QVERIFY(curve.paint());
        QCOMPARE(curve.lineVertices(), QList<Vertex>());
        QCOMPARE(curve.fillVertices(), QList<FillVertex>());
    }
}

void tst_GradientCurveFill::nothingWithoutShapeOrTransform()
{
    RecordingTransform transform;
    RecordingProvider provider;
    FilledCurve neither;
    FilledCurve onlyTransform(&transform, nullptr);
    FilledCurve onlyProvider(nullptr, &provider);
    for (FilledCurve *curve : {&neither, &onlyTransform, &onlyProvider}) {
        QVERIFY(curve->paint());
        QCOMPARE(curve->node()->childCount(), 2);
        QCOMPARE(curve->lineVertices(), QList<Vertex>());
        for (const FillVertex &vertex : curve->fillVertices())
            QCOMPARE(vertex.color, ColorBytes());
        QVERIFY(transform.takeQuestions().isEmpty());
        QVERIFY(provider.takeQuestions().isEmpty());
    }
    // Drawn as soon as there is what was missing.
    onlyTransform.setShape(&provider);
    QVERIFY(onlyTransform.paint());
    QCOMPARE(onlyTransform.lineVertices().size(), 8);
    QCOMPARE(provider.takeQuestions().size(), 1);
    onlyProvider.setGeometryTransform(&transform);
    QVERIFY(onlyProvider.paint());
    QCOMPARE(onlyProvider.lineVertices().size(), 8);
    QCOMPARE(provider.takeQuestions().size(), 1);
}

void tst_GradientCurveFill::keepsWhatIsDrawn()
{
    RecordingTransform transform;
    RecordingProvider provider;
    FilledCurve curve(&transform, &provider);
    QVERIFY(curve.paint());
    const QList<QByteArray> picture = curve.picture();
    QCOMPARE(picture.size(), 2);

    const auto changeAll = [&] {
        curve.setUpDirection(!curve.upDirection());
        curve.setColor(curve.color() == Qt::red ? Qt::blue : Qt::red);
        curve.setLineWidth(curve.lineWidth() + 1.0);
        curve.setSize(curve.size() + QSizeF(1.0, 1.0));
        transform.setAnswer({{5.0, 5.0}, {6.0, 7.0}, {8.0, 9.0}});
        curve.paint();
    };
    DirtyMarks marks;
    curve.setShape(nullptr);
    changeAll();
    QCOMPARE(curve.picture(), picture);
    curve.setShape(&provider);
    curve.setGeometryTransform(nullptr);
    changeAll();
    QCOMPARE(curve.picture(), picture);
    QVERIFY(marks.take().isEmpty());
    QCOMPARE(transform.takeQuestions().size(), 1);
    QCOMPARE(provider.takeQuestions().size(), 1);

    curve.setGeometryTransform(&transform);
    QVERIFY(curve.paint());
    QVERIFY(curve.picture() != picture);
    QCOMPARE(curve.lineVertices().size(), 16);
}

// As if there had never been one.
void tst_GradientCurveFill::destroyed()
{
    for (const bool isShape : {true, false}) {
        auto transform = std::make_unique<RecordingTransform>();
        auto provider = std::make_unique<RecordingProvider>();
        FilledCurve curve(transform.get(), provider.get());
        QVERIFY(curve.paint());
        const QList<QByteArray> picture = curve.picture();

        curve.setUpDirection(true); // to be drawn anew
        if (isShape)
            provider.reset();
        else
            transform.reset();
        QCOMPARE(curve.shape() == nullptr, isShape);
        QCOMPARE(curve.geometryTransform() == nullptr, !isShape);
        QVERIFY(curve.paint());
        QCOMPARE(curve.picture(), picture);
        QCOMPARE(curve.contains({15.0, 20.0}), isShape);

        RecordingTransform newTransform({{0.0, 0.0}, {0.0, 10.0}});
        RecordingProvider newProvider;
        curve.setShape(&newProvider);
        curve.setGeometryTransform(&newTransform);
        QVERIFY(curve.paint());
        QVERIFY(curve.picture() != picture);
    }
}

void tst_GradientCurveFill::replacedBeforeTheNextFrame()
{
    auto transform = std::make_unique<RecordingTransform>();
    auto provider = std::make_unique<RecordingProvider>();
    FilledCurve curve(transform.get(), provider.get());
    RecordingTransform otherTransform({{0.0, 0.0}, {0.0, 10.0}});
    RecordingProvider otherProvider({1.0, 2.0});
    curve.setGeometryTransform(&otherTransform);
    curve.setShape(&otherProvider);
    transform.reset();
    provider.reset();
    QVERIFY(curve.paint());
    QCOMPARE(curve.fillVertices(),
            fillStrip({{0.0, 0.0}, {0.0, 1.0}, {0.0, 10.0}, {0.0, 12.0}}, grayBytes));
}

void tst_GradientCurveFill::sharedProvider()
{
    RecordingTransform transform;
    RecordingProvider provider;
    FilledCurve first(&transform, &provider);
    {
        FilledCurve second(&transform, &provider);
        first.paint();
        second.paint();
        QCOMPARE(provider.takeQuestions().size(), 2);
        QCOMPARE(first.picture(), second.picture());
    }
    // It outlives the curve.
    QCOMPARE(provider.gradientHeights({}, {}, true).size(), 2);
    QCOMPARE(first.shape(), &provider);
}

void tst_GradientCurveFill::marks()
{
    RecordingTransform transform;
    RecordingProvider provider;
    FilledCurve curve(&transform, &provider);
    curve.paint();
    DirtyMarks marks;
    curve.paint();
    QVERIFY(marks.take().isEmpty());
    curve.setUpDirection(true);
    curve.paint();
    QCOMPARE(marks.take(), (QList<DirtyMarks::Mark>{{curve.lineNode(), QSGNode::DirtyGeometry},
                                   {curve.fillNode(), QSGNode::DirtyGeometry}}));
    curve.setContainsMouseMargin(0);
    curve.paint();
    QVERIFY(marks.take().isEmpty());
}

QTEST_MAIN(tst_GradientCurveFill)

#include "tst_gradientcurve_fill.moc"
