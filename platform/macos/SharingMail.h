#pragma once

#include "platform/ports/Services.h"

namespace kelpa {

/// Mail through the system's sharing service.
class SharingMail final : public MailComposer {
  public:
    void compose(const Mail& mail) override;
};

} // namespace kelpa
