// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_LOSSSTAGE_H
#define CHARTS_TEST_LOSSSTAGE_H

#include "ChartWindow.h"
#include "HideAndWait.h"
#include "LivingScene.h"
#include "OffscreenWindow.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>

#include <functional>
#include <memory>

/*! A scene in a window that loses its scene graph whenever the test wants it to. The chart's timer is
    stopped. */
class LossStage
{
public:
    enum class Kind {
        /*! Qt's own window, drawn by a thread, is hidden and shown again. */
        Hidden,
        /*! The scene graph is made anew in the same context. */
        MadeAnew,
        /*! The scene moves on to another window with another context. */
        OtherContext,
    };

    explicit LossStage(Kind kind)
        : m_kind(kind)
    {
        if (m_kind == Kind::Hidden) {
            m_window =
                    std::make_unique<ChartWindow>(LivingScene::size, ChartWindow::Content::Nothing);
            m_window->setPersistentSceneGraph(false);
            m_window->setPersistentGraphics(false);
        } else {
            m_offscreen = std::make_unique<OffscreenWindow>(LivingScene::size);
        }
    }
    ~LossStage() { m_item.reset(); }
    LossStage(const LossStage &) = delete;
    LossStage &operator=(const LossStage &) = delete;

    [[nodiscard]] bool start(std::unique_ptr<QQuickItem> item)
    {
        if (!setItem(std::move(item)))
            return false;
        return m_window ? m_window->start() : m_offscreen->initialize() && frame();
    }
    /*! Replaces the scene. */
    bool setItem(std::unique_ptr<QQuickItem> item)
    {
        m_item = std::move(item);
        auto *chart = m_item ? m_item->findChild<Charts::Chart *>() : nullptr;
        if (chart)
            chart->findChild<QTimer *>()->stop();
        enter();
        return chart;
    }
    [[nodiscard]] QQuickItem *item() const { return m_item.get(); }

    /*! The chart updates its traces, then a frame is drawn. */
    [[nodiscard]] bool frame()
    {
        if (m_item)
            m_item->findChild<Charts::Chart *>()->updateTraces();
        return m_window ? m_window->plainFrame() : m_offscreen->frame();
    }
    /*! As ChartWindow has it. */
    [[nodiscard]] bool answerEvents()
    {
        if (!frame() || !frame())
            return false;
        QCoreApplication::sendPostedEvents();
        return true;
    }
    [[nodiscard]] QImage picture()
    {
        if (!frame())
            return {};
        return m_window ? m_window->picture() : m_offscreen->picture();
    }

    /*! The scene graph goes and, after \a meanwhile, another one draws its first frame. */
    [[nodiscard]] bool lose(const std::function<void()> &meanwhile = [] {})
    {
        switch (m_kind) {
        case Kind::Hidden:
            if (!hideAndWait(*m_window, [this] { m_window->hide(); }))
                return false;
            m_window->releaseResources();
            QCoreApplication::processEvents();
            meanwhile();
            return m_window->start();
        case Kind::MadeAnew:
            m_offscreen->invalidate();
            meanwhile();
            break;
        case Kind::OtherContext:
            if (m_item)
                m_item->setParentItem(nullptr);
            m_offscreen = std::make_unique<OffscreenWindow>(LivingScene::size);
            meanwhile();
            enter();
            break;
        }
        return m_offscreen->initialize() && m_offscreen->frame();
    }

private:
    void enter()
    {
        if (m_item)
            m_item->setParentItem(
                    m_window ? m_window->contentItem() : m_offscreen->window().contentItem());
    }

    Kind m_kind;
    std::unique_ptr<ChartWindow> m_window;
    std::unique_ptr<OffscreenWindow> m_offscreen;
    std::unique_ptr<QQuickItem> m_item;
};

#endif
