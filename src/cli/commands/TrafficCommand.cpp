#include "TrafficCommand.h"

#include "BoxCli.h"
#include "CliContext.h"

#include "base/TNPreferences.h"
#include "box/RouterCommand.h"
#include "box/TrafficSampler.h"

#include <QEventLoop>
#include <QJsonDocument>
#include <QJsonObject>
#include <QThreadPool>

namespace {
QString newest(const QVariantMap& record, const char* key)
{
    return record.value(QString::fromLatin1(key))
        .toStringList()
        .value(record.value(QString::fromLatin1(key)).toStringList().size() - 1);
}
} // namespace

void TrafficCommand::setup(CLI::App& app, CliContext& ctx)
{
    auto* cmd = app.add_subcommand("traffic", "Sample the router's traffic by queue every 4 seconds");
    cmd->add_option("--count", m_count, "Stop after N samples")->check(CLI::PositiveNumber);
    cmd->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            auto prefs = BoxCli::prepare(ctx);
            // No login check first: a router that does not answer gives records of zeros.
            // Each sample logs in again when the session ran out or the router came back.
            TrafficSampler sampler(ctx.settings(), [prefs](const QStringList& variables) {
                return FBBoxConnectionHelper::queryWithSession(variables, prefs.get(), prefs.router());
            });
            QEventLoop loop;
            int seen = 0;
            QObject::connect(&sampler, &TrafficSampler::trafficRecord, &loop, [&](const QVariantMap& record) {
                if (ctx.json) {
                    ctx.out()
                        << QJsonDocument(QJsonObject::fromVariantMap(record)).toJson(QJsonDocument::Compact)
                        << "\n";
                } else {
                    ctx.out() << "down internet " << newest(record, "ds_internet") << " tv "
                              << newest(record, "ds_tv") << " | up realtime " << newest(record, "us_realtime")
                              << " important " << newest(record, "us_important") << " default "
                              << newest(record, "us_default") << " low " << newest(record, "us_low")
                              << " | max down " << record.value(QStringLiteral("max_ds")).toString() << " up "
                              << record.value(QStringLiteral("max_us")).toString() << "\n";
                }
                ctx.out().flush();
                if (m_count > 0 && ++seen >= m_count)
                    loop.quit();
            });
            // The command line is an open traffic panel.
            sampler.setPanelOpen(true);
            loop.exec();
            sampler.setPanelOpen(false);
            // A sample still under way must not outlive the settings it uses.
            QThreadPool::globalInstance()->waitForDone();
        };
    });
}
