#pragma once

#include <QtGlobal>

#include <cstring>

/// A text that lives elsewhere, as a key of a QHash: UTF-8 ended by a zero byte. Whoever holds the key sees to it that
/// the text outlives it, unchanged.
///
/// Catalogs are looked through by short texts, of which hashing is the whole work; Qt's own hash of a text takes many
/// times as long.
struct TextKey
{
    const char *text = "";

    friend bool operator==(TextKey a, TextKey b) { return std::strcmp(a.text, b.text) == 0; }
};

size_t qHash(TextKey key, size_t seed) noexcept;
