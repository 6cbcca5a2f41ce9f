// Timing harness under Wine (not a test): what a screen reader waits for
// when it asks a field for its accessible object and its name, against the
// system's own proxy of a plain EDIT. Prints microseconds per question.
#include <windows.h>
#include <oleacc.h>

#include <cstdio>

#include "quorvel/controls/static_text.h"
#include "quorvel/masks/numeric.h"
#include "timing.h"

namespace {

double ObjectAndName(HWND field, int count) {
    return qvbench::MicrosPerCall(count, [&](int) {
        IAccessible* acc = nullptr;
        if (FAILED(::AccessibleObjectFromWindow(field, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                                reinterpret_cast<void**>(&acc))) ||
            !acc)
            return;
        VARIANT self;
        ::VariantInit(&self);
        self.vt = VT_I4;
        self.lVal = CHILDID_SELF;
        BSTR name = nullptr;
        acc->get_accName(self, &name);
        ::SysFreeString(name);
        acc->Release();
    });
}

}  // namespace

int main() {
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    ::CoInitialize(nullptr);
    const qvbench::Host bench;
    XBaseStaticText label;
    label.Create(L"Order &number *", 1, RECT{0, 30, 100, 50}, nullptr, bench.window);
    XMaskIntegerEdit field;
    field.Create(WS_CHILD | WS_TABSTOP, RECT{100, 30, 300, 50}, bench.window, 2);
    const int n = 2000;
    const double raw = ObjectAndName(bench.rawEdit, n);
    const double ours = ObjectAndName(field, n);
    std::printf("Object + name of a plain EDIT (system proxy): %.1f us\n", raw);
    std::printf("Object + name of a library field (label):     %.1f us\n", ours);
    ::DestroyWindow(bench.window);
    ::CoUninitialize();
    return 0;
}
