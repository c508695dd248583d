// SPDX-License-Identifier: MIT
#pragma once

#include "LimitReading.h"

#include <ChartsLibrary/AbstractTrace.h>
#include <ChartsLibrary/Curve.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace Gallery {

/*!
    Watches whether a trace crosses a curve that lies over its chart, and has the chart's size. It
    compares what is drawn: the vertices of the trace with the points of the curve.
*/
class LimitTest : public QObject
{
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(Charts::AbstractTrace *trace READ trace WRITE setTrace)
    Q_PROPERTY(Charts::Curve *curve READ curve WRITE setCurve)
    /*! Whether the trace has to stay above the curve instead of below it. */
    Q_PROPERTY(bool isLower READ isLower WRITE setIsLower)

    /*! Whether trace and curve have something to compare. */
    Q_PROPERTY(bool isValid READ isValid NOTIFY updated)
    /*! Whether the trace is beyond the curve somewhere. */
    Q_PROPERTY(bool isExceeded READ isExceeded NOTIFY updated)
    /*! Where the trace is nearest to the curve or farthest beyond it, in its units. */
    Q_PROPERTY(QPointF place READ place NOTIFY updated)
    /*! How far it is from the curve there; below 0 beyond it. */
    Q_PROPERTY(double margin READ margin NOTIFY updated)

public:
    explicit LimitTest(QObject *parent = nullptr);

    [[nodiscard]] Charts::AbstractTrace *trace() const { return m_trace; }
    void setTrace(Charts::AbstractTrace *trace) { m_trace = trace; }
    [[nodiscard]] Charts::Curve *curve() const { return m_curve; }
    void setCurve(Charts::Curve *curve) { m_curve = curve; }
    [[nodiscard]] bool isLower() const { return m_side == LimitSide::Lower; }
    void setIsLower(bool isLower) { m_side = isLower ? LimitSide::Lower : LimitSide::Upper; }

    [[nodiscard]] bool isValid() const { return m_reading.has_value(); }
    [[nodiscard]] bool isExceeded() const { return m_reading && m_reading->margin < 0.0; }
    [[nodiscard]] QPointF place() const;
    [[nodiscard]] double margin() const { return m_reading ? m_reading->margin : 0.0; }

    /*! The curve's y at \a x, both in the trace's units; NaN where it has none. */
    Q_INVOKABLE double limitAt(double x) const;
    /*! Compares; called some times a second without being asked. */
    Q_INVOKABLE void update();

Q_SIGNALS:
    void updated();

private:
    /*! The curve in the trace's units, from left to right. */
    [[nodiscard]] QList<QPointF> limit() const;

    QPointer<Charts::AbstractTrace> m_trace;
    QPointer<Charts::Curve> m_curve;
    LimitSide m_side = LimitSide::Upper;
    std::optional<LimitReading> m_reading;
    QTimer m_timer;
};

} // namespace Gallery
