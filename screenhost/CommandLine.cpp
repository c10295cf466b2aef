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
    {"--once", [](Options& o) { o.once = true; }},     {"--help", [](Options& o) { o.help = true; }},
    {"-h", [](Options& o) { o.help = true; }},         {"/?", [](Options& o) { o.help = true; }},
};

constexpr ValueOption ValueOptions[] = {
    {"--server", [](Options& o, const std::string& value) { o.servers.push_back(value); }},
    {"--screenshot", [](Options& o, const std::string& value) { o.screenshot = value; }},
    {"--script", [](Options& o, const std::string& value) { o.script = value; }},
    {"--log", [](Options& o, const std::string& value) { o.log = value; }},
};

}  // namespace

Options ParseCommandLine(const std::vector<std::string>& arguments) {
    Options options;
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
        } else if (!options.screen.empty()) {
            throw TextError("more than one screen: " + options.screen + " and " + *it);
        } else {
            options.screen = *it;
        }
    }
    if (options.once && options.script.empty() && options.screenshot.empty())
        throw TextError("--once needs --script or --screenshot");
    return options;
}

std::string_view UsageText() noexcept {
    return "ScreenHost [options] SCREENFILE\n"
           "Shows a screen of device controls, for use or for design.\n"
           "\n"
           "  --run              run the screen (the default)\n"
           "  --design           lay the screen out\n"
           "  --server FILE      use this component server although it is not registered (may be repeated)\n"
           "  --script FILE      play a script of user actions\n"
           "  --screenshot FILE  write a picture (PNG) of the window once everything has settled\n"
           "  --once             end after script and picture; status 0 only if every step succeeded\n"
           "  --log FILE         write the transcript to this file instead of standard output\n"
           "  --help             this text, and the steps of a script\n";
}

}  // namespace screenhost
