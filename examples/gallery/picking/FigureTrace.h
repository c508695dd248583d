// SPDX-License-Identifier: MIT
#pragma once

#include <ChartsLibrary/AbstractTrace.h>
#include <ChartsLibrary/TraceData.h>

#include <QtCore/QPointF>
#include <QtQml/qqmlregistration.h>

namespace Gallery {

/*! Two sine oscillations against each other, as an oscilloscope in X-Y mode shows them. */
struct Figure
{
    int xFrequency = 1;
    int yFrequency = 1;
    double phase = 0.0; // of the x oscillation, radians
};

/*! A Lissajous figure. Computed once: its data is at rest from then on. */
class FigureTrace : public Charts::AbstractTrace
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    /*! The figure fills the rectangle of \a width and \a height data units around \a centre. */
    FigureTrace(const Figure &figure, const QPointF &centre, double width, double height,
            QObject *parent);

    Charts::TraceData *traceData() override { return &m_data; }
    void updateData() override;

private:
    Charts::TraceData m_data;
};

} // namespace Gallery
