#include "monitor/NetworkReachability.h"

#include "base/Logging.h"

#include <QNetworkInformation>

SystemNetworkReachability::SystemNetworkReachability(QObject* parent) : NetworkReachability(parent)
{
    if (!QNetworkInformation::instance() && !QNetworkInformation::loadDefaultBackend()) {
        qCInfo(lcApp) << "No network information backend; the router counts as reachable";
        return;
    }
    connect(QNetworkInformation::instance(), &QNetworkInformation::reachabilityChanged, this,
            &NetworkReachability::reachabilityChanged);
}

bool SystemNetworkReachability::isReachable(const QString&) const
{
    const QNetworkInformation* info = QNetworkInformation::instance();
    if (!info)
        return true;
    switch (info->reachability()) {
    case QNetworkInformation::Reachability::Disconnected:
        return false;
    case QNetworkInformation::Reachability::Unknown:
    case QNetworkInformation::Reachability::Local:
    case QNetworkInformation::Reachability::Site:
    case QNetworkInformation::Reachability::Online:
        break;
    }
    return true;
}
