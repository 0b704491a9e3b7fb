#include "contacts/BoxPhonebookXML.h"

#include "base/Localization.h"
#include "contacts/AddressBookSearch.h"

#include <QStringConverter>

namespace adressbooksearch {

namespace {
const QString kContactFormat = QStringLiteral(
    "%1<contact><category></category><person><realName>%2</realName></person><telephony>%3%4%5</telephony>"
    "<services /><setup /></contact>");

QString numberElement(const QString& type, const QString& number)
{
    if (number.isEmpty())
        return {};
    return QStringLiteral("<number type=\"%1\">%2</number>").arg(type, xmlEscaped(number));
}

QString attributeEscaped(const QString& text)
{
    QString out = xmlEscaped(text);
    out.replace(u'"', QStringLiteral("&quot;"));
    return out;
}

// The numbers of one router contact while a person's entries are visited.
struct Slots
{
    QString home, mobile, work;
    void clear() { home.clear(), mobile.clear(), work.clear(); }
};

enum class Kind { Home, Mobile, Work, Other };

Kind kindOfLabel(const QString& label)
{
    if (label == PhoneLabel::Home || label == PhoneLabel::Main)
        return Kind::Home;
    if (label == PhoneLabel::Mobile || label == PhoneLabel::IPhone)
        return Kind::Mobile;
    if (label == PhoneLabel::Work)
        return Kind::Work;
    return Kind::Other;
}

QString labelForName(const QString& label, bool shortLabel)
{
    // Labels the user typed are not localisation keys.
    const QString text = Localization::hasKey(label) ? Localization::localized(label) : label;
    if (shortLabel && text.size() > 1)
        return text.left(1) + u'.';
    return text;
}
} // namespace

QString xmlEscaped(const QString& text)
{
    QString out;
    out.reserve(text.size());
    for (const QChar c : text) {
        if (c == u'&')
            out += QStringLiteral("&amp;");
        else if (c == u'<')
            out += QStringLiteral("&lt;");
        else if (c == u'>')
            out += QStringLiteral("&gt;");
        else
            out += c;
    }
    return out;
}

QString boxContactName(const QString& name)
{
    QString result = name;
    auto encoder = QStringEncoder(QStringConverter::Latin1);
    (void)QByteArray(encoder(name));
    if (encoder.hasError())
        result = QString::fromLatin1(name.toLatin1()); // unrepresentable characters become "?"
    result.replace(u'?', u'.');
    result.replace(u'&', u'+');
    return result;
}

QString XMLContactWithName(const QString& name, const QString& home, const QString& work,
                           const QString& mobile, const QString& appendTo)
{
    return kContactFormat.arg(appendTo, xmlEscaped(name), numberElement(QStringLiteral("home"), home),
                              numberElement(QStringLiteral("mobile"), mobile),
                              numberElement(QStringLiteral("work"), work));
}

QString peoplesForGroupWithFormat(const QString& group, const QVariantMap& format, const AddressBook* book,
                                  const Prefixis& prefixis)
{
    const bool single = format.contains(QStringLiteral("Label_Single"));
    const bool shortSingle = format.contains(QStringLiteral("Label_Short_Single"));
    QString contacts;
    for (const ABPerson& person : peoplesForGroup(group, book)) {
        if (person.phones.isEmpty())
            continue;
        const QString name = boxContactName(formatedOutputForContactWithFirstname(
            person.firstName, person.lastName, person.organization, format));
        Slots found;
        QStringList others;
        for (const ABPhone& phone : person.phones) {
            const QString number = standardizePhoneNumber(phone.value, prefixis);
            if (number.isEmpty())
                continue;
            switch (kindOfLabel(phone.label)) {
            case Kind::Home:
                found.home = number;
                break;
            case Kind::Mobile:
                found.mobile = number;
                break;
            case Kind::Work:
                found.work = number;
                break;
            case Kind::Other:
                others.append(number);
                break;
            }
            if (single || shortSingle) {
                if (!others.isEmpty())
                    found.home = others.last();
                others.clear();
                const QString labelled =
                    QStringLiteral("%1 %2").arg(name, labelForName(phone.label, shortSingle));
                contacts = XMLContactWithName(labelled, found.home, found.work, found.mobile, contacts);
                found.clear();
            }
        }
        if (single || shortSingle)
            continue;
        for (const QString& number : std::as_const(others)) {
            if (found.home.isEmpty())
                found.home = number;
            else if (found.mobile.isEmpty())
                found.mobile = number;
            else if (found.work.isEmpty())
                found.work = number;
        }
        contacts = XMLContactWithName(name, found.home, found.work, found.mobile, contacts);
    }
    return QStringLiteral(
               "<phonebooks><phonebook owner=\"1\" name=\"Quillet Phonebook\">%1</phonebook></phonebooks>")
        .arg(contacts);
}

QString contactElementForBox(const BoxContactEntry& entry)
{
    using On = BoxContactEntry::QuickDialOn;
    QString out = QStringLiteral("<contact><category>%1</category><person><realName>%2</realName></person>"
                                 "<telephony nid=\"2\">")
                      .arg(entry.important ? 1 : 0)
                      .arg(xmlEscaped(entry.name));
    int id = 0;
    const auto add = [&](const QString& type, const QString& number, On on) {
        if (number.isEmpty())
            return;
        const QString attributes =
            entry.quickDialOn == on
                ? QStringLiteral(" prio=\"1\" quickdial=\"%1\" vanity=\"%2\"")
                      .arg(attributeEscaped(entry.quickDial), attributeEscaped(entry.vanity))
                : QStringLiteral(" prio=\"0\"");
        out += QStringLiteral("<number type=\"%1\" id=\"%2\"%3>%4</number>")
                   .arg(type)
                   .arg(id++)
                   .arg(attributes, xmlEscaped(number));
    };
    add(QStringLiteral("home"), entry.home, On::Home);
    add(QStringLiteral("mobile"), entry.mobile, On::Mobile);
    add(QStringLiteral("work"), entry.work, On::Work);
    return out + QStringLiteral("</telephony></contact>");
}

QString insertContactIntoPhonebook(const QString& book, const QString& contactElement)
{
    QString result = book;
    result.replace(QStringLiteral("</phonebook>"), contactElement + QStringLiteral("</phonebook>"));
    return result;
}

} // namespace adressbooksearch
