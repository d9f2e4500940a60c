#import "platform/macos/views/Faces.h"

#import "platform/macos/Bridge.h"
#import "platform/macos/views/Capsule.h"
#import "platform/macos/views/Labels.h"
#import "platform/macos/views/Layout.h"
#import "platform/macos/views/TileGrid.h"
#import "platform/macos/views/WaterParts.h"

#include "platform/ports/Measures.h"

namespace {

namespace measures = kelpa::measures;

constexpr CGFloat padding = measures::panelPadding;
constexpr NSSize answerPadding = {measures::padding, measures::slimCapsulePadding};

NSStackView* rowOf(NSArray* views) {
    NSStackView* row = [NSStackView stackViewWithViews:views];
    [row setSpacing:padding];
    return row;
}

NSBox* makeDivider() {
    NSBox* divider = [[NSBox alloc] initWithFrame:NSZeroRect];
    [divider setBoxType:NSBoxSeparator];
    kelpa::fixSize(divider, {1, measures::dividerHeight});
    return divider;
}

} // namespace

/// The water panel as it is drawn: how far the day has come, when the next drink is due, and the answer to
/// it.
@interface KelpaWaterView : NSVisualEffectView <KelpaContent>
/// `client` must outlive the view's last click.
- (instancetype)initWithClient:(kelpa::WaterPanelClient&)client;
@end

@implementation KelpaWaterView {
    kelpa::WaterPanelClient* _client;
    KelpaWaterFigure* _finished;
    KelpaWaterFigure* _percent;
    KelpaWaterFigure* _remain;
    NSTextField* _wellDone;
    KelpaProgressBar* _bar;
    NSTextField* _tip;
    NSTextField* _remaining;
    KelpaTileGrid* _amounts;
    KelpaCapsuleButton* _skip;
    KelpaCapsuleButton* _done;
}

- (instancetype)initWithClient:(kelpa::WaterPanelClient&)client {
    self = [super initWithFrame:NSZeroRect];
    if (self) {
        _client = &client;
        [self setMaterial:NSVisualEffectMaterialPopover];
        [self setBlendingMode:NSVisualEffectBlendingModeBehindWindow];
        [self setState:NSVisualEffectStateActive];
        [self makeFigures];
        [self makeAmounts];
        [self makeAnswers];
        [self layOut];
    }
    return self;
}

- (void)makeFigures {
    NSColor* primary = [NSColor labelColor];
    _finished = [[KelpaWaterFigure alloc] initWithStyle:NSFontTextStyleTitle1
                                                  color:[NSColor systemBlueColor]];
    _percent = [[KelpaWaterFigure alloc] initWithStyle:NSFontTextStyleLargeTitle color:primary];
    _remain = [[KelpaWaterFigure alloc] initWithStyle:NSFontTextStyleTitle1 color:[NSColor systemRedColor]];
    _wellDone =
        kelpa::makeCenteredText("", kelpa::boldFont(NSFontTextStyleTitle3), [NSColor systemGreenColor]);
    _bar = [[KelpaProgressBar alloc] initWithFrame:NSZeroRect];
    _tip = kelpa::makeCenteredText("", kelpa::textFont(NSFontTextStyleTitle3), [NSColor secondaryLabelColor]);
    _remaining = kelpa::makeLabel("", kelpa::textFont(NSFontTextStyleTitle1), primary);
    // Not the colour's own opacity: a colour that is made of another one no longer follows light and dark.
    [_remaining setAlphaValue:measures::remainingOpacity];
}

- (void)makeAmounts {
    kelpa::WaterPanelClient* client = _client;
    _amounts = [[KelpaTileGrid alloc] initWithColumns:measures::tileColumns
                                               chosen:^(std::int64_t value) {
                                                 kelpa::callCore([=] { client->amountTapped(value); });
                                               }];
}

- (void)makeAnswers {
    __weak KelpaWaterView* weakSelf = self;
    kelpa::WaterPanelClient* client = _client;
    _skip = [[KelpaCapsuleButton alloc] initWithColor:[NSColor controlBackgroundColor]
                                                 font:kelpa::textFont(NSFontTextStyleBody)
                                            textColor:[NSColor systemRedColor]
                                              padding:answerPadding
                                               action:^{
                                                 [weakSelf enableAnswers:NO];
                                                 kelpa::callCore([=] { client->skipPressed(); });
                                               }];
    _done = [[KelpaCapsuleButton alloc] initWithColor:[NSColor systemBlueColor]
                                                 font:kelpa::textFont(NSFontTextStyleHeadline)
                                            textColor:[NSColor whiteColor]
                                              padding:answerPadding
                                               action:^{
                                                 [weakSelf enableAnswers:NO];
                                                 kelpa::callCore([=] { client->donePressed(); });
                                               }];
    [_skip castShadow:measures::answerShadow];
    [_done castShadow:measures::answerShadow];
}

- (void)layOut {
    NSStackView* figures = rowOf(@[ _finished, _percent, _remain, _wellDone ]);
    [figures setDistribution:NSStackViewDistributionFillEqually];
    NSStackView* counting = rowOf(@[ _tip, _remaining ]);
    NSStackView* answers = [[NSStackView alloc] initWithFrame:NSZeroRect];
    [answers setSpacing:padding];
    for (NSView* view in @[ _skip, makeDivider(), _done ])
        [answers addView:view inGravity:NSStackViewGravityTrailing];
    // The countdown takes what the others leave.
    NSStackView* stack = [NSStackView stackViewWithViews:@[ figures, _bar, counting, _amounts, answers ]];
    [stack setOrientation:NSUserInterfaceLayoutOrientationVertical];
    [stack setAlignment:NSLayoutAttributeCenterX];
    [stack setDistribution:NSStackViewDistributionEqualSpacing];
    kelpa::add(@[ stack ], self);
    [self pin:stack];
    for (NSView* wide in @[ figures, _bar, _amounts, answers ])
        [[[wide widthAnchor] constraintEqualToAnchor:[stack widthAnchor]] setActive:YES];
}

/// Below the transparent title bar, with some room on all sides.
- (void)pin:(NSView*)stack {
    NSLayoutGuide* safe = [self safeAreaLayoutGuide];
    [NSLayoutConstraint activateConstraints:@[
        [[stack topAnchor] constraintEqualToAnchor:[safe topAnchor]],
        [[stack leadingAnchor] constraintEqualToAnchor:[self leadingAnchor] constant:padding],
        [[stack trailingAnchor] constraintEqualToAnchor:[self trailingAnchor] constant:-padding],
        [[stack bottomAnchor] constraintEqualToAnchor:[self bottomAnchor] constant:-padding],
    ]];
}

/// Words that are too long for one line go on to the next.
- (void)setFrameSize:(NSSize)size {
    [super setFrameSize:size];
    [_tip setPreferredMaxLayoutWidth:size.width - 2 * padding];
}

- (void)setTexts:(const kelpa::WaterPanelTexts&)texts
         amounts:(const std::vector<kelpa::WaterAmount>&)amounts {
    [_finished setCaption:texts.finished];
    [_percent setCaption:texts.percent];
    [_remain setCaption:texts.remain];
    [_wellDone setStringValue:kelpa::toNSString(texts.wellDone)];
    [_skip setText:kelpa::toNSString(texts.skip)];
    [_done setText:kelpa::toNSString(texts.done)];
    [_bar setSymbol:texts.cup];
    std::vector<std::pair<std::int64_t, std::string>> entries;
    for (const kelpa::WaterAmount& amount : amounts)
        entries.emplace_back(amount.millilitres, amount.text);
    [_amounts setEntries:entries];
}

- (void)setProgress:(const kelpa::WaterProgress&)progress {
    const CGFloat third = (NSWidth([self bounds]) - 4 * padding) / 3;
    for (KelpaWaterFigure* figure in @[ _finished, _percent, _remain ])
        [figure setRoom:third];
    [_wellDone setPreferredMaxLayoutWidth:third];
    [_finished setFigure:progress.finished];
    [_percent setFigure:progress.percent];
    [_remain setFigure:progress.remain];
    [_remain setHidden:progress.remain.empty()];
    [_wellDone setHidden:!progress.remain.empty()];
    [_bar setFraction:progress.fraction];
}

- (void)setCounting:(const kelpa::WaterCounting&)counting {
    const BOOL counts = !counting.remaining.empty();
    [_tip setStringValue:kelpa::toNSString(counting.tip)];
    [_tip setFont:counts ? kelpa::textFont(NSFontTextStyleTitle3) : kelpa::boldFont(NSFontTextStyleTitle1)];
    [_remaining setStringValue:kelpa::toNSString(counting.remaining)];
    [_remaining setHidden:!counts];
}

- (void)setSelectedAmount:(std::int64_t)millilitres {
    [_amounts choose:millilitres];
}

- (void)enableAnswers:(BOOL)enabled {
    [_skip setEnabled:enabled];
    [_done setEnabled:enabled];
}

- (void)windowWantsToClose {
    kelpa::callCore([&] { _client->closePressed(); });
}

@end

namespace kelpa {

namespace {

/// Hands the view what it has to show; takes it out of its window at the end.
class MacWaterPanel final : public WaterPanelFace {
  public:
    explicit MacWaterPanel(KelpaWaterView* view) : view_(view) {}
    ~MacWaterPanel() override { [view_ removeFromSuperview]; }
    MacWaterPanel(const MacWaterPanel&) = delete;
    MacWaterPanel& operator=(const MacWaterPanel&) = delete;

    void setTexts(const WaterPanelTexts& texts, const std::vector<WaterAmount>& amounts) override {
        [view_ setTexts:texts amounts:amounts];
    }
    void setProgress(const WaterProgress& progress) override { [view_ setProgress:progress]; }
    void setCounting(const WaterCounting& counting) override { [view_ setCounting:counting]; }
    void setSelectedAmount(std::int64_t millilitres) override { [view_ setSelectedAmount:millilitres]; }
    void offerAnswers() override { [view_ enableAnswers:YES]; }

  private:
    KelpaWaterView* view_;
};

} // namespace

std::unique_ptr<WaterPanelFace> makeWaterPanel(KelpaWindow* window, WaterPanelClient& client) {
    KelpaWaterView* view = [[KelpaWaterView alloc] initWithClient:client];
    [window host:view];
    return std::make_unique<MacWaterPanel>(view);
}

} // namespace kelpa
