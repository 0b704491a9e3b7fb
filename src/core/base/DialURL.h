#pragma once

#include <QString>

#include <optional>

namespace methods {

// The number in a "callto" or "dial" URL: the scheme, every ":" and "/" removed, the rest
// URL-decoded. Nullopt for any other scheme (those go to the system).
std::optional<QString> numberFromDialURL(const QString& url);

// The number in a "tel" URL (RFC 3966): the scheme and any "//" removed, parameters after ";"
// dropped, the rest URL-decoded. Nullopt for any other scheme.
std::optional<QString> numberFromTelURL(const QString& url);

// What is sent to the router for a typed or pasted number: the unified form, with a leading "+"
// written as the location's international prefix (or "00" without one).
QString dialableNumber(const QString& text, const QString& internationalPrefix);

} // namespace methods
