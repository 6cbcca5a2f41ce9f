// The numeric fields on real EDIT controls: their patterns while typing,
// their limits when they are left, values written and read in the user's
// locale (also one with a decimal comma), the decimal fields' text
// messages, the digit fields and the colour variants.
#include "quorvel/masks/numeric.h"

#include <functional>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "support/host.h"

namespace {

using qvtest::TextOf;
using qvtest::TypeChars;

using MakeField = std::function<std::unique_ptr<XBaseEdit>()>;

template <class Field, class... Args>
MakeField Make(Args... args) {
    return [=] { return std::make_unique<Field>(args...); };
}

class NumericTest : public qvtest::HostTest {
protected:
    // Creates `field` empty (or with `text`) and gives it the focus.
    void Place(XBaseEdit& field, const wchar_t* text = L"", int row = 0) {
        ASSERT_TRUE(field.Create(text, 100 + row, Row(row), font_, host_));
        field.SetFocus();
        field.SetSel(-1, -1);
    }

};

TEST_F(NumericTest, EachFieldTypesWhatItsPatternAllows) {
    struct Case { const char* name; MakeField make; const wchar_t* keys; const wchar_t* result; } cases[] = {
        {"integer(3)", Make<XMaskIntegerEdit>(3), L"1234", L"123"},
        {"signed integer", Make<XMaskSignedIntegerEdit>(), L"-", L"-"},
        {"float", Make<XMaskFloatEdit>(), L"1;5e3", L"1.5e3"},
        {"signed float(4, 0)", Make<XMaskSignedFloatEdit>(4, 0), L"-12.5", L"-125"},
        {"signed float(4, 2)", Make<XMaskSignedFloatEditColor>(4, 2), L"+0,25", L"+0.25"},
        {"number", Make<XNumberEdit>(), L"1a2\x16", L"12"}, {"hex", Make<XHEXEditColor>(), L"fG9A\x03", L"f9A"},
        {"binary", Make<XBinEdit>(), L"0121\b", L"01"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        std::unique_ptr<XBaseEdit> field = c.make();
        Place(*field);
        TypeChars(*field, c.keys);
        EXPECT_EQ(TextOf(*field), c.result);
    }
}

TEST_F(NumericTest, LeavingOutOfRangeShowsTheBoxAndKeepsTheFocus) {
    // shown nullptr: no box, the focus moves on
    struct Case { const char* name; MakeField make; double lower, upper; const wchar_t *text, *shown; } cases[] = {
        {"integer", Make<XMaskIntegerEdit>(), 10, 20, L"25", L"20"},
        {"signed integer", Make<XMaskSignedIntegerEdit>(), -5, 5, L"-", nullptr},
        {"signed integer", Make<XMaskSignedIntegerEditColor>(), 1, 5, L"-", L"1"},
        {"float", Make<XMaskFloatEditColor>(5, 2), 0, 1.5, L"2", L"1.5"},
        {"signed float", Make<XMaskSignedFloatEdit>(4, 1), -10, 10, L"99.5", L"99.5"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.name << " " << c.text);
        rec_->boxes.boxes.clear();
        std::unique_ptr<XBaseEdit> field = c.make();
        auto* masked = static_cast<XMaskBaseEdit*>(field.get());
        masked->SetLimits(c.lower, c.upper);
        XBaseEdit other;
        Place(other, L"", 1);
        Place(*field, c.text);
        other.SetFocus();
        if (!c.shown) {
            EXPECT_TRUE(rec_->boxes.boxes.empty());
            EXPECT_EQ(std::tuple(::GetFocus(), TextOf(*field)), std::tuple(other.m_hWnd, std::wstring(c.text)));
            continue;
        }
        ASSERT_EQ(rec_->boxes.boxes.size(), 1u);
        EXPECT_EQ(rec_->boxes.boxes[0].text, L"Value out of range");
        EXPECT_EQ(std::tuple(::GetFocus(), TextOf(*field)), std::tuple(field->m_hWnd, std::wstring(c.shown)));
        EXPECT_EQ(qvtest::SelOf(*field), std::pair(0, static_cast<int>(wcslen(c.shown))));
    }
}

TEST_F(NumericTest, ValuesAreWrittenAndReadInTheUsersLocale) {
    for (const wchar_t* sep : {L".", L","}) {
        SCOPED_TRACE(testing::Message() << "separator " << sep);
        qvtest::LocaleOverride locale;
        ASSERT_TRUE(locale.Set(LOCALE_SDECIMAL, sep));
        XMaskFloatEdit amount(5, 2);
        Place(amount);
        EXPECT_EQ(amount.SetValue(3.14159), 1);
        EXPECT_EQ(TextOf(amount), std::wstring(L"3") + sep + L"14");
        EXPECT_DOUBLE_EQ(amount.GetValue(), 3.14);
        EXPECT_EQ(amount.SetValue(123456.0), 0);  // six integer digits: refused and emptied
        EXPECT_EQ(TextOf(amount), L"");
        TypeChars(amount, L"0.5");  // the typed point becomes the user's separator
        EXPECT_EQ(TextOf(amount), std::wstring(L"0") + sep + L"5");
        EXPECT_DOUBLE_EQ(amount.GetValue(), 0.5);
    }
    XMaskIntegerEdit count(3);
    Place(count);
    EXPECT_EQ(count.SetValue(1234u), 0);
    EXPECT_EQ(TextOf(count), L"");
    XMaskSignedIntegerEdit offset;
    Place(offset, L"", 1);
    EXPECT_EQ(offset.SetValue(-7), 1);
    EXPECT_EQ(offset.GetValue(), -7);
}

TEST_F(NumericTest, TrimRightAndTheDecimalFieldsTextMessages) {
    XMaskFloatEdit amount;
    Place(amount, L"1.500");
    amount.TrimRight();
    EXPECT_EQ(TextOf(amount), L"1.5");

    // WM_SETTEXT replaces the selection; WM_GETTEXT copies what fits.
    amount.SetWindowTextW(L"12");
    amount.SetSel(1, 1);
    EXPECT_TRUE(::SetWindowTextW(amount, L"9"));
    EXPECT_EQ(TextOf(amount), L"192");
    wchar_t buf[8] = L"xxxxxxx";
    EXPECT_EQ(amount.SendMessage(WM_GETTEXT, 3, reinterpret_cast<LPARAM>(buf)), 2);
    EXPECT_STREQ(buf, L"19");
    EXPECT_EQ(amount.SendMessage(WM_GETTEXT, 0, reinterpret_cast<LPARAM>(buf)), 0);
    EXPECT_EQ(amount.SendMessage(WM_GETTEXT, 8, 0), 0);
}

TEST(NumericColours, CountingConstructorsKeepTheirMask) {
    const XMaskIntegerEditColor integer(3);
    const XMaskFloatEditColor decimal(5, 2);
    EXPECT_EQ(integer.GetMask(), L"#3?");
    EXPECT_EQ(decimal.GetMask(), L"#5?(.|,)(#2?)(e#?)");
}

}  // namespace
