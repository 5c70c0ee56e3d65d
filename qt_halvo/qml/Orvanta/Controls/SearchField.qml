// The search box: without the search button a search starts typingDelay ms after typing
// stops; with it, on Return or a click on the button. Return also starts it at once
// without the button. After a search the button is a cancel cross that clears the
// search. An italic cue text shows while the field is empty and unfocused.
import QtQuick 2.12
import QtQuick.Templates 2.12 as T
import Orvanta.Styles 1.0

TextField {
    id: control

    // As SearchBox: a second after the last key.
    property int typingDelay: 1000
    property bool searchButtonVisible: false
    // A search is active: the button is the cross.
    property bool cancelMode: false
    readonly property alias typing: typingTimer.running

    signal searchStarted(string text)
    signal searchReset()

    function startSearch() {
        typingTimer.stop()
        searchStarted(text)
        cancelMode = true
    }
    function clearSearch() {
        typingTimer.stop()
        clear()
        // Without the search button, clear() has told it already (textChanged).
        if (searchButtonVisible)
            searchReset()
        cancelMode = false
    }

    placeholderText: qsTr("Search")
    placeholderItalic: true
    placeholderWhileFocused: false
    rightPadding: 8 + searchButton.width
    Accessible.role: Accessible.EditableText
    Accessible.name: placeholderText

    onTextChanged: {
        if (searchButtonVisible)
            return
        typingTimer.stop()
        if (text.length === 0) {
            searchReset()
            cancelMode = false
        } else {
            typingTimer.start()
        }
    }
    onAccepted: {
        typingTimer.stop()
        if (text.length > 0)
            startSearch()
    }
    Keys.onEscapePressed: {
        if (text.length > 0 || cancelMode)
            clearSearch()
        else
            event.accepted = false
    }

    Timer {
        id: typingTimer
        interval: Math.max(0, control.typingDelay)
        onTriggered: control.startSearch()
    }

    // Never takes the focus: the keyboard reaches the same through Return and Escape.
    T.AbstractButton {
        id: searchButton
        objectName: "searchButton"
        x: control.width - width - 2
        y: (control.height - height) / 2
        width: 25
        height: Math.max(0, control.height - 4)
        focusPolicy: Qt.NoFocus
        hoverEnabled: true
        Accessible.name: control.cancelMode ? qsTr("Clear search") : qsTr("Search")
        onClicked: {
            if (control.cancelMode)
                control.clearSearch()
            else if (control.searchButtonVisible)
                control.startSearch()
        }

        background: Rectangle {
            radius: 2
            color: searchButton.down ? Colors.pressedBackground
                 : searchButton.hovered ? Colors.hoverBackground : "transparent"
        }
        contentItem: Item {
            // The magnifier: a ring and its handle.
            Rectangle {
                objectName: "magnifier"
                visible: !control.cancelMode
                x: (parent.width - 14) / 2
                y: (parent.height - 14) / 2
                width: 10; height: 10; radius: 5
                color: "transparent"
                border.width: 2
                border.color: Colors.mutedText
                Rectangle {
                    x: 8; y: 10; width: 6; height: 2
                    rotation: 45
                    color: Colors.mutedText
                }
            }
            // The cancel cross.
            Repeater {
                model: control.cancelMode ? [45, -45] : []
                Rectangle {
                    objectName: "cross"
                    anchors.centerIn: parent
                    width: 12; height: 2
                    rotation: modelData
                    color: searchButton.hovered ? Colors.primaryText : Colors.mutedText
                }
            }
        }
    }
}
