#pragma once

#include "platform/bus/BusMember.h"

class BusLink;

// A member that uses the link that it is a member of.
class LinkedMember : public BusMember
{
public:
    // Before it is added there.
    void setLink(BusLink *link) { m_link = link; }

protected:
    BusLink *link() const { return m_link; }

private:
    BusLink *m_link = nullptr;
};
