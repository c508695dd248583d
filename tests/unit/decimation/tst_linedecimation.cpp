// SPDX-License-Identifier: MIT
#include "ColumnWindow.h"
#include "TestSamples.h"

#include "decimation/LineDecimation.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

using namespace Charts::Decimation;
using TestSamples::Kind;

Q_DECLARE_METATYPE(TestSamples::Kind)

// Lines of few vertices, compared with all samples.
class tst_LineDecimation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void noColumns_data();
    void noColumns();
    void columnsShareEdges();
    void columns_data();
    void columns();
    void columnsOfRing();
    void gaps();
    void samples_data();
    void samples();
    void samplesAlone();
    void modesMeet();
    void exactFarFromZero_data();
    void exactFarFromZero();
};

namespace {

/*! Whether \a vertex stands at a position in samples, to a thousandth of a column. */
bool standsAt(const LineVertex &vertex, double position, const LineDecimation &line,
        const PixelColumns &columns)
{
    return std::abs(line.origin() + static_cast<double>(vertex.x) - position)
           < 0.001 * columns.width();
}

/*! What is wrong with the line through the columns of a window; empty if nothing is. The samples
    begin with the number \a begin. */
QString defectOf(const LineDecimation &line, const Window &window,
        const std::vector<float> &samples, std::int64_t begin = 0)
{
    const PixelColumns columns = window.columns();
    const std::vector<LineVertex> &vertices = line.vertices();
    const auto end = begin + static_cast<std::int64_t>(samples.size());
    std::int64_t first = begin;
    while (first < end && window.columnOf(first) < -1)
        ++first;
    // What is in the columns, with none on both sides of them.
    std::vector<decltype(TestSamples::find(samples, 0, 0))> expected(1);
    for (int column = -1; column <= window.count; ++column) {
        std::int64_t last = first;
        while (last < end && window.columnOf(last) == column)
            ++last;
        expected.push_back(TestSamples::find(samples, static_cast<std::size_t>(first - begin),
                static_cast<std::size_t>(last - begin)));
        first = last;
    }
    expected.emplace_back();

    std::size_t next = 0;
    for (std::size_t i = 1; i + 1 < expected.size(); ++i) {
        const int column = static_cast<int>(i) - 2;
        const QString where = QStringLiteral("column %1, vertex %2: ").arg(column).arg(next);
        if (!expected[i]) {
            if (next > 0 && !vertices[next - 1].isGap) {
                if (next >= vertices.size() || !vertices[next].isGap)
                    return where + QStringLiteral("no gap");
                ++next;
            }
            continue;
        }
        if (next + 2 > vertices.size())
            return where + QStringLiteral("missing");
        const LineVertex &left = vertices[next];
        const LineVertex &right = vertices[next + 1];
        next += 2;
        const bool isMinFirst = expected[i]->minIndex <= expected[i]->maxIndex;
        const float earlier = isMinFirst ? expected[i]->min : expected[i]->max;
        const float later = isMinFirst ? expected[i]->max : expected[i]->min;
        if (left.isGap || right.isGap || left.y != earlier || right.y != later)
            return where
                   + QStringLiteral("%1, %2 instead of %3, %4")
                             .arg(left.y)
                             .arg(right.y)
                             .arg(earlier)
                             .arg(later);
        // A quarter from the edges; up to them where there is no neighbour.
        const double width = static_cast<double>(window.length) / 16.0 / window.count;
        const double edge = static_cast<double>(window.first) / 16.0 + width * column;
        const double margin = expected[i - 1] || expected[i + 1] ? 0.25 * width : 0.0;
        if (!standsAt(left, edge + margin, line, columns)
                || !standsAt(right, edge + width - margin, line, columns))
            return where + QStringLiteral("stands at %1 and %2").arg(left.x).arg(right.x);
    }
    return next == vertices.size() ? QString() : QStringLiteral("too many vertices");
}

} // namespace

void tst_LineDecimation::noColumns_data()
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    QTest::addColumn<double>("first");
    QTest::addColumn<double>("last");
    QTest::addColumn<int>("count");
    QTest::newRow("no count") << 0.0 << 100.0 << 0;
    QTest::newRow("negative count") << 0.0 << 100.0 << -5;
    QTest::newRow("no length") << 5.0 << 5.0 << 10;
    QTest::newRow("reversed") << 100.0 << 0.0 << 10;
    QTest::newRow("NaN first") << nan << 100.0 << 10;
    QTest::newRow("NaN last") << 0.0 << nan << 10;
    QTest::newRow("infinite first") << -infinity << 100.0 << 10;
    QTest::newRow("infinite last") << 0.0 << infinity << 10;
    QTest::newRow("too long") << -1.7e308 << 1.7e308 << 10;
    QTest::newRow("too narrow") << 1e17 << 1e17 + 64.0 << 1000;
}

void tst_LineDecimation::noColumns()
{
    QFETCH(const double, first);
    QFETCH(const double, last);
    QFETCH(const int, count);
    const PixelColumns columns(first, last, count);
    QVERIFY(columns.isEmpty());
    QCOMPARE(columns, PixelColumns());
    const std::vector<float> samples(10, 1.0F);
    Line line(samples);
    line.fill(samples, PixelColumns(0.0, 10.0, 5));
    QVERIFY(!line.line.vertices().empty());
    QVERIFY(line.fill(samples, columns).empty());

    // And columns without samples, near and far.
    const PixelColumns usable(-1e300, 1e300, 10);
    QVERIFY(!usable.isEmpty());
    QVERIFY(Line({}).fill({}, PixelColumns(0.0, 10.0, 5)).empty());
    QVERIFY(Line({}).fill({}, usable).empty());
}

void tst_LineDecimation::columnsShareEdges()
{
    // Every sample has a column and no two have it, whatever the rounding.
    const PixelColumns columns(-3.7, 1234567.1, 777);
    std::size_t next = columns.firstSample(-1, 0, 2'000'000);
    QCOMPARE(next, std::size_t(0));
    for (int column = 0; column < 777; ++column) {
        const std::size_t first = columns.firstSample(column, 0, 2'000'000);
        QCOMPARE(first, next);
        next = columns.firstSample(column + 1, 0, 2'000'000);
        QVERIFY(next > first);
        QVERIFY(static_cast<double>(first) >= columns.edge(column));
        QVERIFY(static_cast<double>(next - 1) < columns.edge(column + 1));
    }
    QCOMPARE(next, std::size_t(1'234'568));
    // Cut to what there is.
    QCOMPARE(columns.firstSample(100, 500'000, 600'000), std::size_t(500'000));
    QCOMPARE(columns.firstSample(700, 500'000, 600'000), std::size_t(600'000));
    QCOMPARE(PixelColumns(-1e300, 1e300, 2).firstSample(0, 5, 9), std::size_t(5));
    QCOMPARE(PixelColumns(-1e300, 1e300, 2).firstSample(2, 5, 9), std::size_t(9));
}

void tst_LineDecimation::columns_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<qint64>("first"); // sixteenths
    QTest::addColumn<qint64>("length");
    QTest::addColumn<int>("count");

    const auto rows = [](const char *name, qint64 first, qint64 length, int count) {
        const std::vector<std::pair<const char *, Kind>> kinds = {{"noise", Kind::Noise},
                {"few values", Kind::FewValues}, {"constant", Kind::Constant},
                {"some missing", Kind::SomeMissing}, {"most missing", Kind::MostMissing},
                {"all missing", Kind::AllMissing}};
        for (const auto &[kindName, kind] : kinds)
            QTest::addRow("%s, %s", name, kindName) << kind << first << length << count;
    };
    rows("all, edges on samples", 0, 16 * 6400, 64);
    rows("two to a column", 16 * 1000, 16 * 200, 100);
    rows("a little more than two", 16 * 1000 + 3, 16 * 201, 100);
    rows("uneven columns", 16 * 77 + 5, 16 * 5000 + 2, 313);
    rows("beyond both ends", -16 * 3000 - 1, 16 * 14'000 + 3, 201);
    rows("before the beginning", -16 * 3000, 16 * 2000, 100);
    rows("behind the end", 16 * 7000, 16 * 2000, 100);
    rows("a single column", 16 * 10 + 1, 16 * 999, 1);
    rows("ends with the samples", 16 * 400, 16 * 6000, 1000);
}

void tst_LineDecimation::columns()
{
    QFETCH(const Kind, kind);
    QFETCH(const qint64, first);
    QFETCH(const qint64, length);
    QFETCH(const int, count);
    const Window window{first, length, count};
    const std::vector<float> samples = TestSamples::make(kind, 6400, 11);
    Line line(samples);
    QVERIFY(line.fill(samples, window.columns()).size() <= 2 * static_cast<std::size_t>(count) + 4);
    const QString defect = defectOf(line.line, window, samples);
    QVERIFY2(defect.isEmpty(), qPrintable(defect));
}

void tst_LineDecimation::columnsOfRing()
{
    // The samples 5000 to 7999 of 8000.
    const std::vector<float> samples = TestSamples::make(Kind::SomeMissing, 8000, 12);
    const std::vector<float> kept(samples.begin() + 5000, samples.end());
    std::vector<float> storage(kept.size());
    for (std::size_t i = 5000; i < samples.size(); ++i)
        storage[i % storage.size()] = samples[i];
    MinMaxPyramid pyramid(storage.size());
    pyramid.append(samples);
    for (const Window &window : {Window{16 * 5000, 16 * 3000, 250},
                 Window{16 * 4000, 16 * 5000, 99}, Window{16 * 5900 + 7, 16 * 1000, 300}}) {
        LineDecimation line;
        line.fill(pyramid, storage, window.columns());
        const QString defect = defectOf(line, window, kept, 5000);
        QVERIFY2(defect.isEmpty(), qPrintable(defect));
    }
    LineDecimation line;
    line.fill(pyramid, storage, PixelColumns(5500.0, 5520.0, 100));
    QCOMPARE(line.origin(), 5500.0);
    for (const LineVertex &vertex : line.vertices()) {
        const auto index = static_cast<std::size_t>(std::lround(5500.0 + vertex.x));
        QVERIFY(vertex.isGap || vertex.y == samples[index]);
    }
}

void tst_LineDecimation::gaps()
{
    // Ten to a column. One column of a single value between gaps, one gap within a column.
    std::vector<float> samples(200, TestSamples::nan);
    std::fill(samples.begin(), samples.begin() + 50, 1.0F);
    samples[75] = 5.0F;
    std::fill(samples.begin() + 100, samples.begin() + 130, 2.0F);
    std::fill(samples.begin() + 111, samples.begin() + 119, TestSamples::nan);
    Line line(samples);
    const std::vector<LineVertex> &vertices = line.fill(samples, PixelColumns(0.0, 200.0, 20));

    // Columns 0 to 4, a gap, column 7, a gap, columns 10 to 12, a gap.
    QCOMPARE(vertices.size(), std::size_t(10 + 1 + 2 + 1 + 6 + 1));
    QVERIFY(vertices[10].isGap);
    QCOMPARE(vertices[11], (LineVertex{70.0F, 5.0F, false}));
    QCOMPARE(vertices[12], (LineVertex{80.0F, 5.0F, false}));
    QVERIFY(vertices[13].isGap);
    QVERIFY(vertices[20].isGap);
    QCOMPARE(std::count_if(vertices.begin(), vertices.end(),
                     [](const LineVertex &vertex) { return vertex.isGap; }),
            3);
}

void tst_LineDecimation::samples_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<double>("first");
    QTest::addColumn<double>("last");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("firstSample");
    QTest::addColumn<int>("lastSample");
    // One sample outside on either side.
    QTest::newRow("on samples") << Kind::Noise << 100.0 << 110.0 << 1000 << 99 << 110;
    QTest::newRow("between samples") << Kind::Noise << 100.25 << 109.75 << 1000 << 100 << 110;
    QTest::newRow("within a sample") << Kind::Noise << 100.25 << 100.75 << 1000 << 100 << 101;
    QTest::newRow("at the beginning") << Kind::Noise << -50.0 << 5.5 << 300 << 0 << 6;
    QTest::newRow("at the end") << Kind::Noise << 990.5 << 1200.0 << 300 << 990 << 999;
    QTest::newRow("all") << Kind::Noise << -1.0 << 1000.0 << 501 << 0 << 999;
    QTest::newRow("fewer than two to a column") << Kind::Rising << 10.0 << 209.0 << 100 << 9 << 209;
    QTest::newRow("some missing") << Kind::SomeMissing << 300.5 << 500.5 << 400 << 300 << 501;
}

void tst_LineDecimation::samples()
{
    QFETCH(const Kind, kind);
    QFETCH(const double, first);
    QFETCH(const double, last);
    QFETCH(const int, count);
    QFETCH(const int, firstSample);
    QFETCH(const int, lastSample);
    const std::vector<float> samples = TestSamples::make(kind, 1000, 13);
    Line line(samples);
    const std::vector<LineVertex> &vertices = line.fill(samples, PixelColumns(first, last, count));
    QCOMPARE(line.line.origin(), std::floor(first));
    std::size_t next = 0;
    for (int i = firstSample; i <= lastSample; ++i) {
        const float value = samples[static_cast<std::size_t>(i)];
        if (std::isnan(value))
            continue;
        while (next < vertices.size() && vertices[next].isGap)
            ++next;
        QVERIFY(next < vertices.size());
        const float x = static_cast<float>(i - static_cast<int>(std::floor(first)));
        if (vertices[next].x != x) {
            // A dash of a sample that is alone.
            QVERIFY(std::abs(vertices[next].x - x) < (last - first) / count);
            QCOMPARE(vertices[next].y, value);
            QVERIFY(next == 0 || vertices[next - 1].isGap);
            ++next;
            QVERIFY(std::abs(vertices[next].x - x) < (last - first) / count);
        }
        QCOMPARE(vertices[next].y, value);
        ++next;
    }
    while (next < vertices.size())
        QVERIFY(vertices[next++].isGap);
    // A gap between two samples where, and only where, one is missing there.
    for (std::size_t i = 1; i < vertices.size(); ++i) {
        if (!vertices[i - 1].isGap && !vertices[i].isGap)
            QVERIFY(vertices[i].x - vertices[i - 1].x <= 1.0F);
    }
}

void tst_LineDecimation::samplesAlone()
{
    const std::vector<float> samples = {TestSamples::nan, 1.0F, TestSamples::nan, 2.0F, 3.0F,
            TestSamples::nan, TestSamples::nan, 4.0F};
    Line line(samples);
    // A column is a quarter of a sample wide.
    const std::vector<LineVertex> expected = {{0.875F, 1.0F, false}, {1.125F, 1.0F, false},
            {2.0F, 1.0F, true}, {3.0F, 2.0F, false}, {4.0F, 3.0F, false}, {5.0F, 3.0F, true},
            {6.875F, 4.0F, false}, {7.125F, 4.0F, false}};
    const std::vector<LineVertex> &vertices = line.fill(samples, PixelColumns(0.0, 8.0, 32));
    QCOMPARE(vertices.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
        QVERIFY2(vertices[i] == expected[i], qPrintable(QString::number(i)));
}

void tst_LineDecimation::modesMeet()
{
    const std::vector<float> samples = TestSamples::make(Kind::Noise, 1000, 14);
    Line line(samples);
    // 500 columns are at the limit: two samples each, and both are drawn.
    const std::vector<LineVertex> inColumns = line.fill(samples, PixelColumns(0.0, 1000.0, 500));
    const std::vector<LineVertex> asSamples = line.fill(samples, PixelColumns(0.0, 1000.0, 501));
    QCOMPARE(asSamples.size(), std::size_t(1000));
    for (std::size_t i = 0; i < 1000; ++i) {
        // The column mode ends with a gap behind the last sample.
        QCOMPARE(inColumns[i].y, asSamples[i].y);
        QVERIFY(std::abs(inColumns[i].x - asSamples[i].x) <= 0.5F);
    }
}

void tst_LineDecimation::exactFarFromZero_data()
{
    QTest::addColumn<double>("length");
    QTest::newRow("a few samples") << 5.5;
    QTest::newRow("a hundred") << 100.25;
    QTest::newRow("a thousand, in columns") << 1000.125;
}

void tst_LineDecimation::exactFarFromZero()
{
    QFETCH(const double, length);
    // Numbers that a float cannot tell apart, in a ring that has seen 30 million samples.
    constexpr std::size_t end = 30'000'000;
    constexpr std::size_t capacity = 4096;
    MinMaxPyramid pyramid(capacity);
    std::vector<float> storage(capacity);
    std::vector<float> piece(capacity);
    pyramid.append(std::vector<float>(end - capacity, 0.0F));
    for (std::size_t i = 0; i < capacity; ++i) {
        piece[i] = static_cast<float>((end - capacity + i) % 4096);
        storage[(end - capacity + i) % capacity] = piece[i];
    }
    pyramid.append(piece);
    const double first = 29'999'000.75 - (length > 900.0 ? 500.0 : 0.0);
    const PixelColumns columns(first, first + length, 300);
    LineDecimation line;
    line.fill(pyramid, storage, columns);
    QCOMPARE(line.origin(), std::floor(first));
    QVERIFY(line.vertices().size() > 5);
    for (const LineVertex &vertex : line.vertices()) {
        QVERIFY(!vertex.isGap);
        const double position = line.origin() + static_cast<double>(vertex.x);
        const auto sample = static_cast<std::size_t>(vertex.y); // its number, modulo 4096
        double distance = std::abs(std::fmod(position, 4096.0) - static_cast<double>(sample));
        distance = std::min(distance, 4096.0 - distance);
        if (columns.width() < LineDecimation::LeastSamplesPerColumn)
            QCOMPARE(distance, 0.0);
        else
            QVERIFY(distance < columns.width());
    }
}

QTEST_GUILESS_MAIN(tst_LineDecimation)

#include "tst_linedecimation.moc"
