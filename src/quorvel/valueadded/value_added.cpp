#include "quorvel/valueadded/value_added.h"

#include <oleacc.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>
#include <vector>

#include "quorvel/common/boundary.h"
#include "quorvel/frame/host_objects.h"
#include "quorvel/frame/services.h"
#include "quorvel/frame/session.h"
#include "quorvel/frame/zt_lang.h"
#include "quorvel/lists/list_rules.h"
#include "quorvel/platform/gdi.h"
#include "quorvel/valueadded/value_added_rules.h"

namespace va = qv::valueadded;

namespace {

// Opens the field on the next editable row after Enter ended one; posted,
// so the field that ended is gone before the next one opens.
UINT EditNextMessage() {
    static const UINT message = ::RegisterWindowMessageW(L"Quorvel.ValueAdded.EditNext");
    return message;
}

// The pictures' transparent colour.
constexpr COLORREF kPictureMask = RGB(255, 0, 255);

std::wstring Translated(const wchar_t* text) {
    const wchar_t* translated = CoTranslateText(text);
    return translated ? translated : text;
}

// "Max. %.2f%% are assignable." with the maximum: only "%.2f" and "%%" are
// replaced, so a translation with other percent signs cannot upset it.
std::wstring FormatMaximum(const std::wstring& format, double max) {
    std::wstring out;
    for (size_t i = 0; i < format.size(); ++i) {
        if (format.compare(i, 4, L"%.2f") == 0) {
            out += va::FormatFixed(max, 2);
            i += 3;
        } else if (format.compare(i, 2, L"%%") == 0) {
            out += L'%';
            i += 1;
        } else {
            out += format[i];
        }
    }
    return out;
}

// A picture in its slot at `dpi`: enlarged by the whole multiple for the DPI,
// centred, on magenta, the colour the image list makes transparent. Null
// when the picture fills the slot as it is (at 96 DPI): it goes in unchanged.
HBITMAP SlottedPicture(HBITMAP picture, const va::PictureSize& slot, UINT dpi) {
    BITMAP info{};
    if (!::GetObjectW(picture, sizeof info, &info)) return nullptr;
    if (info.bmWidth == slot.cx && info.bmHeight == slot.cy && qv::BitmapFactorForDpi(dpi) == 1) return nullptr;
    HDC screen = ::GetDC(nullptr);
    if (!screen) return nullptr;
    HBITMAP slotted = ::CreateCompatibleBitmap(screen, slot.cx, slot.cy);
    HDC target = slotted ? ::CreateCompatibleDC(screen) : nullptr;
    if (target) {
        const HGDIOBJ old = ::SelectObject(target, slotted);
        const RECT all{0, 0, slot.cx, slot.cy};
        qv::Brush magenta(::CreateSolidBrush(kPictureMask));
        ::FillRect(target, &all, magenta.get());
        qv::DrawBitmapSharp(target, picture, all, dpi);
        ::SelectObject(target, old);
        ::DeleteDC(target);
    }
    ::ReleaseDC(nullptr, screen);
    return slotted;
}

}  // namespace

// ---- XInPlaceFloatEdit -----------------------------------------------------------------

XInPlaceFloatEdit::XInPlaceFloatEdit(int row, int column, int digits, int decimals)
    : XMaskFloatEdit(digits, decimals), m_iRow(row), m_iColumn(column) {}

void XInPlaceFloatEdit::SetAccessibleName(const std::wstring& name) try {
    m_strAccessibleName = name;
} catch (...) {
    qv::CaughtAtEdge(" XInPlaceFloatEdit::SetAccessibleName", __LINE__);
}

void XInPlaceFloatEdit::SetAccessibleDescription(const std::wstring& description) try {
    m_strAccessibleDescription = description;
} catch (...) {
    qv::CaughtAtEdge(" XInPlaceFloatEdit::SetAccessibleDescription", __LINE__);
}

bool XInPlaceFloatEdit::AccessibleName(long child, std::wstring& name) {
    if (child != CHILDID_SELF || m_strAccessibleName.empty()) return false;
    name = m_strAccessibleName;
    return true;
}

bool XInPlaceFloatEdit::AccessibleDescription(long child, std::wstring& description) {
    if (child != CHILDID_SELF || m_strAccessibleDescription.empty()) return false;
    description = m_strAccessibleDescription;
    return true;
}

UINT XInPlaceFloatEdit::OnGetDlgCode() { return XMaskFloatEdit::OnGetDlgCode() | DLGC_WANTALLKEYS; }

void XInPlaceFloatEdit::OnChar(UINT ch, UINT repCnt, UINT flags) {
    switch (ch) {
    case VK_ESCAPE:
        m_bCancelled = true;
        [[fallthrough]];
    case VK_RETURN:
    case VK_TAB:
        m_bEndedByEnter = ch == VK_RETURN;
        ::SetFocus(GetParent());
        return;
    default:
        XMaskFloatEdit::OnChar(ch, repCnt, flags);
    }
}

void XInPlaceFloatEdit::OnKillFocus(HWND newFocus) {
    if (m_bEnded) {
        Default();
        return;
    }
    if (!m_bCancelled) {
        // The field's own check of what was typed; when it keeps the focus,
        // the edit goes on.
        XMaskFloatEdit::OnKillFocus(newFocus);
        if (::GetFocus() == m_hWnd) return;
    } else {
        Default();
    }
    EndEdit();
}

void XInPlaceFloatEdit::EndEdit() {
    m_bEnded = true;
    const HWND list = GetParent();
    const std::wstring text = GetWindowText();
    if (list && ::IsWindow(list)) {
        NMLVDISPINFOW info{};
        info.hdr.hwndFrom = list;
        info.hdr.idFrom = static_cast<UINT_PTR>(::GetDlgCtrlID(list));
        info.hdr.code = LVN_ENDLABELEDITW;
        info.item.mask = LVIF_TEXT;
        info.item.iItem = m_iRow;
        info.item.iSubItem = m_iColumn;
        info.item.pszText = m_bCancelled ? nullptr : const_cast<wchar_t*>(text.c_str());
        info.item.cchTextMax = static_cast<int>(text.size());
        if (const HWND parent = ::GetParent(list))
            ::SendMessageW(parent, WM_NOTIFY, info.hdr.idFrom, reinterpret_cast<LPARAM>(&info));
    }
    DestroyWindow();
}

void XInPlaceFloatEdit::Abandon() {
    m_bEnded = true;
    m_bCancelled = true;
    DestroyWindow();
}

// ---- XValueAddedCtrl -------------------------------------------------------------------

struct XValueAddedCtrl::State {
    va::Config config;
    va::EntryMap entries;
    // The rows as the list shows them, to tell a reader which ones changed.
    std::vector<va::RowTexts> shown;
    // The group's and the child's picture files (none: no pictures).
    std::vector<std::wstring> pictureFiles;
};

XValueAddedCtrl::XValueAddedCtrl() noexcept = default;

XValueAddedCtrl::~XValueAddedCtrl() {
    try {
        RetireEdit();
        // Our own WM_DESTROY must still reach this class (the field goes
        // first); a subclassed window is left to the base class.
        if (OwnsWindow() && IsWindow()) DestroyWindow();
    } catch (...) {
        qv::LogCaughtException(" XValueAddedCtrl::~XValueAddedCtrl", __LINE__);
    }
}

XInPlaceFloatEdit* XValueAddedCtrl::GetInPlaceEdit() const noexcept {
    return m_pEdit && m_pEdit->IsWindow() ? m_pEdit.get() : nullptr;
}

// Ends an open field without taking its text, and frees a field that has
// ended. Never called while the field's own handlers run (they end it by
// handing the focus back, and its object is freed the next time here).
void XValueAddedCtrl::RetireEdit() {
    if (!m_pEdit) return;
    if (m_pEdit->IsWindow()) {
        if (m_pEdit->m_bEnded) {
            // Still inside its own ending: free it later.
            m_retiredEdits.push_back(std::move(m_pEdit));
            return;
        }
        m_pEdit->Abandon();
    }
    m_pEdit.reset();
}

BOOL XValueAddedCtrl::CreateCtrl(UINT& id, const RECT& rect, HFONT font, HWND parent, void* initData) try {
    auto* init = static_cast<tagVAINITDATA*>(initData);
    // The initial values are freed whatever happens, so a host frees
    // nothing after the call.
    struct FreeInit {
        tagVAINITDATA* init;
        ~FreeInit() {
            if (init && init->pValues) XInitValueWrapper::FreeStruct(init->ulCount, init->pValues);
            if (init) {
                init->ulCount = 0;
                init->pValues = nullptr;
            }
        }
    } freeInit{init};

    if (!parent || !::IsWindow(parent) || IsWindow()) return FALSE;
    if (!Create(kStyle, rect, parent, id)) return FALSE;
    if (font) SetFont(font);
    ModifyStyleEx(0, WS_EX_CLIENTEDGE, SWP_FRAMECHANGED);
    SetExtendedStyle(LVS_EX_FULLROWSELECT);

    static const struct { const wchar_t* title; int format; } kColumns[va::kColumnCount] = {
        {L"", LVCFMT_LEFT},
        {L"Name", LVCFMT_LEFT},
        {L"Entered Percent [%]", LVCFMT_RIGHT},
        {L"Entered Time [sec]", LVCFMT_RIGHT},
        {L"Calculated Percent [%]", LVCFMT_RIGHT},
        {L"Calculated Time [sec]", LVCFMT_RIGHT},
    };
    m_uLayoutDpi = qv::DpiOf(m_hWnd);
    for (int i = 0; i < va::kColumnCount; ++i) {
        const std::wstring title = *kColumns[i].title ? Translated(kColumns[i].title) : std::wstring();
        InsertColumn(i, title.c_str(), kColumns[i].format, va::ColumnWidthForDpi(i, m_uLayoutDpi));
    }

    qv::ComPtr<IZT_BaseDataObject> master;
    if (init) {
        XInitValueWrapper values(init->ulCount, init->pValues);
        qv::Variant query, object;
        if (values.GetData(L"pQuery", query) && query.vt == VT_UNKNOWN && query.punkVal) {
            IZT_Query* q = nullptr;
            if (SUCCEEDED(query.punkVal->QueryInterface(IID_IZT_Query, reinterpret_cast<void**>(&q))) && q)
                m_pQuery.Attach(q);
        }
        if (values.GetData(L"pObject", object) && object.vt == VT_UNKNOWN && object.punkVal) {
            IZT_BaseDataObject* o = nullptr;
            if (SUCCEEDED(object.punkVal->QueryInterface(IID_IZT_BaseDataObject, reinterpret_cast<void**>(&o))) && o)
                m_pObject.Attach(o);
        }
        XVAConfigFactory* factory = XVAConfigFactory::GetConfigFactory();
        if (!factory) {
            DestroyWindow();
            return FALSE;
        }
        master = GetMasterPlanTypeSetFromObject(m_pObject);
        if (!master) {
            DestroyWindow();
            return FALSE;
        }
        if (factory->InitPlanTypeSetVAConfig(master, m_pQuery)) factory->GetVAConfig(master, m_VAConfig);
    }

    // The configuration as the rules see it.
    m_pState = std::make_unique<State>();
    std::vector<tagVACONFIGITEM> groups, children;
    m_VAConfig.GetGroups(groups);
    for (const auto& group : groups) {
        va::ConfigGroup g;
        g.id = static_cast<std::int32_t>(group.lId);
        g.name = group.strName;
        m_VAConfig.GetChilds(group.lId, children);
        for (const auto& child : children)
            g.children.push_back({static_cast<std::int32_t>(child.lId), child.strName, child.bShown});
        m_pState->config.push_back(std::move(g));
    }

    ReadSettings(static_cast<bool>(master));
    SetValue(L"");
    return TRUE;
} catch (...) {
    return qv::CaughtAtEdge(" XValueAddedCtrl::CreateCtrl", __LINE__, FALSE);
}

qv::ComPtr<IZT_BaseDataObject> XValueAddedCtrl::GetMasterPlanTypeSetFromObject(
    qv::ComPtr<IZT_BaseDataObject> object) {
    static const wchar_t kFunction[] = L"XValueAddedCtrl::GetMasterPlanTypeSetFromObject";
    qv::ComPtr<IZT_BaseDataObject> project, typeSet, master;
    qv::Bstr projectKey(L"voxeproject"), typeSetKey(L"voxendirtypeset"), masterKey(L"master");
    if (!object || FAILED(object->GetRelatedObject(projectKey, &project)) || !project) {
        XZTError::DisplayErrorMessageBox(qv::ModuleNameBstr(), kFunction, 986, L"Failed to get voxeproject!",
                                         nullptr);
        return {};
    }
    if (FAILED(project->GetRelatedObject(typeSetKey, &typeSet)) || !typeSet) {
        XZTError::DisplayErrorMessageBox(qv::ModuleNameBstr(), kFunction, 1003, L"Failed to get voxendirtypeset!",
                                         nullptr);
        return {};
    }
    if (FAILED(typeSet->GetRelatedObject(masterKey, &master))) return {};
    return master;
}

qv::ComPtr<IZT_SessionDataMng> XValueAddedCtrl::GetSessionDataManager() {
    qv::SessionDataManager* manager = nullptr;
    if (FAILED(qv::SessionDataManager::CreateInstance(&manager)) || !manager) return {};
    qv::ComPtr<IZT_SessionDataMng> result;
    result.Attach(manager);
    return result;
}

void XValueAddedCtrl::ReadSettings(bool planTypeSet) {
    qv::ComPtr<IZT_SessionDataMng> settings = GetSessionDataManager();
    if (!settings) return;
    qv::Variant folder;
    qv::Bstr common(L"Common"), bitmaps(L"bitmaps");
    if (settings->GetSessionValue(common, bitmaps, VT_BSTR, &folder, 0) == S_OK && folder.vt == VT_BSTR) {
        std::wstring path = folder.Text();
        if (!path.empty()) {
            std::vector<tagVACONFIGITEM> groups, children;
            m_VAConfig.GetGroups(groups);
            if (!groups.empty()) m_VAConfig.GetChilds(groups.front().lId, children);
            if (!groups.empty() && !children.empty() && m_pState) {
                if (path.back() != L'\\' && path.back() != L'/') path += L'\\';
                m_pState->pictureFiles = {path + groups.front().strBitmap + L".bmp",
                                          path + children.front().strBitmap + L".bmp"};
                if (MakeRowPictures() && AssignImageList(&m_ImageList)) {
                    SetImageList(m_ImageList.GetSafeHandle(), LVSIL_SMALL);
                    m_bImages = true;
                }
            }
        }
    }
    if (!planTypeSet) return;
    qv::Bstr section(L"valueadded"), times(L"decimalplacestimes"), percents(L"decimalplacespercentage");
    for (auto [name, target] : {std::pair{times.Get(), &m_iDecimalPlacesTimes},
                                std::pair{percents.Get(), &m_iDecimalPlacesPercentage}}) {
        qv::Variant value;
        if (settings->GetSessionValue(section, name, VT_INT, &value, 0) != S_OK) continue;
        if (value.vt == VT_INT) *target = std::clamp(value.intVal, 0, 15);
        else if (value.vt == VT_I4) *target = std::clamp(static_cast<int>(value.lVal), 0, 15);
    }
}

bool XValueAddedCtrl::MakeRowPictures() {
    if (!m_pState || m_pState->pictureFiles.size() != 2) return false;
    const UINT dpi = qv::DpiOf(m_hWnd);
    const va::PictureSize slot = va::PictureSlotForDpi(dpi);
    // Nothing to make when the list shows pictures of this size already.
    int cx = 0, cy = 0;
    if (m_bImages && m_ImageList.GetIconSize(cx, cy) && cx == slot.cx && cy == slot.cy &&
        GetImageList(LVSIL_SMALL) == m_ImageList.GetSafeHandle())
        return true;
    qv::ImageList pictures;
    if (!pictures.Create(slot.cx, slot.cy, ILC_COLOR32 | ILC_MASK, 2, 10)) return false;
    for (const std::wstring& file : m_pState->pictureFiles) {
        qv::Bitmap picture(static_cast<HBITMAP>(
            ::LoadImageW(nullptr, file.c_str(), IMAGE_BITMAP, va::kPicture96.cx, va::kPicture96.cy, LR_LOADFROMFILE)));
        if (!picture) return false;
        const qv::Bitmap slotted(SlottedPicture(picture.get(), slot, dpi));
        const int expected = pictures.GetImageCount();
        if (pictures.Add(slotted ? slotted.get() : picture.get(), kPictureMask) != expected) return false;
    }
    // The list lets go of the pictures it showed before they go.
    if (m_bImages) SetImageList(pictures.GetSafeHandle(), LVSIL_SMALL);
    m_ImageList = std::move(pictures);
    return true;
}

void XValueAddedCtrl::OnDpiChanged(UINT dpi) try {
    if (!IsWindow()) return;
    if (dpi != m_uLayoutDpi) {
        // Each column keeps its share, also one the user resized.
        HWND header = GetHeaderCtrl();
        const int columns = header ? static_cast<int>(::SendMessageW(header, HDM_GETITEMCOUNT, 0, 0)) : 0;
        for (int c = 0; c < columns; ++c) SetColumnWidth(c, qv::ScaleBetweenDpi(GetColumnWidth(c), m_uLayoutDpi, dpi));
        m_uLayoutDpi = dpi;
    }
    if (m_bImages) MakeRowPictures();
    if (XInPlaceFloatEdit* edit = GetInPlaceEdit()) {
        edit->SetFont(GetFont());
        RECT rect{};
        if (EditRectFor(edit->GetRow(), edit->GetColumn(), rect)) edit->MoveWindow(rect, true);
    }
} catch (...) {
    qv::CaughtAtEdge(" XValueAddedCtrl::OnDpiChanged", __LINE__);
}

double XValueAddedCtrl::TotalTime() {
    if (!m_pObject) return 0.0;
    qv::Bstr type;
    const bool process = SUCCEEDED(m_pObject->GetTypeName(&type)) && type.Str() == L"voxecompprocessdefault";
    qv::Bstr name(process ? L"validtime_tg" : L"dbl_totalcalculated");
    XZTComVariant value;
    if (FAILED(m_pObject->GetAttributeValue(name, &value))) return 0.0;
    return value.GetDouble();
}

bool XValueAddedCtrl::SetValue(const std::wstring& value) try {
    m_bModified = false;
    return Rebuild(value);
} catch (...) {
    return qv::CaughtAtEdge(" XValueAddedCtrl::SetValue", __LINE__, false);
}

std::wstring XValueAddedCtrl::GetValue() const try {
    if (!m_bModified || !m_pState) return m_strValue;
    return va::WriteValueString(m_pState->entries);
} catch (...) {
    return qv::CaughtAtEdge(" XValueAddedCtrl::GetValue", __LINE__, std::wstring());
}

bool XValueAddedCtrl::Rebuild(const std::wstring& value) {
    m_strValue = value;
    if (!IsWindow()) return false;
    if (!m_pState) m_pState = std::make_unique<State>();
    // A field still open points at a row that is about to go.
    if (m_pEdit && m_pEdit->IsWindow() && !m_pEdit->m_bEnded) m_pEdit->Abandon();

    SendMessage(WM_SETREDRAW, FALSE);
    struct Redraw {
        XValueAddedCtrl* list;
        ~Redraw() {
            list->SendMessage(WM_SETREDRAW, TRUE);
            list->Invalidate();
        }
    } redraw{this};

    va::EntryMap entries = va::BlankEntries(m_pState->config);
    if (!va::ParseValueString(value, entries)) {
        DeleteAllItems();
        m_mapRows.clear();
        m_pState->entries.clear();
        m_pState->shown.clear();
        RaiseRowsReordered();
        return false;
    }
    m_pState->entries = std::move(entries);

    const std::vector<va::RowTexts> rows =
        va::BuildRows(m_pState->config, m_pState->entries, TotalTime(), m_iDecimalPlacesPercentage,
                      m_iDecimalPlacesTimes, m_bImages, Translated(L"Not Assigned"));
    auto valuesOf = [this](const va::RowTexts& shown) {
        std::vector<qv::Variant> values;
        values.reserve(6);
        if (!m_bImages) values.emplace_back(L"");
        values.emplace_back(shown.name);
        values.emplace_back(shown.pe);
        values.emplace_back(shown.te);
        values.emplace_back(shown.pc);
        values.emplace_back(shown.tc);
        return values;
    };

    // The rows follow the configuration, which stays: when the list shows
    // these very rows already, only their figures change. Deleting and
    // inserting every row costs the list view far more than the figures.
    bool same = GetItemCount() == static_cast<int>(rows.size());
    for (size_t i = 0; same && i < rows.size(); ++i) {
        const auto known = m_mapRows.find(static_cast<int>(i));
        same = rows[i].hasCode ? known != m_mapRows.end() && known->second == rows[i].code
                               : known == m_mapRows.end();
    }
    if (same) {
        for (size_t i = 0; i < rows.size(); ++i) {
            if (!ReplaceRowValues(static_cast<int>(i), valuesOf(rows[i]))) {
                same = false;
                break;
            }
        }
        if (same) {
            // A reader hears of each row whose name or figures changed.
            const std::vector<va::RowTexts>& before = m_pState->shown;
            for (size_t i = 0; i < rows.size(); ++i) {
                const bool known = i < before.size();
                const long child = static_cast<long>(i) + 1;
                if (!known || before[i].name != rows[i].name) qv::RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_NAMECHANGE, child);
                if (!known || before[i].pe != rows[i].pe || before[i].te != rows[i].te || before[i].pc != rows[i].pc ||
                    before[i].tc != rows[i].tc)
                    qv::RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_VALUECHANGE, child);
            }
            m_pState->shown = rows;
            return true;
        }
    }

    // New rows: a reader hears that the list changed as a whole.
    m_pState->shown.clear();
    struct Reordered {
        const XValueAddedCtrl* list;
        ~Reordered() { list->RaiseRowsReordered(); }
    } reordered{this};
    if (!DeleteAllItems()) return false;
    m_mapRows.clear();
    SendMessage(LVM_SETITEMCOUNT, rows.size());
    for (size_t i = 0; i < rows.size(); ++i) {
        const va::RowTexts& shown = rows[i];
        const int row = static_cast<int>(i);
        if (!AddEntry(valuesOf(shown), row, m_bImages ? (shown.image >= 0 ? shown.image : I_IMAGENONE) : -1)) return false;
        if (shown.hasCode) m_mapRows[row] = shown.code;
    }
    m_pState->shown = rows;
    return true;
}

bool XValueAddedCtrl::EditableRow(int row) const {
    if (!m_pState) return false;
    const auto code = m_mapRows.find(row);
    if (code == m_mapRows.end()) return false;
    const auto entry = m_pState->entries.find(static_cast<va::EntryCode>(code->second));
    if (entry == m_pState->entries.end()) return false;
    return va::IsEditableRow(entry->second, m_pState->config, static_cast<std::int32_t>(m_lExcludedGroup));
}

bool XValueAddedCtrl::EditRow(int row) try {
    if (!IsWindow() || m_bReadOnly || !(GetStyle() & LVS_EDITLABELS) || !EditableRow(row)) return false;
    return EditSubLabel(row, kColumnEnteredPercent) != nullptr;
} catch (...) {
    return qv::CaughtAtEdge(" XValueAddedCtrl::EditRow", __LINE__, false);
}

// ---- Hit test and the field -----------------------------------------------------------

int XValueAddedCtrl::HitTestEx(POINT& point, int& column) {
    column = 0;
    if ((GetStyle() & LVS_TYPEMASK) != LVS_REPORT) return -1;
    HWND header = GetHeaderCtrl();
    const int columns = header ? static_cast<int>(::SendMessageW(header, HDM_GETITEMCOUNT, 0, 0)) : 0;
    std::vector<int> widths;
    widths.reserve(static_cast<size_t>(std::max(columns, 0)));
    for (int c = 0; c < columns; ++c) widths.push_back(GetColumnWidth(c));
    const int count = GetItemCount();
    const int top = GetTopIndex();
    const int bottom = std::min(count, top + GetCountPerPage() + 1);
    for (int row = std::max(top, 0); row < bottom; ++row) {
        RECT rect{};
        if (!GetItemRect(row, rect, LVIR_BOUNDS)) continue;
        if (!::PtInRect(&rect, point)) continue;
        const int hit = va::ColumnAt(point.x, rect.left, widths);
        if (hit < 0) return -1;
        column = hit;
        return row;
    }
    return -1;
}

bool XValueAddedCtrl::EditRectFor(int row, int column, RECT& out) {
    HWND header = GetHeaderCtrl();
    const int columns = header ? static_cast<int>(::SendMessageW(header, HDM_GETITEMCOUNT, 0, 0)) : 0;
    const UINT dpi = qv::DpiOf(m_hWnd);
    if (column < 0 || column >= columns || GetColumnWidth(column) < va::MinEditColumnWidth(dpi)) return false;
    int offset = 0;
    for (int c = 0; c < column; ++c) offset += GetColumnWidth(c);
    RECT rect{};
    if (!GetItemRect(row, rect, LVIR_BOUNDS)) return false;
    const RECT client = GetClientRect();
    va::EditSpan span = va::EditSpanFor(rect.left, offset, GetColumnWidth(column), client.right, dpi);
    if (span.scroll != 0) {
        Scroll(SIZE{span.scroll, 0});
        // Where the list really scrolled to (it stops at its ends).
        if (!GetItemRect(row, rect, LVIR_BOUNDS)) return false;
        span = va::EditSpanFor(rect.left, offset, GetColumnWidth(column), client.right, dpi);
    }
    out = RECT{span.left, rect.top, std::max(span.left, span.right), rect.bottom};
    return true;
}

XInPlaceFloatEdit* XValueAddedCtrl::EditSubLabel(int row, int column) {
    RetireEdit();
    if (!EnsureVisible(row, true)) return nullptr;
    RECT editRect{};
    if (!EditRectFor(row, column, editRect)) return nullptr;

    wchar_t title[128] = {};
    LVCOLUMNW format{};
    format.mask = LVCF_FMT | LVCF_TEXT;
    format.pszText = title;
    format.cchTextMax = static_cast<int>(std::size(title));
    GetColumn(column, &format);
    DWORD align = ES_LEFT;
    if ((format.fmt & LVCFMT_JUSTIFYMASK) == LVCFMT_RIGHT) align = ES_RIGHT;
    else if ((format.fmt & LVCFMT_JUSTIFYMASK) == LVCFMT_CENTER) align = ES_CENTER;

    const std::wstring cell = GetItemText(row, column);
    auto edit = std::make_unique<XInPlaceFloatEdit>(row, column);
    if (!edit->Create(align | WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, editRect, m_hWnd, kEditId)) return nullptr;
    edit->SetFont(GetFont());
    // A reader hears which row and which figure the field edits.
    edit->SetAccessibleName(qv::lists::RowNameText(GetItemText(row, kColumnName)));
    edit->SetAccessibleDescription(title);
    double start = 0.0;
    String2Double(cell, start);
    edit->SetValue(start);
    m_pEdit = std::move(edit);
    m_pEdit->SetFocus();
    m_pEdit->SendMessage(EM_SETSEL, 0, -1);
    return m_pEdit.get();
}

// ---- Messages ------------------------------------------------------------------------

LRESULT XValueAddedCtrl::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == EditNextMessage()) {
        // The next row that may be edited, after the one Enter ended.
        const int count = GetItemCount();
        for (int row = static_cast<int>(wp) + 1; row < count; ++row) {
            if (EditableRow(row)) {
                SetItemState(row, LVIS_FOCUSED | LVIS_SELECTED, LVIS_FOCUSED | LVIS_SELECTED);
                EditRow(row);
                break;
            }
        }
        return 0;
    }
    return XBaseListCtrl::WindowProc(msg, wp, lp);
}

void XValueAddedCtrl::OnDestroy() {
    RetireEdit();
    XBaseListCtrl::OnDestroy();
}

bool XValueAddedCtrl::OnReflectNotify(NMHDR* hdr, LRESULT* result) {
    if (!hdr) return false;
    switch (hdr->code) {
    case LVN_ENDLABELEDITW: *result = OnEndLabelEdit(reinterpret_cast<NMLVDISPINFOW*>(hdr)); return true;
    // Only the float field edits: the list view's own label editor would
    // edit the picture column.
    case LVN_BEGINLABELEDITW: *result = TRUE; return true;
    case NM_CUSTOMDRAW: *result = OnCustomDraw(reinterpret_cast<NMLVCUSTOMDRAW*>(hdr)); return true;
    default: return XBaseListCtrl::OnReflectNotify(hdr, result);
    }
}

void XValueAddedCtrl::OnLButtonDown(UINT flags, POINT pt) {
    XBaseListCtrl::OnLButtonDown(flags, pt);
    if (!IsWindow()) return;
    int column = 0;
    const int row = HitTestEx(pt, column);
    if (row < 0 || column != kColumnEnteredPercent) return;
    if (!(GetItemState(row, LVIS_FOCUSED) & LVIS_FOCUSED)) return;
    if (EditRow(row)) SetItemState(row, 0, LVIS_SELECTED | LVIS_FOCUSED);
}

void XValueAddedCtrl::OnKeyDown(UINT vk, UINT repCnt, UINT flags) {
    if (vk == VK_F2 || vk == VK_RETURN) {
        const int row = GetNextItem(-1, LVNI_FOCUSED);
        if (row >= 0 && EditRow(row)) return;
    }
    XBaseListCtrl::OnKeyDown(vk, repCnt, flags);
}

UINT XValueAddedCtrl::OnGetDlgCode() {
    UINT code = XBaseListCtrl::OnGetDlgCode();
    const auto* msg = reinterpret_cast<const MSG*>(GetCurrentMessage().lParam);
    if (msg && msg->message == WM_KEYDOWN && msg->wParam == VK_RETURN) code |= DLGC_WANTMESSAGE;
    return code;
}

void XValueAddedCtrl::OnHScroll(UINT code, UINT pos, HWND scrollBar) {
    if (GetInPlaceEdit()) SetFocus();
    XBaseListCtrl::OnHScroll(code, pos, scrollBar);
}

void XValueAddedCtrl::OnVScroll(UINT code, UINT pos, HWND scrollBar) {
    if (GetInPlaceEdit()) SetFocus();
    XBaseListCtrl::OnVScroll(code, pos, scrollBar);
}

LRESULT XValueAddedCtrl::OnEndLabelEdit(NMLVDISPINFOW* info) {
    if (!info || !info->item.pszText || !m_pState) return 0;
    const int row = info->item.iItem;
    const bool moveOn = m_pEdit && m_pEdit->EndedByEnter();
    // An emptied field means 0, as the field itself reads it.
    double value = 0.0;
    if (*info->item.pszText && !String2Double(info->item.pszText, value)) return 0;
    const auto code = m_mapRows.find(row);
    if (code == m_mapRows.end()) return 0;
    const auto entry = static_cast<va::EntryCode>(code->second);
    double max = 0.0;
    switch (va::DecideEdit(m_pState->entries, entry, value, m_pState->config, &max)) {
    case va::EditOutcome::NoChange: break;
    case va::EditOutcome::OutOfRange: {
        const std::wstring text =
            Translated(L"Value out of range.") + L" " + FormatMaximum(Translated(L"Max. %.2f%% are assignable."), max);
        CoErrorBox(nullptr, CoTranslateText(L"Error"), text.c_str(), 0);
        return 0;
    }
    case va::EditOutcome::Accepted:
        va::ApplyEdit(m_pState->entries, entry, value, TotalTime());
        m_bModified = true;
        Rebuild(GetValue());
        break;
    }
    if (row >= 0 && row < GetItemCount()) SetItemState(row, LVIS_FOCUSED | LVIS_SELECTED, LVIS_FOCUSED | LVIS_SELECTED);
    if (moveOn) PostMessage(EditNextMessage(), static_cast<WPARAM>(row));
    return 0;
}

LRESULT XValueAddedCtrl::OnCustomDraw(NMLVCUSTOMDRAW* draw) {
    if (!draw) return CDRF_DODEFAULT;
    switch (draw->nmcd.dwDrawStage) {
    case CDDS_PREPAINT:
    case CDDS_ITEMPREPAINT: return CDRF_NOTIFYITEMDRAW;
    case CDDS_ITEMPREPAINT | CDDS_SUBITEM: {
        const int row = static_cast<int>(draw->nmcd.dwItemSpec);
        const va::ValueAddedEntry* entry = nullptr;
        bool groupWithChildren = false;
        if (m_pState) {
            const auto code = m_mapRows.find(row);
            if (code != m_mapRows.end()) {
                const auto found = m_pState->entries.find(static_cast<va::EntryCode>(code->second));
                if (found != m_pState->entries.end()) {
                    entry = &found->second;
                    groupWithChildren = entry->PID == 0 && !va::CountsTowardsCap(*entry, m_pState->config);
                }
            }
        }
        const va::CellColours colours = va::ColoursFor(draw->iSubItem, entry, groupWithChildren);
        switch (colours.back) {
        case va::CellBack::EditColumn: draw->clrTextBk = RGB(0xFA, 0xFA, 0xFA); break;
        case va::CellBack::Light: draw->clrTextBk = ::GetSysColor(COLOR_3DLIGHT); break;
        case va::CellBack::Default: draw->clrTextBk = CLR_DEFAULT; break;
        }
        switch (colours.text) {
        case va::CellText::WindowText: draw->clrText = ::GetSysColor(COLOR_WINDOWTEXT); break;
        case va::CellText::GrayText: draw->clrText = ::GetSysColor(COLOR_GRAYTEXT); break;
        case va::CellText::Default: draw->clrText = CLR_DEFAULT; break;
        }
        return CDRF_DODEFAULT;
    }
    default: return CDRF_DODEFAULT;
    }
}
