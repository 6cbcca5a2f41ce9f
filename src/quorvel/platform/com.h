// COM helpers: a counted interface pointer, an owning BSTR, an owning
// VARIANT, and a CoInitialize scope. Header-only and exception-free.
#pragma once

#include <windows.h>
#include <oleauto.h>
#include <unknwn.h>

#include <cstring>
#include <string>
#include <string_view>
#include <utility>

namespace qv {

template <class T>
class ComPtr {
public:
    ComPtr() noexcept = default;
    ComPtr(T* p) noexcept : p_(p) { if (p_) p_->AddRef(); }  // NOLINT: implicit like the framework's
    ComPtr(const ComPtr& o) noexcept : ComPtr(o.p_) {}
    ComPtr(ComPtr&& o) noexcept : p_(std::exchange(o.p_, nullptr)) {}
    ~ComPtr() { Reset(); }
    ComPtr& operator=(const ComPtr& o) noexcept { ComPtr(o).Swap(*this); return *this; }
    ComPtr& operator=(ComPtr&& o) noexcept { ComPtr(std::move(o)).Swap(*this); return *this; }
    ComPtr& operator=(T* p) noexcept { ComPtr(p).Swap(*this); return *this; }

    T* Get() const noexcept { return p_; }
    T* operator->() const noexcept { return p_; }
    explicit operator bool() const noexcept { return p_ != nullptr; }
    // Releases what is held and gives the slot to an out-parameter.
    T** operator&() noexcept { Reset(); return &p_; }
    void Reset() noexcept { if (T* p = std::exchange(p_, nullptr)) p->Release(); }
    void Attach(T* p) noexcept { Reset(); p_ = p; }
    T* Detach() noexcept { return std::exchange(p_, nullptr); }
    void Swap(ComPtr& o) noexcept { std::swap(p_, o.p_); }

    HRESULT CoCreateInstance(REFCLSID clsid, REFIID iid, DWORD context = CLSCTX_ALL) noexcept {
        Reset();
        return ::CoCreateInstance(clsid, nullptr, context, iid, reinterpret_cast<void**>(&p_));
    }
    template <class U>
    HRESULT QueryInterface(REFIID iid, ComPtr<U>& out) const noexcept {
        if (!p_) return E_POINTER;
        return p_->QueryInterface(iid, reinterpret_cast<void**>(&out));
    }

private:
    T* p_ = nullptr;
};

// An owning BSTR.
class Bstr {
public:
    Bstr() noexcept = default;
    explicit Bstr(const wchar_t* s) : b_(s ? ::SysAllocString(s) : nullptr) {}
    explicit Bstr(std::wstring_view s) : b_(::SysAllocStringLen(s.data(), static_cast<UINT>(s.size()))) {}
    Bstr(const Bstr& o) : b_(o.b_ ? ::SysAllocStringLen(o.b_, ::SysStringLen(o.b_)) : nullptr) {}
    Bstr(Bstr&& o) noexcept : b_(std::exchange(o.b_, nullptr)) {}
    ~Bstr() { ::SysFreeString(b_); }
    Bstr& operator=(Bstr o) noexcept { std::swap(b_, o.b_); return *this; }

    BSTR Get() const noexcept { return b_; }
    operator BSTR() const noexcept { return b_; }  // NOLINT
    BSTR* operator&() noexcept { Reset(); return &b_; }
    void Reset() noexcept { ::SysFreeString(std::exchange(b_, nullptr)); }
    void Attach(BSTR b) noexcept { Reset(); b_ = b; }
    BSTR Detach() noexcept { return std::exchange(b_, nullptr); }
    UINT Length() const noexcept { return b_ ? ::SysStringLen(b_) : 0; }
    std::wstring Str() const { return b_ ? std::wstring(b_, ::SysStringLen(b_)) : std::wstring(); }

private:
    BSTR b_ = nullptr;
};

// An owning VARIANT.
class Variant : public VARIANT {
public:
    Variant() noexcept { ::VariantInit(this); }
    explicit Variant(std::wstring_view s) noexcept {
        ::VariantInit(this);
        vt = VT_BSTR;
        bstrVal = ::SysAllocStringLen(s.data(), static_cast<UINT>(s.size()));
    }
    // A null pointer gives an empty text, as the empty string would.
    explicit Variant(const wchar_t* s) noexcept : Variant(std::wstring_view(s ? s : L"")) {}
    explicit Variant(long v) noexcept { ::VariantInit(this); vt = VT_I4; lVal = v; }
    explicit Variant(int v) noexcept { ::VariantInit(this); vt = VT_I4; lVal = v; }
    explicit Variant(long long v) noexcept { ::VariantInit(this); vt = VT_I8; llVal = v; }
    explicit Variant(unsigned long long v) noexcept { ::VariantInit(this); vt = VT_UI8; ullVal = v; }
    explicit Variant(double v) noexcept { ::VariantInit(this); vt = VT_R8; dblVal = v; }
    explicit Variant(bool v) noexcept { ::VariantInit(this); vt = VT_BOOL; boolVal = v ? VARIANT_TRUE : VARIANT_FALSE; }
    // A copy of any VARIANT (VariantCopy; empty when the copy fails).
    explicit Variant(const VARIANT& v) noexcept { ::VariantInit(this); ::VariantCopy(this, const_cast<VARIANT*>(&v)); }
    Variant(const Variant& o) noexcept { ::VariantInit(this); ::VariantCopy(this, const_cast<VARIANT*>(static_cast<const VARIANT*>(&o))); }
    // Moving hands the value over and leaves the source empty.
    Variant(Variant&& o) noexcept {
        std::memcpy(static_cast<VARIANT*>(this), static_cast<VARIANT*>(&o), sizeof(VARIANT));
        ::VariantInit(&o);
    }
    Variant& operator=(const Variant& o) noexcept {
        if (this != &o) ::VariantCopy(this, const_cast<VARIANT*>(static_cast<const VARIANT*>(&o)));
        return *this;
    }
    Variant& operator=(Variant&& o) noexcept {
        if (this != &o) {
            ::VariantClear(this);
            std::memcpy(static_cast<VARIANT*>(this), static_cast<VARIANT*>(&o), sizeof(VARIANT));
            ::VariantInit(&o);
        }
        return *this;
    }
    ~Variant() { ::VariantClear(this); }

    // A date and time (VT_DATE); a DATE is a double, so it has a factory of
    // its own rather than a constructor.
    static Variant FromDate(DATE date) noexcept {
        Variant v;
        v.vt = VT_DATE;
        v.date = date;
        return v;
    }
    // The database null (VT_NULL).
    static Variant Null() noexcept {
        Variant v;
        v.vt = VT_NULL;
        return v;
    }

    // VarCmp of this value with `other`: VARCMP_LT, VARCMP_EQ or VARCMP_GT,
    // VARCMP_NULL when one of them is null, or the error of two values that
    // do not compare. Two nulls are equal.
    HRESULT Compare(const VARIANT& other, LCID lcid = LOCALE_USER_DEFAULT, ULONG flags = 0) const noexcept {
        if (vt == VT_NULL && other.vt == VT_NULL) return VARCMP_EQ;
        return ::VarCmp(const_cast<Variant*>(this), const_cast<VARIANT*>(&other), lcid, flags);
    }

    HRESULT Clear() noexcept { return ::VariantClear(this); }
    // Converts in place (VariantChangeType with the user's locale rules).
    HRESULT ChangeType(VARTYPE to) noexcept { return ::VariantChangeType(this, this, 0, to); }
    bool IsEmpty() const noexcept { return vt == VT_EMPTY || vt == VT_NULL; }
    // The text of a VT_BSTR variant, else "".
    std::wstring Text() const {
        return vt == VT_BSTR && bstrVal ? std::wstring(bstrVal, ::SysStringLen(bstrVal)) : std::wstring();
    }
};

// CoInitialize(NULL) for a scope; uninitialises only what it initialised.
class ComInit {
public:
    ComInit() noexcept : hr_(::CoInitialize(nullptr)) {}
    ~ComInit() { if (SUCCEEDED(hr_)) ::CoUninitialize(); }
    ComInit(const ComInit&) = delete;
    ComInit& operator=(const ComInit&) = delete;
    bool Succeeded() const noexcept { return SUCCEEDED(hr_); }
    HRESULT Result() const noexcept { return hr_; }

private:
    HRESULT hr_;
};

}  // namespace qv
