#pragma once

#include <QString>

// The router's two challenge-response schemes.
namespace FBLoginHash {

// MD5 over UTF-16LE of the text; characters above U+00FF count as "." (the router does the same).
QString md5ResponseFromString(const QString& text);

// Routers ask for about 10,000; 2^31 would cost minutes of CPU per stage.
inline constexpr int MaxPbkdf2Iterations = 1000000;

// "2$iter1$salt1$iter2$salt2" and the password -> "salt2$hex(hash2)"; "" for a malformed challenge
// or one with more than MaxPbkdf2Iterations in either stage.
QString pbkdf2Response(const QString& challenge, const QString& password);

// The full response text for a challenge: PBKDF2 for "2$..." challenges, MD5 otherwise; "" when
// the challenge is refused.
QString responseForChallenge(const QString& challenge, const QString& password);

} // namespace FBLoginHash
