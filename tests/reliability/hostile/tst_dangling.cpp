// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "ExpectedPicture.h"
#include "FixedPlace.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "MouseInput.h"
#include "MouseLog.h"
#include "PixelTrace.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <functional>
#include <limits>
#include <memory>

using namespace Charts;
using namespace Qt::StringLiterals;

using Ending = std::function<void(Chart &first, Chart &second, std::unique_ptr<PixelTrace> &trace)>;
Q_DECLARE_METATYPE(Ending)

/*! Traces that end while someone still knows their address. */
class tst_Dangling : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void destroyed_data();
    void destroyed();
    void notANumber();
    void hitBeforeItEnded();
    void endedByTheAnswerBefore();
    void endedByItsOwnAnswer();
    void inAnOldImage_data();
    void inAnOldImage();
    void hoveredBefore();
    void pressedBefore();
    void bufferOfTheOneBefore();

private:
    static void fill(PixelTrace &trace, double fromTop);
    static std::unique_ptr<PixelTrace> line(double fromTop, const QColor &color = Qt::red);
    void addNew(double fromTop);
    void send(QEvent::Type type, const QPointF &position);
    void move(const QPointF &position);
    QStringList answers();
    QString difference(const QList<std::pair<double, QColor>> &lines);

    static constexpr QSize size = {200, 100};
    // Where lines are, and positions on them. Each move has to go elsewhere.
    static constexpr QPointF high = {100.0, 30.0};
    static constexpr QPointF low = {101.0, 70.0};
    static constexpr QPointF none = {102.0, 50.0};

    FixedPlace<PixelTrace> m_place;
    std::unique_ptr<ChartWindow> m_window;
    std::unique_ptr<PixelTrace> m_other; // stays listed, so that events are queued; hits nothing
    std::unique_ptr<MouseLog> m_log;
    int m_made = 0;
};

void tst_Dangling::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_made = 0;
    m_log = std::make_unique<MouseLog>();
    m_window = std::make_unique<ChartWindow>(size);
    m_log->watch(*m_window->chart());
    m_other = line(90.0, Qt::green);
    m_window->chart()->addTrace(m_other.get());
    QVERIFY2(m_window->start(), m_window->error());
}

void tst_Dangling::cleanup()
{
    m_place.destroy();
    m_window.reset();
    m_other.reset();
    m_log.reset();
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_Dangling::fill(PixelTrace &trace, double fromTop)
{
    const double height = size.height() - fromTop + 0.5;
    trace.setPoints(std::vector<QPointF>{{20.0, height}, {180.0, height}});
}

std::unique_ptr<PixelTrace> tst_Dangling::line(double fromTop, const QColor &color)
{
    auto trace = std::make_unique<PixelTrace>(size, DrawType::LineStrip, 5.0F, color);
    fill(*trace, fromTop);
    return trace;
}

/*! Adds a trace at the one address that all of them have. It stands in the log as "1", "2", ... */
void tst_Dangling::addNew(double fromTop)
{
    PixelTrace &trace = m_place.make(size, DrawType::LineStrip, 5.0F, Qt::red);
    fill(trace, fromTop);
    m_log->watch(trace, QString::number(++m_made));
    m_window->chart()->addTrace(&trace);
}

void tst_Dangling::send(QEvent::Type type, const QPointF &position)
{
    MouseInput(type, position).sendTo(*m_window->chart());
}

void tst_Dangling::move(const QPointF &position)
{
    HoverInput(QEvent::HoverMove, position).sendTo(*m_window->chart());
}

QStringList tst_Dangling::answers()
{
    if (!m_window->answerEvents())
        return {QString::fromUtf8(m_window->error())};
    return m_log->take();
}

QString tst_Dangling::difference(const QList<std::pair<double, QColor>> &lines)
{
    ExpectedPicture expected(size);
    expected.setBlended(true);
    for (const auto &[fromTop, color] : lines) {
        const double height = size.height() - fromTop + 0.5;
        expected.addLine({20.0, height}, {180.0, height}, 5.0, color);
    }
    return expected.compare(m_window->picture());
}

void tst_Dangling::destroyed_data()
{
    QTest::addColumn<Ending>("ending");

    using Trace = std::unique_ptr<PixelTrace>;
    const auto row = [](const char *name, const Ending &ending) { QTest::newRow(name) << ending; };
    row("in one chart", [](Chart &first, Chart &, Trace &trace) {
        first.addTrace(trace.get());
        trace.reset();
    });
    row("listed twice", [](Chart &first, Chart &, Trace &trace) {
        first.addTrace(trace.get());
        first.addTrace(trace.get());
        trace.reset();
    });
    row("listed twice, removed once", [](Chart &first, Chart &, Trace &trace) {
        first.addTrace(trace.get());
        first.addTrace(trace.get());
        first.removeTrace(trace.get());
        trace.reset();
    });
    row("in two charts", [](Chart &first, Chart &second, Trace &trace) {
        first.addTrace(trace.get());
        second.addTrace(trace.get());
        trace.reset();
    });
    row("twice in two charts", [](Chart &first, Chart &second, Trace &trace) {
        for (Chart *chart : {&first, &second, &first, &second})
            chart->addTrace(trace.get());
        trace.reset();
    });
    row("in two charts, removed from the first", [](Chart &first, Chart &second, Trace &trace) {
        first.addTrace(trace.get());
        second.addTrace(trace.get());
        first.removeTrace(trace.get());
        trace.reset();
    });
    row("in two charts, removed from the second", [](Chart &first, Chart &second, Trace &trace) {
        first.addTrace(trace.get());
        second.addTrace(trace.get());
        second.removeTrace(trace.get());
        trace.reset();
    });
    row("removed and added again elsewhere", [](Chart &first, Chart &second, Trace &trace) {
        first.addTrace(trace.get());
        second.addTrace(trace.get());
        second.removeTrace(trace.get());
        second.addTrace(trace.get());
        trace.reset();
    });
    row("after its connections were cut", [](Chart &first, Chart &second, Trace &trace) {
        first.addTrace(trace.get());
        second.addTrace(trace.get());
        QObject::disconnect(trace.get(), nullptr, nullptr, nullptr);
        trace.reset();
    });
    row("with its signals blocked", [](Chart &first, Chart &, Trace &trace) {
        first.addTrace(trace.get());
        trace->blockSignals(true);
        trace.reset();
    });
}

void tst_Dangling::destroyed()
{
    QFETCH(Ending, ending);

    Chart &first = *m_window->chart();
    Chart second(m_window->contentItem());
    second.setSize(size);
    const auto own = line(70.0, Qt::blue);
    second.addTrace(own.get());
    auto trace = line(30.0);
    AbstractTrace *address = trace.get();
    ending(first, second, trace);
    QVERIFY(!trace);

    // Everything that goes through the lists.
    first.resortTraces();
    second.resortTraces();
    QVERIFY(!first.includes(address));
    QVERIFY(!second.includes(address));
    for (Chart *chart : {&first, &second}) {
        chart->updateTraces();
        chart->setWidth(size.width() - 1.0);
        chart->setWidth(size.width());
        chart->zoomIn({10.0, 10.0, 50.0, 50.0});
        chart->zoomReset();
    }
    own->setZ(-1.0);
    m_other->setZ(1.0);
    QCOMPARE(difference({{90.0, Qt::green}, {70.0, Qt::blue}}), QString());
    send(QEvent::MouseButtonPress, high);
    QCOMPARE(answers(), QStringList{u"chart pressed"_s});
    const int updates = m_other->updateCount;
    QVERIFY2(m_window->frame(), m_window->error());
    QCOMPARE(m_other->updateCount, updates + 1);
}

void tst_Dangling::notANumber()
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    std::vector<std::unique_ptr<PixelTrace>> traces;
    for (int i = 0; i < 30; ++i) {
        traces.push_back(line(30.0, i % 2 == 0 ? Qt::red : Qt::blue));
        traces.back()->setZ(i % 3 == 0 ? nan : 30.0 - i);
        m_window->chart()->addTrace(traces.back().get());
    }
    QVERIFY2(m_window->frame(), m_window->error());
    for (auto &trace : traces) {
        trace->setZ(nan);
        trace->setZ(nan); // is not equal to itself
    }
    QVERIFY2(m_window->frame(), m_window->error());
    for (int i = 0; i < 30; i += 2) {
        traces[std::size_t(i)].reset();
        QVERIFY2(m_window->frame(), m_window->error());
    }
    QCOMPARE(difference({{90.0, Qt::green}, {30.0, Qt::blue}}), QString());
    for (int i = 1; i < 30; i += 2) {
        QVERIFY(m_window->chart()->includes(traces[std::size_t(i)].get()));
        m_window->chart()->removeTrace(traces[std::size_t(i)].get());
    }
    QCOMPARE(difference({{90.0, Qt::green}}), QString());
}

// --- Answers that name a trace whose address another one has by now

void tst_Dangling::hitBeforeItEnded()
{
    addNew(30.0);
    QCOMPARE(answers(), QStringList());
    for (const QEvent::Type type :
            {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick})
        send(type, high);
    HoverInput(QEvent::HoverEnter, high).sendTo(*m_window->chart());
    move(low);
    move(high);
    HoverInput(QEvent::HoverLeave, high).sendTo(*m_window->chart());
    // Looked up in this frame, answered in the next one.
    QVERIFY2(m_window->frame(), m_window->error());
    addNew(70.0);
    QCOMPARE(answers(),
            QStringList({u"chart pressed"_s, u"chart released"_s, u"chart clicked"_s,
                    u"chart doubleClicked"_s, u"chart hovered true"_s, u"chart hovered false"_s}));
    // It does get what is its own.
    m_other->data.dirtyRange().push({0, 1});
    send(QEvent::MouseButtonPress, low);
    QCOMPARE(answers(), QStringList{u"2 pressed"_s});
}

void tst_Dangling::endedByTheAnswerBefore()
{
    addNew(30.0);
    const auto first = line(10.0);
    m_log->watch(*first, u"first"_s);
    m_window->chart()->addTrace(first.get());
    m_log->onSignal = [&](const MouseSignal &signal, ChartMouseEvent &) {
        if (signal.sender == u"first")
            addNew(70.0);
    };
    send(QEvent::MouseButtonPress, {100.0, 10.0});
    send(QEvent::MouseButtonPress, high);
    move(high);
    QCOMPARE(answers(), QStringList({u"first pressed"_s, u"chart pressed"_s}));
}

// Pressed by a handler's own event loop, the new trace is the pressed one when the old one's release
// goes on.
void tst_Dangling::endedByItsOwnAnswer()
{
    addNew(30.0);
    m_log->onSignal = [&](const MouseSignal &signal, ChartMouseEvent &) {
        if (signal.sender != u"1" || signal.name != u"released")
            return;
        addNew(70.0);
        send(QEvent::MouseButtonPress, low);
        QVERIFY(m_window->answerEvents());
    };
    send(QEvent::MouseButtonPress, high);
    send(QEvent::MouseButtonRelease, high);
    QCOMPARE(answers(),
            QStringList({u"1 pressed"_s, u"1 released"_s, u"2 pressed"_s, u"chart clicked"_s}));
}

void tst_Dangling::inAnOldImage_data()
{
    QTest::addColumn<bool>("framesBetween");
    QTest::newRow("at once") << false;
    QTest::newRow("after frames without it") << true;
}

// The selection image is drawn when data have changed, not when an event comes.
void tst_Dangling::inAnOldImage()
{
    QFETCH(bool, framesBetween);

    addNew(30.0);
    send(QEvent::MouseButtonPress, high);
    QCOMPARE(answers(), QStringList{u"1 pressed"_s});
    m_place.destroy();
    if (framesBetween)
        QCOMPARE(answers(), QStringList());
    addNew(70.0);
    QCOMPARE(answers(), QStringList());
    while (m_window->chart()->includes(m_other.get()) && m_other->data.isDirty())
        QVERIFY2(m_window->frame(), m_window->error());
    const auto before = GlProbe::totals();
    send(QEvent::MouseButtonPress, high);
    QCOMPARE(answers(), QStringList{u"chart pressed"_s});
    QCOMPARE(GlProbe::totals(), before); // no new image

    m_other->data.dirtyRange().push({0, 1});
    send(QEvent::MouseButtonPress, high);
    send(QEvent::MouseButtonPress, low);
    QCOMPARE(answers(), QStringList({u"chart pressed"_s, u"2 pressed"_s}));
}

void tst_Dangling::hoveredBefore()
{
    addNew(30.0);
    move(high);
    QCOMPARE(answers(), QStringList{u"1 hovered true"_s});
    addNew(30.0);
    QCOMPARE(answers(), QStringList());
    m_other->data.dirtyRange().push({0, 1});
    move(high + QPointF(1.0, 0.0));
    QCOMPARE(answers(), QStringList{u"2 hovered true"_s});
    // And the other way round: what the new one is left for is not the old one.
    move(high + QPointF(2.0, 0.0));
    QVERIFY2(m_window->frame(), m_window->error());
    addNew(30.0);
    QCOMPARE(answers(), QStringList());
    m_other->data.dirtyRange().push({0, 1});
    move(high + QPointF(3.0, 0.0));
    QCOMPARE(answers(), QStringList{u"3 hovered true"_s});
}

void tst_Dangling::pressedBefore()
{
    addNew(30.0);
    send(QEvent::MouseButtonPress, high);
    QCOMPARE(answers(), QStringList{u"1 pressed"_s});
    addNew(30.0);
    send(QEvent::MouseButtonRelease, high);
    send(QEvent::MouseButtonDblClick, high);
    QCOMPARE(answers(),
            QStringList({u"2 released"_s, u"chart clicked"_s, u"chart doubleClicked"_s}));
}

// What was uploaded of the old trace is not what the new one shows, though both have as many points
// and the new one, drawn elsewhere before, marks none of them changed.
void tst_Dangling::bufferOfTheOneBefore()
{
    addNew(30.0);
    QCOMPARE(difference({{90.0, Qt::green}, {30.0, Qt::red}}), QString());

    ChartWindow elsewhere(size);
    PixelTrace &trace = m_place.make(size, DrawType::LineStrip, 5.0F, Qt::blue);
    fill(trace, 70.0);
    elsewhere.chart()->addTrace(&trace);
    QVERIFY2(elsewhere.start(), elsewhere.error());
    QVERIFY(trace.data.dirtyRange().isEmpty());
    m_window->chart()->addTrace(&trace);
    QCOMPARE(difference({{90.0, Qt::green}, {70.0, Qt::blue}}), QString());
}

QTEST_MAIN(tst_Dangling)

#include "tst_dangling.moc"
