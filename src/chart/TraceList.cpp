// SPDX-License-Identifier: MIT
#include "TraceList.h"

#include "AbstractTrace.h"

#include <algorithm>
#include <cmath>

namespace Charts {

namespace {

// A NaN goes last: compared with the plain operator it would be equivalent to everything, which
// no sort survives.
bool isBelow(const AbstractTrace *a, const AbstractTrace *b)
{
    if (std::isnan(b->z()))
        return !std::isnan(a->z());
    return a->z() < b->z();
}

} // namespace

bool TraceList::contains(const AbstractTrace *trace) const
{
    return std::find(m_traces.begin(), m_traces.end(), trace) != m_traces.end();
}

bool TraceList::containsLiving(const AbstractTrace *trace) const
{
    return trace && std::find(m_guards.begin(), m_guards.end(), trace) != m_guards.end();
}

void TraceList::append(AbstractTrace *trace)
{
    m_traces.push_back(trace);
    m_guards.emplace_back(trace);
}

bool TraceList::removeFirst(AbstractTrace *trace)
{
    const auto entry = std::find(m_traces.begin(), m_traces.end(), trace);
    if (entry == m_traces.end())
        return false;
    m_traces.erase(entry);
    // A trace that is being destroyed has left its guards empty already.
    auto guard = std::find(m_guards.begin(), m_guards.end(), trace);
    if (guard == m_guards.end())
        guard = std::find(m_guards.begin(), m_guards.end(), nullptr);
    m_guards.erase(guard);
    ++m_revision;
    return true;
}

void TraceList::sort()
{
    std::sort(m_traces.begin(), m_traces.end(), isBelow);
}

bool TraceList::dropDestroyed()
{
    if (std::erase_if(m_guards, [](const auto &guard) { return guard.isNull(); }) == 0)
        return false;
    std::erase_if(m_traces, [this](const AbstractTrace *trace) {
        return std::find(m_guards.begin(), m_guards.end(), trace) == m_guards.end();
    });
    ++m_revision;
    return true;
}

} // namespace Charts
