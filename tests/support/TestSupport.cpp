#include "TestSupport.h"

#include <QEventLoop>
#include <QJsonDocument>
#include <QTcpSocket>

CliResult runCli(const TempEnv& env, const QStringList& args, const QByteArray& stdinData, int timeoutMs)
{
    QProcess p;
    QStringList all{QStringLiteral("--config-dir"), env.configDir(),
                    QStringLiteral("--data-dir"),   env.dataDir(),
                    QStringLiteral("--secrets"),    QStringLiteral("file")};
    all += args;
    p.start(QStringLiteral(TONDREL_CLI_PATH), all);
    p.waitForStarted();
    if (!stdinData.isEmpty())
        p.write(stdinData);
    p.closeWriteChannel();
    CliResult r;
    if (!p.waitForFinished(timeoutMs)) {
        p.kill();
        p.waitForFinished();
        r.err = "timed out";
        return r;
    }
    r.exitCode = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    r.out = p.readAllStandardOutput();
    r.err = p.readAllStandardError();
    return r;
}

SimulatorProcess::SimulatorProcess(const QStringList& extraArgs)
{
    // Free ports unless the caller names them (a restarted router keeps its ports).
    QStringList args;
    for (const char* option : {"--web-port", "--monitor-port", "--tr064-port"})
        if (!extraArgs.contains(QLatin1String(option)))
            args << QLatin1String(option) << QStringLiteral("0");
    args += extraArgs;
    m_process.setProcessChannelMode(QProcess::SeparateChannels);
    m_process.start(QStringLiteral(TONDREL_BOXSIM_PATH), args);
    if (!m_process.waitForStarted(10000)) {
        m_error = m_process.errorString();
        return;
    }
    while (!m_process.canReadLine()) {
        if (!m_process.waitForReadyRead(10000)) {
            m_error = QString::fromUtf8(m_process.readAllStandardError());
            return;
        }
    }
    const QJsonDocument doc = QJsonDocument::fromJson(m_process.readLine());
    m_ports = doc.object();
    m_ok = !m_ports.isEmpty();
    if (!m_ok)
        m_error = QStringLiteral("no ports line");
}

SimulatorProcess::~SimulatorProcess()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.terminate();
        if (!m_process.waitForFinished(5000)) {
            m_process.kill();
            m_process.waitForFinished();
        }
    }
}

QByteArray SimulatorProcess::control(const QByteArray& method, const QString& path, const QByteArray& body)
{
    // A plain HTTP/1.0 exchange keeps the tests free of the client code they are testing.
    QTcpSocket socket;
    socket.connectToHost(QStringLiteral("127.0.0.1"), quint16(port(QStringLiteral("web"))));
    if (!socket.waitForConnected(5000))
        return {};
    QByteArray request = method + ' ' + path.toUtf8() + " HTTP/1.0\r\nHost: 127.0.0.1\r\n";
    request += "Content-Length: " + QByteArray::number(body.size()) + "\r\n";
    request += "Content-Type: text/plain\r\n\r\n" + body;
    socket.write(request);
    QByteArray response;
    while (socket.state() == QAbstractSocket::ConnectedState && socket.waitForReadyRead(5000))
        response += socket.readAll();
    response += socket.readAll();
    const qsizetype split = response.indexOf("\r\n\r\n");
    if (split < 0)
        return {};
    return response.mid(split + 4);
}
