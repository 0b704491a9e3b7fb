#pragma once

#include <QString>
#include <QVariantMap>

#include <functional>

// Alerts for the user, raised from any thread. The shell (tray or command line) installs the
// presenter; without one the alert is only logged.
namespace FBApplicationHelper {

using AlertPresenter = std::function<void(const QVariantMap& params)>;

// "Title", "Body" and optionally "ignoreErrorMessageShown" (bool).
void showAlertWithParams(const QVariantMap& params);
void showAlert(const QString& titleKey, const QString& body, bool ignoreErrorMessageShown = false);
void setAlertPresenter(AlertPresenter presenter);

// The body of the last alert raised on the calling thread, for a one-line error.
QString lastAlertBodyOnThisThread();
void clearLastAlertOnThisThread();

} // namespace FBApplicationHelper
