// calls import and calls export.
#include "CallsCommand.h"

#include "BoxCli.h"
#include "CliContext.h"

#include "app/AppEnvironment.h"
#include "app/CallListSync.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "base/TNPreferences.h"
#include "calllist/CallListExport.h"
#include "calllist/ListQueryBuilder.h"
#include "calllist/TNCallinglist.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QSaveFile>

#include <unistd.h>

namespace {

QString str(const std::string& s)
{
    return QString::fromStdString(s);
}

// A bar on standard error, shown only on a terminal and only once the import took a second.
class ProgressBar
{
public:
    explicit ProgressBar(QTextStream& err) : m_err(err), m_enabled(isatty(STDERR_FILENO) == 1)
    {
        m_clock.start();
    }
    ~ProgressBar()
    {
        if (m_shown) {
            m_err << "\n";
            m_err.flush();
        }
    }
    void update(qsizetype done, qsizetype total)
    {
        if (!m_enabled || total <= 0 || m_clock.elapsed() < 1000)
            return;
        m_shown = true;
        const int percent = int(done * 100 / total);
        const int filled = percent / 4;
        m_err << "\r[" << QString(filled, u'#') << QString(25 - filled, u'.') << "] " << percent << "% "
              << done << "/" << total << " lines";
        m_err.flush();
    }

private:
    QTextStream& m_err;
    bool m_enabled;
    bool m_shown = false;
    QElapsedTimer m_clock;
};

int selectorFor(const QString& state)
{
    if (state == u"new")
        return ListQuery::SelectorNew;
    return parseCallState(state);
}

void writeOutput(CliContext& ctx, const QString& path, const QString& text)
{
    if (path.isEmpty()) {
        ctx.out() << text;
        return;
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0 || !file.commit())
        throw CliError(1, QStringLiteral("cannot write %1: %2").arg(path, file.errorString()));
}

} // namespace

void CallsCommand::setupImportExport(CLI::App& calls, CliContext& ctx)
{
    auto* import = calls.add_subcommand("import", "Import the router's call journal, or a journal file");
    import->add_option("--file", m_importFile,
                       "A journal file (semicolon-separated, as the router exports it)");
    import->callback([this, &ctx] { ctx.action = [this, &ctx] { importJournal(ctx);
};
});

auto* exp = calls.add_subcommand("export", "Export the call list as delimited text or as a web page script");
exp->add_option("--format", m_export.format, "csv or web")->required();
exp->add_option("--state", m_export.state, "csv: all, in, out, missed or new");
exp->add_option("--fields", m_export.fields,
                "csv: fields in order (date,name,number,extension,line,duration,label,callstate)");
exp->add_option("--delimiter", m_export.delimiter, "csv: between fields (;)");
exp->add_option("--enclose", m_export.enclose, "csv: around every field (\")");
exp->add_option("--out", m_export.out,
                "The file to write; without it csv goes to standard output and web to "
                "iPhoneExportPath/data.js (or standard output when that is not set)");
exp->callback([this, &ctx] { ctx.action = [this, &ctx] { exportCalls(ctx); }; });
}

void CallsCommand::importJournal(CliContext& ctx)
{
    const QString path = str(m_importFile);
    const BoxCli::Target target =
        path.isEmpty() ? BoxCli::prepare(ctx) : BoxCli::Target{ctx.targetLocation(), nullptr};
    const auto& prefs = target.prefs;
    cliCallinglist(ctx);
    CallListSync& sync = *ctx.environment().callListSync();
    if (!path.isEmpty() && !QFileInfo(path).isFile())
        throw CliError(1, QStringLiteral("no journal file %1").arg(path));
    if (path.isEmpty())
        BoxCli::ensureSession(target);
    ProgressBar bar(ctx.err());
    QMetaObject::Connection progress;
    if (!path.isEmpty())
        progress = QObject::connect(
            &sync, &CallListSync::progress, &sync,
            [&bar](qint64 done, qint64 total) { bar.update(done, total); }, Qt::DirectConnection);
    const CallListSyncResult r =
        path.isEmpty() ? sync.runRouterImport(prefs) : sync.runFileImport(path, prefs);
    QObject::disconnect(progress);
    if (r.imported < 0 && path.isEmpty())
        throw CliError(1, QStringLiteral("the router's journal could not be read: %1")
                              .arg(BoxCli::failureText(target, r.failure)));
    if (r.imported < 0)
        throw CliError(1, r.error);
    if (ctx.json) {
        QVariantMap out{{QStringLiteral("imported"), r.imported},
                        {QStringLiteral("missed"), r.missed},
                        {QStringLiteral("badLines"), r.badLines},
                        {QStringLiteral("duplicates"), r.duplicates},
                        {QStringLiteral("stoppedEarly"), r.stoppedEarly}};
        out.insert(QStringLiteral("badge"), r.badge.isEmpty() ? QVariant() : QVariant(r.badge));
        ctx.printJson(out);
        return;
    }
    ctx.out() << r.imported << "\n";
    if (r.badLines)
        ctx.err() << "tondrel-cli: skipped " << r.badLines << " unreadable journal line(s)\n";
}

void CallsCommand::exportCalls(CliContext& ctx)
{
    const auto prefs = ctx.targetLocation();
    TNCallinglist& calls = cliCallinglist(ctx);
    const int profile = prefs->activeProfileInt;
    const QString format = str(m_export.format);
    const QString out = str(m_export.out);
    if (format == u"web") {
        if (!out.isEmpty()) {
            QString error;
            if (!CallListExport::writeWebExport(calls, profile, out, QDateTime::currentDateTime(), &error))
                throw CliError(1, QStringLiteral("cannot write %1: %2").arg(out, error));
        } else if (!ctx.settings().value(keys::IPhoneExportPath).toString().isEmpty()) {
            if (!CallListExport::exportiPhoneCallerlistForProfile(calls, profile, ctx.settings(),
                                                                  QDateTime::currentDateTime()))
                throw CliError(1, QStringLiteral("the web export folder %1 does not exist")
                                      .arg(ctx.settings().value(keys::IPhoneExportPath).toString()));
        } else {
            ctx.out() << CallListExport::webExportText(calls, profile, QDateTime::currentDateTime());
        }
        return;
    }
    if (format != u"csv")
        throw CliError(2, QStringLiteral("unknown export format '%1' (csv, web)").arg(format));
    QStringList fields = CallListExport::exportFieldNames();
    if (!m_export.fields.empty()) {
        fields = str(m_export.fields).split(u',', Qt::SkipEmptyParts);
        for (const QString& f : fields)
            if (!CallListExport::exportFieldNames().contains(f))
                throw CliError(2, QStringLiteral("unknown export field '%1'").arg(f));
    }
    const QString text =
        CallListExport::exportCallsFromListForProfile(calls, profile, selectorFor(str(m_export.state)),
                                                      fields, str(m_export.delimiter), str(m_export.enclose));
    writeOutput(ctx, out, text);
}
