// The value-added page: a machining plan of 3600 s whose process steps share
// the plan's time. Three groups with their children, the group rows showing
// the sums of their children, and the "Not Assigned" row with what is left
// of 100 %. A click on an entered percent (or F2, or Enter) opens the field;
// Enter takes the value and moves on, Escape drops it. Values above what is
// left are refused with the range message. The button shows the value
// string the form would store.
//
// The page fills the library's embedded host objects and configuration, as
// a host without the application's servers does, and writes the two row
// pictures into a temporary folder named by the "bitmaps" setting.
#include <windows.h>
#include <commctrl.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "gallery.h"
#include "quorvel/frame/host_objects.h"
#include "quorvel/frame/services.h"
#include "quorvel/valueadded/value_added.h"

namespace gallery {

namespace {

constexpr UINT kListId = 7001;
constexpr UINT kShowId = 7002;
constexpr UINT kValueId = 7003;

// An 18 x 17 picture on magenta (which the list makes transparent): a
// filled square for groups, a small diamond for steps.
bool WriteRowPicture(const std::wstring& path, bool group) {
    constexpr int w = 18, h = 17;
    const int stride = (w * 3 + 3) & ~3;
    std::vector<BYTE> pixels(static_cast<size_t>(stride) * h);
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            BYTE* p = &pixels[static_cast<size_t>(y) * stride + static_cast<size_t>(x) * 3];
            const int dx = x - 8, dy = y - 8;
            const bool ink = group ? (x >= 2 && x <= 15 && y >= 2 && y <= 14)
                                   : (std::abs(dx) + std::abs(dy) <= 5);
            // Blue-green groups, amber steps; magenta elsewhere (BGR order).
            const BYTE colour[3] = {static_cast<BYTE>(ink ? (group ? 0x90 : 0x20) : 0xFF),
                                    static_cast<BYTE>(ink ? (group ? 0x70 : 0xA0) : 0x00),
                                    static_cast<BYTE>(ink ? (group ? 0x20 : 0xF0) : 0xFF)};
            p[0] = colour[0];
            p[1] = colour[1];
            p[2] = colour[2];
        }
    }
    BITMAPINFOHEADER info{};
    info.biSize = sizeof info;
    info.biWidth = w;
    info.biHeight = h;
    info.biPlanes = 1;
    info.biBitCount = 24;
    info.biCompression = BI_RGB;
    BITMAPFILEHEADER file{};
    file.bfType = 0x4D42;
    file.bfOffBits = static_cast<DWORD>(sizeof file + sizeof info);
    file.bfSize = static_cast<DWORD>(file.bfOffBits + pixels.size());
    FILE* out = _wfopen(path.c_str(), L"wb");
    if (!out) return false;
    const bool written = fwrite(&file, sizeof file, 1, out) == 1 && fwrite(&info, sizeof info, 1, out) == 1 &&
                         fwrite(pixels.data(), 1, pixels.size(), out) == pixels.size();
    return fclose(out) == 0 && written;
}

std::wstring PictureFolder() {
    wchar_t temp[MAX_PATH] = {};
    ::GetTempPathW(MAX_PATH, temp);
    std::wstring folder = std::wstring(temp) + L"quorvel-gallery-va";
    ::CreateDirectoryW(folder.c_str(), nullptr);
    WriteRowPicture(folder + L"\\va-group.bmp", true);
    WriteRowPicture(folder + L"\\va-step.bmp", false);
    return folder;
}

struct ValueAddedObjects : PageObjects {
    XValueAddedCtrl list;
    HWND page = nullptr;
    HWND valueView = nullptr;
    qv::DataObject* object = nullptr;
    ~ValueAddedObjects() override;
};

void ShowValue(ValueAddedObjects& objects) {
    std::wstring value = objects.list.GetValue();
    // One record per line, so the string can be read.
    std::wstring shown;
    for (wchar_t c : value) shown += c == L'|' ? std::wstring(L"|\r\n") : std::wstring(1, c);
    if (shown.empty()) shown = L"(empty: nothing was stored yet)";
    ::SetWindowTextW(objects.valueView, shown.c_str());
}

LRESULT CALLBACK ValueAddedPageProc(HWND page, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR, DWORD_PTR data) {
    if (msg == WM_COMMAND && LOWORD(wp) == kShowId && HIWORD(wp) == BN_CLICKED) {
        ShowValue(*reinterpret_cast<ValueAddedObjects*>(data));
        return 0;
    }
    return ::DefSubclassProc(page, msg, wp, lp);
}

ValueAddedObjects::~ValueAddedObjects() {
    if (page) ::RemoveWindowSubclass(page, ValueAddedPageProc, 1);
    list.DestroyWindow();
    if (object) object->Release();
}

// The plan: groups 1-3 with their steps; step 24 is configured but not shown.
void UsePlanConfiguration() {
    XVAConfig config;
    config.SetItems({
        {1, 0, L"Set-up", L"va-group", true},
        {11, 1, L"Clamp the blank", L"va-step", true},
        {12, 1, L"Load the program", L"va-step", true},
        {2, 0, L"Machining", L"va-group", true},
        {21, 2, L"Rough milling", L"va-step", true},
        {22, 2, L"Finish milling", L"va-step", true},
        {23, 2, L"Drilling", L"va-step", true},
        {24, 2, L"Coolant change", L"va-step", false},
        {3, 0, L"Inspection", L"va-group", true},
        {31, 3, L"Measure", L"va-step", true},
        {4, 0, L"Transport", L"va-group", true},
    });
    XVAConfigFactory::GetConfigFactory()->SetConfiguration(config);
}

qv::DataObject* MakePlanObject() {
    qv::DataObject *object = nullptr, *project = nullptr, *typeSet = nullptr, *master = nullptr;
    if (FAILED(qv::DataObject::CreateInstance(&object))) return nullptr;
    qv::DataObject::CreateInstance(&project);
    qv::DataObject::CreateInstance(&typeSet);
    qv::DataObject::CreateInstance(&master);
    object->SetTypeName(L"voxecompprocess");
    object->SetAttribute(L"dbl_totalcalculated", 3600.0);
    if (typeSet && master) typeSet->SetRelatedObject(L"master", master);
    if (project && typeSet) project->SetRelatedObject(L"voxendirtypeset", typeSet);
    if (project) object->SetRelatedObject(L"voxeproject", project);
    for (qv::DataObject* o : {project, typeSet, master})
        if (o) o->Release();
    return object;
}

// What the form stored: entered shares that sum to 99.5 %, and calculated
// shares from the last planning run.
std::wstring StoredValue() {
    struct R { int sid, pid; double pe, pc; } records[] = {
        {1, 0, 8.0, 9.1},   {11, 1, 5.0, 6.0},   {12, 1, 3.0, 3.1},  {2, 0, 72.5, 70.4}, {21, 2, 40.0, 38.2},
        {22, 2, 20.0, 21.7}, {23, 2, 12.5, 10.5}, {3, 0, 11.0, 12.0}, {31, 3, 11.0, 12.0}, {4, 0, 8.0, 8.5},
    };
    std::wstring value;
    for (const R& r : records) {
        wchar_t text[200];
        std::swprintf(text, 200, L"%ls[FP:0][SID:%d][PID:%d][TE:%f][PE:%f][TC:%f][PC:%f]", value.empty() ? L"" : L"|",
                      r.sid, r.pid, 36.0 * r.pe, r.pe, 36.0 * r.pc, r.pc);
        value += text;
    }
    return value;
}

}  // namespace

std::unique_ptr<PageObjects> BuildValueAddedPage(HWND page) {
    auto objects = std::make_unique<ValueAddedObjects>();
    HINSTANCE instance = reinterpret_cast<HINSTANCE>(::GetWindowLongPtrW(page, GWLP_HINSTANCE));
    AddLabel(page,
             L"A machining plan of 3600 s. Click an entered percent of a step (or press F2 or Enter on it) to "
             L"change it: Enter takes the value and moves to the next step, Escape drops it. The entered "
             L"percents may not exceed 100 % together; a group shows the sums of its steps.",
             16, 10, 960, 36);

    qv::Services::DefaultSettings().Set(L"Common", L"bitmaps", PictureFolder());
    UsePlanConfiguration();
    objects->object = MakePlanObject();

    tagVAINITDATA init{0, nullptr};
    if (objects->object) {
        init.pValues = static_cast<tagINITVALUE*>(::CoTaskMemAlloc(sizeof(tagINITVALUE)));
        if (init.pValues) {
            init.ulCount = 1;
            init.pValues[0].name = ::SysAllocString(L"pObject");
            ::VariantInit(&init.pValues[0].value);
            init.pValues[0].value.vt = VT_UNKNOWN;
            init.pValues[0].value.punkVal = objects->object;
            objects->object->AddRef();
        }
    }
    UINT id = kListId;
    if (objects->list.CreateCtrl(id, RECT{16, 52, 840, 330}, GalleryFont(), page, &init))
        objects->list.SetValue(StoredValue());

    HWND show = ::CreateWindowExW(0, L"BUTTON", L"Show the value string", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 16,
                                  342, 180, 26, page, reinterpret_cast<HMENU>(static_cast<INT_PTR>(kShowId)),
                                  instance, nullptr);
    ::SendMessageW(show, WM_SETFONT, reinterpret_cast<WPARAM>(GalleryFont()), FALSE);
    AddLabel(page, L"What the form stores (untouched until an entry changes, then written afresh):", 210, 346, 600,
             20);
    objects->valueView = ::CreateWindowExW(
        WS_EX_CLIENTEDGE, L"EDIT", L"", WS_CHILD | WS_VISIBLE | ES_MULTILINE | ES_READONLY | WS_VSCROLL, 16, 376,
        824, 110, page, reinterpret_cast<HMENU>(static_cast<INT_PTR>(kValueId)), instance, nullptr);
    ::SendMessageW(objects->valueView, WM_SETFONT, reinterpret_cast<WPARAM>(GalleryFont()), FALSE);
    ShowValue(*objects);

    if (::SetWindowSubclass(page, ValueAddedPageProc, 1, reinterpret_cast<DWORD_PTR>(objects.get())))
        objects->page = page;
    return objects;
}

// The picture shows a step being edited.
void ShowValueAddedForShot(HWND page) {
    HWND list = ::GetDlgItem(page, kListId);
    if (auto* control = dynamic_cast<XValueAddedCtrl*>(qv::Window::FromHandle(list))) {
        control->SetFocus();
        if (control->EditRow(4)) {
            if (XInPlaceFloatEdit* edit = control->GetInPlaceEdit()) {
                ::SendMessageW(*edit, EM_SETSEL, 0, -1);
                for (const wchar_t* c = L"40.5"; *c; ++c) ::SendMessageW(*edit, WM_CHAR, *c, 0);
            }
        }
    }
}

}  // namespace gallery
