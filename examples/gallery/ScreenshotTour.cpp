// SPDX-License-Identifier: MIT
#include "ScreenshotTour.h"

#include <ChartsLibrary/AbstractTrace.h>

#include <QtCore/QDir>
#include <QtCore/QSequentialIterable>
#include <QtCore/QTimer>
#include <QtGui/QImage>
#include <QtQml/QQmlListReference>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace Gallery {

namespace {

constexpr std::chrono::seconds timePerPage(2);
constexpr int ioError = 1;

bool isClose(QRgb a, QRgb b)
{
    constexpr int tolerance = 40;
    return std::abs(qRed(a) - qRed(b)) <= tolerance && std::abs(qGreen(a) - qGreen(b)) <= tolerance
           && std::abs(qBlue(a) - qBlue(b)) <= tolerance;
}

bool contains(const QImage &image, const QRect &area, const QColor &color)
{
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (isClose(image.pixel(x, y), color.rgb()))
                return true;
        }
    }
    return false;
}

} // namespace

ScreenshotTour::ScreenshotTour(QQuickWindow *window, QStringList pages, QString directory)
    : m_window(window)
    , m_pages(std::move(pages))
    , m_directory(std::move(directory))
{
}

void ScreenshotTour::start()
{
    visitNext();
}

void ScreenshotTour::visitNext()
{
    if (m_pages.isEmpty()) {
        Q_EMIT finished(m_failed ? ioError : 0);
        return;
    }
    const QString page = m_pages.takeFirst();
    m_window->setProperty("currentPage", page);
    QTimer::singleShot(timePerPage, this, [this, page] {
        takePicture(page);
        visitNext();
    });
}

void ScreenshotTour::takePicture(const QString &page)
{
    const QImage image = m_window->grabWindow();
    const QString path =
            QDir(m_directory).absoluteFilePath(page.toLower() + QStringLiteral(".png"));
    if (!image.save(path)) {
        std::fprintf(stderr, "gallery: %s: cannot write the picture\n", qPrintable(path));
        m_failed = true;
        return;
    }
    std::printf("%s\n", qPrintable(path));
    if (const QString defect = defectOf(image); !defect.isEmpty()) {
        std::fprintf(stderr, "gallery: page %s draws nothing: %s\n", qPrintable(page),
                qPrintable(defect));
        m_failed = true;
    }
}

QString ScreenshotTour::defectOf(const QImage &image) const
{
    auto *page = m_window->property("page").value<QQuickItem *>();
    auto *chart = page ? page->property("chart").value<QQuickItem *>() : nullptr;
    if (!chart)
        return QStringLiteral("it has no chart");

    const qreal scale = image.width() / static_cast<qreal>(m_window->width());
    const QRectF rect = chart->mapRectToScene(chart->boundingRect());
    const QRect area = QRectF(rect.topLeft() * scale, rect.size() * scale).toRect() & image.rect();

    // One trace is enough: it may cover others that have the same values.
    QStringList sought;
    const QVariant list = page->property("traces");
    for (const QVariant &value : list.value<QSequentialIterable>()) {
        const auto *trace = qobject_cast<Charts::AbstractTrace *>(value.value<QObject *>());
        if (!trace || !trace->isVisible())
            continue;
        if (contains(image, area, trace->color()))
            return {};
        sought.append(trace->name());
    }
    if (sought.isEmpty())
        return QStringLiteral("it has no visible trace");
    return QStringLiteral("no pixel has the colour of %1").arg(sought.join(QStringLiteral(", ")));
}

} // namespace Gallery
