// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_RANDOMWALK_H
#define CHARTS_TEST_RANDOMWALK_H

#include "GlProbe.h"
#include "ModelChart.h"
#include "MouseLog.h"
#include "WalkStage.h"
#include "WalkTrace.h"

#include <ChartsLibrary/ZoomDelegate.h>

#include <QtCore/QObject>
#include <QtCore/QStringList>

#include <deque>
#include <memory>
#include <random>
#include <vector>

/*!
    Does one random thing after another to a chart and to its model, and compares the two: signals at
    once, everything else after each frame, the picture after some.

    Everything follows from the seed.
*/
class RandomWalk : public QObject
{
    Q_OBJECT

public:
    explicit RandomWalk(unsigned seed);
    ~RandomWalk() override;

    [[nodiscard]] bool start();
    /*! Stops at the first difference and returns whether there was none. */
    [[nodiscard]] bool run(int operationCount, int framesPerPicture);
    /*! What went wrong, and what came before it. */
    [[nodiscard]] QByteArray report() const;
    /*! How much of what there was. */
    [[nodiscard]] QString summary() const;

private:
    struct Actor
    {
        Actor(const QString &name, WalkChart::Visits &visits)
            : trace(std::make_unique<WalkTrace>(visits))
            , model(name, trace.get())
        {
        }
        std::unique_ptr<WalkTrace> trace;
        ModelTrace model;
        // Of the data when all that is pending has been done.
        int pointCount = 0;
        int toldCount = 0;
        int ringPosition = 0;
        bool isFilled = true;
        Look look;
    };
    struct Operation
    {
        int weight;
        void (RandomWalk::*run)();
    };
    static const std::vector<Operation> operations;

    // --- Operations on the list of traces
    void add();
    void addAgain();
    void remove();
    void removeAll();
    void create();
    void destroy();
    void setZ();
    void setProperty();
    void passNothing();
    // --- on their domains and the zoom
    void setRange();
    void setFormat();
    void zoomIn();
    void zoomReset();
    void enableZoom();
    // --- on their data
    void editData();
    void restyle();
    // --- on the chart
    void resize();
    void hideOrShow();
    void switchAntialiasing();
    void mouse();
    void drag();
    void clickOrDoubleClick();
    void hover();

    // --- Edits of data
    [[nodiscard]] std::vector<DataStep> edit(Actor &actor, QString &text);
    [[nodiscard]] std::vector<DataStep> markWrongly(Actor &actor, QString &text);
    [[nodiscard]] std::vector<DataStep> markNothing(Actor &actor, QString &text);
    [[nodiscard]] std::vector<DataStep> resizeSilently(Actor &actor, QString &text);
    [[nodiscard]] std::vector<DataStep> rewriteAll(Actor &actor, int count);
    void rewrite(Actor &actor, int first, int count, std::vector<DataStep> &steps);
    void give(Actor &actor, const std::vector<DataStep> &steps);

    // --- The mouse
    void send(QEvent::Type type, const QPointF &position, Qt::MouseButton button,
            bool isSecondPress = false);
    [[nodiscard]] QPointF anyPosition();

    // --- Frames
    void frame();
    void synchronised();
    void comparePicture();
    void compareWork(const GlProbe::Totals &before, const GlProbe::Log &log);
    [[nodiscard]] QString compareState();
    void compareLog();

    // --- Helpers
    void attach(Actor &actor);
    [[nodiscard]] Actor *any();
    [[nodiscard]] int below(int count);
    [[nodiscard]] bool chance(int percent) { return below(100) < percent; }
    void note(const QString &operation);
    void fail(const QString &what);

    unsigned m_seed = 0;
    std::mt19937 m_random;
    WalkStage m_stage;
    Charts::ZoomDelegate *m_band = nullptr;
    ModelChart m_model;
    std::vector<std::unique_ptr<Actor>> m_actors;
    QPointF m_hoverPosition;
    MouseLog m_mouseLog;
    QStringList m_log;

    int m_traceCount = 0;
    int m_operationCount = 0;
    int m_frameCount = 0;
    int m_pictureCount = 0;
    std::deque<QString> m_lastOperations;
    QString m_failure;
};

#endif
