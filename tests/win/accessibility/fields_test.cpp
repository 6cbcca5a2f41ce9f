// What a screen reader hears from the entry fields and labels: the label's
// text as the field's name, the field's text as its value, and no value
// change for a keystroke the field refused.
#include <oleacc.h>

#include <memory>

#include "quorvel/controls/base_edit.h"
#include "quorvel/controls/base_readonly.h"
#include "quorvel/controls/static_text.h"
#include "quorvel/masks/numeric.h"
#include "support/accessibility.h"
#include "support/host.h"

namespace {

using qvtest::AccessibleOf;
using qvtest::TextOf;
using qvtest::TypeChars;

using FieldsAccessibilityTest = qvtest::HostTest;

TEST_F(FieldsAccessibilityTest, FieldsAreNamedByTheirLabels) {
    struct Case {
        const wchar_t* label;
        const wchar_t* name;
    } cases[] = {
        {L"Due &date", L"Due date"},
        {L"Order number *", L"Order number"},
        {L"Cost && price", L"Cost & price"},
        {L"Line one\r\nline two", L"Line one line two"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.label);
        XBaseStaticText label;
        ASSERT_TRUE(label.Create(c.label, 100, Row(0), font_, host_));
        XMaskIntegerEdit field;
        ASSERT_TRUE(field.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER, Row(1), host_, 101));
        field.SetWindowTextW(L"42");
        const auto acc = AccessibleOf(field);
        ASSERT_TRUE(acc);
        EXPECT_EQ(acc.Name(), c.name);
        EXPECT_EQ(acc.Role(), ROLE_SYSTEM_TEXT);
        EXPECT_EQ(acc.Value(), L"42");
        EXPECT_EQ(AccessibleOf(label).Name(), c.name);
    }
}

TEST_F(FieldsAccessibilityTest, AReadOnlyFieldIsATextNamedByItsLabel) {
    XBaseStaticText label;
    ASSERT_TRUE(label.Create(L"&Planner", 100, Row(0), font_, host_));
    XBaseEditReadOnly field;
    ASSERT_TRUE(field.Create(L"M. Keller", 101, Row(1), font_, host_));
    const auto acc = AccessibleOf(field);
    EXPECT_EQ(acc.Name(), L"Planner");
    EXPECT_EQ(acc.Value(), L"M. Keller");
    EXPECT_EQ(acc.Role(), ROLE_SYSTEM_TEXT);
    EXPECT_TRUE(acc.State() & STATE_SYSTEM_READONLY);
    // Without a label before it the field has no name, rather than its value.
    ::DestroyWindow(label);
    EXPECT_EQ(AccessibleOf(field).Name(), L"");
    // Nor does a field after it take the read-only field's value for a label.
    XMaskIntegerEdit next;
    ASSERT_TRUE(next.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER, Row(2), host_, 102));
    EXPECT_EQ(AccessibleOf(next).Name(), L"");
}

TEST_F(FieldsAccessibilityTest, ARefusedKeystrokeAnnouncesNothing) {
    XMaskIntegerEdit field(3);
    ASSERT_TRUE(field.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER, Row(0), host_, 100));
    field.SetFocus();
    qvtest::WinEventRecorder events;
    TypeChars(field, L"12");
    const auto accepted = events.Events(field, EVENT_OBJECT_VALUECHANGE);
    events.Clear();
    TypeChars(field, L"x");   // not a digit
    TypeChars(field, L"3");
    TypeChars(field, L"4");   // beyond three digits
    EXPECT_EQ(TextOf(field), L"123");
    const auto after = events.Events(field, EVENT_OBJECT_VALUECHANGE);
    EXPECT_EQ(AccessibleOf(field).Value(), L"123");
    // Every value announced is one the field showed.
    EXPECT_FALSE(accepted.empty());
    EXPECT_EQ(after.size(), 1u);
}

}  // namespace
