// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_SNIPPETDOCUMENT_H
#define CHARTS_TEST_SNIPPETDOCUMENT_H

#include "LineTrace.h"

#include <ChartsLibrary/Chart.h>

#include <QtCore/QRect>
#include <QtGui/QImage>
#include <QtQuick/QQuickView>
#include <QtTest/QTest>

/*! One of the documents in a window. */
class SnippetDocument
{
public:
    explicit SnippetDocument(const QString &name)
    {
        m_view.setSource(QUrl::fromLocalFile(QStringLiteral(SNIPPETS "/") + name));
        if (m_view.status() != QQuickView::Ready)
            qFatal("%s does not load", qPrintable(name));
        m_view.show();
    }

    [[nodiscard]] bool isShown() { return QTest::qWaitForWindowExposed(&m_view); }
    [[nodiscard]] QQuickView &view() { return m_view; }
    template<typename Type>
    [[nodiscard]] Type *find(const char *name) const
    {
        QObject *root = m_view.rootObject();
        return root->objectName() == QLatin1String(name)
                       ? qobject_cast<Type *>(root)
                       : root->findChild<Type *>(QLatin1String(name));
    }
    [[nodiscard]] Charts::Chart &chart() const
    {
        auto *chart = qobject_cast<Charts::Chart *>(m_view.rootObject());
        return chart ? *chart : *find<Charts::Chart>("chart");
    }
    [[nodiscard]] LineTrace &trace() const { return *find<LineTrace>("trace"); }
    [[nodiscard]] QImage picture()
    {
        chart().updateTraces();
        return m_view.grabWindow();
    }

private:
    QQuickView m_view;
};

/*! What the pixels of a colour span. */
inline QRect boundsOf(const QImage &picture, QRgb color)
{
    QRect bounds;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if ((picture.pixel(x, y) | 0xff000000U) == color)
                bounds |= QRect(x, y, 1, 1);
        }
    }
    return bounds;
}

inline void showDiagonal(SnippetDocument &document)
{
    LineTrace &trace = document.trace();
    //! [range]
    trace.domain()->setRangeXY(0.0, 10.0, -1.0, 1.0);
    //! [range]
    trace.setPoints({{.x = 0.0F, .y = -1.0F}, {.x = 10.0F, .y = 1.0F}});
}

#endif
