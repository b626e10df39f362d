#pragma once

/// The lengths of the toolbar in points, its font sizes in points and its opacities.
namespace lumacap::toolbarlook {

// The strip.
inline constexpr double spacing = 10; ///< between two controls, and between two rows
inline constexpr double sidePadding = 14;
inline constexpr double edgePadding = 8; ///< above and below
inline constexpr double stripRadius = 10;
inline constexpr double dividerWidth = 1;
inline constexpr double dividerHeight = 22;
inline constexpr double dividerOpacity = 0.2;

// Every control.
inline constexpr double reach = 4; ///< beyond its frame: less than half the spacing
inline constexpr double controlRadius = 6;
inline constexpr double disabledOpacity = 0.35;
inline constexpr double focusRingWidth = 2;
inline constexpr double focusRingOutset = 2; ///< to the middle of the ring

// Icon buttons.
inline constexpr double iconButtonSide = 28;
inline constexpr double currentOpacity = 0.3;
inline constexpr double toolFont = 15;
inline constexpr double shapeFont = 13;
inline constexpr double zoomFont = 12;
/// The side of a symbol's square in fonts: its drawing stands a little over the capitals.
inline constexpr double symbolSideAFont = 1.2;

// Swatches.
inline constexpr double swatchSide = 16;
inline constexpr double swatchInnerRingWidth = 2;
inline constexpr double swatchOuterRingOutset = 2;
inline constexpr double swatchCurrentRingWidth = 2;
inline constexpr double swatchRingWidth = 1;
inline constexpr double swatchRingOpacity = 0.3;
inline constexpr double swatchHoverRingOpacity = 0.9;
inline constexpr double swatchReach = 5;
inline constexpr double swatchFocusRingOutset = 4;
inline constexpr double swatchFocusRingWidth = 1.5;

// Thickness buttons.
inline constexpr double barWidth = 18;
inline constexpr double barRadius = 1;

// The background menu's button.
inline constexpr double menuIconFont = 12;
inline constexpr double menuChevronFont = 8;
inline constexpr double menuButtonSpacing = 3;
inline constexpr double menuButtonPadding = 6;
inline constexpr double menuButtonHeight = 28;
inline constexpr double menuButtonOpacity = 0.15;

// Text buttons.
inline constexpr double textFont = 13;
inline constexpr double textButtonHeight = 24;
inline constexpr double textButtonPadding = 12;
inline constexpr double textButtonBorderOpacity = 0.16;

// The open menu.
inline constexpr double menuGap = 11; ///< below its button, which puts it below the strip
inline constexpr double menuMargin = 8; ///< to the edges of the screen
inline constexpr double menuPadding = 5;
inline constexpr double menuRadius = 9;
inline constexpr double rowHeight = 26;
inline constexpr double rowRadius = 5;
inline constexpr double rowMarkLeft = 7;
inline constexpr double rowMarkSide = 12;
inline constexpr double rowIconLeft = 25;
inline constexpr double rowIconSide = 16;
inline constexpr double rowTextLeft = 49;
inline constexpr double rowTextRight = 18;
inline constexpr double rowFont = 13;
inline constexpr double shadowReach = 22;
inline constexpr double shadowDrop = 6;
inline constexpr double shadowOpacity = 0.32;

// The material.
inline constexpr double tintOpacity = 0.74;
inline constexpr double blurCell = 4; ///< the side of what is averaged before the blur
inline constexpr double backdropSaturation = 1.5;

} // namespace lumacap::toolbarlook
