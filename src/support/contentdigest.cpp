#include "contentdigest.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

struct ContentDigester::State
{
    XXH3_state_t hash;
};

ContentDigester::ContentDigester() : m_state(std::make_unique<State>())
{
    XXH3_64bits_reset(&m_state->hash);
}

ContentDigester::~ContentDigester() = default;

void ContentDigester::Add(QByteArrayView bytes)
{
    XXH3_64bits_update(&m_state->hash, bytes.data(), static_cast<size_t>(bytes.size()));
}

quint64 ContentDigester::Digest() const
{
    return XXH3_64bits_digest(&m_state->hash);
}

quint64 ContentDigest(QByteArrayView bytes)
{
    return XXH3_64bits(bytes.data(), static_cast<size_t>(bytes.size()));
}

QString DigestDigits(quint64 digest)
{
    return QStringLiteral("%1").arg(digest >> 32, 8, 16, QChar(u'0'));
}
