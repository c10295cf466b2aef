// Property bag, stream and storage, as containers use them.
#include <algorithm>
#include <random>

#include "common/MemoryBag.h"
#include "common/PropertyStream.h"
#include "PersistenceFixture.h"

namespace component {
namespace {

using comkit::ComPtr;
using comkit::Variant;

class Persistence : public PersistenceFixture {
protected:
    /// Other than the default in every property.
    void ChangeEverything() {
        for (int slot = 0; slot <= 13; ++slot) {
            comkit::Put(Members(), L"DataLMObject", slot, 70000 + slot);
            comkit::Put(Members(), L"DataType", slot, 3);
            comkit::Put(Members(), L"DataVariableName", slot, u"nvo\x00dc\x4e2d");
            comkit::Put(Members(), L"DataElementPath", slot, u"Clock.Part");
        }
        const wchar_t* colors[] = {L"BackColor",
                                   L"ForeColor",
                                   L"CalBackColor",
                                   L"CalBackColorDisabled",
                                   L"CalForeColorDisabled",
                                   L"CalTitleBackColor",
                                   L"CalTitleForeColor",
                                   L"CalTitleBackColorDisabled",
                                   L"CalTitleForeColorDisabled",
                                   L"CalTrailingForeColor"};
        std::int32_t color = 0x00102030;
        for (const wchar_t* name : colors) Put(name, color++);
        Put(L"Mode", 2);
        Put(L"ShowDST", false);
        Put(L"ShowSeconds", true);
        Put(L"Caption", u"Uhr \x00fc");
        Put(L"Enabled", false);
        Put(L"TimeHeight", 600);
        Put(L"TimeWidth", 4000);
        Put(L"TimeFormat", 8);
        Put(L"ShowToday", false);
        Put(L"StartOfWeek", 2);
        Put(L"UsePCDateTime", false);
        Put(L"Data12HrValue", 8);
        Put(L"Data24HrValue", 9);
        const Variant font = Get(L"Font");
        comkit::Put(*font.Get().pdispVal, L"Bold", true);
        comkit::Put(*font.Get().pdispVal, L"Name", u"Liberation Sans");
    }
};

TEST_F(Persistence, ANewInstanceWritesOnlyItsFont) {
    for (const bool userMode : {false, true}) {
        Place(userMode);
        EXPECT_EQ(std::vector<std::wstring>{L"Font"}, SaveBag(false)->Keys());
        Remove();
    }
}

TEST_F(Persistence, AllKeysStandInTheDocumentedOrderWhenAllAreAskedFor) {
    std::vector<std::wstring> expected;
    for (int slot = 0; slot <= 13; ++slot)
        for (const wchar_t* key : {L"DataLMObject", L"DataType", L"DataVarName", L"DataElemPath"})
            expected.push_back(key + std::to_wstring(slot));
    for (const wchar_t* key : {L"Data12HourValue",
                               L"Data24HourValue",
                               L"BackColor",
                               L"ForeColor",
                               L"CalBackColor",
                               L"CalDisabledBackColor",
                               L"CalDisabledForeColor",
                               L"CalEnabledTitleBack",
                               L"CalEnabledTitleFore",
                               L"CalDisabledTitleBack",
                               L"CalDisabledTitleFore",
                               L"CalTrailerColor",
                               L"Mode",
                               L"Caption",
                               L"Enabled",
                               L"Font",
                               L"TimeHeight",
                               L"TimeWidth",
                               L"ProtoShow24Hour",
                               L"ShowDST",
                               L"ShowSeconds",
                               L"ShowToday",
                               L"StartOfWeek",
                               L"UsePCDateTime"})
        expected.emplace_back(key);
    Place(false);
    EXPECT_EQ(expected, SaveBag(true)->Keys());
}

TEST_F(Persistence, BagStreamAndStorageBringBackTheSameState) {
    Place(false);
    ChangeEverything();
    const std::wstring changed = State();
    const auto bag = SaveBag(false);
    const auto stream = SaveStream();
    ComPtr<IStorage> storage;
    ASSERT_EQ(S_OK,
              StgCreateDocfile(nullptr, STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE | STGM_DELETEONRELEASE, 0,
                               storage.Put()));
    ASSERT_EQ(S_OK, As<IPersistStorage>()->Save(storage.Get(), FALSE));
    ASSERT_EQ(S_OK, As<IPersistStorage>()->SaveCompleted(nullptr));
    Remove();

    Place(false);
    EXPECT_NE(changed, State());
    EXPECT_EQ(S_OK, LoadBag(*bag));
    EXPECT_EQ(changed, State());
    Remove();

    Place(false);
    EXPECT_EQ(S_OK, LoadStream(stream));
    EXPECT_EQ(changed, State());
    EXPECT_EQ(stream, SaveStream());
    Remove();

    Place(false);
    EXPECT_EQ(S_OK, As<IPersistStorage>()->Load(storage.Get()));
    EXPECT_EQ(changed, State());
}

TEST_F(Persistence, TheSystemsHelpersLoadAndSaveIt) {
    Place(false);
    Put(L"Caption", u"through the helpers");
    const auto stream = StreamOf({});
    ASSERT_EQ(S_OK, OleSaveToStream(As<IPersistStream>().Get(), stream.Get()));
    Rewind(*stream);
    CLSID clsid{};
    ASSERT_EQ(S_OK, ReadClassStm(stream.Get(), &clsid));
    EXPECT_TRUE(IsEqualCLSID(clsid, CLSID_KivSetDateTime));
    Remove();
    Place(false);
    ASSERT_EQ(S_OK, As<IPersistStream>()->Load(stream.Get()));
    EXPECT_EQ(L"through the helpers", TextOf(L"Caption"));
}

TEST_F(Persistence, HostileBagsLoadToDefaultsAndAreReported) {
    Place(false);
    const std::wstring defaults = State();
    auto bag = comkit::MakeObject<TestBag>();
    bag->Put(L"Mode", 5);
    bag->Put(L"StartOfWeek", 0);
    bag->Put(L"TimeHeight", u"tall");
    bag->Put(L"Enabled", u"perhaps");
    bag->Put(L"BackColor", static_cast<IDispatch*>(site.Get()));
    bag->Put(L"Font", static_cast<IDispatch*>(site.Get()));
    bag->Put(L"DataLMObject3", 1e300);
    Variant array;
    array.Put()->vt = VT_ARRAY | VT_UI1;
    array.Get().parray = SafeArrayCreateVector(VT_UI1, 0, 10);
    bag->Put(L"Caption", std::move(array));
    bag->Put(L"DataType3", 99);
    bag->Put(L"Unknown", 1);
    bag->failsOn = L"ShowToday";
    auto log = comkit::MakeObject<TestErrorLog>();
    EXPECT_EQ(S_OK, LoadBag(*bag, log.Get()));
    EXPECT_EQ(defaults, State());
    for (const wchar_t* key :
         {L"Mode", L"TimeHeight", L"Enabled", L"BackColor", L"DataLMObject3", L"Caption", L"ShowToday"})
        EXPECT_EQ(1, std::count(log->keys.begin(), log->keys.end(), key)) << key;
    for (const HRESULT code : log->codes) EXPECT_EQ(static_cast<HRESULT>(0x800A017C), code);
    EXPECT_FALSE(IsDirty());
}

TEST_F(Persistence, ValuesOfARelatedTypeAreConverted) {
    auto bag = comkit::MakeObject<TestBag>();
    bag->Put(L"TimeHeight", u"600");
    bag->Put(L"TimeWidth", 2000.0);
    bag->Put(L"Enabled", 0);
    bag->Put(L"Caption", 42);
    bag->Put(L"StartOfWeek", static_cast<std::int16_t>(3));
    Place(false);
    EXPECT_EQ(S_OK, LoadBag(*bag));
    EXPECT_EQ(L"600", TextOf(L"TimeHeight"));
    EXPECT_EQ(L"2000", TextOf(L"TimeWidth"));
    EXPECT_EQ(L"False", TextOf(L"Enabled"));
    EXPECT_EQ(L"42", TextOf(L"Caption"));
    EXPECT_EQ(L"3", TextOf(L"StartOfWeek"));
}

TEST_F(Persistence, IsDirtyFollowsRealChangesOnly) {
    Place(false);
    EXPECT_FALSE(IsDirty());
    Put(L"Caption", u"Set Date/Time");  // no change
    EXPECT_FALSE(IsDirty());
    EXPECT_NE(S_OK, Invoke(Members(), L"NoSuch", DISPATCH_METHOD).hr);
    std::vector<Variant> bad;
    bad.emplace_back(9);
    Invoke(Members(), L"Mode", DISPATCH_PROPERTYPUT, bad);
    EXPECT_FALSE(IsDirty());
    Put(L"Caption", u"other");
    EXPECT_TRUE(IsDirty());
    SaveBag(false);  // without clearing
    EXPECT_TRUE(IsDirty());
    auto bag = comkit::MakeObject<TestBag>();
    As<IPersistPropertyBag>()->Save(bag.Get(), TRUE, FALSE);
    EXPECT_FALSE(IsDirty());
    comkit::Put(Members(), L"DataVariableName", 3, u"x");
    EXPECT_TRUE(IsDirty());
    EXPECT_EQ(S_OK, LoadBag(*bag));
    EXPECT_FALSE(IsDirty());
    SIZEL extent{20000, 20000};
    As<IOleObject>()->SetExtent(DVASPECT_CONTENT, &extent);
    EXPECT_FALSE(IsDirty());
}

TEST_F(Persistence, StorageClearsTheDirtyFlagWhenTheSaveIsCompleted) {
    Place(false);
    Put(L"Caption", u"other");
    ComPtr<IStorage> storage;
    ASSERT_EQ(S_OK,
              StgCreateDocfile(nullptr, STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE | STGM_DELETEONRELEASE, 0,
                               storage.Put()));
    const auto persist = As<IPersistStorage>();
    ASSERT_EQ(S_OK, persist->Save(storage.Get(), TRUE));
    EXPECT_TRUE(IsDirty());
    EXPECT_EQ(E_UNEXPECTED, persist->Save(storage.Get(), TRUE));
    ASSERT_EQ(S_OK, persist->SaveCompleted(nullptr));
    EXPECT_FALSE(IsDirty());
    ASSERT_EQ(S_OK, persist->HandsOffStorage());
    EXPECT_EQ(E_INVALIDARG, persist->SaveCompleted(nullptr));
    EXPECT_EQ(S_OK, persist->SaveCompleted(storage.Get()));
}

TEST_F(Persistence, ADamagedStreamIsRefusedAndLoadsNothingHalfWay) {
    Place(false);
    ChangeEverything();
    const auto good = SaveStream();
    Remove();

    Place(false);
    Put(L"Caption", u"before");
    const std::wstring before = State();
    std::mt19937 random(7);
    for (std::size_t length = 0; length < good.size(); length += 1 + random() % 37)
        EXPECT_TRUE(FAILED(LoadStream(std::span(good).first(length)))) << length;
    for (int round = 0; round < 200; ++round) {
        std::vector<std::byte> noise(random() % 300);
        for (std::byte& b : noise) b = static_cast<std::byte>(random());
        // Half of them begin like a stream of ours.
        if (round % 2) std::copy_n(good.begin(), std::min<std::size_t>(noise.size(), 8), noise.begin());
        EXPECT_TRUE(FAILED(LoadStream(noise))) << round;
    }
    auto oversized = good;
    for (std::size_t i = 8; i < 12; ++i) oversized[i] = std::byte{0xFF};
    EXPECT_TRUE(FAILED(LoadStream(oversized)));
    oversized[11] = std::byte{0x00};  // just under 16 MB, of which the stream has little
    EXPECT_TRUE(FAILED(LoadStream(oversized)));
    EXPECT_EQ(before, State());
    EXPECT_EQ(E_POINTER, As<IPersistStreamInit>()->Load(nullptr));
}

TEST_F(Persistence, AStreamThatFailsInTheMiddleIsReportedAsItFailed) {
    Place(false);
    ULARGE_INTEGER size{};
    ASSERT_EQ(S_OK, As<IPersistStreamInit>()->GetSizeMax(&size));
    EXPECT_EQ(SaveStream().size(), size.QuadPart);
    // A control that was never told how to begin has its defaults.
    const auto untold = comkit::ComPtr<IPersistStreamInit>::From(Server::Get().CreateControl(tested.clsid).Get());
    ULARGE_INTEGER plain{};
    ASSERT_EQ(S_OK, untold->GetSizeMax(&plain));
    ASSERT_EQ(S_OK, untold->InitNew());
    ASSERT_EQ(S_OK, untold->GetSizeMax(&size));
    EXPECT_EQ(size.QuadPart, plain.QuadPart);
    // A stream that takes no more than a part of what is written.
    class FullStream final : public comkit::ComObject<FullStream, ISequentialStream> {
    public:
        HRESULT STDMETHODCALLTYPE Read(void*, ULONG, ULONG*) override { return STG_E_ACCESSDENIED; }
        HRESULT STDMETHODCALLTYPE Write(const void*, ULONG, ULONG*) override { return STG_E_MEDIUMFULL; }
    };
    // Only Read and Write of a stream are used, and they come first in it.
    const auto full = comkit::MakeObject<FullStream>();
    auto* stream = reinterpret_cast<IStream*>(static_cast<ISequentialStream*>(full.Get()));
    EXPECT_EQ(STG_E_MEDIUMFULL, As<IPersistStreamInit>()->Save(stream, TRUE));
    EXPECT_EQ(STG_E_ACCESSDENIED, As<IPersistStreamInit>()->Load(stream));
}

TEST_F(Persistence, TheFontIsSavedAndSharedByReference) {
    Place(false);
    const auto bag = SaveBag(false);
    const VARIANT* font = bag->Find(L"Font");
    ASSERT_TRUE(font);
    EXPECT_EQ(VT_DISPATCH, font->vt);
    EXPECT_TRUE(ComPtr<IFont>::From(font->punkVal));
}

// The other build of these tests leaves its stream here, and reads the one that this build left.
TEST_F(Persistence, AStreamOfTheOtherBitnessLoads) {
    wchar_t folder[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    const bool wide = sizeof(void*) == 8;
    const std::wstring own = std::wstring(folder) + (wide ? L"kiv-stream-64.bin" : L"kiv-stream-32.bin");
    const std::wstring other = std::wstring(folder) + (wide ? L"kiv-stream-32.bin" : L"kiv-stream-64.bin");
    Place(false);
    ChangeEverything();
    const std::wstring changed = State();
    const auto bytes = SaveStream();
    comkit::UniqueKernelHandle out(
        CreateFileW(own.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    ASSERT_TRUE(WriteFile(out.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr));
    out.Reset();
    Remove();

    const HANDLE file = CreateFileW(other.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) GTEST_SKIP() << "the tests of the other bitness have not run in this prefix";
    const comkit::UniqueKernelHandle in(file);
    std::vector<std::byte> foreign(GetFileSize(file, nullptr));
    DWORD read = 0;
    ASSERT_TRUE(ReadFile(in.Get(), foreign.data(), static_cast<DWORD>(foreign.size()), &read, nullptr));
    EXPECT_EQ(bytes, foreign);
    Place(false);
    EXPECT_EQ(S_OK, LoadStream(foreign));
    EXPECT_EQ(changed, State());
}

}  // namespace
}  // namespace component
