// SPDX-License-Identifier: MIT
#pragma once

#include <ChartsLibrary/TraceData.h>

namespace Gallery {

/*!
    Keeps the last points of a series in a trace's vertex array and marks only what it writes as
    changed, however long the history is. Writes the data from updateData().

    The array is drawn from its first to its last vertex, so the ring needs two precautions:

        index      0     1     2     3     4     5    ...   n - 1   n
                   p7    p8    g     g     p3    p4   ...    p6     p7
                                ^ written next                       copy of index 0

    - Behind the newest point two vertices with opacity 0 break the line towards the oldest one: the
      first at the newest point, the second at the oldest, so that both segments next to visible
      points have no length.
    - The line does not run from the last index to the first. One more vertex, a copy of the first,
      closes it.
*/
class HistoryRing
{
public:
    /*! Takes over \a data's array for at least \a pointCount points. */
    HistoryRing(Charts::TraceData &data, int pointCount);

    void append(float x, float y);

private:
    /*! Moves the unwritten vertices to the first point: a line from there to the copy at the array's
        end, which is visible before the last index is written, has no length then. */
    void begin(float x, float y);
    void write(int slot, const Charts::TracePoint &point);
    void copyOldestInto(int slot);

    Charts::TraceData &m_data;
    int m_slotCount = 0;
    int m_next = 0;
    bool m_isEmpty = true;
};

} // namespace Gallery
