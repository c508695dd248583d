// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_MODELCHART_H
#define CHARTS_TEST_MODELCHART_H

#include "ModelPointer.h"
#include "ModelRenderer.h"
#include "ModelTrace.h"

#include <QtCore/QRectF>
#include <QtCore/QSizeF>
#include <QtCore/QStringList>

#include <optional>
#include <vector>

/*! What a chart should do. It knows nothing of the library but its value types. */
class ModelChart
{
public:
    // --- The list of traces
    void add(ModelTrace &trace);
    void remove(ModelTrace &trace);
    void destroyed(ModelTrace &trace);
    /*! \a trace has got another z and the chart hears of it. */
    void sort();
    [[nodiscard]] bool includes(const ModelTrace &trace) const { return countOf(trace) > 0; }
    [[nodiscard]] int countOf(const ModelTrace &trace) const;
    [[nodiscard]] bool isEmpty() const { return m_list.empty(); }
    /*! Not while equal z leave it open. */
    [[nodiscard]] bool isOrderKnown() const { return m_isOrderKnown; }
    /*! Whether \a order is an order in which the chart may have its traces; which one it is of
        several that equal z allow is known from then on. */
    [[nodiscard]] bool accepts(const std::vector<const void *> &order);

    // --- Geometry and frames
    void resize(const QSizeF &size);
    void update();
    /*! One synchronisation, in which the renderer asked for the data of the traces \a visited, one
        after another. Returns what is wrong, or an empty text. */
    [[nodiscard]] QString synchronise(const std::vector<const void *> &visited);
    /*! After it: checks the signals of the mouse. */
    [[nodiscard]] QString checkSignals(const QStringList &mouseLog);

    // --- Zoom. The signals that are due are appended to \c log.
    void zoomIn(const QRectF &rect);
    void zoomReset();
    void setZoomEnabled(bool enabled);

    // --- The mouse
    void press(const PointerEvent &event);
    void drag(const QPointF &position);
    void release(const PointerEvent &event);
    void doubleClick(const PointerEvent &event);
    void hover(QEvent::Type type, const QPointF &position);
    [[nodiscard]] bool isBandSeen() const { return m_isBandShown && isVisible; }

    QSizeF size;
    bool isVisible = true;
    bool antialiasing = true;
    bool isZoomed = false;
    bool isZoomEnabled = false;
    /*! Apart from those of the mouse. */
    QStringList log;
    /*! Since they were taken last. */
    Work work;
    ModelPointer pointer;

    /*! Null while the chart shows nothing. */
    [[nodiscard]] const ModelRenderer *renderer() const
    {
        return m_renderer ? &*m_renderer : nullptr;
    }

private:
    struct Entry
    {
        ModelTrace *trace = nullptr;
        double z = 0.0; // when it was sorted last
    };

    void queue(const PointerEvent &event);
    [[nodiscard]] std::vector<ModelTrace *> traces() const;
    /*! Drops the buffers of all others. */
    void retainBuffers(const std::vector<ModelTrace *> &traces);

    std::vector<Entry> m_list;
    bool m_isOrderKnown = true;
    bool m_tracesDirty = true;
    std::optional<ModelRenderer> m_renderer;
    std::vector<ModelTrace *> m_buffered;
    std::vector<PointerEvent> m_queue;
    std::vector<Answer> m_answers;
    QPointF m_lastPosition;
    Qt::MouseButton m_lastButton = Qt::NoButton;

    bool m_isBandShown = false;
    QPointF m_bandStart;
    QSizeF m_bandBounds;
    QRectF m_band;
};

#endif
