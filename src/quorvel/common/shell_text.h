// The user's texts for a failed shell start (ShellExecute answered 32 or
// less), in English for the translation service: the same words wherever a
// control opens a file, a page or a help document.
#pragma once

namespace qv {

// 5, 8, 11, 26 and 31 have their own texts; any other code answers
// `fallback`.
const wchar_t* ShellErrorText(long long code, const wchar_t* fallback = L"Unknown error") noexcept;

}  // namespace qv
