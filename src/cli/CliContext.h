#pragma once

#include "app/AppEnvironment.h"

#include <QString>
#include <QTextStream>

#include <functional>
#include <memory>
#include <stdexcept>

class SettingsStore;
class SecretStore;
class TNPreferencesManager;
class TNPreferences;
class ProfileDataStore;

// A failure that ends the command: exit status and one line for standard error.
struct CliError : std::runtime_error
{
    CliError(int code, const QString& message) : std::runtime_error(message.toStdString()), exitCode(code) {}
    int exitCode;
};

// What every command shares: the common options, output streams and the settings.
class CliContext
{
public:
    CliContext(QTextStream& out, QTextStream& err, QTextStream& in);
    ~CliContext();

    // Common options, filled by the parser.
    std::string configDir;
    std::string dataDir;
    std::string location;
    std::string secretsKind;
    bool json = false;
    bool resetSettings = false;
    bool verbose = false;

    // Loads settings and passwords; throws CliError when they cannot be used.
    void open();
    bool isOpen() const { return m_env != nullptr; }

    QTextStream& out() { return m_out; }
    QTextStream& err() { return m_err; }
    QTextStream& in() { return m_in; }

    const AppPaths& paths();
    SettingsStore& settings();
    SecretStore& secrets();
    TNPreferencesManager& manager();
    AppEnvironment& environment();

    // The location named by --location, else the current one; throws when there is none.
    std::shared_ptr<TNPreferences> targetLocation();
    // A location by UID or name; throws when unknown or ambiguous.
    std::shared_ptr<TNPreferences> findLocation(const QString& nameOrUid);

    // One line from standard input, for --password-stdin.
    QString readSecretLine();

    // Prints a JSON value (object or array) as one document.
    void printJson(const QVariant& value);

    // The action chosen by the parser, run after parsing.
    std::function<void()> action;

private:
    QTextStream& m_out;
    QTextStream& m_err;
    QTextStream& m_in;
    std::unique_ptr<AppEnvironment> m_env;
};
