// SPDX-License-Identifier: MIT
#include "MouseScene.h"

#include "MouseInput.h"

namespace {

constexpr QSize size = {200, 100};

double heightOf(QStringView place)
{
    if (place == u"A")
        return 30.0;
    if (place == u"B")
        return 70.0;
    if (place == u"off")
        return 50.0;
    qFatal("no such place: %s", qPrintable(place.toString()));
}

} // namespace

QStringList parts(const QString &text)
{
    return text.split(QStringLiteral(", "), Qt::SkipEmptyParts);
}

MouseScene::MouseScene()
    : window(size)
    , a(line(QStringLiteral("A"), 30.0))
    , b(line(QStringLiteral("B"), 70.0))
{
    log.watch(chart());
}

std::unique_ptr<PixelTrace> MouseScene::line(const QString &name, double fromTop)
{
    auto trace = std::make_unique<PixelTrace>(size, Charts::DrawType::LineStrip, 5.0F, Qt::red);
    const double height = size.height() - fromTop + 0.5;
    trace->setPoints(std::vector<QPointF>{{20.0, height}, {180.0, height}});
    // Only a change of data brings a new selection image.
    trace->onUpdate = [changed = trace.get()] { changed->data.dirtyRange().push({0, 2}); };
    log.watch(*trace, name);
    return trace;
}

bool MouseScene::start()
{
    attach(*a);
    attach(*b);
    return window.start();
}

void MouseScene::send(const QString &step)
{
    const QStringList words = step.split(u' ');
    const QPointF position(30.0 + m_steps++ % 140, heightOf(words.at(1)));
    const QString &action = words.at(0);
    const auto mouse = [&](QEvent::Type type, Qt::MouseButtons buttons, bool isSecond = false) {
        MouseInput input(type, position, Qt::LeftButton, buttons);
        if (isSecond)
            input.setCreatedDoubleClick();
        input.sendTo(chart());
    };
    if (action == u"press")
        mouse(QEvent::MouseButtonPress, Qt::LeftButton);
    else if (action == u"second")
        mouse(QEvent::MouseButtonPress, Qt::LeftButton, true);
    else if (action == u"release")
        mouse(QEvent::MouseButtonRelease, Qt::NoButton);
    else if (action == u"double")
        mouse(QEvent::MouseButtonDblClick, Qt::LeftButton);
    else if (action == u"enter")
        HoverInput(QEvent::HoverEnter, position).sendTo(chart());
    else if (action == u"move")
        HoverInput(QEvent::HoverMove, position).sendTo(chart());
    else if (action == u"leave")
        HoverInput(QEvent::HoverLeave, position).sendTo(chart());
    else
        qFatal("no such action: %s", qPrintable(action));
}

QStringList MouseScene::oneByOne(const QStringList &steps)
{
    QStringList logged;
    for (const QString &step : steps)
        logged += allAtOnce({step});
    return logged;
}

QStringList MouseScene::allAtOnce(const QStringList &steps)
{
    for (const QString &step : steps)
        send(step);
    if (!window.answerEvents())
        qFatal("%s", window.error());
    return log.take();
}
