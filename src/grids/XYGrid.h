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
    \inherits AbstractGrid
    \brief A cartesian grid: a border, vertical lines in one of four layouts, horizontal lines at
    equal distances.

    It reads no trace domain: bind \l xRange to the range of the trace that it belongs to, and place
    label texts at \l xLabels.

    \snippet AxisLabels.qml grid

    \sa {Axis labels}
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
        Where the vertical lines are. A new layout draws new lines at once, but leaves \l xLabels as
        they are until the range changes: set the layout before the range.
        \value XYGrid.EquidistantGrid  at tenths of the width (default)
        \value XYGrid.CenteredLinGrid  one in the middle, four to each side at a tenth of the range,
            rounded to four significant digits
        \value XYGrid.NiceLabelsLinGrid  at multiples of \l{Domain::niceStep()}{a readable step};
            none at the upper end of the range, where the border is
        \value XYGrid.LogGrid  at 1, 2, ... 9 times each power of ten; none at the lower end of the
            range, where the border is. The range is in decades, (0, 3) for 1 to 1000; a negative
            end counts as 0: data below 1 have no lines, and the others have theirs elsewhere than
            the trace */
    Q_PROPERTY(GridLayoutMode xLayout READ xLayout WRITE setXLayout NOTIFY xLayoutChanged)
    /*! \qmlproperty span XYGrid::xRange
        What the grid's width shows, in data units; decades in the layout LogGrid. Default (0, 0),
        which has no lines at values of its own: set it. A change within the tolerance of spans
        (1e-12 of the ends, or 1e-12 where one of them is zero) is ignored. */
    Q_PROPERTY(Span xRange READ xRange WRITE setXRange NOTIFY xRangeChanged)
    /*! \qmlproperty int XYGrid::yCount
        Number of bands of equal height; there is a line between each two, and none below 2. Default
        10. There is no range in y: the lines do not follow a zoom, their values do, see
        \l{Axis labels}. */
    Q_PROPERTY(int yCount READ yCount WRITE setYCount NOTIFY yCountChanged)
    /*! \qmlproperty list XYGrid::xLabels
        Values of the vertical lines in ascending order, in data units; exponents of ten in the
        layout LogGrid. Read only, empty at first. They follow changes of \l xRange alone, not those
        of \l xLayout. The signal comes with each change of the range, also if the values are the
        same. */
    Q_PROPERTY(QVariantList xLabels READ xLabels NOTIFY xLabelsChanged)

public:
    /*! \enum Charts::XYGrid::GridLayoutMode
        Where the vertical lines are; more is told with \l [QML] {XYGrid::xLayout}.
        \value EquidistantGrid At tenths of the width.
        \value CenteredLinGrid One in the middle, four to each side.
        \value NiceLabelsLinGrid At the multiples of a readable step.
        \value LogGrid At 1, 2, ... 9 times each power of ten. */
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
    void setXRange(const Span &xRange);
    [[nodiscard]] int yCount() const { return m_yCount; }
    void setYCount(int yCount);
    [[nodiscard]] QVariantList xLabels() const { return m_xLabels; }

    /*! The vertical and then the horizontal lines for an item of the size of \a rect, in its
        pixels, and the values of the vertical ones, in the order of their lines. */
    [[nodiscard]] std::pair<std::vector<QLine>, std::vector<double>> innerLines(
            const QRect &rect) const;
    /*! The border of an item of the size of \a rect: left, bottom, right, top. */
    [[nodiscard]] std::vector<QLine> outerLines(const QRect &rect) const;
    /*! Computes the lines for the item's size. Called by itself with each change that matters. The
        name is published as it stands. */
    void updateGeomerty();
    /*! Takes the values of the lines over into xLabels(), sorted. Called by itself when the range
        changes; call it after a change of the layout alone. */
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
