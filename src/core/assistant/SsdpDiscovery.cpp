#include "assistant/SsdpDiscovery.h"

#include "base/Logging.h"

#include <QNetworkDatagram>
#include <QRegularExpression>

#include <algorithm>

SsdpDiscovery::SsdpDiscovery(QObject* parent) : QObject(parent)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &SsdpDiscovery::completeSearch);
    connect(&m_socket, &QUdpSocket::readyRead, this, &SsdpDiscovery::readAnswers);
    m_receiveTimer.setSingleShot(true);
    connect(&m_receiveTimer, &QTimer::timeout, this, [this] {
        readAnswers();
        m_socket.close();
    });
}

void SsdpDiscovery::setTarget(const QHostAddress& address, quint16 port)
{
    m_target = address;
    m_port = port;
}

bool SsdpDiscovery::setTarget(const QString& hostAndPort)
{
    const qsizetype colon = hostAndPort.lastIndexOf(u':');
    if (colon <= 0)
        return false;
    QHostAddress address;
    bool ok = false;
    const uint port = hostAndPort.mid(colon + 1).toUInt(&ok);
    if (!ok || port == 0 || port > 65535 || !address.setAddress(hostAndPort.left(colon)))
        return false;
    setTarget(address, quint16(port));
    return true;
}

QByteArray SsdpDiscovery::searchMessage()
{
    return QByteArrayLiteral("M-SEARCH * HTTP/1.1\r\n"
                             "Host: 239.255.255.250:1900\r\n"
                             "Man: \"ssdp:discover\"\r\n"
                             "ST: urn:schemas-upnp-org:device:InternetGatewayDevice:1\r\n"
                             "MX: 3\r\n\r\n");
}

QString SsdpDiscovery::modelFromAnswer(const QByteArray& datagram)
{
    // Line ends are excluded from the capture: answers end their lines with CR LF.
    static const QRegularExpression server(QStringLiteral("SERVER:.*UPnP/1.0 AVM([^\\r\\n]*)"));
    const QRegularExpressionMatch m = server.match(QString::fromLatin1(datagram));
    return m.hasMatch() ? m.captured(1).trimmed() : QString();
}

void SsdpDiscovery::lookupDevices()
{
    m_devices.clear();
    m_socket.close();
    if (!m_socket.bind(QHostAddress(QHostAddress::AnyIPv4), 0))
        qCWarning(lcAssistant) << "SSDP socket cannot bind:" << m_socket.errorString();
    else if (m_socket.writeDatagram(searchMessage(), m_target, m_port) < 0)
        qCWarning(lcAssistant) << "SSDP search not sent:" << m_socket.errorString();
    m_receiveTimer.start(std::min(kReceiveMs, m_completionMs));
    m_timer.start(m_completionMs);
}

void SsdpDiscovery::readAnswers()
{
    while (m_socket.hasPendingDatagrams()) {
        const QNetworkDatagram d = m_socket.receiveDatagram();
        addAnswer(d.data(), d.senderAddress());
    }
}

void SsdpDiscovery::addAnswer(const QByteArray& datagram, const QHostAddress& sender)
{
    QHostAddress address = sender;
    // An IPv4 sender seen through a dual-stack socket reads as ::ffff:a.b.c.d.
    bool isV4 = false;
    const quint32 v4 = address.toIPv4Address(&isV4);
    if (isV4)
        address = QHostAddress(v4);
    const QString host = address.toString();
    for (const QVariant& d : std::as_const(m_devices))
        if (d.toMap().value(QStringLiteral("Host")).toString() == host)
            return;
    const QString model = modelFromAnswer(datagram);
    m_devices.append(QVariantMap{{QStringLiteral("Server"), model.isEmpty() ? unknownDeviceName() : model},
                                 {QStringLiteral("Host"), host}});
}

void SsdpDiscovery::completeSearch()
{
    m_receiveTimer.stop();
    if (m_socket.state() == QAbstractSocket::BoundState)
        readAnswers();
    m_socket.close();
    emit searchCompleted(m_devices);
}
