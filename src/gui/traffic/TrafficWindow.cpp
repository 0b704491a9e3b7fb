#include "traffic/TrafficWindow.h"

#include "traffic/TNTrafficChart.h"

#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

TrafficWindow::TrafficWindow(SettingsStore& settings, QWidget* parent)
    : QWidget(parent, Qt::Window), m_settings(settings), m_chart(new TNTrafficChart(&settings, this))
{
    setWindowTitle(tr("Online monitor – Tondrel"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_chart, 1);
    auto* legend = new QGridLayout;
    const auto addSeries = [&](const QStringList& keys, int column, const QString& heading) {
        auto* head = new QLabel(QStringLiteral("<b>%1</b>").arg(heading.toHtmlEscaped()), this);
        legend->addWidget(head, 0, column, 1, 3);
        int row = 1;
        for (const QString& key : keys) {
            auto* swatch = new QLabel(this);
            swatch->setFixedSize(12, 12);
            swatch->setStyleSheet(QStringLiteral("background: %1; border-radius: 2px;")
                                      .arg(TrafficFigures::colorFor(key, &settings).name()));
            legend->addWidget(swatch, row, column);
            legend->addWidget(new QLabel(TrafficFigures::titleFor(key), this), row, column + 1);
            auto* value = new QLabel(this);
            value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
            legend->addWidget(value, row, column + 2);
            m_values.insert(key, value);
            ++row;
        }
    };
    addSeries(TrafficFigures::downKeys(), 0, tr("⬇ Downstream"));
    addSeries(TrafficFigures::upKeys(), 3, tr("⬆ Upstream"));
    legend->setColumnMinimumWidth(2, 90);
    legend->setColumnMinimumWidth(5, 90);
    layout->addLayout(legend);
    // Quitting closes every window: that is not the user closing the panel.
    connect(qApp, &QCoreApplication::aboutToQuit, this, [this] { m_quitting = true; });
    updateTrafficChartWithData({});
    resize(520, 340);
}

void TrafficWindow::updateTrafficChartWithData(const QVariantMap& record)
{
    m_chart->updateTrafficChartWithData(record);
    const TrafficFigures& f = m_chart->figures();
    for (const auto* direction : {&f.down, &f.up})
        for (const TrafficFigures::Series& s : *direction)
            if (QLabel* label = m_values.value(s.key))
                label->setText(QStringLiteral("%1 kbit/s").arg(s.latest(), 0, 'f', 1));
}

QString TrafficWindow::legendText(const QString& key) const
{
    const QLabel* label = m_values.value(key);
    return label ? label->text() : QString();
}

void TrafficWindow::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    m_settings.setValue(keys::ShowTrafficMonitorWindow, true);
    m_settings.sync();
    emit shownChanged(true);
}

void TrafficWindow::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    emit shownChanged(false);
}

void TrafficWindow::closeEvent(QCloseEvent* event)
{
    if (!m_quitting) {
        m_settings.setValue(keys::ShowTrafficMonitorWindow, false);
        m_settings.sync();
    }
    QWidget::closeEvent(event);
}
