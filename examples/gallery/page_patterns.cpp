// The pattern page: the built-in numeric patterns answering typical input,
// and a live checker where a pattern author types a pattern and a text and
// sees, on every change, whether the text is acceptable, why not, and what
// the lint has to say about the pattern.
#include <string>

#include "gallery.h"
#include "quorvel/masks/pattern.h"
#include "quorvel/masks/pattern_lint.h"
#include "quorvel/platform/window.h"

namespace gallery {

namespace {

std::wstring TextOf(HWND hwnd) {
    std::wstring text(static_cast<size_t>(::GetWindowTextLengthW(hwnd)) + 1, L'\0');
    text.resize(static_cast<size_t>(::GetWindowTextW(hwnd, text.data(), static_cast<int>(text.size()))));
    return text;
}

// An edit field that hears its own EN_CHANGE by reflection and tells the page.
class ChangeEdit : public qv::Window {
public:
    std::function<void()> changed;

protected:
    bool OnReflectCommand(UINT code) override {
        if (code != EN_CHANGE || !changed) return false;
        changed();
        return true;
    }
};

struct PatternObjects : PageObjects {
    ChangeEdit pattern;
    ChangeEdit text;
    HWND verdict = nullptr;
    HWND lint = nullptr;

    void Update() {
        const std::wstring mask = TextOf(pattern.m_hWnd);
        const std::wstring value = TextOf(text.m_hWnd);
        const qv::PatternExplanation e = qv::ExplainPattern(mask, value);
        std::wstring shown = e.accepted ? L"accepted" : qv::DescribeRefusal(mask, value, e);
        shown += L"\r\nlongest acceptable prefix: \"" + value.substr(0, e.prefixLength) + L"\"";
        ::SetWindowTextW(verdict, shown.c_str());
        std::wstring lines;
        for (const qv::PatternProblem& p : qv::LintPattern(mask))
            lines += L"position " + std::to_wstring(p.pos + 1) + L": " + p.message + L"\r\n";
        ::SetWindowTextW(lint, lines.empty() ? L"no problems" : lines.c_str());
    }
};

HWND MakeEdit(HWND page, const wchar_t* text, int x, int y, int w, int h, DWORD style) {
    HWND hwnd = ::CreateWindowExW(WS_EX_CLIENTEDGE, L"EDIT", text, WS_CHILD | WS_VISIBLE | style, x, y, w, h, page,
                                  nullptr, nullptr, nullptr);
    ::SendMessageW(hwnd, WM_SETFONT, reinterpret_cast<WPARAM>(GalleryFont()), FALSE);
    return hwnd;
}

std::wstring BuiltInTable() {
    XParserFactory* checker = XParserFactory::GetParserFactory();
    struct Row { std::wstring mask; const wchar_t* use; std::initializer_list<const wchar_t*> samples; };
    const Row rows[] = {
        {L"#?", L"unsigned integer", {L"007", L"-1", L"12a"}},
        {L"(+|-)#?", L"signed integer", {L"-", L"+12", L"+-1"}},
        {L"#?(.)(#?)", L"unsigned decimal", {L"12.5", L"12,5", L".5"}},
        {L"#?(.|,)(#?)(e#?)", L"either separator, exponent", {L"1,5e10", L"1e5", L"1e5e"}},
        {L"(+|-)#?(.|,)(#?)(e#?)", L"signed decimal", {L"-12.5e3", L"+,5", L"1+"}},
        {checker->GetCommaMask(5, 2), L"GetCommaMask(5, 2)", {L"12345", L"12,5", L"12.345"}},
    };
    std::wstring out;
    for (const Row& row : rows) {
        out += row.mask + L"    (" + row.use + L")\r\n   ";
        for (const wchar_t* sample : row.samples)
            out += L"  \"" + std::wstring(sample) + L"\" " + (checker->Check(sample, row.mask) ? L"accepted" : L"refused");
        out += L"\r\n";
    }
    return out;
}

}  // namespace

std::unique_ptr<PageObjects> BuildPatternPage(HWND page) {
    auto objects = std::make_unique<PatternObjects>();
    PatternObjects* p = objects.get();

    AddLabel(page, L"Built-in patterns and typical input (prefix acceptance: what can still become valid is kept)",
             16, 12, 700, 18);
    MakeEdit(page, BuiltInTable().c_str(), 16, 34, 700, 200, ES_MULTILINE | ES_READONLY);

    AddLabel(page, L"Pattern", 16, 252, 80, 18);
    p->pattern.Attach(MakeEdit(page, L"(+|-)#?(.|,)(#2?)?", 100, 250, 300, 22, ES_AUTOHSCROLL));
    AddLabel(page, L"Text", 16, 282, 80, 18);
    p->text.Attach(MakeEdit(page, L"-12,345", 100, 280, 300, 22, ES_AUTOHSCROLL));
    AddLabel(page, L"Verdict (updated on every change)", 16, 314, 300, 18);
    p->verdict = MakeEdit(page, L"", 16, 334, 700, 46, ES_MULTILINE | ES_READONLY);
    AddLabel(page, L"Lint of the pattern", 16, 390, 300, 18);
    p->lint = MakeEdit(page, L"", 16, 410, 700, 80, ES_MULTILINE | ES_READONLY | WS_VSCROLL);

    p->pattern.changed = [p] { p->Update(); };
    p->text.changed = [p] { p->Update(); };
    p->Update();
    return objects;
}

}  // namespace gallery
