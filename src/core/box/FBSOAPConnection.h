#pragma once

#include "box/FBConnection.h"

class RouterSession;
class TNPreferences;

// A TR-064 action for a router command: envelope, headers and HTTP digest authentication.
struct FBSOAPRequest
{
    QString controlPath; // "wlanconfig1", "x_voip", ...
    QString serviceType; // "WLANConfiguration:1", "X_VoIP:1", ...
    QString action;      // "SetEnable", ...
    QString bodyXml; // the action element, e.g. <ns1:SetEnable><NewEnable ...>0</NewEnable></ns1:SetEnable>
};

class FBSOAPConnection
{
public:
    // The base is "http://host:port" locally or "https://host:port/tr064" remotely.
    static QString controlUrl(const QString& base, const QString& controlPath);
    static QByteArray envelope(const FBSOAPRequest& request);
    static FBRequest buildRequest(const QString& url, const FBSOAPRequest& request);

    // Sends with the location's credentials ("dslf-config" for an empty local user name).
    QString startWithRequest(const FBRequest& request, bool needsOutput, TNPreferences& config,
                             RouterSession& session);

    // The SOAP fault in the answer; empty when there is none.
    static RouterFailure reportFault(const QString& answer);

    QString cancelOnString;
    FBConnection connection;
};
