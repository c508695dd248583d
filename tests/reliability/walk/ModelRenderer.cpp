// SPDX-License-Identifier: MIT
#include "ModelRenderer.h"

#include "WalkGeometry.h"

#include <algorithm>
#include <cmath>
#include <utility>

Work ModelRenderer::feed(bool tracesDirty, const std::vector<ModelTrace *> &traces,
        const Order &order, const QSizeF &size, bool antialiasing,
        std::vector<PointerEvent> &&events)
{
    const QSize pixels(int(std::lround(size.width())), int(std::lround(size.height())));
    if (pixels != m_size) {
        m_size = pixels;
        m_needsImages = m_needsRender = m_selectionDirty = true;
    }
    if (antialiasing != m_isAntialiased) {
        m_isAntialiased = antialiasing;
        m_needsImages = m_needsRender = true;
    }
    m_isEmpty = traces.empty();
    if (tracesDirty)
        m_needsRender = m_selectionDirty = true;
    m_events.insert(m_events.end(), events.begin(), events.end());

    if (!tracesDirty) {
        const bool isAnyDirty = std::any_of(traces.begin(), traces.end(),
                [](const ModelTrace *trace) { return trace->isDirty(); });
        if (isAnyDirty)
            m_needsRender = m_selectionDirty = true;
    }
    Work work;
    if (!std::exchange(m_needsRender, false))
        return work;
    m_image = {m_size, {}};
    if (m_isEmpty) {
        // What is on the screen, if anything is, has to go.
        work.blits.most = 1;
        return work;
    }
    const std::vector<ModelTrace *> ordered = order();
    if (!tracesDirty) {
        // Only the first of the changed ones is settled; the others ask for another frame.
        const auto dirty = std::find_if(ordered.begin(), ordered.end(),
                [](const ModelTrace *trace) { return trace->isDirty(); });
        if (dirty != ordered.end())
            (*dirty)->lookDirty = false;
    }
    if (std::exchange(m_needsImages, false))
        m_selection = {};

    for (ModelTrace *trace : ordered) {
        if (trace->look.isVisible)
            m_image.traces.push_back(trace->draw());
    }
    work = workOf(m_image);
    work.blits.least = work.blits.most = m_isAntialiased ? 1 : 0;
    for (ModelTrace *trace : ordered)
        work.uploadedBytes += trace->takeUploads();
    if (!m_events.empty() && std::exchange(m_selectionDirty, false)) {
        m_selection = m_image;
        work += workOf(m_image);
    }
    return work;
}

void ModelRenderer::resolve()
{
    for (const PointerEvent &event : std::exchange(m_events, {})) {
        if (m_isEmpty)
            m_answers.push_back({event, {nullptr}});
        else
            m_answers.push_back({event, tracesAt(m_selection, event.position)});
    }
}

std::vector<Answer> ModelRenderer::takeAnswers()
{
    return std::exchange(m_answers, {});
}

void ModelRenderer::forget(const void *trace)
{
    for (Sketch &sketch : m_selection.traces) {
        if (sketch.trace == trace)
            sketch.trace = nullptr;
    }
    for (Answer &answer : m_answers)
        std::replace(answer.traces.begin(), answer.traces.end(), trace,
                static_cast<const void *>(nullptr));
}

Work ModelRenderer::workOf(const Sketches &image)
{
    Work work;
    for (const Sketch &sketch : image.traces) {
        // The viewport stays in effect from one trace to the next.
        const QRect viewport = viewportOf(sketch.look, image.size);
        if (work.viewports.isEmpty() || work.viewports.last() != viewport)
            work.viewports.append(viewport);
        if (sketch.points.empty())
            continue;
        // Once, and twice more for each axis whose ends are drawn by further matrices.
        ++work.drawCalls;
        for (const auto method : {sketch.look.boundingX, sketch.look.boundingY})
            work.drawCalls += method == Charts::BoundingMethod::ExtraMatrices ? 2 : 0;
    }
    return work;
}
