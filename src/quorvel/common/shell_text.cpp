#include "quorvel/common/shell_text.h"

namespace qv {

const wchar_t* ShellErrorText(long long code, const wchar_t* fallback) noexcept {
    switch (code) {
    case 5: return L"Access denied";                                       // SE_ERR_ACCESSDENIED
    case 8: return L"There was not enough memory to complete the operation";  // SE_ERR_OOM
    case 11: return L"The .exe file is invalid";                            // ERROR_BAD_FORMAT
    case 26: return L"A sharing violation occurred";                         // SE_ERR_SHARE
    case 31: return L"There is no application associated with the given file name extension";  // SE_ERR_NOASSOC
    default: return fallback;
    }
}

}  // namespace qv
