// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "LinesItem.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <algorithm>
#include <array>
#include <mutex>
#include <string_view>
#include <utility>

namespace {

/*! What the scene graph sends to OpenGL for one frame. Lines draw nothing themselves. */
struct FrameCalls
{
    int drawCalls = 0;
    int drawnVertices = 0;
    int programs = 0;
    int uploads = 0;
};

FrameCalls callsOf(const GlProbe::Log &log)
{
    constexpr std::array<std::string_view, 4> uploads = {
            "glBufferData", "glBufferSubData", "glMapBuffer", "glMapBufferRange"};
    FrameCalls calls;
    for (const GlProbe::Call &call : log.everything()) {
        if (call.function == "glDrawArrays") {
            ++calls.drawCalls;
            calls.drawnVertices += call.integer(2);
        } else if (call.function == "glDrawElements") {
            ++calls.drawCalls;
            calls.drawnVertices += call.integer(1);
        } else if (call.function == "glUseProgram" && call.integer(0) != 0) {
            ++calls.programs;
        } else if (std::find(uploads.begin(), uploads.end(), call.function) != uploads.end()) {
            ++calls.uploads;
        }
    }
    return calls;
}

/*! The calls of each frame by themselves, since the window may draw more frames than asked for. */
class FrameLog
{
public:
    explicit FrameLog(ChartWindow &window)
        : m_window(window)
    {
        // Both are emitted by the thread that renders; what is rendered is sent in between.
        QObject::connect(
                &window, &QQuickWindow::beforeRendering, &m_context, [this] { m_log.clear(); },
                Qt::DirectConnection);
        QObject::connect(
                &window, &QQuickWindow::frameSwapped, &m_context,
                [this] {
                    const std::lock_guard lock(m_mutex);
                    m_frames += callsOf(m_log);
                },
                Qt::DirectConnection);
    }

    ~FrameLog()
    {
        // Waits for a frame that is still being drawn.
        m_window.hide();
    }
    FrameLog(const FrameLog &) = delete;
    FrameLog &operator=(const FrameLog &) = delete;

    /*! Draws at least one frame; returns all that were drawn since the last call. Empty where it
        fails. */
    [[nodiscard]] QList<FrameCalls> draw()
    {
        if (!m_window.plainFrame())
            return {};
        const std::lock_guard lock(m_mutex);
        return std::exchange(m_frames, {});
    }

private:
    ChartWindow &m_window;
    QObject m_context;
    GlProbe::Log m_log;
    std::mutex m_mutex;
    QList<FrameCalls> m_frames;
};

bool hasUploads(const FrameCalls &calls)
{
    return calls.uploads > 0;
}

/*! Level lines, one below the other, in two colours by turns. */
QList<LinesItem::Line> levelLines(int count)
{
    QList<LinesItem::Line> lines;
    for (int i = 0; i < count; ++i) {
        const double y = 5.0 + 4.0 * i;
        lines += {{{10.0, y}, {190.0, y}}, 1.0F, i % 2 ? Qt::red : Qt::blue, true};
    }
    return lines;
}

} // namespace

/*! What lines cost: the calls that reach OpenGL. */
class tst_SmoothLineCalls : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void polyline_data();
    void polyline();
    void manyNodes();
    void unchangedNodesWriteNothing();
    void eachUpdateIsWrittenOnce();

private:
    static constexpr QSize size = {200, 100};
};

void tst_SmoothLineCalls::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_SmoothLineCalls::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::totals(), GlProbe::Totals());
}

void tst_SmoothLineCalls::polyline_data()
{
    QTest::addColumn<int>("points");
    QTest::addColumn<bool>("isSmooth");
    QTest::newRow("one line") << 2 << false;
    QTest::newRow("one line, smooth") << 2 << true;
    QTest::newRow("many lines") << 500 << false;
    QTest::newRow("many lines, smooth") << 500 << true;
}

// One strip, whatever the number of points.
void tst_SmoothLineCalls::polyline()
{
    QFETCH(int, points);
    QFETCH(bool, isSmooth);

    ChartWindow window(size, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    LinesItem item(window.contentItem());
    LinesItem::Line line;
    line.isSmooth = isSmooth;
    for (int i = 0; i < points; ++i)
        line.points += QPointF(200.0 * i / points, 50.0 + 30.0 * (i % 2));
    item.setLines({line});
    FrameLog log(window);
    const QList<FrameCalls> frames = log.draw();
    QVERIFY2(!frames.isEmpty(), window.error());
    QCOMPARE(frames.last().drawCalls, 1);
    QCOMPARE(frames.last().drawnVertices, (points - 1) * (isSmooth ? 8 : 4));
}

// Qt merges nodes only where the indices of their geometry have 16 bits; those of lines have 32, so
// each node is drawn on its own. Being of one material, they follow each other in one batch: the
// program is chosen once, and colours make no difference.
void tst_SmoothLineCalls::manyNodes()
{
    ChartWindow window(size, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    LinesItem item(window.contentItem());
    constexpr int count = 20;
    item.setLines(levelLines(count));
    FrameLog log(window);
    const QList<FrameCalls> frames = log.draw();
    QVERIFY2(!frames.isEmpty(), window.error());
    QCOMPARE(frames.last().drawCalls, count);
    QCOMPARE(frames.last().drawnVertices, 8 * count);
    QCOMPARE(frames.last().programs, 1);
}

void tst_SmoothLineCalls::unchangedNodesWriteNothing()
{
    ChartWindow window(size, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    LinesItem item(window.contentItem());
    item.setLines(levelLines(20));
    item.setArcs({{{{100.0, 50.0}, 30.0, 0.0, 6.0}, 2.0F, Qt::green, true}});
    FrameLog log(window);
    const QList<FrameCalls> firstFrames = log.draw();
    QVERIFY2(!firstFrames.isEmpty(), window.error());
    QVERIFY(std::any_of(firstFrames.begin(), firstFrames.end(), hasUploads));
    for (int i = 0; i < 3; ++i) {
        item.update();
        const QList<FrameCalls> frames = log.draw();
        QVERIFY2(!frames.isEmpty(), window.error());
        for (const FrameCalls &frame : frames) {
            QCOMPARE(frame.uploads, 0);
            QCOMPARE(frame.drawCalls, 21);
        }
    }
}

// Also where it is written anew as it was: the node has no way to tell.
void tst_SmoothLineCalls::eachUpdateIsWrittenOnce()
{
    ChartWindow window(size, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    LinesItem item(window.contentItem());
    FrameLog log(window);
    for (int i = 0; i < 3; ++i) {
        item.setLines(levelLines(1));
        const QList<FrameCalls> frames = log.draw();
        QVERIFY2(!frames.isEmpty(), window.error());
        QCOMPARE(std::count_if(frames.begin(), frames.end(), hasUploads), 1);
    }
}

QTEST_MAIN(tst_SmoothLineCalls)

#include "tst_smoothlinecalls.moc"
