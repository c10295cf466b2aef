#include "HostileArguments.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>

namespace component {

using comkit::Variant;

HostileArgument::HostileArgument(const VARIANT& value, Passing passing) noexcept
    : m_value(value), m_former(value), m_inner{}, m_passed(value) {
    const VARTYPE type = value.vt;
    m_inner.vt = VT_BYREF | VT_VARIANT;
    m_inner.pvarVal = &m_value;
    switch (passing) {
        case Passing::ByValue:
            break;
        case Passing::ByTypedReference:
            m_passed.vt = static_cast<VARTYPE>(VT_BYREF | type);
            // A decimal fills the whole variant.
            m_passed.byref = type == VT_DECIMAL ? static_cast<void*>(&m_value) : static_cast<void*>(&m_value.lVal);
            break;
        case Passing::ByVariantReference:
            m_passed = m_inner;
            break;
        case Passing::ByReferenceToReference:
            m_passed.vt = VT_BYREF | VT_VARIANT;
            m_passed.pvarVal = &m_inner;
            break;
    }
}

bool HostileArgument::IsUntouched() const noexcept {
    using Bits = std::array<std::byte, sizeof(VARIANT)>;
    return std::bit_cast<Bits>(m_value) == std::bit_cast<Bits>(m_former);
}

HostileValues::HostileValues(std::vector<comkit::ComPtr<IDispatch>> objects) : m_objects(std::move(objects)) {
    AddIntegers();
    AddReals();
    AddTexts();
    AddObjects();
    AddArrays();
    AddRandom();
    m_firstHuge = m_values.size();
    AddHuge();
}

void HostileValues::Add(VARTYPE type, const std::function<void(VARIANT&)>& fill) {
    Variant& value = m_values.emplace_back();
    std::memset(&value.Get(), 0, sizeof(VARIANT));
    value.Get().vt = type;
    if (fill) fill(value.Get());
}

void HostileValues::AddText(std::u16string_view text) {
    m_values.emplace_back(text);
}

void HostileValues::AddIntegers() {
    for (const int n : {0, 1, -1, 2, 3, 7, 8, 13, 14, 127, -128, 255})
        for (const VARTYPE type : {VT_I1, VT_UI1, VT_I2, VT_I4}) Add(type, [n](VARIANT& v) { v.lVal = n; });
    for (const std::int32_t n :
         {32767, -32768, 65535, 65536, 1000000, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
        for (const VARTYPE type : {VT_I2, VT_UI2, VT_I4, VT_UI4, VT_INT, VT_UINT, VT_ERROR})
            Add(type, [n](VARIANT& v) { v.lVal = n; });
    for (const std::int64_t n : {std::int64_t{1}, std::int64_t{-1}, std::int64_t{1} << 31, std::int64_t{1} << 32,
                                 std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min()})
        for (const VARTYPE type : {VT_I8, VT_UI8, VT_CY}) Add(type, [n](VARIANT& v) { v.llVal = n; });
    for (const int n : {0, -1, 1, 0x1234}) Add(VT_BOOL, [n](VARIANT& v) { v.boolVal = static_cast<VARIANT_BOOL>(n); });
    Add(VT_ERROR, [](VARIANT& v) { v.scode = DISP_E_PARAMNOTFOUND; });
}

void HostileValues::AddReals() {
    constexpr double Infinity = std::numeric_limits<double>::infinity();
    // Around the ends of the integers, and of the dates that automation knows: the years 100 to 9999.
    for (const double n : {0.0,
                           -0.0,
                           0.5,
                           1.5,
                           2.5,
                           -0.5,
                           32767.5,
                           -32768.5,
                           2147483647.4,
                           2147483647.5,
                           -2147483648.5,
                           4294967295.5,
                           1e18,
                           1e300,
                           -1e300,
                           5e-324,
                           Infinity,
                           -Infinity,
                           std::numeric_limits<double>::quiet_NaN(),
                           -657434.0,
                           -657434.5,
                           -657435.0,
                           2958465.0,
                           2958465.99999,
                           2958466.0,
                           60.0,
                           -1.25,
                           36526.75})
        for (const VARTYPE type : {VT_R8, VT_DATE}) Add(type, [n](VARIANT& v) { v.dblVal = n; });
    for (const float n : {1.5F, -1.0F, 1e38F, std::numeric_limits<float>::infinity(),
                          std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::denorm_min()})
        Add(VT_R4, [n](VARIANT& v) { v.fltVal = n; });
    for (const int scale : {0, 28, 255}) {
        Add(VT_DECIMAL, [scale](VARIANT& v) {
            v.decVal.scale = static_cast<BYTE>(scale);
            v.decVal.sign = DECIMAL_NEG;
            v.decVal.Hi32 = 0xFFFFFFFF;
            v.decVal.Lo64 = ~0ULL;
            v.vt = VT_DECIMAL;
        });
    }
}

void HostileValues::AddTexts() {
    Add(VT_BSTR);  // the null text, which is empty
    for (const std::u16string_view text : {u"",         u" ",          u"0",
                                           u"1",        u"-1",         u"3",
                                           u" 7 ",      u"1e400",      u"&HFF",
                                           u"0x10",     u"True",       u"false",
                                           u"text",     u",",          u"AM,PM",
                                           u"a,b,c",    u"-",          u"::",
                                           u"1.5",      u"2147483648", u"31/12/9999",
                                           u"\xD800",   u"\xDC00",     u"\xDC00\xD800",
                                           u"a\xD800z", u"\xFFFF",     u"\xFFFE\x202E",
                                           u"e\x0301",  u"&&&",        u"%s%n",
                                           u"\r\n\t"})
        AddText(text);
    AddText(std::u16string_view(u"a\0b", 3));
    AddText(std::u16string(255, u'9'));
    AddText(std::u16string(5000, u'\xD83D'));
    // Bytes that are no whole number of letters.
    Variant odd;
    odd.Get().vt = VT_BSTR;
    odd.Get().bstrVal = SysAllocStringByteLen("odd", 3);
    m_values.push_back(std::move(odd));
}

void HostileValues::AddObjects() {
    for (const VARTYPE type : {VT_EMPTY, VT_NULL, VT_DISPATCH, VT_UNKNOWN}) Add(type);
    for (const auto& object : m_objects) {
        m_values.emplace_back(object.Get());
        m_values.emplace_back(static_cast<IUnknown*>(object.Get()));
    }
}

void HostileValues::AddArrays() {
    for (const VARTYPE type : {VT_UI1, VT_I4, VT_VARIANT, VT_BSTR}) {
        Add(static_cast<VARTYPE>(VT_ARRAY | type));
        for (const ULONG count : {0UL, 6UL}) {
            SAFEARRAYBOUND bound{count, MAXLONG - 5};
            Variant array;
            array.Get().parray = SafeArrayCreate(type, 1, &bound);
            array.Get().vt = static_cast<VARTYPE>(VT_ARRAY | type);
            m_values.push_back(std::move(array));
        }
    }
    // Types that no variant may have; nothing is owned.
    for (const int type : {+VT_VARIANT, +VT_VOID, +VT_HRESULT, +VT_PTR, +VT_USERDEFINED, +VT_LPSTR, +VT_FILETIME,
                           +VT_CLSID, 0x000F, 0x0FFF, VT_VECTOR | VT_I4, 0x8000 | VT_I4})
        Add(static_cast<VARTYPE>(type));
    // References to nothing, and one to itself (it is set right when it is copied: only its type counts).
    for (const int type : {+VT_EMPTY, +VT_VARIANT, +VT_I2, +VT_I4, +VT_BOOL, +VT_BSTR, +VT_DATE, +VT_DECIMAL,
                           +VT_DISPATCH, VT_ARRAY | VT_I4})
        Add(static_cast<VARTYPE>(VT_BYREF | type));
    Variant& circle = m_values.emplace_back();
    circle.Get().vt = VT_BYREF | VT_VARIANT;
    // The list may still move: the circle goes through a variant of its own.
    static VARIANT itself;
    itself.vt = VT_BYREF | VT_VARIANT;
    itself.pvarVal = &itself;
    circle.Get().pvarVal = &itself;
}

void HostileValues::AddRandom() {
    constexpr int Many = 40;
    std::mt19937_64 random(20011104);
    for (int i = 0; i < Many; ++i) {
        static constexpr VARTYPE Types[] = {VT_I1,  VT_UI1, VT_I2, VT_UI2, VT_I4,   VT_UI4,  VT_I8,
                                            VT_UI8, VT_R4,  VT_R8, VT_CY,  VT_DATE, VT_BOOL, VT_ERROR};
        const std::uint64_t bits = random();
        Add(Types[random() % std::size(Types)], [bits](VARIANT& v) { std::memcpy(&v.llVal, &bits, sizeof bits); });
    }
    for (int i = 0; i < Many; ++i) {
        std::u16string text(static_cast<std::size_t>(random() % 12), u'\0');
        for (char16_t& unit : text) unit = static_cast<char16_t>(random());
        AddText(text);
    }
}

void HostileValues::AddHuge() {
    constexpr std::size_t Million = 1'000'000;
    AddText(std::u16string(Million, u'W'));
    std::u16string text(Million, u'\xDC00');
    std::mt19937 random(20011104);
    for (char16_t& unit : text) unit = static_cast<char16_t>(random());
    AddText(text);
    AddText(u"," + std::u16string(Million - 1, u'\xD800'));
}

std::string Describe(const VARIANT& value) {
    char text[120];
    const bool isText = value.vt == VT_BSTR;
    std::snprintf(text, sizeof text, "type 0x%04X, %s %016llX", static_cast<unsigned>(value.vt),
                  isText ? "length" : "bits",
                  isText ? static_cast<unsigned long long>(SysStringLen(value.bstrVal))
                         : static_cast<unsigned long long>(value.ullVal));
    return text;
}

}  // namespace component
