// Memory runs out at every single allocation of what a control does in its life, once or for good: it fails as C++
// fails, loses nothing, and does the same thing the next time that it is asked.
#include <cctype>
#include <cstdio>
#include <memory>
#include <new>
#include <span>
#include <string>
#include <vector>

#include "AllocationCount.h"
#include "common/PropertyStream.h"
#include "platform/HostError.h"
#include "SetControlFixture.h"
#include "ShowControlFixture.h"

namespace kiv {
namespace {

/// Like the recording hosts, without records, which would grow.
class QuietSetEvents final : public RecordingInput<SetControlEvents> {
public:
    void GetDeviceDateTime(Value& dtNow, bool& /*bEnableDST*/) override { dtNow = OleDate{37000.5}; }
};

/// Both controls, each in a world of its own, made outside of what is tested.
struct Rig {
    headless::HeadlessPlatform setWorld;
    QuietSetEvents setHost;
    std::unique_ptr<SetControl> set;
    headless::HeadlessShowPlatform showWorld;
    RecordingShowEvents showHost;
    std::unique_ptr<ShowControl> show;
    MemoryBag setBag;
    MemoryBag showBag;
    std::vector<std::byte> stream;

    Rig() {
        setWorld.container.ambientFont = showWorld.container.ambientFont = headless::MakeFont(u"Tahoma");
        for (std::int32_t slot = 0; slot < 14; ++slot) {
            const std::string number = std::to_string(slot);
            const std::u16string name = u"DataVarName" + std::u16string(number.begin(), number.end());
            setBag.Put(name, std::u16string(u"a variable with a long name"));
            if (slot < 7) showBag.Put(name, std::u16string(u"another variable with a long name"));
        }
        setBag.Put(u"UsePCDateTime", false);
        setBag.Put(u"Caption", std::u16string(u"A caption that does not fit into the text itself"));
    }
    void MakeSet(bool userMode = true) {
        setWorld.container.userMode = userMode;
        set = std::make_unique<SetControl>(setWorld.Platform(), setHost);
        set->ReadProperties(setBag);
        set->OnShown();
    }
    void MakeShow(bool userMode = true) {
        showWorld.container.userMode = userMode;
        show = std::make_unique<ShowControl>(showWorld.Platform(), showHost);
        show->ReadProperties(showBag);
    }
    static void Nothing(Rig&) {}
};

struct Scenario {
    const char* name;
    void (*prepare)(Rig&);
    void (*act)(Rig&);
    /// After it was done without a failure.
    bool (*isDone)(Rig&);
};

void PrintTo(const Scenario& scenario, std::ostream* out) {
    *out << scenario.name;
}

const std::u16string LongText(200, u'x');

FontPtr MakeFont(const FontTraits& traits) {
    return headless::MakeFont(traits);
}

const Scenario Scenarios[] = {
    {"a set control is placed in a designer", &Rig::Nothing,
     [](Rig& r) {
         r.set.reset();
         r.setWorld.container.userMode = false;
         r.set = std::make_unique<SetControl>(r.setWorld.Platform(), r.setHost);
         r.set->InitProperties();
     },
     [](Rig& r) { return r.set->Caption() == u"Set Date/Time"; }},
    {"a set control is loaded and shown", &Rig::Nothing,
     [](Rig& r) {
         r.set.reset();
         r.MakeSet();
     },
     [](Rig& r) { return r.set->Caption().size() > 30 && r.set->DataVariableName(13).size() > 20; }},
    {"a show control is loaded", &Rig::Nothing,
     [](Rig& r) {
         r.show.reset();
         r.MakeShow();
     },
     [](Rig& r) { return !r.show->Value().empty() && r.show->DataVariableName(6).size() > 20; }},
    {"a set control is saved to a stream", [](Rig& r) { r.MakeSet(); },
     [](Rig& r) {
         MemoryBag saved(true);
         r.set->WriteProperties(saved);
         r.stream = EncodeProperties(saved);
     },
     [](Rig& r) { return r.stream.size() > 1000; }},
    {"a stream is decoded and loaded",
     [](Rig& r) {
         r.MakeSet();
         MemoryBag saved(true);
         r.set->WriteProperties(saved);
         r.stream = EncodeProperties(saved);
         r.set->SetCaption(u"another");
     },
     [](Rig& r) {
         const auto records = std::span<const std::byte>(r.stream).subspan(PropertyStreamHeaderSize);
         r.set->ReadProperties(DecodeProperties(records, MakeFont));
     },
     [](Rig& r) { return r.set->Caption().size() > 30; }},
    {"texts and slots of a set control are put", [](Rig& r) { r.MakeSet(); },
     [](Rig& r) {
         r.set->SetCaption(LongText);
         r.set->SetDataVariableName(2, LongText);
         r.set->SetDataElementPath(13, LongText);
     },
     [](Rig& r) {
         return r.set->Caption() == LongText && r.set->DataVariableName(2) == LongText &&
                r.set->DataElementPath(13) == LongText;
     }},
    {"fonts are put", [](Rig& r) { r.MakeSet(), r.MakeShow(); },
     [](Rig& r) {
         r.set->SetFont(headless::MakeFont(u"A font with a very long name"));
         r.show->SetFont(headless::MakeFont(u"A font with a very long name"));
     },
     [](Rig& r) {
         return r.set->GetFont()->Traits().name.size() > 20 && r.show->GetFont()->Traits().name.size() > 20;
     }},
    {"a device's values arrive at a set control", [](Rig& r) { r.MakeSet(); },
     [](Rig& r) {
         std::int16_t element = 0;
         for (const char16_t* value : {u"0", u"1", u"13", u"14", u"15", u"2", u"29", u"2004"})
             r.setWorld.framework.Deliver(element++, value);
     },
     [](Rig& r) {
         return r.set->GetDateTimeInfo().date == CivilDate{2004, 2, 29};
     }},
    {"a device's values arrive at a show control", [](Rig& r) { r.MakeShow(); },
     [](Rig& r) {
         std::int16_t element = 0;
         for (const char16_t* value : {u"1", u"13", u"14", u"15", u"2", u"29", u"2004"})
             r.showWorld.framework.Deliver(element++, value);
     },
     [](Rig& r) { return r.show->Value() == u"29-FEB-2004"; }},
    {"the date is written to the device", [](Rig& r) { r.MakeSet(); },
     [](Rig& r) {
         r.setWorld.framework.calls.clear();
         r.set->SetDataInUpload(true);
         r.set->SetDataInUpload(false);
     },
     [](Rig& r) {
         int written = 0;
         for (const std::string& call : r.setWorld.framework.calls) written += call.starts_with("value ");
         return written == 7;
     }},
    {"the PC's clock is followed and left", [](Rig& r) { r.MakeSet(); },
     [](Rig& r) {
         r.set->SetUsePCDateTime(true);
         r.setWorld.timers.Fire();
         r.set->SetUsePCDateTime(false);
         r.set->SetUsePCDateTime(true);
     },
     [](Rig& r) { return r.set->UsePCDateTime() && r.setWorld.timers.EnabledCount() == 1; }},
    {"run mode ends and begins", [](Rig& r) { r.MakeSet(), r.MakeShow(); },
     [](Rig& r) {
         for (const bool userMode : {false, true}) {
             r.setWorld.container.userMode = r.showWorld.container.userMode = userMode;
             r.set->OnUserModeChanged();
             r.show->OnUserModeChanged();
         }
     },
     [](Rig& r) { return r.set->VexaSubElements() && r.show->VexaSubElements(); }},
    {"properties of a show control are put", [](Rig& r) { r.MakeShow(false); },
     [](Rig& r) {
         r.show->SetCaption(LongText);
         r.show->SetAMPMFormat(LongText + u"," + LongText);
         r.show->SetMode(r.show->Mode() == sdtShowDateOnly ? sdtShowTimeOnly : sdtShowDateOnly);
         r.show->SetShowLongDay(true);
         r.show->SetDataElementPath(6, LongText);
     },
     [](Rig& r) { return r.show->Caption() == LongText && r.show->DataElementPath(6) == LongText; }},
    {"both controls end", [](Rig& r) { r.MakeSet(), r.MakeShow(); },
     [](Rig& r) {
         r.set.reset();
         r.show.reset();
     },
     [](Rig& r) { return r.setWorld.framework.living == 0 && r.setWorld.timers.Count() == 0; }},
};

class AllocationFailure : public testing::TestWithParam<Scenario> {
protected:
    /// Whether the n-th allocation was reached.
    static bool Run(const Scenario& scenario, std::size_t n, bool sticky) {
        const long before = LivingAllocations();
        bool failed = false;
        bool isDone = false;
        {
            Rig rig;
            scenario.prepare(rig);
            FailAllocation(n, sticky);
            try {
                scenario.act(rig);
            } catch (const std::bad_alloc&) {
            } catch (const HostError&) {
            }
            failed = StopFailing();
            scenario.act(rig);
            isDone = scenario.isDone(rig);
        }
        EXPECT_TRUE(isDone) << "the next attempt, after allocation " << n;
        if (n > 0) {
            EXPECT_EQ(LivingAllocations(), before) << "after allocation " << n;
        }
        return failed;
    }
};

INSTANTIATE_TEST_SUITE_P(, AllocationFailure, testing::ValuesIn(Scenarios), [](const auto& instance) {
    std::string name = instance.param.name;
    for (char& letter : name)
        if (std::isalnum(static_cast<unsigned char>(letter)) == 0) letter = '_';
    return name;
});

TEST_P(AllocationFailure, LosesNothingAndTheNextAttemptWorks) {
    if (!CanFailAllocations()) GTEST_SKIP() << "the sanitizers keep their own allocation";
    Run(GetParam(), 0, false);  // fills what is kept for good
    std::size_t points = 0;
    for (const bool sticky : {false, true}) {
        for (std::size_t n = 1; Run(GetParam(), n, sticky); ++n) {
            ++points;
            if (HasFailure()) return;
        }
    }
    std::printf("%zu failures\n", points);
    EXPECT_GT(points, 0U);
}

}  // namespace
}  // namespace kiv
