// SPDX-License-Identifier: MIT
#ifndef CHARTS_GRIDSCENE_H
#define CHARTS_GRIDSCENE_H

#include "WindowRun.h"

namespace Charts {
class XYGrid;
}

/*! A grid of 100 lines that changes with every frame: 45 upright, 51 across and 4 around. */
class GridScene : public WindowScene
{
public:
    GridScene(const BenchmarkOptions &options, QQuickWindow &window);

    void advance() override;

private:
    Charts::XYGrid *m_grid;
    int m_step = 0;
};

#endif
