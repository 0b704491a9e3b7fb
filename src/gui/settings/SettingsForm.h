#pragma once

#include <QString>

class QFormLayout;
class QLabel;
class QWidget;

// Rows of the settings pages: each field gets a message line below it that stays hidden until
// the field's value is refused.
namespace SettingsForm {

// Adds "label: field" with an empty message line; returns the message line.
QLabel* addField(QFormLayout* form, const QString& label, QWidget* field);
// Shows the message (or hides the line for ""); true when there was nothing to complain about.
bool showMessage(QLabel* line, const QString& message);

// What is wrong with a typed value, "" when it is fine.
QString portProblem(const QString& text);
QString hostProblem(const QString& text);
// An optional host: empty is fine.
QString optionalHostProblem(const QString& text);
QString digitsProblem(const QString& text);
QString dateFormatProblem(const QString& text);

} // namespace SettingsForm
