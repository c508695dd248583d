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

    /*!
        The channels are truncated, not rounded, so that it matters in which precision the factor
        255 is applied: a product just below a whole number in \c double may be that number in
        \c float. \a Real is the type of that last multiplication.
    */
    template<typename Real>
    [[nodiscard]] static PremultipliedColor from(const QColor &color)
    {
        const float alpha = color.alphaF();
        const auto byte = [](float fraction) {
            const Real value = static_cast<Real>(fraction) * Real(255);
            // Colours of the extended range exceed a byte, of which the low bits are kept, and may
            // be infinite, of which nothing is.
            if (!(std::abs(value) < Real(1 << 30)))
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
