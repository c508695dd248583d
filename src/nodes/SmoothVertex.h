// SPDX-License-Identifier: MIT
#ifndef CHARTS_SMOOTHVERTEX_H
#define CHARTS_SMOOTHVERTEX_H

#include "PremultipliedColor.h"

#include <cstddef>

namespace Charts {

/*!
    \internal
    A vertex of SmoothColorMaterial. Position and offset are in coordinates of the item; the shader
    moves the vertex along its offset.
*/
struct SmoothVertex
{
    float x = 0.0F;
    float y = 0.0F;
    PremultipliedColor color;
    float dx = 0.0F;
    float dy = 0.0F;
};
static_assert(sizeof(SmoothVertex) == 20);
static_assert(offsetof(SmoothVertex, x) == 0);
static_assert(offsetof(SmoothVertex, color) == 8);
static_assert(offsetof(SmoothVertex, dx) == 12);

} // namespace Charts

#endif
