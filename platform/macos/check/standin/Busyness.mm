// What other programs do with sound, cameras, the screen and the display's sleep, as a test says.
#import "platform/macos/check/driver/Commands.h"

#import <CoreAudio/CoreAudio.h>
#import <CoreMediaIO/CMIOHardware.h>
#import <IOKit/pwr_mgt/IOPMLib.h>

#include <cstring>
#include <vector>

namespace {

NSString* busyBy;

/// What the system tells of an object: numbers. There are one microphone and two cameras, the second of which
/// may run.
std::vector<UInt32> told(UInt32 object, UInt32 property) {
    constexpr UInt32 microphone = 40, camera = 50, otherCamera = 51;
    if (object == kAudioObjectSystemObject && property == kAudioHardwarePropertyDefaultInputDevice)
        return {microphone};
    if (object == kCMIOObjectSystemObject && property == kCMIOHardwarePropertyDevices)
        return {camera, otherCamera};
    if (property != kAudioDevicePropertyDeviceIsRunningSomewhere)
        return {};
    NSString* use = @{@(microphone) : @"sound", @(otherCamera) : @"camera"}[@(object)];
    return {[busyBy isEqual:use] ? 1u : 0u};
}

OSStatus copy(const std::vector<UInt32>& numbers, UInt32 size, void* data) {
    if (numbers.empty() || size != numbers.size() * sizeof(UInt32))
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
    const int count = [busyBy isEqual:@"awake"] ? 1 : 0;
    *assertions = (__bridge_retained CFDictionaryRef) @{@"PreventUserIdleDisplaySleep" : @(count)};
    return 0;
}

} // extern "C"

@implementation Driver (Busyness)

/// "sound", "camera", "fullscreen", "awake", or anything else for nothing.
+ (id)busy:(NSDictionary*)asked {
    busyBy = asked[@"by"];
    return nil;
}

@end

@implementation NSApplication (BusynessStandIn)

- (NSApplicationPresentationOptions)currentSystemPresentationOptions {
    return [busyBy isEqual:@"fullscreen"] ? NSApplicationPresentationFullScreen
                                          : NSApplicationPresentationDefault;
}

@end
