#include "SimTraffic.h"

#include "Scenario.h"

#include <QDateTime>
#include <QHash>
#include <QJsonObject>
#include <QStringList>

namespace {
// Variable name -> short series name used in the scenario, and its value range in bytes/s.
struct Series
{
    const char* key;
    int range;
};

const QHash<QString, Series>& seriesTable()
{
    static const QHash<QString, Series> table{
        {QStringLiteral("nqos:settings/queue2/current_bps"), {"queue2", 2000}},
        {QStringLiteral("nqos:settings/queue3/current_bps"), {"queue3", 500}},
        {QStringLiteral("nqos:settings/queue4/current_bps"), {"queue4", 8000}},
        {QStringLiteral("nqos:settings/queue5/current_bps"), {"queue5", 30000}},
        {QStringLiteral("nqos:settings/queue6/current_bps"), {"queue6", 4000}},
        {QStringLiteral("nqos:settings/stat/ds_current_bps"), {"ds_current_bps", 300000}},
        {QStringLiteral("nqos:settings/stat/mc_current_bps"), {"mc_current_bps", 1500}},
        {QStringLiteral("nqos:settings/stat/max_ds"), {"max_ds", 0}},
        {QStringLiteral("nqos:settings/stat/max_us"), {"max_us", 0}},
    };
    return table;
}

// A repeatable figure for one series at one second.
int sample(const QString& series, qint64 second, int range)
{
    const size_t h = qHash(series) ^ (size_t(second) * 2654435761u);
    return int((h ^ (h >> 13)) % size_t(range));
}
} // namespace

SimTraffic::SimTraffic(Scenario& scenario, std::function<qint64()> seconds)
    : m_scenario(scenario), m_seconds(std::move(seconds))
{
    if (!m_seconds)
        m_seconds = [] { return QDateTime::currentSecsSinceEpoch(); };
}

bool SimTraffic::isTrafficVariable(const QString& name)
{
    return name.startsWith(u"nqos:");
}

QString SimTraffic::value(const QString& name) const
{
    const auto it = seriesTable().constFind(name);
    if (it == seriesTable().constEnd())
        return QStringLiteral("er");
    const QString key = QString::fromLatin1(it->key);
    const QJsonValue fixed = m_scenario.value(QStringLiteral("traffic")).toObject().value(key);
    if (!fixed.isUndefined())
        return fixed.toVariant().toString();
    if (key == u"max_ds")
        return QStringLiteral("3010632");
    if (key == u"max_us")
        return QStringLiteral("299493");
    return history(key, it->range);
}

QString SimTraffic::history(const QString& series, int range) const
{
    const qint64 now = m_seconds();
    QStringList values;
    for (int i = kSamples - 1; i >= 0; --i)
        values << QString::number(sample(series, now - i, range));
    return values.join(u',');
}
