// SPDX-License-Identifier: MIT
#include "PeerScene.h"

#include <QtCore/QCoreApplication>
#include <QtQml/QQmlComponent>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

using Mode = BenchmarkOptions::Mode;

std::unique_ptr<WindowScene> PeerScene::make(
        const BenchmarkOptions &options, bool useOpenGL, QQuickWindow &window, QString &error)
{
    std::unique_ptr<PeerScene> scene(new PeerScene(options, window));
    if (!scene->addChart(useOpenGL, error))
        return nullptr;
    return scene;
}

PeerScene::PeerScene(const BenchmarkOptions &options, QQuickWindow &window)
    : m_options(options)
    , m_window(window)
{
}

bool PeerScene::addChart(bool useOpenGL, QString &error)
{
    QQmlComponent component(&m_engine, QUrl(QStringLiteral("qrc:/PeerChart.qml")));
    QObject *object = component.createWithInitialProperties({
            {QStringLiteral("useOpenGL"), useOpenGL},
            {QStringLiteral("antialiasing"), m_options.samples},
            {QStringLiteral("width"), m_options.size.width()},
            {QStringLiteral("height"), m_options.size.height()},
            {QStringLiteral("parent"), QVariant::fromValue(m_window.contentItem())},
    });
    if (!object) {
        error = component.errors().constFirst().toString();
        return false;
    }
    // Ends with its parent item, before the window.
    object->setParent(m_window.contentItem());
    m_abscissa = object->property("abscissa").value<QValueAxis *>();
    m_traces.reserve(static_cast<std::size_t>(m_options.traces));
    for (int i = 0; i < m_options.traces; ++i) {
        if (!addTrace(object)) {
            error = QStringLiteral("Qt Charts made no series");
            return false;
        }
    }
    drawPicture();
    return true;
}

bool PeerScene::addTrace(QObject *chart)
{
    QVariant made;
    QMetaObject::invokeMethod(chart, "addTrace", Q_RETURN_ARG(QVariant, made));
    auto *series = qobject_cast<QXYSeries *>(made.value<QObject *>());
    if (!series)
        return false;
    const int index = static_cast<int>(m_traces.size());
    series->setPen(QPen(SignalSource::colorOf(index, false), SignalSource::lineWidth));
    Trace &trace = m_traces.emplace_back(Trace{SignalSource(m_options, index), {}, series});
    trace.points.resize(m_options.points);
    const SignalSource::Frame frame = trace.source.begin();
    apply(trace, frame);
    m_abscissa->setRange(frame.visibleFirst, frame.visibleFirst + frame.visibleLength);
    return true;
}

void PeerScene::advance()
{
    ++m_step;
    if (m_options.mode == Mode::Hover)
        movePointer(m_window, m_step);
    for (Trace &trace : m_traces) {
        const SignalSource::Frame frame = trace.source.next();
        apply(trace, frame);
        // All series have one axis.
        if (m_options.mode == Mode::Pan && &trace == &m_traces.front())
            m_abscissa->setRange(frame.visibleFirst, frame.visibleFirst + frame.visibleLength);
    }
    if (m_options.mode == Mode::Static && !m_traces.empty())
        m_traces.front().series->setColor(SignalSource::colorOf(0, m_step % 2 == 1));
    drawPicture();
}

void PeerScene::apply(Trace &trace, const SignalSource::Frame &frame)
{
    bool isChanged = false;
    for (const SignalSource::Piece &piece : frame.written) {
        for (int i = 0; i < piece.length; ++i) {
            const int index = piece.first + i;
            trace.points[index] = {
                    static_cast<double>(index), trace.source.valueAt(piece.sample + i)};
            isChanged = true;
        }
    }
    if (isChanged)
        trace.series->replace(trace.points);
}

/*! The chart hears of its own changes by posted events, one after another, and then draws its picture;
    the frame would be there before them, with the picture of the last one. */
void PeerScene::drawPicture()
{
    QCoreApplication::sendPostedEvents();
}
