#import "platform/macos/views/Faces.h"

#import "platform/macos/Bridge.h"
#import "platform/macos/views/Capsule.h"
#import "platform/macos/views/Labels.h"
#import "platform/macos/views/Layout.h"

#include "platform/ports/Measures.h"

namespace {

namespace measures = kelpa::measures;

constexpr CGFloat defaultSpacing = 8;
constexpr NSSize skipPadding = {measures::padding, measures::capsulePadding};

} // namespace

/// The break screen as it is drawn: what to do, how long, and the way out of it.
@interface KelpaBreakView : NSView <KelpaContent>
/// `client` must outlive the view's last click.
- (instancetype)initWithClient:(kelpa::BreakScreenClient&)client;
@end

@implementation KelpaBreakView {
    NSTextField* _prompt;
    NSTextField* _count;
    NSTextField* _newFeature;
    KelpaLinkButton* _link;
    NSTextField* _hint;
    KelpaCapsuleButton* _skip;
    NSStackView* _stack;
    kelpa::BreakScreenClient* _client;
}

- (instancetype)initWithClient:(kelpa::BreakScreenClient&)client {
    self = [super initWithFrame:NSZeroRect];
    if (self) {
        _client = &client;
        [self makeTexts];
        [self makeButtons];
        [self layOut];
    }
    return self;
}

- (void)makeTexts {
    NSColor* secondary = [NSColor secondaryLabelColor];
    NSFont* body = kelpa::textFont(NSFontTextStyleBody);
    _prompt = kelpa::makeCenteredText("", [NSFont boldSystemFontOfSize:measures::promptSize], secondary);
    // Figures of one width: nothing moves when one of them changes.
    NSFont* figures = [NSFont monospacedDigitSystemFontOfSize:measures::countSize weight:NSFontWeightBold];
    _count = kelpa::makeLabel("", figures);
    // Never cut off or broken: the layout around it makes room.
    for (const auto orientation :
         {NSLayoutConstraintOrientationHorizontal, NSLayoutConstraintOrientationVertical})
        [_count setContentCompressionResistancePriority:NSLayoutPriorityRequired forOrientation:orientation];
    _newFeature = kelpa::makeLabel("", body);
    _hint = kelpa::makeLabel("", kelpa::textFont(NSFontTextStyleFootnote), secondary);
}

- (void)makeButtons {
    kelpa::BreakScreenClient* client = _client;
    _link = [[KelpaLinkButton alloc] initWithFont:kelpa::boldFont(NSFontTextStyleBody)
                                           action:^{
                                             kelpa::callCore([client] { client->noticeTapped(); });
                                           }];
    _skip = [[KelpaCapsuleButton alloc] initWithColor:[NSColor systemBlueColor]
                                                 font:kelpa::textFont(NSFontTextStyleHeadline)
                                            textColor:[NSColor whiteColor]
                                              padding:skipPadding
                                               action:^{
                                                 kelpa::callCore([client] { client->skipPressed(); });
                                               }];
    [_skip setHidden:YES];
}

- (void)layOut {
    NSView* spacer = [[NSView alloc] initWithFrame:NSZeroRect];
    NSStackView* column = kelpa::asColumn([NSStackView stackViewWithViews:@[ _link, _hint ]],
                                          NSLayoutAttributeLeading, defaultSpacing);
    NSStackView* notice = [NSStackView stackViewWithViews:@[ _newFeature, column ]];
    [notice setAlignment:NSLayoutAttributeTop];
    [notice setSpacing:defaultSpacing];
    _stack = kelpa::asColumn([NSStackView stackViewWithViews:@[ _prompt, spacer, _count, notice, _skip ]],
                             NSLayoutAttributeCenterX, defaultSpacing);
    for (NSView* above in @[ _prompt, spacer, _count ])
        [_stack setCustomSpacing:defaultSpacing + measures::padding afterView:above];
    [[[spacer heightAnchor] constraintEqualToConstant:measures::belowPrompt] setActive:YES];
    kelpa::addCentred(_stack, self);
}

/// A prompt that is too long for one line goes on to the next.
- (void)setFrameSize:(NSSize)size {
    [super setFrameSize:size];
    [_prompt setPreferredMaxLayoutWidth:size.width - 2 * measures::padding];
    [self fitPrompt];
}

/// One that is too long for the whole screen becomes smaller rather than push Skip off it.
- (void)fitPrompt {
    const CGFloat room = NSHeight([self bounds]) - 2 * measures::padding;
    CGFloat size = measures::promptSize;
    [_prompt setFont:[NSFont boldSystemFontOfSize:size]];
    while (room > 0 && size > [NSFont smallSystemFontSize] && [_stack fittingSize].height > room)
        [_prompt setFont:[NSFont boldSystemFontOfSize:--size]];
}

- (void)setTexts:(const kelpa::BreakScreenTexts&)texts {
    [_newFeature setStringValue:kelpa::toNSString(texts.newFeature)];
    [_link setText:kelpa::toNSString(texts.waterReminder)];
    [_link setSymbol:kelpa::toNSString(texts.linkSymbol)];
    [_link setAccessibilityHelp:kelpa::toNSString(texts.hint)];
    [_hint setStringValue:kelpa::toNSString(texts.hint)];
    [_skip setText:kelpa::toNSString(texts.skip)];
}

- (void)setPrompt:(NSString*)prompt {
    [_prompt setStringValue:prompt];
    [self fitPrompt];
}

- (void)setCount:(NSString*)count {
    [_count setStringValue:count];
}

- (void)setSkipOffered:(BOOL)offered {
    [_skip setHidden:!offered];
    [self fitPrompt];
}

/// The way out of a break is Skip, where it is offered; the window as such cannot be closed.
- (void)windowWantsToClose {
    kelpa::callCore([&] { _client->skipPressed(); });
}

- (void)drawRect:(NSRect)dirtyRect {
    [[NSColor windowBackgroundColor] setFill];
    NSRectFill(dirtyRect);
}

@end

namespace kelpa {

namespace {

/// Hands the view what it has to show; takes it out of its window at the end.
class MacBreakScreen final : public BreakScreenFace {
  public:
    explicit MacBreakScreen(KelpaBreakView* view) : view_(view) {}
    ~MacBreakScreen() override { [view_ removeFromSuperview]; }
    MacBreakScreen(const MacBreakScreen&) = delete;
    MacBreakScreen& operator=(const MacBreakScreen&) = delete;

    void setTexts(const BreakScreenTexts& texts) override { [view_ setTexts:texts]; }
    void setPrompt(const std::string& prompt) override { [view_ setPrompt:toNSString(prompt)]; }
    void setCount(const std::string& count) override { [view_ setCount:toNSString(count)]; }
    void setSkipOffered(bool offered) override { [view_ setSkipOffered:offered]; }

  private:
    KelpaBreakView* view_;
};

} // namespace

std::unique_ptr<BreakScreenFace> makeBreakScreen(KelpaWindow* window, BreakScreenClient& client) {
    KelpaBreakView* view = [[KelpaBreakView alloc] initWithClient:client];
    [window host:view];
    return std::make_unique<MacBreakScreen>(view);
}

} // namespace kelpa
