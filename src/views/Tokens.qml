pragma Singleton
import QtQuick

// The design tokens that never change: spacing steps, corner radii and the
// sizes of controls and icons. Colours, type and motion follow the desktop
// and come from `Theme` (ThemeController).
QtObject {
    readonly property int spaceXs: 4
    readonly property int spaceS: 8
    readonly property int spaceM: 12
    readonly property int spaceL: 16
    readonly property int spaceXl: 24

    readonly property int radiusS: 6
    readonly property int radiusM: 8
    readonly property int radiusL: 12

    readonly property int controlHeight: 32
    readonly property int rowHeight: 44
    readonly property int iconSize: 20
    readonly property int iconSmall: 16
    readonly property int checkSize: 20

    // The keyboard focus ring: its width and its gap outside the control.
    readonly property int ringWidth: 2
    readonly property int ringGap: 1
}
