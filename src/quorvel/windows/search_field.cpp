#include "quorvel/windows/search_field.h"

#include <cderr.h>
#include <oleacc.h>

#include <algorithm>
#include <cwchar>

#include "quorvel/common/boundary.h"
#include "quorvel/common/shell_text.h"
#include "quorvel/frame/services.h"
#include "quorvel/frame/siblings.h"
#include "quorvel/platform/module.h"
#include "quorvel/windows/search_rules.h"

namespace sr = qv::search;

namespace {

// Large enough for any path the file system takes, long-path form included.
constexpr DWORD kPathBuffer = 32768;

std::wstring Translated(const wchar_t* text) {
    const wchar_t* translated = CoTranslateText(text);
    return translated ? translated : text;
}

// The system's message for `error`, as a field shows it: its first line.
std::wstring SystemMessage(DWORD error) {
    wchar_t* buffer = nullptr;
    const DWORD n = ::FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM |
                                         FORMAT_MESSAGE_IGNORE_INSERTS,
                                     nullptr, error, 0, reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
    std::wstring text;
    if (n > 0 && buffer) text = sr::FirstLine(std::wstring_view(buffer, n));
    if (buffer) ::LocalFree(buffer);
    if (text.empty()) {
        wchar_t fallback[48];
        std::swprintf(fallback, 48, L"System error %lu", static_cast<unsigned long>(error));
        text = fallback;
    }
    return text;
}

// The full path of `text` (relative names resolved as the file system
// would), whatever its length; the text itself when it cannot be resolved.
std::wstring FullPath(const std::wstring& text) {
    std::vector<wchar_t> buffer(MAX_PATH);
    for (int attempt = 0; attempt < 3; ++attempt) {
        const DWORD n = ::GetFullPathNameW(text.c_str(), static_cast<DWORD>(buffer.size()), buffer.data(), nullptr);
        if (n == 0) return text;
        if (n < buffer.size()) return std::wstring(buffer.data(), n);
        buffer.resize(n + 1);
    }
    return text;
}

// The name to hand to the file system for a field's text: as typed while
// it is short enough, otherwise its full path in the long-path form.
std::wstring FileSystemNameOf(const std::wstring& text, size_t plainLimit) {
    if (text.size() <= plainLimit) return text;
    std::wstring name = sr::FileSystemName(FullPath(text), plainLimit);
    // The long-path form is not parsed: a doubled separator would not match.
    if (name.size() > 4 && name.compare(0, 4, L"\\\\?\\") == 0 && name.back() == L'\\') name.pop_back();
    return name;
}

bool IsFolder(const std::wstring& path) {
    if (path.empty()) return false;
    const DWORD attributes = ::GetFileAttributesW(FileSystemNameOf(path, sr::kMaxPlainFolder).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

// Where a browse dialog opens for a field's text: the folder it names, or
// the folder of the file it names, or the system's choice.
std::wstring InitialFolder(const std::wstring& text) {
    if (IsFolder(text)) return text;
    std::wstring parent = sr::ParentFolder(text);
    return IsFolder(parent) ? parent : std::wstring();
}

std::wstring TempFolder() {
    std::vector<wchar_t> buffer(MAX_PATH + 1);
    DWORD n = ::GetTempPathW(static_cast<DWORD>(buffer.size()), buffer.data());
    if (n >= buffer.size()) {
        buffer.resize(n + 1);
        n = ::GetTempPathW(static_cast<DWORD>(buffer.size()), buffer.data());
    }
    return n > 0 && n < buffer.size() ? std::wstring(buffer.data(), n) : std::wstring();
}

const wchar_t kDialogProp[] = L"Quorvel.OpenFileDialog";

}  // namespace

// ---- qv::OpenFileDialog ----------------------------------------------------------------

namespace qv {

OpenFileDialog::OpenFileDialog(const wchar_t* fileName, DWORD flags, const wchar_t* filter, HWND owner)
    : m_strFileName(fileName ? fileName : L"") {
    if (filter && *filter) {
        m_strFilter = filter;
        std::replace(m_strFilter.begin(), m_strFilter.end(), L'|', L'\0');
    }
    m_ofn.lStructSize = sizeof(m_ofn);
    m_ofn.hwndOwner = owner;
    m_ofn.Flags = flags;
}

OpenFileDialog::~OpenFileDialog() = default;

INT_PTR OpenFileDialog::DoModal() try {
    m_buffer.assign(kPathBuffer, L'\0');
    std::copy_n(m_strFileName.data(), std::min<size_t>(m_strFileName.size(), kPathBuffer - 1), m_buffer.data());
    m_ofn.lpstrFile = m_buffer.data();
    m_ofn.nMaxFile = kPathBuffer;
    m_ofn.lpstrFilter = m_strFilter.empty() ? nullptr : m_strFilter.c_str();
    m_ofn.lpstrInitialDir = m_strInitialDir.empty() ? nullptr : m_strInitialDir.c_str();
    m_ofn.lpstrTitle = m_strTitle.empty() ? nullptr : m_strTitle.c_str();
    // The host's current directory is its own: browsing never moves it.
    m_ofn.Flags |= OFN_EXPLORER | OFN_ENABLEHOOK | OFN_ENABLESIZING | OFN_NOCHANGEDIR;
    m_ofn.lpfnHook = &OpenFileDialog::HookProc;
    m_ofn.lCustData = reinterpret_cast<LPARAM>(this);
    if (m_ofn.hwndOwner && !::IsWindow(m_ofn.hwndOwner)) m_ofn.hwndOwner = nullptr;
    m_strPathName.clear();
    m_bEnded = false;

    const BOOL chosen = ::GetOpenFileNameW(&m_ofn);
    m_hDialog = nullptr;
    if (m_bEnded) return m_strPathName.empty() ? IDCANCEL : IDOK;
    if (chosen) {
        m_strPathName = m_buffer.data();
        return IDOK;
    }
    if (const DWORD error = ::CommDlgExtendedError()) {
        wchar_t message[64];
        std::swprintf(message, 64, L"GetOpenFileNameW failed (0x%04lX)", static_cast<unsigned long>(error));
        qv::LogFailure(L" qv::OpenFileDialog::DoModal()", __LINE__, message);
    }
    return IDCANCEL;
} catch (...) {
    m_hDialog = nullptr;
    return qv::CaughtAtEdge(" qv::OpenFileDialog::DoModal()", __LINE__, static_cast<INT_PTR>(IDCANCEL));
}

void OpenFileDialog::HideControl(int id) {
    if (m_hDialog) ::SendMessageW(m_hDialog, CDM_HIDECONTROL, static_cast<WPARAM>(id), 0);
}

void OpenFileDialog::SetControlText(int id, const std::wstring& text) {
    if (m_hDialog)
        ::SendMessageW(m_hDialog, CDM_SETCONTROLTEXT, static_cast<WPARAM>(id), reinterpret_cast<LPARAM>(text.c_str()));
}

std::wstring OpenFileDialog::GetFolderPath() const {
    if (!m_hDialog) return {};
    const LRESULT needed = ::SendMessageW(m_hDialog, CDM_GETFOLDERPATH, 0, 0);
    if (needed <= 0) return {};
    std::vector<wchar_t> buffer(static_cast<size_t>(needed) + 1, L'\0');
    const LRESULT n = ::SendMessageW(m_hDialog, CDM_GETFOLDERPATH, static_cast<WPARAM>(buffer.size()),
                                     reinterpret_cast<LPARAM>(buffer.data()));
    return n > 0 ? std::wstring(buffer.data()) : std::wstring();
}

void OpenFileDialog::EndWithPath(const std::wstring& path) {
    m_strPathName = path;
    m_bEnded = true;
    // Cancel ends the system's dialog cleanly; DoModal then answers IDOK.
    if (m_hDialog) ::PostMessageW(m_hDialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
}

void OpenFileDialog::CenterDialog() {
    if (!m_hDialog) return;
    RECT area{};
    HWND owner = ::GetWindow(m_hDialog, GW_OWNER);
    if (!owner || !::IsWindowVisible(owner) || !::GetWindowRect(owner, &area))
        ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    RECT self{};
    ::GetWindowRect(m_hDialog, &self);
    const int cx = self.right - self.left, cy = self.bottom - self.top;
    int x = area.left + (area.right - area.left - cx) / 2;
    int y = area.top + (area.bottom - area.top - cy) / 2;
    // Keep the dialog on the screen even over an owner near its edge.
    RECT work{};
    ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    x = std::max(static_cast<int>(work.left), std::min(x, static_cast<int>(work.right) - cx));
    y = std::max(static_cast<int>(work.top), std::min(y, static_cast<int>(work.bottom) - cy));
    ::SetWindowPos(m_hDialog, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

UINT_PTR CALLBACK OpenFileDialog::HookProc(HWND hook, UINT msg, WPARAM wp, LPARAM lp) {
    try {
        OpenFileDialog* self = nullptr;
        if (msg == WM_INITDIALOG) {
            const auto* ofn = reinterpret_cast<const OPENFILENAMEW*>(lp);
            self = ofn ? reinterpret_cast<OpenFileDialog*>(ofn->lCustData) : nullptr;
            if (!self) return 0;
            ::SetPropW(hook, kDialogProp, self);
            self->m_hDialog = ::GetParent(hook);
            ::SetWindowSubclass(self->m_hDialog, &OpenFileDialog::FrameProc, 1, reinterpret_cast<DWORD_PTR>(self));
            return TRUE;
        }
        self = static_cast<OpenFileDialog*>(::GetPropW(hook, kDialogProp));
        if (!self) return 0;
        return self->OnHook(hook, msg, wp, lp);
    } catch (...) {
        qv::LogCaughtException(" qv::OpenFileDialog::HookProc", __LINE__, static_cast<long>(msg));
        return 0;
    }
}

UINT_PTR OpenFileDialog::OnHook(HWND hook, UINT msg, WPARAM, LPARAM lp) {
    switch (msg) {
    case WM_NOTIFY: {
        const auto* hdr = reinterpret_cast<const NMHDR*>(lp);
        if (!hdr) return 0;
        if (hdr->code == CDN_INITDONE) {
            OnInitDone();
        } else if (hdr->code == CDN_FILEOK && !OnFileNameOK()) {
            ::SetWindowLongPtrW(hook, DWLP_MSGRESULT, 1);
            return TRUE;
        }
        return 0;
    }
    case WM_DESTROY:
        ::RemovePropW(hook, kDialogProp);
        return 0;
    default:
        return 0;
    }
}

LRESULT CALLBACK OpenFileDialog::FrameProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR id, DWORD_PTR data) {
    try {
        auto* self = reinterpret_cast<OpenFileDialog*>(data);
        if (msg == WM_NCDESTROY) {
            ::RemoveWindowSubclass(hwnd, &OpenFileDialog::FrameProc, id);
        } else if (msg == WM_COMMAND && self && !self->m_bEnded && self->OnDialogCommand(wp, lp)) {
            return 0;
        }
    } catch (...) {
        qv::LogCaughtException(" qv::OpenFileDialog::FrameProc", __LINE__, static_cast<long>(msg));
        return 0;
    }
    return ::DefSubclassProc(hwnd, msg, wp, lp);
}

}  // namespace qv

// ---- XFileSelectDlg ----------------------------------------------------------------------

namespace {
std::wstring AllFilesFilter() { return Translated(L"All Files (*.*)") + L"|*.*||"; }
}  // namespace

XFileSelectDlg::XFileSelectDlg(HWND parent)
    : OpenFileDialog(L"*.*", OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, AllFilesFilter().c_str(), parent),
      m_strOkText(Translated(L"Select")) {
    m_strTitle = Translated(L"Choose file");
}

void XFileSelectDlg::SetTitle(const std::wstring& title) {
    m_strTitle = title;
    if (HWND dialog = GetDialogWindow()) ::SetWindowTextW(dialog, m_strTitle.c_str());
}

void XFileSelectDlg::SetOkBtnText(const std::wstring& text) {
    m_strOkText = text;
    SetControlText(IDOK, m_strOkText);
}

void XFileSelectDlg::OnInitDone() {
    if (HWND dialog = GetDialogWindow()) ::SetWindowTextW(dialog, m_strTitle.c_str());
    SetControlText(IDOK, m_strOkText);
    CenterDialog();
}

// ---- XFolderSelectDlg --------------------------------------------------------------------

XFolderSelectDlg::XFolderSelectDlg(HWND parent)
    : OpenFileDialog(L"*..*", OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, nullptr, parent),
      m_strOkText(Translated(L"Select")) {
    m_strTitle = Translated(L"Choose folder");
}

void XFolderSelectDlg::SetTitle(const std::wstring& title) {
    m_strTitle = title;
    if (HWND dialog = GetDialogWindow()) ::SetWindowTextW(dialog, m_strTitle.c_str());
}

void XFolderSelectDlg::SetOkBtnText(const std::wstring& text) {
    m_strOkText = text;
    SetControlText(IDOK, m_strOkText);
}

void XFolderSelectDlg::OnInitDone() {
    HWND dialog = GetDialogWindow();
    if (!dialog) return;
    // The file name and the file type mean nothing when a folder is picked.
    for (int id : {1152, 1148, 1090, 1136, 1089}) HideControl(id);
    // OK moves beside Cancel, into the row the file type left empty.
    HWND ok = ::GetDlgItem(dialog, IDOK), cancel = ::GetDlgItem(dialog, IDCANCEL);
    RECT okRect{}, cancelRect{};
    if (ok && cancel && ::GetWindowRect(ok, &okRect) && ::GetWindowRect(cancel, &cancelRect)) {
        ::MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&okRect), 2);
        ::MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&cancelRect), 2);
        const int gap = std::max(4, static_cast<int>(cancelRect.bottom - cancelRect.top) / 4);
        const int width = okRect.right - okRect.left;
        ::SetWindowPos(ok, nullptr, cancelRect.left - gap - width, cancelRect.top, width,
                       cancelRect.bottom - cancelRect.top, SWP_NOZORDER | SWP_NOACTIVATE);
    }
    ::SetWindowTextW(dialog, m_strTitle.c_str());
    SetControlText(IDOK, m_strOkText);
    CenterDialog();
}

bool XFolderSelectDlg::OnDialogCommand(WPARAM wp, LPARAM) {
    if (LOWORD(wp) != IDOK || HIWORD(wp) > 1) return false;
    // The folder the dialog shows; where it cannot tell (a virtual folder
    // such as the desktop's "Computer"), the current directory.
    std::wstring path = GetFolderPath();
    if (path.empty()) {
        std::vector<wchar_t> buffer(MAX_PATH + 1);
        DWORD n = ::GetCurrentDirectoryW(static_cast<DWORD>(buffer.size()), buffer.data());
        if (n >= buffer.size()) {
            buffer.resize(n + 1);
            n = ::GetCurrentDirectoryW(static_cast<DWORD>(buffer.size()), buffer.data());
        }
        if (n == 0 || n >= buffer.size()) {
            const DWORD error = n == 0 ? ::GetLastError() : ERROR_INSUFFICIENT_BUFFER;
            const std::wstring text = L"XFolderSelectDlg:GetCurrentDirectory()\n" + SystemMessage(error);
            qv::Services::MessageBoxes().Show(GetDialogWindow(), Translated(L"Error in Quorvel").c_str(),
                                              text.c_str(), MB_ICONHAND);
            return true;
        }
        path.assign(buffer.data(), n);
    }
    EndWithPath(path);
    return true;
}

// ---- XBaseSearchCtrl -------------------------------------------------------------------

XBaseSearchCtrl::XBaseSearchCtrl() : XBaseSearchCtrl(false, false) {}

XBaseSearchCtrl::XBaseSearchCtrl(bool openButton, bool readOnly)
    : m_scheme(qv::kDefaultFieldTextColor, ::GetSysColor(readOnly ? COLOR_3DFACE : COLOR_WINDOW)),
      m_bOpenButton(openButton),
      m_bReadOnly(readOnly),
      m_bValidation(!readOnly) {}

XBaseSearchCtrl::~XBaseSearchCtrl() {
    // Our own WM_DESTROY handler must still be reached.
    if (OwnsWindow()) DestroyWindow();
}

BOOL XBaseSearchCtrl::Create(const std::wstring& text, DWORD style, const RECT& rect, HFONT font, HWND parent,
                             UINT id) try {
    if (IsWindow() || !parent || !::IsWindow(parent)) return FALSE;
    if (!CreateEx(WS_EX_CONTROLPARENT, L"STATIC", L"", (style ? style : kStyle) | WS_CHILD, rect, parent, id))
        return FALSE;
    SetFont(font, true);
    const RECT client = GetClientRect();
    const sr::Layout l = sr::LayOut(client.right, client.bottom, m_bOpenButton, qv::DpiOf(m_hWnd));
    auto toRect = [](const qv::Box& b) { return RECT{b.left, b.top, b.right, b.bottom}; };
    bool made = m_edit.CreateEx(WS_EX_CLIENTEDGE, L"EDIT", text.c_str(), kEditStyle, toRect(l.edit), m_hWnd, id) &&
                m_browse.CreateEx(0, L"BUTTON", L"...", kStyle, toRect(l.browse), m_hWnd, kBrowseId);
    // "..." and a picture say nothing to a screen reader: the buttons are
    // read by what they do.
    if (made) m_browse.SetAccessibleName(Translated(L"Browse"));
    if (made && m_bOpenButton) {
        made = m_open.CreateEx(0, L"BUTTON", L"", kOpenStyle, toRect(l.open), m_hWnd, kOpenId);
        if (made) {
            m_open.SetAccessibleName(Translated(L"Open"));
            LoadBitmapW(kBrowseBitmap);
        }
    }
    if (!made) {
        qv::LogFailure(L" XBaseSearchCtrl::Create()", __LINE__, L"Creating control failed");
        DestroyWindow();
        return FALSE;
    }
    m_edit.SetFont(font, true);
    m_browse.SetFont(font, true);
    if (m_bReadOnly) EnableControl(false);
    return TRUE;
} catch (...) {
    return qv::CaughtAtEdge(" XBaseSearchCtrl::Create", __LINE__, FALSE);
}

std::wstring XBaseSearchCtrl::DoCallDialog() { return {}; }

bool XBaseSearchCtrl::CheckFileExist(std::wstring&) { return true; }

void XBaseSearchCtrl::EnableControl(bool enable) {
    if (m_browse.IsWindow()) m_browse.EnableWindow(enable);
    if (HasEdit()) m_edit.SetReadOnly(!enable);
}

void XBaseSearchCtrl::SetTextColor(unsigned long colour) { m_scheme.SetText(HasEdit() ? m_edit.m_hWnd : nullptr, colour); }

void XBaseSearchCtrl::SetBkColor(unsigned long colour) { m_scheme.SetBk(HasEdit() ? m_edit.m_hWnd : nullptr, colour); }

void XBaseSearchCtrl::MakeReadOnly(bool readOnly) {
    m_bReadOnly = readOnly;
    EnableControl(!readOnly);
}

void XBaseSearchCtrl::SelectDataInEditCtrl() {
    if (HasEdit()) m_edit.SetSel(0, -1);
}

bool XBaseSearchCtrl::LoadBitmapW(UINT id) {
    if (!m_bOpenButton || !m_open.IsWindow()) return false;
    // Grey in the face becomes the button's own colour.
    qv::Bitmap face(static_cast<HBITMAP>(::LoadImageW(qv::LibraryModule(), MAKEINTRESOURCEW(id), IMAGE_BITMAP, 0, 0,
                                                      LR_LOADMAP3DCOLORS)));
    if (!face) return false;
    // Shown at the field's DPI; the old face goes once the button has let it go.
    m_open.SetFace(face.get());
    m_openFace = std::move(face);
    return true;
}

bool XBaseSearchCtrl::AccessibleName(long child, std::wstring& name) {
    if (child != CHILDID_SELF) return false;
    // The frame's window text is the path: the field is named by its label
    // instead (and by nothing rather than by the path when it has none).
    name = qv::AccessibleLabelOf(m_hWnd);
    return true;
}

bool XBaseSearchCtrl::AccessibleRole(long child, long& role) {
    if (child != CHILDID_SELF) return false;
    role = ROLE_SYSTEM_GROUPING;
    return true;
}

void XBaseSearchCtrl::OnDpiChanged(UINT dpi) {
    if (!IsWindow()) return;
    const RECT client = GetClientRect();
    LayOutChildren(client.right, client.bottom, dpi);
    if (m_bOpenButton) m_open.RefreshFace();
}

void XBaseSearchCtrl::LayOutChildren(int cx, int cy, UINT dpi) {
    const sr::Layout l = sr::LayOut(cx, cy, m_bOpenButton, dpi);
    auto place = [](qv::Window& w, const qv::Box& b) {
        if (w.IsWindow()) w.MoveWindow(RECT{b.left, b.top, b.right, b.bottom});
    };
    place(m_edit, l.edit);
    place(m_browse, l.browse);
    if (m_bOpenButton) place(m_open, l.open);
}

LRESULT XBaseSearchCtrl::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORSTATIC:
        // The edit paints in the field's colours (read-only edits ask with
        // WM_CTLCOLORSTATIC).
        if (HasEdit() && reinterpret_cast<HWND>(lp) == m_edit.m_hWnd) return reinterpret_cast<LRESULT>(m_scheme.Apply(reinterpret_cast<HDC>(wp)));
        return qv::Static::WindowProc(msg, wp, lp);
    default:
        return qv::Static::WindowProc(msg, wp, lp);
    }
}

void XBaseSearchCtrl::OnSize(UINT, int cx, int cy) {
    Default();
    LayOutChildren(cx, cy, qv::DpiOf(m_hWnd));
}

void XBaseSearchCtrl::OnSetFocus(HWND) {
    if (HasEdit()) m_edit.SetFocus();
}

BOOL XBaseSearchCtrl::OnCommand(WPARAM wp, LPARAM lp) {
    const UINT code = HIWORD(wp);
    const HWND from = reinterpret_cast<HWND>(lp);
    if (!from) return qv::Static::OnCommand(wp, lp);
    if (from == m_browse.m_hWnd && code == BN_CLICKED) {
        const std::wstring path = DoCallDialog();
        if (!path.empty() && HasEdit()) {
            m_bTextBeingSet = false;
            m_edit.SetWindowText(path.c_str());  // the parent hears EN_CHANGE
        }
        return TRUE;
    }
    if (m_bOpenButton && from == m_open.m_hWnd && code == BN_CLICKED) {
        OpenFile();
        return TRUE;
    }
    if (HasEdit() && from == m_edit.m_hWnd) {
        // Whoever changed it, the path a reader hears has changed.
        if (code == EN_CHANGE) qv::RaiseAccessibleEvent(m_edit.m_hWnd, EVENT_OBJECT_VALUECHANGE);
        if (code == EN_KILLFOCUS && !m_bTextBeingSet && m_bValidation && !m_bDestroying) {
            std::wstring text = EditText();
            if (!CheckFileExist(text)) WriteEditText(text);
            return TRUE;
        }
        if (code == EN_CHANGE && !m_bTextBeingSet) {
            if (HWND parent = GetParent()) ::SendMessageW(parent, WM_COMMAND, wp, lp);
            return TRUE;
        }
    }
    return qv::Static::OnCommand(wp, lp);
}

LRESULT XBaseSearchCtrl::OnSetText(WPARAM, LPARAM lp) {
    if (!IsWindow() || !HasEdit()) return -1;
    const auto* given = reinterpret_cast<const wchar_t*>(lp);
    std::wstring text = given ? given : L"";
    if (m_bValidation) {
        std::wstring checked = text;
        if (!CheckFileExist(checked)) text = checked;
    }
    WriteEditText(text);
    return 0;
}

LRESULT XBaseSearchCtrl::OnGetText(WPARAM wp, LPARAM lp) {
    if (!IsWindow() || !HasEdit()) return -1;
    auto* buffer = reinterpret_cast<wchar_t*>(lp);
    if (wp == 0 || !buffer) return 0;
    const std::wstring text = EditText();
    const sr::TextAnswer answer = sr::AnswerGetText(text.size(), static_cast<size_t>(wp));
    std::copy_n(text.data(), answer.copy, buffer);
    buffer[answer.copy] = L'\0';
    return static_cast<LRESULT>(answer.answer);
}

LRESULT XBaseSearchCtrl::OnGetTextLength(WPARAM, LPARAM) {
    if (!IsWindow() || !HasEdit()) return -1;
    return m_edit.GetWindowTextLength();
}

void XBaseSearchCtrl::OnDestroy() {
    m_bDestroying = true;
    Default();
}

void XBaseSearchCtrl::OpenFile() {
    const std::wstring file = EditText();
    if (file.empty()) return;
    const std::wstring folder = TempFolder();
    const INT_PTR result = qv::Services::Shell().Execute(m_open.m_hWnd, L"open", file.c_str(), nullptr,
                                                         folder.empty() ? nullptr : folder.c_str(), SW_SHOW);
    if (result > 32) return;
    qv::Services::MessageBoxes().Show(m_hWnd, Translated(L"Open application").c_str(),
                                      Translated(qv::ShellErrorText(result)).c_str(), MB_ICONHAND);
}

void XBaseSearchCtrl::WriteEditText(const std::wstring& text) {
    if (!HasEdit()) return;
    const bool before = m_bTextBeingSet;
    m_bTextBeingSet = true;
    // The whole text is replaced, never cut to the edit's typing limit.
    m_edit.SetWindowText(text.c_str());
    m_edit.SetSel(0, -1);
    m_bTextBeingSet = before;
}

// ---- The folder and file fields -----------------------------------------------------------

std::wstring XSearchFolderCtrl::DoCallDialog() try {
    XFolderSelectDlg dialog(m_hWnd);
    if (!m_strDlgTitle.empty()) dialog.SetTitle(m_strDlgTitle);
    if (!m_strDlgOkText.empty()) dialog.SetOkBtnText(m_strDlgOkText);
    dialog.SetPath(InitialFolder(EditText()));
    if (dialog.DoModal() != IDOK) return {};
    return dialog.GetPath();
} catch (...) {
    return qv::CaughtAtEdge(" XSearchFolderCtrl::DoCallDialog", __LINE__, std::wstring());
}

bool XSearchFolderCtrl::CheckFileExist(std::wstring& text) try {
    DWORD error = ERROR_PATH_NOT_FOUND;
    if (!text.empty()) {
        const std::wstring name = FileSystemNameOf(text, sr::kMaxPlainFolder);
        WIN32_FIND_DATAW found{};
        HANDLE search = ::FindFirstFileW(sr::FolderSearchPattern(name).c_str(), &found);
        if (search != INVALID_HANDLE_VALUE) {
            ::FindClose(search);
            return true;
        }
        error = ::GetLastError();
    }
    text = SystemMessage(error);
    return false;
} catch (...) {
    return qv::CaughtAtEdge(" XSearchFolderCtrl::CheckFileExist", __LINE__, false);
}

std::wstring XSearchFileCtrl::DoCallDialog() try {
    XFileSelectDlg dialog(m_hWnd);
    if (!m_strDlgTitle.empty()) dialog.SetTitle(m_strDlgTitle);
    if (!m_strDlgOkText.empty()) dialog.SetOkBtnText(m_strDlgOkText);
    dialog.SetInitialDir(InitialFolder(EditText()));
    if (dialog.DoModal() != IDOK) return {};
    return dialog.GetPathName();
} catch (...) {
    return qv::CaughtAtEdge(" XSearchFileCtrl::DoCallDialog", __LINE__, std::wstring());
}

bool XSearchFileCtrl::CheckFileExist(std::wstring& text) try {
    DWORD error = ERROR_FILE_NOT_FOUND;
    if (!text.empty()) {
        if (sr::ClassifyPath(text) == sr::PathKind::Device) {
            // A device ("\\.\COM1") is no file of a form, and opening one may wait.
            error = ERROR_INVALID_NAME;
        } else {
            const std::wstring name = FileSystemNameOf(text, sr::kMaxPlainPath);
            HANDLE file = ::CreateFileW(name.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
            if (file != INVALID_HANDLE_VALUE) {
                const DWORD type = ::GetFileType(file);
                ::CloseHandle(file);
                if (type == FILE_TYPE_DISK) return true;
                error = ERROR_INVALID_NAME;  // a device name such as "NUL" or "CON"
            } else {
                error = ::GetLastError();
            }
        }
    }
    text = SystemMessage(error);
    return false;
} catch (...) {
    return qv::CaughtAtEdge(" XSearchFileCtrl::CheckFileExist", __LINE__, false);
}
