#include "quorvel/platform/accessible.h"

#include <oleacc.h>

#include <commctrl.h>

#include <cwchar>
#include <new>
#include <string>

#include "quorvel/controls/help_text_rules.h"
#include "quorvel/common/boundary.h"
#include "quorvel/platform/com.h"
#include "quorvel/platform/window.h"

namespace qv {
namespace {

std::wstring ClassOf(HWND hwnd) {
    wchar_t name[64] = {};
    ::GetClassNameW(hwnd, name, 64);
    return name;
}

bool ClassIs(const std::wstring& cls, const wchar_t* name) { return ::_wcsicmp(cls.c_str(), name) == 0; }

// Windows whose stock accessible name would be their content (an edit's text,
// a list's selection): they take their name from the label before them.
bool NamedByLabel(HWND hwnd) {
    const std::wstring cls = ClassOf(hwnd);
    if (ClassIs(cls, L"Static")) {
        // A library field drawn on a static (search field, read-only field,
        // script button group): a field, unless it shows its own text.
        return ::GetWindowTextLengthW(hwnd) == 0;
    }
    return ClassIs(cls, L"Edit") || ClassIs(cls, L"ComboBox") || ClassIs(cls, L"ListBox") ||
           ClassIs(cls, WC_LISTVIEWW) || ClassIs(cls, L"SysDateTimePick32") || ClassIs(cls, L"RichEdit20W") ||
           ClassIs(cls, L"RICHEDIT50W") || ClassIs(cls, L"RichEdit");
}

// Fields whose value is their text (not for a password, whose text is
// never read out).
bool ShowsValueAsText(HWND hwnd) {
    const std::wstring cls = ClassOf(hwnd);
    const auto style = static_cast<DWORD>(::GetWindowLongPtrW(hwnd, GWL_STYLE));
    if (ClassIs(cls, L"Edit")) return !(style & ES_PASSWORD);
    return ClassIs(cls, L"RichEdit20W") || ClassIs(cls, L"RICHEDIT50W") || ClassIs(cls, L"ComboBox");
}

AccessibleSource* SourceOf(HWND hwnd) {
    if (!hwnd || !::IsWindow(hwnd)) return nullptr;
    return dynamic_cast<AccessibleSource*>(Window::FromHandle(hwnd));
}

HRESULT ToBstr(const std::wstring& text, BSTR* out) {
    *out = ::SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    return *out ? S_OK : E_OUTOFMEMORY;
}

bool IsSelf(const VARIANT& child) { return child.vt == VT_I4 && child.lVal == CHILDID_SELF; }

// The standard proxy of a window, with the library's answers laid over it.
// Every call looks the control up again by its window handle: nothing here
// points into a window object that may be gone.
class Overlay final : public IAccessible, public IOleWindow {
public:
    Overlay(HWND hwnd, IAccessible* inner) : hwnd_(hwnd), inner_(inner) {}

    // IUnknown
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        if (!out) return E_POINTER;
        *out = nullptr;
        if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) || IsEqualIID(iid, IID_IAccessible)) {
            *out = static_cast<IAccessible*>(this);
        } else if (IsEqualIID(iid, IID_IOleWindow)) {
            *out = static_cast<IOleWindow*>(this);
        } else if (IsEqualIID(iid, IID_IEnumVARIANT) && !OwnCount(nullptr)) {
            // The proxy's enumeration of its own children; a control with
            // items of its own is enumerated through get_accChild instead.
            return inner_->QueryInterface(iid, out);
        } else {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(::InterlockedIncrement(&refs_)); }
    ULONG STDMETHODCALLTYPE Release() override {
        const LONG left = ::InterlockedDecrement(&refs_);
        if (left == 0) delete this;
        return static_cast<ULONG>(left);
    }

    // IOleWindow: WindowFromAccessibleObject finds the control through it.
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* hwnd) override {
        if (!hwnd) return E_POINTER;
        *hwnd = hwnd_;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }

    // IDispatch: the proxy's.
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* n) override { return inner_->GetTypeInfoCount(n); }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT i, LCID l, ITypeInfo** t) override { return inner_->GetTypeInfo(i, l, t); }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID r, LPOLESTR* n, UINT c, LCID l, DISPID* d) override {
        return inner_->GetIDsOfNames(r, n, c, l, d);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID d, REFIID r, LCID l, WORD f, DISPPARAMS* p, VARIANT* v, EXCEPINFO* e,
                                     UINT* a) override {
        return inner_->Invoke(d, r, l, f, p, v, e, a);
    }

    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** p) override { return inner_->get_accParent(p); }

    HRESULT STDMETHODCALLTYPE get_accChildCount(long* n) override {
        if (!n) return E_POINTER;
        if (OwnCount(n)) return S_OK;
        return inner_->get_accChildCount(n);
    }

    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** out) override {
        if (!out) return E_POINTER;
        long count = 0;
        if (OwnCount(&count)) {
            *out = nullptr;
            // Items are simple elements: the caller asks this object about them.
            return child.vt == VT_I4 && child.lVal >= 1 && child.lVal <= count ? S_FALSE : E_INVALIDARG;
        }
        return inner_->get_accChild(child, out);
    }

    HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* out) override {
        if (!out) return E_POINTER;
        *out = nullptr;
        std::wstring text;
        if (Ask(child, [&](AccessibleSource& s, long id) { return s.AccessibleName(id, text); })) return ToBstr(text, out);
        if (IsSelf(child) && ::IsWindow(hwnd_)) {
            if (NamedByLabel(hwnd_)) {
                // Ours even when empty: the system's proxy would take any
                // static before the field, a read-only field's value too.
                return ToBstr(AccessibleLabelOf(hwnd_), out);
            } else {
                const std::wstring cls = ClassOf(hwnd_);
                if (ClassIs(cls, L"Static") || ClassIs(cls, L"Button")) return ToBstr(AccessibleTextOf(hwnd_), out);
            }
        }
        return inner_->get_accName(child, out);
    }

    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* out) override {
        if (!out) return E_POINTER;
        *out = nullptr;
        std::wstring text;
        if (Ask(child, [&](AccessibleSource& s, long id) { return s.AccessibleValue(id, text); })) return ToBstr(text, out);
        if (IsSelf(child) && ShowsValueAsText(hwnd_)) {
            const int len = ::GetWindowTextLengthW(hwnd_);
            text.assign(static_cast<size_t>(len > 0 ? len : 0) + 1, L'\0');
            ::GetWindowTextW(hwnd_, text.data(), len + 1);
            text.resize(::wcslen(text.c_str()));
            return ToBstr(text, out);
        }
        return inner_->get_accValue(child, out);
    }

    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* out) override {
        if (!out) return E_POINTER;
        *out = nullptr;
        std::wstring text;
        if (Ask(child, [&](AccessibleSource& s, long id) { return s.AccessibleDescription(id, text); }))
            return ToBstr(text, out);
        return inner_->get_accDescription(child, out);
    }

    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* out) override {
        if (!out) return E_POINTER;
        long role = 0;
        if (Ask(child, [&](AccessibleSource& s, long id) { return s.AccessibleRole(id, role); })) {
            ::VariantInit(out);
            out->vt = VT_I4;
            out->lVal = role;
            return S_OK;
        }
        return inner_->get_accRole(child, out);
    }

    HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* out) override {
        if (!out) return E_POINTER;
        long state = 0;
        if (Ask(child, [&](AccessibleSource& s, long id) { return s.AccessibleState(id, state); })) {
            ::VariantInit(out);
            out->vt = VT_I4;
            out->lVal = state;
            return S_OK;
        }
        return inner_->get_accState(child, out);
    }

    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT c, BSTR* h) override { return inner_->get_accHelp(c, h); }
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* f, VARIANT c, long* t) override {
        return inner_->get_accHelpTopic(f, c, t);
    }
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT c, BSTR* k) override {
        return inner_->get_accKeyboardShortcut(c, k);
    }
    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* c) override { return inner_->get_accFocus(c); }
    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* c) override { return inner_->get_accSelection(c); }

    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* out) override {
        if (!out) return E_POINTER;
        *out = nullptr;
        std::wstring text;
        if (Ask(child, [&](AccessibleSource& s, long id) { return s.AccessibleDefaultAction(id, text); }))
            return ToBstr(text, out);
        return inner_->get_accDefaultAction(child, out);
    }

    HRESULT STDMETHODCALLTYPE accSelect(long f, VARIANT c) override { return inner_->accSelect(f, c); }

    HRESULT STDMETHODCALLTYPE accLocation(long* l, long* t, long* w, long* h, VARIANT child) override {
        if (!l || !t || !w || !h) return E_POINTER;
        RECT rect{};
        if (!IsSelf(child) &&
            Ask(child, [&](AccessibleSource& s, long id) { return s.AccessibleItemRect(id, rect); })) {
            POINT corner{rect.left, rect.top};
            ::ClientToScreen(hwnd_, &corner);
            *l = corner.x;
            *t = corner.y;
            *w = rect.right - rect.left;
            *h = rect.bottom - rect.top;
            return S_OK;
        }
        return inner_->accLocation(l, t, w, h, child);
    }

    HRESULT STDMETHODCALLTYPE accNavigate(long dir, VARIANT start, VARIANT* end) override {
        if (!end) return E_POINTER;
        long count = 0;
        if (OwnCount(&count) && start.vt == VT_I4) {
            long to = 0;
            const long from = start.lVal;
            if (from == CHILDID_SELF && dir == NAVDIR_FIRSTCHILD) to = 1;
            else if (from == CHILDID_SELF && dir == NAVDIR_LASTCHILD) to = count;
            else if (from > 0 && (dir == NAVDIR_NEXT || dir == NAVDIR_DOWN)) to = from + 1;
            else if (from > 0 && (dir == NAVDIR_PREVIOUS || dir == NAVDIR_UP)) to = from - 1;
            else if (from == CHILDID_SELF) return inner_->accNavigate(dir, start, end);
            ::VariantInit(end);
            if (to < 1 || to > count) return S_FALSE;
            end->vt = VT_I4;
            end->lVal = to;
            return S_OK;
        }
        return inner_->accNavigate(dir, start, end);
    }

    HRESULT STDMETHODCALLTYPE accHitTest(long x, long y, VARIANT* out) override {
        if (!out) return E_POINTER;
        if (AccessibleSource* source = SourceOf(hwnd_)) {
            POINT pt{x, y};
            ::ScreenToClient(hwnd_, &pt);
            RECT client{};
            ::GetClientRect(hwnd_, &client);
            long child = 0;
            bool found = false;
            try {
                found = ::PtInRect(&client, pt) && source->AccessibleHitTest(pt, child);
            } catch (...) {
                CaughtAtEdge("qv::Overlay::accHitTest", __LINE__);
            }
            if (found) {
                ::VariantInit(out);
                out->vt = VT_I4;
                out->lVal = child;
                return S_OK;
            }
        }
        return inner_->accHitTest(x, y, out);
    }

    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override {
        if (Ask(child, [&](AccessibleSource& s, long id) { return s.AccessibleDoDefaultAction(id); })) return S_OK;
        return inner_->accDoDefaultAction(child);
    }
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT c, BSTR n) override { return inner_->put_accName(c, n); }
    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT c, BSTR v) override { return inner_->put_accValue(c, v); }

private:
    ~Overlay() = default;

    bool OwnCount(long* count) {
        long n = 0;
        const bool own = Ask(CHILDID_SELF, [&](AccessibleSource& s, long) { return s.AccessibleChildCount(n); });
        if (own && count) *count = n;
        return own;
    }

    // Asks the control's source, if it still has one; a throwing source
    // counts as not answering (the reader gets the proxy's answer).
    template <class F>
    bool Ask(long child, F&& f) {
        AccessibleSource* source = SourceOf(hwnd_);
        if (!source) return false;
        try {
            return f(*source, child);
        } catch (...) {
            CaughtAtEdge("qv::Overlay::Ask", __LINE__);
            return false;
        }
    }
    template <class F>
    bool Ask(const VARIANT& child, F&& f) {
        if (child.vt != VT_I4) return false;
        return Ask(child.lVal, static_cast<F&&>(f));
    }

    HWND hwnd_;
    ComPtr<IAccessible> inner_;
    LONG refs_ = 1;
};

bool IsLabelWindow(HWND hwnd) {
    const std::wstring cls = ClassOf(hwnd);
    const auto style = static_cast<DWORD>(::GetWindowLongPtrW(hwnd, GWL_STYLE));
    // A static with windows inside is a library field (a search field, a
    // read-only field) whose text is its value, not a label.
    if (ClassIs(cls, L"Static")) return ::GetWindowTextLengthW(hwnd) > 0 && !::GetWindow(hwnd, GW_CHILD);
    if (ClassIs(cls, L"Button")) return (style & BS_TYPEMASK) == BS_GROUPBOX;
    // A prompt: a read-only multi-line edit the user cannot tab to.
    if (ClassIs(cls, L"Edit")) return (style & ES_READONLY) && (style & ES_MULTILINE) && !(style & WS_TABSTOP);
    return false;
}

}  // namespace

LRESULT AnswerGetObject(HWND hwnd, WPARAM wp, LPARAM lp) {
    if (!hwnd || !::IsWindow(hwnd) || static_cast<LONG>(lp) != static_cast<LONG>(OBJID_CLIENT)) return 0;
    IAccessible* standard = nullptr;
    if (FAILED(::CreateStdAccessibleObject(hwnd, OBJID_CLIENT, IID_IAccessible, reinterpret_cast<void**>(&standard))) ||
        !standard)
        return 0;
    auto* overlay = new (std::nothrow) Overlay(hwnd, standard);
    standard->Release();  // the overlay holds its own reference
    if (!overlay) return 0;
    const LRESULT result = ::LresultFromObject(IID_IAccessible, wp, static_cast<IAccessible*>(overlay));
    overlay->Release();
    return result < 0 ? 0 : result;
}

void RaiseAccessibleEvent(HWND hwnd, DWORD event, long child) {
    if (!hwnd || !::IsWindow(hwnd)) return;
    ::NotifyWinEvent(event, hwnd, OBJID_CLIENT, child);
}

std::wstring AccessibleTextOf(HWND hwnd) {
    if (!hwnd || !::IsWindow(hwnd)) return {};
    const int len = ::GetWindowTextLengthW(hwnd);
    std::wstring text(static_cast<size_t>(len > 0 ? len : 0) + 1, L'\0');
    ::GetWindowTextW(hwnd, text.data(), len + 1);
    text.resize(::wcslen(text.c_str()));  // some fields count the terminator in
    return AccessibleLabelName(text);
}

std::wstring AccessibleLabelOf(HWND hwnd) {
    if (!hwnd || !::IsWindow(hwnd)) return {};
    // The label comes before its field in the tab order; a control the
    // user can tab to in between means the field has no label of its own.
    for (HWND prev = ::GetWindow(hwnd, GW_HWNDPREV); prev; prev = ::GetWindow(prev, GW_HWNDPREV)) {
        if (!::IsWindowVisible(prev)) continue;
        if (IsLabelWindow(prev)) return AccessibleTextOf(prev);
        if (::GetWindowLongPtrW(prev, GWL_STYLE) & WS_TABSTOP) return {};
    }
    // The edit inside a library field (a search field, a field with a script
    // button) has no label of its own: the field's label names it.
    // Any library control that holds fields counts (a static-based field,
    // the script container's own class); a dialog does not: its fields are
    // the host's, each with a label of its own or none.
    HWND parent = ::GetParent(hwnd);
    if (parent && (::GetWindowLongPtrW(parent, GWL_STYLE) & WS_CHILD) && !ClassIs(ClassOf(parent), L"#32770") &&
        Window::FromHandle(parent))
        return AccessibleLabelOf(parent);
    return {};
}

}  // namespace qv
