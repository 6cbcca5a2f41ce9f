// Embedded, in-process implementations of the host application's data
// object, query and session-data manager, so that the value-added control
// runs in a program without the host's COM servers: a demo, a test, or a
// host that keeps its plan data elsewhere fills them itself.
//
// Each is a real COM object living by reference count: CreateInstance hands
// out the first reference, Release frees it. Related objects and attribute
// values are held counted and copied; a host that makes two objects each
// other's related object makes a cycle that it must break itself
// (SetRelatedObject(key, nullptr)).
#pragma once

#include <windows.h>
#include <oaidl.h>

#include "quorvel/common/api.h"
#include "quorvel/frame/session.h"
#include "quorvel/frame/va_config.h"

namespace qv {

// The reference count and interface answer the three objects share: the
// first reference comes with the object, the last Release deletes it.
template <class Derived, class Interface>
class ComObject : public Interface {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        if (!out) return E_POINTER;
        if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, Derived::OwnIid())) {
            *out = static_cast<Interface*>(this);
            AddRef();
            return S_OK;
        }
        *out = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(::InterlockedIncrement(&refs_)); }
    ULONG STDMETHODCALLTYPE Release() override {
        const LONG left = ::InterlockedDecrement(&refs_);
        if (left == 0) delete static_cast<Derived*>(this);
        return static_cast<ULONG>(left);
    }

protected:
    ComObject() = default;
    ~ComObject() = default;

private:
    LONG refs_ = 1;
};

// A data object: a type name, attributes by name, related objects by key.
class QV_API DataObject final : public ComObject<DataObject, IZT_BaseDataObject> {
public:
    static HRESULT CreateInstance(DataObject** out);
    static const IID& OwnIid() { return IID_IZT_BaseDataObject; }
    // IZT_BaseDataObject. E_INVALIDARG for a null out-pointer or name,
    // S_FALSE (and null, or an empty value) for what the object lacks.
    HRESULT STDMETHODCALLTYPE GetRelatedObject(BSTR key, IZT_BaseDataObject** related) override;
    HRESULT STDMETHODCALLTYPE GetTypeName(BSTR* name) override;
    HRESULT STDMETHODCALLTYPE GetAttributeValue(BSTR name, VARIANT* value) override;

    // Filling. Names and keys are compared exactly.
    HRESULT SetTypeName(const wchar_t* name);
    HRESULT SetAttribute(const wchar_t* name, const VARIANT& value);
    HRESULT SetAttribute(const wchar_t* name, double value);
    // Null removes the related object.
    HRESULT SetRelatedObject(const wchar_t* key, IZT_BaseDataObject* object);

private:
    friend class ComObject<DataObject, IZT_BaseDataObject>;
    DataObject();
    ~DataObject();
    struct Impl;
    Impl* impl_;
};

// A query: the control only passes it to the configuration factory.
class QV_API Query final : public ComObject<Query, IZT_Query> {
public:
    static HRESULT CreateInstance(Query** out);
    static const IID& OwnIid() { return IID_IZT_Query; }

private:
    friend class ComObject<Query, IZT_Query>;
    Query() = default;
    ~Query() = default;
};

// The session-data manager that answers from the library's settings service
// (Services::Settings(): the embedded store, or the host's own manager when
// the host named it). A requested type other than VT_BSTR is converted with
// VariantChangeType; a value that is absent, empty or does not convert
// answers S_FALSE with an empty value.
class QV_API SessionDataManager final : public ComObject<SessionDataManager, IZT_SessionDataMng> {
public:
    static HRESULT CreateInstance(SessionDataManager** out);
    static const IID& OwnIid() { return IID_IZT_SessionDataMng; }
    HRESULT STDMETHODCALLTYPE Reserved4() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved5() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved6() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved7() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved8() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved9() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetSessionValue(BSTR section, BSTR name, long type, VARIANT* value,
                                              long flag) override;

private:
    friend class ComObject<SessionDataManager, IZT_SessionDataMng>;
    SessionDataManager() = default;
    ~SessionDataManager() = default;
};

}  // namespace qv
