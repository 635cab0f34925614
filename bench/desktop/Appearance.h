#pragma once

/// How the whole program looks. The changes reach every widget at once.
namespace Helmsway::Appearance {

inline constexpr int SmallestText = 75;
inline constexpr int LargestText = 300;

/// Notes the desktop's own font and palette, and takes a style that follows the palette. Call once, first.
void Begin();

/// Size of all text in percent of the desktop's own; what lies outside 75 to 300 becomes the end of the range.
void SetTextSize(int percent);
int TextSize();

enum class Colors { Desktop, Dark };
void SetColors(Colors colors);

}  // namespace Helmsway::Appearance
