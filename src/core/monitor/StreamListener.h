#pragma once

#include "monitor/CallAnnouncer.h"
#include "monitor/CallRecord.h"
#include "monitor/CallTable.h"
#include "monitor/MonitorLineBuffer.h"

#include <QList>
#include <QMap>
#include <QObject>
#include <QPointer>
#include <QTcpSocket>

#include <functional>
#include <memory>

class CallerNameResolver;
class Clock;
class NotificationCenter;
class NotificationPresenter;
class SettingsStore;
class TNPreferences;
class TNScriptManager;

// What the listener talks to besides the socket. The references are required; the rest may stay
// unset (no names, no scripts, no notifications).
struct StreamListenerServices
{
    std::function<std::shared_ptr<TNPreferences>()> preferences; // the watched location
    SettingsStore& settings;                                     // global keys
    NotificationCenter& center;
    const Clock& clock;
    CallerNameResolver* names = nullptr;
    NotificationPresenter* presenter = nullptr;
    TNScriptManager* scripts = nullptr;
    // Subject and body of a memo attached during the call.
    std::function<std::pair<QString, QString>(qint64 memoID)> memoDetails;
    // Shows the call monitor window when no notifications are enabled.
    std::function<void()> openCallmonitorWindow;
    // Opens a URL through the program's own URL handling ("dial://<number>" on a click).
    std::function<void(const QString& url)> openURL;
    // The status item's state: 1 connected, 0 not.
    std::function<void(int)> setStatusItemState;
};

// The client of the router's call monitor port: reads its lines into a call table and has the
// announcer tell the user; the rest of the program hears of it through notifications.
class StreamListener : public QObject
{
    Q_OBJECT
public:
    enum ExtensionState { Free = CallTable::Free, InCall = CallTable::InCall, Ringing = CallTable::Ringing };
    static constexpr qsizetype NotFound = CallTable::NotFound;

    explicit StreamListener(StreamListenerServices services, QObject* parent = nullptr);
    ~StreamListener() override;

    // connect: and disconnect. No time-out and no retry here: the conductor reconnects.
    void connectToHost(const QString& hostName, quint16 port = 1012);
    void disconnectFromHost();
    bool isConnected() const { return m_connected; }
    // A connection attempt is under way.
    bool isConnecting() const { return m_socket && !m_connected; }

    // Bytes as read from the socket; public so tests and benchmarks can feed the parser directly.
    void processBytes(const QByteArray& bytes);

    const CallTable& table() const { return m_table; }
    const QList<CallRecord>& monitorCalls() const { return m_table.calls(); }
    const QMap<QString, int>& extensions() const { return m_table.extensions(); }
    void resetMonitorCalls() { m_table.clearCalls(); }
    qsizetype indexForUID(const QString& uid) const { return m_table.indexForUID(uid); }

    // A call the program asked the router to dial.
    void addNewCallForExtensionForContact(const QString& number, const QString& extension,
                                          const QStringList& contact);
    void cancelCallForUID(const QString& uid);
    void setContactNameWithLabelAndABIDForConnID(const QString& name, const QString& label,
                                                 const QString& abid, const QString& connID);
    // By record: an ended call's connID is "-1" and no longer tells calls apart.
    void setMemoIDForUID(qint64 memoID, const QString& uid) { m_table.setMemoIDForUID(memoID, uid); }

    // Extension key for an extension number as the router sends it.
    static QString extensionKey(const QString& extension) { return CallTable::extensionKey(extension); }

signals:
    void connectedChanged(bool connected);
    // After each event line: the event word and the record it touched (or the one it would have
    // made, for a filtered call); hasRecord false when the line named an unknown connection.
    // fields are the line's own fields (time stamp first).
    void lineProcessed(const QString& event, const CallRecord& record, bool hasRecord,
                       const QStringList& fields);
    // The socket failed or the router closed it.
    void connectionLost(const QString& reason);

private:
    void onConnected();
    void onSocketError(const QString& reason);
    void onReadyRead();
    void processLine(const QByteArray& bytes);
    void lookUpName(const CallRecord& call);
    void post(const QString& name);

    StreamListenerServices m_services;
    std::unique_ptr<CallerNameResolver> m_defaultNames;
    CallTable m_table;
    CallAnnouncer* m_announcer;
    QPointer<QTcpSocket> m_socket;
    MonitorLineBuffer m_buffer;
    bool m_connected = false;
};
