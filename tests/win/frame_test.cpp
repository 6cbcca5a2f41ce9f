// The library frame under Windows: settings with and without the host's
// session-data manager, the log tuple, boxes, translation, conversions in the
// user's locale, initial values.
#include <gtest/gtest.h>

#include <initguid.h>

#include <string>
#include <tuple>
#include <utility>

#include "quorvel/frame/app.h"
#include "quorvel/frame/services.h"
#include "quorvel/frame/session.h"
#include "quorvel/frame/siblings.h"
#include "support/host.h"

namespace {

using qvtest::HostTest;

// ---- Settings --------------------------------------------------------------

class SettingsTest : public ::testing::Test {
protected:
    void SetUp() override {
        qv::Services::DefaultSettings().ClearStore();
        qv::Services::DefaultSettings().UseSessionDataManager(nullptr, nullptr);
    }
    void TearDown() override { SetUp(); }
};

TEST_F(SettingsTest, WithoutAnyServiceEverySettingReadsAsAbsentUntilTheStoreLoadsIniText) {
    long width = -7;
    EXPECT_EQ(std::tuple(qv::TooltipPopupTimeSetting(), qv::ContextHelpFileSetting()), std::tuple(0u, std::wstring()));
    EXPECT_FALSE(qv::TooltipMaxTipWidthSetting(width));
    std::wstring text(25, L'x');
    qv::ApplyTooltipMaxWidth(text);
    EXPECT_EQ(text.size(), 25u);

    // The embedded store loads ini text.
    ASSERT_TRUE(qv::Services::DefaultSettings().LoadIniText(
        L"[Common]\ntooltipdelaytime=1500\n[customization]\ncontextHelpOnCustomizationObjects=C:\\help\\ctx.chm\n"));
    EXPECT_EQ(std::tuple(qv::TooltipPopupTimeSetting(), qv::ContextHelpFileSetting()),
              std::tuple(1500u, std::wstring(L"C:\\help\\ctx.chm")));
}

TEST_F(SettingsTest, MaxTipWidthCutsOnlyWhenItIsANumber) {
    struct Case { const wchar_t* stored; size_t length; size_t expected; } cases[] = {
        {L"abc", 25, 25}, {L"", 25, 25}, {L"10", 25, 10}, {L"10", 10, 10}, {L" 10 ", 25, 10}, {L"0", 3, 0},
    };
    for (const Case& c : cases) {
        qv::Services::DefaultSettings().Set(L"Common", L"tooltipmaxtipwidth", c.stored);
        std::wstring text(c.length, L'y');
        qv::ApplyTooltipMaxWidth(text);
        EXPECT_EQ(text.size(), c.expected) << "stored '" << std::string(c.stored, c.stored + wcslen(c.stored)) << "'";
    }
}

// A session-data manager as a host registers it, served in-process through
// CoRegisterClassObject so CoCreateInstance finds it like the host's server.
// {6F2B1C3A-0D7E-4C55-9A61-2B7F0C9D1E01}
DEFINE_GUID(CLSID_TestSessionData, 0x6f2b1c3a, 0x0d7e, 0x4c55, 0x9a, 0x61, 0x2b, 0x7f, 0x0c, 0x9d, 0x1e, 0x01);
// {6F2B1C3A-0D7E-4C55-9A61-2B7F0C9D1E02}
DEFINE_GUID(IID_TestSessionData, 0x6f2b1c3a, 0x0d7e, 0x4c55, 0x9a, 0x61, 0x2b, 0x7f, 0x0c, 0x9d, 0x1e, 0x02);
// Never registered.
DEFINE_GUID(CLSID_Missing, 0x6f2b1c3a, 0x0d7e, 0x4c55, 0x9a, 0x61, 0x2b, 0x7f, 0x0c, 0x9d, 0x1e, 0x03);

std::vector<long> g_flags;

class TestSessionData final : public IZT_SessionDataMng {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        if (iid == IID_IUnknown || iid == IID_TestSessionData) {
            *out = this;
            AddRef();
            return S_OK;
        }
        *out = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++refs_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG r = --refs_;
        if (!r) delete this;
        return r;
    }
    HRESULT STDMETHODCALLTYPE Reserved4() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved5() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved6() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved7() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved8() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved9() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetSessionValue(BSTR section, BSTR name, long type, VARIANT* value, long flag) override {
        g_flags.push_back(flag);
        if (type != VT_BSTR) return E_INVALIDARG;
        const std::wstring key = std::wstring(section) + L"/" + name;
        const wchar_t* text = key == L"Common/tooltipdelaytime"     ? L"750"
                              : key == L"Common/tooltipmaxtipwidth" ? L"abc"
                              : key == L"customization/contextHelpOnCustomizationObjects" ? L"https://help.example/ctx"
                                                                                          : nullptr;
        if (!text) return S_FALSE;
        value->vt = VT_BSTR;
        value->bstrVal = ::SysAllocString(text);
        return S_OK;
    }

private:
    ULONG refs_ = 1;
};

class TestFactory : public IClassFactory {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        if (iid == IID_IUnknown || iid == IID_IClassFactory) {
            *out = this;
            return S_OK;
        }
        *out = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** out) override {
        if (outer) return CLASS_E_NOAGGREGATION;
        auto* obj = new TestSessionData;
        const HRESULT hr = obj->QueryInterface(iid, out);
        obj->Release();
        return hr;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

TEST_F(SettingsTest, HostSessionDataManagerIsAskedWithTheFlagOfEachSection) {
    qv::ComInit com;
    TestFactory factory;
    DWORD cookie = 0;
    ASSERT_EQ(::CoRegisterClassObject(CLSID_TestSessionData, &factory, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                                      &cookie),
              S_OK);
    qv::Services::DefaultSettings().UseSessionDataManager(&CLSID_TestSessionData, &IID_TestSessionData);
    qv::Services::DefaultSettings().Set(L"Common", L"tooltipdelaytime", L"1");  // the store is not asked
    g_flags.clear();

    EXPECT_EQ(qv::TooltipPopupTimeSetting(), 750u);
    long width = 0;
    EXPECT_FALSE(qv::TooltipMaxTipWidthSetting(width)) << "\"abc\" is not a number";
    EXPECT_EQ(qv::ContextHelpFileSetting(), L"https://help.example/ctx");
    EXPECT_EQ(g_flags, (std::vector<long>{0, 0, 1}));

    // A class the host named but nobody registered: defaults, no error.
    qv::Services::DefaultSettings().UseSessionDataManager(&CLSID_Missing, &IID_TestSessionData);
    EXPECT_EQ(std::tuple(qv::TooltipPopupTimeSetting(), qv::ContextHelpFileSetting()), std::tuple(0u, std::wstring()));
    ::CoRevokeClassObject(cookie);
}

// ---- Log book, boxes, translation -------------------------------------------------

// The default result and the narrow-text entry are seen through real failures
// (date_fields_test, base_lists_test); here a caller's own result.
TEST_F(HostTest, LogEntryCarriesTheLibrarysTuple) {
    qv::LogFailure(L" XBaseDateTime::Init", 104, L"Creating control failed", 0x80070005L);
    const auto& log = qv::Services::DefaultLogBook().Entries();
    ASSERT_EQ(log.size(), 1u);
    EXPECT_EQ(qvtest::Describe(log[0]), L"Quorvel| XBaseDateTime::Init|104|Creating control failed|80070005");
    EXPECT_TRUE(rec_->boxes.boxes.empty()) << "logging never shows a box";
}

TEST_F(HostTest, BoxesAndErrorDisplayGoThroughTheMessageBoxService) {
    CoErrorBox(nullptr, CoTranslateText(L"Error"), L"Disk full", 0);
    CoWarningBox(nullptr, L"Invalid entry", L"Check the value", 0);
    XZTError::DisplayErrorMessageBox(qv::ModuleNameBstr(), L" XValueAddedCtrl::SetValue", 12,
                                     L"Failed to get voxeproject!", nullptr);
    ASSERT_EQ(rec_->boxes.boxes.size(), 3u);
    const auto& boxes = rec_->boxes.boxes;
    EXPECT_EQ(std::tuple(boxes[0].caption, boxes[0].type & MB_ICONMASK),
              std::tuple(std::wstring(L"Error"), UINT{MB_ICONERROR}));
    EXPECT_EQ(std::tuple(boxes[1].type & MB_ICONMASK, boxes[2].caption), std::tuple(UINT{MB_ICONWARNING}, L"Error"));
    EXPECT_NE(boxes[2].text.find(L"Failed to get voxeproject!"), std::wstring::npos);
    EXPECT_EQ(std::wstring(qv::ModuleNameBstr()), L"Quorvel");
}

TEST_F(HostTest, CatalogTranslatesTextsAndDialogLabelsButNotUserData) {
    auto& tr = qv::Services::DefaultTranslation();
    ASSERT_TRUE(tr.LoadText(L"Error\tFehler\nCancel\tAbbrechen\nSelect a font\tSchrift w\u00e4hlen\n"));
    EXPECT_EQ(std::wstring(CoTranslateText(L"Error")) + L"|" + CoTranslateText(L"Unknown text") + L"|" +
                  CoTranslateText2("Cancel"),
              L"Fehler|Unknown text|Abbrechen");

    ::SetWindowTextW(host_, L"Select a font");
    HWND button = ::CreateWindowExW(0, L"BUTTON", L"Cancel", WS_CHILD, 0, 0, 80, 20, host_, nullptr, nullptr, nullptr);
    HWND edit = ::CreateWindowExW(0, L"EDIT", L"Cancel", WS_CHILD, 0, 30, 80, 20, host_, nullptr, nullptr, nullptr);
    CoTranslateWindow(host_);
    EXPECT_EQ(qvtest::TextOf(host_) + L"|" + qvtest::TextOf(button), L"Schrift w\u00e4hlen|Abbrechen");
    EXPECT_EQ(qvtest::TextOf(edit), L"Cancel") << "an edit field holds data, not a label";
    CoTranslateWindow(nullptr);  // must not crash
    tr.Clear();
    EXPECT_STREQ(CoTranslateText(L"Error"), L"Error");
}

// ---- Conversions in the user's locale --------------------------------------------------

// The number grammar itself is the model's (number_text_test); here only
// that the wrappers take the separator from the user's locale.
TEST(ConversionTest, ParsingTakesTheUsersSeparatorAndThePoint) {
    const struct { const wchar_t *sep, *text; bool ok; double value; } cases[] = {
        {L".", L"3.25", true, 3.25}, {L".", L"3,25", false, 0}, {L",", L"3,25", true, 3.25}, {L",", L"3.25", true, 3.25}};
    for (const auto& c : cases) {
        qvtest::LocaleOverride locale(LOCALE_SDECIMAL, c.sep);
        double v = -999.0;
        EXPECT_EQ(String2Double(c.text, v), c.ok) << c.text;
        EXPECT_DOUBLE_EQ(v, c.ok ? c.value : -999.0) << c.text;
    }
}

TEST(ConversionTest, DecimalCommaLocaleFormatsWithAComma) {
    qvtest::LocaleOverride comma(LOCALE_SDECIMAL, L",");
    std::wstring text;
    ASSERT_TRUE(Double2String(text, 3.14159, L"%.2f"));
    EXPECT_EQ(text, L"3,14");
    std::wstring inRange = L"10,5", outside = L"20,01";
    EXPECT_EQ(std::tuple(CheckRange(10, 20, inRange), CheckRange(10, 20, outside)), std::tuple(true, false));
}

TEST(ConversionTest, CharacterCheckAndRichText) {
    // One typed character or a whole text; the character set is the model's.
    const std::tuple<const wchar_t*, bool, bool> checks[] = {
        {L"A", false, true}, {L"AB", false, false}, {L"AB09", true, true}, {L"AB-09", true, false}};
    for (const auto& [text, whole, ok] : checks) EXPECT_EQ(CheckCharacters0_9A_Z(text, whole), ok) << text;

    std::wstring plain;
    ASSERT_TRUE(RTF2TXT(L"{\\rtf1 Gr\\'fc\\par Zeile}", plain));
    EXPECT_EQ(plain, L"Gr\u00fc\r\nZeile");
}

// ---- Initial values and COM wrappers ----------------------------------------------------

TEST(InitValueTest, CopiesNamedValuesAndFreesTheHostsArray) {
    auto* values = static_cast<tagINITVALUE*>(::CoTaskMemAlloc(2 * sizeof(tagINITVALUE)));
    values[0].name = ::SysAllocString(L"pQuery");
    ::VariantInit(&values[0].value);
    values[0].value.vt = VT_I4;
    values[0].value.lVal = 42;
    values[1].name = ::SysAllocString(L"label");
    ::VariantInit(&values[1].value);
    values[1].value.vt = VT_BSTR;
    values[1].value.bstrVal = ::SysAllocString(L"text");

    XInitValueWrapper wrapper(2, values);
    XInitValueWrapper::FreeStruct(2, values);  // the wrapper keeps its own copy

    qv::Variant v;
    ASSERT_TRUE(wrapper.GetData(const_cast<wchar_t*>(L"pQuery"), v));
    EXPECT_EQ(std::tuple(v.vt, v.lVal), std::tuple(VARTYPE{VT_I4}, 42L));
    ASSERT_TRUE(wrapper.GetData(const_cast<wchar_t*>(L"label"), v));
    EXPECT_EQ(v.Text(), L"text");
    EXPECT_FALSE(wrapper.GetData(const_cast<wchar_t*>(L"pObject"), v) || wrapper.GetData(nullptr, v));

    XZTComVariant number;
    VARIANT* p = &number;
    p->vt = VT_BSTR;
    p->bstrVal = ::SysAllocString(L"2.5");
    EXPECT_DOUBLE_EQ(number.GetDouble(), 2.5);
}

}  // namespace
