#include "quorvel/controls/help_text_rules.h"

namespace qv {

namespace {
constexpr std::wstring_view kWebAddress = L"http://";
}  // namespace

ToolString ParseToolString(std::wstring_view source) {
    ToolString out;
    const size_t pos = source.find(kDocumentTag);
    if (pos == std::wstring_view::npos) {
        out.tooltip = source;
        return out;
    }
    out.tooltip = source.substr(0, pos);
    // The rest is the source's last (length - position - 1 - length of
    // "document>") characters: exactly what follows the opening tag.
    const size_t restLength = source.size() - pos - 1 - (kDocumentTag.size() - 1);
    const std::wstring_view rest = source.substr(source.size() - restLength);
    const size_t end = rest.find(kDocumentEndTag);
    if (end != std::wstring_view::npos) out.document = rest.substr(0, end);
    return out;
}

std::wstring StaticTooltipText(const ToolString& parsed, std::wstring_view hint) {
    std::wstring text = parsed.tooltip;
    if (!parsed.document.empty()) {
        text += L' ';
        text += hint;
    }
    return text;
}

bool ShowsStaticTooltip(std::wstring_view text) noexcept { return !text.empty() && text != L" "; }

std::uint32_t StaticAutoPopDelay(std::uint32_t popupTime) noexcept {
    constexpr std::uint32_t kUnset = 5000;
    constexpr std::uint32_t kCap = 30;
    constexpr std::uint32_t kCapped = 30 * 1000;
    const std::uint32_t ms = popupTime * 1000u;  // wraps like the 32-bit value it is
    if (ms == 0) return kUnset;
    return ms <= kCap ? ms : kCapped;
}

std::wstring HelpTarget(std::wstring_view document, std::wstring_view helpFolder) {
    if (document.empty()) return {};
    if (document.find(kWebAddress) != std::wstring_view::npos) return std::wstring(document);
    std::wstring target(helpFolder);
    target += document;
    return target;
}

PromptHelp PromptTooltip(std::wstring_view source, std::wstring_view hint) {
    PromptHelp out;
    const size_t pos = source.find(kDocumentTag);
    if (pos == std::wstring_view::npos) {
        out.tooltipText = source;
        return out;
    }
    const size_t start = pos + kDocumentTag.size();  // after the tag's ">"
    const size_t end = source.find(L'<', start);
    if (end != std::wstring_view::npos) out.contextHelpFile = source.substr(start, end - start);
    std::wstring red = L"<ct=0xFF0000>";
    red += hint;
    red += L"</ct>";
    if (pos > 0) {
        out.tooltipText = source.substr(0, pos);
        out.tooltipText += L"<br><al_r>";
    }
    out.tooltipText += red;
    return out;
}

std::wstring PromptLineEnds(std::wstring text) {
    size_t lf = text.find(L'\n');
    while (lf != std::wstring::npos) {
        size_t next = lf + 1;
        if (lf <= 1) {
            text = L"\r\n" + text.substr(lf + 1);
            next = 2;
        } else if (text[lf - 1] != L'\r') {
            text.insert(lf, 1, L'\r');
            next = lf + 2;
        }
        lf = text.find(L'\n', next);
    }
    return text;
}

std::wstring AccessibleLabelName(std::wstring_view text) {
    const size_t doc = text.find(kDocumentTag);
    if (doc != std::wstring_view::npos) text = text.substr(0, doc);
    std::wstring out;
    out.reserve(text.size());
    bool blank = false;
    for (size_t i = 0; i < text.size(); ++i) {
        wchar_t c = text[i];
        if (c == L'&') {
            if (i + 1 < text.size() && text[i + 1] == L'&') {
                ++i;
            } else {
                continue;
            }
        }
        if (c == L'\r' || c == L'\n' || c == L'\t' || c == L' ') {
            blank = !out.empty();
            continue;
        }
        if (blank) out += L' ';
        blank = false;
        out += c;
    }
    if (!out.empty() && out.back() == L'*') {
        out.pop_back();
        while (!out.empty() && out.back() == L' ') out.pop_back();
    }
    return out;
}

}  // namespace qv
