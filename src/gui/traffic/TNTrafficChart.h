#pragma once

#include "traffic/TrafficFigures.h"

#include <QIcon>
#include <QWidget>

class SettingsStore;

// The traffic chart: downstream above, upstream below, each series stacked on the ones before
// it, scaled to the router's maximum or the highest total, newest on the right.
class TNTrafficChart : public QWidget
{
    Q_OBJECT
public:
    explicit TNTrafficChart(const SettingsStore* settings, QWidget* parent = nullptr);

    // updateTrafficChartWithData:
    void updateTrafficChartWithData(const QVariantMap& record);
    const TrafficFigures& figures() const { return m_figures; }

    QSize sizeHint() const override { return {420, 220}; }
    QSize minimumSizeHint() const override { return {160, 90}; }

    // The tray's small chart: both directions' newest history as two bands in one colour.
    static QIcon trayIcon(const TrafficFigures& figures, const QColor& color, int size = 22);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const SettingsStore* m_settings;
    TrafficFigures m_figures;
};
