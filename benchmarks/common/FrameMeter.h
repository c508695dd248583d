// SPDX-License-Identifier: MIT
#ifndef CHARTS_FRAMEMETER_H
#define CHARTS_FRAMEMETER_H

#include "BenchmarkOptions.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QJsonObject>

#include <functional>
#include <vector>

/*! Processor time in ms that has been used so far. */
struct CpuTime
{
    double user = 0.0;
    double system = 0.0;

    [[nodiscard]] double total() const { return user + system; }

    /*! Of all threads of this process, those of the OpenGL driver included. */
    [[nodiscard]] static CpuTime ofProcess();
    [[nodiscard]] static CpuTime ofThread();
};

/*! Measures the frames of a benchmark and writes what it saw as one line. */
class FrameMeter
{
public:
    explicit FrameMeter(const BenchmarkOptions &options);

    /*! Draws one frame and returns when it is on the screen, or false when there was none. */
    using DrawFrame = std::function<bool()>;
    /*! Processor time in ms that the thread which draws has used so far. */
    using RenderTime = std::function<double()>;

    /*! Draws all frames of the options. Returns false as soon as one is not drawn. */
    [[nodiscard]] bool run(const DrawFrame &drawFrame, const RenderTime &renderTime);

    /*! One line of JSON: the options, the times, the memory, and \a more. */
    [[nodiscard]] QByteArray report(const QJsonObject &more) const;

private:
    struct Block
    {
        double user = 0.0;
        double system = 0.0;
        double render = 0.0;
    };

    BenchmarkOptions m_options;
    std::vector<Block> m_blocks; // ms a frame
    std::vector<double> m_wall;  // ms
};

#endif
