#pragma once

#include "contacts/BoxPhonebookForm.h"
#include "contacts/BoxPhonebookReader.h"
#include "contacts/BoxPhonebookXML.h"

#include <QByteArray>
#include <QString>

#include <functional>

// Reads and writes the router's phone book 0 through its configuration page. The network comes
// in as two callbacks so that the session layer stays outside: `auth` provides a current
// session (or the password), `post` sends one form and gives the answer's bytes one per
// character, "-2" on a transport failure, "" when nothing came.
class FBPhonebookExchange
{
public:
    using AuthProvider = std::function<BoxPhonebookForm::Auth()>;
    using Post = std::function<QString(const QByteArray& body)>;

    FBPhonebookExchange(AuthProvider auth, Post post) : m_auth(std::move(auth)), m_post(std::move(post)) {}

    // loadPhoneBook: the book without declaration, or "" (errorMessage() says why).
    QString loadPhoneBook();
    // uploadPhonebook: false when the transfer failed.
    bool uploadPhonebook(const QString& bookXML);
    // threadExportContactToBox: download, add the contact, upload. Nothing is uploaded unless the
    // download gave a well-formed book.
    bool exportContactToBox(const BoxContactEntry& entry);
    // threadExportGroup: the group's book replaces the router's.
    bool exportGroupToBox(const QString& bookXML);

    QString errorMessage() const { return m_error; }
    int uploadCount() const { return m_uploads; }

private:
    AuthProvider m_auth;
    Post m_post;
    QString m_error;
    int m_uploads = 0;
};
