// SPDX-License-Identifier: MIT
#ifndef CHARTS_SIGNALVERTICES_H
#define CHARTS_SIGNALVERTICES_H

#include "SignalSource.h"

#include <ChartsLibrary/TracePoint.h>

#include <QtGui/QColor>

#include <vector>

/*! What the chart and the bare OpenGL calls draw alike. */
namespace SignalVertices {

constexpr float lineWidth = 1.0F;

/*! The colour of a trace; it has two, one of which it wears. */
[[nodiscard]] inline QColor colorOf(int index, bool isOther)
{
    return QColor::fromHsv(index * 67 % 360, 255, isOther ? 160 : 200);
}

inline void write(std::vector<Charts::TracePoint> &points, const SignalSource::Piece &piece,
        const SignalSource &source)
{
    for (int i = 0; i < piece.length; ++i) {
        const int index = piece.first + i;
        points[static_cast<std::size_t>(index)] = {
                static_cast<float>(index), source.valueAt(piece.sample + i), 1.0F};
    }
}

} // namespace SignalVertices

#endif
