// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_SELECTIONCOSTS_H
#define CHARTS_TEST_SELECTIONCOSTS_H

#include "GlProbe.h"
#include "PointedWindow.h"

#include <QtTest/QTest>

/*! What one or several frames sent to OpenGL. */
struct Costs
{
    /*! Passes over all traces, each of which clears its image first. */
    int passes = 0;
    /*! Those of them that drew lines five pixels wider than they are on the screen. */
    int selectionPasses = 0;
    int draws = 0;
    int uploads = 0;
    int reads = 0;

    friend bool operator==(const Costs &, const Costs &) = default;
};

inline char *toString(const Costs &costs)
{
    return QTest::toString(
            QStringLiteral("%1 passes, %2 of them for selection, %3 draws, %4 uploads, %5 reads")
                    .arg(costs.passes)
                    .arg(costs.selectionPasses)
                    .arg(costs.draws)
                    .arg(costs.uploads)
                    .arg(costs.reads));
}

/*!
    Two lines at rest in a chart, and what the next frames cost.

    "low" and "high", both four pixels wide, run at the rows 20 and 60 from the bottom. No event has
    come yet, no attribute is marked changed any more.
*/
class CostWindow
{
public:
    [[nodiscard]] bool start()
    {
        low = &window.addLine(QStringLiteral("low"), 4.0F, {{20.0, 20.5}, {180.0, 20.5}});
        high = &window.addLine(QStringLiteral("high"), 4.0F, {{20.0, 60.5}, {180.0, 60.5}});
        if (!window.start() || !window.settle())
            return false;
        window.watchLookups();
        return true;
    }
    /*! Draws \a frames frames. */
    [[nodiscard]] Costs costsOf(int frames)
    {
        log.clear();
        for (int i = 0; i < frames; ++i) {
            if (!window.frame())
                return {-1, -1, -1, -1, -1};
        }
        Costs costs = {.passes = log.count("glClear"),
                .draws = log.count("glDrawArrays"),
                .uploads = log.count("glBufferSubData"),
                .reads = log.count("glReadPixels")};
        // Both lines have one width, which is set once a pass.
        for (const GlProbe::Call &call : log.calls("glLineWidth"))
            costs.selectionPasses += call.argument(0) == 9.0 ? 1 : 0;
        return costs;
    }
    /*! What was said after one more frame, which takes the answers. */
    [[nodiscard]] QStringList answers()
    {
        if (!window.frame())
            return {QString::fromUtf8(window.error())};
        QCoreApplication::sendPostedEvents();
        return window.log.take();
    }
    /*! To a place where no line was before. */
    void moveLow() { low->setPoints(std::vector<QPointF>{{20.0, 40.5}, {180.0, 40.5}}); }

    static constexpr QSize size = {200, 100};
    static constexpr QPointF onLow = {100.0, 80.0};
    static constexpr QPointF onHigh = {100.0, 40.0};
    static constexpr QPointF onNone = {100.0, 5.0};
    static constexpr QPointF afterMove = {100.0, 60.0};

    static constexpr Costs nothing = {};
    static constexpr Costs visualPass = {.passes = 1, .draws = 2};

    PointedWindow window = PointedWindow(size);
    GlProbe::Log log;
    PixelTrace *low = nullptr;
    PixelTrace *high = nullptr;
};

#endif
