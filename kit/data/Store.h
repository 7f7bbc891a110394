#pragma once

namespace graph {

// For setters: false when the member holds the value already.
template <typename Value> bool store(Value &member, const Value &value)
{
    if (member == value)
        return false;
    member = value;
    return true;
}

} // namespace graph
