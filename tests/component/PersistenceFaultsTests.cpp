// Streams, storages, bags and error logs that misbehave at one call: the control stays whole, a failed load leaves what
// was there (a bag: the default, and a word in the log), a failed save stays to be done, and the next attempt works.
#include <windows.h>

#include <algorithm>
#include <functional>

#include "comkit/Handle.h"
#include "ControlFixture.h"
#include "FaultySources.h"

namespace component {
namespace {

using comkit::ComPtr;
using comkit::Variant;

/// A storage that has no streams, or says that it has and hands out none.
class EmptyStorage final : public comkit::ComObject<EmptyStorage, IStorage> {
public:
    explicit EmptyStorage(HRESULT answer) noexcept : m_answer(answer) {}
    HRESULT STDMETHODCALLTYPE CreateStream(LPCOLESTR, DWORD, DWORD, DWORD, IStream** out) override {
        *out = nullptr;
        return m_answer;
    }
    HRESULT STDMETHODCALLTYPE OpenStream(LPCOLESTR, void*, DWORD, DWORD, IStream** out) override {
        *out = nullptr;
        return m_answer;
    }
    HRESULT STDMETHODCALLTYPE CreateStorage(LPCOLESTR, DWORD, DWORD, DWORD, IStorage**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OpenStorage(LPCOLESTR, IStorage*, DWORD, SNB, DWORD, IStorage**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CopyTo(DWORD, const IID*, SNB, IStorage*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE MoveElementTo(LPCOLESTR, IStorage*, LPCOLESTR, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Commit(DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Revert() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumElements(DWORD, void*, DWORD, IEnumSTATSTG**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DestroyElement(LPCOLESTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE RenameElement(LPCOLESTR, LPCOLESTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetElementTimes(LPCOLESTR, const FILETIME*, const FILETIME*, const FILETIME*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetClass(REFCLSID) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetStateBits(DWORD, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Stat(STATSTG*, DWORD) override { return E_NOTIMPL; }

private:
    HRESULT m_answer;
};

struct Deed {
    const char* name;
    std::function<void()> run;
};

/// A stream that is at its end answers S_FALSE, and reads or writes nothing.
constexpr HRESULT FailingAnswers[] = {E_FAIL, E_OUTOFMEMORY, STG_E_REVERTED, S_FALSE};

class PersistenceFaults : public ControlFixture {
protected:
    void PlaceChanged(const wchar_t* caption) {
        Place(false);
        Put(L"Caption", caption);
        Put(L"TimeWidth", 3000);
        Put(L"ShowDST", false);
        comkit::Put(Members(), L"DataVariableName", 13, u"nvo");
    }
    bool IsDirty() { return As<IPersistStreamInit>()->IsDirty() == S_OK; }
    ComPtr<TestBag> Saved(BOOL clearDirty = FALSE) {
        auto bag = comkit::MakeObject<TestBag>();
        EXPECT_EQ(S_OK, As<IPersistPropertyBag>()->Save(bag.Get(), clearDirty, TRUE));
        return bag;
    }
    std::wstring State() {
        std::wstring state;
        const auto bag = Saved();
        for (const auto& [key, value] : bag->entries)
            if (key != L"Font") state += key + L"=" + Text(value.Get()) + L"\n";
        return state;
    }
    /// The control after whatever was done to it: loads, shows its windows, and lets go of everything.
    void ExpectToWorkAgain() {
        const auto bag = comkit::MakeObject<TestBag>();
        bag->Put(L"Caption", u"again");
        if (!control) {
            EXPECT_EQ(S_OK, Server::Get().CanUnload()) << "something of the control still lives";
            return;
        }
        ASSERT_EQ(S_OK, As<IOleObject>()->SetClientSite(site.Get()));
        EXPECT_EQ(S_OK, As<IPersistPropertyBag>()->Load(bag.Get(), nullptr));
        EXPECT_EQ(L"again", TextOf(L"Caption"));
        EXPECT_FALSE(IsDirty());
        const auto notified = AdviseNotifications();
        Put(L"Caption", u"changed");
        EXPECT_EQ(1, std::ranges::count(notified->changed, DISPID_CAPTION)) << "it is not loading any more";
        EXPECT_TRUE(IsDirty());
        EXPECT_EQ(S_OK, DoVerb(OLEIVERB_UIACTIVATE));
        EXPECT_TRUE(Child(L"SysMonthCal32"));
        Remove();
        EXPECT_EQ(S_OK, Server::Get().CanUnload()) << "something of the control still lives";
    }
    /// What a source may call while it is asked.
    std::vector<Deed> Deeds() {
        return {
            {"a new start", [&] { As<IPersistStreamInit>()->InitNew(); }},
            {"a load of its own",
             [&] {
                 const auto bag = comkit::MakeObject<TestBag>();
                 bag->Put(L"Caption", u"from within");
                 As<IPersistPropertyBag>()->Load(bag.Get(), nullptr);
             }},
            {"a save", [&] { Saved(TRUE); }},
            {"a property", [&] { Put(L"Caption", u"from within"); }},
            {"Close", [&] { As<IOleObject>()->Close(OLECLOSE_NOSAVE); }},
            {"SetClientSite(NULL)", [&] { As<IOleObject>()->SetClientSite(nullptr); }},
            {"activation", [&] { DoVerb(OLEIVERB_UIACTIVATE); }},
            {"the last reference", [&] { Remove(); }},
        };
    }
};

TEST_F(PersistenceFaults, AStreamThatFailsAtAnyWriteStaysToBeSaved) {
    PlaceChanged(L"present");
    const std::wstring present = State();
    for (const HRESULT answer : FailingAnswers) {
        for (int at = 1;; ++at) {
            SCOPED_TRACE(testing::Message() << "write " << at << " answers " << std::hex << answer);
            Put(L"TimeHeight", 700 + at);
            Put(L"TimeHeight", 700);
            Fault fault{at, 0, [&] { return answer; }};
            const auto stream = comkit::MakeObject<FaultyStream>(fault);
            stream->most = 100;
            const HRESULT hr = As<IPersistStreamInit>()->Save(stream.Get(), TRUE);
            if (fault.calls < at) {
                EXPECT_EQ(S_OK, hr) << "short writes are no failure";
                EXPECT_GT(at, 2);
                EXPECT_FALSE(IsDirty());
                break;
            }
            EXPECT_TRUE(FAILED(hr));
            EXPECT_TRUE(IsDirty()) << "nothing was saved";
        }
    }
    Put(L"TimeHeight", 495);
    EXPECT_EQ(present, State());
    ExpectToWorkAgain();
}

TEST_F(PersistenceFaults, AStreamThatFailsAtAnyReadLeavesTheStateAsItWas) {
    PlaceChanged(L"written");
    Fault none;
    const auto good = comkit::MakeObject<FaultyStream>(none);
    ASSERT_EQ(S_OK, As<IPersistStreamInit>()->Save(good.Get(), TRUE));
    for (const HRESULT answer : FailingAnswers) {
        Put(L"Caption", u"present");
        const std::wstring present = State();
        for (int at = 1;; ++at) {
            SCOPED_TRACE(testing::Message() << "read " << at << " answers " << std::hex << answer);
            Fault fault{at, 0, [&] { return answer; }};
            const auto stream = comkit::MakeObject<FaultyStream>(fault);
            stream->most = 100;
            good->Rewind();
            ULARGE_INTEGER all{};
            all.QuadPart = MAXDWORD;
            good->Memory().CopyTo(&stream->Memory(), all, nullptr, nullptr);
            stream->Rewind();
            const HRESULT hr = As<IPersistStreamInit>()->Load(stream.Get());
            if (fault.calls < at) {
                EXPECT_EQ(S_OK, hr) << "short reads are no failure";
                EXPECT_GT(at, 2);
                EXPECT_EQ(L"written", TextOf(L"Caption"));
                break;
            }
            EXPECT_TRUE(FAILED(hr));
            EXPECT_EQ(present, State());
            EXPECT_TRUE(IsDirty());
        }
    }
    ExpectToWorkAgain();
}

TEST_F(PersistenceFaults, AStreamThatClaimsMoreThanItWasAskedForIsNotBelieved) {
    class Boaster final : public comkit::ComObject<Boaster, ISequentialStream> {
    public:
        HRESULT STDMETHODCALLTYPE Read(void*, ULONG count, ULONG* read) override {
            *read = count + 1;
            return S_OK;
        }
        HRESULT STDMETHODCALLTYPE Write(const void*, ULONG count, ULONG* written) override {
            *written = count + 1;
            return S_OK;
        }
    };
    PlaceChanged(L"present");
    const std::wstring present = State();
    const auto boaster = comkit::MakeObject<Boaster>();
    // Only Read and Write of a stream are used, and they come first in it.
    auto* stream = reinterpret_cast<IStream*>(static_cast<ISequentialStream*>(boaster.Get()));
    EXPECT_TRUE(FAILED(As<IPersistStreamInit>()->Save(stream, TRUE)));
    EXPECT_TRUE(IsDirty());
    EXPECT_TRUE(FAILED(As<IPersistStreamInit>()->Load(stream)));
    EXPECT_EQ(present, State());
    ExpectToWorkAgain();
}

TEST_F(PersistenceFaults, AStorageWithoutStreamsLeavesTheStateAsItWas) {
    for (const HRESULT answer : {STG_E_FILENOTFOUND, E_FAIL, S_OK}) {
        SCOPED_TRACE(answer);
        PlaceChanged(L"present");
        const std::wstring present = State();
        const auto storage = comkit::MakeObject<EmptyStorage>(answer);
        EXPECT_TRUE(FAILED(As<IPersistStorage>()->Save(storage.Get(), TRUE)));
        EXPECT_TRUE(FAILED(As<IPersistStorage>()->Load(storage.Get())));
        EXPECT_EQ(present, State());
        EXPECT_TRUE(IsDirty());
        ExpectToWorkAgain();
    }
}

TEST_F(PersistenceFaults, AKeyThatABagCannotReadEndsAsItsDefaultWithAWordInTheLog) {
    PlaceChanged(L"loaded");
    const auto full = Saved();
    Remove();
    Place(false);
    const auto defaults = Saved();
    for (const HRESULT answer : {E_FAIL, E_OUTOFMEMORY, E_UNEXPECTED, DISP_E_TYPEMISMATCH, E_POINTER}) {
        for (int at = 1;; ++at) {
            SCOPED_TRACE(testing::Message() << "key " << at << " answers " << std::hex << answer);
            Fault fault{at, 0, [&] { return answer; }};
            const auto bag = comkit::MakeObject<FaultyBag>(fault, full);
            const auto log = comkit::MakeObject<TestErrorLog>();
            ASSERT_EQ(S_OK, As<IPersistPropertyBag>()->Load(bag.Get(), log.Get()));
            const auto loaded = Saved();
            for (std::size_t i = 0; i < loaded->entries.size(); ++i) {
                const auto& [key, value] = loaded->entries[i];
                if (key == L"Font") continue;
                const auto& expected = key == bag->failedOn ? *defaults : *full;
                EXPECT_EQ(Text(expected.entries[i].second.Get()), Text(value.Get())) << testing::Message() << key;
            }
            EXPECT_FALSE(IsDirty());
            if (bag->failedOn.empty()) break;
            EXPECT_EQ(std::vector<std::wstring>{bag->failedOn}, log->keys);
        }
    }
    ExpectToWorkAgain();
}

TEST_F(PersistenceFaults, AnyKeyMayHoldAnythingAndIsThenConvertedOrReported) {
    Place(false);
    const auto defaults = Saved();
    const std::function<Variant()> values[] = {
        [] { return Variant(); },
        [] { return Variant(static_cast<IDispatch*>(nullptr)); },
        [] { return Variant(static_cast<IUnknown*>(nullptr)); },
        [] { return Variant(static_cast<IUnknown*>(comkit::MakeObject<TestBag>().Get())); },
        [] { return Variant(u"no number"); },
        [] { return Variant(1e300); },
        [] {
            Variant text;
            text.Put()->vt = VT_BSTR;  // a null string is an empty one
            return text;
        },
        [] {
            Variant array;
            array.Put()->vt = VT_ARRAY | VT_VARIANT;
            array.Get().parray = SafeArrayCreateVector(VT_VARIANT, 0, 3);
            return array;
        },
        [] {
            Variant nothing;
            nothing.Put()->vt = VT_NULL;
            return nothing;
        },
        [] {
            Variant missing;
            missing.Put()->vt = VT_ERROR;
            missing.Get().scode = DISP_E_PARAMNOTFOUND;
            return missing;
        },
    };
    for (std::size_t v = 0; v < std::size(values); ++v) {
        const auto bag = comkit::MakeObject<TestBag>();
        for (const auto& [key, value] : defaults->entries) {
            // Every number is a good Boolean.
            if (v != 5 || value.Type() != VT_BOOL) bag->Put(key, values[v]());
        }
        const auto log = comkit::MakeObject<TestErrorLog>();
        ASSERT_EQ(S_OK, As<IPersistPropertyBag>()->Load(bag.Get(), log.Get())) << v;
        EXPECT_FALSE(IsDirty());
        const auto loaded = Saved();
        for (std::size_t i = 0; i < loaded->entries.size(); ++i) {
            const auto& [key, value] = loaded->entries[i];
            if (key == L"Font") continue;
            const bool isText = value.Type() == VT_BSTR;
            const bool isReported = std::ranges::count(log->keys, key) == 1;
            // Empty is what a bag gives for a key that it has no value for. A number is read from a null object as the
            // other way round: not at all.
            if (isReported || !isText) {
                EXPECT_EQ(Text(defaults->entries[i].second.Get()), Text(value.Get()))
                    << testing::Message() << v << " for " << key;
            }
        }
        if (v >= 1 && v != 6) {
            EXPECT_TRUE(std::ranges::count(log->keys, L"TimeWidth")) << v;
        }
    }
    ExpectToWorkAgain();
}

TEST_F(PersistenceFaults, ASaveThatABagRefusesAtAnyKeyStaysToBeDone) {
    PlaceChanged(L"changed");
    const std::wstring state = State();
    for (int at = 1;; ++at) {
        SCOPED_TRACE(at);
        Fault fault{at, 0, [] { return STG_E_MEDIUMFULL; }};
        const auto bag = comkit::MakeObject<FaultyBag>(fault, comkit::MakeObject<TestBag>());
        const HRESULT hr = As<IPersistPropertyBag>()->Save(bag.Get(), TRUE, TRUE);
        if (fault.calls < at) {
            EXPECT_EQ(S_OK, hr);
            break;
        }
        EXPECT_EQ(STG_E_MEDIUMFULL, hr);
        EXPECT_TRUE(IsDirty());
        EXPECT_EQ(state, State());
    }
    EXPECT_FALSE(IsDirty());
    ExpectToWorkAgain();
}

TEST_F(PersistenceFaults, AnErrorLogMayFailOrCallBack) {
    std::vector<Deed> deeds = Deeds();
    deeds.push_back({"nothing", [] {}});
    for (const Deed& deed : deeds) {
        SCOPED_TRACE(deed.name);
        Place(true);
        const auto bag = comkit::MakeObject<TestBag>();
        bag->Put(L"Mode", u"five");
        bag->Put(L"BackColor", u"red");
        bag->Put(L"DataVarName5", u"loaded");
        bool done = false;
        const auto log = comkit::MakeObject<FaultyLog>([&] {
            if (!std::exchange(done, true)) deed.run();
            return E_FAIL;
        });
        ComPtr<IPersistPropertyBag> persist = As<IPersistPropertyBag>();
        persist->Load(bag.Get(), log.Get());
        EXPECT_TRUE(done);
        if (control) {
            EXPECT_EQ(L"0", TextOf(L"Mode"));
            EXPECT_EQ(2, log->calls) << "each bad value is still reported once";
        }
        persist.Reset();
        ExpectToWorkAgain();
        ForgetRememberedChoice();
    }
}

TEST_F(PersistenceFaults, SourcesThatCallBackLeaveTheControlWhole) {
    for (const bool saves : {false, true}) {
        for (const int at : {1, 30, 70}) {
            for (const Deed& deed : Deeds()) {
                SCOPED_TRACE(testing::Message() << (saves ? "write " : "read ") << at << " does: " << deed.name);
                PlaceChanged(L"present");
                const auto full = Saved();
                Fault fault{at, 0, [&] {
                                deed.run();
                                return S_OK;
                            }};
                const auto bag = comkit::MakeObject<FaultyBag>(fault, full);
                ComPtr<IPersistPropertyBag> persist = As<IPersistPropertyBag>();
                if (saves) {
                    persist->Save(bag.Get(), FALSE, TRUE);
                } else {
                    persist->Load(bag.Get(), nullptr);
                }
                EXPECT_GE(fault.calls, at);
                persist.Reset();
                ExpectToWorkAgain();
                ForgetRememberedChoice();
            }
        }
    }
}

}  // namespace
}  // namespace component
