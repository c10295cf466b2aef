// Screen files: what is written back, what is reported, and that no text does harm.
#include "screenhost/ScreenFile.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "screenhost/Utf8.h"

namespace screenhost {
namespace {

using namespace std::string_literals;

const char* const Sample =
    "; A comment\r\n"
    "Title = \"Device \xC3\xBChr\"  ; trailing words\r\n"
    "\r\n"
    "[SetClock]\r\n"
    "  ProgID =\"KivDateTime.KivSetDateTime\"\r\n"
    "BackColor = 0x8000000f\r\n"
    "Font = Font(\"Tahoma\", 8.25, Italic)\r\n"
    "From_The_Future = 1e3\r\n"
    "\"odd key\" = \"\\u0007\"\r\n"
    "Mode = 1";

ScreenValue RoundTrip(const ScreenValue& value) {
    const std::string text = FormatValue(value);
    TextCursor cursor(text);
    ScreenValue result = ReadValue(cursor);
    cursor.ExpectEnd();
    return result;
}

TEST(ScreenFile, UnchangedTextIsWrittenBackByteForByte) {
    const std::string texts[] = {
        "",
        "\n",
        "\r\n\n\r",
        Sample,
        std::string("\xEF\xBB\xBF") + Sample,
        "[A]\n]\n[A]\n= \"\n\xFF\xFE\n[",
        "a=1\r",
        "nul = \"\0\"\n\0\n[B]\n"s,
        "[A]\nx = 1\nx = 2\n; end",
    };
    for (const std::string& text : texts) EXPECT_EQ(ScreenFile::Parse(text).Text(), text);
}

TEST(ScreenFile, ValuesReadBackAsTheyWereWritten) {
    const ScreenValue values[] = {
        true,
        false,
        0,
        -1,
        std::numeric_limits<std::int32_t>::min(),
        std::numeric_limits<std::int32_t>::max(),
        static_cast<std::int32_t>(0x8000000F),
        0.1,
        2.0,
        -1e300,
        std::numeric_limits<double>::denorm_min(),
        std::u16string(),
        std::u16string(u"True"),
        std::u16string(u"12; \"quoted\" \\ \t\r\n = ["),
        u"\xD83D\xDE00 \xD83D lone \xDE00"s,
        u"\0\x1F\x7F"s,
        FontSpec{u"Tahoma", 8.25, 400, 0, false, false, false},
        FontSpec{u"A \"B\", C)", 72, 700, 161, true, true, true},
        FontSpec{u"", 0.5, 600, 0, false, false, true},
    };
    for (const ScreenValue& value : values) EXPECT_EQ(RoundTrip(value), value) << FormatValue(value);
    EXPECT_THROW(FormatValue(std::numeric_limits<double>::infinity()), TextError);
    EXPECT_THROW(FormatValue(std::numeric_limits<double>::quiet_NaN()), TextError);
}

TEST(ScreenFile, SpellingOfAValueSaysWhatKindItIs) {
    EXPECT_EQ(FormatValue(std::u16string(u"495")), "\"495\"");
    EXPECT_EQ(FormatValue(u"\x1F\x7F"s), "\"\\u001F\\u007F\"");
    EXPECT_EQ(FormatValue(495), "495");
    EXPECT_EQ(FormatValue(495.0), "495.0");
    EXPECT_EQ(FormatValue(true), "True");
    EXPECT_EQ(FormatValue(static_cast<std::int32_t>(0x80000012)), "0x80000012");
    EXPECT_EQ(FormatValue(FontSpec{u"Arial", 10, 700, 0, true, false, false}), "Font(\"Arial\", 10, Bold, Italic)");
}

TEST(ScreenFile, MalformedLinesAreReportedByNumberAndTheRestLoads) {
    const struct {
        const char* line;
        const char* message;
    } cases[] = {
        {"no equals sign", "\"=\" between key and value is missing"},
        {"= 1", "this is not a key"},
        {"two words = 1", "this is not a key"},
        {"x =", "the value is missing"},
        {"x = ; nothing", "the value is missing"},
        {"x = true", "\"true\" is no value"},
        {"x = nan", "\"nan\" is no value"},
        {"x = 2147483648", "is not a 32-bit number"},
        {"x = 0x1FFFFFFFF", "is not a 32-bit number"},
        {"x = 0x", "is not a 32-bit number"},
        {"x = 1.5.2", "is not a number"},
        {"x = 1e999", "is not a number"},
        {"x = \"open", "the closing quotation mark is missing"},
        {"x = \"\\", "unknown escape"},
        {R"(x = "\q")", "unknown escape \\q"},
        {R"(x = "\u12")", "four hexadecimal digits"},
        {"x = \"\xC0\xAF\"", "not UTF-8"},
        {"x = \"\xED\xA0\x80\"", "not UTF-8"},
        {"x = 1 2", "unexpected text \"2\""},
        {"x = Font", "\"(\" after Font is missing"},
        {"x = Font(\"A\")", "comma after the font's name"},
        {"x = Font(\"A\", 0)", "the font's size is out of range"},
        {"x = Font(\"A\", 8, Wide)", "unknown font option \"Wide\""},
        {"x = Font(\"A\", 8, Weight 1001)", "out of range"},
        {"x = Font(\"A\", 8", "\")\" at the end"},
        {"x = {1}", "the value cannot be read"},
        {"Good = 2", "a second value for Good; the first one counts"},
    };
    for (const auto& [line, message] : cases) {
        ScreenFile file = ScreenFile::Parse("[A]\nGood = 1\n" + std::string(line) + "\nLast = 3\n");
        ASSERT_EQ(file.Problems().size(), 1u) << line;
        EXPECT_EQ(file.Problems()[0].line, 3u) << line;
        EXPECT_NE(file.Problems()[0].message.find(message), std::string::npos)
            << line << " says: " << file.Problems()[0].message;
        ASSERT_EQ(file.Controls().size(), 1u);
        EXPECT_EQ(*file.Controls()[0]->Find("good"), ScreenValue(1)) << line;
        EXPECT_EQ(*file.Controls()[0]->Find("LAST"), ScreenValue(3)) << line;
        EXPECT_EQ(file.Controls()[0]->Find("x"), nullptr) << line;
    }
}

TEST(ScreenFile, ControlsThatCannotBeNamedAreLeftOutWithTheirKeys) {
    ScreenFile file = ScreenFile::Parse(
        "[One]\nMode = 1\n[one]\nMode = 2\n[two words]\nMode = 3\n[Three\nMode = 4\n[Four] x\nMode = 5\n[Five]\n");
    std::vector<std::size_t> lines;
    for (const Problem& problem : file.Problems()) lines.push_back(problem.line);
    EXPECT_EQ(lines, (std::vector<std::size_t>{3, 5, 7, 9}));
    ASSERT_EQ(file.Controls().size(), 2u);
    EXPECT_EQ(*file.FindControl("ONE")->Find("Mode"), ScreenValue(1));
    EXPECT_EQ(file.FindControl("two words"), nullptr);
    EXPECT_TRUE(file.FindControl("Five")->Keys().empty());
}

TEST(ScreenFile, OnlyTheLinesWhoseValueChangedAreRewritten) {
    ScreenFile file = ScreenFile::Parse(Sample);
    ScreenSection& control = *file.FindControl("SetClock");
    control.Put("BackColor", static_cast<std::int32_t>(0x8000000F));
    control.Put("From_The_Future", 1000.0);
    EXPECT_EQ(file.Text(), Sample) << "equal values keep their spelling";
    control.Put("Mode", 2);
    std::string expected = Sample;
    expected.replace(expected.find("Mode = 1"), 8, "Mode = 2");
    EXPECT_EQ(file.Text(), expected);
    control.Put("Caption", std::u16string(u"x"), "mode");
    EXPECT_EQ(file.Text(), expected + "\nCaption = \"x\"\n") << "the last line gets the end that it lacked";
}

TEST(ScreenFile, ASaveKeepsForeignKeysDropsDefaultsAndFollowsTheWritingOrder) {
    ScreenFile file = ScreenFile::Parse(
        "[A]\nProgID = \"P\"\nWidth = 10\n; note\nForeign = 7\nCaption = \"old\"\nShowDST = False\n\n[B]\nMode = 1\n");
    SectionUpdate update(*file.FindControl("A"), {"Mode", "Caption", "ShowDST"}, "Width");
    update.Write("Mode", 1);
    update.Write("Caption", std::u16string(u"new"));
    update.Write("Font", FontSpec{u"Tahoma", 8, 400, 0, false, false, false});
    update.Finish();
    EXPECT_EQ(file.Text(),
              "[A]\nProgID = \"P\"\nWidth = 10\nMode = 1\n; note\nForeign = 7\nCaption = \"new\"\n"
              "Font = Font(\"Tahoma\", 8)\n\n[B]\nMode = 1\n");
    EXPECT_EQ(ScreenFile::Parse(file.Text()).Text(), file.Text());
}

TEST(ScreenFile, AScreenBuiltFromNothingReadsBack) {
    ScreenFile file = ScreenFile::Parse("");
    file.Screen().Put("Title", std::u16string(u"T"));
    file.AddControl("A").Put("odd key", 1);
    file.AddControl("B").Put("x", false);
    EXPECT_EQ(file.Text(), "Title = \"T\"\n\n[A]\n\"odd key\" = 1\n\n[B]\nx = False\n");
    ScreenFile again = ScreenFile::Parse(file.Text());
    EXPECT_TRUE(again.Problems().empty());
    EXPECT_EQ(*again.FindControl("A")->Find("odd key"), ScreenValue(1));
    EXPECT_THROW(file.AddControl("a"), TextError);
    EXPECT_THROW(file.AddControl("a]b"), TextError);
}

TEST(ScreenFile, TooMuchIsRefusedOrReported) {
    EXPECT_THROW(ScreenFile::Parse(std::string(ScreenFile::MaxBytes + 1, ' ')), TextError);
    std::string text;
    for (std::size_t i = 0; i < ScreenFile::MaxControls + 2; ++i) text += "[C" + std::to_string(i) + "]\n";
    ScreenFile file = ScreenFile::Parse(text);
    EXPECT_EQ(file.Controls().size(), ScreenFile::MaxControls);
    EXPECT_EQ(file.Problems().size(), 2u);
    EXPECT_EQ(file.Text(), text);
}

TEST(ScreenFile, ScrambledTextNeitherCrashesNorChanges) {
    std::mt19937 random(20011104);
    for (int round = 0; round < 3000; ++round) {
        std::string text = Sample;
        for (int i = 0; i < 8; ++i) {
            const std::size_t at = random() % text.size();
            if (random() % 2)
                text[at] = static_cast<char>(random() % 256);
            else
                text.erase(at, random() % 5);
        }
        ScreenFile file = ScreenFile::Parse(text);
        ASSERT_EQ(file.Text(), text);
        for (ScreenSection* control : file.Controls()) {
            control->Put("Added", u"\xD800"s);
            for (const std::string& key : control->Keys()) control->Put(key, 1);
        }
        const std::string changed = file.Text();
        ASSERT_EQ(ScreenFile::Parse(changed).Problems().size(), file.Problems().size());
    }
}

TEST(Utf8, OnlyWellFormedTextIsAccepted) {
    for (const char* bad : {"\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xE2\x82",
                            "\xED\xBF\xBF", "\xF8\x88\x80\x80\x80"})
        EXPECT_FALSE(Utf16FromUtf8(bad)) << bad;
    const std::string good = "a\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF";
    EXPECT_EQ(Utf8FromUtf16(*Utf16FromUtf8(good)), good);
    EXPECT_EQ(Utf8FromUtf16(u"\xDC00"), "\xEF\xBF\xBD");
}

}  // namespace
}  // namespace screenhost
