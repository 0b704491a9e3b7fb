#include "monitor/StreamListener.h"

#include "base/Logging.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "monitor/CallerNameResolver.h"

namespace {
std::unique_ptr<CallerNameResolver> fallbackNames(const StreamListenerServices& services)
{
    if (services.names)
        return nullptr;
    return std::make_unique<UnknownCallerResolver>();
}
} // namespace

StreamListener::StreamListener(StreamListenerServices services, QObject* parent)
    : QObject(parent), m_services(std::move(services)), m_defaultNames(fallbackNames(m_services)),
      m_table({m_services.preferences, m_services.settings, m_services.clock,
               m_services.names ? *m_services.names : *m_defaultNames})
{
    m_announcer = new CallAnnouncer(m_table, m_services.center, m_services.preferences,
                                    {m_services.presenter, m_services.scripts, m_services.memoDetails,
                                     m_services.openCallmonitorWindow, m_services.openURL},
                                    this);
    if (!m_services.names)
        m_services.names = m_defaultNames.get();
}

StreamListener::~StreamListener() = default;

void StreamListener::post(const QString& name)
{
    m_services.center.post(name, this);
}

// --- connection -------------------------------------------------------------------------------

void StreamListener::connectToHost(const QString& hostName, quint16 port)
{
    if (m_socket)
        disconnectFromHost(); // one stream at a time: the old one ends properly first
    m_socket = new QTcpSocket(this);
    connect(m_socket, &QTcpSocket::connected, this, &StreamListener::onConnected);
    connect(m_socket, &QTcpSocket::readyRead, this, &StreamListener::onReadyRead);
    connect(m_socket, &QTcpSocket::errorOccurred, this, [this](QAbstractSocket::SocketError) {
        onSocketError(m_socket ? m_socket->errorString() : QString());
    });
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
    m_table.clearConnections();
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
    m_table.clearConnections();
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
    if (line.event == MonitorLine::Event::Unknown) {
        qCWarning(lcMonitor) << "Ignoring unknown call monitor event" << line.eventWord();
        post(Notifications::RELOADCURRENTCALLS);
        return;
    }
    CallTable::Change change = m_table.apply(line);
    if (change.extensionsChanged)
        post(Notifications::UPDATEEXTENSIONMENU);
    m_announcer->lineApplied(change);
    post(Notifications::RELOADCURRENTCALLS);
    if (change.index != NotFound) {
        change.record = m_table.calls().at(change.index); // with what the announcer added
        if (change.lookUpName)
            lookUpName(change.record);
    }
    emit lineProcessed(line.eventWord(), change.record, change.hasRecord, line.fields);
}

void StreamListener::lookUpName(const CallRecord& call)
{
    // Answered by the call's UID: the router reuses connection ids.
    QPointer<StreamListener> self(this);
    m_services.names->reverseSearchInBackground(
        call.UID, call.number, [self](const QString& uid, const QString& name) {
            // The lookup answers on its own thread; the table belongs to ours.
            QMetaObject::invokeMethod(
                self,
                [self, uid, name] {
                    if (self && self->m_table.setContactForUID({QString(), name, QString()}, uid))
                        self->m_announcer->nameArrived(uid);
                },
                Qt::QueuedConnection);
        });
}

// --- changes from the program -----------------------------------------------------------------

void StreamListener::addNewCallForExtensionForContact(const QString& number, const QString& extension,
                                                      const QStringList& contact)
{
    const CallRecord* call = m_table.addDialledCall(number, extension, contact);
    post(Notifications::UPDATEEXTENSIONMENU);
    if (call)
        m_announcer->callDialled(*call);
}

void StreamListener::cancelCallForUID(const QString& uid)
{
    if (!m_table.cancelCallForUID(uid))
        return;
    post(Notifications::UPDATEEXTENSIONMENU);
    post(Notifications::UPDATECALLMONITORDETAILS);
}

void StreamListener::setContactNameWithLabelAndABIDForConnID(const QString& name, const QString& label,
                                                             const QString& abid, const QString& connID)
{
    if (!m_table.setContactForConnID({abid, name, label}, connID))
        return;
    post(Notifications::UPDATECALLMONITORDETAILS);
    post(Notifications::RELOADCURRENTCALLS);
}
