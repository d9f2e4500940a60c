#pragma once

#import "platform/macos/windows/KelpaWindow.h"

#include "platform/ports/WindowFaces.h"

/// The break screen as it is drawn: what to do, how long, and the way out of it.
@interface KelpaBreakView : NSView <KelpaContent>
/// `client` must outlive the view's last click.
- (instancetype)initWithClient:(kelpa::BreakScreenClient&)client;
- (void)setTexts:(const kelpa::BreakScreenTexts&)texts;
- (void)setPrompt:(NSString*)prompt;
- (void)setCount:(NSString*)count;
- (void)setSkipOffered:(BOOL)offered;
@end

namespace kelpa {

/// Hands the view what it has to show; takes it out of its window at the end.
class MacBreakScreen final : public BreakScreenFace {
  public:
    explicit MacBreakScreen(KelpaBreakView* view) : view_(view) {}
    ~MacBreakScreen() override;
    MacBreakScreen(const MacBreakScreen&) = delete;
    MacBreakScreen& operator=(const MacBreakScreen&) = delete;

    void setTexts(const BreakScreenTexts& texts) override;
    void setPrompt(const std::string& prompt) override;
    void setCount(const std::string& count) override;
    void setSkipOffered(bool offered) override;

  private:
    KelpaBreakView* view_;
};

} // namespace kelpa
