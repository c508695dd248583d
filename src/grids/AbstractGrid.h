// SPDX-License-Identifier: MIT
#ifndef CHARTS_ABSTRACTGRID_H
#define CHARTS_ABSTRACTGRID_H

#include "ChartItem.h"
#include "ChartsExport.h"

#include <QtGui/QColor>
#include <QtQml/qqmlregistration.h>

namespace Charts {

/*!
    \qmltype AbstractGrid
    \inqmlmodule zel.charts
    \inherits ChartItem
    \brief What all grids have in common: the colours and the width of their lines.

    Documents create \l XYGrid, \l PolarGrid or \l SmithGrid.

    Laid under a chart of the same size, or over it. A grid is scene-graph geometry and shows with
    every graphics API but the software one. Lines are smooth if the item's \c antialiasing is on
    when they are made, which is the default here; a change shows when they are made anew for
    another reason.
*/
/*!
    \class Charts::AbstractGrid
    \brief Base of the grids: their lines' appearance, and the flag that they have to be rebuilt.

    Owned by QML or the application. GUI thread; the scene-graph nodes are written on the render
    thread while the GUI thread is blocked.
*/
class CHARTS_EXPORT AbstractGrid : public ChartItem
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")

    /*! \qmlproperty color AbstractGrid::innerGridLinesColor
        Colour of the lines inside the grid, default dark gray (\c{"#808080"}). */
    Q_PROPERTY(QColor innerGridLinesColor READ innerGridLinesColor WRITE setInnerGridLinesColor
                    NOTIFY innerGridLinesColorChanged)
    /*! \qmlproperty color AbstractGrid::outerGridLinesColor
        Colour of the border lines, and of the axes of round grids, default gray (\c{"#a0a0a4"}).
        Unlike the inner colour a new one requests no repaint: it shows when the grid is built anew
        for another reason, such as a new inner colour, width or size. Set it before the inner one.
        */
    Q_PROPERTY(QColor outerGridLinesColor READ outerGridLinesColor WRITE setOuterGridLinesColor
                    NOTIFY outerGridLinesColorChanged)
    /*! \qmlproperty real AbstractGrid::lineWidth
        Width of the lines in pixels, default 1. A relative change of at most 1e-12 is ignored.
        Nothing else is checked. */
    Q_PROPERTY(double lineWidth READ lineWidth WRITE setLineWidth NOTIFY lineWidthChanged)

public:
    explicit AbstractGrid(QQuickItem *parent = nullptr);
    ~AbstractGrid() override;

    [[nodiscard]] QColor innerGridLinesColor() const { return m_innerGridLinesColor; }
    void setInnerGridLinesColor(QColor innerGridLinesColor);
    [[nodiscard]] QColor outerGridLinesColor() const { return m_outerGridLinesColor; }
    void setOuterGridLinesColor(QColor outerGridLinesColor);
    [[nodiscard]] double lineWidth() const { return m_lineWidth; }
    void setLineWidth(double lineWidth);

Q_SIGNALS:
    void lineWidthChanged(double lineWidth);
    void innerGridLinesColorChanged(QColor innerGridLinesColor);
    /*! \qmlsignal AbstractGrid::blodLineWidthChanged(real blodLineWidth)
        Never emitted, and \a blodLineWidth belongs to no property. The name is part of the
        published interface as it stands. */
    void blodLineWidthChanged(double blodLineWidth);
    void outerGridLinesColorChanged(QColor outerGridLinesColor);

protected:
    void geometryUpdate(const QRectF &newGeometry, const QRectF &oldGeometry) override;

    /*! The lines have to be rebuilt; requests a repaint. */
    void markDirty();
    /*! Whether they have to be; they do not any more. Render thread, GUI thread blocked. */
    [[nodiscard]] bool takeDirty();

private:
    QColor m_innerGridLinesColor = Qt::darkGray;
    QColor m_outerGridLinesColor = Qt::gray;
    double m_lineWidth = 1.0;
    bool m_dirty = true;
};

} // namespace Charts

#endif
