// Where an exception stops: the library's edge with its host.
//
// Private to the library's own sources; no public header includes it.
//
// quorvel.dll runs inside a host application's process, so nothing may be
// thrown back into the host: not from a window or hook procedure that Win32
// calls, and not from an exported operation that the host calls. Each such
// edge catches everything, writes one entry to the error log book (module
// "Quorvel", the edge's function with its leading blank, its position,
// "Exception caught: <what()>" and E_FAIL) and answers a safe value. An
// exported operation does it with a function-try-block:
//
//     bool Foo::Bar(const std::wstring& text) try {
//         ...
//     } catch (...) {
//         return qv::CaughtAtEdge(" Foo::Bar", __LINE__, false);
//     }
//
// The native model build has no host to protect: there the same edges let
// the exception go on, so that tests, sanitizers and fuzzers still see it.
#pragma once

#include <cstdio>
#include <exception>

#include "quorvel/common/api.h"

#if defined(QV_BUILDING_DLL)
#  define QV_EDGES_CATCH 1
#else
#  define QV_EDGES_CATCH 0
#endif

namespace qv {

#if QV_EDGES_CATCH
// The log entry of frame/siblings.h, declared again here so that portable
// code can write it without <windows.h>.
QV_API void LogFailureA(const char* function, unsigned long line, const char* message, long hr);
#endif

// Writes the log entry for the exception being handled; `message` is the
// window message whose handler threw, or -1. Call it only inside a catch
// block. Never throws: a log book that fails too is left at that.
inline void LogCaughtException([[maybe_unused]] const char* function, [[maybe_unused]] unsigned long position,
                               [[maybe_unused]] long message = -1) noexcept {
#if QV_EDGES_CATCH
    try {
        const char* what = "unknown exception";
        try {
            throw;
        } catch (const std::exception& e) {
            what = e.what();  // the exception lives on until the caller's handler ends
        } catch (...) {
        }
        char text[200];
        if (message >= 0)
            std::snprintf(text, sizeof text, "Exception caught: %s (message 0x%04lX)", what,
                          static_cast<unsigned long>(message));
        else
            std::snprintf(text, sizeof text, "Exception caught: %s", what);
        LogFailureA(function, position, text, static_cast<long>(0x80004005UL));  // E_FAIL
    } catch (...) {
    }
#endif
}

// The answer of an exported operation whose body threw: logs and answers
// `fallback` (inside the DLL), or lets the exception go on (natively).
template <class T>
T CaughtAtEdge(const char* function, unsigned long position, [[maybe_unused]] T fallback) {
#if QV_EDGES_CATCH
    LogCaughtException(function, position);
    return fallback;
#else
    (void)function;
    (void)position;
    throw;
#endif
}

// The same for an operation without an answer.
inline void CaughtAtEdge(const char* function, unsigned long position) {
#if QV_EDGES_CATCH
    LogCaughtException(function, position);
#else
    (void)function;
    (void)position;
    throw;
#endif
}

}  // namespace qv
