#include "quorvel/frame/va_config.h"

#include <utility>

#include "quorvel/common/boundary.h"

XVAConfig::XVAConfig() : items_(new std::vector<tagVACONFIGITEM>) {}
XVAConfig::~XVAConfig() { delete items_; }
XVAConfig::XVAConfig(const XVAConfig& other) : items_(new std::vector<tagVACONFIGITEM>(*other.items_)) {}
// A copy that fails (no memory) leaves the configuration as it was.
XVAConfig& XVAConfig::operator=(const XVAConfig& other) try {
    if (this != &other) {
        std::vector<tagVACONFIGITEM> copy(*other.items_);
        items_->swap(copy);
    }
    return *this;
} catch (...) {
    qv::CaughtAtEdge(" XVAConfig::operator=", __LINE__);
    return *this;
}

void XVAConfig::Swap(XVAConfig& other) noexcept { std::swap(items_, other.items_); }

int XVAConfig::GetGroups(std::vector<tagVACONFIGITEM>& items) const try {
    items.clear();
    for (const auto& item : *items_)
        if (item.lParentId == 0) items.push_back(item);
    return 1;
} catch (...) {
    return qv::CaughtAtEdge(" XVAConfig::GetGroups", __LINE__, 0);
}

int XVAConfig::GetChilds(long parent, std::vector<tagVACONFIGITEM>& items) const try {
    items.clear();
    for (const auto& item : *items_)
        if (item.lParentId == parent && parent != 0) items.push_back(item);
    return 1;
} catch (...) {
    return qv::CaughtAtEdge(" XVAConfig::GetChilds", __LINE__, 0);
}

int XVAConfig::HasChilds(long parent) const { return GetNumChilds(parent) > 0 ? 1 : 0; }

long XVAConfig::GetNumChilds(long parent) const {
    long n = 0;
    for (const auto& item : *items_)
        if (item.lParentId == parent && parent != 0) ++n;
    return n;
}

void XVAConfig::SetItems(const std::vector<tagVACONFIGITEM>& items) try {
    std::vector<tagVACONFIGITEM> copy(items);
    items_->swap(copy);
} catch (...) {
    qv::CaughtAtEdge(" XVAConfig::SetItems", __LINE__);
}
const std::vector<tagVACONFIGITEM>& XVAConfig::Items() const { return *items_; }

XVAConfigFactory& EmbeddedVAConfigFactory() {
    struct Embedded : XVAConfigFactory {};
    static Embedded factory;
    return factory;
}

namespace {
XVAConfigFactory* g_installed = nullptr;
}

XVAConfigFactory* XVAConfigFactory::GetConfigFactory() {
    return g_installed ? g_installed : &EmbeddedVAConfigFactory();
}

void XVAConfigFactory::SetConfigFactory(XVAConfigFactory* factory) { g_installed = factory; }

int XVAConfigFactory::InitPlanTypeSetVAConfig(qv::ComPtr<IZT_BaseDataObject> object, qv::ComPtr<IZT_Query>) {
    return object ? 1 : 0;
}

int XVAConfigFactory::GetVAConfig(qv::ComPtr<IZT_BaseDataObject> object, XVAConfig& config) try {
    if (!object) return 0;
    XVAConfig copy(config_);  // throws, rather than failing quietly as an assignment does
    config.Swap(copy);
    return 1;
} catch (...) {
    return qv::CaughtAtEdge(" XVAConfigFactory::GetVAConfig", __LINE__, 0);
}

void XVAConfigFactory::SetConfiguration(const XVAConfig& config) try {
    XVAConfig copy(config);
    config_.Swap(copy);
} catch (...) {
    qv::CaughtAtEdge(" XVAConfigFactory::SetConfiguration", __LINE__);
}
