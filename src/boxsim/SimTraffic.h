#pragma once

#include <QString>

#include <functional>

class Scenario;

// The router's online monitor figures (the nqos variables): per queue a history of twenty
// samples, oldest first, that moves on every second. A scenario's "traffic" object can fix
// any of them ("queue2": "10,20,30", "max_ds": "3010632", ...).
class SimTraffic
{
public:
    static constexpr int kSamples = 20;

    // `seconds` gives the current time in seconds; tests pass their own.
    explicit SimTraffic(Scenario& scenario, std::function<qint64()> seconds = {});

    static bool isTrafficVariable(const QString& name);
    // The value as the router's query gives it; "er" for an nqos name it does not know.
    QString value(const QString& name) const;

private:
    QString history(const QString& series, int range) const;

    Scenario& m_scenario;
    std::function<qint64()> m_seconds;
};
