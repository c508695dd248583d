// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "GlProbe.h"
#include "Graphics.h"

#include <ChartsLibrary/PolarGrid.h>
#include <ChartsLibrary/SmithGrid.h>
#include <ChartsLibrary/XYGrid.h>

#include <QtCore/QRegularExpression>
#include <QtQuick/QSGSimpleRectNode>
#include <QtTest/QTest>

#include <memory>

using namespace Charts;

namespace {

/*! A rectangle whose colour changes from frame to frame. */
class Blinker : public QQuickItem
{
public:
    explicit Blinker(QQuickItem *parent)
        : QQuickItem(parent)
    {
        setFlag(ItemHasContents);
    }

    void blink()
    {
        m_isOn = !m_isOn;
        update();
    }

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *) override
    {
        auto *node = oldNode ? static_cast<QSGSimpleRectNode *>(oldNode) : new QSGSimpleRectNode;
        node->setRect(boundingRect());
        node->setColor(m_isOn ? Qt::red : Qt::green);
        return node;
    }

private:
    bool m_isOn = false;
};

/*! What the scene graph sends to OpenGL. */
struct Calls
{
    int draws = 0;
    int drawnVertices = 0;
    int uploadedBytes = 0;

    explicit Calls(const GlProbe::Log &log)
    {
        for (const GlProbe::Call &call : log.everything()) {
            if (call.function == "glDrawArrays") {
                ++draws;
                drawnVertices += call.integer(2);
            } else if (call.function == "glDrawElements") {
                ++draws;
                drawnVertices += call.integer(1);
            } else if (call.function == "glBufferData") {
                uploadedBytes += call.integer(1);
            } else if (call.function == "glBufferSubData" || call.function == "glMapBufferRange") {
                uploadedBytes += call.integer(2);
            }
        }
    }
};

using MakeGrid = std::unique_ptr<AbstractGrid> (*)();

template<typename Grid>
std::unique_ptr<AbstractGrid> make()
{
    return std::make_unique<Grid>();
}

} // namespace

/*! What grids cost: the calls that reach OpenGL. */
class tst_GridsCalls : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void unchanged_data();
    void unchanged();
    void fiftyLines();

private:
    static constexpr QSize size = {200, 150};
    static constexpr int bytesPerVertex = 20;
};

void tst_GridsCalls::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

// Grids send nothing themselves.
void tst_GridsCalls::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::totals(), GlProbe::Totals());
}

void tst_GridsCalls::unchanged_data()
{
    QTest::addColumn<MakeGrid>("makeGrid");
    QTest::newRow("cartesian") << MakeGrid(make<XYGrid>);
    QTest::newRow("polar") << MakeGrid(make<PolarGrid>);
    QTest::newRow("Smith") << MakeGrid(make<SmithGrid>);
}

// Another item keeps the window drawing. Its few vertices are uploaded, the grid's are not.
void tst_GridsCalls::unchanged()
{
    QFETCH(MakeGrid, makeGrid);

    ChartWindow window(size, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    const std::unique_ptr<AbstractGrid> grid = makeGrid();
    grid->setPosition({30.0, 5.0});
    grid->setSize({160.0, 140.0});
    Blinker blinker(window.contentItem());
    blinker.setSize({10.0, 10.0});

    GlProbe::Log log;
    const auto draw = [&](int frames) {
        log.clear();
        for (int i = 0; i < frames; ++i) {
            blinker.blink();
            if (!window.plainFrame())
                return false;
        }
        return true;
    };
    grid->setParentItem(window.contentItem());
    QVERIFY2(draw(1), window.error());
    QVERIFY(Calls(log).uploadedBytes > 8 * bytesPerVertex * 10);

    constexpr int frames = 5;
    for (int round = 0; round < 2; ++round) {
        QVERIFY2(draw(frames), window.error());
        const Calls calls(log);
        // The grid was drawn in each of them; the other item has not that many.
        QVERIFY(calls.drawnVertices > frames * 100);
        // Four vertices of a position and, at most, a colour and their indices, more than once.
        QVERIFY2(calls.uploadedBytes > 0, "the probe sees uploads");
        QVERIFY2(calls.uploadedBytes < frames * 300, QByteArray::number(calls.uploadedBytes));

        grid->setLineWidth(2.0 + round);
        QVERIFY2(draw(1), window.error());
        QVERIFY(Calls(log).uploadedBytes > 8 * bytesPerVertex * 10);
    }
}

// Each line has a node of its own. Qt merges nodes only where the indices of their geometry have 16
// bits, those of lines have 32; no line may cost more than one call all the same.
void tst_GridsCalls::fiftyLines()
{
    ChartWindow window(size, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    XYGrid grid(window.contentItem());
    grid.setSize({160.0, 140.0});
    grid.setYCount(38);
    const QRect rect(0, 0, 160, 140);
    const auto lines =
            static_cast<int>(grid.innerLines(rect).first.size() + grid.outerLines(rect).size());
    QCOMPARE(lines, 50);
    QVERIFY(grid.innerGridLinesColor() != grid.outerGridLinesColor());
    QVERIFY2(window.plainFrame(), window.error());

    GlProbe::Log log;
    constexpr int frames = 10;
    const int before = window.synchronisations();
    for (int i = 0; i < frames; ++i)
        QVERIFY2(window.plainFrame(), window.error());
    const Calls calls(log);
    QVERIFY(calls.drawnVertices >= frames * 8 * lines);
    // One frame that nobody asked for may have begun before.
    const int mostFrames = window.synchronisations() - before + 1;
    QVERIFY2(calls.draws <= lines * mostFrames, QByteArray::number(calls.draws));
}

QTEST_MAIN(tst_GridsCalls)

#include "tst_grids_calls.moc"
