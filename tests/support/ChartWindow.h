// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_CHARTWINDOW_H
#define CHARTS_TEST_CHARTWINDOW_H

#include <ChartsLibrary/Chart.h>

#include <QtCore/QPointer>
#include <QtGui/QImage>
#include <QtQuick/QQuickWindow>

#include <atomic>

/*!
    A real window, filled by a chart, whose frames are drawn one by one.

    The chart's own timer is stopped: a test says when a frame is due. Whatever the test does to
    traces and chart between two frames happens on the GUI thread, before the next synchronisation.
    The background is white.
*/
class ChartWindow : public QQuickWindow
{
    Q_OBJECT

public:
    enum class Content {
        Chart,
        Nothing,
    };

    explicit ChartWindow(const QSize &size = {200, 100}, Content content = Content::Chart);
    ~ChartWindow() override;

    /*! Null once it has been deleted. */
    [[nodiscard]] Charts::Chart *chart() const { return m_chart; }

    /*! Shows the window, draws its first frame and checks that the graphics are those asked for. */
    [[nodiscard]] bool start();
    /*! Updates the traces as the timer would, then draws exactly one frame and waits until it is
        on the screen. */
    [[nodiscard]] bool frame();
    /*! One frame without an update of the chart. */
    [[nodiscard]] bool plainFrame();
    /*! Two frames, as frame() draws them, and the signals after them: what mouse events wait is
        handed over and looked up in the first, answered in the second. */
    [[nodiscard]] bool answerEvents();
    /*! frame(), then the window's pixels. The image is null on failure. */
    [[nodiscard]] QImage picture();
    /*! What went wrong last. */
    [[nodiscard]] const char *error() const { return m_error.constData(); }

    /*! Starts the chart's timer again. */
    void startTicking();
    [[nodiscard]] int synchronisations() const { return m_synchronised; }
    /*! Whether frames are drawn by another thread than the GUI thread. */
    [[nodiscard]] bool isThreaded() const { return m_isThreaded; }

private:
    bool waitForFrameAfter(int synchronisations);
    bool fail(const QString &what);

    QPointer<Charts::Chart> m_chart;
    QByteArray m_error;
    // Written on the render thread.
    std::atomic<int> m_synchronised = 0;
    std::atomic<int> m_swapped = 0;
    std::atomic<bool> m_isThreaded = false;
    QString m_wrongGraphics;
};

#endif
