#pragma once

#include "platform/ports/Services.h"

namespace kelpa {

/// The standard About panel. It shows the bundle's version by itself.
class StandardAboutPanel final : public AboutPanel {
  public:
    void show(const AboutText& text) override;
};

} // namespace kelpa
