// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "CreateInQml.h"
#include "FrameWatch.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "HideAndWait.h"
#include "LivingScene.h"
#include "MouseLog.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QGuiApplication>
#include <QtGui/qguiapplication_platform.h>
#include <QtQml/QQmlProperty>
#include <QtTest/QTest>

#include <xcb/xcb.h>

#include <memory>

using namespace Charts;

/*! Windows and scenes with charts that come and go again and again, with the chart's timer running
    as it does in an application. Each test ends with every object of OpenGL deleted that was made. */
class tst_WindowLives : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void hiddenAndShown_data();
    void hiddenAndShown();
    void minimised();
    void releasedWhileShown_data();
    void releasedWhileShown();
    void madeAndDestroyed();
    void movedBetweenWindows();
    void itemsInvisible();
    void itemsWithoutSize();
    void loaded();
    void layered();
    void inShaderEffectSource();

private:
    /*! A window that is watched. */
    struct Stage
    {
        explicit Stage(const QSize &size = LivingScene::size)
            : window(size, ChartWindow::Content::Nothing)
            , watch(new FrameWatch(window))
        {
        }
        [[nodiscard]] QString show(QQuickItem &item)
        {
            item.setParentItem(window.contentItem());
            return window.start() ? QString() : QString::fromUtf8(window.error());
        }

        ChartWindow window;
        FrameWatch *watch;
    };
};

void tst_WindowLives::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_WindowLives::cleanup()
{
    QCOMPARE(FrameWatch::takeErrors(), QStringList());
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_WindowLives::hiddenAndShown_data()
{
    QTest::addColumn<bool>("isSceneGraphKept");
    QTest::addColumn<bool>("isGraphicsKept");

    QTest::newRow("all kept") << true << true;
    QTest::newRow("scene graph released") << false << true;
    QTest::newRow("all released") << false << false;
}

void tst_WindowLives::hiddenAndShown()
{
    QFETCH(bool, isSceneGraphKept);
    QFETCH(bool, isGraphicsKept);

    Stage stage;
    stage.window.setPersistentSceneGraph(isSceneGraphKept);
    stage.window.setPersistentGraphics(isGraphicsKept);
    LivingScene scene;
    const auto item = scene.create();
    QVERIFY(item);
    QCOMPARE(stage.show(*item), QString());

    MouseLog log;
    log.watch(*scene.chart());
    log.watch(scene.line(), QStringLiteral("line"));

    const int losses = stage.watch->losses();
    int count = 0;
    const auto round = [&](int i) -> QString {
        ++count;
        if (!hideAndWait(stage.window, [&stage] { stage.window.hide(); }))
            return QStringLiteral("still on the screen");
        stage.window.releaseResources();
        QCoreApplication::processEvents();
        scene.setRound(i);
        if (!stage.window.start())
            return QString::fromUtf8(stage.window.error());
        const QString text = scene.differenceFrom(stage.window.picture());

        // Whoever draws now has to answer, too.
        scene.setRound(i);
        scene.clickOnLine();
        for (int frame = 0; frame < 2; ++frame) {
            if (!stage.window.plainFrame())
                return QString::fromUtf8(stage.window.error());
            scene.chart()->updateTraces();
        }
        QCoreApplication::sendPostedEvents();
        const QString answers = log.take().join(QStringLiteral(", "));
        return answers == u"line pressed, line released, line clicked" ? text : text + answers;
    };
    QCOMPARE(live(QTest::currentDataTag(), round), QString());
    // Qt releases nothing when it draws on the GUI thread.
    const bool isLost = !isSceneGraphKept && stage.window.isThreaded();
    QCOMPARE(stage.watch->losses() - losses, isLost ? count : 0);
}

// A window manager takes a minimised window off the screen.
void tst_WindowLives::minimised()
{
    auto *application = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    QVERIFY(application);
    Stage stage;
    LivingScene scene;
    const auto item = scene.create();
    QVERIFY(item);
    QCOMPARE(stage.show(*item), QString());

    const auto id = static_cast<xcb_window_t>(stage.window.winId());
    const auto waitUntilExposed = [&stage, application](bool isExposed) {
        xcb_flush(application->connection());
        return QTest::qWaitFor([&] { return stage.window.isExposed() == isExposed; });
    };
    const auto round = [&](int i) -> QString {
        xcb_unmap_window(application->connection(), id);
        if (!waitUntilExposed(false))
            return QStringLiteral("still on the screen");
        scene.setRound(i);
        xcb_map_window(application->connection(), id);
        if (!waitUntilExposed(true))
            return QStringLiteral("not back on the screen");
        return scene.differenceFrom(stage.window.picture());
    };
    QCOMPARE(live("minimised", round), QString());
}

void tst_WindowLives::releasedWhileShown_data()
{
    hiddenAndShown_data();
}

void tst_WindowLives::releasedWhileShown()
{
    QFETCH(bool, isSceneGraphKept);
    QFETCH(bool, isGraphicsKept);

    Stage stage;
    stage.window.setPersistentSceneGraph(isSceneGraphKept);
    stage.window.setPersistentGraphics(isGraphicsKept);
    LivingScene scene;
    const auto item = scene.create();
    QVERIFY(item);
    QCOMPARE(stage.show(*item), QString());
    const auto round = [&](int i) {
        stage.window.releaseResources();
        scene.setRound(i);
        return scene.differenceFrom(stage.window.picture());
    };
    QCOMPARE(live(QTest::currentDataTag(), round), QString());
}

void tst_WindowLives::madeAndDestroyed()
{
    LivingScene scene;
    const auto round = [&](int i) -> QString {
        Stage stage;
        const auto item = scene.create();
        scene.setRound(i);
        if (const QString error = stage.show(*item); !error.isEmpty())
            return error;
        return scene.differenceFrom(stage.window.picture());
    };
    QCOMPARE(live("made and destroyed", round), QString());
}

void tst_WindowLives::movedBetweenWindows()
{
    Stage first;
    Stage second;
    LivingScene scene;
    const auto item = scene.create();
    QVERIFY(item);
    QVERIFY2(second.window.start(), second.window.error());
    QCOMPARE(first.show(*item), QString());
    const auto round = [&](int i) -> QString {
        for (Stage *stage : {&second, &first}) {
            ChartWindow &left = stage == &first ? second.window : first.window;
            item->setParentItem(stage->window.contentItem());
            scene.setRound(i);
            if (const auto text = scene.differenceFrom(stage->window.picture()); !text.isEmpty())
                return text;
            if (const auto text = LivingScene::differenceFromWhite(left.picture()); !text.isEmpty())
                return text;
        }
        return {};
    };
    QCOMPARE(live("moved between windows", round), QString());
}

void tst_WindowLives::itemsInvisible()
{
    Stage stage;
    LivingScene scene;
    const auto item = scene.create();
    QVERIFY(item);
    QCOMPARE(stage.show(*item), QString());
    const auto round = [&](int i) {
        for (QQuickItem *child : item->childItems())
            child->setVisible(false);
        scene.setRound(i);
        const QString text = LivingScene::differenceFromWhite(stage.window.picture());
        for (QQuickItem *child : item->childItems())
            child->setVisible(true);
        return text + scene.differenceFrom(stage.window.picture());
    };
    QCOMPARE(live("invisible", round), QString());
}

// Without a size there are no nodes: they are made anew each time.
void tst_WindowLives::itemsWithoutSize()
{
    Stage stage;
    LivingScene scene;
    const auto item = scene.create();
    QVERIFY(item);
    QCOMPARE(stage.show(*item), QString());
    const auto round = [&](int i) {
        item->setSize(QSizeF(0.0, 0.0));
        scene.setRound(i);
        const QString text = LivingScene::differenceFromWhite(stage.window.picture());
        item->setSize(LivingScene::size);
        scene.chart()->updateTraces();
        return text + scene.differenceFrom(stage.window.picture());
    };
    QCOMPARE(live("without a size", round), QString());
}

void tst_WindowLives::loaded()
{
    const auto object =
            createInQml("Loader { sourceComponent: Component {" + LivingScene::element() + "} }");
    auto *loader = qobject_cast<QQuickItem *>(object.get());
    QVERIFY(loader);
    Stage stage;
    LivingScene scene;
    QCOMPARE(stage.show(*loader), QString());
    const auto round = [&](int i) -> QString {
        loader->setProperty("active", false);
        const QString text = LivingScene::differenceFromWhite(stage.window.picture());
        if (scene.chart())
            return QStringLiteral("the chart is still there");
        loader->setProperty("active", true);
        auto *item = loader->property("item").value<QQuickItem *>();
        if (!item || !scene.attach(*item))
            return QStringLiteral("nothing was loaded");
        scene.setRound(i);
        return text + scene.differenceFrom(stage.window.picture());
    };
    QCOMPARE(live("loaded", round), QString());
}

void tst_WindowLives::layered()
{
    Stage stage;
    LivingScene scene;
    const auto item = scene.create();
    QVERIFY(item);
    QCOMPARE(stage.show(*item), QString());
    const QQmlProperty isLayer(item.get(), QStringLiteral("layer.enabled"));
    const QQmlProperty isChartLayer(scene.chart(), QStringLiteral("layer.enabled"));
    const auto round = [&](int i) {
        QString text;
        // The last bit of a colour depends on how often it is blended.
        const auto switchOnAndOff = [&](const QQmlProperty &property, const QString &way) {
            property.write(true);
            scene.setRound(i);
            text += scene.differenceFrom(stage.window.picture(), {}, way);
            // Seen also when nothing but the trace has changed.
            scene.setRound(i + 1);
            text += scene.differenceFrom(stage.window.picture(), {}, way);
            property.write(false);
            text += scene.differenceFrom(stage.window.picture());
        };
        switchOnAndOff(isLayer, QStringLiteral("all in a layer"));
        switchOnAndOff(isChartLayer, QStringLiteral("the chart in a layer"));
        return text;
    };
    QCOMPARE(live("layered", round), QString());
}

void tst_WindowLives::inShaderEffectSource()
{
    const auto object =
            createInQml("Item { property Item scene: null; Loader { x: 200; active: false;"
                        " sourceComponent: ShaderEffectSource { sourceItem: scene;"
                        " width: 180; height: 120 } } }");
    auto *effect = qobject_cast<QQuickItem *>(object.get());
    QVERIFY(effect);
    QCOMPARE(effect->childItems().size(), 1);
    QQuickItem *loader = effect->childItems().front();
    // A grid draws half of its border outside of itself.
    constexpr QPoint copy(LivingScene::size.width() + 20, 0);

    Stage stage(LivingScene::size + QSize(copy.x(), 0));
    LivingScene scene;
    const auto item = scene.create();
    QVERIFY(item);
    QCOMPARE(stage.show(*item), QString());
    effect->setParentItem(stage.window.contentItem());
    effect->setProperty("scene", QVariant::fromValue(item.get()));
    const auto round = [&](int i) {
        loader->setProperty("active", true);
        scene.setRound(i);
        QImage picture = stage.window.picture();
        QString text = scene.differenceFrom(picture);
        text += scene.differenceFrom(picture, copy, QStringLiteral("copy"));
        // Seen in both also when nothing but the trace has changed.
        scene.setRound(i + 1);
        picture = stage.window.picture();
        text += scene.differenceFrom(picture);
        text += scene.differenceFrom(picture, copy, QStringLiteral("copy"));
        loader->setProperty("active", false);
        picture = stage.window.picture();
        text += scene.differenceFrom(picture);
        text += LivingScene::differenceFromWhite(picture, copy);
        return text;
    };
    QCOMPARE(live("in a ShaderEffectSource", round), QString());
}

QTEST_MAIN(tst_WindowLives)

#include "tst_windowlives.moc"
