#pragma once

#include <span>

inline constexpr const char kLocalizationContext[] = "Tondrel";

struct LocalizedString
{
    const char* key;
    const char* english; // source text of the translation, UTF-8
};

// Every localisation key the program uses, with its English text.
std::span<const LocalizedString> localizedStrings();
