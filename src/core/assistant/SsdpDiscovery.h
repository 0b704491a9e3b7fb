#pragma once

#include <QHostAddress>
#include <QObject>
#include <QTimer>
#include <QUdpSocket>
#include <QVariantList>

// Finds routers by SSDP: one M-SEARCH, then answers are collected until the search completes.
// Runs on the thread it lives in; the answers arrive through that thread's event loop.
class SsdpDiscovery : public QObject
{
    Q_OBJECT
public:
    static QHostAddress multicastGroup() { return QHostAddress(QStringLiteral("239.255.255.250")); }
    static constexpr quint16 kSsdpPort = 1900;
    static constexpr int kCompletionMs = 5000;
    static constexpr int kReceiveMs = 2000; // answers later than this are not read

    explicit SsdpDiscovery(QObject* parent = nullptr);

    // Tests and hosts without multicast send to a unicast address instead of the group.
    void setTarget(const QHostAddress& address, quint16 port);
    // "host:port"; false when it is not one.
    bool setTarget(const QString& hostAndPort);
    void setCompletionInterval(int ms) { m_completionMs = ms; }

    // lookupDevices: sends the search; searchCompleted is emitted when the completion interval
    // is over.
    void lookupDevices();
    bool isSearching() const { return m_timer.isActive(); }

    // Entries {"Host": sender address, "Server": model text}; a host at most once.
    QVariantList devices() const { return m_devices; }

    // The model text of an answer, or "" when it carries no AVM server line.
    static QString modelFromAnswer(const QByteArray& datagram);
    static QByteArray searchMessage();
    static QString unknownDeviceName() { return QStringLiteral("** Unkown Device Name **"); }

signals:
    void searchCompleted(const QVariantList& devices);

private:
    void readAnswers();
    void addAnswer(const QByteArray& datagram, const QHostAddress& sender);
    void completeSearch();

    QUdpSocket m_socket;
    QTimer m_timer;
    QTimer m_receiveTimer;
    QHostAddress m_target = multicastGroup();
    quint16 m_port = kSsdpPort;
    int m_completionMs = kCompletionMs;
    QVariantList m_devices;
};
