#include "monitor/StreamListener.h"

#include "base/Clock.h"
#include "base/Defaults.h"
#include "base/Logging.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "base/TNPreferencesManager.h"
#include "monitor/CallNotificationText.h"
#include "monitor/CallerNameResolver.h"
#include "monitor/NotificationPresenter.h"
#include "monitor/TNScriptManager.h"

#include <atomic>

namespace {
std::atomic<StreamListener*> g_shared{nullptr};

QString withoutHash(QString number)
{
    return number.remove(u'#');
}
} // namespace

StreamListener::StreamListener(StreamListenerServices services, QObject* parent)
    : QObject(parent), m_services(std::move(services))
{
    if (!m_services.names) {
        m_defaultNames = std::make_unique<UnknownCallerResolver>();
        m_services.names = m_defaultNames.get();
    }
    if (m_services.presenter) {
        connect(m_services.presenter, &NotificationPresenter::activated, this, [this](const QString& uid) {
            // didActivateNotification: a click dials the caller back through our URL handling.
            const qsizetype i = indexForUID(uid);
            if (i == NotFound || m_monitorCalls.at(i).number.isEmpty())
                return;
            const QString url = QStringLiteral("dial://%1").arg(m_monitorCalls.at(i).number);
            if (m_services.openURL)
                m_services.openURL(url);
        });
    }
}

StreamListener::~StreamListener()
{
    if (g_shared.load() == this)
        g_shared.store(nullptr);
}

StreamListener* StreamListener::sharedInstance()
{
    return g_shared.load();
}

void StreamListener::setSharedInstance(StreamListener* listener)
{
    g_shared.store(listener);
}

std::shared_ptr<TNPreferences> StreamListener::prefs() const
{
    if (m_services.preferences)
        return m_services.preferences();
    if (auto* manager = TNPreferencesManager::sharedManager())
        return manager->currentPreferences();
    return nullptr;
}

QDateTime StreamListener::now() const
{
    return m_services.clock ? m_services.clock->now() : Clock::system().now();
}

void StreamListener::post(const QString& name)
{
    NotificationCenter& center = m_services.center ? *m_services.center : NotificationCenter::defaultCenter();
    center.post(name, this);
}

// --- connection -------------------------------------------------------------------------------

void StreamListener::connectToHost(const QString& hostName, quint16 port)
{
    if (m_socket)
        disconnectFromHost(); // one stream at a time: the old one ends properly first
    m_socket = new QTcpSocket(this);
    connect(m_socket, &QTcpSocket::connected, this, &StreamListener::onConnected);
    connect(m_socket, &QTcpSocket::readyRead, this, &StreamListener::onReadyRead);
    connect(m_socket, &QTcpSocket::errorOccurred, this,
            [this](QAbstractSocket::SocketError) { onSocketError(m_socket ? m_socket->errorString() : QString()); });
    // The router closing the stream counts as an error, so the conductor reconnects.
    connect(m_socket, &QTcpSocket::disconnected, this,
            [this] { onSocketError(QStringLiteral("the router closed the connection")); });
    qCDebug(lcMonitor) << "Connecting to the call monitor on port" << port;
    m_socket->connectToHost(hostName, port, QIODevice::ReadOnly);
}

void StreamListener::onConnected()
{
    qCInfo(lcMonitor) << "Connected";
    m_connected = true;
    post(Notifications::CALLMONITORSTATUS);
    if (m_services.setStatusItemState)
        m_services.setStatusItemState(1);
    m_extensions.clear();
    m_connIDs.clear();
    post(Notifications::UPDATEEXTENSIONMENU);
    emit connectedChanged(true);
}

void StreamListener::disconnectFromHost()
{
    const bool was = m_connected;
    m_connected = false;
    if (m_socket) {
        m_socket->disconnect(this);
        m_socket->abort();
        m_socket->deleteLater();
        m_socket = nullptr;
    }
    m_buffer.clear();
    if (m_services.setStatusItemState)
        m_services.setStatusItemState(0);
    m_extensions.clear();
    m_connIDs.clear();
    post(Notifications::UPDATEEXTENSIONMENU);
    if (was)
        emit connectedChanged(false);
}

void StreamListener::onSocketError(const QString& reason)
{
    if (!m_socket)
        return; // already handled (error and disconnected both arrive for one loss)
    qCInfo(lcMonitor) << "Call monitor connection lost:" << reason;
    // Process whatever complete lines were still in the socket before giving up on it.
    if (m_socket->bytesAvailable() > 0)
        processBytes(m_socket->readAll());
    disconnectFromHost();
    post(Notifications::CALLMONITORSTATUS);
    emit connectionLost(reason);
}

void StreamListener::onReadyRead()
{
    while (m_socket && m_socket->bytesAvailable() > 0)
        processBytes(m_socket->read(64 * 1024));
}

// --- lines ------------------------------------------------------------------------------------

void StreamListener::processBytes(const QByteArray& bytes)
{
    const QList<QByteArray> lines = m_buffer.append(bytes);
    for (const QByteArray& line : lines)
        processLine(line);
}

void StreamListener::processLine(const QByteArray& bytes)
{
    QString reason;
    const std::optional<MonitorLine> parsed = MonitorLine::parse(bytes, &reason);
    if (!parsed) {
        // Numbers stay out of the log: the reason says enough.
        qCWarning(lcMonitor) << "Ignoring a call monitor line:" << reason;
        return;
    }
    const MonitorLine& line = *parsed;
    CallRecord touched;
    bool showCall = false;
    bool hasRecord = true;
    switch (line.event) {
    case MonitorLine::Event::Ring:
        showCall = handleRing(line, &touched);
        break;
    case MonitorLine::Event::Call:
        showCall = handleCall(line, &touched);
        break;
    case MonitorLine::Event::Connect:
        hasRecord = handleConnect(line, &touched);
        showCall = hasRecord && touched.showCall;
        break;
    case MonitorLine::Event::Disconnect:
        hasRecord = handleDisconnect(line, &touched);
        showCall = hasRecord && touched.showCall;
        break;
    case MonitorLine::Event::Unknown:
        qCWarning(lcMonitor) << "Ignoring unknown call monitor event" << line.eventWord();
        post(Notifications::RELOADCURRENTCALLS);
        return;
    }

    post(Notifications::RELOADCURRENTCALLS);
    if (!m_monitorCalls.isEmpty() && !notificationsEnabled() && showCall) {
        if (m_services.openCallmonitorWindow)
            m_services.openCallmonitorWindow();
        post(Notifications::UPDATECALLMONITORDETAILS);
    }
    if (!hasRecord) {
        touched.cmd = line.eventWord();
        touched.calltime = line.field(0);
        touched.connID = line.field(2);
        touched.UID.clear();
        if (line.event == MonitorLine::Event::Connect)
            touched.extension = line.field(3);
        else
            touched.duration = line.field(3);
    }
    emit lineProcessed(line.eventWord(), touched, hasRecord, line.fields);
}

bool StreamListener::handleRing(const MonitorLine& line, CallRecord* touched)
{
    const QString caller = line.field(3);
    const bool showCall = showCallForLine(line.field(4), CallRecord::Incoming, false);
    CallRecord r;
    r.calltime = line.field(0);
    r.cmd = QStringLiteral("RING");
    r.connID = line.field(2);
    r.line = line.field(4);
    r.number = withoutHash(caller);
    r.msn = line.field(5);
    r.contact = caller.isEmpty() ? QStringList{QString(), QString(), QString()} : lookupContact(r.connID, r.number);
    r.calltype = CallRecord::Incoming;
    r.dateStart = now();
    r.showCall = showCall;
    r.UID = CallRecord::uniqueID();
    if (showCall) {
        m_monitorCalls.append(r);
        showGrowlForCall(r);
        runScripts(TNScriptManager::Ringing, r);
        *touched = m_monitorCalls.constLast();
    } else {
        *touched = r;
    }
    return showCall;
}

bool StreamListener::handleCall(const MonitorLine& line, CallRecord* touched)
{
    const QString connID = line.field(2);
    const QString extension = line.field(3);
    qsizetype dialled = NotFound;
    for (qsizetype i = m_monitorCalls.size() - 1; i >= 0; --i) {
        if (m_monitorCalls.at(i).cmd == u"DIAL") {
            dialled = i;
            break;
        }
    }
    bool showCall = false;
    if (dialled != NotFound) {
        showCall = showCallForLine(line.field(4), CallRecord::Outgoing, false);
        CallRecord& r = m_monitorCalls[dialled];
        r.cmd = QStringLiteral("CALL");
        r.extension = extension;
        r.extensionTitle = extensionTitle(extension);
        r.line = line.field(4);
        r.msn = line.field(6);
        r.connID = connID;
        r.calltype = CallRecord::Outgoing;
        if (showCall) {
            showGrowlForCall(r);
            runScripts(TNScriptManager::OutgoingStarted, m_monitorCalls.at(dialled));
        }
        *touched = m_monitorCalls.at(dialled);
    } else {
        // Begun at a telephone: kept only when the user wants such calls, and never announced.
        showCall = showCallForLine(line.field(4), CallRecord::Outgoing, true);
        const QString called = line.field(5);
        CallRecord r;
        r.calltime = line.field(0);
        r.cmd = QStringLiteral("CALL");
        r.connID = connID;
        r.line = line.field(4);
        r.number = withoutHash(called);
        r.msn = line.field(6);
        r.extension = extension;
        r.extensionTitle = extensionTitle(extension);
        r.contact = called.isEmpty() ? QStringList{QString(), QString(), QString()} : lookupContact(connID, r.number);
        r.calltype = CallRecord::Outgoing;
        r.dateStart = now();
        r.externalStart = true;
        r.showCall = showCall;
        r.UID = CallRecord::uniqueID();
        if (showCall)
            m_monitorCalls.append(r);
        *touched = r;
    }
    m_connIDs.insert(connID, extension);
    changeStateForExtension(InCall, extension);
    return showCall;
}

bool StreamListener::handleConnect(const MonitorLine& line, CallRecord* touched)
{
    const QString connID = line.field(2);
    const QString extension = line.field(3);
    const qsizetype i = indexForConnID(connID);
    if (i != NotFound) {
        CallRecord& r = m_monitorCalls[i];
        r.cmd = QStringLiteral("CONNECT");
        r.extension = extension;
        r.extensionTitle = extensionTitle(extension);
        r.dateStart = now();
        r.connected = true;
        r.showCall = showCallForLine(r.line, r.calltype, r.externalStart);
        *touched = r;
    }
    m_connIDs.insert(connID, extension);
    changeStateForExtension(InCall, extension);
    return i != NotFound;
}

bool StreamListener::handleDisconnect(const MonitorLine& line, CallRecord* touched)
{
    const QString connID = line.field(2);
    const qsizetype i = indexForConnID(connID);
    if (i != NotFound) {
        CallRecord& r = m_monitorCalls[i];
        if (r.calltype == CallRecord::Incoming && r.cmd != u"CONNECT")
            r.calltype = CallRecord::Missed;
        r.cmd = QStringLiteral("DISCONNECT");
        r.connID = QStringLiteral("-1");
        r.duration = line.field(3);
        r.dateEnd = now();
        r.showCall = showCallForLine(r.line, r.calltype, r.externalStart);
        if (r.showCall) {
            showGrowlForCall(r);
            if (r.MemoID && m_services.memoDetails) {
                const auto [subject, body] = m_services.memoDetails(*r.MemoID);
                r.MemoSubject = subject;
                r.MemoBody = body;
            } else {
                r.MemoSubject.clear();
                r.MemoBody.clear();
            }
            runScripts(r.calltype == CallRecord::Outgoing ? TNScriptManager::OutgoingEnded
                                                          : TNScriptManager::IncomingEnded,
                       r);
        }
        *touched = m_monitorCalls.at(i);
    }
    const auto it = m_connIDs.find(connID);
    if (it != m_connIDs.end()) {
        const QString extension = it.value();
        m_connIDs.erase(it);
        changeStateForExtension(Free, extension);
    }
    if (m_services.loadCallList)
        m_services.loadCallList();
    return i != NotFound;
}

QStringList StreamListener::lookupContact(const QString& connID, const QString& number)
{
    QStringList contact = m_services.names->searchNameForPhonenumber(number);
    while (contact.size() < 3)
        contact.append(QString());
    if (contact.at(1).isEmpty()) {
        QPointer<StreamListener> self(this);
        m_services.names->reverseSearchInBackground(connID, number, [self](const QString& id, const QString& name) {
            // The lookup answers on its own thread; the tables belong to ours.
            QMetaObject::invokeMethod(
                self, [self, id, name] { if (self) self->setReverseSearchedNameForConnID(name, id); },
                Qt::QueuedConnection);
        });
    }
    return contact.mid(0, 3);
}

QString StreamListener::extensionTitle(const QString& extension) const
{
    const auto p = prefs();
    if (!p || extension.isEmpty())
        return {};
    // The monitor counts the analogue ports from 0, the extension list from 1.
    bool ok = false;
    const int n = extension.toInt(&ok);
    const QString key = ok && n >= 0 && n <= 2 ? QString::number(n + 1) : extensionKey(extension);
    for (const QVariant& v : p->extensions) {
        const QVariantMap e = v.toMap();
        if (e.value(QStringLiteral("Intern")).toString() == key)
            return e.value(QStringLiteral("Title")).toString();
    }
    return {};
}

void StreamListener::runScripts(int state, const CallRecord& call)
{
    const auto p = prefs();
    if (m_services.scripts && p)
        m_services.scripts->executeAppleScriptsWithCallState(state, call, p->appleScripts, p->appleScriptsParams);
}

bool StreamListener::notificationsEnabled() const
{
    const auto p = prefs();
    return p && (p->useGrowl || p->useNotifications);
}

// --- tables -----------------------------------------------------------------------------------

qsizetype StreamListener::indexForConnID(const QString& connID) const
{
    for (qsizetype i = m_monitorCalls.size() - 1; i >= 0; --i)
        if (m_monitorCalls.at(i).connID == connID)
            return i;
    return NotFound;
}

qsizetype StreamListener::indexForUID(const QString& uid) const
{
    for (qsizetype i = m_monitorCalls.size() - 1; i >= 0; --i)
        if (m_monitorCalls.at(i).UID == uid)
            return i;
    return NotFound;
}

QString StreamListener::extensionKey(const QString& extension)
{
    bool ok = false;
    const int n = extension.toInt(&ok);
    if (ok && n >= 10 && n <= 29)
        return QString::number(n + 600);
    return extension;
}

void StreamListener::changeStateForExtension(int state, const QString& extension)
{
    if (extension == u"4") {
        // The ISDN bus: every ISDN device shows busy until no connection uses the bus.
        int busState = Ringing;
        if (state == Free && !m_connIDs.values().contains(QStringLiteral("4")))
            busState = Free;
        for (int k = 50; k <= 59; ++k)
            m_extensions.insert(QString::number(k), busState);
    } else {
        m_extensions.insert(extensionKey(extension), state);
    }
    post(Notifications::UPDATEEXTENSIONMENU);
}

bool StreamListener::showCallForLine(const QString& line, int callType, bool startedExternal) const
{
    if (startedExternal) {
        SettingsStore* store = m_services.settings ? m_services.settings : SettingsStore::standard();
        return store && store->value(keys::MonitorOpenExternCalls).toBool();
    }
    if (callType == CallRecord::Outgoing)
        return true;
    const auto p = prefs();
    if (!p || line.isEmpty())
        return true;
    for (const QVariant& v : p->lines) {
        const QVariantMap l = v.toMap();
        if (l.value(QStringLiteral("HideMonitor")).toBool() && l.value(QStringLiteral("Line")).toString().endsWith(line))
            return false;
    }
    return true;
}

void StreamListener::addNewCallForExtensionForContact(const QString& number, const QString& extension,
                                                      const QStringList& contact)
{
    const QString ext = extension.isEmpty() ? QStringLiteral("50") : extension;
    if (number.startsWith(QStringLiteral("**"))) {
        // An internal call: the router reports nothing on the monitor for it.
        changeStateForExtension(Ringing, number.mid(2));
        changeStateForExtension(Ringing, ext);
        return;
    }
    CallRecord r;
    r.cmd = QStringLiteral("DIAL");
    r.number = number;
    r.extension = ext;
    r.extensionTitle = extensionTitle(ext);
    r.contact = contact;
    while (r.contact.size() < 3)
        r.contact.append(QString());
    r.calltype = CallRecord::Outgoing;
    r.dateStart = now();
    r.showCall = true;
    r.UID = CallRecord::uniqueID();
    m_monitorCalls.append(r);
    changeStateForExtension(InCall, ext);
    if (!notificationsEnabled()) {
        if (m_services.openCallmonitorWindow)
            m_services.openCallmonitorWindow();
        post(Notifications::UPDATECALLMONITORDETAILS);
    } else {
        showGrowlForCall(r);
    }
}

void StreamListener::cancelCallForUID(const QString& uid)
{
    const qsizetype i = indexForUID(uid);
    if (i == NotFound)
        return;
    CallRecord& r = m_monitorCalls[i];
    r.cmd = QStringLiteral("DISCONNECT");
    r.connected = false;
    const QString extension = r.extension;
    changeStateForExtension(Free, extension);
    post(Notifications::UPDATECALLMONITORDETAILS);
}

void StreamListener::setReverseSearchedNameForConnID(const QString& name, const QString& connID)
{
    const qsizetype i = indexForConnID(connID);
    if (i == NotFound)
        return;
    m_monitorCalls[i].contact = QStringList{QString(), name, QString()};
    post(Notifications::UPDATECALLMONITORDETAILS);
    post(Notifications::RELOADCURRENTCALLS);
    showGrowlForCall(m_monitorCalls.at(i));
}

void StreamListener::setContactNameWithLabelAndABIDForConnID(const QString& name, const QString& label,
                                                             const QString& abid, const QString& connID)
{
    const qsizetype i = indexForConnID(connID);
    if (i == NotFound)
        return;
    m_monitorCalls[i].contact = QStringList{abid, name, label};
    post(Notifications::UPDATECALLMONITORDETAILS);
    post(Notifications::RELOADCURRENTCALLS);
}

void StreamListener::setMemoIDForConnID(qint64 memoID, const QString& connID)
{
    const qsizetype i = indexForConnID(connID);
    if (i == NotFound)
        return;
    if (memoID < 0)
        m_monitorCalls[i].MemoID.reset();
    else
        m_monitorCalls[i].MemoID = memoID;
}

void StreamListener::setMemoIDForUID(qint64 memoID, const QString& uid)
{
    const qsizetype i = indexForUID(uid);
    if (i == NotFound)
        return;
    if (memoID < 0)
        m_monitorCalls[i].MemoID.reset();
    else
        m_monitorCalls[i].MemoID = memoID;
}

void StreamListener::insertLocalNotificationForCall(const QVariant& note, const QString& uid)
{
    const qsizetype i = indexForUID(uid);
    if (i != NotFound)
        m_monitorCalls[i].UILocalNote = note;
}

void StreamListener::resetMonitorCalls()
{
    m_monitorCalls.clear();
}

void StreamListener::showGrowlForCall(const CallRecord& call)
{
    NotificationPresenter* presenter = m_services.presenter;
    if (!presenter || !presenter->isAvailable())
        return;
    const std::optional<CallNotification> note = methods::notificationForCall(call);
    if (!note)
        return;
    const QString uid = call.UID;
    const QVariant handle = presenter->deliver(*note, call.UILocalNote);
    insertLocalNotificationForCall(handle, uid);
}
