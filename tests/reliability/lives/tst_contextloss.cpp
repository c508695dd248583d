// SPDX-License-Identifier: MIT
#include "FrameWatch.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "LivingScene.h"
#include "LossStage.h"
#include "MouseLog.h"

#include <ChartsLibrary/TraceDomain.h>
#include <ChartsLibrary/ZoomDelegate.h>

#include <QtCore/QRegularExpression>
#include <QtGui/QHoverEvent>
#include <QtGui/QMouseEvent>
#include <QtTest/QTest>

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

using namespace Charts;

namespace {

using Upload = std::pair<int, int>;

// Pixels of the chart where a trace is, from the top left. The line is where it is in even rounds.
constexpr QPoint onLine(45, 15);
constexpr QPoint onDots(27, 60);
constexpr QPoint onNothing(45, 60);

constexpr int bytesPerPoint = 12;

} // namespace

/*! The graphics context goes while a chart lives, and another one comes. */
class tst_ContextLoss : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void everyVertexUploadedAgain_data();
    void everyVertexUploadedAgain();
    void eventsBefore_data();
    void eventsBefore();
    void hoveredAndPressed_data();
    void hoveredAndPressed();
    void zoomed_data();
    void zoomed();
    void changedMeanwhile_data();
    void changedMeanwhile();
    void destroyedMeanwhile_data();
    void destroyedMeanwhile();

private:
    void addKinds();
    /*! As data that changes all the time: the image that answers events is drawn with new data only,
        so a chart that has never got any since it has its graphics does not know its traces. */
    void touchData() { m_scene->setRound(0); }
    void sendMouse(QEvent::Type type, QPoint place);
    void sendHover(QEvent::Type type, QPoint place);
    void click(QPoint place)
    {
        sendMouse(QEvent::MouseButtonPress, place);
        sendMouse(QEvent::MouseButtonRelease, place);
    }

    std::unique_ptr<LivingScene> m_scene;
    std::unique_ptr<LossStage> m_stage;
};

Q_DECLARE_METATYPE(LossStage::Kind)

void tst_ContextLoss::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    QFETCH(LossStage::Kind, kind);
    m_scene = std::make_unique<LivingScene>();
    m_stage = std::make_unique<LossStage>(kind);
    auto item = m_scene->create();
    QVERIFY(item);
    QVERIFY(m_stage->start(std::move(item)));
    QCOMPARE(m_scene->differenceFrom(m_stage->picture()), QString());
}

void tst_ContextLoss::cleanup()
{
    m_stage.reset();
    m_scene.reset();
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_ContextLoss::addKinds()
{
    QTest::addColumn<LossStage::Kind>("kind");
    QTest::newRow("window hidden") << LossStage::Kind::Hidden;
    QTest::newRow("scene graph made anew") << LossStage::Kind::MadeAnew;
    QTest::newRow("another context") << LossStage::Kind::OtherContext;
}

void tst_ContextLoss::sendMouse(QEvent::Type type, QPoint place)
{
    const bool isMove = type == QEvent::MouseMove;
    const bool isHeld = isMove || type == QEvent::MouseButtonPress;
    QMouseEvent event(type, place, place, place, isMove ? Qt::NoButton : Qt::LeftButton,
            isHeld ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_scene->chart(), &event);
}

void tst_ContextLoss::sendHover(QEvent::Type type, QPoint place)
{
    QHoverEvent event(type, place, place, QPointF());
    QCoreApplication::sendEvent(m_scene->chart(), &event);
}

void tst_ContextLoss::everyVertexUploadedAgain_data()
{
    addKinds();
}

void tst_ContextLoss::everyVertexUploadedAgain()
{
    // Only a part of it holds data. What is drawn between them is anything, but white and behind all.
    PixelTrace inParts(LivingScene::size, DrawType::Points, 1.0F, Qt::white);
    inParts.data.array() = std::vector<TracePoint>(500, TracePoint{-50.0F, -50.0F, 1.0F});
    inParts.data.filledRange().setSize(500);
    inParts.data.dirtyRange().setSize(500);
    for (const Range<int> &range : {Range<int>{0, 100}, Range<int>{300, 150}}) {
        inParts.data.filledRange().push(range);
        inParts.data.dirtyRange().push(range);
    }
    inParts.setZ(-1.0);
    m_scene->chart()->addTrace(&inParts);
    QVERIFY(m_stage->frame());

    const int many = static_cast<int>(m_scene->many().data.array().size());
    std::vector<Upload> expected = {{0, 2 * bytesPerPoint}, {0, 2 * bytesPerPoint},
            {0, many * bytesPerPoint}, {0, 100 * bytesPerPoint},
            {300 * bytesPerPoint, 150 * bytesPerPoint}};
    std::sort(expected.begin(), expected.end());

    GlProbe::Log log;
    const auto round = [&](int) -> QString {
        log.clear();
        if (!m_stage->lose())
            return QStringLiteral("not lost");
        std::vector<Upload> uploads;
        for (const GlProbe::Call &call : log.calls("glBufferSubData"))
            uploads.emplace_back(call.integer(1), call.integer(2));
        std::sort(uploads.begin(), uploads.end());
        if (uploads != expected)
            return QStringLiteral("not all was uploaded");
        return m_scene->differenceFrom(m_stage->picture());
    };
    QCOMPARE(live(QTest::currentDataTag(), round), QString());
}

void tst_ContextLoss::eventsBefore_data()
{
    addKinds();
}

void tst_ContextLoss::eventsBefore()
{
    // How far the event has come: by the frames that were drawn since.
    struct Moment
    {
        int frames;
        bool isAnswered;
    };
    constexpr std::array<Moment, 3> moments = {{
            {0, true},  // it waits in the chart
            {1, false}, // the renderer has the answer, and takes it with it
            {2, true},  // the chart has the answer
    }};

    MouseLog log;
    log.watch(*m_scene->chart());
    log.watch(m_scene->line(), QStringLiteral("line"));
    QVERIFY(m_stage->answerEvents());
    const QStringList answer = {QStringLiteral("line pressed")};
    const QStringList clicked =
            answer + QStringList{QStringLiteral("line released"), QStringLiteral("line clicked")};
    const auto round = [&](int i) -> QString {
        const Moment moment = moments.at(static_cast<std::size_t>(i) % moments.size());
        touchData();
        sendMouse(QEvent::MouseButtonPress, onLine);
        for (int frame = 0; frame < moment.frames; ++frame) {
            if (!m_stage->frame())
                return QStringLiteral("no frame");
        }
        if (!m_stage->lose() || !m_stage->answerEvents())
            return QStringLiteral("not lost");
        if (const auto names = log.take(); names != (moment.isAnswered ? answer : QStringList()))
            return QStringLiteral("answered: ") + names.join(u' ');
        // As if nothing had happened.
        touchData();
        click(onLine);
        if (!m_stage->answerEvents())
            return QStringLiteral("no frame");
        if (const auto names = log.take(); names != clicked)
            return QStringLiteral("clicked: ") + names.join(u' ');
        return {};
    };
    QCOMPARE(live(QTest::currentDataTag(), round, 3, 300), QString());
}

void tst_ContextLoss::hoveredAndPressed_data()
{
    addKinds();
}

void tst_ContextLoss::hoveredAndPressed()
{
    MouseLog log;
    log.watch(*m_scene->chart());
    log.watch(m_scene->line(), QStringLiteral("line"));
    log.watch(m_scene->dots(), QStringLiteral("dots"));

    const auto expect = [&](const QString &expected) {
        touchData();
        if (!m_stage->answerEvents())
            return QStringLiteral("no frame");
        const QString actual = log.take().join(QStringLiteral(", "));
        return actual == expected ? QString()
                                  : QStringLiteral("%1 instead of %2\n").arg(actual, expected);
    };
    const auto round = [&](int) {
        QString text;
        bool isLost = true;
        sendHover(QEvent::HoverEnter, onLine);
        text += expect(QStringLiteral("line hovered true, chart hovered true"));
        isLost = isLost && m_stage->lose();
        // The line is still known to be hovered.
        sendHover(QEvent::HoverMove, onLine + QPoint(1, 0));
        text += expect(QString());
        sendMouse(QEvent::MouseButtonPress, onLine);
        text += expect(QStringLiteral("line pressed"));
        isLost = isLost && m_stage->lose();
        // And to be pressed.
        sendMouse(QEvent::MouseButtonRelease, onLine);
        text += expect(QStringLiteral("line released, line clicked"));
        isLost = isLost && m_stage->lose();
        sendHover(QEvent::HoverMove, onDots);
        text += expect(QStringLiteral("line hovered false, dots hovered true"));
        isLost = isLost && m_stage->lose();
        sendMouse(QEvent::MouseButtonRelease, onDots);
        text += expect(QStringLiteral("dots released, chart clicked"));
        sendHover(QEvent::HoverMove, onNothing);
        text += expect(QStringLiteral("dots hovered false"));
        sendHover(QEvent::HoverLeave, onNothing);
        text += expect(QStringLiteral("chart hovered false"));
        return isLost ? text : QStringLiteral("not lost");
    };
    QCOMPARE(live(QTest::currentDataTag(), round, 3, 100), QString());
}

void tst_ContextLoss::zoomed_data()
{
    addKinds();
}

void tst_ContextLoss::zoomed()
{
    TraceDomain &domain = *m_scene->line().domain();
    domain.setRangeXY(0.0, 180.0, 0.0, 120.0);
    auto *band = new ZoomDelegate(m_scene->chart());
    band->setVisible(false);
    m_scene->chart()->setIsZoomEnabled(true);
    m_scene->chart()->setRubberBand(band);

    const auto round = [&](int) {
        QStringList wrong;
        const auto expect = [&wrong](bool isTrue, const char *what) {
            if (!isTrue)
                wrong.append(QString::fromLatin1(what));
        };
        sendMouse(QEvent::MouseButtonPress, {18, 12});
        sendMouse(QEvent::MouseMove, {90, 60});
        expect(m_stage->lose(), "lost in the middle");
        expect(band->isVisible(), "the band is still there");
        expect(band->resizeArea() == QRectF(18.0, 12.0, 72.0, 48.0), "and as large");
        expect(!m_scene->chart()->isZoomed(), "nothing is zoomed yet");
        sendMouse(QEvent::MouseMove, {108, 72});
        sendMouse(QEvent::MouseButtonRelease, {108, 72});
        for (const char *when : {"before a loss", "after a loss"}) {
            expect(!band->isVisible(), when);
            expect(m_scene->chart()->isZoomed() && domain.isZoomed(), when);
            expect(domain.xRange() == Span(18.0, 108.0), when);
            expect(domain.yRange() == Span(48.0, 108.0), when);
            expect(domain.size() == QSizeF(LivingScene::size), when);
            expect(m_stage->lose(), "lost while zoomed");
        }
        expect(m_stage->answerEvents(), "a frame");
        m_scene->chart()->zoomReset();
        expect(m_stage->lose(), "lost after that");
        expect(!m_scene->chart()->isZoomed() && !domain.isZoomed(), "no longer zoomed");
        expect(domain.xRange() == Span(0.0, 180.0), "all of x");
        expect(domain.yRange() == Span(0.0, 120.0), "all of y");
        const QString difference = m_scene->differenceFrom(m_stage->picture());
        return wrong.join(QStringLiteral(", ")) + difference;
    };
    QCOMPARE(live(QTest::currentDataTag(), round, 3, 100), QString());
}

void tst_ContextLoss::changedMeanwhile_data()
{
    addKinds();
}

// Traces, the chart's size and the kind of images it needs.
void tst_ContextLoss::changedMeanwhile()
{
    std::unique_ptr<PixelTrace> dot;
    const auto round = [&](int) -> QString {
        const bool isLost = m_stage->lose([&] {
            dot = std::make_unique<PixelTrace>(LivingScene::size, DrawType::Points, 9.0F, Qt::cyan);
            dot->setPoints(std::vector<QPointF>{{63.0, 88.0}});
            m_scene->chart()->addTrace(dot.get());
            m_scene->chart()->removeTrace(&m_scene->line());
            m_scene->chart()->setAntialiasing(true);
            m_stage->item()->setSize(LivingScene::size / 2);
        });
        if (!isLost)
            return QStringLiteral("not lost");
        const QImage picture = m_stage->picture();
        // Half as large, so is everything but the dot.
        if (picture.pixelColor(31, 15) != QColor(Qt::cyan))
            return QStringLiteral("the new trace is not to be seen");
        if (picture.pixelColor(22, 7) != QColor(Qt::white))
            return QStringLiteral("the removed trace is still to be seen");
        const bool isLostAgain = m_stage->lose([&] {
            dot.reset();
            m_scene->chart()->addTrace(&m_scene->line());
            m_scene->chart()->setAntialiasing(false);
            m_stage->item()->setSize(LivingScene::size);
        });
        return isLostAgain ? m_scene->differenceFrom(m_stage->picture())
                           : QStringLiteral("not lost");
    };
    QCOMPARE(live(QTest::currentDataTag(), round, 3, 100), QString());
}

void tst_ContextLoss::destroyedMeanwhile_data()
{
    addKinds();
}

void tst_ContextLoss::destroyedMeanwhile()
{
    const auto round = [&](int) -> QString {
        click(onLine);
        if (!m_stage->frame())
            return QStringLiteral("no frame");
        click(onLine);
        if (!m_stage->lose([&] { m_stage->setItem(nullptr); }))
            return QStringLiteral("not lost");
        if (!GlProbe::liveObjects().isEmpty())
            return QStringLiteral("objects are left over");
        if (const QString text = LivingScene::differenceFromWhite(m_stage->picture());
                !text.isEmpty())
            return text;
        if (!m_stage->lose([&] { m_stage->setItem(m_scene->create()); }))
            return QStringLiteral("not lost");
        return m_scene->differenceFrom(m_stage->picture());
    };
    QCOMPARE(live(QTest::currentDataTag(), round, 3, 100), QString());
}

QTEST_MAIN(tst_ContextLoss)

#include "tst_contextloss.moc"
