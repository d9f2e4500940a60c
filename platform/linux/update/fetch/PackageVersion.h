#pragma once

#include <QString>

namespace kelpa {

/// The version that a Debian package says it has, without the epoch; empty for what is no such package, or
/// where nothing on this machine can tell.
[[nodiscard]] QString versionInside(const QString& package);

} // namespace kelpa
