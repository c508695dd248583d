// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "TestTrace.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLExtraFunctions>
#include <QtQuick/QSGRectangleNode>
#include <QtTest/QTest>

using Charts::DrawType;

/*! Guards the tools that the other tests rest on: a probe that sees nothing would let them pass. */
class tst_GlProbe : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();

    void sceneGraphDrawsOutsideOfSections();
    void seesTheChart();
    void seesObjectsComeAndGo();
    void seesErrors();
    void drawsOnAThreadOfItsOwn();
    void oneFrameAtATime();
};

void tst_GlProbe::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    (void)GlProbe::takeErrors();
}

void tst_GlProbe::sceneGraphDrawsOutsideOfSections()
{
    const GlProbe::Log log;
    ChartWindow window({200, 100}, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());

    // An item that makes the scene graph draw.
    class Rectangle : public QQuickItem
    {
    public:
        explicit Rectangle(QQuickItem *parent)
            : QQuickItem(parent)
        {
            setFlag(ItemHasContents);
        }

    protected:
        QSGNode *updatePaintNode(QSGNode *, UpdatePaintNodeData *) override
        {
            QSGRectangleNode *node = window()->createRectangleNode();
            node->setRect(boundingRect());
            node->setColor(Qt::red);
            return node;
        }
    };
    Rectangle rectangle(window.contentItem());
    rectangle.setSize(window.size());
    QVERIFY2(window.plainFrame(), window.error());

    int draws = 0;
    for (const GlProbe::Call &call : log.everything()) {
        QVERIFY2(!call.inSection, call.function.data());
        if (call.function == "glDrawArrays" || call.function == "glDrawElements")
            ++draws;
    }
    QVERIFY(draws > 0);
    QCOMPARE(GlProbe::takeErrors(), QStringList());
}

void tst_GlProbe::seesTheChart()
{
    ChartWindow window;
    TestTrace trace;
    trace.data.setDrawType(DrawType::LineStrip);
    trace.setPoints({{0.0F, 0.5F}, {0.5F, 0.5F}, {1.0F, 0.5F}});
    trace.data.setWidth(3.0F);
    window.chart()->addTrace(&trace);

    const GlProbe::Totals before = GlProbe::totals();
    const GlProbe::Log log;
    QVERIFY2(window.start(), window.error());
    const GlProbe::Totals after = GlProbe::totals();

    const auto draws = log.calls("glDrawArrays");
    QCOMPARE(draws.size(), std::size_t(1));
    QCOMPARE(draws[0].integer(0), GL_LINE_STRIP);
    QCOMPARE(draws[0].integer(1), 0);
    QCOMPARE(draws[0].integer(2), 3);
    QCOMPARE(log.calls("glLineWidth").at(0).argument(0), 3.0);
    QCOMPARE(log.calls("glViewport").at(0).integer(2), 200);
    QCOMPARE(log.calls("glBufferData").at(0).integer(1), 36);
    QCOMPARE(log.calls("glBufferSubData").at(0).integer(2), 36);

    QCOMPARE(after.drawCalls - before.drawCalls, 1);
    QCOMPARE(after.drawnVertices - before.drawnVertices, 3);
    QCOMPARE(after.allocations - before.allocations, 1);
    QCOMPARE(after.allocatedBytes - before.allocatedBytes, 36);
    QCOMPARE(after.uploads - before.uploads, 1);
    QCOMPARE(after.uploadedBytes - before.uploadedBytes, 36);
    QCOMPARE(after.clears - before.clears, log.count("glClear"));
    QCOMPARE(after.blits - before.blits, log.count("glBlitFramebuffer"));
    QVERIFY(after.blits > before.blits);
}

void tst_GlProbe::seesObjectsComeAndGo()
{
    QCOMPARE(GlProbe::liveObjects(), QStringList());
    const int madeBefore = GlProbe::objectsMade();
    {
        ChartWindow window;
        TestTrace trace;
        trace.setPoints({{0.5F, 0.5F}});
        window.chart()->addTrace(&trace);
        QVERIFY2(window.start(), window.error());

        const QStringList live = GlProbe::liveObjects();
        for (const auto *kind : {"buffer", "vertex array", "program", "framebuffer", "texture"})
            QVERIFY2(!live.filter(QLatin1StringView(kind)).isEmpty(), kind);
    }
    QVERIFY(GlProbe::objectsMade() > madeBefore);
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_GlProbe::seesErrors()
{
    ChartWindow window({200, 100}, ChartWindow::Content::Nothing);
    bool isPending = false;
    QObject::connect(
            &window, &QQuickWindow::beforeSynchronizing, &window,
            [&isPending] {
                auto *gl = QOpenGLContext::currentContext()->extraFunctions();
                if (std::exchange(isPending, false))
                    gl->glLineWidth(-1.0F);
            },
            Qt::DirectConnection);
    QVERIFY2(window.start(), window.error());
    QCOMPARE(GlProbe::takeErrors(), QStringList());

    isPending = true;
    QVERIFY2(window.plainFrame(), window.error());
    QCOMPARE(GlProbe::takeErrors(), QStringList{QStringLiteral("0x0501 at or before glLineWidth")});
    QVERIFY2(window.plainFrame(), window.error());
    QCOMPARE(GlProbe::takeErrors(), QStringList());
}

void tst_GlProbe::drawsOnAThreadOfItsOwn()
{
    ChartWindow window;
    QVERIFY2(window.start(), window.error());
    QCOMPARE(window.isThreaded(), qgetenv("QSG_RENDER_LOOP") != "basic");
}

void tst_GlProbe::oneFrameAtATime()
{
    ChartWindow window;
    TestTrace trace;
    trace.setPoints({{0.5F, 0.5F}});
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());
    for (int i = 1; i <= 20; ++i) {
        const GlProbe::Totals before = GlProbe::totals();
        const int synchronisations = window.synchronisations();
        trace.data.dirtyRange().push({0, 1});
        QVERIFY2(window.frame(), window.error());
        QCOMPARE(trace.updateCount, i);
        QCOMPARE(GlProbe::totals().drawCalls, before.drawCalls + 1);
        // Another window that passes over this one may cause frames, too; the chart has no part in
        // those.
        QVERIFY(window.synchronisations() > synchronisations);
    }
}

QTEST_MAIN(tst_GlProbe)

#include "tst_glprobe.moc"
