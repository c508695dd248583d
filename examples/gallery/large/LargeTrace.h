// SPDX-License-Identifier: MIT
#pragma once

#include "Recording.h"

#include "decimation/LineDecimation.h"

#include <ChartsLibrary/AbstractTrace.h>
#include <ChartsLibrary/TraceData.h>

#include <QtQml/qqmlregistration.h>

#include <cstddef>
#include <memory>

namespace Gallery {

/*!
    A line through millions of samples, of which only as many vertices reach the graphics card as the
    chart has columns of pixels to show them: about two for each. They are found anew when the visible
    range, the chart's width or the recording has changed, and only then; what changed in them is
    uploaded. Without a change an update marks nothing.

    The domain counts in samples from the recording's first one. Vertices and view port count from the
    first visible sample instead: as 32-bit numbers they would lose parts of a sample behind the first
    million and whole ones behind the 16th. So each sample is drawn exactly where it is, however far
    the view is zoomed into whichever part of the recording.
*/
class LargeTrace : public Charts::AbstractTrace
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")

    /*! How many of the recording's samples are within the visible range. */
    Q_PROPERTY(double visibleSamples READ visibleSamples NOTIFY filled)
    /*! How many vertices show them. */
    Q_PROPERTY(int vertexCount READ vertexCount NOTIFY filled)
    /*! How long it took to find these, in milliseconds. */
    Q_PROPERTY(double fillTime READ fillTime NOTIFY filled)

public:
    explicit LargeTrace(QObject *parent);

    /*! What to show; it may grow between updates. GUI thread. */
    void setRecording(std::shared_ptr<const Recording> recording);

    [[nodiscard]] double visibleSamples() const { return m_visibleSamples; }
    [[nodiscard]] int vertexCount() const { return static_cast<int>(m_data.array().size()); }
    [[nodiscard]] double fillTime() const { return m_fillTime; }

    Charts::TraceData *traceData() override { return &m_data; }
    void updateData() override;

Q_SIGNALS:
    /*! The vertices were found anew. Emitted on the GUI thread. */
    void filled();

private:
    void fill(const Charts::Decimation::PixelColumns &columns);
    /*! Takes over the line's vertices and marks those that differ. */
    void takeVertices();

    std::shared_ptr<const Recording> m_recording;
    Charts::TraceData m_data;
    Charts::Decimation::LineDecimation m_line;
    // What the vertices are made of.
    Charts::Decimation::PixelColumns m_columns;
    std::size_t m_end = 0;

    double m_visibleSamples = 0.0;
    double m_fillTime = 0.0;
};

} // namespace Gallery
