// SPDX-License-Identifier: MIT
#include "ModelChart.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <utility>

namespace {

/*! A NaN is above everything else and beside another one. */
bool isBelow(double a, double b)
{
    return std::isnan(b) ? !std::isnan(a) : a < b;
}

QPointF rounded(const QPointF &point)
{
    return {double(std::lround(point.x())), double(std::lround(point.y()))};
}

} // namespace

// --- The list of traces

void ModelChart::add(ModelTrace &trace)
{
    trace.domain.setSize(size);
    trace.isHeardByChart = true;
    m_list.push_back({&trace, trace.z});
    m_tracesDirty = true;
    sort();
}

void ModelChart::remove(ModelTrace &trace)
{
    const auto entry = std::find_if(m_list.begin(), m_list.end(),
            [&trace](const Entry &candidate) { return candidate.trace == &trace; });
    if (entry == m_list.end())
        return;
    m_list.erase(entry);
    m_tracesDirty = true;
    // Nobody hears the two signals any more, though the trace may be listed once more.
    trace.isHeardByChart = trace.isHeard = false;
}

void ModelChart::destroyed(ModelTrace &trace)
{
    std::erase(m_buffered, &trace);
    if (std::erase_if(m_list, [&trace](const Entry &entry) { return entry.trace == &trace; }) > 0)
        m_tracesDirty = true;
    pointer.forget(trace.address);
    if (m_renderer)
        m_renderer->forget(trace.address);
}

void ModelChart::sort()
{
    for (Entry &entry : m_list)
        entry.z = entry.trace->z;
    std::stable_sort(m_list.begin(), m_list.end(),
            [](const Entry &a, const Entry &b) { return isBelow(a.z, b.z); });
    m_isOrderKnown = std::adjacent_find(m_list.begin(), m_list.end(),
                             [](const Entry &a, const Entry &b) {
                                 return !isBelow(a.z, b.z) && a.trace != b.trace;
                             })
                     == m_list.end();
}

int ModelChart::countOf(const ModelTrace &trace) const
{
    return int(std::count_if(m_list.begin(), m_list.end(),
            [&trace](const Entry &entry) { return entry.trace == &trace; }));
}

bool ModelChart::accepts(const std::vector<const void *> &order)
{
    std::vector<Entry> left = m_list;
    std::vector<Entry> list;
    for (const void *address : order) {
        const auto entry = std::find_if(left.begin(), left.end(),
                [address](const Entry &candidate) { return candidate.trace->address == address; });
        if (entry == left.end() || (m_isOrderKnown && entry != left.begin())
                || (!list.empty() && isBelow(entry->z, list.back().z)))
            return false;
        list.push_back(*entry);
        left.erase(entry);
    }
    if (!left.empty())
        return false;
    m_list = std::move(list);
    m_isOrderKnown = true;
    return true;
}

std::vector<ModelTrace *> ModelChart::traces() const
{
    std::vector<ModelTrace *> result;
    for (const Entry &entry : m_list)
        result.push_back(entry.trace);
    return result;
}

// --- Geometry and frames

void ModelChart::resize(const QSizeF &newSize)
{
    size = newSize;
    if (size.width() <= 0.0 || size.height() <= 0.0)
        return;
    for (const Entry &entry : m_list)
        entry.trace->domain.setSize(size);
}

void ModelChart::update()
{
    for (const Entry &entry : m_list)
        entry.trace->update();
}

QString ModelChart::synchronise(const std::vector<const void *> &visited)
{
    if (size.width() <= 0.0 || size.height() <= 0.0) {
        // With the renderer go its buffers and all that it has not answered.
        retainBuffers({});
        m_renderer.reset();
        return {};
    }
    if (!m_renderer)
        m_renderer.emplace();

    QString error;
    if (!m_list.empty() || m_tracesDirty) {
        // The last pass visits every trace once.
        const auto drawingOrder = [&] {
            const auto count = static_cast<std::ptrdiff_t>(m_list.size());
            if (std::ssize(visited) < count || !accepts({visited.end() - count, visited.end()}))
                error = QStringLiteral("the traces are not drawn in the order of their z");
            return traces();
        };
        retainBuffers(traces());
        work += m_renderer->feed(std::exchange(m_tracesDirty, false), traces(), drawingOrder, size,
                antialiasing, std::exchange(m_queue, {}));
    }
    for (Answer &answer : m_renderer->takeAnswers())
        m_answers.push_back(std::move(answer));
    m_renderer->resolve();
    return error;
}

void ModelChart::retainBuffers(const std::vector<ModelTrace *> &traces)
{
    for (ModelTrace *trace : m_buffered) {
        if (std::find(traces.begin(), traces.end(), trace) == traces.end())
            trace->dropBuffer();
    }
    m_buffered = traces;
}

QString ModelChart::checkSignals(const QStringList &mouseLog)
{
    const auto find = [this](const void *address) -> std::optional<ModelPointer::Listed> {
        for (const Entry &entry : m_list) {
            if (entry.trace->address == address)
                return ModelPointer::Listed{entry.trace->name, entry.trace->passesOn};
        }
        return {};
    };
    return pointer.check(std::exchange(m_answers, {}), find, mouseLog);
}

// --- Zoom

void ModelChart::zoomIn(const QRectF &rect)
{
    if (!isZoomed)
        log.append(QStringLiteral("chart zoomed"));
    isZoomed = true;
    for (const Entry &entry : m_list)
        entry.trace->domain.zoomIn(rect, entry.trace->name, log);
    update();
    log.append(QStringLiteral("chart zoomedIn"));
}

void ModelChart::zoomReset()
{
    if (!std::exchange(isZoomed, false))
        return;
    log.append(QStringLiteral("chart reset"));
    for (const Entry &entry : m_list)
        entry.trace->domain.zoomReset(entry.trace->name, log);
    update();
}

void ModelChart::setZoomEnabled(bool enabled)
{
    if (enabled == isZoomEnabled)
        return;
    isZoomEnabled = enabled;
    log.append(QStringLiteral("chart zoom enabled or disabled"));
    if (!enabled)
        zoomReset();
}

// --- The mouse

void ModelChart::queue(const PointerEvent &event)
{
    if (!m_list.empty())
        m_queue.push_back(event);
}

void ModelChart::press(const PointerEvent &event)
{
    if (isZoomEnabled && event.button == Qt::LeftButton) {
        m_isBandShown = true;
        m_bandStart = rounded(event.position);
        m_bandBounds = size;
        m_band = QRectF(m_bandStart, QSizeF(0.0, 0.0));
    }
    doubleClick(event);
}

void ModelChart::drag(const QPointF &position)
{
    if (!isBandSeen())
        return;
    const auto within = [](double value, double extent) { return std::clamp(value, 0.0, extent); };
    const auto [left, right] = std::minmax({within(m_bandStart.x(), m_bandBounds.width()),
            within(position.x(), m_bandBounds.width())});
    const auto [top, bottom] = std::minmax({within(m_bandStart.y(), m_bandBounds.height()),
            within(position.y(), m_bandBounds.height())});
    m_band = QRectF(QPointF(left, top), QPointF(right, bottom));
}

void ModelChart::release(const PointerEvent &event)
{
    if (isBandSeen() && event.button == Qt::LeftButton) {
        m_isBandShown = false;
        if (m_band.width() > 0.0 && m_band.height() > 0.0)
            zoomIn(m_band);
    }
    m_lastButton = Qt::NoButton;
    queue({event.type, rounded(event.position), event.button});
}

void ModelChart::doubleClick(const PointerEvent &event)
{
    m_lastPosition = rounded(event.position);
    m_lastButton = event.button;
    queue({event.type, m_lastPosition, event.button});
}

void ModelChart::hover(QEvent::Type type, const QPointF &position)
{
    const QPointF previous = std::exchange(m_lastPosition, position);
    if (type == QEvent::HoverMove && isSame(previous.x(), position.x())
            && isSame(previous.y(), position.y()))
        return;
    queue({type == QEvent::HoverMove ? QEvent::MouseMove : type, position, m_lastButton});
}
