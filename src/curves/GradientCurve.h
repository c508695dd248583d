// SPDX-License-Identifier: MIT
#ifndef CHARTS_GRADIENTCURVE_H
#define CHARTS_GRADIENTCURVE_H

#include "ChartsExport.h"
#include "Curve.h"

#include <QtCore/QPointer>
#include <QtQml/qqmlregistration.h>

Q_MOC_INCLUDE("ChartsLibrary/GradientProvider.h")

namespace Charts {

class GradientProvider;

/*!
    \qmltype GradientCurve
    \inqmlmodule zel.charts
    \inherits Curve
    \brief A curve with a fill on one side that fades from the curve's colour to nothing, for
    example the mask of a limit test.

    \snippet Limits.qml gradient curve

    Nothing is drawn without both a \l {Curve::geometryTransform}{geometryTransform} and a \l shape;
    what was drawn before stays. Pointer handlers see the item only near its line, see
    \l containsMouseMargin. Make the curve translucent by the \c opacity of the item: the fill of a
    \l {Curve::color}{color} with an alpha below 1 is brighter than it should be. The fill may reach
    beyond the item; clip it where that shows.
*/
/*!
    \class Charts::GradientCurve
    \brief A curve with a gradient fill on one side and hit-testing along its line.

    Owned by QML or the application. GUI thread; the scene-graph nodes are written on the render
    thread while the GUI thread is blocked.
*/
class CHARTS_EXPORT GradientCurve : public Curve
{
    Q_OBJECT
    QML_ELEMENT

    /*! \qmlproperty bool GradientCurve::upDirection
        Whether the fill is above the line, towards y = 0, instead of below it. Default false. The
        notify signal has a name of its own. Handlers in documents go by either name,
        \c onUpGradientChanged or \c onUpDirectionChanged. */
    Q_PROPERTY(bool upDirection READ upDirection WRITE setUpDirection NOTIFY upGradientChanged)
    /*! \qmlproperty GradientProvider GradientCurve::shape
        How far the fill reaches, default null: neither line nor fill is drawn. Not owned; null
        again after it was destroyed, without a signal. */
    Q_PROPERTY(Charts::GradientProvider *shape READ shape WRITE setShape NOTIFY shapeChanged)
    /*! \qmlproperty int GradientCurve::containsMouseMargin
        The distance from the edge of the line in pixels below which a point belongs to the item, so
        that pointer handlers in it react, default 10. Needs no repaint. A negative one makes the
        line thinner for the pointer. */
    Q_PROPERTY(int containsMouseMargin READ containsMouseMargin WRITE setContainsMouseMargin NOTIFY
                    containsMouseMarginChanged)

public:
    explicit GradientCurve(QQuickItem *parent = nullptr);
    ~GradientCurve() override;

    [[nodiscard]] bool upDirection() const { return m_upDirection; }
    void setUpDirection(bool upDirection);
    /*! Null as well after the provider was destroyed. */
    [[nodiscard]] GradientProvider *shape() const;
    void setShape(GradientProvider *shape);
    [[nodiscard]] int containsMouseMargin() const { return m_containsMouseMargin; }
    void setContainsMouseMargin(int containsMouseMargin);

    /*!
        Whether \a point lies nearer to the line than half its width and containsMouseMargin()
        together. Not limited to the item's rectangle; false without a transform. Asks the transform
        for the points and looks at all their segments until one is near enough. GUI thread.
    */
    [[nodiscard]] bool contains(const QPointF &point) const override;

Q_SIGNALS:
    void upGradientChanged();
    void shapeChanged();
    void containsMouseMarginChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override;

private:
    bool m_upDirection = false;
    int m_containsMouseMargin = 10;
    QPointer<GradientProvider> m_shape;
};

} // namespace Charts

#endif
