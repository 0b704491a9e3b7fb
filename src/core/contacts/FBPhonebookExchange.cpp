#include "contacts/FBPhonebookExchange.h"

#include "base/Logging.h"

QString FBPhonebookExchange::loadPhoneBook()
{
    m_error.clear();
    const QString answer = m_post(BoxPhonebookForm::exportBody(m_auth()));
    if (answer == u"-2" || answer.trimmed().isEmpty()) {
        m_error = QStringLiteral("the router's phone book could not be read");
        qCWarning(lcContacts) << "phonebook: download failed";
        return {};
    }
    const QString book = BoxPhonebookReader::bookFromDownload(answer);
    QString why;
    if (!BoxPhonebookReader::parse(book, nullptr, &why)) {
        m_error = QStringLiteral("the router's phone book could not be read: %1").arg(why);
        qCWarning(lcContacts) << "phonebook: unusable download:" << why;
        return {};
    }
    return book;
}

bool FBPhonebookExchange::uploadPhonebook(const QString& bookXML)
{
    m_error.clear();
    ++m_uploads;
    const QString answer = m_post(BoxPhonebookForm::importBody(m_auth(), bookXML));
    if (answer == u"-2") {
        m_error = QStringLiteral("the phone book could not be sent to the router");
        qCWarning(lcContacts) << "phonebook: upload failed";
        return false;
    }
    return true;
}

bool FBPhonebookExchange::exportContactToBox(const BoxContactEntry& entry)
{
    const QString book = loadPhoneBook();
    if (book.isEmpty())
        return false; // never replace the router's book with one we could not read
    const QString changed =
        adressbooksearch::insertContactIntoPhonebook(book, adressbooksearch::contactElementForBox(entry));
    return uploadPhonebook(changed);
}

bool FBPhonebookExchange::exportGroupToBox(const QString& bookXML)
{
    return uploadPhonebook(bookXML);
}
