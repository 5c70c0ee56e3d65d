// The toasts of a window or an item: short messages over one of its corners or edges, at
// most maxVisible at a time, the rest waiting in the order they came (as PopupMessage and
// its PopupMessageQueue). Put one in the item to cover, usually the window's content; it
// fills its parent and takes no input outside its toasts.
//
// post() shows a message with the mark of its type, a wrapped text, an optional action
// button and a close button. Each toast fades in, and out when it closes: on its timeout,
// the close button, its action or remove(). The timeout runs only while the toast is on
// screen and not under the pointer, and goes on with the time that was left. A message of
// the type and text of one shown or waiting is counted into it ("×2") and its timeout
// starts again. The newest toast is nearest the edge.
import QtQuick 2.12
import QtQuick.Window 2.12
import QtQuick.Templates 2.12 as T
import Orvanta.Styles 1.0

Item {
    id: toaster

    enum Type { Information, Positive, Warning, Error }
    enum Position { TopLeft, TopRight, BottomLeft, BottomRight, TopCenter, BottomCenter }

    property int position: Toast.TopRight
    property int maxVisible: 3
    property int margin: 12
    property int spacing: 8
    property int defaultTimeout: 4000
    property bool closable: true
    readonly property int visibleCount: shownModel.count
    readonly property int waitingCount: waiting.length

    signal messageShown(int id)
    signal messageRemoved(int id)
    signal actionTriggered(int id)

    // The message's id (that of the message it was counted into, if so), or 0 for an
    // empty text. A timeout of zero or less: the toast stays until it is closed.
    function post(type, text, timeout, actionText) {
        if (text === undefined || text === null || String(text).length === 0) {
            console.warn("Orvanta.Controls: Toast.post() without a text; nothing is shown")
            return 0
        }
        var kind = type >= Toast.Information && type <= Toast.Error ? type : Toast.Information
        var message = String(text)
        var duplicate = d.find(kind, message)
        if (duplicate)
            return duplicate
        var entry = { messageId: ++d.lastId, kind: kind, message: message,
                      timeout: timeout === undefined ? defaultTimeout : Number(timeout) || 0,
                      count: 1, actionText: actionText ? String(actionText) : "" }
        waiting = waiting.concat([entry])
        d.refill()
        return entry.messageId
    }
    // Closes the message's toast or drops it from the waiting ones; false for an unknown id.
    function remove(id) {
        for (var i = 0; i < waiting.length; ++i) {
            if (waiting[i].messageId === id) {
                waiting = waiting.slice(0, i).concat(waiting.slice(i + 1))
                messageRemoved(id)
                return true
            }
        }
        var bubble = toast(id)
        if (!bubble)
            return false
        bubble.dismiss()
        return true
    }
    function clear() {
        var dropped = waiting
        waiting = []
        for (var i = 0; i < dropped.length; ++i)
            messageRemoved(dropped[i].messageId)
        for (var id in d.bubbles)
            d.bubbles[id].dismiss()
    }
    // The toast item of a message shown, or null.
    function toast(id) {
        return d.bubbles[id] || null
    }
    function contains(id) {
        return toast(id) !== null || waiting.some(function (entry) { return entry.messageId === id })
    }

    property var waiting: []

    x: 0
    y: 0
    width: parent ? parent.width : 0
    height: parent ? parent.height : 0
    z: 1000

    QtObject {
        id: d
        property int lastId: 0
        // The toast items by message id.
        property var bubbles: ({})
        readonly property bool onTop: toaster.position === Toast.TopLeft || toaster.position === Toast.TopRight
                                      || toaster.position === Toast.TopCenter
        function find(kind, message) {
            for (var i = 0; i < shownModel.count; ++i) {
                var shown = shownModel.get(i)
                var bubble = bubbles[shown.messageId]
                if (shown.kind === kind && shown.message === message && bubble && !bubble.closing) {
                    shownModel.setProperty(i, "count", shown.count + 1)
                    bubble.restartTimeout()
                    return shown.messageId
                }
            }
            for (var j = 0; j < toaster.waiting.length; ++j) {
                if (toaster.waiting[j].kind === kind && toaster.waiting[j].message === message) {
                    toaster.waiting[j].count += 1
                    return toaster.waiting[j].messageId
                }
            }
            return 0
        }
        function refill() {
            while (toaster.waiting.length > 0 && shownModel.count < Math.max(1, toaster.maxVisible)) {
                var entry = toaster.waiting[0]
                toaster.waiting = toaster.waiting.slice(1)
                shownModel.insert(0, entry)
                // Its item now, so that toast(id) finds it at once.
                list.forceLayout()
                toaster.messageShown(entry.messageId)
            }
        }
        function closed(id) {
            for (var i = 0; i < shownModel.count; ++i) {
                if (shownModel.get(i).messageId === id) {
                    shownModel.remove(i)
                    break
                }
            }
            toaster.messageRemoved(id)
            refill()
        }
    }

    ListModel { id: shownModel }

    ListView {
        id: list
        // A line of about 36 characters, as the widget's.
        readonly property real bubbleWidth: Math.min(36 * metrics.averageCharacterWidth + 70,
                                                     Math.max(0, toaster.width - 2 * toaster.margin))
        width: bubbleWidth
        // All the height there is, so that every toast has its item; it takes no input.
        height: Math.max(0, toaster.height - 2 * toaster.margin)
        x: toaster.position === Toast.TopLeft || toaster.position === Toast.BottomLeft ? toaster.margin
         : toaster.position === Toast.TopRight || toaster.position === Toast.BottomRight
           ? toaster.width - width - toaster.margin : (toaster.width - width) / 2
        y: toaster.margin
        interactive: false
        spacing: toaster.spacing
        verticalLayoutDirection: d.onTop ? ListView.TopToBottom : ListView.BottomToTop
        model: shownModel
        displaced: Transition {
            NumberAnimation { property: "y"; duration: 180; easing.type: Easing.OutCubic }
        }

        FontMetrics { id: metrics }

        delegate: T.Control {
            id: bubble

            readonly property int messageId: model.messageId
            readonly property bool closing: fade.closing
            // The timeout runs now; remainingTime is what is left of it (-1: none).
            readonly property bool counting: model.timeout > 0 && !hovered && !fade.closing && toaster.visible
                                             && Window.window !== null
                                             && Window.window.visibility !== Window.Minimized
                                             && Window.window.visibility !== Window.Hidden
            property int remainingTime: model.timeout > 0 ? model.timeout : -1
            property real countingSince: 0

            function restartTimeout() {
                clock.stop()
                remainingTime = model.timeout > 0 ? model.timeout : -1
                updateClock()
            }
            function updateClock() {
                if (counting) {
                    countingSince = Date.now()
                    clock.interval = Math.max(1, remainingTime)
                    clock.restart()
                } else if (clock.running) {
                    clock.stop()
                    remainingTime = Math.max(0, remainingTime - (Date.now() - countingSince))
                }
            }
            function dismiss() {
                if (fade.closing)
                    return
                fade.closing = true
                clock.stop()
                fadeOut.start()
            }

            onCountingChanged: updateClock()
            Component.onDestruction: delete d.bubbles[messageId]
            Component.onCompleted: {
                d.bubbles[messageId] = bubble
                fadeIn.start()
                updateClock()
            }

            width: list.width
            implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                                     implicitContentHeight + topPadding + bottomPadding)
            hoverEnabled: true
            padding: 10
            spacing: 8
            opacity: 0
            Accessible.role: Accessible.AlertMessage
            Accessible.name: model.message

            QtObject {
                id: fade
                property bool closing: false
            }
            Timer {
                id: clock
                onTriggered: {
                    bubble.remainingTime = 0
                    bubble.dismiss()
                }
            }
            NumberAnimation { id: fadeIn; target: bubble; property: "opacity"; to: 1; duration: 150 }
            NumberAnimation {
                id: fadeOut
                target: bubble; property: "opacity"; to: 0; duration: 200
                onStopped: d.closed(bubble.messageId)
            }

            background: Rectangle {
                radius: 6
                color: [Colors.informationBackground, Colors.positiveBackground,
                        Colors.warningBackground, Colors.errorBackground][model.kind]
                border.color: Colors.borderColor
            }

            contentItem: Row {
                spacing: bubble.spacing
                Rectangle {
                    id: mark
                    width: 18; height: 18; radius: 9
                    color: Colors.notificationText
                    Text {
                        anchors.centerIn: parent
                        text: ["i", "\u2713", "!", "\u00d7"][model.kind]
                        font.bold: true
                        font.pixelSize: 12
                        color: bubble.background.color
                    }
                }
                Text {
                    objectName: "text"
                    width: bubble.availableWidth - mark.width - countLabel.width - actionButton.width
                           - closeButton.width - 4 * bubble.spacing
                    text: model.message
                    wrapMode: Text.Wrap
                    color: Colors.notificationText
                }
                Text {
                    id: countLabel
                    objectName: "count"
                    text: model.count > 1 ? qsTr("\u00d7%1").arg(model.count) : ""
                    color: Colors.mutedText
                }
                T.AbstractButton {
                    id: actionButton
                    objectName: "actionButton"
                    visible: model.actionText.length > 0
                    width: visible ? implicitContentWidth + 12 : 0
                    height: 20
                    text: model.actionText
                    hoverEnabled: true
                    onClicked: {
                        toaster.actionTriggered(bubble.messageId)
                        bubble.dismiss()
                    }
                    contentItem: Text {
                        text: actionButton.text
                        horizontalAlignment: Text.AlignHCenter
                        verticalAlignment: Text.AlignVCenter
                        color: Colors.accentColor
                        font.underline: actionButton.hovered
                    }
                }
                T.AbstractButton {
                    id: closeButton
                    objectName: "closeButton"
                    visible: toaster.closable
                    width: visible ? 18 : 0
                    height: 18
                    hoverEnabled: true
                    Accessible.name: qsTr("Close")
                    onClicked: bubble.dismiss()
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
    }
}
