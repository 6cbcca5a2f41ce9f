// Every control made, used and destroyed many times on a plain Win32 parent,
// as a host that rebuilds its forms does all day: no GDI or USER handle and
// no memory may stay behind per cycle.
//
// Wine answers 0 to GetGuiResources, so handles are counted by what is left:
// a ballast of brushes and menus takes all but a few thousand free entries
// of the GDI and USER handle tables, and a measurement creates objects until
// the table is full, counts them and deletes them again. A handle kept by a
// control is one fewer that can be made. Memory is the busy bytes of every
// heap (HeapWalk) and the private bytes of the process.
//
// Each class runs in two destruction orders (the control first; the parent
// first), and a class with a tooltip in a third (the two in turn, with the
// form at the screen's bottom right corner so that tooltips flip): a
// warm-up, then two equal batches. What one-time caches grow shows up in the
// warm-up and at most in the first batch; a leak grows both batches alike.
// QV_SOAK_CYCLES sets the cycles per batch (2 by default; a long run:
// QV_SOAK_CYCLES=1000, 2 000 measured cycles per class and order after a
// warm-up of 100); QV_SOAK_REPORT=1 prints every class's numbers (the heap
// growth also for the C runtime's heap alone, where the library's
// own allocations live); QV_SOAK_ONLY=<part of a class name> runs those rows.
#include <windows.h>
#include <commctrl.h>
#include <malloc.h>
#include <psapi.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "quorvel/controls/base_buttons.h"
#include "quorvel/controls/base_edit.h"
#include "quorvel/controls/base_lists.h"
#include "quorvel/controls/base_readonly.h"
#include "quorvel/controls/font_color.h"
#include "quorvel/controls/prompt.h"
#include "quorvel/controls/rich_text.h"
#include "quorvel/controls/scroll_dialog.h"
#include "quorvel/controls/script_buttons.h"
#include "quorvel/controls/static_text.h"
#include "quorvel/lists/cfg_list.h"
#include "quorvel/lists/check_combo.h"
#include "quorvel/lists/custom_combo.h"
#include "quorvel/lists/list_ctrl.h"
#include "quorvel/lists/print_list_object.h"
#include "quorvel/frame/host_objects.h"
#include "quorvel/masks/date_edits.h"
#include "quorvel/masks/datetime_field.h"
#include "quorvel/masks/maskedit.h"
#include "quorvel/masks/numeric.h"
#include "quorvel/masks/placeholder.h"
#include "quorvel/platform/checklistbox.h"
#include "quorvel/platform/controls.h"
#include "quorvel/platform/imagelist.h"
#include "quorvel/tooltip/xtooltip.h"
#include "quorvel/valueadded/value_added.h"
#include "quorvel/views/button_container.h"
#include "quorvel/views/color_button.h"
#include "quorvel/views/viewers.h"
#include "quorvel/windows/line_number_edit.h"
#include "quorvel/windows/search_field.h"
#include "quorvel/windows/splitter.h"
#include "support/host.h"

namespace {

using qvtest::Pump;

// ---- Measuring --------------------------------------------------------------

int EnvInt(const char* name, int fallback) {
    const char* text = std::getenv(name);
    const int value = text ? std::atoi(text) : 0;
    return value > 0 ? value : fallback;
}

// One kind of handle, counted by how many more can be made.
struct HandleKind {
    HANDLE (*make)();
    void (*free)(HANDLE);
};

HANDLE MakeBrush() { return ::CreateSolidBrush(RGB(1, 2, 3)); }
void FreeBrush(HANDLE h) { ::DeleteObject(h); }
HANDLE MakeMenu() { return ::CreatePopupMenu(); }
void FreeMenu(HANDLE h) { ::DestroyMenu(static_cast<HMENU>(h)); }
const HandleKind kGdi{MakeBrush, FreeBrush};
const HandleKind kUser{MakeMenu, FreeMenu};

// Creates objects until `cap` or failure and answers how many were made.
// With `keep` they are left to the caller (the ballast), else deleted.
long Fill(const HandleKind& kind, long cap, std::vector<HANDLE>* keep = nullptr) {
    std::vector<HANDLE> made;
    made.reserve(static_cast<size_t>(cap));
    while (static_cast<long>(made.size()) < cap) {
        HANDLE h = kind.make();
        if (!h) break;
        made.push_back(h);
    }
    const long n = static_cast<long>(made.size());
    if (keep) {
        keep->insert(keep->end(), made.begin(), made.end());
    } else {
        for (HANDLE h : made) kind.free(h);
    }
    return n;
}

// Leaves `headroom` free entries of a handle table and keeps the rest.
class Ballast {
public:
    Ballast(const HandleKind& kind, long headroom) : kind_(kind) {
        const long free = Fill(kind, 1 << 20);
        Fill(kind, std::max(0L, free - headroom), &held_);
    }
    ~Ballast() {
        for (HANDLE h : held_) kind_.free(h);
    }
    Ballast(const Ballast&) = delete;
    Ballast& operator=(const Ballast&) = delete;

private:
    const HandleKind& kind_;
    std::vector<HANDLE> held_;
};

// Busy bytes of the heaps of the process: all of them, or only the C
// runtime's (where the library's own allocations live).
long long HeapBusy(bool crtOnly = false) {
    HANDLE heaps[64];
    DWORD count = std::min<DWORD>(::GetProcessHeaps(64, heaps), 64);
    if (crtOnly) {
        heaps[0] = reinterpret_cast<HANDLE>(_get_heap_handle());
        count = 1;
    }
    long long busy = 0;
    for (DWORD i = 0; i < count; ++i) {
        if (!::HeapLock(heaps[i])) continue;
        PROCESS_HEAP_ENTRY entry{};
        while (::HeapWalk(heaps[i], &entry))
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) busy += entry.cbData;
        ::HeapUnlock(heaps[i]);
    }
    return busy;
}

long long PrivateBytes() {
    PROCESS_MEMORY_COUNTERS_EX pmc{};
    pmc.cb = sizeof(pmc);
    ::GetProcessMemoryInfo(::GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&pmc), sizeof(pmc));
    return static_cast<long long>(pmc.PrivateUsage);
}

// Handles in use are counted as negative free entries, so that every
// field grows when something is kept.
struct Usage {
    long gdi = 0;
    long user = 0;
    long long heap = 0;
    long long crt = 0;
    long long priv = 0;
};

long g_headroom = 0;

// `crt`: also the C runtime's heap alone (reported only).
Usage Measure(bool crt = false) {
    Pump();
    return Usage{g_headroom - Fill(kGdi, g_headroom), g_headroom - Fill(kUser, g_headroom), HeapBusy(),
                 crt ? HeapBusy(true) : 0, PrivateBytes()};
}

Usage operator-(const Usage& a, const Usage& b) {
    return Usage{a.gdi - b.gdi, a.user - b.user, a.heap - b.heap, a.crt - b.crt, a.priv - b.priv};
}

// ---- The controls -------------------------------------------------------------

const RECT kRect{10, 10, 210, 34};
const RECT kTallRect{10, 10, 260, 130};
constexpr UINT kId = 100;

// A control made on a parent. Destroying it destroys its window.
class Subject {
public:
    virtual ~Subject() = default;
    // The window typed into and hovered; null when creation failed.
    virtual HWND Handle() const = 0;
    virtual void SetColours(COLORREF text, COLORREF bk) = 0;
    virtual void SetFont(HFONT font) { ::SendMessageW(Handle(), WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE); }
    // Gets the tooltip ready to show on hover; false when there is none.
    virtual bool PrepareTooltip() { return false; }
};

// A library window class: colours through XBaseColor, tooltip through
// FieldTooltip, whichever of them the class has.
template <class T>
class Control final : public Subject {
public:
    explicit Control(std::unique_ptr<T> object, bool made) : object_(std::move(object)), made_(made) {}
    HWND Handle() const override { return made_ ? object_->m_hWnd : nullptr; }
    void SetColours(COLORREF text, COLORREF bk) override {
        if constexpr (std::is_base_of_v<XBaseColor, T>) {
            object_->SetTextColor(text);
            object_->SetBkColor(bk);
        }
    }
    bool PrepareTooltip() override {
        if constexpr (std::is_base_of_v<qv::FieldTooltip, T>) object_->CreateTooltip();
        return true;
    }
    T& Object() { return *object_; }

private:
    std::unique_ptr<T> object_;
    bool made_;
};

using Maker = std::function<std::unique_ptr<Subject>(HWND parent, HFONT font)>;

// A row for class T: `create(object, parent, font)` makes its window.
template <class T, class Create, class New = std::unique_ptr<T> (*)()>
Maker Make(Create create, New make = [] { return std::make_unique<T>(); }) {
    return [create, make](HWND parent, HFONT font) -> std::unique_ptr<Subject> {
        std::unique_ptr<T> object = make();
        const bool made = create(*object, parent, font) != 0;
        return std::make_unique<Control<T>>(std::move(object), made);
    };
}

// The usual field: Create(text, id, rect, font, parent).
template <class T>
Maker Field(const wchar_t* text = L"Text", RECT rect = kRect) {
    return Make<T>([text, rect](T& c, HWND p, HFONT f) { return c.Create(text, kId, rect, f, p); });
}

template <class T>
Maker ReadOnlyDate(DISPLAYTYPE type) {
    return Make<T>(
        [](T& c, HWND p, HFONT f) {
            unsigned int id = kId;
            return c.Create(kRect, p, id, f) && c.SetValue(qv::OleDateTime(2024, 2, 29, 13, 45, 0));
        },
        [type] { return std::make_unique<T>(type); });
}

// The library's own tooltip on a label of the parent.
class OwnTooltip final : public Subject {
public:
    OwnTooltip(HWND parent, HFONT font) {
        label_ = ::CreateWindowExW(0, L"STATIC", L"label", WS_CHILD | WS_VISIBLE | SS_NOTIFY, 10, 10, 200, 24, parent,
                                   nullptr, nullptr, nullptr);
        if (!label_ || !tip_.Create(parent)) label_ = nullptr;
        tip_.SetFont(font);
        tip_.AddTool(label_, L"<b>Due date</b><br>When the <i>order</i> is due.<hr=50%><ct=0x0000FF>F1</ct>");
        tip_.SubclassTool(label_);
    }
    HWND Handle() const override { return label_; }
    void SetColours(COLORREF text, COLORREF bk) override {
        tip_.SetColor(XTooltip::kColorText, text);
        tip_.SetColor(XTooltip::kColorBk, bk);
    }
    void SetFont(HFONT font) override { tip_.SetFont(font); }
    bool PrepareTooltip() override { return true; }

private:
    HWND label_ = nullptr;
    XTooltip tip_;
};

// The stock tooltip wrapper on a label of the parent.
class StockTooltip final : public Subject {
public:
    explicit StockTooltip(HWND parent) {
        label_ = ::CreateWindowExW(0, L"STATIC", L"label", WS_CHILD | WS_VISIBLE | SS_NOTIFY, 10, 10, 200, 24, parent,
                                   nullptr, nullptr, nullptr);
        if (!label_ || !tip_.Create(parent) || !tip_.AddTool(label_, L"Stock tooltip text")) label_ = nullptr;
    }
    HWND Handle() const override { return label_; }
    void SetColours(COLORREF text, COLORREF bk) override {
        tip_.SetTipTextColor(text);
        tip_.SetTipBkColor(bk);
    }
    void SetFont(HFONT font) override { tip_.SetFont(font); }
    bool PrepareTooltip() override { return true; }

private:
    HWND label_ = nullptr;
    qv::ToolTipCtrl tip_;
};

// The splitter with an edit in each pane.
class Splitter final : public Subject {
public:
    explicit Splitter(HWND parent) {
        if (!splitter_.Create(parent, RECT{0, 0, 400, 300}, kId)) return;
        for (int i = 0; i < 2; ++i) {
            HWND pane = ::CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE, 0, 0, 50, 50, splitter_, nullptr,
                                          nullptr, nullptr);
            if (!pane || !splitter_.SetPane(i, pane)) return;
        }
        made_ = true;
    }
    HWND Handle() const override { return made_ ? splitter_.m_hWnd : nullptr; }
    void SetColours(COLORREF, COLORREF) override {}

private:
    XSplitterWnd splitter_;
    bool made_ = false;
};

// A host's field in a script container, its "..." button beside it; the
// field is the host's and goes with the parent.
class ScriptContainer final : public Subject {
public:
    explicit ScriptContainer(HWND parent)
        : field_(::CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE, 0, 0, 120, 24, parent, nullptr, nullptr,
                                   nullptr)),
          container_(field_, XScriptContainer::PosRight, kId + 1) {
        made_ = field_ && container_.Create(kTallRect, parent, kId);
    }
    HWND Handle() const override { return made_ ? container_.GetButton() : nullptr; }
    void SetColours(COLORREF, COLORREF) override {}
    bool PrepareTooltip() override { return container_.GetToolTipCtrl() != nullptr; }

private:
    HWND field_;
    XScriptContainer container_;
    bool made_ = false;
};

// The scrolling dialog on the library's page, given a sizing border and a
// field: made smaller than its layout, scrolled by a command and the wheel,
// and grown back so that the grip shows again.
class ScrollForm final : public Subject {
public:
    explicit ScrollForm(HWND parent) {
        if (!dialog_.Create(parent)) return;
        field_ = ::CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | WS_BORDER, 10, 10, 200, 24, dialog_,
                                   nullptr, nullptr, nullptr);
        const RECT layout = dialog_.GetInitialClientRect();
        dialog_.SetWindowPos(nullptr, 0, 0, layout.right / 2, layout.bottom / 2, SWP_NOZORDER | SWP_SHOWWINDOW);
        dialog_.SendMessage(WM_VSCROLL, SB_PAGEDOWN, 0);
        dialog_.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
        const bool scrolled = dialog_.VerticalScroll().position > 0;
        dialog_.SetWindowPos(nullptr, 0, 0, layout.right + 40, layout.bottom + 40, SWP_NOMOVE | SWP_NOZORDER);
        made_ = field_ && scrolled && ::IsWindowVisible(dialog_.GetGripper());
    }
    HWND Handle() const override { return made_ ? field_ : nullptr; }
    void SetColours(COLORREF, COLORREF) override {}

private:
    class Resizable : public XScrollDialog {
    protected:
        BOOL OnInitDialog() override {
            ModifyStyle(0, WS_THICKFRAME, SWP_FRAMECHANGED);
            return XScrollDialog::OnInitDialog();
        }
    };
    Resizable dialog_;
    HWND field_ = nullptr;
    bool made_ = false;
};

// The report list with a picture column and typed rows, sorted by a click on
// a column title, handed to the library's print-list object (pictures
// included) and copied to the clipboard; every cycle also replaces and
// deletes a row. The image list is the test's and outlives every list.
class ReportList final : public Subject {
public:
    explicit ReportList(HWND parent) {
        static qv::ImageList pictures = [] {
            qv::ImageList list;
            if (list.Create(16, 16, ILC_COLOR32 | ILC_MASK, 1, 0)) {
                HICON icon = ::LoadIconW(nullptr, IDI_INFORMATION);
                list.Add(icon);
            }
            return list;
        }();
        if (!list_.AssignImageList(&pictures) ||
            !list_.Create(WS_CHILD | WS_VISIBLE | LVS_REPORT, RECT{0, 0, 400, 300}, parent, kId))
            return;
        list_.InsertColumn(0, L"", LVCFMT_LEFT, 24);
        list_.InsertColumn(1, L"Order", LVCFMT_LEFT, 80);
        list_.InsertColumn(2, L"Quantity", LVCFMT_RIGHT, 60);
        list_.InsertColumn(3, L"Due", LVCFMT_CENTER, 100);
        for (int r = 0; r < 20; ++r) {
            if (!list_.AddEntry({qv::Variant(L"PO-1"), qv::Variant(static_cast<long>(20 - r)),
                                 qv::Variant::FromDate(46023.0 + r)},
                                r, 0))
                return;
        }
        made_ = list_.ChangeEntry({qv::Variant::Null(), qv::Variant(3.5), qv::Variant(L"x")}, 1, 0) &&
                list_.DeleteRow(2) && list_.SelectRow(0);
    }
    HWND Handle() const override { return made_ ? list_.m_hWnd : nullptr; }
    void SetColours(COLORREF text, COLORREF bk) override {
        list_.SetTextColor(text);
        list_.SetBkColor(bk);
    }
    void SetFont(HFONT font) override {
        list_.SetFont(font);
        // A click on the "Quantity" title sorts; then the list is printed to
        // the object, pictures and all, and copied.
        HWND header = list_.GetHeaderCtrl();
        RECT item{};
        if (::SendMessageW(header, HDM_GETITEMRECT, 2, reinterpret_cast<LPARAM>(&item))) {
            const LPARAM at = MAKELPARAM(item.left + 5, item.top + 5);
            ::SendMessageW(header, WM_LBUTTONDOWN, MK_LBUTTON, at);
            ::SendMessageW(header, WM_LBUTTONUP, 0, at);
        }
        qv::ComPtr<IZTPrintGenericListObject> object;
        if (SUCCEEDED(XPrintListObject::CreateInstance(&object)) && list_.PrintListSetColNameSize(object.Get()) &&
            list_.PrintListSetItemData(object.Get()))
            object->CopyToClipboard();
    }

private:
    XBaseListCtrl list_;
    bool made_ = false;
};

// A 24-bit bitmap of 32 x 32 in the temporary folder, written once, for the
// viewers; a name beside it that does not exist.
std::wstring SoakBitmap(bool exists = true) {
    wchar_t temp[MAX_PATH + 1] = {};
    ::GetTempPathW(MAX_PATH + 1, temp);
    static const std::wstring path = [&] {
        const std::wstring file = std::wstring(temp) + L"qv_soak_viewer.bmp";
        std::string bmp = "BM";
        const auto put = [&bmp](uint32_t v, int n) { for (int i = 0; i < n; ++i) bmp.push_back(char((v >> (8 * i)) & 0xFF)); };
        put(54 + 32 * 32 * 3, 4), put(0, 4), put(54, 4), put(40, 4), put(32, 4), put(32, 4), put(1, 2), put(24, 2);
        put(0, 4), put(32 * 32 * 3, 4), put(0, 4), put(0, 4), put(0, 4), put(0, 4);
        for (int i = 0; i < 32 * 32; ++i) bmp += {char(i), char(i / 4), char(255 - i / 4)};
        const HANDLE h = ::CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        DWORD written = 0;
        if (h != INVALID_HANDLE_VALUE) ::WriteFile(h, bmp.data(), DWORD(bmp.size()), &written, nullptr), ::CloseHandle(h);
        return file;
    }();
    return exists ? path : std::wstring(temp) + L"qv_soak_missing.bmp";
}

// A viewer of class T showing the bitmap, or "File not found" for the name
// that does not exist.
template <class T>
Maker Viewer(bool exists) {
    return Make<T>([exists](T& c, HWND p, HFONT f) {
        UINT id = kId;
        if (!c.CreateCtrl(id, kTallRect, f, p)) return false;
        c.SetFilename(SoakBitmap(exists));
        return exists ? c.GetViewerKind() == XImageView::kBitmapViewer : c.IsFileNotFoundShown();
    });
}

// A search field holding the soak bitmap's path, then told the name beside
// it that does not exist: the field shows the system's message instead.
template <class T>
Maker SearchField() {
    return Make<T>([](T& c, HWND p, HFONT f) {
        if (!c.Create(SoakBitmap(true), XBaseSearchCtrl::kStyle, kRect, f, p, kId)) return false;
        c.SetValidation(true);
        ::SetWindowTextW(c, SoakBitmap(false).c_str());
        return !c.GetEditCtrl().GetWindowText().empty() && c.GetEditCtrl().GetWindowText() != SoakBitmap(false);
    });
}

enum Hover { kNoTooltip, kHoverControl, kHoverChild };

struct ControlRow {
    const char* name;
    Maker make;
    Hover tooltip;  // shown by hovering the control (or its first child) in every cycle
};

std::vector<ControlRow> Rows() {
    const auto prompt = [](auto& c, HWND p, HFONT f) {
        return c.Create(L"Due date", kId, kRect, f, p, false, false, L"<b>Due</b> date<document>d.htm</document>", true);
    };
    const auto group = [](auto& c, HWND p, HFONT f) {
        return c.Create(L"Group", kId, kTallRect, f, p, L"<b>Group</b> help", true);
    };
    const auto checks = [](auto& c, HWND p, HFONT f) {
        return c.Create(L"", kId, kTallRect, f, p) && ::SendMessageW(c, LB_ADDSTRING, 0, LPARAM(L"One")) >= 0;
    };
    const auto choice = [](auto& c, HWND p, HFONT f) {
        return c.Create(L"", kId, kTallRect, f, p) && ::SendMessageW(c, CB_ADDSTRING, 0, LPARAM(L"Chosen")) >= 0 &&
               ::SendMessageW(c, CB_SETCURSEL, 0, 0) == 0;
    };
    // Dropped down once, so the check list is taken over in every cycle.
    const auto checkCombo = [](auto& c, HWND p, HFONT f) {
        if (!c.Create(WS_CHILD | WS_VISIBLE | WS_VSCROLL, kTallRect, p, kId)) return false;
        c.SetFont(f);
        c.AddString(L"Early", true);
        c.AddString(L"Late", false);
        c.AddString(L"Early", false);
        c.SendMessage(CB_SHOWDROPDOWN, TRUE);
        c.SendMessage(CB_SHOWDROPDOWN, FALSE);
        return c.IsChecked(L"Early") == false;
    };
    // A document in, a word made bold, the document out again. One line: a
    // document with a paragraph mark costs Wine's own rich edit control 280
    // bytes of heap per window that it never frees (the bare platform
    // control, made and streamed without any of our code, does the same).
    const auto richText = [](auto& c, HWND p, HFONT) {
        if (!c.Create(kTallRect, p, kId) || !c.SetRTF(L"{\\rtf1\\ansi\\plain Soak {\\b text}}")) return false;
        c.SetSel(0, 4);
        c.RunCommand(XRichEditCtrl::kIdBold);
        return c.GetRTF().find(L"Soak") != std::wstring::npos;
    };
    return {
        {"XBaseEdit", Field<XBaseEdit>(), kHoverControl},
        {"XBaseEditColor", Field<XBaseEditColor>(), kHoverControl},
        {"XBaseMultiLineEdit", Field<XBaseMultiLineEdit>(L"A\r\nB", kTallRect), kNoTooltip},
        {"XBaseMultiLineEditColor", Field<XBaseMultiLineEditColor>(L"A\r\nB", kTallRect), kNoTooltip},
        {"XBaseReadOnlyMultiLineEditColor", Field<XBaseReadOnlyMultiLineEditColor>(L"A\r\nB", kTallRect), kNoTooltip},
        {"XBaseComboBox", Make<XBaseComboBox>(choice), kHoverControl},
        {"XBaseComboBoxColor", Make<XBaseComboBoxColor>(choice), kHoverControl},
        {"XBaseEditComboBox", Field<XBaseEditComboBox>(L"typed", kTallRect), kHoverControl},
        {"XBaseEditComboBoxColor", Field<XBaseEditComboBoxColor>(L"typed", kTallRect), kHoverControl},
        {"XBaseListBox", Field<XBaseListBox>(L"", kTallRect), kNoTooltip},
        {"XBaseListBoxColor", Field<XBaseListBoxColor>(L"", kTallRect), kNoTooltip},
        {"XBaseCheckListBox", Make<XBaseCheckListBox>(checks), kHoverControl},
        {"XBaseReadOnlyCheckListBox", Make<XBaseReadOnlyCheckListBox>(checks), kHoverControl},
        {"XTabCheckListBox", Make<XTabCheckListBox>([](auto& c, HWND p, HFONT) {
             return c.Create(WS_CHILD | WS_VISIBLE | LBS_OWNERDRAWVARIABLE | LBS_HASSTRINGS, kTallRect, p, kId) &&
                    ::SendMessageW(c, LB_ADDSTRING, 0, LPARAM(L"One\tTwo")) >= 0;
         }), kNoTooltip},
        {"XBaseButton", Field<XBaseButton>(), kNoTooltip},
        {"XBaseCheckBox", Field<XBaseCheckBox>(), kNoTooltip},
        {"XBaseTriCheckBox", Field<XBaseTriCheckBox>(), kNoTooltip},
        {"XBaseRadio", Field<XBaseRadio>(), kNoTooltip},
        {"XBaseGroupBox", Field<XBaseGroupBox>(L"Group", kTallRect), kNoTooltip},
        {"XBaseGroupBox prompt caption", Make<XBaseGroupBox>(group), kHoverChild},
        {"XBaseGroupBoxColor prompt caption", Make<XBaseGroupBoxColor>(group), kHoverChild},
        {"XBaseEditReadOnly", Field<XBaseEditReadOnly>(), kNoTooltip},
        {"XBaseEditReadOnlyColor", Field<XBaseEditReadOnlyColor>(), kNoTooltip},
        {"XBasePrompt", Make<XBasePrompt>(prompt), kHoverControl},
        {"XBaseStaticText", Make<XBaseStaticText>([](auto& c, HWND p, HFONT f) {
             return c.Create(L"Label", kId, kRect, f, p, L"Help<document>d.htm</document>", true);
         }), kHoverControl},
        {"XBaseStatictextColor", Make<XBaseStatictextColor>([](auto& c, HWND p, HFONT f) {
             return c.Create(L"Label", kId, kRect, f, p, L"Help", false);
         }), kHoverControl},
        {"XMaskBaseEdit", Field<XMaskBaseEdit>(L""), kHoverControl},
        {"XMaskBaseEditColor", Field<XMaskBaseEditColor>(L""), kHoverControl},
        {"XMaskIntegerEdit", Field<XMaskIntegerEdit>(L""), kHoverControl},
        {"XMaskIntegerEditColor", Field<XMaskIntegerEditColor>(L""), kHoverControl},
        {"XMaskSignedFloatEdit", Field<XMaskSignedFloatEdit>(L""), kHoverControl},
        {"XMaskSignedFloatEditColor", Field<XMaskSignedFloatEditColor>(L""), kHoverControl},
        {"XNumberEdit", Field<XNumberEdit>(L""), kHoverControl},
        {"XHEXEditColor", Field<XHEXEditColor>(L""), kHoverControl},
        {"XMaskEdit", Make<XMaskEdit>([](auto& c, HWND p, HFONT f) {
             const BOOL made = c.Create(L"", kId, kRect, f, p);
             if (made) c.SetMask(L"##.##.####");
             return made;
         }), kHoverControl},
        {"XMFCBaseDateEdit", Make<XMFCBaseDateEdit>([](auto& c, HWND p, HFONT f) { return c.Create(true, kRect, p, kId, f); }), kNoTooltip},
        {"XMFCBaseTimeEdit", Make<XMFCBaseTimeEdit>([](auto& c, HWND p, HFONT f) { return c.Create(kRect, p, kId, f); }), kNoTooltip},
        {"XMFCBaseDateTimeEdit", Make<XMFCBaseDateTimeEdit>([](auto& c, HWND p, HFONT f) {
             unsigned int id = kId;
             return c.Create(true, RECT{10, 10, 260, 34}, p, id, f);
         }), kNoTooltip},
        {"XBaseDateTime", Make<XBaseDateTime>([](auto& c, HWND p, HFONT) {
             return c.Create(WS_CHILD | WS_VISIBLE, kRect, p, kId) && c.Init(1, 0);
         }), kNoTooltip},
        {"XMFCBaseDateEditReadOnly", ReadOnlyDate<XMFCBaseDateEditReadOnly>(DISPLAYTYPE_DATETIME), kNoTooltip},
        {"XMFCBaseDateEditReadOnlyColor", ReadOnlyDate<XMFCBaseDateEditReadOnlyColor>(DISPLAYTYPE_DATETIME), kNoTooltip},
        {"XBaseColorControlNew", Make<XBaseColorControlNew>([](auto& c, HWND p, HFONT) {
             if (!c.CreateCtrl(L"", WS_CHILD | WS_VISIBLE, kRect, p, kId)) return false;
             // Each change gives the preview a new font; the one before must go.
             c.SetFontBold(true);
             c.SetFontSize(16);
             ::UpdateWindow(c);
             return c.SetBGColorHTML(L"#fffacd") && c.GetPreviewFont() != nullptr;
         }), kNoTooltip},
        {"XBaseColorControlNew dialog", Make<XBaseColorControlNew>([](auto& c, HWND p, HFONT) {
             if (!c.CreateCtrl(L"", WS_CHILD | WS_VISIBLE, kRect, p, kId)) return false;
             // The font and colour dialog opened, its lists and preview made, and OK pressed.
             const UINT_PTR timer = ::SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR, DWORD) {
                 if (HWND dlg = ::FindWindowW(L"#32770", L"Fonts and colors")) ::PostMessageW(dlg, WM_COMMAND, IDOK, 0);
             });
             const bool chosen = c.ShowFontDlg();
             ::KillTimer(nullptr, timer);
             return chosen;
         }), kNoTooltip},
        {"XMultiLineEditLN", Field<XMultiLineEditLN>(L"1\r\n2\r\n3", kTallRect), kNoTooltip},
        {"XMultiLineEditLNColor", Field<XMultiLineEditLNColor>(L"1\r\n2\r\n3", kTallRect), kNoTooltip},
        {"XSplitterWnd", [](HWND p, HFONT) -> std::unique_ptr<Subject> { return std::make_unique<Splitter>(p); }, kNoTooltip},
        {"XScrollDialog", [](HWND p, HFONT) -> std::unique_ptr<Subject> { return std::make_unique<ScrollForm>(p); }, kNoTooltip},
        {"XSearchFolderCtrl", SearchField<XSearchFolderCtrl>(), kNoTooltip},
        {"XSearchFileCtrl", SearchField<XSearchFileCtrl>(), kNoTooltip},
        {"XSearchFileOpenCtrl", SearchField<XSearchFileOpenCtrl>(), kNoTooltip},
        {"XReadOnlySearchFolderCtrl", SearchField<XReadOnlySearchFolderCtrl>(), kNoTooltip},
        {"XReadOnlySearchFileCtrl", SearchField<XReadOnlySearchFileCtrl>(), kNoTooltip},
        {"XReadOnlySearchFileOpenCtrl", SearchField<XReadOnlySearchFileOpenCtrl>(), kNoTooltip},
        {"XImageView", Viewer<XImageView>(true), kNoTooltip},
        {"XImageViewSimple", Viewer<XImageViewSimple>(false), kNoTooltip},
        {"XBmpImageView", Viewer<XBmpImageView>(true), kNoTooltip},
        {"XBaseScriptBtn_Group", Make<XBaseScriptBtn_Group>([](auto& c, HWND p, HFONT f) {
             if (!c.Create(kId, kTallRect, f, p)) return false;
             for (const auto& [id, text] : {std::pair{101, L"Recalculate"}, {102, L"Export"}, {103, L"Check"}})
                 if (!c.AddScriptCommand(id, text)) return false;
             c.SetAlignment(1);
             c.UpdateSize();
             return c.GetScriptCommandCount() == 3;
         }), kNoTooltip},
        {"XScriptContainer", [](HWND p, HFONT) -> std::unique_ptr<Subject> { return std::make_unique<ScriptContainer>(p); }, kHoverControl},
        {"XButtonContainer", Make<XButtonContainer>(
             [](auto& c, HWND p, HFONT) { return c.Create(kTallRect, p, kId) && c.GetButtonCount() == 2; },
             [] {
                 return std::make_unique<XButtonContainer>(
                     nullptr, XButtonContainer::kHorizontal,
                     std::vector<XButtonDescription>{{L"Save", L"Save the plan", 201}, {L"Print", L"Print the plan", 202}});
             }), kHoverChild},
        {"XColorBtn", Make<XColorBtn>([](auto& c, HWND p, HFONT) {
             if (!c.Create(L"Text colour", kRect, p, kId)) return false;
             c.SetSelColor(RGB(30, 144, 255));
             ::UpdateWindow(c);
             return XColorBtn::GetPaletteUsers() >= 1;
         }), kNoTooltip},
        {"XBaseListCtrl", [](HWND p, HFONT) -> std::unique_ptr<Subject> { return std::make_unique<ReportList>(p); }, kNoTooltip},
        {"XCfgListCtrl", Make<XCfgListCtrl>([](auto& c, HWND p, HFONT) {
             if (!c.Create(WS_CHILD | WS_VISIBLE | LVS_REPORT, kTallRect, p, kId)) return false;
             c.InsertColumn(0, L"Key", LVCFMT_LEFT, 80);
             c.InsertColumn(1, L"Value", LVCFMT_RIGHT, 60);
             for (const wchar_t* key : {L"b", L"A", L"c", L"B"}) c.SetItemText(c.InsertItem(0, key), 1, L"1");
             return c.SortCtrl(0, true);
         }), kNoTooltip},
        // Filled from the embedded host objects; one value taken in the field,
        // and the field left open for the destruction.
        {"XValueAddedCtrl", Make<XValueAddedCtrl>([](auto& c, HWND p, HFONT f) {
             XVAConfig config;
             config.SetItems({{1, 0, L"Set-up", L"g", true}, {11, 1, L"Clamp", L"s", true}, {2, 0, L"Move", L"g", true}});
             XVAConfigFactory::GetConfigFactory()->SetConfiguration(config);
             qv::DataObject *object = nullptr, *project = nullptr, *typeSet = nullptr;
             qv::DataObject::CreateInstance(&object), qv::DataObject::CreateInstance(&project), qv::DataObject::CreateInstance(&typeSet);
             typeSet->SetRelatedObject(L"master", typeSet);  // a cycle the host breaks below
             project->SetRelatedObject(L"voxendirtypeset", typeSet);
             object->SetRelatedObject(L"voxeproject", project);
             object->SetAttribute(L"dbl_totalcalculated", 600.0);
             auto* values = static_cast<tagINITVALUE*>(::CoTaskMemAlloc(sizeof(tagINITVALUE)));
             values[0].name = ::SysAllocString(L"pObject");
             ::VariantInit(&values[0].value);
             values[0].value.vt = VT_UNKNOWN, values[0].value.punkVal = object;
             tagVAINITDATA init{1, values};  // the array takes the creation's reference
             UINT id = kId;
             const bool made = c.CreateCtrl(id, kTallRect, f, p, &init) &&
                               c.SetValue(L"[FP:0][SID:11][PID:1][TE:0][PE:5][TC:0][PC:0]") && c.EditRow(1);
             if (made) {
                 HWND field = *c.GetInPlaceEdit();
                 for (const wchar_t* k = L"12\t"; *k; ++k) ::SendMessageW(field, WM_CHAR, *k, 0);
                 c.EditRow(2);
             }
             typeSet->SetRelatedObject(L"master", nullptr);
             project->Release(), typeSet->Release();
             return made && c.IsModified() && c.GetInPlaceEdit() != nullptr;
         }), kNoTooltip},
        {"XCheckComboBox", Make<XCheckComboBox>(checkCombo), kNoTooltip},
        {"XCheckComboBoxColor", Make<XCheckComboBoxColor>(checkCombo), kNoTooltip},
        {"XCustomCombo", Make<XCustomCombo>([](auto& c, HWND p, HFONT f) {
             if (!c.Create(L"Part", kId, kTallRect, f, p)) return false;
             for (const wchar_t* text : {L"Hex bolt M8", L"Washer M8", L"Hex nut M6"}) c.AddEntry(text, 1);
             c.FilterList(L"*m8");
             return c.GetCount() == 2;
         }), kHoverChild},
        {"XBaseRTFEdit", Make<XBaseRTFEdit>(richText), kNoTooltip},
        {"XBaseReadOnlyRTFEdit", Make<XBaseReadOnlyRTFEdit>(richText), kNoTooltip},
        {"XTooltip", [](HWND p, HFONT f) -> std::unique_ptr<Subject> { return std::make_unique<OwnTooltip>(p, f); }, kHoverControl},
        {"qv::ToolTipCtrl", [](HWND p, HFONT) -> std::unique_ptr<Subject> { return std::make_unique<StockTooltip>(p); }, kHoverControl},
    };
}

// ---- The cycle ------------------------------------------------------------------

const wchar_t kParentClass[] = L"QvSoakParent";

// `cornered`: the form sits at the screen's bottom right corner, with its
// controls just inside the screen.
HWND CreateParent(bool cornered = false) {
    static const ATOM atom = [] {
        WNDCLASSW wc{};
        wc.lpfnWndProc = ::DefWindowProcW;
        wc.hInstance = ::GetModuleHandleW(nullptr);
        wc.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
        wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
        wc.lpszClassName = kParentClass;
        return ::RegisterClassW(&wc);
    }();
    if (!atom) return nullptr;
    const int x = cornered ? ::GetSystemMetrics(SM_CXSCREEN) - 300 : 0;
    const int y = cornered ? ::GetSystemMetrics(SM_CYSCREEN) - 90 : 0;
    HWND parent = ::CreateWindowExW(0, kParentClass, L"Form", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, x, y, 480, 360,
                                    nullptr, nullptr, ::GetModuleHandleW(nullptr), nullptr);
    if (parent) {
        ::ShowWindow(parent, SW_SHOW);
        ::SetForegroundWindow(parent);
    }
    return parent;
}

// The visible tooltip window of this thread (ours or a stock one), or null.
HWND ShownTooltip() {
    HWND shown = nullptr;
    ::EnumThreadWindows(
        ::GetCurrentThreadId(),
        [](HWND w, LPARAM found) -> BOOL {
            wchar_t cls[32] = {};
            ::GetClassNameW(w, cls, 32);
            if (::IsWindowVisible(w) && (!lstrcmpW(cls, L"XTooltip") || !lstrcmpW(cls, TOOLTIPS_CLASSW)))
                *reinterpret_cast<HWND*>(found) = w;
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&shown));
    return shown;
}

// Every tooltip of this thread appears at once on hover.
void ShortenDelays() {
    ::EnumThreadWindows(
        ::GetCurrentThreadId(),
        [](HWND w, LPARAM) -> BOOL {
            wchar_t cls[32] = {};
            ::GetClassNameW(w, cls, 32);
            if (!lstrcmpW(cls, TOOLTIPS_CLASSW)) ::SendMessageW(w, TTM_SETDELAYTIME, TTDT_INITIAL, MAKELPARAM(1, 0));
            if (auto* tip = dynamic_cast<XTooltip*>(qv::Window::FromHandle(w)))
                tip->SetDelayTime(XTooltip::kDelayInitial, 1);
            return TRUE;
        },
        0);
}

// Moves the mouse from the parent's corner onto `wnd` and waits for a tooltip.
bool Hover(HWND parent, HWND wnd) {
    ShortenDelays();
    POINT away{460, 330};
    ::ClientToScreen(parent, &away);
    ::SetCursorPos(away.x, away.y);
    ::SendMessageW(parent, WM_MOUSEMOVE, 0, MAKELPARAM(460, 330));
    Pump();
    POINT on{5, 5};
    ::ClientToScreen(wnd, &on);
    ::SetCursorPos(on.x, on.y);
    ::SendMessageW(wnd, WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    if (!qvtest::WaitFor([] { return ShownTooltip() != nullptr; }, 400)) return false;
    // Painted, not only placed: drawing the mark-up is what a user sees.
    ::UpdateWindow(ShownTooltip());
    return true;
}

enum class Order { ControlFirst, ParentFirst, InTurn };

struct Cycler {
    const ControlRow& row;
    HFONT font;
    Order order;
    int shown = 0;
    int failed = 0;

    void Run(int cycles) {
        for (int i = 0; i < cycles; ++i) Once(i);
    }

    void Once(int i) {
        HWND parent = CreateParent(order == Order::InTurn);
        std::unique_ptr<Subject> subject = parent ? row.make(parent, font) : nullptr;
        HWND wnd = subject ? subject->Handle() : nullptr;
        if (!wnd) {
            ++failed;
        } else {
            ::SetFocus(wnd);
            qvtest::TypeChars(wnd, L"12ab");
            subject->SetColours(RGB(200, 0, i & 0xFF), RGB(255, 255, 200));
            subject->SetColours(RGB(0, 0, 128), RGB(220, 240, 255));
            subject->SetFont(font);
            HWND over = row.tooltip == kHoverChild ? ::GetWindow(wnd, GW_CHILD) : wnd;
            if (row.tooltip != kNoTooltip && subject->PrepareTooltip() && over && Hover(parent, over)) ++shown;
        }
        if (order == Order::ParentFirst || (order == Order::InTurn && i % 2)) {
            ::DestroyWindow(parent);
            subject.reset();
        } else {
            subject.reset();
            ::DestroyWindow(parent);
        }
        Pump();
    }
};

// ---- Tests -----------------------------------------------------------------------------

class SoakTest : public qvtest::HostTest {
protected:
    static void SetUpTestSuite() {
        cycles_ = EnvInt("QV_SOAK_CYCLES", 2);
        // Each measurement makes this many brushes and menus: enough for
        // any leak of a few batches to show, few enough to keep the run short.
        g_headroom = std::max(500L, 8L * cycles_);
        gdi_ = std::make_unique<Ballast>(kGdi, g_headroom);
        user_ = std::make_unique<Ballast>(kUser, g_headroom);
    }
    static void TearDownTestSuite() {
        gdi_.reset();
        user_.reset();
    }
    void SetUp() override {
        UseSettings({{L"tooltipdelaytime", L"5"}});
        HostTest::SetUp();
        font_ = ::CreateFontW(-15, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, L"Tahoma");
    }
    void TearDown() override {
        ::DeleteObject(font_);
        HostTest::TearDown();
    }
    HFONT font_ = nullptr;
    static int cycles_;
    static std::unique_ptr<Ballast> gdi_, user_;
};

int SoakTest::cycles_ = 0;
std::unique_ptr<Ballast> SoakTest::gdi_, SoakTest::user_;

TEST_F(SoakTest, HandleCountSeesALeakOfAHundredBrushes) {
    const Usage before = Measure();
    std::vector<HANDLE> leaked;
    for (int i = 0; i < 100; ++i) leaked.push_back(::CreateSolidBrush(RGB(i, 0, 0)));
    const Usage during = Measure();
    for (HANDLE h : leaked) ::DeleteObject(h);
    const Usage after = Measure();
    EXPECT_EQ((during - before).gdi, 100);
    EXPECT_EQ((after - before).gdi, 0);
    EXPECT_EQ((during - before).user, 0);
}

TEST_F(SoakTest, HandleCountSeesALeakOfAWindow) {
    const Usage before = Measure();
    HWND parent = CreateParent();
    const Usage during = Measure();
    ::DestroyWindow(parent);
    const Usage after = Measure();
    EXPECT_GE((during - before).user, 1);
    EXPECT_EQ((after - before).user, 0);
}

TEST_F(SoakTest, NoControlKeepsHandlesOrMemoryPerCycle) {
    const bool report = std::getenv("QV_SOAK_REPORT") != nullptr;
    const int warmUp = std::max(1, cycles_ / 10);
    // A batch may grow by what a cache adds once; a leak adds to every cycle.
    // (less than one handle a cycle, so that a leak of one shows)
    const long kHandleSlack = std::min(2, cycles_ - 1);
    const long long kHeapSlack = 384 + 8LL * cycles_;
    const char* only = std::getenv("QV_SOAK_ONLY");
    for (const ControlRow& row : Rows()) {
        if (only && std::string(row.name).find(only) == std::string::npos) continue;
        for (const Order order : {Order::ControlFirst, Order::ParentFirst, Order::InTurn}) {
            // Taking turns in the corner is about tooltips that flip; a class
            // without one is done with the two plain orders.
            if (order == Order::InTurn && row.tooltip == kNoTooltip) continue;
            const char* orderName = order == Order::ControlFirst  ? "control first"
                                    : order == Order::ParentFirst ? "parent first"
                                                                  : "in turn";
            SCOPED_TRACE(std::string(row.name) + ", " + orderName);
            Cycler cycler{row, font_, order};
            // The warm-up's own growth is only reported.
            const Usage start = report ? Measure(true) : Usage{};
            cycler.Run(warmUp);
            const Usage warm = Measure(report);
            cycler.Run(cycles_);
            const Usage first = Measure(report);
            cycler.Run(cycles_);
            const Usage second = Measure(report);
            const Usage g1 = first - warm;
            const Usage g2 = second - first;
            if (report) {
                const Usage w = warm - start;
                std::printf("%-34s %-13s warm-up %d: gdi %+ld user %+ld heap %+lld (crt %+lld) priv %+lld | 2 x %d:"
                            " gdi %+ld %+ld user %+ld %+ld heap %+lld %+lld (crt %+lld %+lld) priv %+lld %+lld"
                            " | tooltips %d\n",
                            row.name, orderName, warmUp, w.gdi, w.user, w.heap,
                            w.crt, w.priv, cycles_, g1.gdi, g2.gdi, g1.user, g2.user, g1.heap, g2.heap, g1.crt, g2.crt,
                            g1.priv, g2.priv, cycler.shown);
                std::fflush(stdout);
            }
            EXPECT_EQ(cycler.failed, 0);
            if (row.tooltip != kNoTooltip) {
                EXPECT_EQ(cycler.shown, warmUp + 2 * cycles_) << "the tooltip did not show every cycle";
            }
            EXPECT_LE(std::min(g1.gdi, g2.gdi), kHandleSlack) << "GDI handles per batch " << g1.gdi << ", " << g2.gdi;
            EXPECT_LE(std::min(g1.user, g2.user), kHandleSlack) << "USER handles per batch " << g1.user << ", " << g2.user;
            EXPECT_LE(std::min(g1.heap, g2.heap), kHeapSlack) << "heap bytes per batch " << g1.heap << ", " << g2.heap;
        }
    }
}

}  // namespace
