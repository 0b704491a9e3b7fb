#pragma once

#include <QTimer>
#include <QWidget>

#include <functional>

struct CallRecord;
class QLabel;
class QMenu;
class QToolButton;
class QPushButton;
class QTreeWidget;
class NotificationCenter;
class SettingsStore;
class StreamListener;

// The calls the call monitor has seen since start, newest first: state, number, name, extension,
// line and duration (running while connected). A memo can be written for a selected call.
// Refreshed on "RELOADCURRENTCALLS" and "UPDATECALLMONITORDETAILS"; "monitorAlwaysOnTop" keeps
// it above other windows.
class CallMonitorWindow : public QWidget
{
    Q_OBJECT
public:
    enum Column { State, Number, Name, Extension, Line, Duration, ColumnCount };

    CallMonitorWindow(NotificationCenter& center, StreamListener& listener, SettingsStore& settings,
                      QWidget* parent = nullptr);

    // openCallmonitorWindow: shows it (without taking the focus from the user's work).
    void openCallmonitorWindow();
    void reload();
    void applyAlwaysOnTop();
    // Without a tray icon the window carries the menu.
    void setMenu(QMenu* menu);

    QTreeWidget* table() const { return m_table; }
    QPushButton* memoButton() const { return m_memo; }
    // The UID of the selected call; "" when none.
    QString selectedUID() const;

    static QString stateText(const CallRecord& call);
    // hh:mm:ss, running from the connect time while the call lasts.
    static QString durationText(const CallRecord& call, const QDateTime& now);

signals:
    // The user wants to write a memo for this call.
    void memoRequested(const QString& uid);

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void updateDurations();
    void updateButtons();

    NotificationCenter& m_center;
    StreamListener& m_listener;
    SettingsStore& m_settings;
    QTreeWidget* m_table = nullptr;
    QLabel* m_status = nullptr;
    QPushButton* m_memo = nullptr;
    QPushButton* m_clear = nullptr;
    QToolButton* m_menuButton = nullptr;
    // Ticks only while the window is shown and a call is connected.
    QTimer m_tick;
};
