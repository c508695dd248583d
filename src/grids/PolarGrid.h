// SPDX-License-Identifier: MIT
#ifndef CHARTS_POLARGRID_H
#define CHARTS_POLARGRID_H

#include "AbstractGrid.h"
#include "ChartsExport.h"

#include <QtQml/qqmlregistration.h>

namespace Charts {

/*!
    \qmltype PolarGrid
    \inqmlmodule zel.charts
    \inherits AbstractGrid
    \brief A polar diagram: a boundary circle, two axes, rings at the quarters of the radius and
    spokes, more of them towards the boundary.

    It fills the largest centred square of the item and reads no trace domain: give it the \l scale
    of the traces that it belongs to, as \l{Smith and polar domains} tells.
*/
/*!
    \class Charts::PolarGrid
    \brief A polar diagram.

    Owned by QML or the application. GUI thread; nodes are written on the render thread while the
    GUI thread is blocked.
*/
class CHARTS_EXPORT PolarGrid : public AbstractGrid
{
    Q_OBJECT
    QML_ELEMENT

    /*! \qmlproperty real PolarGrid::scale
        The value that the boundary stands for, in data units; it hides the property of the same
        name of an Item. Above 1 a further circle marks 1, at the boundary's radius divided by the
        scale, in whole pixels; where the boundary's radius is no whole number it may show at a
        scale of 1, too. Default 1; below 0.001 the same as 0.001. A relative change of at most
        1e-12 is ignored. */
    Q_PROPERTY(double scale READ scale WRITE setScale NOTIFY scaleChanged)

public:
    explicit PolarGrid(QQuickItem *parent = nullptr);
    ~PolarGrid() override;

    [[nodiscard]] double scale() const { return m_scale; }
    void setScale(double scale);

Q_SIGNALS:
    void scaleChanged(double scale);

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override;

private:
    double m_scale = 1.0;
};

} // namespace Charts

#endif
