#include "platform/linux/Descriptors.h"
#include "platform/linux/Memory.h"
#include "platform/linux/Options.h"
#include "platform/linux/Program.h"
#include "platform/linux/control/ControlClient.h"
#include "platform/linux/instance/Instance.h"

#include <cstdlib>
#include <iostream>

namespace {

constexpr int failed = 1;
constexpr int misused = 2;

const char* nameOf(kelpa::StartWish wish) {
    return wish == kelpa::StartWish::History ? "history" : "preferences";
}

int run(const kelpa::Options& options) {
    if (const auto tooFew = kelpa::tooFewDescriptors()) {
        std::cerr << "kelpa: " << *tooFew << '\n';
        return failed;
    }
    kelpa::printWithoutWaiting();
    kelpa::keepHeapSmall();
    kelpa::EventLoop loop(options.speed);
    kelpa::Bus session(loop, kelpa::Bus::Kind::Session);
    kelpa::Instance instance(loop, session, options.wish);
    switch (instance.claim()) {
    case kelpa::Instance::Role::Ended:
        return EXIT_SUCCESS;
    case kelpa::Instance::Role::Second:
        std::cout << "Kelpa runs already and shows its " << nameOf(options.wish) << '.' << std::endl;
        return EXIT_SUCCESS;
    case kelpa::Instance::Role::First:
        break;
    }
    // The display server goes when the desktop session ends; so do we.
    const auto [display, error] = kelpa::openDisplay(loop, [&loop] { loop.terminate(); });
    if (!display) {
        std::cerr << "kelpa: no display: " << error << '\n';
        return failed;
    }
    return kelpa::runProgram(loop, *display, options.speed, session, instance, options.wish);
}

} // namespace

int main(int argc, char** argv) {
    kelpa::openStandardStreams();
    const auto [options, error] = kelpa::parseOptions({argv + 1, argv + argc});
    if (!error.empty()) {
        std::cerr << error << '\n';
        return misused;
    }
    switch (options.action) {
    case kelpa::Options::Action::ShowHelp:
        std::cout << kelpa::helpText();
        return EXIT_SUCCESS;
    case kelpa::Options::Action::ShowVersion:
        std::cout << kelpa::versionText();
        return EXIT_SUCCESS;
    case kelpa::Options::Action::Control:
        return static_cast<int>(kelpa::runControl(options.control));
    case kelpa::Options::Action::History:
        return kelpa::runHistory(options.history);
    case kelpa::Options::Action::Run:
        break;
    }
    return run(options);
}
