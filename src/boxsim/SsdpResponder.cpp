#include "SsdpResponder.h"

#include <QJsonArray>
#include <QNetworkDatagram>

SsdpResponder::SsdpResponder(Scenario& scenario, QObject* parent) : QObject(parent), m_scenario(scenario)
{
    connect(&m_socket, &QUdpSocket::readyRead, this, &SsdpResponder::readSearches);
}

bool SsdpResponder::bind(quint16 port)
{
    return m_socket.bind(QHostAddress::LocalHost, port);
}

QList<QByteArray> SsdpResponder::answersFor(const QByteArray& search) const
{
    if (!search.startsWith("M-SEARCH") || !search.contains("ssdp:discover"))
        return {};
    const QString model = m_scenario.value(QStringLiteral("model")).toString();
    const QString firmware = m_scenario.value(QStringLiteral("firmwareVersion")).toString();
    // "ssdpServer" lets a scenario play a device that is not from AVM.
    const QJsonValue serverOverride = m_scenario.value(QStringLiteral("ssdpServer"));
    const QString server = serverOverride.isString()
                               ? serverOverride.toString()
                               : QStringLiteral("%1 UPnP/1.0 AVM %1 %2").arg(model, firmware);
    const QString tr064Port = QString::number(m_scenario.value(QStringLiteral("tr064Port")).toInt(49000));
    // Routers answer an IGD search for each of their gateway descriptions.
    QList<QByteArray> answers;
    for (const char* st : {"urn:schemas-upnp-org:device:InternetGatewayDevice:1",
                           "urn:dslforum-org:device:InternetGatewayDevice:1"}) {
        const QString text =
            QStringLiteral("HTTP/1.1 200 OK\r\n"
                           "LOCATION: http://127.0.0.1:%1/%2\r\n"
                           "SERVER: %3\r\n"
                           "CACHE-CONTROL: max-age=1800\r\n"
                           "EXT:\r\n"
                           "ST: %4\r\n"
                           "USN: uuid:75802409-bccb-40e7-8e6c-3431c4a1b2c3::%4\r\n\r\n")
                .arg(tr064Port,
                     QString::fromLatin1(st).contains(u"dslforum") ? QStringLiteral("tr64desc.xml")
                                                                   : QStringLiteral("igddesc.xml"),
                     server, QString::fromLatin1(st));
        answers << text.toLatin1();
    }
    return answers;
}

void SsdpResponder::readSearches()
{
    while (m_socket.hasPendingDatagrams()) {
        const QNetworkDatagram d = m_socket.receiveDatagram();
        const auto answers = answersFor(d.data());
        if (!answers.isEmpty())
            ++m_answered;
        for (const QByteArray& answer : answers)
            m_socket.writeDatagram(answer, d.senderAddress(), quint16(d.senderPort()));
    }
}
