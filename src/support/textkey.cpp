#include "textkey.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

size_t qHash(TextKey key, size_t seed) noexcept
{
    return static_cast<size_t>(XXH3_64bits_withSeed(key.text, std::strlen(key.text), seed));
}
