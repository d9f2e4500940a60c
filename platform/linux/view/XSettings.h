#pragma once

#include <QByteArray>

namespace kelpa::view {

/// A text among the settings that the desktop's settings program publishes on the X server; empty when there
/// is no such program or setting.
[[nodiscard]] QByteArray xSetting(const QByteArray& name);

/// The same, out of the published bytes.
[[nodiscard]] QByteArray findXSetting(const QByteArray& published, const QByteArray& name);

} // namespace kelpa::view
