// What the fuzz targets start from, given to the built controls: as it is, cut short, and with bytes changed.
#include <windows.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include "comkit/Bstr.h"
#include "PersistenceFixture.h"
#include "tests/Effort.h"

namespace component {
namespace {

using comkit::Variant;
using Bytes = std::vector<std::byte>;

constexpr HRESULT InvalidPropertyValue = static_cast<HRESULT>(0x800A0000u + 380);

std::vector<Bytes> Corpus(const char* target) {
    std::vector<Bytes> files;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::filesystem::path(KIV_SOURCE_DIR "/fuzz/corpus") / target)) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::vector<char> content{std::istreambuf_iterator<char>(file), {}};
        const auto bytes = std::as_bytes(std::span(content));
        files.emplace_back(bytes.begin(), bytes.end());
    }
    return files;
}

/// Hands out values made of the bytes: a kind, then what that kind takes. At the end of the bytes, nothing.
class BytesBag final : public comkit::ComObject<BytesBag, IPropertyBag> {
public:
    explicit BytesBag(std::span<const std::byte> bytes) : m_bytes(bytes) {}

    HRESULT STDMETHODCALLTYPE Read(LPCOLESTR, VARIANT* value, IErrorLog*) override {
        VariantInit(value);
        if (m_bytes.empty()) return E_INVALIDARG;
        switch (Number(1) % 11) {
            case 0:
                return S_OK;
            case 1:
                return Hand(value, Variant(Number(1) % 2 == 1));
            case 2:
                value->vt = VT_I2;
                value->iVal = static_cast<SHORT>(Number(2));
                return S_OK;
            case 3:
                return Hand(value, Variant(static_cast<std::int32_t>(Number(4))));
            case 4:
            case 5: {
                value->vt = m_lRead++ % 2 == 0 ? VT_R8 : VT_DATE;
                const std::uint64_t bits = Number(8);
                memcpy(&value->dblVal, &bits, sizeof(bits));
                return S_OK;
            }
            case 6: {
                value->vt = VT_BSTR;
                const auto length = static_cast<UINT>(Number(1));
                value->bstrVal = SysAllocStringLen(nullptr, length);
                for (UINT i = 0; i < length; ++i) value->bstrVal[i] = static_cast<wchar_t>(Number(2));
                return S_OK;
            }
            case 7:
                value->vt = VT_UNKNOWN;
                value->punkVal = nullptr;
                return S_OK;
            case 8:
                return Hand(value, Variant(static_cast<IUnknown*>(this)));
            case 9:
                return DISP_E_TYPEMISMATCH;
            default:
                value->vt = VT_ERROR;
                value->scode = static_cast<SCODE>(Number(4));
                return S_OK;
        }
    }
    HRESULT STDMETHODCALLTYPE Write(LPCOLESTR, VARIANT*) override { return E_NOTIMPL; }

private:
    static HRESULT Hand(VARIANT* value, const Variant& from) {
        return VariantCopy(value, const_cast<VARIANT*>(&from.Get()));
    }
    std::uint64_t Number(int size) {
        std::uint64_t number = 0;
        for (; size > 0; --size) {
            number = number << 8 | (m_bytes.empty() ? 0 : std::to_integer<std::uint64_t>(m_bytes.front()));
            if (!m_bytes.empty()) m_bytes = m_bytes.subspan(1);
        }
        return number;
    }
    std::span<const std::byte> m_bytes;
    long m_lRead = 0;
};

class CorpusReplay : public PersistenceFixture, public testing::WithParamInterface<const TestedClass*> {
protected:
    CorpusReplay() : PersistenceFixture(*GetParam()) {}
    void TearDown() override {
        dispatch.Reset();
        Remove();
        site->calls.clear();
        EXPECT_EQ(S_OK, Server::Get().CanUnload());
    }

    /// What was loaded is saved, loaded by a new control and saved with the same bytes.
    void ExpectRoundTrip() {
        const Bytes saved = SaveStream();
        Renew();
        ASSERT_EQ(S_OK, LoadStream(saved));
        EXPECT_EQ(saved, SaveStream());
    }
    void Renew() {
        Remove();
        site->calls.clear();
        Place(site->userMode.value_or(true));
    }
    void Try(std::span<const std::byte> stream) {
        ++m_lTried;
        const Bytes before = SaveStream();
        const HRESULT hr = LoadStream(stream);
        if (hr == S_OK) return ExpectRoundTrip();
        ++m_lRefused;
        // A stream that ends too early is a failure to read; whatever else is wrong with it, an invalid value.
        EXPECT_TRUE(hr == InvalidPropertyValue || hr == STG_E_READFAULT) << std::hex << hr;
        EXPECT_EQ(before, SaveStream()) << "a load that failed changed something";
    }
    void TryBag(std::span<const std::byte> bytes) {
        ++m_lTried;
        const auto bag = comkit::MakeObject<BytesBag>(bytes);
        EXPECT_EQ(S_OK, As<IPersistPropertyBag>()->Load(bag.Get(), nullptr));
        ExpectRoundTrip();
    }

    long m_lTried = 0;
    long m_lRefused = 0;
};

INSTANTIATE_TEST_SUITE_P(Class, CorpusReplay, testing::Values(&SetClass, &ShowClass));

TEST_P(CorpusReplay, StreamsCutShortAndChangedAreRefusedOrKept) {
    Place(false);
    std::mt19937 random(20260801);
    for (const Bytes& file : Corpus("stream")) {
        Try(file);
        for (std::size_t size = 0; size < file.size(); ++size) Try(std::span(file).first(size));
        for (std::size_t at = 0; at < file.size(); ++at) {
            for (long i = kiv::Effort(1); i > 0; --i) {
                Bytes changed = file;
                changed[at] = static_cast<std::byte>(random());
                Try(changed);
            }
        }
    }
    std::printf("%ld streams given to a control, %ld of them refused\n", m_lTried, m_lRefused);
    EXPECT_GT(m_lRefused, 0);
    EXPECT_LT(m_lRefused, m_lTried);
}

TEST_P(CorpusReplay, BagsOfAnyValuesAreLoaded) {
    std::mt19937 random(20260802);
    for (const bool userMode : {false, true}) {
        Place(userMode);
        for (const Bytes& file : Corpus("properties")) {
            const auto bytes = std::span(file).subspan(1);
            TryBag(bytes);
            for (long i = kiv::Effort(100); i > 0; --i) {
                Bytes changed(bytes.begin(), bytes.end());
                for (int change = 0; change < 8 && !changed.empty(); ++change)
                    changed[random() % changed.size()] = static_cast<std::byte>(random());
                TryBag(changed);
            }
        }
        Remove();
    }
    std::printf("%ld bags given to a control\n", m_lTried);
    EXPECT_GT(m_lTried, 0);
}

}  // namespace
}  // namespace component
