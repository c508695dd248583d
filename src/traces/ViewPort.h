// SPDX-License-Identifier: MIT
#ifndef CHARTS_VIEWPORT_H
#define CHARTS_VIEWPORT_H

namespace Charts {

/*!
    \class Charts::ViewPort
    \brief The data rectangle that a trace shows: left, bottom and extent in data units.

    A negative extent mirrors the picture. An extent of 0 shows nothing.
*/
struct ViewPort
{
    /*! What is at the left edge. */
    float x = 0.0F;
    /*! What is at the bottom edge. */
    float y = 0.0F;
    /*! From the left to the right edge. */
    float width = 1.0F;
    /*! From the bottom to the top edge. */
    float height = 1.0F;

    friend constexpr bool operator==(const ViewPort &, const ViewPort &) = default;
};

static_assert(sizeof(ViewPort) == 16);

} // namespace Charts

#endif
