// SPDX-License-Identifier: MIT
#ifndef CHARTS_VIEWPORT_H
#define CHARTS_VIEWPORT_H

namespace Charts {

/*!
    \class Charts::ViewPort
    \brief The data rectangle that a trace shows: left, bottom and extent in data units.
*/
struct ViewPort
{
    float x = 0.0F;
    float y = 0.0F;
    float width = 1.0F;
    float height = 1.0F;

    friend constexpr bool operator==(const ViewPort &, const ViewPort &) = default;
};

static_assert(sizeof(ViewPort) == 16);

} // namespace Charts

#endif
