// SPDX-License-Identifier: MIT
#ifndef CHARTS_FLOORRUN_H
#define CHARTS_FLOORRUN_H

#include "BenchmarkOptions.h"

#include <QtCore/QByteArray>

/*! Draws the same frames with bare OpenGL calls in a window without Qt Quick, or, when it is to be
    \a empty, clears it only. Returns the line of the report; it is empty when there is no OpenGL. */
[[nodiscard]] QByteArray runFloor(const BenchmarkOptions &options, bool empty);

#endif
