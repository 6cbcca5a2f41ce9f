#include "quorvel/masks/maskedit.h"

#include <algorithm>
#include <clocale>
#include <cstring>
#include <utility>
#include <vector>

#include "quorvel/common/boundary.h"
#include "quorvel/frame/services.h"
#include "quorvel/masks/mask_rules.h"
#include "quorvel/masks/pattern.h"

namespace {

std::wstring Translated(const wchar_t* text) { return qv::Services::Translation().Translate(text); }

// One ANSI-code-page character as a wide character.
wchar_t WidenAnsi(char c) {
    wchar_t w = 0;
    if (::MultiByteToWideChar(CP_ACP, 0, &c, 1, &w, 1) == 1) return w;
    return static_cast<wchar_t>(static_cast<unsigned char>(c));
}

// The decimal separator a typed ',' '.' or ';' becomes: the first byte of
// the user locale's separator, or of the C runtime's if that is unreadable.
wchar_t TypedDecimalSeparator() {
    char buf[256] = {};
    if (::GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, buf, sizeof buf) > 0 && buf[0]) return WidenAnsi(buf[0]);
    const std::lconv* lc = std::localeconv();
    return WidenAnsi(lc && lc->decimal_point && lc->decimal_point[0] ? lc->decimal_point[0] : '.');
}

// Opens the clipboard for `owner` if it holds text.
bool OpenTextClipboard(HWND owner) { return ::IsClipboardFormatAvailable(CF_TEXT) && ::OpenClipboard(owner); }

// Closes the open clipboard when a paste or cut ends, also when it throws:
// the field never keeps the clipboard from other programs.
struct ClipboardCloser {
    ClipboardCloser() = default;
    ClipboardCloser(const ClipboardCloser&) = delete;
    ClipboardCloser& operator=(const ClipboardCloser&) = delete;
    ~ClipboardCloser() { ::CloseClipboard(); }
};

// Reads the clipboard's CF_TEXT into `text`; the clipboard is open.
// False when there is no data or it cannot be locked.
bool ReadClipboardText(std::wstring& text) {
    HANDLE data = ::GetClipboardData(CF_TEXT);
    if (!data) return false;
    const char* bytes = static_cast<const char*>(::GlobalLock(data));
    if (!bytes) return false;
    const int n = ::MultiByteToWideChar(CP_ACP, 0, bytes, -1, nullptr, 0);
    try {
        text.assign(n > 0 ? static_cast<size_t>(n) : 1u, L'\0');
    } catch (...) {
        ::GlobalUnlock(data);
        throw;
    }
    if (n > 0) ::MultiByteToWideChar(CP_ACP, 0, bytes, -1, text.data(), n);
    text.resize(text.size() - 1);
    ::GlobalUnlock(data);
    return true;
}

}  // namespace

unsigned int XMaskBaseEdit::m_uiParserCount = 0;

XMaskBaseEdit::XMaskBaseEdit() : XBaseEdit({}, {}, {}) { InitMaskedit({}); }

XMaskBaseEdit::XMaskBaseEdit(const std::wstring& mask) : XBaseEdit({}, {}, {}) { InitMaskedit(mask); }

XMaskBaseEdit::~XMaskBaseEdit() {
    if (m_uiParserCount > 0 && --m_uiParserCount == 0) XParserFactory::DestroyParserFactory();
}

void XMaskBaseEdit::InitMaskedit(const std::wstring& mask) {
    if (mask.empty())
        SetMask();
    else
        SetMask(mask);
    m_pParser = XParserFactory::GetParserFactory();
    ++m_uiParserCount;
}

void XMaskBaseEdit::SetMask() try {
    m_strMask = L"#?(.)(#?)";
    m_bMaskSet = 1;
} catch (...) {
    qv::CaughtAtEdge(" XMaskBaseEdit::SetMask", __LINE__);
}

void XMaskBaseEdit::SetMask(const std::wstring& mask) try {
    m_strMask = mask;
    m_bMaskSet = 1;
} catch (...) {
    qv::CaughtAtEdge(" XMaskBaseEdit::SetMask", __LINE__);
}

bool XMaskBaseEdit::CheckLimits(std::wstring&) { return true; }

qv::MaskSetup XMaskBaseEdit::Setup() const {
    return qv::MaskSetup(m_pParser, m_strMask, m_bLocaleDecimal != 0, m_bZeroOut != 0);
}

void XMaskBaseEdit::Update(std::wstring& text, std::wstring& selText, int& selStart, int& selEnd, int& lineStart) try {
    GetSel(selStart, selEnd);
    // The field has one line, which starts at 0. It is read through the line
    // messages, not WM_GETTEXT, which the decimal fields answer themselves;
    // and with as few messages as possible, since this runs several times
    // per keystroke.
    const int length = LineLength(0);
    text.assign(static_cast<size_t>(std::max(length, 1)) + 1, L'\0');
    // EM_GETLINE takes the buffer size in its first WORD and copies no terminator.
    *reinterpret_cast<WORD*>(text.data()) = static_cast<WORD>(std::min<size_t>(text.size(), 0xFFFF));
    const int got = static_cast<int>(SendMessage(EM_GETLINE, 0, reinterpret_cast<LPARAM>(text.data())));
    text.resize(got > 0 && got <= length ? static_cast<size_t>(got) : 0u);
    lineStart = 0;
    const int from = std::clamp(selStart, 0, static_cast<int>(text.size()));
    const int to = std::clamp(selEnd, from, static_cast<int>(text.size()));
    selText = text.substr(static_cast<size_t>(from), static_cast<size_t>(to - from));
} catch (...) {
    qv::CaughtAtEdge(" XMaskBaseEdit::Update", __LINE__);
}

qv::FieldState XMaskBaseEdit::CurrentState() {
    std::wstring text, selText;
    int selStart = 0, selEnd = 0, lineStart = 0;
    Update(text, selText, selStart, selEnd, lineStart);
    return qv::FieldState{std::move(text), selStart, selEnd};
}

int XMaskBaseEdit::ZeroOut(std::wstring& text, std::wstring& selText, int selStart, int selEnd, int lineStart,
                           unsigned nChar, int mode) try {
    if (!m_bZeroOut) return 1;
    if (mode == 1) return qv::SuperfluousZero(m_strMask, text, nChar) < 0 ? 1 : 0;
    Update(text, selText, selStart, selEnd, lineStart);
    Run(qv::PlanZeroRepair(Setup(), qv::FieldState{text, selStart, selEnd}, nChar), nChar, 1, 0);
    return 1;
} catch (...) {
    return qv::CaughtAtEdge(" XMaskBaseEdit::ZeroOut", __LINE__, 1);
}

void XMaskBaseEdit::Run(const qv::MaskEditPlan& plan, UINT ch, UINT repCnt, UINT flags) {
    for (int i = 0; i < plan.count; ++i) {
        const qv::MaskEditOp& op = plan.ops[i];
        switch (op.kind) {
        case qv::MaskEditOp::SetSel: SendMessage(EM_SETSEL, static_cast<WPARAM>(op.start), op.end); break;
        case qv::MaskEditOp::Clear: Clear(); break;
        case qv::MaskEditOp::ReplaceSel: ReplaceSel(plan.text.c_str(), false); break;
        case qv::MaskEditOp::PassOn: XBaseEdit::OnChar(ch, repCnt, flags); break;
        }
    }
}

void XMaskBaseEdit::OnChar(UINT ch, UINT repCnt, UINT flags) {
    std::wstring text, selText;
    int selStart = 0, selEnd = 0, lineStart = 0;
    Update(text, selText, selStart, selEnd, lineStart);
    const auto typed = static_cast<wchar_t>(ch);
    const bool decimalKey = typed == L',' || typed == L'.' || typed == L';';
    const wchar_t separator = m_bLocaleDecimal && decimalKey ? TypedDecimalSeparator() : 0;
    // The pattern sees the character narrowed to 8 bits through the ANSI
    // code page: a character outside it is checked as the character of its
    // low byte.
    const wchar_t checked = WidenAnsi(static_cast<char>(ch & 0xFF));
    const qv::MaskEditPlan plan =
        qv::PlanChar(Setup(), qv::FieldState{text, selStart, selEnd}, typed, checked, separator);
    Run(plan, ch, repCnt, flags);
    if (plan.repairAfter && IsWindow()) ZeroOut(text, selText, selStart, selEnd, lineStart, ch, 0);
}

void XMaskBaseEdit::OnKeyDown(UINT vk, UINT repCnt, UINT flags) {
    // Shift+Insert pastes and Shift+Delete cuts. Some edit controls (Wine's)
    // do that internally without sending themselves WM_PASTE or WM_CUT, which
    // would let the change past the pattern; sending the messages here makes
    // every paste and cut go through the same check.
    const bool shift = ::GetKeyState(VK_SHIFT) < 0, control = ::GetKeyState(VK_CONTROL) < 0;
    if (shift && !control && (vk == VK_INSERT || vk == VK_DELETE)) {
        SendMessage(vk == VK_INSERT ? WM_PASTE : WM_CUT);
        return;
    }
    if (vk != VK_DELETE || shift) {
        XBaseEdit::OnKeyDown(vk, repCnt, flags);
        return;
    }
    Run(qv::PlanDelete(Setup(), CurrentState()), 0, 1, 0);
}

LRESULT XMaskBaseEdit::OnPaste(WPARAM, LPARAM) { return ManagePaste(); }

LRESULT XMaskBaseEdit::OnCut(WPARAM, LPARAM) { return ManageCut(); }

int XMaskBaseEdit::ManagePaste() {
    if (!OpenTextClipboard(m_hWnd)) return 0;
    const ClipboardCloser closer;
    std::wstring clip;
    if (ReadClipboardText(clip)) Run(qv::PlanPaste(Setup(), CurrentState(), clip), 0, 1, 0);
    return 1;
}

int XMaskBaseEdit::ManageCut() {
    if (!::IsClipboardFormatAvailable(CF_TEXT) || !::OpenClipboard(m_hWnd)) return 0;
    const ClipboardCloser closer;
    std::wstring current;
    if (ReadClipboardText(current)) {
        std::wstring text, selText;
        int selStart = 0, selEnd = 0, lineStart = 0;
        Update(text, selText, selStart, selEnd, lineStart);
        const qv::MaskEditPlan plan = qv::PlanCut(Setup(), qv::FieldState{text, selStart, selEnd});
        if (!plan.Empty()) {
            // Character count plus 2 bytes of the wide text, as 8-bit text.
            const size_t bytes = wcslen(plan.text.c_str()) + 2;
            HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, bytes);
            void* target = block ? ::GlobalLock(block) : nullptr;
            if (target) {
                std::memcpy(target, plan.text.c_str(), bytes);
                ::GlobalUnlock(block);
                if (::SetClipboardData(CF_TEXT, block)) {
                    block = nullptr;  // the clipboard owns it now
                    Run(plan, 0, 1, 0);
                }
            }
            if (block) ::GlobalFree(block);
        }
    }
    return 1;
}

void XMaskBaseEdit::OnKillFocus(HWND newFocus) {
    std::wstring text = GetWindowText();
    if (!CheckLimits(text) || m_bDisplayError) {
        m_bDisplayError = true;
        qv::Services::MessageBoxes().Show(IsWindow() ? m_hWnd : nullptr, Translated(L"Input-Error").c_str(),
                                          Translated(L"Value out of range").c_str(), MB_ICONERROR);
        SetFocus();
        Clear();
        SetWindowTextW(text.c_str());
        SendMessage(EM_SETSEL, 0, -1);
        m_bDisplayError = false;
        return;
    }
    m_bDisplayError = false;
    XBaseEdit::OnKillFocus(newFocus);
}

void XMaskBaseEdit::ShowLocaleFailure(const wchar_t* where) {
    const DWORD error = ::GetLastError();
    wchar_t* system = nullptr;
    ::FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                     nullptr, error, 0, reinterpret_cast<wchar_t*>(&system), 0, nullptr);
    const std::wstring message = std::wstring(where) + L"\n" + (system ? system : L"");
    if (system) ::LocalFree(system);
    qv::Services::MessageBoxes().Show(nullptr, Translated(L"Error in Quorvel").c_str(), message.c_str(),
                                      MB_ICONERROR);
}

void XMaskBaseEdit::SetDecimalLocale(wchar_t* number, bool toPoint) {
    if (!number) return;
    const int size = ::GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, nullptr, 0);
    if (size <= 0) return;
    std::vector<wchar_t> separator(static_cast<size_t>(size) + 1, L'\0');
    if (!::GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, separator.data(), size)) {
        ShowLocaleFailure(L"XMaskBaseEdit::SetDecimalLocale");
        return;
    }
    qv::SwapDecimalSeparator(number, wcslen(number), separator[0], toPoint);
}

void XMaskBaseEdit::SetDecimalLocale(char* number, bool toPoint) {
    if (!number) return;
    const int size = ::GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, nullptr, 0);
    if (size <= 0) return;
    std::vector<char> separator(static_cast<size_t>(size) + 1, '\0');
    if (!::GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, separator.data(), size)) {
        ShowLocaleFailure(L"XMaskBaseEdit::SetDecimalLocale");
        return;
    }
    qv::SwapDecimalSeparator(number, strlen(number), separator[0], toPoint);
}

int XMaskBaseEdit::WriteValueText(const std::wstring& text, bool unchecked) {
    SendMessage(EM_SETSEL, 0, -1);
    Clear();
    if (!unchecked && !Setup().Accepts(text)) return 0;
    ReplaceSel(text.c_str(), false);
    return 1;
}

LRESULT XMaskBaseEdit::AnswerGetText(WPARAM cchMax, LPARAM buffer) {
    if (!IsWindow() || cchMax == 0 || !buffer) return 0;
    // The control copies at most cchMax - 1 characters of its one line and
    // ends them with a zero, which is exactly the answer wanted.
    return Default();
}

LRESULT XMaskBaseEdit::AnswerSetText(LPARAM text) {
    if (!IsWindow() || !text) return 0;
    ReplaceSel(reinterpret_cast<const wchar_t*>(text), false);
    return 1;
}

int XMaskBaseEdit::WriteDecimalValue(double value, int decimals) {
    wchar_t separator = 0;
    if (value != 0.0) {
        wchar_t buf[8] = {};
        if (::GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, buf, 8) > 0)
            separator = buf[0];
        else
            ShowLocaleFailure(L"XMaskFloatEdit::GetValue(GetLocaleInfo)");  // the value keeps its '.'
    }
    std::wstring text;
    if (!qv::DecimalValueText(value, decimals, separator, text)) {
        WriteValueText({}, true);  // not finite: the field is left empty
        return 0;
    }
    return WriteValueText(text, value == 0.0);
}
