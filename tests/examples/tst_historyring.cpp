// SPDX-License-Identifier: MIT
#include "DrawnLine.h"
#include "HistoryRing.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <algorithm>
#include <deque>
#include <tuple>

using Charts::TraceData;
using Charts::TracePoint;
using DrawnLine::Piece;
using Gallery::HistoryRing;

class tst_HistoryRing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void newRing_data();
    void newRing();
    void shows_data() { newRing_data(); }
    void shows();
    void breaks_data() { newRing_data(); }
    void breaks();
    void marksWhatItWrites_data() { newRing_data(); }
    void marksWhatItWrites();
    void cornersOfValues();
};

namespace {

/*! The n-th point of a series with unequal steps in x and jumps in y. All numbers are exact. */
TracePoint pointAt(int n)
{
    const auto x = static_cast<float>(n) + (n % 3 == 1 ? 5.25F : 5.0F);
    return {x, static_cast<float>((n * 37 + 11) % 101), 1.0F};
}

/*! The last points of a series as a history without a ring would keep them. */
class PlainHistory
{
public:
    explicit PlainHistory(int pointCount)
        : m_pointCount(static_cast<std::size_t>(pointCount))
    {
    }

    void append(const TracePoint &point)
    {
        m_points.push_back(point);
        if (m_points.size() > m_pointCount)
            m_points.pop_front();
    }

    [[nodiscard]] std::vector<Piece> lines() const
    {
        std::vector<Piece> lines;
        for (std::size_t i = 1; i < m_points.size(); ++i)
            lines.push_back({m_points[i - 1].x, m_points[i - 1].y, m_points[i].x, m_points[i].y});
        return lines;
    }

private:
    std::size_t m_pointCount;
    std::deque<TracePoint> m_points;
};

int countVisible(const std::vector<TracePoint> &vertices)
{
    return static_cast<int>(std::count_if(vertices.begin(), vertices.end(),
            [](const TracePoint &vertex) { return vertex.opacity > 0.0F; }));
}

} // namespace

void tst_HistoryRing::newRing_data()
{
    QTest::addColumn<int>("pointCount");
    QTest::addColumn<int>("appends");

    QTest::newRow("one point") << 1 << 30;
    QTest::newRow("two points") << 2 << 40;
    QTest::newRow("three points") << 3 << 60;
    QTest::newRow("ten points") << 10 << 200;
    QTest::newRow("ten seconds") << 120 << 5000;
    QTest::newRow("never full") << 4000 << 3000;
}

void tst_HistoryRing::newRing()
{
    QFETCH(int, pointCount);

    TraceData data;
    const HistoryRing ring(data, pointCount);
    // Nothing is to be seen, but the buffer is filled and drawn from now on.
    const auto size = static_cast<int>(data.array().size());
    QCOMPARE_GT(size, pointCount);
    QCOMPARE(countVisible(data.array()), 0);
    QCOMPARE(data.filledRange().size(), size);
    QVERIFY(!data.filledRange().isEmpty());
    QCOMPARE(data.dirtyRange().size(), size);
    QCOMPARE(static_cast<int>(DrawnLine::takeIndices(data.dirtyRange()).size()), size);
}

void tst_HistoryRing::shows()
{
    QFETCH(int, pointCount);
    QFETCH(int, appends);

    TraceData data;
    HistoryRing ring(data, pointCount);
    PlainHistory history(pointCount);
    const std::size_t size = data.array().size();
    for (int n = 0; n < appends; ++n) {
        const TracePoint point = pointAt(n);
        ring.append(point.x, point.y);
        history.append(point);

        QCOMPARE(data.array().size(), size);
        const QString difference =
                DrawnLine::compare(DrawnLine::sortedPieces(data.array()), history.lines());
        QVERIFY2(difference.isEmpty(),
                qPrintable(QStringLiteral("after %1: %2").arg(n).arg(difference)));
    }
}

void tst_HistoryRing::breaks()
{
    QFETCH(int, pointCount);
    QFETCH(int, appends);

    TraceData data;
    HistoryRing ring(data, pointCount);
    for (int n = 0; n < appends; ++n) {
        ring.append(pointAt(n).x, pointAt(n).y);

        // The last vertex repeats the first, so that the line goes on from the array's end.
        QCOMPARE(data.array().back(), data.array().front());
        const std::vector<TracePoint> turn(data.array().begin(), data.array().end() - 1);
        QCOMPARE(countVisible(turn), std::min(n + 1, pointCount));
        // Opacity is a mask: fully there or exactly 0.
        for (const TracePoint &vertex : turn)
            QVERIFY(vertex.opacity == 0.0F || vertex.opacity == 1.0F);
        if (n + 1 >= pointCount + 2)
            QCOMPARE(static_cast<int>(turn.size()) - countVisible(turn), 2);
    }
}

void tst_HistoryRing::marksWhatItWrites()
{
    QFETCH(int, pointCount);
    QFETCH(int, appends);

    TraceData data;
    HistoryRing ring(data, pointCount);
    // The first point may have to be told to the whole ring.
    ring.append(pointAt(0).x, pointAt(0).y);
    std::ignore = DrawnLine::takeIndices(data.dirtyRange());
    const auto last = static_cast<int>(data.array().size()) - 1;
    int appendsWithCopy = 0;
    for (int n = 1; n < appends; ++n) {
        const std::vector<TracePoint> before = data.array();
        ring.append(pointAt(n).x, pointAt(n).y);

        const std::set<int> changed = DrawnLine::differences(before, data.array());
        const std::set<int> dirty = DrawnLine::takeIndices(data.dirtyRange());
        QVERIFY(std::includes(dirty.begin(), dirty.end(), changed.begin(), changed.end()));
        // The point, the two vertices of the break, and the copy when the first vertex is one of
        // them.
        const bool withCopy = dirty.contains(last);
        QCOMPARE(withCopy, dirty.contains(0));
        QCOMPARE(static_cast<int>(dirty.size()), withCopy ? 4 : 3);
        appendsWithCopy += withCopy ? 1 : 0;
    }
    // Each round passes the first vertex three times.
    QCOMPARE_LE(appendsWithCopy, 3 * (appends / last + 1));
    QCOMPARE(data.filledRange().size(), last + 1);
    QVERIFY(!data.filledRange().isEmpty());
}

void tst_HistoryRing::cornersOfValues()
{
    TraceData data;
    HistoryRing ring(data, 3);
    PlainHistory history(3);
    // Several points at one place, and values that a comparison with 0 might take for unwritten.
    for (const TracePoint &point : std::vector<TracePoint>{{0, 0, 1}, {0, 0, 1}, {1, 0, 1},
                 {2, 0, 1}, {3, -1e30F, 1}, {4, 1e30F, 1}, {5, 0, 1}, {6, 100, 1}}) {
        ring.append(point.x, point.y);
        history.append(point);
    }
    const QString difference =
            DrawnLine::compare(DrawnLine::sortedPieces(data.array()), history.lines());
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

QTEST_GUILESS_MAIN(tst_HistoryRing)

#include "tst_historyring.moc"
