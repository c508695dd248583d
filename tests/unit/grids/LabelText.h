// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_LABELTEXT_H
#define CHARTS_TEST_LABELTEXT_H

#include <QtCore/QStringList>
#include <QtCore/QVariantList>

/*! The numbers with their last digits rounded away, in a text. */
inline QString labelText(const QVariantList &labels)
{
    QStringList texts;
    for (const QVariant &label : labels) {
        if (label.metaType() != QMetaType::fromType<double>())
            return QStringLiteral("not a double");
        texts += QString::number(label.toDouble(), 'g', 12);
    }
    return texts.join(u' ');
}

#endif
