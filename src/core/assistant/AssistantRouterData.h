#pragma once

#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVector>

#include <cstdint>

// One account of the router's user list, as the assistant reads it.
struct AssistantRouterUser
{
    QString name;
    QString nasRights;
    QString boxAdminRights;
    QString dialRights;
    QString phoneRights;
    QString uid;
};

// What the assistant learns about a router and writes into the new location.
struct AssistantRouterData
{
    QString host;
    int webPort = 80; // only tests and unusual setups change it
    QString userName;
    QString pass;
    QString name;
    QStringList prefixis; // [LKZPrefix, LKZ, OKZPrefix, OKZ]
    QString dialPort;
    QString remoteHost;
    QString remoteSSLPort;
    QString remoteUser;
    QString remotePass;
    bool myFritzHost = false;     // the remote host is the router's registered MyFRITZ! name
    bool needsRemoteHost = false; // no remote host known: the user is asked for one
    bool readUsers = false;       // the router keeps user accounts (not compatibility mode)
    int userSlots = 0;            // user indices worth asking for
    QVector<AssistantRouterUser> users;
    QString broadcast;
    QString mac;
    QVariantList lines;
    QVariantList faxLines;
};

// The pure rules of reading the router: the variables asked for and what their answer means.
namespace AssistantRules {

enum class ReadOutcome { Ok, NotLoggedIn, MissingRights, InvalidAnswer };

// The seventeen variables, in the order the positions below refer to.
const QStringList& assistantVariables();
// The seven variables of user n (nas_rights is asked twice, as the router's older pages do).
QStringList userVariables(int index);

// Fills data from the query answer after login; host, user and password stay as entered.
ReadOutcome assistantDataFromAnswer(const QStringList& answer, int sessionResult, std::uint32_t userRights,
                                    AssistantRouterData* data);

// The accounts of an answer to userVariables(0..count-1), without "boxuser98" and empty slots.
QVector<AssistantRouterUser> usersFromAnswer(const QStringList& answer, int count);

} // namespace AssistantRules
