// SPDX-License-Identifier: MIT
#include "TracePicker.h"

#include "Rounding.h"

#include <QtGui/QOpenGLFunctions>
#include <QtOpenGL/QOpenGLFramebufferObject>

#include <array>
#include <cstdint>
#include <iterator>
#include <utility>

namespace Charts {

QVector3D TracePicker::colorOf(std::size_t index)
{
    const auto channel = [index](unsigned shift) {
        return static_cast<float>((index >> shift) & 0xFFU) / 255.0F;
    };
    return {channel(0), channel(8), channel(16)};
}

void TracePicker::push(std::vector<std::unique_ptr<QMouseEvent>> &&events)
{
    auto taken = std::exchange(events, {});
    m_events.insert(m_events.end(), std::make_move_iterator(taken.begin()),
            std::make_move_iterator(taken.end()));
}

QPointer<AbstractTrace> TracePicker::findTrace(
        QOpenGLFunctions &gl, QOpenGLFramebufferObject *image, const QMouseEvent &event) const
{
    const std::int64_t x = roundToInt(event.position().x());
    // The picture's rows run bottom-up. Without a further - 1 the row read is the one above the
    // mirrored row: an event exactly on the boundary of two rows belongs to the upper one.
    const std::int64_t y = image->height() - std::int64_t{roundToInt(event.position().y())};
    if (x < 0 || x >= image->width() || y < 0 || y >= image->height())
        return nullptr;
    image->bind();
    std::array<unsigned char, 4> pixel = {};
    gl.glReadPixels(static_cast<GLint>(x), static_cast<GLint>(y), 1, 1, GL_RGBA, GL_UNSIGNED_BYTE,
            pixel.data());
    if (pixel[3] != 255)
        return nullptr;
    const std::size_t index =
            pixel[0] + (std::size_t{pixel[1]} << 8) + (std::size_t{pixel[2]} << 16);
    return index < m_selectionTraces.size() ? m_selectionTraces[index] : nullptr;
}

std::vector<MouseEventResponse> TracePicker::takeResponses()
{
    for (std::size_t i = 0; i < m_responses.size(); ++i) {
        AbstractTrace *trace = m_hits[i];
        m_responses[i].trace = trace;
        m_responses[i].target =
                trace ? MouseEventResponse::Target::Trace : MouseEventResponse::Target::Background;
    }
    m_hits.clear();
    return std::exchange(m_responses, {});
}

} // namespace Charts
