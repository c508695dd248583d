// SPDX-License-Identifier: MIT
#include "EpochTrace.h"
#include "Gaps.h"
#include "Graphics.h"
#include "HitTestRefresh.h"
#include "RoundCoordinates.h"
#include "SnippetDocument.h"
#include "SweepTrace.h"

#include <ChartsLibrary/ZoomDelegate.h>

#include <QtCore/QRegularExpression>
#include <QtGui/QCursor>
#include <QtGui/QScreen>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <numbers>
#include <set>

using namespace Charts;
using namespace Qt::StringLiterals;

// What the guides quote does what they say, and so do their formulas.
class tst_DocSnippets : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void lineTrace();
    void handlersOfMisspelledSignals();
    void sweepMarksWhatItWrites();
    void sweepWraps();
    void precisionOfFloat();
    void epochTrace();
    void gaps_data();
    void gaps();
    void roundFormulas_data();
    void roundFormulas();

    void lineIsDrawn();
    void labels();
    void logLabels();
    void zoom();
    void hits();
    void sharpChart();
    void roundPicture_data();
    void roundPicture();
    void limits();
};

namespace {

constexpr QRgb blue = 0xff0b67a8;
constexpr QRgb red = 0xffc62828;
const float missing = std::numeric_limits<float>::quiet_NaN();

std::set<int> takeIndices(BoundRange &ranges)
{
    std::set<int> indices;
    while (!ranges.isEmpty()) {
        const Range<int> range = ranges.pop(false);
        for (int i = 0; i < range.length; ++i)
            indices.insert(range.start + i);
    }
    return indices;
}

} // namespace

void tst_DocSnippets::initTestCase()
{
    qmlRegisterType<LineTrace>("Snippets", 1, 0, "LineTrace");
    // The real pointer would hover what is under it.
    QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight());
}

//! [trace test]
void tst_DocSnippets::lineTrace()
{
    LineTrace trace;
    trace.domain()->setRangeXY(0.0, 2.0, -1.0, 3.0);
    trace.setColor(Qt::red);
    trace.setPoints({{.x = 0.0F, .y = 1.0F}, {.x = 2.0F, .y = 3.0F}});
    trace.updateData(); // what the chart does every 33 ms

    TraceData &data = *trace.traceData();
    QCOMPARE(data.array().size(), std::size_t(2));
    QVERIFY(data.dirtyRange().contain(0) && data.dirtyRange().contain(1));
    QCOMPARE(data.color(), QColor(Qt::red));
    QCOMPARE(data.viewPort().height, 4.0F);

    while (!data.dirtyRange().isEmpty())
        data.dirtyRange().pop(false); // what the renderer does
    trace.updateData();
    QVERIFY(data.dirtyRange().isEmpty()); // data at rest cost nothing
}
//! [trace test]

void tst_DocSnippets::handlersOfMisspelledSignals()
{
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(R"(
        import QtQml
        import zel.charts 1.0
        import Snippets
        LineTrace {
            property string log
            property GradientCurve curve: GradientCurve {
                onUpGradientChanged: log += "a"
                onUpDirectionChanged: log += "b"
            }
            onLineWidthChanged: log += "c"
            onLineWidthChaned: log += "d"
        })",
            {});
    const std::unique_ptr<QObject> trace(component.create());
    QVERIFY2(trace, qPrintable(component.errorString()));
    QVERIFY(trace->setProperty("lineWidth", 7.0));
    QVERIFY(trace->property("curve").value<QObject *>()->setProperty("upDirection", true));
    QString log = trace->property("log").toString();
    std::sort(log.begin(), log.end());
    QCOMPARE(log, u"abcd"_s);
}

void tst_DocSnippets::sweepMarksWhatItWrites()
{
    SweepTrace trace(1000);
    TraceData &data = *trace.traceData();
    QCOMPARE(takeIndices(data.dirtyRange()).size(), std::size_t(1000));
    trace.updateData();
    QVERIFY(data.dirtyRange().isEmpty());

    const std::vector<float> samples(100, 0.5F);
    trace.append(samples);
    const TracePoint *memory = data.array().data();
    const std::vector<TracePoint> before = data.array();
    trace.updateData();
    QCOMPARE(data.array().data(), memory);

    const std::set<int> marked = takeIndices(data.dirtyRange());
    QVERIFY(marked.size() < 120);
    for (int i = 0; i < 1000; ++i) {
        const auto index = static_cast<std::size_t>(i);
        QVERIFY2(data.array()[index] == before[index] || marked.count(i) == 1,
                qPrintable(QString::number(i)));
        if (i < 100) {
            QCOMPARE(data.array()[index],
                    (TracePoint{.x = static_cast<float>(i), .y = 0.5F, .opacity = 1.0F}));
        } else {
            QCOMPARE(data.array()[index].opacity, 0.0F);
        }
    }
    // The line ends at the newest point.
    QCOMPARE(data.array()[100].x, 99.0F);
    QCOMPARE(data.array()[100].y, 0.5F);
}

void tst_DocSnippets::sweepWraps()
{
    SweepTrace trace(50);
    std::vector<float> samples(70);
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = static_cast<float>(i) / 100.0F;
    trace.append(samples);
    trace.updateData();
    const auto &points = trace.traceData()->array();
    for (std::size_t i = 0; i < 20; ++i)
        QCOMPARE(points[i].y, static_cast<float>(50 + i) / 100.0F);
    QCOMPARE(points[20].opacity, 0.0F);
    QCOMPARE(points[49].y, 0.49F);
    QCOMPARE(points[49].opacity, 1.0F);
}

void tst_DocSnippets::precisionOfFloat()
{
    // 2026 in seconds and in milliseconds since 1970: the steps that the guide names.
    QCOMPARE(std::nextafter(1767225600.0F, 2e9F) - 1767225600.0F, 128.0F);
    QCOMPARE(std::nextafter(1767225600000.0F, 2e12F) - 1767225600000.0F, 131072.0F);

    QCOMPARE(std::nextafter(1000.0F, 2e3F) - 1000.0F, 0.00006103515625F);
    QCOMPARE(std::nextafter(1e6F, 2e6F) - 1e6F, 0.0625F);
    QCOMPARE(std::nextafter(1.0F, 2.0F) - 1.0F, std::ldexp(1.0F, -23)); // 1.2e-7

    // A number may be wrong by half a step, which is at most 2^-24 of it. A thousand times the range
    // over a thousand pixels makes that 0.06 pixels.
    const double reach = 1000.0; // the range has the length 1
    double worst = 0.0;
    for (int i = 0; i <= 1000; ++i) {
        const double x = reach - i / 1000.0 * 0.999;
        worst = std::max(worst, std::abs(static_cast<double>(static_cast<float>(x)) - x) * 1000.0);
    }
    QVERIFY(worst > 0.005 && worst <= 1e6 * std::ldexp(1.0, -24));
    QVERIFY(1e6 * std::ldexp(1.0, -24) < 0.06);
}

void tst_DocSnippets::epochTrace()
{
    const double start = 1767225600.0;
    EpochTrace trace;
    std::vector<EpochTrace::Sample> samples;
    samples.reserve(100);
    for (int i = 0; i < 100; ++i)
        samples.push_back({start + i * 0.001, i * 1.0});
    trace.domain()->setRangeXY(start + 0.02, start + 0.08, 0.0, 100.0);
    trace.setSamples(samples);
    trace.updateData();

    const TraceData &data = *trace.traceData();
    // As they stand all samples of a minute are one number.
    QCOMPARE(static_cast<float>(samples.front().seconds),
            static_cast<float>(samples.back().seconds));
    for (std::size_t i = 0; i < samples.size(); ++i)
        QVERIFY(std::abs(data.array()[i].x - static_cast<double>(i) * 0.001) < 1e-6);
    QVERIFY(std::abs(data.viewPort().x - 0.02F) < 1e-6F);
    QVERIFY(std::abs(data.viewPort().width - 0.06F) < 1e-6F);
    // The tolerance of ranges at such numbers.
    QVERIFY(Span(start, start + 60.0) == Span(start + 0.001, start + 60.0));
    QVERIFY(!(Span(start, start + 60.0) == Span(start + 0.01, start + 60.0)));
}

void tst_DocSnippets::gaps_data()
{
    QTest::addColumn<QList<float>>("values");
    QTest::addColumn<QList<float>>("visibleAt"); // x of the visible vertices
    QTest::addColumn<QList<float>>("hiddenAt");

    QTest::newRow("none") << QList<float>{1, 2} << QList<float>{0, 1} << QList<float>{};
    QTest::newRow("one") << QList<float>{1, missing, 3} << QList<float>{0, 2} << QList<float>{0, 2};
    QTest::newRow("long") << QList<float>{1, 2, missing, missing, missing, 3}
                          << QList<float>{0, 1, 5} << QList<float>{1, 5};
    QTest::newRow("at the ends") << QList<float>{missing, 1, 2, missing} << QList<float>{1, 2}
                                 << QList<float>{2};
    QTest::newRow("nothing else") << QList<float>{missing, missing} << QList<float>{}
                                  << QList<float>{};
}

void tst_DocSnippets::gaps()
{
    QFETCH(QList<float>, values);
    QFETCH(QList<float>, visibleAt);
    QFETCH(QList<float>, hiddenAt);
    QList<float> visible;
    QList<float> hidden;
    for (const TracePoint &point : lineWithGaps({values.begin(), values.end()})) {
        QVERIFY(std::isfinite(point.x) && std::isfinite(point.y));
        QCOMPARE(point.y, values.at(static_cast<int>(point.x)));
        (point.opacity == 1.0F ? visible : hidden).append(point.x);
    }
    QCOMPARE(visible, visibleAt);
    QCOMPARE(hidden, hiddenAt);
}

void tst_DocSnippets::roundFormulas_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<double>("scale");
    QTest::addColumn<bool>("isMirrored");
    QTest::addColumn<QPointF>("pixelOfOne"); // a reflection of 1: no impedance at all
    QTest::addColumn<QPointF>("pixelOfJ");

    QTest::newRow("plain") << QSizeF(200, 200) << 1.0 << false << QPointF(200, 100)
                           << QPointF(100, 0);
    QTest::newRow("wide") << QSizeF(300, 200) << 1.0 << false << QPointF(250, 100)
                          << QPointF(150, 0);
    QTest::newRow("high, scale 2")
            << QSizeF(200, 400) << 2.0 << false << QPointF(150, 200) << QPointF(100, 150);
    QTest::newRow("mirrored") << QSizeF(200, 200) << 1.0 << true << QPointF(0, 100)
                              << QPointF(100, 0);
}

void tst_DocSnippets::roundFormulas()
{
    QFETCH(QSizeF, size);
    QFETCH(double, scale);
    QFETCH(bool, isMirrored);
    TraceDomain domain;
    domain.setSize(size);
    setUpSmithDomain(domain, scale, isMirrored);
    QTEST(pixelOf(1.0, domain), "pixelOfOne");
    QTEST(pixelOf({0.0, 1.0}, domain), "pixelOfJ");
    // There and back, all over the chart.
    for (int i = -4; i <= 4; ++i) {
        for (int j = -4; j <= 4; ++j) {
            const std::complex<double> value(i / 4.0 * scale, j / 4.0 * scale);
            QVERIFY(std::abs(reflectionAt(pixelOf(value, domain), domain) - value) < 1e-12);
        }
    }
    // Open, matched, short circuit, and 50 ohms in a row with as much reactance.
    QVERIFY(std::abs(reflection(1e12) - 1.0) < 1e-9);
    QCOMPARE(std::abs(reflection(50.0)), 0.0);
    QCOMPARE(reflection(0.0), std::complex<double>(-1.0));
    QVERIFY(std::abs(reflection({50.0, 50.0}) - std::complex<double>(0.2, 0.4)) < 1e-12);
}

//! [picture test]
void tst_DocSnippets::lineIsDrawn()
{
    SnippetDocument document(u"HitTesting.qml"_s);
    QVERIFY(document.isShown());
    showDiagonal(document);

    document.chart().updateTraces(); // not at the next tick, but now
    const QImage picture = document.view().grabWindow();
    for (const double share : {0.25, 0.5, 0.75}) {
        // A data value's place is computed here, not copied from an earlier picture.
        const QPoint pixel(
                qRound(share * picture.width()), qRound((1.0 - share) * picture.height()));
        QCOMPARE(picture.pixelColor(pixel), QColor(0x0b, 0x67, 0xa8));
        QCOMPARE(picture.pixelColor(pixel + QPoint(0, 10)), QColor(Qt::white));
    }
}
//! [picture test]

void tst_DocSnippets::labels()
{
    SnippetDocument document(u"AxisLabels.qml"_s);
    QVERIFY(document.isShown());
    showDiagonal(document);
    QVERIFY(!boundsOf(document.picture(), blue).isEmpty());

    const auto check = [&](const QStringList &expectedX, const QStringList &expectedY) {
        QStringList x;
        QStringList y;
        const Chart &chart = document.chart();
        for (QQuickItem *item : document.view().rootObject()->childItems()) {
            const QVariant text = item->property("text");
            if (!text.isValid())
                continue;
            if (item->y() > chart.y() + chart.height()) {
                // Where the value is.
                const Span range = document.trace().domain()->xRange();
                const double place = (text.toDouble() - range.min) / range.length();
                QVERIFY(std::abs(
                                item->x() + item->width() / 2.0 - chart.x() - place * chart.width())
                        < 0.01);
                x.append(text.toString());
            } else {
                y.append(text.toString());
            }
        }
        QCOMPARE(x, expectedX);
        QCOMPARE(y, expectedY);
    };
    check({u"0"_s, u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"6"_s, u"7"_s, u"8"_s, u"9"_s},
            {u"-1"_s, u"-0.6"_s, u"-0.2"_s, u"0.2"_s, u"0.6"_s, u"1"_s});
    // They follow a zoom.
    document.trace().domain()->zoomIn(Span(2.0, 3.0), Span(0.0, 1.0));
    check({u"2"_s, u"2.1"_s, u"2.2"_s, u"2.3"_s, u"2.4"_s, u"2.5"_s, u"2.6"_s, u"2.7"_s, u"2.8"_s,
                  u"2.9"_s},
            {u"0"_s, u"0.2"_s, u"0.4"_s, u"0.6"_s, u"0.8"_s, u"1"_s});
}

void tst_DocSnippets::logLabels()
{
    SnippetDocument document(u"LogAxis.qml"_s);
    QVERIFY(document.isShown());
    document.trace().domain()->setRangeX(0.0, 3.0);
    const Chart &chart = document.chart();
    QMap<QString, double> places; // in widths of the chart
    for (const QQuickItem *item : document.view().rootObject()->childItems()) {
        const QVariant text = item->property("text");
        if (text.isValid() && item->isVisible()) {
            places.insert(
                    text.toString(), (item->x() + item->width() / 2.0 - chart.x()) / chart.width());
        }
    }
    // None at the lower end, and none of 2 to 9 times a power of ten.
    QCOMPARE(places.keys(), (QStringList{u"10"_s, u"100"_s, u"1000"_s}));
    QVERIFY(std::abs(places.value(u"10"_s) - 1.0 / 3.0) < 1e-4);
    QVERIFY(std::abs(places.value(u"100"_s) - 2.0 / 3.0) < 1e-4);
    QVERIFY(std::abs(places.value(u"1000"_s) - 1.0) < 1e-4);
}

void tst_DocSnippets::zoom()
{
    SnippetDocument document(u"Zoom.qml"_s);
    QVERIFY(document.isShown());
    showDiagonal(document);
    QQuickView &view = document.view();
    const TraceDomain &domain = *document.trace().domain();
    const auto *band = document.find<ZoomDelegate>("band");
    QVERIFY(!band->isVisible());

    QTest::mousePress(&view, Qt::LeftButton, {}, {160, 90});
    QTest::mouseMove(&view, {400, 200});
    QVERIFY(band->isVisible());
    QTest::mouseMove(&view, {480, 270});
    QTest::mouseRelease(&view, Qt::LeftButton, {}, {480, 270});
    QVERIFY(!band->isVisible());
    QVERIFY(document.chart().isZoomed());
    QVERIFY(std::abs(domain.minX() - 2.5) < 1e-9 && std::abs(domain.maxX() - 7.5) < 1e-9);
    QVERIFY(std::abs(domain.minY() + 0.5) < 1e-9 && std::abs(domain.maxY() - 0.5) < 1e-9);
    QCOMPARE(domain.baseXRange(), Span(0.0, 10.0));

    // Twice on the background.
    QTest::mouseDClick(&view, Qt::LeftButton, {}, {100, 40});
    QTRY_VERIFY(!document.chart().isZoomed());
    QCOMPARE(domain.xRange(), Span(0.0, 10.0));
}

void tst_DocSnippets::hits()
{
    SnippetDocument document(u"HitTesting.qml"_s);
    QVERIFY(document.isShown());
    showDiagonal(document);
    Chart &chart = document.chart();
    QQuickView &view = document.view();
    QVERIFY(!document.picture().isNull()); // the data are at rest now
    Gallery::HitTestRefresh refresh;
    refresh.setChart(&chart);
    refresh.setTrace(&document.trace());

    QTest::mouseMove(&view, {320, 180});
    QTRY_COMPARE(document.trace().lineWidth(), 4.0);
    QTest::mouseClick(&view, Qt::LeftButton, {}, {320, 180});
    QTRY_COMPARE(chart.property("message").toString(), u"current at 320, 180"_s);
    QTest::mouseClick(&view, Qt::LeftButton, {}, {320, 40});
    QTRY_COMPARE(chart.property("message").toString(), u"background"_s);

    // Without it the last image answers, until a change of the chart's size drops it.
    refresh.setChart(nullptr);
    QTest::mouseClick(&view, Qt::LeftButton, {}, {320, 180});
    QTRY_COMPARE(chart.property("message").toString(), u"current at 320, 180"_s);
    chart.setHeight(chart.height() + 2.0);
    QVERIFY(!document.picture().isNull());
    QTest::mouseClick(&view, Qt::LeftButton, {}, {320, 180});
    QTRY_COMPARE(chart.property("message").toString(), u"background"_s);
}

void tst_DocSnippets::sharpChart()
{
    SnippetDocument document(u"SharpChart.qml"_s);
    QVERIFY(document.isShown());
    QVERIFY(document.view().rootObject()->setProperty("ratio", 2.0));
    showDiagonal(document);
    // Twice as many pixels in the same place.
    const Chart &chart = document.chart();
    QCOMPARE(chart.size(), QSizeF(640.0, 400.0));
    QCOMPARE(chart.mapRectToScene(chart.boundingRect()), QRectF(0.0, 0.0, 320.0, 200.0));
    const QImage picture = document.picture();
    QCOMPARE(picture.size(), QSize(320, 200));
    const QRect line = boundsOf(picture, blue);
    QVERIFY(line.width() > 300 && line.height() > 190);

    QTest::mouseClick(&document.view(), Qt::LeftButton, {}, {80, 40});
    QTRY_COMPARE(
            document.view().rootObject()->property("clickPoint").toPointF(), QPointF(80.0, 40.0));
}

void tst_DocSnippets::roundPicture_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<bool>("isMirrored");

    QTest::newRow("plain") << 1.0 << false;
    QTest::newRow("scale 2") << 2.0 << false;
    QTest::newRow("mirrored, scale 1.5") << 1.5 << true;
}

void tst_DocSnippets::roundPicture()
{
    QFETCH(double, scale);
    QFETCH(bool, isMirrored);
    SnippetDocument document(u"RoundChart.qml"_s);
    QVERIFY(document.isShown());
    LineTrace &trace = document.trace();
    setUpSmithDomain(*trace.domain(), scale, isMirrored);

    // The impedances of the normalised resistance 1, whatever their reactance: the circle from the
    // middle to a reflection of 1, where all circles of the grid meet.
    std::vector<TracePoint> circle;
    for (int i = 0; i < 400; ++i) {
        const double reactance = 50.0 * std::tan(std::numbers::pi * ((i + 0.5) / 400.0 - 0.5));
        const std::complex<double> value = reflection({50.0, reactance});
        circle.push_back(
                {.x = static_cast<float>(value.real()), .y = static_cast<float>(value.imag())});
    }
    trace.setPoints(circle);
    const QImage picture = document.picture();
    const QPointF centre = pixelOf(0.5, *trace.domain());
    const double radius = 150.0 / scale / 2.0;
    const QPointF middle = QRectF(boundsOf(picture, red)).center();
    QVERIFY2(std::hypot(middle.x() - centre.x(), middle.y() - centre.y()) < 1.0,
            qPrintable(u"%1, %2"_s.arg(middle.x()).arg(middle.y())));
    for (int degrees = 30; degrees < 360; degrees += 60) {
        const double angle = degrees * std::numbers::pi / 180.0;
        const QPoint pixel(static_cast<int>(std::floor(centre.x() + radius * std::cos(angle))),
                static_cast<int>(std::floor(centre.y() + radius * std::sin(angle))));
        const QColor color = picture.pixelColor(pixel); // or a mixture with the background
        QVERIFY2(color.red() > color.green() + 30, qPrintable(color.name()));
    }

    // The grid's own circle lies under it: without the trace it is where the trace was.
    trace.setVisible(false);
    const QImage grid = document.picture();
    int covered = 0;
    for (int degrees = 30; degrees < 360; degrees += 60) {
        const double angle = degrees * std::numbers::pi / 180.0;
        for (const double beside : {-1.0, 0.0, 1.0}) {
            const QPoint pixel(
                    static_cast<int>(std::floor(centre.x() + (radius + beside) * std::cos(angle))),
                    static_cast<int>(std::floor(centre.y() + (radius + beside) * std::sin(angle))));
            if (qGray(grid.pixel(pixel)) < 200) {
                ++covered;
                break;
            }
        }
    }
    if (scale == 1.0)
        QCOMPARE(covered, 6);
}

void tst_DocSnippets::limits()
{
    SnippetDocument document(u"Limits.qml"_s);
    QVERIFY(document.isShown());
    const QImage picture = document.view().grabWindow();
    // The straight line's middle.
    const QColor line = picture.pixelColor(320, 160);
    QVERIFY(line.blue() > line.red() + 50);
    // Above the bent one the fill fades upwards.
    const QColor fill = picture.pixelColor(500, 100);
    QVERIFY2(fill.red() > fill.blue() + 5, qPrintable(fill.name()));
    QCOMPARE(picture.pixelColor(500, 350), QColor(Qt::white));
}

QTEST_MAIN(tst_DocSnippets)

#include "tst_docsnippets.moc"
