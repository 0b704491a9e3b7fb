#pragma once

#include "box/FBConnection.h"
#include "box/FBSOAPConnection.h"
#include "box/RouterFailure.h"

#include <QString>

#include <cstdint>

class RouterSession;
class TNPreferences;

// Runs one command on the router: builds the request for the router's firmware (web form, Lua
// page or TR-064), makes sure of a session and the user's right, sends and returns the answer.
// " " means not sent (the reason is in failure), "" nothing came back, "-2" the request failed.
class TNAction
{
public:
    QString dialWithAction(const QString& action, const QString& number, const QString& port,
                           TNPreferences* prefs, RouterSession& session);
    void finish()
    {
        m_prefs = nullptr;
        m_session = nullptr;
        m_sessionChecked = false;
    }

    QString cancelOnString;
    // What went wrong in the command (the last failure of its requests); empty when nothing did.
    RouterFailure failure;

    static std::uint32_t neededPhoneRightForConfig(const TNPreferences* prefs);
    static std::uint32_t neededDialRightForConfig(const TNPreferences* prefs);
    static std::uint32_t neededDialBoxAdminForConfig(const TNPreferences* prefs);
    static QString debugUserRight(std::uint32_t mask);

    // The request plan of one command.
    struct Plan
    {
        QString path;
        QString parameters;
        QByteArray method = "POST";
        FBEncoding encoding = FBEncoding::Ascii;
        bool needsSession = true;
        bool needsOutput = true;
        FBSOAPRequest soap;
        QString pageMarker;
        std::uint32_t right = 1; // TNSessionRightBase
        bool known = true;
        bool isSoap() const { return !soap.action.isEmpty(); }
    };
    // The plan for one command in the firmware's form; composite Lua commands are run by
    // dialWithAction itself.
    // lua: the session found a firmware with Lua pages.
    static Plan planFor(const QString& action, const QString& number, const QString& port,
                        const TNPreferences& prefs, bool lua);

    // The journal export of one flavour: 1 the older webcm .csv page, 2 the Lua page's "?csv=".
    static void csvPlan(Plan& p, int csvType, const QString& boxLanguage);

private:
    QString send(const QString& action, const Plan& plan);
    QString runLuaComposite(const QString& action, const QString& number, const QString& port, bool* handled);
    QString ensureDialPort(const QString& port);

    bool useLUA() const;

    TNPreferences* m_prefs = nullptr;
    RouterSession* m_session = nullptr;
    // One session check per command, also when a command sends several requests.
    bool m_sessionChecked = false;
};
