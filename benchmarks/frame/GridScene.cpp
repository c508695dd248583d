// SPDX-License-Identifier: MIT
#include "GridScene.h"

#include <ChartsLibrary/XYGrid.h>

#include <QtQuick/QQuickWindow>

using namespace Charts;

GridScene::GridScene(const BenchmarkOptions &options, QQuickWindow &window)
    : m_grid(new XYGrid(window.contentItem()))
{
    m_grid->setSize(options.size);
    m_grid->setAntialiasing(options.samples);
    m_grid->setXLayout(XYGrid::LogGrid);
    m_grid->setYCount(52);
    advance();
}

void GridScene::advance()
{
    m_step = (m_step + 1) % 100;
    m_grid->setXRange({0.0, 4.995 + 0.00001 * m_step});
}
