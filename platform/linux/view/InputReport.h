#pragma once

#include "platform/linux/view/Channel.h"

#include <QElapsedTimer>
#include <QObject>

namespace kelpa::view {

/// Tells the program that a person uses one of its windows, which its own connection to a Wayland compositor
/// does not hear of. Not what is done there: only that something is.
class InputReport : public QObject {
    Q_OBJECT

  public:
    /// The channel outlives the report.
    explicit InputReport(Channel& channel);
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    Channel& channel_;
    QElapsedTimer told_;
};

} // namespace kelpa::view
