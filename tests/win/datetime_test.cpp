// The date-time value: text in the user's locale both ways, strftime
// formats, the null and invalid states, and ordering before 1899-12-30.
#include "quorvel/platform/datetime.h"

#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "support/host.h"

namespace {

using DateTimeTest = ::testing::Test;

TEST_F(DateTimeTest, FormatAndParseFollowTheUserLocale) {
    struct Case { const wchar_t* shortDate; const wchar_t* timeFormat; DWORD flags; const wchar_t* text; } cases[] = {
        {L"dd.MM.yyyy", L"HH:mm:ss", VAR_DATEVALUEONLY, L"05.03.2024"},
        {L"yyyy-MM-dd", L"HH:mm:ss", VAR_DATEVALUEONLY, L"2024-03-05"},
        {L"M/d/yyyy", L"HH:mm:ss", VAR_DATEVALUEONLY, L"3/5/2024"},
        {L"dd.MM.yyyy", L"HH:mm:ss", VAR_TIMEVALUEONLY, L"13:45:30"},
        {L"dd.MM.yyyy", L"HH:mm:ss", 0, L"05.03.2024 13:45:30"}, {L"d/M/yyyy", L"H.mm.ss", 0, L"5/3/2024 13.45.30"},
    };
    const qv::OleDateTime moment(2024, 3, 5, 13, 45, 30);
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << std::string(c.text, c.text + wcslen(c.text)));
        qvtest::LocaleOverride locale;
        ASSERT_TRUE(locale.Set(LOCALE_SSHORTDATE, c.shortDate) && locale.Set(LOCALE_STIMEFORMAT, c.timeFormat));
        EXPECT_EQ(moment.Format(c.flags), c.text);

        qv::OleDateTime parsed;
        ASSERT_TRUE(parsed.ParseDateTime(c.text, c.flags));
        EXPECT_EQ(parsed.GetStatus(), qv::OleDateTime::valid);
        if (c.flags != VAR_TIMEVALUEONLY) {  // day and month read in the locale's order
            EXPECT_EQ(std::tuple(parsed.GetYear(), parsed.GetMonth(), parsed.GetDay()), std::tuple(2024, 3, 5));
        }
        if (c.flags != VAR_DATEVALUEONLY) {
            EXPECT_EQ(std::tuple(parsed.GetHour(), parsed.GetSecond()), std::tuple(13, 30));
        }
    }
}

TEST_F(DateTimeTest, NullAndInvalidValuesHaveNoText) {
    qv::OleDateTime null;
    null.SetStatus(qv::OleDateTime::null);
    const qv::OleDateTime invalid(2023, 2, 29, 0, 0, 0);
    const qv::OleDateTime outOfRange(3000000.0);
    for (const qv::OleDateTime* v : {static_cast<const qv::OleDateTime*>(&null), &invalid, &outOfRange}) {
        EXPECT_EQ(v->Format() + v->Format(L"%Y"), L"");
        EXPECT_EQ(std::tuple(v->GetYear(), v->GetDayOfWeek()), std::tuple(-1, -1));
        SYSTEMTIME st{};
        EXPECT_FALSE(v->GetAsSystemTime(st));
    }

    qv::OleDateTime parsed(2024, 1, 1, 0, 0, 0);
    for (const wchar_t* text : {L"not a date", L"", L"31.31.2024 99:00"}) {
        EXPECT_FALSE(parsed.ParseDateTime(text));
        EXPECT_EQ(parsed.GetStatus(), qv::OleDateTime::invalid);
    }
    EXPECT_FALSE(parsed.ParseDateTime(nullptr));
}

TEST_F(DateTimeTest, StrftimeFormats) {
    struct Case { qv::OleDateTime value; const wchar_t* format; const wchar_t* text; } cases[] = {
        {qv::OleDateTime(2024, 3, 5, 13, 45, 30), L"%d.%m.%Y %H:%M:%S", L"05.03.2024 13:45:30"},
        {qv::OleDateTime(2024, 3, 5, 13, 45, 30), L"%j %w %y %I%p", L"065 2 24 01PM"},
        {qv::OleDateTime(1850, 7, 1, 0, 0, 0), L"%Y-%m-%d", L"1850-07-01"},
        {qv::OleDateTime(2024, 3, 5, 0, 0, 0), L"100%%", L"100%"},
        {qv::OleDateTime(2024, 3, 5, 0, 0, 0), L"%Q", L""},  // unknown conversion
        {qv::OleDateTime(2024, 3, 5, 0, 0, 0), L"%", L""}, {qv::OleDateTime(2024, 3, 5, 0, 0, 0), L"", L""},
    };
    for (const Case& c : cases) EXPECT_EQ(c.value.Format(c.format), c.text) << c.value.m_dt;
}

// The day arithmetic is the model's (oledate_test); here the setters' status
// and the SYSTEMTIME conversions.
TEST_F(DateTimeTest, SettersAndSystemTime) {
    qv::OleDateTime v;
    EXPECT_TRUE(v.SetTime(6, 0, 0));
    EXPECT_DOUBLE_EQ(v.m_dt, 0.25) << "a time alone sits on day 0";
    EXPECT_FALSE(v.SetDate(2024, 2, 30));
    EXPECT_EQ(v.GetStatus(), qv::OleDateTime::invalid);
    EXPECT_TRUE(v.SetDateTime(1899, 12, 29, 6, 0, 0));
    SYSTEMTIME st{};
    ASSERT_TRUE(v.GetAsSystemTime(st));
    EXPECT_EQ(std::tuple(st.wYear, st.wDay, st.wHour, st.wDayOfWeek), std::tuple(1899, 29, 6, 5)) << "a Friday";
    EXPECT_EQ(qv::OleDateTime(st), v);
}

TEST_F(DateTimeTest, OrderingFollowsTheTimeLine) {
    const qv::OleDateTime morning(1899, 12, 29, 6, 0, 0);    // -1.25
    const qv::OleDateTime evening(1899, 12, 29, 18, 0, 0);   // -1.75
    const qv::OleDateTime nextDay(1899, 12, 30, 1, 0, 0);
    EXPECT_EQ((std::vector<bool>{morning < evening, evening < nextDay, evening <= morning}),
              (std::vector<bool>{true, true, false}));

    qv::OleDateTime null1, null2;
    null1.SetStatus(qv::OleDateTime::null);
    null2.SetStatus(qv::OleDateTime::null);
    null2.m_dt = 5;
    EXPECT_TRUE(null1 == null2) << "two null values are equal whatever their number";
    EXPECT_EQ((std::vector<bool>{null1 != morning, null1 < morning, morning < null1}),
              (std::vector<bool>{true, false, false}));
}

}  // namespace
