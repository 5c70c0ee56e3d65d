import QtQuick 2.12
import QtTest 1.2
import Orvanta.Controls 1.0

// CollapsingPane and NotificationBar: both move their height.
TestCase {
    id: testCase
    name: "Panes"
    width: 400
    height: 300
    visible: true
    when: windowShown

    readonly property var theme: ({ informationBackground: "#d6eaf8", positiveBackground: "#d5f0dd",
        warningBackground: "#fdebd0", errorBackground: "#f8d7da", notificationText: "#1d2330",
        accentColor: "#1f7ad4", hoverBackground: "#e6eef8", pressedBackground: "#cfdff2" })

    Component {
        id: paneComponent
        CollapsingPane {
            width: 200
            property alias inner: inner
            Rectangle { id: inner; implicitHeight: 80; width: 200; color: "transparent" }
        }
    }
    Component {
        id: spy
        SignalSpy {}
    }
    function spies(target, names) {
        var result = {}
        names.forEach(function (name) {
            result[name] = createTemporaryObject(spy, testCase, { target: target, signalName: name })
        })
        return result
    }

    function init() {
        Harness.loadColors(JSON.stringify(theme))
    }

    function test_paneDefaultsAreTheWidgets() {
        var pane = createTemporaryObject(paneComponent, testCase)
        compare(pane.duration, 700)
        compare(pane.easingType, Easing.OutQuart)
        compare(pane.expanded, false)
        compare(pane.height, 0)
        verify(!pane.visible)
    }

    function test_paneComesToRest_data() {
        return [
            { tag: "expand", start: false, steps: ["expand"], height: 80, opened: 1, closed: 0, moved: true },
            { tag: "collapse", start: true, steps: ["collapse"], height: 0, opened: 0, closed: 1, moved: true },
            { tag: "turned round", start: false, steps: ["expand", "midway", "collapse"], height: 0, opened: 0, closed: 1, moved: true },
            { tag: "toggle twice", start: true, steps: ["toggle", "midway", "toggle"], height: 80, opened: 1, closed: 0, moved: true },
            { tag: "at once", start: false, steps: ["now"], height: 80, opened: 1, closed: 0, moved: false },
            { tag: "no duration", start: true, steps: ["noDuration", "collapse"], height: 0, opened: 0, closed: 1, moved: false }
        ]
    }
    function test_paneComesToRest(data) {
        var pane = createTemporaryObject(paneComponent, testCase, { expanded: data.start })
        compare(pane.height, data.start ? 80 : 0)
        compare(pane.animating, false)
        var told = spies(pane, ["opened", "closed", "moving"])
        data.steps.forEach(function (step) {
            if (step === "now")
                pane.setExpandedNow(true)
            else if (step === "midway")
                tryVerify(function () { return pane.height > 10 && pane.height < 70 })
            else if (step === "noDuration")
                pane.duration = 0
            else
                pane[step]()
        })
        compare(pane.animating, data.moved)
        if (data.moved) {
            // The content keeps its height while the pane moves.
            tryVerify(function () { return pane.height > 0 && pane.height < 80 })
            compare(pane.inner.height, 80)
        }
        tryCompare(pane, "animating", false)
        compare(pane.height, data.height)
        compare(pane.visible, data.height > 0)
        compare(told.opened.count, data.opened)
        compare(told.closed.count, data.closed)
        verify(data.moved ? told.moving.count > 0 : told.moving.count === 0)
    }

    function test_paneFollowsTheContentsHeight() {
        var pane = createTemporaryObject(paneComponent, testCase, { expanded: true })
        pane.inner.implicitHeight = 120
        compare(pane.height, 120)
    }

    function test_paneWithoutContentIsQuiet() {
        var pane = createTemporaryQmlObject("import Orvanta.Controls 1.0; CollapsingPane { duration: 50 }", testCase)
        var told = spies(pane, ["opened"])
        compare(pane.contentItem, null)
        pane.expand()
        tryCompare(told.opened, "count", 1)
        compare(pane.height, 0)
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
        var bar = createTemporaryQmlObject("import Orvanta.Controls 1.0; NotificationBar { width: 300; text: 'Saved' }",
                                           testCase)
        if (data.warning)
            ignoreWarning(data.warning)
        bar.type = data.type
        verify(Harness.sameColor(bar.background.color, theme[data.color]))
        compare(findChild(bar, "mark").children[0].text, data.mark)
        compare(bar.Accessible.role, Accessible.AlertMessage)
        compare(bar.Accessible.name, "Saved")
    }

    function test_notificationShowsAndHides() {
        var bar = createTemporaryQmlObject(
            "import Orvanta.Controls 1.0; NotificationBar { width: 300; text: 'A <b>bold</b> note' }", testCase)
        var told = spies(bar, ["shown", "hidden", "closeRequested"])
        compare(bar.duration, 250)
        compare(bar.height, 0)
        verify(!bar.visible)
        compare(bar.Accessible.name, "A bold note")
        bar.show()
        verify(bar.animating)
        tryCompare(told.shown, "count", 1)
        verify(bar.height > 20)
        compare(bar.height, bar.fullHeight)
        // The close button: told, then it hides.
        mouseClick(findChild(bar, "closeButton"))
        compare(told.closeRequested.count, 1)
        tryCompare(told.hidden, "count", 1)
        compare(bar.height, 0)
        compare(bar.showing, false)
        compare(told.shown.count, 1)
    }

    function test_notificationTurnsRound() {
        var bar = createTemporaryQmlObject("import Orvanta.Controls 1.0; NotificationBar { width: 300; text: 'x' }",
                                           testCase)
        var told = spies(bar, ["shown", "hidden"])
        bar.show()
        bar.hide()
        tryCompare(told.hidden, "count", 1)
        compare(told.shown.count, 0)
        compare(bar.height, 0)
    }

    function test_notificationWithoutCloseButton() {
        var bar = createTemporaryQmlObject(
            "import Orvanta.Controls 1.0; NotificationBar { width: 300; duration: 0; closeButtonVisible: false; text: 'x' }",
            testCase)
        bar.show()
        compare(bar.position, 1)
        verify(!findChild(bar, "closeButton").visible)
        // The text takes the room of the button.
        var text = findChild(bar, "text")
        compare(text.width, bar.availableWidth - findChild(bar, "mark").width - bar.spacing)
    }

    function test_notificationLinks() {
        var bar = createTemporaryQmlObject("import Orvanta.Controls 1.0; NotificationBar { text: '<a href=\"x:y\">more</a>' }",
                                           testCase)
        var told = spies(bar, ["linkActivated"])
        findChild(bar, "text").linkActivated("x:y")
        compare(told.linkActivated.signalArguments[0][0], "x:y")
    }
}
