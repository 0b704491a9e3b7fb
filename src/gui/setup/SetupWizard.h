#pragma once

#include "assistant/AssistantRouterData.h"

#include <QWizard>

class AppEnvironment;
class SsdpDiscovery;

// The setup assistant's window: find a router, log in, read its settings, add remote access,
// save it as a new location. Reading runs on a worker thread; the window never waits on the
// network.
class SetupWizard : public QWizard
{
    Q_OBJECT
public:
    enum PageId { RouterPage, LoginPage, ReadPage, RemotePage, SavePage };

    explicit SetupWizard(AppEnvironment& env, QWidget* parent = nullptr);
    ~SetupWizard() override;

    AppEnvironment& environment() { return m_env; }
    SsdpDiscovery& discovery() { return *m_discovery; }
    // Hosts without multicast (and tests) search a unicast "host:port" instead of the group.
    void setDiscoveryTarget(const QString& hostAndPort);

    // What has been learnt so far; the pages fill it in turn.
    AssistantRouterData& routerData() { return m_data; }
    // The location written by the last page, "" before.
    QString savedUID() const { return m_savedUID; }
    void setSavedUID(const QString& uid) { m_savedUID = uid; }

    // "host" or "host:port" typed by the user: host and web port; false when it is neither.
    static bool parseAddress(const QString& text, QString* host, int* port);
    // "FRITZ!Box 7590" from the model text of a discovery answer, which ends in the firmware
    // version ("FRITZ!Box 7590 154.07.57").
    static QString locationNameFromModel(const QString& model);

private:
    AppEnvironment& m_env;
    SsdpDiscovery* m_discovery = nullptr;
    AssistantRouterData m_data;
    QString m_savedUID;
};
