// An inline message bar: a mark of its type, a word-wrapped rich text whose links are
// reported, and a close button. Its type (Information, Positive, Warning, Error) picks the
// background. It starts hidden and is shown and hidden by animating its height (250 ms,
// OutCubic, as NotificationWidget); the content keeps its height and slides in and out
// under the top edge. A request the other way on the way turns round.
import QtQuick 2.12
import QtQuick.Templates 2.12 as T
import Orvanta.Styles 1.0

T.Control {
    id: control

    enum Type { Information, Positive, Warning, Error }

    property int type: NotificationBar.Information
    property string text
    property bool closeButtonVisible: true
    property int duration: 250
    property int easingType: Easing.OutCubic
    // Shown, or on the way to it.
    property bool showing: false
    // How much of its height shows, 0 to 1.
    readonly property real position: slide.position
    readonly property bool animating: motion.running
    // The type used: an unknown one shows as Information.
    readonly property int shownType: type >= NotificationBar.Information && type <= NotificationBar.Error
                                     ? type : NotificationBar.Information
    readonly property color backgroundColor: [Colors.informationBackground, Colors.positiveBackground,
                                              Colors.warningBackground, Colors.errorBackground][shownType]

    // Came to show fully; has gone.
    signal shown()
    signal hidden()
    signal linkActivated(string link)
    // The close button was clicked; the bar hides after this.
    signal closeRequested()

    function show() { showing = true }
    function hide() { showing = false }

    readonly property real fullHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                                                implicitContentHeight + topPadding + bottomPadding)
    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.round(fullHeight * position)
    padding: 8
    spacing: 8
    clip: true
    visible: position > 0
    Accessible.role: Accessible.AlertMessage
    Accessible.name: label.text.replace(/<[^>]*>/g, "")

    onTypeChanged: {
        if (!(type >= NotificationBar.Information && type <= NotificationBar.Error))
            console.warn("Orvanta.Controls: NotificationBar type " + type + " is no type; shown as Information")
    }
    onShowingChanged: {
        motion.stop()
        var to = showing ? 1 : 0
        if (duration <= 0) {
            slide.position = to
            slide.settle()
            return
        }
        motion.duration = Math.max(1, Math.round(duration * Math.abs(to - slide.position)))
        motion.to = to
        motion.start()
    }

    QtObject {
        id: slide
        property real position: 0
        function settle() {
            if (position >= 1)
                control.shown()
            else if (position <= 0)
                control.hidden()
        }
    }
    NumberAnimation {
        id: motion
        target: slide
        property: "position"
        easing.type: control.easingType
        onStopped: if (slide.position === to) slide.settle()
    }

    contentItem: Item {
        implicitWidth: mark.width + label.implicitWidth + closeButton.width + 2 * control.spacing
        implicitHeight: Math.max(mark.height, label.implicitHeight, closeButton.height)

        // Slides under the top edge.
        Row {
            y: -(1 - control.position) * control.fullHeight
            width: parent.width
            spacing: control.spacing

            // The type's mark: a disc with "i", "✓", "!" or "×".
            Rectangle {
                id: mark
                objectName: "mark"
                width: 18; height: 18; radius: 9
                color: Colors.notificationText
                Text {
                    anchors.centerIn: parent
                    text: ["i", "\u2713", "!", "\u00d7"][control.shownType]
                    font.bold: true
                    font.pixelSize: 12
                    color: control.backgroundColor
                }
            }
            Text {
                id: label
                objectName: "text"
                width: parent.width - mark.width - (closeButton.visible ? closeButton.width + control.spacing : 0)
                       - control.spacing
                text: control.text
                textFormat: Text.StyledText
                wrapMode: Text.Wrap
                font: control.font
                color: Colors.notificationText
                linkColor: Colors.accentColor
                onLinkActivated: control.linkActivated(link)
            }
            T.AbstractButton {
                id: closeButton
                objectName: "closeButton"
                width: 18; height: 18
                visible: control.closeButtonVisible
                hoverEnabled: true
                Accessible.name: qsTr("Close")
                onClicked: {
                    control.closeRequested()
                    control.hide()
                }
                background: Rectangle {
                    radius: 2
                    color: closeButton.down ? Colors.pressedBackground
                         : closeButton.hovered ? Colors.hoverBackground : "transparent"
                }
                contentItem: Item {
                    Repeater {
                        model: [45, -45]
                        Rectangle {
                            anchors.centerIn: parent
                            width: 10; height: 2
                            rotation: modelData
                            color: Colors.notificationText
                        }
                    }
                }
            }
        }
    }

    background: Rectangle {
        radius: 4
        color: control.backgroundColor
    }
}
