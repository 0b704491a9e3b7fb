#pragma once

#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QVariantMap>

#include <functional>

class SettingsStore;

// Samples the router's traffic by queue every four seconds while a chart is shown. Each sample
// runs on a pool thread; its record reaches observers on this object's thread.
class TrafficSampler : public QObject
{
    Q_OBJECT
public:
    // Asks the router for variables; the answer has one value per variable, or is empty.
    using Query = std::function<QStringList(const QStringList& variables)>;

    static constexpr int kIntervalMs = 4000;

    TrafficSampler(SettingsStore& settings, Query query, QObject* parent = nullptr);

    // The nine variables of one sample, in the order the record is built from.
    static const QStringList& variables();
    // The traffic record of an answer; an answer with fewer than four values gives zeros.
    static QVariantMap recordFromAnswer(const QStringList& answer);

    // toogleTrafficTimer: sampling runs while the menu chart is enabled or the panel is open.
    void toogleTrafficTimer();
    void setPanelOpen(bool open);
    bool isRunning() const { return m_timer.isActive(); }
    void setInterval(int ms) { m_timer.setInterval(ms); }

    // loadTrafficData: one sample in the background.
    void loadTrafficData();

signals:
    void trafficRecord(const QVariantMap& record);

private:
    SettingsStore& m_settings;
    Query m_query;
    QTimer m_timer;
    bool m_panelOpen = false;
};
