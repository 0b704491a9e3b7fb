#include "CallMonitorWindow.h"

#include "MenuRebuild.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "calllist/DialCompletion.h"
#include "monitor/StreamListener.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
constexpr int UIDRole = Qt::UserRole;

QString hms(qint64 seconds)
{
    seconds = std::max<qint64>(0, seconds);
    return QStringLiteral("%1:%2:%3")
        .arg(seconds / 3600, 2, 10, QLatin1Char('0'))
        .arg(seconds / 60 % 60, 2, 10, QLatin1Char('0'))
        .arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

bool isRunning(const CallRecord& call)
{
    return call.connected && call.cmd != u"DISCONNECT";
}
} // namespace

CallMonitorWindow::CallMonitorWindow(NotificationCenter& center, StreamListener& listener,
                                     SettingsStore& settings, QWidget* parent)
    : QWidget(parent), m_center(center), m_listener(listener), m_settings(settings)
{
    setWindowTitle(tr("Call monitor – Tondrel"));
    setObjectName(QStringLiteral("CallMonitorWindow"));
    m_table = new QTreeWidget(this);
    m_table->setRootIsDecorated(false);
    m_table->setUniformRowHeights(true);
    m_table->setAlternatingRowColors(true);
    m_table->setHeaderLabels(
        {tr("State"), tr("Number"), tr("Name"), tr("Extension"), tr("Line"), tr("Duration")});
    m_table->header()->setStretchLastSection(false);
    m_table->header()->setSectionResizeMode(Name, QHeaderView::Stretch);
    m_status = new QLabel(this);
    m_memo = new QPushButton(tr("Memo…"), this);
    m_clear = new QPushButton(tr("Clear list"), this);

    m_menuButton = new QToolButton(this);
    m_menuButton->setText(tr("Menu"));
    m_menuButton->setPopupMode(QToolButton::InstantPopup);
    m_menuButton->hide();
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_menuButton);
    buttons->addWidget(m_status, 1);
    buttons->addWidget(m_clear);
    buttons->addWidget(m_memo);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_table);
    layout->addLayout(buttons);
    resize(720, 260);

    connect(m_memo, &QPushButton::clicked, this, [this] {
        if (const QString uid = selectedUID(); !uid.isEmpty())
            emit memoRequested(uid);
    });
    connect(m_table, &QTreeWidget::itemDoubleClicked, this,
            [this](QTreeWidgetItem* item) { emit memoRequested(item->data(0, UIDRole).toString()); });
    connect(m_clear, &QPushButton::clicked, this, [this] {
        m_listener.resetMonitorCalls();
        reload();
    });
    connect(m_table, &QTreeWidget::itemSelectionChanged, this, &CallMonitorWindow::updateButtons);
    m_tick.setInterval(1000);
    connect(&m_tick, &QTimer::timeout, this, &CallMonitorWindow::updateDurations);
    rebuildOn(m_center, this, {Notifications::RELOADCURRENTCALLS, Notifications::UPDATECALLMONITORDETAILS},
              [this] { reload(); });
    applyAlwaysOnTop();
    reload();
}

void CallMonitorWindow::openCallmonitorWindow()
{
    applyAlwaysOnTop();
    reload();
    setAttribute(Qt::WA_ShowWithoutActivating, true);
    show();
    raise();
}

void CallMonitorWindow::applyAlwaysOnTop()
{
    const bool onTop = m_settings.value(keys::MonitorAlwaysOnTop, true).toBool();
    if (bool(windowFlags() & Qt::WindowStaysOnTopHint) == onTop)
        return;
    const bool wasVisible = isVisible();
    setWindowFlag(Qt::WindowStaysOnTopHint, onTop);
    if (wasVisible)
        show();
}

void CallMonitorWindow::setMenu(QMenu* menu)
{
    m_menuButton->setMenu(menu);
    m_menuButton->setVisible(menu != nullptr);
}

QString CallMonitorWindow::stateText(const CallRecord& call)
{
    if (call.cmd == u"RING")
        return tr("Ringing");
    if (call.cmd == u"DIAL")
        return tr("Dialling…");
    if (call.cmd == u"CALL")
        return tr("Calling");
    if (call.cmd == u"CONNECT")
        return tr("Connected");
    if (call.cmd == u"DISCONNECT") {
        if (call.connected || call.calltype == CallRecord::Incoming)
            return tr("Ended");
        return call.calltype == CallRecord::Missed ? tr("Missed") : tr("No answer");
    }
    return call.cmd;
}

QString CallMonitorWindow::durationText(const CallRecord& call, const QDateTime& now)
{
    if (isRunning(call))
        return hms(call.dateStart.secsTo(now));
    if (call.cmd == u"DISCONNECT" && !call.duration.isEmpty())
        return hms(call.duration.toLongLong());
    return QString();
}

void CallMonitorWindow::reload()
{
    const QString selected = selectedUID();
    m_table->clear();
    const QDateTime now = QDateTime::currentDateTime();
    const QList<CallRecord>& calls = m_listener.monitorCalls();
    bool running = false;
    int shown = 0;
    for (auto it = calls.crbegin(); it != calls.crend(); ++it) {
        const CallRecord& call = *it;
        if (!call.showCall)
            continue;
        ++shown;
        running = running || isRunning(call);
        auto* item = new QTreeWidgetItem(m_table);
        item->setData(0, UIDRole, call.UID);
        item->setText(State, stateText(call));
        const QString direction =
            call.calltype == CallRecord::Outgoing ? QStringLiteral("→ ") : QStringLiteral("← ");
        item->setText(Number, direction + (call.number.isEmpty() ? tr("withheld") : call.number));
        QString name = call.contactName();
        if (!name.isEmpty() && !call.contactLabel().isEmpty())
            name += QStringLiteral(" (%1)").arg(methods::phoneLabelText(call.contactLabel()));
        item->setText(Name, name);
        item->setText(Extension, call.extensionTitle.isEmpty() ? call.extension : call.extensionTitle);
        item->setText(Line, call.line);
        item->setText(Duration, durationText(call, now));
        item->setTextAlignment(Duration, Qt::AlignRight | Qt::AlignVCenter);
        if (call.MemoID)
            item->setToolTip(Name, tr("Has a memo"));
        if (call.UID == selected)
            item->setSelected(true);
    }
    for (int c = 0; c < ColumnCount; ++c)
        if (c != Name)
            m_table->resizeColumnToContents(c);
    m_status->setText(!m_listener.isConnected() ? tr("Not connected to the router's call monitor")
                      : shown == 1              ? tr("1 call")
                                                : tr("%1 calls").arg(shown));
    if (running && isVisible())
        m_tick.start();
    else
        m_tick.stop();
    updateButtons();
}

void CallMonitorWindow::updateDurations()
{
    const QDateTime now = QDateTime::currentDateTime();
    bool running = false;
    for (int row = 0; row < m_table->topLevelItemCount(); ++row) {
        QTreeWidgetItem* item = m_table->topLevelItem(row);
        const qsizetype i = m_listener.indexForUID(item->data(0, UIDRole).toString());
        if (i == StreamListener::NotFound)
            continue;
        const CallRecord& call = m_listener.monitorCalls().at(i);
        running = running || isRunning(call);
        item->setText(Duration, durationText(call, now));
    }
    if (!running)
        m_tick.stop();
}

void CallMonitorWindow::updateButtons()
{
    m_memo->setEnabled(!selectedUID().isEmpty());
    m_clear->setEnabled(m_table->topLevelItemCount() > 0);
}

QString CallMonitorWindow::selectedUID() const
{
    const auto items = m_table->selectedItems();
    return items.isEmpty() ? QString() : items.first()->data(0, UIDRole).toString();
}

void CallMonitorWindow::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    reload();
}

void CallMonitorWindow::hideEvent(QHideEvent* event)
{
    m_tick.stop();
    QWidget::hideEvent(event);
}

void CallMonitorWindow::closeEvent(QCloseEvent* event)
{
    // The call list's group counters may have changed while the calls came in.
    m_center.post(Notifications::UPDATESIDETABLE);
    QWidget::closeEvent(event);
}
