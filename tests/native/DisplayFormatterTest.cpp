// The show control's text against a second, slower formatter built on std::chrono, and by the examples that the
// documentation gives.
#include "showcontrol/DisplayFormatter.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "headless/HeadlessRegionalNames.h"

namespace {

using kiv::DateTimeNumbers;
using kiv::DisplayFormatter;
using kiv::DisplaySettings;

const kiv::headless::HeadlessRegionalNames Names;

std::string Narrow(std::u16string_view text) {
    return {text.begin(), text.end()};
}

DisplaySettings Plain() {
    DisplaySettings settings;
    settings.upperCase = false;
    return settings;
}

std::string Padded(int value, bool pad) {
    return (pad && value < 10 ? "0" : "") + std::to_string(value);
}

std::string SlowWeekday(const DateTimeNumbers& n) {
    using namespace std::chrono;
    const int fullYear = n.year >= 100 ? n.year : n.year < 30 ? n.year + 2000 : n.year + 1900;
    const sys_days first = year{fullYear} / month{static_cast<unsigned>(n.month)} / day{1};
    return Narrow(Names.Weekday(static_cast<int>(weekday{first + days{n.day - 1}}.c_encoding()) + 1)) + ", ";
}

std::string SlowDate(const DisplaySettings& s, const DateTimeNumbers& n) {
    const std::string day = Padded(n.day, s.showLeadingZeros);
    const std::string month = Narrow(Names.AbbreviatedMonth(n.month));
    const std::string delimiter(1, static_cast<char>(s.dateDelimiter));
    const int year = !s.showCentury ? n.year % 100 : n.year < 100 ? n.year + 2000 : n.year;
    std::string text = (s.showLongDay ? SlowWeekday(n) : "") +
                       (s.dayFirst ? day + delimiter + month : month + delimiter + day) + delimiter +
                       Padded(year, true);
    if (s.upperCase) text = Narrow(Names.ToUpper(std::u16string(text.begin(), text.end())));
    return text;
}

std::string SlowTime(const DisplaySettings& s, const DateTimeNumbers& n) {
    const std::string delimiter(1, static_cast<char>(s.timeDelimiter));
    const int hour = !s.twelveHourClock ? n.hour : n.hour % 12 == 0 ? 12 : n.hour % 12;
    const std::string amPm = Narrow(s.amPmFormat);
    std::string text =
        (s.showLongDay ? SlowWeekday(n) : "") + Padded(hour, s.showLeadingZeros) + delimiter + Padded(n.minute, true);
    if (s.showSeconds) text += delimiter + Padded(n.second, true);
    if (s.twelveHourClock)
        text += " " + (n.hour < 12 ? amPm.substr(0, amPm.find(',')) : amPm.substr(amPm.rfind(',') + 1));
    if (s.upperCase) text = Narrow(Names.ToUpper(std::u16string(text.begin(), text.end())));
    return text;
}

DisplaySettings FromBits(unsigned bits) {
    DisplaySettings settings;
    settings.dayFirst = bits & 1;
    settings.twelveHourClock = bits & 2;
    settings.showCentury = bits & 4;
    settings.showLeadingZeros = bits & 8;
    settings.showLongDay = bits & 16;
    settings.showSeconds = bits & 32;
    settings.upperCase = bits & 64;
    return settings;
}

TEST(DisplayFormatter, DocumentedDateExamplesHold) {
    struct Row {
        DateTimeNumbers numbers;
        DisplaySettings settings;
        const char* text;
    };
    DisplaySettings dayFirst = Plain();
    dayFirst.dayFirst = true;
    DisplaySettings bare = dayFirst;
    bare.showLeadingZeros = bare.showCentury = false;
    DisplaySettings loud = dayFirst;
    loud.showLongDay = loud.upperCase = true;
    const DateTimeNumbers fifth{0, 0, 0, 11, 5, 2026};
    const Row rows[] = {{fifth, dayFirst, "05-Nov-2026"},
                        {fifth, Plain(), "Nov-05-2026"},
                        {fifth, bare, "5-Nov-26"},
                        {{0, 0, 0, 11, 5, 7}, dayFirst, "05-Nov-2007"},
                        {fifth, loud, "THURSDAY, 05-NOV-2026"},
                        {{0, 0, 0, 1, 1, 99}, dayFirst, "01-Jan-2099"},
                        {{0, 0, 0, 1, 1, 150}, dayFirst, "01-Jan-150"},
                        {{0, 0, 0, 1, 1, 1907}, bare, "1-Jan-07"}};
    for (const Row& row : rows) {
        DisplayFormatter formatter;
        formatter.Configure(row.settings, Names);
        EXPECT_EQ(Narrow(formatter.FormatDateText(row.numbers)), row.text);
    }
}

TEST(DisplayFormatter, DocumentedTimeExamplesHold) {
    DisplaySettings seconds = Plain();
    seconds.showSeconds = true;
    seconds.showLeadingZeros = false;
    DisplaySettings day = Plain();
    day.twelveHourClock = false;
    day.showLeadingZeros = false;
    DisplaySettings blankField = Plain();
    blankField.amPmFormat = u"AM, PM";

    DisplayFormatter formatter;
    formatter.Configure(seconds, Names);
    EXPECT_EQ(Narrow(formatter.FormatTimeText({0, 5, 9, 1, 1, 0})), "12:05:09 AM");
    formatter.Configure(Plain(), Names);
    EXPECT_EQ(Narrow(formatter.FormatTimeText({13, 5, 0, 1, 1, 0})), "01:05 PM");
    formatter.Configure(day, Names);
    EXPECT_EQ(Narrow(formatter.FormatTimeText({13, 5, 0, 1, 1, 0})), "13:05");
    EXPECT_EQ(Narrow(formatter.FormatCaption(kiv::sdtShowTimeOnly, true, {7, 0, 0, 1, 1, 0})), " 7:00 ");
    EXPECT_EQ(Narrow(formatter.FormatCaption(3, false, {})), "?????");
    EXPECT_EQ(Narrow(formatter.FormatCaption(0, true, {})), " ????? ");
    formatter.Configure(blankField, Names);
    EXPECT_EQ(Narrow(formatter.FormatTimeText({12, 0, 0, 1, 1, 0})), "12:00  PM");
}

TEST(DisplayFormatter, ADayPastTheMonthsEndShowsAsSentButTakesTheWeekdayOfTheDateItRunsOnTo) {
    DisplaySettings settings = Plain();
    settings.showLongDay = settings.dayFirst = true;
    DisplayFormatter formatter;
    formatter.Configure(settings, Names);
    EXPECT_EQ(Narrow(formatter.FormatDateText({0, 0, 0, 2, 31, 2026})), "Tuesday, 31-Feb-2026");   // 3 March
    EXPECT_EQ(Narrow(formatter.FormatDateText({0, 0, 0, 2, 31, 2024})), "Saturday, 31-Feb-2024");  // 2 March
}

TEST(DisplayFormatter, ClampingKeepsTheNearerBoundButSendsABadYearTo1980) {
    DateTimeNumbers low{-1, -5, -9, 0, -3, -1};
    kiv::ClampDateTime(low, true);
    EXPECT_EQ(low, (DateTimeNumbers{0, 0, 0, 1, 1, 1980}));
    DateTimeNumbers high{24, 60, 75, 13, 32, 3000};
    kiv::ClampDateTime(high, false);
    EXPECT_EQ(high, (DateTimeNumbers{23, 59, 75, 12, 31, 1980}));
    kiv::ClampDateTime(high, true);
    EXPECT_EQ(high.second, 59);
}

TEST(DisplayFormatter, EveryDayOfThreeThousandYearsAgreesWithTheSlowFormatter) {
    DisplaySettings settings = Plain();
    settings.showLongDay = true;
    DisplayFormatter formatter;
    formatter.Configure(settings, Names);
    for (int year = 0; year <= 2999; ++year) {
        for (int month = 1; month <= 12; ++month) {
            for (int day = 1; day <= 31; ++day) {
                const DateTimeNumbers numbers{0, 0, 0, month, day, year};
                ASSERT_EQ(Narrow(formatter.FormatDateText(numbers)), SlowDate(settings, numbers))
                    << year << '-' << month << '-' << day;
            }
        }
    }
}

TEST(DisplayFormatter, EverySecondOfADayAgreesWithTheSlowFormatterOnBothClocks) {
    for (const bool twelveHours : {false, true}) {
        DisplaySettings settings = Plain();
        settings.showSeconds = true;
        settings.twelveHourClock = twelveHours;
        DisplayFormatter formatter;
        formatter.Configure(settings, Names);
        for (int second = 0; second < 86400; ++second) {
            const DateTimeNumbers numbers{second / 3600, second / 60 % 60, second % 60, 1, 1, 2026};
            ASSERT_EQ(Narrow(formatter.FormatTimeText(numbers)), SlowTime(settings, numbers)) << second;
        }
    }
}

TEST(DisplayFormatter, EveryCombinationOfFlagsAgreesWithTheSlowFormatter) {
    const DateTimeNumbers samples[] = {
        {0, 0, 0, 1, 1, 0}, {12, 7, 5, 9, 9, 99}, {23, 59, 59, 12, 31, 2999}, {9, 30, 1, 2, 29, 150}};
    for (unsigned bits = 0; bits < 128; ++bits) {
        const DisplaySettings settings = FromBits(bits);
        DisplayFormatter formatter;
        formatter.Configure(settings, Names);
        for (const DateTimeNumbers& numbers : samples) {
            EXPECT_EQ(Narrow(formatter.FormatDateText(numbers)), SlowDate(settings, numbers)) << bits;
            EXPECT_EQ(Narrow(formatter.FormatTimeText(numbers)), SlowTime(settings, numbers)) << bits;
        }
    }
}

TEST(DisplayFormatter, AnAmPmTextOfAnyLengthFits) {
    const std::u16string longField(100000, u'm');
    const std::u16string amPm = u"a," + longField;
    DisplaySettings settings;
    settings.amPmFormat = amPm;
    settings.showLongDay = true;
    DisplayFormatter formatter;
    formatter.Configure(settings, Names);
    EXPECT_EQ(formatter.FormatCaption(kiv::sdtShowTimeOnly, true, {13, 0, 0, 9, 9, 2026}).size(),
              std::u16string_view(u" WEDNESDAY, 01:00  ").size() + longField.size());
}

}  // namespace
