// Export macro of quorvel.dll. Classes and functions marked QV_API are the
// library's interface; the native model build (QV_STATIC) has no DLL.
#pragma once

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
