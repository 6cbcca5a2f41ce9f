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
