#pragma once

#include <QObject>
#include <QString>

// Whether the router can be reached without a connection having to be set up first.
class NetworkReachability : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    virtual bool isReachable(const QString& host) const = 0;

signals:
    void reachabilityChanged();
};

// The system's view through QNetworkInformation. Without a backend the network counts as
// reachable: a failed connect costs little, a missed reconnect costs calls.
class SystemNetworkReachability final : public NetworkReachability
{
    Q_OBJECT
public:
    explicit SystemNetworkReachability(QObject* parent = nullptr);
    bool isReachable(const QString& host) const override;
};
