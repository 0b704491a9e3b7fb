#pragma once

#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <functional>
#include <memory>

class SettingsStore;
class TNStatusMenu;
class TrafficSampler;
class TrafficWindow;

// The online monitor of the tray: the sampling, the panel, and the rates and small chart on the
// status item. Sampling runs while the panel is shown or the tray display is switched on.
class TrafficDisplay : public QObject
{
    Q_OBJECT
public:
    using Query = std::function<QStringList(const QStringList& variables)>;

    TrafficDisplay(SettingsStore& settings, TNStatusMenu& status, Query query, QObject* parent = nullptr);
    ~TrafficDisplay() override;

    TrafficSampler& sampler() { return *m_sampler; }
    TrafficWindow& window();
    void openWindow();
    // After a settings change: sampling and the tray display follow the traffic keys.
    void applySettings();

private:
    void showRecord(const QVariantMap& record);

    SettingsStore& m_settings;
    TNStatusMenu& m_status;
    std::unique_ptr<TrafficSampler> m_sampler;
    std::unique_ptr<TrafficWindow> m_window;
};
