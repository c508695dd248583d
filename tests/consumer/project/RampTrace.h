// SPDX-License-Identifier: MIT
#ifndef CONSUMER_RAMPTRACE_H
#define CONSUMER_RAMPTRACE_H

#include <ChartsLibrary/AbstractTrace.h>
#include <ChartsLibrary/TraceData.h>

/*! A line that rises from (0, 0) to (10, 1), written with Qt's own keywords. */
class RampTrace : public Charts::AbstractTrace
{
    Q_OBJECT

public:
    using AbstractTrace::AbstractTrace;

    Charts::TraceData *traceData() override { return &m_data; }
    void updateData() override
    {
        m_data.array().resize(11);
        m_data.dirtyRange().setSize(11);
        m_data.filledRange().setSize(11);
        for (int i = 0; i <= 10; ++i)
            m_data.array()[static_cast<std::size_t>(i)] = {i * 1.0F, i / 10.0F, 1.0F};
        m_data.dirtyRange().push({0, 11});
        m_data.filledRange().push({0, 11});
        m_data.setDrawType(Charts::DrawType::LineStrip);
        m_data.setColor(color());
        m_data.setWidth(static_cast<float>(lineWidth()));
        ++m_updateCount;
    }
    void setColor(const QColor &color) override
    {
        AbstractTrace::setColor(color);
        emit repainted();
    }

    int updateCount() const { return m_updateCount; }

signals:
    void repainted();

private:
    Charts::TraceData m_data;
    int m_updateCount = 0;
};

#endif
