#include "box/FBNetworkHelper.h"

#include "base/TNPreferences.h"

#include <QFile>
#include <QHostAddress>
#include <QHostInfo>
#include <QNetworkInterface>
#include <QTcpSocket>

namespace {
bool isLanInterface(const QNetworkInterface& iface)
{
    const QString n = iface.name();
    return n.startsWith(u"en") || n.startsWith(u"eth") || n.startsWith(u"wl");
}
} // namespace

namespace FBNetworkHelper {

bool isInternetConnection()
{
    for (const QNetworkInterface& iface : QNetworkInterface::allInterfaces()) {
        const auto flags = iface.flags();
        if (!(flags & QNetworkInterface::IsUp) || !(flags & QNetworkInterface::IsRunning) ||
            (flags & QNetworkInterface::IsLoopBack))
            continue;
        for (const QNetworkAddressEntry& e : iface.addressEntries())
            if (e.ip().protocol() == QAbstractSocket::IPv4Protocol)
                return true;
    }
    return false;
}

QString getIPAddressForHostname(const QString& host)
{
    QHostAddress direct;
    if (direct.setAddress(host))
        return direct.protocol() == QAbstractSocket::IPv4Protocol ? direct.toString() : QString();
    const QHostInfo info = QHostInfo::fromName(host);
    for (const QHostAddress& a : info.addresses())
        if (a.protocol() == QAbstractSocket::IPv4Protocol)
            return a.toString();
    return {};
}

QStringList getIPAddress()
{
    for (const QNetworkInterface& iface : QNetworkInterface::allInterfaces()) {
        if (!isLanInterface(iface))
            continue;
        for (const QNetworkAddressEntry& e : iface.addressEntries())
            if (e.ip().protocol() == QAbstractSocket::IPv4Protocol)
                return {e.ip().toString(), e.netmask().toString(),
                        e.broadcast().isNull() ? QString() : e.broadcast().toString()};
    }
    return {QString(), QString(), QString()};
}

bool probePort(const QString& host)
{
    return probePort(80, host);
}

bool probePort(int port, const QString& host, int timeoutMs)
{
    QTcpSocket socket;
    socket.connectToHost(host, quint16(port));
    const bool ok = socket.waitForConnected(timeoutMs);
    socket.abort();
    return ok;
}

QList<QVariantMap> addressTable(const QString& path)
{
    QList<QVariantMap> table;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return table;
    file.readLine(); // header
    while (!file.atEnd()) {
        const QStringList f = QString::fromLatin1(file.readLine()).simplified().split(u' ');
        // IP address, HW type, Flags, HW address, Mask, Device; flags 0x0 is an incomplete entry
        if (f.size() < 4 || f[2] == u"0x0")
            continue;
        table.append({{QStringLiteral("HostIP"), f[0]}, {QStringLiteral("HostMAC"), f[3]}});
    }
    return table;
}

QString macForAddress(const QList<QVariantMap>& table, const QString& ip)
{
    for (const QVariantMap& e : table)
        if (e.value(QStringLiteral("HostIP")).toString() == ip)
            return e.value(QStringLiteral("HostMAC")).toString();
    return {};
}

QVariantMap getHomeLocationForHost(const QString& host)
{
    const QString ip = getIPAddressForHostname(host);
    const QString broadcast = getIPAddress().value(2);
    if (ip.isEmpty() || broadcast.isEmpty())
        return {{QStringLiteral("Broadcast"), QString()}, {QStringLiteral("MAC"), QString()}};
    return {{QStringLiteral("Broadcast"), broadcast},
            {QStringLiteral("MAC"), macForAddress(addressTable(), ip)}};
}

void assignHomeLoactionForPreferences(TNPreferences* prefs)
{
    if (!prefs)
        return;
    const QVariantMap home = getHomeLocationForHost(prefs->hostName);
    const QString b = home.value(QStringLiteral("Broadcast")).toString();
    const QString m = home.value(QStringLiteral("MAC")).toString();
    if (!b.isEmpty() && !m.isEmpty()) {
        prefs->broadcastaddress = b;
        prefs->macaddress = m;
    }
}

bool isDeviceInLocalSubnetAndRoutersMACAddressUsePreferences(TNPreferences* prefs)
{
    if (!prefs || getIPAddress().value(2) != prefs->broadcastaddress || prefs->macaddress.isEmpty())
        return false;
    probePort(prefs->hostName); // fills the neighbour table
    const QString ip = getIPAddressForHostname(prefs->hostName);
    const QString mac = macForAddress(addressTable(), ip);
    if (mac.isEmpty())
        return prefs->macaddress.isEmpty();
    return mac.compare(prefs->macaddress, Qt::CaseInsensitive) == 0;
}

} // namespace FBNetworkHelper
