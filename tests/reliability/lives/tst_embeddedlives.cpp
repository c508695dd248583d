// SPDX-License-Identifier: MIT
#include "FrameWatch.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "HideAndWait.h"
#include "LivingScene.h"
#include "OffscreenWindow.h"

#include <QtCore/QPointer>
#include <QtCore/QRegularExpression>
#include <QtGui/QWindow>
#include <QtQuickWidgets/QQuickWidget>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>

#include <memory>

using namespace Charts;

/*! Charts in scenes without a window of their own: in widgets and in textures of the application,
    again and again. Each test ends with every object of OpenGL deleted that was made. */
class tst_EmbeddedLives : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void widgetHiddenAndShown();
    void widgetMovedBetweenWindows();
    void widgetMadeAndDestroyed();
    void textureReplaced();
    void textureWindowMadeAndDestroyed();
    void sceneGraphMadeAnew();
    void contextReplaced_data();
    void contextReplaced();
    void movedBetweenWidgetAndTexture();

private:
    /*! Below the places that windows of other tests have on the screen. */
    static void place(QWidget &window)
    {
        window.setGeometry(QRect(QPoint(100, 900), LivingScene::size));
    }

    /*! A widget in a window, and what is drawn in it watched. */
    struct Stage
    {
        Stage()
            : widget(std::make_unique<QQuickWidget>(&host))
        {
            new FrameWatch(*widget->quickWindow());
            widget->setClearColor(Qt::white);
            widget->setGeometry(QRect(QPoint(0, 0), LivingScene::size));
            place(host);
        }
        [[nodiscard]] QQuickItem *contentItem() const
        {
            return widget->quickWindow()->contentItem();
        }
        [[nodiscard]] bool show()
        {
            host.show();
            return QTest::qWaitForWindowExposed(&host);
        }

        QWidget host;
        std::unique_ptr<QQuickWidget> widget;
    };
};

void tst_EmbeddedLives::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_EmbeddedLives::cleanup()
{
    QCOMPARE(FrameWatch::takeErrors(), QStringList());
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_EmbeddedLives::widgetHiddenAndShown()
{
    Stage stage;
    LivingScene scene;
    const auto item = scene.create();
    QVERIFY(item);
    item->setParentItem(stage.contentItem());
    QVERIFY(stage.show());
    const auto round = [&](int i) -> QString {
        if (!hideAndWait(*stage.host.windowHandle(), [&stage] { stage.host.hide(); }))
            return QStringLiteral("still on the screen");
        scene.setRound(i);
        if (!stage.show())
            return QStringLiteral("not shown");
        return scene.differenceFrom(stage.widget->grabFramebuffer());
    };
    QCOMPARE(live("widget hidden and shown", round), QString());
}

// The widget takes its items to a new scene graph in a new context each time.
void tst_EmbeddedLives::widgetMovedBetweenWindows()
{
    QWidget windows[2];
    for (QWidget &window : windows) {
        place(window);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
    }
    auto widget = std::make_unique<QQuickWidget>();
    widget->setClearColor(Qt::white);
    LivingScene scene;
    // The widget's from now on.
    widget->setContent(QUrl(), nullptr, scene.create().release());
    QVERIFY(scene.chart());

    QPointer<FrameWatch> watch = new FrameWatch(*widget->quickWindow());
    bool hasDrawn = false;
    const auto round = [&](int i) {
        QString text;
        for (QWidget &window : windows) {
            const int losses = watch->losses();
            widget->setParent(&window);
            // The scene graph goes; older versions of Qt take the whole off-screen window for that.
            if (!watch)
                watch = new FrameWatch(*widget->quickWindow());
            else if (hasDrawn && watch->losses() == losses)
                text += QStringLiteral("still the same scene graph");
            hasDrawn = true;
            widget->show();
            QCoreApplication::processEvents();
            scene.setRound(i);
            text += scene.differenceFrom(widget->grabFramebuffer());
        }
        return text;
    };
    QCOMPARE(live("widget moved between windows", round), QString());
    widget.reset();
    QVERIFY(!scene.chart());
}

void tst_EmbeddedLives::widgetMadeAndDestroyed()
{
    LivingScene scene;
    const auto round = [&](int i) -> QString {
        Stage stage;
        const auto item = scene.create();
        item->setParentItem(stage.contentItem());
        scene.setRound(i);
        if (!stage.show())
            return QStringLiteral("not shown");
        return scene.differenceFrom(stage.widget->grabFramebuffer());
    };
    QCOMPARE(live("widget made and destroyed", round), QString());
}

void tst_EmbeddedLives::textureReplaced()
{
    OffscreenWindow window(LivingScene::size);
    new FrameWatch(window.window());
    QVERIFY(window.initialize());
    LivingScene scene;
    const auto item = scene.create();
    QVERIFY(item);
    item->setParentItem(window.window().contentItem());
    const auto round = [&](int i) {
        // The last bit of a colour depends on the size.
        const QSize size = LivingScene::size + (i / 2 % 2) * QSize(100, 50);
        window.resize(size);
        scene.setRound(i);
        return scene.differenceFrom(window.picture(), {}, QString::number(size.width()));
    };
    QCOMPARE(live("texture replaced", round), QString());
}

void tst_EmbeddedLives::textureWindowMadeAndDestroyed()
{
    LivingScene scene;
    const auto round = [&](int i) -> QString {
        OffscreenWindow window(LivingScene::size);
        new FrameWatch(window.window());
        if (!window.initialize())
            return QStringLiteral("no graphics");
        const auto item = scene.create();
        item->setParentItem(window.window().contentItem());
        scene.setRound(i);
        return scene.differenceFrom(window.picture());
    };
    QCOMPARE(live("texture's window made and destroyed", round), QString());
}

void tst_EmbeddedLives::sceneGraphMadeAnew()
{
    OffscreenWindow window(LivingScene::size);
    const auto *watch = new FrameWatch(window.window());
    QVERIFY(window.initialize());
    LivingScene scene;
    const auto item = scene.create();
    QVERIFY(item);
    item->setParentItem(window.window().contentItem());
    QVERIFY(window.frame());

    const int losses = watch->losses();
    int count = 0;
    const auto round = [&](int i) -> QString {
        ++count;
        window.invalidate();
        scene.setRound(i);
        if (!window.initialize())
            return QStringLiteral("no graphics");
        return scene.differenceFrom(window.picture());
    };
    QCOMPARE(live("scene graph made anew", round), QString());
    QCOMPARE(watch->losses() - losses, count);
}

// The items live on in another context than the one that they come from.
void tst_EmbeddedLives::contextReplaced_data()
{
    QTest::addColumn<bool>("isOldOneFirst");
    QTest::newRow("the old context goes first") << true;
    QTest::newRow("the new context comes first") << false;
}

void tst_EmbeddedLives::contextReplaced()
{
    QFETCH(bool, isOldOneFirst);

    auto window = std::make_unique<OffscreenWindow>(LivingScene::size);
    new FrameWatch(window->window());
    QVERIFY(window->initialize());
    LivingScene scene;
    const auto item = scene.create();
    QVERIFY(item);
    item->setParentItem(window->window().contentItem());
    QVERIFY(window->frame());

    const auto round = [&](int i) -> QString {
        if (isOldOneFirst) {
            item->setParentItem(nullptr);
            window.reset();
            if (!GlProbe::liveObjects().isEmpty())
                return QStringLiteral("objects are left over");
        }
        auto next = std::make_unique<OffscreenWindow>(LivingScene::size);
        new FrameWatch(next->window());
        if (!next->initialize())
            return QStringLiteral("no graphics");
        item->setParentItem(next->window().contentItem());
        scene.setRound(i);
        const QString text = scene.differenceFrom(next->picture());
        window = std::move(next);
        return text;
    };
    QCOMPARE(live(QTest::currentDataTag(), round), QString());
}

void tst_EmbeddedLives::movedBetweenWidgetAndTexture()
{
    Stage stage;
    OffscreenWindow window(LivingScene::size);
    new FrameWatch(window.window());
    QVERIFY(window.initialize());
    LivingScene scene;
    const auto item = scene.create();
    QVERIFY(item);
    QVERIFY(stage.show());
    const auto round = [&](int i) {
        item->setParentItem(window.window().contentItem());
        scene.setRound(i);
        QString text = scene.differenceFrom(window.picture());
        text += LivingScene::differenceFromWhite(stage.widget->grabFramebuffer());
        item->setParentItem(stage.contentItem());
        scene.setRound(i + 1);
        text += scene.differenceFrom(stage.widget->grabFramebuffer());
        text += LivingScene::differenceFromWhite(window.picture());
        return text;
    };
    QCOMPARE(live("moved between widget and texture", round), QString());
}

QTEST_MAIN(tst_EmbeddedLives)

#include "tst_embeddedlives.moc"
