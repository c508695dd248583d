// SPDX-License-Identifier: MIT
#ifndef CHARTS_BENCHMARKOPTIONS_H
#define CHARTS_BENCHMARKOPTIONS_H

#include <QtCore/QSize>
#include <QtCore/QString>

QT_BEGIN_NAMESPACE
class QCommandLineParser;
QT_END_NAMESPACE

/*! What a frame benchmark is asked to draw. */
struct BenchmarkOptions
{
    enum class Mode {
        /*! Nothing changes; every frame is still asked for. */
        Idle,
        /*! The data rest, but the picture is drawn anew: the first trace changes its colour. */
        Static,
        /*! Each trace is a ring that takes 1000 new points a frame. */
        Append,
        /*! Each trace gets all of its points anew. */
        Rewrite,
        /*! A tenth of the points is visible and moves on by 1 % of its width a frame. */
        Pan,
        /*! The pointer moves over resting data. */
        Hover,
        /*! No traces: a grid of 100 lines that changes every frame. */
        Grid,
    };

    Mode mode = Mode::Append;
    int points = 100000;
    int traces = 1;
    int frames = 100;
    /*! The frames are measured in so many blocks; times are medians over blocks. */
    int blocks = 5;
    QSize size = {800, 600};
    bool samples = true;
    QString gl = QStringLiteral("compat");

    static constexpr int appendedPoints = 1000;

    [[nodiscard]] QString modeName() const;

    /*! Adds the options that all frame benchmarks share. */
    static void addTo(QCommandLineParser &parser);
    /*! Reads them back; sets \a error to one line when a value is wrong. */
    [[nodiscard]] static BenchmarkOptions read(const QCommandLineParser &parser, QString &error);

    /*! Asks Qt for the OpenGL of \c gl without the swap interval. To be called before the
        application object exists. */
    void requestGraphics() const;
};

#endif
