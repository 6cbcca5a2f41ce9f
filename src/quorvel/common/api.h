// Export macro of quorvel.dll. Classes and functions marked QV_API are the
// library's interface; the native model build (QV_STATIC) has no DLL.
#pragma once

// The library's window functions are the wide (W) ones, and its classes have
// members named like Win32's A/W macros (GetWindowText ...). A host built
// without UNICODE would look for ...A members that the DLL does not have and
// fail at link time with an obscure message; say it here instead.
#if defined(_WIN32) && !defined(QV_STATIC) && (!defined(UNICODE) || !defined(_UNICODE))
#  error "Quorvel needs UNICODE and _UNICODE defined: link the CMake target Quorvel::quorvel (it carries them) or compile with -DUNICODE -D_UNICODE."
#endif

#if defined(_WIN32) && !defined(QV_STATIC)
#  if defined(QV_BUILDING_DLL)
#    define QV_API __declspec(dllexport)
#  else
#    define QV_API __declspec(dllimport)
#  endif
#else
#  define QV_API
#endif

// Constants of exported classes are enumerators (enum : DWORD { kStyle = ... }),
// not static constexpr data members: a host that takes such a member by
// reference would look for it among the DLL's imports, where it is not.
