#include "setup/SetupWizard.h"

#include "setup/SetupPages.h"

#include "assistant/SsdpDiscovery.h"
#include "base/Localization.h"

#include <QRegularExpression>
#include <QUrl>

SetupWizard::SetupWizard(AppEnvironment& env, QWidget* parent)
    : QWizard(parent), m_env(env), m_discovery(new SsdpDiscovery(this))
{
    setWindowTitle(tr("Set up a router"));
    setWizardStyle(QWizard::ClassicStyle);
    setOption(QWizard::NoBackButtonOnLastPage, false);
    setButtonText(QWizard::BackButton, Localization::localized(QStringLiteral("Back")));
    setButtonText(QWizard::NextButton, Localization::localized(QStringLiteral("next")));
    setButtonText(QWizard::CancelButton, Localization::localized(QStringLiteral("Cancel")));
    setButtonText(QWizard::FinishButton, Localization::localized(QStringLiteral("saveTitle")));
    setPage(RouterPage, new RouterChoicePage(this));
    setPage(LoginPage, new ::LoginPage(this));
    setPage(ReadPage, new ::ReadPage(this));
    setPage(RemotePage, new ::RemotePage(this));
    setPage(SavePage, new ::SavePage(this));
    setStartId(RouterPage);
    resize(560, 420);
}

SetupWizard::~SetupWizard() = default;

void SetupWizard::setDiscoveryTarget(const QString& hostAndPort)
{
    m_discovery->setTarget(hostAndPort);
}

bool SetupWizard::parseAddress(const QString& text, QString* host, int* port)
{
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty() || trimmed.contains(u' ') || trimmed.contains(u'/'))
        return false;
    // QUrl understands "[v6]:port" as well as "name:port".
    const QUrl url(QStringLiteral("http://") + trimmed);
    if (!url.isValid() || url.host().isEmpty())
        return false;
    const int parsedPort = url.port(80);
    if (parsedPort < 1 || parsedPort > 65535)
        return false;
    *host = url.host();
    *port = parsedPort;
    return true;
}

QString SetupWizard::locationNameFromModel(const QString& model)
{
    static const QRegularExpression trailingVersion(QStringLiteral("\\s+[0-9]+(\\.[0-9]+)+$"));
    if (model == SsdpDiscovery::unknownDeviceName())
        return {};
    return model.trimmed().remove(trailingVersion);
}
