#pragma once

/// The lengths of the preferences window in points, which are the toolkit's own units, its font
/// sizes in points and its opacities.
namespace lumacap::prefslook {

// The window.
inline constexpr int windowWidth = 480;
inline constexpr int windowHeight = 580;
inline constexpr int frameHeight = 40; ///< at most, of the desktop's own frame around the window
inline constexpr int padding = 24; ///< around the sections
inline constexpr int sectionSpacing = 20;
inline constexpr int footerSidePadding = 24;
inline constexpr int footerEdgePadding = 14; ///< above and below
inline constexpr int dividerHeight = 1;
inline constexpr double dividerOpacity = 0.1;

// Fonts.
inline constexpr double bodyFont = 13;
inline constexpr double headlineFont = 13; ///< semibold
inline constexpr double subheadlineFont = 11;
inline constexpr double captionFont = 10;
inline constexpr double smallControlFont = 11;
inline constexpr double secondaryOpacity = 0.64;
inline constexpr double tertiaryOpacity = 0.42;

// A section.
inline constexpr int headerSpacing = 8;
inline constexpr int headerBottom = 12;
inline constexpr int badgeSide = 24;
inline constexpr double badgeRadius = 6;
inline constexpr double badgeFont = 12;
inline constexpr double badgeLight = 0.24; ///< the share of white at the top of its gradient
inline constexpr int cardSpacing = 10;
inline constexpr int cardPadding = 14;
inline constexpr double cardRadius = 10;
inline constexpr double cardOpacity = 0.04;
inline constexpr double cardOutlineWidth = 1;
inline constexpr double cardOutlineOpacity = 0.08;
/// The side of a symbol's square in fonts: its drawing stands a little over the capitals.
inline constexpr double symbolSideAFont = 1.2;

// Rows and groups.
inline constexpr int helpBottom = 4;
inline constexpr int groupTop = 4; ///< above what a switch reveals
inline constexpr int themeSpacing = 8;
inline constexpr int outputSpacing = 10;
inline constexpr int rowGap = 8; ///< the least between a label and its control

// Background tiles.
inline constexpr int tileColumns = 3;
inline constexpr int tileSpacing = 8;
inline constexpr int tileEdgePadding = 8; ///< above and below
inline constexpr int tileSymbolHeight = 22;
inline constexpr int tileLabelGap = 6;
inline constexpr double tileSymbolFont = 18;
inline constexpr double tileRadius = 8;
inline constexpr double tileOpacity = 0.04;
inline constexpr double tileCurrentOpacity = 0.15;
inline constexpr double tileOutlineWidth = 1.5;

// Bordered buttons.
inline constexpr double buttonRadius = 6;
inline constexpr int recorderTextWidth = 140; ///< at least
inline constexpr int recorderSidePadding = 8;
inline constexpr int recorderEdgePadding = 4;
inline constexpr int smallButtonHeight = 20;
inline constexpr int smallButtonPadding = 9;
inline constexpr double smallButtonRadius = 5;

// Switches.
inline constexpr int switchWidth = 38;
inline constexpr int switchHeight = 22;
inline constexpr double switchInset = 2; ///< of the knob in its track
inline constexpr double switchOffOpacity = 0.14;
inline constexpr double switchEdgeOpacity = 0.1;
inline constexpr int switchMilliseconds = 160;

// The format picker.
inline constexpr int pickerWidth = 180;
inline constexpr int pickerHeight = 24;
inline constexpr double pickerRadius = 6;
inline constexpr double pickerInset = 2; ///< of the current segment
inline constexpr double pickerOpacity = 0.08;
inline constexpr double pickerDividerOpacity = 0.14;
inline constexpr double pickerDividerHeight = 12;

// The keyboard's focus.
inline constexpr double focusRingWidth = 2;
inline constexpr double focusRingOutset = 2; ///< to the middle of the ring

// The mark of how far the sections are scrolled.
inline constexpr int scrollMarkReach = 14; ///< what of the right edge answers to the pointer
inline constexpr double scrollMarkWidth = 6;
inline constexpr double scrollMarkMargin = 4;
inline constexpr double scrollMarkLeast = 32; ///< its height
inline constexpr double scrollMarkOpacity = 0.22;
inline constexpr double scrollMarkHeldOpacity = 0.42;

} // namespace lumacap::prefslook
