#pragma once

#include <QString>

#include <optional>

namespace methods {

// The number in a "callto" or "dial" URL: the scheme, every ":" and "/" removed, the rest
// URL-decoded. Nullopt for any other scheme (those go to the system).
std::optional<QString> numberFromDialURL(const QString& url);

} // namespace methods
