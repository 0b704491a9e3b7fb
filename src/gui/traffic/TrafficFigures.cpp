#include "traffic/TrafficFigures.h"

#include "base/SettingsStore.h"

#include <QCoreApplication>
#include <QHash>

#include <algorithm>

namespace {
QVector<double> kbitsOf(const QVariant& value)
{
    QVector<double> out;
    const QStringList texts = value.toStringList();
    out.reserve(texts.size());
    for (const QString& text : texts)
        out.append(TrafficFigures::kbitsFromRouterValue(text));
    return out;
}

double newestTotal(const QVector<TrafficFigures::Series>& series)
{
    return TrafficFigures::stackedAt(series, 0);
}

QString rateLabel(const QString& arrow, double kbits)
{
    return QStringLiteral("%1 %2 kbit/s").arg(arrow).arg(kbits, 0, 'f', 1);
}
} // namespace

const QStringList& TrafficFigures::downKeys()
{
    static const QStringList keys{QStringLiteral("ds_internet"), QStringLiteral("ds_tv")};
    return keys;
}

const QStringList& TrafficFigures::upKeys()
{
    static const QStringList keys{QStringLiteral("us_realtime"), QStringLiteral("us_important"),
                                  QStringLiteral("us_default"), QStringLiteral("us_low")};
    return keys;
}

double TrafficFigures::kbitsFromRouterValue(const QString& text)
{
    bool ok = false;
    const double bytes = text.trimmed().toDouble(&ok);
    return ok && bytes > 0 ? bytes * 8.0 / 1000.0 : 0.0;
}

TrafficFigures TrafficFigures::fromRecord(const QVariantMap& record)
{
    TrafficFigures f;
    for (const QString& key : downKeys())
        f.down.append({key, kbitsOf(record.value(key))});
    for (const QString& key : upKeys())
        f.up.append({key, kbitsOf(record.value(key))});
    f.maxDown = kbitsFromRouterValue(record.value(QStringLiteral("max_ds")).toString());
    f.maxUp = kbitsFromRouterValue(record.value(QStringLiteral("max_us")).toString());
    return f;
}

int TrafficFigures::length() const
{
    qsizetype n = 0;
    for (const auto* direction : {&down, &up})
        for (const Series& s : *direction)
            n = std::max(n, s.kbits.size());
    return int(n);
}

double TrafficFigures::stackedAt(const QVector<Series>& series, int fromNewest)
{
    // Histories of different lengths line up at their newest value.
    double sum = 0;
    for (const Series& s : series) {
        const qsizetype i = s.kbits.size() - 1 - fromNewest;
        if (i >= 0)
            sum += s.kbits.at(i);
    }
    return sum;
}

double TrafficFigures::scaleOf(const QVector<Series>& series, double maximum)
{
    qsizetype n = 0;
    for (const Series& s : series)
        n = std::max(n, s.kbits.size());
    double top = 0;
    for (int i = 0; i < n; ++i)
        top = std::max(top, stackedAt(series, i));
    // The line's maximum dwarfs everyday traffic: the chart follows the traffic, with headroom.
    if (top > 0)
        return top * 1.25;
    return maximum > 0 ? maximum : 1.0;
}

QString TrafficFigures::downLabel() const
{
    return rateLabel(QStringLiteral("⬇"), newestTotal(down));
}

QString TrafficFigures::upLabel() const
{
    return rateLabel(QStringLiteral("⬆"), newestTotal(up));
}

QColor TrafficFigures::colorFor(const QString& key, const SettingsStore* settings)
{
    if (settings) {
        const QColor chosen(settings->value(QStringLiteral("trafficMonitorColor") + key).toString());
        if (chosen.isValid())
            return chosen;
    }
    static const QHash<QString, QColor> defaults{{QStringLiteral("ds_internet"), QColor(0x2e, 0x86, 0xde)},
                                                 {QStringLiteral("ds_tv"), QColor(0x8e, 0x44, 0xad)},
                                                 {QStringLiteral("us_realtime"), QColor(0xe6, 0x7e, 0x22)},
                                                 {QStringLiteral("us_important"), QColor(0xf1, 0xc4, 0x0f)},
                                                 {QStringLiteral("us_default"), QColor(0x27, 0xae, 0x60)},
                                                 {QStringLiteral("us_low"), QColor(0x95, 0xa5, 0xa6)}};
    return defaults.value(key, QColor(Qt::gray));
}

QString TrafficFigures::titleFor(const QString& key)
{
    if (key == u"ds_internet")
        return QCoreApplication::translate("TrafficFigures", "Internet");
    if (key == u"ds_tv")
        return QCoreApplication::translate("TrafficFigures", "TV");
    if (key == u"us_realtime")
        return QCoreApplication::translate("TrafficFigures", "Real-time (telephony)");
    if (key == u"us_important")
        return QCoreApplication::translate("TrafficFigures", "Prioritised");
    if (key == u"us_default")
        return QCoreApplication::translate("TrafficFigures", "Default");
    if (key == u"us_low")
        return QCoreApplication::translate("TrafficFigures", "Background");
    return key;
}
