#include "quorvel/frame/services.h"

#include <commdlg.h>
#include <shellapi.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>

#include "quorvel/common/boundary.h"
#include "quorvel/frame/catalog.h"
#include "quorvel/frame/ini_store.h"
#include "quorvel/frame/number_text.h"
#include "quorvel/frame/rtf_text.h"
#include "quorvel/frame/session.h"
#include "quorvel/platform/com.h"

namespace qv {

namespace {

// Reads a text file as UTF-16 (with BOM) or UTF-8 (with or without BOM).
bool ReadTextFile(const wchar_t* path, std::wstring& text) {
    if (!path) return false;
    // Closed also when reading throws (no memory for the bytes).
    const std::unique_ptr<FILE, int (*)(FILE*)> f(_wfopen(path, L"rb"), &fclose);
    if (!f) return false;
    std::string bytes;
    char buf[4096];
    size_t n;
    while ((n = fread(buf, 1, sizeof buf, f.get())) > 0) bytes.append(buf, n);
    text.clear();
    if (bytes.size() >= 2 && static_cast<unsigned char>(bytes[0]) == 0xFF &&
        static_cast<unsigned char>(bytes[1]) == 0xFE) {
        text.assign(reinterpret_cast<const wchar_t*>(bytes.data() + 2), (bytes.size() - 2) / 2);
        return true;
    }
    size_t start = bytes.size() >= 3 && bytes.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
    if (bytes.size() == start) return true;
    const int len = ::MultiByteToWideChar(CP_UTF8, 0, bytes.data() + start, static_cast<int>(bytes.size() - start),
                                          nullptr, 0);
    if (len <= 0) return false;
    text.resize(static_cast<size_t>(len));
    ::MultiByteToWideChar(CP_UTF8, 0, bytes.data() + start, static_cast<int>(bytes.size() - start), text.data(), len);
    return true;
}

}  // namespace

// ---- ILogBookService defaults ----------------------------------------------------

void ILogBookService::DisplayError(const LogEntry& entry, const wchar_t* extra) try {
    std::wstring text = entry.message;
    if (extra && *extra) text += L"\n" + std::wstring(extra);
    text += L"\n\n" + entry.module + L":" + entry.function + L" (" + std::to_wstring(entry.line) + L")";
    const std::wstring caption = Services::Translation().Translate(L"Error");
    Services::MessageBoxes().Show(nullptr, caption.c_str(), text.c_str(), MB_OK | MB_ICONERROR);
} catch (...) {
    CaughtAtEdge(" qv::ILogBookService::DisplayError", __LINE__);
}

std::wstring ILogBookService::ErrorMessage(unsigned long code) try {
    wchar_t* buf = nullptr;
    const DWORD n = ::FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM |
                                         FORMAT_MESSAGE_IGNORE_INSERTS,
                                     nullptr, code, 0, reinterpret_cast<wchar_t*>(&buf), 0, nullptr);
    std::wstring text = n && buf ? std::wstring(buf, n) : L"Error " + std::to_wstring(code);
    if (buf) ::LocalFree(buf);
    while (!text.empty() && (text.back() == L'\n' || text.back() == L'\r')) text.pop_back();
    return text;
} catch (...) {
    return CaughtAtEdge(" qv::ILogBookService::ErrorMessage", __LINE__, std::wstring());
}

// ---- CatalogTranslation -------------------------------------------------------

struct CatalogTranslation::Impl {
    Catalog catalog;
};

CatalogTranslation::CatalogTranslation() : impl_(new Impl) {}
CatalogTranslation::~CatalogTranslation() { delete impl_; }

std::wstring CatalogTranslation::Translate(std::wstring_view text) try {
    if (const std::wstring* t = impl_->catalog.Find(text)) return *t;
    return std::wstring(text);
} catch (...) {
    return CaughtAtEdge(" qv::CatalogTranslation::Translate", __LINE__, std::wstring());
}

bool CatalogTranslation::LoadText(std::wstring_view content, std::vector<std::wstring>* errors) try {
    return impl_->catalog.Parse(content, errors);
} catch (...) {
    return CaughtAtEdge(" qv::CatalogTranslation::LoadText", __LINE__, false);
}

bool CatalogTranslation::LoadFile(const wchar_t* path, std::vector<std::wstring>* errors) try {
    std::wstring text;
    if (!ReadTextFile(path, text)) return false;
    return LoadText(text, errors);
} catch (...) {
    return CaughtAtEdge(" qv::CatalogTranslation::LoadFile", __LINE__, false);
}

void CatalogTranslation::Clear() try {
    impl_->catalog.Parse(L"");
} catch (...) {
    CaughtAtEdge(" qv::CatalogTranslation::Clear", __LINE__);
}

// ---- PlatformMessageBox / PlatformShell -------------------------------------------

int PlatformMessageBox::Show(HWND parent, const wchar_t* caption, const wchar_t* text, UINT type) {
    return ::MessageBoxW(parent, text ? text : L"", caption ? caption : L"", type);
}

INT_PTR PlatformShell::Execute(HWND parent, const wchar_t* verb, const wchar_t* file, const wchar_t* parameters,
                               const wchar_t* directory, int show) {
    return reinterpret_cast<INT_PTR>(::ShellExecuteW(parent, verb, file, parameters, directory, show));
}

// ---- PlatformPrintDialog -----------------------------------------------------------

// PrintDlgW rather than PrintDlgExW: it needs no owner window, and a list
// printed from a host without one still gets its dialog.
HDC PlatformPrintDialog::ChoosePrinter(HWND owner, std::wstring& deviceName) try {
    deviceName.clear();
    PRINTDLGW pd{};
    pd.lStructSize = sizeof(pd);
    pd.hwndOwner = owner;
    pd.Flags = PD_RETURNDC | PD_ALLPAGES | PD_NOPAGENUMS | PD_NOSELECTION | PD_USEDEVMODECOPIESANDCOLLATE;
    HDC dc = ::PrintDlgW(&pd) ? pd.hDC : nullptr;
    if (pd.hDC && !dc) ::DeleteDC(pd.hDC);
    if (dc && pd.hDevNames) {
        if (const auto* names = static_cast<const DEVNAMES*>(::GlobalLock(pd.hDevNames))) {
            deviceName = reinterpret_cast<const wchar_t*>(names) + names->wDeviceOffset;
            ::GlobalUnlock(pd.hDevNames);
        }
    }
    if (pd.hDevMode) ::GlobalFree(pd.hDevMode);
    if (pd.hDevNames) ::GlobalFree(pd.hDevNames);
    return dc;
} catch (...) {
    return CaughtAtEdge(" qv::PlatformPrintDialog::ChoosePrinter", __LINE__, static_cast<HDC>(nullptr));
}

// ---- MemoryLogBook ----------------------------------------------------------------

MemoryLogBook::MemoryLogBook() : entries_(new std::vector<LogEntry>) {}
MemoryLogBook::~MemoryLogBook() { delete entries_; }

// The log book is where failures are reported: an entry that cannot be
// kept is lost, and nothing else happens.
void MemoryLogBook::Write(const LogEntry& entry) try {
    if (entries_->size() >= Capacity()) entries_->erase(entries_->begin());
    entries_->push_back(entry);
    wchar_t head[64];
    swprintf(head, 64, L"(%lu) hr=0x%08lX ", entry.line, static_cast<unsigned long>(entry.hr));
    const std::wstring line = entry.module + L":" + entry.function + L" " + head + entry.message + L"\n";
    ::OutputDebugStringW(line.c_str());
} catch (...) {
}

const std::vector<LogEntry>& MemoryLogBook::Entries() const { return *entries_; }
void MemoryLogBook::Clear() { entries_->clear(); }

// ---- LocaleConversion ---------------------------------------------------------------

wchar_t LocaleConversion::DecimalSeparator() {
    wchar_t buf[8] = {};
    if (::GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, buf, 8) > 1 && buf[0]) return buf[0];
    return L'.';
}

bool LocaleConversion::String2Double(std::wstring_view text, double& value) try {
    return ParseLocaleDouble(text, DecimalSeparator(), value);
} catch (...) {
    return CaughtAtEdge(" qv::LocaleConversion::String2Double", __LINE__, false);
}

bool LocaleConversion::Double2String(std::wstring& text, double value, std::wstring_view format) try {
    return FormatLocaleDouble(text, value, format, DecimalSeparator());
} catch (...) {
    return CaughtAtEdge(" qv::LocaleConversion::Double2String", __LINE__, false);
}

bool LocaleConversion::CheckRange(double lower, double upper, std::wstring_view text) try {
    return CheckRangeText(lower, upper, text, DecimalSeparator());
} catch (...) {
    return CaughtAtEdge(" qv::LocaleConversion::CheckRange", __LINE__, false);
}

bool LocaleConversion::CheckCharacters0_9A_Z(std::wstring_view text, bool wholeText) {
    // A typed character must be exactly one allowed character; a whole text
    // may be empty.
    if (!wholeText && text.size() != 1) return false;
    return CheckCharacters0to9AtoZ(text);
}

bool LocaleConversion::RTF2TXT(std::wstring_view rtf, std::wstring& text) try {
    return RtfToText(rtf, text);
} catch (...) {
    return CaughtAtEdge(" qv::LocaleConversion::RTF2TXT", __LINE__, false);
}

// ---- SessionSettings ------------------------------------------------------------------

struct SessionSettings::Impl {
    IniStore store;
    bool useCom = false;
    CLSID clsid{};
    IID iid{};
};

SessionSettings::SessionSettings() : impl_(new Impl) {}
SessionSettings::~SessionSettings() { delete impl_; }

bool SessionSettings::GetSessionValue(std::wstring_view section, std::wstring_view name, long flag,
                                      std::wstring& value) try {
    if (!impl_->useCom) return impl_->store.Get(section, name, value);
    // The host's session-data manager: CoInitialize (its failure only skips
    // the creation), create the manager, ask for the text.
    ComInit com;
    if (!com.Succeeded()) return false;
    ComPtr<IZT_SessionDataMng> mng;
    if (FAILED(mng.CoCreateInstance(impl_->clsid, impl_->iid, CLSCTX_ALL)) || !mng) return false;
    Bstr bsSection(section), bsName(name);
    Variant result;
    if (mng->GetSessionValue(bsSection, bsName, VT_BSTR, &result, flag) != S_OK) return false;
    if (result.vt != VT_BSTR) {
        if (FAILED(result.ChangeType(VT_BSTR))) return false;
    }
    value = result.Text();
    return true;
} catch (...) {
    return CaughtAtEdge(" qv::SessionSettings::GetSessionValue", __LINE__, false);
}

void SessionSettings::UseSessionDataManager(const CLSID* clsid, const IID* iid) {
    impl_->useCom = clsid && iid;
    impl_->clsid = clsid ? *clsid : CLSID{};
    impl_->iid = iid ? *iid : IID{};
}

bool SessionSettings::UsesSessionDataManager() const { return impl_->useCom; }

void SessionSettings::Set(std::wstring_view section, std::wstring_view name, std::wstring_view value) try {
    impl_->store.Set(section, name, value);
} catch (...) {
    CaughtAtEdge(" qv::SessionSettings::Set", __LINE__);
}

bool SessionSettings::LoadIniText(std::wstring_view content) try {
    return impl_->store.Parse(content);
} catch (...) {
    return CaughtAtEdge(" qv::SessionSettings::LoadIniText", __LINE__, false);
}

bool SessionSettings::LoadIniFile(const wchar_t* path) try {
    std::wstring text;
    if (!ReadTextFile(path, text)) return false;
    return LoadIniText(text);
} catch (...) {
    return CaughtAtEdge(" qv::SessionSettings::LoadIniFile", __LINE__, false);
}

void SessionSettings::ClearStore() { impl_->store.Clear(); }

// ---- Services -------------------------------------------------------------------------

namespace {
// The installed services (null = the embedded default). Process-wide by
// nature: the host's sibling libraries are process-wide too.
struct Installed {
    ITranslationService* translation = nullptr;
    IMessageBoxService* boxes = nullptr;
    ILogBookService* log = nullptr;
    IConversionService* conversion = nullptr;
    ISettingsService* settings = nullptr;
    IShellService* shell = nullptr;
    IPrintDialogService* printDialog = nullptr;
};
Installed& Slots() {
    static Installed slots;
    return slots;
}
PlatformMessageBox& DefaultBoxes() {
    static PlatformMessageBox boxes;
    return boxes;
}
LocaleConversion& DefaultConversion() {
    static LocaleConversion conversion;
    return conversion;
}
PlatformShell& DefaultShell() {
    static PlatformShell shell;
    return shell;
}
PlatformPrintDialog& DefaultPrintDialog() {
    static PlatformPrintDialog printDialog;
    return printDialog;
}
}  // namespace

CatalogTranslation& Services::DefaultTranslation() {
    static CatalogTranslation translation;
    return translation;
}
MemoryLogBook& Services::DefaultLogBook() {
    static MemoryLogBook log;
    return log;
}
SessionSettings& Services::DefaultSettings() {
    static SessionSettings settings;
    return settings;
}

ITranslationService& Services::Translation() {
    return Slots().translation ? *Slots().translation : DefaultTranslation();
}
IMessageBoxService& Services::MessageBoxes() { return Slots().boxes ? *Slots().boxes : DefaultBoxes(); }
ILogBookService& Services::LogBook() { return Slots().log ? *Slots().log : DefaultLogBook(); }
IConversionService& Services::Conversion() {
    return Slots().conversion ? *Slots().conversion : DefaultConversion();
}
ISettingsService& Services::Settings() { return Slots().settings ? *Slots().settings : DefaultSettings(); }
IShellService& Services::Shell() { return Slots().shell ? *Slots().shell : DefaultShell(); }
IPrintDialogService& Services::PrintDialog() {
    return Slots().printDialog ? *Slots().printDialog : DefaultPrintDialog();
}

void Services::SetTranslation(ITranslationService* s) { Slots().translation = s; }
void Services::SetMessageBoxes(IMessageBoxService* s) { Slots().boxes = s; }
void Services::SetLogBook(ILogBookService* s) { Slots().log = s; }
void Services::SetConversion(IConversionService* s) { Slots().conversion = s; }
void Services::SetSettings(ISettingsService* s) { Slots().settings = s; }
void Services::SetShell(IShellService* s) { Slots().shell = s; }
void Services::SetPrintDialog(IPrintDialogService* s) { Slots().printDialog = s; }

}  // namespace qv
