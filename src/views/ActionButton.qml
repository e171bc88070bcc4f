import QtQuick
import QtQuick.Controls
import QtQuick.Templates as T
import Tarnwell.Views

// The product's button, in four kinds: "primary" (the accent), "secondary"
// (a framed surface), "flat" (no frame until hovered) and "danger". A
// checkable button shows its checked state in the accent. With `iconName` it
// shows one of our icons before its text, or alone (then `hint` names it for
// screen readers as well as in its tooltip). Tab reaches it; Space, Enter and
// Return press it. Text stays at 4.5:1 or better against its fill in every
// state, disabled included.
T.Button {
    id: control
    property string kind: "secondary"
    property string iconName: ""
    property string hint: ""
    readonly property bool iconOnly: iconName.length > 0 && text.length === 0
    readonly property bool accented: enabled && (kind === "primary" || checked)
    readonly property bool dangerous: enabled && kind === "danger" && !checked

    readonly property color fillColor: {
        if (!enabled)
            return kind === "flat" ? "transparent" : Theme.hover
        if (accented)
            return down ? Theme.accentPressed : hovered ? Theme.accentHover : Theme.accent
        if (dangerous)
            return down ? Qt.darker(Theme.danger, Theme.dark ? 0.84 : 1.2)
                 : hovered ? Qt.darker(Theme.danger, Theme.dark ? 0.92 : 1.1) : Theme.danger
        if (down)
            return Theme.pressed
        if (hovered)
            return Theme.hover
        return kind === "flat" ? "transparent" : Theme.surface
    }
    readonly property color foreground: !enabled ? Theme.secondaryText
                                        : accented ? Theme.onAccent
                                        : dangerous ? Theme.onDanger : Theme.text

    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    font.family: Theme.fontFamily
    font.pixelSize: Theme.bodySize
    Keys.onReturnPressed: control.clicked()
    Keys.onEnterPressed: control.clicked()
    ToolTip.visible: hovered && hint.length > 0
    ToolTip.text: hint
    ToolTip.delay: 600
    Accessible.name: text.length > 0 ? text : hint

    padding: iconOnly ? 6 : Tokens.spaceS
    leftPadding: iconOnly ? 6 : Tokens.spaceM
    rightPadding: iconOnly ? 6 : Tokens.spaceM
    implicitWidth: Math.max(iconOnly ? Tokens.controlHeight : 56, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(Tokens.controlHeight, implicitContentHeight + topPadding + bottomPadding)

    // Our own template, not a style to override: the content is made with the button (its parts' sizes are the button's).
    // qmllint disable deferred-property-id
    contentItem: Item {
        // From the parts' own sizes, so that the text can be cut to the
        // width the button gets without deciding that width.
        implicitWidth: (glyph.visible ? glyph.width + content.spacing : 0) + (label.visible ? label.implicitWidth : 0)
        implicitHeight: Math.max(glyph.visible ? glyph.height : 0, label.visible ? label.implicitHeight : 0)
        Row {
            id: content
            anchors.centerIn: parent
            spacing: 6
            Icon {
                id: glyph
                objectName: "glyph"
                visible: control.iconName.length > 0
                name: control.iconName
                color: control.foreground
                width: control.iconOnly ? Tokens.iconSize : Tokens.iconSmall
                height: width
                anchors.verticalCenter: parent.verticalCenter
            }
            Text {
                id: label
                objectName: "text"
                visible: !control.iconOnly
                width: Math.max(0, Math.min(implicitWidth, control.availableWidth
                                - (glyph.visible ? glyph.width + content.spacing : 0)))
                text: control.text
                color: control.foreground
                font: control.font
                elide: Text.ElideRight
                anchors.verticalCenter: parent.verticalCenter
            }
        }
    }
    // qmllint enable deferred-property-id

    background: Rectangle {
        implicitWidth: control.iconOnly ? Tokens.controlHeight : 56
        implicitHeight: Tokens.controlHeight
        radius: Tokens.radiusS
        color: control.fillColor
        border.width: control.kind === "secondary" && !control.accented && control.enabled ? 1 : 0
        border.color: Theme.border
        FocusRing {
            visible: control.visualFocus
            cornerRadius: parent.radius
        }
    }
}
