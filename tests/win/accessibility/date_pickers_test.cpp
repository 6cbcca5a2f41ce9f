// What a screen reader hears from the date and time fields: the label as the
// name, the date or time the picker shows as the value ("No date" while the
// field holds none), and every change, by the host or the user, announced.
#include <windows.h>
#include <commctrl.h>
#include <oleacc.h>

#include <functional>
#include <string>

#include "quorvel/controls/static_text.h"
#include "quorvel/masks/date_edits.h"
#include "quorvel/masks/datetime_field.h"
#include "support/accessibility.h"
#include "support/host.h"

namespace {

using qvtest::AccessibleOf;

qv::OleDateTime Null() {
    qv::OleDateTime v;
    v.SetStatus(qv::OleDateTime::null);
    return v;
}

const qv::OleDateTime kMoment(2024, 3, 5, 13, 45, 30);

// The moment as the user's locale writes it: what the pickers show.
std::wstring DateText() {
    SYSTEMTIME st{};
    kMoment.GetAsSystemTime(st);
    wchar_t text[64] = {};
    ::GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &st, nullptr, text, 64);
    return text;
}

std::wstring TimeText() {
    SYSTEMTIME st{};
    kMoment.GetAsSystemTime(st);
    wchar_t text[64] = {};
    ::GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &st, nullptr, text, 64);
    return text;
}

size_t ValueChanges(qvtest::WinEventRecorder& events, HWND hwnd) {
    size_t n = 0;
    for (const auto& e : events.Events(hwnd, EVENT_OBJECT_VALUECHANGE)) n += e.object == OBJID_CLIENT ? 1 : 0;
    return n;
}

class DateFieldsAccessibilityTest : public qvtest::HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        ASSERT_TRUE(label_.Create(L"&Due date *", 90, Row(0), font_, host_));
    }
    XBaseStaticText label_;
};

TEST_F(DateFieldsAccessibilityTest, FieldsAreNamedByTheirLabelAndTellWhatTheyShow) {
    // Each kind of field right after the label: the window a reader asks
    // for the value, the picker it asks for the name and role, its role, how
    // to set a value and what the field then shows.
    struct Field {
        HWND valued = nullptr;
        HWND picker = nullptr;
        long role = 0;
        std::function<void(const qv::OleDateTime&)> set;
        std::wstring shown;
    };
    XBaseDateTime frame;
    XMFCBaseDateEdit date;
    XMFCBaseTimeEdit time;
    XMFCBaseDateTimeEdit compound;
    XMFCBaseDateEditReadOnly readOnly(DISPLAYTYPE_DATE);
    unsigned int id = 100;
    const struct {
        const char* kind;
        bool holdsNoDate;
        std::function<Field()> make;
    } cases[] = {
        {"framed picker", true,
         [&] {
             EXPECT_TRUE(frame.Create(WS_CHILD | WS_VISIBLE, Row(1), host_, 100));
             EXPECT_EQ(frame.Init(1, 0), 1);
             return Field{frame, frame.GetPicker(), ROLE_SYSTEM_DROPLIST,
                          [&](const qv::OleDateTime& v) { frame.SetValue(v); }, DateText()};
         }},
        {"date edit", true,
         [&] {
             EXPECT_EQ(date.Create(true, Row(1), host_, 100, font_), 1);
             return Field{date, date, ROLE_SYSTEM_DROPLIST, [&](const qv::OleDateTime& v) { date.SetValue(v); },
                          DateText()};
         }},
        {"time edit", false,
         [&] {
             EXPECT_EQ(time.Create(Row(1), host_, 100, font_), 1);
             return Field{time, time, ROLE_SYSTEM_SPINBUTTON, [&](const qv::OleDateTime& v) { time.SetValue(v); },
                          TimeText()};
         }},
        {"compound", true,
         [&] {
             EXPECT_EQ(compound.Create(true, RECT{10, 40, 300, 62}, host_, id, font_), 1);
             return Field{compound, compound.GetTimeField(), ROLE_SYSTEM_SPINBUTTON,
                          [&](const qv::OleDateTime& v) { compound.SetValue(v); }, DateText() + L" " + TimeText()};
         }},
        {"read-only field", true,
         [&] {
             id = 100;
             EXPECT_EQ(readOnly.Create(Row(1), host_, id, font_), 1);
             return Field{readOnly, readOnly, ROLE_SYSTEM_TEXT,
                          [&](const qv::OleDateTime& v) { readOnly.SetValue(v); }, DateText()};
         }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.kind);
        const Field field = c.make();
        ASSERT_NE(field.picker, nullptr);
        const auto valued = AccessibleOf(field.valued);
        const auto picker = AccessibleOf(field.picker);
        qvtest::WinEventRecorder events;
        events.Clear();
        field.set(kMoment);
        EXPECT_EQ(ValueChanges(events, field.valued), 1u) << "the host's value is announced";
        EXPECT_EQ(valued.Name(), L"Due date");
        EXPECT_EQ(picker.Name(), L"Due date") << "a picker inside a field takes the field's label";
        EXPECT_EQ(picker.Role(), field.role);
        EXPECT_EQ(valued.Value(), field.shown);
        if (field.valued != field.picker) {
            EXPECT_EQ(valued.Role(), ROLE_SYSTEM_GROUPING);
        }
        if (c.holdsNoDate) {
            field.set(Null());
            EXPECT_EQ(valued.Value(), L"No date");
        }
        ::DestroyWindow(field.valued);
    }
}

TEST_F(DateFieldsAccessibilityTest, TheUsersChangesAreAnnounced) {
    XBaseDateTime frame;
    ASSERT_TRUE(frame.Create(WS_CHILD | WS_VISIBLE, Row(1), host_, 100));
    ASSERT_EQ(frame.Init(1, 0), 1);
    frame.SetValue(kMoment);
    XMFCBaseDateTimeEdit compound;
    unsigned int id = 200;
    ASSERT_EQ(compound.Create(false, RECT{10, 80, 300, 102}, host_, id, font_), 1);
    compound.SetValue(kMoment);
    const struct {
        const char* what;
        HWND picker;
        HWND announcing;
        size_t announced;
    } cases[] = {
        {"the arrow key in a picker", frame.GetPicker(), frame.GetPicker(), 1},
        {"the arrow key in the compound", compound.GetDateField(), compound, 1},
        {"a key that changes nothing", frame.GetPicker(), frame.GetPicker(), 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        ::SetFocus(c.picker);
        qvtest::Pump(20);
        qvtest::WinEventRecorder events;
        events.Clear();
        ::SendMessageW(c.picker, WM_KEYDOWN, c.announced ? VK_UP : VK_SHIFT, 0);
        EXPECT_EQ(ValueChanges(events, c.announcing), c.announced);
    }
}

}  // namespace
