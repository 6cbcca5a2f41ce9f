// Date and time fields on real pickers: the framed picker's value, range,
// "no date" state and log entries; the compound field's layout, ids,
// notifications and Tab steps; values as text in a German and an English
// user locale; DDX_DateTime in a real dialog.
#include "quorvel/masks/date_edits.h"
#include "quorvel/masks/datetime_field.h"

#include <commctrl.h>

#include <functional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "support/host.h"

namespace {

using qvtest::RectIn;
using qvtest::TextOf;

qv::OleDateTime Null() {
    qv::OleDateTime v;
    v.SetStatus(qv::OleDateTime::null);
    return v;
}

const qv::OleDateTime kMoment(2024, 3, 5, 13, 45, 30);
const qv::OleDateTime kFeb29(2023, 2, 29, 0, 0, 0);  // invalid

// Equal to the second: a value read back through text may differ from one
// built from its parts in the last bits of the DATE.
::testing::AssertionResult SameMoment(const qv::OleDateTime& a, const qv::OleDateTime& b) {
    const std::wstring fa = a.Format(L"%Y-%m-%d %H:%M:%S"), fb = b.Format(L"%Y-%m-%d %H:%M:%S");
    if (a.GetStatus() == b.GetStatus() && fa == fb) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << std::string(fa.begin(), fa.end()) << " vs "
                                         << std::string(fb.begin(), fb.end());
}

// The read-only field answers one character more than it copies.
std::wstring Text(HWND hwnd) { return TextOf(hwnd).c_str(); }

// Subclasses every picker created while it lives: records DTM_SETRANGE's
// flags and, when asked, fails DTM_GETSYSTEMTIME.
struct PickerSpy {
    static inline std::vector<WPARAM> ranges;
    static inline bool failReads = false;
    HHOOK hook;
    static LRESULT CALLBACK Proc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR, DWORD_PTR) {
        if (msg == DTM_SETRANGE) ranges.push_back(wp);
        if (msg == DTM_GETSYSTEMTIME && failReads) return GDT_ERROR;
        return ::DefSubclassProc(hwnd, msg, wp, lp);
    }
    static LRESULT CALLBACK Cbt(int code, WPARAM wp, LPARAM lp) {
        wchar_t cls[64] = {};
        if (code == HCBT_CREATEWND && ::GetClassNameW(reinterpret_cast<HWND>(wp), cls, 64) &&
            lstrcmpiW(cls, DATETIMEPICK_CLASSW) == 0)
            ::SetWindowSubclass(reinterpret_cast<HWND>(wp), &Proc, 0x5059, 0);
        return ::CallNextHookEx(nullptr, code, wp, lp);
    }
    PickerSpy() : hook(::SetWindowsHookExW(WH_CBT, &Cbt, nullptr, ::GetCurrentThreadId())) {
        ranges.clear();
        failReads = false;
    }
    ~PickerSpy() { ::UnhookWindowsHookEx(hook); }
};

class DateFieldsTest : public qvtest::HostTest {
protected:
    // The user's date and time formats as a German or an English user has them.
    void UseLocale(bool german) {
        ASSERT_TRUE(locale_.Set(LOCALE_SSHORTDATE, german ? L"dd.MM.yyyy" : L"M/d/yyyy") &&
                    locale_.Set(LOCALE_STIMEFORMAT, german ? L"HH:mm:ss" : L"h:mm:ss tt") &&
                    locale_.Set(LOCALE_S1159, L"AM") && locale_.Set(LOCALE_S2359, L"PM"));
    }
    void MakeFrame(XBaseDateTime& frame) {
        ASSERT_TRUE(frame.Create(WS_CHILD | WS_VISIBLE, RECT{10, 10, 160, 34}, host_, 200));
    }
    // A compound with ids 300 (itself), 301 (date) and 302 (time).
    void MakeCompound(XMFCBaseDateTimeEdit& edit, RECT rc = RECT{10, 10, 250, 32}) {
        unsigned int id = 300;
        ASSERT_EQ(edit.Create(true, rc, host_, id, nullptr), 1);
        EXPECT_EQ(id, 302u);
    }
    const std::vector<qv::LogEntry>& Log() { return qv::Services::DefaultLogBook().Entries(); }
    qvtest::LocaleOverride locale_;
};

// ---- the framed picker ----------------------------------------------------------

TEST_F(DateFieldsTest, InitShowsOnlyTheDateOfTheValueOrNoDate) {
    struct Case { int showNone; bool null; DWORD status; } cases[] = {
        {1, true, GDT_NONE}, {1, false, GDT_VALID}, {0, false, GDT_VALID}};
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "showNone " << c.showNone << " null " << c.null);
        XBaseDateTime frame;
        MakeFrame(frame);
        frame.m_dtValue = c.null ? Null() : qv::OleDateTime(2001, 2, 3, 0, 0, 1);
        ASSERT_EQ(frame.Init(c.showNone, 0), 1);
        HWND picker = frame.GetPicker().m_hWnd;
        EXPECT_TRUE(::IsWindowVisible(picker));
        EXPECT_EQ(RectIn(frame.m_hWnd, picker).right, 150) << "the picker fills the frame";
        SYSTEMTIME st{};
        EXPECT_EQ(::SendMessageW(picker, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&st)), c.status);
        EXPECT_EQ(frame.IsNullDate(), c.null ? 1 : 0);
        const bool timeKept = st.wHour == 0 && st.wMinute == 0 && st.wSecond == 1;  // the time of day is the picker's
        if (c.status == GDT_VALID) {
            EXPECT_EQ(std::tuple(st.wYear * 10000 + st.wMonth * 100 + st.wDay, timeKept), std::tuple(20010203, false));
        }
        EXPECT_TRUE(Log().empty());
    }
}

TEST_F(DateFieldsTest, RangeSendsOnlyTheBoundsThatAreSet) {
    const qv::OleDateTime low(2020, 1, 1, 0, 0, 0), high(2030, 12, 31, 0, 0, 0);
    struct Case { const qv::OleDateTime *min, *max; std::vector<WPARAM> sent; } cases[] = {
        {nullptr, &high, {GDTR_MAX}}, {&low, nullptr, {GDTR_MIN}},
        {&low, &high, {GDTR_MIN | GDTR_MAX}}, {nullptr, nullptr, {}}};
    for (const Case& c : cases) {
        PickerSpy spy;
        XBaseDateTime frame;
        MakeFrame(frame);
        frame.m_dtValue = qv::OleDateTime(2025, 6, 1, 0, 0, 0);
        EXPECT_EQ(frame.SetRange(c.min, c.max, 0, 1), 1) << "no picker yet: kept for Init";
        ASSERT_EQ(frame.Init(1, 0), 1);
        EXPECT_EQ(PickerSpy::ranges, c.sent);
    }
}

TEST_F(DateFieldsTest, ValueOutsideANewRangeMovesToTheBoundOnlyWhenAsked) {
    for (int clamp : {1, 0}) {
        XBaseDateTime frame;
        MakeFrame(frame);
        ASSERT_EQ(frame.Init(1, 0), 1);
        ASSERT_TRUE(frame.SetValue(qv::OleDateTime(2035, 7, 8, 9, 10, 11)));
        const qv::OleDateTime max(2030, 12, 31, 0, 0, 0);
        frame.SetRange(nullptr, &max, clamp, 1);
        EXPECT_EQ(frame.m_dtValue.GetYear(), clamp ? 2030 : 2035);
        const qv::OleDateTime shown = frame.GetValue();
        if (clamp)
            EXPECT_TRUE(SameMoment(shown, qv::OleDateTime(2030, 12, 31, 9, 10, 11))) << "the whole last day is allowed";
        else
            EXPECT_EQ(shown.GetStatus(), qv::OleDateTime::null) << "the picker does not show it";
    }
}

TEST_F(DateFieldsTest, ValueBeforeAndAfterInit) {
    XBaseDateTime frame;
    MakeFrame(frame);
    EXPECT_EQ(frame.GetValue().GetStatus(), qv::OleDateTime::invalid);
    EXPECT_FALSE(frame.SetValue(kMoment));
    EXPECT_TRUE(Log().empty());

    ASSERT_EQ(frame.Init(1, 0), 1);
    EXPECT_TRUE(frame.SetValue(kMoment));
    EXPECT_EQ(frame.GetValue(), kMoment);
    EXPECT_TRUE(frame.SetValue(Null()));
    EXPECT_EQ(std::tuple(frame.GetValue().GetStatus(), frame.IsNullDate()), std::tuple(qv::OleDateTime::null, 1));
    EXPECT_TRUE(frame.SetValue(kFeb29)) << "a refused date still answers true";
    EXPECT_EQ(frame.GetValue().GetStatus(), qv::OleDateTime::null) << "and the picker keeps what it showed";
    EXPECT_TRUE(Log().empty());
}

TEST_F(DateFieldsTest, FailuresAreLoggedWithTheirPositions) {
    struct Case { unsigned long line; const wchar_t* function; const wchar_t* message; } cases[] = {
        {104, L" XBaseDateTime::Init", L"Creating control failed"},                   // no frame
        {195, L" XBaseDateTime::ShowDataControl", L"DateTime_SetSystemtime failed"},  // no date, no check box
        {182, L" XBaseDateTime::ShowDataControl", L"DateTime_SetRange failed"},       // impossible bound
        {344, L" XBaseDateTime::GetValue",
         L"SendMessage(m_pk.m_hWnd, DTM_GETSYSTEMTIME, 0, (LPARAM)&sysTime) failed\nInvalid Date/Time"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.line);
        qv::Services::DefaultLogBook().Clear();
        PickerSpy spy;
        XBaseDateTime frame;
        if (c.line != 104) MakeFrame(frame);
        if (c.line == 195) frame.m_dtValue = Null();
        EXPECT_EQ(frame.Init(c.line == 195 ? 0 : 1, 0), c.line == 104 ? 0 : 1);
        if (c.line == 182) {
            EXPECT_EQ(frame.SetRange(4000000, 10, 0, 1), 0);
        }
        PickerSpy::failReads = c.line == 344;
        if (c.line == 344) {
            EXPECT_EQ(frame.GetValue().GetStatus(), qv::OleDateTime::invalid);
        }
        ASSERT_EQ(Log().size(), 1u);
        const std::wstring where = std::wstring(c.function) + L"|" + std::to_wstring(c.line);
        EXPECT_EQ(qvtest::Describe(Log()[0]), L"Quorvel|" + where + L"|" + c.message + L"|80004005");
    }
}

// ---- the compound date-and-time field ------------------------------------------

TEST_F(DateFieldsTest, CompoundLaysOutAtTheMinimumAndEndsAtTheCallersSize) {
    struct Case { RECT rect; bool stretch; RECT date, time; } cases[] = {
        {{20, 30, 170, 45}, false, {0, 0, 100, 20}, {105, 0, 205, 20}},  // 150 x 15: time picker cut off
        {{20, 30, 320, 55}, false, {0, 0, 100, 25}, {105, 0, 205, 25}},
        {{20, 30, 170, 45}, true, {0, 0, 72, 15}, {77, 0, 150, 15}},
    };
    for (const Case& c : cases) {
        XMFCBaseDateTimeEdit edit(c.stretch);
        MakeCompound(edit, c.rect);
        const std::vector<int> ids{edit.GetDlgCtrlID(), edit.GetDateField().GetDlgCtrlID(),
                                   edit.GetTimeField().GetDlgCtrlID()};
        EXPECT_EQ(ids, (std::vector<int>{300, 301, 302}));
        EXPECT_EQ(edit.GetWindowText(), L"XMFCBaseDateTimeEdit");
        const RECT frame = RectIn(host_, edit.m_hWnd);
        const RECT date = RectIn(edit.m_hWnd, edit.GetDateField().m_hWnd),
                   time = RectIn(edit.m_hWnd, edit.GetTimeField().m_hWnd);
        EXPECT_TRUE(::EqualRect(&frame, &c.rect)) << frame.right << "x" << frame.bottom;
        EXPECT_TRUE(::EqualRect(&date, &c.date)) << date.right << "x" << date.bottom;
        EXPECT_TRUE(::EqualRect(&time, &c.time)) << time.left << ".." << time.right << "x" << time.bottom;
    }
}

TEST_F(DateFieldsTest, CompoundReportsChangesAndFocusAsChanges) {
    XMFCBaseDateTimeEdit edit;
    MakeCompound(edit);
    ASSERT_EQ(edit.SetValue(kMoment), 1);
    std::vector<NMDATETIMECHANGE> seen;  // only the compound notifies the host here, with a whole NMDATETIMECHANGE
    qvtest::MessageSpy spy(host_, [&](UINT msg, WPARAM, LPARAM lp) {
        if (msg == WM_NOTIFY) seen.push_back(*reinterpret_cast<NMDATETIMECHANGE*>(lp));
    });

    edit.SetFocusToLast();
    ASSERT_EQ(::GetFocus(), edit.GetTimeField().m_hWnd);
    EXPECT_EQ(seen.size(), 1u) << "the time picker's focus is reported once";
    edit.SetFocusToFirst();
    EXPECT_EQ(seen.size(), 2u) << "so is the date picker's";
    ::SendMessageW(edit.GetDateField().m_hWnd, WM_KEYDOWN, VK_UP, 0);  // the user changes the date
    ASSERT_EQ(seen.size(), 3u) << "and the change";
    qv::OleDateTime now;
    ASSERT_EQ(edit.GetValue(now), 1);
    for (const NMDATETIMECHANGE& change : seen)
        EXPECT_EQ(std::tuple(change.nmhdr.hwndFrom, change.nmhdr.idFrom, change.nmhdr.code, change.dwFlags),
                  std::tuple(edit.m_hWnd, UINT_PTR{300}, static_cast<UINT>(DTN_DATETIMECHANGE), DWORD{GDT_VALID}));
    EXPECT_TRUE(SameMoment(qv::OleDateTime(seen.back().st), now)) << "the record carries the compound's value";
}

TEST_F(DateFieldsTest, TabWalksThroughBothPickers) {
    auto makeEdit = [this](int y) {
        return ::CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 10, y, 80, 20, host_, nullptr,
                                 nullptr, nullptr);
    };
    HWND before = makeEdit(10);
    XMFCBaseDateTimeEdit edit;
    MakeCompound(edit, RECT{10, 40, 250, 62});
    HWND after = makeEdit(70);
    const HWND self = edit.m_hWnd, date = edit.GetDateField().m_hWnd, time = edit.GetTimeField().m_hWnd;
    qvtest::HeldKey shift(VK_SHIFT, false);
    auto press = [&](bool withShift) {
        shift.Set(withShift);
        ::SendMessageW(::GetFocus(), WM_KEYDOWN, VK_TAB, 0);
    };
    auto enterFrom = [&](HWND from, bool withShift) {  // as the dialog manager's Tab does
        ::SetFocus(from);
        shift.Set(withShift);
        ::SetFocus(self);
    };
    struct Step {
        const char* what;
        std::function<void()> act;
        HWND focus;
    } steps[] = {
        {"into the compound", [&] { enterFrom(before, false); }, date},
        {"Tab in the date picker", [&] { press(false); }, time},
        {"Tab in the time picker", [&] { press(false); }, after},
        {"Shift+Tab into the compound", [&] { enterFrom(after, true); }, time},
        {"Shift+Tab in the time picker", [&] { press(true); }, date},
        {"Shift+Tab in the date picker", [&] { press(true); }, before},
        {"SetFocusToFirst", [&] { edit.SetFocusToFirst(); }, date},
        {"then Shift+Tab stops at the compound", [&] { press(true); }, self},
        {"and Tab goes back in", [&] { press(false); }, date},
    };
    for (const Step& s : steps) {
        s.act();
        EXPECT_EQ(::GetFocus(), s.focus) << s.what;
    }
    shift.Set(false);
    edit.EnableControl(false);
    EXPECT_FALSE(::IsWindowEnabled(date) || ::IsWindowEnabled(time));
}

TEST_F(DateFieldsTest, CompoundValueThroughTheLocalesTexts) {
    for (bool german : {true, false}) {
        SCOPED_TRACE(german ? "German" : "English");
        UseLocale(german);
        XMFCBaseDateTimeEdit edit;
        MakeCompound(edit);
        qv::OleDateTime v;
        EXPECT_EQ(edit.GetValue(v), 1);
        EXPECT_EQ(v.GetStatus(), qv::OleDateTime::null) << "a new compound shows no date";
        for (const qv::OleDateTime& moment : {qv::OleDateTime(1999, 12, 31, 0, 0, 0), kMoment}) {
            ASSERT_EQ(edit.SetValue(moment), 1);
            ASSERT_EQ(edit.GetValue(v), 1);
            EXPECT_TRUE(SameMoment(v, moment));
        }
        edit.GetDateField().SetValue(qv::OleDateTime(2010, 10, 1, 8, 0, 0));
        edit.GetTimeField().SetValue(qv::OleDateTime(1990, 1, 1, 17, 30, 5));
        ASSERT_EQ(edit.GetValue(v), 1);
        EXPECT_TRUE(SameMoment(v, qv::OleDateTime(2010, 10, 1, 17, 30, 5))) << "one picker's date, the other's time";
        EXPECT_EQ(edit.SetValue(Null()), 1);
        ASSERT_EQ(edit.GetValue(v), 1);
        EXPECT_EQ(v.GetStatus(), qv::OleDateTime::null);
        EXPECT_EQ(edit.SetValue(kFeb29), 0);
    }
}

// ---- the read-only date field -------------------------------------------------

template <class Field>
void CheckReadOnly(HWND host, int type, const wchar_t* text) {
    Field field(static_cast<DISPLAYTYPE>(type));
    unsigned int id = 500;
    ASSERT_EQ(field.Create(RECT{10, 100, 200, 122}, host, id, nullptr), 1);
    EXPECT_EQ(std::tuple(id, field.GetDlgCtrlID()), std::tuple(501u, 501));
    ASSERT_EQ(field.SetValue(kMoment), 1);
    EXPECT_EQ(Text(field.m_hWnd), text);
    qv::OleDateTime v;
    ASSERT_EQ(field.GetValue(v), 1);
    EXPECT_EQ(v, kMoment);
    for (const qv::OleDateTime& nothing : {kFeb29, Null()}) {
        EXPECT_EQ(field.SetValue(nothing), 0);
        EXPECT_EQ(Text(field.m_hWnd), L"");
    }
    HWND picker = ::GetDlgItem(host, 500);
    field.DestroyWindow();
    ::DestroyWindow(picker);
}

TEST_F(DateFieldsTest, ReadOnlyFieldShowsTheValueInTheUsersLocale) {
    // Each display type once (7 is unknown: the date), the colour class and the English locale once.
    struct Case { bool german, colour; int type; const wchar_t* text; } cases[] = {
        {true, false, DISPLAYTYPE_DATE, L"05.03.2024"}, {true, false, DISPLAYTYPE_TIME, L"13:45:30"},
        {true, false, 7, L"05.03.2024"}, {true, true, DISPLAYTYPE_DATETIME, L"05.03.2024 13:45:30"},
        {false, false, DISPLAYTYPE_DATETIME, L"3/5/2024 1:45:30 PM"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "display type " << c.type << (c.german ? " German" : " English"));
        UseLocale(c.german);
        if (c.colour) CheckReadOnly<XMFCBaseDateEditReadOnlyColor>(host_, c.type, c.text);
        else CheckReadOnly<XMFCBaseDateEditReadOnly>(host_, c.type, c.text);
    }
}

// ---- DDX_DateTime ----------------------------------------------------------------

class DateDialog : public qv::Dialog {
public:
    DateDialog() : Dialog(0) {}
    SYSTEMTIME when{2024, 3, 0, 5, 13, 45, 30, 0};
    int id = 7101;

protected:
    void DoDataExchange(qv::DataExchange* dx) override { qv::DDX_DateTime(dx, id, when); }
};

INT_PTR CALLBACK PlainProc(HWND, UINT msg, WPARAM, LPARAM) { return msg == WM_INITDIALOG; }

TEST_F(DateFieldsTest, DdxDateTimeInARealDialog) {
    HWND hwnd = ::CreateDialogParamW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(7100), host_, PlainProc, 0);
    ASSERT_NE(hwnd, nullptr);
    DateDialog dlg;
    ASSERT_TRUE(dlg.Attach(hwnd));
    HWND picker = dlg.GetDlgItem(7101);
    auto set = [picker](DWORD flag, SYSTEMTIME st) {
        ::SendMessageW(picker, DTM_SETSYSTEMTIME, flag, reinterpret_cast<LPARAM>(&st));
    };

    EXPECT_TRUE(dlg.UpdateData(false));
    SYSTEMTIME shown{};
    ASSERT_EQ(::SendMessageW(picker, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&shown)), GDT_VALID);
    EXPECT_EQ(qv::OleDateTime(shown), kMoment);

    const qv::OleDateTime typed(1999, 12, 31, 8, 0, 0);
    set(GDT_VALID, SYSTEMTIME{1999, 12, 0, 31, 8, 0, 0, 0});
    EXPECT_TRUE(dlg.UpdateData(true));
    EXPECT_EQ(qv::OleDateTime(dlg.when), typed);
    set(GDT_NONE, SYSTEMTIME{});
    EXPECT_TRUE(dlg.UpdateData(true));
    EXPECT_EQ(qv::OleDateTime(dlg.when), typed) << "no date keeps the value";

    dlg.id = 4242;  // no such item: nothing happens, nothing fails
    EXPECT_TRUE(dlg.UpdateData(true) && dlg.UpdateData(false));
    dlg.DestroyWindow();
}

}  // namespace
