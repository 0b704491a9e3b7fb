#pragma once

#include <QJsonObject>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

// A throw-away config and data folder pair, so no test touches a user's files.
struct TempEnv
{
    QTemporaryDir root;
    QString configDir() const { return root.filePath(QStringLiteral("config")); }
    QString dataDir() const { return root.filePath(QStringLiteral("data")); }
};

struct CliResult
{
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

// Runs tondrel-cli with --config-dir/--data-dir of env and the file password store.
CliResult runCli(const TempEnv& env, const QStringList& args, const QByteArray& stdinData = {},
                 int timeoutMs = 60000);

// tondrel-boxsim started on free ports; stopped with the object.
class SimulatorProcess
{
public:
    explicit SimulatorProcess(const QStringList& extraArgs = {});
    ~SimulatorProcess();
    bool isRunning() const { return m_ok; }
    QString error() const { return m_error; }
    int port(const QString& which) const { return m_ports.value(which).toInt(-1); }
    // A request to the web port's control endpoint; returns the body, or a null array on failure.
    QByteArray control(const QByteArray& method, const QString& path, const QByteArray& body = {});

private:
    QProcess m_process;
    QJsonObject m_ports;
    bool m_ok = false;
    QString m_error;
};
