#pragma once

#include <QString>
#include <QStringList>

// The location's four-part dialling context; a list shorter than four reads as empty strings.
class TNPreferencesManager;

struct Prefixis
{
    QString international; // P0, e.g. 00
    QString country;       // P1, e.g. 49
    QString trunk;         // P2, e.g. 0
    QString area;          // P3, e.g. 30

    Prefixis() = default;
    explicit Prefixis(const QStringList& list);
    QStringList toList() const { return {international, country, trunk, area}; }
    QString internationalCountry() const { return international + country; } // P0P1
    QString trunkArea() const { return trunk + area; }                       // P2P3

    // The manager's current location's "Prefixis"; empty without a manager or location.
    static Prefixis current(const TNPreferencesManager* manager);
};

namespace methods {

// Separators removed, "+" at the start turned into P0, P0P1 at the start folded to "0".
QString cleanNumber(const QString& number, const Prefixis& prefixis);

// Space and tab and other Unicode space separators trimmed at both ends; line breaks stay.
QString trimString(const QString& text);

// What follows the last "#": *31#030123 gives 030123.
QString replaceCommandStringinNumber(const QString& number);

// The first line, but only when the text has a line break at all.
QString matchExpressionInString(const QString& text);

// "(0301)" gives 0301, "0301 (Meier)" gives 0301; a number without "(" stays as it is.
QString numberWithoutParenthesisPart(const QString& number);

// Removes `prefix` where it stands at the start, when text is at least as long as prefix.
QString removePrefixWhenLongEnough(const QString& text, const QString& prefix);

} // namespace methods

namespace adressbooksearch {
// Like cleanNumber, then the bare country code folded too, then digits only.
QString standardizePhoneNumber(const QString& number, const Prefixis& prefixis);
} // namespace adressbooksearch
