// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_WALKSTAGE_H
#define CHARTS_TEST_WALKSTAGE_H

#include "ChartWindow.h"
#include "WalkData.h"

#include <ChartsLibrary/Chart.h>

#include <QtCore/QTimer>
#include <QtGui/QImage>

#include <memory>
#include <utility>
#include <vector>

/*! A chart that notes its synchronisations, and for each the traces whose data the renderer asked
    for. */
class WalkChart : public Charts::Chart
{
public:
    using Visits = std::vector<const void *>;

    explicit WalkChart(QQuickItem *parent)
        : Chart(parent)
    {
        findChild<QTimer *>()->stop();
    }

    /*! Written on the render thread, while the GUI thread is blocked. */
    Visits visits;
    [[nodiscard]] std::vector<Visits> takeSynchronisations()
    {
        return std::exchange(m_synchronisations, {});
    }

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override
    {
        visits.clear();
        QSGNode *node = Chart::updatePaintNode(oldNode, data);
        m_synchronisations.push_back(std::exchange(visits, {}));
        return node;
    }

private:
    std::vector<Visits> m_synchronisations;
};

/*! The window of the walk, and a second one, where what should be seen in the first is drawn from
    scratch. */
class WalkStage
{
public:
    WalkStage();

    [[nodiscard]] bool start();
    [[nodiscard]] const char *error() const;

    ChartWindow window{size, ChartWindow::Content::Nothing};
    WalkChart chart{window.contentItem()};

    /*! A fresh chart of \a chartSize with fresh traces that look as \a image says. */
    [[nodiscard]] QImage drawAfresh(
            const Sketches &image, const QSizeF &chartSize, bool antialiasing);

    static constexpr QSize size = {160, 120};

private:
    ChartWindow m_second{size, ChartWindow::Content::Nothing};
};

/*! Where two pictures differ, or an empty text. */
[[nodiscard]] QString differenceOf(const QImage &picture, const QImage &expected);

#endif
