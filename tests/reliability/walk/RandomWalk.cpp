// SPDX-License-Identifier: MIT
#include "RandomWalk.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDebug>

#include <cstddef>
#include <utility>

using namespace Charts;

namespace {

constexpr std::size_t reportedOperations = 20;

QStringList entriesOf(const QStringList &log, const QString &sender)
{
    QStringList entries;
    for (const QString &entry : log) {
        if (entry.section(u' ', 0, 0) == sender)
            entries.append(entry);
    }
    return entries;
}

/*! Whether the logs have the same entries of each sender, and those of the chart in the same
    places: traces of equal z have no order. */
bool areAlike(const QStringList &a, const QStringList &b)
{
    const QString chart = QStringLiteral("chart");
    if (a.size() != b.size())
        return false;
    for (qsizetype i = 0; i < a.size(); ++i) {
        const QString sender = a.at(i).section(u' ', 0, 0);
        if (entriesOf(a, sender) != entriesOf(b, sender) || (sender == chart && a.at(i) != b.at(i)))
            return false;
    }
    return true;
}

} // namespace

RandomWalk::RandomWalk(unsigned seed)
    : m_seed(seed)
    , m_random(seed)
    , m_band(new ZoomDelegate(&m_stage.chart))
{
    Chart &chart = m_stage.chart;
    m_model.resize(chart.size());
    m_band->setVisible(false);
    chart.setRubberBand(m_band);

    m_mouseLog.watch(chart);
    m_mouseLog.onSignal = [this](const MouseSignal &signal, ChartMouseEvent &event) {
        for (const auto &actor : m_actors) {
            if (actor->model.name == signal.sender && actor->model.passesOn)
                event.setAccepted(false);
        }
    };
    const auto logAs = [this](const char *text) {
        return [this, text] { m_log.append(QString::fromLatin1(text)); };
    };
    connect(&chart, &Chart::isZoomedChanged, this, [this](bool isZoomed) {
        m_log.append(isZoomed ? QStringLiteral("chart zoomed") : QStringLiteral("chart reset"));
    });
    connect(&chart, &Chart::zoomedIn, this, logAs("chart zoomedIn"));
    connect(&chart, &Chart::isZoomEnabledChanged, this, logAs("chart zoom enabled or disabled"));
}

RandomWalk::~RandomWalk()
{
    for (const auto &actor : m_actors)
        actor->trace->disconnect(this);
}

bool RandomWalk::start()
{
    if (!m_stage.start()) {
        fail(QString::fromUtf8(m_stage.error()));
        return false;
    }
    // The window draws itself when it appears.
    for (const WalkChart::Visits &visits : m_stage.chart.takeSynchronisations())
        (void)m_model.synchronise(visits);
    (void)GlProbe::takeErrors();
    return true;
}

bool RandomWalk::run(int operationCount, int framesPerPicture)
{
    int totalWeight = 0;
    for (const Operation &operation : operations)
        totalWeight += operation.weight;

    while (m_operationCount < operationCount && m_failure.isEmpty()) {
        ++m_operationCount;
        int left = below(totalWeight);
        auto operation = operations.begin();
        for (; left >= operation->weight; ++operation)
            left -= operation->weight;
        (this->*operation->run)();
        compareLog();
        if (!m_failure.isEmpty() || !chance(20))
            continue;
        frame();
        if (m_failure.isEmpty() && m_frameCount % framesPerPicture == 0)
            comparePicture();
    }
    return m_failure.isEmpty();
}

// --- Frames

void RandomWalk::frame()
{
    ++m_frameCount;
    note(QStringLiteral("frame"));
    const GlProbe::Totals before = GlProbe::totals();
    const GlProbe::Log log;
    m_model.update();
    m_stage.chart.updateTraces();
    if (!m_stage.window.frame())
        return fail(QString::fromUtf8(m_stage.window.error()));
    synchronised();
    QCoreApplication::sendPostedEvents(&m_stage.chart);
    compareWork(before, log);

    QStringList mouseLog;
    for (const MouseSignal &signal : m_mouseLog.takeSignals()) {
        mouseLog.append(signalText(signal.sender, signal.name.toLatin1().constData(),
                {QEvent::None, signal.position, Qt::MouseButton(signal.button)}));
    }
    fail(m_model.checkSignals(mouseLog));
    fail(compareState());
    compareLog();
}

void RandomWalk::synchronised()
{
    for (const WalkChart::Visits &visits : m_stage.chart.takeSynchronisations())
        fail(m_model.synchronise(visits));
    fail(GlProbe::takeErrors().join(u", "));
}

void RandomWalk::compareWork(const GlProbe::Totals &before, const GlProbe::Log &log)
{
    const GlProbe::Totals after = GlProbe::totals();
    const Work expected = std::exchange(m_model.work, {});
    const std::int64_t drawCalls = after.drawCalls - before.drawCalls;
    if (drawCalls != expected.drawCalls)
        fail(QStringLiteral("%1 draw calls, not %2").arg(drawCalls).arg(expected.drawCalls));

    const auto check = [this](const char *what, std::int64_t value, const Bounds &bounds) {
        if (!bounds.include(value)) {
            fail(QStringLiteral("%1 %2, not %3 to %4")
                            .arg(value)
                            .arg(QString::fromLatin1(what))
                            .arg(bounds.least)
                            .arg(bounds.most));
        }
    };
    check("bytes uploaded", after.uploadedBytes - before.uploadedBytes, expected.uploadedBytes);
    check("images resolved", after.blits - before.blits, expected.blits);

    QList<QRect> viewports;
    for (const GlProbe::Call &call : log.calls("glViewport"))
        viewports.append({call.integer(0), call.integer(1), call.integer(2), call.integer(3)});
    if (viewports != expected.viewports) {
        fail(QStringLiteral("view ports: %1 instead of %2")
                        .arg(QDebug::toString(viewports), QDebug::toString(expected.viewports)));
    }
}

QString RandomWalk::compareState()
{
    const Chart &chart = m_stage.chart;
    if (chart.isZoomed() != m_model.isZoomed || chart.isZoomEnabled() != m_model.isZoomEnabled)
        return QStringLiteral("the chart's zoom: %1").arg(chart.isZoomed());
    if (m_band->isVisible() != m_model.isBandSeen())
        return QStringLiteral("the rubber band is seen: %1").arg(m_band->isVisible());
    for (const auto &actor : m_actors) {
        WalkTrace &trace = *actor->trace;
        ModelTrace &model = actor->model;
        const auto differs = [&model](const QString &what) {
            return model.name + QStringLiteral(": ") + what;
        };
        if (chart.includes(&trace) != m_model.includes(model))
            return differs(QStringLiteral("listed is %1").arg(chart.includes(&trace)));
        if (trace.updateCount != model.updateCount)
            return differs(QStringLiteral("updated %1 times, not %2")
                                   .arg(int(trace.updateCount))
                                   .arg(model.updateCount));
        if (trace.data.isDirty() != model.lookDirty)
            return differs(QStringLiteral("dirty is %1").arg(trace.data.isDirty()));
        if (trace.data.dirtyRange().isEmpty() == model.hasDirtyPoints())
            return differs(QStringLiteral("the dirty range is empty or not"));
        if (const QString domain = model.domain.compare(*trace.domain()); !domain.isEmpty())
            return differs(domain);
    }
    return {};
}

void RandomWalk::comparePicture()
{
    ++m_pictureCount;
    const QImage picture = m_stage.window.grabWindow().convertToFormat(QImage::Format_RGB32);
    synchronised();
    m_model.work = {};
    const ModelRenderer *renderer = m_model.isVisible ? m_model.renderer() : nullptr;
    const QImage expected = m_stage.drawAfresh(
            renderer ? renderer->image() : Sketches(), m_model.size, m_model.antialiasing);
    fail(differenceOf(picture, expected));
    fail(GlProbe::takeErrors().join(u", "));
}

void RandomWalk::compareLog()
{
    const QStringList log = std::exchange(m_log, {});
    const QStringList expected = std::exchange(m_model.log, {});
    if (log != expected && (m_model.isOrderKnown() || !areAlike(log, expected))) {
        fail(QStringLiteral("signals: [%1] instead of [%2]")
                        .arg(log.join(u"; "), expected.join(u"; ")));
    }
}

// --- Helpers

int RandomWalk::below(int count)
{
    return static_cast<int>(m_random() % static_cast<unsigned>(count));
}

void RandomWalk::note(const QString &operation)
{
    m_lastOperations.push_back(QStringLiteral("%1 %2").arg(m_operationCount).arg(operation));
    if (m_lastOperations.size() > reportedOperations)
        m_lastOperations.pop_front();
}

void RandomWalk::fail(const QString &what)
{
    if (m_failure.isEmpty())
        m_failure = what;
}

QByteArray RandomWalk::report() const
{
    QString text = QStringLiteral("CHARTS_TEST_SEED=%1, after %2 operations and %3 frames: %4\n")
                           .arg(m_seed)
                           .arg(m_operationCount)
                           .arg(m_frameCount)
                           .arg(m_failure);
    for (const QString &operation : m_lastOperations)
        text += QStringLiteral("  ") + operation + u'\n';
    return text.toUtf8();
}

QString RandomWalk::summary() const
{
    return QStringLiteral("seed %1: %2 operations, %3 frames, %4 pictures, %5 traces, "
                          "%6 mouse events (%7 hit a trace, %8 are uncertain by a pixel)")
            .arg(m_seed)
            .arg(m_operationCount)
            .arg(m_frameCount)
            .arg(m_pictureCount)
            .arg(m_traceCount)
            .arg(m_model.pointer.answerCount)
            .arg(m_model.pointer.hitCount)
            .arg(m_model.pointer.uncertainCount);
}
