// A value-added list as a host makes it, for the screen-reader and DPI
// tests: the configuration given, a data object with a total time of 3600 s
// and its master plan-type set, handed over as the initial value "pObject".
#pragma once

#include <vector>

#include "quorvel/frame/host_objects.h"
#include "quorvel/valueadded/value_added.h"

namespace qvtest {

class ValueAddedHost {
public:
    explicit ValueAddedHost(std::vector<tagVACONFIGITEM> items) {
        XVAConfig config;
        config.SetItems(std::move(items));
        XVAConfigFactory::GetConfigFactory()->SetConfiguration(config);
        qv::DataObject::CreateInstance(&object_);
        object_->SetTypeName(L"voxecompprocess");
        object_->SetAttribute(L"dbl_totalcalculated", 3600.0);
        qv::DataObject *project = nullptr, *typeSet = nullptr, *master = nullptr;
        for (qv::DataObject** o : {&project, &typeSet, &master}) qv::DataObject::CreateInstance(o);
        typeSet->SetRelatedObject(L"master", master);
        project->SetRelatedObject(L"voxendirtypeset", typeSet);
        object_->SetRelatedObject(L"voxeproject", project);
        for (qv::DataObject* o : {project, typeSet, master}) o->Release();
    }
    ~ValueAddedHost() {
        object_->Release();
        XVAConfigFactory::GetConfigFactory()->SetConfiguration(XVAConfig());
    }
    ValueAddedHost(const ValueAddedHost&) = delete;
    ValueAddedHost& operator=(const ValueAddedHost&) = delete;

    bool Create(XValueAddedCtrl& list, HWND parent, HFONT font) {
        auto* values = static_cast<tagINITVALUE*>(::CoTaskMemAlloc(sizeof(tagINITVALUE)));
        values[0].name = ::SysAllocString(L"pObject");
        ::VariantInit(&values[0].value);
        values[0].value.vt = VT_UNKNOWN;
        values[0].value.punkVal = object_;
        object_->AddRef();
        tagVAINITDATA init{1, values};
        UINT id = 77;
        return list.CreateCtrl(id, RECT{0, 0, 620, 300}, font, parent, &init) != FALSE;
    }

private:
    qv::DataObject* object_ = nullptr;
};

}  // namespace qvtest
