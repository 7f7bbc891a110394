.pragma library

// The reflection at a place of a trace: whether there is one, its highest point, and where the trace is back
// at the level it had before, or at `next`, where another event begins. Pulses cover metres or kilometres, so
// nothing is assumed about its length.
function reflectionAt(trace, position, level, next, metre)
{
    var first = Math.max(0, trace.indexOf(position));
    var last = Math.min(trace.size - 1, trace.indexOf(next));
    // It rises at its event: far away from it something rises from noise, or for the next event.
    var latest = trace.indexOf(position + Math.max(30 * metre, (next - position) / 10));
    var begin = first;
    while (begin < last && begin < latest && !(trace.y(begin) > level + 0.5))
        ++begin;
    var isHigh = trace.y(begin) > level + 0.5;
    if (!isHigh)
        begin = first;
    var highest = begin, end = begin;
    while (isHigh && end < last && trace.y(end) > level) {
        ++end;
        if (trace.y(end) > trace.y(highest))
            highest = end;
    }
    return {x : trace.x(highest), y : trace.y(highest), end : trace.x(end), isHigh : isHigh};
}
