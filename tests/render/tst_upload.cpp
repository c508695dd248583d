// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "ExpectedPicture.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "PixelTrace.h"

#include <QtCore/QRegularExpression>
#include <QtGui/qopengl.h>
#include <QtTest/QTest>

#include <algorithm>

using namespace Charts;

using Bytes = QList<QPair<int, int>>;
using Ranges = QList<QPair<int, int>>;

/*! Which vertices go to the driver, and when. A vertex is 12 bytes. */
class tst_Upload : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void firstFrame();
    void unchangedFrame();
    void rangesOnly_data();
    void rangesOnly();
    void onlyTheRangesChangeOnTheScreen();
    void filledNothing();
    void invisible();

private:
    /*! Offset and size of each upload. */
    static Bytes uploads(const GlProbe::Log &log);
    /*! Points in a row, 20 pixels apart, at the same height. */
    static std::vector<QPointF> rowOf(int count, double height);

    static constexpr QSize size = {200, 100};
};

void tst_Upload::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_Upload::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

Bytes tst_Upload::uploads(const GlProbe::Log &log)
{
    Bytes bytes;
    for (const GlProbe::Call &call : log.calls("glBufferSubData"))
        bytes.append({call.integer(1), call.integer(2)});
    return bytes;
}

std::vector<QPointF> tst_Upload::rowOf(int count, double height)
{
    std::vector<QPointF> points;
    for (int i = 0; i < count; ++i)
        points.push_back({10.5 + 20.0 * i, height});
    return points;
}

void tst_Upload::firstFrame()
{
    ChartWindow window(size);
    PixelTrace trace(size, DrawType::Points, 5.0F, Qt::red);
    trace.setPoints(rowOf(8, 50.5));
    window.chart()->addTrace(&trace);
    const GlProbe::Log log;
    QVERIFY2(window.start(), window.error());

    QCOMPARE(uploads(log), Bytes({{0, 96}}));
    const auto allocations = log.calls("glBufferData");
    QCOMPARE(allocations.size(), std::size_t(1));
    QCOMPARE(allocations[0].integer(1), 96);
    QCOMPARE(allocations[0].integer(3), GL_DYNAMIC_DRAW);
    QVERIFY(trace.data.dirtyRange().isEmpty());

    // Two attributes in one vertex: two floats, then one.
    const auto pointers = log.calls("glVertexAttribPointer");
    const auto isSet = [&pointers](int location, int components) {
        return std::any_of(pointers.begin(), pointers.end(), [=](const GlProbe::Call &call) {
            return call.integer(0) == location && call.integer(1) == components
                   && call.integer(2) == GL_FLOAT && call.integer(3) == GL_FALSE
                   && call.integer(4) == 12;
        });
    };
    QVERIFY(isSet(0, 2));
    QVERIFY(isSet(1, 1));
}

void tst_Upload::unchangedFrame()
{
    ChartWindow window(size);
    PixelTrace trace(size, DrawType::Points, 5.0F, Qt::red);
    trace.setPoints(rowOf(8, 50.5));
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());
    while (trace.data.isDirty())
        QVERIFY2(window.frame(), window.error());

    const GlProbe::Totals before = GlProbe::totals();
    for (int i = 0; i < 5; ++i)
        QVERIFY2(window.frame(), window.error());
    QCOMPARE(trace.updateCount, 6);
    QCOMPARE(GlProbe::totals(), before);

    // A value that is set again changes nothing either.
    trace.data.setColor(Qt::red);
    trace.data.setWidth(5.0F);
    trace.data.setVisible(true);
    QVERIFY2(window.frame(), window.error());
    QCOMPARE(GlProbe::totals(), before);
}

void tst_Upload::rangesOnly_data()
{
    QTest::addColumn<Ranges>("ranges");
    QTest::addColumn<Bytes>("bytes");

    QTest::newRow("one point") << Ranges{{3, 1}} << Bytes{{36, 12}};
    QTest::newRow("first") << Ranges{{0, 1}} << Bytes{{0, 12}};
    QTest::newRow("last") << Ranges{{7, 1}} << Bytes{{84, 12}};
    QTest::newRow("some") << Ranges{{2, 4}} << Bytes{{24, 48}};
    QTest::newRow("all") << Ranges{{0, 8}} << Bytes{{0, 96}};
    QTest::newRow("none") << Ranges{{4, 0}} << Bytes{};
    QTest::newRow("beyond the end") << Ranges{{6, 3}} << Bytes{};
    QTest::newRow("two, the last first") << Ranges{{0, 2}, {5, 2}} << Bytes{{60, 24}, {0, 24}};
    QTest::newRow("three") << Ranges{{6, 1}, {0, 1}, {3, 1}} << Bytes{{36, 12}, {0, 12}, {72, 12}};
    QTest::newRow("touching") << Ranges{{0, 2}, {2, 3}} << Bytes{{0, 60}};
    QTest::newRow("the same twice") << Ranges{{2, 2}, {2, 2}} << Bytes{{24, 24}};
    // The third one joins the first; that this one now overlaps the second is not looked at.
    QTest::newRow("overlapping") << Ranges{{0, 2}, {4, 2}, {1, 4}} << Bytes{{48, 24}, {0, 60}};
}

void tst_Upload::rangesOnly()
{
    QFETCH(Ranges, ranges);
    QFETCH(Bytes, bytes);

    ChartWindow window(size);
    PixelTrace trace(size, DrawType::Points, 5.0F, Qt::red);
    trace.setPoints(rowOf(8, 50.5));
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());
    while (trace.data.isDirty())
        QVERIFY2(window.frame(), window.error());

    GlProbe::Log log;
    for (const auto &range : ranges)
        trace.data.dirtyRange().push({range.first, range.second});
    QVERIFY2(window.frame(), window.error());
    QCOMPARE(uploads(log), bytes);
    QCOMPARE(log.count("glBufferData"), 0);
    QCOMPARE(log.count("glDrawArrays"), bytes.isEmpty() ? 0 : 1);
    QVERIFY(trace.data.dirtyRange().isEmpty());
    // What is filled stays as it was.
    QVERIFY(trace.data.filledRange().contain(0) && trace.data.filledRange().contain(7));

    log.clear();
    QVERIFY2(window.frame(), window.error());
    QCOMPARE(uploads(log), Bytes());
    QCOMPARE(log.count("glDrawArrays"), 0);
}

void tst_Upload::onlyTheRangesChangeOnTheScreen()
{
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::Points, 5.0F, Qt::red);
    trace.setPoints(rowOf(8, 50.5));
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());

    // All points move, but only some are said to.
    trace.data.array() = PixelTrace::opaque(rowOf(8, 80.5));
    trace.data.dirtyRange().push({1, 2});
    trace.data.dirtyRange().push({6, 1});
    ExpectedPicture partly(size);
    for (int i = 0; i < 8; ++i)
        partly.addPoint({10.5 + 20.0 * i, i == 1 || i == 2 || i == 6 ? 80.5 : 50.5}, 5.0, Qt::red);
    QCOMPARE(partly.compare(window.picture()), QString());

    // Another attribute's change redraws, but uploads nothing.
    trace.data.setColor(Qt::blue);
    ExpectedPicture blue(size);
    for (int i = 0; i < 8; ++i)
        blue.addPoint({10.5 + 20.0 * i, i == 1 || i == 2 || i == 6 ? 80.5 : 50.5}, 5.0, Qt::blue);
    QCOMPARE(blue.compare(window.picture()), QString());

    trace.data.dirtyRange().push({0, 8});
    ExpectedPicture all(size);
    for (int i = 0; i < 8; ++i)
        all.addPoint({10.5 + 20.0 * i, 80.5}, 5.0, Qt::blue);
    QCOMPARE(all.compare(window.picture()), QString());
}

void tst_Upload::filledNothing()
{
    ChartWindow window(size);
    PixelTrace trace(size, DrawType::Points, 5.0F, Qt::red);
    trace.setPoints(rowOf(4, 50.5));
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());

    const GlProbe::Log log;
    trace.data.filledRange().pop(true);
    trace.data.dirtyRange().push({1, 2});
    QCOMPARE(ExpectedPicture(size).compare(window.picture()), QString());
    QCOMPARE(uploads(log), Bytes({{12, 24}}));
    QCOMPARE(log.count("glDrawArrays"), 0);
}

void tst_Upload::invisible()
{
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::Points, 5.0F, Qt::red);
    trace.setPoints(rowOf(4, 50.5));
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());

    trace.data.setVisible(false);
    QVERIFY2(window.frame(), window.error());
    const GlProbe::Log log;
    trace.data.array() = PixelTrace::opaque(rowOf(4, 80.5));
    trace.data.dirtyRange().push({0, 1});
    QVERIFY2(window.frame(), window.error());
    trace.data.dirtyRange().push({2, 1});
    QVERIFY2(window.frame(), window.error());
    QCOMPARE(uploads(log), Bytes());
    QVERIFY(trace.data.dirtyRange().contain(0) && trace.data.dirtyRange().contain(2));

    // All that has gathered meanwhile goes with the first frame that shows the trace.
    trace.data.setVisible(true);
    ExpectedPicture expected(size);
    for (int i = 0; i < 4; ++i)
        expected.addPoint({10.5 + 20.0 * i, i % 2 == 0 ? 80.5 : 50.5}, 5.0, Qt::red);
    QCOMPARE(expected.compare(window.picture()), QString());
    QCOMPARE(uploads(log), Bytes({{24, 12}, {0, 12}}));
}

QTEST_MAIN(tst_Upload)

#include "tst_upload.moc"
