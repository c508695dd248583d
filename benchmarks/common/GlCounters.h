// SPDX-License-Identifier: MIT
#ifndef CHARTS_GLCOUNTERS_H
#define CHARTS_GLCOUNTERS_H

#include <QtCore/QJsonObject>
#include <QtCore/QtGlobal>

/*!
    Counts the calls to the OpenGL driver that cost most.

    Qt looks functions up by name. A program with this class offers the look-up functions itself and
    hands out wrappers for a few of them, that add one and go on: nothing that a frame would show.
*/
struct GlCounters
{
    qint64 drawCalls = 0;
    qint64 uploadedBytes = 0;
    qint64 allocatedBytes = 0;
    /*! Images that were begun: framebuffers cleared. */
    qint64 passes = 0;
    qint64 readBacks = 0;
    /*! Of images that were drawn elsewhere. */
    qint64 textureBytes = 0;

    /*! Since the process began, of all threads. */
    [[nodiscard]] static GlCounters now();
    /*! What the driver is made to offer at most. */
    static constexpr int mostSamples = 4;
    /*! Samples of a pixel in the multisampled image made last, as granted; 0 when there was none. */
    [[nodiscard]] static int samples();

    GlCounters &operator+=(const GlCounters &other);
    [[nodiscard]] GlCounters operator-(const GlCounters &other) const;

    /*! As numbers a frame. */
    [[nodiscard]] QJsonObject perFrame(int frames) const;
};

#endif
