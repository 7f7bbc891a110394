#pragma once

#include <QString>

#include <atomic>

namespace graph {

// Numbers the objects of one class for their object names: "PD0", "PD1", ... in the order of creation.
class ObjectCounter
{
public:
    explicit ObjectCounter(const char *prefix);

    QString nextName();

private:
    const char *m_prefix;
    std::atomic<int> m_count{0};
};

} // namespace graph
