import QtQuick 2.12
import QtTest 1.2
import Orvanta.Controls 1.0

// NotificationBar and Toast.
TestCase {
    id: testCase
    name: "Notifications"
    width: 500
    height: 400
    visible: true
    when: windowShown

    readonly property var theme: ({ informationBackground: "#d6eaf8", positiveBackground: "#d5f0dd",
        warningBackground: "#fdebd0", errorBackground: "#f8d7da", notificationText: "#1d2330", mutedText: "#6b7280",
        accentColor: "#1f7ad4", hoverBackground: "#e6eef8", pressedBackground: "#cfdff2", borderColor: "#d0d4da" })
    property var toaster
    property var removed

    function spyOn(target, signalName) {
        return createTemporaryObject(spy, testCase, { target: target, signalName: signalName })
    }
    function bar(properties) {
        return createTemporaryQmlObject("import Orvanta.Controls 1.0; NotificationBar { width: 300; " + properties + " }",
                                        testCase)
    }
    function init() {
        Harness.loadColors(JSON.stringify(theme))
        toaster = createTemporaryObject(toastComponent, host)
        removed = spyOn(toaster, "messageRemoved")
        mouseMove(testCase, testCase.width - 1, testCase.height - 1)
    }

    function test_notificationTypes_data() {
        return [
            { tag: "information", type: NotificationBar.Information, color: "informationBackground", mark: "i" },
            { tag: "positive", type: NotificationBar.Positive, color: "positiveBackground", mark: "\u2713" },
            { tag: "warning", type: NotificationBar.Warning, color: "warningBackground", mark: "!" },
            { tag: "error", type: NotificationBar.Error, color: "errorBackground", mark: "\u00d7" },
            { tag: "unknown", type: 7, color: "informationBackground", mark: "i",
              warning: "Orvanta.Controls: NotificationBar type 7 is no type; shown as Information" }
        ]
    }
    function test_notificationTypes(data) {
        // From another type, so that a type kept by mistake shows.
        var notification = bar("text: 'A <b>bold</b> note'; type: NotificationBar." + (data.type === 3 ? "Positive" : "Error"))
        if (data.warning)
            ignoreWarning(data.warning)
        notification.type = data.type
        verify(Harness.sameColor(notification.background.color, theme[data.color]))
        compare(findChild(notification, "mark").children[0].text, data.mark)
        compare(notification.Accessible.role, Accessible.AlertMessage)
        compare(notification.Accessible.name, "A bold note")
    }

    function test_notificationShowsAndHides_data() {
        return [{ tag: "close button", turn: false }, { tag: "turned round on the way", turn: true }]
    }
    function test_notificationShowsAndHides(data) {
        var notification = bar("text: 'x'")
        var shown = spyOn(notification, "shown"), hidden = spyOn(notification, "hidden")
        var closeRequested = spyOn(notification, "closeRequested")
        compare(notification.duration, 250)
        verify(!notification.visible)
        notification.show()
        verify(notification.animating)
        if (data.turn) {
            tryVerify(function () { return notification.position > 0.2 })
            notification.hide()
        } else {
            tryCompare(shown, "count", 1)
            verify(notification.height > 20)
            compare(notification.height, notification.fullHeight)
            // The close button: told, then it hides.
            mouseClick(findChild(notification, "closeButton"))
            compare(closeRequested.count, 1)
        }
        tryCompare(hidden, "count", 1)
        compare(notification.height, 0)
        compare(shown.count, data.turn ? 0 : 1)
    }

    function test_notificationWithoutCloseButton() {
        var notification = bar("duration: 0; closeButtonVisible: false; text: 'x'")
        notification.show()
        compare(notification.position, 1)
        verify(!findChild(notification, "closeButton").visible)
        // The text takes the room of the button.
        compare(findChild(notification, "text").width,
                notification.availableWidth - findChild(notification, "mark").width - notification.spacing)
    }

    function test_toastShows() {
        compare(toaster.maxVisible, 3)
        compare(toaster.position, Toast.TopRight)
        var id = toaster.post(Toast.Warning, "Disk almost full")
        compare(toaster.visibleCount, 1)
        var bubble = toaster.toast(id)
        compare(findChild(bubble, "text").text, "Disk almost full")
        verify(Harness.sameColor(bubble.background.color, theme.warningBackground))
        compare(bubble.Accessible.role, Accessible.AlertMessage)
        compare(bubble.remainingTime, 4000)
        verify(bubble.counting)
        tryCompare(bubble, "opacity", 1)
    }

    function test_badPostsAreQuiet_data() {
        return [
            { tag: "empty text", text: "", type: Toast.Error, id: false },
            { tag: "null text", text: null, type: Toast.Error, id: false },
            { tag: "unknown type", text: "x", type: 42, id: true }
        ]
    }
    function test_badPostsAreQuiet(data) {
        if (!data.id)
            ignoreWarning("Orvanta.Controls: Toast.post() without a text; nothing is shown")
        var id = toaster.post(data.type, data.text)
        compare(toaster.visibleCount, data.id ? 1 : 0)
        verify(data.id ? Harness.sameColor(toaster.toast(id).background.color, theme.informationBackground) : id === 0)
    }

    function test_atMostThreeTheRestWait() {
        var ids = [0, 1, 2, 3, 4].map(function (i) { return toaster.post(Toast.Information, "message " + i, 0) })
        compare(toaster.visibleCount, 3)
        compare(toaster.waitingCount, 2)
        verify(toaster.contains(ids[4]))
        compare(toaster.toast(ids[3]), null)
        // Newest nearest the top edge.
        tryVerify(function () { return toaster.toast(ids[2]).y + 20 < toaster.toast(ids[1]).y })
        verify(toaster.remove(ids[0]))
        tryCompare(toaster, "waitingCount", 1)
        compare(removed.signalArguments[0][0], ids[0])
        verify(toaster.toast(ids[3]) !== null)
        // Dropped while waiting.
        verify(toaster.remove(ids[4]))
        compare(toaster.waitingCount, 0)
        verify(!toaster.remove(12345))
        toaster.clear()
        tryCompare(toaster, "visibleCount", 0)
        compare(removed.count, 5)
    }

    function test_sameMessageIsCounted() {
        var first = toaster.post(Toast.Error, "Offline", 5000)
        var bubble = toaster.toast(first)
        wait(100)
        compare(toaster.post(Toast.Error, "Offline", 5000), first)
        compare(toaster.visibleCount, 1)
        compare(findChild(bubble, "count").text, "\u00d72")
        compare(bubble.remainingTime, 5000)
        // A message that stays, counted, still stays.
        var stays = toaster.post(Toast.Error, "Stays", 0)
        toaster.post(Toast.Error, "Stays", 0)
        compare(toaster.toast(stays).remainingTime, -1)
        // Another type is another message.
        verify(toaster.post(Toast.Warning, "Offline") !== first)
    }

    function test_timeoutPausesUnderThePointer() {
        var shown = spyOn(toaster, "messageShown")
        var id = toaster.post(Toast.Information, "Hover me", 300)
        compare(shown.signalArguments[0][0], id)
        var bubble = toaster.toast(id)
        verify(bubble.height > 20)
        mouseMove(bubble, 5, 5)
        verify(!bubble.counting)
        wait(700)
        compare(toaster.visibleCount, 1)
        verify(bubble.remainingTime > 0 && bubble.remainingTime <= 300)
        mouseMove(testCase, testCase.width - 1, testCase.height - 1)
        verify(bubble.counting)
        tryCompare(toaster, "visibleCount", 0)
        compare(removed.signalArguments[0][0], id)
        // None: it stays.
        bubble = toaster.toast(toaster.post(Toast.Information, "Stays", 0))
        verify(bubble.remainingTime === -1 && !bubble.counting)
    }

    function test_buttonsClose_data() {
        return [{ tag: "close button", button: "closeButton", actions: 0 }, { tag: "action", button: "actionButton", actions: 1 }]
    }
    function test_buttonsClose(data) {
        var actions = spyOn(toaster, "actionTriggered")
        var id = toaster.post(Toast.Information, "Deleted", 0, "Undo")
        // Side by side inside the toast; the action's text fits its button.
        var parts = ["text", "actionButton", "closeButton"].map(function (part) { return findChild(toaster.toast(id), part) })
        verify(parts[0].x + parts[0].width <= parts[1].x && parts[1].x + parts[1].width <= parts[2].x)
        verify(parts[2].x + parts[2].width <= toaster.toast(id).availableWidth)
        verify(parts[1].width >= parts[1].contentItem.implicitWidth)
        mouseClick(findChild(toaster.toast(id), data.button))
        compare(actions.count, data.actions)
        if (data.actions)
            compare(actions.signalArguments[0][0], id)
        verify(toaster.toast(id).closing)
        tryCompare(toaster, "visibleCount", 0)
    }

    function test_placement_data() {
        return [
            { tag: "top left", position: Toast.TopLeft, x: "left", y: "top" },
            { tag: "top right", position: Toast.TopRight, x: "right", y: "top" },
            { tag: "bottom left", position: Toast.BottomLeft, x: "left", y: "bottom" },
            { tag: "bottom right", position: Toast.BottomRight, x: "right", y: "bottom" },
            { tag: "top centre", position: Toast.TopCenter, x: "centre", y: "top" },
            { tag: "bottom centre", position: Toast.BottomCenter, x: "centre", y: "bottom" }
        ]
    }
    function test_placement(data) {
        toaster.position = data.position
        var older = toaster.toast(toaster.post(Toast.Information, "older", 0))
        var newer = toaster.toast(toaster.post(Toast.Information, "newer", 0))
        var at = newer.mapToItem(host, 0, 0)
        var expectedX = { left: 12, right: host.width - 12 - newer.width, centre: (host.width - newer.width) / 2 }[data.x]
        compare(Math.round(at.x), Math.round(expectedX))
        compare(Math.round(at.y), data.y === "top" ? 12 : host.height - 12 - newer.height)
        // The older one glides farther from the edge, a spacing away.
        var gap = Math.round((data.y === "top" ? newer.height : older.height) + 8)
        tryVerify(function () { return Math.round(older.mapToItem(host, 0, 0).y - at.y) === (data.y === "top" ? gap : -gap) })
        compare(older.mapToItem(host, 0, 0).x, at.x)
    }

    Item {
        id: host
        width: 500
        height: 400
    }
    Component {
        id: toastComponent
        Toast {}
    }
    Component {
        id: spy
        SignalSpy {}
    }
}
