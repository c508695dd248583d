// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_GLPROBE_H
#define CHARTS_TEST_GLPROBE_H

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

/*!
    Watches what the process sends to the OpenGL driver.

    Qt looks up every OpenGL function by name, through glXGetProcAddress or eglGetProcAddress. The
    test program defines these two itself and hands out wrappers for the functions of interest, so
    that nothing gets past the probe, whichever object of Qt's makes the call.

    Qt's own scene graph goes through the wrappers, too. It is told apart by time: while the scene
    graph synchronises, Qt only updates its node tree; its own OpenGL calls come later, when the
    frame is rendered. The chart's renderer on the other hand draws its images just then. ChartWindow
    opens a Section around each synchronisation; calls in a section are the chart's. (The test of
    the probe checks that a scene without a chart makes no call there.) Only what is deleted with
    a window comes outside of a section; for that, objects are followed by their names.
*/
namespace GlProbe {

/*! One call, with those of its arguments that are numbers. Pointers are given as 0. */
struct Call
{
    std::string_view function;
    bool inSection = false;
    std::array<double, 10> arguments = {};

    [[nodiscard]] double argument(std::size_t index) const { return arguments.at(index); }
    [[nodiscard]] int integer(std::size_t index) const
    {
        return static_cast<int>(arguments.at(index));
    }
};

/*! Sums over all calls in sections since the process began. */
struct Totals
{
    std::int64_t drawCalls = 0;
    std::int64_t drawnVertices = 0;
    std::int64_t uploads = 0;
    std::int64_t uploadedBytes = 0;
    std::int64_t allocations = 0;
    std::int64_t allocatedBytes = 0;
    std::int64_t clears = 0;
    std::int64_t blits = 0;

    friend bool operator==(const Totals &, const Totals &) = default;
};

// --- For the thread that renders: what it calls from now on is the chart's, or no longer is.
void beginSection();
void endSection();

// --- For every thread
[[nodiscard]] Totals totals();

/*! OpenGL errors raised in sections so far, each with the call that raised it. Errors that were
    pending when a section began are dropped: they are not the chart's. */
[[nodiscard]] QStringList takeErrors();
/*! Whether errors are looked for after each call, which a benchmark does not want. Default true. */
void setErrorChecks(bool enabled);

/*! Whether what this thread calls now is the chart's. */
[[nodiscard]] bool isInSection();

/*! A function of the driver, whatever its arguments are. */
using Procedure = void (*)();
/*! Says what is called instead of the driver's function of that name. It may return that function,
    or null for one that the driver is to lack. */
using Substitute = Procedure (*)(std::string_view name, Procedure driversOwn);
/*! For a driver that is worse than the one at hand. To be called before the application object
    exists: what was looked up once stays. */
void setSubstitute(Substitute substitute);

/*! Objects made in sections and not deleted yet, as "buffer 3", sorted. */
[[nodiscard]] QStringList liveObjects();
/*! How many objects were made in sections, whether they still live or not. */
[[nodiscard]] int objectsMade();

/*! Keeps all calls while it lives. One at a time. */
class Log
{
public:
    Log();
    ~Log();
    Log(const Log &) = delete;
    Log &operator=(const Log &) = delete;

    /*! All calls of \a function in sections. */
    [[nodiscard]] std::vector<Call> calls(std::string_view function) const;
    [[nodiscard]] int count(std::string_view function) const
    {
        return static_cast<int>(calls(function).size());
    }
    /*! Everything, in order, also from outside of sections. */
    [[nodiscard]] std::vector<Call> everything() const;
    void clear();
};

} // namespace GlProbe

#endif
