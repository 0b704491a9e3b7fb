#include "box/TrafficSampler.h"

#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThreadPool>

namespace {
// Bits per second as the router writes them; a value that is no number, negative or beyond any
// line's rate reads as 0 (two were added up as int and overflowed).
qint64 rate(const QString& text)
{
    bool ok = false;
    const qint64 value = text.trimmed().toLongLong(&ok);
    return ok && value >= 0 && value <= 1'000'000'000'000LL ? value : 0;
}
} // namespace

TrafficSampler::TrafficSampler(SettingsStore& settings, Query query, QObject* parent)
    : QObject(parent), m_settings(settings), m_query(std::move(query))
{
    m_timer.setInterval(kIntervalMs);
    connect(&m_timer, &QTimer::timeout, this, &TrafficSampler::loadTrafficData);
}

const QStringList& TrafficSampler::variables()
{
    static const QStringList vars{
        QStringLiteral("nqos:settings/queue2/current_bps"),
        QStringLiteral("nqos:settings/queue3/current_bps"),
        QStringLiteral("nqos:settings/queue4/current_bps"),
        QStringLiteral("nqos:settings/queue5/current_bps"),
        QStringLiteral("nqos:settings/queue6/current_bps"),
        QStringLiteral("nqos:settings/stat/max_ds"),
        QStringLiteral("nqos:settings/stat/max_us"),
        QStringLiteral("nqos:settings/stat/ds_current_bps"),
        QStringLiteral("nqos:settings/stat/mc_current_bps"),
    };
    return vars;
}

QVariantMap TrafficSampler::recordFromAnswer(const QStringList& answer)
{
    // The router answers all values or none; four is the guard the charts have always used.
    if (answer.size() < 4) {
        const QVariant zero = QStringList{QStringLiteral("0")};
        return {{QStringLiteral("ds_internet"), zero},
                {QStringLiteral("ds_tv"), zero},
                {QStringLiteral("us_realtime"), zero},
                {QStringLiteral("us_important"), zero},
                {QStringLiteral("us_default"), zero},
                {QStringLiteral("us_low"), zero},
                {QStringLiteral("max_ds"), QStringLiteral("0")},
                {QStringLiteral("max_us"), QStringLiteral("0")}};
    }
    const auto history = [&](int i) { return answer.value(i).split(u','); };
    const QStringList q2 = history(0);
    const QStringList q3 = history(1);
    QStringList realtime;
    realtime.reserve(q2.size());
    for (qsizetype i = 0; i < q2.size(); ++i)
        realtime << QString::number(rate(q2.at(i)) + (i < q3.size() ? rate(q3.at(i)) : 0));
    return {{QStringLiteral("ds_internet"), history(7)}, {QStringLiteral("ds_tv"), history(8)},
            {QStringLiteral("us_realtime"), realtime},   {QStringLiteral("us_important"), history(2)},
            {QStringLiteral("us_default"), history(3)},  {QStringLiteral("us_low"), history(4)},
            {QStringLiteral("max_ds"), answer.value(5)}, {QStringLiteral("max_us"), answer.value(6)}};
}

void TrafficSampler::toogleTrafficTimer()
{
    const bool inMenu = m_settings.value(keys::ShowTrafficMonitorInMenu, false).toBool();
    if (!inMenu && !m_panelOpen) {
        m_timer.stop();
        return;
    }
    if (m_timer.isActive())
        return;
    loadTrafficData();
    m_timer.start();
}

void TrafficSampler::setPanelOpen(bool open)
{
    m_panelOpen = open;
    toogleTrafficTimer();
}

void TrafficSampler::loadTrafficData()
{
    // Samples may overlap when the router is slow: each delivers its own record.
    QPointer<TrafficSampler> self(this);
    Query query = m_query;
    QThreadPool::globalInstance()->start([self, query] {
        const QVariantMap record = recordFromAnswer(query ? query(variables()) : QStringList());
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [self, record] {
                if (self)
                    emit self->trafficRecord(record);
            },
            Qt::QueuedConnection);
    });
}
