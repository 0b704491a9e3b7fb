#include "DiscoverCommand.h"

#include "CliContext.h"

#include "assistant/SsdpDiscovery.h"

#include <QEventLoop>

void DiscoverCommand::setup(CLI::App& app, CliContext& ctx)
{
    auto* cmd = app.add_subcommand("discover",
                                   "Find routers on the network by SSDP; prints host and model per router");
    cmd->add_option("--timeout", m_timeout, "Seconds to wait for answers")->check(CLI::Range(0.1, 60.0));
    cmd->add_option("--ssdp-target", m_target,
                    "Send the search to HOST:PORT instead of the multicast group 239.255.255.250:1900");
    cmd->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            SsdpDiscovery discovery;
            if (!m_target.empty() && !discovery.setTarget(QString::fromStdString(m_target)))
                throw CliError(
                    2, QStringLiteral("--ssdp-target wants HOST:PORT with a numeric address, got '%1'")
                           .arg(QString::fromStdString(m_target)));
            discovery.setCompletionInterval(int(m_timeout * 1000));
            QEventLoop loop;
            QObject::connect(&discovery, &SsdpDiscovery::searchCompleted, &loop, &QEventLoop::quit);
            discovery.lookupDevices();
            loop.exec();
            const QVariantList devices = discovery.devices();
            if (ctx.json) {
                QVariantList rows;
                for (const QVariant& d : devices) {
                    const QVariantMap m = d.toMap();
                    rows.append(QVariantMap{{QStringLiteral("host"), m.value(QStringLiteral("Host"))},
                                            {QStringLiteral("model"), m.value(QStringLiteral("Server"))}});
                }
                ctx.printJson(rows);
                return;
            }
            if (devices.isEmpty())
                ctx.out() << "No router answered.\n";
            for (const QVariant& d : devices) {
                const QVariantMap m = d.toMap();
                ctx.out() << m.value(QStringLiteral("Host")).toString() << "  "
                          << m.value(QStringLiteral("Server")).toString() << "\n";
            }
        };
    });
}
