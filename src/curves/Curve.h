// SPDX-License-Identifier: MIT
#ifndef CHARTS_CURVE_H
#define CHARTS_CURVE_H

#include "ChartItem.h"
#include "ChartsExport.h"

#include <QtCore/QPointF>
#include <QtCore/QPointer>
#include <QtCore/QRect>
#include <QtGui/QColor>
#include <QtQml/qqmlregistration.h>

Q_MOC_INCLUDE("ChartsLibrary/AbstractCurveTransform.h")

namespace Charts {

class AbstractCurveTransform;

/*!
    \qmltype Curve
    \inqmlmodule zel.charts
    \inherits ChartItem
    \brief A smooth line between two points, for example a limit that a trace must not cross.

    \snippet Limits.qml curve

    Its shape comes from \l geometryTransform. It is not clipped to the item, which has to have a
    size nevertheless: nothing is drawn in an item narrower or lower than half a pixel.
*/
/*!
    \class Charts::Curve
    \brief A line between two points, shaped by an AbstractCurveTransform.

    Owned by QML or the application. GUI thread; the scene-graph nodes are written on the render
    thread while the GUI thread is blocked.
*/
class CHARTS_EXPORT Curve : public ChartItem
{
    Q_OBJECT
    QML_ELEMENT

    /*! \qmlproperty AbstractCurveTransform Curve::geometryTransform
        The line's shape, default null: nothing is drawn, and what was drawn before stays. Not
        owned; null again after it was destroyed, without a signal. A change of the transform itself
        shows when a property or the size of the curve changes: take the transform away and give it
        back to see it at once. */
    Q_PROPERTY(AbstractCurveTransform *geometryTransform READ geometryTransform WRITE
                    setGeometryTransform NOTIFY geometryTransformChanged)
    /*! \qmlproperty point Curve::p1
        The first end in pixels of the item, default (0, 0). A change of a coordinate by at most a
        part of 1e-12, or by 1e-12 where one of the two is zero, is ignored. */
    Q_PROPERTY(QPointF p1 READ p1 WRITE setP1 NOTIFY p1Changed)
    /*! \qmlproperty point Curve::p2
        The second end in pixels of the item, default (0, 0), as \l p1. */
    Q_PROPERTY(QPointF p2 READ p2 WRITE setP2 NOTIFY p2Changed)
    /*! \qmlproperty real Curve::lineWidth
        Width of the line in pixels, default 1. A relative change of at most 1e-12 is ignored. Bent
        lines look best up to about 2: the joints of smooth lines are transparent, so that wider
        ones show small notches on the outside of their bends. */
    Q_PROPERTY(double lineWidth READ lineWidth WRITE setLineWidth NOTIFY lineWidthChanged)
    /*! \qmlproperty color Curve::color
        Colour of the line, default gray (\c{"#a0a0a4"}). Its alpha counts. */
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)

public:
    explicit Curve(QQuickItem *parent = nullptr);
    ~Curve() override;

    /*! Null as well after the transform was destroyed. */
    [[nodiscard]] AbstractCurveTransform *geometryTransform() const;
    void setGeometryTransform(AbstractCurveTransform *geometryTransform);
    [[nodiscard]] QPointF p1() const { return m_p1; }
    void setP1(QPointF p1);
    [[nodiscard]] QPointF p2() const { return m_p2; }
    void setP2(QPointF p2);
    [[nodiscard]] double lineWidth() const { return m_lineWidth; }
    void setLineWidth(double lineWidth);
    [[nodiscard]] QColor color() const { return m_color; }
    void setColor(QColor color);

Q_SIGNALS:
    void p1Changed();
    void p2Changed();
    void lineWidthChanged();
    void colorChanged();
    void geometryTransformChanged();

protected:
    void geometryUpdate(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override;

    /*! The line has to be rebuilt; requests a repaint. */
    void markDirty();
    /*! Whether it has to be; it does not any more. Render thread, GUI thread blocked. */
    [[nodiscard]] bool takeDirty();
    /*! The bounding rectangle in whole pixels. */
    [[nodiscard]] QRect pixelRect() const;

private:
    QPointF m_p1;
    QPointF m_p2;
    double m_lineWidth = 1.0;
    QColor m_color = Qt::gray;
    bool m_dirty = true;
    QPointer<AbstractCurveTransform> m_geometryTransform;
};

} // namespace Charts

#endif
