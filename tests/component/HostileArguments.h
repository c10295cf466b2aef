// Arguments that no sane caller passes: every type of variant, edges of every type, and every way to refer to them.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "comkit/ComPtr.h"
#include "comkit/Variant.h"

namespace component {

enum class Passing { ByValue, ByTypedReference, ByVariantReference, ByReferenceToReference };
inline constexpr Passing EveryPassing[] = {Passing::ByValue, Passing::ByTypedReference, Passing::ByVariantReference,
                                           Passing::ByReferenceToReference};

/// One argument with all that it refers to. Stays where it is; what the value owns remains its owner's.
class HostileArgument {
public:
    HostileArgument(const VARIANT& value, Passing passing) noexcept;
    HostileArgument(const HostileArgument&) = delete;
    HostileArgument& operator=(const HostileArgument&) = delete;
    ~HostileArgument() = default;

    const VARIANT& Passed() const noexcept { return m_passed; }
    /// Whether the variable behind a reference is still what it was.
    bool IsUntouched() const noexcept;

private:
    VARIANT m_value;
    VARIANT m_former;
    VARIANT m_inner;
    VARIANT m_passed;
};

/// The values: edges of each type, then a number of them at random, always the same ones, then a few that are huge.
class HostileValues {
public:
    /// Object variants refer to nothing or to these.
    explicit HostileValues(std::vector<comkit::ComPtr<IDispatch>> objects);

    std::size_t Count() const noexcept { return m_values.size(); }
    const VARIANT& At(std::size_t index) const noexcept { return m_values[index].Get(); }
    /// Too large to be passed in every way to every member.
    bool IsHuge(std::size_t index) const noexcept { return index >= m_firstHuge; }

private:
    void Add(VARTYPE type, const std::function<void(VARIANT&)>& fill = {});
    void AddText(std::u16string_view text);
    void AddIntegers();
    void AddReals();
    void AddTexts();
    void AddObjects();
    void AddArrays();
    void AddRandom();
    void AddHuge();

    std::vector<comkit::ComPtr<IDispatch>> m_objects;
    std::vector<comkit::Variant> m_values;
    std::size_t m_firstHuge = 0;
};

/// For messages: type, length or bits.
std::string Describe(const VARIANT& value);

}  // namespace component
