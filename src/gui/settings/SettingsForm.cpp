#include "SettingsForm.h"

#include <QCoreApplication>
#include <QFormLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <QWidget>

namespace SettingsForm {

QLabel* addField(QFormLayout* form, const QString& label, QWidget* field)
{
    auto* cell = new QWidget;
    auto* box = new QVBoxLayout(cell);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(2);
    box->addWidget(field);
    auto* message = new QLabel;
    message->setWordWrap(true);
    message->setStyleSheet(QStringLiteral("color: #c0392b;"));
    message->setVisible(false);
    box->addWidget(message);
    form->addRow(label, cell);
    return message;
}

bool showMessage(QLabel* line, const QString& message)
{
    line->setText(message);
    // Not setVisible(): a page that is not shown yet would keep the line hidden.
    line->setHidden(message.isEmpty());
    return message.isEmpty();
}

QString portProblem(const QString& text)
{
    bool ok = false;
    const int port = text.trimmed().toInt(&ok);
    if (!ok || port < 1 || port > 65535)
        return QCoreApplication::translate("SettingsForm", "Enter a port number from 1 to 65535.");
    return {};
}

QString hostProblem(const QString& text)
{
    const QString host = text.trimmed();
    if (host.isEmpty())
        return QCoreApplication::translate("SettingsForm", "Enter the router's host name or address.");
    return optionalHostProblem(host);
}

QString optionalHostProblem(const QString& text)
{
    const QString host = text.trimmed();
    for (const QChar c : host)
        if (c.isSpace() || c == u'/' || c == u'?' || c == u'#' || c == u'@')
            return QCoreApplication::translate(
                "SettingsForm", "Enter only the host name or address, without blanks, scheme or path.");
    return {};
}

QString digitsProblem(const QString& text)
{
    for (const QChar c : text.trimmed())
        if (c < u'0' || c > u'9')
            return QCoreApplication::translate("SettingsForm", "Only digits, without + or blanks.");
    return {};
}

QString dateFormatProblem(const QString& text)
{
    if (text.trimmed().isEmpty())
        return QCoreApplication::translate("SettingsForm", "Enter a date pattern such as dd.MM.yyyy HH:mm.");
    return {};
}

} // namespace SettingsForm
