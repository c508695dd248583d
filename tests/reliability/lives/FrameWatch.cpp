// SPDX-License-Identifier: MIT
#include "FrameWatch.h"

#include "GlProbe.h"
#include "Rounds.h"

#include <QtCore/QDebug>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QMap>
#include <QtQuick/QQuickWindow>

#include <mutex>
#include <utility>

namespace {

/*! Memory that the process has in use, in KiB. */
int residentKib()
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).simplified().split(' ').value(0).toInt();
    }
    return 0;
}

struct Errors
{
    std::mutex mutex;
    QStringList list;
};

Errors &errors()
{
    static Errors instance;
    return instance;
}

void keepErrors(const char *when)
{
    const std::lock_guard lock(errors().mutex);
    for (const QString &error : GlProbe::takeErrors())
        errors().list.append(QString::fromLatin1(when) + QStringLiteral(": ") + error);
}

} // namespace

FrameWatch::FrameWatch(QQuickWindow &window)
    : QObject(&window)
{
    const auto on = [this, &window](auto signal, auto &&does) {
        connect(&window, signal, this, does, Qt::DirectConnection);
    };
    on(&QQuickWindow::beforeSynchronizing, [] { GlProbe::beginSection(); });
    on(&QQuickWindow::afterSynchronizing, [] {
        GlProbe::endSection();
        keepErrors("synchronising");
    });
    on(&QQuickWindow::beforeFrameBegin, [this] { m_isInFrame = true; });
    on(&QQuickWindow::beforeRendering, [this] {
        m_isRendering = m_isInFrame;
        if (m_isRendering)
            GlProbe::beginSection();
    });
    // The calls of a frame are made at its very end. One that Qt gives up has no rendering.
    on(&QQuickWindow::afterFrameEnd, [this] {
        m_isInFrame = false;
        if (!std::exchange(m_isRendering, false))
            return;
        GlProbe::endSection();
        keepErrors("rendering");
    });
    // The last moment with a context: what has been raised since the last frame.
    on(&QQuickWindow::sceneGraphInvalidated, [this] {
        GlProbe::endSection();
        keepErrors("releasing");
        ++m_losses;
    });
}

QStringList FrameWatch::takeErrors()
{
    const std::lock_guard lock(errors().mutex);
    return std::exchange(errors().list, {});
}

QString liveObjectCounts()
{
    QMap<QString, int> counts;
    for (const QString &object : GlProbe::liveObjects())
        ++counts[object.section(u' ', 0, -2)];
    QStringList texts;
    for (auto count = counts.cbegin(); count != counts.cend(); ++count)
        texts.append(QStringLiteral("%1 %2").arg(count.value()).arg(count.key()));
    return texts.join(QStringLiteral(", "));
}

QString live(
        const char *what, const std::function<QString(int)> &round, int shortCount, int longCount)
{
    const int count = rounds(shortCount, longCount);
    QElapsedTimer timer;
    timer.start();
    int settledKib = 0;
    QString expected;
    for (int i = 0; i < count; ++i) {
        QStringList problems(round(i));
        problems.append(FrameWatch::takeErrors());
        problems.append(GlProbe::takeErrors());
        const QString counts = liveObjectCounts();
        if (i == 1)
            expected = counts;
        else if (i > 1 && counts != expected)
            problems.append(QStringLiteral("%1 live, not %2").arg(counts, expected));
        problems.removeAll(QString());
        if (!problems.isEmpty())
            return QStringLiteral("round %1: ").arg(i) + problems.join(u'\n');
        if (i == count / 5)
            settledKib = residentKib();
    }
    if (rounds(0, 1) == 1) {
        qInfo("%s: %d rounds in %.1f s, then %s; memory grew by %.2f KiB a round", what, count,
                double(timer.elapsed()) / 1000.0, qPrintable(expected),
                double(residentKib() - settledKib) / (count - count / 5));
    }
    return {};
}
