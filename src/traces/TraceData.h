// SPDX-License-Identifier: MIT
#ifndef CHARTS_TRACEDATA_H
#define CHARTS_TRACEDATA_H

#include "BoundRange.h"
#include "BoundingMethod.h"
#include "ChartsExport.h"
#include "DrawType.h"
#include "TracePoint.h"
#include "ViewPort.h"

#include <QtGui/QColor>

#include <vector>

namespace Charts {

/*!
    \class Charts::TraceData
    \brief What the renderer draws of one trace: its vertices, what changed in them, and the
    drawing attributes.

    A trace class owns one and returns it from AbstractTrace::traceData(). It writes the data in
    updateData(), on a thread of the pool, and nowhere else; the renderer reads it, and empties
    dirtyRange(), on the render thread during synchronisation. The two never overlap, so there is no
    lock. The GUI thread waits meanwhile in both cases, so that it does no harm to mark a range
    there; no other thread may touch anything.

    The renderer relies on the writer for three things:
    \list
    \li filledRange().size() equals the number of points in array(), because a non-empty filled
        range draws all of them;
    \li every written index range is pushed into dirtyRange(), to be uploaded, and into
        filledRange(), to be drawn;
    \li when the number of points changes, setSize() is called on both, which drops their ranges.
    \endlist

    Ranges beyond the array are cut, not trusted: a mistake shows as a missing piece of line. A new
    number of points uploads all filled ranges again.

    \sa {Streaming data without copying}, {Performance}
*/
class CHARTS_EXPORT TraceData
{
public:
    /*! The vertices, resized and filled in place by the writer, and uploaded from where they are.
        */
    [[nodiscard]] std::vector<TracePoint> &array() { return m_array; }
    [[nodiscard]] const std::vector<TracePoint> &array() const { return m_array; }

    /*! Points that changed since the last upload. */
    [[nodiscard]] BoundRange &dirtyRange() { return m_dirtyRange; }
    [[nodiscard]] const BoundRange &dirtyRange() const { return m_dirtyRange; }
    /*! Points that hold valid data. Nothing is drawn while it is empty; otherwise all points of the
        array are, also those outside of every range. Whoever wants to hide some gives them an
        \l{TracePoint::opacity}{opacity} of 0. */
    [[nodiscard]] BoundRange &filledRange() { return m_filledRange; }
    [[nodiscard]] const BoundRange &filledRange() const { return m_filledRange; }

    [[nodiscard]] DrawType drawType() const { return m_drawType; }
    /*! Sets \a drawType, default Points. Does not mark the data dirty: a new draw type shows with
        the next change of anything else. */
    void setDrawType(DrawType drawType) { m_drawType = drawType; }

    [[nodiscard]] QColor color() const { return m_color; }
    /*! Sets \a color, by default an invalid one, which is drawn black. The alpha is not used. */
    void setColor(const QColor &color);

    [[nodiscard]] float width() const { return m_width; }
    /*! Makes \a width the line width or point diameter in pixels, default 1.5. A relative change of
        at most 1e-5 is ignored, and so is NaN. A width of 0 or below leaves a line at the width of
        the one drawn before it. */
    void setWidth(float width);

    [[nodiscard]] bool visible() const { return m_visible; }
    /*! Makes the trace \a visible, which is the default, or not. A hidden trace uploads nothing:
        what is in its dirtyRange() stays there until it is shown, and makes the renderer draw every
        frame anew until then. So do not write to a hidden trace what can wait until it is shown. */
    void setVisible(bool visible);

    [[nodiscard]] bool squaredViewPort() const { return m_squaredViewPort; }
    /*! With \a squaredViewPort the trace is drawn into the largest centred square of the chart, as
        round formats are, instead of the whole chart. Default false. */
    void setSquaredViewPort(bool squaredViewPort);

    [[nodiscard]] const ViewPort &viewPort() const { return m_viewPort; }
    /*! Makes \a viewPort the data rectangle that fills the chart, or its largest centred square,
        default (0, 0, 1, 1). Compared exactly: any other bit is a change, and draws a new picture.
        */
    void setViewPort(const ViewPort &viewPort);

    [[nodiscard]] BoundingMethod boundingY() const { return m_boundingY; }
    /*! Chooses \a method for what is above and below the view port, default Unbounded. */
    void setBoundingY(BoundingMethod method);

    [[nodiscard]] BoundingMethod boundingX() const { return m_boundingX; }
    /*! Chooses \a method for what is left and right of the view port, default Unbounded. */
    void setBoundingX(BoundingMethod method);

    /*! Whether an attribute changed since the renderer last looked. */
    [[nodiscard]] bool isDirty() const { return m_dirty; }
    /*! Called by the renderer alone. */
    void clearDirty() { m_dirty = false; }

private:
    std::vector<TracePoint> m_array;
    BoundRange m_dirtyRange;
    BoundRange m_filledRange;
    DrawType m_drawType = DrawType::Points;
    QColor m_color;
    float m_width = 1.5F;
    bool m_visible = true;
    bool m_squaredViewPort = false;
    ViewPort m_viewPort;
    BoundingMethod m_boundingY = BoundingMethod::Unbounded;
    BoundingMethod m_boundingX = BoundingMethod::Unbounded;
    bool m_dirty = false;
};

} // namespace Charts

#endif
