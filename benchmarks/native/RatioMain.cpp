// The core beside the least that could do its work, and beside what a program would otherwise call.
#include <array>
#include <cctype>
#include <ctime>
#include <string_view>
#include <variant>
#include <vector>

#ifdef KIV_HAS_FMT
#include <fmt/chrono.h>
#include <fmt/format.h>
#endif

#include "benchmarks/Comparison.h"
#include "benchmarks/native/Worlds.h"

namespace {

using namespace kiv;

constexpr int Texts = 2000;
constexpr int Rounds = 301;

using ByteText = std::array<char, 64>;

char* WriteTwoDigits(char* at, int value) {
    at[0] = static_cast<char>('0' + value / 10);
    at[1] = static_cast<char>('0' + value % 10);
    return at + 2;
}

/// "05-NOV-2026"
char* DateByHand(ByteText& text, const DateTimeNumbers& n) {
    static constexpr std::string_view Months = "JANFEBMARAPRMAYJUNJULAUGSEPOCTNOVDEC";
    char* at = WriteTwoDigits(text.data(), n.day);
    *at++ = '-';
    at += Months.substr(3 * static_cast<std::size_t>(n.month - 1)).copy(at, 3);
    *at++ = '-';
    return WriteTwoDigits(WriteTwoDigits(at, n.year / 100), n.year % 100);
}

/// "01:05:09 PM"
char* TimeByHand(ByteText& text, const DateTimeNumbers& n) {
    const int hour = n.hour % 12;
    char* at = WriteTwoDigits(text.data(), hour == 0 ? 12 : hour);
    *at++ = ':';
    at = WriteTwoDigits(at, n.minute);
    *at++ = ':';
    at = WriteTwoDigits(at, n.second);
    return at + std::string_view(n.hour < 12 ? " AM" : " PM").copy(at, 3);
}

std::tm AsTm(const DateTimeNumbers& n) {
    std::tm result{};
    result.tm_hour = n.hour;
    result.tm_min = n.minute;
    result.tm_sec = n.second;
    result.tm_mday = n.day;
    result.tm_mon = n.month - 1;
    result.tm_year = n.year - 1900;
    return result;
}

void ToUpper(char* from, const char* to) {
    for (; from != to; ++from) *from = static_cast<char>(std::toupper(static_cast<unsigned char>(*from)));
}

/// Does it for numbers that differ from text to text.
template <class Write>
auto ManyTexts(Write write) {
    return [write, numbers = DateTimeNumbers{13, 5, 9, 11, 5, 2026}]() mutable {
        ByteText text{};
        for (int i = 0; i < Texts; ++i) {
            numbers.day = 1 + i % 28;
            numbers.second = i % 60;
            bench::Keep(static_cast<std::size_t>(write(text, numbers) - text.data()) +
                        static_cast<unsigned char>(text[1]));
        }
    };
}

auto OurTexts(std::int32_t mode) {
    return [ready = bench::ReadyFormatter(), mode]() mutable {
        for (int i = 0; i < Texts; ++i) {
            ready.numbers.day = 1 + i % 28;
            ready.numbers.second = i % 60;
            const auto text = ready.Text(mode);
            bench::Keep(text.size() + text[1]);
        }
    };
}

template <class ByHand>
void CompareText(std::int32_t mode, const char* what, ByHand byHand, const char* pattern,
                 [[maybe_unused]] const char* runtimePattern) {
    bench::Compare({what, "the same text written byte by byte", 4}, Rounds, Texts, OurTexts(mode), ManyTexts(byHand));
    bench::Compare({what, "strftime and upper case", 0.25}, Rounds, Texts, OurTexts(mode),
                   ManyTexts([pattern](ByteText& text, const DateTimeNumbers& n) {
                       const std::tm time = AsTm(n);
                       char* const end = text.data() + std::strftime(text.data(), text.size(), pattern, &time);
                       ToUpper(text.data(), end);
                       return end;
                   }));
#ifdef KIV_HAS_FMT
    bench::Compare({what, "the fmt library and upper case", 0.25}, Rounds, Texts, OurTexts(mode),
                   ManyTexts([runtimePattern](ByteText& text, const DateTimeNumbers& n) {
                       char* const end = fmt::format_to(text.data(), fmt::runtime(runtimePattern), AsTm(n));
                       ToUpper(text.data(), end);
                       return end;
                   }));
#endif
}

void CompareArriving() {
    bench::ShowScreen screen(true);
    bench::ReadyFormatter formatter;
    bench::Compare(
        {"a value arrives, the text stays", "the formatting alone", 2}, Rounds, Texts,
        [&] {
            for (int i = 0; i < Texts; ++i) screen.world.framework.Deliver(5, u"5");
        },
        [&] {
            for (int i = 0; i < Texts; ++i) bench::Keep(formatter.Text(sdtShowDateOnly).size());
        });
}

/// A value of each kind that a bag holds, as a program has it that knows what it reads.
struct PlainVariables {
    std::array<std::int32_t, 64> numbers{};
    std::array<bool, 64> flags{};
    std::array<std::u16string, 64> texts;
    FontPtr font;

    void Take(std::size_t i, const Value& value) {
        if (const auto* number = std::get_if<std::int32_t>(&value)) numbers.at(i) = *number;
        if (const auto* number = std::get_if<std::int16_t>(&value)) numbers.at(i) = *number;
        if (const auto* flag = std::get_if<bool>(&value)) flags.at(i) = *flag;
        if (const auto* text = std::get_if<std::u16string>(&value)) texts.at(i) = *text;
        if (const auto* object = std::get_if<FontPtr>(&value)) font = *object;
    }
};

template <class Screen>
void ComparePersistence(const std::array<const char*, 4>& names) {
    constexpr int Times = 50;
    Screen screen(false);
    const MemoryBag saved = bench::FullBag(screen.control);
    const std::vector<std::byte> stream = EncodeProperties(saved);
    PlainVariables plain;
    const auto readPlain = [&](const MemoryBag& bag) {
        std::size_t i = 0;
        for (const auto& [key, value] : saved.Entries()) plain.Take(i++ % 64, bag.Read(key, Value{}));
    };
    const auto writePlain = [&] {
        MemoryBag bag(true);
        for (const auto& [key, value] : saved.Entries()) bag.Write(key, value, nullptr);
        return bag;
    };
    const auto compare = [&](const char* what, const char* reference, auto ours, auto theirs) {
        const auto many = [](auto step) {
            return [step] {
                for (int i = 0; i < Times; ++i) step();
            };
        };
        bench::Compare({what, reference, 3}, Rounds, Times, many(ours), many(theirs));
    };
    compare(
        names[0], "its values read into plain variables", [&] { screen.control.ReadProperties(saved); },
        [&] { readPlain(saved); });
    compare(
        names[1], "its values read into plain variables",
        [&] { screen.control.ReadProperties(bench::Decoded(stream)); }, [&] { readPlain(bench::Decoded(stream)); });
    compare(
        names[2], "plain values written", [&] { bench::Keep(bench::FullBag(screen.control).Entries().size()); },
        [&] { bench::Keep(writePlain().Entries().size()); });
    compare(
        names[3], "plain values written", [&] { bench::Keep(EncodeProperties(bench::FullBag(screen.control)).size()); },
        [&] { bench::Keep(EncodeProperties(writePlain()).size()); });
}

}  // namespace

int main() {
    CompareText(sdtShowDateOnly, "the text of a date", DateByHand, "%d-%b-%Y", "{:%d-%b-%Y}");
    CompareText(sdtShowTimeOnly, "the text of a time", TimeByHand, "%I:%M:%S %p", "{:%I:%M:%S %p}");
    CompareArriving();
    ComparePersistence<bench::ShowScreen>({"a show control loaded from a full bag",
                                           "a show control loaded from a stream", "a show control saved to a bag",
                                           "a show control saved to a stream"});
    ComparePersistence<bench::SetScreen>({"a set control loaded from a full bag", "a set control loaded from a stream",
                                          "a set control saved to a bag", "a set control saved to a stream"});
    return 0;
}
