#pragma once

#include <QColor>
#include <QString>
#include <QVariantMap>
#include <QVector>

class SettingsStore;

// A traffic record in the charts' units: kbit/s per series, oldest first. The router counts
// bytes per second; the charts speak kbit/s.
struct TrafficFigures
{
    struct Series
    {
        QString key; // "ds_internet", "us_low", ...
        QVector<double> kbits;
        double latest() const { return kbits.isEmpty() ? 0.0 : kbits.constLast(); }
    };

    QVector<Series> down; // "ds_internet", "ds_tv"
    QVector<Series> up;   // "us_realtime", "us_important", "us_default", "us_low"
    double maxDown = 0;   // the record's "max_ds", in kbit/s
    double maxUp = 0;     // the record's "max_us", in kbit/s

    static const QStringList& downKeys();
    static const QStringList& upKeys();
    static TrafficFigures fromRecord(const QVariantMap& record);
    // One router value (bytes per second) in kbit/s; text that is no number counts as 0.
    static double kbitsFromRouterValue(const QString& text);

    // The longest history: the number of points across the chart.
    int length() const;
    // The stacked total of a direction at a point counted from the newest (0 = newest).
    static double stackedAt(const QVector<Series>& series, int fromNewest);
    // The top of a direction's scale: a quarter above the highest stacked total; without
    // traffic the maximum; never 0.
    static double scaleOf(const QVector<Series>& series, double maximum);

    // "⬇ 1234.5 kbit/s" and "⬆ …": the newest totals.
    QString downLabel() const;
    QString upLabel() const;

    // A series' colour: "trafficMonitorColor<key>" ("#rrggbb") when set, else its default.
    static QColor colorFor(const QString& key, const SettingsStore* settings);
    // The series' name for legends.
    static QString titleFor(const QString& key);
};
