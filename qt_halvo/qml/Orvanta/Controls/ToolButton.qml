// A flat button for tool bars: an icon (icon.source), a text or both, a background only
// while hovered, pressed or checked.
import QtQuick 2.12
import QtQuick.Templates 2.12 as T
import Orvanta.Styles 1.0

T.ToolButton {
    id: control

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             implicitContentHeight + topPadding + bottomPadding)
    padding: 4
    spacing: 4
    hoverEnabled: true
    Accessible.name: text
    icon.width: 16
    icon.height: 16

    contentItem: Row {
        spacing: control.spacing
        Image {
            anchors.verticalCenter: parent.verticalCenter
            source: control.icon.source
            visible: status === Image.Ready && control.display !== T.AbstractButton.TextOnly
            sourceSize.width: control.icon.width
            sourceSize.height: control.icon.height
            opacity: control.enabled ? 1 : 0.5
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: control.text
            font: control.font
            visible: text.length > 0 && control.display !== T.AbstractButton.IconOnly
            color: control.enabled ? Colors.primaryText : Colors.disabledText
        }
    }

    background: Rectangle {
        implicitWidth: 24
        implicitHeight: 24
        radius: 3
        visible: control.down || control.checked || control.hovered || control.visualFocus
        color: control.down || control.checked ? Colors.pressedBackground
             : control.hovered ? Colors.hoverBackground : "transparent"
        border.width: control.visualFocus ? 2 : 0
        border.color: Colors.focusFrame
    }
}
