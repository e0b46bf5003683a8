#pragma once

/// Marks what runs on the audio thread: it allocates nothing, locks nothing, does no I/O, throws
/// nothing, and its cost is linear in the block. It stands after `noexcept`. A compiler that knows
/// the promise checks it; elsewhere the mark is for the reader, the lint script and the guard under
/// which the suites run the graph.
#if defined(__clang__) && defined(__has_cpp_attribute)
#if __has_cpp_attribute(clang::nonblocking)
#define CINDER_REALTIME [[clang::nonblocking]]
#endif
#endif
#ifndef CINDER_REALTIME
#define CINDER_REALTIME
#endif
