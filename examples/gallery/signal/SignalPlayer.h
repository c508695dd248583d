// SPDX-License-Identifier: MIT
#pragma once

#include "PlaybackClock.h"
#include "SweepTrace.h"

#include <ChartsLibrary/Span.h>

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtQml/qqmlregistration.h>

#include <vector>

namespace Gallery {

/*!
    Plays tables of samples as sweeps. One of them is current; its columns are the traces, which are
    replaced when another becomes current.
*/
class SignalPlayer : public QObject
{
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(QStringList sources READ sources CONSTANT)
    Q_PROPERTY(int currentSource READ currentSource WRITE setCurrentSource NOTIFY tracesChanged)
    Q_PROPERTY(QList<Gallery::SweepTrace *> traces READ traces NOTIFY tracesChanged)
    Q_PROPERTY(Charts::Span timeRange READ timeRange NOTIFY tracesChanged)
    Q_PROPERTY(Charts::Span valueRange READ valueRange NOTIFY tracesChanged)
    /*! Readable steps in the value range. */
    Q_PROPERTY(int valueBands READ valueBands NOTIFY tracesChanged)
    Q_PROPERTY(QString valueUnit READ valueUnit NOTIFY tracesChanged)
    Q_PROPERTY(double speed READ speed NOTIFY tracesChanged)
    Q_PROPERTY(bool paused READ isPaused WRITE setPaused NOTIFY pausedChanged)

public:
    struct Source
    {
        QString name;
        SweepTrace::Table table;
    };

    /*! What players created from now on can play; at least one. Set before the first one. */
    static void setSources(std::vector<Source> sources);

    explicit SignalPlayer(QObject *parent = nullptr);

    [[nodiscard]] QStringList sources() const;
    [[nodiscard]] int currentSource() const { return m_currentSource; }
    void setCurrentSource(int index);
    [[nodiscard]] QList<SweepTrace *> traces() const { return m_traces; }
    [[nodiscard]] Charts::Span timeRange() const { return {0.0, m_settings.length}; }
    [[nodiscard]] Charts::Span valueRange() const { return m_valueRange; }
    [[nodiscard]] int valueBands() const { return m_valueBands; }
    [[nodiscard]] QString valueUnit() const { return m_valueUnit; }
    /*! Seconds of data a second. */
    [[nodiscard]] double speed() const { return m_settings.speed; }
    [[nodiscard]] bool isPaused() const { return m_clock.isPaused(); }
    void setPaused(bool paused);

Q_SIGNALS:
    void tracesChanged();
    void pausedChanged();

private:
    void makeTraces();

    PlaybackClock m_clock;
    int m_currentSource = 0;
    SweepSettings m_settings;
    Charts::Span m_valueRange;
    int m_valueBands = 1;
    QString m_valueUnit;
    QList<SweepTrace *> m_traces;
};

} // namespace Gallery
