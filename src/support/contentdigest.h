#pragma once

#include <QByteArrayView>
#include <QString>

#include <memory>

/// Digests what is added piece by piece; however it was cut, the result is that of ContentDigest() of the whole.
class ContentDigester
{
public:
    ContentDigester();
    ~ContentDigester();
    ContentDigester(const ContentDigester &) = delete;
    ContentDigester &operator=(const ContentDigester &) = delete;

    void Add(QByteArrayView bytes);
    quint64 Digest() const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

/// A number by which contents are told apart: the same in every run and on every system. It guards against chance, not
/// against those who would forge it.
quint64 ContentDigest(QByteArrayView bytes);

/// The eight digits by which a digest is told in the name of a file.
QString DigestDigits(quint64 digest);
