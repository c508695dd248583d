// SPDX-License-Identifier: MIT
#include "DrawnLine.h"
#include "LargeTrace.h"
#include "Recording.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>
#include <memory>
#include <set>
#include <vector>

using namespace Charts;

/*! The trace of the gallery's page of ten million samples. */
class tst_LargeTrace : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void nothingToShow();
    void twoVerticesPerColumn_data();
    void twoVerticesPerColumn();
    void pushesNothingAtRest();
    void pushesWhatChanged_data();
    void pushesWhatChanged();
    void pushesNothingForOtherHeights();
    void hiddenIsNotFilled();
    void exactAtEveryZoom_data();
    void exactAtEveryZoom();
    void tellsWhatItDid();
};

namespace {

constexpr float visibleFrom = 0.1F;

/*! A sample of every value once, so that it is known from its value. */
float valueOf(std::size_t index)
{
    return static_cast<float>(index * 7919 % 100'003);
}

struct TraceOnScreen
{
    explicit TraceOnScreen(std::size_t count, std::size_t capacity = 1'000'000)
        : recording(std::make_shared<Gallery::Recording>(capacity))
        , trace(nullptr)
    {
        append(count);
        trace.domain()->setSize({500.0, 300.0});
        trace.domain()->setRangeXY(0.0, static_cast<double>(count), 0.0, 100'003.0);
        trace.setRecording(recording);
    }
    void append(std::size_t count)
    {
        std::vector<float> samples(count);
        for (std::size_t i = 0; i < count; ++i)
            samples[i] = valueOf(recording->end() + i);
        recording->append(samples);
    }
    /*! As one frame does it: update, upload, draw. The indices that were uploaded. */
    std::set<int> frame()
    {
        trace.updateData();
        TraceData &data = *trace.traceData();
        isRedrawn = !data.dirtyRange().isEmpty() || data.isDirty();
        data.clearDirty();
        return DrawnLine::takeIndices(data.dirtyRange());
    }

    std::shared_ptr<Gallery::Recording> recording;
    Gallery::LargeTrace trace;
    bool isRedrawn = false;
};

} // namespace

void tst_LargeTrace::nothingToShow()
{
    Gallery::LargeTrace trace(nullptr);
    trace.updateData();
    QVERIFY(trace.traceData()->array().empty());
    QVERIFY(trace.traceData()->filledRange().isEmpty());

    // Nor beside the samples, or without a range.
    TraceOnScreen screen(1000);
    QVERIFY(!screen.frame().empty());
    screen.trace.domain()->setRangeX(5000.0, 90'000.0);
    screen.frame();
    QVERIFY(DrawnLine::pieces(screen.trace.traceData()->array()).empty());
    screen.trace.domain()->setRangeX(10.0, 10.0);
    screen.frame();
    QVERIFY(screen.trace.traceData()->array().empty());
}

void tst_LargeTrace::twoVerticesPerColumn_data()
{
    QTest::addColumn<double>("first");
    QTest::addColumn<double>("last");
    QTest::newRow("everything") << 0.0 << 900'000.0;
    QTest::newRow("a part") << 333'333.3 << 444'444.4;
    QTest::newRow("few") << 600'000.0 << 601'111.0;
    QTest::newRow("all of them drawn") << 600'000.0 << 600'990.0;
    QTest::newRow("a dozen") << 600'000.2 << 600'012.0;
}

void tst_LargeTrace::twoVerticesPerColumn()
{
    QFETCH(const double, first);
    QFETCH(const double, last);
    TraceOnScreen screen(900'000);
    screen.trace.domain()->setRangeX(first, last);
    const std::set<int> uploaded = screen.frame();
    const TraceData &data = *screen.trace.traceData();
    const std::vector<TracePoint> &array = data.array();
    QCOMPARE(uploaded.size(), array.size());
    QCOMPARE(data.filledRange().size(), static_cast<int>(array.size()));
    QCOMPARE(data.dirtyRange().size(), static_cast<int>(array.size()));
    QVERIFY(!data.filledRange().isEmpty());
    QCOMPARE(data.drawType(), DrawType::LineStrip);
    QVERIFY(array.size() <= 2 * 500 + 4);

    // In each column the range of its samples, of all of them and of no others.
    const double pixel = (last - first) / 500.0;
    std::vector<float> lowest(500, 1e9F);
    std::vector<float> highest(500, -1e9F);
    for (const TracePoint &point : array) {
        const double column =
                (static_cast<double>(point.x) - static_cast<double>(data.viewPort().x))
                / static_cast<double>(data.viewPort().width) * 500.0;
        if (point.opacity < visibleFrom || column < -1e-3 || column >= 500.0)
            continue;
        const auto c = static_cast<std::size_t>(column + 1e-3);
        lowest[c] = std::min(lowest[c], point.y);
        highest[c] = std::max(highest[c], point.y);
    }
    int differences = 0;
    for (std::size_t c = 0; c < 500; ++c) {
        float low = 1e9F;
        float high = -1e9F;
        const double edge = first + static_cast<double>(c) * pixel;
        for (double i = std::ceil(edge); i < edge + pixel; ++i) {
            low = std::min(low, valueOf(static_cast<std::size_t>(i)));
            high = std::max(high, valueOf(static_cast<std::size_t>(i)));
        }
        differences += low != lowest[c] || high != highest[c] ? 1 : 0;
    }
    // Where single samples stand on an edge they may be counted to either side.
    QVERIFY2(differences <= (pixel < 2.0 ? 4 : 0), qPrintable(QString::number(differences)));
}

void tst_LargeTrace::pushesNothingAtRest()
{
    TraceOnScreen screen(100'000);
    QVERIFY(!screen.frame().empty());
    QVERIFY(screen.isRedrawn);
    for (int i = 0; i < 3; ++i) {
        QVERIFY(screen.frame().empty());
        QVERIFY(!screen.isRedrawn);
    }
    // The same ranges set again, and the same size.
    screen.trace.domain()->setRangeXY(0.0, 100'000.0, 0.0, 100'003.0);
    screen.trace.domain()->setSize({500.0, 300.0});
    screen.append(0);
    QVERIFY(screen.frame().empty());
    QVERIFY(!screen.isRedrawn);
}

void tst_LargeTrace::pushesWhatChanged_data()
{
    QTest::addColumn<double>("last");
    QTest::addColumn<double>("width");
    QTest::addColumn<int>("appended");
    QTest::addColumn<int>("most"); // vertices
    // A column has 400 samples: only those change into which new ones fall.
    QTest::newRow("a sample") << 200'000.0 << 500.0 << 1 << 3;
    QTest::newRow("some samples") << 200'000.0 << 500.0 << 1000 << 10;
    QTest::newRow("a quarter") << 200'000.0 << 500.0 << 50'000 << 254;
    QTest::newRow("another range") << 180'000.0 << 500.0 << 0 << 1004;
    QTest::newRow("a wider chart") << 200'000.0 << 500.6 << 0 << 1006;
    QTest::newRow("a higher chart") << 200'000.0 << 500.0 << 0 << 0;
}

void tst_LargeTrace::pushesWhatChanged()
{
    QFETCH(const double, last);
    QFETCH(const double, width);
    QFETCH(const int, appended);
    QFETCH(const int, most);
    TraceOnScreen screen(100'000);
    screen.trace.domain()->setRangeX(0.0, 200'000.0);
    screen.frame();
    const std::vector<TracePoint> before = screen.trace.traceData()->array();
    screen.append(static_cast<std::size_t>(appended));
    screen.trace.domain()->setRangeX(0.0, last);
    screen.trace.domain()->setSize({width, most == 0 ? 400.0 : 300.0});
    const std::set<int> uploaded = screen.frame();
    const std::vector<TracePoint> &after = screen.trace.traceData()->array();
    QVERIFY(!screen.trace.traceData()->filledRange().isEmpty());
    if (after.size() != before.size()) {
        QCOMPARE(uploaded.size(), after.size()); // the buffer is another one
        return;
    }
    const std::set<int> changed = DrawnLine::differences(before, after);
    QVERIFY(std::includes(uploaded.begin(), uploaded.end(), changed.begin(), changed.end()));
    QCOMPARE(changed.empty(), most == 0);
    QVERIFY2(static_cast<int>(uploaded.size()) <= most,
            qPrintable(QString::number(uploaded.size())));
}

void tst_LargeTrace::pushesNothingForOtherHeights()
{
    TraceOnScreen screen(100'000);
    screen.frame();
    screen.trace.domain()->setRangeY(1000.0, 2000.0);
    QVERIFY(screen.frame().empty());
    QVERIFY(screen.isRedrawn);
    QCOMPARE(screen.trace.traceData()->viewPort().y, 1000.0F);
    QCOMPARE(screen.trace.traceData()->viewPort().height, 1000.0F);
    screen.trace.setColor(Qt::red);
    screen.trace.setLineWidth(3.0);
    QVERIFY(screen.frame().empty());
    QVERIFY(screen.isRedrawn);
    QCOMPARE(screen.trace.traceData()->color(), QColor(Qt::red));
    QCOMPARE(screen.trace.traceData()->width(), 3.0F);
}

void tst_LargeTrace::hiddenIsNotFilled()
{
    TraceOnScreen screen(100'000);
    screen.trace.setVisible(false);
    QVERIFY(screen.frame().empty());
    QVERIFY(!screen.trace.traceData()->visible());
    screen.append(1000);
    QVERIFY(screen.frame().empty());
    screen.trace.setVisible(true);
    QVERIFY(screen.frame().size() > 900);
}

void tst_LargeTrace::exactAtEveryZoom_data()
{
    QTest::addColumn<double>("first");
    QTest::addColumn<double>("length");
    for (const double first : {0.0, 1'234'567.875, 9'999'000.25, 29'999'000.0625}) {
        for (const double length : {8.0, 99.5, 900.25}) {
            QTest::addRow("%.4f, %.2f", first, length) << first << length;
        }
    }
}

void tst_LargeTrace::exactAtEveryZoom()
{
    QFETCH(const double, first);
    QFETCH(const double, length);
    // The same value over and over up to the first visible sample: only its number matters.
    auto recording = std::make_shared<Gallery::Recording>(10'000);
    recording->append(std::vector<float>(static_cast<std::size_t>(first), 0.0F));
    std::vector<float> samples(1000);
    const std::size_t begin = recording->end();
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = static_cast<float>(i + 1);
    recording->append(samples);
    Gallery::LargeTrace trace(nullptr);
    trace.domain()->setSize({1000.0, 300.0});
    trace.domain()->setRangeXY(first, first + length, 0.0, 1000.0);
    trace.setRecording(recording);
    trace.updateData();

    // In pixels, with what the graphics card gets.
    const ViewPort viewPort = trace.traceData()->viewPort();
    int checked = 0;
    for (const TracePoint &point : trace.traceData()->array()) {
        if (point.y == 0.0F)
            continue;
        const double sample = static_cast<double>(begin) + static_cast<double>(point.y) - 1.0;
        const float share = (point.x - viewPort.x) / viewPort.width;
        QVERIFY(std::abs(static_cast<double>(share) * 1000.0 - (sample - first) / length * 1000.0)
                < 0.001 * (1.0 + std::abs(static_cast<double>(share))));
        ++checked;
    }
    QVERIFY(checked >= static_cast<int>(length));
}

void tst_LargeTrace::tellsWhatItDid()
{
    TraceOnScreen screen(100'000);
    QSignalSpy filled(&screen.trace, &Gallery::LargeTrace::filled);
    screen.frame();
    QCOMPARE(filled.size(), 0); // not on that thread
    QCoreApplication::processEvents();
    QCOMPARE(filled.size(), 1);
    QCOMPARE(screen.trace.visibleSamples(), 100'000.0);
    QCOMPARE(
            screen.trace.vertexCount(), static_cast<int>(screen.trace.traceData()->array().size()));
    QVERIFY(screen.trace.fillTime() > 0.0);
    screen.frame();
    QCoreApplication::processEvents();
    QCOMPARE(filled.size(), 1);
    screen.trace.domain()->setRangeX(99'000.5, 200'000.0);
    screen.frame();
    QCoreApplication::processEvents();
    QCOMPARE(filled.size(), 2);
    QCOMPARE(screen.trace.visibleSamples(), 999.0);
}

QTEST_GUILESS_MAIN(tst_LargeTrace)

#include "tst_largetrace.moc"
