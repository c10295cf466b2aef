// Handlers that do what they like within any call: the control survives, leaks nothing, ends with the last value and
// works.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "Holdings.h"
#include "Reentrancy.h"
#include "tests/Effort.h"

namespace component {
namespace {

using comkit::ComPtr;

class EventStress : public ReentrancyFixture, public testing::WithParamInterface<Form> {
protected:
    EventStress() : ReentrancyFixture(GetParam()) {}

    /// A control with so many sinks, of which the one in the middle does the deed; to its end. How often each heard it.
    std::vector<int> LiveOnce(const Occasion& when, const Deed& deed, int sinkCount = 3) {
        PlaceFor(when);
        std::vector<int> heard(static_cast<std::size_t>(sinkCount));
        std::vector<std::function<HRESULT()>> handlers;
        otherCookies.clear();
        for (int i = 0; i < sinkCount; ++i) {
            const bool acts = i == sinkCount / 2;
            int& count = heard[static_cast<std::size_t>(i)];
            AdviseHandler(when, acts, [&count, &deed, acts] {
                ++count;
                if (acts && (count == 1 || deed.repeats)) deed.run();
            });
        }
        const auto begin = std::chrono::steady_clock::now();
        when.cause();
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
        for (const auto& end : m_silence) end();
        m_silence.clear();
        for (const int count : heard) EXPECT_GE(count, 1) << "was never called";
        if (control) {
            if (deed.check) deed.check();
            ExpectLastValues();
            ExpectToWork();
        }
        Remove();
        EXPECT_EQ(nullptr, GetWindow(site->Window(), GW_CHILD));
        EXPECT_EQ(S_OK, Server::Get().CanUnload()) << "something of the control still lives";
        site->AddRef();
        EXPECT_EQ(1U, site->Release()) << "the site is still held";
        ForgetRememberedChoice();
        site->calls.clear();
        site->outdated.clear();
        return heard;
    }

    void AdviseHandler(const Occasion& when, bool acts, const std::function<void()>& handler) {
        DWORD cookie = 0;
        if (when.call == SinkCall::Event) {
            const auto sink = AdviseEvents();
            cookie = eventCookie;
            sink->onEvent = [id = when.id, handler](DISPID event, DISPPARAMS&, EXCEPINFO*) {
                if (event == id) handler();
                return S_OK;
            };
            m_silence.emplace_back([sink] { sink->onEvent = nullptr; });
        } else {
            const auto sink = AdviseNotifications();
            cookie = notifyCookie;
            const auto call = [id = when.id, handler](DISPID property) {
                if (property == id) handler();
                return S_OK;
            };
            (when.call == SinkCall::Changed ? sink->onChanged : sink->onRequested) = call;
            m_silence.emplace_back([sink] { sink->onChanged = sink->onRequested = nullptr; });
        }
        if (acts) {
            deedCookie = cookie;
        } else {
            otherCookies.push_back(cookie);
        }
    }

    /// The next activation shows it, and it answers.
    void ExpectToWork() {
        EXPECT_EQ(S_OK, As<IOleObject>()->SetClientSite(site.Get()));
        Put(L"Enabled", true);
        As<IOleInPlaceObject>()->InPlaceDeactivate();
        EXPECT_EQ(S_OK, DoVerb(OLEIVERB_UIACTIVATE));
        if (!form.windowless) {
            EXPECT_TRUE(IsWindowVisible(Window()));
        }
        if (IsSet()) {
            EXPECT_TRUE(Child(L"SysMonthCal32"));
        }
        Put(L"Caption", u"answers");
        EXPECT_EQ(L"answers", TextOf(L"Caption"));
        const auto sink = AdviseEvents();
        Send(nullptr, nullptr, WM_MOUSEMOVE, 0);
        EXPECT_EQ(std::vector<DISPID>{IsSet() ? 8 : DISPID_MOUSEMOVE}, sink->events);
    }

    static bool Thorough() { return kiv::Effort(2) > 2; }

    /// Each deed on each occasion for which it is its turn; then again, counting what is left behind.
    void Walk(const std::vector<Occasion>& occasions, std::size_t step) {
        const std::vector<Deed> deeds = Deeds();
        const Deed nothing{"does nothing", [] {}};
        for (std::size_t o = 0; o < occasions.size() && !HasFatalFailure(); ++o) {
            const Occasion& when = occasions[o];
            SCOPED_TRACE(testing::Message() << when.name << " (" << when.id << ")");
            const std::vector<int> plain = LiveOnce(when, nothing);
            const auto row = [&](bool checks) {
                for (std::size_t d = 0; d < deeds.size(); ++d) {
                    if (!IsTurn(o, d, step)) continue;
                    SCOPED_TRACE(deeds[d].name);
                    const std::vector<int> heard = LiveOnce(when, deeds[d], checks ? 3 : 1);
                    if (checks) CheckCounts(when, deeds[d], plain, heard);
                    m_cells += checks;
                }
            };
            row(true);
            // Reports are kept on the heap. Every third row is enough to see what all of them have in common.
            if (HasFailure() || (!Thorough() && o % 3 != 0)) continue;
            // A row that gains nothing has no cell that does; otherwise each is counted by itself.
            const Holdings gain = Gain(
                2, [&] { row(false); }, 0);
            if (gain.heapBlocks >= 2) CheckCells(when, deeds, step, o);
        }
    }
    /// Every so manieth cell, and of those this build's share; from one row to the next it moves by one.
    static bool IsTurn(std::size_t row, std::size_t deed, std::size_t step) {
        const std::size_t cell = row + deed;
        return cell % step == 0 && kiv::OurShare().Has(static_cast<long>(cell / step));
    }
    static void CheckCounts(const Occasion& when, const Deed& deed, const std::vector<int>& plain,
                            const std::vector<int>& heard) {
        constexpr int Calls = 51;
        if (deed.repeats && plain.front() == 1 && !when.inactive) {
            EXPECT_EQ(std::vector<int>(heard.size(), Calls), heard) << "one for each time that it was raised";
        }
        if (deed.raises) return;
        EXPECT_EQ(plain.front(), heard.front()) << "neither lost nor doubled";
        EXPECT_EQ(plain.back(), heard.back()) << "neither lost nor doubled";
    }
    void CheckCells(const Occasion& when, const std::vector<Deed>& deeds, std::size_t step, std::size_t row) {
        // What one of them left behind would be there as often as it ran.
        constexpr int Cycles = 6;
        for (std::size_t d = 0; d < deeds.size(); ++d) {
            if (!IsTurn(row, d, step)) continue;
            SCOPED_TRACE(deeds[d].name);
            const Holdings gain = Gain(
                Cycles, [&] { LiveOnce(when, deeds[d]); }, 2);
            EXPECT_LT(gain.heapBlocks, Cycles);
        }
    }
    static void TearDownTestSuite() {
        if (m_cells > 0) std::printf("%ld cells of re-entrancy\n", m_cells);
    }

    std::vector<std::function<void()>> m_silence;
    static inline long m_cells = 0;
};

constexpr Form Forms[] = {
    {"SetControl", &SetClass, false}, {"ShowControl", &ShowClass, false}, {"ShowControlWindowless", &ShowClass, true}};
std::string NameOf(const testing::TestParamInfo<Form>& info) {
    return info.param.name;
}
INSTANTIATE_TEST_SUITE_P(, EventStress, testing::ValuesIn(Forms), NameOf);

TEST_P(EventStress, AHandlerMayDoAnythingInAnyEventAndNothingIsLeftBehind) {
    Walk(Events(), 1);
}

// The deeds take turns over the properties; with more effort each is done in each.
TEST_P(EventStress, AHandlerMayDoAnythingWhenAPropertyChangesOrIsAskedFor) {
    Walk(Notifications(), Thorough() ? 1 : 12);
}

TEST_P(EventStress, WithoutSinksAndWithFailingOnesEachEventPasses) {
    constexpr int Cycles = 6;
    const kiv::Share share = kiv::OurShare();
    long number = 0;
    for (const Occasion& when : Events()) {
        if (!share.Has(number++)) continue;
        SCOPED_TRACE(testing::Message() << when.name << " (" << when.id << ")");
        const auto live = [&](HRESULT answer) {
            PlaceFor(when);
            // None at all where all is well.
            for (int i = 0; i < 3 && answer != S_OK; ++i)
                AdviseEvents()->onEvent = [answer](DISPID, DISPPARAMS&, EXCEPINFO*) { return answer; };
            when.cause();
            Remove();
            ForgetRememberedChoice();
            site->calls.clear();
            site->outdated.clear();
        };
        const auto cycle = [&] {
            for (const HRESULT answer : {S_OK, E_FAIL, E_NOTIMPL, DISP_E_EXCEPTION, RPC_E_DISCONNECTED}) live(answer);
        };
        EXPECT_LT(Gain(Cycles, cycle, 1).heapBlocks, Cycles);
    }
}

TEST_P(EventStress, ManySinksHearEachEventOnceAndAllAreLetGo) {
    const std::vector<Occasion> events = Events();
    PlaceFor(events.front());
    std::vector<ComPtr<EventSink>> sinks;
    sinks.reserve(200);
    for (int i = 0; i < 200; ++i) sinks.push_back(AdviseEvents());
    events.front().cause();
    for (const auto& sink : sinks)
        EXPECT_EQ(1, std::count(sink->events.begin(), sink->events.end(), events.front().id));
    Remove();
    for (const auto& sink : sinks) {
        sink->AddRef();
        EXPECT_EQ(1u, sink->Release());
    }
}

}  // namespace
}  // namespace component
