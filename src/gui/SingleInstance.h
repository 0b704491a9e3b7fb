#pragma once

#include <QLocalServer>
#include <QObject>
#include <QStringList>

// One tray application per user and settings folder: a second start hands its arguments (a URL, --new-call,
// --calllist) to the running one over a local socket and exits.
class SingleInstance : public QObject
{
    Q_OBJECT
public:
    explicit SingleInstance(QString name, QObject* parent = nullptr);

    // True when this process is the first: it then listens for later starts.
    bool claim();
    // Sends the arguments to the running instance; false when none answers.
    bool forward(const QStringList& arguments, int timeoutMs = 3000) const;

    // Settings folders of their own (the demo, a second profile) run their own instance.
    static QString nameForConfigDir(const QString& configDir);

signals:
    void argumentsReceived(const QStringList& arguments);

private:
    QString m_name;
    QLocalServer m_server;
};
