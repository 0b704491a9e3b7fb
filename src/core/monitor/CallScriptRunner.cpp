#include "monitor/CallScriptRunner.h"

#include "base/Logging.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>

namespace methods {

QString executeAppleScriptWithName(const QString& dir, const QString& name, const QStringList& arguments,
                                   int timeoutMs)
{
    // Names come from the settings: never let one step out of the scripts folder.
    if (name.isEmpty() || name.contains(u'/') || name == u"." || name == u"..")
        return {};
    const QString path = QDir(dir).filePath(name);
    const QFileInfo info(path);
    if (!info.isFile())
        return {};
    if (!info.isExecutable()) {
        qCWarning(lcMonitor) << "Script" << name << "is not executable";
        return {};
    }

    QProcess process;
    process.setProcessChannelMode(QProcess::SeparateChannels);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    QByteArray output;
    bool capped = false;
    QObject::connect(&process, &QProcess::readyReadStandardOutput, &process, [&] {
        const QByteArray chunk = process.readAllStandardOutput();
        if (output.size() < MaxScriptOutput)
            output += chunk.left(MaxScriptOutput - output.size());
        capped = capped || output.size() >= MaxScriptOutput;
    });
    process.start(path, arguments);
    if (!process.waitForStarted(5000)) {
        qCWarning(lcMonitor) << "Script" << name << "did not start:" << process.errorString();
        return {};
    }
    if (!process.waitForFinished(timeoutMs)) {
        qCWarning(lcMonitor) << "Script" << name << "did not finish within" << timeoutMs / 1000
                             << "s; killed";
        process.kill();
        process.waitForFinished(2000);
        return {};
    }
    const QByteArray rest = process.readAllStandardOutput();
    if (output.size() < MaxScriptOutput)
        output += rest.left(MaxScriptOutput - output.size());
    if (capped || output.size() >= MaxScriptOutput)
        qCInfo(lcMonitor) << "Output of script" << name << "cut at" << MaxScriptOutput << "bytes";
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        qCInfo(lcMonitor) << "Script" << name << "failed with exit code" << process.exitCode();
        return {};
    }
    return QString::fromUtf8(output).trimmed();
}

} // namespace methods
