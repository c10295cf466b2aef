// ScreenHost.exe: command line, start and end.
//
// Exit status: 0 when all went well, 1 when a step of the script or a control failed or a check found something, 2 when
// there was nothing to do it with (bad command line, missing file), 3 when the program had to be ended because it hung.
#include <windows.h>

#include <commctrl.h>
#include <ole2.h>
#include <shellapi.h>

#include <algorithm>
#include <deque>

#include "screenhost/CommandLine.h"
#include "screenhost/ErrorText.h"
#include "screenhost/FontObject.h"
#include "screenhost/MainWindow.h"
#include "screenhost/MessagePump.h"
#include "screenhost/ScreenCheck.h"
#include "screenhost/ScriptPlayer.h"
#include "screenhost/ServerLibrary.h"
#include "screenhost/TextFile.h"
#include "screenhost/Watchdog.h"
#include "screenhost/WideText.h"
#include "screenhost/WindowPicture.h"

namespace screenhost {

namespace {

constexpr int StatusFailed = 1;
constexpr int StatusUnusable = 2;
constexpr std::chrono::milliseconds PictureDelay{700};  // controls answer the device, clocks tick
constexpr std::chrono::seconds OpeningTime{60};

class OleSession {
public:
    OleSession() { comkit::ThrowIfFailed(OleInitialize(nullptr)); }
    OleSession(const OleSession&) = delete;
    OleSession& operator=(const OleSession&) = delete;
    ~OleSession() { OleUninitialize(); }
};

std::vector<std::string> Arguments() {
    int count = 0;
    LPWSTR* const words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> result;
    for (int i = 1; words && i < count; ++i) result.push_back(Narrow(std::wstring_view(words[i])));
    LocalFree(words);
    return result;
}

CLSID Resolve(const std::deque<ServerLibrary>& servers, const std::string& progId) {
    for (const ServerLibrary& server : servers)
        for (const auto& [name, clsid] : server.Classes())
            if (EqualWithoutCase(name, progId)) return clsid;
    CLSID clsid{};
    if (FAILED(CLSIDFromProgID(Wide(progId).c_str(), &clsid))) throw TextError(progId + " is not registered");
    return clsid;
}

/// Registered pages first; those of a server that is not registered come straight from its library.
comkit::ComPtr<IPropertyPage> CreatePage(const std::deque<ServerLibrary>& servers, REFCLSID clsid) {
    comkit::ComPtr<IPropertyPage> page;
    const HRESULT hr = CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IPropertyPage), page.PutVoid());
    if (SUCCEEDED(hr)) return page;
    for (const ServerLibrary& server : servers)
        if (auto found = server.Create(clsid).As<IPropertyPage>()) return found;
    throw comkit::ComError(hr, {}, hr == REGDB_E_CLASSNOTREG ? u"it is not registered" : u"");
}

/// The controls of the named servers; where none is named, whatever is registered.
std::vector<PaletteClass> ClassesOf(const std::deque<ServerLibrary>& servers) {
    if (servers.empty()) return RegisteredControls();
    std::vector<PaletteClass> result;
    for (const ServerLibrary& server : servers)
        for (PaletteClass& each : ControlsOfLibrary(server.File())) result.push_back(std::move(each));
    return result;
}

ScreenFile LoadScreen(const Options& options, HostLog& log) {
    return options.screen.empty() ? ScreenFile::Parse({}) : ReadScreen(options.screen, log);
}

/// Script, picture; true when everything succeeded.
bool Perform(const Options& options, const std::optional<ScriptFile>& script, ScreenContext& context,
             MainWindow& window, MessagePump& pump, Watchdog& watchdog) {
    bool good = std::ranges::all_of(window.View().Controls(), [](const auto& control) { return control->IsOpen(); });
    if (script) {
        ScriptPlayer player(context, window, pump, watchdog);
        good = player.Play(*script, options.script) == 0 && good;
    }
    if (!options.screenshot.empty() && !pump.HasQuit()) {
        pump.RunFor(PictureDelay);
        pump.Settle();
        try {
            SaveWindowPicture(window.Handle(), options.screenshot);
            context.log->Output().Line("ok", "picture " + options.screenshot);
        } catch (const TextError& error) {
            context.log->Output().Line("FAILED", error.what());
            good = false;
        }
    }
    return good;
}

int RunHost(const Options& options, Transcript& transcript) {
    const OleSession ole;
    std::deque<ServerLibrary> servers;  // outlive everything that comes out of them
    HostLog log(transcript);
    for (const std::string& server : options.servers) servers.emplace_back(server);
    DeviceLink device;
    device.Connect();
    ScreenContext context;
    context.log = &log;
    context.device = &device;
    context.userMode = !options.design;
    context.font = MakeFontObject(SystemMessageFont());
    context.resolve = [&servers](const std::string& progId) { return Resolve(servers, progId); };
    context.createPage = [&servers](REFCLSID clsid) { return CreatePage(servers, clsid); };
    std::optional<ScriptFile> script;
    if (!options.script.empty()) script = ScriptFile::Parse(ReadTextFile(options.script, ScriptFile::MaxBytes));
    ScreenFile screen = LoadScreen(options, log);

    Watchdog watchdog(transcript);
    MessagePump pump;
    MainWindow window(context, std::move(screen), options.screen);
    pump.SetFilter([&window](MSG& message) { return window.Filter(message); });
    const bool unattended = script || options.once;
    if (unattended) watchdog.Expect("the opening of the screen", OpeningTime);
    window.SetQuiet(unattended);
    // A script leaves nothing behind, and finds the window as it is made.
    HostSettings settings;
    if (!unattended) window.UseSettings(settings);
    window.SetPalette(ClassesOf(servers));
    window.Open();
    pump.Settle();
    watchdog.Rest();
    const bool good = Perform(options, script, context, window, pump, watchdog);
    if (options.once) {
        watchdog.Expect("the closing of the screen", OpeningTime);
        window.View().CloseControls();
        window.Poll();
        return good ? 0 : StatusFailed;
    }
    window.SetQuiet(false);
    pump.Run();
    return good ? 0 : StatusFailed;
}

/// On the transcript, and in a box where somebody may be waiting for a window.
int Refuse(Transcript* transcript, const std::string& text, bool box) {
    if (transcript) transcript->Write("ScreenHost: " + text + "\n");
    if (box) MessageBoxW(nullptr, Wide(text).c_str(), L"Screen Host", MB_ICONERROR);
    return StatusUnusable;
}

/// Reports on each screen, and goes on behind one that cannot be read.
int CheckScreens(const std::vector<std::string>& names, Transcript& transcript) {
    int status = 0;
    for (const std::string& name : names) {
        try {
            ScreenFile screen = ScreenFile::Parse(ReadTextFile(name, ScreenFile::MaxBytes));
            const std::vector<Finding> findings = CheckScreen(screen);
            transcript.Write(DescribeFindings(name, findings));
            transcript.Write(name + ": " + (findings.empty() ? "no" : std::to_string(findings.size())) +
                             (findings.size() == 1 ? " finding\n" : " findings\n"));
            if (!findings.empty()) status = std::max(status, StatusFailed);
        } catch (const TextError& error) {
            transcript.Write(std::string("ScreenHost: ") + error.what() + "\n");
            status = StatusUnusable;
        }
    }
    return status;
}

int Main() {
    std::optional<Transcript> transcript;
    Options options;
    try {
        options = ParseCommandLine(Arguments());
        transcript.emplace(options.log);
        if (options.help) {
            transcript->Write(std::string(UsageText()) + ScriptHelp());
            return 0;
        }
        if (options.check) return CheckScreens(options.checks, *transcript);
        return Telling("ScreenHost", [&] { return RunHost(options, *transcript); });
    } catch (const TextError& error) {
        if (!transcript) transcript.emplace(std::string());
        const bool attended = !options.once && options.script.empty() && options.log.empty() &&
                              GetStdHandle(STD_OUTPUT_HANDLE) == nullptr;
        return Refuse(&*transcript, error.what(), attended);
    }
}

}  // namespace

}  // namespace screenhost

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
    INITCOMMONCONTROLSEX controls{};
    controls.dwSize = sizeof(controls);
    controls.dwICC = ICC_WIN95_CLASSES | ICC_DATE_CLASSES | ICC_STANDARD_CLASSES;
    InitCommonControlsEx(&controls);
    try {
        return screenhost::Main();
    } catch (...) {
        return 2;
    }
}
