// A push button. Highlighted: the accent fill, for the default action of a dialog.
import QtQuick 2.12
import QtQuick.Templates 2.12 as T
import Orvanta.Styles 1.0

T.Button {
    id: control

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             implicitContentHeight + topPadding + bottomPadding)
    padding: 6
    horizontalPadding: 12
    hoverEnabled: true
    Accessible.name: text

    contentItem: Text {
        text: control.text
        font: control.font
        elide: Text.ElideRight
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        color: !control.enabled ? Colors.disabledText
             : control.highlighted ? Colors.accentText : Colors.primaryText
    }

    background: Rectangle {
        implicitWidth: 80
        implicitHeight: 28
        radius: 3
        visible: !control.flat || control.down || control.hovered || control.checked
        color: control.highlighted ? Colors.accentColor
             : control.down || control.checked ? Colors.pressedBackground
             : control.hovered ? Colors.hoverBackground : Colors.panelBackground
        border.width: control.visualFocus ? 2 : 1
        border.color: control.visualFocus ? Colors.focusFrame : Colors.borderColor
        opacity: control.enabled ? 1 : 0.6
    }
}
