#pragma once

#include "Scenario.h"

#include <QObject>
#include <QUdpSocket>

// Answers M-SEARCH requests as a router does: one answer per search target it offers.
class SsdpResponder : public QObject
{
    Q_OBJECT
public:
    SsdpResponder(Scenario& scenario, QObject* parent = nullptr);
    bool bind(quint16 port);
    quint16 port() const { return m_socket.localPort(); }
    int searchesAnswered() const { return m_answered; }

private:
    void readSearches();
    QList<QByteArray> answersFor(const QByteArray& search) const;

    Scenario& m_scenario;
    QUdpSocket m_socket;
    int m_answered = 0;
};
