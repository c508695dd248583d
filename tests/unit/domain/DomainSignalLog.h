// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_DOMAINSIGNALLOG_H
#define CHARTS_TEST_DOMAINSIGNALLOG_H

#include <ChartsLibrary/TraceDomain.h>

#include <QtCore/QObject>
#include <QtCore/QStringList>

#include <utility>

/*!
    Writes down every signal of one domain, with its argument, in the order in which a listener
    that connects after construction hears them.

    The domain's own connections come first. So the copy of a range into its base, and the base's
    signal, are over before such a listener hears of the range: "baseXRangeChanged" stands before
    the "xRangeChanged" that causes it.
*/
class DomainSignalLog : public QObject
{
public:
    explicit DomainSignalLog(Charts::TraceDomain &domain)
    {
        using Charts::TraceDomain;
        const auto plain = [this, &domain](auto signal, const char *name) {
            connect(&domain, signal, this, [this, name] { append(QString::fromLatin1(name)); });
        };
        plain(&TraceDomain::updated, "updated");
        plain(&TraceDomain::xRangeChanged, "xRangeChanged");
        plain(&TraceDomain::yRangeChanged, "yRangeChanged");
        plain(&TraceDomain::baseYRangeChanged, "baseYRangeChanged");
        plain(&TraceDomain::baseXRangeChanged, "baseXRangeChanged");
        plain(&TraceDomain::argRangeChanged, "argRangeChanged");

        const auto flag = [this, &domain](auto signal, const char *name) {
            connect(&domain, signal, this, [this, name](bool on) {
                append(QStringLiteral("%1(%2)").arg(QLatin1StringView(name)).arg(on));
            });
        };
        flag(&TraceDomain::leftSmithChanged, "leftSmithChanged");
        flag(&TraceDomain::zoomedChanged, "zoomedChanged");
        flag(&TraceDomain::isLogXChanged, "isLogXChanged");

        connect(&domain, &TraceDomain::formatChanged, this,
                [this](TraceDomain::TraceFormat format) {
                    append(QStringLiteral("formatChanged(%1)").arg(static_cast<int>(format)));
                });
        connect(&domain, &TraceDomain::sizeChanged, this, [this](const QSizeF &size) {
            append(QStringLiteral("sizeChanged(%1x%2)").arg(size.width()).arg(size.height()));
        });
    }

    /*! What was heard since the last call. */
    QStringList take() { return std::exchange(m_entries, {}); }

private:
    void append(const QString &entry) { m_entries.append(entry); }

    QStringList m_entries;
};

/*! The entries of a log in one text, with spaces between them. */
inline QStringList signalNames(const char *names)
{
    return QString::fromLatin1(names).split(u' ', Qt::SkipEmptyParts);
}

#endif
