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
    updateData(), on a thread of the pool; the renderer reads it, and empties dirtyRange(), on the
    render thread during synchronisation. The two never overlap, so there is no lock. The GUI
    thread waits meanwhile in both cases, so that it may write, too; no other thread may.

    The renderer relies on the writer for three things:
    \list
    \li filledRange().size() equals the number of points in array(), because a non-empty filled
        range draws all of them;
    \li every written index range is pushed into dirtyRange(), to be uploaded, and into
        filledRange(), to be drawn;
    \li when the number of points changes, setSize() is called on both.
    \endlist
*/
class CHARTS_EXPORT TraceData
{
public:
    /*! The vertices, resized and filled in place by the writer. */
    [[nodiscard]] std::vector<TracePoint> &array() { return m_array; }
    [[nodiscard]] const std::vector<TracePoint> &array() const { return m_array; }

    /*! Points that changed since the last upload. */
    [[nodiscard]] BoundRange &dirtyRange() { return m_dirtyRange; }
    [[nodiscard]] const BoundRange &dirtyRange() const { return m_dirtyRange; }
    /*! Points that hold valid data. Nothing is drawn while it is empty. */
    [[nodiscard]] BoundRange &filledRange() { return m_filledRange; }
    [[nodiscard]] const BoundRange &filledRange() const { return m_filledRange; }

    [[nodiscard]] DrawType drawType() const { return m_drawType; }
    /*! Default Points. Does not mark the data dirty: a new draw type shows with the next change
        of anything else. */
    void setDrawType(DrawType drawType) { m_drawType = drawType; }

    [[nodiscard]] QColor color() const { return m_color; }
    /*! Default an invalid colour, which is drawn black. The alpha is not used. */
    void setColor(const QColor &color);

    [[nodiscard]] float width() const { return m_width; }
    /*! Line width or point diameter in pixels, default 1.5. A relative change below 1e-5 is
        ignored. */
    void setWidth(float width);

    [[nodiscard]] bool visible() const { return m_visible; }
    /*! Whether the trace is drawn, default true. A hidden trace uploads nothing: what is in its
        dirtyRange() stays there until it is shown, and makes the renderer draw every frame anew
        until then. So write a hidden trace only when something has really changed. */
    void setVisible(bool visible);

    [[nodiscard]] bool squaredViewPort() const { return m_squaredViewPort; }
    /*! Whether the trace is drawn into the largest centred square of the chart, as round formats
        are, instead of the whole chart. Default false. */
    void setSquaredViewPort(bool squaredViewPort);

    [[nodiscard]] const ViewPort &viewPort() const { return m_viewPort; }
    /*! The data rectangle that fills the chart, default (0, 0, 1, 1). Compared exactly. */
    void setViewPort(const ViewPort &viewPort);

    [[nodiscard]] BoundingMethod boundingY() const { return m_boundingY; }
    /*! What becomes of points above and below the view port, default Unbounded. */
    void setBoundingY(BoundingMethod method);

    [[nodiscard]] BoundingMethod boundingX() const { return m_boundingX; }
    /*! What becomes of points left and right of the view port, default Unbounded. */
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
