#include "quorvel/frame/va_config.h"

XVAConfig::XVAConfig() : items_(new std::vector<tagVACONFIGITEM>) {}
XVAConfig::~XVAConfig() { delete items_; }
XVAConfig::XVAConfig(const XVAConfig& other) : items_(new std::vector<tagVACONFIGITEM>(*other.items_)) {}
XVAConfig& XVAConfig::operator=(const XVAConfig& other) {
    if (this != &other) *items_ = *other.items_;
    return *this;
}

int XVAConfig::GetGroups(std::vector<tagVACONFIGITEM>& items) const {
    items.clear();
    for (const auto& item : *items_)
        if (item.lParentId == 0) items.push_back(item);
    return 1;
}

int XVAConfig::GetChilds(long parent, std::vector<tagVACONFIGITEM>& items) const {
    items.clear();
    for (const auto& item : *items_)
        if (item.lParentId == parent && parent != 0) items.push_back(item);
    return 1;
}

int XVAConfig::HasChilds(long parent) const { return GetNumChilds(parent) > 0 ? 1 : 0; }

long XVAConfig::GetNumChilds(long parent) const {
    long n = 0;
    for (const auto& item : *items_)
        if (item.lParentId == parent && parent != 0) ++n;
    return n;
}

void XVAConfig::SetItems(const std::vector<tagVACONFIGITEM>& items) { *items_ = items; }
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

int XVAConfigFactory::GetVAConfig(qv::ComPtr<IZT_BaseDataObject> object, XVAConfig& config) {
    if (!object) return 0;
    config = config_;
    return 1;
}

void XVAConfigFactory::SetConfiguration(const XVAConfig& config) { config_ = config; }
