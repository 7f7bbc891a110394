#pragma once

#include <QByteArray>

#include <algorithm>
#include <cstring>

// Takes a fuzzer's bytes apart from the front; values beyond their end are 0.
class FuzzInput
{
public:
    FuzzInput(const unsigned char *data, std::size_t size)
        : m_bytes(QByteArray::fromRawData(reinterpret_cast<const char *>(data), int(size)))
    {
    }

    template <typename Value> Value take()
    {
        Value value = 0;
        const int count = std::min(int(sizeof(Value)), m_bytes.size() - m_at);
        std::memcpy(&value, m_bytes.constData() + m_at, std::size_t(count));
        m_at += count;
        return value;
    }

    bool atEnd() const { return m_at == m_bytes.size(); }
    // What was not taken yet.
    QByteArray rest() const { return m_bytes.mid(m_at); }

private:
    QByteArray m_bytes;
    int m_at = 0;
};

// For what must hold whatever the input is.
#define FUZZ_CHECK(condition)                                                                                \
    do {                                                                                                     \
        if (!(condition))                                                                                    \
            qFatal("%s:%d: %s", __FILE__, __LINE__, #condition);                                             \
    } while (false)
