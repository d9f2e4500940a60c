#pragma once

// What the macOS sources of this project use of the system's frameworks and what the headers of GNUstep lack:
// names, types and values as their public documentation gives them, each marked with the macOS in which it
// appeared, so that the compiler also sees what is used without asking on a system that is too old. Only for
// checks on a machine without those frameworks: nothing that a user gets is built with it. Values stand here
// only where the sources rely on them or an enumeration has to have one.

#include <cstddef>
#include <cstdint>

#ifdef __OBJC__
#import <AppKit/AppKit.h>
#endif

#define SINCE(version) __attribute__((availability(macos, introduced = version)))

// --- The names of the old Mac toolbox, which the system's headers put into the global namespace: ours live
// beside them.

struct Point {
    short v;
    short h;
};
struct Rect {
    short top;
    short left;
    short bottom;
    short right;
};
typedef long Size;
typedef unsigned char Style;

// And the macros of its assertions, which may or may not be there: no name of ours may depend on that.
#define check(assertion) static_assert(false)
#define verify(assertion) static_assert(false)
#define require(assertion, label) static_assert(false)

// --- Core Foundation

typedef unsigned char Boolean;
typedef const void* CFTypeRef;
typedef const struct __attribute__((objc_bridge(NSData))) __CFData* CFDataRef;
typedef const struct __attribute__((objc_bridge(NSString))) __CFString* CFStringRef;
typedef const struct __attribute__((objc_bridge(NSDictionary))) __CFDictionary* CFDictionaryRef;
typedef struct __attribute__((objc_bridge(NSError))) __CFError* CFErrorRef;

// --- Core Audio, Core Media I/O and power management

typedef std::uint32_t UInt32;
typedef std::int32_t OSStatus;
typedef int IOReturn;
typedef UInt32 AudioObjectID;
typedef UInt32 CMIOObjectID;

struct AudioObjectPropertyAddress {
    UInt32 mSelector;
    UInt32 mScope;
    UInt32 mElement;
};
struct CMIOObjectPropertyAddress {
    UInt32 mSelector;
    UInt32 mScope;
    UInt32 mElement;
};
enum : AudioObjectID { kAudioObjectSystemObject = 1 };
enum : UInt32 {
    kAudioObjectPropertyScopeGlobal = 0x676c6f62,
    kAudioObjectPropertyElementMain SINCE(12.0) = 0,
    kAudioHardwarePropertyDefaultInputDevice = 0x64496e20,
    kAudioDevicePropertyDeviceIsRunningSomewhere = 0x676f6e65,
};
enum : CMIOObjectID { kCMIOObjectSystemObject = 1 };
enum : UInt32 {
    kCMIOObjectPropertyScopeGlobal = 0x676c6f62,
    kCMIOObjectPropertyElementMain SINCE(12.0) = 0,
    kCMIOHardwarePropertyDevices = 0x64657623,
    kCMIODevicePropertyDeviceIsRunningSomewhere = 0x676f6e65,
};

extern "C" {
SINCE(10.4)
OSStatus AudioObjectGetPropertyData(AudioObjectID object, const AudioObjectPropertyAddress* address,
                                    UInt32 qualifierSize, const void* qualifier, UInt32* size, void* data);
SINCE(10.7)
OSStatus CMIOObjectGetPropertyDataSize(CMIOObjectID object, const CMIOObjectPropertyAddress* address,
                                       UInt32 qualifierSize, const void* qualifier, UInt32* size);
SINCE(10.7)
OSStatus CMIOObjectGetPropertyData(CMIOObjectID object, const CMIOObjectPropertyAddress* address,
                                   UInt32 qualifierSize, const void* qualifier, UInt32 size, UInt32* used,
                                   void* data);
SINCE(10.5) IOReturn IOPMCopyAssertionsStatus(CFDictionaryRef* assertions);
}

// --- Core Graphics and Core Text

typedef struct CGColor* CGColorRef;
typedef struct CGDataProvider* CGDataProviderRef;
typedef struct CGFont* CGFontRef;

extern "C" {
SINCE(10.4) CGDataProviderRef CGDataProviderCreateWithCFData(CFDataRef data);
/// Does nothing with null, as `CGFontRelease` does.
SINCE(10.0) void CGDataProviderRelease(CGDataProviderRef provider);
SINCE(10.5) CGFontRef CGFontCreateWithDataProvider(CGDataProviderRef provider);
SINCE(10.0) void CGFontRelease(CGFontRef font);
__attribute__((availability(macos, introduced = 10.8, deprecated = 15.0))) bool
CTFontManagerRegisterGraphicsFont(CGFontRef font, CFErrorRef* error);
}

// --- libdispatch

typedef void (^dispatch_block_t)(void);
typedef std::uint64_t dispatch_time_t;
#ifdef __OBJC__
@protocol OS_dispatch_queue <NSObject>
@end
@protocol OS_dispatch_source <NSObject>
@end
typedef NSObject<OS_dispatch_queue>* dispatch_queue_t;
typedef NSObject<OS_dispatch_source>* dispatch_source_t;
typedef NSObject* dispatch_queue_attr_t;
typedef const struct dispatch_source_type_s* dispatch_source_type_t;
typedef unsigned int dispatch_qos_class_t;
enum : dispatch_qos_class_t { QOS_CLASS_DEFAULT = 0x15 };
#define DISPATCH_QUEUE_SERIAL NULL
#define DISPATCH_TIME_NOW (0ull)
#define DISPATCH_TIME_FOREVER (~0ull)
#define NSEC_PER_SEC 1000000000ull

extern "C" {
extern const struct dispatch_source_type_s _dispatch_source_type_timer;
#define DISPATCH_SOURCE_TYPE_TIMER (&_dispatch_source_type_timer)
SINCE(10.6) dispatch_queue_t dispatch_get_main_queue(void);
SINCE(10.6) dispatch_queue_t dispatch_get_global_queue(std::intptr_t identifier, std::uintptr_t flags);
SINCE(10.12)
dispatch_queue_t dispatch_queue_create_with_target(const char* label, dispatch_queue_attr_t attributes,
                                                   dispatch_queue_t target)
    __attribute__((ns_returns_retained));
SINCE(10.6) void dispatch_async(dispatch_queue_t queue, dispatch_block_t block);
SINCE(10.6) dispatch_time_t dispatch_time(dispatch_time_t when, std::int64_t delta);
SINCE(10.6) dispatch_time_t dispatch_walltime(const struct timespec* when, std::int64_t delta);
SINCE(10.6)
dispatch_source_t dispatch_source_create(dispatch_source_type_t type, std::uintptr_t handle,
                                         std::uintptr_t mask, dispatch_queue_t queue)
    __attribute__((ns_returns_retained));
SINCE(10.6)
void dispatch_source_set_timer(dispatch_source_t source, dispatch_time_t start, std::uint64_t interval,
                               std::uint64_t leeway);
SINCE(10.6) void dispatch_source_set_event_handler(dispatch_source_t source, dispatch_block_t handler);
SINCE(10.6) void dispatch_source_cancel(dispatch_source_t source);
SINCE(10.6) void dispatch_resume(dispatch_source_t source);
}

// --- Foundation

/// Hands the ownership of a Core Foundation object to ARC.
static inline id CFBridgingRelease(CFTypeRef object) {
    return (__bridge_transfer id)object;
}

typedef struct {
    NSInteger majorVersion;
    NSInteger minorVersion;
    NSInteger patchVersion;
} NSOperatingSystemVersion SINCE(10.10);

@interface NSProcessInfo (MacDeclarations)
- (NSOperatingSystemVersion)operatingSystemVersion SINCE(10.10);
@end

@interface NSTimer (MacDeclarations)
- (void)setTolerance:(NSTimeInterval)tolerance SINCE(10.9);
@end

enum : NSUInteger { NSRectEdgeMaxY = 3 };

// --- AppKit: the application, its menus and its events

@class NSStatusBarButton;

enum : NSUInteger {
    NSEventMaskLeftMouseDown = 1ull << 1,
    NSEventMaskLeftMouseUp = 1ull << 2,
    NSEventMaskRightMouseDown = 1ull << 3,
    NSEventMaskRightMouseUp = 1ull << 4,
    NSEventMaskMouseMoved = 1ull << 5,
    NSEventMaskLeftMouseDragged = 1ull << 6,
    NSEventMaskRightMouseDragged = 1ull << 7,
    NSEventMaskFlagsChanged = 1ull << 12,
};
enum : NSUInteger { NSEventTypeLeftMouseDown = 1, NSEventTypeKeyDown = 10, NSEventTypeKeyUp = 11 };

@interface NSEvent (MacDeclarations)
+ (id)addGlobalMonitorForEventsMatchingMask:(NSEventMask)mask
                                    handler:(void (^)(NSEvent* event))block SINCE(10.6);
@end

@interface NSStatusItem (MacDeclarations)
- (NSStatusBarButton*)button SINCE(10.10);
@end

extern NSString* const NSAboutPanelOptionCredits SINCE(10.13);
extern NSString* const NSAboutPanelOptionApplicationName SINCE(10.13);
extern NSString* const NSAboutPanelOptionApplicationIcon SINCE(10.13);
extern NSString* const NSImageNameApplicationIcon SINCE(10.6);

@interface NSApplication (SystemPresentation)
- (NSApplicationPresentationOptions)currentSystemPresentationOptions SINCE(10.6);
@end

SINCE(10.15) @interface NSWorkspaceOpenConfiguration : NSObject
+ (instancetype)configuration SINCE(10.15);
@property(nonatomic) BOOL activates SINCE(10.15);
@end

@interface NSWorkspace (MacDeclarations)
- (void)openApplicationAtURL:(NSURL*)applicationURL
               configuration:(NSWorkspaceOpenConfiguration*)configuration
           completionHandler:(void (^)(NSRunningApplication* app, NSError* error))completionHandler
    SINCE(10.15);
@end

extern NSString* const NSSharingServiceNameComposeEmail SINCE(10.8);

@interface NSSharingService (MacDeclarations)
+ (NSSharingService*)sharingServiceNamed:(NSString*)serviceName SINCE(10.8);
- (void)setSubject:(NSString*)subject SINCE(10.9);
- (void)setRecipients:(NSArray<NSString*>*)recipients SINCE(10.9);
- (void)performWithItems:(NSArray*)items SINCE(10.8);
@end

// --- AppKit: fonts and images

typedef NSString* NSFontTextStyle SINCE(11.0);
extern NSFontTextStyle const NSFontTextStyleLargeTitle SINCE(11.0);
extern NSFontTextStyle const NSFontTextStyleTitle1 SINCE(11.0);
extern NSFontTextStyle const NSFontTextStyleTitle3 SINCE(11.0);
extern NSFontTextStyle const NSFontTextStyleHeadline SINCE(11.0);
extern NSFontTextStyle const NSFontTextStyleBody SINCE(11.0);
extern NSFontTextStyle const NSFontTextStyleFootnote SINCE(11.0);
typedef CGFloat NSFontWeight;
extern const NSFontWeight NSFontWeightRegular SINCE(10.11);
extern const NSFontWeight NSFontWeightBold SINCE(10.11);

@interface NSFont (MacDeclarations)
+ (NSFont*)monospacedDigitSystemFontOfSize:(CGFloat)fontSize weight:(NSFontWeight)weight SINCE(10.11);
+ (NSFont*)preferredFontForTextStyle:(NSFontTextStyle)style options:(NSDictionary*)options SINCE(11.0);
@end

typedef NSInteger NSImageSymbolScale SINCE(11.0);
enum : NSInteger { NSImageSymbolScaleMedium = 2 };

SINCE(11.0) @interface NSImageSymbolConfiguration : NSObject
+ (instancetype)configurationWithPointSize:(CGFloat)pointSize weight:(NSFontWeight)weight SINCE(11.0);
+ (instancetype)configurationWithScale:(NSImageSymbolScale)scale SINCE(11.0);
@end

@interface NSImage (MacDeclarations)
+ (instancetype)imageWithSystemSymbolName:(NSString*)symbolName
                 accessibilityDescription:(NSString*)description SINCE(11.0);
- (NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration SINCE(11.0);
- (void)setTemplate:(BOOL)isTemplate SINCE(10.5);
- (NSString*)accessibilityDescription SINCE(10.6);
@end

// --- AppKit: views and their layout

extern const CGFloat NSViewNoIntrinsicMetric SINCE(10.11);

@class CALayer;

@interface NSView (MacDeclarations)
- (id)animator SINCE(10.5);
- (CALayer*)layer SINCE(10.5);
- (void)setWantsLayer:(BOOL)wantsLayer SINCE(10.5);
- (BOOL)wantsUpdateLayer SINCE(10.8);
- (void)updateLayer SINCE(10.8);
- (void)setShadow:(NSShadow*)shadow SINCE(10.5);
- (void)layout SINCE(10.7);
- (void)setNeedsLayout:(BOOL)needsLayout SINCE(10.7);
- (NSSize)intrinsicContentSize SINCE(10.7);
- (void)invalidateIntrinsicContentSize SINCE(10.7);
- (void)setTranslatesAutoresizingMaskIntoConstraints:(BOOL)flag SINCE(10.7);
- (void)setContentCompressionResistancePriority:(NSLayoutPriority)priority
                                 forOrientation:(NSLayoutConstraintOrientation)orientation SINCE(10.7);
- (void)viewDidChangeEffectiveAppearance SINCE(10.14);
- (NSAppearance*)effectiveAppearance SINCE(10.9);
- (NSSize)fittingSize SINCE(10.7);
- (void)addTrackingArea:(NSTrackingArea*)trackingArea SINCE(10.5);
- (CGFloat)firstBaselineOffsetFromTop SINCE(10.11);
- (void)setIdentifier:(NSString*)identifier SINCE(10.7);
- (NSLayoutXAxisAnchor*)leadingAnchor SINCE(10.11);
- (NSLayoutXAxisAnchor*)trailingAnchor SINCE(10.11);
- (NSLayoutXAxisAnchor*)centerXAnchor SINCE(10.11);
- (NSLayoutYAxisAnchor*)topAnchor SINCE(10.11);
- (NSLayoutYAxisAnchor*)bottomAnchor SINCE(10.11);
- (NSLayoutYAxisAnchor*)centerYAnchor SINCE(10.11);
- (NSLayoutDimension*)widthAnchor SINCE(10.11);
- (NSLayoutDimension*)heightAnchor SINCE(10.11);
- (NSLayoutGuide*)safeAreaLayoutGuide SINCE(11.0);
@end

@interface NSLayoutConstraint (MacDeclarations)
- (void)setPriority:(NSLayoutPriority)priority SINCE(10.7);
@end

@interface NSAppearance (MacDeclarations)
- (void)performAsCurrentDrawingAppearance:(void (^)(void))block SINCE(11.0);
@end

extern NSString* const NSAccessibilityRadioButtonRole;
extern NSString* const NSAccessibilityRadioGroupRole;
extern NSString* const NSAccessibilityLinkRole;

@interface NSView (MacDeclarationsOfAccessibility)
- (void)setAccessibilityElement:(BOOL)accessibilityElement SINCE(10.10);
- (void)setAccessibilityRole:(NSString*)role SINCE(10.10);
- (void)setAccessibilityLabel:(NSString*)label SINCE(10.10);
- (NSString*)accessibilityLabel SINCE(10.10);
- (void)setAccessibilityHelp:(NSString*)help SINCE(10.10);
- (void)setAccessibilityValue:(id)value SINCE(10.10);
- (NSString*)accessibilityRole SINCE(10.10);
- (NSString*)accessibilityHelp SINCE(10.10);
- (id)accessibilityValue SINCE(10.10);
@end

@interface NSColor (MacDeclarations)
+ (NSColor*)controlAccentColor SINCE(10.14);
@end

typedef NSInteger NSStackViewGravity SINCE(10.9);
enum : NSInteger { NSStackViewGravityTrailing = 3 };
typedef NSInteger NSStackViewDistribution SINCE(10.11);
enum : NSInteger { NSStackViewDistributionFillEqually = 1, NSStackViewDistributionEqualSpacing = 3 };

SINCE(10.9) @interface NSStackView : NSView
+ (instancetype)stackViewWithViews:(NSArray<NSView*>*)views SINCE(10.9);
@property(nonatomic) NSUserInterfaceLayoutOrientation orientation SINCE(10.9);
@property(nonatomic) NSLayoutAttribute alignment SINCE(10.9);
@property(nonatomic) NSEdgeInsets edgeInsets SINCE(10.9);
@property(nonatomic) CGFloat spacing SINCE(10.9);
- (void)setCustomSpacing:(CGFloat)spacing afterView:(NSView*)aView SINCE(10.9);
@property(nonatomic) NSStackViewDistribution distribution SINCE(10.11);
- (void)addView:(NSView*)aView inGravity:(NSStackViewGravity)gravity SINCE(10.9);
- (void)addArrangedSubview:(NSView*)view SINCE(10.11);
- (NSArray<NSView*>*)arrangedSubviews SINCE(10.11);
@end

@interface NSGridRow (MacDeclarations)
- (void)setHidden:(BOOL)hidden SINCE(10.12);
@end

extern "C" SINCE(10.5) double CACurrentMediaTime(void);

SINCE(10.5) @interface CALayer : NSObject
- (void)setBackgroundColor:(CGColorRef)color SINCE(10.5);
- (void)setCornerRadius:(CGFloat)radius SINCE(10.5);
@end

// --- AppKit: windows

typedef NSInteger NSWindowAnimationBehavior SINCE(10.7);
enum : NSInteger { NSWindowAnimationBehaviorNone = 2 };
typedef NSInteger NSWindowToolbarStyle SINCE(11.0);
enum : NSInteger { NSWindowToolbarStylePreference = 2 };

@interface NSWindow (MacDeclarations)
- (id)animator SINCE(10.5);
- (void)setTitlebarAppearsTransparent:(BOOL)transparent SINCE(10.10);
- (void)setTitlebarSeparatorStyle:(NSTitlebarSeparatorStyle)style SINCE(11.0);
- (void)setAnimationBehavior:(NSWindowAnimationBehavior)behavior SINCE(10.7);
- (void)setToolbarStyle:(NSWindowToolbarStyle)style SINCE(11.0);
@end

// --- AppKit: controls

enum : NSUInteger { NSImageLeading = 7, NSImageTrailing = 8 };
constexpr NSButtonType NSButtonTypeMomentaryPushIn = NSMomentaryPushInButton;

@interface NSAlert (MacDeclarations)
- (void)layout SINCE(10.5);
@end

@interface NSButton (MacDeclarations)
+ (instancetype)buttonWithImage:(NSImage*)image target:(id)target action:(SEL)action SINCE(10.12);
+ (instancetype)buttonWithTitle:(NSString*)title target:(id)target action:(SEL)action SINCE(10.12);
- (void)setContentTintColor:(NSColor*)color SINCE(10.14);
@end

@interface NSTextField (MacDeclarations)
+ (instancetype)labelWithString:(NSString*)stringValue SINCE(10.12);
+ (instancetype)wrappingLabelWithString:(NSString*)stringValue SINCE(10.12);
+ (instancetype)textFieldWithString:(NSString*)stringValue SINCE(10.12);
- (void)setPreferredMaxLayoutWidth:(CGFloat)width SINCE(10.8);
@end

@interface NSControl (MacDeclarations)
- (void)setLineBreakMode:(NSLineBreakMode)mode SINCE(10.10);
@end

@interface NSSegmentedControl (MacDeclarations)
- (void)setTag:(NSInteger)tag forSegment:(NSInteger)segment SINCE(10.13);
- (NSInteger)tagForSegment:(NSInteger)segment SINCE(10.13);
@end

enum : NSUInteger { NSDatePickerStyleTextFieldAndStepper = 0 };
enum : NSUInteger { NSDatePickerElementFlagHourMinute = 0x000c };

@interface NSTableView (MacDeclarations)
- (NSView*)makeViewWithIdentifier:(NSString*)identifier owner:(id)owner SINCE(10.7);
- (NSView*)viewAtColumn:(NSInteger)column
                    row:(NSInteger)row
        makeIfNecessary:(BOOL)makeIfNecessary SINCE(10.7);
@end

@interface NSScroller (MacDeclarations)
+ (CGFloat)scrollerWidthForControlSize:(NSControlSize)controlSize
                         scrollerStyle:(NSScrollerStyle)scrollerStyle SINCE(10.7);
@end

@interface NSTabViewItem (MacDeclarations)
- (void)setImage:(NSImage*)image SINCE(10.10);
@end

// --- Service management

extern "C" {
__attribute__((availability(macos, introduced = 10.6, deprecated = 13.0))) Boolean
SMLoginItemSetEnabled(CFStringRef identifier, Boolean enabled);
}

SINCE(13.0) @interface SMAppService : NSObject
+ (SMAppService*)mainAppService SINCE(13.0);
- (BOOL)registerAndReturnError:(NSError**)error SINCE(13.0);
- (BOOL)unregisterAndReturnError:(NSError**)error SINCE(13.0);
@end

// --- Notifications

using UNAuthorizationOptions = NSUInteger;
using UNNotificationActionOptions = NSUInteger;
using UNNotificationCategoryOptions = NSUInteger;
using UNNotificationPresentationOptions = NSUInteger;
constexpr UNAuthorizationOptions UNAuthorizationOptionAlert = 1 << 2;
constexpr UNNotificationActionOptions UNNotificationActionOptionNone = 0;
constexpr UNNotificationCategoryOptions UNNotificationCategoryOptionNone = 0;
constexpr UNNotificationPresentationOptions UNNotificationPresentationOptionList = 1 << 3;   // since 11.0
constexpr UNNotificationPresentationOptions UNNotificationPresentationOptionBanner = 1 << 4; // since 11.0

@class UNNotificationTrigger;

SINCE(10.14) @interface UNNotificationAction : NSObject
+ (instancetype)actionWithIdentifier:(NSString*)identifier
                               title:(NSString*)title
                             options:(UNNotificationActionOptions)options SINCE(10.14);
@property(nonatomic, readonly, copy) NSString* identifier SINCE(10.14);
@property(nonatomic, readonly, copy) NSString* title SINCE(10.14);
@end

SINCE(10.14) @interface UNNotificationCategory : NSObject
+ (instancetype)categoryWithIdentifier:(NSString*)identifier
                               actions:(NSArray*)actions
                     intentIdentifiers:(NSArray*)intentIdentifiers
                               options:(UNNotificationCategoryOptions)options SINCE(10.14);
@property(nonatomic, readonly, copy) NSString* identifier SINCE(10.14);
@property(nonatomic, readonly, copy) NSArray<UNNotificationAction*>* actions SINCE(10.14);
@end

SINCE(10.14) @interface UNNotificationContent : NSObject
@end

SINCE(10.14) @interface UNMutableNotificationContent : UNNotificationContent
@property(nonatomic, copy) NSString* title SINCE(10.14);
@property(nonatomic, copy) NSString* body SINCE(10.14);
@property(nonatomic, copy) NSString* categoryIdentifier SINCE(10.14);
@end

SINCE(10.14) @interface UNNotificationRequest : NSObject
+ (instancetype)requestWithIdentifier:(NSString*)identifier
                              content:(UNNotificationContent*)content
                              trigger:(UNNotificationTrigger*)trigger SINCE(10.14);
@property(nonatomic, readonly, copy) NSString* identifier SINCE(10.14);
@property(nonatomic, readonly) UNNotificationContent* content SINCE(10.14);
@end

SINCE(10.14) @interface UNNotification : NSObject
@property(nonatomic, readonly) UNNotificationRequest* request SINCE(10.14);
@end

SINCE(10.14) @interface UNNotificationResponse : NSObject
@property(nonatomic, readonly) UNNotification* notification SINCE(10.14);
@property(nonatomic, readonly, copy) NSString* actionIdentifier SINCE(10.14);
@end

@class UNUserNotificationCenter;
@protocol UNUserNotificationCenterDelegate <NSObject>
@optional
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions options))completionHandler
    SINCE(10.14);
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
    didReceiveNotificationResponse:(UNNotificationResponse*)response
             withCompletionHandler:(void (^)(void))completionHandler SINCE(10.14);
@end

SINCE(10.14) @interface UNUserNotificationCenter : NSObject
+ (UNUserNotificationCenter*)currentNotificationCenter SINCE(10.14);
@property(nonatomic, weak) id<UNUserNotificationCenterDelegate> delegate SINCE(10.14);
- (void)setNotificationCategories:(NSSet*)categories SINCE(10.14);
- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(void (^)(BOOL granted, NSError* error))completionHandler
    SINCE(10.14);
- (void)addNotificationRequest:(UNNotificationRequest*)request
         withCompletionHandler:(void (^)(NSError* error))completionHandler SINCE(10.14);
- (void)removePendingNotificationRequestsWithIdentifiers:(NSArray*)identifiers SINCE(10.14);
- (void)removeDeliveredNotificationsWithIdentifiers:(NSArray*)identifiers SINCE(10.14);
@end

// --- Sparkle 2, whose own documentation these are from

@interface SPUUpdater : NSObject
- (void)setAutomaticallyChecksForUpdates:(BOOL)checks;
- (void)setUpdateCheckInterval:(NSTimeInterval)interval;
- (void)setSendsSystemProfile:(BOOL)sends;
- (void)checkForUpdates;
@end

@interface SPUStandardUpdaterController : NSObject
- (instancetype)initWithStartingUpdater:(BOOL)startUpdater
                        updaterDelegate:(id)updaterDelegate
                     userDriverDelegate:(id)userDriverDelegate;
@property(nonatomic, readonly) SPUUpdater* updater;
@end
#endif
