// The value-added list on a real list view, filled from the embedded host
// objects and configuration factory: the value string kept untouched until
// an edit, the in-place field opened by click and keys and driven by typed
// characters, the 100 % cap and its message, roll-up, Escape, the excluded
// group, settings, pictures, colours, and the creation failures.
#include "quorvel/valueadded/value_added.h"

#include <oleacc.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "quorvel/frame/host_objects.h"
#include "quorvel/frame/services.h"
#include "support/host.h"

namespace {

// Rows: 0 Processing, 1 Cutting, 2 Drilling, 3 Transport (no children),
// 4 Storage, 5 Waiting, 6 Not Assigned. Child 13 is not shown.
std::vector<tagVACONFIGITEM> PlanItems() {
    return {
        {1, 0, L"Processing", L"group", true},  {11, 1, L"Cutting", L"step", true},
        {12, 1, L"Drilling", L"step", true},    {13, 1, L"Hidden", L"step", false},
        {2, 0, L"Transport", L"group", true},   {3, 0, L"Storage", L"group", true},
        {31, 3, L"Waiting", L"step", true},
    };
}

std::wstring Record(int sid, int pid, double pe, double te = 0, double pc = 0) {
    wchar_t buffer[256];
    std::swprintf(buffer, 256, L"[FP:0][SID:%d][PID:%d][TE:%f][PE:%f][TC:0.000000][PC:%f]", sid, pid, te, pe, pc);
    return buffer;
}

// The host's objects: the data object with its project, plan-type set and
// master, and the initial values naming it.
struct HostObjects {
    qv::DataObject* object = nullptr;
    qv::Query* query = nullptr;
    HostObjects(const wchar_t* type = L"voxecompprocess", bool withProject = true, bool withTypeSet = true) {
        qv::DataObject::CreateInstance(&object);
        qv::Query::CreateInstance(&query);
        object->SetTypeName(type);
        object->SetAttribute(L"dbl_totalcalculated", 3600.0);
        object->SetAttribute(L"validtime_tg", 7200.0);
        qv::DataObject *project = nullptr, *typeSet = nullptr, *master = nullptr;
        qv::DataObject::CreateInstance(&project);
        qv::DataObject::CreateInstance(&typeSet);
        qv::DataObject::CreateInstance(&master);
        if (withTypeSet) typeSet->SetRelatedObject(L"master", master);
        if (withTypeSet) project->SetRelatedObject(L"voxendirtypeset", typeSet);
        if (withProject) object->SetRelatedObject(L"voxeproject", project);
        project->Release();
        typeSet->Release();
        master->Release();
    }
    ~HostObjects() {
        object->Release();
        query->Release();
    }
    // A fresh array, as a host hands it over (the control frees it).
    tagVAINITDATA Init() {
        auto* values = static_cast<tagINITVALUE*>(::CoTaskMemAlloc(2 * sizeof(tagINITVALUE)));
        IUnknown* units[2] = {query, object};
        const wchar_t* names[2] = {L"pQuery", L"pObject"};
        for (int i = 0; i < 2; ++i) {
            values[i].name = ::SysAllocString(names[i]);
            ::VariantInit(&values[i].value);
            values[i].value.vt = VT_UNKNOWN;
            values[i].value.punkVal = units[i];
            units[i]->AddRef();
        }
        return {2, values};
    }
};

class ValueAddedTest : public qvtest::HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        XVAConfig config;
        config.SetItems(PlanItems());
        XVAConfigFactory::GetConfigFactory()->SetConfiguration(config);
        ::SetFocus(host_);
    }
    void TearDown() override {
        XVAConfigFactory::GetConfigFactory()->SetConfiguration(XVAConfig());
        HostTest::TearDown();
    }
    bool Create(XValueAddedCtrl& list, HostObjects& host) {
        UINT id = 77;
        tagVAINITDATA init = host.Init();
        const BOOL made = list.CreateCtrl(id, RECT{0, 0, 620, 300}, font_, host_, &init);
        EXPECT_EQ(init.pValues, nullptr) << "the initial values are freed by the control";
        return made != FALSE;
    }
    static std::wstring Cell(XValueAddedCtrl& list, int row, int column) { return list.GetItemText(row, column); }
    // Clicks a cell as the mouse does (the list view waits for the button
    // to come up).
    static void ClickCell(XValueAddedCtrl& list, int row, int column) {
        RECT rect{};
        list.GetSubItemRect(row, column, LVIR_BOUNDS, rect);
        const LPARAM at = MAKELPARAM(rect.left + 10, (rect.top + rect.bottom) / 2);
        ::PostMessageW(list, WM_LBUTTONUP, 0, at);
        ::SendMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, at);
        qvtest::Pump(30);
    }
    // Types into the open field and ends it with `end` (Enter, Tab, Escape).
    static void TypeAndEnd(XValueAddedCtrl& list, const std::wstring& text, wchar_t end) {
        XInPlaceFloatEdit* edit = list.GetInPlaceEdit();
        ASSERT_NE(edit, nullptr);
        ::SendMessageW(*edit, EM_SETSEL, 0, -1);
        qvtest::TypeChars(*edit, text);
        ::SendMessageW(*edit, WM_CHAR, end, 0);
        qvtest::Pump(30);
    }
};

TEST_F(ValueAddedTest, BuildsRowsFromTheConfigurationAndKeepsTheStoredString) {
    HostObjects host;
    XValueAddedCtrl list;
    ASSERT_TRUE(Create(list, host));
    const wchar_t* titles[] = {L"", L"Name", L"Entered Percent [%]", L"Entered Time [sec]",
                               L"Calculated Percent [%]", L"Calculated Time [sec]"};
    HWND header = list.GetHeaderCtrl();
    for (int c = 0; c < 6; ++c) {
        wchar_t text[64] = {};
        HDITEMW item{};
        item.mask = HDI_TEXT;
        item.pszText = text;
        item.cchTextMax = 64;
        ::SendMessageW(header, HDM_GETITEMW, c, reinterpret_cast<LPARAM>(&item));
        EXPECT_STREQ(text, titles[c]);
    }
    EXPECT_EQ(list.GetStyle() & 0xFFFF, 0x8205u & 0xFFFF);

    // Not canonical (long names, blanks, an unknown entry): read, shown, and
    // answered as it came.
    const std::wstring stored = L" [FORMPOS:1][SUBGROUPID:11][PARENTID:1][TIMEENTERED:900][PERCENTENTERED:25]"
                                L"[TIMECALCULATED:0][PERCENTCALCULATED:10]||" +
                                Record(2, 0, 12.5) + L"|" + Record(99, 7, 50);
    ASSERT_TRUE(list.SetValue(stored));
    EXPECT_EQ(list.GetValue(), stored);
    const struct { int row; const wchar_t* name; const wchar_t* pe; const wchar_t* te; const wchar_t* pc; } rows[] = {
        {0, L"Processing", L"0.00", L"0.00", L"0.00"}, {1, L"    Cutting", L"25.00", L"900.00", L"10.00"},
        {2, L"    Drilling", L"0.00", L"0.00", L"0.00"}, {3, L"Transport", L"12.50", L"0.00", L"0.00"},
        {4, L"Storage", L"0.00", L"0.00", L"0.00"},     {5, L"    Waiting", L"0.00", L"0.00", L"0.00"},
        {6, L"Not Assigned", L"62.50", L"2250.00", L"90.00"},
    };
    ASSERT_EQ(list.GetItemCount(), 7);
    for (const auto& r : rows) {
        EXPECT_EQ(Cell(list, r.row, 1), r.name) << r.row;
        EXPECT_EQ(Cell(list, r.row, 2), r.pe) << r.row;
        EXPECT_EQ(Cell(list, r.row, 3), r.te) << r.row;
        EXPECT_EQ(Cell(list, r.row, 4), r.pc) << r.row;
    }

    // A record without its PC: false, and the list stays empty until a good
    // string comes.
    EXPECT_FALSE(list.SetValue(Record(11, 1, 5) + L"|[FP:0][SID:31][PID:3][TE:0][PE:1][TC:0]"));
    EXPECT_EQ(list.GetItemCount(), 0);
    EXPECT_TRUE(list.SetValue(L""));
    EXPECT_EQ(list.GetItemCount(), 7);
}

TEST_F(ValueAddedTest, EditsUnderTheCapWithRollUpAndTheRangeMessage) {
    HostObjects host;
    XValueAddedCtrl list;
    ASSERT_TRUE(Create(list, host));
    const std::wstring stored = Record(12, 1, 30.1) + L"|" + Record(2, 0, 57.56) + L"|" + Record(99, 7, 1);
    ASSERT_TRUE(list.SetValue(stored));

    // Cutting: 100 - 30.1 - 57.56 = 12.34 left. One hundredth more is refused.
    ClickCell(list, 1, XValueAddedCtrl::kColumnEnteredPercent);
    TypeAndEnd(list, L"12.35", VK_TAB);
    ASSERT_EQ(rec_->boxes.boxes.size(), 1u);
    EXPECT_EQ(rec_->boxes.boxes[0].caption, L"Error");
    EXPECT_EQ(rec_->boxes.boxes[0].text, L"Value out of range. Max. 12.34% are assignable.");
    EXPECT_EQ(list.GetValue(), stored) << "a refused value changes nothing";
    EXPECT_FALSE(list.IsModified());

    // Exactly the maximum is taken; the group shows the sum of its children
    // (Drilling's stored time was 0), the time follows the total (3600 s),
    // and the string is written afresh without the entry that is not
    // configured.
    ClickCell(list, 1, XValueAddedCtrl::kColumnEnteredPercent);
    TypeAndEnd(list, L"12.34", VK_TAB);
    EXPECT_EQ(rec_->boxes.boxes.size(), 1u);
    EXPECT_TRUE(list.IsModified());
    EXPECT_EQ(Cell(list, 1, 2), L"12.34");
    EXPECT_EQ(Cell(list, 1, 3), L"444.24");
    EXPECT_EQ(Cell(list, 0, 2), L"42.44");
    EXPECT_EQ(Cell(list, 6, 2), L"0.00");
    const std::wstring value = list.GetValue();
    EXPECT_NE(value.find(L"[FP:0][SID:11][PID:1][TE:444.240000][PE:12.340000]"), std::wstring::npos) << value;
    EXPECT_NE(value.find(L"[SID:1][PID:0][TE:444.240000][PE:42.440000]"), std::wstring::npos) << value;
    EXPECT_EQ(value.find(L"SID:99"), std::wstring::npos) << value;

    // What was written reads back to the same text.
    XValueAddedCtrl again;
    ASSERT_TRUE(Create(again, host));
    ASSERT_TRUE(again.SetValue(value));
    EXPECT_EQ(Cell(again, 0, 2), L"42.44");

    // Escape leaves everything as it was.
    ClickCell(list, 3, XValueAddedCtrl::kColumnEnteredPercent);
    TypeAndEnd(list, L"1", VK_ESCAPE);
    EXPECT_EQ(list.GetValue(), value);
    EXPECT_EQ(list.GetInPlaceEdit(), nullptr);
}

TEST_F(ValueAddedTest, ADecreaseIsTakenWhileTheSumIsAboveAHundred) {
    HostObjects host;
    XValueAddedCtrl list;
    ASSERT_TRUE(Create(list, host));
    ASSERT_TRUE(list.SetValue(Record(11, 1, 70) + L"|" + Record(2, 0, 60)));
    ClickCell(list, 3, XValueAddedCtrl::kColumnEnteredPercent);
    TypeAndEnd(list, L"61", VK_TAB);
    EXPECT_EQ(rec_->boxes.boxes.size(), 1u) << "raising is refused";
    ClickCell(list, 3, XValueAddedCtrl::kColumnEnteredPercent);
    TypeAndEnd(list, L"50", VK_TAB);
    EXPECT_EQ(rec_->boxes.boxes.size(), 1u) << "lowering is not";
    EXPECT_EQ(Cell(list, 3, 2), L"50.00");
    EXPECT_EQ(Cell(list, 6, 2), L"-20.00");
}

TEST_F(ValueAddedTest, WhichRowsOpenTheField) {
    HostObjects host;
    XValueAddedCtrl list;
    ASSERT_TRUE(Create(list, host));
    const struct { int row, column; bool readOnly; long excluded; bool opens; } cases[] = {
        {1, 2, false, 0, true},   // a child
        {1, 1, false, 0, false},  // its name
        {1, 3, false, 0, false},  // its time
        {0, 2, false, 0, false},  // a group with children
        {3, 2, false, 0, true},   // a group without
        {3, 2, false, 2, false},  // ... that is excluded
        {6, 2, false, 0, false},  // "Not Assigned"
        {1, 2, true, 0, false},   // read-only
    };
    for (const auto& c : cases) {
        list.SetReadOnly(c.readOnly);
        list.SetExcludedGroup(c.excluded);
        ClickCell(list, c.row, c.column);
        EXPECT_EQ(list.GetInPlaceEdit() != nullptr, c.opens) << c.row << "/" << c.column;
        if (XInPlaceFloatEdit* edit = list.GetInPlaceEdit()) {
            EXPECT_EQ(edit->GetRow(), c.row);
            EXPECT_EQ(::GetFocus(), edit->m_hWnd);
            ::SendMessageW(*edit, WM_CHAR, VK_ESCAPE, 0);
            qvtest::Pump(20);
        }
    }
}

TEST_F(ValueAddedTest, KeyboardOpensTheFieldAndEnterMovesOn) {
    HostObjects host;
    XValueAddedCtrl list;
    ASSERT_TRUE(Create(list, host));
    list.SetFocus();
    list.SetItemState(1, LVIS_FOCUSED | LVIS_SELECTED, LVIS_FOCUSED | LVIS_SELECTED);
    ::SendMessageW(list, WM_KEYDOWN, VK_F2, 0);
    XInPlaceFloatEdit* edit = list.GetInPlaceEdit();
    ASSERT_NE(edit, nullptr);
    EXPECT_EQ(qvtest::TextOf(*edit), L"0");

    // The screen reader hears the row's caption.
    IAccessible* acc = nullptr;
    ASSERT_EQ(::AccessibleObjectFromWindow(*edit, OBJID_CLIENT, IID_IAccessible, reinterpret_cast<void**>(&acc)),
              S_OK);
    VARIANT self;
    self.vt = VT_I4;
    self.lVal = CHILDID_SELF;
    BSTR name = nullptr;
    EXPECT_EQ(acc->get_accName(self, &name), S_OK);
    EXPECT_STREQ(name, L"Cutting");
    ::SysFreeString(name);
    acc->Release();

    // Enter takes 10 and opens the field on the next editable row
    // (Drilling); Enter there goes on past the group with children.
    TypeAndEnd(list, L"10", VK_RETURN);
    qvtest::Pump(50);
    edit = list.GetInPlaceEdit();
    ASSERT_NE(edit, nullptr);
    EXPECT_EQ(edit->GetRow(), 2);
    EXPECT_EQ(Cell(list, 1, 2), L"10.00");
    TypeAndEnd(list, L"5", VK_RETURN);
    qvtest::Pump(50);
    edit = list.GetInPlaceEdit();
    ASSERT_NE(edit, nullptr);
    EXPECT_EQ(edit->GetRow(), 3);
    EXPECT_EQ(Cell(list, 0, 2), L"15.00");
    ::SendMessageW(*edit, WM_CHAR, VK_ESCAPE, 0);
    qvtest::Pump(20);
    EXPECT_EQ(list.GetInPlaceEdit(), nullptr);
}

TEST_F(ValueAddedTest, SettingsTotalTimeAndPictures) {
    // Decimal places from the settings, the total of a process object, and
    // the row pictures from the bitmap folder.
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / L"qv_va_bitmaps";
    std::filesystem::create_directories(folder);
    for (const wchar_t* name : {L"group.bmp", L"step.bmp"}) {
        // Write an 18 x 17, 24-bit BMP by hand.
        BITMAPINFOHEADER info{};
        info.biSize = sizeof info;
        info.biWidth = 18;
        info.biHeight = 17;
        info.biPlanes = 1;
        info.biBitCount = 24;
        const DWORD stride = (18 * 3 + 3) & ~3u;
        std::vector<BYTE> pixels(stride * 17, 0x40);
        BITMAPFILEHEADER file{};
        file.bfType = 0x4D42;
        file.bfOffBits = sizeof file + sizeof info;
        file.bfSize = static_cast<DWORD>(file.bfOffBits + pixels.size());
        FILE* out = _wfopen((folder / name).c_str(), L"wb");
        ASSERT_NE(out, nullptr);
        fwrite(&file, sizeof file, 1, out);
        fwrite(&info, sizeof info, 1, out);
        fwrite(pixels.data(), 1, pixels.size(), out);
        fclose(out);
    }
    auto& settings = qv::Services::DefaultSettings();
    settings.Set(L"valueadded", L"decimalplacestimes", L"0");
    settings.Set(L"valueadded", L"decimalplacespercentage", L"3");
    settings.Set(L"Common", L"bitmaps", folder.wstring());

    HostObjects host(L"voxecompprocessdefault");
    XValueAddedCtrl list;
    ASSERT_TRUE(Create(list, host));
    ASSERT_TRUE(list.SetValue(Record(11, 1, 12.5)));
    EXPECT_EQ(Cell(list, 1, 2), L"12.500");
    EXPECT_EQ(Cell(list, 6, 3), L"6300") << "87.5 % of validtime_tg (7200 s), no decimals";
    ASSERT_NE(list.GetImageList(LVSIL_SMALL), nullptr);
    for (const auto& [row, image] : {std::pair{0, 0}, {1, 1}, {3, 0}, {6, I_IMAGENONE}}) {
        LVITEMW item{};
        item.mask = LVIF_IMAGE;
        item.iItem = row;
        ASSERT_TRUE(list.GetItem(&item));
        EXPECT_EQ(item.iImage, image) << row;
    }
    std::filesystem::remove_all(folder);
}

TEST_F(ValueAddedTest, CreationFailsWithoutTheMasterPlanTypeSet) {
    const struct { bool project, typeSet; const wchar_t* message; unsigned long line; } cases[] = {
        {false, true, L"Failed to get voxeproject!", 986},
        {true, false, L"Failed to get voxendirtypeset!", 1003},
    };
    for (const auto& c : cases) {
        HostObjects host(L"voxecompprocess", c.project, c.typeSet);
        XValueAddedCtrl list;
        qv::Services::DefaultLogBook().Clear();
        rec_->boxes.boxes.clear();
        EXPECT_FALSE(Create(list, host));
        EXPECT_FALSE(list.IsWindow());
        ASSERT_EQ(rec_->boxes.boxes.size(), 1u) << c.message;
        EXPECT_NE(rec_->boxes.boxes[0].text.find(c.message), std::wstring::npos) << rec_->boxes.boxes[0].text;
    }
    // Without initial values: no configuration, only the remainder row.
    XValueAddedCtrl bare;
    UINT id = 5;
    ASSERT_TRUE(bare.CreateCtrl(id, RECT{0, 0, 300, 200}, nullptr, host_, nullptr));
    EXPECT_EQ(bare.GetItemCount(), 1);
    EXPECT_EQ(Cell(bare, 0, 2), L"100.00");
    UINT other = 6;
    EXPECT_FALSE(XValueAddedCtrl().CreateCtrl(other, RECT{}, nullptr, nullptr, nullptr));
}

TEST_F(ValueAddedTest, CellColours) {
    HostObjects host;
    XValueAddedCtrl list;
    ASSERT_TRUE(Create(list, host));
    qvtest::Pump(100);
    // The colour left of a right-aligned value is the cell's background.
    auto background = [&](int row, int column) {
        RECT rect{};
        list.GetSubItemRect(row, column, LVIR_BOUNDS, rect);
        ::RedrawWindow(list, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
        HDC dc = ::GetDC(list);
        const COLORREF colour = ::GetPixel(dc, rect.left + 6, (rect.top + rect.bottom) / 2);
        ::ReleaseDC(list, dc);
        return colour;
    };
    list.SetItemState(-1, 0, LVIS_SELECTED | LVIS_FOCUSED);
    qvtest::Pump(50);
    EXPECT_EQ(background(1, 2), RGB(0xFA, 0xFA, 0xFA));
    EXPECT_EQ(background(1, 3), ::GetSysColor(COLOR_3DLIGHT)) << "group 1 is odd";
    EXPECT_EQ(background(3, 3), ::GetSysColor(COLOR_WINDOW)) << "group 2 is even";
}

}  // namespace
