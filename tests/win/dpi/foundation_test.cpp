// The DPI the tests run at, as the library sees it: the prefix's setting
// (QV_DPI) reaches every window, and the library's lengths follow it.
#include <cstdlib>

#include "quorvel/platform/dpi.h"
#include "support/host.h"

namespace {

using DpiFoundationTest = qvtest::HostTest;

TEST_F(DpiFoundationTest, WindowsReportThePrefixDpi) {
    const char* configured = std::getenv("QV_DPI");
    const UINT expected = configured ? static_cast<UINT>(std::atoi(configured)) : 96u;
    EXPECT_EQ(qv::DpiOf(host_), expected);
    HWND child = ::CreateWindowExW(0, L"STATIC", L"", WS_CHILD, 0, 0, 10, 10, host_, nullptr, nullptr, nullptr);
    EXPECT_EQ(qv::DpiOf(child), expected);
    EXPECT_EQ(qv::Scale(child, 20), qv::ScaleToDpi(20, expected));
    EXPECT_EQ(qv::DpiOf(nullptr), 96u);
}

}  // namespace
