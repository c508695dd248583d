// SPDX-License-Identifier: MIT
#ifndef CHARTS_LOGARITHMICCURVETRANSFORM_H
#define CHARTS_LOGARITHMICCURVETRANSFORM_H

#include "AbstractCurveTransform.h"
#include "ChartsExport.h"

#include <QtQml/qqmlregistration.h>

namespace Charts {

/*!
    \qmltype LogarithmicCurveTransform
    \inqmlmodule zel.charts
    \inherits AbstractCurveTransform
    \brief An exponential bend between the two ends of a curve.

    With x as the distance from the first end in x, in pixels, and w as that of the second end, both
    negative for a line that runs to the left, the line has covered the part t of its way in y:

    \code
    t = (10^(decibel * x) - 1) / (10^(decibel * w) - 1)
    \endcode

    As the exponent counts pixels, the same \l decibel bends a longer line more. A vertical line is
    straight. A curve does not listen to its transform, see \l{Curve::geometryTransform}.
*/
/*!
    \class Charts::LogarithmicCurveTransform
    \brief An exponential bend.

    Owned by QML or the application.
*/
class CHARTS_EXPORT LogarithmicCurveTransform : public AbstractCurveTransform
{
    Q_OBJECT
    QML_ELEMENT

    /*! \qmlproperty real LogarithmicCurveTransform::decibel
        The steepness, in powers of ten per pixel, default 0. Above 0 a line to the right stays near
        its first end and moves late, below 0 it moves early; the other way round for a line to the
        left. The useful values are small, a few divided by the width of the curve. There is no bend
        for 0, whose quotient is 0/0, nor so near to it that the powers are 1: a line whose ends lie
        on different sides of y = 0, or on it, is not drawn at all, every other one lies flat at its
        second end. Use a LinearCurveTransform for a straight line. A relative change of at most
        1e-12 is ignored. */
    Q_PROPERTY(double decibel READ decibel WRITE setDecibel NOTIFY decibelChanged)
    /*! \qmlproperty int LogarithmicCurveTransform::pointCount
        The number of points of the line, at equal distances in x, default 100. Values below 2 are
        ignored. */
    Q_PROPERTY(int pointCount READ pointCount WRITE setPointCount NOTIFY pointCountChanged)

public:
    explicit LogarithmicCurveTransform(QObject *parent = nullptr);
    ~LogarithmicCurveTransform() override;

    [[nodiscard]] double decibel() const { return m_decibel; }
    void setDecibel(double decibel);
    [[nodiscard]] int pointCount() const { return m_pointCount; }
    void setPointCount(int pointCount);

    /*! As many points as pointCount() tells, at equal distances in x, the first at \a p1, the last
        at \a p2 up to rounding. */
    QList<QPointF> points(QPointF p1, QPointF p2) override;

Q_SIGNALS:
    void decibelChanged();
    void pointCountChanged();

private:
    double m_decibel = 0.0;
    int m_pointCount = 100;
};

} // namespace Charts

#endif
