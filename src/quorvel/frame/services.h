// The library's services: what it needs from the host application's sibling
// libraries (translation, message boxes, the error log book, conversions,
// session settings, the shell, the print dialog), each behind one interface
// that the host can replace. Every service has an embedded default that
// works standalone, so the library runs in any Win32 program without the
// host's libraries.
//
// The operations that controls call (CoTranslateText, CoErrorBox,
// XZTError::WriteErrorToLogBook, String2Double, ...) are declared in
// frame/siblings.h and forward to the services installed here.
//
// Installing: Services::SetX(&impl) replaces a service (the caller keeps the
// object alive while it is installed); Services::SetX(nullptr) restores the
// embedded default. All of it runs on the user-interface thread.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

#include "quorvel/common/api.h"

namespace qv {

// ---- Translation --------------------------------------------------------

class QV_API ITranslationService {
public:
    virtual ~ITranslationService() = default;
    // The text in the user's language, or the text itself.
    virtual std::wstring Translate(std::wstring_view text) = 0;
};

// ---- Message boxes -------------------------------------------------------

class QV_API IMessageBoxService {
public:
    virtual ~IMessageBoxService() = default;
    // A modal box as MessageBoxW shows it; answers the button pressed.
    virtual int Show(HWND parent, const wchar_t* caption, const wchar_t* text, UINT type) = 0;
};

// ---- Log book ---------------------------------------------------------------

// One entry of the error log book: module, function (with its leading blank),
// source position, English message, result code.
struct LogEntry {
    std::wstring module;
    std::wstring function;
    unsigned long line = 0;
    std::wstring message;
    long hr = 0;
};

class QV_API ILogBookService {
public:
    virtual ~ILogBookService() = default;
    virtual void Write(const LogEntry& entry) = 0;
    // Shows an error box for a failure the user must see.
    virtual void DisplayError(const LogEntry& entry, const wchar_t* extra);
    // Text for an error code.
    virtual std::wstring ErrorMessage(unsigned long code);
};

// ---- Conversions ------------------------------------------------------------

class QV_API IConversionService {
public:
    virtual ~IConversionService() = default;
    virtual bool String2Double(std::wstring_view text, double& value) = 0;
    virtual bool Double2String(std::wstring& text, double value, std::wstring_view format) = 0;
    virtual bool CheckRange(double lower, double upper, std::wstring_view text) = 0;
    virtual bool CheckCharacters0_9A_Z(std::wstring_view text, bool wholeText) = 0;
    virtual bool RTF2TXT(std::wstring_view rtf, std::wstring& text) = 0;
};

// ---- Session settings -------------------------------------------------------

class QV_API ISettingsService {
public:
    virtual ~ISettingsService() = default;
    // The text stored for section/name; false when there is none. `flag` is
    // passed on to the host's session-data manager as it is.
    virtual bool GetSessionValue(std::wstring_view section, std::wstring_view name, long flag,
                                 std::wstring& value) = 0;
};

// ---- Shell ------------------------------------------------------------------

class QV_API IShellService {
public:
    virtual ~IShellService() = default;
    // ShellExecuteW; answers its instance value (> 32 on success).
    virtual INT_PTR Execute(HWND parent, const wchar_t* verb, const wchar_t* file, const wchar_t* parameters,
                            const wchar_t* directory, int show) = 0;
};

// ---- Print dialog -------------------------------------------------------------

class QV_API IPrintDialogService {
public:
    virtual ~IPrintDialogService() = default;
    // Lets the user choose a printer (the system's print dialog with
    // PD_RETURNDC): answers a printer DC that the caller deletes (DeleteDC)
    // and the printer's name in `deviceName`, or null when the user cancelled
    // or no printer could be opened.
    virtual HDC ChoosePrinter(HWND owner, std::wstring& deviceName) = 0;
};

// ---- The embedded defaults ----------------------------------------------------

// Identity, or a catalog of translations the host loads.
class QV_API CatalogTranslation : public ITranslationService {
public:
    CatalogTranslation();
    ~CatalogTranslation() override;
    CatalogTranslation(const CatalogTranslation&) = delete;
    CatalogTranslation& operator=(const CatalogTranslation&) = delete;
    std::wstring Translate(std::wstring_view text) override;
    // Catalog text: one "source<TAB>translation" per line (see frame/catalog.h).
    // Problems are reported line by line in `errors`; good lines are kept.
    bool LoadText(std::wstring_view content, std::vector<std::wstring>* errors = nullptr);
    // The same from a UTF-8 (or UTF-16 with BOM) file.
    bool LoadFile(const wchar_t* path, std::vector<std::wstring>* errors = nullptr);
    void Clear();

private:
    struct Impl;
    Impl* impl_;
};

// MessageBoxW.
class QV_API PlatformMessageBox : public IMessageBoxService {
public:
    int Show(HWND parent, const wchar_t* caption, const wchar_t* text, UINT type) override;
};

// Entries kept in memory (newest last, at most `Capacity()`) and sent to the
// debugger output; a host sink can be chained behind it.
class QV_API MemoryLogBook : public ILogBookService {
public:
    MemoryLogBook();
    ~MemoryLogBook() override;
    MemoryLogBook(const MemoryLogBook&) = delete;
    MemoryLogBook& operator=(const MemoryLogBook&) = delete;
    void Write(const LogEntry& entry) override;
    const std::vector<LogEntry>& Entries() const;
    void Clear();
    static size_t Capacity() { return 1000; }

private:
    std::vector<LogEntry>* entries_;
};

// Conversions in the user's locale (its decimal separator read at each call,
// so a locale change applies at once).
class QV_API LocaleConversion : public IConversionService {
public:
    bool String2Double(std::wstring_view text, double& value) override;
    bool Double2String(std::wstring& text, double value, std::wstring_view format) override;
    bool CheckRange(double lower, double upper, std::wstring_view text) override;
    bool CheckCharacters0_9A_Z(std::wstring_view text, bool wholeText) override;
    bool RTF2TXT(std::wstring_view rtf, std::wstring& text) override;
    // The user locale's decimal separator (LOCALE_SDECIMAL), '.' if unreadable.
    static wchar_t DecimalSeparator();
};

// The host's COM session-data manager when the host has named its class,
// otherwise an embedded store that code can fill and that can load INI text.
class QV_API SessionSettings : public ISettingsService {
public:
    SessionSettings();
    ~SessionSettings() override;
    SessionSettings(const SessionSettings&) = delete;
    SessionSettings& operator=(const SessionSettings&) = delete;
    bool GetSessionValue(std::wstring_view section, std::wstring_view name, long flag,
                         std::wstring& value) override;

    // Names the host's session-data manager; null restores the embedded store.
    void UseSessionDataManager(const CLSID* clsid, const IID* iid);
    bool UsesSessionDataManager() const;
    // The embedded store.
    void Set(std::wstring_view section, std::wstring_view name, std::wstring_view value);
    bool LoadIniText(std::wstring_view content);
    bool LoadIniFile(const wchar_t* path);
    void ClearStore();

private:
    struct Impl;
    Impl* impl_;
};

// ShellExecuteW.
class QV_API PlatformShell : public IShellService {
public:
    INT_PTR Execute(HWND parent, const wchar_t* verb, const wchar_t* file, const wchar_t* parameters,
                    const wchar_t* directory, int show) override;
};

// The system's print dialog.
class QV_API PlatformPrintDialog : public IPrintDialogService {
public:
    HDC ChoosePrinter(HWND owner, std::wstring& deviceName) override;
};

// ---- The registry of services ---------------------------------------------------

class QV_API Services {
public:
    static ITranslationService& Translation();
    static IMessageBoxService& MessageBoxes();
    static ILogBookService& LogBook();
    static IConversionService& Conversion();
    static ISettingsService& Settings();
    static IShellService& Shell();
    static IPrintDialogService& PrintDialog();

    static void SetTranslation(ITranslationService* service);
    static void SetMessageBoxes(IMessageBoxService* service);
    static void SetLogBook(ILogBookService* service);
    static void SetConversion(IConversionService* service);
    static void SetSettings(ISettingsService* service);
    static void SetShell(IShellService* service);
    static void SetPrintDialog(IPrintDialogService* service);

    // The embedded defaults themselves (to load a catalog, read the log, fill
    // the settings store).
    static CatalogTranslation& DefaultTranslation();
    static MemoryLogBook& DefaultLogBook();
    static SessionSettings& DefaultSettings();
};

}  // namespace qv
