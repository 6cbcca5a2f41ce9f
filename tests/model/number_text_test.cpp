#include "quorvel/frame/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

struct ParseCase { const wchar_t* text; wchar_t sep; bool ok; double value; };

const ParseCase kParseCases[] = {
    {L"12", L',', true, 12.0},        {L" \t-1,5 ", L',', true, -1.5},
    {L"+1.25", L',', true, 1.25},     {L"1.", L'.', true, 1.0},
    {L",5", L',', true, 0.5},         {L"2,5e-3", L',', true, 0.0025},
    {L"1E+2", L'.', true, 100.0},     {L"1.5", L'5', true, 1.5},  // a digit is no separator
    {L"", L'.', false, 0},            {L"  ", L'.', false, 0},
    {L"-", L'.', false, 0},           {L",", L',', false, 0},
    {L"1,5", L'.', false, 0},         {L"1.234,5", L',', false, 0},
    {L"1,5.0", L',', false, 0},       {L"1 000", L'.', false, 0},
    {L"1e", L'.', false, 0},          {L"1e+", L'.', false, 0},
    {L"e5", L'.', false, 0},          {L"12x", L'.', false, 0},
    {L"--1", L'.', false, 0},         {L"0x10", L'.', false, 0},
    {L"inf", L'.', false, 0},         {L"nan", L'.', false, 0},
    {L"1e999", L'.', false, 0},       {L"\uFF11", L'.', false, 0},  // fullwidth digit
};

TEST(ParseLocaleDouble, AcceptsOnlyWellFormedNumbers) {
    for (const ParseCase& c : kParseCases) {
        double value = 42.0;
        EXPECT_EQ(qv::ParseLocaleDouble(c.text, c.sep, value), c.ok) << c.text;
        EXPECT_EQ(value, c.ok ? c.value : 42.0) << c.text;
    }
}

// text nullptr: refused
struct FormatCase { const wchar_t* format; double value; const wchar_t* text; };

const FormatCase kFormatCases[] = {
    {L"%g", 1.5, L"1,5"}, {L"%.3f", -2.0, L"-2,000"}, {L"%e", 12345.678, L"1,234568e+04"},
    {L"%5.2e", 1e-300, L"1,00e-300"}, {L"%G", 1e-20, L"1E-20"}, {L"%+08.2lf", 3.14159, L"+0003,14"},
    {L"%-8.1f|", 2.25, L"2,2     |"}, {L"%#.0f", 3.0, L"3,"}, {L"\u20AC %.1f %% v.", 0.25, L"\u20AC 0,2 % v."},
    {L"", 1.0, nullptr},     {L"50%%", 1.0, nullptr},  {L"%f %f", 1.0, nullptr},
    {L"%d", 1.0, nullptr},   {L"%s", 1.0, nullptr},    {L"%a", 1.0, nullptr},
    {L"%*f", 1.0, nullptr},  {L"%Lf", 1.0, nullptr},   {L"%.1000f", 1.0, nullptr},
    {L"%f%", 1.0, nullptr},  {L"%f", std::numeric_limits<double>::infinity(), nullptr},
    {L"%f", std::nan(""), nullptr},
};

TEST(FormatLocaleDouble, FormatsOneFloatingConversion) {
    for (const FormatCase& c : kFormatCases) {
        std::wstring text = L"stale";
        EXPECT_EQ(qv::FormatLocaleDouble(text, c.value, c.format, L','), c.text != nullptr) << c.format;
        EXPECT_EQ(text, c.text ? c.text : L"stale") << c.format;
    }
}

TEST(CheckRangeText, ClosedRange) {
    const struct { double lower, upper; const wchar_t* text; bool inside; } cases[] = {
        {-1.5, 2.5, L"-1,5", true},  {-1.5, 2.5, L"2.5", true}, {-1.5, 2.5, L"2,51", false},
        {-1.5, 2.5, L"-1.6", false}, {-1.5, 2.5, L"", false},   {3.0, 2.0, L"2.5", false},
    };
    for (const auto& c : cases) EXPECT_EQ(qv::CheckRangeText(c.lower, c.upper, c.text, L','), c.inside) << c.text;
}

TEST(CheckCharacters0to9AtoZ, DigitsAndUpperLetters) {
    for (const wchar_t* good : {L"", L"AZ09QX7"}) EXPECT_TRUE(qv::CheckCharacters0to9AtoZ(good)) << good;
    for (const wchar_t* bad : {L"a", L"AB C", L"A-1", L"\u00C4", L"@", L"[", L"/", L":"})
        EXPECT_FALSE(qv::CheckCharacters0to9AtoZ(bad)) << bad;
}

}  // namespace
