#pragma once

#if defined(__x86_64__) && !defined(__AVX2__)
#define GRAPH_CHOOSES_INSTRUCTIONS
#endif

// What a loop is that takes part: inlined, or it would not be made of the instructions of its caller.
#define GRAPH_WIDE_LOOP __attribute__((always_inline))

namespace graph {

#ifdef GRAPH_CHOOSES_INSTRUCTIONS
template <typename Loop> __attribute__((target("avx2"))) void runWide(const Loop &loop)
{
    loop();
}
#endif

// Calls a function without arguments, which is GRAPH_WIDE_LOOP. On x86 there is a second copy of it for processors that
// take four numbers at a time, where all of the kind take two. The results are the same.
template <typename Loop> void runLoop(const Loop &loop)
{
#ifdef GRAPH_CHOOSES_INSTRUCTIONS
    if (__builtin_cpu_supports("avx2")) {
        runWide(loop);
        return;
    }
#endif
    loop();
}

} // namespace graph
