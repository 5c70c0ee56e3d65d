// A single-line text input with a placeholder shown while it is empty.
import QtQuick 2.12
import QtQuick.Templates 2.12 as T
import Orvanta.Styles 1.0

T.TextField {
    id: control

    // Italic, as the library's cue texts are.
    property bool placeholderItalic: false
    // Whether the placeholder stays while the field has focus.
    property bool placeholderWhileFocused: true

    implicitWidth: implicitBackgroundWidth + leftInset + rightInset
                   || Math.max(contentWidth, placeholder.implicitWidth) + leftPadding + rightPadding
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             contentHeight + topPadding + bottomPadding,
                             placeholder.implicitHeight + topPadding + bottomPadding)
    padding: 6
    leftPadding: 8
    rightPadding: 8
    hoverEnabled: true
    selectByMouse: true

    color: enabled ? Colors.primaryText : Colors.disabledText
    selectionColor: Colors.accentColor
    selectedTextColor: Colors.accentText
    placeholderTextColor: Colors.mutedText
    verticalAlignment: TextInput.AlignVCenter

    Text {
        id: placeholder
        objectName: "placeholder"
        x: control.leftPadding
        y: control.topPadding
        width: control.width - (control.leftPadding + control.rightPadding)
        height: control.height - (control.topPadding + control.bottomPadding)
        text: control.placeholderText
        // The field's font, italic when asked; its size given as the field's is.
        font: control.font.pixelSize > 0
              ? Qt.font({ family: control.font.family, pixelSize: control.font.pixelSize,
                          weight: control.font.weight, italic: control.placeholderItalic })
              : Qt.font({ family: control.font.family, pointSize: control.font.pointSize,
                          weight: control.font.weight, italic: control.placeholderItalic })
        color: control.placeholderTextColor
        verticalAlignment: control.verticalAlignment
        horizontalAlignment: control.horizontalAlignment
        elide: Text.ElideRight
        renderType: control.renderType
        visible: !control.length && !control.preeditText
                 && (control.placeholderWhileFocused || !control.activeFocus)
    }

    background: Rectangle {
        implicitWidth: 160
        implicitHeight: 28
        radius: 2
        color: Colors.panelBackground
        border.width: control.activeFocus ? 2 : 1
        border.color: control.activeFocus ? Colors.focusFrame
                    : control.hovered ? Colors.accentColor : Colors.borderColor
        opacity: control.enabled ? 1 : 0.6
    }
}
