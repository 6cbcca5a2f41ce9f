#include "quorvel/platform/module.h"

namespace qv {

HINSTANCE LibraryModule() noexcept {
    static HINSTANCE module = [] {
        HMODULE h = nullptr;
        ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                             reinterpret_cast<LPCWSTR>(&LibraryModule), &h);
        return static_cast<HINSTANCE>(h);
    }();
    return module;
}

HBITMAP LoadLibraryBitmap(UINT id) noexcept {
    return static_cast<HBITMAP>(::LoadImageW(LibraryModule(), MAKEINTRESOURCEW(id), IMAGE_BITMAP, 0, 0,
                                             LR_DEFAULTCOLOR));
}

}  // namespace qv
