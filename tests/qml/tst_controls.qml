import QtQuick 2.12
import QtTest 1.2
import Orvanta.Controls 1.0

TestCase {
    id: testCase
    name: "Controls"
    width: 400
    height: 300
    visible: true
    when: windowShown

    readonly property var controlNames: ["Button", "ToolButton", "CheckBox", "TextField", "SearchField", "ComboBox",
        "BusyIndicatorRing", "ProgressBar", "CollapsingPane", "NotificationBar", "Toast"]
    readonly property var colorNames: ["windowBackground", "panelBackground", "hoverBackground", "borderColor",
        "primaryText", "mutedText", "accentColor", "accentText", "informationBackground", "positiveBackground",
        "warningBackground", "errorBackground", "notificationText", "pressedBackground", "disabledText",
        "focusFrame", "progressTrack"]
    property var themes: []

    // Every name a colour of its own, told apart by the red part; the second table by green.
    function table(green) {
        var colors = {}
        colorNames.forEach(function (name, i) { colors[name] = Qt.rgba((10 + i) / 255, green / 255, 0.5, 1).toString() })
        return colors
    }
    function read(url) {
        var request = new XMLHttpRequest()
        request.open("GET", url, false)
        request.send()
        return request.responseText
    }
    // The dots of a ring, the rows of a list: the children that have the property.
    function childrenWith(item, property) {
        var found = []
        for (var i = 0; i < item.children.length; ++i)
            if (item.children[i][property] !== undefined) found.push(item.children[i])
        return found
    }
    function make(source) {
        return createTemporaryQmlObject("import QtQuick 2.12; import Orvanta.Controls 1.0; " + source, testCase)
    }
    function spyOn(target, signalName) {
        return createTemporaryObject(spy, testCase, { target: target, signalName: signalName })
    }

    function initTestCase() {
        themes = ["colors_light.json", "colors_dark.json"].map(function (file) {
            return JSON.parse(read(Qt.resolvedUrl("../../examples/gallery/theme/" + file)))
        })
    }
    function init() {
        Harness.loadColors(JSON.stringify(table(40)))
    }

    function test_control_data() {
        return controlNames.map(function (name) { return { tag: name, name: name } })
    }
    function test_control(data) {
        // Made through the import, it reads no colour the table lacks.
        var mark = Harness.logMark()
        verify(make(data.name + " { width: 200 }"))
        wait(0)
        compare(Harness.logSince(mark), [])
        // No QtQuick.Controls, which an outside style reaches; no colour of its own.
        var source = read("qrc:/qt-project.org/imports/Orvanta/Controls/" + data.name + ".qml")
        source.match(/^import .*$/mg).forEach(function (line) {
            verify(/^import (QtQuick 2\.12|QtQuick\.Window 2\.12|QtQuick\.Templates 2\.12 as T|Orvanta\.Styles 1\.0)$/.test(line), line)
        })
        compare(source.match(/"#[0-9A-Fa-f]+"|Qt\.rgba\(\s*[0-9.]|color: *"(?!transparent)[a-z]+"/g), null)
        // Both gallery themes give every colour it reads.
        ;(source.match(/Colors\.[A-Za-z]+/g) || []).forEach(function (token) {
            var name = token.slice(7)
            verify(colorNames.indexOf(name) >= 0 && themes[0][name] && themes[1][name], name)
        })
    }

    function test_colorsFollowAReload_data() {
        return [
            { tag: "Button", source: "Button {}", part: "background", name: "panelBackground" },
            { tag: "Button text", source: "Button { text: 'x' }", part: "contentItem", name: "primaryText" },
            { tag: "highlighted Button", source: "Button { highlighted: true }", part: "background", name: "accentColor" },
            { tag: "disabled Button", source: "Button { enabled: false }", part: "contentItem", name: "disabledText" },
            { tag: "checked ToolButton", source: "ToolButton { checkable: true; checked: true }", part: "background", name: "pressedBackground" },
            { tag: "checked CheckBox", source: "CheckBox { checked: true }", part: "indicator", name: "accentColor" },
            { tag: "CheckBox", source: "CheckBox {}", part: "indicator", name: "panelBackground" },
            { tag: "TextField", source: "TextField {}", part: "", name: "primaryText" },
            { tag: "TextField frame", source: "TextField {}", part: "background", name: "panelBackground" },
            { tag: "ComboBox", source: "ComboBox { model: ['a'] }", part: "contentItem", name: "primaryText" },
            { tag: "BusyIndicatorRing", source: "BusyIndicatorRing {}", part: "", name: "accentColor" },
            { tag: "ProgressBar track", source: "ProgressBar {}", part: "background", name: "progressTrack" },
            { tag: "NotificationBar", source: "NotificationBar { type: NotificationBar.Warning }", part: "background", name: "warningBackground" }
        ]
    }
    function test_colorsFollowAReload(data) {
        var control = make(data.source)
        var item = data.part ? control[data.part] : control
        verify(Harness.sameColor(item.color, table(40)[data.name]), item.color + " " + table(40)[data.name])
        Harness.loadColors(JSON.stringify(table(90)))
        verify(Harness.sameColor(item.color, table(90)[data.name]), item.color + " " + table(90)[data.name])
    }

    function test_buttonsClick_data() {
        return [{ tag: "Button", type: "Button" }, { tag: "ToolButton", type: "ToolButton" }]
    }
    function test_buttonsClick(data) {
        var button = make(data.type + " { text: 'Go' }")
        var clicks = spyOn(button, "clicked")
        mouseClick(button)
        compare(clicks.count, 1)
        button.forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Space)
        compare(clicks.count, 2)
        compare(button.Accessible.name, "Go")
    }

    function test_checkBoxToggles_data() {
        return [
            { tag: "mouse", key: false, tristate: false, states: [Qt.Checked, Qt.Unchecked] },
            { tag: "Space", key: true, tristate: false, states: [Qt.Checked, Qt.Unchecked] },
            { tag: "tristate by Space", key: true, tristate: true, states: [Qt.PartiallyChecked, Qt.Checked, Qt.Unchecked] }
        ]
    }
    function test_checkBoxToggles(data) {
        var box = make("CheckBox { text: 'Wrap'; tristate: " + data.tristate + " }")
        var changes = spyOn(box, "checkStateChanged")
        box.forceActiveFocus(Qt.TabFocusReason)
        data.states.forEach(function (state) {
            data.key ? keyClick(Qt.Key_Space) : mouseClick(box)
            compare(box.checkState, state)
            compare(findChild(box.indicator, "checkMark").visible, state === Qt.Checked)
            compare(findChild(box.indicator, "partialMark").visible, state === Qt.PartiallyChecked)
        })
        compare(changes.count, data.states.length)
    }

    function test_comboBoxPicks_data() {
        return [
            { tag: "list", model: "['Red', 'Green', 'Blue']", role: "" },
            { tag: "objects with a text role", model: "[{ name: 'Red' }, { name: 'Green' }, { name: 'Blue' }]", role: "name" }
        ]
    }
    function test_comboBoxPicks(data) {
        var combo = make("ComboBox { textRole: '" + data.role + "'; model: " + data.model + " }")
        var activated = spyOn(combo, "activated")
        compare(combo.displayText, "Red")
        combo.forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Down)
        compare(combo.contentItem.text, "Green")
        // The list opens on Space; Down and Return pick. The pointer away: a row under it is highlighted.
        mouseMove(testCase, testCase.width - 1, testCase.height - 1)
        keyClick(Qt.Key_Space)
        tryCompare(combo.popup, "opened", true)
        keyClick(Qt.Key_Down)
        keyClick(Qt.Key_Return)
        tryCompare(combo.popup, "visible", false)
        compare(combo.displayText, "Blue")
        // The mouse: open, click the first row.
        mouseClick(combo)
        tryCompare(combo.popup, "opened", true)
        mouseClick(childrenWith(combo.popup.contentItem.contentItem, "text").filter(function (row) { return row.text === "Red" })[0])
        tryCompare(combo.popup, "visible", false)
        compare(combo.currentIndex, 0)
        compare(activated.count, 3)
    }

    function test_comboBoxWithoutModelIsQuiet() {
        var combo = make("ComboBox {}")
        combo.forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Down)
        compare(combo.currentIndex, -1)
        compare(combo.displayText, "")
    }

    function test_progressBarFill_data() {
        return [
            { tag: "half", value: 50, fill: 0.5 }, { tag: "above the range", value: 150, fill: 1 },
            { tag: "negative", value: -20, fill: 0 }, { tag: "NaN", value: NaN, fill: 0 }
        ]
    }
    function test_progressBarFill(data) {
        var bar = make("ProgressBar { width: 200; from: 0; to: 100; value: 10 }")
        var fill = findChild(bar, "bar")
        tryCompare(fill, "width", 20)
        bar.value = data.value
        compare(bar.fill, data.fill)
        // The fill moves there, by an animation that ends at the value.
        compare(fill.width, 20)
        tryCompare(fill, "width", 200 * data.fill)
    }

    function test_progressBarSweepsWhileIndeterminateAndVisible() {
        var bar = make("ProgressBar { width: 200; indeterminate: true }")
        var sweep = findChild(bar, "sweep")
        var first = sweep.x
        tryVerify(function () { return sweep.x !== first })
        bar.visible = false
        var hidden = sweep.x
        wait(100)
        compare(sweep.x, hidden)
        bar.indeterminate = false
        verify(!sweep.visible)
    }

    function test_busyRingTurnsOnlyWhileVisibleAndRunning() {
        var ring = make("BusyIndicatorRing { width: 48; height: 48 }")
        compare(ring.Accessible.name, "Busy")
        tryVerify(function () { return ring.currentStep > 0 })
        ring.visible = false
        verify(!ring.animating)
        var step = ring.currentStep
        wait(200)
        compare(ring.currentStep, step)
        ring.visible = true
        verify(ring.animating)
        // Hidden with a parent.
        holder.visible = false
        ring.parent = holder
        verify(!ring.animating)
        holder.visible = true
        verify(ring.animating)
        ring.running = false
        verify(!ring.animating)
        // Standing still, every dot alike.
        var dots = childrenWith(ring.contentItem, "radius")
        compare(dots.length, 12)
        dots.forEach(function (dot) { verify(Harness.sameColor(dot.color, dots[0].color)) })
    }

    function test_busyRingShadesTheTail() {
        var ring = make("BusyIndicatorRing { width: 48; height: 48; color: 'red' }")
        var dots = childrenWith(ring.contentItem, "radius")
        compare(dots[ring.currentStep].color.a, 1)
        var alphas = dots.map(function (dot) { return dot.color.a }).sort()
        compare(alphas[0], 0.15)
        // Dots of 48 / 6 on a ring that touches the edges.
        compare(dots[0].width, 8)
        compare(dots[0].y, 0)
        compare(dots[3].x, 40)
    }

    function test_paneDefaultsAreTheWidgets() {
        var pane = createTemporaryObject(paneComponent, testCase)
        compare(pane.duration, 700)
        compare(pane.easingType, Easing.OutQuart)
        verify(pane.height === 0 && !pane.visible && !pane.expanded)
    }

    function test_paneComesToRest_data() {
        return [
            { tag: "expand", start: false, steps: ["expand"], height: 80, opened: 1, closed: 0, moved: true },
            { tag: "collapse", start: true, steps: ["collapse"], height: 0, opened: 0, closed: 1, moved: true },
            { tag: "turned round", start: false, steps: ["expand", "midway", "collapse"], height: 0, opened: 0, closed: 1, moved: true },
            { tag: "toggle twice", start: true, steps: ["toggle", "midway", "toggle"], height: 80, opened: 1, closed: 0, moved: true },
            { tag: "at once", start: false, steps: ["now"], height: 80, opened: 1, closed: 0, moved: false },
            { tag: "at once, twice: told once", start: false, steps: ["now", "now"], height: 80, opened: 1, closed: 0, moved: false },
            { tag: "no duration", start: true, steps: ["noDuration", "collapse"], height: 0, opened: 0, closed: 1, moved: false }
        ]
    }
    function test_paneComesToRest(data) {
        var pane = createTemporaryObject(paneComponent, testCase, { expanded: data.start })
        compare(pane.height, data.start ? 80 : 0)
        compare(pane.animating, false)
        var opened = spyOn(pane, "opened"), closed = spyOn(pane, "closed"), moving = spyOn(pane, "moving")
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
        compare(opened.count, data.opened)
        compare(closed.count, data.closed)
        compare(moving.count > 0, data.moved)
        // It follows the content's height.
        pane.inner.implicitHeight = 120
        compare(pane.height, data.height ? 120 : 0)
    }

    function test_paneWithoutContentIsQuiet() {
        var pane = make("CollapsingPane { duration: 50 }")
        var opened = spyOn(pane, "opened")
        compare(pane.contentItem, null)
        pane.expand()
        tryCompare(opened, "count", 1)
        compare(pane.height, 0)
    }

    Component {
        id: paneComponent
        CollapsingPane {
            width: 200
            property alias inner: inner
            Rectangle { id: inner; implicitHeight: 80; width: 200; color: "transparent" }
        }
    }
    Item {
        id: holder
        width: 100
        height: 100
    }
    Component {
        id: spy
        SignalSpy {}
    }
}
