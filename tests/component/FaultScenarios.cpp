#include "FaultScenarios.h"

#include "FaultUsers.h"
#include "InstalledSimulator.h"
#include "Sheet.h"

namespace component {

using comkit::ComPtr;
using comkit::Variant;

namespace {

void Nothing(FaultRig&) {}
void MakeRunning(FaultRig& rig) {
    rig.MakeBoth(true);
}
void MakeDesigned(FaultRig& rig) {
    rig.MakeBoth(false);
    for (TriedControl* const control : rig.Controls()) control->Put(L"Caption", L"a text of some length");
}

void Rewind(IStream& stream) {
    stream.Seek({}, STREAM_SEEK_SET, nullptr);
}

/// Everything saved by other controls, with a caption of its own.
void FillSources(FaultRig& rig) {
    rig.MakeBoth(false);
    for (TriedControl* const control : rig.Controls()) {
        control->Put(L"Caption", L"loaded, with a text that does not fit into a short one");
        control->Put(L"DataVariableName", 0, L"a variable");
        TestBag& bag = control == &rig.set ? *rig.setBag : *rig.showBag;
        ComPtr<IStream>& stream = control == &rig.set ? rig.setStream : rig.showStream;
        CreateStreamOnHGlobal(nullptr, TRUE, stream.Put());
        control->As<IPersistPropertyBag>()->Save(&bag, FALSE, TRUE);
        control->As<IPersistStreamInit>()->Save(stream.Get(), FALSE);
    }
    rig.MakeBoth(true);
}

bool AreLoaded(FaultRig& rig) {
    return rig.set.TextOf(L"Caption").starts_with(L"loaded") && rig.show.TextOf(L"Caption").starts_with(L"loaded");
}

void LoadBags(FaultRig& rig) {
    for (TriedControl* const control : rig.Controls()) {
        TestBag& bag = control == &rig.set ? *rig.setBag : *rig.showBag;
        rig.Note("Load from a bag", control->As<IPersistPropertyBag>()->Load(&bag, nullptr));
    }
}

void LoadStreams(FaultRig& rig) {
    for (TriedControl* const control : rig.Controls()) {
        IStream& stream = control == &rig.set ? *rig.setStream : *rig.showStream;
        Rewind(stream);
        rig.Note("Load from a stream", control->As<IPersistStreamInit>()->Load(&stream));
    }
}

void SaveAll(FaultRig& rig) {
    for (TriedControl* const control : rig.Controls()) {
        const auto bag = comkit::MakeObject<TestBag>();
        ComPtr<IStream> stream;
        CreateStreamOnHGlobal(nullptr, TRUE, stream.Put());
        const bool inBag = rig.Note("Save to a bag", control->As<IPersistPropertyBag>()->Save(bag.Get(), TRUE, TRUE));
        const bool inStream = rig.Note("Save to a stream", control->As<IPersistStreamInit>()->Save(stream.Get(), TRUE));
        STATSTG stat{};
        stream->Stat(&stat, STATFLAG_NONAME);
        rig.Expect(!inStream || stat.cbSize.LowPart > 32, "a stream that was saved has too little in it");
        rig.Expect(!inBag || bag->Find(L"Caption"), "a bag that was saved has no caption");
        rig.seen = inBag && inStream ? static_cast<long>(bag->entries.size()) : 0;
    }
}

void ActivateAndClose(FaultRig& rig) {
    rig.seen = 0;
    for (TriedControl* const control : rig.Controls()) {
        if (rig.Note("DoVerb", control->DoVerb(OLEIVERB_UIACTIVATE)))
            rig.seen += control->Window() ? 1 + control->Children() : 0;
        rig.Note("Close", control->As<IOleObject>()->Close(OLECLOSE_NOSAVE));
    }
}

void MakeActive(FaultRig& rig) {
    MakeRunning(rig);
    rig.set.Put(L"UsePCDateTime", false);
    for (TriedControl* const control : rig.Controls()) control->DoVerb(OLEIVERB_INPLACEACTIVATE);
}

// --- run mode with a device ------------------------------------------------------------------------------------------

void BindToDevice(FaultRig& rig) {
    rig.device = InstalledSimulator::Make(L"VexaSimulator.Device");
    comkit::Call(*rig.device, L"Reset");
    comkit::Put(*rig.device, L"ClockPaused", true);
    rig.setBag->Put(L"UsePCDateTime", false);
    const auto bind = [](TestBag& bag, int first, std::initializer_list<const wchar_t*> names) {
        for (const wchar_t* const name : names) {
            const std::wstring slot = std::to_wstring(first++);
            bag.Put(L"DataLMObject" + slot, 1);
            bag.Put(L"DataVarName" + slot, name);
        }
    };
    bind(*rig.setBag, 2, {L"nvoHour", L"nvoMinute", L"nvoSecond", L"nvoMonth", L"nvoDay", L"nvoYear"});
    bind(*rig.showBag, 4, {L"nvoMonth", L"nvoDay", L"nvoYear"});
}

void RunWithDevice(FaultRig& rig) {
    comkit::Put(*rig.device, L"Now", 36000.0);
    for (TriedControl* const control : rig.Controls()) {
        if (!rig.Note("making a control", control->Make(rig.server, true))) continue;
        TestBag& bag = control == &rig.set ? *rig.setBag : *rig.showBag;
        rig.Note("Load from a bag", control->As<IPersistPropertyBag>()->Load(&bag, nullptr));
    }
    comkit::Put(*rig.device, L"Now", 36584.75);  // 28 February 2000, 18:00: each value is another one
    comkit::Call(*rig.device, L"Refresh");
}

bool ShowTheDevicesDate(FaultRig& rig) {
    Variant date;
    Variant time;
    VARIANT_BOOL dst = VARIANT_FALSE;
    const auto members = rig.set.As<_KivSetDateTime>();
    return members && members->GetDateTimeInfo(&date.Get(), &time.Get(), &dst) == S_OK && date.Get().date == 36584.0 &&
           rig.show.TextOf(L"Value").ends_with(L"2000");
}

void Tick(FaultRig& rig) {
    rig.Note("UsePCDateTime", rig.set.Put(L"UsePCDateTime", false));
    rig.Note("UsePCDateTime", rig.set.Put(L"UsePCDateTime", true));
    const TIMERPROC tick = rig.faults.LastTimer();
    if (tick) tick(nullptr, WM_TIMER, rig.faults.LastTimerId(), 0);
    rig.seen = tick != nullptr && rig.faults.LastTimerId() != 0;
}

// --- pictures --------------------------------------------------------------------------------------------------------

void DrawBoth(FaultRig& rig) {
    rig.seen = 0;
    for (TriedControl* const control : rig.Controls()) {
        const Sheet sheet([&](HDC dc) {
            const UINT align = SetTextAlign(dc, TA_BASELINE);
            rig.Note("Draw", control->Draw(dc));
            SetTextAlign(dc, align);
        });
        rig.seen += sheet.Colors() > 1;
        FORMATETC format{CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, -1, TYMED_ENHMF};
        STGMEDIUM medium{};
        if (!rig.Note("GetData", control->As<IDataObject>()->GetData(&format, &medium))) continue;
        rig.Expect(medium.hEnhMetaFile != nullptr, "a picture was promised and is none");
        ReleaseStgMedium(&medium);
        ++rig.seen;
    }
}

void PaintBoth(FaultRig& rig) {
    rig.seen = 0;
    for (TriedControl* const control : rig.Controls()) {
        const HWND window = control->Window();
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
        rig.seen += window && !GetUpdateRect(window, nullptr, FALSE);
    }
}

/// All that a module does once only lies in here.
void UseForTheFirstTime(FaultRig& rig) {
    rig.MakeBoth(true);
    rig.seen = 0;
    if (!rig.set.object || !rig.show.object) return;
    SaveAll(rig);
    const long saved = rig.seen;
    DrawBoth(rig);
    const long drawn = rig.seen;
    ActivateAndClose(rig);
    rig.seen += saved + drawn;
}

template <long Least>
bool HasSeen(FaultRig& rig) {
    return rig.seen >= Least;
}

const FaultScenario Scenarios[] = {
    {"created and initialised", FaultScenario::Nothing, &Nothing, &MakeRunning,
     [](FaultRig& rig) {
         return rig.set.TextOf(L"Caption") == L"Set Date/Time" && rig.show.TextOf(L"Enabled") == L"True";
     }},
    {"loaded from a property bag", FaultScenario::Nothing, &FillSources, &LoadBags, &AreLoaded},
    {"loaded from a stream", FaultScenario::Nothing, &FillSources, &LoadStreams, &AreLoaded},
    {"saved to both", FaultScenario::Nothing, &MakeDesigned, &SaveAll, &HasSeen<20>},
    {"activated and closed", FaultScenario::Nothing, &MakeRunning, &ActivateAndClose, &HasSeen<8>},
    {"run with a device", FaultScenario::Framework, &BindToDevice, &RunWithDevice, &ShowTheDevicesDate},
    {"drawn without a window", FaultScenario::Nothing, &MakeRunning, &DrawBoth, &HasSeen<4>},
    {"painted in a window", FaultScenario::Nothing, &MakeActive, &PaintBoth, &HasSeen<2>},
    {"every property used late bound", FaultScenario::Nothing, &MakeDesigned, &UseEveryProperty, &HasSeen<52>},
    {"asked by a designer", FaultScenario::Nothing, &MakeDesigned, &AskAll, &HasSeen<11>},
    {"pages shown edited and applied", FaultScenario::Nothing, &MakeDesignedWithFrame, &UsePages, &HasSeen<4>},
    {"about boxes shown and closed", FaultScenario::Nothing, &MakeDesigned, &ShowAboutBoxes, &HasSeen<2>},
    {"extent negotiated", FaultScenario::Nothing, &MakeActive, &Negotiate, &HasSeen<2>},
    {"events raised", FaultScenario::Nothing, &MakeActive, &RaiseEvents, &HasSeen<6>},
    {"tick of the PCs clock", FaultScenario::Nothing, &MakeActive, &Tick, &HasSeen<1>},
    {"used for the first time", FaultScenario::FreshServer, &Nothing, &UseForTheFirstTime, &HasSeen<32>},
    {"registered for a user", FaultScenario::Nothing, &Nothing, &RegisterForUser, &HasSeen<1>},
};

}  // namespace

void PrintTo(const FaultScenario& scenario, std::ostream* out) {
    *out << scenario.name;
}

std::span<const FaultScenario> FaultScenarios() {
    return Scenarios;
}

}  // namespace component
