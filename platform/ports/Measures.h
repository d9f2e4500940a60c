#pragma once

namespace kelpa::measures {

/// What every face draws alike. Lengths are points, times seconds.

/// Beside and around what stands alone, and between columns.
inline constexpr int padding = 16;

// Shadows are soft and of one kind; they differ in opacity.
inline constexpr int shadowRadius = 3;
inline constexpr double selectionShadow = 0.5; ///< of what lies raised among others
inline constexpr double answerShadow = 0.2;

// The break screen
inline constexpr int promptSize = 40;
inline constexpr int countSize = 100;
inline constexpr int belowPrompt = 80;
/// Above and below the words on a capsule, and where there is little room.
inline constexpr int capsulePadding = 8;
inline constexpr int slimCapsulePadding = 5;

// The water panel
inline constexpr int panelPadding = 8; ///< at its edges, and between what stands in a row
inline constexpr int captionSize = 10;
/// A figure that has no room becomes smaller, to this part of its size at most.
inline constexpr double figureShrink = 0.8;
/// Of the letters that what rides on the bar is as large as.
inline constexpr int cupSize = 15;
inline constexpr double remainingOpacity = 0.8;
inline constexpr int barHeight = 24; ///< with what rides on it
inline constexpr int trackHeight = 8;
inline constexpr double barSeconds = 0.4;
inline constexpr int dividerHeight = 16;

// Grids of which one entry is chosen
inline constexpr int tileColumns = 3;
inline constexpr int tileHeight = 34; ///< of a row, in which the capsule is inset
inline constexpr int tileInset = 3;   ///< of the capsule that lies beneath the chosen one
inline constexpr double slideSeconds = 0.25;

// The preferences
inline constexpr int sectionTitleSize = 12;

// What the program says of itself
inline constexpr int pictureSize = 96;
inline constexpr int belowGlyph = 20;

} // namespace kelpa::measures
