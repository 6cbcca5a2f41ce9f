// Writes the sample documents of this folder with the system's rich edit
// control: each sample's Unicode text goes into a "RichEdit20W" control, runs
// of it get a font with a character set (EM_SETCHARFORMAT), and the control
// streams the document out as rich text (EM_STREAMOUT, SF_RTF). NAME.rtf is
// what the control wrote, NAME.txt (UTF-8) the text RTF2TXT must give back:
// the control's own plain text of it (WM_GETTEXT) with each paragraph's
// bullet and tab in front, and the paragraph mark the control writes at the
// end of every document, which its plain text leaves out.
//
// Characters a run's font cannot show are avoided where the control would
// write a look-alike instead (Wine's control writes "g" for "ğ" in an
// Eastern European font); those with no look-alike are written as \uN.
//
// Run once, under Wine or on Windows, from this folder:
//   x86_64-w64-mingw32-g++-posix -std=c++20 -municode -static -O1 write_samples.cpp -o /tmp/write_samples.exe
//   wine /tmp/write_samples.exe
#include <windows.h>
#include <richedit.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

struct Run {
    const wchar_t* text;
    const wchar_t* face;
    BYTE charset;
};

struct Sample {
    const char* name;
    std::vector<Run> runs;
    bool bullets = false;
};

const Sample kSamples[] = {
    {"cyrillic", {{L"Съешь же ещё этих мягких французских булок, да выпей чаю.\rЁж, № 5 — «ясно».", L"Arial", RUSSIAN_CHARSET}}},
    {"greek", {{L"Ξεσκεπάζω την ψυχοφθόρα βδελυγμία.\rΆλφα, Ώμέγα, ΐ ΰ ς.", L"Arial", GREEK_CHARSET}}},
    {"turkish", {{L"Pijamalı hasta yağız şoföre çabucak güvendi.\rİĞŞ ığş Çç Öö Üü.", L"Arial", TURKISH_CHARSET}}},
    {"central_european",
     {{L"Zażółć gęślą jaźń. Pchnąć w tę łódź jeża.\rPříliš žluťoučký kůň úpěl ďábelské ódy. Árvíztűrő tükörfúrógép.",
       L"Arial", EASTEUROPE_CHARSET}}},
    // ソ 表 能 ー end in a trail byte that is '\', '\', '\' and '[' in Shift-JIS;
    // ｶﾀｶﾅ are single bytes.
    {"japanese", {{L"いろはにほへと、日本語の文章。\rソフト表示能力ー ｶﾀｶﾅ「ＡＢＣ」", L"MS Mincho", SHIFTJIS_CHARSET}}},
    {"chinese_simplified", {{L"我能吞下玻璃而不伤身体。\r简体中文：“测试”，一二三。", L"SimSun", GB2312_CHARSET}}},
    {"korean", {{L"다람쥐 헌 쳇바퀴에 타고파.\r키스의 고유조건은 입술끼리 만나야 하고 특별한 기술은 필요치 않다.", L"Gulim", HANGEUL_CHARSET}}},
    {"mixed",
     {{L"Latin café, ", L"Arial", ANSI_CHARSET},
      {L"русский, ", L"Arial", RUSSIAN_CHARSET},
      {L"ελληνικά, ", L"Arial", GREEK_CHARSET},
      {L"日本語, ", L"MS Mincho", SHIFTJIS_CHARSET},
      {L"한국어, ", L"Gulim", HANGEUL_CHARSET},
      {L"中文, ", L"SimSun", GB2312_CHARSET},
      {L"Łódź, ", L"Arial", EASTEUROPE_CHARSET},
      // Not in the Greek code page but for the euro sign: written as \uN.
      {L"ж日€.", L"Arial", GREEK_CHARSET}}},
    {"bullets", {{L"Первый\rSecond\rΤρίτο", L"Arial", RUSSIAN_CHARSET}}, true},
};

DWORD CALLBACK Collect(DWORD_PTR cookie, BYTE* buffer, LONG size, LONG* written) {
    reinterpret_cast<std::string*>(cookie)->append(reinterpret_cast<char*>(buffer), size);
    *written = size;
    return 0;
}

std::string Utf8(const std::wstring& text) {
    const int n = ::WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0, nullptr, nullptr);
    std::string out(n, '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), out.data(), n, nullptr, nullptr);
    return out;
}

bool Write(const std::string& path, const std::string& data) {
    FILE* f = std::fopen(path.c_str(), "wb");
    if (!f) return false;
    std::fwrite(data.data(), 1, data.size(), f);
    return std::fclose(f) == 0;
}

}  // namespace

int wmain() {
    if (!::LoadLibraryW(L"RICHED20.DLL")) return 1;
    for (const Sample& s : kSamples) {
        HWND edit = ::CreateWindowExW(0, L"RichEdit20W", L"", WS_POPUP | ES_MULTILINE, 0, 0, 400, 300, nullptr, nullptr,
                                      nullptr, nullptr);
        if (!edit) return 2;
        LONG start = 0;
        for (const Run& run : s.runs) {
            ::SendMessageW(edit, EM_SETSEL, start, start);
            ::SendMessageW(edit, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(run.text));
            const LONG end = start + static_cast<LONG>(wcslen(run.text));
            CHARFORMAT2W cf{};
            cf.cbSize = sizeof(cf);
            cf.dwMask = CFM_FACE | CFM_CHARSET;
            cf.bCharSet = run.charset;
            lstrcpynW(cf.szFaceName, run.face, LF_FACESIZE);
            ::SendMessageW(edit, EM_SETSEL, start, end);
            ::SendMessageW(edit, EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&cf));
            start = end;
        }
        if (s.bullets) {
            PARAFORMAT2 pf{};
            pf.cbSize = sizeof(pf);
            pf.dwMask = PFM_NUMBERING;
            pf.wNumbering = PFN_BULLET;
            ::SendMessageW(edit, EM_SETSEL, 0, -1);
            ::SendMessageW(edit, EM_SETPARAFORMAT, 0, reinterpret_cast<LPARAM>(&pf));
        }
        std::string rtf;
        EDITSTREAM es{reinterpret_cast<DWORD_PTR>(&rtf), 0, Collect};
        ::SendMessageW(edit, EM_STREAMOUT, SF_RTF, reinterpret_cast<LPARAM>(&es));
        std::wstring text(::GetWindowTextLengthW(edit) + 1, L'\0');
        text.resize(::GetWindowTextW(edit, text.data(), static_cast<int>(text.size())));
        ::DestroyWindow(edit);
        std::wstring expected;
        for (std::size_t line = 0; line != std::wstring::npos;) {
            const std::size_t end = text.find(L"\r\n", line);
            if (s.bullets) expected += L"\u2022\t";
            expected += text.substr(line, end == std::wstring::npos ? end : end - line) + L"\r\n";
            line = end == std::wstring::npos ? end : end + 2;
        }
        if (!Write(std::string(s.name) + ".rtf", rtf) || !Write(std::string(s.name) + ".txt", Utf8(expected))) return 3;
    }
    return 0;
}
