// VexaSimulator.dll as a component server: registration, class objects, unloading.
#include <gtest/gtest.h>

#include "comkit/Registration.h"
#include "simulator_support.h"

namespace simulator_test {
namespace {

using comkit::ComPtr;
using comkit::RegistrationScope;

class SimulatorServerTest : public testing::Test {
protected:
    SimulatorServer server;
};

void SetText(const wchar_t* key, const wchar_t* name, const wchar_t* text) {
    ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, key, name, REG_SZ, text,
                              static_cast<DWORD>((wcslen(text) + 1) * sizeof(wchar_t))),
              ERROR_SUCCESS);
}

TEST_F(SimulatorServerTest, RegistersEveryClassForOneUserAndTakesEveryTraceAway) {
    const std::vector<std::wstring> expected = {
        L"KivUserServicesObjs.Collection", L"KivUserServicesObjs.HelpDefinition", L"KivUserServicesObjs.Registry",
        L"KivUserServicesObjs.Services",   L"VexaBaseControls.VexaHidden",        L"VexaSimulator.Device",
        L"VexaSimulator.Variables"};
    std::vector<std::wstring> names;
    for (const auto& [name, clsid] : server.Classes()) names.push_back(name);
    EXPECT_EQ(names, expected);

    const ScratchUserRegistry scratch;
    SetText(L"Software\\Classes\\Other.Class", L"", L"somebody else's");
    const std::wstring before = scratch.Dump();
    for (int round = 0; round < 2; ++round) {
        ASSERT_EQ(server.Install(true, round == 0 ? L"USER" : L"user"), S_OK);
        EXPECT_NE(scratch.Dump().find(L" : ThreadingModel = 1 Apartment"), std::wstring::npos);
        EXPECT_NE(scratch.Dump().find(ServerPath().substr(ServerPath().rfind(L'\\'))), std::wstring::npos);
        ASSERT_EQ(server.Install(true, L"user"), S_OK) << "registering twice";
        ASSERT_EQ(server.Install(false, L"user"), S_OK);
        EXPECT_EQ(scratch.Dump(), before);
    }
    EXPECT_EQ(server.Install(false, L"user"), S_OK) << "unregistering what is not registered";
    EXPECT_EQ(scratch.Dump(), before);
}

TEST(SimulatorRegistration, AFailureHalfWayPutsKeysAndFormerValuesBack) {
    const ScratchUserRegistry scratch;
    SetText(L"Software\\Classes\\Vexa.Before", L"Kept", L"as it was");
    const DWORD number = 7;
    RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\Classes\\Vexa.Before", L"Number", REG_DWORD, &number, sizeof number);
    const std::wstring before = scratch.Dump();
    const std::wstring tooLong(300, L'x');
    const std::vector<comkit::RegistryEntry> entries = {
        {L"Vexa.New\\One\\Two", L"", L"text"},   {L"Vexa.New\\One", L"Name", L"text"},
        {L"Vexa.Before", L"Kept", L"changed"},   {L"Vexa.Before", L"Number", L"changed"},
        {L"Vexa.Before", L"New", L"text"},       {L"Vexa.Before\\Below", L"", std::nullopt},
        {L"Vexa.New\\" + tooLong, L"", L"text"},
    };
    try {
        comkit::RegisterEntries(RegistrationScope::User, entries);
        ADD_FAILURE() << "a key name of 300 characters was taken";
    } catch (const comkit::ComError& error) {
        EXPECT_TRUE(FAILED(error.Result()));
        EXPECT_EQ(HRESULT_FACILITY(error.Result()), FACILITY_WIN32);
    }
    EXPECT_EQ(scratch.Dump(), before);
}

TEST(SimulatorRegistration, WhatTheServerOfTheOtherBitnessNeedsStaysUntilThatOneGoes) {
    // Wine keeps a half for each bitness of the machine's classes only, and only of its real ones.
    const std::wstring classKey = L"CLSID\\{6AEECC04-E922-4EF6-B508-8F329AA9685B}";
    const std::vector<comkit::RegistryEntry> entries = {{L"VexaSimulatorTest.Class", L"", L"shared", true},
                                                        {classKey, L"", L"of one bitness"}};
    const auto exists = [](const std::wstring& key, REGSAM bitness = 0) {
        comkit::UniqueRegKey opened;
        return RegOpenKeyExW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + key).c_str(), 0, KEY_READ | bitness,
                             opened.Put()) == ERROR_SUCCESS;
    };
    comkit::UniqueRegKey other;
    ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + classKey).c_str(), 0, nullptr, 0,
                              KEY_ALL_ACCESS | comkit::detail::OtherBitness, nullptr, other.Put(), nullptr),
              ERROR_SUCCESS);
    comkit::RegisterEntries(RegistrationScope::Machine, entries);
    comkit::UnregisterEntries(RegistrationScope::Machine, entries, {classKey});
    EXPECT_FALSE(exists(classKey));
    EXPECT_TRUE(exists(L"VexaSimulatorTest.Class"));
    EXPECT_TRUE(exists(classKey, comkit::detail::OtherBitness));

    ASSERT_EQ(RegDeleteKeyExW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + classKey).c_str(),
                              comkit::detail::OtherBitness, 0),
              ERROR_SUCCESS);
    other.Reset();
    comkit::UnregisterEntries(RegistrationScope::Machine, entries, {classKey});
    EXPECT_FALSE(exists(L"VexaSimulatorTest.Class"));
}

TEST_F(SimulatorServerTest, RefusesUnknownClassesInterfacesAndAggregation) {
    using GetClassObject = HRESULT STDAPICALLTYPE(REFCLSID, REFIID, void**);
    const auto getClassObject = server.Export<GetClassObject>("DllGetClassObject");
    void* out = &server;
    EXPECT_EQ(getClassObject(IID_IUnknown, IID_IClassFactory, &out), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(getClassObject(IID_IUnknown, IID_IClassFactory, nullptr), E_POINTER);
    out = &server;
    EXPECT_EQ(server.GetClassObject(L"VexaSimulator.Device", IID_IDispatch, &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);

    ComPtr<IClassFactory> factory;
    ASSERT_EQ(server.GetClassObject(L"VexaSimulator.Device", IID_IClassFactory, factory.PutVoid()), S_OK);
    out = &server;
    EXPECT_EQ(factory->CreateInstance(factory.Get(), IID_IUnknown, &out), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(out, nullptr);
    out = &server;
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IClassFactory, &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
}

TEST_F(SimulatorServerTest, UnloadsOnlyWhenTheLastObjectAndTheLastLockAreGone) {
    EXPECT_TRUE(server.CanUnload());
    for (const auto& [name, clsid] : server.Classes()) {
        SCOPED_TRACE(std::string(name.begin(), name.end()));
        auto object = server.Make(name);
        EXPECT_FALSE(server.CanUnload());
        object.Reset();
        EXPECT_TRUE(server.CanUnload());
    }
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(server.GetClassObject(L"VexaSimulator.Device", IID_IClassFactory, factory.PutVoid()), S_OK);
    factory->LockServer(TRUE);
    factory.Reset();
    EXPECT_FALSE(server.CanUnload());
    ASSERT_EQ(server.GetClassObject(L"VexaSimulator.Device", IID_IClassFactory, factory.PutVoid()), S_OK);
    factory->LockServer(FALSE);
    factory.Reset();
    EXPECT_TRUE(server.CanUnload());
}

}  // namespace
}  // namespace simulator_test
