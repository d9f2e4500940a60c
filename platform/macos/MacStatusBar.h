#pragma once

#import <AppKit/AppKit.h>

#include "platform/ports/StatusBar.h"

#include <map>

namespace kelpa {

/// The status item and its menu.
class MacStatusBar final : public StatusBar {
  public:
    void lineInserted(std::size_t index, const MenuLine& line) override;
    void lineRemoved(int lineId) override;
    void lineChanged(const MenuLine& line) override;
    void createItem(const std::string& image, MenuClicks& clicks) override;
    void setTitle(const std::string& title) override;

  private:
    NSMenu* menu_ = nil; ///< made with its first line
    std::map<int, NSMenuItem*> lines_;
    NSStatusItem* item_ = nil;
    std::string title_;
};

} // namespace kelpa
