// The operations the controls use from the host application's sibling
// libraries, under the names the host knows them by. Each forwards to the
// replaceable service of frame/services.h, so a standalone program gets the
// embedded defaults and a host can plug its own libraries in.
//
// Texts are UTF-16; where the host's libraries take their counted string
// class, these take std::wstring.
#pragma once

#include <windows.h>
#include <oaidl.h>

#include <string>
#include <vector>

#include "quorvel/common/api.h"
#include "quorvel/frame/zt_lang.h"
#include "quorvel/platform/com.h"

// ---- Message boxes ---------------------------------------------------------------
// Modal error box (MB_ICONERROR); the library always passes parent NULL,
// flags 0 and the translated caption "Error".
QV_API int CoErrorBox(HWND parent, const wchar_t* caption, const wchar_t* text, long flags);
// Modal warning box (MB_ICONWARNING); caption and text translated by the caller.
QV_API int CoWarningBox(HWND parent, const wchar_t* caption, const wchar_t* text, long flags);

// ---- Error box, log book, error texts ------------------------------------------------
class QV_API XZTError {
public:
    // One entry of the application's error log book.
    static void WriteErrorToLogBook(const wchar_t* module, const wchar_t* function, unsigned long line,
                                    const wchar_t* message, long hr);
    // An error box for a failure the user must see.
    static void DisplayErrorMessageBox(const wchar_t* module, const wchar_t* function, unsigned long line,
                                       const wchar_t* message, const wchar_t* extra);
    // Text for an error code; valid until the next call on this thread.
    static wchar_t* GetErrorMessage(unsigned long code);
};

// ---- Conversions ----------------------------------------------------------------------
// A number in the user's locale (its decimal separator or '.'); false for
// empty text or trailing garbage, the value is then left as it was.
QV_API bool String2Double(const std::wstring& text, double& value);
// Formats with a printf-style format (one floating conversion) and the
// locale's decimal separator.
QV_API bool Double2String(std::wstring& text, double value, const std::wstring& format);
// True when the number in the text lies in [lower, upper].
QV_API bool CheckRange(double lower, double upper, std::wstring& text);
// True when the text holds only '0'-'9' and 'A'-'Z'. flag false: the text is
// one typed character (exactly one is required); flag true: a whole text
// being set (the empty text passes).
QV_API bool CheckCharacters0_9A_Z(const std::wstring& text, bool flag);
// Rich text to plain text; false when the input is not rich text.
QV_API bool RTF2TXT(const std::wstring& rtf, std::wstring& text);

// Owning BSTR wrapper.
class QV_API XZTComBSTR {
public:
    XZTComBSTR() = default;
    XZTComBSTR(const wchar_t* text);  // NOLINT: implicit like the host's class
    XZTComBSTR(const XZTComBSTR& other);
    virtual ~XZTComBSTR();
    XZTComBSTR& operator=(const wchar_t* text);
    XZTComBSTR& operator=(const XZTComBSTR& other);
    bool operator==(const wchar_t* text) const;
    BSTR* operator&();
    operator qv::Bstr() const;
    operator wchar_t*() const { return m_str; }
    BSTR m_str = nullptr;
};

// Owning VARIANT wrapper.
class QV_API XZTComVariant {
public:
    XZTComVariant();
    ~XZTComVariant();
    XZTComVariant(const XZTComVariant&) = delete;
    XZTComVariant& operator=(const XZTComVariant&) = delete;
    // The value as a double (VariantChangeType to VT_R8); 0.0 when it does not convert.
    double GetDouble() const;
    VARIANT* operator&();
    VARIANT m_var;
};

// ---- Initial values ------------------------------------------------------------------------
// One named initial value handed over by the host: name and value are owned
// by the array; FreeStruct frees both and the array (CoTaskMemAlloc'ed).
struct tagINITVALUE {
    BSTR name;
    VARIANT value;
};

class QV_API XInitValueWrapper {
public:
    // Copies the values; the caller keeps (and frees) its array.
    XInitValueWrapper(unsigned long count, tagINITVALUE* values);
    virtual ~XInitValueWrapper();
    XInitValueWrapper(const XInitValueWrapper&) = delete;
    XInitValueWrapper& operator=(const XInitValueWrapper&) = delete;
    // A copy of the value named `name` (exact, case-sensitive); false when none.
    bool GetData(const wchar_t* name, VARIANT& value);
    // Frees an array the host handed over: names, values, then the array.
    static void FreeStruct(unsigned long count, tagINITVALUE* values);

private:
    struct Item;
    std::vector<Item>* items_;
};

namespace qv {

// The library's one format of a log entry: module "Quorvel", the function
// with its leading blank (" XBaseDateTime::Init"), the position, a short
// English message, and E_FAIL or the caught COM error's code.
QV_API void LogFailure(const wchar_t* function, unsigned long line, const wchar_t* message, long hr = E_FAIL);
// The same for narrow source texts, widened for the call.
QV_API void LogFailureA(const char* function, unsigned long line, const char* message, long hr = E_FAIL);

// The process-wide BSTR "Quorvel" (the module argument of error boxes);
// created when the library is loaded and freed when it is unloaded.
QV_API BSTR ModuleNameBstr();

}  // namespace qv
