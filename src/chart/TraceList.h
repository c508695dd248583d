// SPDX-License-Identifier: MIT
#ifndef CHARTS_TRACELIST_H
#define CHARTS_TRACELIST_H

#include <QtCore/QPointer>

#include <vector>

namespace Charts {

class AbstractTrace;

/*!
    \internal
    The traces of a chart in drawing order, not owned. GUI thread, and the render thread while the
    GUI thread is blocked.

    A chart learns from a trace's destroyed() signal that it is gone, but removing a trace from any
    chart cuts all connections to that signal, also those of its other entries and of other charts.
    So each entry is guarded, too, and dropDestroyed() finds those that no signal has reported.
*/
class TraceList
{
public:
    [[nodiscard]] const std::vector<AbstractTrace *> &traces() const { return m_traces; }
    [[nodiscard]] bool isEmpty() const { return m_traces.empty(); }
    [[nodiscard]] bool contains(const AbstractTrace *trace) const;
    /*! Whether \a trace is listed and has not been destroyed unheard of. */
    [[nodiscard]] bool containsLiving(const AbstractTrace *trace) const;

    void append(AbstractTrace *trace);
    /*! Removes the first entry of \a trace; returns whether there was one. */
    bool removeFirst(AbstractTrace *trace);
    /*! Sorts by ascending z; a NaN goes last. */
    void sort();
    /*! Removes the entries of traces that exist no more; returns whether there were any. */
    bool dropDestroyed();

    /*! Whether a trace is listed more than once. */
    [[nodiscard]] bool hasRepeated() const { return m_repeatedCount > 0; }

    /*! Calls \a visit for each trace listed now, in order, whatever its handlers add, remove, sort
        and destroy meanwhile; a trace that has left the list in the meantime is passed over. All
        entries have to exist at the beginning.

        The handlers may destroy the list's \a owner as well, which ends the visits; returns whether
        it still exists. */
    template<typename Visit>
    bool forEach(const QObject *owner, Visit &&visit)
    {
        // Guarded: a handler may destroy a trace, too, unheard of or not.
        const std::vector<QPointer<AbstractTrace>> listed(m_traces.begin(), m_traces.end());
        const QPointer<const QObject> guard(owner);
        const int revision = m_revision;
        for (const auto &trace : listed) {
            if (trace && (m_revision == revision || contains(trace)))
                visit(*trace);
            if (!guard)
                return false;
        }
        return true;
    }

private:
    std::vector<AbstractTrace *> m_traces;
    std::vector<QPointer<AbstractTrace>> m_guards; // one an entry, in no order
    int m_revision = 0;                            // counts removals
    int m_repeatedCount = 0;                       // entries beyond the first of their trace
};

} // namespace Charts

#endif
