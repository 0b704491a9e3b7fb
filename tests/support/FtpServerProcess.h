#pragma once

// pyftpdlib (tests/support/ftpserver.py) serving a folder on a free loopback port; stopped with
// the object. Header-only so that unit and integration tests share it.

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

class FtpServerProcess
{
public:
    FtpServerProcess(const QString& root, const QString& password, bool tls,
                     const QStringList& extraArgs = {})
    {
        const QString script = QStringLiteral(TONDREL_TEST_SUPPORT_DIR "/ftpserver.py");
        QStringList args{script, QStringLiteral("--root"), root, QStringLiteral("--password"), password};
        if (tls)
            args << QStringLiteral("--tls") << m_certDir.path();
        args += extraArgs;
        m_process.start(QStringLiteral(TONDREL_SYSTEM_PYTHON), args);
        if (!m_process.waitForStarted(10000))
            return;
        while (!m_process.canReadLine())
            if (!m_process.waitForReadyRead(20000))
                return;
        m_port = QJsonDocument::fromJson(m_process.readLine()).object().value(QStringLiteral("port")).toInt();
    }
    ~FtpServerProcess() { stop(); }
    FtpServerProcess(const FtpServerProcess&) = delete;
    FtpServerProcess& operator=(const FtpServerProcess&) = delete;

    void stop()
    {
        if (m_process.state() == QProcess::NotRunning)
            return;
        m_process.terminate();
        if (!m_process.waitForFinished(5000)) {
            m_process.kill();
            m_process.waitForFinished();
        }
    }
    int port() const { return m_port; }
    QString error() { return QString::fromUtf8(m_process.readAllStandardError()); }

private:
    QTemporaryDir m_certDir;
    QProcess m_process;
    int m_port = 0;
};
