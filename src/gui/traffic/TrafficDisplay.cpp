#include "traffic/TrafficDisplay.h"

#include "TNStatusMenu.h"
#include "traffic/TNTrafficChart.h"
#include "traffic/TrafficWindow.h"

#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "box/TrafficSampler.h"

#include <QApplication>
#include <QPalette>

TrafficDisplay::TrafficDisplay(SettingsStore& settings, TNStatusMenu& status, Query query, QObject* parent)
    : QObject(parent), m_settings(settings), m_status(status),
      m_sampler(std::make_unique<TrafficSampler>(settings, std::move(query)))
{
    connect(m_sampler.get(), &TrafficSampler::trafficRecord, this, &TrafficDisplay::showRecord);
}

// The window observes the sampler: it goes first.
TrafficDisplay::~TrafficDisplay()
{
    m_window.reset();
}

TrafficWindow& TrafficDisplay::window()
{
    if (!m_window) {
        m_window = std::make_unique<TrafficWindow>(m_settings);
        connect(m_window.get(), &TrafficWindow::shownChanged, m_sampler.get(), &TrafficSampler::setPanelOpen);
    }
    return *m_window;
}

void TrafficDisplay::openWindow()
{
    window().show();
    m_window->raise();
    m_window->activateWindow();
}

void TrafficDisplay::applySettings()
{
    m_sampler->toogleTrafficTimer();
    const bool inMenu = m_settings.value(keys::ShowTrafficMonitorInMenu).toBool();
    if (!inMenu || !m_settings.value(keys::ShowTrafficMonitorMenuLabel).toBool())
        m_status.setTrafficLabel(QString());
    if (!inMenu || !m_settings.value(keys::ShowTrafficMonitorMenuGraph).toBool())
        m_status.setTrafficIcon(QIcon());
}

void TrafficDisplay::showRecord(const QVariantMap& record)
{
    if (m_window)
        m_window->updateTrafficChartWithData(record);
    if (!m_settings.value(keys::ShowTrafficMonitorInMenu).toBool())
        return;
    const TrafficFigures figures = TrafficFigures::fromRecord(record);
    if (m_settings.value(keys::ShowTrafficMonitorMenuLabel).toBool())
        m_status.setTrafficLabel(figures.downLabel() + QStringLiteral("  ") + figures.upLabel());
    if (m_settings.value(keys::ShowTrafficMonitorMenuGraph).toBool()) {
        const bool useMenuColor =
            m_settings.value(QStringLiteral("trafficMonitorUseMenuColor"), true).toBool();
        const QColor color = useMenuColor
                                 ? QApplication::palette().windowText().color()
                                 : TrafficFigures::colorFor(QStringLiteral("ds_internet"), &m_settings);
        m_status.setTrafficIcon(TNTrafficChart::trayIcon(figures, color));
    }
}
