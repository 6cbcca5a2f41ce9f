// The foundation page: the window object with reflection, the owner-drawn
// check-list box, the library's own bitmaps and dialogs, conversions in the
// user's locale, rich text to plain text, and the log book.
#include <string>

#include "gallery.h"
#include "quorvel/frame/services.h"
#include "quorvel/frame/siblings.h"
#include "quorvel/platform/checklistbox.h"
#include "quorvel/platform/dialog.h"
#include "quorvel/platform/module.h"
#include "quorvel/platform/window.h"
#include "resource.h"

namespace gallery {

namespace {

// A push button that hears its own clicks by reflection from a plain parent.
class ReflectedButton : public qv::Window {
protected:
    bool OnReflectCommand(UINT code) override {
        if (code != BN_CLICKED) return false;
        ++clicks_;
        SetWindowText((L"Clicked " + std::to_wstring(clicks_) + L" times (heard by the button itself)").c_str());
        return true;
    }

private:
    int clicks_ = 0;
};

// Opens one of the library's dialogs from a button.
class DialogButton : public qv::Window {
public:
    explicit DialogButton(UINT templateId) : id_(templateId) {}

protected:
    bool OnReflectCommand(UINT code) override {
        if (code != BN_CLICKED) return false;
        qv::Dialog dlg(id_);
        dlg.DoModal(::GetAncestor(m_hWnd, GA_ROOT));
        return true;
    }

private:
    UINT id_;
};

struct FoundationObjects : PageObjects {
    ReflectedButton reflected;
    qv::CheckListBox checks;
    DialogButton fontName{IDD_QV_FONTNAME};
    DialogButton fontSize{IDD_QV_FONTSIZE};
    DialogButton fontColor{IDD_QV_FONTCOLOR};
    std::vector<HBITMAP> bitmaps;
    ~FoundationObjects() override {
        for (HBITMAP b : bitmaps) ::DeleteObject(b);
    }
};

void SetGalleryFont(HWND hwnd) { ::SendMessageW(hwnd, WM_SETFONT, reinterpret_cast<WPARAM>(GalleryFont()), FALSE); }

std::wstring ConversionLines() {
    std::wstring out = L"User locale decimal separator: '";
    out += qv::LocaleConversion::DecimalSeparator();
    out += L"'\r\n";
    for (const wchar_t* text : {L"3,25", L"3.25", L"-1.5e2", L"12 apples"}) {
        double v = 0;
        const bool ok = String2Double(text, v);
        std::wstring shown;
        Double2String(shown, v, L"%g");
        out += L"String2Double(\"" + std::wstring(text) + L"\") = " + (ok ? shown : std::wstring(L"refused")) + L"\r\n";
    }
    std::wstring f;
    Double2String(f, 3.14159, L"%.2f");
    out += L"Double2String(3.14159, \"%.2f\") = " + f + L"\r\n";
    std::wstring range = L"25";
    out += L"CheckRange(10, 20, \"25\") = " + std::wstring(CheckRange(10, 20, range) ? L"true" : L"false");
    return out;
}

}  // namespace

std::unique_ptr<PageObjects> BuildFoundationPage(HWND page) {
    auto objs = std::make_unique<FoundationObjects>();
    HINSTANCE inst = ::GetModuleHandleW(nullptr);

    AddLabel(page, L"Window object and reflection", 16, 12, 300, 18);
    objs->reflected.Create(L"BUTTON", L"Click me", WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON,
                           RECT{16, 34, 336, 62}, page, 1001);
    SetGalleryFont(objs->reflected);

    AddLabel(page, L"Check-list box (checked, unchecked, indeterminate)", 16, 76, 320, 18);
    objs->checks.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | WS_VSCROLL | WS_TABSTOP | LBS_NOTIFY,
                        RECT{16, 98, 336, 218}, page, 1002);
    SetGalleryFont(objs->checks);
    objs->checks.SetCheckStyle(BS_AUTO3STATE);
    const wchar_t* items[] = {L"Planning", L"Procurement", L"Production", L"Assembly", L"Shipping"};
    const int states[] = {1, 0, 2, 1, 0};
    for (int i = 0; i < 5; ++i) {
        objs->checks.AddString(items[i]);
        objs->checks.SetCheck(i, states[i]);
    }

    AddLabel(page, L"Library bitmaps (splitter, browse, viewer faces)", 16, 232, 320, 18);
    const UINT bitmapIds[] = {IDB_QV_SPLITTER_LEFT, IDB_QV_SPLITTER_LEFT_DOWN, IDB_QV_SPLITTER_RIGHT, IDB_QV_SPLITTER_RIGHT_DOWN,
                              IDB_QV_BROWSE, IDB_QV_VIEWER_OPEN, IDB_QV_VIEWER_REFRESH};
    int x = 16;
    for (UINT id : bitmapIds) {
        HBITMAP bmp = qv::LoadLibraryBitmap(id);
        objs->bitmaps.push_back(bmp);
        HWND st = ::CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_BITMAP, x, 256, 32, 32, page, nullptr,
                                    inst, nullptr);
        ::SendMessageW(st, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bmp));
        x += 40;
    }

    AddLabel(page, L"Library dialogs (always from the library's own templates)", 16, 300, 340, 18);
    const struct {
        DialogButton* button;
        const wchar_t* text;
    } dialogs[] = {{&objs->fontName, L"Select a font..."},
                   {&objs->fontSize, L"Font size..."},
                   {&objs->fontColor, L"Font and colour..."}};
    int y = 322;
    for (const auto& d : dialogs) {
        d.button->Create(L"BUTTON", d.text, WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON, RECT{16, y, 200, y + 26},
                         page, 1010 + static_cast<UINT>(y));
        SetGalleryFont(*d.button);
        y += 32;
    }

    AddLabel(page, L"Conversions in the user's locale", 380, 12, 300, 18);
    HWND conv = ::CreateWindowExW(WS_EX_CLIENTEDGE, L"EDIT", ConversionLines().c_str(),
                                  WS_CHILD | WS_VISIBLE | ES_MULTILINE | ES_READONLY, 380, 34, 560, 130, page, nullptr,
                                  inst, nullptr);
    SetGalleryFont(conv);

    AddLabel(page, L"Rich text to plain text", 380, 176, 300, 18);
    const std::wstring rtf =
        L"{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}{\\colortbl;\\red255\\green0\\blue0;}\\f0 "
        L"Gr\\'fc\\'dfe aus {\\b M\\u252?nchen}\\par Menge:\\tab 12\\par \\u8364? 3,50}";
    std::wstring plain;
    RTF2TXT(rtf, plain);
    HWND rich = ::CreateWindowExW(WS_EX_CLIENTEDGE, L"EDIT", (rtf + L"\r\n\r\n=> " + plain).c_str(),
                                  WS_CHILD | WS_VISIBLE | ES_MULTILINE | ES_READONLY, 380, 198, 560, 110, page, nullptr,
                                  inst, nullptr);
    SetGalleryFont(rich);

    AddLabel(page, L"Log book (module, function, position, message, code)", 380, 320, 340, 18);
    qv::LogFailureA(" XTabCheckListBox::DrawItem()", 2073, "VERIFY(cyItem >= CalcMinimumItemHeight())");
    qv::LogFailureA(" XBaseDateTime::Init", 104, "Creating control failed");
    HWND log = ::CreateWindowExW(WS_EX_CLIENTEDGE, L"LISTBOX", L"", WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_NOINTEGRALHEIGHT,
                                 380, 342, 560, 90, page, nullptr, inst, nullptr);
    SetGalleryFont(log);
    for (const qv::LogEntry& e : qv::Services::DefaultLogBook().Entries()) {
        wchar_t hr[16];
        swprintf(hr, 16, L"0x%08lX", static_cast<unsigned long>(e.hr));
        const std::wstring line = e.module + L" |" + e.function + L" | " + std::to_wstring(e.line) + L" | " +
                                  e.message + L" | " + hr;
        ::SendMessageW(log, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.c_str()));
    }
    return objs;
}

}  // namespace gallery
