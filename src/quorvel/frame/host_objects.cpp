#include "quorvel/frame/host_objects.h"

#include <map>
#include <new>
#include <string>

#include "quorvel/common/boundary.h"
#include "quorvel/frame/services.h"
#include "quorvel/platform/com.h"

namespace qv {

namespace {

std::wstring Key(const wchar_t* text) { return text ? std::wstring(text) : std::wstring(); }
std::wstring Key(BSTR text) { return text ? std::wstring(text, ::SysStringLen(text)) : std::wstring(); }

}  // namespace

// ---- DataObject ----------------------------------------------------------------------

struct DataObject::Impl {
    std::wstring typeName;
    std::map<std::wstring, Variant> attributes;
    std::map<std::wstring, ComPtr<IZT_BaseDataObject>> related;
};

DataObject::DataObject() : impl_(new Impl) {}
DataObject::~DataObject() { delete impl_; }

HRESULT DataObject::CreateInstance(DataObject** out) try {
    if (!out) return E_POINTER;
    *out = new (std::nothrow) DataObject;
    return *out ? S_OK : E_OUTOFMEMORY;
} catch (...) {
    return CaughtAtEdge(" qv::DataObject::CreateInstance", __LINE__, E_OUTOFMEMORY);
}


HRESULT DataObject::GetRelatedObject(BSTR key, IZT_BaseDataObject** related) try {
    if (!related) return E_INVALIDARG;
    *related = nullptr;
    const auto found = impl_->related.find(Key(key));
    if (found == impl_->related.end() || !found->second) return S_FALSE;
    *related = found->second.Get();
    (*related)->AddRef();
    return S_OK;
} catch (...) {
    return CaughtAtEdge(" qv::DataObject::GetRelatedObject", __LINE__, E_FAIL);
}

HRESULT DataObject::GetTypeName(BSTR* name) try {
    if (!name) return E_INVALIDARG;
    *name = ::SysAllocStringLen(impl_->typeName.data(), static_cast<UINT>(impl_->typeName.size()));
    return *name ? S_OK : E_OUTOFMEMORY;
} catch (...) {
    return CaughtAtEdge(" qv::DataObject::GetTypeName", __LINE__, E_FAIL);
}

HRESULT DataObject::GetAttributeValue(BSTR name, VARIANT* value) try {
    if (!value) return E_INVALIDARG;
    ::VariantInit(value);
    const auto found = impl_->attributes.find(Key(name));
    if (found == impl_->attributes.end()) return S_FALSE;
    return ::VariantCopy(value, &found->second);
} catch (...) {
    return CaughtAtEdge(" qv::DataObject::GetAttributeValue", __LINE__, E_FAIL);
}

HRESULT DataObject::SetTypeName(const wchar_t* name) try {
    impl_->typeName = Key(name);
    return S_OK;
} catch (...) {
    return CaughtAtEdge(" qv::DataObject::SetTypeName", __LINE__, E_OUTOFMEMORY);
}

HRESULT DataObject::SetAttribute(const wchar_t* name, const VARIANT& value) try {
    if (!name) return E_INVALIDARG;
    Variant copy;
    const HRESULT hr = ::VariantCopy(&copy, const_cast<VARIANT*>(&value));
    if (FAILED(hr)) return hr;
    impl_->attributes[Key(name)] = std::move(copy);
    return S_OK;
} catch (...) {
    return CaughtAtEdge(" qv::DataObject::SetAttribute", __LINE__, E_OUTOFMEMORY);
}

HRESULT DataObject::SetAttribute(const wchar_t* name, double value) { return SetAttribute(name, Variant(value)); }

HRESULT DataObject::SetRelatedObject(const wchar_t* key, IZT_BaseDataObject* object) try {
    if (!key) return E_INVALIDARG;
    if (!object) {
        impl_->related.erase(Key(key));
        return S_OK;
    }
    impl_->related[Key(key)] = object;
    return S_OK;
} catch (...) {
    return CaughtAtEdge(" qv::DataObject::SetRelatedObject", __LINE__, E_OUTOFMEMORY);
}

// ---- Query --------------------------------------------------------------------------------

HRESULT Query::CreateInstance(Query** out) {
    if (!out) return E_POINTER;
    *out = new (std::nothrow) Query;
    return *out ? S_OK : E_OUTOFMEMORY;
}

// ---- SessionDataManager ----------------------------------------------------------------

HRESULT SessionDataManager::CreateInstance(SessionDataManager** out) {
    if (!out) return E_POINTER;
    *out = new (std::nothrow) SessionDataManager;
    return *out ? S_OK : E_OUTOFMEMORY;
}

HRESULT SessionDataManager::GetSessionValue(BSTR section, BSTR name, long type, VARIANT* value, long flag) try {
    if (!value) return E_INVALIDARG;
    ::VariantInit(value);
    std::wstring text;
    if (!Services::Settings().GetSessionValue(Key(section), Key(name), flag, text) || text.empty()) return S_FALSE;
    Variant result(text);
    if (type != VT_BSTR && FAILED(::VariantChangeType(&result, &result, 0, static_cast<VARTYPE>(type))))
        return S_FALSE;
    std::memcpy(value, static_cast<VARIANT*>(&result), sizeof(VARIANT));
    ::VariantInit(&result);
    return S_OK;
} catch (...) {
    return CaughtAtEdge(" qv::SessionDataManager::GetSessionValue", __LINE__, E_FAIL);
}

}  // namespace qv
