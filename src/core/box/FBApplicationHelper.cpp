#include "box/FBApplicationHelper.h"

#include "base/Localization.h"
#include "base/Logging.h"

#include <QMutex>

namespace {
QMutex g_mutex;
FBApplicationHelper::AlertPresenter g_presenter;
thread_local QString t_lastBody;
} // namespace

namespace FBApplicationHelper {

void showAlertWithParams(const QVariantMap& params)
{
    t_lastBody = params.value(QStringLiteral("Body")).toString();
    qCInfo(lcBox) << "alert:" << params.value(QStringLiteral("Title")).toString() << t_lastBody;
    AlertPresenter presenter;
    {
        QMutexLocker lock(&g_mutex);
        presenter = g_presenter;
    }
    if (presenter)
        presenter(params);
}

void showAlert(const QString& titleKey, const QString& body, bool ignoreErrorMessageShown)
{
    showAlertWithParams({{QStringLiteral("Title"), Localization::localized(titleKey)},
                         {QStringLiteral("Body"), body},
                         {QStringLiteral("ignoreErrorMessageShown"), ignoreErrorMessageShown}});
}

void setAlertPresenter(AlertPresenter presenter)
{
    QMutexLocker lock(&g_mutex);
    g_presenter = std::move(presenter);
}

QString lastAlertBodyOnThisThread()
{
    return t_lastBody;
}

void clearLastAlertOnThisThread()
{
    t_lastBody.clear();
}

} // namespace FBApplicationHelper
