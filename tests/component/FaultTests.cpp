// The system fails, or memory runs out, at every single call of what is done with the component, once or for good: it
// answers as documented, loses nothing, and does the same thing the next time that it is asked.
#include <algorithm>
#include <cctype>
#include <csignal>
#include <cstdio>
#include <optional>

#include "FaultScenarios.h"
#include "FaultUsers.h"
#include "Holdings.h"
#include "InstalledSimulator.h"
#include "ModalEnder.h"
#include "tests/Effort.h"

namespace component {
namespace {

TEST(ImportFaults, EveryFunctionThatTheComponentImportsIsMadeToFailOrLeftAloneForAReason) {
    EXPECT_EQ(std::vector<std::string>{}, ImportFaults::UndecidedImports(FaultServer(false).Module()));
    EXPECT_EQ(std::vector<std::string>{}, ImportFaults::RepeatedNames());
}

std::string NameOf(const FaultPlan& plan) {
    const std::string what =
        plan.function == ImportFaults::AnyMemory ? "memory" : ImportFaults::Functions()[plan.function].name;
    return what + ", call " + std::to_string(plan.call) + (plan.sticky ? " and all later ones" : "");
}

constexpr DWORD AbsenceHolds = 150;

/// What is being tried, for the end of a process that does not survive it.
std::string g_trying;

LONG WINAPI TellCrash(EXCEPTION_POINTERS* info) {
    std::printf("crashed (%08lX at %p): %s\n", info->ExceptionRecord->ExceptionCode,
                info->ExceptionRecord->ExceptionAddress, g_trying.c_str());
    std::fflush(stdout);
    return EXCEPTION_CONTINUE_SEARCH;
}

void TellAbort(int) {
    std::printf("ended itself: %s\n", g_trying.c_str());
    std::fflush(stdout);
}

struct Totals {
    long points = 0;  ///< at which something failed
    long possible = 0;
    long failures = 0;
    long scenarios = 0;
};

class FaultTest : public testing::TestWithParam<FaultScenario> {
protected:
    static void SetUpTestSuite() {
        totals = {};
        formerFilter = SetUnhandledExceptionFilter(&TellCrash);
        std::signal(SIGABRT, &TellAbort);
    }
    static void EndSuite(const char* what) {
        std::printf("%ld of %ld %s failed in %ld scenarios, %ld calls in all\n", totals.points, totals.possible, what,
                    totals.scenarios, totals.failures);
        SetUnhandledExceptionFilter(formerFilter);
        std::signal(SIGABRT, SIG_DFL);
    }

    /// The scenario with a failure, then without, in one life; what is wrong with it.
    std::vector<std::string> LiveThrough(const std::optional<FaultPlan>& plan) {
        std::vector<std::string> wrong;
        const FaultServer server(GetParam().needs == FaultScenario::FreshServer);
        ImportFaults faults(server.Module());
        {
            FaultRig rig(faults, server);
            GetParam().prepare(rig);
            EXPECT_FALSE(rig.failed) << "cannot even be prepared";
            rig.lacksMemory = plan && plan->function == ImportFaults::AnyMemory;
            if (plan) {
                faults.Begin(*plan);
            } else {
                faults.Begin();
            }
            GetParam().act(rig);
            m_reached = faults.End();
            if (!plan) RecordCalls(faults);
            wrong = rig.complaints;
            rig.complaints.clear();
            rig.lacksMemory = rig.memoryIsBack = false;
            // For a while, the component takes it for granted that a class that it did not find is still missing.
            if (plan && NameOf(*plan).starts_with("CLSIDFromProgID")) Sleep(AbsenceHolds);
            rig.failed = false;
            GetParam().act(rig);
            if (rig.failed) wrong.emplace_back("the next attempt fails");
            if (!GetParam().isDone(rig)) wrong.emplace_back("the next attempt does not do it");
            wrong.insert(wrong.end(), rig.complaints.begin(), rig.complaints.end());
        }
        ForgetRememberedChoice();
        if (server.CanUnload() != S_OK) wrong.emplace_back("something is held for ever");
        return wrong;
    }

    Holdings GainOf(const std::optional<FaultPlan>& plan) {
        const Holdings before = CountHoldings();
        LiveThrough(plan);
        const Holdings after = CountHoldings();
        return {after.heapBlocks - before.heapBlocks, after.gdiObjects - before.gdiObjects};
    }

    /// Something is lost where each of several attempts gains more than the same without a failure.
    bool Loses(const FaultPlan& plan) {
        for (int attempt = 0; attempt < 4; ++attempt) {
            const Holdings with = GainOf(plan);
            if (with.heapBlocks <= m_usual.heapBlocks && with.gdiObjects <= m_usual.gdiObjects) return false;
            m_lost = with;
        }
        return true;
    }

    void Try(const FaultPlan& plan) {
        g_trying = std::string(GetParam().name) + ": " + NameOf(plan);
        const Holdings before = CountHoldings();
        for (const std::string& wrong : LiveThrough(plan)) ADD_FAILURE() << g_trying << ": " << wrong;
        totals.failures += m_reached;
        totals.points += m_reached > 0;
        const Holdings after = CountHoldings();
        const bool gained = after.heapBlocks - before.heapBlocks > m_usual.heapBlocks ||
                            after.gdiObjects - before.gdiObjects > m_usual.gdiObjects;
        if (gained && Loses(plan))
            ADD_FAILURE() << g_trying << ": " << m_lost.heapBlocks << " heap blocks and " << m_lost.gdiObjects
                          << " drawing objects are lost";
    }

    void TryAll(FaultKind kind) {
        const ModalEnder boxes;
        std::optional<InstalledSimulator> simulator;
        if (GetParam().needs == FaultScenario::Framework) simulator.emplace();
        g_trying = std::string(GetParam().name) + ": without a failure";
        for (int i = 0; i < 2; ++i)
            for (const std::string& wrong : LiveThrough({})) ADD_FAILURE() << g_trying << ": " << wrong;
        if (HasFailure()) return;
        m_usual = GainOf({});
        m_usual.heapBlocks = std::max(m_usual.heapBlocks, 0L);
        m_usual.gdiObjects = std::max(m_usual.gdiObjects, 0L);
        const std::vector<FaultPlan> plans = Plans(kind);
        const auto all = static_cast<long>(plans.size());
        const long wanted = std::min(all, kiv::Effort(4));
        const kiv::Share share = kiv::OurShare();
        for (long i = 0; i < wanted; ++i)
            if (share.Has(i)) Try(plans[static_cast<std::size_t>(i * all / wanted)]);
        totals.scenarios += wanted > 0;
        totals.possible += all;
    }

    static Totals totals;
    static LPTOP_LEVEL_EXCEPTION_FILTER formerFilter;

private:
    void RecordCalls(const ImportFaults& faults) {
        m_calls.clear();
        for (std::size_t i = 0; i < ImportFaults::Functions().size(); ++i) m_calls.push_back(faults.Calls(i));
        m_memory = faults.Calls(ImportFaults::AnyMemory);
    }
    static void AddPlans(std::vector<FaultPlan>& plans, std::size_t function, long calls) {
        for (long call = 1; call <= calls; ++call)
            for (const bool sticky : {false, true}) plans.push_back({function, call, sticky});
    }
    std::vector<FaultPlan> Plans(FaultKind kind) const {
        std::vector<FaultPlan> plans;
        if (kind == FaultKind::Memory) {
            AddPlans(plans, ImportFaults::AnyMemory, m_memory);
            return plans;
        }
        for (std::size_t i = 0; i < m_calls.size(); ++i)
            if (ImportFaults::Functions()[i].kind == kind) AddPlans(plans, i, m_calls[i]);
        return plans;
    }

    std::vector<long> m_calls;
    long m_memory = 0;
    long m_reached = 0;
    Holdings m_usual;
    Holdings m_lost;
};
Totals FaultTest::totals;
LPTOP_LEVEL_EXCEPTION_FILTER FaultTest::formerFilter = nullptr;

std::string NameOfScenario(const testing::TestParamInfo<FaultScenario>& instance) {
    std::string name = instance.param.name;
    for (char& letter : name)
        if (std::isalnum(static_cast<unsigned char>(letter)) == 0) letter = '_';
    return name;
}

class SystemFailure : public FaultTest {
protected:
    static void TearDownTestSuite() { EndSuite("system calls"); }
};
class ComponentAllocationFailure : public FaultTest {
protected:
    static void TearDownTestSuite() { EndSuite("allocations"); }
};

TEST_P(SystemFailure, IsAnsweredAsDocumentedAndTheNextAttemptWorks) {
    TryAll(FaultKind::System);
}

TEST_P(ComponentAllocationFailure, LosesNothingAndTheNextAttemptWorks) {
    TryAll(FaultKind::Memory);
}

INSTANTIATE_TEST_SUITE_P(, SystemFailure, testing::ValuesIn(FaultScenarios()), &NameOfScenario);
INSTANTIATE_TEST_SUITE_P(, ComponentAllocationFailure, testing::ValuesIn(FaultScenarios()), &NameOfScenario);

}  // namespace
}  // namespace component
