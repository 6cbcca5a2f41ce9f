// The value-added configuration of a plan and the host objects it is read
// from. The host's configuration library answers these from its data; the
// embedded default factory answers from a configuration that the host (or a
// demo) fills with SetConfiguration, so the value-added control runs without
// the host's libraries.
#pragma once

#include <windows.h>
#include <oaidl.h>

#include <string>
#include <vector>

#include "quorvel/common/api.h"
#include "quorvel/platform/com.h"

// {5B7E0C41-2D8A-4E53-9F61-3C0A7D2B9E14}: the library's id for the data
// object interface (a host whose objects answer another id wraps them).
inline constexpr IID IID_IZT_BaseDataObject = {
    0x5b7e0c41, 0x2d8a, 0x4e53, {0x9f, 0x61, 0x3c, 0x0a, 0x7d, 0x2b, 0x9e, 0x14}};
// {8C2F4A17-6B3D-4F0E-A5C9-71E2D04B6A38}
inline constexpr IID IID_IZT_Query = {
    0x8c2f4a17, 0x6b3d, 0x4f0e, {0xa5, 0xc9, 0x71, 0xe2, 0xd0, 0x4b, 0x6a, 0x38}};

// A data object of the host: related objects by key, type name, attributes.
struct IZT_BaseDataObject : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE GetRelatedObject(BSTR key, IZT_BaseDataObject** related) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTypeName(BSTR* name) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAttributeValue(BSTR name, VARIANT* value) = 0;
};

// A query of the host; the library only passes it on.
struct IZT_Query : public IUnknown {};

// One configuration item: a group (parent id 0) or a process step.
struct tagVACONFIGITEM {
    long lId = 0;
    long lParentId = 0;
    std::wstring strName;    // display name
    std::wstring strBitmap;  // bitmap base name (file name without extension)
    bool bShown = true;      // a child that is not shown gets no row
};

class QV_API XVAConfig {
public:
    XVAConfig();
    virtual ~XVAConfig();
    XVAConfig(const XVAConfig& other);
    // A copy that fails (no memory) is logged and leaves the target as it was.
    XVAConfig& operator=(const XVAConfig& other);
    void Swap(XVAConfig& other) noexcept;

    // The groups in configuration order.
    int GetGroups(std::vector<tagVACONFIGITEM>& items) const;
    // The children of a group in order.
    int GetChilds(long parent, std::vector<tagVACONFIGITEM>& items) const;
    int HasChilds(long parent) const;
    long GetNumChilds(long parent) const;

    // Filling (used by the factories).
    void SetItems(const std::vector<tagVACONFIGITEM>& items);
    const std::vector<tagVACONFIGITEM>& Items() const;

private:
    std::vector<tagVACONFIGITEM>* items_;
};

class QV_API XVAConfigFactory {
public:
    virtual ~XVAConfigFactory() = default;
    // The process-wide factory: the host's when installed, else the embedded one.
    static XVAConfigFactory* GetConfigFactory();
    // Installs the host's factory (null restores the embedded one).
    static void SetConfigFactory(XVAConfigFactory* factory);

    // Prepares the configuration of a plan-type set; non-zero on success.
    virtual int InitPlanTypeSetVAConfig(qv::ComPtr<IZT_BaseDataObject> object, qv::ComPtr<IZT_Query> query);
    // Copies the configuration of a plan-type set; non-zero on success.
    virtual int GetVAConfig(qv::ComPtr<IZT_BaseDataObject> object, XVAConfig& config);

    // The embedded factory's configuration, given to every plan-type set.
    void SetConfiguration(const XVAConfig& config);

protected:
    XVAConfigFactory() = default;

private:
    XVAConfig config_;
    friend XVAConfigFactory& EmbeddedVAConfigFactory();
};
