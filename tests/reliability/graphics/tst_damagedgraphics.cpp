// SPDX-License-Identifier: MIT
#include "DriverFaults.h"
#include "FurnishedScene.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "MouseLog.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <atomic>

using namespace Charts;
using DriverFaults::Multisampling;

namespace {

/*! Counts warnings instead of letting them fail the test, while it lives. */
class WarningCount
{
public:
    WarningCount()
    {
        count = 0;
        before = qInstallMessageHandler(note);
    }
    ~WarningCount() { qInstallMessageHandler(before); }
    WarningCount(const WarningCount &) = delete;
    WarningCount &operator=(const WarningCount &) = delete;

    [[nodiscard]] int value() const { return count; }

private:
    static void note(QtMsgType type, const QMessageLogContext &context, const QString &text)
    {
        if (type == QtWarningMsg)
            ++count;
        else
            before(type, context, text);
    }

    static inline std::atomic<int> count = 0;
    static inline std::atomic<QtMessageHandler> before = nullptr;
};

/*! Every use of the chart that asks its renderer for something. */
bool use(FurnishedScene &scene)
{
    QTest::mouseMove(&scene.window, FurnishedScene::besideTrace);
    QTest::mouseClick(&scene.window, Qt::LeftButton, Qt::NoModifier, FurnishedScene::onTrace);
    scene.window.chart()->zoomIn({10.0, 10.0, 50.0, 50.0});
    scene.window.chart()->zoomReset();
    return scene.window.answerEvents() && scene.window.answerEvents();
}

} // namespace

/*! Drivers that cannot do what a chart asks for: it shows as much as can be shown, and everything
    beside it goes on. */
class tst_DamagedGraphics : public QObject
{
    Q_OBJECT

public:
    static void initMain()
    {
        DriverFaults::install(isEs2());
        Graphics::setUp();
    }

private Q_SLOTS:
    void init();
    void cleanup();

    void undamaged();
    void bareEs2();
    void multisampling_data();
    void multisampling();
    void multisamplingLost_data();
    void multisamplingLost();
    void largestTexture();
    void framebuffers_data();
    void framebuffers();
    void framebuffersRefusedLater_data();
    void framebuffersRefusedLater();
    void shaders_data();
    void shaders();

private:
    [[nodiscard]] static bool isEs2() { return Graphics::flavour() == Graphics::Flavour::Es2; }
    static void addAntialiasing();
    static void addMultisampling();
    static bool isTraceFound(FurnishedScene &scene);
};

void tst_DamagedGraphics::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_DamagedGraphics::cleanup()
{
    DriverFaults::mend();
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_DamagedGraphics::addAntialiasing()
{
    QTest::addColumn<bool>("isAntialiased");
    QTest::newRow("smooth") << true;
    QTest::newRow("hard") << false;
}

void tst_DamagedGraphics::addMultisampling()
{
    QTest::addColumn<Multisampling>("fault");
    QTest::newRow("no samples") << Multisampling::NoSamples;
    QTest::newRow("no memory for samples") << Multisampling::NoStorage;
    QTest::newRow("cannot draw into it") << Multisampling::Unsupported;
}

/*! Whether a press on the trace reaches the trace. */
bool tst_DamagedGraphics::isTraceFound(FurnishedScene &scene)
{
    MouseLog log;
    log.watch(scene.trace, QStringLiteral("trace"));
    QTest::mouseClick(&scene.window, Qt::LeftButton, Qt::NoModifier, FurnishedScene::onTrace);
    return scene.window.answerEvents() && log.take().contains(QStringLiteral("trace pressed"));
}

/*! The wrappers alone change nothing. */
void tst_DamagedGraphics::undamaged()
{
    FurnishedScene scene(true);
    QVERIFY2(scene.start(), scene.error());
    QVERIFY(scene.isFurnished());
    QCOMPARE(scene.differenceWith(true), QString());
    QVERIFY(isTraceFound(scene));
    QCOMPARE(DriverFaults::linkCount(), 1);
    QVERIFY(DriverFaults::framebufferCheckCount() > 0);
}

void tst_DamagedGraphics::bareEs2()
{
    FurnishedScene scene(true);
    const GlProbe::Log log;
    QVERIFY2(scene.start(), scene.error());
    QCOMPARE(scene.differenceWith(true), QString());
    const bool usesVersion3 = log.count("glRenderbufferStorageMultisample") > 0
                              && log.count("glBlitFramebuffer") > 0
                              && log.count("glGenVertexArrays") > 0;
    const bool usesVersion2Alone = log.count("glRenderbufferStorageMultisample") == 0
                                   && log.count("glBlitFramebuffer") == 0
                                   && log.count("glGenVertexArrays") == 0;
    QVERIFY(isEs2() ? usesVersion2Alone : usesVersion3);
    QVERIFY(isTraceFound(scene));
}

void tst_DamagedGraphics::multisampling_data()
{
    addMultisampling();
}

/*! Without samples lines have hard edges, and that is all. */
void tst_DamagedGraphics::multisampling()
{
    QFETCH(Multisampling, fault);
    DriverFaults::setMultisampling(fault);
    FurnishedScene scene(true);
    QVERIFY2(scene.start(), scene.error());
    QCOMPARE(scene.differenceWith(true), QString());
    QVERIFY(isTraceFound(scene));

    // Nothing is tried again while nothing changes.
    const int checks = DriverFaults::framebufferCheckCount();
    QVERIFY(use(scene));
    QCOMPARE(scene.differenceWith(true), QString());
    QCOMPARE(DriverFaults::framebufferCheckCount(), checks);
    // The driver's refusal is an error of OpenGL, which cannot be avoided.
    const QStringList errors = GlProbe::takeErrors();
    QVERIFY2(errors.size() <= (fault == Multisampling::NoStorage && !isEs2() ? 1 : 0),
            qPrintable(errors.join(u'\n')));
}

void tst_DamagedGraphics::multisamplingLost_data()
{
    addMultisampling();
}

/*! Samples that come and go with the size, as memory does. */
void tst_DamagedGraphics::multisamplingLost()
{
    QFETCH(Multisampling, fault);
    FurnishedScene scene(true);
    QVERIFY2(scene.start(), scene.error());
    const auto resize = [&scene] {
        scene.window.chart()->setSize({FurnishedScene::size.width() / 2.0, 50.0});
        const bool isDrawn = scene.window.frame();
        scene.window.chart()->setSize(FurnishedScene::size);
        return isDrawn;
    };
    QCOMPARE(scene.differenceWith(true), QString());
    const qsizetype objects = GlProbe::liveObjects().size();
    for (int i = 0; i < 2; ++i) {
        DriverFaults::setMultisampling(fault);
        QVERIFY(resize());
        QCOMPARE(scene.differenceWith(true), QString());
        DriverFaults::mend();
        QVERIFY(resize());
        QCOMPARE(scene.differenceWith(true), QString());
        QCOMPARE(GlProbe::liveObjects().size(), objects);
    }
    (void)GlProbe::takeErrors();
}

/*! A chart larger than the driver's images is not drawn; a smaller one is. */
void tst_DamagedGraphics::largestTexture()
{
    FurnishedScene scene(true);
    QVERIFY2(scene.start(), scene.error());
    QCOMPARE(scene.differenceWith(true), QString());
    const auto resizeTo = [&scene](const QSizeF &size) {
        scene.window.chart()->setSize(size);
        return scene.window.frame();
    };

    DriverFaults::setLargestTexture(FurnishedScene::size.width() - 1);
    QVERIFY(resizeTo({300.0, 300.0}));
    QVERIFY(resizeTo(FurnishedScene::size));
    QCOMPARE(scene.differenceWith(false), QString());
    const int checks = DriverFaults::framebufferCheckCount();
    QVERIFY(use(scene));
    QVERIFY(!isTraceFound(scene));
    QCOMPARE(scene.differenceWith(false), QString());
    QCOMPARE(DriverFaults::framebufferCheckCount(), checks);

    DriverFaults::setLargestTexture(FurnishedScene::size.width());
    QVERIFY(resizeTo({300.0, 300.0}));
    QVERIFY(resizeTo(FurnishedScene::size));
    QCOMPARE(scene.differenceWith(true), QString());
    QVERIFY(isTraceFound(scene));

    // Beyond what the driver really has.
    DriverFaults::mend();
    QVERIFY(resizeTo({1e6, 1e6}));
    QVERIFY(use(scene));
    QVERIFY(resizeTo(FurnishedScene::size));
    QCOMPARE(scene.differenceWith(true), QString());
    QVERIFY(isTraceFound(scene));
}

void tst_DamagedGraphics::framebuffers_data()
{
    addAntialiasing();
}

void tst_DamagedGraphics::framebuffers()
{
    QFETCH(bool, isAntialiased);
    DriverFaults::setFramebuffersRefused(true);
    FurnishedScene scene(isAntialiased);
    QVERIFY2(scene.start(), scene.error());
    QCOMPARE(scene.differenceWith(false), QString());

    const int checks = DriverFaults::framebufferCheckCount();
    for (int i = 0; i < 2; ++i) {
        QVERIFY(use(scene));
        QVERIFY(!isTraceFound(scene));
        QCOMPARE(scene.differenceWith(false), QString());
    }
    QCOMPARE(DriverFaults::framebufferCheckCount(), checks);

    DriverFaults::mend();
    scene.window.chart()->setSize({300.0, 300.0});
    QVERIFY2(scene.window.frame(), scene.error());
    scene.window.chart()->setSize(FurnishedScene::size);
    QCOMPARE(scene.differenceWith(true), QString());
    QVERIFY(isTraceFound(scene));
}

void tst_DamagedGraphics::framebuffersRefusedLater_data()
{
    addAntialiasing();
}

void tst_DamagedGraphics::framebuffersRefusedLater()
{
    QFETCH(bool, isAntialiased);
    FurnishedScene scene(isAntialiased);
    QVERIFY2(scene.start(), scene.error());
    QCOMPARE(scene.differenceWith(true), QString());
    for (int i = 0; i < 2; ++i) {
        DriverFaults::setFramebuffersRefused(true);
        scene.window.chart()->setSize({300.0, 300.0});
        QVERIFY2(scene.window.frame(), scene.error());
        QVERIFY(use(scene));
        scene.window.chart()->setSize(FurnishedScene::size);
        QCOMPARE(scene.differenceWith(false), QString());
        QVERIFY(!isTraceFound(scene));
        // A change of antialiasing makes new images, too.
        scene.window.chart()->setAntialiasing(!isAntialiased);
        QCOMPARE(scene.differenceWith(false), QString());
        // Without traces there is nothing to show either way.
        scene.window.chart()->removeTrace(&scene.trace);
        QCOMPARE(scene.differenceWith(false), QString());
        scene.window.chart()->addTrace(&scene.trace);

        DriverFaults::mend();
        scene.window.chart()->setAntialiasing(isAntialiased);
        QCOMPARE(scene.differenceWith(true), QString());
        QVERIFY(isTraceFound(scene));
    }
}

void tst_DamagedGraphics::shaders_data()
{
    addAntialiasing();
}

void tst_DamagedGraphics::shaders()
{
    QFETCH(bool, isAntialiased);
    DriverFaults::setShadersRefused(true);
    FurnishedScene scene(isAntialiased);
    const int links = DriverFaults::linkCount();
    {
        // Qt says what is wrong with the shaders, once.
        const WarningCount warnings;
        QVERIFY2(scene.start(), scene.error());
        QCOMPARE(scene.differenceWith(false), QString());
        QVERIFY(warnings.value() > 0);
    }
    // From here on warnings fail the test.
    const int attempts = DriverFaults::linkCount() - links;
    for (int i = 0; i < 2; ++i) {
        QVERIFY(use(scene));
        QVERIFY(!isTraceFound(scene));
        QCOMPARE(scene.differenceWith(false), QString());
    }
    QCOMPARE(DriverFaults::linkCount() - links, attempts);
    QVERIFY2(attempts <= 1, qPrintable(QString::number(attempts)));

    // The renderer is another one after that.
    DriverFaults::mend();
    scene.window.chart()->setSize({0.0, 0.0});
    QVERIFY2(scene.window.frame(), scene.error());
    scene.window.chart()->setSize(FurnishedScene::size);
    QCOMPARE(scene.differenceWith(true), QString());
    QVERIFY(isTraceFound(scene));
}

QTEST_MAIN(tst_DamagedGraphics)

#include "tst_damagedgraphics.moc"
