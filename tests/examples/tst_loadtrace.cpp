// SPDX-License-Identifier: MIT
#include "DrawnLine.h"
#include "LoadTrace.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <tuple>

using Charts::TraceData;
using DrawnLine::Piece;
using Gallery::LoadTrace;
using Gallery::PlaybackClock;

class tst_LoadTrace : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void showsWhatWasAppended();
    void scrollsWithTheClock();
    void scrollsZoomed();
    void takesOverAttributes();
};

namespace {

/*! A trace whose time the test sets. */
struct Playback
{
    explicit Playback(int historyLength)
        : clock([this] { return now; })
        , trace(clock, historyLength, nullptr)
    {
    }

    [[nodiscard]] TraceData &data() { return *trace.traceData(); }

    double now = 0.0;
    PlaybackClock clock;
    LoadTrace trace;
};

} // namespace

void tst_LoadTrace::showsWhatWasAppended()
{
    Playback playback(3);
    QCOMPARE(playback.data().drawType(), Charts::DrawType::LineStrip);
    playback.trace.updateData();
    QVERIFY(DrawnLine::pieces(playback.data().array()).empty());

    // Handed over at any time, drawn from the next update on and not before.
    playback.trace.append(0.5, 100.0F);
    playback.trace.append(0.75, 0.0F);
    QVERIFY(DrawnLine::pieces(playback.data().array()).empty());
    playback.trace.updateData();
    QCOMPARE(DrawnLine::compare(
                     DrawnLine::sortedPieces(playback.data().array()), {{0.5, 100.0, 0.75, 0.0}}),
            QString());

    playback.trace.append(1.0, 25.0F);
    playback.trace.append(1.25, 50.0F);
    playback.trace.updateData();
    const std::vector<Piece> expected = {{0.75, 0.0, 1.0, 25.0}, {1.0, 25.0, 1.25, 50.0}};
    QCOMPARE(DrawnLine::compare(DrawnLine::sortedPieces(playback.data().array()), expected),
            QString());
    std::ignore = DrawnLine::takeIndices(playback.data().dirtyRange());

    // Each is appended once.
    playback.trace.updateData();
    QVERIFY(playback.data().dirtyRange().isEmpty());
    QCOMPARE(DrawnLine::compare(DrawnLine::sortedPieces(playback.data().array()), expected),
            QString());
}

void tst_LoadTrace::scrollsWithTheClock()
{
    Playback playback(10);
    playback.trace.updateData();
    const Charts::ViewPort first = playback.data().viewPort();
    // The last ten seconds, the present on the right.
    QCOMPARE(first.x, -10.0F);
    QCOMPARE(first.width, 10.0F);
    QCOMPARE(first.y, 0.0F);
    QCOMPARE(first.height, 100.0F);
    // Lines on the limits are drawn inside of them, ...
    QCOMPARE(playback.data().boundingY(), Charts::BoundingMethod::Clamp);
    // What grid and labels go by says the same, relative to the present.
    QCOMPARE(playback.trace.domain()->xRange(), Charts::Span(-10.0, 0.0));
    QCOMPARE(playback.trace.domain()->yRange(),
            Charts::Span(double(first.y), double(first.y) + double(first.height)));

    std::ignore = DrawnLine::takeIndices(playback.data().dirtyRange());
    playback.now = 24.5;
    playback.trace.updateData();
    QCOMPARE(playback.data().viewPort().x, 14.5F);
    QCOMPARE(playback.data().viewPort().y, first.y);
    QCOMPARE(playback.data().viewPort().width, first.width);
    QCOMPARE(playback.data().viewPort().height, first.height);
    // Nothing is uploaded for it.
    QVERIFY(playback.data().dirtyRange().isEmpty());

    playback.clock.setPaused(true);
    playback.data().clearDirty();
    playback.now = 30.0;
    playback.trace.updateData();
    QCOMPARE(playback.data().viewPort().x, 14.5F);
    QVERIFY(!playback.data().isDirty());
}

void tst_LoadTrace::scrollsZoomed()
{
    Playback playback(10);
    playback.now = 24.5;
    playback.trace.domain()->zoomIn({-4.0, -1.5}, {20.0, 60.0});
    playback.trace.updateData();
    const Charts::ViewPort zoomed = {.x = 20.5F, .y = 20.0F, .width = 2.5F, .height = 40.0F};
    QVERIFY(playback.data().viewPort() == zoomed);
    // ... and what a zoom leaves out is not drawn on its edge.
    QCOMPARE(playback.data().boundingY(), Charts::BoundingMethod::Unbounded);

    playback.trace.domain()->zoomReset();
    playback.trace.updateData();
    QCOMPARE(playback.data().viewPort().x, 14.5F);
    QCOMPARE(playback.data().viewPort().width, 10.0F);
}

void tst_LoadTrace::takesOverAttributes()
{
    Playback playback(10);
    playback.trace.setColor(QColor(1, 2, 3));
    playback.trace.setLineWidth(4.5);
    playback.trace.setVisible(false);
    playback.trace.updateData();
    QCOMPARE(playback.data().color(), QColor(1, 2, 3));
    QCOMPARE(playback.data().width(), 4.5F);
    QVERIFY(!playback.data().visible());
    playback.trace.setVisible(true);
    playback.trace.updateData();
    QVERIFY(playback.data().visible());
}

QTEST_GUILESS_MAIN(tst_LoadTrace)

#include "tst_loadtrace.moc"
