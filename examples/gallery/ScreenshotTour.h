// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>
#include <QtCore/QStringList>

QT_BEGIN_NAMESPACE
class QImage;
class QQuickWindow;
QT_END_NAMESPACE

namespace Gallery {

/*!
    Visits pages one after another, lets each run for two seconds and writes its picture into a
    folder. A page on which no visible trace left a pixel of its colour has drawn nothing, and the
    tour ends with a failure.
*/
class ScreenshotTour : public QObject
{
    Q_OBJECT

public:
    /*! \a window has the properties "currentPage", a page's name, and "page", its item, which has
        a list "traces" and the "chart" that shows them. */
    ScreenshotTour(QQuickWindow *window, QStringList pages, QString directory);

    void start();

Q_SIGNALS:
    void finished(int exitCode);

private:
    void visitNext();
    void takePicture(const QString &page);
    /*! Why \a image is no picture of the current page; empty when it is one. */
    [[nodiscard]] QString defectOf(const QImage &image) const;

    QQuickWindow *m_window;
    QStringList m_pages;
    QString m_directory;
    bool m_failed = false;
};

} // namespace Gallery
