// SPDX-License-Identifier: MIT
#ifndef CHARTS_CHARTITEM_H
#define CHARTS_CHARTITEM_H

#include "ChartsExport.h"

#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickItem>

namespace Charts {

/*!
    \qmltype ChartItem
    \inqmlmodule zel.charts
    \brief Common base of the chart and of everything that is laid over it.

    It has the properties of an Item of Qt Quick and none of its own. Documents do not create it.
*/
/*!
    \class Charts::ChartItem
    \brief An item with a hook for changes of its geometry.

    Owned like every item: by its QObject parent or the QML engine. GUI thread.
*/
class CHARTS_EXPORT ChartItem : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")

public:
    explicit ChartItem(QQuickItem *parent = nullptr);
    ~ChartItem() override;

protected:
    /*! Called with each change of position or size from \a oldGeometry to \a newGeometry, before
        QQuickItem hears of it. Does nothing here. GUI thread. */
    virtual void geometryUpdate(const QRectF &newGeometry, const QRectF &oldGeometry);
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
};

} // namespace Charts

#endif
