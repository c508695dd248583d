// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "Graphics.h"

#include <ChartsLibrary/PolarGrid.h>
#include <ChartsLibrary/SmithGrid.h>
#include <ChartsLibrary/XYGrid.h>

#include <QtCore/QRegularExpression>
#include <QtGui/QImage>
#include <QtTest/QTest>

#include <memory>

using namespace Charts;

namespace {

using MakeGrid = std::unique_ptr<AbstractGrid> (*)();

template<typename Grid>
std::unique_ptr<AbstractGrid> make()
{
    return std::make_unique<Grid>();
}

int countOf(const QImage &picture, const QColor &color)
{
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            count += picture.pixelColor(x, y) == color;
    }
    return count;
}

bool isEmpty(const QImage &picture)
{
    return countOf(picture, Qt::white) == picture.width() * picture.height();
}

} // namespace

/*! Grids that come, go and change between the frames of windows without a chart. */
class tst_GridsScene : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();

    void hidden_data() { addGrids(); }
    void hidden();
    void windowHidden_data() { addGrids(); }
    void windowHidden();
    void otherWindow_data() { addGrids(); }
    void otherWindow();
    void changedUnseen_data() { addGrids(); }
    void changedUnseen();
    void emptied_data() { addGrids(); }
    void emptied();
    void outerColor_data() { addGrids(); }
    void outerColor();

private:
    static void addGrids();
    /*! Blue and green, in the middle of its window. */
    static std::unique_ptr<AbstractGrid> grid();
    static void put(AbstractGrid &grid, ChartWindow &window);

    static constexpr QSize size = {200, 150};
};

void tst_GridsScene::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_GridsScene::addGrids()
{
    QTest::addColumn<MakeGrid>("makeGrid");
    QTest::newRow("cartesian") << MakeGrid(make<XYGrid>);
    QTest::newRow("polar") << MakeGrid(make<PolarGrid>);
    QTest::newRow("Smith") << MakeGrid(make<SmithGrid>);
}

std::unique_ptr<AbstractGrid> tst_GridsScene::grid()
{
    QFETCH(MakeGrid, makeGrid);
    std::unique_ptr<AbstractGrid> grid = makeGrid();
    grid->setPosition({20.0, 10.0});
    grid->setSize({150.0, 120.0});
    grid->setInnerGridLinesColor(Qt::blue);
    grid->setOuterGridLinesColor(Qt::green);
    return grid;
}

void tst_GridsScene::put(AbstractGrid &grid, ChartWindow &window)
{
    grid.setParentItem(window.contentItem());
}

void tst_GridsScene::hidden()
{
    ChartWindow window(size, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    QVERIFY(isEmpty(window.picture()));
    const auto item = grid();
    put(*item, window);
    const QImage picture = window.picture();
    QVERIFY(countOf(picture, Qt::blue) > 20);
    QVERIFY(countOf(picture, Qt::green) > 20);
    for (int i = 0; i < 2; ++i) {
        item->setVisible(false);
        QVERIFY(isEmpty(window.picture()));
        item->setVisible(true);
        QCOMPARE(window.picture(), picture);
    }
    // Without opacity its nodes are blocked, not removed.
    item->setOpacity(0.0);
    QVERIFY(isEmpty(window.picture()));
    item->setOpacity(1.0);
    QCOMPARE(window.picture(), picture);
}

void tst_GridsScene::windowHidden()
{
    ChartWindow window(size, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    const auto item = grid();
    put(*item, window);
    const QImage picture = window.picture();
    QVERIFY(countOf(picture, Qt::blue) > 20);
    // Also where the scene graph throws its nodes away.
    for (const bool isPersistent : {true, false}) {
        window.setPersistentSceneGraph(isPersistent);
        window.setPersistentGraphics(isPersistent);
        window.hide();
        window.releaseResources();
        QVERIFY2(window.start(), window.error());
        QCOMPARE(window.picture(), picture);
    }
}

void tst_GridsScene::otherWindow()
{
    const auto item = grid();
    ChartWindow first(size, ChartWindow::Content::Nothing);
    QVERIFY2(first.start(), first.error());
    put(*item, first);
    const QImage picture = first.picture();
    QVERIFY(countOf(picture, Qt::blue) > 20);
    {
        ChartWindow second(size, ChartWindow::Content::Nothing);
        QVERIFY2(second.start(), second.error());
        for (int i = 0; i < 2; ++i) {
            put(*item, second);
            QCOMPARE(second.picture(), picture);
            QVERIFY(isEmpty(first.picture()));
            put(*item, first);
            QCOMPARE(first.picture(), picture);
            QVERIFY(isEmpty(second.picture()));
        }
        put(*item, second);
        QCOMPARE(second.picture(), picture);
        // The item outlives that window.
        item->setParentItem(nullptr);
    }
    QVERIFY(isEmpty(first.picture()));
    put(*item, first);
    QCOMPARE(first.picture(), picture);
}

// What changed while nothing was drawn shows afterwards, as on a grid that was never hidden.
void tst_GridsScene::changedUnseen()
{
    ChartWindow window(size, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    const auto change = [](AbstractGrid &changed) {
        changed.setInnerGridLinesColor(Qt::black);
        changed.setOuterGridLinesColor(Qt::red);
        changed.setLineWidth(2.0);
        changed.setSize({120.0, 100.0});
    };
    auto item = grid();
    change(*item);
    put(*item, window);
    const QImage changed = window.picture();
    QVERIFY(countOf(changed, Qt::red) > 20);

    item = grid();
    put(*item, window);
    const QImage unchanged = window.picture();
    QVERIFY(unchanged != changed);
    item->setVisible(false);
    QVERIFY(isEmpty(window.picture()));
    change(*item);
    item->setVisible(true);
    QCOMPARE(window.picture(), changed);

    item = grid();
    put(*item, window);
    QCOMPARE(window.picture(), unchanged);
    item->setParentItem(nullptr);
    QVERIFY(isEmpty(window.picture()));
    change(*item);
    put(*item, window);
    QCOMPARE(window.picture(), changed);
}

void tst_GridsScene::emptied()
{
    ChartWindow window(size, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    const auto item = grid();
    put(*item, window);
    const QImage picture = window.picture();
    QVERIFY(countOf(picture, Qt::blue) > 20);
    for (const QSizeF &empty : {QSizeF(0.0, 0.0), QSizeF(0.0, 120.0), QSizeF(150.0, 0.0)}) {
        item->setSize(empty);
        QVERIFY(isEmpty(window.picture()));
        item->setSize({150.0, 120.0});
        QCOMPARE(window.picture(), picture);
    }
}

// Of all changes only that of the outer colour waits for the next one.
void tst_GridsScene::outerColor()
{
    ChartWindow window(size, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    const auto item = grid();
    put(*item, window);
    const QImage picture = window.picture();
    QVERIFY(countOf(picture, Qt::green) > 20);

    item->setOuterGridLinesColor(Qt::red);
    QCOMPARE(window.picture(), picture);
    item->update();
    QCOMPARE(window.picture(), picture);

    item->setSize({140.0, 120.0});
    const QImage resized = window.picture();
    QCOMPARE(countOf(resized, Qt::green), 0);
    QVERIFY(countOf(resized, Qt::red) > 20);
    QVERIFY(countOf(resized, Qt::blue) > 20);

    item->setOuterGridLinesColor(Qt::green);
    QCOMPARE(window.picture(), resized);
    item->setSize({150.0, 120.0});
    QCOMPARE(window.picture(), picture);

    item->setInnerGridLinesColor(Qt::black);
    const QImage recolored = window.picture();
    QCOMPARE(countOf(recolored, Qt::blue), 0);
    QVERIFY(countOf(recolored, Qt::black) > 20);
}

QTEST_MAIN(tst_GridsScene)

#include "tst_grids_scene.moc"
