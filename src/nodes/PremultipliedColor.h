// SPDX-License-Identifier: MIT
#ifndef CHARTS_PREMULTIPLIEDCOLOR_H
#define CHARTS_PREMULTIPLIEDCOLOR_H

#include <QtGui/QColor>

#include <cmath>
#include <cstdint>

namespace Charts {

/*!
    \internal
    A colour as the scene graph blends it: each channel multiplied by the alpha, one byte each.
    Transparent unless set.
*/
struct PremultipliedColor
{
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 0;

    [[nodiscard]] static PremultipliedColor from(const QColor &color)
    {
        const float alpha = color.alphaF();
        const auto byte = [](float fraction) {
            const float value = fraction * 255.0F;
            // Truncated, not rounded. Colours of the extended range exceed a byte, of which the low bits are kept, and may
            // be infinite, of which nothing is.
            if (!(std::abs(value) < 1e9F))
                return std::uint8_t(0);
            return static_cast<std::uint8_t>(static_cast<std::int32_t>(value) & 0xFF);
        };
        return {byte(color.redF() * alpha), byte(color.greenF() * alpha),
                byte(color.blueF() * alpha), byte(alpha)};
    }
};
static_assert(sizeof(PremultipliedColor) == 4);

} // namespace Charts

#endif
