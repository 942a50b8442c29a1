// The trace facility: the engine marks its diagnostic points with these calls, and in this
// build they do nothing at all (no file, no formatting), so they cost nothing on hot paths.
#pragma once

constexpr int TRACE_ERROR = 17; // level of the error-trace calls

inline int traceOpen(const char*) {
    return 1;
}
template <typename... Args> inline int trace(const char*, const Args&...) {
    return 1;
}
template <typename... Args> inline int traceAt(int, const char*, const Args&...) {
    return 1;
}
inline int traceClose() {
    return 0;
}
