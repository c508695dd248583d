// SPDX-License-Identifier: MIT
#ifndef CHARTS_CHARTRUN_H
#define CHARTS_CHARTRUN_H

#include "BenchmarkOptions.h"

#include <QtCore/QByteArray>

/*! Draws the frames with a Chart in a Qt Quick window, or, when it is to be \a empty, with nothing in
    it. Returns the line of the report; it is empty when a frame was not drawn. */
[[nodiscard]] QByteArray runChart(const BenchmarkOptions &options, bool empty);

#endif
