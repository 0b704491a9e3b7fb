#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>

class TNPreferences;

// Questions about the local network: is there one, where is the router, are we at home.
namespace FBNetworkHelper {

bool isInternetConnection();
QString getIPAddressForHostname(const QString& host);
// Address, netmask and broadcast of the first wired or wireless IPv4 interface ("" when absent).
QStringList getIPAddress();
bool probePort(const QString& host);
bool probePort(int port, const QString& host, int timeoutMs = 2000);

// IPv4-to-MAC pairs ("HostIP", "HostMAC") of the neighbour table, read from the given file.
QList<QVariantMap> addressTable(const QString& path = QStringLiteral("/proc/net/arp"));
QString macForAddress(const QList<QVariantMap>& table, const QString& ip);

// "Broadcast" and "MAC"; both "" when the host's or our own address is unknown.
QVariantMap getHomeLocationForHost(const QString& host);
void assignHomeLoactionForPreferences(TNPreferences* prefs);
bool isDeviceInLocalSubnetAndRoutersMACAddressUsePreferences(TNPreferences* prefs);

} // namespace FBNetworkHelper
