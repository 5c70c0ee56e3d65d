import QtQuick 2.12
import QtTest 1.2
import Orvanta.Controls 1.0

TestCase {
    id: testCase
    name: "Toast"
    width: 500
    height: 400
    visible: true
    when: windowShown

    readonly property var theme: ({ informationBackground: "#d6eaf8", positiveBackground: "#d5f0dd",
        warningBackground: "#fdebd0", errorBackground: "#f8d7da", notificationText: "#1d2330", mutedText: "#6b7280",
        accentColor: "#1f7ad4", hoverBackground: "#e6eef8", pressedBackground: "#cfdff2", borderColor: "#d0d4da" })

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

    property var toaster
    property var removed

    function init() {
        Harness.loadColors(JSON.stringify(theme))
        toaster = createTemporaryObject(toastComponent, host)
        removed = createTemporaryObject(spy, testCase, { target: toaster, signalName: "messageRemoved" })
        mouseMove(testCase, testCase.width - 1, testCase.height - 1)
    }
    function textOf(id) {
        return findChild(toaster.toast(id), "text").text
    }

    function test_defaultsOfTheQueue() {
        compare(toaster.maxVisible, 3)
        compare(toaster.defaultTimeout, 4000)
        compare(toaster.margin, 12)
        compare(toaster.spacing, 8)
        compare(toaster.position, Toast.TopRight)
        compare(toaster.width, host.width)
    }

    function test_postShowsAToast() {
        var id = toaster.post(Toast.Warning, "Disk almost full")
        verify(id > 0)
        compare(toaster.visibleCount, 1)
        var bubble = toaster.toast(id)
        compare(textOf(id), "Disk almost full")
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
        compare(id > 0, data.id)
        compare(toaster.visibleCount, data.id ? 1 : 0)
        if (data.id)
            verify(Harness.sameColor(toaster.toast(id).background.color, theme.informationBackground))
    }

    function test_atMostThreeTheRestWait() {
        var ids = []
        for (var i = 0; i < 5; ++i)
            ids.push(toaster.post(Toast.Information, "message " + i, 0))
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
        // Another type is another message.
        verify(toaster.post(Toast.Warning, "Offline") !== first)
    }

    function test_timeoutCloses() {
        var shown = createTemporaryObject(spy, testCase, { target: toaster, signalName: "messageShown" })
        var id = toaster.post(Toast.Positive, "Saved", 200)
        compare(shown.signalArguments[0][0], id)
        tryCompare(toaster, "visibleCount", 0)
        compare(removed.signalArguments[0][0], id)
    }

    function test_timeoutPausesUnderThePointer() {
        var id = toaster.post(Toast.Information, "Hover me", 300)
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
    }

    function test_noTimeoutStays() {
        var id = toaster.post(Toast.Information, "Stays", 0)
        compare(toaster.toast(id).remainingTime, -1)
        verify(!toaster.toast(id).counting)
    }

    function test_buttonsClose_data() {
        return [
            { tag: "close button", button: "closeButton", actions: 0 },
            { tag: "action", button: "actionButton", actions: 1 }
        ]
    }
    function test_buttonsClose(data) {
        var actions = createTemporaryObject(spy, testCase, { target: toaster, signalName: "actionTriggered" })
        var id = toaster.post(Toast.Information, "Deleted", 0, "Undo")
        var button = findChild(toaster.toast(id), data.button)
        verify(button.visible)
        mouseClick(button)
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
        wait(0)
        var at = newer.mapToItem(host, 0, 0)
        var expectedX = { left: 12, right: host.width - 12 - newer.width, centre: (host.width - newer.width) / 2 }[data.x]
        compare(Math.round(at.x), Math.round(expectedX))
        compare(Math.round(at.y), data.y === "top" ? 12 : host.height - 12 - newer.height)
        // The older one glides farther from the edge, a spacing away.
        var gap = Math.round((data.y === "top" ? newer.height : older.height) + 8)
        tryVerify(function () { return Math.round(older.mapToItem(host, 0, 0).y - at.y) === (data.y === "top" ? gap : -gap) })
        compare(older.mapToItem(host, 0, 0).x, at.x)
    }
}
