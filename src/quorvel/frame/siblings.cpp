#include "quorvel/frame/siblings.h"

#include <array>
#include <new>

#include "quorvel/common/boundary.h"
#include "quorvel/frame/services.h"

namespace {

// Translation results live in a small ring per thread: callers copy them at
// once, as with the host's translation library, and never free them.
wchar_t* Keep(std::wstring text) {
    thread_local std::array<std::wstring, 64> ring;
    thread_local size_t next = 0;
    std::wstring& slot = ring[next];
    next = (next + 1) % ring.size();
    slot = std::move(text);
    return slot.data();
}

std::wstring Widen(const char* text) {
    if (!text) return {};
    const int len = ::MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0);
    if (len <= 1) return {};
    std::wstring wide(static_cast<size_t>(len), L'\0');
    ::MultiByteToWideChar(CP_ACP, 0, text, -1, wide.data(), len);
    wide.resize(static_cast<size_t>(len - 1));
    return wide;
}

// Only texts that are labels are translated: captions, statics, buttons and
// group boxes. Edit fields, lists and combo boxes hold the user's data.
bool IsLabelClass(HWND hwnd) {
    wchar_t cls[32] = {};
    ::GetClassNameW(hwnd, cls, 32);
    return ::lstrcmpiW(cls, L"Static") == 0 || ::lstrcmpiW(cls, L"Button") == 0;
}

void TranslateText(HWND hwnd) {
    const int len = ::GetWindowTextLengthW(hwnd);
    if (len <= 0) return;
    std::wstring text(static_cast<size_t>(len) + 1, L'\0');
    text.resize(static_cast<size_t>(::GetWindowTextW(hwnd, text.data(), len + 1)));
    const std::wstring translated = qv::Services::Translation().Translate(text);
    if (translated != text) ::SetWindowTextW(hwnd, translated.c_str());
}

BOOL CALLBACK TranslateChild(HWND child, LPARAM) {
    try {
        if (IsLabelClass(child)) TranslateText(child);
    } catch (...) {
        // That label keeps its text; the others are still translated.
        qv::LogCaughtException(" CoTranslateWindow", 1);
    }
    return TRUE;
}

// What a translation or error text that failed answers: an empty text.
wchar_t* NoText() {
    thread_local wchar_t empty[1] = {L'\0'};
    empty[0] = L'\0';
    return empty;
}

}  // namespace

// A translation that fails leaves the text untranslated (CoTranslateText)
// or empty (CoTranslateText2).
const wchar_t* CoTranslateText(const wchar_t* text) try {
    if (!text) return L"";
    return Keep(qv::Services::Translation().Translate(text));
} catch (...) {
    return qv::CaughtAtEdge(" CoTranslateText", __LINE__, text);
}

wchar_t* CoTranslateText2(const wchar_t* text) try {
    return Keep(text ? qv::Services::Translation().Translate(text) : std::wstring());
} catch (...) {
    return qv::CaughtAtEdge(" CoTranslateText2", __LINE__, NoText());
}

wchar_t* CoTranslateText2(const char* text) try {
    return Keep(qv::Services::Translation().Translate(Widen(text)));
} catch (...) {
    return qv::CaughtAtEdge(" CoTranslateText2", __LINE__, NoText());
}

void CoTranslateWindow(HWND dialog) {
    if (!dialog || !::IsWindow(dialog)) return;
    try {
        TranslateText(dialog);
    } catch (...) {
        qv::CaughtAtEdge(" CoTranslateWindow", __LINE__);
    }
    ::EnumChildWindows(dialog, TranslateChild, 0);
}

// A box that cannot be shown (the host's service threw) answers 0, as
// MessageBoxW does when it fails.
int CoErrorBox(HWND parent, const wchar_t* caption, const wchar_t* text, long flags) try {
    return qv::Services::MessageBoxes().Show(parent, caption, text, MB_OK | MB_ICONERROR | static_cast<UINT>(flags));
} catch (...) {
    return qv::CaughtAtEdge(" CoErrorBox", __LINE__, 0);
}

int CoWarningBox(HWND parent, const wchar_t* caption, const wchar_t* text, long flags) try {
    return qv::Services::MessageBoxes().Show(parent, caption, text, MB_OK | MB_ICONWARNING | static_cast<UINT>(flags));
} catch (...) {
    return qv::CaughtAtEdge(" CoWarningBox", __LINE__, 0);
}

// ---- XZTError ------------------------------------------------------------------------

// The log book is where failures are reported: when writing to it fails,
// the entry is lost and nothing else happens.
void XZTError::WriteErrorToLogBook(const wchar_t* module, const wchar_t* function, unsigned long line,
                                   const wchar_t* message, long hr) try {
    qv::Services::LogBook().Write(
        qv::LogEntry{module ? module : L"", function ? function : L"", line, message ? message : L"", hr});
} catch (...) {
}

void XZTError::DisplayErrorMessageBox(const wchar_t* module, const wchar_t* function, unsigned long line,
                                      const wchar_t* message, const wchar_t* extra) try {
    qv::Services::LogBook().DisplayError(
        qv::LogEntry{module ? module : L"", function ? function : L"", line, message ? message : L"", E_FAIL},
        extra);
} catch (...) {
    qv::CaughtAtEdge(" XZTError::DisplayErrorMessageBox", __LINE__);
}

wchar_t* XZTError::GetErrorMessage(unsigned long code) try {
    return Keep(qv::Services::LogBook().ErrorMessage(code));
} catch (...) {
    return qv::CaughtAtEdge(" XZTError::GetErrorMessage", __LINE__, NoText());
}

// ---- Conversions ------------------------------------------------------------------------

// A conversion that throws (the host's service, or no memory) answers false.
bool String2Double(const std::wstring& text, double& value) try {
    return qv::Services::Conversion().String2Double(text, value);
} catch (...) {
    return qv::CaughtAtEdge(" String2Double", __LINE__, false);
}

bool Double2String(std::wstring& text, double value, const std::wstring& format) try {
    return qv::Services::Conversion().Double2String(text, value, format);
} catch (...) {
    return qv::CaughtAtEdge(" Double2String", __LINE__, false);
}

bool CheckRange(double lower, double upper, std::wstring& text) try {
    return qv::Services::Conversion().CheckRange(lower, upper, text);
} catch (...) {
    return qv::CaughtAtEdge(" CheckRange", __LINE__, false);
}

bool CheckCharacters0_9A_Z(const std::wstring& text, bool flag) try {
    return qv::Services::Conversion().CheckCharacters0_9A_Z(text, flag);
} catch (...) {
    return qv::CaughtAtEdge(" CheckCharacters0_9A_Z", __LINE__, false);
}

bool RTF2TXT(const std::wstring& rtf, std::wstring& text) try {
    return qv::Services::Conversion().RTF2TXT(rtf, text);
} catch (...) {
    return qv::CaughtAtEdge(" RTF2TXT", __LINE__, false);
}

// ---- XZTComBSTR / XZTComVariant ------------------------------------------------------------

XZTComBSTR::XZTComBSTR(const wchar_t* text) : m_str(text ? ::SysAllocString(text) : nullptr) {}
XZTComBSTR::XZTComBSTR(const XZTComBSTR& other)
    : m_str(other.m_str ? ::SysAllocStringLen(other.m_str, ::SysStringLen(other.m_str)) : nullptr) {}
XZTComBSTR::~XZTComBSTR() { ::SysFreeString(m_str); }

XZTComBSTR& XZTComBSTR::operator=(const wchar_t* text) {
    BSTR next = text ? ::SysAllocString(text) : nullptr;
    ::SysFreeString(m_str);
    m_str = next;
    return *this;
}

XZTComBSTR& XZTComBSTR::operator=(const XZTComBSTR& other) {
    if (this != &other) {
        BSTR next = other.m_str ? ::SysAllocStringLen(other.m_str, ::SysStringLen(other.m_str)) : nullptr;
        ::SysFreeString(m_str);
        m_str = next;
    }
    return *this;
}

bool XZTComBSTR::operator==(const wchar_t* text) const {
    if (!m_str || !text) return (!m_str || !*m_str) && (!text || !*text);
    return std::wstring_view(m_str, ::SysStringLen(m_str)) == std::wstring_view(text);
}

BSTR* XZTComBSTR::operator&() {
    ::SysFreeString(m_str);
    m_str = nullptr;
    return &m_str;
}

XZTComBSTR::operator qv::Bstr() const {
    return m_str ? qv::Bstr(std::wstring_view(m_str, ::SysStringLen(m_str))) : qv::Bstr();
}

XZTComVariant::XZTComVariant() { ::VariantInit(&m_var); }
XZTComVariant::~XZTComVariant() { ::VariantClear(&m_var); }

double XZTComVariant::GetDouble() const {
    VARIANT copy;
    ::VariantInit(&copy);
    double d = 0.0;
    if (SUCCEEDED(::VariantChangeType(&copy, const_cast<VARIANT*>(&m_var), 0, VT_R8))) d = copy.dblVal;
    ::VariantClear(&copy);
    return d;
}

VARIANT* XZTComVariant::operator&() {
    ::VariantClear(&m_var);
    return &m_var;
}

// ---- XInitValueWrapper ------------------------------------------------------------------------

struct XInitValueWrapper::Item {
    std::wstring name;
    qv::Variant value;
};

XInitValueWrapper::XInitValueWrapper(unsigned long count, tagINITVALUE* values)
    : items_(new (std::nothrow) std::vector<Item>) {
    if (!values || !items_) return;
    try {
        items_->reserve(count);
        for (unsigned long i = 0; i < count; ++i) {
            Item item;
            if (values[i].name) item.name.assign(values[i].name, ::SysStringLen(values[i].name));
            ::VariantCopy(&item.value, &values[i].value);
            items_->push_back(std::move(item));
        }
    } catch (...) {
        // The values copied so far are kept; GetData answers false for the rest.
        qv::CaughtAtEdge(" XInitValueWrapper::XInitValueWrapper", __LINE__);
    }
}

XInitValueWrapper::~XInitValueWrapper() { delete items_; }

bool XInitValueWrapper::GetData(const wchar_t* name, VARIANT& value) {
    if (!name || !items_) return false;
    for (const Item& item : *items_) {
        if (item.name == name) return SUCCEEDED(::VariantCopy(&value, const_cast<qv::Variant*>(&item.value)));
    }
    return false;
}

void XInitValueWrapper::FreeStruct(unsigned long count, tagINITVALUE* values) {
    if (!values) return;
    for (unsigned long i = 0; i < count; ++i) {
        ::SysFreeString(values[i].name);
        ::VariantClear(&values[i].value);
    }
    ::CoTaskMemFree(values);
}

// ---- Library-wide helpers ------------------------------------------------------------------------

namespace qv {

void LogFailure(const wchar_t* function, unsigned long line, const wchar_t* message, long hr) {
    XZTError::WriteErrorToLogBook(L"Quorvel", function, line, message, hr);
}

void LogFailureA(const char* function, unsigned long line, const char* message, long hr) try {
    Bstr fn(Widen(function)), msg(Widen(message));
    XZTError::WriteErrorToLogBook(L"Quorvel", fn.Get() ? fn.Get() : L"", line, msg.Get() ? msg.Get() : L"", hr);
} catch (...) {
    // As WriteErrorToLogBook: a log entry that cannot be made is lost.
}

}  // namespace qv
