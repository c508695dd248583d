// SPDX-License-Identifier: MIT
#ifndef CHARTS_SIGNALPOINTS_H
#define CHARTS_SIGNALPOINTS_H

#include "SignalSource.h"

#include <ChartsLibrary/TracePoint.h>

#include <vector>

/*! Writes the new points of a trace. */
inline void writePoints(std::vector<Charts::TracePoint> &points, const SignalSource::Piece &piece,
        const SignalSource &source)
{
    for (int i = 0; i < piece.length; ++i) {
        const int index = piece.first + i;
        points[static_cast<std::size_t>(index)] = {
                static_cast<float>(index), source.valueAt(piece.sample + i), 1.0F};
    }
}

#endif
