// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "Graphics.h"
#include "ItemPicture.h"

#include <ChartsLibrary/XYGrid.h>

#include <QtCore/QRegularExpression>
#include <QtGui/QImage>
#include <QtTest/QTest>

#include <algorithm>
#include <optional>
#include <vector>

using namespace Charts;

namespace {

/*! How a cartesian grid is set up. */
struct Setup
{
    QSize size = {101, 51};
    XYGrid::GridLayoutMode layout = XYGrid::EquidistantGrid;
    Span range = {0.0, 10.0};
    int yCount = 5;
    double lineWidth = 1.0;
    bool isSmooth = true;
    QColor inner = Qt::blue;
    QColor outer = Qt::red;
    double opacity = 1.0;
    QColor background = Qt::white;

    void apply(XYGrid &grid) const
    {
        grid.setSize(size);
        grid.setXLayout(layout);
        grid.setXRange(range);
        grid.setYCount(yCount);
        grid.setLineWidth(lineWidth);
        grid.setAntialiasing(isSmooth);
        grid.setInnerGridLinesColor(inner);
        grid.setOuterGridLinesColor(outer);
        grid.setOpacity(opacity);
    }
};

/*! How much of an upright or level line a pixel shows. Nothing is returned for a pixel whose middle
    lies at the very end of the line: either is right there. */
std::optional<double> coverageOf(const QLine &line, const QPointF &place, const Setup &setup)
{
    // Smooth lines run through the middle of their pixels.
    const double shift = setup.isSmooth ? 0.5 : 0.0;
    const bool isUpright = line.x1() == line.x2();
    const double across = (isUpright ? place.x() - line.x1() : place.y() - line.y1()) - shift;
    const double along = (isUpright ? place.y() : place.x()) - shift;
    const auto [begin, end] =
            isUpright ? std::minmax({line.y1(), line.y2()}) : std::minmax({line.x1(), line.x2()});
    const double coverage = setup.isSmooth ? smoothCoverage(across, setup.lineWidth)
                                           : double(std::abs(across) < setup.lineWidth / 2.0);
    if (coverage > 0.0 && (std::abs(along - begin) < 0.05 || std::abs(along - end) < 0.05))
        return {};
    return along > begin && along < end ? coverage : 0.0;
}

/*! Where the window does not show the lines, the outer ones over the inner ones, and nothing else.
    Empty if it does. */
QString difference(ChartWindow &window, const XYGrid &grid, const Setup &setup,
        const std::vector<QLine> &innerLines, const std::vector<QLine> &outerLines)
{
    const ItemPicture picture(window, grid);
    if (!picture.isComplete())
        return QStringLiteral("no picture: ") + QString::fromUtf8(window.error());
    Mismatches mismatches;
    picture.forEachPixel([&](QPoint pixel, const QPointF &place) {
        PixelBlend blend(setup.background);
        const auto draw = [&](const std::vector<QLine> &lines, const QColor &color) {
            for (const QLine &line : lines) {
                if (const auto coverage = coverageOf(line, place, setup))
                    blend.add(color, setup.opacity * *coverage);
                else
                    blend.doubt();
            }
        };
        draw(innerLines, setup.inner);
        draw(outerLines, setup.outer);
        if (blend.isKnown())
            mismatches.check(pixel, picture.image().pixelColor(pixel), blend.color(), 2.0);
    });
    // All but a few corners.
    const QSize size = picture.image().size();
    return mismatches.checked() > size.width() * size.height() - 1000
                   ? mismatches.text()
                   : QStringLiteral("too few pixels are known");
}

} // namespace

/*!
    Pixels of a cartesian grid in a window without a chart. Run also with two device pixels for each
    pixel of an item, by way of QT_SCALE_FACTOR: the same lines stand at the same places, with the
    edges of a picture of twice the size.
*/
class tst_Grids : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();

    void devicePixelRatio();
    void tenths();
    void lines_data();
    void lines();
    void placeAndWidth_data();
    void placeAndWidth();
    void halfOpaque();

private:
    // Twice as large it still fits the place on the screen that each test process has.
    static constexpr QSize size = {200, 150};
    static constexpr QPointF position = {20.0, 10.0};
};

void tst_Grids::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_Grids::devicePixelRatio()
{
    const double factor = qEnvironmentVariableIsSet("QT_SCALE_FACTOR")
                                  ? qgetenv("QT_SCALE_FACTOR").toDouble()
                                  : 1.0;
    ChartWindow window(size, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    QCOMPARE(window.effectiveDevicePixelRatio(), factor);
    QCOMPARE(window.picture().size(), size * factor);
}

// Where the lines are is worked out by hand here.
void tst_Grids::tenths()
{
    ChartWindow window(size, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    XYGrid grid(window.contentItem());
    grid.setPosition(position);
    const Setup setup;
    setup.apply(grid);
    std::vector<QLine> inner;
    for (int x = 10; x <= 90; x += 10)
        inner.emplace_back(x, 0, x, 51);
    for (int y = 10; y <= 40; y += 10)
        inner.emplace_back(0, y, 101, y);
    const std::vector<QLine> outer = {
            {0, 0, 0, 51}, {0, 51, 101, 51}, {101, 0, 101, 51}, {0, 0, 101, 0}};
    QCOMPARE(difference(window, grid, setup, inner, outer), QString());

    if (window.effectiveDevicePixelRatio() != 1.0)
        return;
    // Each line of one pixel fills exactly one; the border's colour is that of the crossings.
    const QImage picture = window.picture();
    const QPoint origin = position.toPoint();
    QCOMPARE(picture.pixelColor(origin + QPoint(50, 25)), QColor(Qt::blue));
    QCOMPARE(picture.pixelColor(origin + QPoint(49, 25)), QColor(Qt::white));
    QCOMPARE(picture.pixelColor(origin + QPoint(51, 25)), QColor(Qt::white));
    QCOMPARE(picture.pixelColor(origin + QPoint(45, 30)), QColor(Qt::blue));
    for (const QPoint crossing : {QPoint(50, 0), QPoint(50, 51), QPoint(0, 30), QPoint(101, 30)})
        QCOMPARE(picture.pixelColor(origin + crossing), QColor(Qt::red));
}

void tst_Grids::lines_data()
{
    QTest::addColumn<Setup>("setup");
    const QSize large = {160, 120};
    QTest::newRow("tenths") << Setup{.size = large, .yCount = 10};
    QTest::newRow("centred") << Setup{
            .size = large, .layout = XYGrid::CenteredLinGrid, .range = {-3.0, 4.0}};
    QTest::newRow("round numbers")
            << Setup{.size = large, .layout = XYGrid::NiceLabelsLinGrid, .range = {0.13, 0.97}};
    QTest::newRow("decades, lines beside each other")
            << Setup{.size = large, .layout = XYGrid::LogGrid, .range = {0.0, 3.0}};
    QTest::newRow("a range the other way round") << Setup{.range = {10.0, 0.0}};
    QTest::newRow("no rows") << Setup{.yCount = 1};
    QTest::newRow("nothing between border lines") << Setup{.size = {1, 1}, .yCount = 0};
    QTest::newRow("2 wide") << Setup{.lineWidth = 2.0};
    QTest::newRow("3.5 wide") << Setup{.lineWidth = 3.5};
    QTest::newRow("2 wide, hard edges") << Setup{.lineWidth = 2.0, .isSmooth = false};
    QTest::newRow("no width") << Setup{.lineWidth = 0.0};
    QTest::newRow("on black") << Setup{
            .inner = Qt::white, .outer = Qt::green, .background = Qt::black};
    QTest::newRow("translucent inner lines")
            << Setup{.lineWidth = 2.0, .inner = QColor(0, 90, 255, 100)};
    QTest::newRow("translucent border")
            << Setup{.lineWidth = 2.0, .outer = QColor(255, 90, 0, 100)};
    QTest::newRow("half opaque, 3 wide") << Setup{.lineWidth = 3.0, .opacity = 0.5};
    QTest::newRow("nearly transparent, on red")
            << Setup{.outer = Qt::cyan, .opacity = 0.1, .background = Qt::red};
    QTest::newRow("transparent item") << Setup{.opacity = 0.0};
}

// The lines that the grid names are those on the screen.
void tst_Grids::lines()
{
    QFETCH(Setup, setup);

    ChartWindow window(size, ChartWindow::Content::Nothing);
    window.setColor(setup.background);
    QVERIFY2(window.start(), window.error());
    XYGrid grid(window.contentItem());
    grid.setPosition(position);
    setup.apply(grid);
    // Width 0 has no slope to divide by.
    const bool hasLines = setup.lineWidth > 0.0;
    const QRect rect(QPoint(0, 0), setup.size);
    const auto inner = hasLines ? grid.innerLines(rect).first : std::vector<QLine>();
    const auto outer = hasLines ? grid.outerLines(rect) : std::vector<QLine>();
    QCOMPARE(difference(window, grid, setup, inner, outer), QString());
}

void tst_Grids::placeAndWidth_data()
{
    QTest::addColumn<double>("lineWidth");
    for (const double width : {1.0, 2.0, 3.0})
        QTest::addRow("%g", width) << width;
}

// Measured instead of compared: how much darkness there is, and where its middle lies.
void tst_Grids::placeAndWidth()
{
    QFETCH(double, lineWidth);

    ChartWindow window(size, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    XYGrid grid(window.contentItem());
    grid.setPosition(position);
    const Setup setup = {
            .yCount = 1, .lineWidth = lineWidth, .inner = Qt::black, .outer = Qt::black};
    setup.apply(grid);
    const ItemPicture picture(window, grid);
    QVERIFY2(picture.isComplete(), window.error());

    // The border at 0 and 101, the inner lines in between.
    for (const int x : {0, 10, 20, 30, 40, 50, 60, 70, 80, 90, 101}) {
        double area = 0.0;
        double moment = 0.0;
        const int begin = picture.pixelAt({x - 4.0, 25.5}).x();
        const int end = picture.pixelAt({x + 5.0, 25.5}).x();
        const int row = picture.pixelAt({0.0, 25.5}).y();
        for (int column = begin; column < end; ++column) {
            const double darkness = 1.0 - double(picture.image().pixelColor(column, row).redF());
            area += darkness;
            moment += darkness * picture.placeOf({column, row}).x();
        }
        const QByteArray text = "line at " + QByteArray::number(x) + ": " + QByteArray::number(area)
                                + " wide, middle at " + QByteArray::number(moment / area);
        // The width is in pixels of the screen, the place in those of the item.
        QVERIFY2(std::abs(area - lineWidth * picture.ratio()) < 0.06, text);
        QVERIFY2(std::abs(moment / area - (x + 0.5)) < 0.02, text);
    }
}

// Away from the crossings the colours are half way to the background.
void tst_Grids::halfOpaque()
{
    ChartWindow window(size, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    XYGrid grid(window.contentItem());
    grid.setPosition(position);
    const Setup setup = {
            .lineWidth = 3.0, .inner = QColor(0, 100, 200), .outer = QColor(90, 0, 10)};
    setup.apply(grid);
    grid.setOpacity(0.5);
    const ItemPicture picture(window, grid);
    QVERIFY2(picture.isComplete(), window.error());
    const auto isShown = [&](const QPointF &place, const QColor &expected) {
        return distanceOf(picture.colorAt(place), expected) <= 2;
    };
    QVERIFY(isShown({50.5, 25.5}, QColor(127, 177, 227)));
    QVERIFY(isShown({55.5, 30.5}, QColor(127, 177, 227)));
    QVERIFY(isShown({0.5, 25.5}, QColor(172, 127, 132)));
    QVERIFY(isShown({55.5, 51.5}, QColor(172, 127, 132)));
}

QTEST_MAIN(tst_Grids)

#include "tst_grids.moc"
