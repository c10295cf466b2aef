// Every member of both controls, late-bound, with everything that a caller can get wrong: a call succeeds as documented
// or fails as documented, and a failure changes nothing.
#include <algorithm>
#include <array>
#include <cmath>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>

#include "comkit/VariantReferences.h"
#include "HostileArguments.h"
#include "PersistenceFixture.h"
#include "tests/Effort.h"
#include "TypeMembers.h"

namespace component {
namespace {

using comkit::ComPtr;
using comkit::Variant;

constexpr long NoError = 0;

HRESULT HostError(long number) {
    return static_cast<HRESULT>(0x800A0000u + static_cast<unsigned long>(number));
}

/// What the reference says of a value that has the property's type: the error that it raises.
using Rule = std::function<long(const VARIANT& value, bool userMode)>;

Rule Within(LONG first, LONG last, long error) {
    return [=](const VARIANT& v, bool) { return v.lVal < first || v.lVal > last ? error : NoError; };
}
Rule AtDesignTime(const Rule& rule) {
    return [=](const VARIANT& v, bool userMode) { return userMode ? 382 : rule(v, userMode); };
}
long Anything(const VARIANT&, bool) {
    return NoError;
}
long OneCharacter(const VARIANT& v, bool) {
    return SysStringLen(v.bstrVal) == 1 ? NoError : 380;
}
long TwoTexts(const VARIANT& v, bool) {
    const auto text = comkit::ViewOf(v.bstrVal);
    return std::ranges::count(text, u',') == 1 ? NoError : 380;
}

Rule RuleOf(const TestedClass& tested, const std::wstring& name) {
    static const std::map<std::wstring, Rule> set = {
        {L"Mode", AtDesignTime(Within(0, 2, 380))},
        {L"ShowDST", AtDesignTime(Anything)},
        {L"ShowSeconds", AtDesignTime(Anything)},
        {L"StartOfWeek", Within(1, 7, 380)},
        {L"DataInUpload", [](const VARIANT&, bool userMode) { return userMode ? NoError : 383; }},
    };
    static const std::map<std::wstring, Rule> show = {
        {L"Mode", AtDesignTime(Within(1, 2, 380))}, {L"BorderStyle", Within(0, 1, 380)},
        {L"DataType", Within(0, 3, 380)},           {L"DateDelimiter", OneCharacter},
        {L"TimeDelimiter", OneCharacter},           {L"AMPMFormat", TwoTexts},
    };
    const auto& rules = &tested == &SetClass ? set : show;
    const auto found = rules.find(name);
    return found == rules.end() ? Rule(Anything) : found->second;
}

/// Properties that bring a value into their range, or leave a bad one aside, without an error.
bool KeepsWhatItTakes(const TestedClass& tested, const std::wstring& name) {
    static const std::set<std::wstring> adjusted = {L"TimeHeight",   L"TimeWidth",   L"CaptionHeight",
                                                    L"CaptionWidth", L"ValueHeight", L"ValueWidth"};
    return !adjusted.contains(name) && !(&tested == &SetClass && (name == L"DataType" || name == L"ShowDST"));
}

/// Failures that are the call's own, before the member has a say.
bool IsRefusal(HRESULT hr) {
    return hr == DISP_E_TYPEMISMATCH || hr == DISP_E_OVERFLOW || hr == DISP_E_BADVARTYPE ||
           hr == DISP_E_BADPARAMCOUNT || hr == DISP_E_PARAMNOTFOUND || hr == DISP_E_MEMBERNOTFOUND ||
           hr == DISP_E_PARAMNOTOPTIONAL || hr == DISP_E_NONAMEDARGS || hr == E_INVALIDARG || hr == E_POINTER ||
           hr == E_NOINTERFACE;
}

struct Answer {
    HRESULT hr = S_OK;
    HRESULT scode = S_OK;
    Variant value;
};

Answer Call(IDispatch& object, DISPID id, WORD flags, std::vector<VARIANT> args, bool wantsResult) {
    std::reverse(args.begin(), args.end());
    DISPID put = DISPID_PROPERTYPUT;
    const bool isPut = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    DISPPARAMS params{args.data(), isPut ? &put : nullptr, static_cast<UINT>(args.size()), isPut ? 1U : 0U};
    comkit::ExceptionInfo info;
    Answer answer;
    answer.hr = object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params,
                              wantsResult ? answer.value.Put() : nullptr, info.Put(), nullptr);
    answer.scode = info.Put()->scode;
    return answer;
}

struct Setting {
    const TestedClass* tested;
    bool userMode;
    bool active;
};

class HostileCalls : public PersistenceFixture, public testing::WithParamInterface<Setting> {
protected:
    HostileCalls() : PersistenceFixture(*GetParam().tested) {}

    void SetUp() override {
        Place(GetParam().userMode);
        if (GetParam().active) {
            ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
        }
        members = MembersOf(Members());
        ASSERT_GT(members.size(), 25u);
        font = ComPtr<IDispatch>::From(Get(L"Font").Get().pdispVal);
        // Not the control itself: Wine's Invoke keeps an object that it was passed by reference for something else.
        values.emplace(std::vector<ComPtr<IDispatch>>{font});
    }

    void TearDown() override {
        values.reset();
        font.Reset();
        Remove();
        EXPECT_EQ(S_OK, Server::Get().CanUnload()) << "something of the control still lives";
    }

    void TryEveryValue(const Member& member) {
        for (std::size_t i = 0; i < values->Count(); ++i) {
            // By value and, in turn, in one of the other ways; with more effort in all of them.
            const Passing turn = EveryPassing[1 + i % (std::size(EveryPassing) - 1)];
            for (const Passing passing : EveryPassing) {
                const bool costly = values->IsHuge(i) && (passing != Passing::ByValue || member.value != VT_BSTR);
                const bool later = passing != Passing::ByValue && passing != turn && kiv::Effort(1) == 1;
                if (costly || later) continue;
                SCOPED_TRACE(testing::Message()
                             << Describe(values->At(i)) << ", passed in way " << static_cast<int>(passing));
                const HostileArgument argument(values->At(i), passing);
                ++calls;
                if (member.kinds & INVOKE_PROPERTYPUT)
                    TryPut(member, argument.Passed());
                else
                    TryArgument(member, argument.Passed());
                if (member.kinds & INVOKE_PROPERTYPUT) {
                    EXPECT_TRUE(argument.IsUntouched());
                }
                if (HasFailure()) return;
            }
        }
    }

    std::vector<VARIANT> Slot(const Member& member, LONG slot) const {
        std::vector<VARIANT> args;
        if (member.isIndexed) args.push_back(Variant(slot).Detach());
        return args;
    }

    Answer Read(const Member& member) {
        return Call(Members(), member.id, DISPATCH_PROPERTYGET, Slot(member, 3), true);
    }

    /// A value for a property: taken, or refused for the documented reason with everything as it was.
    void TryPut(const Member& member, const VARIANT& passed) {
        const std::vector<std::byte> before = SaveStream();
        const Variant former = Read(member).value;
        std::vector<VARIANT> args = Slot(member, 3);
        args.push_back(passed);
        const Answer answer = Call(Members(), member.id, DISPATCH_PROPERTYPUT, args, false);
        if (member.value == VT_DISPATCH) {
            EXPECT_TRUE(answer.hr == S_OK || answer.scode == HostError(380) || IsRefusal(answer.hr)) << answer.hr;
        } else {
            CheckPut(member, passed, answer);
        }
        if (answer.hr != S_OK) {
            EXPECT_EQ(before, SaveStream());
            return;
        }
        args.back() = former.Get();
        if (former.Type() != VT_EMPTY) {
            EXPECT_EQ(S_OK, Call(Members(), member.id, DISPATCH_PROPERTYPUT, args, false).hr);
        }
    }

    void CheckPut(const Member& member, const VARIANT& passed, const Answer& answer) {
        Variant converted;
        if (!comkit::IsWhole(passed) || FAILED(converted.ConvertFrom(passed, member.value))) {
            // A negative number for a colour is not one that automation converts, but its bits are taken.
            if (answer.hr != S_OK || member.value != VT_UI4) {
                EXPECT_TRUE(IsRefusal(answer.hr)) << std::hex << answer.hr;
            }
            return;
        }
        const long error = RuleOf(tested, member.name)(converted.Get(), GetParam().userMode);
        if (error != NoError) {
            EXPECT_EQ(DISP_E_EXCEPTION, answer.hr);
            EXPECT_EQ(HostError(error), answer.scode);
            return;
        }
        EXPECT_EQ(S_OK, answer.hr) << std::hex << answer.scode;
        const Answer now = Read(member);
        EXPECT_EQ(S_OK, now.hr);
        if (!KeepsWhatItTakes(tested, member.name)) return;
        if (member.value == VT_BOOL) {
            EXPECT_EQ(converted.Get().boolVal != VARIANT_FALSE, now.value.Get().boolVal != VARIANT_FALSE);
        } else if (member.value == VT_BSTR) {
            EXPECT_TRUE(comkit::ViewOf(converted.Get().bstrVal) == comkit::ViewOf(now.value.Get().bstrVal));
        } else if (member.value == VT_I2) {
            EXPECT_EQ(converted.Get().iVal, now.value.Get().iVal);
        } else {
            EXPECT_EQ(converted.Get().lVal, now.value.Get().lVal);
        }
    }

    /// An argument for a method, at each of its places, or one that a property does not have.
    void TryArgument(const Member& member, const VARIANT& passed) {
        const std::vector<std::byte> before = SaveStream();
        for (std::size_t place = 0; place < std::max<std::size_t>(member.parameters, 1); ++place) {
            std::array<Variant, 3> others{Variant(1), Variant(1), Variant(true)};
            std::array<VARIANT, 3> references{};
            std::vector<VARIANT> args;
            for (std::size_t i = 0; i < std::max<std::size_t>(member.parameters, 1); ++i) {
                references[i].vt = VT_BYREF | VT_VARIANT;
                references[i].pvarVal = &others[i].Get();
                args.push_back(i == place ? passed : references[i]);
            }
            // What a method puts in the place of a text is freed with the text's owner; here that is not the callee.
            if (member.parameters != 0 && Owns(passed)) continue;
            const WORD flags = member.kinds & INVOKE_FUNC ? DISPATCH_METHOD : DISPATCH_PROPERTYGET;
            const Answer answer = Call(Members(), member.id, flags, args, true);
            EXPECT_TRUE(answer.hr == S_OK || answer.hr == DISP_E_EXCEPTION || IsRefusal(answer.hr))
                << std::hex << answer.hr;
            if (answer.hr != S_OK) {
                EXPECT_EQ(VT_EMPTY, answer.value.Type());
            }
        }
        EXPECT_EQ(before, SaveStream());
    }

    static bool Owns(const VARIANT& value) {
        const VARIANT* at = &value;
        while (at->vt == (VT_BYREF | VT_VARIANT) && at->pvarVal && at->pvarVal != at) at = at->pvarVal;
        const auto type = static_cast<VARTYPE>(at->vt & VT_TYPEMASK);
        return type == VT_BSTR || type == VT_DISPATCH || type == VT_UNKNOWN || (at->vt & VT_ARRAY);
    }

    std::vector<Member> members;
    ComPtr<IDispatch> font;
    std::optional<HostileValues> values;
    long calls = 0;
};

std::string NameOf(const testing::TestParamInfo<Setting>& info) {
    return std::string(info.param.tested == &SetClass ? "SetControl" : "ShowControl") +
           (info.param.userMode ? "Running" : "Designed") + (info.param.active ? "Active" : "");
}

INSTANTIATE_TEST_SUITE_P(, HostileCalls,
                         testing::Values(Setting{&SetClass, false, false}, Setting{&SetClass, true, true},
                                         Setting{&ShowClass, false, true}, Setting{&ShowClass, true, false}),
                         NameOf);

bool ShowsABox(const Member& member) {
    return member.name == L"ShowAboutBox";
}

TEST_P(HostileCalls, EveryValueInEveryFormIsTakenOrRefusedAsDocumented) {
    long fewest = MAXLONG;
    for (const Member& member : members) {
        SCOPED_TRACE(testing::PrintToString(member.name));
        const long before = calls;
        TryEveryValue(member);
        fewest = std::min(fewest, calls - before);
        if (HasFailure()) return;
    }
    std::printf("%ld calls, at least %ld of each of %zu members\n", calls, fewest, members.size());
    EXPECT_GE(fewest, 500);
    Put(L"Caption", u"alive");
    EXPECT_EQ(L"alive", TextOf(L"Caption"));
}

TEST_P(HostileCalls, SlotsOutsideTheirRangeAreRefusedWhateverTheyAre) {
    const LONG last = &tested == &SetClass ? 13 : 6;
    for (const Member& member : members) {
        if (!member.isIndexed) continue;
        SCOPED_TRACE(testing::PrintToString(member.name));
        const std::vector<std::byte> before = SaveStream();
        for (std::size_t i = 0; i < values->Count(); ++i) {
            if (values->IsHuge(i)) continue;
            const VARIANT& index = values->At(i);
            SCOPED_TRACE(Describe(index));
            Variant slot;
            const bool converts = comkit::IsWhole(index) && SUCCEEDED(slot.ConvertFrom(index, VT_I4));
            const bool valid = converts && slot.Get().lVal >= 0 && slot.Get().lVal <= last;
            const Answer got = Call(Members(), member.id, DISPATCH_PROPERTYGET, {index}, true);
            EXPECT_EQ(valid, got.hr == S_OK);
            if (converts && !valid) {
                EXPECT_EQ(HostError(381), got.scode);
            }
            if (!converts) {
                EXPECT_TRUE(IsRefusal(got.hr)) << std::hex << got.hr;
            }
            if (valid) continue;
            const Variant value(1);
            const Answer put = Call(Members(), member.id, DISPATCH_PROPERTYPUT, {index, value.Get()}, false);
            const bool isSubscript = &tested == &ShowClass && member.name == L"DataLMObject";
            if (converts) {
                EXPECT_EQ(HostError(isSubscript ? 9 : 381), put.scode);
            }
            if (!converts) {
                EXPECT_TRUE(IsRefusal(put.hr)) << std::hex << put.hr;
            }
        }
        EXPECT_EQ(before, SaveStream());
    }
}

TEST_P(HostileCalls, WrongCountsKindsAndNamesOfArgumentsAreRefused) {
    const std::vector<std::byte> before = SaveStream();
    std::array<Variant, 40> numbers;
    std::array<VARIANT, 40> args{};
    for (std::size_t i = 0; i < args.size(); ++i) args[i] = (numbers[i] = Variant(2)).Get();
    for (const Member& member : members) {
        SCOPED_TRACE(testing::PrintToString(member.name));
        for (const UINT count : {0U, 1U, 2U, 3U, 4U, 40U}) {
            const bool fits = count == (member.kinds & INVOKE_FUNC ? member.parameters : member.isIndexed ? 2U : 1U);
            if (fits) continue;
            for (const WORD flags : {WORD{DISPATCH_PROPERTYPUT}, WORD{DISPATCH_PROPERTYPUTREF}, WORD{DISPATCH_METHOD},
                                     WORD{DISPATCH_PROPERTYGET}, WORD{0}, WORD{0xFFFF}, WORD{0x10}}) {
                const UINT gets = member.isIndexed ? 1U : 0U;
                const bool reads = !(member.kinds & INVOKE_FUNC) && count == gets;
                if (reads || (ShowsABox(member) && count == 0)) continue;
                for (const UINT named : {0U, 1U, 2U, 41U}) {
                    std::array<DISPID, 41> names;
                    names.fill(DISPID_PROPERTYPUT);
                    DISPPARAMS params{args.data(), named ? names.data() : nullptr, count, named};
                    Variant result;
                    const HRESULT hr = Members().Invoke(member.id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params,
                                                        result.Put(), nullptr, nullptr);
                    EXPECT_TRUE(FAILED(hr)) << count << " arguments, " << named << " named, flags " << flags;
                    EXPECT_EQ(VT_EMPTY, result.Type());
                }
            }
        }
        for (const DISPID name : std::initializer_list<DISPID>{0L, 1L, 5L, -1L, MAXLONG, static_cast<LONG>(MINLONG)}) {
            DISPID names[] = {name, name};
            for (const UINT count : {1U, 2U}) {
                DISPPARAMS params{args.data(), names, count, count};
                for (const WORD flags :
                     {WORD{DISPATCH_METHOD}, WORD{DISPATCH_PROPERTYPUT}, WORD{DISPATCH_PROPERTYGET}}) {
                    // A slot may be named.
                    if (member.isIndexed && name == 0 && count == 1 && flags != DISPATCH_PROPERTYPUT) continue;
                    const HRESULT hr = Members().Invoke(member.id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params,
                                                        nullptr, nullptr, nullptr);
                    if (member.kinds & INVOKE_FUNC) continue;
                    EXPECT_TRUE(FAILED(hr)) << count << " arguments named " << name << ", flags " << flags;
                }
            }
        }
    }
    EXPECT_EQ(before, SaveStream());
}

TEST_P(HostileCalls, NamesThatThereAreNotAreNotFound) {
    const std::wstring names[] = {L"",
                                  L" ",
                                  L"Captio",
                                  L"Captions",
                                  L"Caption ",
                                  L"\xD800",
                                  std::wstring(1'000'000, L'C'),
                                  L"_KivSetDateTime",
                                  L"get_Caption"};
    for (const std::wstring& name : names) {
        std::wstring copy = name;
        LPOLESTR text = copy.data();
        DISPID id = 4711;
        EXPECT_EQ(DISP_E_UNKNOWNNAME, Members().GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id));
        EXPECT_EQ(DISPID_UNKNOWN, id);
    }
    for (const DISPID id : std::initializer_list<DISPID>{0L, -1L, -2L, -3L, -4L, -5L, -500L, -9999L, 1000L, 0x60000000L,
                                                         0x60020000L, MAXLONG, static_cast<LONG>(MINLONG)}) {
        for (const WORD flags : {WORD{DISPATCH_METHOD}, WORD{DISPATCH_PROPERTYGET}, WORD{DISPATCH_PROPERTYPUT}}) {
            DISPPARAMS none{};
            EXPECT_TRUE(
                FAILED(Members().Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &none, nullptr, nullptr, nullptr)))
                << id;
        }
    }
}

}  // namespace
}  // namespace component
