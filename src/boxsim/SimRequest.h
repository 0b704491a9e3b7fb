#pragma once

#include <QList>
#include <QPair>
#include <QString>

#include <string>

namespace httplib {
struct Request;
}

// The parameters of a request as the router reads them: query string and form body, in order,
// percent-decoded ("+" is kept, as the router's click-to-dial numbers carry it).
struct SimParams
{
    QList<QPair<QString, QString>> items;

    static SimParams fromRequest(const httplib::Request& req);
    bool has(const QString& name) const;
    QString value(const QString& name) const;
};

// The page a router shows when a session is missing or expired.
std::string simLoginPage();
