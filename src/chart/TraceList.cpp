// SPDX-License-Identifier: MIT
#include "TraceList.h"

#include "AbstractTrace.h"

#include <algorithm>
#include <cmath>
#include <set>

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
    if (contains(trace))
        ++m_repeatedCount;
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
    if (contains(trace))
        --m_repeatedCount;
    ++m_revision;
    return true;
}

void TraceList::sort()
{
    // Most often nothing has to move: traces are added in order, and some only move within their gap.
    if (std::is_sorted(m_traces.begin(), m_traces.end(), isBelow))
        return;
    std::sort(m_traces.begin(), m_traces.end(), isBelow);
}

bool TraceList::dropDestroyed()
{
    if (std::erase_if(m_guards, [](const auto &guard) { return guard.isNull(); }) == 0)
        return false;
    const std::set<const AbstractTrace *> living(m_guards.begin(), m_guards.end());
    std::erase_if(m_traces, [&](const AbstractTrace *trace) { return !living.contains(trace); });
    m_repeatedCount = static_cast<int>(m_traces.size() - living.size());
    ++m_revision;
    return true;
}

} // namespace Charts
