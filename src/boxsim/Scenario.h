#pragma once

#include <QJsonObject>
#include <QMutex>
#include <QString>

// What the simulated router is: firmware flavour, users, journal, radios, phone book, traffic.
// Read from a JSON file; missing parts take the values of a typical current router.
class Scenario
{
public:
    Scenario(); // the values of a typical current router
    // False and an error text when the file cannot be read or is not a JSON object.
    bool loadFile(const QString& path, QString* error);

    QJsonObject data() const;
    QJsonValue value(const QString& key) const;
    void setValue(const QString& key, const QJsonValue& value);

private:
    mutable QMutex m_mutex;
    QJsonObject m_data;
};
