#include "support/accessibility.h"

#include "support/host.h"

namespace qvtest {
namespace {

std::vector<WinEventRecorder::Event>* g_events = nullptr;

void CALLBACK OnWinEvent(HWINEVENTHOOK, DWORD event, HWND hwnd, LONG object, LONG child, DWORD, DWORD) {
    if (g_events) g_events->push_back({event, hwnd, object, child});
}

VARIANT Child(long id) {
    VARIANT v;
    ::VariantInit(&v);
    v.vt = VT_I4;
    v.lVal = id;
    return v;
}

std::wstring Take(HRESULT hr, BSTR text) {
    std::wstring out;
    if (SUCCEEDED(hr) && text) out.assign(text, ::SysStringLen(text));
    if (text) ::SysFreeString(text);
    return out;
}

}  // namespace

std::wstring Accessible::Name(long child) const {
    if (!object) return {};
    BSTR text = nullptr;
    const HRESULT hr = object->get_accName(Child(child), &text);
    return Take(hr, text);
}

std::wstring Accessible::Value(long child) const {
    if (!object) return {};
    BSTR text = nullptr;
    const HRESULT hr = object->get_accValue(Child(child), &text);
    return Take(hr, text);
}

std::wstring Accessible::Description(long child) const {
    if (!object) return {};
    BSTR text = nullptr;
    const HRESULT hr = object->get_accDescription(Child(child), &text);
    return Take(hr, text);
}

long Accessible::Role(long child) const {
    VARIANT v;
    ::VariantInit(&v);
    if (!object || FAILED(object->get_accRole(Child(child), &v)) || v.vt != VT_I4) return -1;
    return v.lVal;
}

long Accessible::State(long child) const {
    VARIANT v;
    ::VariantInit(&v);
    if (!object || FAILED(object->get_accState(Child(child), &v)) || v.vt != VT_I4) return -1;
    return v.lVal;
}

long Accessible::ChildCount() const {
    long n = -1;
    if (!object || FAILED(object->get_accChildCount(&n))) return -1;
    return n;
}

Accessible AccessibleOf(HWND hwnd) {
    Accessible out;
    IAccessible* acc = nullptr;
    if (SUCCEEDED(::AccessibleObjectFromWindow(hwnd, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                               reinterpret_cast<void**>(&acc))) &&
        acc)
        out.object.Attach(acc);
    return out;
}

WinEventRecorder::WinEventRecorder() {
    static std::vector<Event> events;
    events.clear();
    g_events = &events;
    hook_ = ::SetWinEventHook(EVENT_MIN, EVENT_MAX, nullptr, &OnWinEvent, ::GetCurrentProcessId(), 0,
                              WINEVENT_OUTOFCONTEXT);
}

WinEventRecorder::~WinEventRecorder() {
    if (hook_) ::UnhookWinEvent(hook_);
    g_events = nullptr;
}

std::vector<WinEventRecorder::Event> WinEventRecorder::Events(HWND hwnd, DWORD event) {
    Pump(50);
    std::vector<Event> out;
    if (!g_events) return out;
    for (const Event& e : *g_events) {
        if ((!hwnd || e.hwnd == hwnd) && (!event || e.event == event)) out.push_back(e);
    }
    return out;
}

void WinEventRecorder::Clear() {
    Pump(20);
    if (g_events) g_events->clear();
}

}  // namespace qvtest
