// The search fields on a real host with real files in a temporary folder:
// the children and their places, validation of existing, missing and
// malformed paths (long, UNC, with blanks, non-Latin) with the system's
// messages, the WM_GETTEXT count, what the parent hears, the open button,
// the colours, and the browse dialogs driven to the end as a user would.
#include "quorvel/windows/search_field.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "support/host.h"

namespace {

std::wstring SystemText(DWORD error) {
    wchar_t* buffer = nullptr;
    ::FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                     nullptr, error, 0, reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
    std::wstring text = buffer ? buffer : L"";
    if (buffer) ::LocalFree(buffer);
    return text.substr(0, text.find_first_of(L"\r\n"));
}

std::wstring Long(const std::wstring& path) { return L"\\\\?\\" + path; }

void RemoveTree(const std::wstring& folder) {
    WIN32_FIND_DATAW found{};
    HANDLE search = ::FindFirstFileW(Long(folder + L"\\*").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            const std::wstring name = found.cFileName;
            if (name == L"." || name == L"..") continue;
            const std::wstring path = folder + L"\\" + name;
            if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
                RemoveTree(path);
            else
                ::DeleteFileW(Long(path).c_str());
        } while (::FindNextFileW(search, &found));
        ::FindClose(search);
    }
    ::RemoveDirectoryW(Long(folder).c_str());
}

bool MakeFile(const std::wstring& path) {
    HANDLE file = ::CreateFileW(Long(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                                nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    DWORD written = 0;
    ::WriteFile(file, "text\r\n", 6, &written, nullptr);
    ::CloseHandle(file);
    return true;
}

// The visible dialog boxes of this thread.
std::vector<HWND> ThreadDialogs() {
    std::vector<HWND> found;
    ::EnumThreadWindows(
        ::GetCurrentThreadId(),
        [](HWND w, LPARAM lp) -> BOOL {
            wchar_t cls[16] = {};
            ::GetClassNameW(w, cls, 16);
            if (std::wstring(cls) == L"#32770" && ::IsWindowVisible(w))
                reinterpret_cast<std::vector<HWND>*>(lp)->push_back(w);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&found));
    return found;
}

// Acts on the first dialog box that shows while it lives, from a timer that
// runs inside the dialog's own message loop, as a user at the keyboard would.
class DialogDriver {
public:
    explicit DialogDriver(std::function<void(HWND)> act) : act_(std::move(act)) {
        current_ = this;
        timer_ = ::SetTimer(nullptr, 0, 100, &DialogDriver::Tick);
    }
    ~DialogDriver() {
        ::KillTimer(nullptr, timer_);
        current_ = nullptr;
    }
    DialogDriver(const DialogDriver&) = delete;
    DialogDriver& operator=(const DialogDriver&) = delete;
    bool Acted() const { return acted_; }
    std::wstring title, okText;
    bool fileNameShown = false;
    RECT ok{}, cancel{};

private:
    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
        DialogDriver* self = current_;
        if (!self || self->acted_ || self->busy_) return;
        const std::vector<HWND> dialogs = ThreadDialogs();
        if (dialogs.empty()) return;
        self->busy_ = true;
        HWND dialog = dialogs.front();
        self->title = qvtest::TextOf(dialog);
        self->okText = qvtest::TextOf(::GetDlgItem(dialog, IDOK));
        ::GetWindowRect(::GetDlgItem(dialog, IDOK), &self->ok);
        ::GetWindowRect(::GetDlgItem(dialog, IDCANCEL), &self->cancel);
        for (int id : {1148, 1152}) {
            HWND name = ::GetDlgItem(dialog, id);
            if (name && ::IsWindowVisible(name)) self->fileNameShown = true;
        }
        self->acted_ = true;
        self->act_(dialog);
        self->busy_ = false;
    }
    static inline DialogDriver* current_ = nullptr;
    std::function<void(HWND)> act_;
    UINT_PTR timer_ = 0;
    bool acted_ = false;
    bool busy_ = false;
};

// Types `name` into the dialog's file name box and presses OK.
void ChooseFile(HWND dialog, const std::wstring& name) {
    for (int id : {1148, 1152})
        if (HWND box = ::GetDlgItem(dialog, id)) ::SetWindowTextW(box, name.c_str());
    ::SendMessageW(::GetDlgItem(dialog, IDOK), BM_CLICK, 0, 0);
}

void Press(HWND dialog, int id) { ::SendMessageW(::GetDlgItem(dialog, id), BM_CLICK, 0, 0); }

enum class Kind { Folder, File, FileOpen, ReadOnlyFolder, ReadOnlyFile, ReadOnlyFileOpen };

std::unique_ptr<XBaseSearchCtrl> Make(Kind kind) {
    switch (kind) {
    case Kind::Folder: return std::make_unique<XSearchFolderCtrl>();
    case Kind::File: return std::make_unique<XSearchFileCtrl>();
    case Kind::FileOpen: return std::make_unique<XSearchFileOpenCtrl>();
    case Kind::ReadOnlyFolder: return std::make_unique<XReadOnlySearchFolderCtrl>();
    case Kind::ReadOnlyFile: return std::make_unique<XReadOnlySearchFileCtrl>();
    case Kind::ReadOnlyFileOpen: return std::make_unique<XReadOnlySearchFileOpenCtrl>();
    }
    return nullptr;
}

// A temporary folder with a file, a sub-folder, names with blanks and
// non-Latin characters, and a file deeper than MAX_PATH.
class SearchFieldTest : public qvtest::HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        wchar_t temp[MAX_PATH + 1] = {};
        ::GetTempPathW(MAX_PATH, temp);
        root_ = std::wstring(temp) + L"qv search " + std::to_wstring(::GetCurrentProcessId());
        if (root_.back() == L'\\') root_.pop_back();
        RemoveTree(root_);
        ASSERT_TRUE(::CreateDirectoryW(root_.c_str(), nullptr));
        file_ = root_ + L"\\plain.txt";
        ASSERT_TRUE(MakeFile(file_));
        sub_ = root_ + L"\\sub folder";
        ASSERT_TRUE(::CreateDirectoryW(sub_.c_str(), nullptr));
        foreign_ = root_ + L"\\\u00c4rger \u6587\u4ef6 \u0444\u0430\u0439\u043b";
        ASSERT_TRUE(::CreateDirectoryW(foreign_.c_str(), nullptr));
        ASSERT_TRUE(MakeFile(foreign_ + L"\\\u0414\u0430\u043d\u043d\u044b\u0435 1.txt"));
        deep_ = root_;
        for (int i = 0; deep_.size() < 300; ++i) {
            deep_ += L"\\a rather long folder name " + std::to_wstring(i);
            ASSERT_TRUE(::CreateDirectoryW(Long(deep_).c_str(), nullptr));
        }
        deepFile_ = deep_ + L"\\deep file.txt";
        ASSERT_TRUE(MakeFile(deepFile_));
    }
    void TearDown() override {
        field_.reset();
        HostTest::TearDown();
        RemoveTree(root_);
    }
    XBaseSearchCtrl& Field(Kind kind, const std::wstring& text = L"", RECT rect = RECT{10, 10, 310, 34}) {
        field_ = Make(kind);
        EXPECT_TRUE(field_->Create(text, XBaseSearchCtrl::kStyle, rect, font_, host_, 123));
        return *field_;
    }
    HWND Edit() { return field_->GetEditCtrl().m_hWnd; }
    std::pair<int, int> Sel() { return qvtest::SelOf(field_->GetEditCtrl()); }

    std::wstring root_, file_, sub_, foreign_, deep_, deepFile_;
    std::unique_ptr<XBaseSearchCtrl> field_;
};

TEST_F(SearchFieldTest, ChildrenTheirPlacesAndTheReadOnlyVariants) {
    const struct { Kind kind; bool open, readOnly; } cases[] = {
        {Kind::Folder, false, false},        {Kind::File, false, false},        {Kind::FileOpen, true, false},
        {Kind::ReadOnlyFolder, false, true}, {Kind::ReadOnlyFile, false, true}, {Kind::ReadOnlyFileOpen, true, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "kind " << static_cast<int>(c.kind));
        XBaseSearchCtrl& f = Field(c.kind, L"start");
        const int w = 300;
        EXPECT_EQ(::GetDlgItem(host_, 123), f.m_hWnd);
        EXPECT_EQ(::GetDlgCtrlID(Edit()), 123);
        EXPECT_EQ(qvtest::TextOf(Edit()), L"start");
        EXPECT_TRUE(f.GetExStyle() & WS_EX_CONTROLPARENT);
        const RECT edit = qvtest::RectIn(f, Edit()), browse = qvtest::RectIn(f, f.GetBrowseButton());
        EXPECT_EQ(edit.right - edit.left, c.open ? w - 56 : w - 27);
        EXPECT_EQ(browse.left, c.open ? w - 54 : w - 25);
        EXPECT_EQ(browse.bottom - browse.top, 24);
        EXPECT_EQ(f.GetBrowseButton().GetDlgCtrlID(), 10000);
        EXPECT_EQ(qvtest::TextOf(f.GetBrowseButton()), L"...");
        ASSERT_EQ(f.GetOpenButton() != nullptr, c.open);
        if (c.open) {
            EXPECT_EQ(f.GetOpenButton()->GetDlgCtrlID(), 11111);
            EXPECT_EQ(qvtest::RectIn(f, *f.GetOpenButton()).left, w - 25);
            EXPECT_NE(f.GetOpenButton()->GetBitmap(), nullptr);
            EXPECT_TRUE(f.GetOpenButton()->IsWindowEnabled());
        }
        EXPECT_EQ((::GetWindowLongW(Edit(), GWL_STYLE) & ES_READONLY) != 0, c.readOnly);
        EXPECT_EQ(f.GetBrowseButton().IsWindowEnabled(), !c.readOnly);
        EXPECT_EQ(f.GetValidation(), !c.readOnly);
        // A resize lays the children out again.
        f.MoveWindow(RECT{10, 10, 210, 40});
        EXPECT_EQ(qvtest::RectIn(f, f.GetBrowseButton()).left, c.open ? 200 - 54 : 200 - 25);
        EXPECT_EQ(qvtest::RectIn(f, Edit()).bottom, 30);
        // Focus given to the frame goes on to the edit.
        f.SetFocus();
        EXPECT_EQ(::GetFocus(), Edit());
    }
}

TEST_F(SearchFieldTest, CreateRefusesAMissingParent) {
    XSearchFileCtrl f;
    EXPECT_FALSE(f.Create(L"", XBaseSearchCtrl::kStyle, RECT{0, 0, 100, 20}, font_, nullptr, 1));
    HWND gone = qvtest::CreateHostWindow();
    ::DestroyWindow(gone);
    EXPECT_FALSE(f.Create(L"", XBaseSearchCtrl::kStyle, RECT{0, 0, 100, 20}, font_, gone, 1));
    EXPECT_FALSE(f.IsWindow());
}

TEST_F(SearchFieldTest, SetTextChecksThePathAndShowsTheSystemMessage) {
    const std::wstring missingFile = root_ + L"\\missing.txt";
    const std::wstring missingFolder = root_ + L"\\no such folder\\x.txt";
    // Systems differ in what they say about a file searched as a folder.
    constexpr DWORD kAnyOfThree = 0xFFFFFFFF;
    const DWORD three[] = {ERROR_PATH_NOT_FOUND, ERROR_INVALID_NAME, ERROR_DIRECTORY};
    const struct { Kind kind; std::wstring text; DWORD error; } cases[] = {
        {Kind::File, file_, 0},
        {Kind::File, foreign_ + L"\\\u0414\u0430\u043d\u043d\u044b\u0435 1.txt", 0},
        {Kind::File, deepFile_, 0},  // longer than MAX_PATH
        {Kind::File, missingFile, ERROR_FILE_NOT_FOUND},
        {Kind::File, missingFolder, ERROR_PATH_NOT_FOUND},
        {Kind::File, deep_ + L"\\missing deep.txt", ERROR_FILE_NOT_FOUND},
        {Kind::File, L"", ERROR_FILE_NOT_FOUND},
        {Kind::File, sub_, ERROR_ACCESS_DENIED},          // a folder is no file
        {Kind::File, root_ + L"\\a<b>.txt", ERROR_INVALID_NAME},
        {Kind::File, L"\\\\.\\COM1", ERROR_INVALID_NAME},
        {Kind::FileOpen, file_, 0},
        {Kind::Folder, sub_, 0},
        {Kind::Folder, sub_ + L"\\", 0},
        {Kind::Folder, foreign_, 0},
        {Kind::Folder, deep_, 0},
        {Kind::Folder, L"C:\\", 0},
        {Kind::Folder, root_ + L"\\no such folder", ERROR_PATH_NOT_FOUND},
        {Kind::Folder, L"", ERROR_PATH_NOT_FOUND},
        {Kind::Folder, file_, kAnyOfThree},              // a file is no folder
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "kind " << static_cast<int>(c.kind) << " text of " << c.text.size()
                                        << ", error " << c.error);
        XBaseSearchCtrl& f = Field(c.kind);
        std::vector<UINT> heard;
        qvtest::MessageSpy spy(host_, [&](UINT msg, WPARAM wp, LPARAM) {
            if (msg == WM_COMMAND && LOWORD(wp) == 123) heard.push_back(HIWORD(wp));
        });
        EXPECT_EQ(::SendMessageW(f, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(c.text.c_str())), 0);
        std::wstring expected = c.error ? SystemText(c.error) : c.text;
        if (c.error == kAnyOfThree) {
            for (DWORD e : three)
                if (qvtest::TextOf(Edit()) == SystemText(e)) expected = SystemText(e);
        }
        ASSERT_FALSE(expected.empty() && c.error);
        EXPECT_EQ(qvtest::TextOf(Edit()), expected);
        EXPECT_EQ(Sel(), std::make_pair(0, static_cast<int>(expected.size())));
        EXPECT_TRUE(heard.empty()) << "the host set the text itself";
        // The same check when the user leaves the field after typing it.
        f.SetValidation(false);
        ::SetWindowTextW(f, c.text.c_str());
        EXPECT_EQ(qvtest::TextOf(Edit()), c.text) << "no validation: taken as it is";
        f.SetValidation(true);
        ::SetFocus(Edit());
        ::SetFocus(host_);
        EXPECT_EQ(qvtest::TextOf(Edit()), expected);
        EXPECT_EQ(Sel(), std::make_pair(0, static_cast<int>(expected.size())));
    }
    EXPECT_TRUE(rec_->boxes.boxes.empty()) << "a wrong path shows in the field, not in a box";
}

TEST_F(SearchFieldTest, AnUncPathToNoServerFailsWithAMessage) {
    for (Kind kind : {Kind::File, Kind::Folder}) {
        XBaseSearchCtrl& f = Field(kind);
        const std::wstring unc = L"\\\\no-such-server-qv\\share\\file name.txt";
        ::SetWindowTextW(f, unc.c_str());
        const std::wstring shown = qvtest::TextOf(Edit());
        EXPECT_NE(shown, unc);
        EXPECT_FALSE(shown.empty());
        EXPECT_EQ(shown.find_first_of(L"\r\n"), std::wstring::npos);
    }
}

TEST_F(SearchFieldTest, TypingTellsTheParentAndLeavingAMissingFileSelectsTheMessage) {
    Field(Kind::File);
    std::vector<std::pair<UINT, HWND>> heard;
    qvtest::MessageSpy spy(host_, [&](UINT msg, WPARAM wp, LPARAM lp) {
        if (msg == WM_COMMAND && LOWORD(wp) == 123) heard.emplace_back(HIWORD(wp), reinterpret_cast<HWND>(lp));
    });
    ::SetFocus(Edit());
    qvtest::TypeChars(Edit(), L"nope.txt");
    EXPECT_EQ(heard.size(), 8u);
    EXPECT_EQ(heard.front(), std::make_pair(static_cast<UINT>(EN_CHANGE), Edit()));
    heard.clear();
    ::SetFocus(host_);
    EXPECT_EQ(qvtest::TextOf(Edit()), SystemText(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(Sel(), std::make_pair(0, static_cast<int>(qvtest::TextOf(Edit()).size())));
    EXPECT_TRUE(heard.empty()) << "the error text is the field's own writing";
}

TEST_F(SearchFieldTest, GetTextCountsOneMoreThanItCopies) {
    XBaseSearchCtrl& f = Field(Kind::File);
    f.SetValidation(false);
    const struct { std::wstring text; WPARAM size; LRESULT answer; std::wstring copied; } cases[] = {
        {L"abcd", 10, 5, L"abcd"},
        {L"abcd", 4, 5, L"abc"},  // as long as the buffer: counted whole, the terminator kept inside
        {L"abcdefgh", 4, 4, L"abc"},
        {L"abcd", 0, 0, L"####"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.text.size() << " characters into " << c.size);
        ::SetWindowTextW(f, c.text.c_str());
        wchar_t buffer[16];
        std::fill(std::begin(buffer), std::end(buffer), L'#');
        EXPECT_EQ(::SendMessageW(f, WM_GETTEXT, c.size, reinterpret_cast<LPARAM>(buffer)), c.answer);
        EXPECT_EQ(std::wstring(buffer, c.copied.size()), c.copied);
        if (c.size > 0) {
            EXPECT_EQ(buffer[c.copied.size()], L'\0');
        }
        EXPECT_EQ(buffer[c.size], L'#') << "nothing written past the buffer";
        EXPECT_EQ(::SendMessageW(f, WM_GETTEXTLENGTH, 0, 0), static_cast<LRESULT>(c.text.size()));
    }
    // A path longer than MAX_PATH comes back whole.
    ::SetWindowTextW(f, deepFile_.c_str());
    std::vector<wchar_t> whole(deepFile_.size() + 8, L'#');
    EXPECT_EQ(::SendMessageW(f, WM_GETTEXT, whole.size(), reinterpret_cast<LPARAM>(whole.data())),
              static_cast<LRESULT>(deepFile_.size() + 1));
    EXPECT_EQ(std::wstring(whole.data()), deepFile_);
    // Without its edit the field answers -1.
    ::DestroyWindow(Edit());
    EXPECT_EQ(::SendMessageW(f, WM_GETTEXTLENGTH, 0, 0), -1);
    wchar_t buffer[8] = {};
    EXPECT_EQ(::SendMessageW(f, WM_GETTEXT, 8, reinterpret_cast<LPARAM>(buffer)), -1);
    EXPECT_EQ(::SendMessageW(f, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"x")), -1);
}

TEST_F(SearchFieldTest, TheOpenButtonOpensTheFileOrSaysWhyNot) {
    const struct { INT_PTR answer; const wchar_t* box; } cases[] = {
        {42, nullptr},
        {2, L"Unknown error"},
        {31, L"There is no application associated with the given file name extension"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "shell answers " << c.answer);
        XBaseSearchCtrl& f = Field(Kind::ReadOnlyFileOpen, file_);
        rec_->shell.calls.clear();
        rec_->boxes.boxes.clear();
        rec_->shell.answer = c.answer;
        f.GetOpenButton()->Click();
        ASSERT_EQ(rec_->shell.calls.size(), 1u);
        EXPECT_EQ(rec_->shell.calls[0].verb, L"open");
        EXPECT_EQ(rec_->shell.calls[0].file, file_);
        EXPECT_EQ(rec_->shell.calls[0].show, SW_SHOW);
        EXPECT_FALSE(rec_->shell.calls[0].directory.empty());
        ASSERT_EQ(rec_->boxes.boxes.size(), c.box ? 1u : 0u);
        if (c.box) {
            EXPECT_EQ(rec_->boxes.boxes[0].caption, L"Open application");
            EXPECT_EQ(rec_->boxes.boxes[0].text, c.box);
            EXPECT_EQ(rec_->boxes.boxes[0].type, static_cast<UINT>(MB_ICONHAND));
        }
    }
    // Nothing to open in an empty field.
    XBaseSearchCtrl& f = Field(Kind::FileOpen);
    rec_->shell.calls.clear();
    f.GetOpenButton()->Click();
    EXPECT_TRUE(rec_->shell.calls.empty());
}

TEST_F(SearchFieldTest, TheEditPaintsInTheFieldsColours) {
    const struct { Kind kind; COLORREF bk; } cases[] = {
        {Kind::File, ::GetSysColor(COLOR_WINDOW)},
        {Kind::ReadOnlyFolder, ::GetSysColor(COLOR_3DFACE)},
    };
    for (const auto& c : cases) {
        XBaseSearchCtrl& f = Field(c.kind, L"x");
        HDC dc = ::GetDC(Edit());
        const UINT msg = c.kind == Kind::File ? WM_CTLCOLOREDIT : WM_CTLCOLORSTATIC;
        auto ask = [&] {
            return reinterpret_cast<HBRUSH>(::SendMessageW(f, msg, reinterpret_cast<WPARAM>(dc),
                                                           reinterpret_cast<LPARAM>(Edit())));
        };
        HBRUSH brush = ask();
        ASSERT_NE(brush, nullptr);
        EXPECT_EQ(::GetTextColor(dc), RGB(8, 0, 0));
        EXPECT_EQ(::GetBkColor(dc), c.bk);
        LOGBRUSH lb{};
        ::GetObjectW(brush, sizeof lb, &lb);
        EXPECT_EQ(lb.lbColor, c.bk);
        // The host sets colours through the interface it knows.
        XBaseColor* colour = dynamic_cast<XBaseColor*>(dynamic_cast<XSearchFolderCtrl*>(field_.get()));
        if (!colour) colour = dynamic_cast<XSearchFileCtrl*>(field_.get());
        ASSERT_NE(colour, nullptr);
        colour->SetTextColor(RGB(0, 0, 200));
        colour->SetBkColor(RGB(255, 255, 200));
        brush = ask();
        EXPECT_EQ(::GetTextColor(dc), RGB(0, 0, 200));
        ::GetObjectW(brush, sizeof lb, &lb);
        EXPECT_EQ(lb.lbColor, RGB(255, 255, 200));
        ::ReleaseDC(Edit(), dc);
    }
    EXPECT_NE(dynamic_cast<XBaseReadOnlyColor*>(field_.get()), nullptr);
}

TEST_F(SearchFieldTest, TheFileDialogPicksAFile) {
    XBaseSearchCtrl& f = Field(Kind::File, root_);
    std::vector<UINT> heard;
    qvtest::MessageSpy spy(host_, [&](UINT msg, WPARAM wp, LPARAM) {
        if (msg == WM_COMMAND && LOWORD(wp) == 123) heard.push_back(HIWORD(wp));
    });
    wchar_t before[MAX_PATH + 1] = {}, after[MAX_PATH + 1] = {};
    ::GetCurrentDirectoryW(MAX_PATH, before);
    DialogDriver driver([&](HWND dialog) { ChooseFile(dialog, L"plain.txt"); });
    f.GetBrowseButton().Click();
    ::GetCurrentDirectoryW(MAX_PATH, after);
    EXPECT_EQ(std::wstring(after), std::wstring(before)) << "the host's current directory stays";
    ASSERT_TRUE(driver.Acted());
    EXPECT_EQ(driver.title, L"Choose file");
    EXPECT_EQ(driver.okText, L"Select");
    EXPECT_TRUE(driver.fileNameShown);
    EXPECT_EQ(::lstrcmpiW(qvtest::TextOf(Edit()).c_str(), file_.c_str()), 0) << qvtest::TextOf(Edit()).size();
    EXPECT_EQ(heard, std::vector<UINT>{EN_CHANGE});
    EXPECT_TRUE(ThreadDialogs().empty());
}

TEST_F(SearchFieldTest, ACancelledDialogLeavesTheText) {
    for (Kind kind : {Kind::File, Kind::Folder}) {
        XBaseSearchCtrl& f = Field(kind, sub_);
        f.SetDlgTitle(L"Pick one");
        f.SetDlgOkBtnText(L"Take");
        DialogDriver driver([](HWND dialog) { Press(dialog, IDCANCEL); });
        f.GetBrowseButton().Click();
        ASSERT_TRUE(driver.Acted());
        EXPECT_EQ(driver.title, L"Pick one");
        EXPECT_EQ(driver.okText, L"Take");
        EXPECT_EQ(qvtest::TextOf(Edit()), sub_);
    }
}

TEST_F(SearchFieldTest, TheFolderDialogPicksTheFolderItShows) {
    const std::wstring start[] = {foreign_, sub_, file_};  // a file's text opens its folder
    const std::wstring picked[] = {foreign_, sub_, root_};
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE(i);
        XBaseSearchCtrl& f = Field(Kind::Folder, start[i]);
        DialogDriver driver([](HWND dialog) { Press(dialog, IDOK); });
        f.GetBrowseButton().Click();
        ASSERT_TRUE(driver.Acted());
        EXPECT_EQ(driver.title, L"Choose folder");
        EXPECT_EQ(driver.okText, L"Select");
        EXPECT_FALSE(driver.fileNameShown);
        EXPECT_EQ(driver.ok.top, driver.cancel.top) << "OK beside Cancel";
        EXPECT_LT(driver.ok.right, driver.cancel.left);
        std::wstring shown = qvtest::TextOf(Edit());
        if (!shown.empty() && shown.back() == L'\\') shown.pop_back();
        EXPECT_EQ(::lstrcmpiW(shown.c_str(), picked[i].c_str()), 0) << shown.size();
        EXPECT_TRUE(ThreadDialogs().empty());
    }
}

}  // namespace
