// SPDX-License-Identifier: MIT
#pragma once

#include <ChartsLibrary/AbstractTrace.h>
#include <ChartsLibrary/TraceData.h>

#include <QtQml/qqmlregistration.h>

#include <vector>

namespace Gallery {

/*!
    A line through points that are at rest. It shows the visible ranges of its domain; that of a
    round domain in the largest centred square of the chart, mirrored where the domain says so.
*/
class StaticTrace : public Charts::AbstractTrace
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    StaticTrace(std::vector<Charts::TracePoint> points, QObject *parent);

    Charts::TraceData *traceData() override { return &m_data; }
    void updateData() override;

private:
    Charts::TraceData m_data;
};

} // namespace Gallery
