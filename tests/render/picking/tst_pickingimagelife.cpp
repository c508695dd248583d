// SPDX-License-Identifier: MIT
#include "GlProbe.h"
#include "Graphics.h"
#include "SelectionCosts.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <memory>

using namespace Charts;
using namespace Qt::StringLiterals;

/*! What becomes of the selection image when the images are made anew or the list of traces
    changes. */
class tst_PickingImageLife : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void resized();
    void resizedBeforeTheEvent();
    void antialiasingSwitched();
    void removedBeforeTheEvent();
    void nothingIsMade();

private:
    [[nodiscard]] Costs costsOf(int frames) { return m_costs->costsOf(frames); }
    [[nodiscard]] QStringList answers() { return m_costs->answers(); }

    static constexpr QPointF onLow = CostWindow::onLow;
    static constexpr QPointF onHigh = CostWindow::onHigh;
    static constexpr QPointF onNone = CostWindow::onNone;
    static constexpr Costs nothing = CostWindow::nothing;
    static constexpr Costs visualPass = CostWindow::visualPass;

    std::unique_ptr<CostWindow> m_costs;
    PointedWindow *m_window = nullptr;
    PixelTrace *m_low = nullptr;
};

void tst_PickingImageLife::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_costs = std::make_unique<CostWindow>();
    m_window = &m_costs->window;
    QVERIFY2(m_costs->start(), m_window->error());
    m_low = m_costs->low;
}

void tst_PickingImageLife::cleanup()
{
    m_costs.reset();
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_PickingImageLife::resized()
{
    QCOMPARE(m_window->hits({onLow}), QStringList({u"low"_s}));

    // Half the size, an event in the same frame: one pass over the new image.
    m_window->chart()->setSize({100.0, 50.0});
    const QList<QPointF> places = {{50.0, 40.0}, {50.0, 20.0}, {50.0, 2.0}};
    for (const QPointF &place : places)
        m_window->pressInChart(place);
    QCOMPARE(costsOf(1), Costs({.passes = 2, .selectionPasses = 1, .draws = 4, .reads = 3}));
    QCOMPARE(m_costs->log.calls("glViewport").back().integer(2), 100);
    QCOMPARE(m_costs->log.calls("glReadPixels").front().integer(1), 50 - 40);
    QCOMPARE(answers(), QStringList({u"low pressed"_s, u"high pressed"_s, u"chart pressed"_s}));

    // And back.
    m_window->chart()->setSize(CostWindow::size);
    QCOMPARE(m_window->hitsInOldImage({onLow, onHigh, onNone}),
            QStringList({u"low"_s, u"high"_s, u"chart"_s}));
}

void tst_PickingImageLife::resizedBeforeTheEvent()
{
    // A new image that nothing has been drawn into names nobody, until data change.
    QCOMPARE(m_window->hits({onLow}), QStringList({u"low"_s}));
    m_window->chart()->setSize({200.0, 101.0});
    QCOMPARE(costsOf(1), visualPass);
    m_window->pressInChart(onLow);
    QCOMPARE(costsOf(1), Costs({.reads = 1}));
    QCOMPARE(answers(), QStringList({u"chart pressed"_s}));
    QCOMPARE(m_window->hits({onLow}), QStringList({u"low"_s}));
}

void tst_PickingImageLife::antialiasingSwitched()
{
    // All images are made anew, but what they show is not out of date: a fresh selection image
    // waits for a change of data, and nobody is named before that.
    QCOMPARE(m_window->hits({onLow}), QStringList({u"low"_s}));
    for (const bool isAntialiased : {true, false}) {
        m_window->chart()->setAntialiasing(isAntialiased);
        m_window->pressInChart(onLow);
        QCOMPARE(costsOf(1), Costs({.passes = 1, .draws = 2, .reads = 1}));
        QCOMPARE(answers(), QStringList({u"chart pressed"_s}));
        QCOMPARE(m_window->hits({onLow}), QStringList({u"low"_s}));
    }

    // Where data have changed since the last one, it comes along.
    m_low->data.dirtyRange().push({0, 1});
    QCOMPARE(costsOf(1).selectionPasses, 0);
    m_window->chart()->setAntialiasing(true);
    m_window->pressInChart(onLow);
    QCOMPARE(costsOf(1), Costs({.passes = 2, .selectionPasses = 1, .draws = 4, .reads = 1}));
    QCOMPARE(answers(), QStringList({u"low pressed"_s}));
}

void tst_PickingImageLife::removedBeforeTheEvent()
{
    // The old image shows a trace that is no longer there; its place is nobody's.
    QCOMPARE(m_window->hits({onLow, onHigh}), QStringList({u"low"_s, u"high"_s}));
    m_window->chart()->removeTrace(m_low);
    QCOMPARE(costsOf(1), Costs({.passes = 1, .draws = 1}));
    m_window->pressInChart(onLow);
    m_window->pressInChart(onHigh);
    QCOMPARE(costsOf(1), Costs({.reads = 2}));
    QCOMPARE(answers(), QStringList({u"chart pressed"_s, u"high pressed"_s}));
}

void tst_PickingImageLife::nothingIsMade()
{
    // The image exists from the first frame on; events make no objects and leave none behind.
    const int made = GlProbe::objectsMade();
    const QStringList live = GlProbe::liveObjects();
    for (int i = 0; i < 10; ++i) {
        m_low->data.dirtyRange().push({0, 2});
        m_window->pressInChart(onLow);
        QVERIFY2(m_window->frame(), m_window->error());
    }
    QCOMPARE(GlProbe::objectsMade(), made);
    QCOMPARE(GlProbe::liveObjects(), live);
}

QTEST_MAIN(tst_PickingImageLife)

#include "tst_pickingimagelife.moc"
