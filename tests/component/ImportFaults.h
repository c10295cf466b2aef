// Calls that a loaded module makes into the system, counted and made to fail.
//
// While an ImportFaults lives, the module's import table leads to wrappers of the system's functions. Calls of the
// thread that made it are counted; what it was told to fail answers as documented, with the last error set, and never
// reaches the system. Nothing that only gives something back ever fails. Only one may live at a time.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <vector>

namespace component {

enum class FaultKind { System, Memory };

/// A function that can be made to fail.
struct FaultFunction {
    const char* name;
    FaultKind kind;
};

/// Which calls fail.
struct FaultPlan {
    /// The number of one function or, with AnyMemory, everything that takes memory, counted as one.
    std::size_t function = 0;
    long call = 0;  ///< counted from 1
    bool sticky = false;
};

class ImportFaults {
public:
    static constexpr std::size_t AnyMemory = static_cast<std::size_t>(-1);

    explicit ImportFaults(HMODULE module);
    ImportFaults(const ImportFaults&) = delete;
    ImportFaults& operator=(const ImportFaults&) = delete;
    ~ImportFaults();

    static const std::vector<FaultFunction>& Functions();
    /// What the module imports and nobody has decided about, as "LIBRARY NAME".
    static std::vector<std::string> UndecidedImports(HMODULE module);
    /// Names in the lists that stand there twice.
    static std::vector<std::string> RepeatedNames();

    /// Counts from here on; with a plan, lets fail what it says.
    void Begin();
    void Begin(const FaultPlan& plan);
    /// Ends that; the number of calls that failed.
    long End();
    /// Counted between Begin and End.
    long Calls(std::size_t function) const;

    /// The timer that was set last: what the system would call, and the number that it goes by.
    TIMERPROC LastTimer() const noexcept;
    UINT_PTR LastTimerId() const noexcept;

private:
    struct Replaced {
        void** slot;
        void* original;
    };
    std::vector<Replaced> m_replaced;
};

}  // namespace component
