#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace kelpa {

using InfoValue = std::variant<std::string, std::int64_t, double, bool>;

/// What the program's bundle and the machine say of themselves.
struct SystemInfo {
    struct Version {
        int major = 0;
        int minor = 0;
        int patch = 0;
    };
    /// The bundle's information dictionary; empty when it has none.
    std::map<std::string, InfoValue> bundleInfo;
    std::optional<std::string> bundleIdentifier;
    /// The machine field of uname, as it stands in its fixed-size buffer up to the first zero byte.
    std::string machine;
    Version osVersion;
    /// The folder that the program keeps its own files under; nothing when it has no usable home.
    std::optional<std::string> homeDirectory;
    /// The name by which the faces find the application's own picture; nothing when it has none.
    std::optional<std::string> applicationIcon;
};

/// Screen lock and unlock as the desktop tells of them, each edge once.
class LockNotifications {
  public:
    virtual ~LockNotifications() = default;
    /// Called once; both run on the main thread for the rest of the process.
    virtual void observe(std::function<void()> locked, std::function<void()> unlocked) = 0;
};

/// Mouse and modifier-key activity that goes to other programs.
class ActivityMonitor {
  public:
    enum class Watch {
        Working,
        None, ///< nothing here tells of activity, for now
    };
    virtual ~ActivityMonitor() = default;
    /// Called once; both run on the main thread for the rest of the process: `activity` at each event, also
    /// where there was nothing to watch at first, and `lost` when nothing will tell of activity any more.
    virtual Watch watch(std::function<void()> activity, std::function<void()> lost) = 0;
};

/// A drawn glyph: premultiplied 32-bit ARGB pixels, row by row.
struct GlyphImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;
};

/// The bundled fonts and the system's font registry.
class Fonts {
  public:
    virtual ~Fonts() = default;
    /// The bytes of a data asset; nothing when it is missing or no font can be made of it.
    [[nodiscard]] virtual std::optional<std::vector<unsigned char>>
    fontAsset(const std::string& name) const = 0;
    /// Makes a font known to this process; gives the error's description when the system refuses it.
    [[nodiscard]] virtual std::optional<std::string> registerFont(const std::vector<unsigned char>& font) = 0;
    /// Draws a text into an image of `size` × `size` points; nothing where the font cannot be made here.
    [[nodiscard]] virtual std::optional<GlyphImage> drawGlyph(const std::string& text,
                                                              const std::string& fontName, double size) = 0;
};

/// Gives a uniformly distributed number below `count`, which is at least 1. Copies may give the same numbers.
using RandomBelow = std::function<std::size_t(std::size_t count)>;

} // namespace kelpa
