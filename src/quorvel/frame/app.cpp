#include "quorvel/frame/app.h"

#include <oleauto.h>

#include "quorvel/frame/siblings.h"
#include "quorvel/platform/module.h"

namespace {
BSTR g_moduleName = nullptr;
}

QuorvelApp::QuorvelApp(const wchar_t* appName) : m_pszAppName(appName) {}
QuorvelApp::~QuorvelApp() = default;

BOOL QuorvelApp::InitInstance() {
    m_hInstance = qv::LibraryModule();
    return TRUE;
}

int QuorvelApp::ExitInstance() { return 0; }

QuorvelApp& QuorvelApp::Instance() {
    static QuorvelApp app(nullptr);
    return app;
}

BSTR qv::ModuleNameBstr() { return g_moduleName; }

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
    switch (reason) {
    case DLL_PROCESS_ATTACH:
        g_moduleName = ::SysAllocString(L"Quorvel");
        return QuorvelApp::Instance().InitInstance();
    case DLL_PROCESS_DETACH:
        QuorvelApp::Instance().ExitInstance();
        ::SysFreeString(g_moduleName);
        g_moduleName = nullptr;
        return TRUE;
    default:
        return TRUE;
    }
}
