// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_LIVINGSCENE_H
#define CHARTS_TEST_LIVINGSCENE_H

#include "PixelTrace.h"

#include <ChartsLibrary/Chart.h>

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QPoint>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtGui/QImage>
#include <QtQuick/QQuickItem>

#include <memory>

/*!
    One of everything that draws: a chart with three traces, a grid behind it and a gradient curve in
    front of it. Made by QML, with traces that outlive whatever QML makes.

    The line has one of two heights, by turns, so that a picture that was not drawn again is told from
    one that was.
*/
class LivingScene
{
public:
    static constexpr QSize size = {180, 120};
    /*! The object that is drawn, as text to be put into a document. */
    [[nodiscard]] static QByteArray element(const QByteArray &properties = {});

    LivingScene();

    /*! Makes the object. The caller may hand it on to a window or delete it. */
    [[nodiscard]] std::unique_ptr<QQuickItem> create();
    /*! Adds the traces to the chart that is somewhere in \a item. */
    [[nodiscard]] bool attach(QQuickItem &item);
    [[nodiscard]] Charts::Chart *chart() const { return m_chart; }
    [[nodiscard]] PixelTrace &line() { return m_line; }
    [[nodiscard]] PixelTrace &dots() { return m_dots; }
    [[nodiscard]] PixelTrace &many() { return m_many; }

    /*! Moves the line to the height that belongs to \a round. */
    void setRound(int round);

    /*! Sends the chart a press and a release on the line. */
    void clickOnLine();

    /*! Where the part of \a picture that begins at \a topLeft differs from what is to be seen: at
        places worked out from the geometry, and everywhere else from the first picture of the same
        \a way of drawing that had these right. Empty if it does not. */
    [[nodiscard]] QString differenceFrom(
            const QImage &picture, QPoint topLeft = {}, const QString &way = {});
    /*! Whether nothing is to be seen there. */
    [[nodiscard]] static QString differenceFromWhite(const QImage &picture, QPoint topLeft = {});

private:
    PixelTrace m_line;
    PixelTrace m_dots;
    PixelTrace m_many;
    QPointer<Charts::Chart> m_chart;
    int m_turn = 0;
    QHash<QString, QImage> m_firstPictures;
};

#endif
