// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_MODELRENDERER_H
#define CHARTS_TEST_MODELRENDERER_H

#include "ModelPointer.h"
#include "ModelTrace.h"
#include "WalkData.h"

#include <QtCore/QSizeF>

#include <functional>
#include <vector>

/*! What the renderer of a chart should have drawn, and what it finds under the pointer. */
class ModelRenderer
{
public:
    /*! Gives the list in drawing order; asked only when it is drawn. */
    using Order = std::function<std::vector<ModelTrace *>()>;

    /*! A frame of a chart of \a size. \a traces is its list in any order. */
    [[nodiscard]] Work feed(bool tracesDirty, const std::vector<ModelTrace *> &traces,
            const Order &order, const QSizeF &size, bool antialiasing,
            std::vector<PointerEvent> &&events);
    /*! After the frame: answers what has been handed over. */
    void resolve();
    [[nodiscard]] std::vector<Answer> takeAnswers();
    /*! \a trace was destroyed: where an image still shows it, nothing is hit. */
    void forget(const void *trace);

    /*! The traces on the screen. */
    [[nodiscard]] const Sketches &image() const { return m_image; }

private:
    /*! To draw \a image once. */
    [[nodiscard]] static Work workOf(const Sketches &image);

    QSize m_size = {1, 1};
    bool m_isAntialiased = false;
    bool m_needsImages = true;
    bool m_needsRender = true;
    bool m_selectionDirty = true;
    bool m_isEmpty = true;
    Sketches m_image;
    Sketches m_selection;
    std::vector<PointerEvent> m_events;
    std::vector<Answer> m_answers;
};

#endif
