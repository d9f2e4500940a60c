// What other programs do with sound, cameras, the screen and the display's sleep: "sound", "camera",
// "fullscreen" or "awake", as a test says by the application's key "busyBy".
#import "platform/macos/check/standin/StandIns.h"

#import <CoreAudio/CoreAudio.h>
#import <CoreMediaIO/CMIOHardware.h>
#import <IOKit/pwr_mgt/IOPMLib.h>

#include <cstring>
#include <map>
#include <vector>

namespace {

unsigned busyBy(NSString* use) {
    return [recordOf(NSApp)[@"busyBy"] isEqual:use] ? 1 : 0;
}

/// What the system tells of an object: numbers. There are one microphone and two cameras, the second of which
/// may run.
std::vector<UInt32> told(UInt32 object, UInt32 property) {
    constexpr UInt32 microphone = 40, camera = 50, otherCamera = 51;
    constexpr UInt32 runs = kAudioDevicePropertyDeviceIsRunningSomewhere; // of cameras, too
    const std::map<std::pair<UInt32, UInt32>, std::vector<UInt32>> all = {
        {{kAudioObjectSystemObject, kAudioHardwarePropertyDefaultInputDevice}, {microphone}},
        {{microphone, runs}, {busyBy(@"sound")}},
        {{kCMIOObjectSystemObject, kCMIOHardwarePropertyDevices}, {camera, otherCamera}},
        {{camera, runs}, {0}},
        {{otherCamera, runs}, {busyBy(@"camera")}},
    };
    return all.at({object, property});
}

/// Gives only as much as there is.
OSStatus copy(const std::vector<UInt32>& numbers, UInt32 size, void* data) {
    if (size != numbers.size() * sizeof(UInt32))
        return -1;
    std::memcpy(data, numbers.data(), size);
    return 0;
}

} // namespace

extern "C" {

OSStatus AudioObjectGetPropertyData(AudioObjectID object, const AudioObjectPropertyAddress* address, UInt32,
                                    const void*, UInt32* size, void* data) {
    return copy(told(object, address->mSelector), *size, data);
}

OSStatus CMIOObjectGetPropertyDataSize(CMIOObjectID object, const CMIOObjectPropertyAddress* address, UInt32,
                                       const void*, UInt32* size) {
    *size = static_cast<UInt32>(told(object, address->mSelector).size() * sizeof(UInt32));
    return 0;
}

OSStatus CMIOObjectGetPropertyData(CMIOObjectID object, const CMIOObjectPropertyAddress* address, UInt32,
                                   const void*, UInt32 size, UInt32* used, void* data) {
    *used = size;
    return copy(told(object, address->mSelector), size, data);
}

/// The reader owns what it is given.
IOReturn IOPMCopyAssertionsStatus(CFDictionaryRef* assertions) {
    *assertions = (__bridge_retained CFDictionaryRef) @{@"PreventUserIdleDisplaySleep" : @(busyBy(@"awake"))};
    return 0;
}

} // extern "C"

@implementation NSApplication (BusynessStandIn)

- (NSApplicationPresentationOptions)currentSystemPresentationOptions {
    return busyBy(@"fullscreen") ? NSApplicationPresentationFullScreen : NSApplicationPresentationDefault;
}

@end
