// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "MouseInput.h"
#include "MouseLog.h"
#include "PixelTrace.h"

#include <ChartsLibrary/AbstractRenderNode.h>
#include <ChartsLibrary/ChartNode.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QTimer>
#include <QtTest/QTest>

#include <memory>
#include <utility>
#include <vector>

using namespace Charts;
using namespace Qt::StringLiterals;

namespace {

/*! A chart whose renderer is asked about events that the chart's own handlers never queue. */
class AskingChart : public Chart
{
public:
    using Chart::Chart;

    std::vector<std::unique_ptr<QMouseEvent>> events;

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override
    {
        if (const auto *node = static_cast<ChartNode *>(oldNode))
            node->renderNode()->pushMouseEvents(std::move(events));
        return Chart::updatePaintNode(oldNode, data);
    }
};

} // namespace

/*! What the chart makes of answers, whatever event they belong to. */
class tst_MouseSignalsAnswers : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void otherTypes();
    void flags_data();
    void flags();
    void roundedOnlyForTheSignal();

private:
    MouseInput &ask(QEvent::Type type, const QPointF &position);
    std::vector<MouseSignal> answers();

    std::unique_ptr<ChartWindow> m_window;
    std::unique_ptr<PixelTrace> m_trace;
    AskingChart *m_chart = nullptr; // owned by the window
    MouseLog m_log;
};

void tst_MouseSignalsAnswers::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    const QSize size(200, 100);
    m_window = std::make_unique<ChartWindow>(size, ChartWindow::Content::Nothing);
    m_chart = new AskingChart(m_window->contentItem());
    m_chart->setSize(size);
    m_chart->findChild<QTimer *>()->stop();
    m_trace = std::make_unique<PixelTrace>(size, DrawType::LineStrip, 5.0F, Qt::red);
    m_trace->setPoints(std::vector<QPointF>{{20.0, 50.5}, {180.0, 50.5}});
    m_trace->onUpdate = [this] { m_trace->data.dirtyRange().push({0, 2}); };
    m_chart->addTrace(m_trace.get());
    m_log.watch(*m_chart);
    m_log.watch(*m_trace, u"A"_s);
    QVERIFY2(m_window->start(), m_window->error());
}

void tst_MouseSignalsAnswers::cleanup()
{
    m_trace.reset();
    m_window.reset();
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

MouseInput &tst_MouseSignalsAnswers::ask(QEvent::Type type, const QPointF &position)
{
    auto event = std::make_unique<MouseInput>(type, position);
    MouseInput &asked = *event;
    m_chart->events.push_back(std::move(event));
    return asked;
}

std::vector<MouseSignal> tst_MouseSignalsAnswers::answers()
{
    for (int i = 0; i < 2; ++i) {
        m_chart->updateTraces();
        if (!m_window->plainFrame())
            qFatal("%s", m_window->error());
    }
    QCoreApplication::sendPostedEvents();
    return m_log.takeSignals();
}

void tst_MouseSignalsAnswers::otherTypes()
{
    for (const QEvent::Type type : {QEvent::None, QEvent::HoverMove, QEvent::NonClientAreaMouseMove,
                 QEvent::NonClientAreaMouseButtonPress, QEvent::ContextMenu, QEvent::TabletPress,
                 QEvent::TouchBegin, QEvent::Wheel, QEvent::Enter, QEvent::Leave, QEvent::User})
        ask(type, {100.0, 50.0});
    // They do not keep others from being heard.
    ask(QEvent::MouseButtonPress, {100.0, 50.0});
    ask(QEvent::UngrabMouse, {100.0, 50.0});
    ask(QEvent::MouseButtonRelease, {100.0, 5.0});
    const auto logged = answers();
    QCOMPARE(logged.size(), 3U);
    QCOMPARE(logged[0].sender + logged[0].name, u"Apressed"_s);
    QCOMPARE(logged[1].sender + logged[1].name, u"chartreleased"_s);
    QCOMPARE(logged[2].sender + logged[2].name, u"chartclicked"_s);
}

void tst_MouseSignalsAnswers::flags_data()
{
    QTest::addColumn<QPointF>("position");
    QTest::newRow("on a trace") << QPointF(100.0, 50.0);
    QTest::newRow("beside") << QPointF(100.0, 5.0);
}

// An answer to a flagged press is one like any other: only as input is it ignored.
void tst_MouseSignalsAnswers::flags()
{
    QFETCH(QPointF, position);

    ask(QEvent::MouseButtonPress, position).setCreatedDoubleClick();
    ask(QEvent::MouseButtonRelease, position).setCreatedDoubleClick();
    ask(QEvent::MouseButtonDblClick, position).setCreatedDoubleClick();
    ask(QEvent::HoverEnter, position).setCreatedDoubleClick();
    const auto logged = answers();
    QVERIFY(logged.size() >= 5U);
    for (const MouseSignal &signal : logged)
        QCOMPARE(signal.flags, 1);
}

void tst_MouseSignalsAnswers::roundedOnlyForTheSignal()
{
    ask(QEvent::MouseButtonPress, {99.5, 49.5});
    ask(QEvent::MouseButtonPress, {-0.5, -1.5});
    ask(QEvent::HoverLeave, {100.499, 50.499});
    const auto logged = answers();
    QCOMPARE(logged.size(), 4U);
    QCOMPARE(logged[0].position, QPointF(100.0, 50.0));
    QCOMPARE(logged[0].sender, u"A"_s);
    QCOMPARE(logged[1].position, QPointF(-1.0, -2.0));
    QCOMPARE(logged[1].sender, u"chart"_s);
    QCOMPARE(logged[2].position, QPointF(100.0, 50.0));
    QCOMPARE(logged[2].sender, u"A"_s);
    QCOMPARE(logged[3].sender, u"chart"_s);
}

QTEST_MAIN(tst_MouseSignalsAnswers)

#include "tst_mousesignals_answers.moc"
