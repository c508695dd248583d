// SPDX-License-Identifier: MIT
#ifndef CHARTS_XYGRID_H
#define CHARTS_XYGRID_H

#include "AbstractGrid.h"
#include "ChartsExport.h"
#include "Span.h"

#include <QtCore/QLine>
#include <QtCore/QRect>
#include <QtCore/QVariantList>
#include <QtQml/qqmlregistration.h>

#include <utility>
#include <vector>

namespace Charts {

/*!
    \qmltype XYGrid
    \inqmlmodule zel.charts
    \brief A cartesian grid: a border, vertical lines in one of four layouts, horizontal lines at
    equal distances.

    It reads no trace domain: bind \c xRange to the range of the trace that it belongs to, and place
    label texts at \c xLabels.
*/
/*!
    \class Charts::XYGrid
    \brief A cartesian grid.

    Owned by QML or the application. GUI thread; nodes are written on the render thread while the
    GUI thread is blocked.
*/
class CHARTS_EXPORT XYGrid : public AbstractGrid
{
    Q_OBJECT
    QML_ELEMENT

    /*! \qmlproperty enumeration XYGrid::xLayout
        Where the vertical lines are.
        \value XYGrid.EquidistantGrid  at tenths of the width (default)
        \value XYGrid.CenteredLinGrid  one in the middle, four to each side at a step of four
            significant digits
        \value XYGrid.NiceLabelsLinGrid  at the multiples of Domain::niceStep()
        \value XYGrid.LogGrid  at 1, 2, ... 9 times each power of ten; \c xRange is in decades and
            counts from 0 */
    Q_PROPERTY(GridLayoutMode xLayout READ xLayout WRITE setXLayout NOTIFY xLayoutChanged)
    /*! \qmlproperty span XYGrid::xRange
        What the grid's width shows, in data units. Default (0, 0). */
    Q_PROPERTY(Span xRange READ xRange WRITE setXRange NOTIFY xRangeChanged)
    /*! \qmlproperty int XYGrid::yCount
        Number of bands between the horizontal lines; below 2 there are no lines. Default 10. */
    Q_PROPERTY(int yCount READ yCount WRITE setYCount NOTIFY yCountChanged)
    /*! \qmlproperty list XYGrid::xLabels
        Values of the vertical lines in ascending order; exponents of ten in the layout LogGrid. Read
        only. Follows changes of \c xRange alone, not those of the layout. */
    Q_PROPERTY(QVariantList xLabels READ xLabels NOTIFY xLabelsChanged)

public:
    enum GridLayoutMode {
        EquidistantGrid = 0,
        CenteredLinGrid = 1,
        NiceLabelsLinGrid = 2,
        LogGrid = 3,
    };
    Q_ENUM(GridLayoutMode)

    explicit XYGrid(QQuickItem *parent = nullptr);
    ~XYGrid() override;

    [[nodiscard]] GridLayoutMode xLayout() const { return m_xLayout; }
    void setXLayout(GridLayoutMode xLayout);
    [[nodiscard]] Span xRange() const { return m_xRange; }
    /*! A change within the tolerance of Span's comparison is ignored. */
    void setXRange(const Span &xRange);
    [[nodiscard]] int yCount() const { return m_yCount; }
    void setYCount(int yCount);
    [[nodiscard]] QVariantList xLabels() const { return m_xLabels; }

    /*! The vertical and then the horizontal lines for an item of the size of \a rect, in its pixels,
        and the values of the vertical ones, in the order of their lines. */
    [[nodiscard]] std::pair<std::vector<QLine>, std::vector<double>> innerLines(
            const QRect &rect) const;
    /*! The border of an item of the size of \a rect: left, bottom, right, top. */
    [[nodiscard]] std::vector<QLine> outerLines(const QRect &rect) const;
    /*! Computes the lines for the item's size. The name is published as it stands. */
    void updateGeomerty();
    /*! Takes the values of the lines over into xLabels, sorted. */
    void updateLabels();

Q_SIGNALS:
    void xLayoutChanged(GridLayoutMode xLayout);
    void yCountChanged(int yCount);
    void xRangeChanged(Span xRange);
    void xLabelsChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override;
    void geometryUpdate(const QRectF &newGeometry, const QRectF &oldGeometry) override;

private:
    int m_xDivisions = 10;
    Span m_xRange;
    GridLayoutMode m_xLayout = EquidistantGrid;
    int m_yCount = 10;
    std::vector<QLine> m_innerLines;
    std::vector<QLine> m_outerLines;
    std::vector<double> m_labelValues;
    QVariantList m_xLabels;
};

} // namespace Charts

#endif
