#include "VoicemailCommand.h"

#include "CliContext.h"
#include "FTPCommandSupport.h"

#include "voicemail/VBGetVoicemail.h"
#include "voicemail/VoicemailEntries.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

QList<VoicemailEntry> loadAll(FTPCommandSession& session, int limit)
{
    session.datasource.loadNumberOfVoicemails = limit;
    return session.datasource.loadVoicemailsForDirectories(session.connection, session.directories,
                                                           session.loadFlags);
}

QStringList recFiles(const QList<VoicemailEntry>& entries)
{
    QStringList names;
    for (const VoicemailEntry& e : entries)
        names.append(e.RecFile);
    return names;
}

} // namespace

void VoicemailCommand::setup(CLI::App& app, CliContext& ctx)
{
    auto* vm = app.add_subcommand("voicemail", "Answering machine messages on the router's storage (FTP)");
    vm->require_subcommand(1);

    auto* list = vm->add_subcommand("list", "List the messages, newest first per answering machine");
    list->add_option("--limit", m_limit, "Records read per answering machine (negative: all)");
    list->add_option("--sort-by", m_sortBy, "Group by date, number, name or line")
        ->check(CLI::IsMember({"date", "number", "name", "line"}));
    list->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            FTPCommandSession session(ctx);
            session.datasource.sortBy = QString::fromStdString(m_sortBy);
            const QList<VoicemailEntry> entries = loadAll(session, m_limit);
            const QVariantList grouped = session.datasource.preprocessVoicemails(entries);
            if (ctx.json) {
                QVariantList out;
                for (int i = 0; i < grouped.size(); ++i) {
                    const QVariantMap g = grouped.at(i).toMap();
                    out.append(jsonEntry(i + 1, g.value(QStringLiteral("Header")).toString(),
                                         g.value(QStringLiteral("Entry")).toMap()));
                }
                ctx.printJson(out);
                return;
            }
            if (entries.isEmpty())
                ctx.out() << "No messages.\n";
            QString header;
            for (int i = 0; i < entries.size(); ++i) {
                const VoicemailEntry& e = entries.at(i);
                const QString h = grouped.at(i).toMap().value(QStringLiteral("Header")).toString();
                if (h != header)
                    ctx.out() << "[" << (header = h) << "]\n";
                const QString who = e.Contact.value(1).isEmpty() ? e.PhoneNumber : e.Contact.value(1);
                ctx.out() << i + 1 << "\t" << e.CallDate << " " << e.CallTime << "\t" << e.CallDuration
                          << "\t" << (who.isEmpty() ? QStringLiteral("-") : who) << "\t" << e.CalledLine
                          << "\t" << e.RecFile << "\n";
            }
        };
    });

    auto* get = vm->add_subcommand("get", "Fetch one message as a WAV file");
    get->add_option("id", m_id, "Id from list, or the recording's file name")->required();
    get->add_option("--out", m_out, "WAV file to write")->required();
    get->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            FTPCommandSession session(ctx);
            const QList<VoicemailEntry> entries = loadAll(session, -1);
            const VoicemailEntry& entry = entries.at(FTPCommandSession::resolveId(m_id, recFiles(entries)));
            QTemporaryDir temp;
            if (!temp.isValid())
                throw CliError(1, QStringLiteral("no temporary folder: %1").arg(temp.errorString()));
            QString error;
            const QString wavPath =
                VBGetVoicemail(session.connection).getVoicemail(entry, temp.path(), &error);
            if (wavPath.isEmpty())
                throw CliError(1, QStringLiteral("%1: %2").arg(entry.RecFile, error));
            QFile wav(wavPath);
            if (!wav.open(QIODevice::ReadOnly))
                throw CliError(1, wav.errorString());
            const QString out = QString::fromStdString(m_out);
            writeFileAtomically(out, wav.readAll());
            if (!ctx.json)
                ctx.out() << "Saved " << entry.RecFile << " to " << out << "\n";
            else
                ctx.printJson(
                    QVariantMap{{QStringLiteral("RecFile"), entry.RecFile}, {QStringLiteral("out"), out}});
        };
    });

    auto* del = vm->add_subcommand("delete", "Delete messages from the answering machine");
    del->add_option("ids", m_ids, "Ids from list, or recording file names")->required();
    del->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            FTPCommandSession session(ctx);
            const QList<VoicemailEntry> entries = loadAll(session, -1);
            QList<VoicemailEntry> chosen;
            for (const std::string& id : m_ids) {
                const VoicemailEntry& e = entries.at(FTPCommandSession::resolveId(id, recFiles(entries)));
                if (!recFiles(chosen).contains(e.RecFile))
                    chosen.append(e);
            }
            QString error;
            if (!session.datasource.deleteVoicemailEntries(session.connection, chosen, &error))
                throw CliError(1, error);
            if (ctx.json)
                ctx.printJson(QVariantMap{{QStringLiteral("deleted"), recFiles(chosen)}});
            else
                ctx.out() << "Deleted " << chosen.size() << " message(s)\n";
        };
    });
}
