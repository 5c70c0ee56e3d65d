// A container for one content item that shows and hides it by animating its own height
// between 0 and the content's height (duration and easing as the CollapsingPane widget).
// The content keeps its full height the while and is clipped. It starts in the state
// given (collapsed by default) without animation; a change of expanded while it moves
// turns the motion round from the current height. The height it moves is its
// implicitHeight: leave height unset (layouts and positioners take the implicit one).
import QtQuick 2.12

Item {
    id: pane

    default property alias content: holder.data
    property bool expanded: false
    property int duration: 700
    property int easingType: Easing.OutQuart
    // How far it is open, 0 to 1.
    readonly property real position: rest.position
    readonly property bool animating: motion.running
    readonly property Item contentItem: holder.children.length > 0 ? holder.children[0] : null
    readonly property real contentHeight: contentItem ? Math.max(0, contentItem.height) : 0

    // It came to rest open, or closed.
    signal opened()
    signal closed()
    // Every step of the motion, either way.
    signal moving(real position)

    function expand() { expanded = true }
    function collapse() { expanded = false }
    function toggle() { expanded = !expanded }
    // Opens or closes at once, without animation.
    function setExpandedNow(value) {
        motion.stop()
        expanded = value
        motion.stop()
        rest.position = value ? 1 : 0
        rest.settle()
    }

    implicitWidth: contentItem ? contentItem.implicitWidth : 0
    implicitHeight: Math.round(contentHeight * position)
    clip: true
    visible: position > 0
    Accessible.role: Accessible.Grouping
    Accessible.ignored: !visible

    onExpandedChanged: {
        if (!rest.ready)
            return
        rest.settled = false
        motion.stop()
        if (duration <= 0) {
            rest.position = expanded ? 1 : 0
            rest.settle()
            return
        }
        // A turn round takes the share of the time that is left to go.
        var to = expanded ? 1 : 0
        motion.duration = Math.max(1, Math.round(duration * Math.abs(to - rest.position)))
        motion.to = to
        motion.start()
    }
    Component.onCompleted: {
        rest.position = expanded ? 1 : 0
        rest.ready = true
        rest.settled = true
    }

    QtObject {
        id: rest
        property bool ready: false
        property bool settled: false
        property real position: 0
        onPositionChanged: if (motion.running) pane.moving(position)
        function settle() {
            if (settled)
                return
            settled = true
            if (position >= 1)
                pane.opened()
            else if (position <= 0)
                pane.closed()
        }
    }

    NumberAnimation {
        id: motion
        target: rest
        property: "position"
        easing.type: pane.easingType
        onStopped: if (rest.position === to) rest.settle()
    }

    Item {
        id: holder
        width: pane.width
        height: pane.contentHeight
    }
}
