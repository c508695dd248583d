// SPDX-License-Identifier: MIT
#include "RandomWalk.h"

#include <algorithm>
#include <cstddef>
#include <utility>

using namespace Charts;

namespace {

DataStep step(DataStep::Kind kind, int first, int count)
{
    return {.kind = kind, .first = first, .count = count};
}

} // namespace

/*! Lets the trace do \a steps: in its next update, or at once, as the GUI thread may. */
void RandomWalk::give(Actor &actor, const std::vector<DataStep> &steps)
{
    WalkTrace &trace = *actor.trace;
    ModelTrace &model = actor.model;
    trace.pending.insert(trace.pending.end(), steps.begin(), steps.end());
    model.pending.insert(model.pending.end(), steps.begin(), steps.end());
    if (m_model.includes(model) && chance(70))
        return;
    trace.perform(std::exchange(trace.pending, {}));
    model.perform(std::exchange(model.pending, {}));
}

void RandomWalk::editData()
{
    Actor *actor = any();
    if (!actor)
        return;
    QString text;
    const std::vector<DataStep> steps = edit(*actor, text);
    note(actor->model.name + u' ' + text);
    give(*actor, steps);
}

std::vector<DataStep> RandomWalk::edit(Actor &actor, QString &text)
{
    const int count = actor.pointCount;
    const int told = actor.toldCount;
    std::vector<DataStep> steps;
    if (count == 0 || (count != told && chance(40))) {
        const int newCount = count == 0 ? 1 + below(30) : count;
        text = QStringLiteral("tells of its %1 points").arg(newCount);
        return rewriteAll(actor, newCount);
    }
    switch (below(11)) {
    case 0:
    case 1: {
        text = QStringLiteral("appends in a ring of %1 at %2").arg(count).arg(actor.ringPosition);
        int left = std::min(count, 1 + below(6));
        while (left > 0) {
            actor.ringPosition %= count;
            const int part = std::min(left, count - actor.ringPosition);
            rewrite(actor, actor.ringPosition, part, steps);
            steps.push_back(step(DataStep::MarkDirty, actor.ringPosition, part));
            actor.ringPosition += part;
            left -= part;
        }
        break;
    }
    case 2:
        text = QStringLiteral("rewrites all %1").arg(count);
        steps = rewriteAll(actor, count);
        break;
    case 3:
    case 4: {
        const int ranges = chance(50) ? 1 : 2 + below(3);
        for (int i = 0; i < ranges; ++i) {
            const int first = below(count);
            const int length = 1 + below(std::min(8, count - first));
            text += QStringLiteral("rewrites %1+%2 of %3 ").arg(first).arg(length).arg(count);
            rewrite(actor, first, length, steps);
            steps.push_back(step(DataStep::MarkDirty, first, length));
            if (actor.isFilled)
                steps.push_back(step(DataStep::MarkFilled, first, length));
        }
        break;
    }
    case 5: {
        const int newCount = 1 + below(60);
        text = QStringLiteral("grows or shrinks from %1 to %2").arg(count).arg(newCount);
        steps = rewriteAll(actor, newCount);
        break;
    }
    case 6:
        if (chance(70))
            return edit(actor, text);
        text = QStringLiteral("is emptied");
        steps.push_back(step(DataStep::Resize, 0, 0));
        actor.pointCount = actor.toldCount = 0;
        break;
    case 7:
        return markWrongly(actor, text);
    case 8:
        return markNothing(actor, text);
    case 9:
        return chance(50) ? edit(actor, text) : resizeSilently(actor, text);
    default:
        actor.isFilled = !actor.isFilled;
        text = QStringLiteral("filled %1").arg(actor.isFilled);
        if (!actor.isFilled) {
            steps.push_back(step(DataStep::Unfill, 0, 0));
            break;
        }
        steps.push_back(step(DataStep::MarkDirty, 0, told));
        steps.push_back(step(DataStep::MarkFilled, 0, told));
        break;
    }
    return steps;
}

/*! More than there is, which does not count, or what has not changed, which costs an upload. */
std::vector<DataStep> RandomWalk::markWrongly(Actor &actor, QString &text)
{
    const int told = actor.toldCount;
    const int first = below(std::min(actor.pointCount, told));
    if (chance(50)) {
        text = QStringLiteral("marks more than its %1 points").arg(told);
        const DataStep dirty = step(DataStep::MarkDirty, first, told - first + 1 + below(5));
        return {dirty, step(DataStep::MarkFilled, first, told - first + 1 + below(5))};
    }
    text = QStringLiteral("marks what has not changed");
    return {step(DataStep::MarkDirty, first, actor.pointCount - first)};
}

/*! What nobody is told of is not shown. */
std::vector<DataStep> RandomWalk::markNothing(Actor &actor, QString &text)
{
    const int first = below(actor.pointCount);
    const int length = 1 + below(actor.pointCount - first);
    text = QStringLiteral("rewrites %1+%2 of %3, marks nothing")
                   .arg(first)
                   .arg(length)
                   .arg(actor.pointCount);
    std::vector<DataStep> steps;
    rewrite(actor, first, length, steps);
    steps.push_back(step(DataStep::MarkDirty, first, 0));
    return steps;
}

/*! The ranges keep the old number of points. */
std::vector<DataStep> RandomWalk::resizeSilently(Actor &actor, QString &text)
{
    const int count = 1 + below(40);
    text = QStringLiteral("resizes from %1 to %2, says %3")
                   .arg(actor.pointCount)
                   .arg(count)
                   .arg(actor.toldCount);
    std::vector<DataStep> steps = {step(DataStep::ResizeSilently, 0, count)};
    actor.pointCount = count;
    rewrite(actor, 0, count, steps);
    steps.push_back(step(DataStep::MarkDirty, 0, actor.toldCount));
    return steps;
}

std::vector<DataStep> RandomWalk::rewriteAll(Actor &actor, int count)
{
    std::vector<DataStep> steps = {step(DataStep::Resize, 0, count)};
    actor.pointCount = actor.toldCount = count;
    actor.isFilled = true;
    rewrite(actor, 0, count, steps);
    steps.push_back(step(DataStep::MarkDirty, 0, count));
    steps.push_back(step(DataStep::MarkFilled, 0, count));
    return steps;
}

/*! Lifts the points to another level: a trace is made of level pieces, in whose middle it is certain
    what lies under the pointer. */
void RandomWalk::rewrite(Actor &actor, int first, int count, std::vector<DataStep> &steps)
{
    const float level = static_cast<float>(1 + below(31)) / 32.0F;
    const float last = static_cast<float>(std::max(actor.pointCount - 1, 1));
    DataStep write = step(DataStep::Write, first, count);
    for (int i = first; i < first + count; ++i)
        write.points.push_back({static_cast<float>(i) / last, level, 1.0F});
    // A gap, as a ring has between its newest and its oldest point.
    if (chance(20))
        write.points.back().opacity = 0.0F;
    steps.push_back(write);
}

void RandomWalk::restyle()
{
    static const std::vector<ViewPort> viewPorts = {{0.0F, 0.0F, 1.0F, 1.0F},
            {0.0F, 0.0F, 1.0F, 1.0F}, {-0.25F, 0.0F, 1.5F, 1.0F}, {0.25F, 0.25F, 0.5F, 0.5F},
            {0.0F, -1.0F, 1.0F, 3.0F}, {0.5F, 0.0F, 1.0F, 1.0F}};
    Actor *actor = any();
    if (!actor)
        return;
    Look &look = actor->look;
    const auto method = [this] { return static_cast<BoundingMethod>(below(3)); };
    QString text;
    switch (below(5)) {
    case 0:
        text = QStringLiteral("draw type");
        look.drawType = chance(60) ? DrawType::LineStrip : DrawType::Points;
        break;
    case 1:
        text = QStringLiteral("view port");
        look.viewPort = viewPorts[static_cast<std::size_t>(below(int(viewPorts.size())))];
        break;
    case 2:
        text = QStringLiteral("squared");
        look.isSquared = chance(30);
        break;
    case 3:
        text = QStringLiteral("bounding x");
        look.boundingX = method();
        break;
    default:
        text = QStringLiteral("bounding y");
        look.boundingY = method();
        break;
    }
    note(QStringLiteral("%1 %2").arg(actor->model.name, text));
    DataStep style = {.kind = DataStep::Restyle};
    style.look = look;
    give(*actor, {style});
}
