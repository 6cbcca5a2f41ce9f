// The viewers on a real host with real files in a temporary folder: the
// viewer each name gets, missing and broken files, bitmaps of 8, 24 and 32
// bits drawn and read back, reload, office pages, the buttons' shell calls
// and boxes, the web browser's command, the HTML view without an engine.
#include "quorvel/views/viewers.h"

#include <cstdint>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "support/host.h"

namespace {

constexpr COLORREF kRed = RGB(255, 0, 0), kBlue = RGB(0, 0, 255), kGreen = RGB(0, 160, 0);

// A folder of its own under the temporary folder, removed with its files.
class TempDir {
public:
    TempDir() {
        wchar_t base[MAX_PATH + 1] = {};
        ::GetTempPathW(MAX_PATH + 1, base);
        path_ = std::wstring(base) + L"qv_viewers_" + std::to_wstring(::GetCurrentProcessId()) + L"\\";
        ::CreateDirectoryW(path_.c_str(), nullptr);
    }
    ~TempDir() {
        for (const auto& f : files_) ::DeleteFileW(f.c_str());
        ::RemoveDirectoryW(path_.c_str());
    }
    std::wstring Write(const std::wstring& name, const std::string& bytes) {
        const std::wstring file = path_ + name;
        std::ofstream(file.c_str(), std::ios::binary | std::ios::trunc).write(bytes.data(), std::streamsize(bytes.size()));
        files_.push_back(file);
        return file;
    }
    std::wstring Path(const std::wstring& name) const { return path_ + name; }

private:
    std::wstring path_;
    std::vector<std::wstring> files_;
};

void Put32(std::string& s, uint32_t v) { for (int i = 0; i < 4; ++i) s.push_back(char((v >> (8 * i)) & 0xFF)); }
void Put16(std::string& s, uint16_t v) { s.push_back(char(v & 0xFF)); s.push_back(char(v >> 8)); }

// A .bmp of `bits` (8, 24 or 32) bits, `w` x `h`, the colour of each pixel
// from `colour(x, y)` (y from the top); 8-bit pictures use colours red, blue
// and green only. A negative `h` writes the rows top-down.
std::string Bmp(int bits, int w, int h, const std::function<COLORREF(int, int)>& colour) {
    const int rows = h < 0 ? -h : h;
    const uint32_t stride = ((uint32_t(w) * bits + 31) / 32) * 4;
    const uint32_t paletteBytes = bits == 8 ? 256 * 4 : 0;
    std::string s = "BM";
    Put32(s, 54 + paletteBytes + stride * rows);
    Put32(s, 0);
    Put32(s, 54 + paletteBytes);
    Put32(s, 40); Put32(s, uint32_t(w)); Put32(s, uint32_t(h)); Put16(s, 1); Put16(s, uint16_t(bits));
    Put32(s, 0); Put32(s, stride * rows); Put32(s, 2835); Put32(s, 2835); Put32(s, 0); Put32(s, 0);
    const COLORREF palette[3] = {kRed, kBlue, kGreen};
    if (bits == 8)
        for (int i = 0; i < 256; ++i) {
            const COLORREF c = i < 3 ? palette[i] : RGB(i, i, i);
            s += {char(GetBValue(c)), char(GetGValue(c)), char(GetRValue(c)), 0};
        }
    for (int r = 0; r < rows; ++r) {
        const int y = h < 0 ? r : rows - 1 - r;
        std::string row;
        for (int x = 0; x < w; ++x) {
            const COLORREF c = colour(x, y);
            if (bits == 8)
                row.push_back(char(c == kRed ? 0 : c == kBlue ? 1 : 2));
            else
                row += {char(GetBValue(c)), char(GetGValue(c)), char(GetRValue(c))};
            if (bits == 32) row.push_back(char(0));
        }
        row.resize(stride, 0);
        s += row;
    }
    return s;
}

// Red left, blue right, under a green band of three rows at the top.
std::string Halves(int bits, int w = 40, int h = 30) {
    return Bmp(bits, w, h, [w](int x, int y) { return y < 3 ? kGreen : x < w / 2 ? kRed : kBlue; });
}
std::string Plain(COLORREF c) { return Bmp(24, 16, 16, [c](int, int) { return c; }); }

// The client area of `wnd` as it draws itself into a memory DC (WM_PRINTCLIENT).
struct Picture {
    int width = 0, height = 0;
    std::vector<uint32_t> pixels;
    COLORREF At(int x, int y) const {
        const uint32_t p = pixels[size_t(y) * size_t(width) + size_t(x)];
        return RGB((p >> 16) & 0xFF, (p >> 8) & 0xFF, p & 0xFF);
    }
};
Picture Print(HWND wnd) {
    RECT rc{};
    ::GetClientRect(wnd, &rc);
    Picture pic{rc.right, rc.bottom, {}};
    BITMAPINFO bi{};
    bi.bmiHeader = {sizeof(BITMAPINFOHEADER), pic.width, -pic.height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const HDC dc = ::CreateCompatibleDC(nullptr);
    const HBITMAP bmp = ::CreateDIBSection(dc, &bi, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ old = ::SelectObject(dc, bmp);
    ::SendMessageW(wnd, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT);
    ::GdiFlush();
    const auto* p = static_cast<const uint32_t*>(bits);
    pic.pixels.assign(p, p + size_t(pic.width) * size_t(pic.height));
    ::SelectObject(dc, old);
    ::DeleteObject(bmp);
    ::DeleteDC(dc);
    return pic;
}

// Records the browser's command line instead of starting it.
class RecordingImageView : public XImageView {
public:
    std::vector<std::wstring> launched;
    std::wstring registered = L"\"C:\\Browser\\iexplore.exe\" %1";

protected:
    bool LaunchProcess(const std::wstring& commandLine) override {
        launched.push_back(commandLine);
        return true;
    }
    std::wstring RegisteredBrowserCommand() override { return registered; }
};

class ViewersTest : public qvtest::HostTest {
protected:
    static constexpr UINT kId = 300;
    void SetUp() override {
        HostTest::SetUp();
        UINT id = kId;
        ASSERT_TRUE(view_.CreateCtrl(id, RECT{10, 10, 410, 330}, font_, host_));
        EXPECT_EQ(id, kId + XImageView::kIdCount);
    }
    void Click(UINT offset) {
        view_.GetButton(offset).Click();
        qvtest::Pump();
    }
    TempDir dir_;
    RecordingImageView view_;
};

TEST_F(ViewersTest, EachNameGetsItsViewer) {
    const std::string page = "<html lang=\"en\"><body>Hi</body></html>";
    const struct { const wchar_t* name; std::string content; bool write; XImageView::ViewerKind kind; } cases[] = {
        {L"picture.JPG", Plain(kRed), true, XImageView::kHtmlViewer},
        {L"page.HTML", page, true, XImageView::kHtmlViewer},
        {L"anim.gif", "GIF89a", true, XImageView::kHtmlViewer},
        {L"notes.txt", "text", true, XImageView::kHtmlViewer},
        {L"drawing.bmp", Halves(24), true, XImageView::kBitmapViewer},
        {L"notes.doc", "doc", true, XImageView::kNoViewer},
        {L"noextension", "x", true, XImageView::kNoViewer},
        {L"missing.bmp", "", false, XImageView::kNoViewer},
        {L"missing.htm", "", false, XImageView::kNoViewer},
        {L"broken.bmp", "BM this is no bitmap", true, XImageView::kNoViewer},
        {L"empty.bmp", "", true, XImageView::kNoViewer},
    };
    for (const auto& c : cases) {
        const std::wstring path = c.write ? dir_.Write(c.name, c.content) : dir_.Path(c.name);
        view_.SetFilename(path);
        qvtest::Pump();
        EXPECT_EQ(view_.GetViewerKind(), c.kind) << std::wstring(c.name);
        EXPECT_EQ(view_.IsFileNotFoundShown(), c.kind == XImageView::kNoViewer) << std::wstring(c.name);
        EXPECT_EQ(qvtest::TextOf(view_.GetFileEdit()), path);
        if (c.kind == XImageView::kNoViewer) {
            EXPECT_EQ(qvtest::TextOf(::GetDlgItem(view_, kId + XImageView::kNotFoundOffset)), L"File not found");
        }
        if (XHTMLView* html = view_.GetHTMLView()) {
            EXPECT_EQ(html->GetDlgCtrlID(), int(kId));
            EXPECT_TRUE(html->GetExStyle() & WS_EX_CLIENTEDGE);
            EXPECT_EQ(html->GetURL(), path);
        }
    }
}

TEST_F(ViewersTest, HtmlViewWithoutEngineSaysSo) {
    if (XHTMLView::HtmlEngineAvailable()) GTEST_SKIP() << "this system has an HTML engine";
    const std::wstring path = dir_.Write(L"page.htm", "<html lang=\"en\"><body>Hi</body></html>");
    for (int i = 0; i < 3; ++i) view_.SetFilename(path);
    XHTMLView* html = view_.GetHTMLView();
    ASSERT_NE(html, nullptr);
    EXPECT_FALSE(html->HasBrowser());
    EXPECT_FALSE(html->DisplayURL(path));
    EXPECT_FALSE(html->SetBrowserBars(false));
    EXPECT_EQ(html->GetMessageText(), L"No HTML engine is available to show this file.");
    const auto& log = qv::Services::DefaultLogBook().Entries();
    ASSERT_EQ(log.size(), 3u);  // one per view made
    EXPECT_EQ(log[0].function, L" XHTMLView::Create");
    EXPECT_EQ(log[0].message, L"The HTML engine is not available");
    // The view paints the message, not a blank.
    const Picture pic = Print(*html);
    int text = 0;
    for (uint32_t p : pic.pixels) text += (p & 0xFFFFFF) != (::GetSysColor(COLOR_WINDOW) & 0xFFFFFF) ? 1 : 0;
    EXPECT_GT(text, 20);
    view_.SetFilename(L"");  // the view goes away cleanly
    EXPECT_EQ(view_.GetHTMLView(), nullptr);
}

TEST_F(ViewersTest, BitmapsOfEachDepthAreDrawn) {
    const struct { const wchar_t* name; std::string bytes; int bits; } cases[] = {
        {L"b8.bmp", Halves(8), 8},
        {L"b24.bmp", Halves(24), 24},
        {L"b32.bmp", Halves(32), 32},
        {L"b24down.bmp", Halves(24, 40, -30), 24},
        {L"odd.bmp", Halves(24, 41, 7), 24},
    };
    for (const auto& c : cases) {
        view_.SetFilename(dir_.Write(c.name, c.bytes));
        XDIBView* dib = view_.GetDIBView();
        ASSERT_NE(dib, nullptr) << std::wstring(c.name);
        EXPECT_EQ(dib->GetBitCount(), c.bits);
        const RECT at = dib->GetPictureRect(dib->GetClientRect());
        const Picture pic = Print(*dib);
        const int y = (at.top + at.bottom) / 2;
        EXPECT_EQ(pic.At(at.left + 2, y), kRed) << std::wstring(c.name);
        EXPECT_EQ(pic.At(at.right - 3, y), kBlue) << std::wstring(c.name);
        EXPECT_EQ(pic.At(at.left + 2, at.top), kGreen) << std::wstring(c.name);  // rows the right way up
        EXPECT_EQ(pic.At(at.right - 3, at.bottom - 1), kBlue) << std::wstring(c.name);
        EXPECT_EQ(pic.At(1, 1), view_.GetBkColor()) << std::wstring(c.name);
    }
    EXPECT_TRUE(qv::Services::DefaultLogBook().Entries().empty());
}

TEST_F(ViewersTest, LargeBitmapIsScaledDownAndBackgroundTakesTheColour) {
    view_.SetBkColor(RGB(10, 20, 30));
    view_.SetFilename(dir_.Write(L"big.bmp", Bmp(24, 1200, 300, [](int x, int) { return x < 600 ? kRed : kBlue; })));
    XDIBView* dib = view_.GetDIBView();
    ASSERT_NE(dib, nullptr);
    const RECT client = dib->GetClientRect();
    const RECT at = dib->GetPictureRect(client);
    EXPECT_EQ(at.right - at.left, client.right);                        // as wide as the view
    EXPECT_NEAR(at.bottom - at.top, client.right / 4, 1);                // proportions kept
    const Picture pic = Print(*dib);
    EXPECT_EQ(pic.At(1, 1), RGB(10, 20, 30));
    EXPECT_EQ(pic.At(5, (at.top + at.bottom) / 2), kRed);
    EXPECT_EQ(pic.At(client.right - 5, (at.top + at.bottom) / 2), kBlue);
}

TEST_F(ViewersTest, ReloadShowsTheFileAsItIsNow) {
    const std::wstring path = dir_.Write(L"swap.bmp", Plain(kRed));
    view_.SetFilename(path);
    dir_.Write(L"swap.bmp", Plain(kGreen));
    const auto centre = [&] {
        XDIBView* dib = view_.GetDIBView();
        const RECT at = dib->GetPictureRect(dib->GetClientRect());
        return Print(*dib).At((at.left + at.right) / 2, (at.top + at.bottom) / 2);
    };
    EXPECT_EQ(centre(), kRed);
    Click(XImageView::kReloadOffset);
    EXPECT_EQ(centre(), kGreen);
    ::DeleteFileW(path.c_str());
    Click(XImageView::kReloadOffset);
    EXPECT_TRUE(view_.IsFileNotFoundShown());
    EXPECT_EQ(view_.GetDIBView(), nullptr);
}

TEST_F(ViewersTest, OfficePagesOpenAsTheirApplicationsFiles) {
    const std::string head = "<html xmlns:v=\"urn:schemas-microsoft-com:vml\"\r\n"
                             "xmlns:o=\"urn:schemas-microsoft-com:office:office\"\r\n";
    const std::wstring word = dir_.Write(L"report.htm", head + "xmlns:w=\"urn:schemas-microsoft-com:office:word\"\r\n<body/>");
    const std::wstring excel = dir_.Write(L"sheet.htm", head + "xmlns:x=\"urn:schemas-microsoft-com:office:excel\"\r\n");
    const std::wstring plain = dir_.Write(L"plain.htm", "<html lang=\"en\">\r\n<body/>");
    const std::wstring upper = dir_.Write(L"upper.htm", "<HTML XMLNS:V=\"urn:schemas-microsoft-com:vml\"\r\n"
                                          "xmlns:o=\"urn:schemas-microsoft-com:office:office\"\r\n"
                                          "xmlns:w=\"urn:schemas-microsoft-com:office:word\"\r\n");
    wchar_t temp[MAX_PATH + 1] = {};
    ::GetTempPathW(MAX_PATH + 1, temp);
    const std::wstring doc = std::wstring(temp) + L"report.doc", xls = std::wstring(temp) + L"sheet.xls";
    EXPECT_EQ(XImageView::RenameIfHTMLIsforWordOrExcel(word), doc);
    EXPECT_EQ(XImageView::RenameIfHTMLIsforWordOrExcel(excel), xls);
    EXPECT_EQ(XImageView::RenameIfHTMLIsforWordOrExcel(plain), plain);
    EXPECT_EQ(XImageView::RenameIfHTMLIsforWordOrExcel(upper), upper);  // the first line must start "<html "
    EXPECT_EQ(XImageView::RenameIfHTMLIsforWordOrExcel(dir_.Path(L"gone.htm")), dir_.Path(L"gone.htm"));
    EXPECT_TRUE(XImageView::IsHTMLFile(word));
    EXPECT_FALSE(XImageView::IsHTMLFile(dir_.Write(L"b.bmp", Plain(kRed))));
    // The copy has the page's content, and the page itself stays.
    std::ifstream copy(doc.c_str(), std::ios::binary);
    const std::string content((std::istreambuf_iterator<char>(copy)), std::istreambuf_iterator<char>());
    EXPECT_EQ(content.substr(0, head.size()), head);
    EXPECT_NE(::GetFileAttributesW(word.c_str()), INVALID_FILE_ATTRIBUTES);

    view_.SetFilename(word);
    Click(XImageView::kOpenOffset);
    ASSERT_EQ(rec_->shell.calls.size(), 1u);
    EXPECT_EQ(rec_->shell.calls[0].file, doc);
    copy.close();
    ::DeleteFileW(doc.c_str());
    ::DeleteFileW(xls.c_str());
}

TEST_F(ViewersTest, OpenAsksTheShellAndNamesItsErrors) {
    const std::wstring path = dir_.Write(L"open.bmp", Plain(kRed));
    view_.SetFilename(path);
    wchar_t temp[MAX_PATH + 1] = {};
    ::GetTempPathW(MAX_PATH + 1, temp);
    const struct { INT_PTR answer; const wchar_t* text; } cases[] = {
        {42, nullptr}, {33, nullptr},
        {5, L"Access denied"}, {8, L"There was not enough memory to complete the operation"},
        {11, L"The .exe file is invalid"}, {26, L"A sharing violation occurred"},
        {31, L"There is no application associated with the given file name extension"},
        {32, L"Unknown error"}, {2, L"Unknown error"},
    };
    for (const auto& c : cases) {
        rec_->shell.calls.clear();
        rec_->boxes.boxes.clear();
        rec_->shell.answer = c.answer;
        Click(XImageView::kOpenOffset);
        ASSERT_EQ(rec_->shell.calls.size(), 1u);
        const auto& call = rec_->shell.calls[0];
        EXPECT_EQ(call.verb, L"open");
        EXPECT_EQ(call.file, path);
        EXPECT_EQ(call.directory, temp);
        EXPECT_EQ(call.show, SW_SHOW);
        ASSERT_EQ(rec_->boxes.boxes.size(), c.text ? 1u : 0u) << c.answer;
        if (c.text) {
            EXPECT_EQ(rec_->boxes.boxes[0].caption, L"Open application");
            EXPECT_EQ(rec_->boxes.boxes[0].text, c.text);
            EXPECT_EQ(rec_->boxes.boxes[0].type, UINT(MB_ICONERROR));
        }
    }
    EXPECT_TRUE(view_.launched.empty());
}

TEST_F(ViewersTest, BrowserButtonStartsTheRegisteredBrowser) {
    const std::wstring path = dir_.Write(L"web.htm", "<html lang=\"en\">");
    view_.SetFilename(path);
    Click(XImageView::kBrowserOffset);
    ASSERT_EQ(view_.launched.size(), 1u);
    EXPECT_EQ(view_.launched[0], L"\"C:\\Browser\\iexplore.exe\" " + path);
    // Browser-only: every button starts the browser, the shell is not asked.
    view_.SetBrowserOnly();
    Click(XImageView::kOpenOffset);
    Click(XImageView::kReloadOffset);
    EXPECT_EQ(view_.launched.size(), 3u);
    EXPECT_TRUE(rec_->shell.calls.empty());
    // No registered browser: nothing starts, nothing is shown.
    view_.registered.clear();
    Click(XImageView::kBrowserOffset);
    EXPECT_EQ(view_.launched.size(), 3u);
    EXPECT_TRUE(rec_->boxes.boxes.empty());
    // No file name: the buttons do nothing.
    view_.SetBrowserOnly(false);
    view_.registered = L"x.exe";
    view_.SetFilename(L"");
    Click(XImageView::kBrowserOffset);
    Click(XImageView::kOpenOffset);
    EXPECT_EQ(view_.launched.size(), 3u);
    EXPECT_TRUE(rec_->shell.calls.empty());
}

TEST_F(ViewersTest, TypedNameShowsTheFileAndTellsTheParent) {
    const std::wstring path = dir_.Write(L"t.bmp", Plain(kBlue));
    std::vector<std::pair<UINT, HWND>> changes;
    qvtest::MessageSpy spy(host_, [&](UINT msg, WPARAM wp, LPARAM lp) {
        if (msg == WM_COMMAND && HIWORD(wp) == EN_CHANGE) changes.push_back({LOWORD(wp), reinterpret_cast<HWND>(lp)});
    });
    ::SetWindowTextW(view_.GetFileEdit(), path.c_str());
    qvtest::Pump();
    EXPECT_EQ(view_.GetFilename(), path);
    EXPECT_EQ(view_.GetViewerKind(), XImageView::kBitmapViewer);
    ASSERT_FALSE(changes.empty());
    EXPECT_EQ(changes.back().first, kId + XImageView::kFileEditOffset);
    EXPECT_EQ(changes.back().second, view_.GetFileEdit().m_hWnd);
    view_.SetReadOnly();
    EXPECT_TRUE(view_.GetFileEdit().GetStyle() & ES_READONLY);
}

TEST_F(ViewersTest, PartsCarryTheLibrarysFaces) {
    for (UINT offset : {XImageView::kReloadOffset, XImageView::kOpenOffset, XImageView::kBrowserOffset}) {
        qv::Button& button = view_.GetButton(offset);
        EXPECT_EQ(UINT(button.GetDlgCtrlID()), kId + offset);
        EXPECT_TRUE(button.GetStyle() & BS_BITMAP);
        BITMAP bm{};
        ASSERT_TRUE(::GetObjectW(button.GetBitmap(), sizeof bm, &bm)) << offset;
        EXPECT_EQ(bm.bmWidth, 20);
        EXPECT_FALSE(qvtest::TextOf(button).empty());  // a name for screen readers
    }
}

TEST_F(ViewersTest, ReducedVariantsAndBadHosts) {
    const std::wstring bmp = dir_.Write(L"r.bmp", Plain(kRed));
    const std::wstring htm = dir_.Write(L"r.htm", "<html lang=\"en\">");
    XImageViewSimple simple;
    XBmpImageView bmpOnly;
    simple.SetFilename(bmp);  // before the window: nothing
    EXPECT_TRUE(simple.GetFilename().empty());
    UINT id = 400;
    ASSERT_TRUE(simple.CreateCtrl(id, RECT{420, 10, 620, 200}, nullptr, host_));
    ASSERT_TRUE(bmpOnly.CreateCtrl(id, RECT{420, 210, 620, 400}, nullptr, host_));
    EXPECT_EQ(id, 400u + 2 * XImageView::kIdCount);
    EXPECT_EQ(simple.GetFileEdit().m_hWnd, nullptr);
    EXPECT_EQ(::GetDlgItem(simple, 400 + XImageView::kReloadOffset), nullptr);
    const RECT area = simple.ViewerGetSize();
    EXPECT_EQ(area.top, 0);
    simple.SetFilename(htm);
    EXPECT_EQ(simple.GetViewerKind(), XImageView::kHtmlViewer);
    bmpOnly.SetFilename(htm);
    EXPECT_TRUE(bmpOnly.IsFileNotFoundShown());
    bmpOnly.SetFilename(bmp);
    EXPECT_EQ(bmpOnly.GetViewerKind(), XImageView::kBitmapViewer);
    // Browser-only without a field: names are not taken.
    simple.SetBrowserOnly();
    simple.SetFilename(bmp);
    EXPECT_EQ(simple.GetFilename(), htm);

    XImageView orphan;
    UINT other = 1;
    EXPECT_FALSE(orphan.CreateCtrl(other, RECT{0, 0, 10, 10}, nullptr, nullptr));
    const HWND gone = ::CreateWindowExW(0, L"STATIC", L"", WS_CHILD, 0, 0, 5, 5, host_, nullptr, nullptr, nullptr);
    ::DestroyWindow(gone);
    EXPECT_FALSE(orphan.CreateCtrl(other, RECT{0, 0, 10, 10}, nullptr, gone));
    EXPECT_EQ(other, 1u);
    XDIBView dib;
    EXPECT_FALSE(dib.Create(RECT{0, 0, 10, 10}, gone, 1));
    EXPECT_FALSE(dib.DisplayBMP(L""));
    XHTMLView html;
    EXPECT_FALSE(html.Create(RECT{0, 0, 10, 10}, nullptr, 1));
    EXPECT_FALSE(html.DisplayURL(htm));
}

}  // namespace
