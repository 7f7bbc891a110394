#include "kit/data/PushQueue.h"

namespace graph {

bool OneThread::admit()
{
    thread_local const Token token = std::make_shared<char>();
    if (m_admitted.load(std::memory_order_acquire) == token.get())
        return true;
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_token.expired())
        return m_token.lock() == token;
    m_token = token;
    m_admitted.store(token.get(), std::memory_order_release);
    return true;
}

} // namespace graph
