// A combo box whose list is built here too, so that no outside style reaches it.
import QtQuick 2.12
import QtQuick.Window 2.12
import QtQuick.Templates 2.12 as T
import Orvanta.Styles 1.0

T.ComboBox {
    id: control

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             implicitContentHeight + topPadding + bottomPadding,
                             implicitIndicatorHeight + topPadding + bottomPadding)
    padding: 4
    leftPadding: 8 + (control.mirrored && indicator ? indicator.width + spacing : 0)
    rightPadding: 8 + (!control.mirrored && indicator ? indicator.width + spacing : 0)
    hoverEnabled: true

    delegate: T.ItemDelegate {
        id: row
        width: ListView.view ? ListView.view.width : implicitWidth
        implicitWidth: implicitContentWidth + leftPadding + rightPadding
        implicitHeight: implicitContentHeight + topPadding + bottomPadding
        padding: 6
        leftPadding: 8
        text: control.textRole ? (Array.isArray(control.model) ? modelData[control.textRole] : model[control.textRole])
                               : modelData
        highlighted: control.highlightedIndex === index
        hoverEnabled: control.hoverEnabled
        contentItem: Text {
            text: row.text
            font.family: control.font.family
            font.weight: control.currentIndex === index ? Font.DemiBold : Font.Normal
            elide: Text.ElideRight
            verticalAlignment: Text.AlignVCenter
            color: row.highlighted ? Colors.accentText : Colors.primaryText
        }
        background: Rectangle {
            color: row.highlighted ? Colors.accentColor
                 : row.down ? Colors.pressedBackground
                 : row.hovered ? Colors.hoverBackground : "transparent"
        }
    }

    // A chevron of two strokes.
    indicator: Item {
        x: control.mirrored ? control.leftPadding - width - control.spacing : control.width - width - 8
        y: (control.height - height) / 2
        implicitWidth: 12
        implicitHeight: 8
        Rectangle {
            x: 0; y: 3; width: 7; height: 2
            rotation: 40
            color: control.enabled ? Colors.mutedText : Colors.disabledText
        }
        Rectangle {
            x: 5; y: 3; width: 7; height: 2
            rotation: -40
            color: control.enabled ? Colors.mutedText : Colors.disabledText
        }
    }

    contentItem: Text {
        text: control.displayText
        font: control.font
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
        color: control.enabled ? Colors.primaryText : Colors.disabledText
    }

    background: Rectangle {
        implicitWidth: 140
        implicitHeight: 28
        radius: 2
        color: control.down ? Colors.pressedBackground
             : control.hovered ? Colors.hoverBackground : Colors.panelBackground
        border.width: control.visualFocus ? 2 : 1
        border.color: control.visualFocus ? Colors.focusFrame : Colors.borderColor
        opacity: control.enabled ? 1 : 0.6
    }

    popup: T.Popup {
        y: control.height
        width: control.width
        height: Math.min(contentItem.implicitHeight + topPadding + bottomPadding,
                         control.Window.height - topMargin - bottomMargin)
        topMargin: 4
        bottomMargin: 4
        padding: 1

        contentItem: ListView {
            clip: true
            implicitHeight: contentHeight
            model: control.delegateModel
            currentIndex: control.highlightedIndex
            highlightMoveDuration: 0
            boundsBehavior: Flickable.StopAtBounds
        }

        background: Rectangle {
            color: Colors.panelBackground
            border.color: Colors.borderColor
        }
    }
}
