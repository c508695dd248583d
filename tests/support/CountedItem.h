// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_COUNTEDITEM_H
#define CHARTS_TEST_COUNTEDITEM_H

#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtTest/QTest>

#include <utility>

/*! Counts how often the scene graph wants its nodes: once in the frame after each update(). */
template<typename Item>
class CountedItem : public Item
{
public:
    using Item::Item;

    /*! Since the last call. */
    [[nodiscard]] int takeCount() { return std::exchange(m_count, 0); }

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, QQuickItem::UpdatePaintNodeData *data) override
    {
        ++m_count;
        return Item::updatePaintNode(oldNode, data);
    }

private:
    int m_count = 0;
};

/*! A window whose frames are drawn by the test, one after another, without any graphics hardware. */
class FrameWindow : public QQuickWindow
{
public:
    /*! To be called before there is a window. */
    static void setUp() { QQuickWindow::setGraphicsApi(QSGRendererInterface::Software); }

    FrameWindow() { resize(200, 100); }

    [[nodiscard]] bool start()
    {
        show();
        return QTest::qWaitForWindowExposed(this) && frame();
    }

    /*! Everything happens within this call. Nothing is drawn while no events are processed. */
    [[nodiscard]] bool frame() { return !grabWindow().isNull(); }
};

#endif
