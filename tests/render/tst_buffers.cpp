// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "ExpectedPicture.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "PixelTrace.h"

#include <QtCore/QRegularExpression>
#include <QtGui/qopengl.h>
#include <QtTest/QTest>

#include <limits>
#include <memory>

using namespace Charts;

using Bytes = QList<QPair<int, int>>;
using Ranges = QList<QPair<int, int>>;

/*! The vertex buffers behind the traces: made, resized, kept and deleted. */
class tst_Buffers : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void resized_data();
    void resized();
    void resizedWithFilledParts();
    void removedAndAddedAgain();
    void othersKeepTheirs();
    void carelessWriter_data();
    void carelessWriter();

private:
    /*! Offset and size of each upload. */
    static Bytes uploads(const GlProbe::Log &log);
    /*! Points in a row, 20 pixels apart, at the same height. */
    static std::vector<QPointF> rowOf(int count, double height);

    static constexpr QSize size = {200, 100};
};

void tst_Buffers::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_Buffers::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

Bytes tst_Buffers::uploads(const GlProbe::Log &log)
{
    Bytes bytes;
    for (const GlProbe::Call &call : log.calls("glBufferSubData"))
        bytes.append({call.integer(1), call.integer(2)});
    return bytes;
}

std::vector<QPointF> tst_Buffers::rowOf(int count, double height)
{
    std::vector<QPointF> points;
    for (int i = 0; i < count; ++i)
        points.push_back({10.5 + 20.0 * i, height});
    return points;
}

void tst_Buffers::resized_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");

    QTest::newRow("grown") << 4 << 9;
    QTest::newRow("shrunk") << 9 << 4;
    QTest::newRow("by one") << 8 << 9;
    QTest::newRow("from one") << 1 << 9;
    QTest::newRow("to one") << 9 << 1;
    QTest::newRow("from nothing") << 0 << 5;
    QTest::newRow("to nothing") << 5 << 0;
}

void tst_Buffers::resized()
{
    QFETCH(int, before);
    QFETCH(int, after);

    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::Points, 5.0F, Qt::red);
    trace.setPoints(rowOf(before, 50.5));
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());

    const GlProbe::Log log;
    trace.setPoints(rowOf(after, 80.5));
    // With no points left nothing says that something changed, except an attribute.
    trace.data.setColor(Qt::blue);
    ExpectedPicture expected(size);
    for (int i = 0; i < after; ++i)
        expected.addPoint({10.5 + 20.0 * i, 80.5}, 5.0, Qt::blue);
    QCOMPARE(expected.compare(window.picture()), QString());

    const auto allocations = log.calls("glBufferData");
    QCOMPARE(allocations.size(), std::size_t(1));
    QCOMPARE(allocations[0].integer(1), after * 12);
    QCOMPARE(uploads(log), after > 0 ? Bytes({{0, after * 12}}) : Bytes());
}

void tst_Buffers::resizedWithFilledParts()
{
    ChartWindow window(size);
    PixelTrace trace(size, DrawType::Points, 5.0F, Qt::red);
    trace.setPoints(rowOf(4, 50.5));
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());

    // What holds data is uploaded, whether it is marked changed or not, and nothing else.
    const GlProbe::Log log;
    trace.data.array() = PixelTrace::opaque(rowOf(8, 80.5));
    trace.data.dirtyRange().setSize(8);
    trace.data.filledRange().setSize(8);
    trace.data.filledRange().push({0, 2});
    trace.data.filledRange().push({5, 3});
    trace.data.dirtyRange().push({3, 1});
    QVERIFY2(window.frame(), window.error());
    QCOMPARE(uploads(log), Bytes({{60, 36}, {0, 24}}));
    QVERIFY(trace.data.dirtyRange().isEmpty());
    QVERIFY(trace.data.filledRange().contain(0));
    QVERIFY(!trace.data.filledRange().contain(3));
}

void tst_Buffers::removedAndAddedAgain()
{
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::Points, 5.0F, Qt::red);
    trace.setPoints(rowOf(4, 50.5));
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());
    const auto buffers = [] {
        return GlProbe::liveObjects().filter(QRegularExpression(QStringLiteral("^buffer"))).size();
    };
    QCOMPARE(buffers(), 1);

    window.chart()->removeTrace(&trace);
    QVERIFY2(window.frame(), window.error());
    QCOMPARE(buffers(), 0);

    GlProbe::Log log;
    window.chart()->addTrace(&trace);
    QVERIFY(trace.data.dirtyRange().isEmpty());
    ExpectedPicture expected(size);
    for (int i = 0; i < 4; ++i)
        expected.addPoint({10.5 + 20.0 * i, 50.5}, 5.0, Qt::red);
    QCOMPARE(expected.compare(window.picture()), QString());
    QCOMPARE(buffers(), 1);
    QCOMPARE(uploads(log), Bytes({{0, 48}}));

    // Removed and added between two frames, it never left.
    log.clear();
    window.chart()->removeTrace(&trace);
    window.chart()->addTrace(&trace);
    QVERIFY2(window.frame(), window.error());
    QCOMPARE(uploads(log), Bytes());
    QCOMPARE(log.count("glBufferData"), 0);
    QCOMPARE(log.count("glDrawArrays"), 1);
}

void tst_Buffers::othersKeepTheirs()
{
    ChartWindow window(size);
    std::vector<std::unique_ptr<PixelTrace>> traces;
    for (int i = 0; i < 4; ++i) {
        traces.push_back(std::make_unique<PixelTrace>(size, DrawType::Points, 5.0F, Qt::red));
        traces.back()->setPoints(rowOf(4 + i, 20.5 + 10.0 * i));
    }
    for (std::size_t i = 0; i < 3; ++i)
        window.chart()->addTrace(traces[i].get());
    QVERIFY2(window.start(), window.error());

    const GlProbe::Log log;
    window.chart()->removeTrace(traces[1].get());
    window.chart()->addTrace(traces[3].get());
    QVERIFY2(window.frame(), window.error());
    QCOMPARE(uploads(log), Bytes({{0, 84}}));
    QCOMPARE(log.count("glBufferData"), 1);
    QCOMPARE(log.count("glGenBuffers"), 1);
    QCOMPARE(log.count("glDeleteBuffers"), 1);
    QCOMPARE(log.count("glDrawArrays"), 3);
}

void tst_Buffers::carelessWriter_data()
{
    QTest::addColumn<int>("points");
    QTest::addColumn<int>("rangeSize");
    QTest::addColumn<Ranges>("ranges");

    QTest::newRow("ranges beyond the array") << 4 << 100 << Ranges{{0, 100}};
    QTest::newRow("a range outside of the array") << 4 << 100 << Ranges{{50, 10}};
    QTest::newRow("an empty array") << 0 << 100 << Ranges{{0, 100}};
    QTest::newRow("a negative start") << 4 << 4 << Ranges{{-2, 4}};
    QTest::newRow("a negative length") << 4 << 4 << Ranges{{3, -2}};
    QTest::newRow("the largest size")
            << 4 << std::numeric_limits<int>::max() << Ranges{{0, std::numeric_limits<int>::max()}};
}

void tst_Buffers::carelessWriter()
{
    QFETCH(int, points);
    QFETCH(int, rangeSize);
    QFETCH(Ranges, ranges);

    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::Points, 5.0F, Qt::red);
    trace.data.array() = PixelTrace::opaque(rowOf(points, 50.5));
    trace.data.dirtyRange().setSize(rangeSize);
    trace.data.filledRange().setSize(rangeSize);
    for (const auto &range : ranges) {
        trace.data.dirtyRange().push({range.first, range.second});
        trace.data.filledRange().push({range.first, range.second});
    }
    window.chart()->addTrace(&trace);
    // It need not be drawn well, but nothing is read or written that is not there.
    const GlProbe::Log log;
    QVERIFY2(window.start(), window.error());
    for (const auto &bytes : uploads(log)) {
        QVERIFY(bytes.first >= 0);
        QVERIFY(bytes.first + bytes.second <= points * 12);
    }
    for (const GlProbe::Call &call : log.calls("glDrawArrays"))
        QVERIFY(call.integer(1) + call.integer(2) <= points);

    trace.setPoints(rowOf(5, 80.5));
    ExpectedPicture expected(size);
    for (int i = 0; i < 5; ++i)
        expected.addPoint({10.5 + 20.0 * i, 80.5}, 5.0, Qt::red);
    QCOMPARE(expected.compare(window.picture()), QString());
}

QTEST_MAIN(tst_Buffers)

#include "tst_buffers.moc"
