#pragma once

#include "monitor/CallRecord.h"
#include "monitor/MonitorLine.h"
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

// What the listener talks to besides the socket. Everything may stay unset: the listener then
// uses the process-wide instances or does without (no scripts, no notifications).
struct StreamListenerServices
{
    std::function<std::shared_ptr<TNPreferences>()> preferences; // the current location
    SettingsStore* settings = nullptr;                           // global keys
    CallerNameResolver* names = nullptr;
    NotificationPresenter* presenter = nullptr;
    TNScriptManager* scripts = nullptr;
    NotificationCenter* center = nullptr;
    Clock* clock = nullptr;
    // Asks the call list to import the router's journal in the background (after DISCONNECT).
    std::function<void()> loadCallList;
    // Subject and body of a memo attached during the call.
    std::function<std::pair<QString, QString>(qint64 memoID)> memoDetails;
    // Shows the call monitor window when no notifications are enabled.
    std::function<void()> openCallmonitorWindow;
    // Opens a URL through the program's own URL handling ("dial://<number>" on a click).
    std::function<void(const QString& url)> openURL;
    // The status item's state: 1 connected, 0 not.
    std::function<void(int)> setStatusItemState;
};

// The client of the router's call monitor port: turns event lines into call records and
// extension states and tells the rest of the program through notifications.
class StreamListener : public QObject
{
    Q_OBJECT
public:
    enum ExtensionState { Free = 1, InCall = 2, Ringing = 3 };
    static constexpr qsizetype NotFound = -1;

    explicit StreamListener(StreamListenerServices services = {}, QObject* parent = nullptr);
    ~StreamListener() override;

    static StreamListener* sharedInstance();
    static void setSharedInstance(StreamListener* listener);

    // connect: and disconnect. No time-out and no retry here: the conductor reconnects.
    void connectToHost(const QString& hostName, quint16 port = 1012);
    void disconnectFromHost();
    bool isConnected() const { return m_connected; }
    // A connection attempt is under way.
    bool isConnecting() const { return m_socket && !m_connected; }

    // Bytes as read from the socket; public so tests and benchmarks can feed the parser directly.
    void processBytes(const QByteArray& bytes);

    const QList<CallRecord>& monitorCalls() const { return m_monitorCalls; }
    const QMap<QString, int>& extensions() const { return m_extensions; }
    const QMap<QString, QString>& connIDs() const { return m_connIDs; }
    void resetMonitorCalls();

    qsizetype indexForConnID(const QString& connID) const;
    qsizetype indexForUID(const QString& uid) const;

    void changeStateForExtension(int state, const QString& extension);
    bool showCallForLine(const QString& line, int callType, bool startedExternal) const;

    // A call the program asked the router to dial.
    void addNewCallForExtensionForContact(const QString& number, const QString& extension, const QStringList& contact);
    void cancelCallForUID(const QString& uid);
    void setReverseSearchedNameForConnID(const QString& name, const QString& connID);
    void setContactNameWithLabelAndABIDForConnID(const QString& name, const QString& label, const QString& abid,
                                                 const QString& connID);
    void setMemoIDForConnID(qint64 memoID, const QString& connID);
    // The same for one record: an ended call's connID is "-1" and no longer tells calls apart.
    void setMemoIDForUID(qint64 memoID, const QString& uid);
    void insertLocalNotificationForCall(const QVariant& note, const QString& uid);

    // The text of the call's notification; delivered through the presenter when there is one.
    void showGrowlForCall(const CallRecord& call);

    // Extension key for an extension number as the router sends it.
    static QString extensionKey(const QString& extension);

signals:
    void connectedChanged(bool connected);
    // After each event line: the event word and the record it touched (or the one it would have
    // made, for a filtered call); hasRecord false when the line named an unknown connection.
    // fields are the line's own fields (time stamp first).
    void lineProcessed(const QString& event, const CallRecord& record, bool hasRecord, const QStringList& fields);
    // The socket failed or the router closed it.
    void connectionLost(const QString& reason);

private:
    void onConnected();
    void onSocketError(const QString& reason);
    void onReadyRead();
    void processLine(const QByteArray& bytes);
    bool handleRing(const MonitorLine& line, CallRecord* touched);
    bool handleCall(const MonitorLine& line, CallRecord* touched);
    bool handleConnect(const MonitorLine& line, CallRecord* touched);
    bool handleDisconnect(const MonitorLine& line, CallRecord* touched);
    QStringList lookupContact(const QString& connID, const QString& number);
    QString extensionTitle(const QString& extension) const;
    void runScripts(int state, const CallRecord& call);
    void post(const QString& name);
    bool notificationsEnabled() const;
    QDateTime now() const;
    std::shared_ptr<TNPreferences> prefs() const;

    StreamListenerServices m_services;
    std::unique_ptr<CallerNameResolver> m_defaultNames;
    QPointer<QTcpSocket> m_socket;
    MonitorLineBuffer m_buffer;
    bool m_connected = false;
    QList<CallRecord> m_monitorCalls;
    QMap<QString, int> m_extensions;
    QMap<QString, QString> m_connIDs;
};
