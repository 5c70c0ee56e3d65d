// A check box; with tristate, the partial state shows a bar.
import QtQuick 2.12
import QtQuick.Templates 2.12 as T
import Orvanta.Styles 1.0

T.CheckBox {
    id: control

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             implicitContentHeight + topPadding + bottomPadding,
                             implicitIndicatorHeight + topPadding + bottomPadding)
    padding: 4
    spacing: 6
    hoverEnabled: true

    indicator: Rectangle {
        implicitWidth: 16
        implicitHeight: 16
        x: control.text ? (control.mirrored ? control.width - width - control.rightPadding : control.leftPadding)
                        : control.leftPadding + (control.availableWidth - width) / 2
        y: control.topPadding + (control.availableHeight - height) / 2
        radius: 2
        color: control.checkState !== Qt.Unchecked ? Colors.accentColor
             : control.down ? Colors.pressedBackground
             : control.hovered ? Colors.hoverBackground : Colors.panelBackground
        border.width: control.visualFocus ? 2 : 1
        border.color: control.visualFocus ? Colors.focusFrame
                    : control.checkState !== Qt.Unchecked ? Colors.accentColor : Colors.borderColor
        opacity: control.enabled ? 1 : 0.5

        // The check: a short and a long stroke.
        Item {
            objectName: "checkMark"
            anchors.fill: parent
            visible: control.checkState === Qt.Checked
            Rectangle {
                x: 3; y: 8; width: 5; height: 2
                rotation: 45
                color: Colors.accentText
            }
            Rectangle {
                x: 5; y: 7; width: 9; height: 2
                rotation: -50
                color: Colors.accentText
            }
        }
        Rectangle {
            objectName: "partialMark"
            anchors.centerIn: parent
            width: 8; height: 2
            visible: control.checkState === Qt.PartiallyChecked
            color: Colors.accentText
        }
    }

    contentItem: Text {
        leftPadding: control.indicator && !control.mirrored ? control.indicator.width + control.spacing : 0
        rightPadding: control.indicator && control.mirrored ? control.indicator.width + control.spacing : 0
        text: control.text
        font: control.font
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
        color: control.enabled ? Colors.primaryText : Colors.disabledText
    }
}
