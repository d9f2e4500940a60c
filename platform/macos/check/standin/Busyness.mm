// What other programs do with sound, cameras, the screen and the display's sleep, as a test says.
#import "platform/macos/check/driver/Commands.h"

#import <CoreAudio/CoreAudio.h>
#import <CoreMediaIO/CMIOHardware.h>
#import <IOKit/pwr_mgt/IOPMLib.h>

#include <cstring>

namespace {

NSString* busyBy;

constexpr UInt32 device = 40;

void tell(void* data, UInt32 value) {
    std::memcpy(data, &value, sizeof value);
}

} // namespace

extern "C" {

OSStatus AudioObjectGetPropertyData(AudioObjectID object, const AudioObjectPropertyAddress* address, UInt32,
                                    const void*, UInt32* size, void* data) {
    const bool wanted =
        object == kAudioObjectSystemObject
            ? address->mSelector == kAudioHardwarePropertyDefaultInputDevice
            : object == device && address->mSelector == kAudioDevicePropertyDeviceIsRunningSomewhere;
    if (!wanted || *size != sizeof(UInt32))
        return -1;
    tell(data, object == device ? [busyBy isEqual:@"sound"] : device);
    return 0;
}

/// Two cameras, the second of which may run.
OSStatus CMIOObjectGetPropertyDataSize(CMIOObjectID, const CMIOObjectPropertyAddress*, UInt32, const void*,
                                       UInt32* size) {
    *size = 2 * sizeof(CMIOObjectID);
    return 0;
}

OSStatus CMIOObjectGetPropertyData(CMIOObjectID object, const CMIOObjectPropertyAddress* address, UInt32,
                                   const void*, UInt32 size, UInt32* used, void* data) {
    const CMIOObjectID both[] = {device, device + 1};
    *used = size;
    if (address->mSelector == kCMIOHardwarePropertyDevices && size == sizeof both)
        std::memcpy(data, both, size);
    else if (address->mSelector == kCMIODevicePropertyDeviceIsRunningSomewhere && size == sizeof(UInt32))
        tell(data, object == both[1] && [busyBy isEqual:@"camera"]);
    else
        return -1;
    return 0;
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
