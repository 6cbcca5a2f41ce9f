// The window object: attaching, reflection to the right child, detaching in
// either destruction order.
#include "quorvel/platform/window.h"

#include "quorvel/platform/module.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

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
        spy_.emplace(host_, [this](UINT msg, WPARAM, LPARAM) {
            parentCommands_ += msg == WM_COMMAND;
            ++parentSeen_[msg];
        });
    }
    int parentCommands_ = 0;  // what reaches the parent's own procedure (after any reflection)
    std::map<UINT, int> parentSeen_;
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

// An owner-drawn list box that records the item messages reflected to it.
// Handling them, it sorts by item data from the largest down and answers
// `keyItem` to the keyboard messages.
class ItemList : public qv::Window {
public:
    std::vector<UINT> seen;
    bool handle = true;
    LRESULT keyItem = 2;

protected:
    bool OnChildNotify(UINT msg, WPARAM wp, LPARAM lp, LRESULT* result) override {
        if (msg != WM_COMPAREITEM && msg != WM_DELETEITEM && msg != WM_CHARTOITEM && msg != WM_VKEYTOITEM)
            return Window::OnChildNotify(msg, wp, lp, result);
        seen.push_back(msg);
        if (!handle) return false;
        if (msg == WM_COMPAREITEM) {
            const auto* c = reinterpret_cast<const COMPAREITEMSTRUCT*>(lp);
            *result = c->itemData1 > c->itemData2 ? -1 : c->itemData1 < c->itemData2 ? 1 : 0;
        } else {
            *result = msg == WM_DELETEITEM ? TRUE : keyItem;
        }
        return true;
    }
};

TEST_F(WindowTest, ItemMessagesOfOwnerDrawnListsReachTheirListOrGoOnToTheParent) {
    enum Action { kAddSorted, kDelete, kArrowDown, kTypeChar };
    constexpr DWORD kDrawn = WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_OWNERDRAWFIXED;
    // selection: what LB_GETCURSEL answers afterwards (-2: not looked at)
    const struct { UINT msg; DWORD style; Action action; bool handle; int selection; } cases[] = {
        {WM_COMPAREITEM, kDrawn | LBS_SORT, kAddSorted, true, -2},
        {WM_COMPAREITEM, kDrawn | LBS_SORT, kAddSorted, false, -2},
        {WM_DELETEITEM, kDrawn, kDelete, true, -2},
        {WM_DELETEITEM, kDrawn, kDelete, false, -2},
        {WM_VKEYTOITEM, kDrawn | LBS_WANTKEYBOARDINPUT, kArrowDown, true, 2},   // the list's answer: item 2
        {WM_VKEYTOITEM, kDrawn | LBS_WANTKEYBOARDINPUT, kArrowDown, false, 1},  // the parent's -1: one down
        {WM_CHARTOITEM, kDrawn | LBS_WANTKEYBOARDINPUT, kTypeChar, true, 2},
        {WM_CHARTOITEM, kDrawn | LBS_WANTKEYBOARDINPUT, kTypeChar, false, 0},   // no text to search: stays
    };
    for (const auto& c : cases) {
        const std::string what = "message " + std::to_string(c.msg) + (c.handle ? " handled" : " declined");
        parentSeen_.clear();
        ItemList list;
        list.handle = c.handle;
        ASSERT_TRUE(list.Create(L"LISTBOX", L"", c.style, RECT{10, 10, 200, 200}, host_, 110));
        for (LPARAM data : {3, 1, 2}) list.SendMessage(LB_ADDSTRING, 0, data);
        if (c.action == kAddSorted) {
            if (c.handle) {
                EXPECT_EQ(std::tuple(list.SendMessage(LB_GETITEMDATA, 0), list.SendMessage(LB_GETITEMDATA, 1)),
                          std::tuple(3, 2)) << "sorted by the list's answers";
            }
        } else if (c.action == kDelete) {
            list.SendMessage(LB_DELETESTRING, 0);
        } else {
            list.SendMessage(LB_SETCURSEL, 0);
            if (c.action == kArrowDown) list.SendMessage(WM_KEYDOWN, VK_DOWN, 1);
            else list.SendMessage(WM_CHAR, L'x', 1);
            EXPECT_EQ(list.SendMessage(LB_GETCURSEL), c.selection) << what;
        }
        EXPECT_NE(std::count(list.seen.begin(), list.seen.end(), c.msg), 0) << what;
        EXPECT_EQ(parentSeen_[c.msg] != 0, !c.handle) << what << ": only a declined message reaches the parent";
    }
}

TEST_F(WindowTest, ItemMessagesFindTheirListByIdAndSkipMenus) {
    ItemList list;
    ASSERT_TRUE(list.Create(L"LISTBOX", L"", WS_CHILD | WS_VISIBLE | LBS_OWNERDRAWFIXED, rc_, host_, 111));
    // itemWnd null: a window that is not the parent's child (a combo box may
    // name its inner list); wParam 0: a menu's item.
    const struct { WPARAM wp; bool itemWnd; bool reachesList; } cases[] = {
        {111, true, true}, {111, false, true}, {0, true, false}};
    for (const auto& c : cases) {
        list.seen.clear();
        parentSeen_.clear();
        DELETEITEMSTRUCT dis{ODT_LISTBOX, 111, 0, c.itemWnd ? list.m_hWnd : nullptr, 0};
        ::SendMessageW(host_, WM_DELETEITEM, c.wp, reinterpret_cast<LPARAM>(&dis));
        EXPECT_EQ(std::tuple(list.seen.size(), parentSeen_[WM_DELETEITEM]),
                  std::tuple(c.reachesList ? 1u : 0u, c.reachesList ? 0 : 1))
            << "case " << (&c - cases);
    }
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
