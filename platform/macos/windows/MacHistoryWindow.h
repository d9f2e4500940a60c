#pragma once

#import <AppKit/AppKit.h>

#include "platform/ports/HistoryWindow.h"

@class KelpaHistoryPage;
@class KelpaWindowWatch;

namespace kelpa {

/// The window of the history. It is made whenever somebody wants to see it, and gone once it is closed.
class MacHistoryWindow final : public HistoryWindow {
  public:
    void setTexts(const HistoryTexts& texts, HistoryWindowClient& client) override;
    void setPicture(const HistoryPicture& picture) override;
    void show() override;
    /// Takes the window off the screen. Nothing is reported any more: the core's end comes before the
    /// window's.
    void retire();

  private:
    void makeWindow();
    void closed();

    HistoryTexts texts_;
    HistoryWindowClient* client_ = nullptr;
    NSWindow* window_ = nil; ///< while somebody looks at it
    KelpaHistoryPage* page_ = nil;
    KelpaWindowWatch* watch_ = nil; ///< the window's delegate, which it does not own
};

} // namespace kelpa
