// SPDX-License-Identifier: MIT
#include "ChartWindow.h"

#include "GlProbe.h"
#include "Graphics.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QEventLoop>
#include <QtCore/QLockFile>
#include <QtCore/QStandardPaths>
#include <QtCore/QThread>
#include <QtCore/QTimer>
#include <QtGui/QScreen>
#include <QtTest/QTest>

#include <memory>
#include <utility>

namespace {

constexpr int timeout = 10000;

/*!
    A place on the screen that no other test process has: what a closing window uncovers is drawn
    again, and no test asked for that frame. The places lie above the middle of the screen, where
    the pointer of a virtual display stands.
*/
QPoint ownPlace()
{
    constexpr int columns = 4;
    constexpr int places = 8;
    constexpr QSize distance = {400, 300};
    static std::unique_ptr<QLockFile> lock;
    static QPoint place;
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation));
    for (int i = 0; i < places && !lock; ++i) {
        auto candidate = std::make_unique<QLockFile>(
                folder.filePath(QStringLiteral("charts-test-place-%1.lock").arg(i)));
        if (!candidate->tryLock(0))
            continue;
        lock = std::move(candidate);
        place = {i % columns * distance.width(), i / columns * distance.height()};
    }
    return place;
}

} // namespace

ChartWindow::ChartWindow(const QSize &size, Content content)
{
    resize(size);
    // The place is in pixels of the screen.
    setPosition(ownPlace() / screen()->devicePixelRatio());
    setColor(Qt::white);
    if (content == Content::Chart) {
        m_chart = new Charts::Chart(contentItem());
        m_chart->setSize(size);
        m_chart->findChild<QTimer *>()->stop();
    }

    // All of these are emitted by the thread that renders.
    connect(
            this, &QQuickWindow::beforeSynchronizing, this, [] { GlProbe::beginSection(); },
            Qt::DirectConnection);
    connect(
            this, &QQuickWindow::afterSynchronizing, this,
            [this] {
                GlProbe::endSection();
                if (++m_synchronised == 1) {
                    m_wrongGraphics = Graphics::verify(*this);
                    m_isThreaded =
                            QThread::currentThread() != QCoreApplication::instance()->thread();
                }
            },
            Qt::DirectConnection);
    connect(
            this, &QQuickWindow::frameSwapped, this, [this] { m_swapped = m_synchronised.load(); },
            Qt::DirectConnection);
}

ChartWindow::~ChartWindow() = default;

bool ChartWindow::fail(const QString &what)
{
    m_error = what.toUtf8();
    return false;
}

bool ChartWindow::waitForFrameAfter(int synchronisations)
{
    QEventLoop loop;
    const auto quitWhenSwapped = [this, &loop, synchronisations] {
        if (m_swapped > synchronisations)
            loop.quit();
    };
    const auto connection = connect(this, &QQuickWindow::frameSwapped, &loop, quitWhenSwapped);
    QTimer::singleShot(timeout, &loop, &QEventLoop::quit);
    if (m_swapped <= synchronisations)
        loop.exec();
    disconnect(connection);
    return m_swapped > synchronisations || fail(QStringLiteral("no frame within ten seconds"));
}

bool ChartWindow::start()
{
    const int before = m_synchronised;
    show();
    if (!QTest::qWaitForWindowExposed(this, timeout))
        return fail(QStringLiteral("the window was not exposed"));
    if (m_swapped <= before && !waitForFrameAfter(before))
        return false;
    return m_wrongGraphics.isEmpty() || fail(m_wrongGraphics);
}

bool ChartWindow::frame()
{
    if (m_chart)
        m_chart->updateTraces();
    return plainFrame();
}

bool ChartWindow::plainFrame()
{
    const int before = m_synchronised;
    update();
    return waitForFrameAfter(before);
}

bool ChartWindow::answerEvents()
{
    if (!frame() || !frame())
        return false;
    QCoreApplication::sendPostedEvents();
    return true;
}

QImage ChartWindow::picture()
{
    if (!frame())
        return {};
    return grabWindow().convertToFormat(QImage::Format_RGB32);
}

void ChartWindow::startTicking()
{
    m_chart->findChild<QTimer *>()->start();
}
