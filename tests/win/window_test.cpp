// The window object: attaching, reflection to the right child, detaching in
// either destruction order.
#include "quorvel/platform/window.h"

#include "quorvel/platform/module.h"

#include <optional>
#include <tuple>
#include <utility>

#include "support/host.h"

namespace {

using qvtest::HostTest;

// A button that counts the reflected notifications it was given and answers
// them as handled when told to.
class CountingButton : public qv::Window {
public:
    int commands = 0;
    int colors = 0;
    bool handle = true;
    HBRUSH brush = static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH));
    int destroyedSeen = 0;

protected:
    bool OnReflectCommand(UINT code) override {
        ++commands;
        return handle;
    }
    HBRUSH OnReflectCtlColor(HDC, UINT) override {
        ++colors;
        return handle ? brush : nullptr;
    }
    void OnNcDestroy() override {
        ++destroyedSeen;
        Default();
    }
};

class WindowTest : public HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        // A plain Win32 subclass standing for the host's own handling; it is
        // installed first, so the library's reflector sits above it.
        spy_.emplace(host_, [this](UINT msg, WPARAM, LPARAM) { parentCommands_ += msg == WM_COMMAND; });
    }
    int parentCommands_ = 0;  // what reaches the parent's own procedure (after any reflection)
    std::optional<qvtest::MessageSpy> spy_;
    RECT rc_{10, 10, 110, 40};
};

TEST_F(WindowTest, ReflectionReachesOnlyTheChildTheMessageIsAbout) {
    CountingButton a, b;
    ASSERT_TRUE(a.Create(L"BUTTON", L"A", WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON, rc_, host_, 101));
    ASSERT_TRUE(b.Create(L"BUTTON", L"B", WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON, rc_, host_, 102));

    ::SendMessageW(a.m_hWnd, BM_CLICK, 0, 0);  // a real click, reported to the plain parent
    qvtest::Pump();
    EXPECT_EQ(std::tuple(a.commands, b.commands), std::tuple(1, 0));
    EXPECT_EQ(parentCommands_, 0) << "a handled notification must not reach the parent";

    b.handle = false;
    ::SendMessageW(host_, WM_COMMAND, MAKEWPARAM(102, BN_CLICKED), reinterpret_cast<LPARAM>(b.m_hWnd));
    EXPECT_EQ(b.commands, 1);
    EXPECT_EQ(parentCommands_, 1) << "a declined notification goes on to the parent";

    // Menu commands (lParam 0) are never reflected.
    ::SendMessageW(host_, WM_COMMAND, MAKEWPARAM(101, 0), 0);
    EXPECT_EQ(std::tuple(a.commands, parentCommands_), std::tuple(1, 2));
}

TEST_F(WindowTest, CtlColorNullBrushCountsAsNotHandled) {
    CountingButton a;
    ASSERT_TRUE(a.Create(L"EDIT", L"x", WS_CHILD | WS_VISIBLE | WS_BORDER, rc_, host_, 103));
    HDC dc = ::GetDC(a.m_hWnd);
    LRESULT r = ::SendMessageW(host_, WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(a.m_hWnd));
    EXPECT_EQ(reinterpret_cast<HBRUSH>(r), a.brush);
    a.handle = false;
    r = ::SendMessageW(host_, WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(a.m_hWnd));
    EXPECT_NE(reinterpret_cast<HBRUSH>(r), a.brush);
    EXPECT_EQ(a.colors, 2);
    ::ReleaseDC(a.m_hWnd, dc);
}

TEST_F(WindowTest, AttachAndLookupRefuseWhatTheyCannotHold) {
    HWND edit = ::CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE, 0, 0, 50, 20, host_,
                                  reinterpret_cast<HMENU>(200), nullptr, nullptr);
    CountingButton a, b;
    EXPECT_FALSE(a.Attach(nullptr) || a.SubclassDlgItem(999, host_) || a.SubclassDlgItem(200, nullptr));
    EXPECT_TRUE(a.SubclassDlgItem(200, host_));
    EXPECT_EQ(qv::Window::FromHandle(edit), &a);
    EXPECT_FALSE(b.Attach(edit)) << "one object per window";
    EXPECT_EQ(a.Detach(), edit);
    EXPECT_EQ(qv::Window::FromHandle(edit), nullptr);
    EXPECT_TRUE(::IsWindow(edit)) << "detaching leaves the window alive";
    HWND dead = edit;
    ::DestroyWindow(edit);
    EXPECT_FALSE(b.Attach(dead));
}

TEST_F(WindowTest, ParentDestroyedFirstDetachesTheChild) {
    auto* a = new CountingButton;
    ASSERT_TRUE(a->Create(L"BUTTON", L"A", WS_CHILD | WS_VISIBLE, rc_, host_, 105));
    HWND child = a->m_hWnd;
    ::DestroyWindow(host_);
    EXPECT_EQ(std::tuple(a->destroyedSeen, a->m_hWnd), std::tuple(1, HWND{}));
    EXPECT_FALSE(::IsWindow(child));
    delete a;  // must not touch the dead window
}

TEST_F(WindowTest, ObjectDestroyedFirstDestroysWhatItCreatedAndDetachesWhatItAttached) {
    HWND created = nullptr;
    {
        CountingButton a;
        ASSERT_TRUE(a.Create(L"BUTTON", L"A", WS_CHILD | WS_VISIBLE, rc_, host_, 106));
        created = a.m_hWnd;
    }
    EXPECT_FALSE(::IsWindow(created));

    HWND edit = ::CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE, 0, 0, 50, 20, host_,
                                  reinterpret_cast<HMENU>(201), nullptr, nullptr);
    {
        CountingButton b;
        ASSERT_TRUE(b.Attach(edit));
    }
    EXPECT_TRUE(::IsWindow(edit));
    EXPECT_EQ(qv::Window::FromHandle(edit), nullptr);
    // The parent's reflector survives a child's departure and still passes
    // notifications of windows without an object to the parent.
    ::SendMessageW(host_, WM_COMMAND, MAKEWPARAM(201, EN_CHANGE), reinterpret_cast<LPARAM>(edit));
    EXPECT_EQ(parentCommands_, 1);
}

// A window that sees its own creation (WM_CREATE) because it is attached
// before the window procedure first runs.
class CreationSeer : public qv::Window {
public:
    int created = 0;

protected:
    int OnCreate(CREATESTRUCTW* cs) override {
        ++created;
        return Window::OnCreate(cs);
    }
};

TEST_F(WindowTest, CreatedWindowSeesItsOwnCreation) {
    CreationSeer w;
    const wchar_t* cls = qv::RegisterLibraryWindowClass(L"QvTestCreationSeer", 0, nullptr, nullptr);
    ASSERT_NE(cls, nullptr);
    ASSERT_TRUE(w.Create(cls, L"", WS_CHILD | WS_VISIBLE, rc_, host_, 107));
    EXPECT_EQ(w.created, 1);
}

// Upper-cases what is typed: proves a dialog item's keystrokes reach the
// object's handler and its Default() still reaches the edit control.
class UpperEdit : public qv::Window {
protected:
    void OnChar(UINT ch, UINT rep, UINT flags) override {
        if (ch >= L'a' && ch <= L'z') ch -= L'a' - L'A';
        DefWindowProc(WM_CHAR, ch, MAKELPARAM(rep, flags));
    }
};

INT_PTR CALLBACK PlainDialogProc(HWND, UINT msg, WPARAM, LPARAM) { return msg == WM_INITDIALOG; }

TEST_F(WindowTest, SubclassedDialogItemSeesTypedCharacters) {
    // The library's font-size dialog: edit 5024 inside a plain dialog procedure.
    HWND dlg = ::CreateDialogParamW(qv::LibraryModule(), MAKEINTRESOURCEW(141), host_, PlainDialogProc, 0);
    ASSERT_NE(dlg, nullptr);
    UpperEdit edit;
    ASSERT_TRUE(edit.SubclassDlgItem(5024, dlg));
    qvtest::TypeChars(edit.m_hWnd, L"ab1c");
    EXPECT_EQ(qvtest::TextOf(edit.m_hWnd), L"AB1C");
    ::DestroyWindow(dlg);
    EXPECT_EQ(edit.m_hWnd, nullptr) << "detached when the dialog went";
}

}  // namespace
