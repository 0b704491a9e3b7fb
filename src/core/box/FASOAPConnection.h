#pragma once

#include <QList>
#include <QPair>
#include <QString>
#include <QVariant>

#include <functional>

// Client of the router's phone book and call list service (X_AVM-DE_OnTel) over TR-064.
class FASOAPConnection
{
public:
    using Params = QList<QPair<QString, QString>>; // in the order they go out
    using Delegate = std::function<void(const QString& action, const QVariant& response)>;

    // The router's address in its home network; tests point it elsewhere.
    explicit FASOAPConnection(
        QString endpoint = QStringLiteral("https://192.168.178.1:49443/upnp/control/x_contact"))
        : m_endpoint(std::move(endpoint))
    {
    }

    static QByteArray envelope(const QString& action, const Params& params);

    // Sends the action; the delegate receives the value under "u:<action>Response", or an
    // invalid value when the answer is no SOAP answer. Synchronous.
    void action(const QString& action, const Params& params, const Delegate& delegate);
    static QVariant responseFor(const QString& action, const QString& answer);

    QString soapAction;
    QString soapResults;

private:
    QString m_endpoint;
};
