#pragma once

#include <QHash>
#include <QWidget>

class QLabel;
class SettingsStore;
class TNTrafficChart;

// The online monitor's panel: the chart with a legend of each series and its newest rate.
// Sampling runs while it is shown; whether it was open is remembered for the next start.
class TrafficWindow : public QWidget
{
    Q_OBJECT
public:
    explicit TrafficWindow(SettingsStore& settings, QWidget* parent = nullptr);

    void updateTrafficChartWithData(const QVariantMap& record);
    TNTrafficChart* chart() const { return m_chart; }
    QString legendText(const QString& key) const;

signals:
    void shownChanged(bool shown);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    SettingsStore& m_settings;
    TNTrafficChart* m_chart;
    QHash<QString, QLabel*> m_values;
    bool m_quitting = false;
};
