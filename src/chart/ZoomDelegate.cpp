// SPDX-License-Identifier: MIT
#include "ZoomDelegate.h"

#include "ThreadCheck.h"

namespace Charts {

ZoomDelegate::ZoomDelegate(QQuickItem *parent)
    : QQuickItem(parent)
{
}

ZoomDelegate::~ZoomDelegate() = default;

void ZoomDelegate::setMinSize(int minSize)
{
    Q_ASSERT(isOnThreadOf(this));
    if (minSize == m_minSize)
        return;
    m_minSize = minSize;
    Q_EMIT minSizeChanged();
}

void ZoomDelegate::setZoomType(ZoomType zoomType)
{
    Q_ASSERT(isOnThreadOf(this));
    if (zoomType == m_zoomType)
        return;
    m_zoomType = zoomType;
    Q_EMIT zoomTypeChanged();
}

void ZoomDelegate::startResize(const QPointF &point)
{
    Q_ASSERT(isOnThreadOf(this));
    m_startPoint = point;
    m_currentPoint = point;
    const QQuickItem *parent = parentItem();
    m_bounds = QRectF(QPointF(0.0, 0.0), parent ? parent->size() : QSizeF(0.0, 0.0));
    setSize(QSizeF(0.0, 0.0));
    setPosition(point);
    setVisible(true);
}

void ZoomDelegate::updatePoint(const QPointF &point)
{
    Q_ASSERT(isOnThreadOf(this));
    m_currentPoint = point;
    const QPointF extent = m_currentPoint - m_startPoint;
    const QRectF dragged =
            QRectF(m_startPoint, QSizeF(extent.x(), extent.y())).normalized().intersected(m_bounds);
    const QRectF area = corretAccordingToType(dragged);
    setPosition(area.topLeft());
    setSize(area.size());
}

void ZoomDelegate::stopResize()
{
    Q_ASSERT(isOnThreadOf(this));
    setVisible(false);
}

bool ZoomDelegate::isAreaValid() const
{
    return m_minSize < width() && m_minSize < height();
}

QRectF ZoomDelegate::resizeArea() const
{
    return {position(), size()};
}

QRectF ZoomDelegate::corretAccordingToType(const QRectF &rect) const
{
    switch (m_zoomType) {
    case Vertical:
        return {rect.x(), rect.y() + (0.0 - rect.y()), rect.width(), m_bounds.height()};
    case Horizontal:
        return {rect.x() + (0.0 - rect.x()), rect.y(), m_bounds.width(), rect.height()};
    case Diagonal:
        break;
    }
    return rect;
}

} // namespace Charts
