#include "RouterFailureAlert.h"

#include "base/Localization.h"
#include "box/RouterFailure.h"

#include <QApplication>
#include <QMessageBox>
#include <QSet>

namespace RouterFailureAlert {

void show(const RouterFailure& failure)
{
    if (!failure || failure.message.isEmpty())
        return;
    const QString title = Localization::localized(QStringLiteral("Error"));
    const QString body = failure.message;
    QMetaObject::invokeMethod(
        qApp,
        [title, body] {
            static QSet<QString> open;
            if (open.contains(body))
                return;
            open.insert(body);
            auto* box =
                new QMessageBox(QMessageBox::Warning, title.isEmpty() ? QStringLiteral("Tondrel") : title,
                                body, QMessageBox::Ok);
            box->setAttribute(Qt::WA_DeleteOnClose);
            QObject::connect(box, &QObject::destroyed, qApp, [body] { open.remove(body); });
            box->show();
        },
        Qt::QueuedConnection);
}

} // namespace RouterFailureAlert
