#pragma once

#include <QList>
#include <QtGlobal>

namespace graph {

// Joins an object with others of its kind: all that are joined directly or through others are a group. Each names one of
// the others at most. It leaves the group when it is destroyed.
template <typename T> class Joined
{
public:
    explicit Joined(T *self)
        : m_self(self)
    {
    }
    ~Joined() { leave(); }
    Q_DISABLE_COPY(Joined)

    T *with() const { return m_with ? m_with->m_self : nullptr; }

    void joinWith(Joined *other)
    {
        if (m_with)
            m_with->m_joiners.removeAll(this);
        m_with = other;
        if (other)
            other->m_joiners.append(this);
    }

    // So do those who have named this one.
    void leave()
    {
        joinWith(nullptr);
        for (Joined *joiner : qAsConst(m_joiners))
            joiner->m_with = nullptr;
        m_joiners.clear();
    }

    QList<T *> others() const
    {
        QList<T *> others;
        if (!m_with && m_joiners.isEmpty())
            return others;
        QList<const Joined *> found{this};
        for (int i = 0; i < found.size(); ++i) {
            QList<Joined *> next = found.at(i)->m_joiners;
            next.append(found.at(i)->m_with);
            for (const Joined *joined : qAsConst(next)) {
                if (!joined || found.contains(joined))
                    continue;
                found.append(joined);
                others.append(joined->m_self);
            }
        }
        return others;
    }

private:
    T *m_self;
    Joined *m_with = nullptr;
    QList<Joined *> m_joiners;
};

} // namespace graph
