// The library object: one static instance for the lifetime of the loaded
// library. Loading registers nothing, creates no windows and starts no
// threads; it only creates the module-name string that error boxes carry.
#pragma once

#include <windows.h>

#include "quorvel/common/api.h"

class QV_API QuorvelApp {
public:
    // Constructed with no application name.
    explicit QuorvelApp(const wchar_t* appName = nullptr);
    virtual ~QuorvelApp();
    QuorvelApp(const QuorvelApp&) = delete;
    QuorvelApp& operator=(const QuorvelApp&) = delete;

    virtual BOOL InitInstance();  // on process attach
    virtual int ExitInstance();   // on process detach

    HINSTANCE m_hInstance = nullptr;
    const wchar_t* m_pszAppName = nullptr;

    // The one instance.
    static QuorvelApp& Instance();
};
