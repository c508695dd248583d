// SPDX-License-Identifier: MIT
#ifndef SNIPPETS_LINETRACE_H
#define SNIPPETS_LINETRACE_H

//! [class]
#include <ChartsLibrary/AbstractTrace.h>
#include <ChartsLibrary/TraceData.h>

#include <QtQml/qqmlregistration.h>

#include <vector>

class LineTrace : public Charts::AbstractTrace
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit LineTrace(QObject *parent = nullptr);

    /*! Replaces the line. GUI thread. */
    void setPoints(std::vector<Charts::TracePoint> points);

    Charts::TraceData *traceData() override { return &m_data; }
    void updateData() override;

private:
    std::vector<Charts::TracePoint> m_newPoints;
    bool m_hasNewPoints = false;
    Charts::TraceData m_data;
};
//! [class]

#endif
