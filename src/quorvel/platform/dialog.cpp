#include "quorvel/platform/dialog.h"

#include <commdlg.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cwchar>

#include "quorvel/common/boundary.h"
#include "quorvel/frame/zt_lang.h"
#include "quorvel/platform/module.h"

namespace qv {

// ---------------------------------------------------------------------------
// DataExchange

DataExchange::DataExchange(Dialog* dialog, bool saveAndValidate) noexcept
    : m_pDlgWnd(dialog), m_hDlg(dialog ? dialog->m_hWnd : nullptr), m_bSaveAndValidate(saveAndValidate) {}

HWND DataExchange::PrepareCtrl(int id) noexcept {
    m_hWndLastControl = ::GetDlgItem(m_hDlg, id);
    return m_hWndLastControl;
}

void DataExchange::Fail() noexcept {
    m_bFailed = true;
    if (!m_bSaveAndValidate || !m_hWndLastControl) return;
    ::SetFocus(m_hWndLastControl);
    wchar_t cls[16] = {};
    ::GetClassNameW(m_hWndLastControl, cls, 16);
    if (::lstrcmpiW(cls, L"Edit") == 0) ::SendMessageW(m_hWndLastControl, EM_SETSEL, 0, -1);
}

// An exchange that throws fails like one that finds a wrong text.
void DDX_Text(DataExchange* dx, int id, std::wstring& value) try {
    if (dx->m_bFailed) return;
    HWND ctrl = dx->PrepareCtrl(id);
    if (!ctrl) {
        dx->Fail();
        return;
    }
    if (dx->m_bSaveAndValidate) {
        const int len = ::GetWindowTextLengthW(ctrl);
        std::wstring text(static_cast<size_t>(len) + 1, L'\0');
        text.resize(static_cast<size_t>((std::max)(0, ::GetWindowTextW(ctrl, text.data(), len + 1))));
        value = std::move(text);
    } else {
        ::SetWindowTextW(ctrl, value.c_str());
    }
} catch (...) {
    CaughtAtEdge(" qv::DDX_Text", __LINE__);
    dx->Fail();
}

void DDX_Text(DataExchange* dx, int id, int& value) try {
    if (dx->m_bFailed) return;
    if (!dx->m_bSaveAndValidate) {
        HWND ctrl = dx->PrepareCtrl(id);
        if (!ctrl) {
            dx->Fail();
            return;
        }
        ::SetWindowTextW(ctrl, std::to_wstring(value).c_str());
        return;
    }
    std::wstring text;
    DDX_Text(dx, id, text);
    if (dx->m_bFailed) return;
    const wchar_t* begin = text.c_str();
    wchar_t* end = nullptr;
    errno = 0;
    const long long parsed = std::wcstoll(begin, &end, 10);
    while (*end == L' ' || *end == L'\t') ++end;
    if (end == begin || *end || errno == ERANGE || parsed < INT_MIN || parsed > INT_MAX) {
        dx->Fail();
        return;
    }
    value = static_cast<int>(parsed);
} catch (...) {
    CaughtAtEdge(" qv::DDX_Text", __LINE__);
    dx->Fail();
}

// ---------------------------------------------------------------------------
// Dialog

Dialog::~Dialog() {
    // A modeless dialog belongs to its object; a modal one has ended before
    // DoModal returned.
    if (m_hWnd && ::IsWindow(m_hWnd) && !m_modal) ::DestroyWindow(m_hWnd);
}

HINSTANCE Dialog::TemplateModule() const noexcept { return m_templateModule ? m_templateModule : LibraryModule(); }

INT_PTR Dialog::DoModal(HWND parent) {
    if (m_hWnd) return -1;
    m_modal = true;
    const INT_PTR result = ::DialogBoxParamW(TemplateModule(), MAKEINTRESOURCEW(m_templateId), parent, &Dialog::DialogProc,
                                             reinterpret_cast<LPARAM>(this));
    m_modal = false;
    return result;
}

bool Dialog::Create(HWND parent) {
    if (m_hWnd) return false;
    m_modal = false;
    HWND hwnd = ::CreateDialogParamW(TemplateModule(), MAKEINTRESOURCEW(m_templateId), parent, &Dialog::DialogProc,
                                     reinterpret_cast<LPARAM>(this));
    return hwnd && m_hWnd == hwnd;
}

INT_PTR CALLBACK Dialog::DialogProc(HWND hwnd, UINT msg, WPARAM, LPARAM lp) {
    // Only WM_INITDIALOG is handled here; every later message reaches the
    // object through its subclass, ahead of the dialog manager.
    if (msg != WM_INITDIALOG) return FALSE;
    auto* self = reinterpret_cast<Dialog*>(lp);
    if (!self || !self->Attach(hwnd)) return TRUE;
    try {
        const BOOL setFocus = self->OnInitDialog();
        ::CoTranslateWindow(hwnd);
        return setFocus;
    } catch (...) {
        LogCaughtException(" qv::Dialog::DialogProc", 1, WM_INITDIALOG);
    }
    // A dialog whose controls were not filled must not be shown, or OK would
    // store what it never showed: it ends as one that could not be created
    // (DoModal answers -1, Create false).
    if (self->m_modal)
        ::EndDialog(hwnd, -1);
    else
        ::DestroyWindow(hwnd);
    return FALSE;
}

void Dialog::EndDialog(int result) {
    if (!m_hWnd) return;
    if (m_modal)
        ::EndDialog(m_hWnd, result);
    else
        ::DestroyWindow(m_hWnd);
}

bool Dialog::UpdateData(bool save) try {
    DataExchange dx(this, save);
    DoDataExchange(&dx);
    return !dx.m_bFailed;
} catch (...) {
    return CaughtAtEdge(" qv::Dialog::UpdateData", __LINE__, false);
}

BOOL Dialog::OnInitDialog() {
    UpdateData(false);
    return TRUE;
}

void Dialog::OnOK() {
    if (UpdateData(true)) EndDialog(IDOK);
}

void Dialog::OnCancel() { EndDialog(IDCANCEL); }

BOOL Dialog::OnCommand(WPARAM wp, LPARAM lp) {
    if (HIWORD(wp) == BN_CLICKED) {
        switch (LOWORD(wp)) {
        case IDOK: OnOK(); return TRUE;
        case IDCANCEL: OnCancel(); return TRUE;
        default: break;
        }
    }
    return Window::OnCommand(wp, lp);
}

bool ChooseSystemColor(HWND owner, COLORREF& color) {
    // As in other programs, the custom colours last the session.
    static COLORREF custom[16] = {0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF,
                                  0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF};
    CHOOSECOLORW cc{};
    cc.lStructSize = sizeof cc;
    cc.hwndOwner = owner;
    cc.rgbResult = color;
    cc.lpCustColors = custom;
    cc.Flags = CC_RGBINIT | CC_FULLOPEN;
    if (!::ChooseColorW(&cc)) return false;
    color = cc.rgbResult;
    return true;
}

}  // namespace qv
