// Pictures by name, fonts, colours, layers and animations: what is asked for is kept, and nothing of it is
// drawn.
#import <AppKit/AppKit.h>
#import <CoreFoundation/CoreFoundation.h>
#import <CoreGraphics/CoreGraphics.h>
#import <CoreText/CoreText.h>
#import <QuartzCore/QuartzCore.h>

#include "tests/macos/runtime/Objects.h"
#import "tests/macos/standin/StandIns.h"

#include <vector>

NSFontTextStyle const NSFontTextStyleLargeTitle = @"26";
NSFontTextStyle const NSFontTextStyleTitle1 = @"22";
NSFontTextStyle const NSFontTextStyleTitle3 = @"15";
NSFontTextStyle const NSFontTextStyleHeadline = @"14";
NSFontTextStyle const NSFontTextStyleBody = @"13";
NSFontTextStyle const NSFontTextStyleFootnote = @"10";
const NSFontWeight NSFontWeightRegular = 0;
const NSFontWeight NSFontWeightBold = 0.4;

@implementation NSFont (StandIn)

/// The styles' values are their sizes.
+ (NSFont*)preferredFontForTextStyle:(NSFontTextStyle)style options:(NSDictionary*)options {
    return [NSFont systemFontOfSize:[style doubleValue]];
}

+ (NSFont*)monospacedDigitSystemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight {
    return weight > 0 ? [NSFont boldSystemFontOfSize:size] : [NSFont systemFontOfSize:size];
}

@end

@implementation NSColor (StandIn)

+ (NSColor*)controlAccentColor {
    return [NSColor selectedControlColor];
}

- (CGColorRef)CGColor {
    return (__bridge CGColorRef)self;
}

@end

@implementation NSAppearance (StandIn)

- (void)performAsCurrentDrawingAppearance:(void (^)(void))block {
    block();
}

@end

@implementation NSImageSymbolConfiguration

+ (instancetype)configurationWithPointSize:(CGFloat)size weight:(NSFontWeight)weight {
    return [[self alloc] init];
}

+ (instancetype)configurationWithScale:(NSImageSymbolScale)scale {
    return [[self alloc] init];
}

@end

@implementation NSImage (StandIn)

+ (instancetype)imageWithSystemSymbolName:(NSString*)name accessibilityDescription:(NSString*)description {
    NSImage* image = [[NSImage alloc] initWithSize:NSMakeSize(16, 16)];
    [recordOf(image) setObject:name forKey:@"symbol"];
    if (description)
        [recordOf(image) setObject:description forKey:@"description"];
    return image;
}

- (NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration {
    return [recordOf(self) objectForKey:@"symbol"] ? self : nil;
}

@end

@implementation CALayer

+ (void)load {
    ignoreMessages("NSView", "wantsUpdateLayer updateLayer setShadow: viewDidChangeEffectiveAppearance");
    ignoreMessages("NSImage", "setTemplate:");
}

- (void)setBackgroundColor:(CGColorRef)color {
}

- (void)setCornerRadius:(CGFloat)radius {
}

@end

/// What an animation changes, once its time is over.
@interface AnimatorStandIn : NSObject
- (instancetype)initWithTarget:(id)target;
@end

namespace {

struct Change {
    id target;
    std::function<void()> make;
};

/// Of the group that is being put together.
std::vector<Change> changes;
NSTimeInterval duration = 0;

/// All that are under way. A change takes the place of one to the same thing.
std::vector<std::pair<unsigned long, std::vector<Change>>> running;

void finish(unsigned long number) {
    for (auto group = running.begin(); group != running.end(); ++group)
        if (group->first == number) {
            const std::vector<Change> due = std::move(group->second);
            running.erase(group);
            for (const Change& change : due)
                change.make();
            return;
        }
}

void overtake(id target) {
    for (auto& group : running)
        std::erase_if(group.second, [&](const Change& change) { return change.target == target; });
}

} // namespace

@implementation AnimatorStandIn {
    id _target;
}

- (instancetype)initWithTarget:(id)target {
    self = [super init];
    _target = target;
    return self;
}

- (void)setFrame:(NSRect)frame {
    NSView* view = _target;
    changes.push_back({view, [=] { [view setFrame:frame]; }});
}

- (void)setAlphaValue:(CGFloat)alpha {
    NSWindow* window = _target;
    changes.push_back({window, [=] { [window setAlphaValue:alpha]; }});
}

@end

@implementation NSAnimationContext (StandIn)

+ (void)runAnimationGroup:(void (^)(NSAnimationContext* context))group
        completionHandler:(void (^)(void))completion {
    static unsigned long groups = 0;
    const unsigned long number = ++groups;
    changes.clear();
    duration = 0.25;
    group([[NSAnimationContext alloc] init]);
    for (const Change& change : changes)
        overtake(change.target);
    running.emplace_back(number, std::move(changes));
    standin::schedule(standin::now() + duration, true, [=] {
        finish(number);
        if (completion)
            completion();
    });
}

- (void)setDuration:(NSTimeInterval)seconds {
    duration = seconds;
}

@end

@implementation NSView (GraphicsStandIn)

- (id)animator {
    return [[AnimatorStandIn alloc] initWithTarget:self];
}

- (CALayer*)layer {
    return [recordOf(self) objectForKey:@"layer"];
}

- (void)setWantsLayer:(BOOL)wants {
    if (wants)
        [recordOf(self) setObject:[[CALayer alloc] init] forKey:@"layer"];
}

- (NSAppearance*)effectiveAppearance {
    static NSAppearance* light = [[NSAppearance alloc] init];
    return light;
}

@end

@implementation NSWindow (GraphicsStandIn)

- (id)animator {
    return [[AnimatorStandIn alloc] initWithTarget:self];
}

@end

extern "C" {

namespace {

constexpr CFTypeID numberType = 1;
constexpr CFTypeID booleanType = 2;

} // namespace

/// Truth values are numbers of a class of their own.
CFTypeID CFGetTypeID(CFTypeRef object) {
    return [NSStringFromClass([(__bridge id)object class]) hasSuffix:@"BoolNumber"] ? booleanType
                                                                                    : numberType;
}

CFTypeID CFBooleanGetTypeID(void) {
    return booleanType;
}

Boolean CFNumberIsFloatType(CFNumberRef number) {
    const char type = *[(__bridge NSNumber*)number objCType];
    return type == 'd' || type == 'f';
}

CGDataProviderRef CGDataProviderCreateWithCFData(CFDataRef data) {
    return reinterpret_cast<CGDataProviderRef>(const_cast<__CFData*>(data));
}

void CGDataProviderRelease(CGDataProviderRef) {}

CGFontRef CGFontCreateWithDataProvider(CGDataProviderRef provider) {
    return reinterpret_cast<CGFontRef>(provider);
}

void CGFontRelease(CGFontRef) {}

bool CTFontManagerRegisterGraphicsFont(CGFontRef, CFErrorRef*) {
    return true;
}

} // extern "C"
