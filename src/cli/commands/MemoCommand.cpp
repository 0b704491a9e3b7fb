#include "MemoCommand.h"

#include "CallsCommand.h"
#include "CliContext.h"

#include "base/Clock.h"
#include "base/TNPreferences.h"
#include "calllist/TNCallinglist.h"

namespace {

QString str(const std::string& s)
{
    return QString::fromStdString(s);
}

// Unix seconds, or a local date and time "yyyy-MM-dd HH:mm" / ISO 8601.
qint64 parseDate(const QString& text)
{
    bool ok = false;
    const qint64 seconds = text.toLongLong(&ok);
    if (ok)
        return seconds;
    for (const QString& format :
         {QStringLiteral("yyyy-MM-dd HH:mm"), QStringLiteral("yyyy-MM-dd HH:mm:ss")}) {
        const QDateTime t = QDateTime::fromString(text, format);
        if (t.isValid())
            return t.toSecsSinceEpoch();
    }
    const QDateTime iso = QDateTime::fromString(text, Qt::ISODate);
    if (iso.isValid())
        return iso.toSecsSinceEpoch();
    throw CliError(2,
                   QStringLiteral("'%1' is not a date (use \"yyyy-MM-dd HH:mm\" or Unix seconds)").arg(text));
}

void printMemos(CliContext& ctx, const QList<Memo>& memos)
{
    if (ctx.json) {
        QVariantList rows;
        for (const Memo& m : memos)
            rows.append(m.toVariantMap());
        ctx.printJson(rows);
        return;
    }
    if (memos.isEmpty()) {
        ctx.out() << "No memos.\n";
        return;
    }
    for (const Memo& m : memos) {
        ctx.out() << m.rowid << "\t"
                  << QDateTime::fromSecsSinceEpoch(m.calldate).toString(QStringLiteral("yyyy-MM-dd HH:mm"))
                  << "\t" << m.phonenumber << "\t" << m.name << "\t" << m.subject << "\n";
        if (!m.body.isEmpty())
            ctx.out() << "\t" << QString(m.body).replace(u'\n', QStringLiteral("\n\t")) << "\n";
    }
}

} // namespace

void MemoCommand::setup(CLI::App& app, CliContext& ctx)
{
    auto* memo = app.add_subcommand("memo", "Notes on calls");
    memo->require_subcommand(1);

    auto* add = memo->add_subcommand("add", "Write a memo for a call; prints its id");
    add->add_option("--number", m_number, "The caller's number")->required();
    add->add_option("--date", m_date,
                    "Start of the call: \"yyyy-MM-dd HH:mm\" (local) or Unix seconds; now if omitted");
    add->add_option("--subject", m_subject, "Subject");
    add->add_option("--body", m_body, "Text");
    add->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            auto prefs = ctx.targetLocation();
            TNCallinglist& calls = cliCallinglist(ctx);
            const qint64 date =
                m_date.empty() ? Clock::system().now().toSecsSinceEpoch() : parseDate(str(m_date));
            const qint64 id = calls.setMemoForProfile(prefs->activeProfileInt, str(m_number), date,
                                                      str(m_subject), str(m_body));
            if (!id)
                throw CliError(1, QStringLiteral("the memo could not be stored"));
            if (ctx.json)
                ctx.printJson(QVariantMap{{QStringLiteral("rowid"), id}});
            else
                ctx.out() << id << "\n";
        };
    });

    auto* list = memo->add_subcommand("list", "The memos of the location, oldest call first");
    list->callback([&ctx] {
        ctx.action = [&ctx] {
            auto prefs = ctx.targetLocation();
            printMemos(ctx, cliCallinglist(ctx).memos().getMemosForProfile(prefs->activeProfileInt));
        };
    });

    auto* update = memo->add_subcommand("update", "Change a memo's subject and text");
    update->add_option("id", m_id, "Memo id")->required();
    auto* subject = update->add_option("--subject", m_subject, "New subject");
    auto* body = update->add_option("--body", m_body, "New text");
    update->callback([this, &ctx, subject, body] {
        ctx.action = [this, &ctx, subject, body] {
            auto prefs = ctx.targetLocation();
            TNCallinglist& calls = cliCallinglist(ctx);
            const auto memo = calls.memos().getDetailMemoWithID(m_id);
            if (!memo || memo->profile != prefs->activeProfileInt)
                throw CliError(1, QStringLiteral("no memo %1 in this location").arg(m_id));
            const QString newSubject = subject->count() ? str(m_subject) : memo->subject;
            const QString newBody = body->count() ? str(m_body) : memo->body;
            if (!calls.updateMemoWithID(m_id, newSubject, newBody))
                throw CliError(1, QStringLiteral("memo %1 could not be changed").arg(m_id));
            if (!ctx.json)
                ctx.out() << "Changed memo " << m_id << ".\n";
        };
    });

    auto* del = memo->add_subcommand("delete", "Delete memos");
    del->add_option("id", m_ids, "Memo ids")->required();
    del->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            auto prefs = ctx.targetLocation();
            TNCallinglist& calls = cliCallinglist(ctx);
            for (long long id : m_ids) {
                const auto memo = calls.memos().getDetailMemoWithID(id);
                if (!memo || memo->profile != prefs->activeProfileInt)
                    throw CliError(1, QStringLiteral("no memo %1 in this location").arg(id));
            }
            for (long long id : m_ids)
                if (!calls.memos().deleteMemoWithID(id))
                    throw CliError(1, QStringLiteral("memo %1 could not be deleted").arg(id));
            if (ctx.json)
                ctx.printJson(QVariantMap{{QStringLiteral("deleted"), int(m_ids.size())}});
            else
                ctx.out() << "Deleted " << m_ids.size() << " memo(s).\n";
        };
    });

    auto* search = memo->add_subcommand("search", "Find memos by number, subject, text, name or date");
    search->add_option("text", m_text, "Text to find")->required();
    search->add_option("--column", m_column, "Search only in: number, subject, body, name, date")
        ->check(CLI::IsMember({"number", "subject", "body", "name", "date"}));
    search->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            auto prefs = ctx.targetLocation();
            printMemos(ctx, cliCallinglist(ctx).searchMemosForProfile(prefs->activeProfileInt, str(m_text),
                                                                      str(m_column)));
        };
    });
}
