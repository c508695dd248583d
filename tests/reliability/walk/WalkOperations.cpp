// SPDX-License-Identifier: MIT
#include "RandomWalk.h"

#include <ChartsLibrary/TraceDomain.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

using namespace Charts;

namespace {

constexpr std::size_t mostTraces = 10;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

} // namespace

const std::vector<RandomWalk::Operation> RandomWalk::operations = {
        {4, &RandomWalk::create},
        {6, &RandomWalk::add},
        {2, &RandomWalk::addAgain},
        {4, &RandomWalk::remove},
        {1, &RandomWalk::removeAll},
        {3, &RandomWalk::destroy},
        {8, &RandomWalk::setZ},
        {12, &RandomWalk::setProperty},
        {2, &RandomWalk::passNothing},
        {4, &RandomWalk::setRange},
        {1, &RandomWalk::setFormat},
        {3, &RandomWalk::zoomIn},
        {3, &RandomWalk::zoomReset},
        {2, &RandomWalk::enableZoom},
        {40, &RandomWalk::editData},
        {8, &RandomWalk::restyle},
        {3, &RandomWalk::resize},
        {2, &RandomWalk::hideOrShow},
        {2, &RandomWalk::switchAntialiasing},
        {10, &RandomWalk::mouse},
        {4, &RandomWalk::drag},
        {6, &RandomWalk::clickOrDoubleClick},
        {12, &RandomWalk::hover},
};

RandomWalk::Actor *RandomWalk::any()
{
    if (m_actors.empty())
        return nullptr;
    return m_actors[static_cast<std::size_t>(below(static_cast<int>(m_actors.size())))].get();
}

// --- The list of traces

void RandomWalk::create()
{
    if (m_actors.size() == mostTraces)
        return destroy();
    const QString name = QStringLiteral("T%1").arg(m_traceCount++);
    note(QStringLiteral("create ") + name);
    Actor &actor = *m_actors.emplace_back(std::make_unique<Actor>(name, m_stage.chart.visits));
    WalkTrace &trace = *actor.trace;
    actor.model.passesOn = chance(30);
    m_mouseLog.watch(trace, name);
    const auto logAs = [this, name](const char *text) {
        return [this, entry = name + QString::fromLatin1(text)] { m_log.append(entry); };
    };
    connect(trace.domain(), &TraceDomain::zoomedChanged, this, [this, name](bool isZoomed) {
        m_log.append(name + (isZoomed ? QStringLiteral(" zoomed") : QStringLiteral(" reset")));
    });
    connect(trace.domain(), &TraceDomain::xRangeChanged, this, logAs(" x"));
    connect(trace.domain(), &TraceDomain::yRangeChanged, this, logAs(" y"));
    connect(&trace, &AbstractTrace::visibleChanged, this, logAs(" visible"));
    connect(&trace, &AbstractTrace::colorChanged, this, logAs(" color"));
    connect(&trace, &AbstractTrace::lineWidthChaned, this, logAs(" width"));
    connect(&trace, &AbstractTrace::nameChanged, this, logAs(" name"));

    actor.look.viewPort = {0.0F, 0.0F, 1.0F, 1.0F};
    DataStep style = {.kind = DataStep::Restyle};
    style.look = actor.look;
    const std::vector<DataStep> points = rewriteAll(actor, 2 + below(30));
    give(actor, {style});
    give(actor, points);
    const QColor color = QColor::fromHsv(below(360), 255, 55 + below(200)).toRgb();
    trace.setColor(color);
    actor.model.color = color;
    trace.setLineWidth(5.0);
    actor.model.lineWidth = 5.0;
    m_model.log.append({name + QStringLiteral(" color"), name + QStringLiteral(" width")});
    attach(actor);
}

void RandomWalk::attach(Actor &actor)
{
    note(QStringLiteral("add ") + actor.model.name);
    // Removing a trace from a chart cut these two.
    if (!actor.model.isHeard) {
        const QString name = actor.model.name;
        connect(actor.trace.get(), &AbstractTrace::zChanged, this,
                [this, name] { m_log.append(name + QStringLiteral(" z")); });
        connect(actor.trace.get(), &QObject::destroyed, this,
                [this, name] { m_log.append(name + QStringLiteral(" destroyed")); });
        actor.model.isHeard = true;
    }
    m_stage.chart.addTrace(actor.trace.get());
    m_model.add(actor.model);
}

void RandomWalk::add()
{
    for (const auto &actor : m_actors) {
        if (!m_model.includes(actor->model))
            return attach(*actor);
    }
    create();
}

void RandomWalk::addAgain()
{
    if (Actor *actor = any())
        attach(*actor);
}

void RandomWalk::remove()
{
    Actor *actor = any();
    if (!actor)
        return;
    note(QStringLiteral("remove ") + actor->model.name);
    m_stage.chart.removeTrace(actor->trace.get());
    m_model.remove(actor->model);
}

/*! An empty chart has to clear what it showed; left to chance it is hardly ever seen. */
void RandomWalk::removeAll()
{
    note(QStringLiteral("remove all"));
    for (const auto &actor : m_actors) {
        while (m_model.includes(actor->model)) {
            m_stage.chart.removeTrace(actor->trace.get());
            m_model.remove(actor->model);
        }
    }
    frame();
    comparePicture();
    for (const auto &actor : m_actors) {
        if (chance(80))
            attach(*actor);
    }
}

void RandomWalk::destroy()
{
    Actor *actor = any();
    if (!actor)
        return;
    note(QStringLiteral("destroy ") + actor->model.name);
    if (actor->model.isHeard)
        m_model.log.append(actor->model.name + QStringLiteral(" destroyed"));
    m_model.destroyed(actor->model);
    actor->trace.reset();
    std::erase_if(m_actors, [actor](const auto &candidate) { return candidate.get() == actor; });
}

void RandomWalk::setZ()
{
    constexpr std::array<double, 6> special = {
            notANumber, notANumber, infinity, -infinity, 0.0, -0.0};
    Actor *actor = any();
    if (!actor)
        return;
    const double z = chance(30) ? special[static_cast<std::size_t>(below(6))] : below(8);
    note(QStringLiteral("z of %1 becomes %2").arg(actor->model.name).arg(z));
    ModelTrace &model = actor->model;
    // A NaN differs from everything.
    const bool isChanged = !(model.z == z);
    model.z = z;
    if (isChanged && model.isHeard)
        m_model.log.append(model.name + QStringLiteral(" z"));
    if (isChanged && model.isHeardByChart)
        m_model.sort();
    actor->trace->setZ(z);
}

void RandomWalk::setProperty()
{
    Actor *actor = any();
    if (!actor)
        return;
    ModelTrace &model = actor->model;
    WalkTrace &trace = *actor->trace;
    const auto expect = [&](bool isChanged, const char *entry) {
        if (isChanged)
            m_model.log.append(model.name + QString::fromLatin1(entry));
    };
    switch (below(4)) {
    case 0: {
        const bool isVisible = chance(75);
        note(QStringLiteral("%1 visible %2").arg(model.name).arg(isVisible));
        expect(isVisible != model.isVisible, " visible");
        model.isVisible = isVisible;
        trace.setVisible(isVisible);
        break;
    }
    case 1: {
        const QColor color =
                chance(20) ? model.color
                           : QColor(below(256), below(256), below(256), 255 - below(2) * 100);
        note(QStringLiteral("%1 color %2").arg(model.name, color.name(QColor::HexArgb)));
        expect(color != model.color, " color");
        model.color = color;
        trace.setColor(color);
        break;
    }
    case 2: {
        constexpr std::array<double, 7> widths = {1.0, 2.0, 3.0, 5.0, 8.0, 13.0, 5.0 + 5e-6};
        const double width = widths[static_cast<std::size_t>(below(7))];
        note(QStringLiteral("%1 width %2").arg(model.name).arg(width, 0, 'g', 12));
        expect(!isSame(width, model.lineWidth), " width");
        model.lineWidth = width;
        trace.setLineWidth(width);
        break;
    }
    default: {
        const QString name = QString::number(below(3));
        note(QStringLiteral("%1 name %2").arg(model.name, name));
        expect(name != trace.name(), " name");
        trace.setName(name);
        break;
    }
    }
}

void RandomWalk::passNothing()
{
    note(QStringLiteral("add, remove and ask for nothing"));
    m_stage.chart.addTrace(nullptr);
    m_stage.chart.removeTrace(nullptr);
    if (m_stage.chart.includes(nullptr))
        fail(QStringLiteral("the chart includes null"));
}

// --- Domains and zoom

void RandomWalk::setRange()
{
    Actor *actor = any();
    if (!actor)
        return;
    const bool isX = chance(50);
    const double first = below(64) / 8.0 - 4.0;
    // Some are empty or reversed.
    const Span range(first, first + below(40) / 8.0 - 0.25);
    note(QStringLiteral("%1 of %2 is (%3, %4)")
                    .arg(isX ? u'x' : u'y')
                    .arg(actor->model.name)
                    .arg(range.min)
                    .arg(range.max));
    actor->model.domain.setRange(isX, range, actor->model.name, m_model.log);
    if (isX)
        actor->trace->domain()->setRangeX(range);
    else
        actor->trace->domain()->setRangeY(range);
}

void RandomWalk::setFormat()
{
    Actor *actor = any();
    if (!actor)
        return;
    const bool isRound = chance(40);
    note(QStringLiteral("%1 round %2").arg(actor->model.name).arg(isRound));
    actor->model.domain.setFormat(isRound, actor->model.name, m_model.log);
    actor->trace->domain()->setFormat(isRound ? TraceDomain::PolarFormat : TraceDomain::XYFormat);
}

void RandomWalk::zoomIn()
{
    const double width = m_stage.chart.width();
    const double height = m_stage.chart.height();
    QRectF rect(0.0, 0.0, width, height);
    if (!chance(10))
        rect = QRectF(width * below(50) / 100.0, height * below(50) / 100.0,
                width * (10 + below(41)) / 100.0, height * (10 + below(41)) / 100.0);
    note(QStringLiteral("zoom to %1, %2 %3 x %4")
                    .arg(rect.x())
                    .arg(rect.y())
                    .arg(rect.width())
                    .arg(rect.height()));
    m_model.zoomIn(rect);
    m_stage.chart.zoomIn(rect);
}

void RandomWalk::zoomReset()
{
    note(QStringLiteral("reset zoom"));
    m_model.zoomReset();
    m_stage.chart.zoomReset();
}

void RandomWalk::enableZoom()
{
    const bool isEnabled = chance(70);
    note(QStringLiteral("zoom enabled %1").arg(isEnabled));
    m_model.setZoomEnabled(isEnabled);
    m_stage.chart.setIsZoomEnabled(isEnabled);
}

// --- The chart

void RandomWalk::resize()
{
    constexpr std::array<QSizeF, 9> sizes = {QSizeF(160, 120), QSizeF(160, 120), QSizeF(97, 61),
            QSizeF(40, 111), QSizeF(100.5, 60.25), QSizeF(1, 1), QSizeF(0, 0), QSizeF(0, 50),
            QSizeF(30, 0)};
    // Most often large enough for something to be seen.
    const bool isNothing = m_model.size.isEmpty();
    const QSizeF size = sizes[static_cast<std::size_t>(below(isNothing ? 5 : 9))];
    note(QStringLiteral("resize to %1 x %2").arg(size.width()).arg(size.height()));
    m_model.resize(size);
    m_stage.chart.setSize(size);
}

void RandomWalk::hideOrShow()
{
    const bool isVisible = !m_model.isVisible || chance(40);
    note(QStringLiteral("chart visible %1").arg(isVisible));
    m_model.isVisible = isVisible;
    m_stage.chart.setVisible(isVisible);
}

void RandomWalk::switchAntialiasing()
{
    m_model.antialiasing = chance(50);
    note(QStringLiteral("antialiasing %1").arg(m_model.antialiasing));
    m_stage.chart.setAntialiasing(m_model.antialiasing);
}
