#include "screenhost/CommandLine.h"

#include <algorithm>

#include "screenhost/TextCursor.h"

namespace screenhost {

namespace {

struct Switch {
    std::string_view name;
    void (*set)(Options&);
};

struct ValueOption {
    std::string_view name;
    void (*set)(Options&, const std::string&);
};

constexpr Switch Switches[] = {
    {"--design", [](Options& o) { o.design = true; }}, {"--run", [](Options& o) { o.design = false; }},
    {"--once", [](Options& o) { o.once = true; }},     {"--check", [](Options& o) { o.check = true; }},
    {"--help", [](Options& o) { o.help = true; }},     {"-h", [](Options& o) { o.help = true; }},
    {"/?", [](Options& o) { o.help = true; }},
};

constexpr ValueOption ValueOptions[] = {
    {"--server", [](Options& o, const std::string& value) { o.servers.push_back(value); }},
    {"--screenshot", [](Options& o, const std::string& value) { o.screenshot = value; }},
    {"--script", [](Options& o, const std::string& value) { o.script = value; }},
    {"--log", [](Options& o, const std::string& value) { o.log = value; }},
};

}  // namespace

namespace {

/// The arguments that are no options: one screen to show, or any number to check.
void TakeScreens(std::vector<std::string> screens, Options& options) {
    if (options.check) {
        if (screens.empty()) throw TextError("--check needs a screen file");
        if (options.once || !options.script.empty() || !options.screenshot.empty())
            throw TextError("--check shows no screen: it goes without --once, --script and --screenshot");
        options.checks = std::move(screens);
        return;
    }
    if (screens.size() > 1) throw TextError("more than one screen: " + screens[0] + " and " + screens[1]);
    if (!screens.empty()) options.screen = std::move(screens.front());
    if (options.once && options.script.empty() && options.screenshot.empty())
        throw TextError("--once needs --script or --screenshot");
}

}  // namespace

Options ParseCommandLine(const std::vector<std::string>& arguments) {
    Options options;
    std::vector<std::string> screens;
    for (auto it = arguments.begin(); it != arguments.end(); ++it) {
        const auto* const plain = std::ranges::find(Switches, *it, &Switch::name);
        const auto* const valued = std::ranges::find(ValueOptions, *it, &ValueOption::name);
        if (plain != std::end(Switches)) {
            plain->set(options);
        } else if (valued != std::end(ValueOptions)) {
            if (std::next(it) == arguments.end()) throw TextError("a file is missing behind " + *it);
            valued->set(options, *++it);
        } else if (it->starts_with("--")) {
            throw TextError("unknown option " + *it);
        } else {
            screens.push_back(*it);
        }
    }
    if (!options.help) TakeScreens(std::move(screens), options);
    return options;
}

std::string_view UsageText() noexcept {
    return "ScreenHost [options] [SCREENFILE]\n"
           "ScreenHost --check SCREENFILE...\n"
           "Shows a screen of device controls, for use or for design.\n"
           "\n"
           "  --run              run the screen (the default)\n"
           "  --design           lay the screen out\n"
           "  --server FILE      use this component server although it is not registered (may be repeated)\n"
           "  --script FILE      play a script of user actions\n"
           "  --screenshot FILE  write a picture (PNG) of the window once everything has settled\n"
           "  --once             end after script and picture; status 0 only if every step succeeded\n"
           "  --log FILE         write the transcript to this file instead of standard output\n"
           "  --check            show nothing; report with line numbers what would surprise in these screens\n"
           "  --help             this text\n"
           "\n"
           "Without a screen it starts with an empty one. Recent screens and the window's place are remembered for "
           "the\n"
           "user, but not with --script or --once.\n"
           "\n"
           "Exit status: 0 when all went well; 1 when a step of the script or a control failed, or a check found\n"
           "something; 2 when there was nothing to do it with: a bad command line, a file that cannot be read; 3 when\n"
           "the program hung and was ended.\n"
           "\n"
           "Keys: F5 run or design, F6 next pane, F7 read from the device, F8 write to it, F9 device panel,\n"
           "Ctrl+F filter the log, F4 properties. Underlined letters are reached with Alt.\n"
           "\n"
           "A script has a step to a line. Texts with blanks stand in quotation marks, comments behind a semicolon.\n"
           "NAME is a control of the screen, VARIABLE one of the device; lengths are twips. What is expected is "
           "waited\n"
           "for, 5 seconds long unless \"within\" says otherwise. A step that fails is told with its line, and the "
           "next\n"
           "one is played. The steps:\n";
}

}  // namespace screenhost
