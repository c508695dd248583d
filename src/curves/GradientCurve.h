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
    \brief A curve with a fill on one side that fades from the curve's colour to nothing, for example
    the mask of a limit test.

    Nothing is drawn without both a \l {Curve::geometryTransform}{geometryTransform} and a \l shape;
    what was drawn before stays. Pointer handlers see the item only near its line, see
    \l containsMouseMargin.
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
        name of its signal is part of the published interface as it stands. */
    Q_PROPERTY(bool upDirection READ upDirection WRITE setUpDirection NOTIFY upGradientChanged)
    /*! \qmlproperty GradientProvider GradientCurve::shape
        How far the fill reaches, default null. Not owned. */
    Q_PROPERTY(Charts::GradientProvider *shape READ shape WRITE setShape NOTIFY shapeChanged)
    /*! \qmlproperty int GradientCurve::containsMouseMargin
        The distance from the edge of the line in pixels below which a point belongs to the item,
        default 10. */
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
    /*! Needs no repaint. */
    void setContainsMouseMargin(int containsMouseMargin);

    /*!
        Whether \a point lies nearer to the line than half its width and containsMouseMargin(). Not
        limited to the item's rectangle; false without a transform. Asks the transform for the points
        and looks at all their segments until one is near enough. GUI thread.
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
