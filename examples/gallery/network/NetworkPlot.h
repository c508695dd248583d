// SPDX-License-Identifier: MIT
#pragma once

#include "StaticTrace.h"
#include "readers/NetworkData.h"

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <vector>

namespace Gallery {

/*!
    Networks as a network analyser shows them. One of them is current; its traces are replaced when
    another becomes current.
*/
class NetworkPlot : public QObject
{
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(QStringList sources READ sources CONSTANT)
    Q_PROPERTY(int currentSource READ currentSource WRITE setCurrentSource NOTIFY tracesChanged)
    /*! All parameters in decibels over the frequency. */
    Q_PROPERTY(QList<Gallery::StaticTrace *> magnitudes READ magnitudes NOTIFY tracesChanged)
    /*! The reflections of all ports in the complex plane, for a Smith chart. */
    Q_PROPERTY(QList<Gallery::StaticTrace *> reflections READ reflections NOTIFY tracesChanged)
    /*! All parameters in the complex plane, for a polar chart. */
    Q_PROPERTY(QList<Gallery::StaticTrace *> phasors READ phasors NOTIFY tracesChanged)
    Q_PROPERTY(QString frequencyUnit READ frequencyUnit NOTIFY tracesChanged)
    Q_PROPERTY(int magnitudeBands READ magnitudeBands NOTIFY tracesChanged)
    /*! The magnitude at the boundary of the round charts. */
    Q_PROPERTY(double scale READ scale WRITE setScale NOTIFY scaleChanged)
    /*! Whether the Smith chart is mirrored. */
    Q_PROPERTY(bool flip READ flip WRITE setFlip NOTIFY flipChanged)

public:
    struct Source
    {
        QString name;
        std::shared_ptr<const Charts::Readers::NetworkData> data;
    };

    /*! What plots created from now on can show; at least one. Set before the first one. */
    static void setSources(std::vector<Source> sources);

    explicit NetworkPlot(QObject *parent = nullptr);

    [[nodiscard]] QStringList sources() const;
    [[nodiscard]] int currentSource() const { return m_currentSource; }
    void setCurrentSource(int index);
    [[nodiscard]] QList<StaticTrace *> magnitudes() const { return m_magnitudes; }
    [[nodiscard]] QList<StaticTrace *> reflections() const { return m_reflections; }
    [[nodiscard]] QList<StaticTrace *> phasors() const { return m_phasors; }
    [[nodiscard]] QString frequencyUnit() const { return m_frequencyUnit; }
    [[nodiscard]] int magnitudeBands() const { return m_magnitudeBands; }
    [[nodiscard]] double scale() const { return m_scale; }
    void setScale(double scale);
    [[nodiscard]] bool flip() const { return m_flip; }
    void setFlip(bool flip);

Q_SIGNALS:
    void tracesChanged();
    void scaleChanged();
    void flipChanged();

private:
    void makeTraces();
    void makeMagnitudes(const Charts::Readers::NetworkData &data);
    StaticTrace *makePhasor(const Charts::Readers::NetworkData &data, std::size_t row,
            std::size_t column, Charts::TraceDomain::TraceFormat format);
    /*! Gives the round charts' domains what their grids show. */
    void applyScale();

    int m_currentSource = 0;
    QList<StaticTrace *> m_magnitudes;
    QList<StaticTrace *> m_reflections;
    QList<StaticTrace *> m_phasors;
    QString m_frequencyUnit;
    int m_magnitudeBands = 1;
    double m_scale = 1.0;
    bool m_flip = false;
};

} // namespace Gallery
