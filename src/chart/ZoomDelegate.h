// SPDX-License-Identifier: MIT
#ifndef CHARTS_ZOOMDELEGATE_H
#define CHARTS_ZOOMDELEGATE_H

#include "ChartsExport.h"

#include <QtCore/QPointF>
#include <QtCore/QRectF>
#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickItem>

namespace Charts {

/*!
    \qmltype ZoomDelegate
    \inqmlmodule zel.charts
    \brief The rubber band of a chart: the rectangle that a drag opens.

    An Item of Qt Quick. Declare it in the chart with whatever is to be seen as its children, set
    \c{visible: false}, and assign it to the chart's \l{Chart::rubberBand}{rubberBand}. A drag shows
    it, gives it position and size, and hides it at the end; it draws nothing itself.

    \snippet Zoom.qml rubber band

    \sa {Zoom}
*/
/*!
    \class Charts::ZoomDelegate
    \brief Tracks, constrains, shows and hides the rectangle of a zoom drag; draws nothing itself.

    Owned by the application; a chart only points to it and drives it. GUI thread.
*/
class CHARTS_EXPORT ZoomDelegate : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT

    /*! \qmlproperty int ZoomDelegate::minSize
        A finished rectangle must be larger than this, in pixels, in both directions to zoom.
        Default 0. A few pixels keep a click from zooming. */
    Q_PROPERTY(int minSize READ minSize WRITE setMinSize NOTIFY minSizeChanged)
    /*! \qmlproperty enumeration ZoomDelegate::zoomType
        The rectangle's shape. The names are those of the direction in which it is stretched, not of
        the axis that zooms.
        \value ZoomDelegate.Diagonal  as it is dragged (default)
        \value ZoomDelegate.Vertical  over the whole height: x zooms
        \value ZoomDelegate.Horizontal  over the whole width: y zooms */
    Q_PROPERTY(ZoomType zoomType READ zoomType WRITE setZoomType NOTIFY zoomTypeChanged)

public:
    /*! \enum Charts::ZoomDelegate::ZoomType
        The shape of the rectangle.
        \value Diagonal As it is dragged.
        \value Vertical Stretched over the whole height.
        \value Horizontal Stretched over the whole width. */
    enum ZoomType {
        Diagonal = 0,
        Vertical = 1,
        Horizontal = 2,
    };
    Q_ENUM(ZoomType)

    explicit ZoomDelegate(QQuickItem *parent = nullptr);
    ~ZoomDelegate() override;

    [[nodiscard]] int minSize() const { return m_minSize; }
    void setMinSize(int minSize);
    [[nodiscard]] ZoomType zoomType() const { return m_zoomType; }
    void setZoomType(ZoomType zoomType);

    /*! Begins a drag at \a point, in coordinates of the parent, whose size bounds it from now on.
        */
    void startResize(const QPointF &point);
    /*! Opens the rectangle from the start of the drag to \a point. */
    void updatePoint(const QPointF &point);
    /*! Hides the item. */
    void stopResize();
    /*! Whether the rectangle is larger than minSize() in both directions. */
    [[nodiscard]] bool isAreaValid() const;
    /*! The rectangle in coordinates of the parent. */
    [[nodiscard]] QRectF resizeArea() const;
    /*! \a rect under the constraint of the zoom type. The name is published as it stands. */
    [[nodiscard]] QRectF corretAccordingToType(const QRectF &rect) const;

Q_SIGNALS:
    void minSizeChanged();
    void zoomTypeChanged();

private:
    int m_minSize = 0;
    ZoomType m_zoomType = Diagonal;
    QPointF m_startPoint;
    QPointF m_currentPoint;
    QRectF m_bounds;
};

} // namespace Charts

#endif
