// SPDX-License-Identifier: MIT
#ifndef CHARTS_SMITHGRID_H
#define CHARTS_SMITHGRID_H

#include "AbstractGrid.h"
#include "ChartsExport.h"

#include <QtQml/qqmlregistration.h>

namespace Charts {

/*!
    \qmltype SmithGrid
    \inqmlmodule zel.charts
    \inherits AbstractGrid
    \brief A Smith chart: circles of constant resistance and arcs of constant reactance in the plane
    of the reflection coefficient (P. H. Smith, Transmission Line Calculator, Electronics, 1939).

    It fills the largest centred square of the item, in whole pixels, and reads no trace domain:
    give it the \l scale and the \l flip of the traces that it belongs to, as
    \l{Smith and polar domains} tells.

    At a scale of 1 the resistance circles are those of 0.2, 0.5, 1, 2 and 5, normalised, besides
    the boundary, which is that of 0; the reactance arcs meet the boundary every 30 degrees. At
    other scales the resistance circles cross the real axis at the same pixels, so that their
    resistances change.
*/
/*!
    \class Charts::SmithGrid
    \brief A Smith chart.

    Owned by QML or the application. GUI thread; nodes are written on the render thread while the
    GUI thread is blocked.
*/
class CHARTS_EXPORT SmithGrid : public AbstractGrid
{
    Q_OBJECT
    QML_ELEMENT

    /*! \qmlproperty real SmithGrid::scale
        The magnitude of reflection that the boundary stands for, a number without a unit; it hides
        the property of the same name of an Item. Above 1 the unit circle lies inside the boundary
        and the region of negative resistance around it is drawn, too. Default 1; below 0.001 the
        same as 0.001. A relative change of at most 1e-12 is ignored. */
    Q_PROPERTY(double scale READ scale WRITE setScale NOTIFY scaleChanged)
    /*! \qmlproperty bool SmithGrid::flip
        Whether the chart is mirrored, as an admittance chart, so that a reflection of 1 is on the
        left. Default false. */
    Q_PROPERTY(bool flip READ flip WRITE setFlip NOTIFY flipChanged)

public:
    explicit SmithGrid(QQuickItem *parent = nullptr);
    ~SmithGrid() override;

    [[nodiscard]] double scale() const { return m_scale; }
    void setScale(double scale);
    [[nodiscard]] bool flip() const { return m_flip; }
    void setFlip(bool flip);

Q_SIGNALS:
    void scaleChanged(double scale);
    void flipChanged(bool flip);

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override;

private:
    double m_scale = 1.0;
    bool m_flip = false;
};

} // namespace Charts

#endif
