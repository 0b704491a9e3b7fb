#include "FaxCommand.h"

#include "CliContext.h"
#include "FTPCommandSupport.h"

#include "voicemail/VBGetPDF.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

QStringList fileNames(const QList<FaxEntry>& entries)
{
    QStringList names;
    for (const FaxEntry& e : entries)
        names.append(e.fileName());
    return names;
}

} // namespace

void FaxCommand::setup(CLI::App& app, CliContext& ctx)
{
    auto* fax = app.add_subcommand("fax", "Received faxes on the router's storage (FTP)");
    fax->require_subcommand(1);

    auto* list = fax->add_subcommand("list", "List the received faxes");
    list->add_option("--sort-by", m_sortBy, "Group by date, number or name")
        ->check(CLI::IsMember({"date", "number", "name", "line"}));
    list->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            FTPCommandSession session(ctx);
            session.datasource.sortBy = QString::fromStdString(m_sortBy);
            const QList<FaxEntry> entries =
                session.datasource.loadFAXForDirectories(session.connection, session.directories);
            const QVariantList grouped = session.datasource.preprocessFax(entries);
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
                ctx.out() << "No faxes.\n";
            for (int i = 0; i < entries.size(); ++i) {
                const FaxEntry& e = entries.at(i);
                const QString who = e.Contact.value(1).isEmpty() ? e.PhoneNumber : e.Contact.value(1);
                ctx.out() << i + 1 << "\t" << e.CallTimestamp.toString(QStringLiteral("dd.MM.yyyy")) << " "
                          << e.CallTime << "\t" << (who.isEmpty() ? QStringLiteral("-") : who) << "\t"
                          << e.fileName() << "\n";
            }
        };
    });

    auto* get = fax->add_subcommand("get", "Fetch one fax as a PDF file");
    get->add_option("id", m_id, "Id from list, or the fax's file name")->required();
    get->add_option("--out", m_out, "PDF file to write")->required();
    get->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            FTPCommandSession session(ctx);
            const QList<FaxEntry> entries =
                session.datasource.loadFAXForDirectories(session.connection, session.directories);
            const FaxEntry& entry = entries.at(FTPCommandSession::resolveId(m_id, fileNames(entries)));
            QTemporaryDir temp;
            if (!temp.isValid())
                throw CliError(1, QStringLiteral("no temporary folder: %1").arg(temp.errorString()));
            QString error;
            const QString pdfPath = VBGetPDF(session.connection).getPDF(entry, temp.path(), &error);
            if (pdfPath.isEmpty())
                throw CliError(1, QStringLiteral("%1: %2").arg(entry.fileName(), error));
            QFile pdf(pdfPath);
            if (!pdf.open(QIODevice::ReadOnly))
                throw CliError(1, pdf.errorString());
            const QString out = QString::fromStdString(m_out);
            writeFileAtomically(out, pdf.readAll());
            if (!ctx.json)
                ctx.out() << "Saved " << entry.fileName() << " to " << out << "\n";
            else
                ctx.printJson(
                    QVariantMap{{QStringLiteral("file"), entry.fileName()}, {QStringLiteral("out"), out}});
        };
    });

    auto* del = fax->add_subcommand("delete", "Delete received faxes");
    del->add_option("ids", m_ids, "Ids from list, or fax file names")->required();
    del->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            FTPCommandSession session(ctx);
            const QList<FaxEntry> entries =
                session.datasource.loadFAXForDirectories(session.connection, session.directories);
            QList<FaxEntry> chosen;
            for (const std::string& id : m_ids) {
                const FaxEntry& e = entries.at(FTPCommandSession::resolveId(id, fileNames(entries)));
                if (!fileNames(chosen).contains(e.fileName()))
                    chosen.append(e);
            }
            QString error;
            if (!session.datasource.deleteFaxEntries(session.connection, chosen, &error))
                throw CliError(1, error);
            if (ctx.json)
                ctx.printJson(QVariantMap{{QStringLiteral("deleted"), fileNames(chosen)}});
            else
                ctx.out() << "Deleted " << chosen.size() << " fax(es)\n";
        };
    });
}
