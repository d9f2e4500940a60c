#import "platform/macos/MacPorts.h"

#import <AppKit/AppKit.h>
#import <CoreAudio/CoreAudio.h>
#import <CoreMediaIO/CMIOHardware.h>
#import <IOKit/pwr_mgt/IOPMLib.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace kelpa {

namespace {

/// A property of a sound object that is a number; 0 where nothing tells it.
UInt32 soundProperty(AudioObjectID object, UInt32 what) {
    const AudioObjectPropertyAddress address = {what, kAudioObjectPropertyScopeGlobal,
                                                kAudioObjectPropertyElementMain};
    UInt32 value = 0;
    UInt32 size = sizeof value;
    return AudioObjectGetPropertyData(object, &address, 0, nullptr, &size, &value) == 0 ? value : 0;
}

/// By the device that programs record from unless somebody chose another one.
bool soundIsRecorded() {
    const AudioObjectID device =
        soundProperty(kAudioObjectSystemObject, kAudioHardwarePropertyDefaultInputDevice);
    return soundProperty(device, kAudioDevicePropertyDeviceIsRunningSomewhere) != 0;
}

std::vector<CMIOObjectID> cameras() {
    const CMIOObjectPropertyAddress devices = {kCMIOHardwarePropertyDevices, kCMIOObjectPropertyScopeGlobal,
                                               kCMIOObjectPropertyElementMain};
    UInt32 size = 0;
    if (CMIOObjectGetPropertyDataSize(kCMIOObjectSystemObject, &devices, 0, nullptr, &size) != 0)
        return {};
    std::vector<CMIOObjectID> all(size / sizeof(CMIOObjectID));
    UInt32 used = 0;
    if (CMIOObjectGetPropertyData(kCMIOObjectSystemObject, &devices, 0, nullptr, size, &used, all.data()) !=
        0)
        return {};
    // One that was unplugged meanwhile is told no more.
    all.resize(std::min(all.size(), used / sizeof(CMIOObjectID)));
    return all;
}

bool cameraRuns(CMIOObjectID camera) {
    const CMIOObjectPropertyAddress runs = {kCMIODevicePropertyDeviceIsRunningSomewhere,
                                            kCMIOObjectPropertyScopeGlobal, kCMIOObjectPropertyElementMain};
    UInt32 running = 0;
    UInt32 used = 0;
    return CMIOObjectGetPropertyData(camera, &runs, 0, nullptr, sizeof running, &used, &running) == 0 &&
           running != 0;
}

bool cameraIsUsed() {
    const auto all = cameras();
    return std::any_of(all.begin(), all.end(), cameraRuns);
}

bool displayIsKeptOn() {
    CFDictionaryRef assertions = nullptr;
    if (IOPMCopyAssertionsStatus(&assertions) != 0 || !assertions)
        return false;
    NSDictionary* counts = CFBridgingRelease(assertions);
    return [counts[@"PreventUserIdleDisplaySleep"] intValue] > 0;
}

/// What the active application has made of the screen: its own space, or a presentation.
bool screenIsCovered() {
    constexpr NSUInteger covering =
        NSApplicationPresentationFullScreen | NSApplicationPresentationHideMenuBar;
    return ([NSApp currentSystemPresentationOptions] & covering) != 0;
}

/// Of what other processes tell, on whichever thread.
std::optional<BusyReason> firstElsewhere(const std::set<BusyReason>& reasons) {
    if (reasons.count(BusyReason::Sound) > 0 && soundIsRecorded())
        return BusyReason::Sound;
    if (reasons.count(BusyReason::Camera) > 0 && cameraIsUsed())
        return BusyReason::Camera;
    if (reasons.count(BusyReason::Awake) > 0 && displayIsKeptOn())
        return BusyReason::Awake;
    return std::nullopt;
}

class MacBusyness final : public BusyProbe {
  public:
    MacBusyness(Queue& services, Queue& main) : services_(services), main_(main) {}

    Subscription ask(const std::set<BusyReason>& reasons, Answer answer) override {
        // Of the application itself only the main thread may be asked.
        const bool covered = reasons.count(BusyReason::FullScreen) > 0 && screenIsCovered();
        const auto told = std::make_shared<Answer>(std::move(answer));
        services_.async([&main = main_, told, reasons, covered] {
            const auto found = covered ? BusyReason::FullScreen : firstElsewhere(reasons);
            main.async([told, found] {
                // Taken out first: the answer may end the question.
                if (const Answer answered = std::exchange(*told, nullptr))
                    answered(found);
            });
        });
        return Subscription([told] { *told = nullptr; });
    }
    /// All of it can be had.
    [[nodiscard]] std::optional<std::string> unavailable(BusyReason) override { return std::nullopt; }

  private:
    Queue& services_;
    Queue& main_;
};

} // namespace

std::unique_ptr<BusyProbe> makeMacBusyness(Queue& services, Queue& main) {
    return std::make_unique<MacBusyness>(services, main);
}

} // namespace kelpa
